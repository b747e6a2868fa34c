// Requests for the tests of the decoder.
#pragma once

#include <string>

#include <Pegasus/Common/String.h>
#include <gtest/gtest.h>

#include "server/cimxml/RequestDecoder.h"
#include "server/cimxml/XmlDocument.h"
#include "server/operation/Utf8.h"

namespace smisd::test {

inline const std::string declaration = R"(<?xml version="1.0" encoding="utf-8" ?>)";

// A message around `call`, the IMETHODCALL or METHODCALL.
inline std::string message(const std::string& call) {
    return declaration +
           R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
           R"(<MESSAGE ID="1001" PROTOCOLVERSION="1.0"><SIMPLEREQ>)" +
           call + "</SIMPLEREQ></MESSAGE></CIM>";
}

// In namespace root/test.
inline std::string intrinsicCall(const std::string& method, const std::string& parameters) {
    return message("<IMETHODCALL NAME=\"" + method +
                   R"("><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="test"/>)"
                   "</LOCALNAMESPACEPATH>" +
                   parameters + "</IMETHODCALL>");
}

inline std::string parameter(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + value + "</IPARAMVALUE>";
}

inline DecodedRequest decodeIntrinsic(const std::string& method, const std::string& parameters) {
    return decodeRequest(intrinsicCall(method, parameters), {method, "root/test"});
}

// The operation of a call that is expected to be good.
template<class T>
T operationOf(const DecodedRequest& request) {
    if (const auto* error = std::get_if<Pegasus::CIMException>(&request.operation)) {
        throw std::runtime_error("CIM error instead of an operation: " +
                                 toUtf8(error->getMessage()));
    }
    return std::get<T>(std::get<Operation>(request.operation));
}

// "4 text" of the CIM error that is expected.
inline std::string errorOf(const DecodedRequest& request) {
    const auto& error = std::get<Pegasus::CIMException>(request.operation);
    return std::to_string(error.getCode()) + " " + toUtf8(error.getMessage());
}

// "400 request-not-valid: detail" of the refusal that `decode` is expected to end in.
template<class Decode>
std::string refusalOf(Decode decode) {
    try {
        decode();
    } catch (const BadRequest& refusal) {
        return std::to_string(refusal.status()) + " " + refusal.cimError() + ": " + refusal.what();
    }
    return "no refusal";
}

// What `read` gives for an element, or "semantic: text" for the error.
template<class Read>
auto readElement(const std::string& xml, Read read) {
    const XmlDocument document(declaration + xml);
    return read(document.root());
}

template<class Read>
std::string elementErrorOf(const std::string& xml, Read read) {
    static const char* const kinds[] = {"notWellFormed", "validation", "semantic"};
    try {
        readElement(xml, read);
    } catch (const ElementError& error) {
        return std::string(kinds[error.kind()]) + ": " + error.what();
    }
    return "no error";
}

} // namespace smisd::test
