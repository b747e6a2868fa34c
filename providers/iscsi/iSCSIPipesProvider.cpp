#include "providers/iscsi/iSCSIPipesProvider.h"

#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Requests.h"
#include "providers/iscsi/PipeAnswer.h"
#include "providers/iscsi/PipeWalks.h"

namespace Pegasus {

namespace {

// Answers with the association that the client names by its ends, whether or not there are such
// objects. Wanted: see docs/contract.md, Echoed associations.
void echo(const CIMName& association, const String& firstRole, const String& secondRole,
          const CIMObjectPath& path, PipeAnswer& answer) {
    const AssociationEnd first = givenEnd(firstRole, keyValue(path, firstRole));
    const AssociationEnd second = givenEnd(secondRole, keyValue(path, secondRole));
    answer.association(association, first, second);
}

} // namespace

void iSCSIPipesProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void iSCSIPipesProvider::getInstance(const OperationContext&, const CIMObjectPath& path,
                                     const Boolean includeQualifiers, const Boolean,
                                     const CIMPropertyList& propertyList,
                                     InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const CIMName& className = path.getClassName();
    const Uint32 id = idFromFirstKey(path); // of any class: a path without keys is an error
    PipeInstances answer(handler, includeQualifiers, propertyList);
    if (className == CLASS_iSCSISession) {
        answer.session(className, id);
    } else if (className == CLASS_iSCSIConnection) {
        answer.connection(className, id);
    } else if (className == CLASS_EndpointOfNetworkPipe) {
        echo(CLASS_EndpointOfNetworkPipe, STRING_Antecedent, STRING_Dependent, path, answer);
    } else if (className == CLASS_NetworkPipeComposition) {
        echo(CLASS_NetworkPipeComposition, STRING_GroupComponent, STRING_PartComponent, path,
             answer);
    }
    handler.complete();
}

void iSCSIPipesProvider::enumerateInstances(const OperationContext&,
                                            const CIMObjectPath& classReference,
                                            const Boolean includeQualifiers, const Boolean,
                                            const CIMPropertyList& propertyList,
                                            InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes EI ");
    PipeInstances answer(handler, includeQualifiers, propertyList);
    listPipes(*_engine, classReference.getClassName(), answer);
    handler.complete();
}

void iSCSIPipesProvider::enumerateInstanceNames(const OperationContext&,
                                                const CIMObjectPath& classReference,
                                                ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes EIN ");
    PipeNames answer(handler);
    listPipes(*_engine, classReference.getClassName(), answer);
    handler.complete();
}

void iSCSIPipesProvider::associators(const OperationContext&, const CIMObjectPath& objectName,
                                     const CIMName& associationClass, const CIMName& resultClass,
                                     const String&, const String&, const Boolean includeQualifiers,
                                     const Boolean, const CIMPropertyList& propertyList,
                                     ObjectResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes Associators ");
    PipeInstances answer(handler, includeQualifiers, propertyList);
    walkPipes(*_engine, {objectName, associationClass, &resultClass, "A:EONP:IPE "}, answer);
    handler.complete();
}

void iSCSIPipesProvider::associatorNames(const OperationContext&, const CIMObjectPath& objectName,
                                         const CIMName& associationClass,
                                         const CIMName& resultClass, const String&, const String&,
                                         ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes Associator Names ");
    PipeNames answer(handler);
    walkPipes(*_engine, {objectName, associationClass, &resultClass, "AN:EONP:IPE "}, answer);
    handler.complete();
}

void iSCSIPipesProvider::references(const OperationContext&, const CIMObjectPath& objectName,
                                    const CIMName& resultClass, const String&,
                                    const Boolean includeQualifiers, const Boolean,
                                    const CIMPropertyList& propertyList,
                                    ObjectResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes References ");
    PipeInstances answer(handler, includeQualifiers, propertyList);
    walkPipes(*_engine, {objectName, resultClass, nullptr, "REF:EONP:IPE "}, answer);
    handler.complete();
}

void iSCSIPipesProvider::referenceNames(const OperationContext&, const CIMObjectPath& objectName,
                                        const CIMName& resultClass, const String&,
                                        ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes ReferenceNames ");
    PipeNames answer(handler);
    walkPipes(*_engine, {objectName, resultClass, nullptr, "REFN:EONP:IPE "}, answer);
    handler.complete();
}

} // namespace Pegasus
