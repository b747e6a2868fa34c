#include "server/main/StandardOutput.h"

#include <algorithm>
#include <climits>
#include <iostream>
#include <poll.h>
#include <unistd.h>

namespace smisd {
namespace {

constexpr std::chrono::seconds patience{1};

} // namespace

std::streamsize UnblockedOutput::xsputn(const char* text, std::streamsize count) {
    const std::lock_guard lock(_mutex);
    _text.append(text, static_cast<std::size_t>(count));
    return count;
}

UnblockedOutput::int_type UnblockedOutput::overflow(int_type character) {
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        const char one = traits_type::to_char_type(character);
        xsputn(&one, 1);
    }
    return traits_type::not_eof(character);
}

int UnblockedOutput::sync() {
    const std::lock_guard lock(_mutex);
    _rest.erase(0, write(_rest));
    const std::size_t written = _rest.empty() ? write(_text) : 0;
    if (written > 0) {
        _rest = _text.substr(written);
    } else if (!_text.empty()) {
        ++_dropped;
    }
    _text.clear();
    return 0;
}

bool UnblockedOutput::hasRoom() {
    pollfd output{_descriptor, POLLOUT, 0};
    _full = poll(&output, 1, _full ? 0 : static_cast<int>(_time.count())) != 1;
    return !_full;
}

// As much as there is room for. A pipe that has room has it for PIPE_BUF bytes.
std::size_t UnblockedOutput::write(const std::string& text) {
    std::size_t written = 0;
    while (written < text.size() && hasRoom()) {
        const std::size_t count = std::min<std::size_t>(text.size() - written, PIPE_BUF);
        const ssize_t taken = ::write(_descriptor, text.data() + written, count);
        if (taken <= 0) {
            break;
        }
        written += static_cast<std::size_t>(taken);
    }
    return written;
}

StandardOutput::StandardOutput()
    : _output(STDOUT_FILENO, patience), _before(std::cout.rdbuf(&_output)) {}

StandardOutput::~StandardOutput() {
    std::cout.rdbuf(_before);
}

} // namespace smisd
