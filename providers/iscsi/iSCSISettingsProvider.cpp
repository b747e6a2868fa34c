#include "providers/iscsi/iSCSISettingsProvider.h"

#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVSessionSettings.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "engine/builders/Builders.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Requests.h"

namespace Pegasus {

namespace {

// What getInstance builds, by class; the first row that matches.

struct Built {
    const CIMName& className;
    CIMInstance (*build)(const CIMName&, Boolean, const CIMPropertyList&, Uint32);
};

template<class Builder>
CIMInstance buildOfClass(const CIMName& className, Boolean includeQualifiers,
                         const CIMPropertyList& propertyList, Uint32 id) {
    return Builder(className, includeQualifiers, propertyList, id);
}

template<class Builder>
CIMInstance build(const CIMName&, Boolean includeQualifiers, const CIMPropertyList& propertyList,
                  Uint32 id) {
    return Builder(includeQualifiers, propertyList, id);
}

CIMInstance buildMACStatistics(const CIMName&, Boolean includeQualifiers, const CIMPropertyList&,
                               Uint32 id) {
    trace("gi: MACStatistics ");
    return MACStatisticsInstance(includeQualifiers, id);
}

const Built builders[] = {
    {CLASS_iSCSISessionSettings, buildOfClass<iSCSISessionSettingsInstance>},
    {CLASS_iSCSIConnectionSettings, buildOfClass<iSCSIConnectionSettingsInstance>},
    {CLASS_iSCSILoginStatistics, build<iSCSILoginStatisticsInstance>},
    {CLASS_iSCSISessionFailures, build<iSCSISessionFailuresInstance>},
    {CLASS_iSCSISessionStatistics, build<iSCSISessionStatisticsInstance>},
    {CLASS_Ovrin_MACStatistics, buildMACStatistics},
};

// What modifyInstance takes over, in this order.

template<class Record>
struct Setting {
    CIMName property;
    void (*take)(const CIMValue& value, Record& record);
};

// Stores a value in a field; a null value leaves the field as it is. A value of another CIM type
// throws TypeMismatchException.
template<class CIMType, auto field, class Record>
void take(const CIMValue& value, Record& record) {
    CIMType given{};
    value.get(given);
    if (!value.isNull()) {
        record.*field = given;
    }
}

// The same through one of the engine's converters.
template<class Converter, auto field, class Record>
void convert(const CIMValue& value, Record& record) {
    Uint16 given = 0;
    value.get(given);
    if (!value.isNull()) {
        record.*field = Converter(given).code;
    }
}

using Session = DRAVSessionSettings;

const Setting<Session> sessionSettings[] = {
    {"MaxConnectionsPerSession", take<Uint32, &Session::maxConnections>},
    {"InitialR2TPreference", take<Boolean, &Session::initialR2T>},
    {"ImmediateDataPreference", take<Boolean, &Session::immediateData>},
    {"MaxOutstandingR2T", take<Uint32, &Session::maxOutstandingR2T>},
    {"MaxUnsolicitedFirstDataBurstLength", take<Uint32, &Session::firstBurstLength>},
    {"MaxDataBurstLength", take<Uint32, &Session::maxBurstLength>},
    {"DataSequenceInOrderPreference", take<Boolean, &Session::dataSequenceInOrder>},
    {"DataPDUInOrderPreference", take<Boolean, &Session::dataPDUInOrder>},
    {"DefaultTimeToWaitPreference", take<Uint32, &Session::defaultTime2Wait>},
    {"DefaultTimeToRetainPreference", take<Uint32, &Session::defaultTime2Retain>},
    {"ErrorRecoveryLevelPreference", take<Uint32, &Session::errorRecoveryLevel>},
};

using Connection = DRAVConnectionSettings;
using Digest = DRAVDigestFromSMI;
using Auth = DRAVAuthSettingFromSMI;

const Setting<Connection> connectionSettings[] = {
    {"MaxReceiveDataSegmentLength", take<Uint32, &Connection::maxRecvDataSegmentLength>},
    {"PrimaryHeaderDigestMethod", convert<Digest, &Connection::primaryHeaderDigest>},
    {"PrimaryDataDigestMethod", convert<Digest, &Connection::primaryDataDigest>},
    {"SecondaryHeaderDigestMethod", convert<Digest, &Connection::secondaryHeaderDigest>},
    {"SecondaryDataDigestMethod", convert<Digest, &Connection::secondaryDataDigest>},
    {"RequestingMarkersOnReceive", take<Boolean, &Connection::markersOnReceive>},
    {"PrimaryAuthenticationMethod", convert<Auth, &Connection::primaryAuthMethod>},
    {"SecondaryAuthenticationMethod", convert<Auth, &Connection::secondaryAuthMethod>},
};

template<class Record, size_t count>
void modify(DRAVEngine& engine, CLASSID_e objectClass, Uint32 id,
            const Setting<Record> (&settings)[count], const CIMInstance& modified) {
    const EngineRecord<Record> record(engine, objectClass, id);
    for (const Setting<Record>& setting : settings) {
        const Uint32 position = modified.findProperty(setting.property);
        if (position != PEG_NOT_FOUND) {
            setting.take(modified.getProperty(position).getValue(), *record);
        }
    }
    engine.modifyObject(objectClass, *record);
}

} // namespace

void iSCSISettingsProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void iSCSISettingsProvider::getInstance(const OperationContext&, const CIMObjectPath& path,
                                        const Boolean includeQualifiers, const Boolean,
                                        const CIMPropertyList& propertyList,
                                        InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const CIMName& className = path.getClassName();
    const Uint32 id = idFromFirstKey(path);
    for (const Built& row : builders) {
        if (row.className == className) {
            handler.deliver(row.build(className, includeQualifiers, propertyList, id));
            break;
        }
    }
    handler.complete();
}

void iSCSISettingsProvider::enumerateInstances(const OperationContext&, const CIMObjectPath&,
                                               const Boolean, const Boolean, const CIMPropertyList&,
                                               InstanceResponseHandler&) {
    // Wanted: see docs/contract.md, An operation that does nothing.
}

void iSCSISettingsProvider::modifyInstance(const OperationContext&, const CIMObjectPath& path,
                                           const CIMInstance& modifiedInstance, const Boolean,
                                           const CIMPropertyList&, ResponseHandler& handler) {
    const OperationScope operation;
    trace("iSCSISettingsProvider::modifyInstance");
    const CIMName& className = path.getClassName();
    handler.processing();
    const Uint32 id = idFromFirstKey(path);
    if (className == CLASS_iSCSISessionSettings) {
        modify(*_engine, CLASSID_SESSION_SETTINGS, id, sessionSettings, modifiedInstance);
    }
    if (className == CLASS_iSCSIConnectionSettings) {
        modify(*_engine, CLASSID_CONNECTION_SETTINGS, id, connectionSettings, modifiedInstance);
    }
    handler.complete();
}

} // namespace Pegasus
