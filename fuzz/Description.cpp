// The reader of array descriptions.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "array/description/Reader.h"

using namespace array::description;

namespace {

struct Ignoring : Receiver {
    void setHost(const std::string&) override {}
    void setSystem(const std::string&) override {}
    void add(const EndpointEntry&) override {}
    void add(const VolumeEntry&) override {}
    void add(const TargetEntry&) override {}
    void add(const InitiatorEntry&) override {}
    void add(const GrantEntry&) override {}
    void add(const LogicalUnitEntry&) override {}
    void add(const SessionEntry&) override {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
    Ignoring receiver;
    try {
        read(text, receiver);
    } catch (const DescriptionError&) {
    }
    return 0;
}
