#include "cli/EscapedOutput.h"

#include <string_view>
#include <utility>

#include "array/model/Text.h"

namespace cli {

std::streamsize EscapedOutput::xsputn(const char* text, std::streamsize count) {
    std::string all = std::exchange(_begun, {});
    all.append(text, static_cast<std::size_t>(count));
    const std::size_t whole = all.size() - array::beginningAtEnd(all);
    _begun = all.substr(whole);
    all.resize(whole);
    return _to << array::escaped(all) ? count : 0;
}

int EscapedOutput::overflow(int c) {
    const char one = std::char_traits<char>::to_char_type(c);
    return xsputn(&one, 1) == 1 ? c : std::char_traits<char>::eof();
}

int EscapedOutput::sync() {
    return _to.flush() ? 0 : -1;
}

} // namespace cli
