// String: comparison and search.

#include <algorithm>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

static int difference(const Char16* a, const Char16* b, Uint32 n) {
    for (Uint32 i = 0; i < n; ++i) {
        if (a[i] != b[i]) {
            return int(a[i]) - int(b[i]);
        }
    }
    return 0;
}

static Uint32 lower(Uint32 c) {
    return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
}

static int differenceNoCase(const Char16* a, const Char16* b, Uint32 n) {
    for (Uint32 i = 0; i < n; ++i) {
        if (a[i] != b[i] && lower(a[i]) != lower(b[i])) {
            return int(lower(a[i])) - int(lower(b[i]));
        }
    }
    return 0;
}

static int sizeOrder(Uint32 size1, Uint32 size2) {
    return (size1 > size2) - (size1 < size2);
}

int String::compare(const String& s1, const String& s2, Uint32 n) {
    const Uint32 n1 = std::min(n, s1.size()), n2 = std::min(n, s2.size());
    const int d = difference(s1.getChar16Data(), s2.getChar16Data(), std::min(n1, n2));
    return d ? d : sizeOrder(n1, n2);
}

int String::compare(const String& s1, const String& s2) {
    return compare(s1, s2, PEG_NOT_FOUND);
}

int String::compareNoCase(const String& s1, const String& s2) {
    const int d =
        differenceNoCase(s1.getChar16Data(), s2.getChar16Data(), std::min(s1.size(), s2.size()));
    return d ? d : sizeOrder(s1.size(), s2.size());
}

Boolean String::equal(const String& s1, const String& s2) {
    return s1._rep == s2._rep ||
           (s1.size() == s2.size() &&
            difference(s1.getChar16Data(), s2.getChar16Data(), s1.size()) == 0);
}

Boolean String::equalNoCase(const String& s1, const String& s2) {
    return s1._rep == s2._rep ||
           (s1.size() == s2.size() &&
            differenceNoCase(s1.getChar16Data(), s2.getChar16Data(), s1.size()) == 0);
}

Uint32 String::find(Char16 c) const {
    return find(0, c);
}

Uint32 String::find(Uint32 index, Char16 c) const {
    if (index > size()) {
        throw IndexOutOfBoundsException();
    }
    const Char16* begin = getChar16Data();
    const Char16* end = begin + size();
    const Char16* found = std::find(begin + index, end, c);
    return found == end ? PEG_NOT_FOUND : static_cast<Uint32>(found - begin);
}

Uint32 String::find(const String& s) const {
    if (s.size() == 0) {
        return PEG_NOT_FOUND;
    }
    const Char16* begin = getChar16Data();
    const Char16* end = begin + size();
    const Char16* found = std::search(begin, end, s.getChar16Data(), s.getChar16Data() + s.size());
    return found == end ? PEG_NOT_FOUND : static_cast<Uint32>(found - begin);
}

Uint32 String::reverseFind(Char16 c) const {
    for (Uint32 i = size(); i > 0; --i) {
        if (getChar16Data()[i - 1] == c) {
            return i - 1;
        }
    }
    return PEG_NOT_FOUND;
}

Boolean operator==(const String& s1, const String& s2) {
    return String::equal(s1, s2);
}

Boolean operator==(const String& s1, const char* s2) {
    return String::equal(s1, String(s2));
}

Boolean operator==(const char* s1, const String& s2) {
    return String::equal(String(s1), s2);
}

Boolean operator!=(const String& s1, const String& s2) {
    return !String::equal(s1, s2);
}

Boolean operator<(const String& s1, const String& s2) {
    return String::compare(s1, s2) < 0;
}

Boolean operator<=(const String& s1, const String& s2) {
    return String::compare(s1, s2) <= 0;
}

Boolean operator>(const String& s1, const String& s2) {
    return String::compare(s1, s2) > 0;
}

Boolean operator>=(const String& s1, const String& s2) {
    return String::compare(s1, s2) >= 0;
}

} // namespace Pegasus
