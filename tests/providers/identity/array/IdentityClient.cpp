#include "tests/providers/identity/array/IdentityClient.h"

#include "providers/frame/Objects.h"
#include "tests/support/Handlers.h"
#include "tests/support/ScriptedCIMOM.h"

using namespace Pegasus;

namespace scripted {

IdentityClient::IdentityClient() : array(emptyServedArray()) {
    CIMOMHandle handle;
    for (CIMProvider* provider :
         {static_cast<CIMProvider*>(&_registration), static_cast<CIMProvider*>(&_hosts),
          static_cast<CIMProvider*>(&_access), static_cast<CIMProvider*>(&_secrets),
          static_cast<CIMProvider*>(&_controllers), static_cast<CIMProvider*>(&_masking)}) {
        provider->initialize(handle);
    }
    answerGetInstance([this](const CIMObjectPath& path) { return answer(path); });
    clearLog();
}

IdentityClient::Registered IdentityClient::create(const std::string& iSCSIName) {
    Parameters parameters;
    parameters.append(CIMParamValue("StorageID", String(iSCSIName.c_str())));
    Parameters given;
    Registered registered;
    registered.result = invoke<Sint32>(_registration, "CIM_StorageHardwareIDManagementService",
                                       "CreateStorageHardwareID", parameters, &given);
    if (given.size() != 0) {
        given[0].getValue().get(registered.host);
    }
    return registered;
}

Sint32 IdentityClient::remove(const CIMObjectPath& host) {
    Parameters parameters;
    parameters.append(CIMParamValue("HardwareID", host));
    return invoke<Sint32>(_registration, "CIM_StorageHardwareIDManagementService",
                          "DeleteStorageHardwareID", parameters);
}

Paths IdentityClient::hosts() {
    ObjectPathHandler handler;
    _hosts.enumerateInstanceNames(_context, classPath("CIM_StorageHardwareID"), handler);
    return delivered(handler);
}

CIMInstance IdentityClient::host(const CIMObjectPath& path) {
    InstanceHandler handler;
    _hosts.getInstance(_context, path, true, false, ALL_PROPERTIES, handler);
    return delivered(handler).at(0);
}

Paths IdentityClient::associatorNames(const CIMObjectPath& source, const char* associationClass,
                                      const char* resultClass) {
    ObjectPathHandler handler;
    _access.associatorNames(_context, source, associationClass, resultClass, "", "", handler);
    return delivered(handler);
}

Instances IdentityClient::associators(const CIMObjectPath& source, const char* associationClass,
                                      const char* resultClass) {
    ObjectHandler handler;
    _access.associators(_context, source, associationClass, resultClass, "", "", true, false,
                        ALL_PROPERTIES, handler);
    return asInstances(delivered(handler));
}

Uint32 IdentityClient::changeAccess(const char* method, const std::string& iSCSIName,
                                    const CIMObjectPath& controller) {
    Parameters parameters;
    parameters.append(CIMParamValue(
        "InitiatorPortIDs", CIMValue(Pegasus::Array<String>(1, String(iSCSIName.c_str())))));
    parameters.append(CIMParamValue("ProtocolControllers",
                                    CIMValue(Pegasus::Array<CIMObjectPath>(&controller, 1))));
    return invoke<Uint32>(_masking, "CIM_ControllerConfigurationService", method, parameters);
}

std::string IdentityClient::secret(const CIMObjectPath& path) {
    InstanceHandler handler;
    _secrets.getInstance(_context, path, true, false, ALL_PROPERTIES, handler);
    const CIMInstance instance = delivered(handler).at(0);
    String secret;
    instance.getProperty(instance.findProperty("Secret")).getValue().get(secret);
    return text(secret);
}

void IdentityClient::setSecret(const CIMObjectPath& path, const std::string& secret) {
    CIMInstance modified("CIM_SharedSecret");
    modified.addProperty(CIMProperty("Secret", String(secret.c_str())));
    PlainHandler handler;
    _secrets.modifyInstance(_context, path, modified, true, ALL_PROPERTIES, handler);
    expectCompleted();
}

// As the server routes getInstance.
CIMInstance IdentityClient::answer(const CIMObjectPath& path) {
    InstanceHandler handler;
    if (path.getClassName() == CLASS_StorageHardwareID) {
        _hosts.getInstance(_context, path, true, false, ALL_PROPERTIES, handler);
    } else if (path.getClassName() == CLASS_SCSIProtocolController) {
        _controllers.getInstance(_context, path, true, false, ALL_PROPERTIES, handler);
    }
    return handler.delivered.at(0);
}

template<class Value>
Value IdentityClient::invoke(CIMMethodProvider& service, const char* serviceClass,
                             const char* method, const Parameters& parameters, Parameters* given) {
    MethodResultHandler handler;
    service.invokeMethod(_context, classPath(serviceClass), method, parameters, handler);
    expectCompleted();
    if (given) {
        for (const CIMParamValue& parameter : handler.parameters) {
            given->append(parameter);
        }
    }
    Value result{};
    handler.returnValues.at(0).get(result);
    return result;
}

} // namespace scripted
