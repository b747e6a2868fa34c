#include "server/schema/MofValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>

#include "server/operation/TypedValue.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd::mof {
namespace {

constexpr std::array types = {CIMTYPE_BOOLEAN, CIMTYPE_UINT8,   CIMTYPE_SINT8,  CIMTYPE_UINT16,
                              CIMTYPE_SINT16,  CIMTYPE_UINT32,  CIMTYPE_SINT32, CIMTYPE_UINT64,
                              CIMTYPE_SINT64,  CIMTYPE_REAL32,  CIMTYPE_REAL64, CIMTYPE_CHAR16,
                              CIMTYPE_STRING,  CIMTYPE_DATETIME};

CIMType typeNamed(const std::string& text) {
    return *std::find_if(types.begin(), types.end(), [&](CIMType type) {
        return String::equalNoCase(String(text.c_str()), String(cimTypeToString(type)));
    });
}

Char16 escaped(const std::string& code) {
    constexpr std::string_view letters = "btnfr";
    constexpr std::string_view meanings = "\b\t\n\f\r";
    Uint16 unit = static_cast<Uint16>(code.front());
    const size_t index = letters.find(code.front());
    if (index != letters.npos) {
        unit = static_cast<Uint16>(meanings[index]);
    } else if (code.size() > 1) { // x and hexadecimal digits
        std::from_chars(code.data() + 1, code.data() + code.size(), unit, 16);
    }
    return Char16(unit);
}

String unescaped(const Node& text) {
    String result;
    for (const auto& piece : text.children) {
        if (piece->is_type<EscapeCode>()) {
            result.append(escaped(piece->string()));
        } else {
            result.append(fromUtf8(piece->string_view()));
        }
    }
    return result;
}

bool isAnyOf(char c, std::string_view set) {
    return set.find(c) != set.npos;
}

// MOF has binary (101b) and octal (017) integers beside the decimal and hexadecimal ones, which
// alone the wire has: those are rewritten as decimal ones.
std::string integerText(const std::string& text) {
    const size_t start = isAnyOf(text.front(), "+-") ? 1 : 0;
    std::string_view digits = std::string_view(text).substr(start);
    int base = 0;
    if (digits.size() > 1 && isAnyOf(digits.back(), "bB") && !isAnyOf(digits[1], "xX")) {
        digits.remove_suffix(1);
        base = 2;
    } else if (digits.size() > 1 && digits.front() == '0' && !isAnyOf(digits[1], "xX.")) {
        base = 8;
    }
    const std::string sign = text.front() == '-' ? "-" : "";
    if (base == 0) {
        return sign + std::string(digits);
    }
    std::uint64_t value = 0;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    const bool isWhole = parsed.ec == std::errc() && parsed.ptr == digits.data() + digits.size();
    return isWhole ? sign + std::to_string(value) : text;
}

bool isText(CIMType type) {
    return type == CIMTYPE_STRING || type == CIMTYPE_DATETIME || type == CIMTYPE_REFERENCE;
}

// The text of a constant, if a constant of its form may have the type.
String literalOf(const Node& constant, CIMType type) {
    if (constant.is_type<StringValue>() && isText(type)) {
        return textOf(constant);
    }
    if (constant.is_type<CharValue>() && type == CIMTYPE_CHAR16) {
        return unescaped(get<CharPart>(constant));
    }
    if (constant.is_type<NumberText>() && type != CIMTYPE_BOOLEAN && !isText(type)) {
        return String(integerText(constant.string()).c_str());
    }
    if (constant.is_type<TrueValue>() && type == CIMTYPE_BOOLEAN) {
        return String("TRUE");
    }
    if (constant.is_type<FalseValue>() && type == CIMTYPE_BOOLEAN) {
        return String("FALSE");
    }
    throw InvalidLiteral("of another form");
}

// The constant without the blanks behind it, cut to what a message has room for.
std::string quoted(const Node& constant) {
    constexpr size_t room = 40;
    std::string text = constant.string();
    text.erase(text.find_last_not_of(" \t\r\n") + 1);
    return text.size() <= room ? text : text.substr(0, room) + "...";
}

[[noreturn]] void failForValue(const Node& value, const DeclaredType& type) {
    fail(value, "expected a value of type " + typeName(type) + ", not " + quoted(value));
}

CIMValue scalar(const Node& constant, const DeclaredType& type) {
    try {
        const String text = literalOf(constant, type.type);
        return type.type == CIMTYPE_REFERENCE ? CIMValue(CIMObjectPath(text))
                                              : valueFromText(text, type.type);
    } catch (const InvalidLiteral&) {
    } catch (const DateTimeOutOfRangeException&) {
    } catch (const MalformedObjectNameException&) {
    }
    failForValue(constant, type);
}

CIMValue list(const Node& values, const DeclaredType& type) {
    const DeclaredType element{type.type, type.referenceClass, false, 0};
    Array<String> texts;
    for (const auto& constant : values.children) {
        scalar(*constant, element); // finds the element that is wrong
        texts.append(literalOf(*constant, type.type));
    }
    return arrayFromText(texts, type.type);
}

} // namespace

DeclaredType typeOf(const Node& declaration) {
    DeclaredType result;
    if (const Node* reference = find<ReferenceClass>(declaration)) {
        result.type = CIMTYPE_REFERENCE;
        result.referenceClass = name(*reference);
    } else {
        result.type = typeNamed(get<TypeWord>(declaration).string());
    }
    if (const Node* array = find<ArrayMark>(declaration)) {
        result.isArray = true;
        if (const Node* size = find<NumberText>(*array)) {
            scalar(*size, DeclaredType{CIMTYPE_UINT32, CIMName(), false, 0}).get(result.arraySize);
        }
    }
    return result;
}

std::string typeName(const DeclaredType& type) {
    const std::string name = type.type == CIMTYPE_REFERENCE
                                 ? toUtf8(type.referenceClass.getString()) + " REF"
                                 : cimTypeToString(type.type);
    return type.isArray ? name + "[]" : name;
}

CIMValue nullValue(const DeclaredType& type) {
    return CIMValue(type.type, type.isArray, type.arraySize);
}

CIMValue valueOf(const Node& parent, const DeclaredType& type) {
    const Node& value = *parent.children.back();
    if (value.is_type<NullValue>()) {
        return nullValue(type);
    }
    if (value.is_type<ListValue>() != type.isArray) {
        failForValue(value, type);
    }
    return type.isArray ? list(value, type) : scalar(value, type);
}

String textOf(const Node& stringValue) {
    String result;
    each<StringPart>(stringValue, [&](const Node& part) { result.append(unescaped(part)); });
    return result;
}

} // namespace smisd::mof
