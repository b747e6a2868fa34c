// Where OpenPegasus leaves something undefined or wrong, ours promises this.

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using testing::EndsWith;
using testing::StartsWith;

TEST(Bundled, RemoveOfAnyRangeBeyondTheEndOfAnArrayThrows) {
    Array<Uint32> a(3, 1);
    EXPECT_THROW(a.remove(3), IndexOutOfBoundsException);
    EXPECT_THROW(a.remove(2, 2), IndexOutOfBoundsException);
    EXPECT_THROW(a.remove(0, PEG_NOT_FOUND), IndexOutOfBoundsException);
    EXPECT_THROW(Array<Uint32>().remove(0), IndexOutOfBoundsException);
    EXPECT_NO_THROW(a.remove(9, 0));
    EXPECT_EQ(a.size(), 3u);
}

TEST(Bundled, ArrayTakesOverAnElementOfItsOwn) {
    Array<String> a;
    for (const char* text : {"a", "b", "c", "d"}) {
        a.append(String(text));
    }
    const Array<String> copy(a);
    a.append(std::move(a[0])); // as many as there is room for
    ASSERT_EQ(a.size(), 5u);
    EXPECT_EQ(a[4], "a");
    a.append(std::move(a[4]));
    EXPECT_EQ(a[5], "a");
    EXPECT_EQ(copy.size(), 4u);
    EXPECT_EQ(copy[0], "a");
}

TEST(Bundled, RemoveOfATailBeyondTheEndOfAStringThrows) {
    String s("abc");
    EXPECT_THROW(s.remove(4), IndexOutOfBoundsException);
    EXPECT_EQ(s, "abc");
}

TEST(Bundled, CloneOfAnUninitializedHandleThrows) {
    EXPECT_THROW(CIMInstance().clone(), UninitializedObjectException);
    EXPECT_THROW(CIMProperty().clone(), UninitializedObjectException);
    EXPECT_THROW(CIMQualifier().clone(), UninitializedObjectException);
}

TEST(Bundled, ANullCharPointerIsNoName) {
    EXPECT_EQ(messageOf([] { CIMName name(static_cast<const char*>(nullptr)); }), "null pointer");
}

TEST(Bundled, AQualifierThatGetsAnotherNameAmongManyIsFoundUnderThat) {
    CIMProperty property(CIMName("p"), CIMValue(true));
    for (int i = 0; i < 100; ++i) {
        const std::string name = "q" + std::to_string(i);
        property.addQualifier(CIMQualifier(CIMName(name.c_str()), CIMValue(true)));
    }
    property.getQualifier(50).setName(CIMName("other"));
    EXPECT_EQ(property.findQualifier(CIMName("q50")), PEG_NOT_FOUND);
    EXPECT_EQ(property.findQualifier(CIMName("other")), 50u);
    EXPECT_THROW(property.addQualifier(CIMQualifier(CIMName("other"), CIMValue(true))),
                 AlreadyExistsException);
    property.addQualifier(CIMQualifier(CIMName("q50"), CIMValue(true)));
    EXPECT_EQ(property.findQualifier(CIMName("Q50")), 100u);
}

TEST(Bundled, ExceptionsAreAssigned) {
    Exception e("first");
    e = Exception("second");
    EXPECT_EQ(e.getMessage(), "second");
}

TEST(Bundled, TextsAreThoseOfThe214Line) {
    EXPECT_EQ(InvalidNameException("x").getMessage(), "The CIM name is not valid: x");
    EXPECT_STREQ(cimStatusCodeToString(CIM_ERR_FAILED), "CIM_ERR_FAILED");
    EXPECT_STREQ(cimStatusCodeToString(CIM_ERR_SERVER_IS_SHUTTING_DOWN),
                 "CIM_ERR_SERVER_IS_SHUTTING_DOWN");
    EXPECT_STREQ(cimStatusCodeToString(static_cast<CIMStatusCode>(18)),
                 "Unrecognized CIM status code");
    EXPECT_EQ(messageOf([] { CIMObjectPath p("C.k=a"); }),
              "malformed object name: C.k=a, reason:\"invalid key-value pair, invalid number value "
              "a\"");
    EXPECT_EQ(messageOf([] { CIMDateTime("20051302030405.678901+060"); }),
              "DateTime is out of range : illegal month number");
}

TEST(Bundled, MalformedUtf8IsShownWithWhatStandsBeforeIt) {
    EXPECT_EQ(messageOf([] {
                  String s("ab\xFF"
                           "cd");
              }),
              "The byte sequence starting at index 2 is not valid UTF-8 encoding: ab 0xFF 0x63 "
              "0x64");
}

TEST(Bundled, WhatStandsBeforeMalformedUtf8IsNotCutWithinACharacter) {
    const std::string text = std::string(30, 'x') + "\xC3\xA9" + std::string(39, 'y') + "\xFF";
    const std::string message = messageOf([&] { String s(text.c_str()); });
    EXPECT_THAT(message, StartsWith("The byte sequence starting at index 71 is not valid UTF-8"));
    EXPECT_THAT(message, EndsWith(": " + std::string(39, 'y') + " 0xFF"));
}

TEST(Bundled, EveryCharacterAndEveryLoneSurrogateComesOut) {
    EXPECT_EQ(utf8(String("\xEF\xBF\xBE\xEF\xBF\xBF")), "\xEF\xBF\xBE\xEF\xBF\xBF");
    const Char16 last(Uint16(0xD83D));
    EXPECT_EQ(utf8(String(&last, 1)), "\xED\xA0\xBD");
}

TEST(Bundled, ADefaultKeyBindingIsAString) {
    EXPECT_EQ(CIMKeyBinding().getType(), CIMKeyBinding::STRING);
}

TEST(Bundled, SortingKeysLeavesTheGivenArrayAlone) {
    Array<CIMKeyBinding> given;
    given.append(CIMKeyBinding(CIMName("b"), "1", CIMKeyBinding::NUMERIC));
    given.append(CIMKeyBinding(CIMName("a"), "2", CIMKeyBinding::NUMERIC));
    const CIMObjectPath path("", CIMNamespaceName(), CIMName("C"), given);
    EXPECT_EQ(path.toString(), "C.a=2,b=1");
    EXPECT_EQ(given[0].getName().getString(), "b");
}

TEST(Bundled, ARefusedChangeLeavesAPathAsItWas) {
    CIMObjectPath path("root:C.k=1");
    const Array<CIMKeyBinding> bad(
        1, CIMKeyBinding(CIMName("r"), "no path", CIMKeyBinding::REFERENCE));
    EXPECT_THROW(path.setKeyBindings(bad), MalformedObjectNameException);
    EXPECT_THROW(path.set("h", CIMNamespaceName("x"), CIMName("D"), bad),
                 MalformedObjectNameException);
    EXPECT_THROW(path.set("a:b:c"), MalformedObjectNameException);
    EXPECT_EQ(path.toString(), "root:C.k=1");
}

TEST(Bundled, HostsAreIPv6AddressesToo) {
    CIMObjectPath path("root:C");
    for (const char* host : {"[::1]", "[2001:db8::1]:5988", "h:", "h:65535"}) {
        path.setHost(host);
        EXPECT_EQ(path.getHost(), host);
    }
    for (const char* host : {"[::1", "::1", "[1::2::3]", "[::1]x", "h:65536", "h:0000000000001"}) {
        EXPECT_THROW(path.setHost(host), MalformedObjectNameException) << host;
    }
}

TEST(Bundled, NumericKeysReachTheLargestUint64) {
    EXPECT_EQ(CIMObjectPath("C.k=18446744073709551615").toString(), "C.k=18446744073709551615");
    EXPECT_EQ(CIMObjectPath("C.k=0xFFFFFFFFFFFFFFFF").makeHashCode(),
              CIMObjectPath("C.k=18446744073709551615").makeHashCode());
}

TEST(Bundled, ThePropertyOfAnObjectKeepsItsName) {
    CIMProperty p(CIMName("p"), CIMValue(Uint8(1)));
    CIMInstance i(CIMName("C"));
    i.addProperty(p);
    EXPECT_THROW(p.setName(CIMName("q")), Exception);
    EXPECT_THROW(i.clone().getProperty(0).setName(CIMName("q")), Exception);
    EXPECT_NO_THROW(p.clone().setName(CIMName("q")));
    i.removeProperty(0);
    EXPECT_NO_THROW(p.setName(CIMName("q")));
}

TEST(Bundled, AClassIsNotIdenticalToAnInstance) {
    const CIMObject instance{CIMInstance(CIMName("C"))}, cimClass{CIMClass(CIMName("C"))};
    EXPECT_FALSE(instance.identical(cimClass));
    EXPECT_FALSE(cimClass.identical(instance));
}

TEST(Bundled, AnInstanceInAValueHasItsOwnType) {
    CIMInstance instance(CIMName("C"));
    const CIMValue value(instance);
    EXPECT_EQ(value.getType(), CIMTYPE_INSTANCE);
    instance.setPath(CIMObjectPath("C.k=1"));
    CIMInstance out;
    value.get(out);
    EXPECT_EQ(out.getPath().toString(), "C");
    CIMObject object;
    EXPECT_THROW(value.get(object), TypeMismatchException);
    EXPECT_EQ(CIMValue(Array<CIMInstance>(1, instance)).getArraySize(), 1u);
    EXPECT_STREQ(cimTypeToString(CIMTYPE_INSTANCE), "instance");
}

TEST(Bundled, DifferencesOfTimestampsKeepTheirOffset) {
    const CIMDateTime stamp("20050102030405.678901+060");
    EXPECT_EQ((stamp - CIMDateTime("00000001000000.000000:000")).toString(),
              "20050101030405.678901+060");
}

TEST(Bundled, TimestampsBeforeTheYearZeroInUtcAreRefused) {
    EXPECT_THROW(CIMDateTime("00000101000000.000000+060"), DateTimeOutOfRangeException);
}

namespace {

class Handler : public ResponseHandler {
public:
    void processing() override {}
    void complete() override {}
    using ResponseHandler::getContext;
};

} // namespace

TEST(Bundled, AResponseHandlerKeepsItsContext) {
    Handler handler;
    OperationContext context;
    context.insert(IdentityContainer("someone"));
    handler.setContext(context);
    context.clear();
    const OperationContext kept = handler.getContext();
    EXPECT_EQ(IdentityContainer(kept.get(IdentityContainer::NAME)).getUserName(), "someone");
}
