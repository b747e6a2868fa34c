#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include <nlohmann/json.hpp>

#include "array/description/Reader.h"

// The format of a description as tables, from which it is read and written.

namespace array::description {

enum class Kind { Text, Number, List };
enum class Presence { Required, Optional };

struct Form;

struct Member {
    std::string_view name;
    Kind kind;
    Presence presence = Presence::Required;
    std::uint64_t limit = 0;        // Number: the greatest that is accepted
    const Form* elements = nullptr; // List: what each element looks like
};

// A JSON object: its members in the order in which they are written.
struct Form {
    std::span<const Member> members;
};

// A list of entries at the top of the description.
struct Section {
    std::string_view name;
    const Form* form;
    std::uint32_t refersTo; // the sections that its entries name objects of: a bit for each index
    void (*deliver)(const nlohmann::json& entry, Receiver& receiver);
};

// The whole document, and its sections in the order in which they are written; a section refers
// only to sections before it.
extern const Form documentForm;
extern const std::span<const Section> sections;

// The index of a section by its name, which must be one.
std::size_t sectionIndex(std::string_view name);

} // namespace array::description
