#include "array/description/Reader.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include "tests/array/description/RecordingReceiver.h"

using array::description::DescriptionError;
using array::description::read;
using testing::ElementsAre;

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream input(text);
    RecordingReceiver receiver;
    read(input, receiver);
    return receiver.lines;
}

std::string errorOf(const std::string& text) {
    try {
        linesOf(text);
    } catch (const DescriptionError& error) {
        return error.what();
    }
    return "no error";
}

// A description with these members beside the two that it must have.
std::string document(const std::string& members) {
    return R"({ "host": "h", "system": "s", )" + members + "}";
}

TEST(DescriptionReader, GivesEachEntryInTheOrderOfTheFile) {
    EXPECT_THAT(linesOf(document(R"(
        "endpoints": [ { "address": "192.0.2.10", "port": 3260 } ],
        "volumes": [ { "name": "6002", "elementName": "b", "size": 2 },
                     { "name": "6001", "elementName": "a", "size": 18446744073709551615 } ],
        "targets": [ { "name": "iqn.t", "secret": "ts" } ],
        "initiators": [ { "name": "iqn.i", "secret": "is" } ],
        "grants": [ { "target": "iqn.t", "initiator": "iqn.i" } ],
        "logicalUnits": [ { "target": "iqn.t", "volume": "6001", "lun": 7, "access": "ro" } ],
        "sessions": [ { "target": "iqn.t", "initiator": "iqn.i",
                        "connections": [ { "endpoint": 0 }, { "endpoint": 1 } ] } ])")),
                ElementsAre("host h", "system s", "endpoint 192.0.2.10 3260", "volume 6002 b 2",
                            "volume 6001 a 18446744073709551615", "target iqn.t ts",
                            "initiator iqn.i is", "grant iqn.t iqn.i", "unit iqn.t 6001 7 ro",
                            "session iqn.t iqn.i 0 1"));
}

TEST(DescriptionReader, GivesSectionsThatStandEarlyAfterThoseTheyReferTo) {
    EXPECT_THAT(linesOf(R"({
        "sessions": [ { "target": "t", "initiator": "i", "connections": [] } ],
        "grants": [ { "target": "t", "initiator": "i" }, { "target": "t", "initiator": "j" } ],
        "system": "s",
        "initiators": [ { "name": "i" }, { "name": "j" } ],
        "host": "h",
        "targets": [ { "name": "t" } ] })"),
                ElementsAre("system s", "initiator i ", "initiator j ", "host h", "target t ",
                            "grant t i", "grant t j", "session t i"));
}

TEST(DescriptionReader, TakesAbsentListsAsEmptyAndAbsentTextsOfAnEntryAsEmpty) {
    EXPECT_THAT(linesOf(R"({ "host": "h", "system": "s" })"), ElementsAre("host h", "system s"));
    EXPECT_THAT(linesOf(document(R"("targets": [ { "name": "t" } ])")),
                ElementsAre("host h", "system s", "target t "));
    EXPECT_THAT(linesOf(document(R"("volumes": [ { "name": "v", "size": 1 } ])")),
                ElementsAre("host h", "system s", "volume v  1"));
}

TEST(DescriptionReader, CallsBackAfterEachEntry) {
    std::istringstream input(document(R"("targets": [ { "name": "t" }, { "name": "u" } ],
                                         "initiators": [ { "name": "i" } ])"));
    RecordingReceiver receiver;
    int calls = 0;
    read(input, receiver, [&] { ++calls; });
    EXPECT_EQ(calls, 3);
}

TEST(DescriptionReader, PutsThePointerBeforeTheReceiversRefusal) {
    for (const char* text : {R"("initiators": [ { "name": "i" } ], "targets": [ { "name": "t" } ],
                                "grants": [ { "target": "t", "initiator": "i" },
                                            { "target": "t", "initiator": "j" } ])",
                             R"("grants": [ { "target": "t", "initiator": "i" },
                                            { "target": "t", "initiator": "j" } ],
                                "initiators": [ { "name": "i" } ], "targets": [ { "name": "t" } ])"}) {
        std::istringstream input(document(text));
        RecordingReceiver receiver;
        receiver.refused = "grant t j";
        try {
            read(input, receiver);
            ADD_FAILURE() << "no error";
        } catch (const DescriptionError& error) {
            EXPECT_STREQ(error.what(), "/grants/1/name: no room for it");
        }
    }
}

TEST(DescriptionReader, PutsThePointerBeforeTheReceiversRefusalOfAName) {
    std::istringstream input(R"({ "host": "h", "system": "s" })");
    RecordingReceiver receiver;
    receiver.refused = "system s";
    try {
        read(input, receiver);
        ADD_FAILURE() << "no error";
    } catch (const DescriptionError& error) {
        EXPECT_STREQ(error.what(), "/system/name: no room for it");
    }
}

struct Mistake {
    const char* name;
    std::string text;
    const char* message;
};

class DescriptionMistake : public testing::TestWithParam<Mistake> {};

TEST_P(DescriptionMistake, IsRefusedWithItsPointer) {
    EXPECT_EQ(errorOf(GetParam().text), GetParam().message);
}

const Mistake mistakes[] = {
    Mistake{"UnknownMemberOfTheDocument", document(R"("volume": [])"),
            "/volume: this member is unknown"},
    Mistake{"UnknownMemberOfAnEntry",
            document(R"("volumes": [ { "name": "v", "size": 1 }, { "sise": 1 } ])"),
            "/volumes/1/sise: this member is unknown"},
    Mistake{"UnknownMemberOfAConnection",
            document(R"("sessions": [ { "target": "t", "initiator": "i", "connections":
                            [ { "endpoint": 0 }, { "port": 1 } ] } ])"),
            "/sessions/0/connections/1/port: this member is unknown"},
    Mistake{"UnknownMemberIsEscaped", document(R"("a/b~c": 1)"),
            "/a~1b~0c: this member is unknown"},
    Mistake{"MissingHost", R"({ "system": "s" })", "\"host\" is missing"},
    Mistake{"MissingSystem", R"({ "host": "h" })", "\"system\" is missing"},
    Mistake{"MissingMemberOfAnEntry", document(R"("volumes": [ { "name": "v" } ])"),
            "/volumes/0: \"size\" is missing"},
    Mistake{"MissingMemberOfAConnection", document(R"("sessions": [ { "connections": [ {} ] } ])"),
            "/sessions/0/connections/0: \"endpoint\" is missing"},
    Mistake{"MemberTwice", document(R"("targets": [ { "name": "t", "name": "u" } ])"),
            "/targets/0/name: this member stands twice"},
    Mistake{"SectionTwice", document(R"("targets": [], "volumes": [], "targets": [])"),
            "/targets: this member stands twice"},
    Mistake{"HostIsNoText", R"({ "host": 1 })", "/host: a string is expected here, not a number"},
    Mistake{"SectionIsNoList", document(R"("volumes": {})"),
            "/volumes: a list is expected here, not an object"},
    Mistake{"SectionIsAText", document(R"("volumes": "none")"),
            "/volumes: a list is expected here, not a string"},
    Mistake{"EntryIsNoObject", document(R"("volumes": [ "v" ])"),
            "/volumes/0: an object is expected here, not a string"},
    Mistake{"EntryIsAList", document(R"("volumes": [ [] ])"),
            "/volumes/0: an object is expected here, not a list"},
    Mistake{"EntryIsANumber", document(R"("volumes": [ 5 ])"),
            "/volumes/0: an object is expected here, not a number"},
    Mistake{"NameIsNull", document(R"("targets": [ { "name": null } ])"),
            "/targets/0/name: a string is expected here, not null"},
    Mistake{"NameIsAnObject", document(R"("targets": [ { "name": {} } ])"),
            "/targets/0/name: a string is expected here, not an object"},
    Mistake{"NameIsAList", document(R"("targets": [ { "name": [] } ])"),
            "/targets/0/name: a string is expected here, not a list"},
    Mistake{"SecretIsANumberAndIsNotShown", document(R"("targets": [ { "secret": 4711 } ])"),
            "/targets/0/secret: a string is expected here, not a number"},
    Mistake{"SizeIsAText", document(R"("volumes": [ { "size": "1GiB" } ])"),
            "/volumes/0/size: a whole number from 0 to 18446744073709551615 is expected here, "
            "not a string"},
    Mistake{"SizeIsTrue", document(R"("volumes": [ { "size": true } ])"),
            "/volumes/0/size: a whole number from 0 to 18446744073709551615 is expected here, "
            "not true"},
    Mistake{"SizeIsNegative", document(R"("volumes": [ { "size": -1 } ])"),
            "/volumes/0/size: a whole number from 0 to 18446744073709551615 is expected here, "
            "not -1"},
    Mistake{"SizeIsAFraction", document(R"("volumes": [ { "size": 1.5 } ])"),
            "/volumes/0/size: a whole number from 0 to 18446744073709551615 is expected here, "
            "not 1.5"},
    Mistake{"SizeIsTooGreat", document(R"("volumes": [ { "size": 18446744073709551616 } ])"),
            "/volumes/0/size: a whole number from 0 to 18446744073709551615 is expected here, "
            "not 18446744073709551616"},
    Mistake{"PortIsTooGreat", document(R"("endpoints": [ { "port": 65536 } ])"),
            "/endpoints/0/port: a whole number from 0 to 65535 is expected here, not 65536"},
    Mistake{"LunIsTooGreat", document(R"("logicalUnits": [ { "lun": 4294967296 } ])"),
            "/logicalUnits/0/lun: a whole number from 0 to 4294967295 is expected here, "
            "not 4294967296"},
    Mistake{"DocumentIsAList", "[]", "an object is expected here, not a list"},
    Mistake{"DocumentIsAText", "\"array\"", "an object is expected here, not a string"},
    Mistake{"DocumentIsNull", "null", "an object is expected here, not null"},
    Mistake{"NothingThere", "",
            "parse error at line 1, column 1: syntax error while parsing value - unexpected end "
            "of input; expected '[', '{', or a literal"},
    Mistake{"EndsInTheMiddle", R"({ "host": "h",)",
            "parse error at line 1, column 15: syntax error while parsing object key - "
            "unexpected end of input; expected string literal"},
    Mistake{"SomethingFollows", R"({ "host": "h", "system": "s" } {)",
            "parse error at line 1, column 32: syntax error while parsing value - unexpected "
            "'{'; expected end of input"},
    Mistake{"BadSyntaxDoesNotShowASecret",
            document("\n\"targets\": [ { \"secret\": \"pass\tword\" } ]"),
            "parse error at line 2, column 31: syntax error while parsing value - invalid "
            "string: control character U+0009 (HT) must be escaped to \\u0009 or \\t"},
    Mistake{"NoUtf8", document("\"targets\": [ { \"name\": \"\xff\" } ]"),
            "parse error at line 1, column 55: syntax error while parsing value - invalid "
            "string: ill-formed UTF-8 byte"},
};

INSTANTIATE_TEST_SUITE_P(Reader, DescriptionMistake, testing::ValuesIn(mistakes),
                         [](const auto& test) { return test.param.name; });

TEST(DescriptionReader, RefusesNumbersOutOfAnyRange) {
    EXPECT_THAT(errorOf(document(R"("volumes": [ { "size": 1e999 } ])")),
                testing::HasSubstr("number overflow"));
}

TEST(DescriptionReader, ReportsAMistakeAtTheEndOfALongList) {
    std::string volumes;
    for (int i = 0; i < 5000; ++i) {
        volumes += R"({ "name": "v", "size": 1 },)";
    }
    EXPECT_EQ(errorOf(document("\"volumes\": [" + volumes + "{ \"name\": \"v\" }]")),
              "/volumes/5000: \"size\" is missing");
}

TEST(DescriptionReader, SaysWhyTheTextCannotBeRead) {
    std::ifstream input("/");
    RecordingReceiver receiver;
    try {
        read(input, receiver);
        ADD_FAILURE() << "no error";
    } catch (const DescriptionError& error) {
        EXPECT_STREQ(error.what(), "reading failed: Is a directory");
    }
}

} // namespace
