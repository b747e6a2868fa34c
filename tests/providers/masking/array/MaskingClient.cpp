#include "tests/providers/masking/array/MaskingClient.h"

#include "tests/support/Handlers.h"

using namespace Pegasus;

namespace scripted {

namespace {

CIMValue textArray(const std::vector<std::string>& texts) {
    Pegasus::Array<String> array;
    for (const std::string& each : texts) {
        array.append(String(each.c_str()));
    }
    return array;
}

} // namespace

MaskingClient::MaskingClient() : array(emptyServedArray()) {
    CIMOMHandle handle;
    for (CIMProvider* provider :
         {static_cast<CIMProvider*>(&_controllers), static_cast<CIMProvider*>(&_units),
          static_cast<CIMProvider*>(&_service)}) {
        provider->initialize(handle);
    }
    clearLog();
}

Paths MaskingClient::controllers() {
    ObjectPathHandler handler;
    _controllers.enumerateInstanceNames(_context, classPath("CIM_SCSIProtocolController"), handler);
    return delivered(handler);
}

Instances MaskingClient::controllerInstances() {
    InstanceHandler handler;
    _controllers.enumerateInstances(_context, classPath("CIM_SCSIProtocolController"), true, false,
                                    ALL_PROPERTIES, handler);
    return delivered(handler);
}

CIMInstance MaskingClient::controller(const CIMObjectPath& path) {
    InstanceHandler handler;
    _controllers.getInstance(_context, path, true, false, ALL_PROPERTIES, handler);
    return delivered(handler).at(0);
}

Paths MaskingClient::units() {
    ObjectPathHandler handler;
    _units.enumerateInstanceNames(_context, classPath("CIM_ProtocolControllerForUnit"), handler);
    return delivered(handler);
}

Instances MaskingClient::unitInstances() {
    InstanceHandler handler;
    _units.enumerateInstances(_context, classPath("CIM_ProtocolControllerForUnit"), true, false,
                              ALL_PROPERTIES, handler);
    return delivered(handler);
}

Instances MaskingClient::unit(const CIMObjectPath& path) {
    InstanceHandler handler;
    _units.getInstance(_context, path, true, false, ALL_PROPERTIES, handler);
    return delivered(handler);
}

void MaskingClient::setAccess(const CIMObjectPath& unit, Uint16 deviceAccess) {
    CIMInstance instance(unit.getClassName());
    instance.addProperty(CIMProperty(CIMName("DeviceAccess"), deviceAccess));
    instance.setPath(unit);
    PlainHandler handler;
    _units.modifyInstance(_context, unit, instance, true, ALL_PROPERTIES, handler);
    expectCompleted();
}

Paths MaskingClient::associatorNames(const CIMObjectPath& source, const char* resultClass) {
    ObjectPathHandler handler;
    _units.associatorNames(_context, source, "CIM_ProtocolControllerForUnit", resultClass, "", "",
                           handler);
    return delivered(handler);
}

Instances MaskingClient::associators(const CIMObjectPath& source, const char* resultClass) {
    ObjectHandler handler;
    _units.associators(_context, source, "CIM_ProtocolControllerForUnit", resultClass, "", "", true,
                       false, ALL_PROPERTIES, handler);
    return asInstances(delivered(handler));
}

Paths MaskingClient::referenceNames(const CIMObjectPath& source, const char* role) {
    ObjectPathHandler handler;
    _units.referenceNames(_context, source, "CIM_ProtocolControllerForUnit", role, handler);
    return delivered(handler);
}

Instances MaskingClient::references(const CIMObjectPath& source, const char* role) {
    ObjectHandler handler;
    _units.references(_context, source, "CIM_ProtocolControllerForUnit", role, true, false,
                      ALL_PROPERTIES, handler);
    return asInstances(delivered(handler));
}

Uint32 MaskingClient::invoke(const char* method, const Exposure& exposure) {
    Pegasus::Array<CIMParamValue> parameters;
    const auto give = [&](const char* name, const CIMValue& value) {
        parameters.append(CIMParamValue(name, value));
    };
    give("LUNames", textArray(exposure.volumes));
    give("InitiatorPortIDs", textArray(exposure.initiators));
    give("DeviceNumbers", textArray(exposure.numbers));
    give("DeviceAccesses", Pegasus::Array<Uint16>(exposure.accesses.data(),
                                                  static_cast<Uint32>(exposure.accesses.size())));
    give("ProtocolControllers", Pegasus::Array<CIMObjectPath>(&exposure.controller, 1));

    MethodResultHandler handler;
    _service.invokeMethod(_context, classPath("CIM_ControllerConfigurationService"), method,
                          parameters, handler);
    expectCompleted();
    Uint32 result = 0xFFFFFFFF;
    handler.returnValues.at(0).get(result);
    return result;
}

} // namespace scripted
