#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "array/model/Snapshot.h"

namespace array {

// LUNs are below this: 14 bits of flat space addressing (SAM-5 section 4.7.7.3).
constexpr std::uint32_t lunLimit = 16384;

// What names may look like. Each throws DRAVOperationFailedException with ErrorCode::BadName
// (BadText for an element name) that quotes the text and says the rule.

// An iSCSI name of the forms iqn., eui. and naa., at most 223 bytes (RFC 7143 section 4.2.7), as it
// is kept: in lower case and normalized as RFC 3722 says. Refused is what that prohibits, and also
// characters that are not shown, such as a space without width, which it would drop.
std::string keptISCSIName(std::string_view name);

// A name that is kept in that form.
void checkISCSIName(std::string_view name);

// The hexadecimal text of a volume's identifier: whole bytes, at most 64 of them.
void checkVolumeName(std::string_view name);

// Text for people: UTF-8 without control characters, at most 255 bytes.
void checkElementName(std::string_view text);

// The array's names: not empty, UTF-8 without control characters, at most 255 bytes.
void checkNames(const ArrayNames& names);

// An IPv4 or IPv6 address as text, and a port other than 0.
void checkEndpoint(const Endpoint& endpoint);

// A secret has at most 255 bytes of UTF-8 and no control characters. Throws
// DRAVOperationFailedException with ErrorCode::BadSecret, which names `owner`, never the secret.
void checkSecret(std::string_view secret, std::string_view owner);

// True for a secret that is accepted, but shorter than CHAP needs to be safe: 96 bits (RFC 7143
// section 9.2.1). An empty secret means that there is none, and is not weak.
bool isWeakSecret(std::string_view secret);

// All of these that concern a record's own values, whether it is made, modified or read from disk.
void checkValues(const Endpoint& endpoint);
void checkValues(const Volume& volume);
void checkValues(const Initiator& initiator);
void checkValues(const Target& target);

// What of a snapshot breaks the rules, one line of text each; none in a sound array.
std::vector<std::string> findBrokenRules(const Snapshot& snapshot);

} // namespace array
