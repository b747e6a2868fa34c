#include <algorithm>
#include <new>
#include <utility>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

constinit const String String::EMPTY;

StringRep* StringRep::make(std::size_t capacity) {
    const std::size_t mostUnits = std::size_t(1) << 30;
    if (capacity > mostUnits) {
        throw std::bad_alloc();
    }
    void* place = ::operator new(sizeof(StringRep) + (capacity + 1) * sizeof(Char16));
    auto* rep = new (place) StringRep{{}, 0, static_cast<Uint32>(capacity)};
    rep->setSize(0);
    return rep;
}

static Uint32 lengthOf(const Char16* str) {
    if (!str) {
        throw Exception("null pointer");
    }
    Uint32 n = 0;
    while (str[n] != Char16()) {
        ++n;
    }
    return n;
}

String::String(const String& str, Uint32 n) {
    if (n > str.size()) {
        throw IndexOutOfBoundsException();
    }
    if (n == str.size()) {
        *this = str;
    } else {
        append(str.getChar16Data(), n);
    }
}

String::String(const Char16* str) : String(str, lengthOf(str)) {}

String::String(const Char16* str, Uint32 n) {
    append(str, n);
}

String& String::assign(const String& str) {
    return *this = str;
}

String& String::assign(const Char16* str) {
    return *this = String(str);
}

String& String::assign(const Char16* str, Uint32 n) {
    return *this = String(str, n);
}

String& String::assign(const char* str) {
    return *this = String(str);
}

String& String::assign(const char* str, Uint32 n) {
    return *this = String(str, n);
}

void String::clear() {
    StringRep::dropOwner(std::exchange(_rep, nullptr));
}

// Makes the body ours alone, with room for so many units.
void String::_own(std::size_t capacity) {
    if (_rep && !_rep->owners.shared() && _rep->capacity >= capacity) {
        return;
    }
    StringRep* rep = StringRep::make(std::max<std::size_t>(capacity, size()));
    std::copy_n(getChar16Data(), size(), rep->text());
    rep->setSize(size());
    StringRep::dropOwner(std::exchange(_rep, rep));
}

void String::reserveCapacity(Uint32 capacity) {
    _own(capacity);
}

String& String::append(const Char16& c) {
    return append(&c, 1);
}

String& String::append(const Char16* str, Uint32 n) {
    if (!str) {
        throw Exception("null pointer");
    }
    if (n == 0) {
        return *this;
    }
    const std::size_t wanted = std::size_t(size()) + n;
    if (_rep && !_rep->owners.shared() && wanted <= _rep->capacity) {
        std::copy_n(str, n, _rep->text() + size());
    } else { // `str` may point into the old body: that goes last
        StringRep* rep = StringRep::make(_rep ? std::max(wanted, 2 * std::size_t(size())) : wanted);
        std::copy_n(getChar16Data(), size(), rep->text());
        std::copy_n(str, n, rep->text() + size());
        StringRep::dropOwner(std::exchange(_rep, rep));
    }
    _rep->setSize(static_cast<Uint32>(wanted));
    return *this;
}

String& String::append(const String& str) {
    if (size() == 0) {
        return *this = str;
    }
    return append(str.getChar16Data(), str.size());
}

void String::remove(Uint32 index, Uint32 n) {
    if (index > size() || (n != PEG_NOT_FOUND && n > size() - index)) {
        throw IndexOutOfBoundsException();
    }
    if (n == PEG_NOT_FOUND) {
        n = size() - index;
    }
    if (n == 0) {
        return;
    }
    _own(0);
    Char16* text = _rep->text();
    std::copy(text + index + n, text + size(), text + index);
    _rep->setSize(size() - n);
}

void String::toLower() {
    if (size() == 0) {
        return;
    }
    _own(0);
    for (Char16 *c = _rep->text(), *end = c + size(); c != end; ++c) {
        if (Uint16(*c) >= 'A' && Uint16(*c) <= 'Z') {
            *c = static_cast<Uint16>(*c + ('a' - 'A'));
        }
    }
}

Char16& String::operator[](Uint32 index) {
    if (index > size()) {
        throw IndexOutOfBoundsException();
    }
    _own(0);
    return _rep->text()[index];
}

const Char16 String::operator[](Uint32 index) const {
    if (index > size()) {
        throw IndexOutOfBoundsException();
    }
    return getChar16Data()[index];
}

String String::subString(Uint32 index, Uint32 length) const {
    if (index >= size()) {
        return String();
    }
    length = std::min(length, size() - index);
    return length == size() ? *this : String(getChar16Data() + index, length);
}

String operator+(const String& s1, const String& s2) {
    String sum;
    sum.reserveCapacity(s1.size() + s2.size());
    sum.append(s1.getChar16Data(), s1.size());
    sum.append(s2.getChar16Data(), s2.size());
    return sum;
}

} // namespace Pegasus
