#pragma once

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "cli/Arrayctl.h"

// A state directory of the test's own, and arrayctl upon it.
class Cli : public testing::Test {
protected:
    struct Result {
        int status;
        std::string out;
        std::string err;
    };

    Cli() {
        std::string name = testing::TempDir() + "arrayctl.XXXXXX";
        directory = mkdtemp(name.data());
        state = directory / "state";
    }

    ~Cli() override { std::filesystem::remove_all(directory); }

    // What a command line does; `input` is its standard input.
    Result run(std::vector<std::string> arguments, const std::string& input = "") const {
        arguments.insert(arguments.begin(), {"arrayctl", "--state", state.string()});
        std::vector<const char*> argv;
        for (const std::string& argument : arguments) {
            argv.push_back(argument.c_str());
        }
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        cli::Context context(in, out, err);
        const int status = cli::arrayctl(static_cast<int>(argv.size()), argv.data(), context);
        return {status, out.str(), err.str()};
    }

    // What a command writes that must succeed.
    std::string outputOf(const std::vector<std::string>& arguments,
                         const std::string& input = "") const {
        const Result result = run(arguments, input);
        EXPECT_EQ(result.status, cli::Done) << result.err;
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    nlohmann::ordered_json jsonOf(std::vector<std::string> arguments) const {
        arguments.emplace_back("--json");
        return nlohmann::ordered_json::parse(outputOf(arguments));
    }

    // What a command that must fail says on standard error.
    std::string refusalOf(const std::vector<std::string>& arguments, const std::string& input = "",
                          cli::Exit status = cli::Refused) const {
        const Result result = run(arguments, input);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out, "");
        return result.err;
    }
    std::string mistakeOf(const std::vector<std::string>& arguments,
                          const std::string& input = "") const {
        return refusalOf(arguments, input, cli::BadDescription);
    }
    std::string stateFailureOf(const std::vector<std::string>& arguments,
                               const std::string& input = "") const {
        return refusalOf(arguments, input, cli::BadState);
    }

    // Makes the array from a description.
    void import(const std::string& description) const { outputOf({"import", "-"}, description); }

    // Two endpoints, three volumes, two targets, three initiators; host1 may reach t1, which has
    // the volume "mail" as LUN 1.
    void importSmallArray() const {
        import(R"({
  "host": "array1.example.com", "system": "array1",
  "endpoints": [ { "address": "192.0.2.10", "port": 3260 }, { "address": "2001:db8::1", "port": 860 } ],
  "volumes": [ { "name": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "elementName": "mail", "size": 1073741824 },
               { "name": "60014051A2B3C4D5E6F7A8B9C0D1E2F4", "elementName": "spare", "size": 1610612736 },
               { "name": "60014051A2B3C4D5E6F7A8B9C0D1E2F5", "elementName": "spare", "size": 512 } ],
  "targets": [ { "name": "iqn.2026-01.com.example:t1", "secret": "target-secret-1" },
               { "name": "iqn.2026-01.com.example:t2" } ],
  "initiators": [ { "name": "iqn.2026-01.com.example:host1" },
                  { "name": "iqn.2026-01.com.example:host2", "secret": "host-secret-22" },
                  { "name": "eui.02004567a425678d" } ],
  "grants": [ { "target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host1" },
              { "target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host2" } ],
  "logicalUnits": [ { "target": "iqn.2026-01.com.example:t1",
                      "volume": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "lun": 1, "access": "rw" } ]
})");
    }

    std::filesystem::path directory; // the test's own; goes with it
    std::filesystem::path state;     // the state directory, below it
};
