// CIMValue as text, and its equality.

#include <cstdio>
#include <string>

#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMValueAccess.h>

namespace Pegasus {

static void append(String& out, Boolean x) {
    out.append(x ? "TRUE" : "FALSE");
}

static void append(String& out, Real64 x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.16e", x);
    out.append(text);
}

static void append(String& out, Real32 x) {
    append(out, Real64(x));
}

static void append(String& out, const Char16& x) {
    out.append(x);
}

static void append(String& out, const String& x) {
    out.append(x);
}

// Whole numbers, and whatever says itself what its text is.
template<class T>
static void append(String& out, const T& x) {
    if constexpr (std::is_integral_v<T>) {
        out.append(std::to_string(x).c_str());
    } else {
        out.append(x.toString());
    }
}

static void append(String& out, const CIMInstance& x) {
    out.append(CIMObject(x).toString());
}

template<class T>
static void append(String& out, const Array<T>& x) {
    for (Uint32 i = 0; i < x.size(); ++i) {
        append(out, x[i]);
        out.append(Char16(Uint16(' ')));
    }
}

String CIMValue::toString() const {
    String text;
    if (!_isNull) {
        visit(*this, [&](const auto& content) { append(text, content); });
    }
    return text;
}

template<class T>
static bool same(const T& x, const T& y) {
    return x == y;
}

static bool same(const CIMObject& x, const CIMObject& y) {
    return x.identical(y);
}

static bool same(const CIMInstance& x, const CIMInstance& y) {
    return x.identical(y);
}

template<class T>
static bool same(const Array<T>& x, const Array<T>& y) {
    if (x.size() != y.size()) {
        return false;
    }
    for (Uint32 i = 0; i < x.size(); ++i) {
        if (!same(x[i], y[i])) {
            return false;
        }
    }
    return true;
}

Boolean CIMValue::equal(const CIMValue& x) const {
    if (!typeCompatible(x) || _isNull != x._isNull) {
        return false;
    }
    bool result = true;
    if (!_isNull) {
        visit(*this, [&]<class T>(const T& content) {
            result = same(content, CIMValueAccess::content<T>(x));
        });
    }
    return result;
}

} // namespace Pegasus
