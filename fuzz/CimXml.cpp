// The decoder of requests. The input is a request as in tests/wire/pairs: headers, an empty line,
// the body.
#include <cstddef>
#include <cstdint>
#include <string>

#include "server/cimxml/RequestDecoder.h"
#include "server/operation/Utf8.h"

namespace {

std::string headerIn(const std::string& head, const std::string& name) {
    const std::size_t at = head.find("\n" + name + ": ");
    if (at == std::string::npos) {
        return "";
    }
    const std::size_t start = at + name.size() + 3;
    return head.substr(start, head.find('\n', start) - start);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = text.find("\n\n");
    const std::string head = end == std::string::npos ? "" : text.substr(0, end);
    if (!smisd::isUtf8(head)) {
        return 0; // HTTP refuses it
    }
    smisd::CimHeaders headers;
    headers.method = headerIn(head, "CIMMethod");
    headers.object = headerIn(head, "CIMObject");
    try {
        smisd::decodeRequest(end == std::string::npos ? text : text.substr(end + 2), headers);
    } catch (const smisd::BadRequest&) {
    }
    return 0;
}
