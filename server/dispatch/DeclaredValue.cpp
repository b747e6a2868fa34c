#include "server/dispatch/DeclaredValue.h"

#include "server/operation/TypedValue.h"

#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace smisd {
namespace {

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

CIMValue declaredValue(const CIMValue& value, CIMType type, bool isArray) {
    if (value.isNull())
        return CIMValue(type, isArray);
    if (value.isArray() != isArray)
        throw CIMException(CIM_ERR_TYPE_MISMATCH, String());
    if (value.getType() != CIMTYPE_STRING)
        return value;
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
