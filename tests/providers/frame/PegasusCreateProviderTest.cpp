#include "providers/frame/PegasusCreateProvider.h"

#include <cctype>
#include <memory>

#include "providers/identity/AuthorizedAccessProvider.h"
#include "providers/identity/SharedSecretProvider.h"
#include "providers/identity/StorageHardwareIDManagementService.h"
#include "providers/identity/StorageHardwareIDProvider.h"
#include "providers/iscsi/iSCSIPipesProvider.h"
#include "providers/iscsi/iSCSISettingsProvider.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "providers/masking/ProtocolControllerForUnitProvider.h"
#include "providers/masking/SCSIProtocolControllerProvider.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

template<class Provider>
bool isExactly(const CIMProvider& provider) {
    return typeid(provider) == typeid(Provider);
}

struct Row {
    std::string name;
    std::string startUpLine;
    bool (*isOfItsClass)(const CIMProvider&);
    bool initializeWritesALine = false;
};

const Row ROWS[] = {
    {"StorageHardwareIDManagementServiceProvider",
     "Starting up the StorageHardwareIDManagementService provider",
     isExactly<StorageHardwareIDManagementServiceProvider>},
    {"StorageHardwareIDProvider", "Starting up the StorageHardwareID provider",
     isExactly<StorageHardwareIDProvider>, true},
    {"AuthorizedAccessProvider", "Starting up the AuthorizedAccess provider",
     isExactly<AuthorizedAccessProvider>},
    {"SharedSecretProvider", "Starting up the Shared Secret provider",
     isExactly<SharedSecretProvider>, true},
    {"ControllerConfigurationServiceProvider",
     "Starting up the ControllerConfigurationService provider",
     isExactly<ControllerConfigurationServiceProvider>},
    {"SCSIProtocolControllerProvider", "Starting up the SCSIProtocolController provider",
     isExactly<SCSIProtocolControllerProvider>},
    {"ProtocolControllerForUnitProvider", "Starting up the ProtocolControllerForUnit provider",
     isExactly<ProtocolControllerForUnitProvider>, true},
    {"iSCSISettingsProvider", "Starting up the iSCSI Settings provider",
     isExactly<iSCSISettingsProvider>},
    {"iSCSIPipesProvider", "Starting up the iSCSI Pipes provider", isExactly<iSCSIPipesProvider>},
};

using OwnedProvider = std::unique_ptr<CIMProvider>;

OwnedProvider create(const std::string& name) {
    return OwnedProvider(PegasusCreateProvider(name.c_str()));
}

class PegasusCreateProviderTest : public testing::Test {
protected:
    PegasusCreateProviderTest() { resetEngine(); }

    TraceCapture capture;
};

class EachProvider : public PegasusCreateProviderTest, public testing::WithParamInterface<Row> {};

TEST_P(EachProvider, IsMadeByItsNameWithItsStartUpLineAndNothingElse) {
    const OwnedProvider provider = create(GetParam().name);

    ASSERT_TRUE(provider);
    EXPECT_TRUE(GetParam().isOfItsClass(*provider));
    EXPECT_THAT(log(), ElementsAre("trace " + GetParam().startUpLine));
}

TEST_P(EachProvider, IsFoundWithoutRegardToCase) {
    std::string lower = GetParam().name;
    std::string upper = GetParam().name;
    for (char& letter : lower) {
        letter = static_cast<char>(std::tolower(letter));
    }
    for (char& letter : upper) {
        letter = static_cast<char>(std::toupper(letter));
    }

    for (const std::string& name : {lower, upper}) {
        clearLog();
        const OwnedProvider provider = create(name);

        ASSERT_TRUE(provider) << name;
        EXPECT_TRUE(GetParam().isOfItsClass(*provider));
        EXPECT_THAT(log(), ElementsAre("trace " + GetParam().startUpLine));
    }
}

TEST_P(EachProvider, IsNewAtEachCall) {
    const OwnedProvider first = create(GetParam().name);
    const OwnedProvider second = create(GetParam().name);

    EXPECT_NE(first.get(), second.get());
}

TEST_P(EachProvider, IsNotFoundByAPrefixOrALongerName) {
    const std::string& name = GetParam().name;
    EXPECT_FALSE(create(name.substr(0, name.size() - 1)));
    EXPECT_FALSE(create(name + "s"));
    EXPECT_FALSE(create(" " + name));
    EXPECT_THAT(log(), IsEmpty());
}

TEST_P(EachProvider, FindsTheEngineWhenItIsInitialized) {
    const OwnedProvider provider = create(GetParam().name);
    clearLog();
    CIMOMHandle handle;
    provider->initialize(handle);

    std::vector<std::string> entries = {"_getInstance()"};
    if (GetParam().initializeWritesALine) {
        entries.insert(entries.begin(), "trace " + GetParam().name + "::initialize");
    }
    EXPECT_EQ(log(), entries);
}

TEST_P(EachProvider, DoesNothingToTerminate) {
    const OwnedProvider provider = create(GetParam().name);
    CIMOMHandle handle;
    provider->initialize(handle);
    clearLog();
    provider->terminate();
    provider->terminate();

    EXPECT_THAT(log(), IsEmpty());
    EXPECT_TRUE(GetParam().isOfItsClass(*provider));
}

INSTANTIATE_TEST_SUITE_P(All, EachProvider, testing::ValuesIn(ROWS),
                         [](const auto& row) { return row.param.name; });

TEST_F(PegasusCreateProviderTest, ThePartOfANameThatIsAClassOfItsOwnIsNoProvider) {
    EXPECT_FALSE(create("StorageHardwareID"));
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(PegasusCreateProviderTest, TheEmptyNameIsNoProvider) {
    EXPECT_FALSE(create(""));
    EXPECT_THAT(log(), IsEmpty());
}

} // namespace
