// A value of a CIM type from its text on the wire (DSP0201, "VALUE"; DSP0004 for the literals).
//
// Integers are decimal without leading zeros, or hexadecimal with 0x; signed ones may have a sign.
// Reals need a point with a digit after it. Booleans are TRUE or FALSE in any case. A char16 is one
// UTF-16 unit. An empty datetime is the zero interval. Text is taken as it stands, blanks included.
#pragma once

#include <stdexcept>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/String.h>

namespace smisd {

// The text is no value of the type; what() says which, without the text.
class InvalidLiteral : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Throws InvalidLiteral, also for a type that has no literals (reference, object); a
// DateTimeOutOfRangeException passes through. Thread-safe.
Pegasus::CIMValue valueFromText(const Pegasus::String& text, Pegasus::CIMType type);

// The same for an array; an empty one gives an empty array of the type.
Pegasus::CIMValue arrayFromText(const Pegasus::Array<Pegasus::String>& texts,
                                Pegasus::CIMType type);

// The value in its declared type, where it is a string or an array of strings; a value of another
// type stays as it is, a null one becomes a null of the declared type.
//
// Throws CIM_ERR_TYPE_MISMATCH without a text for an array in place of a scalar or the other way
// round, and CIM_ERR_INVALID_PARAMETER for a text that is no literal of the type.
Pegasus::CIMValue declaredValue(const Pegasus::CIMValue& value, Pegasus::CIMType type,
                                bool isArray);

} // namespace smisd
