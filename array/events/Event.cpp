#include "array/events/Event.h"

#include <cstdio>
#include <ctime>

#include <unistd.h>

#include <nlohmann/json.hpp>

namespace array {

namespace {

std::string timeText(std::int64_t microseconds) {
    const std::time_t seconds = microseconds / 1000000;
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char day[24] = "";
    std::strftime(day, sizeof day, "%Y-%m-%dT%H:%M:%S", &parts);
    char fraction[12] = "";
    std::snprintf(fraction, sizeof fraction, ".%06dZ", static_cast<int>(microseconds % 1000000));
    return std::string(day) + fraction;
}

} // namespace

std::string jsonOf(const Event& event, std::int64_t microsecondsSince1970) {
    nlohmann::ordered_json json;
    json["time"] = timeText(microsecondsSince1970);
    json["process"] = getpid();
    json["type"] = event.type;
    json["text"] = event.text;
    json["keyValues"] = event.keyValues;
    json["channel"] = event.channel;
    json["severity"] = event.severity;
    json["operation"] = event.operation;
    json["file"] = event.file;
    json["line"] = event.line;
    return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace array
