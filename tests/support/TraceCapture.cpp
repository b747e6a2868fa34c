#include "tests/support/TraceCapture.h"

#include <iostream>

#include "tests/support/Log.h"

namespace scripted {

TraceCapture::TraceCapture() : _previous(std::cout.rdbuf(this)) {}

TraceCapture::~TraceCapture() {
    std::cout.rdbuf(_previous);
    for (const auto& [thread, unflushed] : _unflushed) {
        std::cerr << "never flushed: " << unflushed.text << std::endl;
    }
}

std::streamsize TraceCapture::xsputn(const char* text, std::streamsize count) {
    const std::lock_guard lock(_mutex);
    Unflushed& unflushed = _unflushed[std::this_thread::get_id()];
    unflushed.text.append(text, static_cast<std::size_t>(count));
    ++unflushed.pieces;
    return count;
}

TraceCapture::int_type TraceCapture::overflow(int_type character) {
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        const char one = traits_type::to_char_type(character);
        xsputn(&one, 1);
    }
    return traits_type::not_eof(character);
}

int TraceCapture::sync() {
    Unflushed flushed;
    {
        const std::lock_guard lock(_mutex);
        const auto own = _unflushed.find(std::this_thread::get_id());
        if (own != _unflushed.end()) {
            flushed = _unflushed.extract(own).mapped();
        }
    }
    const std::string& text = flushed.text;
    const bool oneLine = text.find('\n') + 1 == text.size() && !text.empty();
    note(Entry::Trace, oneLine && flushed.pieces == 1
                           ? text.substr(0, text.size() - 1)
                           : "not one line in one piece: \"" + text + '"');
    return 0;
}

} // namespace scripted
