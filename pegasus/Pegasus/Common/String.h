#pragma once

#include <iosfwd>
#include <utility>

#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/StringRep.h>

namespace Pegasus {

class String;

// UTF-8 text ending with NUL, as String::getCString() makes it. The pointer is null in a
// default-constructed one and lives as long as the CString.
class PEGASUS_COMMON_LINKAGE CString {
public:
    CString() = default;
    CString(const CString& other);
    CString(CString&& other) noexcept;
    CString& operator=(CString other) noexcept;
    ~CString();
    operator const char*() const { return _text; }

private:
    friend class String;
    explicit CString(char* text) : _text(text) {}

    char* _text = nullptr;
};

// A text of UTF-16 code units; U+0000 may be among them.
//
// A `const char*` is read as UTF-8: malformed bytes throw Exception with the index of the first
// bad sequence, a null pointer throws an Exception too. An index beyond the end throws
// IndexOutOfBoundsException (the index just behind the last unit reads U+0000).
//
// Copies share one body until one of them is changed. Threads: any number may read and copy the
// same String; a change needs it to themselves.
class PEGASUS_COMMON_LINKAGE String {
public:
    static const String EMPTY;

    constexpr String() noexcept = default;
    String(const String& str) noexcept : _rep(str._rep) { StringRep::addOwner(_rep); }
    String(String&& str) noexcept : _rep(std::exchange(str._rep, nullptr)) {}
    String(const String& str, Uint32 n);
    String(const Char16* str);
    String(const Char16* str, Uint32 n);
    String(const char* str);
    String(const char* str, Uint32 n);
    ~String() { StringRep::dropOwner(_rep); }

    String& operator=(const String& str) noexcept {
        String copy(str);
        std::swap(_rep, copy._rep);
        return *this;
    }
    String& operator=(String&& str) noexcept {
        std::swap(_rep, str._rep);
        return *this;
    }
    String& assign(const String& str);
    String& assign(const Char16* str);
    String& assign(const Char16* str, Uint32 n);
    String& assign(const char* str);
    String& assign(const char* str, Uint32 n);

    void clear();
    void reserveCapacity(Uint32 capacity);
    String& append(const Char16& c);
    String& append(const Char16* str, Uint32 n);
    String& append(const String& str);
    void remove(Uint32 index, Uint32 size = PEG_NOT_FOUND);
    void toLower();

    Uint32 size() const { return _rep ? _rep->size : 0; }
    const Char16* getChar16Data() const { return _rep ? _rep->text() : &_nothing; }
    CString getCString() const;
    Char16& operator[](Uint32 index);
    const Char16 operator[](Uint32 index) const;
    String subString(Uint32 index, Uint32 length = PEG_NOT_FOUND) const;
    Uint32 find(Char16 c) const;
    Uint32 find(Uint32 index, Char16 c) const;
    Uint32 find(const String& s) const;
    Uint32 reverseFind(Char16 c) const;

    // The sign says the order; a prefix comes first. Case is folded for ASCII letters only.
    static int compare(const String& s1, const String& s2, Uint32 n);
    static int compare(const String& s1, const String& s2);
    static int compareNoCase(const String& s1, const String& s2);
    static Boolean equal(const String& s1, const String& s2);
    static Boolean equalNoCase(const String& s1, const String& s2);

private:
    friend class KeptNames;
    static constexpr Char16 _nothing = {};

    void _own(std::size_t capacity);

    StringRep* _rep = nullptr; // null: empty
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const String& s1, const String& s2);
PEGASUS_COMMON_LINKAGE Boolean operator==(const String& s1, const char* s2);
PEGASUS_COMMON_LINKAGE Boolean operator==(const char* s1, const String& s2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const String& s1, const String& s2);
PEGASUS_COMMON_LINKAGE Boolean operator<(const String& s1, const String& s2);
PEGASUS_COMMON_LINKAGE Boolean operator<=(const String& s1, const String& s2);
PEGASUS_COMMON_LINKAGE Boolean operator>(const String& s1, const String& s2);
PEGASUS_COMMON_LINKAGE Boolean operator>=(const String& s1, const String& s2);
PEGASUS_COMMON_LINKAGE String operator+(const String& s1, const String& s2);

// Writes U+0001 to U+00FF as one byte and everything else as \xHHHH: this is not UTF-8. Stream
// getCString() for that.
PEGASUS_COMMON_LINKAGE std::ostream& operator<<(std::ostream& os, const String& s);

} // namespace Pegasus
