// Requests that call back into the server, many at once and with few workers.
#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace wire {
namespace {

class CallBack : public testing::TestWithParam<const char*> {};

TEST_P(CallBack, ManyAtOnceAllReturn) {
    const Array array;
    const Smisd smisd(array.state(), {"--no-auth", "--workers", GetParam()});
    const Xml privilege =
        instanceName("CIM_AuthorizedPrivilege", {{"InstanceID", "Ovrin:0D000001"}});
    constexpr int clients = 16;
    constexpr int turns = 10;
    std::atomic<int> good{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < clients; ++i) {
        threads.emplace_back([&] {
            const Client client(smisd);
            for (int turn = 0; turn < turns; ++turn) {
                const Answer host = client.associators(
                    privilege, {"CIM_AuthorizedSubject", "CIM_StorageHardwareID"});
                const Answer controllers = client.associators(
                    privilege, {"CIM_AuthorizedTarget", "CIM_SCSIProtocolController"});
                good += host.size() == 1 && controllers.size() == 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, clients * turns);
}

INSTANTIATE_TEST_SUITE_P(Workers, CallBack, testing::Values("1", "2", "16"));

} // namespace
} // namespace wire
