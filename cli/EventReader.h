#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/types.h>

namespace cli {

// Reads the lines of a file to which others append, and which they may set aside for a new one of
// the same name.
class EventReader {
public:
    explicit EventReader(std::filesystem::path file);

    // The next whole line, without its end; false if there is none yet.
    bool next(std::string& line);

private:
    bool openIfThere();
    bool isReplaced() const;

    const std::filesystem::path _file;
    std::ifstream _text;
    ino_t _inode = 0;     // of the file that is open
    std::string _partial; // the beginning of a line whose end is not there yet
};

} // namespace cli
