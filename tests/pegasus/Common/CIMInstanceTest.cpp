#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static CIMProperty property(const char* name, Uint8 value = 1) {
    return CIMProperty(CIMName(name), CIMValue(value));
}

static CIMQualifier qualifier(const char* name) {
    return CIMQualifier(CIMName(name), CIMValue(Boolean(true)));
}

TEST(CIMInstance, ANewOneHasAPathOfItsClassAlone) {
    const CIMInstance i(CIMName("C"));
    EXPECT_EQ(i.getClassName().getString(), "C");
    EXPECT_EQ(i.getPath().toString(), "C");
    EXPECT_EQ(i.getPropertyCount(), 0u);
    EXPECT_EQ(i.getQualifierCount(), 0u);
}

TEST(CIMInstance, ANullClassThrows) {
    EXPECT_THROW(CIMInstance{CIMName()}, UninitializedObjectException);
}

TEST(CIMInstance, SetPathWantsTheSameClassAndTakesItsSpelling) {
    CIMInstance i(CIMName("Class"));
    i.setPath(CIMObjectPath("//h/root:CLASS.k=1"));
    EXPECT_EQ(i.getClassName().getString(), "CLASS");
    EXPECT_EQ(i.getPath().toString(), "//h/root:CLASS.k=1");
    EXPECT_THROW(i.setPath(CIMObjectPath("Other.k=1")), TypeMismatchException);
    EXPECT_THROW(i.setPath(CIMObjectPath()), UninitializedObjectException);
    EXPECT_EQ(i.getPath().toString(), "//h/root:CLASS.k=1");
}

TEST(CIMInstance, PropertiesAreAddedInAChainFoundAndRemoved) {
    CIMInstance i(CIMName("C"));
    i.addProperty(property("a")).addProperty(property("b"));
    EXPECT_EQ(i.getPropertyCount(), 2u);
    EXPECT_EQ(i.findProperty(CIMName("B")), 1u);
    EXPECT_EQ(i.findProperty(CIMName("c")), PEG_NOT_FOUND);
    EXPECT_EQ(i.getProperty(1).getName().getString(), "b");
    i.removeProperty(0);
    const CIMInstance& constant = i;
    EXPECT_EQ(constant.getProperty(0).getName().getString(), "b");
    EXPECT_EQ(i.getPropertyCount(), 1u);
}

TEST(CIMInstance, APropertyTwiceIsAnErrorThatNamesIt) {
    CIMInstance i(CIMName("C"));
    i.addProperty(property("name"));
    EXPECT_EQ(messageOf<AlreadyExistsException>([&] { i.addProperty(property("NAME")); }),
              "already exists: property \"NAME\"");
    EXPECT_EQ(i.getPropertyCount(), 1u);
}

TEST(CIMInstance, PropertiesAreFoundHoweverManyThereAre) {
    CIMInstance i(CIMName("C"));
    for (Uint32 number = 0; number < 300; ++number) {
        i.addProperty(property(("p" + std::to_string(number)).c_str()));
    }
    EXPECT_EQ(i.findProperty(CIMName("p0")), 0u);
    EXPECT_EQ(i.findProperty(CIMName("P299")), 299u);
    EXPECT_EQ(i.findProperty(CIMName("p300")), PEG_NOT_FOUND);
    EXPECT_THROW(i.addProperty(property("P150")), AlreadyExistsException);
    EXPECT_EQ(i.clone().findProperty(CIMName("P150")), 150u);
    i.removeProperty(150);
    EXPECT_EQ(i.findProperty(CIMName("p150")), PEG_NOT_FOUND);
    EXPECT_EQ(i.findProperty(CIMName("p151")), 150u);
    i.addProperty(property("P150"));
    EXPECT_EQ(i.findProperty(CIMName("p150")), 299u);
}

TEST(CIMInstance, AnUninitializedPropertyThrows) {
    EXPECT_THROW(CIMInstance(CIMName("C")).addProperty(CIMProperty()),
                 UninitializedObjectException);
}

TEST(CIMInstance, APropertyIndexThatIsNotFoundThrows) {
    CIMInstance i(CIMName("C"));
    const CIMInstance& constant = i;
    EXPECT_THROW(i.getProperty(i.findProperty(CIMName("missing"))), IndexOutOfBoundsException);
    EXPECT_THROW(constant.getProperty(0), IndexOutOfBoundsException);
    EXPECT_THROW(i.removeProperty(0), IndexOutOfBoundsException);
}

TEST(CIMInstance, QualifiersAreAddedFoundAndRemoved) {
    CIMInstance i(CIMName("C"));
    i.addQualifier(qualifier("A")).addQualifier(qualifier("B"));
    EXPECT_EQ(i.findQualifier(CIMName("b")), 1u);
    EXPECT_THROW(i.addQualifier(qualifier("a")), AlreadyExistsException);
    i.removeQualifier(0);
    const CIMInstance& constant = i;
    EXPECT_EQ(constant.getQualifier(0).getName().getString(), "B");
    EXPECT_EQ(i.getQualifier(0).getName().getString(), "B");
    EXPECT_THROW(i.getQualifier(1), IndexOutOfBoundsException);
    EXPECT_EQ(i.getQualifierCount(), 1u);
}

TEST(CIMInstance, AnAddedPropertyIsTheSameOne) {
    CIMProperty p = property("p");
    CIMInstance i(CIMName("C")), j(CIMName("C"));
    i.addProperty(p);
    j.addProperty(p);
    p.setValue(CIMValue(Uint8(2)));
    EXPECT_EQ(i.getProperty(0).getValue(), CIMValue(Uint8(2)));
    i.getProperty(0).setValue(CIMValue(Uint8(3)));
    EXPECT_EQ(j.getProperty(0).getValue(), CIMValue(Uint8(3)));
}

TEST(CIMInstance, CopiesShareAndACloneDoesNot) {
    CIMInstance i(CIMName("C"));
    i.addProperty(property("p"));
    CIMInstance alias(i);
    const CIMConstInstance reader(i);
    CIMInstance clone = i.clone();
    alias.getProperty(0).setValue(CIMValue(Uint8(2)));
    alias.addProperty(property("q"));
    alias.setPath(CIMObjectPath("C.k=1"));
    EXPECT_EQ(i.getPropertyCount(), 2u);
    EXPECT_EQ(reader.getPropertyCount(), 2u);
    EXPECT_EQ(reader.getProperty(0).getValue(), CIMValue(Uint8(2)));
    EXPECT_EQ(i.getPath().toString(), "C.k=1");
    EXPECT_EQ(clone.getPropertyCount(), 1u);
    EXPECT_EQ(clone.getProperty(0).getValue(), CIMValue(Uint8(1)));
    EXPECT_EQ(clone.getPath().toString(), "C");
}

TEST(CIMInstance, IdenticalComparesPathQualifiersAndPropertiesInOrder) {
    CIMInstance i(CIMName("C"));
    i.addProperty(property("a")).addProperty(property("b")).addQualifier(qualifier("Q"));
    EXPECT_TRUE(i.identical(i.clone()));
    CIMInstance j(CIMName("C"));
    j.addProperty(property("b")).addProperty(property("a")).addQualifier(qualifier("Q"));
    EXPECT_FALSE(i.identical(j));
    CIMInstance k = i.clone();
    k.setPath(CIMObjectPath("C.k=1"));
    EXPECT_FALSE(i.identical(k));
    k = i.clone();
    k.removeQualifier(0);
    EXPECT_FALSE(i.identical(k));
}

TEST(CIMInstance, AnUninitializedOneThrows) {
    CIMInstance i;
    EXPECT_TRUE(i.isUninitialized());
    EXPECT_THROW(i.getClassName(), UninitializedObjectException);
    EXPECT_THROW(i.getPath(), UninitializedObjectException);
    EXPECT_THROW(i.addProperty(property("p")), UninitializedObjectException);
    EXPECT_THROW(i.getPropertyCount(), UninitializedObjectException);
    EXPECT_THROW(CIMConstInstance(i).getPath(), UninitializedObjectException);
    EXPECT_FALSE(CIMInstance(CIMName("C")).isUninitialized());
}

// A class C with the keys Id, a string, and Number.
static CIMClass keyedClass() {
    CIMClass c(CIMName("C"));
    c.addProperty(
        CIMProperty(CIMName("Id"), CIMValue(CIMTYPE_STRING, false)).addQualifier(qualifier("Key")));
    c.addProperty(property("Other"));
    c.addProperty(CIMProperty(CIMName("Number"), CIMValue(CIMTYPE_UINT8, false))
                      .addQualifier(qualifier("key")));
    return c;
}

TEST(CIMInstance, BuildPathTakesTheKeysOfTheClassWithoutHostAndNamespace) {
    CIMInstance i(CIMName("C"));
    i.setPath(CIMObjectPath("//h/root:C.x=9"));
    i.addProperty(CIMProperty(CIMName("number"), CIMValue(Uint8(7))));
    i.addProperty(CIMProperty(CIMName("ID"), CIMValue(String("v\"w"))));
    EXPECT_TRUE(i.buildPath(CIMConstClass(keyedClass())) ==
                CIMObjectPath("C.Id=\"v\\\"w\",Number=7"));
    EXPECT_EQ(i.getPath().toString(), "//h/root:C.x=9");
}

TEST(CIMInstance, BuildPathOfANullKeyHasAnEmptyText) {
    CIMInstance i(CIMName("C"));
    i.addProperty(CIMProperty(CIMName("Number"), CIMValue(CIMTYPE_UINT8, false)));
    i.addProperty(CIMProperty(CIMName("Id"), CIMValue(String("v"))));
    EXPECT_EQ(i.buildPath(CIMConstClass(keyedClass())).toString(), "C.Id=\"v\",Number=");
}

TEST(CIMInstance, BuildPathWithoutAKeyPropertyIsAnErrorThatNamesIt) {
    const CIMInstance i(CIMName("C"));
    EXPECT_EQ(messageOf([&] { i.buildPath(CIMConstClass(keyedClass())); }), "no such property: Id");
}
