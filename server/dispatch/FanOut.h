// Operations that go to several providers.
#pragma once

#include "server/dispatch/Request.h"

#include <optional>
#include <vector>

namespace smisd {

// A provider and the class for which it is called.
struct Participant {
    Pegasus::CIMName className;
    Pegasus::String provider;
};

// Throws CIM_ERR_NOT_SUPPORTED with OpenPegasus' text about the requested class if there are none.
void requireParticipants(const std::vector<Participant>& participants,
                         const Pegasus::CIMName& requested);

// Calls `call` with each. An error ends it, but for CIM_ERR_NOT_SUPPORTED: that counts only when
// every participant answers so, and then the first one's is thrown.
template<class Call>
void callEach(const std::vector<Participant>& participants, Call call) {
    std::optional<Pegasus::CIMException> refusal;
    bool answered = false;
    for (const Participant& participant : participants) {
        try {
            call(participant);
            answered = true;
        } catch (const Pegasus::CIMException& error) {
            if (error.getCode() != Pegasus::CIM_ERR_NOT_SUPPORTED)
                throw;
            if (!refusal)
                refusal = error;
        }
    }
    if (refusal && !answered)
        throw *refusal;
}

} // namespace smisd
