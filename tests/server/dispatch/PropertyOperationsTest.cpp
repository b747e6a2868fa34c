#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace smisd {
namespace {

class PropertyOperationsTest : public DispatchTest {
protected:
    Lines get(const char* className, const char* id, const char* property) {
        return run(GetProperty{testNamespace, path(className, id), CIMName(property)});
    }

    Lines set(const char* className, const char* property, const CIMValue& value,
              const char* id = "s") {
        return run(SetProperty{testNamespace, path(className, id), CIMName(property), value});
    }

    // What the provider was called with last.
    std::string lastCall() {
        const std::string line = get("Test_Everything", "last", "Seen").at(0);
        return line.substr(std::string("return string ").size());
    }

    static CIMValue text(const char* value) { return CIMValue(String(value)); }
};

TEST_F(PropertyOperationsTest, GetPropertyAsksForAnInstanceWithOneProperty) {
    EXPECT_THAT(get("Test_Everything", "a", "SEEN"),
                ElementsAre("return string //test.host/root/test:Test_Everything.Id=\"a\" "
                            "-qualifiers -origin list=[SEEN]"));
}

TEST_F(PropertyOperationsTest, APropertyThatTheInstanceLacksIsNamed) {
    EXPECT_THAT(get("Test_Everything", "a", "number"), ElementsAre("error 12 number"));
    EXPECT_THAT(get("Test_Everything", "a", "nowhere"), ElementsAre("error 12 nowhere"));
}

TEST_F(PropertyOperationsTest, ErrorsOfTheProviderArrive) {
    EXPECT_THAT(get("Test_Everything", "cim:6:X", "Seen"), ElementsAre("error 6 X"));
    EXPECT_THAT(set("Test_Everything", "text", text("x"), "cim:2:X"), ElementsAre("error 2 X"));
}

TEST_F(PropertyOperationsTest, SetPropertyModifiesAnInstanceWithOneProperty) {
    EXPECT_THAT(set("Test_Everything", "TEXT", text("new")), IsEmpty());
    EXPECT_EQ(lastCall(), "modify //test.host/root/test:Test_Everything.Id=\"s\" -qualifiers "
                          "-origin list=[TEXT] //test.host/root/test:Test_Everything.Id=\"s\" "
                          "TEXT:string=new");
}

TEST_F(PropertyOperationsTest, TheNewValueGetsThePropertysType) {
    EXPECT_THAT(set("Test_Everything", "number", text("7")), IsEmpty());
    EXPECT_THAT(lastCall(), testing::EndsWith(" number:uint32=7"));
    Array<String> numbers;
    numbers.append(String("1"));
    numbers.append(String("2"));
    EXPECT_THAT(set("Test_Everything", "numbers", CIMValue(numbers)), IsEmpty());
    EXPECT_THAT(lastCall(), testing::EndsWith(" numbers:uint8=1 2 "));
}

TEST_F(PropertyOperationsTest, AValueThatIsNoneOfTheTypeIsRefused) {
    EXPECT_THAT(set("Test_Everything", "number", text("x")),
                ElementsAre("error 4 Malformed uint32 value"));
    EXPECT_THAT(set("Test_Everything", "number", CIMValue(Array<String>())),
                ElementsAre("error 13 "));
}

TEST_F(PropertyOperationsTest, AnUnknownPropertyIsRefused) {
    EXPECT_THAT(set("Test_Everything", "nowhere", text("x")), ElementsAre("error 12 "));
}

TEST_F(PropertyOperationsTest, ATypedValueReachesTheProviderUnchecked) {
    EXPECT_THAT(set("Test_Everything", "nowhere", CIMValue(Uint8(5))), IsEmpty());
    EXPECT_THAT(lastCall(), testing::EndsWith(" nowhere:uint8=5"));
}

TEST_F(PropertyOperationsTest, AClassWithoutProviderIsNotSupported) {
    EXPECT_THAT(get("Test_Unserved", "a", "Id"), ElementsAre("error 7 "));
    EXPECT_THAT(get("Test_Nowhere", "a", "Id"), ElementsAre("error 7 "));
    EXPECT_THAT(set("Test_Unserved", "Id", text("x")), ElementsAre("error 7 "));
}

TEST_F(PropertyOperationsTest, SetPropertyNamesAnUnknownClassOrNamespace) {
    EXPECT_THAT(set("Test_Nowhere", "Id", text("x")), ElementsAre("error 5 Test_Nowhere"));
    EXPECT_THAT(
        run(SetProperty{unknownNamespace, path("Test_Many", "a"), CIMName("Id"), text("x")}),
        ElementsAre("error 3 root/unknown"));
}

} // namespace
} // namespace smisd
