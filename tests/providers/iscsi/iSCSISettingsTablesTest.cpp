// The properties that modifyInstance takes over.

#include <functional>

#include "tests/providers/iscsi/iSCSISettingsTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;

namespace {

class iSCSISettingsTablesTest : public iSCSISettingsTest {
protected:
    // Whether the value is a type mismatch, after which nothing was stored.
    void expectMismatch(const CIMObjectPath& path, const char* property, const CIMValue& value) {
        clearLog();
        EXPECT_EQ(thrownBy<TypeMismatchException>([&] {
                      modify(path, with(path.getClassName(), property, value));
                  }).find("type mismatch"),
                  0u)
            << property << " of type " << text(value);
        ASSERT_EQ(log().size(), 3u);
        EXPECT_EQ(log()[2].find("getObject("), 0u);
    }
};

// Each property alone changes its field, and the others are stored as read.

TEST_F(iSCSISettingsTablesTest, EachSessionPropertyChangesItsField) {
    using Record = DRAVSessionSettings;
    const struct {
        const char* property;
        CIMValue value;
        Uint32 Record::*field;
        Uint32 expected;
    } rows[] = {
        {"MaxConnectionsPerSession", Uint32(101), &Record::maxConnections, 101},
        {"InitialR2TPreference", false, &Record::initialR2T, 0},
        {"ImmediateDataPreference", false, &Record::immediateData, 0},
        {"MaxOutstandingR2T", Uint32(102), &Record::maxOutstandingR2T, 102},
        {"MaxUnsolicitedFirstDataBurstLength", Uint32(103), &Record::firstBurstLength, 103},
        {"MaxDataBurstLength", Uint32(104), &Record::maxBurstLength, 104},
        {"DataSequenceInOrderPreference", false, &Record::dataSequenceInOrder, 0},
        {"DataPDUInOrderPreference", false, &Record::dataPDUInOrder, 0},
        {"DefaultTimeToWaitPreference", Uint32(105), &Record::defaultTime2Wait, 105},
        {"DefaultTimeToRetainPreference", Uint32(106), &Record::defaultTime2Retain, 106},
        {"ErrorRecoveryLevelPreference", Uint32(0xFFFFFFFF), &Record::errorRecoveryLevel,
         0xFFFFFFFF},
    };
    for (const auto& row : rows) {
        addRecord(SESSION_SETTINGS, DRAVSessionSettings());
        clearLog();
        modify(sessionSettings(), with(SESSION_CLASS, row.property, row.value));

        DRAVSessionSettings expected;
        expected.objectID = SESSION_SETTINGS;
        expected.*row.field = row.expected;
        EXPECT_EQ(log(), stored(35, expected)) << row.property;
    }
}

TEST_F(iSCSISettingsTablesTest, ATrueFlagIsStoredAsOne) {
    DRAVSessionSettings record;
    record.initialR2T = record.immediateData = 0;
    record.dataSequenceInOrder = record.dataPDUInOrder = 0;
    addRecord(SESSION_SETTINGS, record);
    CIMInstance modified(SESSION_CLASS);
    for (const char* property : {"DataPDUInOrderPreference", "DataSequenceInOrderPreference",
                                 "ImmediateDataPreference", "InitialR2TPreference"}) {
        modified.addProperty(CIMProperty(CIMName(property), CIMValue(true)));
    }
    modify(sessionSettings(), modified);

    DRAVSessionSettings expected;
    expected.objectID = SESSION_SETTINGS;
    EXPECT_EQ(log(), stored(35, expected));
}

// A change of one property, made to a record by hand.
struct ConnectionRow {
    const char* property;
    CIMValue value;
    std::function<void(DRAVConnectionSettings&)> change;
};

TEST_F(iSCSISettingsTablesTest, EachConnectionPropertyChangesItsField) {
    using Record = DRAVConnectionSettings;
    const ConnectionRow rows[] = {
        {"MaxReceiveDataSegmentLength", Uint32(512),
         [](Record& record) { record.maxRecvDataSegmentLength = 512; }},
        {"PrimaryHeaderDigestMethod", Uint16(2),
         [](Record& record) { record.primaryHeaderDigest = DRAV_DIGEST_NONE; }},
        {"PrimaryDataDigestMethod", Uint16(1),
         [](Record& record) { record.primaryDataDigest = DRAV_DIGEST_OTHER; }},
        {"SecondaryHeaderDigestMethod", Uint16(4),
         [](Record& record) { record.secondaryHeaderDigest = DRAV_DIGEST_NO_PREFERENCE; }},
        {"SecondaryDataDigestMethod", Uint16(3),
         [](Record& record) { record.secondaryDataDigest = DRAV_DIGEST_CRC32C; }},
        {"RequestingMarkersOnReceive", true, [](Record& record) { record.markersOnReceive = 1; }},
        {"PrimaryAuthenticationMethod", Uint16(3),
         [](Record& record) { record.primaryAuthMethod = DRAV_AUTH_NO_AUTHENTICATION; }},
        {"SecondaryAuthenticationMethod", Uint16(5),
         [](Record& record) { record.secondaryAuthMethod = DRAV_AUTH_CHAP; }},
    };
    for (const ConnectionRow& row : rows) {
        addRecord(CONNECTION_SETTINGS, DRAVConnectionSettings());
        clearLog();
        modify(connectionSettings(), with(CONNECTION_CLASS, row.property, row.value));

        DRAVConnectionSettings expected;
        expected.objectID = CONNECTION_SETTINGS;
        row.change(expected);
        EXPECT_EQ(log(), stored(34, expected)) << row.property;
    }
}

TEST_F(iSCSISettingsTablesTest, DigestsAndMethodsAreStoredAsTheEnginesCodes) {
    const struct {
        Uint16 given;
        Uint16 digest;
        Uint16 method;
    } rows[] = {{1, DRAV_DIGEST_OTHER, DRAV_AUTH_UNKNOWN},
                {2, DRAV_DIGEST_NONE, DRAV_AUTH_NONE},
                {3, DRAV_DIGEST_CRC32C, DRAV_AUTH_NO_AUTHENTICATION},
                {4, DRAV_DIGEST_NO_PREFERENCE, DRAV_AUTH_SRP},
                {5, DRAV_DIGEST_UNKNOWN, DRAV_AUTH_CHAP},
                {6, DRAV_DIGEST_UNKNOWN, DRAV_AUTH_KERBEROS},
                {7, DRAV_DIGEST_UNKNOWN, DRAV_AUTH_UNKNOWN},
                {0, DRAV_DIGEST_UNKNOWN, DRAV_AUTH_UNKNOWN}};
    for (const auto& row : rows) {
        CIMInstance modified(CONNECTION_CLASS);
        for (const char* property :
             {"PrimaryHeaderDigestMethod", "PrimaryDataDigestMethod", "SecondaryHeaderDigestMethod",
              "SecondaryDataDigestMethod", "PrimaryAuthenticationMethod",
              "SecondaryAuthenticationMethod"}) {
            modified.addProperty(CIMProperty(CIMName(property), CIMValue(row.given)));
        }
        clearLog();
        modify(connectionSettings(), modified);

        DRAVConnectionSettings expected;
        expected.objectID = CONNECTION_SETTINGS;
        expected.primaryHeaderDigest = expected.primaryDataDigest = row.digest;
        expected.secondaryHeaderDigest = expected.secondaryDataDigest = row.digest;
        expected.primaryAuthMethod = expected.secondaryAuthMethod = row.method;
        EXPECT_EQ(log(), stored(34, expected)) << row.given;
    }
}

// Values.

const char* const SESSION_NUMBERS[] = {
    "MaxConnectionsPerSession",           "MaxOutstandingR2T",
    "MaxUnsolicitedFirstDataBurstLength", "MaxDataBurstLength",
    "DefaultTimeToWaitPreference",        "DefaultTimeToRetainPreference",
    "ErrorRecoveryLevelPreference"};
const char* const SESSION_FLAGS[] = {"InitialR2TPreference", "ImmediateDataPreference",
                                     "DataSequenceInOrderPreference", "DataPDUInOrderPreference"};
const char* const CONNECTION_CODES[] = {
    "PrimaryHeaderDigestMethod", "PrimaryDataDigestMethod",     "SecondaryHeaderDigestMethod",
    "SecondaryDataDigestMethod", "PrimaryAuthenticationMethod", "SecondaryAuthenticationMethod"};

TEST_F(iSCSISettingsTablesTest, AValueOfAnotherTypeIsAMismatchAndNothingIsStored) {
    for (const char* property : SESSION_NUMBERS) {
        expectMismatch(sessionSettings(), property, Uint16(1));
        expectMismatch(sessionSettings(), property, Uint64(1));
        expectMismatch(sessionSettings(), property, Array<Uint32>(1, 1u));
    }
    for (const char* property : SESSION_FLAGS) {
        expectMismatch(sessionSettings(), property, Uint32(1));
        expectMismatch(sessionSettings(), property, String("TRUE"));
    }
    expectMismatch(connectionSettings(), "MaxReceiveDataSegmentLength", Uint16(512));
    expectMismatch(connectionSettings(), "RequestingMarkersOnReceive", Uint32(1));
    for (const char* property : CONNECTION_CODES) {
        expectMismatch(connectionSettings(), property, Uint32(2));
        expectMismatch(connectionSettings(), property, true);
    }
}

TEST_F(iSCSISettingsTablesTest, AMismatchLosesTheOtherPropertiesToo) {
    CIMInstance modified = with(SESSION_CLASS, "MaxConnectionsPerSession", Uint32(4));
    modified.addProperty(CIMProperty("ErrorRecoveryLevelPreference", CIMValue(String("two"))));

    EXPECT_EQ(thrownBy<TypeMismatchException>([&] {
                  modify(sessionSettings(), modified);
              }).find("type mismatch"),
              0u);
    EXPECT_THAT(log(), ElementsAre("trace iSCSISettingsProvider::modifyInstance", "processing",
                                   "getObject(35, 0x23000001)"));
}

TEST_F(iSCSISettingsTablesTest, ANullValueLeavesItsField) {
    CIMInstance session(SESSION_CLASS);
    for (const char* property : SESSION_NUMBERS) {
        session.addProperty(CIMProperty(CIMName(property), CIMValue(CIMTYPE_UINT32, false)));
    }
    for (const char* property : SESSION_FLAGS) {
        session.addProperty(CIMProperty(CIMName(property), CIMValue(CIMTYPE_BOOLEAN, false)));
    }
    DRAVSessionSettings readSession;
    readSession.maxConnections = 7;
    readSession.dataPDUInOrder = 0;
    addRecord(SESSION_SETTINGS, readSession);
    modify(sessionSettings(), session);
    readSession.objectID = SESSION_SETTINGS;
    EXPECT_EQ(log(), stored(35, readSession));

    CIMInstance connection(CONNECTION_CLASS);
    connection.addProperty(
        CIMProperty("MaxReceiveDataSegmentLength", CIMValue(CIMTYPE_UINT32, false)));
    for (const char* property : CONNECTION_CODES) {
        connection.addProperty(CIMProperty(CIMName(property), CIMValue(CIMTYPE_UINT16, false)));
    }
    clearLog();
    modify(connectionSettings(), connection);
    DRAVConnectionSettings readConnection;
    readConnection.objectID = CONNECTION_SETTINGS;
    EXPECT_EQ(log(), stored(34, readConnection));
}

TEST_F(iSCSISettingsTablesTest, ANullValueOfAnotherTypeIsAMismatch) {
    expectMismatch(sessionSettings(), "MaxDataBurstLength", CIMValue(CIMTYPE_STRING, false));
    expectMismatch(connectionSettings(), "PrimaryDataDigestMethod",
                   CIMValue(CIMTYPE_UINT32, false));
}

TEST_F(iSCSISettingsTablesTest, PropertiesAreFoundByNameInAnyOrderAndOthersAreIgnored) {
    CIMInstance modified(SESSION_CLASS);
    modified.addProperty(CIMProperty("errorrecoverylevelPREFERENCE", CIMValue(Uint32(2))));
    modified.addProperty(CIMProperty("InstanceID", CIMValue(String("another"))));
    modified.addProperty(CIMProperty("MaxConnectionsPerSession", CIMValue(Uint32(4))));
    modify(sessionSettings(), modified);

    DRAVSessionSettings expected;
    expected.objectID = SESSION_SETTINGS;
    expected.maxConnections = 4;
    expected.errorRecoveryLevel = 2;
    EXPECT_EQ(log(), stored(35, expected));
}

TEST_F(iSCSISettingsTablesTest, ThePropertyListIsNotConsulted) {
    Array<CIMName> names;
    names.append(CIMName("MaxConnectionsPerSession"));
    provider.modifyInstance(context, sessionSettings(),
                            with(SESSION_CLASS, "MaxDataBurstLength", Uint32(1024)), true,
                            CIMPropertyList(names), response);

    DRAVSessionSettings expected;
    expected.objectID = SESSION_SETTINGS;
    expected.maxBurstLength = 1024;
    EXPECT_EQ(log(), stored(35, expected));
}

TEST_F(iSCSISettingsTablesTest, AnInstanceWithoutPropertiesIsStoredAsRead) {
    modify(sessionSettings(), CIMInstance(SESSION_CLASS));

    DRAVSessionSettings expected;
    expected.objectID = SESSION_SETTINGS;
    EXPECT_EQ(log(), stored(35, expected));
}

} // namespace
