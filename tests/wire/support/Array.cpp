#include "tests/wire/support/Array.h"

#include <stdexcept>

namespace wire {
namespace {

constexpr const char* threeHosts = R"({
  "host": "array1.example.com",
  "system": "array1",
  "endpoints": [ { "address": "192.0.2.10", "port": 3260 } ],
  "volumes": [
    { "name": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "elementName": "mail", "size": 1073741824 },
    { "name": "60014051A2B3C4D5E6F7A8B9C0D1E2F4", "elementName": "logs", "size": 8589934592 }
  ],
  "targets": [
    { "name": "iqn.2026-01.com.example:t1", "secret": "target1-secret" },
    { "name": "iqn.2026-01.com.example:t2", "secret": "" }
  ],
  "initiators": [
    { "name": "iqn.2026-01.com.example:host1", "secret": "" },
    { "name": "iqn.2026-01.com.example:host2", "secret": "" },
    { "name": "eui.02004567a425678d", "secret": "" }
  ],
  "grants": [
    { "target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host1" }
  ],
  "logicalUnits": [
    { "target": "iqn.2026-01.com.example:t1", "volume": "60014051A2B3C4D5E6F7A8B9C0D1E2F3",
      "lun": 1, "access": "rw" }
  ]
})";

} // namespace

Array::Array() : Array(threeHosts) {}

Array::Array(const std::string& description) {
    arrayctl({"import", "-"}, description);
}

std::string Array::arrayctl(std::vector<std::string> arguments, const std::string& input) const {
    arguments.insert(arguments.begin(), {ARRAYCTL, "--state", state().string()});
    const Result result = run(arguments, input);
    if (result.status != 0) {
        throw std::runtime_error("arrayctl: " + result.err);
    }
    return result.out;
}

} // namespace wire
