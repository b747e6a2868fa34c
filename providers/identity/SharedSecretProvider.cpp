#include "providers/identity/SharedSecretProvider.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void SharedSecretProvider::initialize(CIMOMHandle& cimom) {
    trace("SharedSecretProvider::initialize");
    attach(_engine, _cimom, cimom);
}

void SharedSecretProvider::getInstance(const OperationContext&, const CIMObjectPath&, const Boolean,
                                       const Boolean, const CIMPropertyList&,
                                       InstanceResponseHandler&) {
    refuse("SharedSecret::getInstance");
}

void SharedSecretProvider::modifyInstance(const OperationContext&, const CIMObjectPath&,
                                          const CIMInstance&, const Boolean, const CIMPropertyList&,
                                          ResponseHandler&) {
    refuse("SharedSecret::modifyInstance");
}

} // namespace Pegasus
