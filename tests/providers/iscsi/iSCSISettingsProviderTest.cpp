#include "tests/providers/iscsi/iSCSISettingsTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using iSCSISettingsProviderTest = iSCSISettingsTest;

// getInstance

TEST_F(iSCSISettingsProviderTest, GetInstanceBuildsTheInstanceOfEachClass) {
    const struct {
        const char* className;
        const char* builder;
    } rows[] = {
        {"CIM_iSCSISessionSettings",
         "iSCSISessionSettingsInstance(CIM_iSCSISessionSettings, true, [ElementName], 0x0E000001)"},
        {"CIM_iSCSIConnectionSettings",
         "iSCSIConnectionSettingsInstance(CIM_iSCSIConnectionSettings"
         ", true, [ElementName], 0x0E000001)"},
        {"CIM_iSCSILoginStatistics",
         "iSCSILoginStatisticsInstance(true, [ElementName], 0x0E000001)"},
        {"CIM_iSCSISessionFailures",
         "iSCSISessionFailuresInstance(true, [ElementName], 0x0E000001)"},
        {"CIM_iSCSISessionStatistics",
         "iSCSISessionStatisticsInstance(true, [ElementName], 0x0E000001)"},
    };
    for (const auto& row : rows) {
        clearLog();
        getInstance(settings(row.className, TARGET));

        EXPECT_THAT(log(), ElementsAre("processing", row.builder,
                                       "deliver " + objectText(row.className, "InstanceID", TARGET),
                                       "complete"));
    }
}

TEST_F(iSCSISettingsProviderTest, GetInstanceOfMACStatisticsWritesALineAndPassesNoPropertyList) {
    getInstance(settings("Ovrin_MACStatistics", 0x09000001));

    EXPECT_THAT(
        log(), ElementsAre("processing", "trace gi: MACStatistics ",
                           "MACStatisticsInstance(true, 0x09000001)",
                           "deliver " + objectText("Ovrin_MACStatistics", "InstanceID", 0x09000001),
                           "complete"));
}

TEST_F(iSCSISettingsProviderTest, TheBuildersAddNoQualifiersUnlessAskedFor) {
    getInstance(sessionSettings(), false);
    getInstance(settings("CIM_iSCSILoginStatistics", TARGET), false);
    getInstance(settings("Ovrin_MACStatistics", 0x09000001), false);

    EXPECT_THAT(
        calls(),
        ElementsAre("iSCSISessionSettingsInstance(CIM_iSCSISessionSettings, false, [ElementName], "
                    "0x23000001)",
                    "iSCSILoginStatisticsInstance(false, [ElementName], 0x0E000001)",
                    "MACStatisticsInstance(false, 0x09000001)"));
}

TEST_F(iSCSISettingsProviderTest, TheClientsSpellingOfASettingsClassGoesToItsBuilder) {
    getInstance(settings("cim_ISCSIsessionsettings", SESSION_SETTINGS));
    getInstance(settings("cim_ISCSIconnectionsettings", CONNECTION_SETTINGS));

    EXPECT_THAT(calls(), ElementsAre("iSCSISessionSettingsInstance(cim_ISCSIsessionsettings, true, "
                                     "[ElementName], 0x23000001)",
                                     "iSCSIConnectionSettingsInstance(cim_ISCSIconnectionsettings, "
                                     "true, [ElementName], 0x22000001)"));
}

TEST_F(iSCSISettingsProviderTest, GetInstanceTakesTheFirstKeyWhateverItsName) {
    getInstance(
        requestPath("CIM_iSCSILoginStatistics", {{"Zone", "no id"}, {"Any", keyText(TARGET)}}));

    EXPECT_THAT(calls(),
                ElementsAre("iSCSILoginStatisticsInstance(true, [ElementName], 0x0E000001)"));
}

TEST_F(iSCSISettingsProviderTest, GetInstanceOfAnotherClassDeliversNothing) {
    getInstance(settings("CIM_iSCSISession", 0x11000001));

    EXPECT_THAT(log(), ElementsAre("processing", "complete"));
}

TEST_F(iSCSISettingsProviderTest, GetInstanceWithoutKeysIsOutOfBounds) {
    for (const char* className : {"CIM_iSCSISessionSettings", "CIM_Anything"}) {
        clearLog();
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] { getInstance(requestPath(className)); }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre("processing"));
    }
}

TEST_F(iSCSISettingsProviderTest, ABuildersFailureLeavesGetInstance) {
    failNext("MACStatisticsInstance", 6, "no such interface");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { getInstance(settings("Ovrin_MACStatistics", 0x09000001)); }),
              "no such interface");
    EXPECT_EQ(log().back(), "MACStatisticsInstance(true, 0x09000001)");
}

// modifyInstance: paths, classes, failures.

TEST_F(iSCSISettingsProviderTest, ModifyInstanceTakesTheFirstKeyAndTheClassInAnySpelling) {
    modify(requestPath("CIM_ISCSICONNECTIONSETTINGS", {{"Any", keyText(CONNECTION_SETTINGS)}}),
           CIMInstance(CONNECTION_CLASS));

    EXPECT_EQ(calls().at(0), "getObject(34, 0x22000001)");
}

TEST_F(iSCSISettingsProviderTest, ModifyInstanceGoesByThePathsClassNotTheInstances) {
    modify(sessionSettings(), with(CONNECTION_CLASS, "MaxConnectionsPerSession", Uint32(2)));

    DRAVSessionSettings expected;
    expected.objectID = SESSION_SETTINGS;
    expected.maxConnections = 2;
    EXPECT_EQ(log(), stored(35, expected));
}

TEST_F(iSCSISettingsProviderTest, ModifyInstanceOfAnotherClassChangesNothing) {
    modify(settings("CIM_iSCSILoginStatistics", TARGET), CIMInstance("CIM_iSCSILoginStatistics"));

    EXPECT_THAT(log(), ElementsAre("trace iSCSISettingsProvider::modifyInstance", "processing",
                                   "complete"));
}

TEST_F(iSCSISettingsProviderTest, ModifyInstanceWithoutKeysIsOutOfBounds) {
    for (const char* className : {"CIM_iSCSISessionSettings", "CIM_Anything"}) {
        clearLog();
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                      [&] { modify(requestPath(className), CIMInstance(SESSION_CLASS)); }),
                  "index out of bounds");
        EXPECT_THAT(log(),
                    ElementsAre("trace iSCSISettingsProvider::modifyInstance", "processing"));
    }
}

TEST_F(iSCSISettingsProviderTest, AKeyThatIsNoKeyTextNamesNothing) {
    const auto noKey = [](const char* className) {
        return requestPath(className, {{"InstanceID", "no id"}});
    };
    getInstance(noKey("CIM_iSCSISessionSettings"));
    EXPECT_THAT(calls(), ElementsAre("iSCSISessionSettingsInstance(CIM_iSCSISessionSettings, true, "
                                     "[ElementName], 0xFFFFFFFF)"));
    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [&] { modify(noKey("CIM_iSCSISessionSettings"), CIMInstance(SESSION_CLASS)); }),
              "no record Ovrin:FFFFFFFF");
}

TEST_F(iSCSISettingsProviderTest, AKeyThatIsNoKeyTextIsNoErrorOfAnotherClass) {
    const CIMObjectPath path = requestPath("CIM_Anything", {{"InstanceID", "no id"}});
    getInstance(path);
    modify(path, CIMInstance("CIM_Anything"));

    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSISettingsProviderTest, AnUnknownIdIsTheEnginesError) {
    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] {
                  modify(settings(SESSION_CLASS, 0x23000099), CIMInstance(SESSION_CLASS));
              }),
              "no record Ovrin:23000099");
    EXPECT_EQ(log().back(), "getObject(35, 0x23000099)");
}

TEST_F(iSCSISettingsProviderTest, WhatTheEngineRefusesIsItsErrorAndNotCompleted) {
    failNext("modifyObject", 9, "the first burst is longer than the burst");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] {
                  modify(sessionSettings(), with(SESSION_CLASS, "MaxDataBurstLength", Uint32(512)));
              }),
              "the first burst is longer than the burst");
    EXPECT_THAT(log(), testing::Not(testing::Contains("complete")));
}

TEST_F(iSCSISettingsProviderTest, NoEventIsPublished) {
    modify(sessionSettings(), CIMInstance(SESSION_CLASS));

    EXPECT_THAT(events(), IsEmpty());
}

} // namespace
