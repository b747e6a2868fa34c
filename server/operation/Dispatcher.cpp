#include "server/operation/Dispatcher.h"

#include <stdexcept>
#include <string>

namespace smisd {

void ResultSink::unexpected(const char* kind) {
    throw std::logic_error(std::string("result of an unexpected kind: ") + kind);
}

} // namespace smisd
