#include "server/dispatch/FanOut.h"

using namespace Pegasus;

namespace smisd {

void requireParticipants(const std::vector<Participant>& participants, const CIMName& requested) {
    if (participants.empty())
        throw CIMException(CIM_ERR_NOT_SUPPORTED,
                           String("No provider or repository defined for class ") +
                               requested.getString() + String("."));
}

} // namespace smisd
