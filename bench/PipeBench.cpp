#include "bench/Bench.h"
#include "engine/DRAVKeys.h"
#include "providers/iscsi/iSCSIPipesProvider.h"

namespace {

using namespace Pegasus;

const CIMPropertyList everything;

// Walks over an association from one object. Each walk but the last visits all sessions of the
// first target, and its cost is given per session; that of the last is given per call.
struct Walk {
    const char* sourceClass;
    const char* key;
    String value;
    const char* association;
    const char* resultClass;
    bool visitsAll;
};

void walk(benchmark::State& state, const Walk& walk) {
    bench::Ready<iSCSIPipesProvider> ready;
    bench::ObjectPaths handler;
    const std::size_t sessions =
        DRAVEngine::_getInstance()
            ->enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION)
            .size();
    const CIMObjectPath source = bench::path(walk.sourceClass, walk.key, walk.value);
    for (auto _ : state) {
        ready.provider.associatorNames(ready.context, source, CIMName(walk.association),
                                       CIMName(walk.resultClass), "", "", handler);
    }
    bench::report(state,
                  static_cast<std::uint64_t>(state.iterations()) * (walk.visitsAll ? sessions : 1));
}

const char pipeEnd[] = "CIM_EndpointOfNetworkPipe";
const char composition[] = "CIM_NetworkPipeComposition";

BENCHMARK_CAPTURE(walk, sessionsOfTarget,
                  Walk{"CIM_iSCSIProtocolEndpoint", "Name", "iqn.2026-01.com.example:t0,t,0x0001",
                       pipeEnd, "CIM_iSCSISession", true});
BENCHMARK_CAPTURE(walk, connectionsOfEndpoint,
                  Walk{"CIM_TCPProtocolEndpoint", "Name", DRAVObjectKey(0x09000001), pipeEnd,
                       "CIM_iSCSIConnection", true});
BENCHMARK_CAPTURE(walk, targetOfSession,
                  Walk{"CIM_iSCSISession", "InstanceID", DRAVObjectKey(0x11000001), pipeEnd,
                       "CIM_iSCSIProtocolEndpoint", true});
BENCHMARK_CAPTURE(walk, endpointOfConnection,
                  Walk{"CIM_iSCSIConnection", "InstanceID", DRAVObjectKey(0x10000001), pipeEnd,
                       "CIM_TCPProtocolEndpoint", true});
BENCHMARK_CAPTURE(walk, connectionsOfSession,
                  Walk{"CIM_iSCSISession", "InstanceID", DRAVObjectKey(0x11000001), composition,
                       "CIM_iSCSIConnection", false});

} // namespace
