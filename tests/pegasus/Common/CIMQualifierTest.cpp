#include <Pegasus/Common/CIMQualifier.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static CIMQualifier key() {
    return CIMQualifier(CIMName("Key"), CIMValue(Boolean(true)));
}

TEST(CIMQualifier, HasNameValueAndNoFlavorByDefault) {
    const CIMQualifier q = key();
    EXPECT_EQ(q.getName().getString(), "Key");
    EXPECT_EQ(q.getType(), CIMTYPE_BOOLEAN);
    EXPECT_FALSE(q.isArray());
    EXPECT_EQ(q.getValue(), CIMValue(Boolean(true)));
    EXPECT_TRUE(q.getFlavor().equal(CIMFlavor::NONE));
    EXPECT_FALSE(q.getPropagated());
}

TEST(CIMQualifier, ANullNameThrows) {
    EXPECT_THROW(CIMQualifier(CIMName(), CIMValue(Boolean(true))), UninitializedObjectException);
    CIMQualifier q = key();
    EXPECT_THROW(q.setName(CIMName()), UninitializedObjectException);
    q.setName(CIMName("Write"));
    EXPECT_EQ(q.getName().getString(), "Write");
}

TEST(CIMQualifier, SetValueMayChangeTheType) {
    CIMQualifier q = key();
    q.setValue(CIMValue(Uint8(3)));
    EXPECT_EQ(q.getType(), CIMTYPE_UINT8);
}

TEST(CIMQualifier, FlavorsAndPropagationAreSet) {
    CIMQualifier q = key();
    q.setFlavor(CIMFlavor::DEFAULTS);
    EXPECT_TRUE(q.getFlavor().equal(CIMFlavor::DEFAULTS));
    q.unsetFlavor(CIMFlavor::TOSUBCLASS);
    EXPECT_TRUE(q.getFlavor().equal(CIMFlavor::OVERRIDABLE));
    q.setPropagated(true);
    EXPECT_TRUE(q.getPropagated());
}

TEST(CIMQualifier, CopiesShareAndACloneDoesNot) {
    CIMQualifier q = key();
    CIMQualifier alias(q);
    const CIMConstQualifier reader(q);
    CIMQualifier clone = q.clone();
    alias.setValue(CIMValue(Boolean(false)));
    EXPECT_EQ(q.getValue(), CIMValue(Boolean(false)));
    EXPECT_EQ(reader.getValue(), CIMValue(Boolean(false)));
    EXPECT_EQ(clone.getValue(), CIMValue(Boolean(true)));
}

TEST(CIMQualifier, IdenticalComparesNameValueFlavorAndPropagation) {
    const CIMValue value(Boolean(true));
    EXPECT_TRUE(key().identical(key()));
    EXPECT_TRUE(key().identical(CIMQualifier(CIMName("KEY"), value)));
    EXPECT_FALSE(key().identical(CIMQualifier(CIMName("Other"), value)));
    EXPECT_FALSE(key().identical(CIMQualifier(CIMName("Key"), CIMValue(Boolean(false)))));
    EXPECT_FALSE(key().identical(CIMQualifier(CIMName("Key"), value, CIMFlavor::TOSUBCLASS)));
    EXPECT_FALSE(key().identical(CIMQualifier(CIMName("Key"), value, CIMFlavor::NONE, true)));
}

TEST(CIMQualifier, AnUninitializedOneThrows) {
    const CIMQualifier q;
    EXPECT_TRUE(q.isUninitialized());
    EXPECT_FALSE(key().isUninitialized());
    EXPECT_EQ(messageOf<UninitializedObjectException>([&] { q.getName(); }),
              "uninitialized object");
    EXPECT_THROW(q.getValue(), UninitializedObjectException);
    EXPECT_THROW(CIMConstQualifier().getName(), UninitializedObjectException);
}
