#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/SharedRep.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

class CIMParamValueRep;

// An argument of a method call. isTyped says whether the type came with the call.
//
// A handle: copies share one argument, clone() makes another. The members of a
// default-constructed one throw UninitializedObjectException, as does an empty name.
//
// Threads: as CIMQualifier.
class PEGASUS_COMMON_LINKAGE CIMParamValue {
public:
    CIMParamValue() = default;
    CIMParamValue(String parameterName, CIMValue value, Boolean isTyped = true);

    String getParameterName() const;
    CIMValue getValue() const;
    Boolean isTyped() const;
    void setParameterName(String& parameterName);
    void setValue(CIMValue& value);
    void setIsTyped(Boolean isTyped = true);
    CIMParamValue clone() const;
    Boolean isUninitialized() const { return !_rep; }

private:
    explicit CIMParamValue(CIMParamValueRep* rep);

    Shared<CIMParamValueRep> _rep;
};

} // namespace Pegasus
