// Who changed what, and who was refused.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "server/auth/RepeatSums.h"

namespace smisd {

// What is known of one event; members that are empty are left out of its line. There is no place in
// it for values of properties and parameters: they may be secrets.
struct AuditRecord {
    std::string event = {}; // "change", "refusal" or "login"
    std::string user = {};
    std::string address = {};
    std::string operation = {}; // "ModifyInstance"
    std::string method = {};    // the name of an extrinsic method
    std::string object = {};    // "root/snia:CIM_X.InstanceID=\"1\""
    std::string outcome = {};   // "begun", "success", the name of a CIM status code, or a reason
    std::string returned = {};  // by an extrinsic method: its return value, an integer
    std::uint64_t change = 0;   // the number of a change; 0: none

    bool operator<(const AuditRecord& other) const; // some order of records
};

// Writes records as lines of JSON, whatever the level of the log is. Thread-safe.
//
// A line that could be written in part only is ended before the next one is written.
class AuditLog {
public:
    // To standard error, or to the end of a file of mode 0600. Throws std::runtime_error that names
    // the file when it cannot be opened.
    AuditLog();
    explicit AuditLog(const std::filesystem::path& file);
    ~AuditLog();
    AuditLog(const AuditLog&) = delete;
    AuditLog& operator=(const AuditLog&) = delete;

    // Whether the line was written. If it was not, the log says why.
    bool write(const AuditRecord& record);

    // For what clients can cause without end: writes the first record of its kind, which is its
    // event, user, address (IPv6: /64), operation and outcome, and the sum of those that follow.
    void writeSummed(const AuditRecord& record);

    // Opens the file again, which somebody may have moved. Throws std::runtime_error, and goes on
    // with the one that is open, when it cannot be opened.
    void reopen();

    // Lines that could not be written.
    std::uint64_t lost() const { return _lost; }

private:
    bool append(const std::string& line);
    int writeAll(std::string_view text); // the lock is held
    bool hasRoom();

    const std::filesystem::path _file; // empty: standard error
    std::atomic<std::uint64_t> _lost{0};

    std::mutex _mutex; // guards what follows
    int _descriptor;
    bool _torn = false; // the last line lacks its end
    bool _full = false; // when last looked

    std::unique_ptr<RepeatSums<AuditRecord>> _repeats; // has a lock of its own
};

} // namespace smisd
