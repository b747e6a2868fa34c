#include "providers/frame/Announcements.h"

#include <iostream>

#include <Pegasus/Provider/ProviderException.h>

#include "engine/SMIEventServices.h"

namespace Pegasus {

namespace {

void publish(EMP_TYPE_e type, const std::string& announcement, const std::string& service,
             const std::string& operation, int line, const String& keyValues) {
    constexpr int channel = 0;
    constexpr Uint8 severity = 29;
    const std::string text = announcement + service + "Provider::" + operation + "()";
    const std::string file = service + ".cpp";
    SMIEventServices::publishKeyValueEvent(channel, type, text.c_str(), keyValues, severity, line,
                                           operation.c_str(), file.c_str());
}

} // namespace

// operator<< would also reset std::cout's width, which all threads share.
void trace(const std::string& line) {
    const std::string text = line + '\n';
    if (std::streambuf* const output = std::cout.rdbuf()) {
        output->sputn(text.data(), static_cast<std::streamsize>(text.size()));
        output->pubsync();
    }
}

std::string utf8(const String& text) {
    return static_cast<const char*>(text.getCString());
}

void refuse(const std::string& text) {
    throw CIMNotSupportedException(text.c_str());
}

void publishInvoked(const std::string& service, int line, const CIMObjectPath& objectReference,
                    const CIMName& methodName) {
    publish(EMP_TYPE_METHOD_INVOKED, "", service, "invokeMethod", line,
            String("objectReference=") + objectReference.toString() + String(", methodName=") +
                methodName.getString());
}

void refuseWithEvent(const std::string& service, const std::string& operation, int line,
                     const CIMObjectPath& instanceReference) {
    publish(EMP_TYPE_UNIMPLEMENTED, "Unimplemented method invoked ", service, operation, line,
            String("instanceReference=") + instanceReference.toString());
    refuse(service + "::" + operation);
}

} // namespace Pegasus
