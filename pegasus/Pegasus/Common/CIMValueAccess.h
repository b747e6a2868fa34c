// The content of a CIMValue, by its type. Internal.

#pragma once

#include <new>
#include <tuple>
#include <type_traits>
#include <utility>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMValue.h>

namespace Pegasus {

// The C++ types of the CIM types, in the order of CIMType.
using CIMTypes =
    std::tuple<Boolean, Uint8, Sint8, Uint16, Sint16, Uint32, Sint32, Uint64, Sint64, Real32,
               Real64, Char16, String, CIMDateTime, CIMObjectPath, CIMObject, CIMInstance>;

template<class T>
inline constexpr bool isArrayType = false;
template<class T>
inline constexpr bool isArrayType<Array<T>> = true;

// The place of T in CIMTypes, which is its CIMType; for an array that of its elements.
template<class T>
inline constexpr CIMType cimTypeOf = []<std::size_t... I>(std::index_sequence<I...>) {
    return CIMType(((std::is_same_v<T, std::tuple_element_t<I, CIMTypes>> ? I : 0) + ...));
}
(std::make_index_sequence<std::tuple_size_v<CIMTypes>>());
template<class T>
inline constexpr CIMType cimTypeOf<Array<T>> = cimTypeOf<T>;

struct CIMValueAccess {
    // The content, which must be of this type.
    template<class T>
    static T& content(CIMValue& value) {
        return *std::launder(reinterpret_cast<T*>(value._content));
    }
    template<class T>
    static const T& content(const CIMValue& value) {
        return *std::launder(reinterpret_cast<const T*>(value._content));
    }

    // Takes over another value's content. The bytes must hold nothing.
    static void copy(CIMValue& value, const CIMValue& from);

    // The size of a null array of fixed size takes the place of the content.
    static void setNull(CIMValue& value, CIMType type, bool isArray, Uint32 arraySize) {
        value._type = static_cast<Uint8>(type);
        value._isArray = isArray;
        value._isNull = true;
        new (value._content) Uint32(isArray ? arraySize : 0);
    }

    // `value` must be null.
    template<class T>
    static void setContent(CIMValue& value, T content) {
        static_assert(sizeof(T) <= sizeof value._content &&
                      std::is_nothrow_move_constructible_v<T>);
        value._type = cimTypeOf<T>;
        value._isArray = isArrayType<T>;
        value._isNull = false;
        new (value._content) T(std::move(content));
    }
};

// Calls f with the content of a value that is not null.
template<class F>
void visit(const CIMValue& value, F&& f) {
    const auto visitAs = [&]<class T>(std::type_identity<T>) {
        if (value.getType() != cimTypeOf<T>) {
            return false;
        }
        if (value.isArray()) {
            f(CIMValueAccess::content<Array<T>>(value));
        } else {
            f(CIMValueAccess::content<T>(value));
        }
        return true;
    };
    [&]<class... T>(std::type_identity<std::tuple<T...>>) {
        (visitAs(std::type_identity<T>()) || ...);
    }(std::type_identity<CIMTypes>());
}

} // namespace Pegasus
