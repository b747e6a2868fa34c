#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMProperty.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static CIMProperty text(const char* value = "v") {
    return CIMProperty(CIMName("p"), CIMValue(String(value)));
}

static CIMQualifier qualifier(const char* name) {
    return CIMQualifier(CIMName(name), CIMValue(Boolean(true)));
}

TEST(CIMProperty, HasWhatItWasMadeWith) {
    const CIMProperty p(CIMName("Ref"), CIMValue(CIMObjectPath("C.k=1")), 0, CIMName("C"),
                        CIMName("Base"), true);
    EXPECT_EQ(p.getName().getString(), "Ref");
    EXPECT_EQ(p.getType(), CIMTYPE_REFERENCE);
    EXPECT_FALSE(p.isArray());
    EXPECT_EQ(p.getArraySize(), 0u);
    EXPECT_EQ(p.getReferenceClassName().getString(), "C");
    EXPECT_EQ(p.getClassOrigin().getString(), "Base");
    EXPECT_TRUE(p.getPropagated());
}

TEST(CIMProperty, HasNoOriginUnlessGiven) {
    const CIMProperty p = text();
    EXPECT_TRUE(p.getReferenceClassName().isNull());
    EXPECT_TRUE(p.getClassOrigin().isNull());
    EXPECT_FALSE(p.getPropagated());
}

TEST(CIMProperty, ANullNameThrows) {
    EXPECT_THROW(CIMProperty(CIMName(), CIMValue(Uint8(1))), UninitializedObjectException);
    EXPECT_THROW(text().setName(CIMName()), UninitializedObjectException);
}

TEST(CIMProperty, AFixedSizeMustBeTheSizeOfTheArray) {
    const CIMName p("p");
    EXPECT_EQ(CIMProperty(p, CIMValue(Array<Uint8>(3)), 3).getArraySize(), 3u);
    EXPECT_EQ(CIMProperty(p, CIMValue(Array<Uint8>(3))).getArraySize(), 0u);
    EXPECT_THROW(CIMProperty(p, CIMValue(Array<Uint8>(3)), 2), TypeMismatchException);
    EXPECT_THROW(CIMProperty(p, CIMValue(Uint8(1)), 1), TypeMismatchException);
    EXPECT_THROW(CIMProperty(p, CIMValue(CIMTYPE_UINT8, true), 3), TypeMismatchException);
    EXPECT_EQ(CIMProperty(p, CIMValue(CIMTYPE_UINT8, true, 3), 3).getArraySize(), 3u);
}

TEST(CIMProperty, AReferenceClassWantsAReference) {
    EXPECT_THROW(CIMProperty(CIMName("p"), CIMValue(Uint8(1)), 0, CIMName("C")),
                 TypeMismatchException);
    EXPECT_NO_THROW(CIMProperty(CIMName("p"), CIMValue(CIMObjectPath("C.k=1"))));
    EXPECT_NO_THROW(CIMProperty(CIMName("p"), CIMValue(CIMTYPE_REFERENCE, false)));
}

TEST(CIMProperty, AnArrayOfReferencesIsRefused) {
    EXPECT_THROW(CIMProperty(CIMName("p"), CIMValue(Array<CIMObjectPath>())),
                 TypeMismatchException);
    EXPECT_THROW(CIMProperty(CIMName("p"), CIMValue(CIMTYPE_REFERENCE, true)),
                 TypeMismatchException);
}

TEST(CIMProperty, SetValueKeepsTypeAndArrayness) {
    CIMProperty p = text();
    p.setValue(CIMValue(String("w")));
    EXPECT_EQ(p.getValue(), CIMValue(String("w")));
    p.setValue(CIMValue(CIMTYPE_STRING, false));
    EXPECT_TRUE(p.getValue().isNull());
    EXPECT_THROW(p.setValue(CIMValue(Uint8(1))), TypeMismatchException);
    EXPECT_THROW(p.setValue(CIMValue(CIMTYPE_STRING, true)), TypeMismatchException);
    EXPECT_THROW(p.setValue(CIMValue()), TypeMismatchException);
}

TEST(CIMProperty, SetValueKeepsAFixedSize) {
    CIMProperty p(CIMName("p"), CIMValue(Array<Uint8>(3)), 3);
    EXPECT_THROW(p.setValue(CIMValue(Array<Uint8>(2))), TypeMismatchException);
    EXPECT_NO_THROW(p.setValue(CIMValue(Array<Uint8>(3, 1))));
}

TEST(CIMProperty, OriginAndPropagationAreSet) {
    CIMProperty p = text();
    p.setClassOrigin(CIMName("Base"));
    p.setPropagated(true);
    p.setName(CIMName("q"));
    EXPECT_EQ(p.getClassOrigin().getString(), "Base");
    EXPECT_TRUE(p.getPropagated());
    EXPECT_EQ(p.getName().getString(), "q");
}

TEST(CIMProperty, QualifiersAreAddedInAChainFoundAndRemoved) {
    CIMProperty p = text();
    p.addQualifier(qualifier("Key")).addQualifier(qualifier("Write"));
    EXPECT_EQ(p.getQualifierCount(), 2u);
    EXPECT_EQ(p.findQualifier(CIMName("write")), 1u);
    EXPECT_EQ(p.findQualifier(CIMName("Read")), PEG_NOT_FOUND);
    EXPECT_EQ(p.getQualifier(1).getName().getString(), "Write");
    p.removeQualifier(0);
    const CIMProperty& constant = p;
    EXPECT_EQ(constant.getQualifier(0).getName().getString(), "Write");
}

TEST(CIMProperty, AQualifierTwiceIsAnErrorThatNamesIt) {
    CIMProperty p = text();
    p.addQualifier(qualifier("Key"));
    EXPECT_EQ(messageOf<AlreadyExistsException>([&] { p.addQualifier(qualifier("KEY")); }),
              "already exists: qualifier \"KEY\"");
    EXPECT_EQ(p.getQualifierCount(), 1u);
}

TEST(CIMProperty, AQualifierIndexBeyondTheEndThrows) {
    CIMProperty p = text();
    const CIMProperty& constant = p;
    EXPECT_THROW(p.getQualifier(0), IndexOutOfBoundsException);
    EXPECT_THROW(constant.getQualifier(0), IndexOutOfBoundsException);
    EXPECT_THROW(p.removeQualifier(0), IndexOutOfBoundsException);
}

TEST(CIMProperty, IdenticalComparesEverything) {
    EXPECT_TRUE(text().identical(text()));
    EXPECT_TRUE(text().identical(CIMProperty(CIMName("P"), CIMValue(String("v")))));
    EXPECT_FALSE(text().identical(text("w")));
    CIMProperty p = text();
    p.setClassOrigin(CIMName("Base"));
    EXPECT_FALSE(p.identical(text()));
    p = text();
    p.addQualifier(qualifier("Key"));
    EXPECT_FALSE(p.identical(text()));
    EXPECT_TRUE(p.identical(p.clone()));
}

TEST(CIMProperty, CopiesShareAndACloneDoesNot) {
    CIMProperty p = text();
    p.addQualifier(qualifier("Key"));
    CIMProperty alias(p);
    const CIMConstProperty reader(p);
    CIMProperty clone = p.clone();
    alias.setValue(CIMValue(String("w")));
    alias.getQualifier(0).setValue(CIMValue(Boolean(false)));
    EXPECT_EQ(p.getValue(), CIMValue(String("w")));
    EXPECT_EQ(reader.getValue(), CIMValue(String("w")));
    EXPECT_EQ(reader.getQualifier(0).getValue(), CIMValue(Boolean(false)));
    EXPECT_EQ(clone.getValue(), CIMValue(String("v")));
    EXPECT_EQ(clone.getQualifier(0).getValue(), CIMValue(Boolean(true)));
}

TEST(CIMProperty, AnUninitializedOneThrows) {
    CIMProperty p;
    EXPECT_TRUE(p.isUninitialized());
    EXPECT_THROW(p.getName(), UninitializedObjectException);
    EXPECT_THROW(p.getValue(), UninitializedObjectException);
    EXPECT_THROW(p.setValue(CIMValue()), UninitializedObjectException);
    EXPECT_THROW(static_cast<void>(p.identical(text())), UninitializedObjectException);
    EXPECT_THROW(static_cast<void>(text().identical(p)), UninitializedObjectException);
    EXPECT_THROW(CIMConstProperty().getName(), UninitializedObjectException);
}
