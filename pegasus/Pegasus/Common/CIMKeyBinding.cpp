#include <algorithm>

#include <Pegasus/Common/CIMObjectPathRep.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

static CIMKeyBinding::Type keyTypeOf(const CIMValue& value) {
    if (value.isArray()) {
        throw TypeMismatchException();
    }
    switch (value.getType()) {
    case CIMTYPE_BOOLEAN:
        return CIMKeyBinding::BOOLEAN;
    case CIMTYPE_CHAR16:
    case CIMTYPE_STRING:
    case CIMTYPE_DATETIME:
        return CIMKeyBinding::STRING;
    case CIMTYPE_REFERENCE:
        return CIMKeyBinding::REFERENCE;
    case CIMTYPE_OBJECT:
    case CIMTYPE_INSTANCE:
        throw TypeMismatchException();
    default:
        return CIMKeyBinding::NUMERIC;
    }
}

CIMKeyBinding::CIMKeyBinding(const CIMName& name, const CIMValue& value)
    : _name(name), _type(keyTypeOf(value)) {
    if (value.getType() == CIMTYPE_STRING) {
        value.get(_value);
    } else {
        _value = value.toString();
    }
}

Boolean CIMKeyBinding::equal(CIMValue value) {
    return !value.isNull() && *this == CIMKeyBinding(_name, value);
}

// Whole numbers as numbers, anything else as text.
static bool equalNumbers(const String& x, const String& y) {
    const auto number1 = keyNumber(x), number2 = keyNumber(y);
    return number1 && number2 ? *number1 == *number2 : x == y;
}

static bool equalReferences(const String& x, const String& y) {
    CIMObjectPathRep path1, path2;
    String ignored;
    if (!parseObjectPath(x, path1, ignored) || !parseObjectPath(y, path2, ignored)) {
        return x == y;
    }
    return equalPaths(path1, path2);
}

Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y) {
    if (x.getType() != y.getType() || x.getName() != y.getName()) {
        return false;
    }
    switch (x.getType()) {
    case CIMKeyBinding::BOOLEAN:
        return String::equalNoCase(x.getValue(), y.getValue());
    case CIMKeyBinding::NUMERIC:
        return equalNumbers(x.getValue(), y.getValue());
    case CIMKeyBinding::REFERENCE:
        return equalReferences(x.getValue(), y.getValue());
    case CIMKeyBinding::STRING:
        break;
    }
    return x.getValue() == y.getValue();
}

std::optional<WholeNumber> keyNumber(const String& text) {
    const bool plus = text[0] == '+';
    return wholeNumber(plus ? text.subString(1) : text);
}

void sortKeys(Array<CIMKeyBinding>& keys) {
    const auto before = [](const CIMKeyBinding& x, const CIMKeyBinding& y) {
        return String::compareNoCase(x.getName().getString(), y.getName().getString()) < 0;
    };
    const CIMKeyBinding* begin = keys.getData();
    if (std::is_sorted(begin, begin + keys.size(), before)) {
        return; // the usual case leaves a shared array shared
    }
    CIMKeyBinding* first = &keys[0];
    std::stable_sort(first, first + keys.size(), before);
}

} // namespace Pegasus
