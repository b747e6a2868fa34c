#include "tests/wire/support/Pair.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

#include <boost/algorithm/string/replace.hpp>
#include <boost/asio/ip/host_name.hpp>

#include "tests/wire/support/Table.h"

namespace fs = std::filesystem;

namespace wire {

std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<Pair> readPairs(const fs::path& directory) {
    Templates templates = {{"", {}}};
    std::vector<fs::path> tables;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        const fs::path& file = entry.path();
        if (file.extension() == ".request") {
            const fs::path recording = fs::path(file).replace_extension(".response");
            templates[file.stem()] = {file.stem(), readFile(file), readFile(recording), recording};
        } else if (file.extension() == ".json") {
            tables.push_back(file);
        }
    }
    std::vector<Pair> pairs;
    for (const fs::path& table : tables) {
        std::ranges::copy(readTable(table, templates), std::back_inserter(pairs));
    }
    templates.erase("");
    for (const auto& [name, whole] : templates) {
        pairs.push_back(whole);
    }
    std::ranges::sort(pairs, {}, &Pair::name);
    return pairs;
}

std::string requestBytes(const std::string& text) {
    const std::size_t headEnd = text.find("\n\n");
    if (headEnd == std::string::npos || text.find("\r\n") < headEnd) {
        return text; // no HTTP at all, or byte for byte
    }
    std::string head = text.substr(0, headEnd + 1);
    const std::string body = text.substr(headEnd + 2);
    if (head.find("\nHost:") == std::string::npos) {
        head += "Host: localhost\n";
    }
    if (head.find("\nContent-Length:") == std::string::npos &&
        head.find("\nTransfer-Encoding:") == std::string::npos) {
        head += "Content-Length: " + std::to_string(body.size()) + "\n";
    }
    boost::replace_all(head, "Content-Length: none\n", "");
    boost::replace_all(head, "\n", "\r\n");
    return head + "\r\n" + body;
}

std::string normalized(std::string response) {
    boost::replace_all(response, "\r\n", "\n");
    response = std::regex_replace(response, std::regex("content-length: \\d+\n"), "");
    const std::string host = boost::asio::ip::host_name();
    boost::replace_all(response, "<HOST>" + host + "<", "<HOST>HOST<");
    boost::replace_all(response, "//" + host + "/", "//HOST/");
    boost::replace_all(response, "realm=\"" + host + "\"", "realm=\"HOST\"");
    return response;
}

} // namespace wire
