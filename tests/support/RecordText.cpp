#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVLogicalUnit.h"
#include "engine/DRAVSessionSettings.h"
#include "engine/DRAVTarget.h"
#include "engine/DRAVVolume.h"
#include "tests/support/Text.h"

using namespace Pegasus;

namespace scripted {

namespace {

// "Class{0x0D000001, name="...", ...}"
class Fields {
public:
    Fields(const char* className, const ManagedObject& record)
        : _text(std::string(className) + "{") {
        if (record.objectID != 0) {
            append(idText(record.objectID));
        }
    }

    Fields& add(const char* name, const String& value) { return append(name, quoted(value)); }
    Fields& add(const char* name, Uint64 value) { return append(name, std::to_string(value)); }
    Fields& addId(const char* name, Uint32 id) { return append(name, idText(id)); }

    operator std::string() const { return _text + "}"; }

private:
    Fields& append(const char* name, const std::string& value) {
        return append(std::string(name) + "=" + value);
    }

    Fields& append(const std::string& field) {
        _text += (_text.back() == '{' ? "" : ", ") + field;
        return *this;
    }

    std::string _text;
};

std::string describe(const DRAVInitiator& record) {
    return Fields("DRAVInitiator", record).add("name", record.name).add("secret", record.secret);
}

std::string describe(const DRAVTarget& record) {
    return Fields("DRAVTarget", record)
        .add("name", record.name)
        .add("sessionPresence", record.sessionPresence)
        .add("secret", record.secret);
}

std::string describe(const DRAVLogicalUnit& record) {
    return Fields("DRAVLogicalUnit", record)
        .addId("targetID", record.targetID)
        .add("lun", record.lun)
        .add("readOnly", record.readOnly)
        .addId("volumeID", record.volumeID)
        .add("volumeName", record.volumeName);
}

std::string describe(const DRAVVolume& record) {
    return Fields("DRAVVolume", record)
        .add("name", record.name)
        .add("state", record.state)
        .add("elementName", record.elementName)
        .add("size", record.size);
}

std::string describe(const DRAVSessionSettings& record) {
    return Fields("DRAVSessionSettings", record)
        .add("maxConnections", record.maxConnections)
        .add("initialR2T", record.initialR2T)
        .add("immediateData", record.immediateData)
        .add("maxOutstandingR2T", record.maxOutstandingR2T)
        .add("firstBurstLength", record.firstBurstLength)
        .add("maxBurstLength", record.maxBurstLength)
        .add("dataSequenceInOrder", record.dataSequenceInOrder)
        .add("dataPDUInOrder", record.dataPDUInOrder)
        .add("defaultTime2Wait", record.defaultTime2Wait)
        .add("defaultTime2Retain", record.defaultTime2Retain)
        .add("errorRecoveryLevel", record.errorRecoveryLevel);
}

std::string describe(const DRAVConnectionSettings& record) {
    return Fields("DRAVConnectionSettings", record)
        .add("maxRecvDataSegmentLength", record.maxRecvDataSegmentLength)
        .add("primaryHeaderDigest", record.primaryHeaderDigest)
        .add("primaryDataDigest", record.primaryDataDigest)
        .add("secondaryHeaderDigest", record.secondaryHeaderDigest)
        .add("secondaryDataDigest", record.secondaryDataDigest)
        .add("markersOnReceive", record.markersOnReceive)
        .add("primaryAuthMethod", record.primaryAuthMethod)
        .add("secondaryAuthMethod", record.secondaryAuthMethod);
}

// The text of a record of one of these classes.
template<class... Records>
std::string describeAsOneOf(const ManagedObject& record) {
    std::string result = "ManagedObject of an unknown class";
    const auto describeAs = [&]<class Record>(const Record* known) {
        if (known) {
            result = describe(*known);
        }
    };
    (describeAs(dynamic_cast<const Records*>(&record)), ...);
    return result;
}

} // namespace

std::string recordText(const ManagedObject& record) {
    return describeAsOneOf<DRAVInitiator, DRAVTarget, DRAVLogicalUnit, DRAVVolume,
                           DRAVSessionSettings, DRAVConnectionSettings>(record);
}

} // namespace scripted
