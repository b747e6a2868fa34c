#pragma once

#include <string>
#include <vector>

#include "providers/iscsi/iSCSIPipesProvider.h"
#include "tests/support/ProviderTest.h"

namespace scripted {

using Pegasus::CIMName;
using Pegasus::CIMObjectPath;
using Pegasus::Uint32;
using Lines = std::vector<std::string>;

// Three targets, the last of which has no sessions to list; two TCP endpoints. The sessions'
// connections are set by those tests that need them.
constexpr Uint32 TARGET1 = 0x0E000001;
constexpr Uint32 TARGET2 = 0x0E000002;
constexpr Uint32 QUIET = 0x0E000003;
constexpr Uint32 SESSION1 = 0x11000001; // of TARGET1
constexpr Uint32 SESSION2 = 0x11000002; // of TARGET2, like the next
constexpr Uint32 SESSION3 = 0x11000003;
constexpr Uint32 HIDDEN = 0x11000004; // of QUIET
constexpr Uint32 ENDPOINT1 = 0x09000001;
constexpr Uint32 ENDPOINT2 = 0x09000002;
constexpr Uint32 CONNECTION1 = 0x10000001; // through ENDPOINT1, like the next
constexpr Uint32 CONNECTION2 = 0x10000002;
constexpr Uint32 CONNECTION3 = 0x10000003; // through ENDPOINT2

inline const CIMName SESSION("CIM_iSCSISession");
inline const CIMName CONNECTION("CIM_iSCSIConnection");
inline const CIMName ISCSI_ENDPOINT("CIM_iSCSIProtocolEndpoint");
inline const CIMName TCP_ENDPOINT("CIM_TCPProtocolEndpoint");
inline const CIMName PIPE_END("CIM_EndpointOfNetworkPipe");
inline const CIMName COMPOSITION("CIM_NetworkPipeComposition");

// What the operations write to standard output first.
inline const std::string EI = "trace Entering Pipes EI ";
inline const std::string EIN = "trace Entering Pipes EIN ";
inline const std::string ASSOCIATORS = "trace Entering Pipes Associators ";
inline const std::string ASSOCIATOR_NAMES = "trace Entering Pipes Associator Names ";
inline const std::string REFERENCES = "trace Entering Pipes References ";
inline const std::string REFERENCE_NAMES = "trace Entering Pipes ReferenceNames ";

// Paths as texts, as the scripted builders and the provider itself write them.

inline std::string session(Uint32 id) {
    return objectText("CIM_iSCSISession", "InstanceID", id);
}

inline std::string connection(Uint32 id) {
    return objectText("CIM_iSCSIConnection", "InstanceID", id);
}

inline std::string tcpEndpoint(Uint32 id) {
    return objectText("CIM_TCPProtocolEndpoint", "Name", id);
}

inline std::string iscsiEndpoint(const std::string& targetName) {
    return "//array1.example.com/root/snia:CIM_iSCSIProtocolEndpoint.Name=\"" + targetName +
           ",t,0x0001\"";
}

// A path as the value of a reference key.
inline std::string referenceText(const std::string& path) {
    std::string escaped;
    for (const char c : path) {
        escaped += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return '"' + escaped + '"';
}

inline std::string pipeEnd(const std::string& antecedent, const std::string& dependent) {
    return "//array1.example.com/root/snia:CIM_EndpointOfNetworkPipe.Antecedent=" +
           referenceText(antecedent) + ",Dependent=" + referenceText(dependent);
}

inline std::string composition(Uint32 sessionId, Uint32 connectionId) {
    return "//array1.example.com/root/snia:CIM_NetworkPipeComposition.GroupComponent=\"" +
           keyText(sessionId) + "\",PartComponent=\"" + keyText(connectionId) + "\"";
}

// The log of an operation that ran to its end: its own line, and what follows that.
inline Lines completed(const std::string& entryLine, const Lines& lines) {
    Lines all = {"processing", entryLine};
    all.insert(all.end(), lines.begin(), lines.end());
    all.push_back("complete");
    return all;
}

// The log of one that an exception left.
inline Lines left(const std::string& entryLine, const Lines& lines) {
    Lines all = completed(entryLine, lines);
    all.pop_back();
    return all;
}

class iSCSIPipesTest : public ProviderTest<Pegasus::iSCSIPipesProvider> {
protected:
    iSCSIPipesTest() {
        addTarget(TARGET1, "iqn.t1", 1);
        addTarget(TARGET2, "iqn.t2", 0x80000000);
        addTarget(QUIET, "iqn.quiet", 0);
        associate(Pegasus::SYSTEM_OBJECT_ID, Pegasus::CLASSID_TARGET, {TARGET1, TARGET2, QUIET});
        associate(TARGET1, Pegasus::CLASSID_ISCSI_SESSION, {SESSION1});
        associate(TARGET2, Pegasus::CLASSID_ISCSI_SESSION, {SESSION2, SESSION3});
        associate(QUIET, Pegasus::CLASSID_ISCSI_SESSION, {HIDDEN});

        associate(Pegasus::SYSTEM_OBJECT_ID, Pegasus::CLASSID_TCP_ENDPOINT, {ENDPOINT1, ENDPOINT2});
        connect(ENDPOINT1, {CONNECTION1, CONNECTION2});
        connect(ENDPOINT2, {CONNECTION3});
        _properties.append(CIMName("Name"));
    }

    static void addTarget(Uint32 id, const char* name, Uint32 sessionPresence) {
        Pegasus::DRAVTarget target(name);
        target.sessionPresence = sessionPresence;
        addRecord(id, target);
        setIdByName(Pegasus::CLASSID_TARGET, name, id);
    }

    // The connections of a session, or those through an endpoint.
    static void connect(Uint32 id, const std::vector<Uint32>& connections) {
        associate(id, Pegasus::CLASSID_ISCSI_CONNECTION, connections);
    }

    static CIMObjectPath sessionPath(Uint32 id) {
        return requestPath(SESSION, {{"InstanceID", keyText(id)}});
    }

    static CIMObjectPath connectionPath(Uint32 id) {
        return requestPath(CONNECTION, {{"InstanceID", keyText(id)}});
    }

    static CIMObjectPath tcpEndpointPath(Uint32 id) {
        return requestPath(TCP_ENDPOINT, {{"Name", keyText(id)}});
    }

    static CIMObjectPath iscsiEndpointPath(const std::string& name) {
        return requestPath(ISCSI_ENDPOINT, {{"Name", name}});
    }

    // Operations that ask for instances ask for the property "Name", and for qualifiers if not told
    // otherwise, for the builders' lines in the log.

    void getInstance(const CIMObjectPath& path, bool includeQualifiers = true) {
        provider.getInstance(context, path, includeQualifiers, false, _properties, instances);
    }

    void enumerateInstances(const CIMName& className, bool includeQualifiers = true) {
        provider.enumerateInstances(context, requestPath(className), includeQualifiers, false,
                                    _properties, instances);
    }

    void enumerateInstanceNames(const CIMName& className) {
        provider.enumerateInstanceNames(context, requestPath(className), paths);
    }

    void associators(const CIMObjectPath& source, const CIMName& association, const CIMName& result,
                     bool includeQualifiers = true) {
        provider.associators(context, source, association, result, "role", "resultRole",
                             includeQualifiers, false, _properties, objects);
    }

    void associatorNames(const CIMObjectPath& source, const CIMName& association,
                         const CIMName& result) {
        provider.associatorNames(context, source, association, result, "role", "resultRole", paths);
    }

    void references(const CIMObjectPath& source, const CIMName& association,
                    bool includeQualifiers = true) {
        provider.references(context, source, association, "role", includeQualifiers, false,
                            _properties, objects);
    }

    void referenceNames(const CIMObjectPath& source, const CIMName& association) {
        provider.referenceNames(context, source, association, "role", paths);
    }

    // The log after a call that must be out of bounds.
    template<class Call>
    static Lines outOfBounds(Call call) {
        clearLog();
        EXPECT_EQ(thrownBy<Pegasus::IndexOutOfBoundsException>(call), "index out of bounds");
        return log();
    }

    InstanceHandler instances;
    ObjectPathHandler paths;
    ObjectHandler objects;

private:
    Pegasus::Array<CIMName> _properties;
};

} // namespace scripted
