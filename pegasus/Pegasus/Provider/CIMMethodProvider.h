#pragma once

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Provider/CIMProvider.h>

namespace Pegasus {

// A provider of the methods of a class.
class PEGASUS_PROVIDER_LINKAGE CIMMethodProvider : public virtual CIMProvider {
public:
    CIMMethodProvider();
    ~CIMMethodProvider() override;

    virtual void invokeMethod(const OperationContext& context, const CIMObjectPath& objectReference,
                              const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                              MethodResultResponseHandler& handler) = 0;
};

} // namespace Pegasus
