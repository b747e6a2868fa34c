#include "tests/wire/support/Client.h"

#include "tests/wire/support/Http.h"
#include "tests/wire/support/Pair.h"

namespace wire {
namespace {

const Xml nameSpace =
    R"(<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="snia"/></LOCALNAMESPACEPATH>)";

Parameters argumentsOf(const Xml& source, const Walk& walk) {
    Parameters arguments = {{"ObjectName", source}};
    const auto add = [&](const char* name, const std::string& given, const Xml& xml) {
        if (!given.empty()) {
            arguments.push_back({name, xml});
        }
    };
    add("AssocClass", walk.assocClass, classNamed(walk.assocClass));
    add("ResultClass", walk.resultClass, classNamed(walk.resultClass));
    add("Role", walk.role, value(walk.role));
    add("ResultRole", walk.resultRole, value(walk.resultRole));
    if (walk.qualifiers) {
        arguments.push_back({"IncludeQualifiers", value("TRUE")});
    }
    if (walk.properties) {
        arguments.push_back({"PropertyList", values(*walk.properties)});
    }
    return arguments;
}

} // namespace

Client::Client(const Smisd& smisd, const std::string& credentials) : _port(smisd.port()) {
    if (!credentials.empty()) {
        _login = "Authorization: Basic " + run({"base64", "--wrap=0"}, credentials).out + "\n";
    }
}

std::string Client::post(const std::string& method, const std::string& object, const Xml& call,
                         bool chunked) const {
    return roundTrip(_port, requestBytes("POST /cimom HTTP/1.1\n"
                                         "Content-Type: application/xml; charset=utf-8\n" +
                                         std::string(chunked ? "TE: trailers\n" : "") + _login +
                                         "CIMOperation: MethodCall\n"
                                         "CIMMethod: " +
                                         method + "\nCIMObject: " + object +
                                         "\n\n"
                                         R"(<?xml version="1.0" encoding="utf-8" ?>)"
                                         R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
                                         R"(<MESSAGE ID="1001" PROTOCOLVERSION="1.0"><SIMPLEREQ>)" +
                                         call + "</SIMPLEREQ></MESSAGE></CIM>"));
}

Answer Client::call(const std::string& method, const Parameters& parameters, bool chunked) const {
    Xml xml = "<IMETHODCALL NAME=\"" + method + "\">" + nameSpace;
    for (const Parameter& parameter : parameters) {
        xml += "<IPARAMVALUE NAME=\"" + parameter.name + "\">" + parameter.value + "</IPARAMVALUE>";
    }
    return Answer(post(method, "root/snia", xml + "</IMETHODCALL>", chunked));
}

Answer Client::invoke(const std::string& className, const std::string& method,
                      const Parameters& parameters) const {
    Xml xml = "<METHODCALL NAME=\"" + method + "\"><LOCALCLASSPATH>" + nameSpace +
              classNamed(className) + "</LOCALCLASSPATH>";
    for (const Parameter& parameter : parameters) {
        const std::string type = parameter.type.empty() ? "" : "\" PARAMTYPE=\"" + parameter.type;
        xml += "<PARAMVALUE NAME=\"" + parameter.name + type + "\">" + parameter.value +
               "</PARAMVALUE>";
    }
    return Answer(post(method, "root/snia:" + className, xml + "</METHODCALL>", false));
}

Answer Client::enumerate(const std::string& className, bool chunked) const {
    return call("EnumerateInstances", {{"ClassName", classNamed(className)}}, chunked);
}

Answer Client::enumerateNames(const std::string& className, bool chunked) const {
    return call("EnumerateInstanceNames", {{"ClassName", classNamed(className)}}, chunked);
}

Answer Client::get(const Xml& instanceName) const {
    return call("GetInstance", {{"InstanceName", instanceName}});
}

Answer Client::modify(const Xml& instanceName, const std::string& className,
                      const Xml& properties) const {
    return call("ModifyInstance",
                {{"ModifiedInstance", namedInstance(instanceName, className, properties)}});
}

Answer Client::associators(const Xml& source, const Walk& walk) const {
    return call("Associators", argumentsOf(source, walk));
}

Answer Client::associatorNames(const Xml& source, const Walk& walk) const {
    return call("AssociatorNames", argumentsOf(source, walk));
}

Answer Client::references(const Xml& source, const Walk& walk) const {
    return call("References", argumentsOf(source, walk));
}

Answer Client::referenceNames(const Xml& source, const Walk& walk) const {
    return call("ReferenceNames", argumentsOf(source, walk));
}

} // namespace wire
