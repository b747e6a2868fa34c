#include <Pegasus/Common/CIMObjectPath.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using Key = CIMKeyBinding;

static Array<Key> keys(std::initializer_list<Key> list) {
    return Array<Key>(list.begin(), static_cast<Uint32>(list.size()));
}

static CIMObjectPath path(const Array<Key>& k) {
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName("C"), k);
}

static const Key one(CIMName("one"), "1", Key::NUMERIC);
static const Key two(CIMName("Two"), "2", Key::NUMERIC);
static const Key three(CIMName("three"), "3", Key::NUMERIC);

TEST(CIMObjectPath, DefaultIsEmpty) {
    const CIMObjectPath p;
    EXPECT_EQ(p.getHost(), "");
    EXPECT_TRUE(p.getNameSpace().isNull());
    EXPECT_TRUE(p.getClassName().isNull());
    EXPECT_EQ(p.getKeyBindings().size(), 0u);
    EXPECT_EQ(p.toString(), "");
    EXPECT_TRUE(p == CIMObjectPath());
}

TEST(CIMObjectPath, HasWhatItWasMadeWith) {
    const CIMObjectPath p("h", CIMNamespaceName("root/x"), CIMName("C"), keys({one}));
    EXPECT_EQ(p.getHost(), "h");
    EXPECT_EQ(p.getNameSpace().getString(), "root/x");
    EXPECT_EQ(p.getClassName().getString(), "C");
    ASSERT_EQ(p.getKeyBindings().size(), 1u);
    EXPECT_TRUE(p.getKeyBindings()[0] == one);
    EXPECT_EQ(p.toString(), "//h/root/x:C.one=1");
}

TEST(CIMObjectPath, SortsItsKeysByNameWithoutCase) {
    EXPECT_EQ(path(keys({two, three, one})).toString(), "C.one=1,three=3,Two=2");
    CIMObjectPath p("C");
    p.setKeyBindings(keys({two, one}));
    EXPECT_EQ(p.toString(), "C.one=1,Two=2");
    p.set("", CIMNamespaceName(), CIMName("D"), keys({three, one}));
    EXPECT_EQ(p.toString(), "D.one=1,three=3");
    EXPECT_EQ(CIMObjectPath("C.b=1,A=2").toString(), "C.A=2,b=1");
}

TEST(CIMObjectPath, KeepsDuplicateKeys) {
    EXPECT_EQ(path(keys({one, one})).toString(), "C.one=1,one=1");
}

TEST(CIMObjectPath, ReferencesAreMadeCanonical) {
    const CIMObjectPath p = path(keys({Key(CIMName("r"), "B.b=1,a=2", Key::REFERENCE)}));
    EXPECT_EQ(p.getKeyBindings()[0].getValue(), "B.a=2,b=1");
    EXPECT_EQ(p.toString(), "C.r=\"B.a=2,b=1\"");
}

TEST(CIMObjectPath, AReferenceThatIsNoPathThrows) {
    const Array<Key> bad = keys({Key(CIMName("r"), "no path", Key::REFERENCE)});
    CIMObjectPath p("C");
    EXPECT_THROW(path(bad), MalformedObjectNameException);
    EXPECT_THROW(p.setKeyBindings(bad), MalformedObjectNameException);
    EXPECT_THROW(p.set("h", CIMNamespaceName("root"), CIMName("C"), bad),
                 MalformedObjectNameException);
}

TEST(CIMObjectPath, TextQuotesStringsAndReferencesAndEscapesQuotesAndBackslashes) {
    EXPECT_EQ(path(keys({Key(CIMName("k"), "a\"b\\c\n,='", Key::STRING)})).toString(),
              "C.k=\"a\\\"b\\\\c\n,='\"");
    EXPECT_EQ(path(keys({Key(CIMName("k"), "D.k=\"v\"", Key::REFERENCE)})).toString(),
              "C.k=\"D.k=\\\"v\\\"\"");
    EXPECT_EQ(path(keys({Key(CIMName("k"), "", Key::STRING)})).toString(), "C.k=\"\"");
}

TEST(CIMObjectPath, TextOfBooleansAndNumbersIsRaw) {
    EXPECT_EQ(path(keys({Key(CIMName("b"), "tRue", Key::BOOLEAN),
                         Key(CIMName("n"), "0x1F", Key::NUMERIC)}))
                  .toString(),
              "C.b=tRue,n=0x1F");
}

TEST(CIMObjectPath, TextOfAllPartsTogether) {
    const CIMObjectPath p("h", CIMNamespaceName("root/x"), CIMName("C"),
                          keys({Key(CIMName("r"), "D.k=\"v\"", Key::REFERENCE),
                                Key(CIMName("a"), "1", Key::NUMERIC)}));
    EXPECT_EQ(p.toString(), "//h/root/x:C.a=1,r=\"D.k=\\\"v\\\"\"");
}

TEST(CIMObjectPath, TextOfAHostWithoutNamespaceHasAColon) {
    EXPECT_EQ(CIMObjectPath("h", CIMNamespaceName(), CIMName("C")).toString(), "//h/:C");
    EXPECT_EQ(CIMObjectPath("", CIMNamespaceName("root"), CIMName("C")).toString(), "root:C");
}

TEST(CIMObjectPath, SettersReplaceEachPart) {
    CIMObjectPath p("C.k=1");
    p.setHost("h");
    p.setNameSpace(CIMNamespaceName("root"));
    p.setClassName(CIMName("D"));
    p.setKeyBindings(keys({two}));
    EXPECT_EQ(p.toString(), "//h/root:D.Two=2");
    p.setHost("");
    EXPECT_EQ(p.toString(), "root:D.Two=2");
    p.clear();
    EXPECT_TRUE(p == CIMObjectPath());
}

TEST(CIMObjectPath, AStringIsParsedOnConstructionSetAndAssignment) {
    CIMObjectPath p(String("C.k=1"));
    EXPECT_EQ(p.toString(), "C.k=1");
    p.set(String("D.k=2"));
    EXPECT_EQ(p.toString(), "D.k=2");
    p = String("E.k=3");
    EXPECT_EQ(p.toString(), "E.k=3");
    EXPECT_THROW(p = String("no path"), MalformedObjectNameException);
}

TEST(CIMObjectPath, CopiesAreIndependent) {
    CIMObjectPath p("root:C.k=1");
    CIMObjectPath copy(p), assigned;
    assigned = p;
    p.setClassName(CIMName("D"));
    copy.setNameSpace(CIMNamespaceName("other"));
    EXPECT_EQ(p.toString(), "root:D.k=1");
    EXPECT_EQ(copy.toString(), "other:C.k=1");
    EXPECT_EQ(assigned.toString(), "root:C.k=1");
}

TEST(CIMObjectPath, AChangeOfTheCopiedKeysDoesNotTouchThePath) {
    const CIMObjectPath p("C.k=1");
    Array<Key> copy = p.getKeyBindings();
    copy[0].setValue("2");
    copy.append(two);
    EXPECT_EQ(p.toString(), "C.k=1");
}

TEST(CIMObjectPath, EqualityIgnoresCaseOfHostNamespaceClassAndKeyNames) {
    const CIMObjectPath p("//h/root/x:C.a=\"v\",b=10");
    EXPECT_TRUE(p == CIMObjectPath("//H/Root/X:c.B=0xA,A=\"v\""));
    EXPECT_TRUE(p.identical(CIMObjectPath("//H/Root/X:c.B=0xA,A=\"v\"")));
    EXPECT_FALSE(p != CIMObjectPath("//H/Root/X:c.B=0xA,A=\"v\""));
    EXPECT_EQ(p.makeHashCode(), CIMObjectPath("//H/Root/X:c.B=10,A=\"v\"").makeHashCode());
}

TEST(CIMObjectPath, EveryPartCountsForEquality) {
    const CIMObjectPath p("//h/root:C.a=1");
    for (const char* other :
         {"//g/root:C.a=1", "root:C.a=1", "//h/root/x:C.a=1", "//h/root:D.a=1", "//h/root:C.a=2",
          "//h/root:C.b=1", "//h/root:C.a=1,b=2", "//h/root:C", "//h/root:C.a=\"1\""}) {
        EXPECT_TRUE(p != CIMObjectPath(other)) << other;
    }
}

TEST(CIMObjectPath, HashCodesOfDifferentPathsDiffer) {
    EXPECT_NE(CIMObjectPath("C.a=\"x\"").makeHashCode(), CIMObjectPath("C.a=\"y\"").makeHashCode());
    EXPECT_NE(CIMObjectPath("C.a=\"x\"").makeHashCode(), CIMObjectPath("D.a=\"x\"").makeHashCode());
}

class LegalHost : public testing::TestWithParam<const char*> {};
class IllegalHost : public testing::TestWithParam<const char*> {};

TEST_P(LegalHost, IsTaken) {
    CIMObjectPath p("root:C");
    p.setHost(GetParam());
    EXPECT_EQ(p.toString(), String("//") + GetParam() + "/root:C");
    EXPECT_EQ(CIMObjectPath(p.toString()).getHost(), GetParam());
}

TEST_P(IllegalHost, Throws) {
    CIMObjectPath p("root:C");
    EXPECT_THROW(p.setHost(GetParam()), MalformedObjectNameException);
    EXPECT_THROW(CIMObjectPath(GetParam(), CIMNamespaceName("root"), CIMName("C")),
                 MalformedObjectNameException);
    EXPECT_EQ(p.getHost(), "");
}

INSTANTIATE_TEST_SUITE_P(Hosts, LegalHost,
                         testing::Values("h", "h.example.com", "h-1", "h_1", "1a", "h.1a", "h:5988",
                                         "192.0.2.10", "192.0.2.10:5988", "a.b.c-d_e"));
INSTANTIATE_TEST_SUITE_P(Hosts, IllegalHost,
                         testing::Values("-h", "h.", "h..d", ".h", "h.1", "1", "1.2.3", "1.2.3.4.5",
                                         "192.0.2.256", "h h", "h/x", "user@h", "h:x", "h:-1",
                                         "caf\xC3\xA9", "h.-d"));
