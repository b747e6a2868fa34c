// CIM-XML of qualifier declarations.
#pragma once

#include "server/operation/QualifierDeclaration.h"

#include <string>

namespace smisd {

// Appends a QUALIFIER.DECLARATION.
void appendQualifierDeclaration(std::string& out, const QualifierDeclaration& declaration);

} // namespace smisd
