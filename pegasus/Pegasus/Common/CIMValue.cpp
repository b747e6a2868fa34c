#include <cstring>

#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMValueAccess.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

using Access = CIMValueAccess;

CIMValue::CIMValue() : CIMValue(CIMTYPE_BOOLEAN, false) {}

CIMValue::CIMValue(CIMType type, Boolean isArray, Uint32 arraySize) {
    Access::setNull(*this, type, isArray, arraySize);
}

void CIMValue::_dropShared() {
    visit(*this, []<class T>(const T& content) { content.~T(); });
}

void CIMValueAccess::copy(CIMValue& value, const CIMValue& from) {
    if (from._isPlain()) {
        std::memcpy(value._content, from._content, sizeof value._content);
        value._type = from._type;
        value._isArray = from._isArray;
        value._isNull = from._isNull;
    } else {
        visit(from, [&](const auto& content) { setContent(value, content); });
    }
}

CIMValue::CIMValue(const CIMValue& x) noexcept {
    Access::copy(*this, x);
}

CIMValue& CIMValue::operator=(const CIMValue& x) noexcept {
    if (this == &x) {
        return *this;
    }
    _drop();
    Access::copy(*this, x);
    return *this;
}

CIMValue& CIMValue::operator=(CIMValue&& x) noexcept {
    std::swap(_content, x._content);
    std::swap(_type, x._type);
    std::swap(_isArray, x._isArray);
    std::swap(_isNull, x._isNull);
    return *this;
}

void CIMValue::assign(const CIMValue& x) {
    *this = x;
}

void CIMValue::clear() {
    setNullValue(CIMTYPE_BOOLEAN, false);
}

void CIMValue::setNullValue(CIMType type, Boolean isArray, Uint32 arraySize) {
    _drop();
    Access::setNull(*this, type, isArray, arraySize);
}

Boolean CIMValue::typeCompatible(const CIMValue& x) const {
    return _type == x._type && _isArray == x._isArray;
}

Uint32 CIMValue::getArraySize() const {
    Uint32 size = 0;
    if (_isNull) {
        size = Access::content<Uint32>(*this);
    } else if (_isArray) {
        visit(*this, [&]<class T>(const T& content) {
            if constexpr (isArrayType<T>) {
                size = content.size();
            }
        });
    }
    return size;
}

// What goes into a value and comes out of it: objects are handles, so a value has its own copies.
template<class T>
static const T& independent(const T& x) {
    return x;
}

static CIMObject independent(const CIMObject& x) {
    return x.clone();
}

static CIMInstance independent(const CIMInstance& x) {
    return x.clone();
}

template<class T>
static Array<T> independentElements(const Array<T>& x) {
    Array<T> copy;
    copy.reserveCapacity(x.size());
    for (Uint32 i = 0; i < x.size(); ++i) {
        copy.append(x[i].clone());
    }
    return copy;
}

static Array<CIMObject> independent(const Array<CIMObject>& x) {
    return independentElements(x);
}

static Array<CIMInstance> independent(const Array<CIMInstance>& x) {
    return independentElements(x);
}

template<class T>
static void setTo(CIMValue& value, const T& x) {
    T content(independent(x)); // before the value changes: this may throw
    value.clear();
    Access::setContent<T>(value, std::move(content));
}

template<class T>
static void getFrom(const CIMValue& value, T& x) {
    if (value.getType() != cimTypeOf<T> || value.isArray() != isArrayType<T>) {
        throw TypeMismatchException();
    }
    if (!value.isNull()) {
        x = independent(Access::content<T>(value));
    }
}

// The three members of each type; Argument is how the type is passed.
// NOLINTBEGIN(bugprone-macro-parentheses): a type cannot stand in parentheses.
#define PEGASUS_VALUE_OF(Type, Argument)                                                           \
    CIMValue::CIMValue(Argument x) : CIMValue() {                                                  \
        setTo<Type>(*this, x);                                                                     \
    }                                                                                              \
    void CIMValue::set(Argument x) {                                                               \
        setTo<Type>(*this, x);                                                                     \
    }                                                                                              \
    void CIMValue::get(Type& x) const {                                                            \
        getFrom(*this, x);                                                                         \
    }
#define PEGASUS_VALUE_AND_ARRAY_OF(Type, Argument)                                                 \
    PEGASUS_VALUE_OF(Type, Argument)                                                               \
    PEGASUS_VALUE_OF(Array<Type>, const Array<Type>&)
// NOLINTEND(bugprone-macro-parentheses)

PEGASUS_VALUE_AND_ARRAY_OF(Boolean, Boolean)
PEGASUS_VALUE_AND_ARRAY_OF(Uint8, Uint8)
PEGASUS_VALUE_AND_ARRAY_OF(Sint8, Sint8)
PEGASUS_VALUE_AND_ARRAY_OF(Uint16, Uint16)
PEGASUS_VALUE_AND_ARRAY_OF(Sint16, Sint16)
PEGASUS_VALUE_AND_ARRAY_OF(Uint32, Uint32)
PEGASUS_VALUE_AND_ARRAY_OF(Sint32, Sint32)
PEGASUS_VALUE_AND_ARRAY_OF(Uint64, Uint64)
PEGASUS_VALUE_AND_ARRAY_OF(Sint64, Sint64)
PEGASUS_VALUE_AND_ARRAY_OF(Real32, Real32)
PEGASUS_VALUE_AND_ARRAY_OF(Real64, Real64)
PEGASUS_VALUE_AND_ARRAY_OF(Char16, const Char16&)
PEGASUS_VALUE_AND_ARRAY_OF(String, const String&)
PEGASUS_VALUE_AND_ARRAY_OF(CIMDateTime, const CIMDateTime&)
PEGASUS_VALUE_AND_ARRAY_OF(CIMObjectPath, const CIMObjectPath&)
PEGASUS_VALUE_AND_ARRAY_OF(CIMObject, const CIMObject&)
PEGASUS_VALUE_AND_ARRAY_OF(CIMInstance, const CIMInstance&)

#undef PEGASUS_VALUE_AND_ARRAY_OF
#undef PEGASUS_VALUE_OF

Boolean operator==(const CIMValue& x, const CIMValue& y) {
    return x.equal(y);
}

Boolean operator!=(const CIMValue& x, const CIMValue& y) {
    return !x.equal(y);
}

} // namespace Pegasus
