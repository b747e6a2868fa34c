#include "server/cimxml/IntrinsicParameters.h"

#include <set>
#include <string>

using namespace Pegasus;

namespace smisd::parameter {

void refuseNull(const Element& value) {
    value.end(); // says what is in it instead
    value.fail(ElementError::validation, "A null value is not valid for IPARAMVALUE \"" +
                                             value.requiredAttribute("NAME") + "\".");
}

bool readBoolean(const Element& value) {
    const String text = toString(value.text());
    const bool isTrue = String::equalNoCase(text, "TRUE");
    if (!isTrue && !String::equalNoCase(text, "FALSE")) {
        value.fail(ElementError::semantic,
                   "Invalid value for VALUE element: must be \"TRUE\" or \"FALSE\"");
    }
    return isTrue;
}

CIMPropertyList readPropertyList(const CIMValue& names) {
    Array<String> texts;
    names.get(texts);
    Array<CIMName> list;
    std::set<std::string> known;
    for (Uint32 i = 0; i < texts.size(); ++i) {
        String folded = texts[i];
        folded.toLower();
        if (known.insert(std::string(folded.getCString())).second) {
            list.append(CIMName(texts[i]));
        }
    }
    return CIMPropertyList(list);
}

} // namespace smisd::parameter
