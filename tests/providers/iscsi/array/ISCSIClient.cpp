#include "tests/providers/iscsi/array/ISCSIClient.h"

#include "tests/support/Handlers.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;

namespace scripted {

namespace {

Paths pathsOf(const ObjectHandler& handler) {
    Paths paths;
    for (const CIMInstance& object : asInstances(delivered(handler))) {
        paths.push_back(object.getPath());
    }
    return paths;
}

} // namespace

ISCSIClient::ISCSIClient() : array(emptyServedArray()) {
    CIMOMHandle handle;
    _pipes.initialize(handle);
    _settings.initialize(handle);
    clearLog();
}

array::Id ISCSIClient::addTarget(const std::string& name, std::uint32_t maxConnections) {
    array::Id target = 0;
    array.change([&](array::Change& change) {
        target = change.create(array::Target{"iqn.2026-01.com.example:" + name, ""});
        array::SessionParameters parameters;
        parameters.maxConnections = maxConnections;
        change.modify(change.snapshot().sessionSettingsOf(target), parameters);
    });
    return target;
}

array::Id ISCSIClient::addHost(const std::string& name, const std::vector<array::Id>& targets) {
    array::Id host = 0;
    array.change([&](array::Change& change) {
        host = change.create(array::Initiator{"iqn.2026-01.com.example:" + name, ""});
        for (const array::Id target : targets) {
            change.grant(target, host);
        }
    });
    return host;
}

array::Id ISCSIClient::addEndpoint(const std::string& address) {
    array::Id endpoint = 0;
    array.change([&](array::Change& change) {
        endpoint = change.create(array::Endpoint{address, 3260});
    });
    return endpoint;
}

Paths ISCSIClient::instanceNames(const char* className) {
    ObjectPathHandler handler;
    _pipes.enumerateInstanceNames(_context, classPath(className), handler);
    return delivered(handler);
}

Instances ISCSIClient::instances(const char* className) {
    InstanceHandler handler;
    _pipes.enumerateInstances(_context, classPath(className), true, false, ALL_PROPERTIES, handler);
    return delivered(handler);
}

CIMInstance ISCSIClient::instance(const CIMObjectPath& path) {
    InstanceHandler handler;
    _pipes.getInstance(_context, path, true, false, ALL_PROPERTIES, handler);
    return delivered(handler).at(0);
}

Paths ISCSIClient::associators(const CIMObjectPath& source, const char* associationClass,
                               const char* resultClass) {
    ObjectPathHandler names;
    _pipes.associatorNames(_context, source, associationClass, resultClass, "", "", names);
    ObjectHandler objects;
    _pipes.associators(_context, source, associationClass, resultClass, "", "", true, false,
                       ALL_PROPERTIES, objects);
    const Paths paths = pathsOf(objects);
    EXPECT_EQ(texts(paths), texts(names.delivered));
    return paths;
}

Paths ISCSIClient::references(const CIMObjectPath& source, const char* associationClass) {
    ObjectPathHandler names;
    _pipes.referenceNames(_context, source, associationClass, "", names);
    ObjectHandler objects;
    _pipes.references(_context, source, associationClass, "", true, false, ALL_PROPERTIES, objects);
    const Paths paths = pathsOf(objects);
    EXPECT_EQ(texts(paths), texts(names.delivered));
    return paths;
}

std::vector<std::string> ISCSIClient::settings(const char* className, array::Id id) {
    InstanceHandler handler;
    _settings.getInstance(_context, pathOf(className, "InstanceID", id), false, false,
                          ALL_PROPERTIES, handler);
    return properties(delivered(handler).at(0));
}

void ISCSIClient::modify(const char* className, array::Id id, const char* property,
                         const CIMValue& value) {
    CIMInstance modified((CIMName(className)));
    modified.addProperty(CIMProperty(CIMName(property), value));
    PlainHandler handler;
    _settings.modifyInstance(_context, pathOf(className, "InstanceID", id), modified, true,
                             ALL_PROPERTIES, handler);
    expectCompleted();
}

CIMObjectPath pathOf(const char* className, const char* key, array::Id id) {
    return requestPath(className, {{key, keyText(id)}});
}

std::vector<std::string> texts(const Paths& paths) {
    std::vector<std::string> result;
    for (const CIMObjectPath& path : paths) {
        result.push_back(text(path));
    }
    return result;
}

} // namespace scripted
