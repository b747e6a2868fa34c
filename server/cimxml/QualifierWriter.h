// CIM-XML of qualifier declarations.
#pragma once

#include "server/operation/QualifierDeclaration.h"

#include <host/Text.h>

namespace smisd {

// Appends a QUALIFIER.DECLARATION.
void appendQualifierDeclaration(Pegasus::Text& out, const QualifierDeclaration& declaration);

} // namespace smisd
