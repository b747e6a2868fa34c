#include "server/dispatch/Registration.h"

#include <algorithm>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>

#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

const CIMName moduleClass("PG_ProviderModule");
const CIMName providerClass("PG_Provider");
const CIMName capabilitiesClass("PG_ProviderCapabilities");

// The versions of the interface "C++Default" that OpenPegasus accepts.
const char* const interfaceVersions[] = {"2.1.0", "2.2.0", "2.3.0", "2.5.0", "2.6.0", "2.9.0"};

// The value of a property that must be there. The message is OpenPegasus'.
template<class T>
T required(const CIMInstance& instance, const char* name) {
    const Uint32 at = instance.findProperty(CIMName(name));
    if (at == PEG_NOT_FOUND || instance.getProperty(at).getValue().isNull()) {
        throw RegistrationError(std::string("Missing ") + name + " which is required property in " +
                                toUtf8(instance.getClassName().getString()) + " class.");
    }
    T value;
    instance.getProperty(at).getValue().get(value);
    return value;
}

// "PG_Provider X": how a message names an instance.
std::string title(const CIMInstance& instance, const String& name) {
    return toUtf8(instance.getClassName().getString()) + " " + toUtf8(name);
}

} // namespace

bool Registration::ServedOrder::operator()(const Served& left, const Served& right) const {
    const int nameSpaces =
        String::compareNoCase(left.nameSpace.getString(), right.nameSpace.getString());
    const int classes =
        String::compareNoCase(left.className.getString(), right.className.getString());
    return std::tie(nameSpaces, classes, left.type) < std::make_tuple(0, 0, right.type);
}

Registration::Registration(const std::vector<CIMInstance>& instances) {
    for (const CIMInstance& instance : instances) {
        if (instance.getClassName() == moduleClass) {
            addModule(instance);
        } else if (instance.getClassName() == providerClass) {
            addProvider(instance);
        } else if (instance.getClassName() == capabilitiesClass) {
            addCapabilities(instance);
        }
    }
    if (_moduleName.size() == 0) {
        throw RegistrationError("No PG_ProviderModule is registered.");
    }
}

const String* Registration::find(const CIMNamespaceName& nameSpace, const CIMName& className,
                                 ProviderType type) const {
    const auto found = _served.find({nameSpace, className, type});
    return found == _served.end() ? nullptr : &found->second;
}

void Registration::addModule(const CIMInstance& instance) {
    const String name = required<String>(instance, "Name");
    if (_moduleName.size() > 0) {
        throw RegistrationError(title(instance, name) + ": the server has only one module, " +
                                toUtf8(_moduleName) + ".");
    }
    const std::string interface = toUtf8(required<String>(instance, "InterfaceType"));
    if (interface != "C++Default") {
        throw RegistrationError(title(instance, name) + ": Unsupported InterfaceType value: \"" +
                                interface + "\".");
    }
    const std::string version = toUtf8(required<String>(instance, "InterfaceVersion"));
    if (std::find(std::begin(interfaceVersions), std::end(interfaceVersions), version) ==
        std::end(interfaceVersions)) {
        throw RegistrationError(title(instance, name) + ": Unsupported InterfaceVersion value: \"" +
                                version + "\".");
    }
    for (const char* property : {"Vendor", "Version", "Location"}) {
        required<String>(instance, property);
    }
    _moduleName = name;
}

void Registration::requireModule(const CIMInstance& instance) const {
    const String module = required<String>(instance, "ProviderModuleName");
    if (module != _moduleName) {
        throw RegistrationError(title(instance, module) +
                                ": the module of this name is not registered.");
    }
}

void Registration::addProvider(const CIMInstance& instance) {
    requireModule(instance);
    const String name = required<String>(instance, "Name");
    if (std::find(_providerNames.begin(), _providerNames.end(), name) != _providerNames.end()) {
        throw RegistrationError(title(instance, name) + ": registered twice.");
    }
    _providerNames.push_back(name);
}

void Registration::addCapabilities(const CIMInstance& instance) {
    requireModule(instance);
    const String id = required<String>(instance, "CapabilityID");
    const String provider = required<String>(instance, "ProviderName");
    if (std::find(_providerNames.begin(), _providerNames.end(), provider) == _providerNames.end()) {
        throw RegistrationError(title(instance, id) + ": the provider " + toUtf8(provider) +
                                " is not registered.");
    }
    const CIMName className(required<String>(instance, "ClassName"));
    const auto nameSpaces = required<Array<String>>(instance, "Namespaces");
    const auto types = required<Array<Uint16>>(instance, "ProviderType");
    for (Uint32 i = 0; i < nameSpaces.size(); ++i) {
        for (Uint32 j = 0; j < types.size(); ++j) {
            if (types[j] < 2 || types[j] > 7) {
                throw RegistrationError(title(instance, id) + ": no ProviderType has the number " +
                                        std::to_string(types[j]) + ".");
            }
            const Served served{CIMNamespaceName(nameSpaces[i]), className,
                                static_cast<ProviderType>(types[j])};
            if (!_served.emplace(served, provider).second) {
                throw RegistrationError(
                    title(instance, id) +
                    ": A provider is already registered for the specified capability.");
            }
        }
    }
}

} // namespace smisd
