#pragma once

#include <ostream>

#include "array/description/Reader.h"

namespace array::description {

enum class Secrets { Leave, Write };

// Writes a description, entry by entry. What it receives must come in the order of the format:
// host, system, then the sections in their order.
//
// With Secrets::Leave, an object that has a secret is written without the member "secret"; one that
// has none is written with an empty one in either case.
class Writer : public Receiver {
public:
    Writer(std::ostream& text, Secrets secrets);

    void setHost(const std::string& name) override;
    void setSystem(const std::string& name) override;
    void add(const EndpointEntry& entry) override;
    void add(const VolumeEntry& entry) override;
    void add(const TargetEntry& entry) override;
    void add(const InitiatorEntry& entry) override;
    void add(const GrantEntry& entry) override;
    void add(const LogicalUnitEntry& entry) override;
    void add(const SessionEntry& entry) override;

    // Ends the document. Whether all of it was written is told by the stream's state.
    void finish();

private:
    void beginMember(std::string_view name);
    void openSection(std::size_t section);
    void write(std::string_view section, const nlohmann::json& entry);

    std::ostream& _text;
    const Secrets _secrets;
    bool _empty = true;          // no member yet
    std::size_t _opened = 0;     // sections that have begun
    bool _sectionIsEmpty = true; // the last of them
};

} // namespace array::description
