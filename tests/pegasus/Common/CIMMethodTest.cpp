#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMParameter.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static CIMParameter parameter(const char* name) {
    return CIMParameter(CIMName(name), CIMTYPE_STRING);
}

static CIMQualifier qualifier(const char* name) {
    return CIMQualifier(CIMName(name), CIMValue(Boolean(true)));
}

TEST(CIMParameter, HasWhatItWasMadeWith) {
    const CIMParameter p(CIMName("p"), CIMTYPE_REFERENCE, true, 3, CIMName("C"));
    EXPECT_EQ(p.getName().getString(), "p");
    EXPECT_EQ(p.getType(), CIMTYPE_REFERENCE);
    EXPECT_TRUE(p.isArray());
    EXPECT_EQ(p.getArraySize(), 3u);
    EXPECT_EQ(p.getReferenceClassName().getString(), "C");
}

TEST(CIMParameter, AReferenceWantsAClassAndNothingElseDoes) {
    const CIMName p("p");
    EXPECT_THROW(CIMParameter(p, CIMTYPE_REFERENCE), TypeMismatchException);
    EXPECT_THROW(CIMParameter(p, CIMTYPE_UINT8, false, 0, CIMName("C")), TypeMismatchException);
    EXPECT_NO_THROW(CIMParameter(p, CIMTYPE_REFERENCE, true, 0, CIMName("C")));
}

TEST(CIMParameter, ANullNameThrows) {
    EXPECT_THROW(CIMParameter(CIMName(), CIMTYPE_UINT8), UninitializedObjectException);
}

TEST(CIMParameter, CopiesShareAndACloneDoesNot) {
    CIMParameter p = parameter("p");
    CIMParameter alias(p);
    const CIMParameter clone = p.clone();
    EXPECT_TRUE(p.identical(clone));
    alias.setName(CIMName("q"));
    alias.addQualifier(qualifier("In"));
    EXPECT_EQ(p.getName().getString(), "q");
    EXPECT_EQ(p.findQualifier(CIMName("in")), 0u);
    EXPECT_EQ(CIMConstParameter(p).getQualifierCount(), 1u);
    EXPECT_EQ(clone.getName().getString(), "p");
    EXPECT_EQ(clone.getQualifierCount(), 0u);
    EXPECT_THROW(CIMParameter().getName(), UninitializedObjectException);
}

TEST(CIMMethod, HasWhatItWasMadeWith) {
    CIMMethod m(CIMName("m"), CIMTYPE_UINT32, CIMName("Base"), true);
    EXPECT_EQ(m.getName().getString(), "m");
    EXPECT_EQ(m.getType(), CIMTYPE_UINT32);
    EXPECT_EQ(m.getClassOrigin().getString(), "Base");
    EXPECT_TRUE(m.getPropagated());
    m.setType(CIMTYPE_STRING);
    m.setClassOrigin(CIMName("C"));
    m.setPropagated(false);
    EXPECT_EQ(m.getType(), CIMTYPE_STRING);
    EXPECT_EQ(m.getClassOrigin().getString(), "C");
    EXPECT_FALSE(m.getPropagated());
}

TEST(CIMMethod, ANullNameThrows) {
    EXPECT_THROW(CIMMethod(CIMName(), CIMTYPE_UINT8), UninitializedObjectException);
}

TEST(CIMMethod, ParametersAreAddedFoundAndRemoved) {
    CIMMethod m(CIMName("m"), CIMTYPE_UINT32);
    m.addParameter(parameter("a")).addParameter(parameter("b"));
    EXPECT_EQ(m.findParameter(CIMName("B")), 1u);
    EXPECT_EQ(m.findParameter(CIMName("c")), PEG_NOT_FOUND);
    EXPECT_EQ(messageOf<AlreadyExistsException>([&] { m.addParameter(parameter("A")); }),
              "already exists: parameter \"A\"");
    EXPECT_THROW(m.addParameter(CIMParameter()), UninitializedObjectException);
    m.removeParameter(0);
    const CIMMethod& constant = m;
    EXPECT_EQ(constant.getParameter(0).getName().getString(), "b");
    EXPECT_EQ(m.getParameterCount(), 1u);
    EXPECT_THROW(m.getParameter(1), IndexOutOfBoundsException);
}

TEST(CIMMethod, CopiesShareAndACloneDoesNot) {
    CIMMethod m(CIMName("m"), CIMTYPE_UINT32);
    m.addParameter(parameter("p")).addQualifier(qualifier("Static"));
    CIMMethod alias(m);
    const CIMMethod clone = m.clone();
    EXPECT_TRUE(m.identical(clone));
    alias.getParameter(0).addQualifier(qualifier("In"));
    EXPECT_EQ(m.getParameter(0).getQualifierCount(), 1u);
    EXPECT_EQ(clone.getParameter(0).getQualifierCount(), 0u);
    EXPECT_FALSE(m.identical(clone));
    EXPECT_THROW(CIMMethod().getName(), UninitializedObjectException);
    EXPECT_THROW(CIMConstMethod().getParameterCount(), UninitializedObjectException);
}
