#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace cli {

// Passes text on to another stream, in which nothing is left that a terminal would act on or that
// would show it otherwise than it is: as array::escaped().
class EscapedOutput : private std::streambuf, public std::ostream {
public:
    // The other stream outlives this one.
    explicit EscapedOutput(std::ostream& to) : std::ostream(this), _to(to) {}

private:
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int overflow(int c) override;
    int sync() override;

    std::ostream& _to;
    std::string _begun; // of a character whose end is yet to come
};

} // namespace cli
