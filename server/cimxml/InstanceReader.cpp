#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/Exception.h>

#include "server/cimxml/ElementReaders.h"

using namespace Pegasus;

namespace smisd {
namespace {

CIMFlavor readFlavor(const Element& qualifier) {
    const struct {
        const char* attribute;
        bool byDefault;
        const CIMFlavor& flavor;
    } flavors[] = {{"OVERRIDABLE", true, CIMFlavor::OVERRIDABLE},
                   {"TOSUBCLASS", true, CIMFlavor::TOSUBCLASS},
                   {"TOINSTANCE", false, CIMFlavor::TOINSTANCE},
                   {"TRANSLATABLE", false, CIMFlavor::TRANSLATABLE}};
    CIMFlavor result(CIMFlavor::NONE);
    for (const auto& entry : flavors) {
        if (readFlag(qualifier, entry.attribute, entry.byDefault)) {
            result.addFlavor(entry.flavor);
        }
    }
    return result;
}

CIMQualifier readQualifier(Element element) {
    const CIMName name = readName(element);
    const CIMType type = readType(element, "TYPE");
    std::optional<CIMValue> value = takeValue(element, type);
    if (!value) {
        value = takeArray(element, type);
    }
    element.end();
    return CIMQualifier(name, value.value_or(CIMValue(type, false)), readFlavor(element),
                        readFlag(element, "PROPAGATED", false));
}

// The qualifiers at the start of an instance or property.
template<class Owner>
void takeQualifiers(Element& element, Owner& owner) {
    while (const auto qualifier = element.take("QUALIFIER")) {
        try {
            owner.addQualifier(readQualifier(*qualifier));
        } catch (const AlreadyExistsException&) {
            qualifier->fail(ElementError::semantic, "duplicate qualifier");
        }
    }
}

// What all kinds of property have in common: `null` is the value of one without a value, `take`
// reads the value.
template<class Take>
CIMProperty readPropertyOf(Element element, const CIMValue& null, const CIMName& referenceClass,
                           Take take) {
    CIMProperty property(readName(element), null, 0, referenceClass,
                         readOptionalName(element, "CLASSORIGIN"),
                         readFlag(element, "PROPAGATED", false));
    takeQualifiers(element, property);
    if (const std::optional<CIMValue> value = take(element)) {
        property.setValue(*value);
    }
    element.end();
    return property;
}

CIMProperty readScalarProperty(const Element& element) {
    const CIMType type = readType(element, "TYPE");
    return readPropertyOf(element, CIMValue(type, false), CIMName(),
                          [&](Element& rest) { return takeValue(rest, type); });
}

CIMProperty readArrayProperty(const Element& element) {
    const CIMType type = readType(element, "TYPE");
    return readPropertyOf(element, CIMValue(type, true), CIMName(),
                          [&](Element& rest) { return takeArray(rest, type); });
}

CIMProperty readReferenceProperty(const Element& element) {
    return readPropertyOf(element, CIMValue(CIMTYPE_REFERENCE, false),
                          readOptionalName(element, "REFERENCECLASS"), [](Element& rest) {
                              const auto reference = rest.take("VALUE.REFERENCE");
                              return reference
                                         ? std::optional(CIMValue(readValueReference(*reference)))
                                         : std::nullopt;
                          });
}

struct PropertyForm {
    const char* element;
    CIMProperty (*read)(const Element&);
};
constexpr PropertyForm propertyForms[] = {{"PROPERTY", readScalarProperty},
                                          {"PROPERTY.ARRAY", readArrayProperty},
                                          {"PROPERTY.REFERENCE", readReferenceProperty}};

bool takeProperty(Element& element, CIMInstance& instance) {
    for (const PropertyForm& form : propertyForms) {
        if (const auto property = element.take(form.element)) {
            try {
                instance.addProperty(form.read(*property));
            } catch (const AlreadyExistsException&) {
                property->fail(ElementError::semantic, "duplicate property");
            }
            return true;
        }
    }
    return false;
}

} // namespace

CIMInstance readInstance(Element element) {
    CIMInstance instance(readName(element, "CLASSNAME"));
    takeQualifiers(element, instance);
    while (takeProperty(element, instance)) {
    }
    element.end();
    return instance;
}

CIMInstance readNamedInstance(Element element) {
    const CIMObjectPath path = readInstanceName(element.expect("INSTANCENAME"));
    CIMInstance instance = readInstance(element.expect("INSTANCE"));
    element.end();
    instance.setPath(path);
    return instance;
}

} // namespace smisd
