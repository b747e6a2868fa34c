#pragma once

#include <string>
#include <vector>

#include "providers/iscsi/iSCSISettingsProvider.h"
#include "tests/support/ProviderTest.h"

namespace scripted {

using namespace Pegasus;

constexpr Uint32 SESSION_SETTINGS = 0x23000001;
constexpr Uint32 CONNECTION_SETTINGS = 0x22000001;
constexpr Uint32 TARGET = 0x0E000001;

inline const CIMName SESSION_CLASS("CIM_iSCSISessionSettings");
inline const CIMName CONNECTION_CLASS("CIM_iSCSIConnectionSettings");

class iSCSISettingsTest : public ProviderTest<iSCSISettingsProvider> {
protected:
    iSCSISettingsTest() {
        addRecord(SESSION_SETTINGS, DRAVSessionSettings());
        addRecord(CONNECTION_SETTINGS, DRAVConnectionSettings());
    }

    static CIMObjectPath settings(const CIMName& className, Uint32 id) {
        return requestPath(className, {{"InstanceID", keyText(id)}});
    }

    static CIMObjectPath sessionSettings() { return settings(SESSION_CLASS, SESSION_SETTINGS); }
    static CIMObjectPath connectionSettings() {
        return settings(CONNECTION_CLASS, CONNECTION_SETTINGS);
    }

    void getInstance(const CIMObjectPath& path, bool includeQualifiers = true) {
        Array<CIMName> names;
        names.append(CIMName("ElementName"));
        provider.getInstance(context, path, includeQualifiers, false, CIMPropertyList(names),
                             instances);
    }

    static CIMInstance with(const CIMName& className, const char* property, const CIMValue& value) {
        CIMInstance instance(className);
        instance.addProperty(CIMProperty(CIMName(property), value));
        return instance;
    }

    void modify(const CIMObjectPath& path, const CIMInstance& modified) {
        provider.modifyInstance(context, path, modified, false, CIMPropertyList(), response);
    }

    // The log of a change that was stored.
    static std::vector<std::string> stored(int objectClass, const ManagedObject& record) {
        const std::string number = std::to_string(objectClass);
        return {"trace iSCSISettingsProvider::modifyInstance", "processing",
                "getObject(" + number + ", " + idText(record.objectID) + ")",
                "modifyObject(" + number + ", " + recordText(record) + ")", "complete"};
    }

    InstanceHandler instances;
    PlainHandler response;
};

} // namespace scripted
