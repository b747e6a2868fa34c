#include <Pegasus/Common/CIMObjectPath.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using Key = CIMKeyBinding;
using testing::HasSubstr;

struct Parsed {
    const char* text;
    const char* canonical;
};

class ObjectPathText : public testing::TestWithParam<Parsed> {};

TEST_P(ObjectPathText, IsParsedAndPrintedCanonically) {
    const CIMObjectPath p{String(GetParam().text)};
    EXPECT_EQ(utf8(p.toString()), GetParam().canonical);
    EXPECT_EQ(CIMObjectPath(p.toString()), p);
}

INSTANTIATE_TEST_SUITE_P(
    Accepted, ObjectPathText,
    testing::Values(
        Parsed{"C", "C"}, Parsed{"root:C", "root:C"}, Parsed{"a/b:C.k=1", "a/b:C.k=1"},
        Parsed{"/root/cimv2:C", "root/cimv2:C"}, Parsed{"//h/root:C", "//h/root:C"},
        Parsed{"//h:5988/root:C.k=1", "//h:5988/root:C.k=1"}, Parsed{"C.b=1,a=2", "C.a=2,b=1"},
        Parsed{"C.B=1,a=2,A=3", "C.a=2,A=3,B=1"}, Parsed{"C.", "C"},
        Parsed{"C.k=\"v\",", "C.k=\"v\""}, Parsed{"C.k=true", "C.k=TRUE"},
        Parsed{"C.k=fAlSe", "C.k=FALSE"}, Parsed{"C.k=0", "C.k=0"}, Parsed{"C.k=-1", "C.k=-1"},
        Parsed{"C.k=0x1F", "C.k=0x1F"},
        Parsed{"C.k=9223372036854775807", "C.k=9223372036854775807"},
        Parsed{"C.k=-9223372036854775808", "C.k=-9223372036854775808"},
        Parsed{"C.k=\"\"", "C.k=\"\""}, Parsed{"C.k=\"a\\\"b\\\\c\"", "C.k=\"a\\\"b\\\\c\""},
        Parsed{"C.k=\"a\nb\"", "C.k=\"a\nb\""}, Parsed{"C.k=\"a,b:c/d.e\"", "C.k=\"a,b:c/d.e\""},
        Parsed{"C.k=\"B.b=1,a=2\"", "C.k=\"B.a=2,b=1\""},
        Parsed{"C.k=\"//h/root/x:B.b=1,a=\\\"x\\\\\\\"y\\\"\"",
               "C.k=\"//h/root/x:B.a=\\\"x\\\\\\\"y\\\",b=1\""}));

class MalformedObjectPath : public testing::TestWithParam<const char*> {};

TEST_P(MalformedObjectPath, ThrowsAndQuotesTheText) {
    EXPECT_THAT(
        messageOf<MalformedObjectNameException>([] { CIMObjectPath p{String(GetParam())}; }),
        HasSubstr(std::string("malformed object name: ") + GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    Refused, MalformedObjectPath,
    testing::Values("", "//h", "//h/C", "//h/:C", "//h/root:", "//h//root:C", ":C", "/C", "a:b:c",
                    "1C", "C-D", "root//x:C", "ro ot:C", "root/:C", "C.k", "C.=1", "C.k=", "C.k=a",
                    "C .k=1", "C. k=1", "C.k =1", "C.k= 1", "C.k=1 ", "C.k=1, j=2", "C.1k=1",
                    "C.k=1,j", "C.k=01", "C.k=1.5", "C.k=1e5", "C.k=101b", "C.k='c'", "C.k=NULL",
                    "C.k=0x", "C.k=0xG", "C.k=-", "C.k=--1", "C.k=18446744073709551616",
                    "C.k=-9223372036854775809", "C.k=T", "C.k=TRUEx", "C.k=\"a", "C.k=\"a\\",
                    "C.k=\"a\\nb\"", "C.k=\"v\"x", "C.k=\"v\" ", "//-h/root:C"));

static Key keyOf(const char* text) {
    return CIMObjectPath{String(text)}.getKeyBindings()[0];
}

TEST(ObjectPathParser, AQuotedTextIsAStringWithItsEscapesUndone) {
    const Key key = keyOf("C.k=\"a\\\"b\\\\\"");
    EXPECT_EQ(key.getType(), Key::STRING);
    EXPECT_EQ(key.getValue(), "a\"b\\");
}

TEST(ObjectPathParser, AQuotedInstancePathIsAReference) {
    EXPECT_EQ(keyOf("C.k=\"B.k=5\"").getType(), Key::REFERENCE);
    EXPECT_EQ(keyOf("C.k=\"B.k=\\\"v\\\"\"").getValue(), "B.k=\"v\"");
}

TEST(ObjectPathParser, AQuotedTextWithoutAWholeInstancePathStaysAString) {
    for (const char* text : {"C.k=\"B\"", "C.k=\"B.\"", "C.k=\"B.x=\"", "C.k=\"x=y\"",
                             "C.k=\"a.b=c\"", "C.k=\"a=1\""}) {
        EXPECT_EQ(keyOf(text).getType(), Key::STRING) << text;
    }
}

TEST(ObjectPathParser, BooleansAndNumbersHaveTheirTypes) {
    EXPECT_EQ(keyOf("C.k=true").getType(), Key::BOOLEAN);
    EXPECT_EQ(keyOf("C.k=12").getType(), Key::NUMERIC);
}

TEST(ObjectPathParser, ReferencesNestDeeply) {
    CIMObjectPath p("C.k=1");
    for (int depth = 0; depth < 8; ++depth) {
        Array<Key> keys(1, Key(CIMName("k"), p.toString(), Key::REFERENCE));
        p = CIMObjectPath("", CIMNamespaceName(), CIMName("C"), keys);
    }
    EXPECT_EQ(CIMObjectPath(p.toString()), p);
}
