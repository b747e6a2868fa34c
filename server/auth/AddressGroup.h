// Whom an address stands for.
#pragma once

#include <string>

namespace smisd {

// The address itself, or the network of an IPv6 address, "2001:db8:0:1::/64": whoever has one
// address of it has all of them. What is no address is returned as it is.
std::string addressGroup(const std::string& address);

// The network around it, of which somebody may well have many addresses: "192.0.2.0/24",
// "2001:db8::/48". What is no address is returned as it is.
std::string neighbourhood(const std::string& address);

} // namespace smisd
