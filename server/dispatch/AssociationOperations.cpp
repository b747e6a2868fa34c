// Walks along associations from an instance: they go to the provider of each association class that
// can lead away from it. Walks from a class are answered by the schema alone.

#include <algorithm>

#include <Pegasus/Provider/CIMAssociationProvider.h>

#include "server/dispatch/Operations.h"
#include "server/dispatch/Routing.h"
#include "server/module/ProviderManager.h"
#include "server/module/ResponseHandlers.h"

using namespace Pegasus;

namespace smisd {
namespace {

// `what` is "role" or "resultrole".
void requireLegalRole(const String& role, const char* what) {
    if (role.size() > 0 && !CIMName::legal(role)) {
        throw CIMException(CIM_ERR_INVALID_PARAMETER, String(what) + String(" ") + role);
    }
}

void requireSource(const Request& request, const CIMNamespaceName& nameSpace,
                   const CIMObjectPath& source) {
    requireClass(requireNamespace(request, nameSpace), source.getClassName(),
                 CIM_ERR_INVALID_PARAMETER);
}

// The registered associations from the source class, restricted to `associationClass` and its
// subclasses unless that is null. Roles and result classes are the providers' business.
std::vector<Participant> participantsOf(const Request& request, const CIMNamespaceName& nameSpace,
                                        const CIMName& source, const CIMName& associationClass) {
    const Schema& schema = requireNamespace(request, nameSpace);
    if (!associationClass.isNull()) {
        requireClass(schema, associationClass, CIM_ERR_INVALID_PARAMETER);
    }
    std::vector<Participant> result;
    for (const Link& link : schema.linksFrom(source)) {
        const bool isKnown =
            std::any_of(result.begin(), result.end(), [&](const Participant& participant) {
                return participant.className == link.association;
            });
        const bool isWanted =
            associationClass.isNull() || schema.isA(link.association, associationClass);
        const String* provider = request.server.registration.find(nameSpace, link.association,
                                                                  ProviderType::association);
        if (isWanted && !isKnown && provider) {
            result.push_back({link.association, *provider});
        }
    }
    requireParticipants(result, source);
    return result;
}

// Calls `call` with the provider, the source's path and the association class, for each.
template<class Call>
void walk(const Request& request, const CIMNamespaceName& nameSpace, const CIMObjectPath& source,
          const CIMName& associationClass, Call call) {
    const CIMObjectPath path = providerPath(request, nameSpace, source);
    callEach(participantsOf(request, nameSpace, source.getClassName(), associationClass),
             [&](const Participant& participant) {
                 call(requireInterface<CIMAssociationProvider>(request, participant.provider), path,
                      participant.className);
             });
}

// The provider keeps its object as it is.
CIMObject completed(const CIMObject& object, const Request& request,
                    const CIMNamespaceName& nameSpace) {
    const CIMObjectPath& path = object.getPath();
    if (path.getHost().size() > 0 && !path.getNameSpace().isNull()) {
        return object;
    }
    CIMObject result = object.clone();
    result.setPath(completePath(path, request.server.hostName, nameSpace));
    return result;
}

ObjectListHandler objectHandler(const Request& request, const CIMNamespaceName& nameSpace) {
    return ObjectListHandler([&](const CIMObject& object) {
        request.sink.objectWithPath(completed(object, request, nameSpace));
    });
}

PathListHandler pathHandler(const Request& request, const CIMNamespaceName& nameSpace) {
    return PathListHandler([&](const CIMObjectPath& path) {
        request.sink.objectPath(completePath(path, request.server.hostName, nameSpace));
    });
}

} // namespace

void carryOut(const Associators& operation, const Request& request) {
    requireLegalRole(operation.role, "role");
    requireLegalRole(operation.resultRole, "resultrole");
    requireSource(request, operation.nameSpace, operation.objectName);
    if (operation.ofClass) {
        return associatedClasses(operation, request);
    }
    const CIMPropertyList list =
        providerList(operation.propertyList, requireNamespace(request, operation.nameSpace));
    walk(request, operation.nameSpace, operation.objectName, operation.assocClass,
         [&](CIMAssociationProvider& provider, const CIMObjectPath& path,
             const CIMName& association) {
             ObjectListHandler handler = objectHandler(request, operation.nameSpace);
             callProvider(handler, [&] {
                 provider.associators(request.context, path, association, operation.resultClass,
                                      operation.role, operation.resultRole,
                                      operation.includeQualifiers, operation.includeClassOrigin,
                                      list, handler);
             });
         });
}

void carryOut(const AssociatorNames& operation, const Request& request) {
    requireLegalRole(operation.role, "role");
    requireLegalRole(operation.resultRole, "resultrole");
    requireSource(request, operation.nameSpace, operation.objectName);
    if (operation.ofClass) {
        return associatedClassNames(operation, request);
    }
    walk(request, operation.nameSpace, operation.objectName, operation.assocClass,
         [&](CIMAssociationProvider& provider, const CIMObjectPath& path,
             const CIMName& association) {
             PathListHandler handler = pathHandler(request, operation.nameSpace);
             callProvider(handler, [&] {
                 provider.associatorNames(request.context, path, association, operation.resultClass,
                                          operation.role, operation.resultRole, handler);
             });
         });
}

void carryOut(const References& operation, const Request& request) {
    requireLegalRole(operation.role, "role");
    requireSource(request, operation.nameSpace, operation.objectName);
    if (operation.ofClass) {
        return referencingClasses(operation, request);
    }
    const CIMPropertyList list =
        providerList(operation.propertyList, requireNamespace(request, operation.nameSpace));
    walk(request, operation.nameSpace, operation.objectName, operation.resultClass,
         [&](CIMAssociationProvider& provider, const CIMObjectPath& path,
             const CIMName& association) {
             ObjectListHandler handler = objectHandler(request, operation.nameSpace);
             callProvider(handler, [&] {
                 provider.references(request.context, path, association, operation.role,
                                     operation.includeQualifiers, operation.includeClassOrigin,
                                     list, handler);
             });
         });
}

void carryOut(const ReferenceNames& operation, const Request& request) {
    requireLegalRole(operation.role, "role");
    requireSource(request, operation.nameSpace, operation.objectName);
    if (operation.ofClass) {
        return referencingClassNames(operation, request);
    }
    walk(request, operation.nameSpace, operation.objectName, operation.resultClass,
         [&](CIMAssociationProvider& provider, const CIMObjectPath& path,
             const CIMName& association) {
             PathListHandler handler = pathHandler(request, operation.nameSpace);
             callProvider(handler, [&] {
                 provider.referenceNames(request.context, path, association, operation.role,
                                         handler);
             });
         });
}

} // namespace smisd
