// Several clients at once: they read, walk through call-backs into the server, change the array.
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Masking.h"
#include "tests/wire/support/Names.h"

namespace wire {
namespace {

// Each turn of each client at once with the others'.
void inTurns(int clients, int turns, const std::function<void(int client)>& turn) {
    std::vector<std::thread> threads;
    for (int client = 0; client < clients; ++client) {
        threads.emplace_back([client, turns, &turn] {
            for (int i = 0; i < turns; ++i) {
                turn(client);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// With this number of workers.
class Workers : public testing::TestWithParam<const char*> {
protected:
    const Array array;
    const Smisd smisd{array.state(), {"--no-auth", "--workers", GetParam()}};
    const Client client{smisd};
};

INSTANTIATE_TEST_SUITE_P(, Workers, testing::Values("1", "2", "16"));

TEST_P(Workers, ServeAllWhoRead) {
    std::atomic<int> good{0};
    inTurns(16, 10, [&](int) { good += client.enumerate(hostClass).size() == 3; });
    EXPECT_EQ(good, 160);
}

TEST_P(Workers, ServeAllWhoseRequestsCallBack) {
    std::atomic<int> good{0};
    inTurns(16, 10, [&](int) {
        const Answer host = client.associators(privilege(1), {subjectClass, hostClass});
        const Answer controllers = client.associators(privilege(1), {grantClass, controllerClass});
        good += host.size() == 1 && controllers.size() == 1;
    });
    EXPECT_EQ(good, 160);
}

constexpr int clients = 6;
constexpr int turns = 5;

// A volume, a target and the name of a host for each client.
class ManyClients : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state()};
    Client client{smisd};
    const std::string before = makeOwn();

    ~ManyClients() override {
        EXPECT_EQ(array.arrayctl({"show"}), before);
        EXPECT_EQ(array.arrayctl({"check"}), "");
        EXPECT_EQ(smisd.stop().status, 0);
    }
    std::string makeOwn() const {
        for (int number = 0; number < clients; ++number) {
            array.arrayctl({"volume", "create", volume(number), "--size", "1GiB"});
            array.arrayctl(
                {"target", "create", "iqn.2026-01.com.example:own" + std::to_string(number)});
        }
        return array.arrayctl({"show"});
    }
    static std::string volume(int number) { return "60F" + std::to_string(number); }
    static Xml target(int number) { return controller(3 + number); }
    static std::string host(int number) {
        return "iqn.2026-01.com.example:new" + std::to_string(number);
    }
    std::string invoke(const std::string& method, const Parameters& parameters) const {
        return client.invoke(maskingService, method, parameters).returnValue();
    }
};

TEST_F(ManyClients, EachGetsWhatIsItsOwn) {
    std::atomic<int> good{0};
    inTurns(clients, turns, [&](int number) {
        const Exposure own{{volume(number)}, {host(number)}, {"1"}, {"2"}, {target(number)}};
        const Xml created = client
                                .invoke(identityService, "CreateStorageHardwareID",
                                        {{"StorageID", value(host(number)), "string"}})
                                .outReference("HardwareID");
        good += invoke("ExposePaths", own.all()) == "uint32 0";
        good += invoke("HidePaths", own.hiding()) == "uint32 0";
        good += client
                    .invoke(identityService, "DeleteStorageHardwareID",
                            {{"HardwareID", reference(created), "reference"}})
                    .returnValue() == "sint32 0";
    });
    EXPECT_EQ(good, clients * turns * 3);
}

// A method is several steps, and what one listed another may have removed; but no step is lost.
TEST_F(ManyClients, OfOneTargetLeaveItInOrder) {
    const auto own = [](int number) {
        return Exposure{{volume(number)}, {}, {std::to_string(number)}, {"2"}, {controller(2)}};
    };
    inTurns(clients, turns, [&](int number) {
        invoke("ExposePaths", own(number).all());
        invoke("HidePaths", own(number).hiding());
    });
    for (int number = 0; number < clients; ++number) {
        EXPECT_EQ(invoke("HidePaths", own(number).hiding()), "uint32 0");
    }
}

} // namespace
} // namespace wire
