#include "server/http/CimRequest.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <boost/beast/core/string.hpp>

#include "server/http/HttpMessage.h"
#include "server/operation/Utf8.h"

namespace smisd {
namespace {

bool same(std::string_view a, std::string_view b) {
    return boost::beast::iequals(a, b);
}

// "a; b ;c" -> "a", "b", "c"
std::vector<std::string> parts(std::string_view text, char separator) {
    std::vector<std::string> result;
    boost::algorithm::split(result, text, [separator](char c) { return c == separator; });
    for (std::string& part : result) {
        boost::algorithm::trim(part);
    }
    return result;
}

std::string headerOr(const HttpRequest& request, std::string_view name,
                     std::string_view otherwise) {
    return std::string(request.header(name).value_or(otherwise));
}

[[noreturn]] void refuse(const std::string& cimError, const std::string& detail) {
    throw BadRequest(400, cimError, detail);
}

void checkOperation(const HttpRequest& request) {
    const auto operation = request.header("CIMOperation");
    if (!operation) {
        refuse("", "");
    }
    if (request.version >= 11 && !request.header("Host")) {
        refuse("", "HTTP request message lacks a Host header field.");
    }
    if (!same(*operation, "MethodCall")) {
        refuse("unsupported-operation",
               "CIMOperation value \"" + std::string(*operation) + "\" is not supported.");
    }
    if (request.header("CIMBatch")) {
        throw BadRequest(501, "multiple-requests-unsupported", "");
    }
}

// The decoded value of a header that may be absent but not empty.
std::string readEncoded(const HttpRequest& request, const std::string& name) {
    const auto value = request.header(name);
    if (!value) {
        return {};
    }
    if (value->empty()) {
        refuse("header-mismatch", "Empty " + name + " value.");
    }
    const std::optional<std::string> decoded = percentDecoded(*value);
    if (!decoded || !isUtf8(*decoded)) {
        refuse("header-mismatch", name + " value syntax error.");
    }
    return *decoded;
}

bool isUtf8Xml(std::string_view contentType) {
    const std::vector<std::string> fields = parts(contentType, ';');
    if (!same(fields[0], "application/xml") && !same(fields[0], "text/xml")) {
        return false;
    }
    return std::all_of(fields.begin() + 1, fields.end(), [](const std::string& field) {
        return same(field, "charset=utf-8") || same(field, "charset=\"utf-8\"");
    });
}

// TE: deflate;q=0.5, trailers
bool takesTrailers(const HttpRequest& request) {
    const std::vector<std::string> codings = parts(request.header("TE").value_or(""), ',');
    return std::any_of(codings.begin(), codings.end(), [](const std::string& coding) {
        return same(coding, "trailers") || same(coding, "chunked");
    });
}

// 0 to 1 with three decimals at most (RFC 9110, section 12.4.2).
bool isQuality(std::string_view text) {
    const bool isOne = text.starts_with('1');
    if (!isOne && !text.starts_with('0')) {
        return false;
    }
    const std::string_view decimals = text.substr(std::min<std::size_t>(2, text.size()));
    return (text.size() == 1 || text[1] == '.') && decimals.size() <= 3 &&
           std::all_of(decimals.begin(), decimals.end(),
                       [&](char c) { return c >= '0' && c <= (isOne ? '0' : '9'); });
}

// de, en;q=0.5
bool isLanguageList(std::string_view text) {
    const std::vector<std::string> languages = parts(text, ',');
    return isUtf8(text) &&
           std::all_of(languages.begin(), languages.end(), [](const auto& language) {
               const std::vector<std::string> fields = parts(language, ';');
               return fields.size() == 1 ||
                      (fields.size() == 2 && boost::algorithm::istarts_with(fields[1], "q=") &&
                       isQuality(std::string_view(fields[1]).substr(2)));
           });
}

void checkLanguages(const CimRequest& cim) {
    if (!isLanguageList(cim.acceptLanguage)) {
        refuse("request-not-valid", "invalid acceptlanguage header: AcceptLanguage contains an "
                                    "invalid quality value");
    }
    if (!isUtf8(cim.contentLanguage)) {
        refuse("request-not-valid", "invalid contentlanguage header");
    }
}

} // namespace

CimRequest readCimRequest(const HttpRequest& request) {
    checkOperation(request);
    CimRequest cim;
    cim.headers.method = readEncoded(request, "CIMMethod");
    cim.headers.object = readEncoded(request, "CIMObject");
    cim.headers.protocolVersion = headerOr(request, "CIMProtocolVersion", "1.0");
    if (!isUtf8Xml(request.header("Content-Type").value_or(""))) {
        refuse("", "HTTP Content-Type header error.");
    }
    cim.extension = request.method == "M-POST";
    cim.trailers = takesTrailers(request);
    cim.http10 = request.version < 11;
    cim.acceptLanguage = headerOr(request, "Accept-Language", "");
    cim.contentLanguage = headerOr(request, "Content-Language", "");
    checkLanguages(cim);
    return cim;
}

} // namespace smisd
