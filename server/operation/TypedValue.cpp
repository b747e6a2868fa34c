#include "server/operation/TypedValue.h"

#include <charconv>
#include <concepts>
#include <limits>
#include <string>
#include <string_view>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/Exception.h>

#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

// Which C++ type holds a value is all that the parsers below differ by.
template<class T>
struct Literal;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Magnitude of an integer literal without sign; false when it is none or exceeds 64 bits.
bool parseMagnitude(std::string_view text, Uint64& result) {
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
    } else if (text.size() > 1 && text[0] == '0') {
        return false;
    }
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, result, base);
    return parsed.ec == std::errc() && parsed.ptr == end;
}

template<class T>
[[noreturn]] void throwOutOfRange() {
    std::string type = cimTypeToString(CIMValue(T(0)).getType());
    type[0] = type[0] == 'u' ? 'U' : 'S';
    throw InvalidLiteral(type + " value out of range");
}

template<std::unsigned_integral T>
struct Literal<T> {
    static T parse(const String& text) {
        Uint64 value = 0;
        if (!parseMagnitude(toUtf8(text), value)) {
            throw InvalidLiteral("Invalid unsigned integer value");
        }
        if (value > std::numeric_limits<T>::max()) {
            throwOutOfRange<T>();
        }
        return static_cast<T>(value);
    }
};

template<std::signed_integral T>
struct Literal<T> {
    static T parse(const String& text) {
        const std::string all = toUtf8(text);
        std::string_view rest = all;
        const bool negative = rest.starts_with('-');
        if (negative || rest.starts_with('+')) {
            rest.remove_prefix(1);
        }
        Uint64 magnitude = 0;
        const Uint64 limit =
            static_cast<Uint64>(std::numeric_limits<Sint64>::max()) + (negative ? 1U : 0U);
        if (!parseMagnitude(rest, magnitude) || magnitude > limit) {
            throw InvalidLiteral("Invalid signed integer value");
        }
        const Sint64 value = static_cast<Sint64>(negative ? 0U - magnitude : magnitude);
        if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max()) {
            throwOutOfRange<T>();
        }
        return static_cast<T>(value);
    }
};

// [+-] digits* . digits+ [eE [+-] digits+]
bool isRealLiteral(std::string_view text) {
    size_t at = 0;
    const auto skipSign = [&] { at += at < text.size() && (text[at] == '+' || text[at] == '-'); };
    const auto skipDigits = [&] {
        const size_t start = at;
        while (at < text.size() && isDigit(text[at])) {
            ++at;
        }
        return at > start;
    };
    skipSign();
    skipDigits();
    if (at >= text.size() || text[at++] != '.' || !skipDigits()) {
        return false;
    }
    if (at < text.size()) {
        if (text[at] != 'e' && text[at] != 'E') {
            return false;
        }
        ++at;
        skipSign();
        if (!skipDigits()) {
            return false;
        }
    }
    return at == text.size();
}

template<std::floating_point T>
struct Literal<T> {
    static T parse(const String& text) {
        const std::string all = toUtf8(text);
        std::string_view rest = all;
        if (!isRealLiteral(rest)) {
            throw InvalidLiteral("Invalid real number value");
        }
        if (rest.starts_with('+')) {
            rest.remove_prefix(1);
        }
        Real64 value = 0;
        if (std::from_chars(rest.data(), rest.data() + rest.size(), value).ec != std::errc()) {
            throw InvalidLiteral("Invalid real number value");
        }
        return static_cast<T>(value);
    }
};

template<>
struct Literal<Boolean> {
    static Boolean parse(const String& text) {
        if (String::equalNoCase(text, "TRUE")) {
            return true;
        }
        if (String::equalNoCase(text, "FALSE")) {
            return false;
        }
        throw InvalidLiteral("Invalid boolean value");
    }
};

template<>
struct Literal<Char16> {
    static Char16 parse(const String& text) {
        if (text.size() != 1) {
            throw InvalidLiteral("Invalid char16 value");
        }
        return text[0];
    }
};

template<>
struct Literal<String> {
    static String parse(const String& text) { return text; }
};

template<>
struct Literal<CIMDateTime> {
    static CIMDateTime parse(const String& text) {
        try {
            return text.size() == 0 ? CIMDateTime() : CIMDateTime(text);
        } catch (const InvalidDateTimeFormatException&) {
            throw InvalidLiteral("Invalid datetime value");
        }
    }
};

// Calls `use` with a value of the C++ type that holds the CIM type.
template<class Use>
CIMValue withTypeOf(CIMType type, Use use) {
    switch (type) {
    case CIMTYPE_BOOLEAN:
        return use(Boolean());
    case CIMTYPE_UINT8:
        return use(Uint8());
    case CIMTYPE_SINT8:
        return use(Sint8());
    case CIMTYPE_UINT16:
        return use(Uint16());
    case CIMTYPE_SINT16:
        return use(Sint16());
    case CIMTYPE_UINT32:
        return use(Uint32());
    case CIMTYPE_SINT32:
        return use(Sint32());
    case CIMTYPE_UINT64:
        return use(Uint64());
    case CIMTYPE_SINT64:
        return use(Sint64());
    case CIMTYPE_REAL32:
        return use(Real32());
    case CIMTYPE_REAL64:
        return use(Real64());
    case CIMTYPE_CHAR16:
        return use(Char16());
    case CIMTYPE_STRING:
        return use(String());
    case CIMTYPE_DATETIME:
        return use(CIMDateTime());
    default:
        throw InvalidLiteral(std::string("No literal has the type ") + cimTypeToString(type));
    }
}

// From a string or an array of strings.
CIMValue converted(const CIMValue& value, CIMType type) {
    if (value.isArray()) {
        Array<String> texts;
        value.get(texts);
        return arrayFromText(texts, type);
    }
    String text;
    value.get(text);
    return valueFromText(text, type);
}

} // namespace

CIMValue valueFromText(const String& text, CIMType type) {
    return withTypeOf(type, [&]<class T>(T) { return CIMValue(Literal<T>::parse(text)); });
}

CIMValue arrayFromText(const Array<String>& texts, CIMType type) {
    return withTypeOf(type, [&]<class T>(T) {
        Array<T> values;
        values.reserveCapacity(texts.size());
        for (Uint32 i = 0; i < texts.size(); ++i) {
            values.append(Literal<T>::parse(texts[i]));
        }
        return CIMValue(values);
    });
}

CIMValue declaredValue(const CIMValue& value, CIMType type, bool isArray) {
    if (value.isNull()) {
        return CIMValue(type, isArray);
    }
    if (value.isArray() != isArray) {
        throw CIMException(CIM_ERR_TYPE_MISMATCH, String());
    }
    if (value.getType() != CIMTYPE_STRING) {
        return value;
    }
    try {
        return converted(value, type);
    } catch (const InvalidLiteral&) {
        throw CIMException(CIM_ERR_INVALID_PARAMETER,
                           String("Malformed ") + String(cimTypeToString(type)) + String(" value"));
    } catch (const Exception& error) { // a date out of range
        throw CIMException(CIM_ERR_FAILED, error.getMessage());
    }
}

} // namespace smisd
