// What a CIMValue holds, by type. Internal.
//
// One list names every CIM type and its C++ type; all that depends on the type goes through
// visit().

#ifndef Pegasus_CIMValueContent_h
#define Pegasus_CIMValueContent_h

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMValue.h>
#include <new>
#include <type_traits>
#include <utility>

namespace Pegasus {

// clang-format off
#define PEGASUS_FOR_EACH_CIM_TYPE(X) \
    X(BOOLEAN, Boolean) X(UINT8, Uint8) X(SINT8, Sint8) X(UINT16, Uint16) X(SINT16, Sint16) \
    X(UINT32, Uint32) X(SINT32, Sint32) X(UINT64, Uint64) X(SINT64, Sint64) X(REAL32, Real32) \
    X(REAL64, Real64) X(CHAR16, Char16) X(STRING, String) X(DATETIME, CIMDateTime) \
    X(REFERENCE, CIMObjectPath) X(OBJECT, CIMObject) X(INSTANCE, CIMInstance)
// clang-format on

template<class T>
inline constexpr CIMType cimTypeOf = CIMTYPE_BOOLEAN;
#define PEGASUS_TYPE_OF(NAME, T)                                                                   \
    template<>                                                                                     \
    inline constexpr CIMType cimTypeOf<T> = CIMTYPE_##NAME;
PEGASUS_FOR_EACH_CIM_TYPE(PEGASUS_TYPE_OF)
#undef PEGASUS_TYPE_OF

// f(std::type_identity<T>()) for the C++ type of a scalar of the CIM type.
template<class F>
decltype(auto) visitType(CIMType type, F&& f) {
    switch (type) {
#define PEGASUS_CASE(NAME, T)                                                                      \
    case CIMTYPE_##NAME:                                                                           \
        return f(std::type_identity<T>());
        PEGASUS_FOR_EACH_CIM_TYPE(PEGASUS_CASE)
#undef PEGASUS_CASE
    }
    throw TypeMismatchException();
}

} // namespace Pegasus

#endif
