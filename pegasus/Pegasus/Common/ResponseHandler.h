// Where a provider puts its answer.
//
// A provider calls processing() once, deliver() for each result or for several at once, and
// complete() once. It may throw at any point before complete(), which makes the answer that error.
//
// Threads: a handler belongs to one request; its calls come from one thread at a time.

#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMIndication.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/OperationContext.h>

namespace Pegasus {

class PEGASUS_COMMON_LINKAGE ResponseHandler {
public:
    virtual ~ResponseHandler();
    virtual void processing() = 0;
    virtual void complete() = 0;
    void setContext(const OperationContext& context);

protected:
    ResponseHandler();
    ResponseHandler(const ResponseHandler& handler);
    ResponseHandler& operator=(const ResponseHandler& handler);
    OperationContext getContext() const;

private:
    OperationContext _context;
};

class PEGASUS_COMMON_LINKAGE InstanceResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMInstance& instance) = 0;
    virtual void deliver(const Array<CIMInstance>& instances) = 0;
};

class PEGASUS_COMMON_LINKAGE ObjectPathResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMObjectPath& objectPath) = 0;
    virtual void deliver(const Array<CIMObjectPath>& objectPaths) = 0;
};

class PEGASUS_COMMON_LINKAGE MethodResultResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliverParamValue(const CIMParamValue& outParamValue) = 0;
    virtual void deliverParamValue(const Array<CIMParamValue>& outParamValues) = 0;
    virtual void deliver(const CIMValue& returnValue) = 0;
};

class PEGASUS_COMMON_LINKAGE IndicationResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMIndication& indication) = 0;
    virtual void deliver(const Array<CIMIndication>& indications) = 0;
    virtual void deliver(const OperationContext& context, const CIMIndication& indication) = 0;
    virtual void deliver(const OperationContext& context,
                         const Array<CIMIndication>& indications) = 0;
};

class PEGASUS_COMMON_LINKAGE ObjectResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMObject& object) = 0;
    virtual void deliver(const Array<CIMObject>& objects) = 0;
};

} // namespace Pegasus
