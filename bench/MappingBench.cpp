#include <array>
#include <cstdio>
#include <string>

#include "bench/Bench.h"
#include "engine/DRAVKeys.h"
#include "providers/frame/Requests.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "providers/masking/ProtocolControllerForUnitProvider.h"
#include "providers/masking/SCSIProtocolControllerProvider.h"

namespace {

using namespace Pegasus;

const CIMPropertyList everything;

void enumerateControllers(benchmark::State& state) {
    bench::Ready<SCSIProtocolControllerProvider> ready;
    bench::Instances handler;
    for (auto _ : state) {
        ready.provider.enumerateInstances(ready.context, bench::path("CIM_SCSIProtocolController"),
                                          false, false, everything, handler);
    }
    bench::report(state, handler.delivered);
}
BENCHMARK(enumerateControllers);

void getController(benchmark::State& state) {
    bench::Ready<SCSIProtocolControllerProvider> ready;
    bench::Instances handler;
    const CIMObjectPath controller =
        bench::path("CIM_SCSIProtocolController", "DeviceID", DRAVObjectKey(0x0E000001));
    for (auto _ : state) {
        ready.provider.getInstance(ready.context, controller, false, false, everything, handler);
    }
    bench::report(state, handler.delivered);
}
BENCHMARK(getController);

void findVolumeByKey(benchmark::State& state) {
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    const String key = ManagedObject::hexToBin("60014050000000000000000000000007");
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine.getObjectIDByKey(CLASSID_VOLUME, key));
    }
    bench::report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(findVolumeByKey);

// Takes a different one of a thousand volumes each time, spread over an array with as many hosts as
// volumes, so that most of them are not in the processor's first caches.
void findManyVolumesByKey(benchmark::State& state) {
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    const Uint32 volumes =
        engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR).size();
    std::array<String, 1000> keys;
    for (Uint32 i = 0; i < keys.size(); ++i) {
        char text[33];
        std::snprintf(text, sizeof text, "6001405%025X", volumes / Uint32(keys.size()) * i);
        keys[i] = ManagedObject::hexToBin(text);
        if (engine.getObjectIDByKey(CLASSID_VOLUME, keys[i]) == 0) {
            state.SkipWithError("no such volume");
        }
    }
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine.getObjectIDByKey(CLASSID_VOLUME, keys[i++ % keys.size()]));
    }
    bench::report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(findManyVolumesByKey);

void enumerateMappings(benchmark::State& state) {
    bench::Ready<ProtocolControllerForUnitProvider> ready;
    bench::Instances handler;
    for (auto _ : state) {
        ready.provider.enumerateInstances(ready.context,
                                          bench::path("CIM_ProtocolControllerForUnit"), false,
                                          false, everything, handler);
    }
    bench::report(state, handler.delivered);
}
BENCHMARK(enumerateMappings);

std::size_t countUnits() {
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    std::size_t units = 0;
    for (const Uint32 target :
         engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET)) {
        units += engine.enumerateAssociatedObjects(target, CLASSID_LOGICAL_UNIT).size();
    }
    return units;
}

// Walks from a volume to its controllers, which visits every unit of the array.
void associatorsOf(benchmark::State& state, Uint32 volumeId) {
    bench::Ready<ProtocolControllerForUnitProvider> ready;
    bench::Objects handler;
    const std::size_t units = countUnits();
    const CIMObjectPath volume =
        bench::path("CIM_StorageVolume", "DeviceID", DRAVObjectKey(volumeId));
    for (auto _ : state) {
        ready.provider.associators(ready.context, volume, CIMName("CIM_ProtocolControllerForUnit"),
                                   CIMName("CIM_SCSIProtocolController"), "", "", false, false,
                                   everything, handler);
    }
    bench::report(state, units * static_cast<std::uint64_t>(state.iterations()));
}

// From the volume that is under every target: each target gives a controller.
void associatorsOfSharedVolume(benchmark::State& state) {
    associatorsOf(state, 0x17000001);
}
BENCHMARK(associatorsOfSharedVolume);

// From a volume that is under one target: nearly all of the cost is that of the visits.
void associatorsOfVolume(benchmark::State& state) {
    associatorsOf(state, 0x17000002);
}
BENCHMARK(associatorsOfVolume);

void associatorsOfController(benchmark::State& state) {
    bench::Ready<ProtocolControllerForUnitProvider> ready;
    bench::Objects handler;
    const CIMObjectPath controller =
        bench::path("CIM_SCSIProtocolController", "DeviceID", DRAVObjectKey(0x0E000001));
    for (auto _ : state) {
        ready.provider.associators(
            ready.context, controller, CIMName("CIM_ProtocolControllerForUnit"),
            CIMName("CIM_StorageVolume"), "", "", false, false, everything, handler);
    }
    bench::report(state, handler.delivered);
}
BENCHMARK(associatorsOfController);

// Reading each unit's record, as every walk from a volume must.
void readUnits(benchmark::State& state) {
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    std::size_t read = 0;
    for (auto _ : state) {
        const Array<Uint32> targets =
            engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
        for (Uint32 t = 0; t < targets.size(); ++t) {
            const Array<Uint32> units =
                engine.enumerateAssociatedObjects(targets[t], CLASSID_LOGICAL_UNIT);
            for (Uint32 u = 0; u < units.size(); ++u) {
                delete engine.getObject(CLASSID_LOGICAL_UNIT, units[u]);
                ++read;
            }
        }
    }
    bench::report(state, read);
}
BENCHMARK(readUnits);

// The parameters of ExposePaths and HidePaths for volumes of bench_array that are mapped nowhere
// but under the first target, mapped under the last by the benchmark.
struct Call {
    explicit Call(unsigned volumes) {
        Array<String> names, numbers;
        Array<Uint16> accesses;
        for (unsigned i = 0; i < volumes; ++i) {
            char name[33];
            std::snprintf(name, sizeof name, "6001405%025X", i + 1);
            names.append(String(name));
            numbers.append(String(std::to_string(1000 + i).c_str()));
            accesses.append(2);
        }
        DRAVEngine& engine = *DRAVEngine::_getInstance();
        const Array<Uint32> targets =
            engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
        const CIMObjectPath controller = bench::path("CIM_SCSIProtocolController", "DeviceID",
                                                     DRAVObjectKey(targets[targets.size() - 1]));
        Array<String> hosts;
        hosts.append(String("iqn.2026-01.com.example:host0"));
        parameters.append(CIMParamValue("LUNames", names));
        parameters.append(CIMParamValue("InitiatorPortIDs", hosts));
        parameters.append(CIMParamValue("DeviceNumbers", numbers));
        parameters.append(CIMParamValue("DeviceAccesses", accesses));
        parameters.append(
            CIMParamValue("ProtocolControllers", Array<CIMObjectPath>(1, controller)));
    }
    Array<CIMParamValue> parameters;
};

void exposeAndHide(benchmark::State& state) {
    bench::Ready<ControllerConfigurationServiceProvider> ready;
    const auto volumes = static_cast<unsigned>(state.range(0));
    const Call call(volumes);
    const CIMObjectPath service = bench::path("CIM_ControllerConfigurationService");
    bench::MethodResult handler;
    for (auto _ : state) {
        for (const char* method : {"ExposePaths", "HidePaths"}) {
            ready.provider.invokeMethod(ready.context, service, CIMName(method), call.parameters,
                                        handler);
            if (handler.returned != 0) {
                state.SkipWithError("a volume was not found");
            }
        }
    }
    bench::report(state, static_cast<std::size_t>(volumes * state.iterations()));
}
BENCHMARK(exposeAndHide)->Arg(1)->Arg(10)->Arg(1000)->UseRealTime();

} // namespace
