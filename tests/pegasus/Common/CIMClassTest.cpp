#include <Pegasus/Common/CIMClass.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static CIMQualifier qualifier(const char* name, Boolean value = true) {
    return CIMQualifier(CIMName(name), CIMValue(value));
}

static CIMProperty property(const char* name) {
    return CIMProperty(CIMName(name), CIMValue(CIMTYPE_UINT8, false));
}

static CIMMethod method(const char* name) {
    return CIMMethod(CIMName(name), CIMTYPE_UINT32);
}

TEST(CIMClass, HasItsNameSuperclassAndPath) {
    CIMClass c(CIMName("C"), CIMName("Base"));
    EXPECT_EQ(c.getClassName().getString(), "C");
    EXPECT_EQ(c.getSuperClassName().getString(), "Base");
    EXPECT_EQ(c.getPath().toString(), "C");
    c.setSuperClassName(CIMName("Other"));
    EXPECT_EQ(c.getSuperClassName().getString(), "Other");
    EXPECT_TRUE(CIMClass(CIMName("C")).getSuperClassName().isNull());
}

TEST(CIMClass, ANullNameThrows) {
    EXPECT_THROW(CIMClass{CIMName()}, UninitializedObjectException);
}

TEST(CIMClass, SetPathWantsTheSameClass) {
    CIMClass c(CIMName("C"));
    c.setPath(CIMObjectPath("root:c"));
    EXPECT_EQ(c.getPath().toString(), "root:c");
    EXPECT_THROW(c.setPath(CIMObjectPath("D")), TypeMismatchException);
}

TEST(CIMClass, IsAnAssociationOrAbstractByATrueQualifier) {
    CIMClass c(CIMName("C"));
    EXPECT_FALSE(c.isAssociation());
    EXPECT_FALSE(c.isAbstract());
    c.addQualifier(qualifier("association")).addQualifier(qualifier("Abstract"));
    EXPECT_TRUE(c.isAssociation());
    EXPECT_TRUE(c.isAbstract());
    CIMClass d(CIMName("D"));
    d.addQualifier(qualifier("Association", false));
    EXPECT_FALSE(d.isAssociation());
}

TEST(CIMClass, PropertiesAreAddedFoundAndRemoved) {
    CIMClass c(CIMName("C"));
    c.addProperty(property("a")).addProperty(property("b"));
    EXPECT_EQ(c.findProperty(CIMName("B")), 1u);
    EXPECT_EQ(messageOf<AlreadyExistsException>([&] { c.addProperty(property("A")); }),
              "already exists: property \"A\"");
    c.removeProperty(0);
    const CIMClass& constant = c;
    EXPECT_EQ(constant.getProperty(0).getName().getString(), "b");
    EXPECT_EQ(c.getPropertyCount(), 1u);
    EXPECT_THROW(c.getProperty(1), IndexOutOfBoundsException);
}

TEST(CIMClass, MethodsAreAddedFoundAndRemoved) {
    CIMClass c(CIMName("C"));
    c.addMethod(method("a")).addMethod(method("b"));
    EXPECT_EQ(c.findMethod(CIMName("B")), 1u);
    EXPECT_EQ(c.findMethod(CIMName("c")), PEG_NOT_FOUND);
    EXPECT_EQ(messageOf<AlreadyExistsException>([&] { c.addMethod(method("A")); }),
              "already exists: method \"A\"");
    c.removeMethod(0);
    const CIMClass& constant = c;
    EXPECT_EQ(constant.getMethod(0).getName().getString(), "b");
    EXPECT_EQ(c.getMethodCount(), 1u);
    EXPECT_THROW(c.getMethod(1), IndexOutOfBoundsException);
    EXPECT_THROW(c.removeMethod(1), IndexOutOfBoundsException);
}

TEST(CIMClass, KeysAreThePropertiesWithTheKeyQualifier) {
    CIMClass c(CIMName("C"));
    EXPECT_FALSE(c.hasKeys());
    c.addProperty(property("a").addQualifier(qualifier("Key")));
    c.addProperty(property("b"));
    c.addProperty(property("c").addQualifier(qualifier("KEY")));
    Array<CIMName> names;
    c.getKeyNames(names);
    ASSERT_EQ(names.size(), 2u);
    EXPECT_EQ(names[0].getString(), "a");
    EXPECT_EQ(names[1].getString(), "c");
    EXPECT_TRUE(c.hasKeys());
    EXPECT_TRUE(CIMConstClass(c).hasKeys());
}

TEST(CIMClass, CopiesShareAndACloneDoesNot) {
    CIMClass c(CIMName("C"));
    c.addMethod(method("m"));
    CIMClass alias(c);
    const CIMClass clone = c.clone();
    EXPECT_TRUE(c.identical(clone));
    alias.addProperty(property("p"));
    alias.getMethod(0).setType(CIMTYPE_STRING);
    EXPECT_EQ(c.getPropertyCount(), 1u);
    EXPECT_EQ(c.getMethod(0).getType(), CIMTYPE_STRING);
    EXPECT_EQ(clone.getPropertyCount(), 0u);
    EXPECT_EQ(clone.getMethod(0).getType(), CIMTYPE_UINT32);
    EXPECT_FALSE(c.identical(clone));
}

TEST(CIMClass, IdenticalComparesSuperclassAndMethods) {
    CIMClass c(CIMName("C"), CIMName("Base"));
    CIMClass other = c.clone();
    other.setSuperClassName(CIMName("Other"));
    EXPECT_FALSE(c.identical(other));
    other = c.clone();
    other.addMethod(method("m"));
    EXPECT_FALSE(c.identical(other));
}

TEST(CIMClass, AnUninitializedOneThrows) {
    const CIMClass c;
    EXPECT_TRUE(c.isUninitialized());
    EXPECT_THROW(c.getClassName(), UninitializedObjectException);
    EXPECT_THROW(c.getMethodCount(), UninitializedObjectException);
    EXPECT_THROW(CIMConstClass(c).getSuperClassName(), UninitializedObjectException);
}
