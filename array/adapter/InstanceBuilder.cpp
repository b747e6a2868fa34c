#include "array/adapter/InstanceBuilder.h"

#include <cstdio>
#include <ctime>
#include <vector>

#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/String.h>

#include "array/adapter/CimNames.h"
#include "engine/DRAVCodes.h"

namespace array {

using Pegasus::Array;
using Pegasus::CIMKeyBinding;
using Pegasus::CIMName;
using Pegasus::CIMObjectPath;
using Pegasus::CIMProperty;
using Pegasus::CIMPropertyList;
using Pegasus::CIMQualifier;
using Pegasus::CIMValue;
using Pegasus::Uint16;
using Pegasus::Uint32;

namespace {

// The number of CIM's value map for one of the engine's codes. The engine's converters know each
// pair, and the value maps are short. A code that they don't know, which the rules keep out of the
// array, gives 1: "Other" of the digests.
template<class FromSMI>
Uint16 smiFrom(Uint16 code) {
    constexpr Uint16 lastOfTheMaps = 6;
    for (Uint16 smi = 1; smi <= lastOfTheMaps; ++smi) {
        if (FromSMI(smi).code == code) {
            return smi;
        }
    }
    return 1;
}

CIMValue parameterValue(ParameterValues::Kind kind, std::uint32_t value) {
    switch (kind) {
    case ParameterValues::Kind::Flag:
        return CIMValue(static_cast<Pegasus::Boolean>(value != 0));
    case ParameterValues::Kind::Digest:
        return CIMValue(smiFrom<Pegasus::DRAVDigestFromSMI>(static_cast<Uint16>(value)));
    case ParameterValues::Kind::AuthMethod:
        return CIMValue(smiFrom<Pegasus::DRAVAuthSettingFromSMI>(static_cast<Uint16>(value)));
    case ParameterValues::Kind::Number:
        break;
    }
    return CIMValue(Uint32{value});
}

// The properties of one kind of parameters, in the order of their table; null: there is none.
struct ParameterNames {
    std::vector<CIMName> proposed, agreed;
};

template<class Parameters>
const ParameterNames& parameterNames() {
    static const ParameterNames names = [] {
        ParameterNames made;
        forEachLoginParameter<Parameters>([&](const auto& row) {
            made.proposed.emplace_back(row.proposed);
            made.agreed.push_back(row.agreed ? CIMName(row.agreed) : CIMName());
        });
        return made;
    }();
    return names;
}

template<class Parameters>
void addParameters(InstanceBuilder& builder, const std::vector<CIMName>& names,
                   const Parameters& parameters) {
    auto name = names.begin();
    forEachLoginParameter<Parameters>([&](const auto& row) {
        if (!name->isNull()) {
            builder.property(*name, parameterValue(row.values.kind, parameters.*row.field));
        }
        ++name;
    });
}

} // namespace

Pegasus::CIMDateTime dateTime(std::uint64_t microseconds) {
    const std::time_t seconds = static_cast<std::time_t>(microseconds / 1000000);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char digits[32];
    char text[48];
    std::strftime(digits, sizeof digits, "%Y%m%d%H%M%S", &utc);
    std::snprintf(text, sizeof text, "%s.%06u+000", digits,
                  static_cast<unsigned>(microseconds % 1000000));
    return Pegasus::CIMDateTime(Pegasus::String(text));
}

InstanceBuilder::InstanceBuilder(const CIMObjectPath& path, bool includeQualifiers,
                                 const CIMPropertyList& propertyList)
    : _instance(path.getClassName()), _includeQualifiers(includeQualifiers),
      _propertyList(propertyList) {
    _instance.setPath(path);
    const Array<CIMKeyBinding> keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        if (keys[i].getType() == CIMKeyBinding::STRING) {
            addKey(CIMProperty(keys[i].getName(), CIMValue(keys[i].getValue())));
        }
    }
}

InstanceBuilder& InstanceBuilder::reference(const CIMName& name, const CIMObjectPath& end) {
    addKey(CIMProperty(name, CIMValue(end), 0, end.getClassName(), _instance.getClassName()));
    return *this;
}

InstanceBuilder& InstanceBuilder::property(const CIMName& name, const CIMValue& value) {
    if (wanted(name)) {
        _instance.addProperty(CIMProperty(name, value));
    }
    return *this;
}

InstanceBuilder& InstanceBuilder::proposed(const SessionParameters& parameters) {
    addParameters(*this, parameterNames<SessionParameters>().proposed, parameters);
    return *this;
}

InstanceBuilder& InstanceBuilder::proposed(const ConnectionParameters& parameters) {
    addParameters(*this, parameterNames<ConnectionParameters>().proposed, parameters);
    return *this;
}

InstanceBuilder& InstanceBuilder::agreed(const SessionParameters& parameters) {
    addParameters(*this, parameterNames<SessionParameters>().agreed, parameters);
    return *this;
}

InstanceBuilder& InstanceBuilder::agreed(const ConnectionParameters& parameters) {
    addParameters(*this, parameterNames<ConnectionParameters>().agreed, parameters);
    return *this;
}

InstanceBuilder& InstanceBuilder::inService(Uint16 operationalStatus) {
    property(name::OperationalStatus, CIMValue(Array<Uint16>(1, operationalStatus)));
    return property(name::EnabledState, CIMValue(Uint16(2)));
}

void InstanceBuilder::addKey(CIMProperty key) {
    if (_includeQualifiers) {
        key.addQualifier(CIMQualifier(name::Key, CIMValue(true)));
    }
    _instance.addProperty(key);
}

bool InstanceBuilder::wanted(const CIMName& name) const {
    if (_propertyList.isNull()) {
        return true;
    }
    for (Uint32 i = 0; i < _propertyList.size(); ++i) {
        if (_propertyList[i] == name) {
            return true;
        }
    }
    return false;
}

} // namespace array
