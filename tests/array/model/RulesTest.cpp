#include "array/model/Rules.h"

#include "array/model/ISCSIName.h"
#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

TEST(ISCSIName, TheThreeFormsAreGood) {
    for (const char* name :
         {"iqn.2026-01.com.example:t1", "iqn.2001-04.com.example", "iqn.2026-12.c",
          "IQN.2026-01.COM.EXAMPLE:UPPER", "eui.02004567A425678D", "naa.52004567BA64678D",
          "naa.62004567BA64678D0123456789ABCDEF",
          "iqn.2026-01.com.example:b\xC3\xBC"
          "cher"}) {
        EXPECT_NO_THROW(keptISCSIName(name)) << name;
    }
}

// In particular at once: what prepares names would take minutes.
TEST(ISCSIName, IsRefusedWhenItIsFarTooLong) {
    std::string name;
    while (name.size() < 1024 * 1024) {
        name += "\xC3\x89";
    }
    EXPECT_STREQ(prepareISCSIName(name).brokenRule,
                 "it is too long; 223 bytes are allowed (RFC 7143 section 4.2.7.1)");
    EXPECT_EQ(prepareISCSIName(name.substr(0, 4 * 223)).brokenRule, nullptr);
    EXPECT_EQ(failureOf([&] { keptISCSIName(name); }).code, ErrorCode::BadName);
}

TEST(ISCSIName, HasAtMost223Bytes) {
    const std::string longest = "iqn.2026-01.com.example:" + std::string(199, 'x');
    ASSERT_EQ(longest.size(), 223u);
    EXPECT_NO_THROW(keptISCSIName(longest));
    expectFailure(ErrorCode::BadName,
                  "\"" + longest +
                      "x\" is no iSCSI name: it has 224 bytes, and 223 are allowed "
                      "(RFC 7143 section 4.2.7.1).",
                  [&] { keptISCSIName(longest + "x"); });
}

TEST(ISCSIName, OtherCharactersAreRefused) {
    const std::string rule = " is no iSCSI name: it consists of letters, digits, \"-\", \".\" and "
                             "\":\" (RFC 7143 section 4.2.7.2).";
    expectFailure(ErrorCode::BadName, "\"iqn.2026-01.com.example:a b\"" + rule,
                  [] { keptISCSIName("iqn.2026-01.com.example:a b"); });
    expectFailure(ErrorCode::BadName, "\"iqn.2026-01.com.example:a_b\"" + rule,
                  [] { keptISCSIName("iqn.2026-01.com.example:a_b"); });
    expectFailure(ErrorCode::BadName, "\"iqn.2026-01.com.example:?\"" + rule,
                  [] { keptISCSIName("iqn.2026-01.com.example:\xFF"); });
    expectFailure(ErrorCode::BadName, "\"iqn.2026-01.com.example:??\"" + rule,
                  [] { keptISCSIName(std::string_view("iqn.2026-01.com.example:\0\n", 26)); });
}

struct BadForm {
    const char* name;
    const char* rule;
};

class ISCSINameForm : public testing::TestWithParam<BadForm> {};

TEST_P(ISCSINameForm, IsRefusedWithItsRule) {
    const auto& [name, rule] = GetParam();
    expectFailure(ErrorCode::BadName,
                  "\"" + std::string(name) + "\" is no iSCSI name: " + rule + ".",
                  [name = name] { keptISCSIName(name); });
}

constexpr const char* anyForm =
    "it begins with \"iqn.\", \"eui.\" or \"naa.\" (RFC 7143 section 4.2.7.3)";
constexpr const char* iqnForm =
    "after \"iqn.\" come a date, yyyy-mm, a dot and a domain name reversed "
    "(RFC 7143 section 4.2.7.4)";
constexpr const char* euiForm =
    "after \"eui.\" come 16 hexadecimal digits (RFC 7143 section 4.2.7.5)";
constexpr const char* naaForm =
    "after \"naa.\" come 16 or 32 hexadecimal digits (RFC 7143 section 4.2.7.6)";

INSTANTIATE_TEST_SUITE_P(
    Forms, ISCSINameForm,
    testing::Values(BadForm{"", anyForm}, BadForm{"host1", anyForm}, BadForm{"iqn", anyForm},
                    BadForm{"iqn.", iqnForm}, BadForm{"iqn.2026-01", iqnForm},
                    BadForm{"iqn.2026-01.", iqnForm}, BadForm{"iqn.2026-13.com", iqnForm},
                    BadForm{"iqn.2026-00.com", iqnForm}, BadForm{"iqn.26-01.com.example", iqnForm},
                    BadForm{"iqn.2026-01:com", iqnForm}, BadForm{"iqn.2026-01..com", iqnForm},
                    BadForm{"eui.", euiForm}, BadForm{"eui.02004567A425678", euiForm},
                    BadForm{"eui.02004567A425678DD", euiForm},
                    BadForm{"eui.02004567A425678G", euiForm},
                    BadForm{"naa.52004567BA64678", naaForm},
                    BadForm{"naa.52004567BA64678D0", naaForm}));

struct Prepared {
    const char* given;
    const char* kept;
};

class KeptISCSIName : public testing::TestWithParam<Prepared> {};

TEST_P(KeptISCSIName, IsWhatRFC3722MakesOfIt) {
    const std::string start = "iqn.2026-01.com.example:";
    EXPECT_EQ(keptISCSIName(start + GetParam().given), start + GetParam().kept);
    EXPECT_NO_THROW(checkISCSIName(start + GetParam().kept));
}

INSTANTIATE_TEST_SUITE_P(
    Names, KeptISCSIName,
    testing::Values(Prepared{"Host1", "host1"},
                    Prepared{"B\xC3\x9C"
                             "CHER",
                             "b\xC3\xBC"
                             "cher"},
                    Prepared{"bu\xCC\x88"
                             "cher",
                             "b\xC3\xBC"
                             "cher"}, // u and its dots
                    Prepared{"stra\xC3\x9F"
                             "e",
                             "strasse"},
                    Prepared{"\xEF\xBD\x88\xEF\xBD\x8F", "ho"}, // letters of full width
                    Prepared{"\xE2\x84\xA2", "tm"},
                    Prepared{"\xCE\xA3\xCE\xA3", "\xCF\x83\xCF\x83"})); // sigma

TEST(KeptISCSIName, HasTheHexadecimalDigitsOfTheOtherFormsInLowerCaseToo) {
    EXPECT_EQ(keptISCSIName("eui.02004567A425678D"), "eui.02004567a425678d");
    EXPECT_EQ(keptISCSIName("NAA.52004567BA64678D"), "naa.52004567ba64678d");
}

class RefusedISCSIName : public testing::TestWithParam<const char*> {};

TEST_P(RefusedISCSIName, IsNeitherTakenNorKept) {
    const std::string name = "iqn.2026-01.com.example:a" + std::string(GetParam());
    EXPECT_EQ(failureOf([&] { keptISCSIName(name); }).code, ErrorCode::BadName);
    EXPECT_EQ(failureOf([&] { checkISCSIName(name); }).code, ErrorCode::BadName);
}

INSTANTIATE_TEST_SUITE_P(Names, RefusedISCSIName,
                         testing::Values("\n", "\x1B[2J", "\x7F",
                                         "\xC2\x9B"
                                         "b", // controls
                                         "\xE2\x80\xAE"
                                         "b",
                                         "\xE2\x80\x8E"
                                         "b",
                                         "\xE2\x81\xA6"
                                         "b", // direction
                                         "\xE2\x80\x8B"
                                         "b",
                                         "\xE2\x80\x8D"
                                         "b",
                                         "\xEF\xBB\xBF"
                                         "b", // no width
                                         "\xC2\xAD"
                                         "b",
                                         "\xF3\xA0\x81\x81"
                                         "b",
                                         "\xC2\xA0"
                                         "b",
                                         "\xE3\x80\x80"
                                         "b", // spaces
                                         "\xE3\x80\x82"
                                         "b",            // the full stop of ideographs
                                         "\xEF\xBC\x9F", // a question mark of full width
                                         "\xEE\x80\x80", "\xEF\xBF\xBD",
                                         "\xEF\xBF\xBE",       // private, no characters
                                         "\xD7\x90",           // letters of both directions
                                         "\xF0\x9F\x98\x80")); // younger than Unicode 3.2

TEST(ISCSIName, IsNotKeptInAnotherForm) {
    for (const char* name : {"iqn.2026-01.com.example:T1", "iqn.2026-01.com.example:B\xC3\x9C"}) {
        const Failure failure = failureOf([&] { checkISCSIName(name); });
        EXPECT_EQ(failure.code, ErrorCode::BadName);
        EXPECT_NE(failure.message.find("names are kept in lower case and normalized (RFC 3722)"),
                  std::string::npos);
    }
}

TEST(VolumeName, IsAnEvenNumberOfHexadecimalDigits) {
    for (const std::string& name :
         {std::string("0a"), std::string("60014051A2B3C4D5"), std::string(128, 'F')}) {
        EXPECT_NO_THROW(checkVolumeName(name)) << name;
    }
    for (const std::string& name : {std::string(), std::string("0"), std::string("0g"),
                                    std::string(130, 'F'), std::string("0a ")}) {
        expectFailure(ErrorCode::BadName,
                      "\"" + name +
                          "\" is no volume name: it consists of an even number of "
                          "hexadecimal digits, from 2 to 128.",
                      [&] { checkVolumeName(name); });
    }
}

TEST(ElementName, IsTextForPeople) {
    EXPECT_NO_THROW(checkElementName(""));
    EXPECT_NO_THROW(checkElementName("Post f\xC3\xBCr alle"));
    EXPECT_NO_THROW(checkElementName(std::string(255, 'x')));
    for (const std::string& text :
         {std::string(256, 'x'), std::string("a\x1B[2J"), std::string("a\xC2\x9B"),
          std::string("a\x7F"), std::string("\xC3")}) {
        EXPECT_EQ(failureOf([&] { checkElementName(text); }).code, ErrorCode::BadText);
    }
    expectFailure(ErrorCode::BadText,
                  "\"a?\" is no element name: it has at most 255 bytes of UTF-8 and no control "
                  "characters.",
                  [] { checkElementName("a\n"); });
}

TEST(ArrayNames, AreNotEmpty) {
    EXPECT_NO_THROW(checkNames({"array1.example.com", "array1"}));
    expectFailure(ErrorCode::BadName,
                  "\"\" cannot be the array's host name: it has 1 to 255 bytes of UTF-8 and no "
                  "control characters.",
                  [] {
                      checkNames({"", "array1"});
                  });
    expectFailure(ErrorCode::BadName,
                  "\"a?\" cannot be the array's system name: it has 1 to 255 bytes of UTF-8 and no "
                  "control characters.",
                  [] {
                      checkNames({"host", "a\n"});
                  });
}

TEST(EndpointAddress, IsAnAddressAndAPort) {
    for (const char* address : {"192.0.2.10", "2001:db8::1", "::1"}) {
        EXPECT_NO_THROW(checkEndpoint({address, 3260})) << address;
    }
    for (const std::string& address :
         {std::string(), std::string("192.0.2"), std::string("array1.example.com"),
          std::string("192.0.2.10\0", 11)}) {
        EXPECT_EQ(failureOf([&] { checkEndpoint({address, 3260}); }).code, ErrorCode::BadName);
    }
    expectFailure(ErrorCode::BadName, "\"192.0.2.300\" is no IPv4 or IPv6 address.", [] {
        checkEndpoint({"192.0.2.300", 3260});
    });
    expectFailure(ErrorCode::BadName, "Port 0 of endpoint \"192.0.2.10\" is no TCP port.", [] {
        checkEndpoint({"192.0.2.10", 0});
    });
}

} // namespace
namespace {

TEST(Secret, HasAtMost255BytesAndNoControlCharacters) {
    EXPECT_NO_THROW(checkSecret("", "host1"));
    EXPECT_NO_THROW(checkSecret(std::string(255, 's'), "host1"));
    EXPECT_NO_THROW(checkSecret("p\xC3\xA4ssword", "host1"));
    expectFailure(ErrorCode::BadSecret,
                  "The secret of \"host1\" is refused: it has more than 255 bytes.",
                  [] { checkSecret(std::string(256, 's'), "host1"); });
    expectFailure(ErrorCode::BadSecret,
                  "The secret of \"host1\" is refused: it has control characters.",
                  [] { checkSecret("a secret\tof mine", "host1"); });
    expectFailure(ErrorCode::BadSecret, "The secret of \"host1\" is refused: it is not UTF-8.",
                  [] { checkSecret("a secret\xFF", "host1"); });
}

TEST(Secret, UnderTwelveBytesIsWeak) {
    EXPECT_FALSE(isWeakSecret(""));
    EXPECT_TRUE(isWeakSecret("x"));
    EXPECT_TRUE(isWeakSecret("12345678901"));
    EXPECT_FALSE(isWeakSecret("123456789012"));
}

} // namespace
} // namespace array
