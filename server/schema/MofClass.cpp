#include "server/schema/MofClass.h"

#include <string>

#include <Pegasus/Common/Exception.h>

#include "server/operation/Utf8.h"
#include "server/schema/MofQualifier.h"
#include "server/schema/MofValue.h"

using namespace Pegasus;

namespace smisd::mof {
namespace {

DeclaredType typeOf(const CIMConstProperty& property) {
    return {property.getType(), property.getReferenceClassName(), property.isArray(),
            property.getArraySize()};
}

// What a class declaration is compiled with.
struct ClassContext {
    const Schema& schema;
    const CIMClass* superclass; // null if it has none
    CIMClass& result;
    bool isAssociation;
};

const CIMClass* superclassOf(const Node& body, const Schema& schema) {
    const Node* node = find<SuperclassName>(body);
    if (!node) {
        return nullptr;
    }
    const CIMClass* superclass = schema.findClass(name(*node));
    if (!superclass) {
        fail(*node, "expected a superclass that is declared before, not " + word(*node));
    }
    return superclass;
}

bool declaresAssociation(const Node& declaration) {
    bool found = false;
    if (const Node* list = find<QualifierList>(declaration)) {
        each<Qualifier>(*list, [&](const Node& use) {
            found = found || name(get<QualifierName>(use)) == CIMName("Association");
        });
    }
    return found;
}

void checkReference(const Node& feature, const DeclaredType& type, const ClassContext& context) {
    const Node& node = get<ReferenceClass>(feature);
    if (!context.isAssociation) {
        fail(node, "expected a reference only in an association");
    }
    if (type.isArray) {
        fail(get<ArrayMark>(feature), "expected no array of references in a class");
    }
    if (!context.schema.findClass(type.referenceClass) &&
        type.referenceClass != context.result.getClassName()) {
        fail(node, "expected a class that is declared before, not " + word(node));
    }
}

// A property that the superclass has keeps its type; a reference may narrow its class.
void checkOverride(const Node& feature, const DeclaredType& type, const ClassContext& context) {
    const Node& node = get<FeatureName>(feature);
    const Uint32 at =
        context.superclass ? context.superclass->findProperty(name(node)) : Uint32(PEG_NOT_FOUND);
    if (at == PEG_NOT_FOUND) {
        return;
    }
    const DeclaredType inherited = typeOf(context.superclass->getProperty(at));
    const bool same = type.type == inherited.type && type.isArray == inherited.isArray;
    const bool narrows = type.type != CIMTYPE_REFERENCE ||
                         context.schema.isA(type.referenceClass, inherited.referenceClass);
    if (!same || !narrows) {
        fail(node, "expected " + word(node) + " to be of type " + typeName(inherited) + ", as in " +
                       toUtf8(context.superclass->getClassName().getString()));
    }
}

void addProperty(const Node& feature, const ClassContext& context) {
    const DeclaredType type = mof::typeOf(feature);
    if (type.type == CIMTYPE_REFERENCE) {
        checkReference(feature, type, context);
    }
    checkOverride(feature, type, context);
    const Node* value = find<DefaultValue>(feature);
    CIMProperty property(name(get<FeatureName>(feature)),
                         value ? valueOf(*value, type) : nullValue(type), type.arraySize,
                         type.referenceClass);
    const bool isReference = type.type == CIMTYPE_REFERENCE;
    addQualifiers(property, feature, isReference ? Element::Reference : Element::Property,
                  context.schema);
    context.result.addProperty(property);
}

void addParameter(CIMMethod& method, const Node& node, const Schema& schema) {
    const DeclaredType type = mof::typeOf(node);
    CIMParameter parameter(name(get<ParameterName>(node)), type.type, type.isArray, type.arraySize,
                           type.referenceClass);
    addQualifiers(parameter, node, Element::Parameter, schema);
    method.addParameter(parameter);
}

void addMethod(const Node& feature, const Node& parameters, const ClassContext& context) {
    CIMMethod method(name(get<FeatureName>(feature)), mof::typeOf(feature).type);
    addQualifiers(method, feature, Element::Method, context.schema);
    each<Parameter>(parameters,
                    [&](const Node& node) { addParameter(method, node, context.schema); });
    context.result.addMethod(method);
}

// Turns what the CIM types refuse, such as a second property of a name, into an error at the node.
template<class Use>
void at(const Node& node, Use use) {
    try {
        use();
    } catch (const Exception& error) {
        fail(node, toUtf8(error.getMessage()));
    }
}

} // namespace

CIMClass compileClass(const Node& declaration, const Schema& schema) {
    const Node& body = get<ClassBody>(declaration);
    const Node& nameNode = get<ClassName>(body);
    if (schema.findClass(name(nameNode))) {
        fail(nameNode, "expected the class " + word(nameNode) + " to be declared only once");
    }
    const CIMClass* superclass = superclassOf(body, schema);
    CIMClass result(name(nameNode), superclass ? superclass->getClassName() : CIMName());
    const bool isAssociation =
        declaresAssociation(declaration) || (superclass && superclass->isAssociation());
    addQualifiers(result, declaration, isAssociation ? Element::Association : Element::Class,
                  schema);
    const ClassContext context{schema, superclass, result, isAssociation};
    each<Feature>(body, [&](const Node& feature) {
        at(get<FeatureName>(feature), [&] {
            if (const Node* parameters = find<Parameters>(feature)) {
                addMethod(feature, *parameters, context);
            } else {
                addProperty(feature, context);
            }
        });
    });
    return result;
}

CIMInstance compileInstance(const Node& declaration, const Schema& schema) {
    const Node& body = get<InstanceBody>(declaration);
    const Node& classNode = get<ClassName>(body);
    const CIMClass* cimClass = schema.findClass(name(classNode));
    if (!cimClass) {
        fail(classNode, "expected a class that is declared before, not " + word(classNode));
    }
    CIMInstance result(cimClass->getClassName());
    each<Assignment>(body, [&](const Node& assignment) {
        const Node& nameNode = get<AssignedName>(assignment);
        const Uint32 found = cimClass->findProperty(name(nameNode));
        if (found == PEG_NOT_FOUND) {
            fail(nameNode, "expected a property of " +
                               toUtf8(cimClass->getClassName().getString()) + ", not " +
                               word(nameNode));
        }
        const CIMConstProperty declared = cimClass->getProperty(found);
        at(nameNode, [&] {
            result.addProperty(CIMProperty(declared.getName(),
                                           valueOf(assignment, typeOf(declared)), 0,
                                           declared.getReferenceClassName()));
        });
    });
    return result;
}

} // namespace smisd::mof
