// bench_array DIRECTORY HOSTS TARGETS UNITS SESSIONS: makes an array in a new state directory, with
// that many hosts and targets, that many logical units under each target (each of another volume,
// except that the first volume is under every target), and that many sessions with the first
// target.

#include <cstdlib>
#include <iostream>
#include <string>

#include <Pegasus/Common/Exception.h>

#include "array/Array.h"

namespace {

std::string volumeName(unsigned number) {
    char text[33];
    std::snprintf(text, sizeof text, "6001405%025X", number);
    return text;
}

struct Sizes {
    unsigned hosts, targets, units, sessions;
};

void fill(array::Change& change, const Sizes& sizes) {
    change.setNames({"array1.example.com", "array1"});
    const array::Id endpoint = change.create(array::Endpoint{"192.0.2.10", 3260});
    std::vector<array::Id> hosts;
    for (unsigned i = 0; i < sizes.hosts; ++i) {
        hosts.push_back(change.create(
            array::Initiator{"iqn.2026-01.com.example:host" + std::to_string(i), ""}));
    }

    unsigned volumes = 0;
    const auto newVolume = [&] {
        const std::string name = volumeName(volumes++);
        return change.create(array::Volume{name, "", std::uint64_t(1) << 30, 0});
    };
    const array::Id shared = newVolume();
    array::Id first = 0;
    for (unsigned t = 0; t < sizes.targets; ++t) {
        const array::Id target =
            change.create(array::Target{"iqn.2026-01.com.example:t" + std::to_string(t), ""});
        first = first == 0 ? target : first;
        for (unsigned lun = 0; lun < sizes.units; ++lun) {
            const array::Id volume = lun == 0 ? shared : newVolume();
            change.create(array::LogicalUnit{target, lun, 0, volume, ""});
        }
    }
    for (unsigned s = 0; s < sizes.sessions; ++s) {
        change.grant(first, hosts.at(s));
        array::Session session;
        session.target = first;
        session.initiator = hosts.at(s);
        array::Connection connection;
        connection.session = change.create(session);
        connection.endpoint = endpoint;
        change.create(connection);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 6) {
        std::cerr << "usage: bench_array DIRECTORY HOSTS TARGETS UNITS SESSIONS\n";
        return 2;
    }
    const auto number = [&](int i) {
        return static_cast<unsigned>(std::strtoul(argv[i], nullptr, 10));
    };
    const Sizes sizes{number(2), number(3), number(4), number(5)};
    try {
        const auto array = array::Array::openOrCreate(argv[1]);
        array->change([&](array::Change& change) { fill(change, sizes); });
    } catch (const Pegasus::Exception& exception) {
        std::cerr << "bench_array: "
                  << static_cast<const char*>(exception.getMessage().getCString()) << '\n';
        return 1;
    }
    return 0;
}
