// The array behind the engine: its changes against flushes of the disk, and reads beside writers.

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "bench/Bench.h"
#include "engine/DRAVInitiator.h"

namespace {

using namespace Pegasus;

// Writes a page of a file again and flushes it to the disk that holds the array, as SQLite does
// with its log: the least that a change can cost.
void flush(benchmark::State& state) {
    const char* const directory = std::getenv("DRAV_STATE_DIR");
    const std::string name = std::string(directory ? directory : ".") + ".flush";
    const int file = open(name.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0600);
    const std::vector<char> page(4096, 'x');
    constexpr off_t pages = 1000;
    const auto writePage = [&](off_t number) {
        const off_t at = number % pages * static_cast<off_t>(page.size());
        if (pwrite(file, page.data(), page.size(), at) < 0) {
            state.SkipWithError("cannot write beside the state directory");
        }
    };
    for (off_t number = 0; number < pages; ++number) {
        writePage(number);
    }
    fsync(file);
    off_t number = 0;
    for (auto _ : state) {
        writePage(number++);
        fdatasync(file);
    }
    close(file);
    std::filesystem::remove(name);
    bench::report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(flush)->UseRealTime();

// A host of the array, whose secret is changed again and again.
class Changed {
public:
    explicit Changed(Uint32 position)
        : _id(_engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID,
                                                 CLASSID_INITIATOR)[position]) {}

    void change() {
        const std::unique_ptr<ManagedObject> record(_engine.getObject(CLASSID_INITIATOR, _id));
        dynamic_cast<DRAVInitiator&>(*record).secret =
            ++_changes % 2 == 0 ? "twelve or more a" : "twelve or more b";
        _engine.modifyObject(CLASSID_INITIATOR, *record);
    }

private:
    DRAVEngine& _engine = *DRAVEngine::_getInstance();
    const Uint32 _id;
    unsigned _changes = 0;
};

void change(benchmark::State& state) {
    Changed host(static_cast<Uint32>(state.thread_index()));
    for (auto _ : state) {
        host.change();
    }
    bench::report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(change)->Threads(1)->Threads(16)->UseRealTime();

// Reads a host while that many threads change others as fast as they can.
void readBesideWriters(benchmark::State& state) {
    std::vector<std::jthread> writers;
    for (Uint32 i = 0; i < state.range(0); ++i) {
        writers.emplace_back([i](const std::stop_token& stop) {
            for (Changed host(i + 1); !stop.stop_requested();) {
                host.change();
            }
        });
    }
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    const Uint32 id =
        engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR)[0];
    for (auto _ : state) {
        delete engine.getObject(CLASSID_INITIATOR, id);
    }
    bench::report(state, static_cast<std::size_t>(state.iterations()));
}
BENCHMARK(readBesideWriters)->Arg(0)->Arg(1)->Arg(4);

} // namespace
