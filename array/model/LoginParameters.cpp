#include "array/model/LoginParameters.h"

#include <algorithm>
#include <string>

#include "array/model/ErrorCode.h"

namespace array {

namespace {

std::string of(const char* key, std::uint32_t value, std::string_view owner) {
    return std::string(key) + ' ' + std::to_string(value) + " of " + std::string(owner);
}

std::string section(const char* number) {
    return std::string(" (RFC 7143 section ") + number + ").";
}

bool isAllowed(const ParameterValues& values, std::uint32_t value) {
    return values.codes.empty() ? value >= values.least && value <= values.most
                                : std::ranges::find(values.codes, value) != values.codes.end();
}

std::string refusal(const ParameterValues& values) {
    return values.codes.empty()
               ? " is out of range: it must be from " + std::to_string(values.least) + " to " +
                     std::to_string(values.most)
               : " is no method that it can have";
}

template<class Parameters>
void checkEach(const Parameters& parameters, std::string_view owner) {
    forEachLoginParameter<Parameters>([&](const auto& row) {
        const std::uint32_t value = parameters.*row.field;
        if (!isAllowed(row.values, value)) {
            fail(ErrorCode::BadParameter,
                 of(row.key, value, owner) + refusal(row.values) + section(row.section));
        }
    });
}

} // namespace

void checkParameters(const SessionParameters& parameters, std::string_view owner) {
    checkEach(parameters, owner);
    if (parameters.firstBurstLength > parameters.maxBurstLength) {
        fail(ErrorCode::ParametersDisagree,
             of("FirstBurstLength", parameters.firstBurstLength, owner) +
                 " is longer than its MaxBurstLength " + std::to_string(parameters.maxBurstLength) +
                 section("13.14"));
    }
    if (parameters.maxOutstandingR2T != 1 && parameters.dataSequenceInOrder == 1 &&
        parameters.errorRecoveryLevel != 0) {
        fail(ErrorCode::ParametersDisagree,
             of("MaxOutstandingR2T", parameters.maxOutstandingR2T, owner) +
                 " must be 1 with its DataSequenceInOrder 1 and ErrorRecoveryLevel " +
                 std::to_string(parameters.errorRecoveryLevel) + section("13.19"));
    }
}

void checkParameters(const ConnectionParameters& parameters, std::string_view owner) {
    checkEach(parameters, owner);
}

} // namespace array
