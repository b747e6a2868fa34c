#pragma once

#include <filesystem>
#include <iosfwd>

namespace cli {

// A state directory in the making. It grows beside its place under another name, so that nobody
// finds it half done, and goes away again unless it is put into its place.
class NewState {
public:
    // place: where it is to be; its parent must be there. Throws
    // DRAVOperationFailedException.
    explicit NewState(const std::filesystem::path& place);
    ~NewState();
    NewState(const NewState&) = delete;
    NewState& operator=(const NewState&) = delete;

    // Where it is for the time being; made with mode 0700.
    const std::filesystem::path& directory() const { return _directory; }

    // Puts it into its place, for good. Throws DRAVOperationFailedException if
    // something is there by now.
    void putInPlace();

private:
    bool make();

    const std::filesystem::path _place;
    std::filesystem::path _directory; // empty: in its place
    int _lock = -1;                   // of the directory; held while this process lives
};

// Removes what killed processes have left of state directories that they made for this place, which
// may hold secrets, and says so.
void clearLeftovers(const std::filesystem::path& place, std::ostream& err);

} // namespace cli
