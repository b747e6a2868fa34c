#include "array/fabric/SimulatedFabric.h"

#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

using Pegasus::CLASSID_ISCSI_CONNECTION;
using Pegasus::CLASSID_ISCSI_SESSION;

using Ids = std::vector<Id>;

class SimulatedFabricTest : public ArrayFixture {
protected:
    static constexpr const char* goodSecret = "a secret of enough bytes";

    void SetUp() override {
        change([this](Change& change) { change.grant(_target, _initiator); });
    }
    LoginRequest request(const std::string& secret = goodSecret) const {
        return {_target, _initiator, secret, {_endpoint}};
    }
    // Expects a refusal that is counted, and nothing more.
    void expectRefused(ErrorCode code, const std::string& message, const LoginRequest& request,
                       std::uint16_t type, std::uint64_t LoginStatistics::*counter) {
        const LoginStatistics before = now()->loginStatistics(_target);
        expectFailure(code, message, [&] { array().login(request); });
        const LoginStatistics after = now()->loginStatistics(_target);
        EXPECT_EQ(after.*counter, before.*counter + 1);
        EXPECT_EQ(after.failures(), before.failures() + 1);
        EXPECT_EQ(after.successfulLogins, before.successfulLogins);
        EXPECT_EQ(after.lastFailureType, type);
        EXPECT_GT(after.lastFailureTime, 1767225600000000u); // 2026
        EXPECT_EQ(after.lastFailureInitiator, now()->initiator(request.initiator)->name);
        EXPECT_EQ(now()->count(CLASSID_ISCSI_SESSION), 0u);
    }

    const Id _target = addTarget();
    const Id _initiator = addInitiator("host1", goodSecret);
    const Id _endpoint = addEndpoint();
};

TEST_F(SimulatedFabricTest, ALoginMakesASessionWithTheTargetsParameters) {
    SessionParameters proposed;
    proposed.maxConnections = 2;
    proposed.maxBurstLength = 1 << 20;
    ConnectionParameters proposedToConnections;
    proposedToConnections.maxRecvDataSegmentLength = 65536;
    change([&](Change& change) {
        change.modify(now()->sessionSettingsOf(_target), proposed);
        change.modify(now()->connectionSettingsOf(_target), proposedToConnections);
    });
    const Id second = addEndpoint("192.0.2.11");
    const Id session = array().login({_target, _initiator, goodSecret, {_endpoint, second}});

    ASSERT_NE(now()->session(session), nullptr);
    EXPECT_EQ(now()->session(session)->target, _target);
    EXPECT_EQ(now()->session(session)->initiator, _initiator);
    EXPECT_EQ(now()->session(session)->parameters, proposed);
    EXPECT_EQ(now()->associated(_target, CLASSID_ISCSI_SESSION), Ids{session});
    const Ids connections = now()->associated(session, CLASSID_ISCSI_CONNECTION);
    ASSERT_EQ(connections.size(), 2u);
    EXPECT_EQ(now()->connection(connections[0])->endpoint, _endpoint);
    EXPECT_EQ(now()->connection(connections[1])->endpoint, second);
    EXPECT_EQ(now()->connection(connections[1])->parameters, proposedToConnections);
    EXPECT_EQ(now()->connection(connections[0])->authMethod, Pegasus::DRAV_AUTH_CHAP);
    EXPECT_FALSE(now()->connection(connections[0])->mutualAuth);
    EXPECT_EQ(now()->loginStatistics(_target).successfulLogins, 1u);
    EXPECT_EQ(now()->sessionStatistics(session).commandPDUs, 6u);
    EXPECT_EQ(now()->sessionStatistics(session).bytesReceived, 6u * 48);
    EXPECT_EQ(now()->interfaceStatistics(second).framesReceived, 3u);

    // The parameters in force stay when the proposal changes.
    change([&](Change& change) {
        change.modify(now()->sessionSettingsOf(_target), SessionParameters());
    });
    EXPECT_EQ(now()->session(session)->parameters, proposed);
}

TEST_F(SimulatedFabricTest, ATargetWithASecretProvesItToo) {
    change([&](Change& change) {
        change.modify(_target, Target{"iqn.2026-01.com.example:t1", "the secret of the target"});
    });
    const Id session = array().login(request());
    EXPECT_TRUE(
        now()->connection(now()->associated(session, CLASSID_ISCSI_CONNECTION)[0])->mutualAuth);
}

TEST_F(SimulatedFabricTest, AnInitiatorWithoutASecretNeedsNone) {
    const Id open = addInitiator("host2");
    change([&](Change& change) { change.grant(_target, open); });
    const Id session = array().login({_target, open, "whatever", {_endpoint}});
    EXPECT_EQ(
        now()->connection(now()->associated(session, CLASSID_ISCSI_CONNECTION)[0])->authMethod,
        Pegasus::DRAV_AUTH_NO_AUTHENTICATION);
}

TEST_F(SimulatedFabricTest, ALoginWithoutAGrantIsRefusedAndCounted) {
    change([this](Change& change) { change.revoke(_target, _initiator); });
    expectRefused(ErrorCode::LoginNotGranted,
                  "Initiator \"iqn.2026-01.com.example:host1\" has no grant to target "
                  "\"iqn.2026-01.com.example:t1\".",
                  request(), 4, &LoginStatistics::authorizationFailures);
}

TEST_F(SimulatedFabricTest, ALoginWithAWrongSecretIsRefusedAndCounted) {
    for (const char* wrong :
         {"", "A secret of enough bytes", "another secret than the right one"}) {
        expectRefused(ErrorCode::LoginFailed,
                      "Initiator \"iqn.2026-01.com.example:host1\" did not prove its secret to "
                      "target \"iqn.2026-01.com.example:t1\".",
                      request(wrong), 3, &LoginStatistics::authenticationFailures);
    }
    EXPECT_EQ(now()->loginStatistics(_target).authenticationFailures, 3u);
}

TEST_F(SimulatedFabricTest, ALoginNeedsFromOneToMaxConnectionsEndpoints) {
    for (const Ids& endpoints : {Ids{}, Ids{_endpoint, _endpoint}}) {
        expectRefused(ErrorCode::LoginNoPath,
                      "Initiator \"iqn.2026-01.com.example:host1\" asked for " +
                          std::to_string(endpoints.size()) +
                          " connections to target \"iqn.2026-01.com.example:t1\", which takes from "
                          "1 to 1 (MaxConnections, RFC 7143 section 13.2).",
                      {_target, _initiator, goodSecret, endpoints}, 2,
                      &LoginStatistics::negotiationFailures);
    }
}

TEST_F(SimulatedFabricTest, ALoginOfWhatIsNotThereIsNoAttempt) {
    const auto codeOf = [&](const LoginRequest& request) {
        return failureOf([&] { array().login(request); }).code;
    };
    EXPECT_EQ(codeOf({0x0E000009, _initiator, goodSecret, {_endpoint}}), ErrorCode::NoSuchObject);
    EXPECT_EQ(codeOf({_target, 0x0D000009, goodSecret, {_endpoint}}), ErrorCode::NoSuchObject);
    EXPECT_EQ(codeOf({_target, _initiator, goodSecret, {0x09000009}}), ErrorCode::NoSuchObject);
    EXPECT_EQ(codeOf({_target, _initiator, goodSecret, {_target}}), ErrorCode::WrongClass);
    change([this](Change& change) { change.revoke(_target, _initiator); });
    EXPECT_EQ(codeOf({_target, _initiator, goodSecret, {0x09000009}}), ErrorCode::NoSuchObject);
    EXPECT_EQ(now()->loginStatistics(_target).failures(), 0u);
}

TEST_F(SimulatedFabricTest, ALogoutEndsTheSession) {
    const Id session = array().login(request());
    array().logout(session);
    EXPECT_EQ(now()->session(session), nullptr);
    EXPECT_EQ(now()->count(CLASSID_ISCSI_CONNECTION), 0u);
    EXPECT_EQ(now()->loginStatistics(_target).normalLogouts, 1u);
    EXPECT_EQ(now()->sessionStatistics(session).commandPDUs, 0u);
    EXPECT_EQ(now()->interfaceStatistics(_endpoint).framesReceived, 3u + 1);
    EXPECT_EQ(failureOf([&] { array().logout(session); }).code, ErrorCode::NoSuchObject);
}

TEST_F(SimulatedFabricTest, TakingAGrantAwayEndsItsSessionsAndNoOthers) {
    const Id other = addTarget("t2");
    change([&](Change& change) { change.grant(other, _initiator); });
    array().login(request());
    array().login(request());
    const Id kept = array().login({other, _initiator, goodSecret, {_endpoint}});
    change([this](Change& change) { change.revoke(_target, _initiator); });
    EXPECT_EQ(now()->ids(CLASSID_ISCSI_SESSION), Ids{kept});
    EXPECT_EQ(now()->loginStatistics(_target).otherLogouts, 2u);
    EXPECT_EQ(now()->loginStatistics(other).otherLogouts, 0u);
}

// A fabric that writes down what it is told.
class RecordingFabric : public SimulatedFabric {
public:
    explicit RecordingFabric(std::vector<std::string>& told) : _told(told) {}
    void targetChanged(Change&, Id target) override { note("target", target); }
    void unitChanged(Change&, Id unit) override { note("unit", unit); }
    void grantChanged(Change&, Id target, Id) override { note("grant", target); }
    void secretChanged(Change&, Id owner) override { note("secret", owner); }

private:
    void note(const char* what, Id id) {
        _told.push_back(std::string(what) + ' ' + std::to_string(id >> 24));
    }
    std::vector<std::string>& _told;
};

TEST(Fabric, IsToldOfTargetsUnitsGrantsAndSecrets) {
    const TemporaryDirectory directory;
    std::vector<std::string> told;
    const auto array =
        Array::openOrCreate(directory.path() / "state", std::make_unique<RecordingFabric>(told));
    array->change([](Change& change) {
        const Id target = change.create(Target{"iqn.2026-01.com.example:t1", "secret of it"});
        const Id initiator = change.create(Initiator{"iqn.2026-01.com.example:h1", {}});
        change.grant(target, initiator);
        change.grant(target, initiator);
        const Id volume = change.create(Volume{"0A", {}, 0, 0});
        const Id unit = change.create(LogicalUnit{target, 0, 0, volume, {}});
        change.modify(unit, LogicalUnit{target, 0, 1, volume, {}});
        change.modify(initiator, Initiator{"iqn.2026-01.com.example:h1", "its secret"});
        change.remove(volume);
        change.remove(unit);
        change.remove(initiator);
        change.remove(target);
    });
    EXPECT_EQ(told, (std::vector<std::string>{"target 14", "secret 14", "grant 14", "unit 15",
                                              "unit 15", "secret 13", "unit 15", "unit 15",
                                              "grant 14", "target 14"}));
}

// A fabric that refuses to serve a second target.
class SmallFabric : public SimulatedFabric {
public:
    void targetChanged(Change& change, Id) override {
        if (change.snapshot().count(Pegasus::CLASSID_TARGET) > 1) {
            throw std::runtime_error("one target is enough");
        }
    }
};

TEST(Fabric, MayRefuseAChange) {
    const TemporaryDirectory directory;
    const auto array =
        Array::openOrCreate(directory.path() / "state", std::make_unique<SmallFabric>());
    const auto add = [&](const char* name) {
        array->change([&](Change& change) { change.create(Target{name, {}}); });
    };
    add("iqn.2026-01.com.example:t1");
    EXPECT_THROW(add("iqn.2026-01.com.example:t2"), std::runtime_error);
    EXPECT_EQ(array->snapshot()->count(Pegasus::CLASSID_TARGET), 1u);
}

} // namespace
} // namespace array
