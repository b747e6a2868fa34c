// Recorded pairs of a request and its response; tests/wire/pairs/README.md describes their files.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace wire {

struct Pair {
    std::string name;
    std::string request;             // as requestBytes() takes it
    std::string response;            // as normalized() gives it
    std::filesystem::path recording; // the file of the response; none when a table says it
};

// Those of the files and those of the tables, by name.
std::vector<Pair> readPairs(const std::filesystem::path& directory);

std::string readFile(const std::filesystem::path& file);

// The bytes to send.
std::string requestBytes(const std::string& text);

// A response with plain line ends, without its length, and with HOST for the name of this host.
std::string normalized(std::string response);

} // namespace wire
