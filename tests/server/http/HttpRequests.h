// Requests for the tests of HTTP.
#pragma once

#include <string>

#include "server/http/HttpMessage.h"

namespace smisd::test {

inline const std::string enumerateBody =
    R"(<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
    R"(<MESSAGE ID="7" PROTOCOLVERSION="1.0"><SIMPLEREQ><IMETHODCALL NAME="EnumerateInstanceNames">)"
    R"(<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/></LOCALNAMESPACEPATH>)"
    R"(<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="C"/></IPARAMVALUE>)"
    "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";

// A good request for the names of the instances of C.
inline HttpRequest enumerateRequest() {
    HttpRequest request;
    request.method = "POST";
    request.target = "/cimom";
    request.headers = {{"Host", "localhost"},
                       {"Content-Type", "application/xml; charset=utf-8"},
                       {"CIMOperation", "MethodCall"},
                       {"CIMMethod", "EnumerateInstanceNames"},
                       {"CIMObject", "root"}};
    request.body = enumerateBody;
    request.peer = "192.0.2.1";
    return request;
}

// Sets a header, or removes it when there is no value.
inline HttpRequest with(HttpRequest request, const std::string& name,
                        const std::optional<std::string>& value) {
    std::erase_if(request.headers, [&](const HttpHeader& header) { return header.name == name; });
    if (value) {
        request.headers.push_back({name, WipedString(*value)});
    }
    return request;
}

} // namespace smisd::test
