#include "server/cimxml/ElementReaders.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

// A reference key is text within text, and each level doubles its escapes.
constexpr Uint32 maximumReferenceKeyUnits = 1U << 20;

struct ValueType {
    const char* name;
    CIMKeyBinding::Type type;
};
constexpr ValueType valueTypes[] = {{"string", CIMKeyBinding::STRING},
                                    {"boolean", CIMKeyBinding::BOOLEAN},
                                    {"numeric", CIMKeyBinding::NUMERIC}};

CIMKeyBinding::Type readValueType(const Element& keyValue) {
    const std::string text = keyValue.attribute("VALUETYPE").value_or("string");
    for (const ValueType& valueType : valueTypes) {
        if (text == valueType.name) {
            return valueType.type;
        }
    }
    keyValue.fail(ElementError::semantic,
                  "Illegal value for KEYVALUE.VALUETYPE attribute; CIMValue must be one of "
                  "\"string\", \"boolean\", or \"numeric\"");
}

// The key that comes next in `parent`: KEYVALUE or VALUE.REFERENCE.
std::optional<CIMKeyBinding> takeKey(Element& parent, const CIMName& name) {
    if (const auto keyValue = parent.take("KEYVALUE")) {
        return CIMKeyBinding(name, fromUtf8(keyValue->text(Element::Content::text)),
                             readValueType(*keyValue));
    }
    if (const auto reference = parent.take("VALUE.REFERENCE")) {
        const String text = readValueReference(*reference).toString();
        if (text.size() > maximumReferenceKeyUnits) {
            reference->fail(ElementError::validation, "The reference key is too long");
        }
        reference->spendReferenceUnits(text.size());
        return CIMKeyBinding(name, text, CIMKeyBinding::REFERENCE);
    }
    return std::nullopt;
}

CIMKeyBinding readKeyBinding(Element element) {
    const CIMName name = readName(element);
    const std::optional<CIMKeyBinding> key = takeKey(element, name);
    if (!key) {
        element.fail(ElementError::validation, "Expected KEYVALUE or VALUE.REFERENCE element");
    }
    element.end();
    return *key;
}

struct NamespacePath {
    String host;
    CIMNamespaceName nameSpace;
};

NamespacePath readNamespacePath(Element element) {
    const Element hostElement = element.expect("HOST");
    const String host = fromUtf8(hostElement.text(Element::Content::text));
    if (host.size() == 0) {
        hostElement.fail(ElementError::validation, "expected content of HOST element");
    }
    const CIMNamespaceName nameSpace = readLocalNamespacePath(element.expect("LOCALNAMESPACEPATH"));
    element.end();
    return {host, nameSpace};
}

CIMObjectPath readClassNamePath(Element element) {
    return CIMObjectPath(String(), CIMNamespaceName(), readClassName(element));
}

// A namespace, and then the name of an instance or of a class.
CIMObjectPath readLocalPath(Element element, CIMObjectPath (*readObject)(Element),
                            const char* objectName) {
    const CIMNamespaceName nameSpace = readLocalNamespacePath(element.expect("LOCALNAMESPACEPATH"));
    CIMObjectPath path = readObject(element.expect(objectName));
    element.end();
    path.setNameSpace(nameSpace);
    return path;
}

// The same after a host.
CIMObjectPath readFullPath(Element element, CIMObjectPath (*readObject)(Element),
                           const char* objectName) {
    const NamespacePath where = readNamespacePath(element.expect("NAMESPACEPATH"));
    CIMObjectPath path = readObject(element.expect(objectName));
    element.end();
    path.setHost(where.host);
    path.setNameSpace(where.nameSpace);
    return path;
}

CIMObjectPath readInstancePath(Element element) {
    return readFullPath(element, readInstanceName, "INSTANCENAME");
}

CIMObjectPath readClassPath(Element element) {
    return readFullPath(element, readClassNamePath, "CLASSNAME");
}

struct ReferenceForm {
    const char* element;
    CIMObjectPath (*read)(Element);
};
constexpr ReferenceForm referenceForms[] = {
    {"INSTANCENAME", readInstanceName},     {"LOCALINSTANCEPATH", readLocalInstancePath},
    {"INSTANCEPATH", readInstancePath},     {"CLASSNAME", readClassNamePath},
    {"LOCALCLASSPATH", readLocalClassPath}, {"CLASSPATH", readClassPath},
};

} // namespace

CIMNamespaceName readLocalNamespacePath(Element element) {
    String nameSpace;
    while (const auto component = element.take("NAMESPACE")) {
        if (nameSpace.size() > 0) {
            nameSpace.append(Char16('/'));
        }
        nameSpace.append(readName(*component).getString());
        component->end();
    }
    if (nameSpace.size() == 0) {
        element.fail(ElementError::validation, "Expected one or more NAMESPACE elements within "
                                               "LOCALNAMESPACEPATH element");
    }
    element.end();
    return CIMNamespaceName(nameSpace);
}

CIMName readClassName(const Element& element) {
    element.end();
    return readName(element);
}

CIMObjectPath readInstanceName(Element element) {
    const CIMName className = readName(element, "CLASSNAME");
    Array<CIMKeyBinding> keys;
    if (const std::optional<CIMKeyBinding> unnamed = takeKey(element, CIMName())) {
        keys.append(*unnamed);
    }
    while (const auto keyBinding = element.take("KEYBINDING")) {
        keys.append(readKeyBinding(*keyBinding));
    }
    element.end();
    return CIMObjectPath(String(), CIMNamespaceName(), className, keys);
}

CIMObjectPath readLocalInstancePath(Element element) {
    return readLocalPath(element, readInstanceName, "INSTANCENAME");
}

CIMObjectPath readLocalClassPath(Element element) {
    return readLocalPath(element, readClassNamePath, "CLASSNAME");
}

CIMObjectPath readValueReference(Element element) {
    for (const ReferenceForm& form : referenceForms) {
        if (const auto path = element.take(form.element)) {
            element.end();
            return form.read(*path);
        }
    }
    element.fail(ElementError::validation,
                 "Expected one of the following start tags: CLASSPATH, LOCALCLASSPATH, CLASSNAME, "
                 "INSTANCEPATH, LOCALINSTANCEPATH, INSTANCENAME");
}

} // namespace smisd
