#include "tests/support/TraceCapture.h"

#include <iostream>

#include "tests/support/Log.h"

namespace scripted {

TraceCapture::TraceCapture() : _previous(std::cout.rdbuf(this)) {}

TraceCapture::~TraceCapture() {
    std::cout.rdbuf(_previous);
    if (!_unflushed.empty()) {
        std::cerr << "never flushed: " << _unflushed << std::endl;
    }
}

TraceCapture::int_type TraceCapture::overflow(int_type character) {
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        _unflushed += traits_type::to_char_type(character);
    }
    return traits_type::not_eof(character);
}

int TraceCapture::sync() {
    const bool oneLine = _unflushed.find('\n') + 1 == _unflushed.size() && !_unflushed.empty();
    note(Entry::Trace, oneLine ? _unflushed.substr(0, _unflushed.size() - 1)
                               : "not one line: \"" + _unflushed + '"');
    _unflushed.clear();
    return 0;
}

} // namespace scripted
