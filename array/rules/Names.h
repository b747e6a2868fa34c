#ifndef ARRAY_RULES_NAMES_H
#define ARRAY_RULES_NAMES_H

#include <string_view>

#include "array/Records.h"

namespace array {

// What names may look like. Each throws DRAVOperationFailedException with ErrorCode::BadName
// (BadText for an element name) that quotes the text and says the rule.

// An iSCSI name of the forms iqn., eui. and naa., at most 223 bytes (RFC 7143 section 4.2.7).
void checkISCSIName(std::string_view name);

// The hexadecimal text of a volume's identifier: whole bytes, at most 64 of them.
void checkVolumeName(std::string_view name);

// Text for people: UTF-8 without control characters, at most 255 bytes.
void checkElementName(std::string_view text);

// The array's names: not empty, UTF-8 without control characters, at most 255 bytes.
void checkNames(const Names& names);

// An IPv4 or IPv6 address as text, and a port other than 0.
void checkEndpoint(const Endpoint& endpoint);

} // namespace array

#endif
