#include "server/auth/AuditLog.h"

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

namespace smisd {
namespace {

constexpr std::size_t longestText = 1024; // of a member: a client chooses its keys

std::shared_ptr<spdlog::logger> loggerTo(spdlog::sink_ptr sink) {
    auto logger = std::make_shared<spdlog::logger>("audit", std::move(sink));
    logger->set_pattern("{\"time\":\"%Y-%m-%dT%H:%M:%S.%eZ\",%v}", spdlog::pattern_time_type::utc);
    logger->flush_on(spdlog::level::info);
    return logger;
}

void makePrivate(const std::filesystem::path& file) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        throw std::runtime_error(
            "cannot write the audit log " + file.string() + ": " +
            std::generic_category().message(errno) +
            "; name a file that this user can write with --audit, or leave it out");
    }
    close(descriptor);
}

std::string quoted(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace

AuditLog::AuditLog() : _logger(loggerTo(std::make_shared<spdlog::sinks::stderr_sink_mt>())) {}

AuditLog::AuditLog(const std::filesystem::path& file) {
    makePrivate(file);
    _logger = loggerTo(std::make_shared<spdlog::sinks::basic_file_sink_mt>(file.string()));
}

void AuditLog::write(const AuditRecord& record) {
    std::string members;
    const auto add = [&members](const char* name, const std::string& text) {
        if (!text.empty()) {
            members.append(members.empty() ? "\"" : ",\"").append(name).append("\":");
            members += quoted(text.substr(0, longestText));
        }
    };
    add("audit", record.event);
    add("user", record.user);
    add("address", record.address);
    add("operation", record.operation);
    add("method", record.method);
    add("object", record.object);
    add("outcome", record.outcome);
    add("returned", record.returned);
    _logger->info("{}", members);
}

} // namespace smisd
