#include "engine/NameConstants.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <sys/syscall.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Pegasus;

namespace {

std::string linkTarget;
bool linkIsReadable = true;

} // namespace

// What the header's function reads instead of the machine's own link.
extern "C" ssize_t readlink(const char* path, char* buffer, size_t size) noexcept {
    if (path != std::string("/etc/localtime")) {
        return syscall(SYS_readlinkat, AT_FDCWD, path, buffer, size);
    }
    if (!linkIsReadable) {
        return -1;
    }
    const size_t length = std::min(size, linkTarget.size());
    linkTarget.copy(buffer, length);
    return static_cast<ssize_t>(length);
}

namespace {

// "CIMName CIM_iSCSISession", for each constant that the header defines, in its order.
std::vector<std::string> table() {
    std::ifstream header(ENGINE_DIR "/NameConstants.h");
    const std::string text{std::istreambuf_iterator<char>(header), {}};
    const std::regex constant(R"(static const (\w+)\s+\w+\("([^"]*)\"\);)");
    std::vector<std::string> entries;
    for (std::sregex_iterator each(text.begin(), text.end(), constant), end; each != end; ++each) {
        entries.push_back((*each)[1].str() + " " + (*each)[2].str());
    }
    return entries;
}

TEST(NameConstantsTest, TheTableHoldsTheseNamesInThisOrder) {
    EXPECT_THAT(
        table(),
        testing::ElementsAre(
            "CIMNamespaceName root/snia",

            "CIMName CIM_iSCSISession", "CIMName CIM_iSCSIConnection",
            "CIMName CIM_iSCSILoginStatistics", "CIMName CIM_iSCSISessionFailures",
            "CIMName CIM_iSCSISessionStatistics", "CIMName CIM_Realizes",
            "CIMName CIM_PackageInChassis", "CIMName CIM_ProductParentChild",
            "CIMName CIM_PackagedComponent", "CIMName CIM_RemoteServiceAccessPoint",
            "CIMName CIM_RealizesExtent", "CIMName CIM_ConcreteJob", "CIMName CIM_StorageSetting",
            "CIMName CIM_iSCSISessionSettings", "CIMName CIM_iSCSIConnectionSettings",
            "CIMName CIM_iSCSICapabilities", "CIMName CIM_iSCSIConfigurationCapabilities",
            "CIMName CIM_SystemSpecificCollection", "CIMName CIM_MemberOfCollection",

            "CIMName Ovrin_iSNSSettings", "CIMName Ovrin_TCPSettings", "CIMName Ovrin_IPSettings",
            "CIMName Ovrin_NetworkRoute", "CIMName Ovrin_SystemSettings",
            "CIMName Ovrin_FirmwareImagesInfo", "CIMName Ovrin_MACStatistics",
            "CIMName Ovrin_SystemManagementPortStatistics", "CIMName Ovrin_SystemiSCSIStatistics",
            "CIMName Ovrin_SystemTCPStatistics", "CIMName Ovrin_Event",

            "String CIM_StorageVolume", "CIMName CIM_StorageVolume",

            "CIMName CreationClassName", "CIMName SystemName", "CIMName SystemCreationClassName",
            "CIMName DeviceID", "CIMName Name", "CIMName Dedicated", "CIMName OperationalStatus",
            "CIMName ElementName", "CIMName NameFormat",

            "String GroupComponent", "String PartComponent", "String Dependent",
            "String Antecedent", "String ConformantStandard", "String ManagedElement",
            "String Capabilities", "String SettingData", "String Stats", "String AvailableSAP"));
}

class LocalTimeZoneNameTest : public testing::Test {
protected:
    LocalTimeZoneNameTest() { linkIsReadable = true; }

    static constexpr const char* directory = "/usr/share/zoneinfo/";
};

TEST_F(LocalTimeZoneNameTest, IsThePartBehindTheDirectory) {
    linkTarget = "/usr/share/zoneinfo/Europe/Berlin";
    EXPECT_STREQ(localTimeZoneName(), "Europe/Berlin");
}

TEST_F(LocalTimeZoneNameTest, IsThePartBehind20CharactersWhateverTheyAre) {
    linkTarget = "../somewhere/else/--Zone";
    EXPECT_STREQ(localTimeZoneName(), "Zone");
}

TEST_F(LocalTimeZoneNameTest, HasFewerThan33Characters) {
    linkTarget = directory + std::string(32, 'z');
    EXPECT_EQ(localTimeZoneName(), std::string(32, 'z'));
    linkTarget += 'z';
    EXPECT_EQ(localTimeZoneName(), nullptr);
    linkTarget = directory + std::string(5000, 'z');
    EXPECT_EQ(localTimeZoneName(), nullptr);
}

TEST_F(LocalTimeZoneNameTest, IsEmptyOrNullBehindAShortLink) {
    linkTarget = directory;
    EXPECT_STREQ(localTimeZoneName(), "");
    linkTarget = "UTC";
    EXPECT_EQ(localTimeZoneName(), nullptr);
}

TEST_F(LocalTimeZoneNameTest, IsNullIfTheLinkCannotBeRead) {
    linkTarget = "/usr/share/zoneinfo/Europe/Berlin";
    linkIsReadable = false;
    EXPECT_EQ(localTimeZoneName(), nullptr);
}

} // namespace
