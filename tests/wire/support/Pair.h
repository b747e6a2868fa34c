// Recorded pairs of a request and its response.
//
// NAME.request is what is sent, with plain line ends in the headers, without Host and
// Content-Length, which are added unless they are there; "Content-Length: none" leaves it out. A
// request that has line ends of its own, with CR, is sent as it stands.
// NAME.response is what is expected, after normalized().
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace wire {

struct Pair {
    std::string name;
    std::filesystem::path request;
    std::filesystem::path response;
};

std::vector<Pair> readPairs(const std::filesystem::path& directory);

std::string readFile(const std::filesystem::path& file);

// The bytes to send.
std::string requestBytes(const std::string& text);

// A response with plain line ends, without its length, and with HOST for the name of this host.
std::string normalized(std::string response);

} // namespace wire
