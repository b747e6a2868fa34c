#include <gtest/gtest.h>

#include "server/schema/MofReader.h"
#include "tests/array/adapter/EveryInstance.h"
#include "tests/support/Text.h"

// What the builders write, against the class declarations.

using namespace Pegasus;
using scripted::text;

namespace array {
namespace {

const smisd::Schema& schema() {
    static smisd::Repository repository;
    if (repository.schemas().empty()) {
        smisd::readMofDirectory(MOF_DIRECTORY, repository);
    }
    return *repository.find(CIMNamespaceName(smisd::elementNamespace));
}

// Whether the property's value map, if it has one, has this value: each of an array's.
bool isMapped(const CIMConstProperty& declared, const CIMValue& value) {
    const Uint32 at = declared.findQualifier(CIMName("ValueMap"));
    if (at == PEG_NOT_FOUND) {
        return true;
    }
    Array<String> map;
    declared.getQualifier(at).getValue().get(map);
    const std::string values = " " + text(value.toString()) + " ";
    for (Uint32 i = 0; i < map.size(); ++i) {
        if (values.find(" " + text(map[i]) + " ") != std::string::npos) {
            return true;
        }
    }
    return false;
}

// Each builder with the rich sample and with the plain one.
class BuilderSchemaTest : public testing::TestWithParam<InstanceRow> {
protected:
    void SetUp() override {
        cimClass = schema().findClass(CIMName(GetParam().className));
        ASSERT_TRUE(cimClass);
        for (const Sample::Ids& ids : {sample().rich, sample().plain}) {
            instances.push_back(GetParam().build(false, CIMPropertyList(), ids));
        }
    }

    const CIMClass* cimClass = nullptr;
    std::vector<CIMConstInstance> instances;
};

TEST_P(BuilderSchemaTest, PathsHaveTheKeysOfTheClass) {
    Array<CIMName> declared;
    cimClass->getKeyNames(declared);
    for (const CIMConstInstance& instance : instances) {
        const Array<CIMKeyBinding> keys = instance.getPath().getKeyBindings();
        EXPECT_EQ(keys.size(), declared.size());
        for (Uint32 i = 0; i < declared.size(); ++i) {
            Uint32 found = 0;
            for (Uint32 k = 0; k < keys.size(); ++k) {
                found += keys[k].getName() == declared[i];
            }
            EXPECT_EQ(found, 1u) << text(declared[i]);
        }
    }
}

TEST_P(BuilderSchemaTest, PropertiesAreDeclaredWithTheirNameAndType) {
    for (const CIMConstInstance& instance : instances) {
        for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
            const CIMConstProperty property = instance.getProperty(i);
            const std::string name = text(property.getName());
            const Uint32 at = cimClass->findProperty(property.getName());
            ASSERT_NE(at, PEG_NOT_FOUND) << name;
            const CIMConstProperty declared = CIMConstClass(*cimClass).getProperty(at);
            EXPECT_EQ(name, text(declared.getName()));
            EXPECT_EQ(property.getType(), declared.getType()) << name;
            EXPECT_EQ(property.isArray(), declared.isArray()) << name;
            EXPECT_FALSE(property.getValue().isNull()) << name;
            EXPECT_TRUE(isMapped(declared, property.getValue())) << name;
        }
    }
}

TEST_P(BuilderSchemaTest, ReferencesAreOfTheDeclaredClassOrOneBelow) {
    for (const CIMConstInstance& instance : instances) {
        for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
            const CIMConstProperty property = instance.getProperty(i);
            if (property.getType() != CIMTYPE_REFERENCE) {
                continue;
            }
            const CIMConstProperty declared =
                CIMConstClass(*cimClass).getProperty(cimClass->findProperty(property.getName()));
            EXPECT_TRUE(
                schema().isA(property.getReferenceClassName(), declared.getReferenceClassName()))
                << text(property.getName());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Builders, BuilderSchemaTest, testing::ValuesIn(everyInstance),
                         [](const testing::TestParamInfo<InstanceRow>& row) {
                             return std::string(row.param.className) + "_" +
                                    std::to_string(row.index);
                         });

} // namespace
} // namespace array
