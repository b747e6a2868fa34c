// Several clients change the array at once.
#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Masking.h"
#include "tests/wire/support/Names.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace wire {
namespace {

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

    // Each turn of each client at once with the others'.
    static void inTurns(const std::function<void(int number)>& turn) {
        std::vector<std::thread> threads;
        for (int number = 0; number < clients; ++number) {
            threads.emplace_back([number, &turn] {
                for (int i = 0; i < turns; ++i) {
                    turn(number);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    std::string invoke(const std::string& method, const Parameters& parameters) const {
        return client.invoke(maskingService, method, parameters).returnValue();
    }
};

TEST_F(ManyClients, EachGetsWhatIsItsOwn) {
    std::atomic<int> good{0};
    inTurns([&](int number) {
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
    inTurns([&](int number) {
        invoke("ExposePaths", own(number).all());
        invoke("HidePaths", own(number).hiding());
    });
    for (int number = 0; number < clients; ++number) {
        EXPECT_EQ(invoke("HidePaths", own(number).hiding()), "uint32 0");
    }
}

} // namespace
} // namespace wire
