// What a user may do.
#pragma once

#include <optional>
#include <string_view>

namespace smisd {

// A reader changes nothing and sees no secrets.
enum class Role { reader, administrator };

constexpr std::string_view nameOf(Role role) {
    return role == Role::reader ? "reader" : "administrator";
}

constexpr std::optional<Role> roleNamed(std::string_view name) {
    for (const Role role : {Role::reader, Role::administrator}) {
        if (nameOf(role) == name) {
            return role;
        }
    }
    return std::nullopt;
}

} // namespace smisd
