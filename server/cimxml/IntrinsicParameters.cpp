#include "server/cimxml/IntrinsicParameters.h"

#include <set>
#include <string>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include "server/operation/TypedValue.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd::parameter {

Element requiredValue(Element& value) {
    return value.expect("VALUE", "Expected VALUE element");
}

Element requiredElement(Element& value, const char* elementName) {
    if (const auto element = value.take(elementName)) {
        return *element;
    }
    value.end(); // says what is in it instead
    value.fail(ElementError::validation, "A null value is not valid for IPARAMVALUE \"" +
                                             value.requiredAttribute("NAME") + "\".");
}

bool readBoolean(const Element& value) {
    const String text = fromUtf8(value.text());
    const bool isTrue = String::equalNoCase(text, "TRUE");
    if (!isTrue && !String::equalNoCase(text, "FALSE")) {
        value.fail(ElementError::semantic,
                   "Invalid value for VALUE element: must be \"TRUE\" or \"FALSE\"");
    }
    return isTrue;
}

Uint32 readNumber(const Element& value) {
    try {
        Uint32 number = 0;
        valueFromText(fromUtf8(value.text()), CIMTYPE_UINT32).get(number);
        return number;
    } catch (const InvalidLiteral& invalid) {
        value.fail(ElementError::semantic, invalid.what());
    }
}

void requireKeys(const CIMObjectPath& path) {
    if (path.getKeyBindings().size() == 0) {
        throw CIMException(CIM_ERR_INVALID_PARAMETER,
                           String("Full Model Path with keys required."));
    }
}

CIMPropertyList readPropertyList(const CIMValue& names) {
    Array<String> texts;
    names.get(texts);
    Array<CIMName> list;
    std::set<std::string> known;
    for (Uint32 i = 0; i < texts.size(); ++i) {
        String folded = texts[i];
        folded.toLower();
        if (known.insert(toUtf8(folded)).second) {
            list.append(CIMName(texts[i]));
        }
    }
    return CIMPropertyList(list);
}

} // namespace smisd::parameter
