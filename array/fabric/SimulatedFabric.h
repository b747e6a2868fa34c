#pragma once

#include "array/change/Fabric.h"

namespace array {

// A fabric without a network: initiators are logged in and out by hand. It judges logins as a
// target does, counts what a target counts, and ends the sessions of a grant that is taken away.
class SimulatedFabric : public Fabric {
public:
    void targetChanged(Change& change, Id target) override;
    void unitChanged(Change& change, Id unit) override;
    void grantChanged(Change& change, Id target, Id initiator) override;
    void secretChanged(Change& change, Id owner) override;

    LoginResult login(Change& change, const LoginRequest& request) override;
    void logout(Change& change, Id session) override;
};

} // namespace array
