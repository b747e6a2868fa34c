#include <string>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static Array<Uint32> numbers(std::initializer_list<Uint32> list) {
    return Array<Uint32>(list.begin(), static_cast<Uint32>(list.size()));
}

static std::string text(const Array<Uint32>& array) {
    std::string all;
    for (Uint32 i = 0; i < array.size(); ++i) {
        all += std::to_string(array[i]) + " ";
    }
    return all;
}

TEST(Array, DefaultIsEmptyWithDataThatIsNotNull) {
    const Array<String> a;
    EXPECT_EQ(a.size(), 0u);
    EXPECT_NE(a.getData(), nullptr);
}

TEST(Array, SizeAloneGivesDefaultElements) {
    const Array<Uint32> a(3);
    EXPECT_EQ(text(a), "0 0 0 ");
    EXPECT_EQ(Array<String>(2)[1], "");
}

TEST(Array, SizeAndElementRepeatIt) {
    EXPECT_EQ(text(Array<Uint32>(3, 7)), "7 7 7 ");
}

TEST(Array, AppendAddsAtTheEnd) {
    Array<Uint32> a = numbers({1});
    const Uint32 more[] = {3, 4};
    a.append(2);
    a.append(more, 2);
    a.appendArray(numbers({5, 6}));
    EXPECT_EQ(text(a), "1 2 3 4 5 6 ");
}

TEST(Array, PrependAddsAtTheStart) {
    Array<Uint32> a = numbers({4});
    const Uint32 more[] = {1, 2};
    a.prepend(3);
    a.prepend(more, 2);
    EXPECT_EQ(text(a), "1 2 3 4 ");
}

TEST(Array, InsertPutsElementsBeforeTheIndex) {
    Array<Uint32> a = numbers({1, 5});
    const Uint32 more[] = {2, 3};
    a.insert(1, 4);
    a.insert(1, more, 2);
    a.insert(5, 6);
    EXPECT_EQ(text(a), "1 2 3 4 5 6 ");
    EXPECT_THROW(a.insert(7, 0), IndexOutOfBoundsException);
    EXPECT_EQ(text(a), "1 2 3 4 5 6 ");
}

TEST(Array, GrowAppendsCopies) {
    Array<Uint32> a = numbers({1});
    a.grow(3, 9);
    EXPECT_EQ(text(a), "1 9 9 9 ");
}

TEST(Array, RemoveTakesOneOrARange) {
    Array<Uint32> a = numbers({1, 2, 3, 4, 5});
    a.remove(1);
    EXPECT_EQ(text(a), "1 3 4 5 ");
    a.remove(1, 2);
    EXPECT_EQ(text(a), "1 5 ");
    a.remove(0, 2);
    EXPECT_EQ(a.size(), 0u);
}

TEST(Array, RemoveFarBeyondTheEndThrows) {
    Array<Uint32> a = numbers({1, 2, 3});
    EXPECT_THROW(a.remove(5), IndexOutOfBoundsException);
    EXPECT_EQ(text(a), "1 2 3 ");
}

TEST(Array, IndexAtOrBeyondTheEndThrows) {
    Array<Uint32> a = numbers({1});
    const Array<Uint32>& constant = a;
    EXPECT_EQ(messageOf<IndexOutOfBoundsException>([&] { a[1] = 0; }), "index out of bounds");
    EXPECT_THROW(constant[1], IndexOutOfBoundsException);
    EXPECT_THROW(Array<String>()[0], IndexOutOfBoundsException);
}

TEST(Array, CopiesAreIndependent) {
    Array<Uint32> a = numbers({1, 2});
    Array<Uint32> b(a);
    b[0] = 9;
    b.append(3);
    EXPECT_EQ(text(a), "1 2 ");
    EXPECT_EQ(text(b), "9 2 3 ");
    Array<Uint32> c;
    c = b;
    b.remove(0);
    b.clear();
    EXPECT_EQ(text(c), "9 2 3 ");
}

TEST(Array, AppendOfItsOwnElementIsSafe) {
    Array<String> a;
    a.append(String("first"));
    for (int i = 0; i < 40; ++i) {
        a.append(a[0]);
    }
    EXPECT_EQ(a.size(), 41u);
    EXPECT_EQ(a[40], "first");
    a.prepend(a[40]);
    EXPECT_EQ(a[0], "first");
    a.grow(1000, a[0]);
    EXPECT_EQ(a[1041], "first");
}

TEST(Array, AppendArrayOfItselfDoubles) {
    Array<Uint32> a = numbers({1, 2});
    a.appendArray(a);
    EXPECT_EQ(text(a), "1 2 1 2 ");
}

TEST(Array, ClearKeepsTheCapacity) {
    Array<String> a(5, String("x"));
    const Uint32 capacity = a.getCapacity();
    EXPECT_GE(capacity, 5u);
    a.clear();
    EXPECT_EQ(a.size(), 0u);
    EXPECT_GE(a.getCapacity(), capacity);
}

TEST(Array, ClearLeavesCopiesAlone) {
    Array<String> a(5, String("x"));
    const Array<String> copy(a);
    a.clear();
    EXPECT_EQ(a.size(), 0u);
    EXPECT_EQ(copy.size(), 5u);
}

TEST(Array, ReserveCapacityKeepsTheElements) {
    Array<Uint32> a = numbers({1, 2});
    a.reserveCapacity(100);
    EXPECT_GE(a.getCapacity(), 100u);
    EXPECT_EQ(text(a), "1 2 ");
}

TEST(Array, SwapExchanges) {
    Array<Uint32> a = numbers({1}), b = numbers({2, 3});
    a.swap(b);
    EXPECT_EQ(text(a), "2 3 ");
    EXPECT_EQ(text(b), "1 ");
}

TEST(Array, ElementsThatAreHandlesStaySharedInACopy) {
    Array<CIMInstance> a;
    a.append(CIMInstance(CIMName("C")));
    Array<CIMInstance> b(a);
    b[0].addProperty(CIMProperty(CIMName("p"), CIMValue(Uint8(1))));
    EXPECT_EQ(a[0].getPropertyCount(), 1u);
}

// The element types that the library knows.
template<class T>
class ArrayOf : public testing::Test {};

using ElementTypes =
    testing::Types<Boolean, Uint8, Sint8, Uint16, Sint16, Uint32, Sint32, Uint64, Sint64, Real32,
                   Real64, Char16, String, CIMName, CIMNamespaceName, CIMKeyBinding, CIMObjectPath,
                   CIMDateTime, CIMObject, CIMInstance, CIMProperty, CIMQualifier, CIMValue>;
TYPED_TEST_SUITE(ArrayOf, ElementTypes);

TYPED_TEST(ArrayOf, GrowsCopiesAndShrinks) {
    Array<TypeParam> a;
    for (int i = 0; i < 20; ++i) {
        a.append(TypeParam());
    }
    Array<TypeParam> b(a);
    b.remove(0, 19);
    EXPECT_EQ(a.size(), 20u);
    EXPECT_EQ(b.size(), 1u);
}
