#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>

#include "array/model/ErrorCode.h"
#include "array/model/Ids.h"
#include "array/model/Text.h"
#include "engine/DRAVCodes.h"
#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVKeys.h"
#include "engine/DRAVLogicalUnit.h"
#include "engine/DRAVOperationFailedException.h"
#include "engine/DRAVSessionSettings.h"
#include "engine/DRAVTarget.h"
#include "engine/DRAVVolume.h"
#include "engine/ManagedObject.h"

namespace Pegasus {

namespace {

using Row = std::pair<Uint16, Uint16>; // number of the CIM value map, code

constexpr Row digestCodes[] = {
    {Uint16(1), DRAV_DIGEST_OTHER},
    {Uint16(2), DRAV_DIGEST_NONE},
    {Uint16(3), DRAV_DIGEST_CRC32C},
    {Uint16(4), DRAV_DIGEST_NO_PREFERENCE},
};

constexpr Row authMethodCodes[] = {
    {Uint16(2), DRAV_AUTH_NONE},     {Uint16(3), DRAV_AUTH_NO_AUTHENTICATION},
    {Uint16(4), DRAV_AUTH_SRP},      {Uint16(5), DRAV_AUTH_CHAP},
    {Uint16(6), DRAV_AUTH_KERBEROS},
};

template<std::size_t size>
constexpr Uint16 codeOf(const Row (&rows)[size], Uint16 smiValue, Uint16 unknown) {
    for (const auto& [value, code] : rows) {
        if (value == smiValue) {
            return code;
        }
    }
    return unknown;
}

} // namespace

DRAVDigestFromSMI::DRAVDigestFromSMI(Uint16 smiValue)
    : code(codeOf(digestCodes, smiValue, DRAV_DIGEST_UNKNOWN)) {}

DRAVAuthSettingFromSMI::DRAVAuthSettingFromSMI(Uint16 smiValue)
    : code(codeOf(authMethodCodes, smiValue, DRAV_AUTH_UNKNOWN)) {}

namespace {

constexpr std::string_view keyPrefix = "Ovrin:";
constexpr std::size_t keyDigits = 8;

// The number that a text consists of; zero characters are no number.
bool parse(std::string_view text, int base, Uint32& value) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && stop == end;
}

bool isKeyText(std::string_view text) {
    return text.size() == keyPrefix.size() + keyDigits && text.starts_with(keyPrefix) &&
           std::ranges::none_of(text.substr(keyPrefix.size()),
                                [](char c) { return c >= 'a' && c <= 'f'; });
}

} // namespace

DRAVObjectKey::DRAVObjectKey(Uint32 id) : String(array::fromUtf8(array::keyText(id))) {}

DRAVObjectID::DRAVObjectID(const String& keyText) : id(0) {
    const std::string text = array::toUtf8(keyText);
    if (!isKeyText(text) || !parse(std::string_view(text).substr(keyPrefix.size()), 16, id)) {
        id = array::noKeyId;
    }
}

DRAVObjectIDDecimal::DRAVObjectIDDecimal(const String& decimal) : id(0) {
    const std::string text = array::toUtf8(decimal);
    if (!parse(text, 10, id)) {
        array::fail(array::ErrorCode::BadNumber,
                    array::quoted(text) + " is not a decimal number below 4294967296.");
    }
}

DRAVOperationFailedException::DRAVOperationFailedException(Uint32 errorCode, const String& message)
    : CIMOperationFailedException(message), code(errorCode) {}

DRAVOperationFailedException::~DRAVOperationFailedException() = default;

DRAVInitiator::DRAVInitiator(const String& iSCSIName) : name(iSCSIName) {}
DRAVInitiator::~DRAVInitiator() = default;

DRAVTarget::DRAVTarget(const String& iSCSIName) : name(iSCSIName) {}
DRAVTarget::~DRAVTarget() = default;

DRAVLogicalUnit::DRAVLogicalUnit(Uint32 target, Uint32 number, Uint32 access, Uint32 volume)
    : targetID(target), lun(number), readOnly(access), volumeID(volume) {}
DRAVLogicalUnit::~DRAVLogicalUnit() = default;

DRAVVolume::DRAVVolume() = default;
DRAVVolume::~DRAVVolume() = default;

DRAVSessionSettings::DRAVSessionSettings() = default;
DRAVSessionSettings::~DRAVSessionSettings() = default;

DRAVConnectionSettings::DRAVConnectionSettings() = default;
DRAVConnectionSettings::~DRAVConnectionSettings() = default;

namespace {

constexpr Uint32 noDigit = 16;

Uint32 digitOf(Uint16 c) {
    if (c >= '0' && c <= '9') {
        return c - Uint32('0');
    }
    if (c >= 'A' && c <= 'F') {
        return c - Uint32('A') + 10;
    }
    if (c >= 'a' && c <= 'f') {
        return c - Uint32('a') + 10;
    }
    return noDigit;
}

} // namespace

ManagedObject::~ManagedObject() = default;

String ManagedObject::hexToBin(const String& text) {
    if (text.size() % 2 != 0) {
        return String();
    }
    String key;
    key.reserveCapacity(text.size() / 2);
    const Char16* digits = text.getChar16Data();
    for (Uint32 i = 0; i < text.size(); i += 2) {
        const Uint32 high = digitOf(digits[i]);
        const Uint32 low = digitOf(digits[i + 1]);
        if (high == noDigit || low == noDigit) {
            return String();
        }
        key.append(Char16(static_cast<Uint16>(high << 4 | low)));
    }
    return key;
}

} // namespace Pegasus
