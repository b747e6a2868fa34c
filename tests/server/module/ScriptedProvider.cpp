#include "tests/server/module/ScriptedProvider.h"

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/ProviderException.h>

#include "tests/server/module/Script.h"

using namespace Pegasus;

namespace scripted {
namespace {

CIMObjectPath pathOf(const CIMName& className, const std::string& id, const String& host = String(),
                     const CIMNamespaceName& nameSpace = CIMNamespaceName()) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("Id"), String(id.c_str()), CIMKeyBinding::STRING));
    return CIMObjectPath(host, nameSpace, className, keys);
}

CIMInstance instanceOf(const CIMObjectPath& path, const std::string& seen) {
    CIMInstance instance(path.getClassName());
    instance.addProperty(CIMProperty(CIMName("Id"), CIMValue(String(idOf(path).c_str()))));
    instance.addProperty(CIMProperty(CIMName("Seen"), CIMValue(String(seen.c_str()))));
    instance.setPath(path);
    return instance;
}

CIMInstance instanceOf(const CIMName& className, const std::string& id, const std::string& seen) {
    return instanceOf(pathOf(className, id), seen);
}

std::string propertiesOf(const CIMInstance& instance) {
    std::string result;
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        const CIMConstProperty property = instance.getProperty(i);
        result += " " + text(property.getName().getString()) + ":" +
                  cimTypeToString(property.getType()) + "=" +
                  (property.getValue().isNull() ? "null" : text(property.getValue().toString()));
    }
    return result;
}

String userOf(const OperationContext& context) {
    return IdentityContainer(context.get(IdentityContainer::NAME)).getUserName();
}

const CIMNamespaceName otherNamespace("root/other");

// Three paths: bare, with a namespace, with host and namespace.
std::vector<CIMObjectPath> pathsOf(const CIMName& className) {
    return {pathOf(className, "bare"), pathOf(className, "namespace", String(), otherNamespace),
            pathOf(className, "full", String("other.host"), otherNamespace)};
}

void refuse(const CIMName& association, const char* operation) {
    if (association == CIMName("Test_RefusingLink")) {
        throw CIMNotSupportedException(String("Scripted::") + String(operation));
    }
}

} // namespace

void ScriptedProvider::initialize(CIMOMHandle& cimom) {
    _cimom = cimom;
}

void ScriptedProvider::terminate() {}

void ScriptedProvider::remember(const std::string& call) {
    const std::lock_guard lock(_mutex);
    _last = call;
}

std::string ScriptedProvider::remembered() {
    const std::lock_guard lock(_mutex);
    return _last;
}

void ScriptedProvider::getInstance(const OperationContext& context,
                                   const CIMObjectPath& instanceReference,
                                   const Boolean includeQualifiers,
                                   const Boolean includeClassOrigin,
                                   const CIMPropertyList& propertyList,
                                   InstanceResponseHandler& handler) {
    const CIMName className = instanceReference.getClassName();
    const std::string id = idOf(instanceReference);
    std::string seen = text(instanceReference.toString()) + " " +
                       flags(includeQualifiers, includeClassOrigin) + " " + text(propertyList);
    handler.processing();
    throwAsAsked(id);
    if (id == "none") {
        return handler.complete();
    }
    if (id == "uninitialized") {
        handler.deliver(CIMInstance());
    }
    if (id == "user") {
        seen = text(userOf(context));
    }
    if (id == "last") {
        seen = remembered();
    }
    std::string rest;
    if (says(id, "up", rest)) {
        return handler.deliver(_cimom.getInstance(
                   context, CIMNamespaceName("root/test"),
                   pathOf(className, rest, String("ignored.host"), otherNamespace), false,
                   includeQualifiers, includeClassOrigin, propertyList)),
               handler.complete();
    }
    handler.deliver(instanceOf(className, id, seen));
    if (id == "twice") {
        handler.deliver(instanceOf(className, id, seen));
    }
    if (id == "forget") {
        return;
    }
    handler.complete();
    if (says(id, "late", rest)) {
        throw Exception(String(rest.c_str()));
    }
}

void ScriptedProvider::enumerateInstances(const OperationContext&,
                                          const CIMObjectPath& classReference,
                                          const Boolean includeQualifiers,
                                          const Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList,
                                          InstanceResponseHandler& handler) {
    const CIMName className = classReference.getClassName();
    const std::string seen = text(classReference.toString()) + " " +
                             flags(includeQualifiers, includeClassOrigin) + " " +
                             text(propertyList);
    handler.processing();
    if (className == CIMName("Test_Refusing")) {
        throw CIMNotSupportedException(String("Scripted::enumerateInstances"));
    }
    if (className == CIMName("Test_Pathless")) {
        handler.deliver(CIMInstance(className));
    } else {
        handler.deliver(instanceOf(className, "1", seen));
    }
    if (className == CIMName("Test_Failing")) {
        throw CIMOperationFailedException(String("failed after one"));
    }
    for (int i = 2; className == CIMName("Test_Many") && i <= 250; ++i) {
        handler.deliver(instanceOf(className, std::to_string(i), seen));
    }
    handler.complete();
}

void ScriptedProvider::enumerateInstanceNames(const OperationContext&,
                                              const CIMObjectPath& classReference,
                                              ObjectPathResponseHandler& handler) {
    const CIMName className = classReference.getClassName();
    handler.processing();
    if (className == CIMName("Test_Refusing")) {
        throw CIMNotSupportedException(String("Scripted::enumerateInstanceNames"));
    }
    handler.deliver(pathOf(className, text(classReference.toString())));
    if (className == CIMName("Test_Failing")) {
        throw CIMOperationFailedException(String("failed after one"));
    }
    handler.complete();
}

void ScriptedProvider::modifyInstance(const OperationContext&,
                                      const CIMObjectPath& instanceReference,
                                      const CIMInstance& instanceObject,
                                      const Boolean includeQualifiers,
                                      const CIMPropertyList& propertyList,
                                      ResponseHandler& handler) {
    remember("modify " + text(instanceReference.toString()) + " " +
             flags(includeQualifiers, false) + " " + text(propertyList) + " " +
             text(instanceObject.getPath().toString()) + propertiesOf(instanceObject));
    handler.processing();
    throwAsAsked(idOf(instanceReference));
    handler.complete();
}

void ScriptedProvider::createInstance(const OperationContext&,
                                      const CIMObjectPath& instanceReference,
                                      const CIMInstance& instanceObject,
                                      ObjectPathResponseHandler& handler) {
    remember("create " + text(instanceReference.toString()) + " " +
             text(instanceObject.getPath().toString()) + propertiesOf(instanceObject));
    std::string id;
    const Uint32 at = instanceObject.findProperty(CIMName("Id"));
    if (at != PEG_NOT_FOUND) {
        id = text(instanceObject.getProperty(at).getValue().toString());
    }
    handler.processing();
    throwAsAsked(id);
    if (id != "none") {
        handler.deliver(pathOf(instanceReference.getClassName(), id));
    }
    handler.complete();
}

void ScriptedProvider::deleteInstance(const OperationContext&,
                                      const CIMObjectPath& instanceReference,
                                      ResponseHandler& handler) {
    remember("delete " + text(instanceReference.toString()));
    handler.processing();
    throwAsAsked(idOf(instanceReference));
    handler.complete();
}

void ScriptedProvider::associators(const OperationContext&, const CIMObjectPath& objectName,
                                   const CIMName& associationClass, const CIMName& resultClass,
                                   const String& role, const String& resultRole,
                                   const Boolean includeQualifiers,
                                   const Boolean includeClassOrigin,
                                   const CIMPropertyList& propertyList,
                                   ObjectResponseHandler& handler) {
    refuse(associationClass, "associators");
    handler.processing();
    throwAsAsked(idOf(objectName));
    const std::string seen =
        text(objectName.toString()) + " " + text(associationClass.getString()) + " " +
        text(resultClass.getString()) + " " + text(role) + " " + text(resultRole) + " " +
        flags(includeQualifiers, includeClassOrigin) + " " + text(propertyList);
    for (const CIMObjectPath& path : pathsOf(CIMName("Test_Element"))) {
        handler.deliver(CIMObject(instanceOf(path, seen)));
    }
    handler.complete();
}

void ScriptedProvider::associatorNames(const OperationContext&, const CIMObjectPath& objectName,
                                       const CIMName& associationClass, const CIMName&,
                                       const String&, const String&,
                                       ObjectPathResponseHandler& handler) {
    refuse(associationClass, "associatorNames");
    handler.processing();
    throwAsAsked(idOf(objectName));
    for (const CIMObjectPath& path : pathsOf(CIMName("Test_Element"))) {
        handler.deliver(path);
    }
    handler.complete();
}

void ScriptedProvider::references(const OperationContext&, const CIMObjectPath& objectName,
                                  const CIMName& resultClass, const String& role,
                                  const Boolean includeQualifiers, const Boolean includeClassOrigin,
                                  const CIMPropertyList& propertyList,
                                  ObjectResponseHandler& handler) {
    refuse(resultClass, "references");
    handler.processing();
    throwAsAsked(idOf(objectName));
    const std::string seen = text(objectName.toString()) + " " + text(resultClass.getString()) +
                             " " + text(role) + " " + flags(includeQualifiers, includeClassOrigin) +
                             " " + text(propertyList);
    for (const CIMObjectPath& path : pathsOf(resultClass)) {
        handler.deliver(CIMObject(instanceOf(path, seen)));
    }
    handler.complete();
}

void ScriptedProvider::referenceNames(const OperationContext&, const CIMObjectPath& objectName,
                                      const CIMName& resultClass, const String&,
                                      ObjectPathResponseHandler& handler) {
    refuse(resultClass, "referenceNames");
    handler.processing();
    throwAsAsked(idOf(objectName));
    for (const CIMObjectPath& path : pathsOf(resultClass)) {
        handler.deliver(path);
    }
    handler.complete();
}

void ScriptedProvider::invokeMethod(const OperationContext&, const CIMObjectPath& objectReference,
                                    const CIMName& methodName,
                                    const Array<CIMParamValue>& inParameters,
                                    MethodResultResponseHandler& handler) {
    handler.processing();
    throwAsAsked(idOf(objectReference));
    if (methodName == CIMName("Two")) {
        handler.deliver(CIMValue(Uint32(1)));
    }
    if (methodName == CIMName("Echo") || methodName == CIMName("Two")) {
        handler.deliverParamValue(
            CIMParamValue(String("path"), CIMValue(objectReference.toString())));
    }
    if (methodName == CIMName("Echo")) {
        handler.deliverParamValue(inParameters);
        handler.deliver(CIMValue(Uint32(0)));
    } else if (methodName == CIMName("Two")) {
        handler.deliver(CIMValue(Uint32(2)));
    } else if (methodName == CIMName("Null")) {
        handler.deliver(CIMValue(CIMTYPE_UINT32, false));
    } else if (methodName != CIMName("None")) {
        throw CIMMethodNotFoundException(methodName.getString());
    }
    handler.complete();
}

} // namespace scripted
