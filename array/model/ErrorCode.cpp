#include "array/model/ErrorCode.h"

#include "array/model/Text.h"

namespace array {

bool isOfTheState(const Pegasus::DRAVOperationFailedException& failure) {
    return failure.code >= static_cast<Pegasus::Uint32>(ErrorCode::StateMissing);
}

void fail(ErrorCode code, const std::string& message) {
    throw Pegasus::DRAVOperationFailedException(static_cast<Pegasus::Uint32>(code),
                                                fromUtf8(message));
}

} // namespace array
