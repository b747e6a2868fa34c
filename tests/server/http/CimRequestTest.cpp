#include "server/http/CimRequest.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "tests/server/http/HttpRequests.h"

namespace smisd::test {
namespace {

// "400 header-mismatch: detail" of the refusal, if it is refused
std::string refusalOf(const HttpRequest& request) {
    try {
        readCimRequest(request);
    } catch (const BadRequest& refusal) {
        return std::to_string(refusal.status()) + " " + refusal.cimError() + ": " + refusal.what();
    }
    return "no refusal";
}

TEST(CimRequest, HeadersAreReadInAnyCase) {
    HttpRequest request = enumerateRequest();
    for (HttpHeader& header : request.headers) {
        for (char& c : header.name) {
            c = static_cast<char>(std::tolower(c));
        }
    }
    const CimRequest cim = readCimRequest(with(request, "accept-language", "de"));
    EXPECT_EQ(cim.headers.method, "EnumerateInstanceNames");
    EXPECT_EQ(cim.headers.object, "root");
    EXPECT_EQ(cim.headers.protocolVersion, "1.0");
    EXPECT_EQ(cim.acceptLanguage, "de");
    EXPECT_EQ(cim.contentLanguage, "");
    EXPECT_FALSE(cim.extension);
    EXPECT_FALSE(cim.trailers);
}

TEST(CimRequest, MPostHasPrefixedHeaders) {
    HttpRequest request = enumerateRequest();
    request.method = "M-POST";
    for (HttpHeader& header : request.headers) {
        if (header.name.starts_with("CIM")) {
            header.name = "73-" + header.name;
        }
    }
    const CimRequest cim = readCimRequest(request);
    EXPECT_TRUE(cim.extension);
    EXPECT_EQ(cim.headers.method, "EnumerateInstanceNames");
}

// A request with one header changed, and what becomes of it.
struct HeaderCase {
    const char* name;
    std::optional<std::string> value; // nothing: the header is absent
    const char* outcome;
};

const char* const badLanguages = "400 request-not-valid: invalid acceptlanguage header: "
                                 "AcceptLanguage contains an invalid quality value";

const HeaderCase headerCases[] = {
    {"CIMOperation", "methodcall", "no refusal"},
    {"CIMOperation", {}, "400 : "},
    {"CIMOperation", "Frob",
     "400 unsupported-operation: CIMOperation value \"Frob\" is not supported."},
    {"CIMBatch", "", "501 multiple-requests-unsupported: "},
    {"CIMMethod", {}, "no refusal"},
    {"CIMMethod", "", "400 header-mismatch: Empty CIMMethod value."},
    {"CIMMethod", "%2", "400 header-mismatch: CIMMethod value syntax error."},
    {"CIMMethod", "\xFF", "400 header-mismatch: CIMMethod value syntax error."},
    {"CIMObject", "root%C3%A9", "no refusal"},
    {"CIMObject", "", "400 header-mismatch: Empty CIMObject value."},
    {"CIMObject", "root%2", "400 header-mismatch: CIMObject value syntax error."},
    {"CIMObject", "root%C3", "400 header-mismatch: CIMObject value syntax error."},
    {"Accept-Language", "\xFF", badLanguages},
    {"Content-Language", "\xFF", "400 request-not-valid: invalid contentlanguage header"},
};

TEST(CimRequest, IsRefusedForABadHeader) {
    for (const HeaderCase& row : headerCases) {
        EXPECT_EQ(refusalOf(with(enumerateRequest(), row.name, row.value)), row.outcome)
            << row.name << ": " << row.value.value_or("(absent)");
    }
}

TEST(CimRequest, HostIsDemandedByHttp11) {
    HttpRequest request = with(enumerateRequest(), "Host", {});
    EXPECT_EQ(refusalOf(request), "400 : HTTP request message lacks a Host header field.");
    request.version = 10;
    EXPECT_EQ(refusalOf(request), "no refusal");
}

TEST(CimRequest, MethodAndObjectAreDecoded) {
    EXPECT_EQ(readCimRequest(with(enumerateRequest(), "CIMObject", "root%2Fx%3AC.k=%22v%22"))
                  .headers.object,
              "root/x:C.k=\"v\"");
}

TEST(CimRequest, ContentIsXmlInUtf8) {
    for (const char* type : {"application/xml", "text/xml", "Application/XML; Charset=UTF-8",
                             "application/xml;charset=\"utf-8\"", "text/xml ; charset=utf-8"}) {
        EXPECT_EQ(refusalOf(with(enumerateRequest(), "Content-Type", type)), "no refusal") << type;
    }
    for (const char* type :
         {"", "text/plain", "application/xml; charset=iso-8859-1", "application/xml; charset",
          "application/xmlx", "application/xml; charset=utf-8; charset=utf-16"}) {
        EXPECT_EQ(refusalOf(with(enumerateRequest(), "Content-Type", type)),
                  "400 : HTTP Content-Type header error.")
            << type;
    }
    EXPECT_EQ(refusalOf(with(enumerateRequest(), "Content-Type", {})),
              "400 : HTTP Content-Type header error.");
}

TEST(CimRequest, LanguagesHaveLegalQualities) {
    for (const char* languages :
         {"", "de", "*", "de, en;q=0.5", "de;q=1, en ; Q=0.125,fr;q=0", "de;q=1.000", "de;q=0."}) {
        EXPECT_EQ(refusalOf(with(enumerateRequest(), "Accept-Language", languages)), "no refusal")
            << languages;
    }
    for (const char* languages : {"de;q=2", "de;q=", "de;q=1.001", "de;q=0.1234", "de;q=.5",
                                  "de;q=abc", "de;x=1", "de;", "en, de;q=-1"}) {
        EXPECT_EQ(refusalOf(with(enumerateRequest(), "Accept-Language", languages)), badLanguages)
            << languages;
    }
}

TEST(CimRequest, TrailersAreAskedForByTe) {
    const auto trailers = [](const std::string& value) {
        return readCimRequest(with(enumerateRequest(), "TE", value)).trailers;
    };
    EXPECT_TRUE(trailers("trailers"));
    EXPECT_TRUE(trailers("chunked"));
    EXPECT_TRUE(trailers("deflate;q=0.5, Trailers"));
    EXPECT_FALSE(trailers("deflate"));
    EXPECT_FALSE(trailers(""));
}

} // namespace
} // namespace smisd::test
