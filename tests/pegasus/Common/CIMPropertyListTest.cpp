#include <Pegasus/Common/CIMPropertyList.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static Array<CIMName> names(std::initializer_list<const char*> list) {
    Array<CIMName> array;
    for (const char* name : list) {
        array.append(CIMName(name));
    }
    return array;
}

TEST(CIMPropertyList, DefaultIsNull) {
    const CIMPropertyList list;
    EXPECT_TRUE(list.isNull());
    EXPECT_EQ(list.size(), 0u);
    EXPECT_THROW(list[0], IndexOutOfBoundsException);
}

TEST(CIMPropertyList, AnEmptyListIsNotNull) {
    const CIMPropertyList list{Array<CIMName>()};
    EXPECT_FALSE(list.isNull());
    EXPECT_EQ(list.size(), 0u);
}

TEST(CIMPropertyList, KeepsOrderSpellingAndDuplicates) {
    const CIMPropertyList list(names({"b", "A", "a"}));
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0].getString(), "b");
    EXPECT_EQ(list[1].getString(), "A");
    EXPECT_EQ(list.getPropertyNameArray().size(), 3u);
    EXPECT_THROW(list[3], IndexOutOfBoundsException);
}

TEST(CIMPropertyList, ANullNameThrows) {
    EXPECT_THROW(CIMPropertyList(Array<CIMName>(1)), UninitializedObjectException);
    CIMPropertyList list;
    EXPECT_THROW(list.set(Array<CIMName>(1)), UninitializedObjectException);
}

TEST(CIMPropertyList, SetReplacesAndClearMakesNull) {
    CIMPropertyList list(names({"a", "b"}));
    list.set(names({"c"}));
    EXPECT_EQ(list.size(), 1u);
    list.clear();
    EXPECT_TRUE(list.isNull());
    EXPECT_EQ(list.size(), 0u);
}

TEST(CIMPropertyList, CopiesAreIndependent) {
    CIMPropertyList list(names({"a"}));
    CIMPropertyList copy(list), assigned;
    assigned = list;
    list.set(names({"b", "c"}));
    EXPECT_EQ(copy.size(), 1u);
    EXPECT_EQ(assigned[0].getString(), "a");
}
