// A qualifier declaration of the schema: `Qualifier Key : boolean = false, Scope(property), ...;`
#pragma once

#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMValue.h>

namespace smisd {

// The elements that a qualifier may stand on (DSP0004, "Scope").
struct QualifierScope {
    bool onClass = false;
    bool onAssociation = false;
    bool onReference = false;
    bool onProperty = false;
    bool onMethod = false;
    bool onParameter = false;
    bool onIndication = false;
};

// `value` is the default; a null one of the declared type where the declaration states none.
struct QualifierDeclaration {
    Pegasus::CIMName name;
    Pegasus::CIMValue value;
    QualifierScope scope;
    Pegasus::CIMFlavor flavor;
};

} // namespace smisd
