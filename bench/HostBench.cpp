#include "bench/Bench.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVKeys.h"
#include "providers/identity/StorageHardwareIDProvider.h"

namespace {

using namespace Pegasus;

const CIMPropertyList everything;

void enumerateHosts(benchmark::State& state) {
    bench::Ready<StorageHardwareIDProvider> ready;
    bench::Instances handler;
    for (auto _ : state) {
        ready.provider.enumerateInstances(ready.context, bench::path("CIM_StorageHardwareID"),
                                          false, false, everything, handler);
    }
    bench::report(state, handler.delivered);
}
BENCHMARK(enumerateHosts);

// The same instances built by hand from the same records: the measure for the providers' way.
void hostsByHand(benchmark::State& state) {
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    bench::Instances handler;
    const CIMName className("CIM_StorageHardwareID");
    const CIMName key("InstanceID");
    for (auto _ : state) {
        const Array<Uint32> ids =
            engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR);
        for (Uint32 i = 0; i < ids.size(); ++i) {
            ManagedObject* object = engine.getObject(CLASSID_INITIATOR, ids[i]);
            CIMInstance instance(className);
            instance.addProperty(
                CIMProperty(CIMName("StorageID"), dynamic_cast<DRAVInitiator*>(object)->name));
            instance.addProperty(CIMProperty(CIMName("IDType"), Uint16(5)));
            instance.addProperty(CIMProperty(CIMName("CurrentlyAuthenticated"), false));
            delete object;
            const String text = DRAVObjectKey(ids[i]);
            CIMProperty id(key, text);
            id.addQualifier(CIMQualifier(CIMName("Key"), CIMValue(true)));
            instance.addProperty(id);
            Array<CIMKeyBinding> keys;
            keys.append(CIMKeyBinding(key, text, CIMKeyBinding::STRING));
            instance.setPath(CIMObjectPath(*DRAVEngine::_OvrinHostNamePtr,
                                           CIMNamespaceName("root/snia"), className, keys));
            handler.deliver(instance);
        }
    }
    bench::report(state, handler.delivered);
}
BENCHMARK(hostsByHand);

void getHost(benchmark::State& state) {
    bench::Ready<StorageHardwareIDProvider> ready;
    bench::Instances handler;
    const CIMObjectPath host =
        bench::path("CIM_StorageHardwareID", "InstanceID", DRAVObjectKey(0x0D000001));
    for (auto _ : state) {
        for (int i = 0; i < 100; ++i) {
            ready.provider.getInstance(ready.context, host, false, false, everything, handler);
        }
    }
    bench::report(state, handler.delivered);
}
BENCHMARK(getHost);

void findHostByName(benchmark::State& state) {
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    const String name("iqn.2026-01.com.example:host7");
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine.getiSCSIObjectIDByName(CLASSID_INITIATOR, name));
    }
    bench::report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(findHostByName);

} // namespace
