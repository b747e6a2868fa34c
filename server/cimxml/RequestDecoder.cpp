#include "server/cimxml/RequestDecoder.h"

#include <algorithm>

#include "server/cimxml/ElementReaders.h"
#include "server/cimxml/IntrinsicMethods.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

[[noreturn]] void refuseHeader(const std::string& detail) {
    throw BadRequest(400, "header-mismatch", detail);
}

[[noreturn]] void refuseVersion(const char* cimError, const std::string& what,
                                const std::string& version) {
    throw BadRequest(501, cimError, what + " \"" + version + "\" is not supported.");
}

// "2.3" is a version with the prefix "2."; the minor number is any.
bool isVersion(const std::string& text, const char* prefix) {
    return text.starts_with(prefix) && text.size() > 2 &&
           std::all_of(text.begin() + 2, text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

void checkVersions(const Element& cim) {
    const std::string cimVersion = cim.requiredAttribute("CIMVERSION");
    const std::string dtdVersion = cim.requiredAttribute("DTDVERSION");
    if (!isVersion(cimVersion, "2.")) {
        refuseVersion("unsupported-cim-version", "CIM version", cimVersion);
    }
    if (!isVersion(dtdVersion, "2.")) {
        refuseVersion("unsupported-dtd-version", "DTD version", dtdVersion);
    }
}

void checkProtocolVersion(const Element& message, const CimHeaders& headers) {
    const std::string version = message.requiredAttribute("PROTOCOLVERSION", "Invalid or missing");
    if (version != headers.protocolVersion) {
        refuseHeader("CIMProtocolVersion value \"" + headers.protocolVersion +
                     "\" does not match CIM request protocol version \"" + version + "\".");
    }
    if (!isVersion(version, "1.")) {
        refuseVersion("unsupported-protocol-version", "CIMProtocolVersion", version);
    }
}

// A header must say the same as the body: CIMMethod what the method is, CIMObject the object.
void checkHeader(const std::string& name, const std::string& header, const std::string& what,
                 const std::string& body, bool same) {
    if (header.empty()) {
        refuseHeader("Missing " + name + " HTTP header.");
    }
    if (!same) {
        refuseHeader(name + " value \"" + header + "\" does not match CIM request " + what + " \"" +
                     body + "\".");
    }
}

CIMObjectPath parseObjectHeader(const std::string& header) {
    try {
        return header.empty() ? CIMObjectPath() : CIMObjectPath(fromUtf8(header));
    } catch (const Exception&) {
        refuseHeader("Could not parse CIMObject value \"" + header + "\".");
    }
}

// The operation that `read` gives, or the CIM error that answers what it could not read. A value
// that a Pegasus type refuses is a bad parameter.
template<class Read>
std::variant<Operation, CIMException> operationOrError(Read read) {
    try {
        return read();
    } catch (const CIMException& error) {
        return error;
    } catch (const Exception& error) {
        return CIMException(CIM_ERR_INVALID_PARAMETER, error.getMessage());
    }
}

DecodedRequest readIMethodCall(Element call, const CimHeaders& headers) {
    const std::string method = call.requiredAttribute("NAME", "Missing");
    checkHeader("CIMMethod", headers.method, "method", method,
                String::equalNoCase(fromUtf8(headers.method), fromUtf8(method)));
    const CIMNamespaceName nameSpace = readLocalNamespacePath(call.expect("LOCALNAMESPACEPATH"));
    checkHeader("CIMObject", headers.object, "object", toUtf8(nameSpace.getString()),
                String::equalNoCase(fromUtf8(headers.object), nameSpace.getString()));
    auto operation = operationOrError([&] { return readIntrinsicCall(call, method, nameSpace); });
    return {{"", method, true}, std::move(operation), {}};
}

CIMObjectPath readCalledObject(Element& call) {
    if (const auto instance = call.take("LOCALINSTANCEPATH")) {
        return readLocalInstancePath(*instance);
    }
    return readLocalClassPath(
        call.expect("LOCALCLASSPATH", "Expected LOCALINSTANCEPATH or LOCALCLASSPATH element"));
}

Operation readInvocation(Element call, const CIMObjectPath& object, const std::string& method) {
    InvokeMethod operation;
    operation.nameSpace = object.getNameSpace();
    operation.objectName = object;
    operation.objectName.setNameSpace(CIMNamespaceName());
    operation.methodName = CIMName(fromUtf8(method));
    while (const auto parameter = call.take("PARAMVALUE")) {
        operation.inParameters.append(readParamValue(*parameter));
    }
    call.end();
    return operation;
}

DecodedRequest readMethodCall(Element call, const CimHeaders& headers) {
    const std::string method = call.requiredAttribute("NAME", "Missing");
    checkHeader("CIMMethod", headers.method, "method", method, headers.method == method);
    CIMObjectPath object;
    try {
        object = readCalledObject(call);
    } catch (const Exception& error) {
        call.fail(ElementError::semantic, toUtf8(error.getMessage()));
    }
    checkHeader("CIMObject", headers.object, "object", toUtf8(object.toString()),
                object.identical(parseObjectHeader(headers.object)));
    auto operation = operationOrError([&] { return readInvocation(call, object, method); });
    return {{"", method, false}, std::move(operation), {}};
}

DecodedRequest readCall(Element& request, const CimHeaders& headers) {
    if (const auto call = request.take("IMETHODCALL")) {
        return readIMethodCall(*call, headers);
    }
    return readMethodCall(
        request.expect("METHODCALL", "expected IMETHODCALL or METHODCALL element"), headers);
}

DecodedRequest readMessage(Element cim, const CimHeaders& headers) {
    if (std::string_view(cim.name()) != "CIM") {
        cim.fail(ElementError::validation, "Expected open of CIM element");
    }
    checkVersions(cim);
    Element message = cim.expect("MESSAGE");
    const std::string id = message.requiredAttribute("ID", "Invalid or missing");
    checkProtocolVersion(message, headers);
    if (message.take("MULTIREQ")) {
        refuseHeader("Multi-request is missing CIMBatch HTTP header");
    }
    Element request = message.expect("SIMPLEREQ", "Expected open of SIMPLEREQ element");
    DecodedRequest decoded = readCall(request, headers);
    decoded.head.messageId = id;
    request.end();
    message.end();
    cim.end();
    return decoded;
}

void reserve(MemoryBudget::Reservation& memory, std::size_t bytes) {
    if (memory.resize(bytes)) {
        return;
    }
    if (bytes > memory.most()) {
        throw BadRequest(413, "", "Reading the request takes more memory than one user may have");
    }
    throw BadRequest(503, "", "There is no memory to read the request now");
}

} // namespace

DecodedRequest decodeRequest(std::string body, const CimHeaders& headers, unsigned maximumDepth,
                             MemoryBudget::Reservation memory) {
    const ReadingCost cost = readingCost(body);
    reserve(memory, body.size() + cost.tree + cost.operation);
    DecodedRequest decoded = [&] {
        const XmlDocument document(std::move(body), maximumDepth);
        try {
            return readMessage(document.root(), headers);
        } catch (const ElementError& error) {
            throw document.badRequest(error);
        }
    }();
    memory.resize(cost.operation); // body and tree are gone
    decoded.memory = std::move(memory);
    return decoded;
}

} // namespace smisd
