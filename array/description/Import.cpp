#include "array/description/Import.h"

#include <algorithm>
#include <vector>

#include "array/description/Entries.h"
#include "array/description/Reader.h"
#include "array/model/ErrorCode.h"
#include "array/model/Text.h"

namespace array::description {

namespace {

// Does what an entry asks for; a rule of the array that it breaks becomes a refusal of that entry.
template<typename Action>
auto obey(Action action) {
    try {
        return action();
    } catch (const Pegasus::DRAVOperationFailedException& error) {
        if (isOfTheState(error)) {
            throw;
        }
        throw Refusal{"", toUtf8(error.getMessage())};
    }
}

// The object that an entry's member names.
Id named(Id id, const char* member, const char* kind, const std::string& name) {
    if (id == 0) {
        throw Refusal{member, std::string("there is no ") + kind + " " + array::quoted(name)};
    }
    return id;
}

class Importer : public Receiver {
public:
    explicit Importer(Change& change) : _change(change), _names(change.snapshot().names()) {}

    void setHost(const std::string& name) override {
        _names.host = name;
        obey([&] { _change.setNames(_names); });
    }

    void setSystem(const std::string& name) override {
        _names.system = name;
        obey([&] { _change.setNames(_names); });
    }

    void add(const EndpointEntry& entry) override {
        _endpoints.push_back(create(Endpoint{entry.address, entry.port}));
    }

    void add(const VolumeEntry& entry) override {
        create(Volume{entry.name, entry.elementName, entry.size, 0});
    }

    void add(const TargetEntry& entry) override { create(Target{entry.name, entry.secret}); }

    void add(const InitiatorEntry& entry) override { create(Initiator{entry.name, entry.secret}); }

    void add(const GrantEntry& entry) override {
        const Id grantee = initiator(entry.initiator);
        const Id granted = target(entry.target);
        if (_change.snapshot().granted(granted, grantee)) {
            throw Refusal{"", "the same grant stands before"};
        }
        obey([&] { _change.grant(granted, grantee); });
    }

    void add(const LogicalUnitEntry& entry) override {
        const auto access = accessFromText(entry.access);
        if (!access) {
            throw Refusal{"/access",
                          array::quoted(entry.access) + R"( is none of "rw", "ro" and "none")"};
        }
        create(LogicalUnit{target(entry.target), entry.lun, *access, volume(entry.volume), ""});
    }

    void add(const SessionEntry& entry) override {
        Session session;
        session.target = target(entry.target);
        session.initiator = initiator(entry.initiator);
        // The description does not say what was agreed at the login. As many connections as are
        // described must have been allowed.
        session.parameters.maxConnections =
            std::max(session.parameters.maxConnections,
                     static_cast<std::uint32_t>(entry.connections.size()));
        const Id id = create(session);
        for (std::size_t i = 0; i < entry.connections.size(); ++i) {
            addConnection(id, i, entry.connections[i].endpoint);
        }
    }

private:
    template<typename Record>
    Id create(const Record& record) {
        return obey([&] { return _change.create(record); });
    }

    void addConnection(Id session, std::size_t index, std::uint64_t endpoint) {
        const std::string pointer = "/connections/" + std::to_string(index);
        if (endpoint >= _endpoints.size()) {
            throw Refusal{pointer + "/endpoint",
                          "there is no endpoint " + std::to_string(endpoint) +
                              "; \"endpoints\" has " + std::to_string(_endpoints.size()) +
                              ", counted from 0"};
        }
        Connection connection;
        connection.session = session;
        connection.endpoint = _endpoints[endpoint];
        try {
            create(connection);
        } catch (const Refusal& refusal) {
            throw Refusal{pointer, refusal.message};
        }
    }

    Id target(const std::string& name) const {
        return named(_change.snapshot().targetByName(name), "/target", "target", name);
    }

    Id initiator(const std::string& name) const {
        return named(_change.snapshot().initiatorByName(name), "/initiator", "initiator", name);
    }

    Id volume(const std::string& name) const {
        return named(_change.snapshot().volumeByName(name), "/volume", "volume", name);
    }

    Change& _change;
    ArrayNames _names;
    std::vector<Id> _endpoints; // in the order of the description
};

void checkEmpty(const Snapshot& snapshot) {
    for (const CLASSID_e objectClass :
         {Pegasus::CLASSID_TCP_ENDPOINT, Pegasus::CLASSID_VOLUME, Pegasus::CLASSID_TARGET,
          Pegasus::CLASSID_INITIATOR, Pegasus::CLASSID_LOGICAL_UNIT}) {
        if (snapshot.count(objectClass) > 0) {
            fail(ErrorCode::InUse, "The array has objects already, and a description is imported "
                                   "only into an empty one; use another state directory.");
        }
    }
}

} // namespace

void importFrom(std::istream& text, Array& array, const std::function<void()>& afterEach) {
    array.change([&](Change& change) {
        checkEmpty(change.snapshot());
        Importer importer(change);
        read(text, importer, afterEach);
    });
}

} // namespace array::description
