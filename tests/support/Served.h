#pragma once

#include <memory>

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>

#include "providers/frame/PegasusCreateProvider.h"
#include "tests/support/ProviderTest.h"

namespace scripted {

// An initialized provider by its name, its operations as a server calls them, and what it
// delivered. An operation of an interface that the provider doesn't have throws std::bad_cast.
class Served {
public:
    explicit Served(const char* name) : _provider(PegasusCreateProvider(name)) {
        Pegasus::CIMOMHandle handle;
        _provider->initialize(handle);
    }

    void getInstance(const Pegasus::CIMObjectPath& path) {
        as<Pegasus::CIMInstanceProvider>().getInstance(_context, path, false, false, _all,
                                                       instances);
    }

    void enumerate(const Pegasus::CIMName& className) {
        as<Pegasus::CIMInstanceProvider>().enumerateInstances(_context, requestPath(className),
                                                              false, false, _all, instances);
    }

    void enumerateNames(const Pegasus::CIMName& className) {
        as<Pegasus::CIMInstanceProvider>().enumerateInstanceNames(_context, requestPath(className),
                                                                  paths);
    }

    void modifyInstance(const Pegasus::CIMObjectPath& path, const Pegasus::CIMInstance& instance) {
        PlainHandler response;
        as<Pegasus::CIMInstanceProvider>().modifyInstance(_context, path, instance, false, _all,
                                                          response);
    }

    void associators(const Pegasus::CIMObjectPath& path, const Pegasus::CIMName& association,
                     const Pegasus::CIMName& result) {
        as<Pegasus::CIMAssociationProvider>().associators(_context, path, association, result, "",
                                                          "", false, false, _all, objects);
    }

    void associatorNames(const Pegasus::CIMObjectPath& path, const Pegasus::CIMName& association,
                         const Pegasus::CIMName& result) {
        as<Pegasus::CIMAssociationProvider>().associatorNames(_context, path, association, result,
                                                              "", "", paths);
    }

    void references(const Pegasus::CIMObjectPath& path, const Pegasus::CIMName& association,
                    const char* role) {
        as<Pegasus::CIMAssociationProvider>().references(_context, path, association, role, false,
                                                         false, _all, objects);
    }

    void referenceNames(const Pegasus::CIMObjectPath& path, const Pegasus::CIMName& association,
                        const char* role) {
        as<Pegasus::CIMAssociationProvider>().referenceNames(_context, path, association, role,
                                                             paths);
    }

    void invokeMethod(const Pegasus::CIMName& className, const char* method,
                      const Pegasus::Array<Pegasus::CIMParamValue>& parameters) {
        as<Pegasus::CIMMethodProvider>().invokeMethod(_context, requestPath(className), method,
                                                      parameters, results);
    }

    InstanceHandler instances;
    ObjectPathHandler paths;
    ObjectHandler objects;
    MethodResultHandler results;

private:
    template<class Interface>
    Interface& as() {
        return dynamic_cast<Interface&>(*_provider);
    }

    const std::unique_ptr<Pegasus::CIMProvider> _provider;
    const Pegasus::OperationContext _context;
    const Pegasus::CIMPropertyList _all;
};

// The path of a request with one key, an object of the engine.
inline Pegasus::CIMObjectPath keyed(const Pegasus::CIMName& className, const char* key,
                                    Pegasus::Uint32 id) {
    return requestPath(className, {{key, keyText(id)}});
}

} // namespace scripted
