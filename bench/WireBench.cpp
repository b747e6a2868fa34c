// Against the smisd at BENCH_SERVER ("127.0.0.1:5988"), which asks for no password and serves an
// array of bench_array's.

#include <cstdio>
#include <cstdlib>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/Loopback.h"
#include "bench/WireClient.h"

namespace {

using bench::WireClient;

std::string server() {
    const char* address = std::getenv("BENCH_SERVER");
    return address ? address : "127.0.0.1:5988";
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

void report(benchmark::State& state, std::size_t objects) {
    state.counters["objects"] =
        static_cast<double>(objects) / static_cast<double>(state.iterations());
    state.counters["per_object"] = benchmark::Counter(
        static_cast<double>(objects), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

std::string enumerateHosts() {
    return bench::intrinsicCall("EnumerateInstances",
                                "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME "
                                "NAME=\"CIM_StorageHardwareID\"/></IPARAMVALUE>");
}

void enumerateHostsOnTheWire(benchmark::State& state) {
    WireClient client(server());
    const std::string body = enumerateHosts();
    const std::size_t hosts =
        count(client.call("EnumerateInstances", "root/snia", body), "<VALUE.NAMEDINSTANCE>");
    for (auto _ : state) {
        client.callAndDrop("EnumerateInstances", "root/snia", body);
    }
    report(state, hosts * static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(enumerateHostsOnTheWire)->UseRealTime();

// The same answer written to a loopback connection from memory.
void loopback(benchmark::State& state) {
    WireClient client(server());
    const std::string answer = client.call("EnumerateInstances", "root/snia", enumerateHosts());
    const std::size_t hosts = count(answer, "<VALUE.NAMEDINSTANCE>");
    const bench::Loopback writer(answer);
    WireClient reader(writer.address());
    for (auto _ : state) {
        reader.receive("x", answer.size());
    }
    report(state, hosts * static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(loopback)->UseRealTime();

void getHostOnTheWire(benchmark::State& state) {
    WireClient client(server());
    const std::string body = bench::intrinsicCall(
        "GetInstance", "<IPARAMVALUE NAME=\"InstanceName\"><INSTANCENAME "
                       "CLASSNAME=\"CIM_StorageHardwareID\"><KEYBINDING NAME=\"InstanceID\">"
                       "<KEYVALUE VALUETYPE=\"string\">Ovrin:0D000001</KEYVALUE></KEYBINDING>"
                       "</INSTANCENAME></IPARAMVALUE>");
    for (auto _ : state) {
        client.call("GetInstance", "root/snia", body);
    }
    report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(getHostOnTheWire)->Threads(1)->Threads(8)->Threads(64)->UseRealTime();

// Where the server is bench_constant.
void constantBody(benchmark::State& state) {
    WireClient client(server());
    const std::string body = bench::intrinsicCall("GetInstance", std::string(200, 'x'));
    for (auto _ : state) {
        client.call("GetInstance", "root/snia", body);
    }
    report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(constantBody)->Threads(8)->UseRealTime();

std::string instance(const std::string& className, const std::string& keys) {
    return "<INSTANCENAME CLASSNAME=\"" + className + "\">" + keys + "</INSTANCENAME>";
}

std::string key(const std::string& name, const std::string& value) {
    return "<KEYBINDING NAME=\"" + name + "\">" + value + "</KEYBINDING>";
}

std::string text(const std::string& value) {
    return "<KEYVALUE VALUETYPE=\"string\">" + value + "</KEYVALUE>";
}

std::string className(const std::string& name) {
    return "<CLASSNAME NAME=\"" + name + "\"/>";
}

std::string parameter(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + value + "</IPARAMVALUE>";
}

const std::string controller =
    instance("CIM_SCSIProtocolController", key("DeviceID", text("Ovrin:0E000001")));
const std::string volume = instance("CIM_StorageVolume", key("DeviceID", text("Ovrin:17000001")));

void associatorsOnTheWire(benchmark::State& state) {
    WireClient client(server());
    const std::string body = bench::intrinsicCall(
        "Associators", parameter("ObjectName", controller) +
                           parameter("AssocClass", className("CIM_ProtocolControllerForUnit")) +
                           parameter("ResultClass", className("CIM_StorageVolume")));
    for (auto _ : state) {
        client.call("Associators", "root/snia", body);
    }
    report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(associatorsOnTheWire)->UseRealTime();

// Which stores each unit of the controller.
void modifyMappingOnTheWire(benchmark::State& state) {
    WireClient client(server());
    const auto reference = [](const std::string& path) {
        return "<VALUE.REFERENCE>" + path + "</VALUE.REFERENCE>";
    };
    const std::string body = bench::intrinsicCall(
        "ModifyInstance",
        parameter("ModifiedInstance",
                  "<VALUE.NAMEDINSTANCE>" +
                      instance("CIM_ProtocolControllerForUnit",
                               key("Dependent", reference(volume)) +
                                   key("Antecedent", reference(controller))) +
                      "<INSTANCE CLASSNAME=\"CIM_ProtocolControllerForUnit\">"
                      "<PROPERTY NAME=\"DeviceAccess\" TYPE=\"uint16\"><VALUE>2</VALUE></PROPERTY>"
                      "</INSTANCE></VALUE.NAMEDINSTANCE>"));
    for (auto _ : state) {
        client.call("ModifyInstance", "root/snia", body);
    }
    report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(modifyMappingOnTheWire)->UseRealTime();

std::string stringArray(const std::string& name, const std::string& type,
                        const std::string& value) {
    return "<PARAMVALUE NAME=\"" + name + "\" PARAMTYPE=\"" + type + "\"><VALUE.ARRAY><VALUE>" +
           value + "</VALUE></VALUE.ARRAY></PARAMVALUE>";
}

// Formats numbers into a text, as printf does.
template<class... Number>
std::string formatted(const char* format, Number... numbers) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, numbers...);
    return buffer;
}

// Client n exposes a volume of its own to a host of its own through a target of its own.
void exposeAndHideOnTheWire(benchmark::State& state) {
    WireClient client(server());
    const int n = state.thread_index();
    const std::string service = "CIM_ControllerConfigurationService";
    const std::string common =
        stringArray("LUNames", "string", formatted("6001405%025X", n + 1)) +
        stringArray("InitiatorPortIDs", "string", formatted("iqn.2026-01.com.example:host%d", n)) +
        "<PARAMVALUE NAME=\"ProtocolControllers\" PARAMTYPE=\"reference\"><VALUE.REFARRAY>"
        "<VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"CIM_SCSIProtocolController\">"
        "<KEYBINDING NAME=\"DeviceID\"><KEYVALUE VALUETYPE=\"string\">" +
        formatted("Ovrin:0E%06X", n + 2) +
        "</KEYVALUE></KEYBINDING></INSTANCENAME></VALUE.REFERENCE></VALUE.REFARRAY></PARAMVALUE>";
    const std::string expose =
        bench::extrinsicCall("ExposePaths", service,
                             common + stringArray("DeviceNumbers", "string", "1000") +
                                 stringArray("DeviceAccesses", "uint16", "2"));
    const std::string hide = bench::extrinsicCall("HidePaths", service, common);
    const std::string object = "root/snia:" + service;
    for (auto _ : state) {
        for (const auto& [method, body] :
             {std::pair{"ExposePaths", &expose}, {"HidePaths", &hide}}) {
            if (client.call(method, object, *body).find("<VALUE>0</VALUE>") == std::string::npos) {
                state.SkipWithError("the volume was not found");
            }
        }
    }
    report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(exposeAndHideOnTheWire)->Threads(1)->Threads(16)->UseRealTime();

} // namespace
