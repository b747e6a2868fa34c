// Calls of methods that fail on the way: what was done before stays, and the array is in order.
// Input that changes nothing is among the recorded pairs.
#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Masking.h"
#include "tests/wire/support/Names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace wire {
namespace {

const std::string stranger = "iqn.2026-01.com.example:stranger";
const std::string grantOfHost2 = target2 + "  " + host2;

class MethodInput : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state()};
    Client client{smisd};

    ~MethodInput() override {
        EXPECT_EQ(array.arrayctl({"check"}), "");
        EXPECT_EQ(smisd.stop().status, 0);
    }
    Answer expose(const Exposure& exposure) const {
        return client.invoke(maskingService, "ExposePaths", exposure.all());
    }
    Answer hide(const Exposure& exposure) const {
        return client.invoke(maskingService, "HidePaths", exposure.hiding());
    }
    // Of the units of the second target "<LUN> <volume>".
    std::vector<std::string> units() const {
        std::vector<std::string> texts;
        const Walk volumes = {"CIM_ProtocolControllerForUnit", "CIM_StorageVolume"};
        const Walk units = {"", "CIM_ProtocolControllerForUnit", "Antecedent"};
        const auto numbers = client.references(controller(2), units).each("DeviceNumber");
        const auto names = client.associators(controller(2), volumes).each("Name");
        EXPECT_EQ(numbers.size(), names.size());
        for (std::size_t i = 0; i < std::min(numbers.size(), names.size()); ++i) {
            texts.push_back(numbers[i] + " " + names[i]);
        }
        return texts;
    }
    std::string grants() const { return array.arrayctl({"grant", "list"}); }
};

TEST_F(MethodInput, FewerNumbersThanVolumesFailAtTheFirstWithoutOne) {
    EXPECT_EQ(
        expose({{logsVolume, mailVolume}, {host2}, {"7"}, {"2", "2"}, {controller(2)}}).error(),
        outOfBounds);
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume));
    EXPECT_THAT(grants(), HasSubstr(grantOfHost2));
}

TEST_F(MethodInput, FewerAccessesThanVolumesFailAtTheFirstWithoutOne) {
    EXPECT_EQ(expose({{logsVolume, mailVolume}, {}, {"7", "8"}, {"3"}, {controller(2)}}).error(),
              outOfBounds);
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume));
}

TEST_F(MethodInput, MoreNumbersAndAccessesThanVolumesAreNotRead) {
    EXPECT_EQ(expose({{logsVolume}, {}, {"7", "seven"}, {"2", "9"}, {controller(2)}}).returnValue(),
              "uint32 0");
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume));
}

TEST_F(MethodInput, OnlyTheFirstControllerIsRead) {
    EXPECT_EQ(
        expose({{logsVolume}, {}, {"7"}, {"2"}, {controller(2), controller(9)}}).returnValue(),
        "uint32 0");
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume));
}

TEST_F(MethodInput, ANumberThatIsTakenIsRefusedAndTheEarlierUnitStays) {
    EXPECT_EQ(
        expose({{logsVolume, mailVolume}, {host2}, {"7", "7"}, {"2", "2"}, {controller(2)}})
            .error(),
        "1 CIM_ERR_FAILED: LUN 7 of target \"iqn.2026-01.com.example:t2\" is taken by logical "
        "unit Ovrin:0F000002.");
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume));
    EXPECT_THAT(grants(), HasSubstr(grantOfHost2));
}

TEST_F(MethodInput, AnUnknownHostIsRefusedAndTheEarlierGrantStays) {
    EXPECT_THAT(expose({{logsVolume}, {host2, stranger}, {"7"}, {"2"}, {controller(2)}}).error(),
                StartsWith("1 CIM_ERR_FAILED: Ovrin:00000000 "));
    EXPECT_THAT(units(), IsEmpty());
    EXPECT_THAT(grants(), HasSubstr(grantOfHost2));

    EXPECT_THAT(hide({{}, {host2, stranger}, {}, {}, {controller(2)}}).error(),
                StartsWith("1 CIM_ERR_FAILED: Ovrin:00000000 "));
    EXPECT_THAT(grants(), testing::Not(HasSubstr(grantOfHost2)));
}

TEST_F(MethodInput, AnUnknownVolumeAmongKnownOnesIsReturnValue4AndTheKnownOnesAreExposed) {
    EXPECT_EQ(expose({{"FF", logsVolume}, {host2}, {"6", "7"}, {"2", "2"}, {controller(2)}})
                  .returnValue(),
              "uint32 4");
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume));

    EXPECT_EQ(hide({{logsVolume, "FF"}, {host2}, {}, {}, {controller(2)}}).returnValue(),
              "uint32 4");
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume));
    EXPECT_THAT(grants(), HasSubstr(grantOfHost2));
}

TEST_F(MethodInput, AVolumeTwiceIsExposedTwiceAndHiddenInOneCall) {
    const Exposure twice{{logsVolume, logsVolume}, {}, {"7", "8"}, {"2", "3"}, {controller(2)}};
    EXPECT_EQ(expose(twice).returnValue(), "uint32 0");
    EXPECT_THAT(units(), ElementsAre("7 " + logsVolume, "8 " + logsVolume));

    EXPECT_EQ(hide({{logsVolume}, {}, {}, {}, {controller(2)}}).returnValue(), "uint32 0");
    EXPECT_THAT(units(), IsEmpty());
}

TEST_F(MethodInput, AVolumeHiddenTwiceInOneCallFailsAfterTheFirstRemoval) {
    expose({{logsVolume}, {}, {"7"}, {"2"}, {controller(2)}});
    EXPECT_THAT(hide({{logsVolume, logsVolume}, {}, {}, {}, {controller(2)}}).error(),
                StartsWith("1 CIM_ERR_FAILED: Ovrin:0F000002 "));
    EXPECT_THAT(units(), IsEmpty());
}

TEST_F(MethodInput, AParameterTwiceTakesItsLastValue) {
    Parameters parameters = Exposure{{logsVolume}, {}, {"7"}, {"2"}, {controller(2)}}.all();
    parameters.push_back({"DeviceNumbers", values({"9"}), "string"});
    EXPECT_EQ(client.invoke(maskingService, "ExposePaths", parameters).returnValue(), "uint32 0");
    EXPECT_THAT(units(), ElementsAre("9 " + logsVolume));
}

} // namespace
} // namespace wire
