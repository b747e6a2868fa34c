#include "server/operation/Utf8.h"

#include <boost/locale/utf.hpp>

namespace smisd {

bool isUtf8(std::string_view bytes) {
    using Utf8 = boost::locale::utf::utf_traits<char>;
    for (const auto* at = bytes.begin(); at != bytes.end();) {
        if (!boost::locale::utf::is_valid_codepoint(Utf8::decode(at, bytes.end()))) {
            return false;
        }
    }
    return true;
}

} // namespace smisd
