#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using testing::HasSubstr;

static CIMProperty property(const char* name) {
    return CIMProperty(CIMName(name), CIMValue(Uint8(1)));
}

TEST(CIMObject, SharesWithTheInstanceItWasMadeFromPathIncluded) {
    CIMInstance i(CIMName("C"));
    CIMObject o(i);
    o.addProperty(property("p"));
    o.setPath(CIMObjectPath("C.k=1"));
    EXPECT_EQ(i.getPropertyCount(), 1u);
    EXPECT_EQ(i.getPath().toString(), "C.k=1");
    i.getProperty(0).setValue(CIMValue(Uint8(2)));
    EXPECT_EQ(o.getProperty(0).getValue(), CIMValue(Uint8(2)));
}

TEST(CIMObject, AnInstanceConvertsByItself) {
    const auto className = [](const CIMObject& o) { return o.getClassName(); };
    EXPECT_EQ(className(CIMInstance(CIMName("C"))).getString(), "C");
}

TEST(CIMObject, KnowsWhatItIs) {
    const CIMObject instance{CIMInstance(CIMName("C"))}, cimClass{CIMClass(CIMName("C"))};
    EXPECT_TRUE(instance.isInstance());
    EXPECT_FALSE(instance.isClass());
    EXPECT_TRUE(cimClass.isClass());
    EXPECT_FALSE(cimClass.isInstance());
    EXPECT_FALSE(CIMObject().isInstance());
    EXPECT_FALSE(CIMObject().isClass());
}

TEST(CIMObject, GoesBackToWhatItIsAndNothingElse) {
    const CIMObject instance{CIMInstance(CIMName("C"))}, cimClass{CIMClass(CIMName("K"))};
    EXPECT_EQ(CIMInstance(instance).getClassName().getString(), "C");
    EXPECT_EQ(CIMClass(cimClass).getClassName().getString(), "K");
    EXPECT_EQ(messageOf<DynamicCastFailedException>([&] { CIMInstance i(cimClass); }),
              "dynamic cast failed");
    EXPECT_THROW(CIMClass{instance}, DynamicCastFailedException);
    EXPECT_THROW(CIMInstance{CIMObject()}, DynamicCastFailedException);
}

TEST(CIMObject, SetPathWantsTheSameClass) {
    CIMObject o{CIMInstance(CIMName("C"))};
    EXPECT_THROW(o.setPath(CIMObjectPath("D.k=1")), TypeMismatchException);
    EXPECT_THROW(o.setPath(CIMObjectPath()), UninitializedObjectException);
}

TEST(CIMObject, PropertiesAndQualifiersAreAddedFoundAndRemoved) {
    CIMObject o{CIMInstance(CIMName("C"))};
    o.addProperty(property("a")).addProperty(property("b"));
    o.addQualifier(CIMQualifier(CIMName("Q"), CIMValue(Boolean(true))));
    EXPECT_EQ(o.findProperty(CIMName("B")), 1u);
    EXPECT_EQ(o.findQualifier(CIMName("q")), 0u);
    EXPECT_THROW(o.addProperty(property("A")), AlreadyExistsException);
    o.removeProperty(0);
    o.removeQualifier(0);
    EXPECT_EQ(o.getPropertyCount(), 1u);
    EXPECT_EQ(o.getQualifierCount(), 0u);
    EXPECT_THROW(o.getProperty(1), IndexOutOfBoundsException);
}

TEST(CIMObject, ACloneIsIdenticalAndIndependent) {
    CIMObject o{CIMInstance(CIMName("C"))};
    o.addProperty(property("p"));
    CIMObject clone = o.clone();
    EXPECT_TRUE(o.identical(clone));
    EXPECT_TRUE(CIMConstObject(o).identical(clone));
    clone.addProperty(property("q"));
    EXPECT_FALSE(o.identical(clone));
    EXPECT_EQ(o.getPropertyCount(), 1u);
}

TEST(CIMObject, TextIsXml) {
    CIMInstance i(CIMName("C"));
    i.addProperty(CIMProperty(CIMName("p"), CIMValue(String("a<b"))));
    const std::string xml = utf8(CIMObject(i).toString());
    EXPECT_THAT(xml, HasSubstr("<INSTANCE CLASSNAME=\"C\""));
    EXPECT_THAT(xml, HasSubstr("<VALUE>a&lt;b</VALUE>"));
    EXPECT_THAT(xml, HasSubstr("</INSTANCE>"));
    EXPECT_THAT(utf8(CIMObject(CIMClass(CIMName("K"))).toString()), HasSubstr("<CLASS NAME=\"K\""));
}

TEST(CIMObject, AnUninitializedOneThrows) {
    const CIMObject o;
    EXPECT_TRUE(o.isUninitialized());
    EXPECT_THROW(o.getPath(), UninitializedObjectException);
    EXPECT_THROW(o.getPropertyCount(), UninitializedObjectException);
    EXPECT_THROW(CIMConstObject(o).getClassName(), UninitializedObjectException);
    EXPECT_TRUE(CIMObject(CIMInstance()).isUninitialized());
}
