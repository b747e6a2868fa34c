// request_cost MODULE MOF KIND: carries requests of one kind out, of one size and of twice that.
//
// Each of them is a call of answerRequest, whose instructions RequestCostTest has valgrind count:
// the first one warms up, then come the single and the double size.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>

#include <Pegasus/Common/Exception.h>

#include "array/Array.h"
#include "server/cimxml/RequestDecoder.h"
#include "server/cimxml/ResponseWriter.h"
#include "server/dispatch/ServerDispatcher.h"
#include "server/schema/MofReader.h"
#include "tests/server/TemporaryDirectory.h"

namespace {

struct Message {
    std::string method;
    std::string object;
    std::string call; // IMETHODCALL or METHODCALL
};

// An element for each number below n.
std::string repeated(unsigned n, const std::function<std::string(const std::string&)>& element) {
    std::string all;
    for (unsigned i = 0; i < n; ++i) {
        all += element(std::to_string(i));
    }
    return all;
}

Message intrinsic(const std::string& method, const std::string& parameters) {
    return {method, "root/snia",
            "<IMETHODCALL NAME=\"" + method +
                "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"snia\"/>"
                "</LOCALNAMESPACEPATH>" +
                parameters + "</IMETHODCALL>"};
}

std::string parameter(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + value + "</IPARAMVALUE>";
}

std::string className(const std::string& name) {
    return parameter("ClassName", "<CLASSNAME NAME=\"" + name + "\"/>");
}

// StorageID, which hosts have, stands in the middle of names that nothing has.
std::string propertyList(unsigned n) {
    const auto value = [](const std::string& name) { return "<VALUE>" + name + "</VALUE>"; };
    return parameter(
        "PropertyList",
        "<VALUE.ARRAY>" + repeated(n / 2, [&](const auto& i) { return value("No_" + i); }) +
            value("StorageID") + repeated(n / 2, [&](const auto& i) { return value("None" + i); }) +
            "</VALUE.ARRAY>");
}

std::string key(const std::string& name, const std::string& value) {
    return "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE>" + value + "</KEYVALUE></KEYBINDING>";
}

// The first host, with what else its path is to say.
std::string hostName(const std::string& furtherKeys = "", const std::string& attributes = "") {
    return "<INSTANCENAME CLASSNAME=\"CIM_StorageHardwareID\"" + attributes + ">" +
           key("InstanceID", "Ovrin:0D000001") + furtherKeys + "</INSTANCENAME>";
}

std::string hostInstance(const std::string& content) {
    return parameter("ModifiedInstance", "<VALUE.NAMEDINSTANCE>" + hostName() +
                                             "<INSTANCE CLASSNAME=\"CIM_StorageHardwareID\">" +
                                             content + "</INSTANCE></VALUE.NAMEDINSTANCE>");
}

Message getWithList(unsigned n) {
    return intrinsic("GetInstance", parameter("InstanceName", hostName()) + propertyList(n));
}

// Names for each of n hosts: they must not be looked up for each of them.
Message enumerateWithList(unsigned n) {
    return intrinsic("EnumerateInstances",
                     className("CIM_StorageHardwareID") + propertyList(20 * n));
}

Message associatorsWithList(unsigned n) {
    return intrinsic(
        "Associators",
        parameter("ObjectName", "<INSTANCENAME CLASSNAME=\"CIM_AuthorizedPrivilege\">" +
                                    key("InstanceID", "Ovrin:0D000001") + "</INSTANCENAME>") +
            parameter("AssocClass", "<CLASSNAME NAME=\"CIM_AuthorizedSubject\"/>") +
            parameter("ResultClass", "<CLASSNAME NAME=\"CIM_StorageHardwareID\"/>") +
            propertyList(n));
}

Message classWithList(unsigned n) {
    return intrinsic("GetClass", className("CIM_StorageHardwareID") + propertyList(n));
}

Message enumerate(unsigned) {
    return intrinsic("EnumerateInstances", className("CIM_StorageHardwareID") + propertyList(1000));
}

Message properties(unsigned n) {
    return intrinsic("ModifyInstance", hostInstance(repeated(n, [](const auto& i) {
                         return "<PROPERTY NAME=\"P" + i + "\" TYPE=\"string\"/>";
                     })));
}

Message qualifiers(unsigned n) {
    return intrinsic("ModifyInstance", hostInstance("<PROPERTY NAME=\"P\" TYPE=\"string\">" +
                                                    repeated(n,
                                                             [](const auto& i) {
                                                                 return "<QUALIFIER NAME=\"Q" + i +
                                                                        "\" TYPE=\"string\"/>";
                                                             }) +
                                                    "</PROPERTY>"));
}

// In the least favourable order.
Message keys(unsigned n) {
    return intrinsic("GetInstance",
                     parameter("InstanceName", hostName(repeated(n, [n](const auto& i) {
                                   return key("K" + std::to_string(2 * n - std::stoul(i)), "v");
                               }))));
}

// Each of them a path whose key is a path: the escapes double with each level.
Message referenceKeys(unsigned n) {
    std::string path = hostName();
    for (int level = 0; level < 6; ++level) {
        path = "<INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"R\"><VALUE.REFERENCE>" + path +
               "</VALUE.REFERENCE></KEYBINDING></INSTANCENAME>";
    }
    return intrinsic("GetInstance",
                     parameter("InstanceName", hostName(repeated(n, [&](const auto& i) {
                                   return "<KEYBINDING NAME=\"R" + i + "\"><VALUE.REFERENCE>" +
                                          path + "</VALUE.REFERENCE></KEYBINDING>";
                               }))));
}

Message attributes(unsigned n) {
    return intrinsic("GetInstance",
                     parameter("InstanceName", hostName("", repeated(n, [](const auto& i) {
                                                            return " A" + i + "=\"v\"";
                                                        }))));
}

Message namespaces(unsigned n) {
    const std::string below = repeated(n, [](const auto& i) { return "/n" + i; });
    const std::string elements =
        repeated(n, [](const auto& i) { return "<NAMESPACE NAME=\"n" + i + "\"/>"; });
    return {"EnumerateInstanceNames", "root" + below,
            "<IMETHODCALL NAME=\"EnumerateInstanceNames\"><LOCALNAMESPACEPATH>"
            "<NAMESPACE NAME=\"root\"/>" +
                elements + "</LOCALNAMESPACEPATH>" + className("C") + "</IMETHODCALL>"};
}

Message methodParameters(unsigned n) {
    const std::string service = "CIM_ControllerConfigurationService";
    return {"NoSuchMethod", "root/snia:" + service,
            "<METHODCALL NAME=\"NoSuchMethod\"><LOCALCLASSPATH><LOCALNAMESPACEPATH>"
            "<NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"snia\"/></LOCALNAMESPACEPATH>"
            "<CLASSNAME NAME=\"" +
                service + "\"/></LOCALCLASSPATH>" +
                repeated(n,
                         [](const auto& i) {
                             return "<PARAMVALUE NAME=\"P" + i +
                                    "\" PARAMTYPE=\"string\"><VALUE>v</VALUE></PARAMVALUE>";
                         }) +
                "</METHODCALL>"};
}

// What grows: what the request names, or else the hosts that there are.
struct Kind {
    const char* name;
    Message (*make)(unsigned size);
    unsigned size;
    bool growsInHosts = false;
};

constexpr Kind kinds[] = {
    {"PropertiesOfAnInstanceAskedFor", getWithList, 4000},
    {"PropertiesOfAllInstancesAskedFor", enumerateWithList, 200, true},
    {"PropertiesOfAssociatorsAskedFor", associatorsWithList, 4000},
    {"PropertiesOfAClassAskedFor", classWithList, 4000},
    {"Instances", enumerate, 300, true},
    {"Properties", properties, 4000},
    {"Qualifiers", qualifiers, 4000},
    {"Keys", keys, 4000},
    {"ReferenceKeys", referenceKeys, 10},
    {"Attributes", attributes, 4000},
    {"Namespaces", namespaces, 4000},
    {"MethodParameters", methodParameters, 4000},
};

std::string bodyOf(const Message& message) {
    return "<?xml version=\"1.0\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
           "<MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ>" +
           message.call + "</SIMPLEREQ></MESSAGE></CIM>";
}

void makeHosts(array::Array& made, unsigned from, unsigned to) {
    made.change([&](array::Change& change) {
        for (unsigned i = from; i < to; ++i) {
            change.create(array::Initiator{"iqn.2026-01.com.example:host" + std::to_string(i), ""});
        }
    });
}

} // namespace

// From a request's body to that of its answer. What the request asks for may be refused.
extern "C" [[gnu::noinline]] void answerRequest(smisd::Dispatcher& dispatcher,
                                                const smisd::CimHeaders& headers,
                                                const std::string& body, std::string& answer) {
    const smisd::DecodedRequest decoded = smisd::decodeRequest(body, headers);
    const auto* operation = std::get_if<smisd::Operation>(&decoded.operation);
    if (operation == nullptr) {
        answer = smisd::errorBody(decoded.head, std::get<Pegasus::CIMException>(decoded.operation));
        return;
    }
    smisd::ResponseWriter writer(decoded.head, *operation);
    try {
        dispatcher.dispatch(*operation, {}, writer);
        answer = writer.finish();
    } catch (const Pegasus::CIMException& error) {
        answer = smisd::errorBody(decoded.head, error);
    }
}

int main(int argc, char** argv) {
    const auto* kind = std::find_if(std::begin(kinds), std::end(kinds), [&](const Kind& one) {
        return argc == 4 && std::string(argv[3]) == one.name;
    });
    if (kind == std::end(kinds)) {
        std::cerr << "usage: request_cost MODULE MOF KIND\n";
        return 2;
    }
    const smisd::test::TemporaryDirectory directory;
    setenv("DRAV_STATE_DIR", directory.path.c_str(), 1);
    const auto made = array::Array::openOrCreate(directory.path);
    smisd::Repository repository;
    smisd::readMofDirectory(argv[2], repository);
    smisd::ServerDispatcher dispatcher(repository, argv[1], "host.example.com");

    unsigned hosts = 0;
    for (const unsigned size : {kind->size, kind->size, 2 * kind->size}) {
        const unsigned wanted = kind->growsInHosts ? size : 10;
        makeHosts(*made, hosts, std::max(hosts, wanted));
        hosts = std::max(hosts, wanted);
        const Message message = kind->make(size);
        std::string answer;
        answerRequest(dispatcher, {message.method, message.object}, bodyOf(message), answer);
        std::cerr << kind->name << ' ' << size << ": " << answer.size()
                  << " bytes: " << answer.substr(0, 300) << '\n';
    }
    return 0;
}
