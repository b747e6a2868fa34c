#include "server/schema/MofQualifier.h"

#include <algorithm>
#include <string>

#include "server/schema/MofValue.h"

using namespace Pegasus;

namespace smisd::mof {
namespace {

struct ScopeRow {
    const char* word;
    bool QualifierScope::*flag;
};

constexpr ScopeRow scopes[] = {
    {"class", &QualifierScope::onClass},          {"association", &QualifierScope::onAssociation},
    {"reference", &QualifierScope::onReference},  {"property", &QualifierScope::onProperty},
    {"method", &QualifierScope::onMethod},        {"parameter", &QualifierScope::onParameter},
    {"indication", &QualifierScope::onIndication}};

struct ElementRow {
    Element element;
    const char* name;
    bool QualifierScope::*flag;
};

constexpr ElementRow elements[] = {
    {Element::Class, "a class", &QualifierScope::onClass},
    {Element::Association, "an association", &QualifierScope::onAssociation},
    {Element::Reference, "a reference", &QualifierScope::onReference},
    {Element::Property, "a property", &QualifierScope::onProperty},
    {Element::Method, "a method", &QualifierScope::onMethod},
    {Element::Parameter, "a parameter", &QualifierScope::onParameter}};

const ElementRow& rowOf(Element element) {
    return *std::find_if(std::begin(elements), std::end(elements),
                         [&](const ElementRow& row) { return row.element == element; });
}

struct FlavorRow {
    const char* word;
    const CIMFlavor& adds;
    const CIMFlavor& removes;
};

bool isWord(const std::string& text, const char* word) {
    return String::equalNoCase(String(text.c_str()), String(word));
}

void addScope(QualifierScope& scope, const Node& node) {
    const std::string text = word(node);
    bool known = false;
    for (const ScopeRow& row : scopes) {
        if (isWord(text, row.word) || isWord(text, "any")) {
            scope.*row.flag = true;
            known = true;
        }
    }
    if (!known) {
        fail(node, "expected class, association, indication, property, reference, method, "
                   "parameter or any, not " +
                       text);
    }
}

void addFlavor(CIMFlavor& flavor, const Node& node) {
    static const FlavorRow flavors[] = {
        {"EnableOverride", CIMFlavor::OVERRIDABLE, CIMFlavor::DISABLEOVERRIDE},
        {"DisableOverride", CIMFlavor::DISABLEOVERRIDE, CIMFlavor::OVERRIDABLE},
        {"ToSubclass", CIMFlavor::TOSUBCLASS, CIMFlavor::RESTRICTED},
        {"Restricted", CIMFlavor::RESTRICTED, CIMFlavor::TOSUBCLASS},
        {"Translatable", CIMFlavor::TRANSLATABLE, CIMFlavor::NONE}};
    const std::string text = word(node);
    const auto row = std::find_if(std::begin(flavors), std::end(flavors),
                                  [&](const FlavorRow& one) { return isWord(text, one.word); });
    if (row == std::end(flavors)) {
        fail(node, "expected EnableOverride, DisableOverride, ToSubclass, Restricted or "
                   "Translatable, not " +
                       text);
    }
    flavor.removeFlavor(row->removes);
    flavor.addFlavor(row->adds);
}

// A qualifier without a value is TRUE if it is boolean, and null otherwise (DSP0004, "Qualifiers").
CIMValue valueOfUse(const Node& use, const DeclaredType& type) {
    if (const Node* value = find<QualifierValue>(use)) {
        return valueOf(*value, type);
    }
    if (type.type == CIMTYPE_BOOLEAN && !type.isArray) {
        return CIMValue(Boolean(true));
    }
    return nullValue(type);
}

CIMQualifier compileUse(const Node& use, Element element, const Schema& schema) {
    const Node& nameNode = get<QualifierName>(use);
    const CIMName qualifierName = name(nameNode);
    const smisd::QualifierDeclaration* declared = schema.findQualifier(qualifierName);
    if (!declared) {
        fail(nameNode, "expected a declared qualifier, not " + word(nameNode));
    }
    const ElementRow& row = rowOf(element);
    if (!(declared->scope.*row.flag)) {
        fail(nameNode,
             "expected a qualifier for " + std::string(row.name) + ", not " + word(nameNode));
    }
    const DeclaredType type{declared->value.getType(), CIMName(), declared->value.isArray(), 0};
    CIMFlavor flavor = declared->flavor;
    each<FlavorName>(use, [&](const Node& node) { addFlavor(flavor, node); });
    return CIMQualifier(qualifierName, valueOfUse(use, type), flavor);
}

} // namespace

smisd::QualifierDeclaration compileQualifierDeclaration(const Node& declaration) {
    smisd::QualifierDeclaration result;
    result.name = name(get<QualifierName>(declaration));
    const DeclaredType type = typeOf(declaration);
    const Node* value = find<DefaultValue>(declaration);
    result.value = value ? valueOf(*value, type) : nullValue(type);
    each<ScopeName>(declaration, [&](const Node& node) { addScope(result.scope, node); });
    result.flavor = CIMFlavor::DEFAULTS;
    each<FlavorName>(declaration, [&](const Node& node) { addFlavor(result.flavor, node); });
    return result;
}

std::vector<CIMQualifier> compileQualifiers(const Node& qualified, Element element,
                                            const Schema& schema) {
    std::vector<CIMQualifier> result;
    const Node* list = find<QualifierList>(qualified);
    if (!list) {
        return result;
    }
    each<Qualifier>(*list, [&](const Node& use) {
        const CIMQualifier qualifier = compileUse(use, element, schema);
        for (const CIMQualifier& earlier : result) {
            if (earlier.getName() == qualifier.getName()) {
                fail(use, "expected the qualifier " + word(get<QualifierName>(use)) + " only once");
            }
        }
        result.push_back(qualifier);
    });
    return result;
}

} // namespace smisd::mof
