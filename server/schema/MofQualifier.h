// The qualifiers of a MOF file: their declarations, and their uses on other declarations.
#pragma once

#include <vector>

#include <Pegasus/Common/CIMQualifier.h>

#include "server/operation/Operation.h"
#include "server/schema/MofTree.h"
#include "server/schema/Schema.h"

namespace smisd::mof {

// Throws MofError, as all below.
smisd::QualifierDeclaration compileQualifierDeclaration(const Node& declaration);

// What a qualifier stands on.
enum class Element { Class, Association, Reference, Property, Method, Parameter };

// The qualifiers in front of a declaration, in order; none if it has no list. Each must be declared
// in the schema, for such an element, with a value of the declared type.
std::vector<Pegasus::CIMQualifier> compileQualifiers(const Node& qualified, Element element,
                                                     const Schema& schema);

// Adds them to a class, property, method or parameter.
template<class Target>
void addQualifiers(Target& target, const Node& qualified, Element element, const Schema& schema) {
    for (const Pegasus::CIMQualifier& qualifier : compileQualifiers(qualified, element, schema)) {
        target.addQualifier(qualifier);
    }
}

} // namespace smisd::mof
