#include "tests/wire/support/Table.h"

#include <cctype>
#include <cstdio>
#include <regex>
#include <set>
#include <stdexcept>

#include <boost/algorithm/string/replace.hpp>
#include <boost/locale/encoding_utf.hpp>
#include <nlohmann/json.hpp>

namespace wire {
namespace {

using Json = nlohmann::ordered_json;

// A text of a table.
std::string bytes(const std::string& text) {
    std::string result;
    for (const char32_t character : boost::locale::conv::utf_to_utf<char32_t>(text)) {
        result += character == '\'' ? '"' : static_cast<char>(character);
    }
    return result;
}

template<class Map>
const auto& named(const std::string& name, const Map& map) {
    const auto found = map.find(name);
    if (found == map.end()) {
        throw std::runtime_error("there is no \"" + name + "\"");
    }
    return found->second;
}

// What is done to a template

std::size_t placeOf(const std::string& part, const std::string& text) {
    const std::size_t at = text.find(part);
    if (at == std::string::npos) {
        throw std::runtime_error("there is no \"" + part + "\" in its template");
    }
    return at;
}

std::string changed(std::string text, const Json& changes) {
    for (const auto& [old, replacement] : changes.items()) {
        placeOf(bytes(old), text);
        boost::replace_all(text, bytes(old), bytes(replacement));
    }
    return text;
}

std::string without(std::string request, const Json& texts) {
    for (const std::string text : texts) {
        const std::size_t at = placeOf(bytes(text), request);
        const std::size_t start = request.rfind('\n', at) + 1;
        request.erase(start, request.find('\n', at) + 1 - start);
    }
    return request;
}

std::string linesOf(const Json& texts) {
    std::string lines;
    for (const std::string text : texts) {
        lines += bytes(text) + "\n";
    }
    return lines;
}

std::string withHeaders(std::string request, const Json& lines) {
    return request.insert(placeOf("\n\n", request) + 1, linesOf(lines));
}

std::string withBody(std::string request, const Json& body) {
    return request.erase(placeOf("\n\n", request) + 2) + bytes(body);
}

std::size_t endOfParameters(const std::string& request) {
    return request.rfind("</", request.rfind("METHODCALL>"));
}

std::string withMoreParameters(std::string request, const Json& lines) {
    return request.insert(endOfParameters(request), linesOf(lines));
}

std::string withParameters(std::string request, const Json& lines) {
    const std::size_t start = request.find('\n', placeOf("<LOCAL", request)) + 1;
    request.erase(start, endOfParameters(request) - start);
    return withMoreParameters(request, lines);
}

std::string repeated(std::string request, const Json& counts) {
    for (const auto& [text, count] : counts.items()) {
        std::string copies;
        for (int i = 0; i < count.get<int>(); ++i) {
            copies += boost::replace_all_copy(text, "#", std::to_string(i));
        }
        request = changed(request, {{text, copies}});
    }
    return request;
}

std::string replaced(std::string, const Json& request) {
    return bytes(request);
}

const std::map<std::string, std::string (*)(std::string, const Json&)> edits = {
    {"change", changed},      {"without", without},
    {"headers", withHeaders}, {"parameters", withParameters},
    {"body", withBody},       {"more parameters", withMoreParameters},
    {"repeat", repeated},     {"request", replaced},
};

// What is answered

// In a response without an error of HTTP, to the call that the request makes.
std::string responseWith(const std::string& result, const std::string& request) {
    std::smatch call;
    if (!std::regex_search(request, call, std::regex("<(I?METHOD)CALL NAME=\"([^\"]*)\""))) {
        throw std::runtime_error("it calls no method");
    }
    const std::string element = call[1].str() + "RESPONSE";
    return R"(HTTP/1.1 200 OK
Content-Type: application/xml; charset=utf-8
CIMOperation: MethodResponse

<?xml version="1.0" encoding="utf-8" ?>
<CIM CIMVERSION="2.0" DTDVERSION="2.0">
<MESSAGE ID="1001" PROTOCOLVERSION="1.0">
<SIMPLERSP>
<)" + element +
           " NAME=\"" + call[2].str() + "\">\n" + result + "</" + element + R"(>
</SIMPLERSP>
</MESSAGE>
</CIM>
)";
}

std::string errorOf(const std::string& text) {
    const std::size_t blank = text.find(' ');
    return "<ERROR CODE=\"" + text.substr(0, blank) + "\" DESCRIPTION=\"" +
           boost::replace_all_copy(text.substr(blank + 1), "\"", "&quot;") + "\"/>";
}

std::string returnValueOf(const std::string& text) {
    const std::size_t blank = text.find(' ');
    return "<RETURNVALUE PARAMTYPE=\"" + text.substr(0, blank) + "\">\n<VALUE>" +
           text.substr(blank + 1) + "</VALUE>\n</RETURNVALUE>\n";
}

std::string percentEncoded(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '.' || c == '_') {
            result += c;
        } else {
            char code[4];
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(c));
            result += code;
        }
    }
    return result;
}

std::string refusalOf(const Json& row) {
    std::string response = "HTTP/1.1 " + bytes(row["refused"]) + "\n";
    for (const std::string header : {"CIMError", "PGErrorDetail", "Connection"}) {
        if (row.contains(header)) {
            const std::string text = bytes(row[header]);
            response += header + ": " + (header == "PGErrorDetail" ? percentEncoded(text) : text);
            response += "\n";
        }
    }
    return response + "\n";
}

std::string responseOf(const Json& row, const Pair& original, const std::string& request) {
    if (row.contains("error")) {
        return responseWith(errorOf(bytes(row["error"])), request);
    }
    if (row.contains("returns")) {
        return responseWith(returnValueOf(bytes(row["returns"])), request);
    }
    if (row.contains("refused")) {
        return refusalOf(row);
    }
    if (row.contains("closed")) {
        return "";
    }
    return row.contains("answer") ? changed(original.response, row["answer"]) : original.response;
}

// The keys of a row that are no edits.
const std::set<std::string> answers = {"name",       "error",    "returns",
                                       "refused",    "CIMError", "PGErrorDetail",
                                       "Connection", "closed",   "answer"};

Pair pairOf(const Json& row, const std::string& templateName, const Templates& templates) {
    Pair pair{row.at("name"), "", "", ""};
    try {
        const Pair& original = named(templateName, templates);
        pair.request = original.request;
        for (const auto& [key, value] : row.items()) {
            if (!answers.contains(key)) {
                pair.request = named(key, edits)(pair.request, value);
            }
        }
        pair.response = responseOf(row, original, pair.request);
    } catch (const std::exception& error) {
        throw std::runtime_error(pair.name + ": " + error.what());
    }
    return pair;
}

} // namespace

std::vector<Pair> readTable(const std::filesystem::path& file, const Templates& templates) {
    const Json table = Json::parse(readFile(file));
    std::vector<Pair> pairs;
    for (const auto& [templateName, rows] : table.items()) {
        for (const Json& row : rows) {
            pairs.push_back(pairOf(row, templateName, templates));
        }
    }
    return pairs;
}

} // namespace wire
