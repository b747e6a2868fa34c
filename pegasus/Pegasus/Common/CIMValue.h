#pragma once

#include <cstring>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

class CIMObject;
class CIMInstance;

// A value of a CIM type or an array of them, or a null of that type. A default-constructed one is
// a null Boolean.
//
// CIMValue("text") is the Boolean TRUE, as a pointer converts to bool before it converts to
// String: write CIMValue(String("text")).
//
// get() of another type, width or arrayness throws TypeMismatchException; get() of a null leaves
// the variable as it was. set() changes the type.
//
// Values are independent, but a CIMObject or CIMInstance in one is a handle. Threads: as String.
class PEGASUS_COMMON_LINKAGE CIMValue {
public:
    CIMValue();
    CIMValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);
    CIMValue(Boolean x);
    CIMValue(Uint8 x);
    CIMValue(Sint8 x);
    CIMValue(Uint16 x);
    CIMValue(Sint16 x);
    CIMValue(Uint32 x);
    CIMValue(Sint32 x);
    CIMValue(Uint64 x);
    CIMValue(Sint64 x);
    CIMValue(Real32 x);
    CIMValue(Real64 x);
    CIMValue(const Char16& x);
    CIMValue(const String& x);
    CIMValue(const CIMDateTime& x);
    CIMValue(const CIMObjectPath& x);
    CIMValue(const CIMObject& x);
    CIMValue(const CIMInstance& x);
    CIMValue(const Array<Boolean>& x);
    CIMValue(const Array<Uint8>& x);
    CIMValue(const Array<Sint8>& x);
    CIMValue(const Array<Uint16>& x);
    CIMValue(const Array<Sint16>& x);
    CIMValue(const Array<Uint32>& x);
    CIMValue(const Array<Sint32>& x);
    CIMValue(const Array<Uint64>& x);
    CIMValue(const Array<Sint64>& x);
    CIMValue(const Array<Real32>& x);
    CIMValue(const Array<Real64>& x);
    CIMValue(const Array<Char16>& x);
    CIMValue(const Array<String>& x);
    CIMValue(const Array<CIMDateTime>& x);
    CIMValue(const Array<CIMObjectPath>& x);
    CIMValue(const Array<CIMObject>& x);
    CIMValue(const Array<CIMInstance>& x);
    CIMValue(const CIMValue& x) noexcept;
    CIMValue(CIMValue&& x) noexcept : _type(x._type), _isArray(x._isArray), _isNull(x._isNull) {
        std::memcpy(_content, x._content, sizeof _content);
        x._becomeNull();
    }
    ~CIMValue() { _drop(); }
    CIMValue& operator=(const CIMValue& x) noexcept;
    CIMValue& operator=(CIMValue&& x) noexcept;

    void assign(const CIMValue& x);
    void clear();
    Boolean typeCompatible(const CIMValue& x) const; // same type and arrayness
    Boolean isArray() const { return _isArray; }
    Boolean isNull() const { return _isNull; }
    Uint32 getArraySize() const; // 0 for a scalar and for a null
    CIMType getType() const { return CIMType(_type); }
    void setNullValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);

    void set(Boolean x);
    void set(Uint8 x);
    void set(Sint8 x);
    void set(Uint16 x);
    void set(Sint16 x);
    void set(Uint32 x);
    void set(Sint32 x);
    void set(Uint64 x);
    void set(Sint64 x);
    void set(Real32 x);
    void set(Real64 x);
    void set(const Char16& x);
    void set(const String& x);
    void set(const CIMDateTime& x);
    void set(const CIMObjectPath& x);
    void set(const CIMObject& x);
    void set(const CIMInstance& x);
    void set(const Array<Boolean>& x);
    void set(const Array<Uint8>& x);
    void set(const Array<Sint8>& x);
    void set(const Array<Uint16>& x);
    void set(const Array<Sint16>& x);
    void set(const Array<Uint32>& x);
    void set(const Array<Sint32>& x);
    void set(const Array<Uint64>& x);
    void set(const Array<Sint64>& x);
    void set(const Array<Real32>& x);
    void set(const Array<Real64>& x);
    void set(const Array<Char16>& x);
    void set(const Array<String>& x);
    void set(const Array<CIMDateTime>& x);
    void set(const Array<CIMObjectPath>& x);
    void set(const Array<CIMObject>& x);
    void set(const Array<CIMInstance>& x);

    void get(Boolean& x) const;
    void get(Uint8& x) const;
    void get(Sint8& x) const;
    void get(Uint16& x) const;
    void get(Sint16& x) const;
    void get(Uint32& x) const;
    void get(Sint32& x) const;
    void get(Uint64& x) const;
    void get(Sint64& x) const;
    void get(Real32& x) const;
    void get(Real64& x) const;
    void get(Char16& x) const;
    void get(String& x) const;
    void get(CIMDateTime& x) const;
    void get(CIMObjectPath& x) const;
    void get(CIMObject& x) const;
    void get(CIMInstance& x) const;
    void get(Array<Boolean>& x) const;
    void get(Array<Uint8>& x) const;
    void get(Array<Sint8>& x) const;
    void get(Array<Uint16>& x) const;
    void get(Array<Sint16>& x) const;
    void get(Array<Uint32>& x) const;
    void get(Array<Sint32>& x) const;
    void get(Array<Uint64>& x) const;
    void get(Array<Sint64>& x) const;
    void get(Array<Real32>& x) const;
    void get(Array<Real64>& x) const;
    void get(Array<Char16>& x) const;
    void get(Array<String>& x) const;
    void get(Array<CIMDateTime>& x) const;
    void get(Array<CIMObjectPath>& x) const;
    void get(Array<CIMObject>& x) const;
    void get(Array<CIMInstance>& x) const;

    Boolean equal(const CIMValue& x) const;
    // For people: elements of an array are each followed by a blank, a null is empty.
    String toString() const;

private:
    friend struct CIMValueAccess;

    // Whether the bytes are all there is to the content: a number, or the size of a null.
    bool _isPlain() const { return _isNull || (!_isArray && _type <= CIMTYPE_CHAR16); }

    // A null Boolean, whatever the content was.
    void _becomeNull() {
        std::memset(_content, 0, sizeof _content);
        _type = CIMTYPE_BOOLEAN;
        _isArray = false;
        _isNull = true;
    }
    // Destroys the content; the bytes hold nothing afterwards.
    void _drop() {
        if (!_isPlain()) {
            _dropShared();
        }
    }
    void _dropShared();

    // Every CIM type fits, as all but the numbers are one pointer to a shared body; so the content
    // of every type may be moved as bytes.
    alignas(8) unsigned char _content[8];
    Uint8 _type;
    bool _isArray;
    bool _isNull; // then _content holds nothing
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMValue& x, const CIMValue& y);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMValue& x, const CIMValue& y);

} // namespace Pegasus
