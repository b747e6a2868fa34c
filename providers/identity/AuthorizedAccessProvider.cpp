#include "providers/identity/AuthorizedAccessProvider.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void AuthorizedAccessProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void AuthorizedAccessProvider::associators(const OperationContext&, const CIMObjectPath&,
                                           const CIMName&, const CIMName&, const String&,
                                           const String&, const Boolean, const Boolean,
                                           const CIMPropertyList&, ObjectResponseHandler&) {
    refuse("AuthorizedAccess::associators");
}

void AuthorizedAccessProvider::associatorNames(const OperationContext&, const CIMObjectPath&,
                                               const CIMName&, const CIMName&, const String&,
                                               const String&, ObjectPathResponseHandler&) {
    refuse("AuthorizedAccess::associatorNames");
}

} // namespace Pegasus
