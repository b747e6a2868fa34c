// Who changed what, and who was refused.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace spdlog {
class logger;
}

namespace smisd {

// What is known of one event; members that are empty are left out of its line. There is no place in
// it for values of properties and parameters: they may be secrets.
struct AuditRecord {
    std::string event; // "change", "refusal" or "login"
    std::string user;
    std::string address;
    std::string operation; // "ModifyInstance"
    std::string method;    // the name of an extrinsic method
    std::string object;    // "root/snia:CIM_X.InstanceID=\"1\""
    std::string outcome;   // "success", or the name of a CIM status code, or a reason
    std::string returned;  // by an extrinsic method: its return value, an integer
};

// Writes each record as a line of JSON, whatever the level of the log is. Thread-safe.
class AuditLog {
public:
    // To standard error, or to the end of a file of mode 0600. Throws std::runtime_error that names
    // the file when it cannot be opened.
    AuditLog();
    explicit AuditLog(const std::filesystem::path& file);

    void write(const AuditRecord& record);

private:
    std::shared_ptr<spdlog::logger> _logger;
};

} // namespace smisd
