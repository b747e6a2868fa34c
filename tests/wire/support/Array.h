// The array of a test.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/server/TemporaryDirectory.h"
#include "tests/wire/support/Process.h"

namespace wire {

// A state directory of its own, made by arrayctl.
class Array {
public:
    // Three hosts, two targets, two volumes and some of the links between them.
    Array();
    // Without anything in it.
    struct Empty {};
    explicit Array(Empty) {}
    explicit Array(const std::string& description);

    std::filesystem::path state() const { return _directory.path / "state"; }
    // A file beside the state directory.
    std::filesystem::path file(const std::string& name) const { return _directory.path / name; }

    // What arrayctl says of it; throws when it is refused.
    std::string arrayctl(std::vector<std::string> arguments, const std::string& input = "") const;

private:
    smisd::test::TemporaryDirectory _directory;
};

} // namespace wire
