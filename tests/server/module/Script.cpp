#include "tests/server/module/Script.h"

#include <stdexcept>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace scripted {

std::string idOf(const CIMObjectPath& path) {
    const Array<CIMKeyBinding> keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        if (keys[i].getName() == CIMName("Id")) {
            return text(keys[i].getValue());
        }
    }
    return "";
}

bool says(const std::string& id, const std::string& verb, std::string& rest) {
    if (id.rfind(verb + ":", 0) != 0) {
        return false;
    }
    rest = id.substr(verb.size() + 1);
    return true;
}

void throwAsAsked(const std::string& id) {
    std::string rest;
    if (says(id, "cim", rest)) {
        const size_t colon = rest.find(':');
        throw CIMException(static_cast<CIMStatusCode>(std::stoi(rest.substr(0, colon))),
                           String(rest.substr(colon + 1).c_str()));
    }
    if (says(id, "exception", rest)) {
        throw Exception(String(rest.c_str()));
    }
    if (says(id, "std", rest)) {
        throw std::runtime_error(rest);
    }
    if (id == "int") {
        throw 5;
    }
}

std::string text(const String& value) {
    return std::string(value.getCString());
}

std::string text(const CIMPropertyList& list) {
    if (list.isNull()) {
        return "list=null";
    }
    std::string result;
    for (Uint32 i = 0; i < list.size(); ++i) {
        result += (i ? "," : "") + text(list[i].getString());
    }
    return "list=[" + result + "]";
}

std::string flags(bool includeQualifiers, bool includeClassOrigin) {
    return std::string(includeQualifiers ? "+" : "-") + "qualifiers " +
           (includeClassOrigin ? "+" : "-") + "origin";
}

} // namespace scripted
