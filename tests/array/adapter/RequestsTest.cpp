#include <gmock/gmock.h>

#include "tests/array/adapter/EveryInstance.h"
#include "tests/support/Text.h"

// Property lists and qualifiers, the same for all builders of instances.

using namespace Pegasus;
using scripted::properties;

namespace array {
namespace {

std::string nameOf(const std::string& propertyLine) {
    return propertyLine.substr(0, propertyLine.find(':'));
}

std::vector<std::string> names(const CIMInstance& instance) {
    std::vector<std::string> result;
    for (const std::string& line : properties(instance)) {
        result.push_back(nameOf(line));
    }
    return result;
}

std::vector<std::string> keyNames(const CIMInstance& instance) {
    const Array<CIMKeyBinding> keys = instance.getPath().getKeyBindings();
    std::vector<std::string> result;
    for (Uint32 i = 0; i < keys.size(); ++i) {
        result.push_back(scripted::text(keys[i].getName()));
    }
    return result;
}

CIMInstance build(const InstanceRow& row, bool qualifiers = false,
                  const CIMPropertyList& list = CIMPropertyList()) {
    return row.build(qualifiers, list, sample().rich);
}

CIMPropertyList listOf(std::initializer_list<const char*> propertyNames) {
    Array<CIMName> list;
    for (const char* name : propertyNames) {
        list.append(CIMName(name));
    }
    return CIMPropertyList(list);
}

TEST(BuilderRequestsTest, KeysComeFirstWithTheValuesOfThePath) {
    for (const InstanceRow& row : everyInstance) {
        const CIMInstance instance = build(row);
        const Array<CIMKeyBinding> keys = instance.getPath().getKeyBindings();
        ASSERT_GT(keys.size(), 0u) << row.className;
        for (Uint32 i = 0; i < keys.size(); ++i) {
            const CIMConstProperty property = CIMConstInstance(instance).getProperty(i);
            EXPECT_TRUE(property.getName() == keys[i].getName()) << row.className;
            EXPECT_TRUE(CIMKeyBinding(keys[i].getName(), property.getValue()) == keys[i])
                << row.className;
        }
    }
}

TEST(BuilderRequestsTest, AnEmptyPropertyListLeavesTheKeys) {
    for (const InstanceRow& row : everyInstance) {
        if (!row.takesPropertyList) {
            continue;
        }
        const CIMInstance instance = build(row, false, listOf({}));
        EXPECT_EQ(names(instance), keyNames(instance)) << row.className;
    }
}

TEST(BuilderRequestsTest, APropertyListAddsWhatItNamesInAnySpelling) {
    for (const InstanceRow& row : everyInstance) {
        if (!row.takesPropertyList) {
            continue;
        }
        const CIMInstance instance = build(row, false, listOf({"NoSuchThing", "elementNAME"}));
        std::vector<std::string> expected = keyNames(instance);
        expected.push_back("ElementName");
        EXPECT_EQ(names(instance), expected) << row.className;
    }
}

TEST(BuilderRequestsTest, OptionalPropertiesAreFilteredToo) {
    const Sample::Ids& ids = sample().rich;
    EXPECT_THAT(
        names(iSCSILoginStatisticsInstance(false, listOf({"LastLoginFailureType"}), ids.target)),
        testing::ElementsAre("InstanceID", "LastLoginFailureType"));
    EXPECT_THAT(names(iSCSISessionFailuresInstance(
                    false, listOf({"LastSessionFailureRemoteNodeName"}), ids.target)),
                testing::ElementsAre("InstanceID", "LastSessionFailureRemoteNodeName"));
    EXPECT_THAT(names(iSCSINodeInstance(false, listOf({"EnabledState"}), ids.target)),
                testing::Contains("EnabledState"));
    EXPECT_THAT(names(iSCSINodeInstance(false, listOf({"EnabledState"}), ids.target)),
                testing::Not(testing::Contains("OperationalStatus")));
}

TEST(BuilderRequestsTest, KeysAloneCarryTheKeyQualifierIfAskedFor) {
    const std::string mark = " [Key=TRUE]";
    for (const InstanceRow& row : everyInstance) {
        const CIMInstance instance = build(row, true);
        const std::vector<std::string> lines = properties(instance);
        const size_t keyCount = keyNames(instance).size();
        for (size_t i = 0; i < lines.size(); ++i) {
            EXPECT_EQ(lines[i].ends_with(mark), i < keyCount) << row.className << ' ' << lines[i];
        }
    }
}

TEST(BuilderRequestsTest, WithoutQualifiersTheRestIsTheSame) {
    for (const InstanceRow& row : everyInstance) {
        std::vector<std::string> lines = properties(build(row, true));
        for (std::string& line : lines) {
            line = line.substr(0, line.find(" [Key=TRUE]"));
        }
        EXPECT_EQ(properties(build(row, false)), lines) << row.className;
    }
}

} // namespace
} // namespace array
