#include "server/auth/AuditLog.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <tuple>
#include <unistd.h>
#include <utility>

#include <fmt/chrono.h>
#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

#include "server/auth/AddressGroup.h"
#include "server/operation/Printable.h"

namespace smisd {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestText = 1024; // of a member: a client chooses its keys
constexpr int patience = 1000;            // milliseconds with a pipe that is full

int openFile(const fs::path& file) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        throw std::runtime_error(
            "cannot write the audit log " + file.string() + ": " +
            std::generic_category().message(errno) +
            "; name a file that this user can write with --audit, or leave it out");
    }
    return descriptor;
}

// Whether a process died, or a disk was full, in the middle of the file's last line.
bool endsWithinALine(const fs::path& file) {
    std::error_code ignored;
    if (!fs::is_regular_file(file, ignored)) {
        return false;
    }
    std::ifstream in(file, std::ios::binary);
    char last = '\n';
    in.seekg(-1, std::ios::end) && in.get(last);
    return last != '\n';
}

std::string quoted(const std::string& text) {
    return printable(
        nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

// {"time":"2026-11-21T08:49:50.123Z","audit":"change",...}
std::string lineOf(const AuditRecord& record, const std::string& more = "") {
    using namespace std::chrono;
    const auto now = floor<milliseconds>(system_clock::now());
    const auto seconds = floor<std::chrono::seconds>(now);
    std::string line =
        fmt::format("{{\"time\":\"{:%Y-%m-%dT%H:%M:%S}.{:03}Z\"",
                    fmt::gmtime(system_clock::to_time_t(seconds)), (now - seconds).count());
    const auto add = [&line](const char* name, const std::string& text) {
        if (!text.empty()) {
            line.append(",\"").append(name).append("\":");
            line += quoted(text.substr(0, longestText));
        }
    };
    add("audit", record.event);
    if (record.change != 0) {
        line += ",\"change\":" + std::to_string(record.change);
    }
    add("user", record.user);
    add("address", record.address);
    add("operation", record.operation);
    add("method", record.method);
    add("object", record.object);
    add("outcome", record.outcome);
    add("returned", record.returned);
    return line + more + "}\n";
}

std::string sumOf(const AuditRecord& kind, std::uint64_t repeats) {
    return lineOf(kind, fmt::format(",\"repeated\":{},\"seconds\":{}", repeats,
                                    RepeatSums<AuditRecord>::period.count()));
}

// Without what a client may choose freely.
AuditRecord kindOf(const AuditRecord& record) {
    AuditRecord kind;
    kind.event = record.event;
    kind.user = record.user;
    kind.address = addressGroup(record.address);
    kind.operation = record.operation;
    kind.outcome = record.outcome;
    return kind;
}

// There are few of these.
AuditRecord widerKindOf(const AuditRecord& record) {
    AuditRecord kind;
    kind.event = record.event;
    kind.outcome = record.outcome;
    return kind;
}

} // namespace

bool AuditRecord::operator<(const AuditRecord& other) const {
    const auto members = [](const AuditRecord& record) {
        return std::tie(record.event, record.user, record.address, record.operation, record.method,
                        record.object, record.outcome, record.returned, record.change);
    };
    return members(*this) < members(other);
}

AuditLog::AuditLog() : AuditLog(fs::path()) {}

AuditLog::AuditLog(const fs::path& file)
    : _file(file), _descriptor(file.empty() ? STDERR_FILENO : openFile(file)),
      _torn(endsWithinALine(file)), _repeats(std::make_unique<RepeatSums<AuditRecord>>(
                                        [this](const AuditRecord& kind, std::uint64_t repeats) {
                                            append(sumOf(kind, repeats));
                                        })) {}

AuditLog::~AuditLog() {
    _repeats.reset(); // writes what is left
    if (!_file.empty()) {
        close(_descriptor);
    }
}

bool AuditLog::write(const AuditRecord& record) {
    return append(lineOf(record));
}

void AuditLog::writeSummed(const AuditRecord& record) {
    if (_repeats->isFirst(kindOf(record), widerKindOf(record))) {
        write(record);
    }
}

void AuditLog::reopen() {
    if (_file.empty()) {
        return;
    }
    const int opened = openFile(_file);
    const bool torn = endsWithinALine(_file);
    const std::lock_guard lock(_mutex);
    close(std::exchange(_descriptor, opened));
    _torn = torn;
}

bool AuditLog::append(const std::string& line) {
    const int error = [&] {
        const std::lock_guard lock(_mutex);
        return writeAll(_torn ? '\n' + line : line);
    }();
    if (error != 0) {
        ++_lost;
        spdlog::error("the audit log cannot be written: {}",
                      std::generic_category().message(error));
    }
    return error == 0;
}

// Returns 0, or what errno says after a part of the text or none. Lines of the log, which go to
// standard error too, stay whole.
int AuditLog::writeAll(std::string_view text) {
    flockfile(stderr);
    const std::unique_ptr<FILE, decltype(&funlockfile)> whole(stderr, funlockfile);
    while (!text.empty()) {
        if (!hasRoom()) {
            return EAGAIN;
        }
        const ssize_t count =
            ::write(_descriptor, text.data(), std::min<std::size_t>(text.size(), PIPE_BUF));
        if (count > 0) {
            const auto written = static_cast<std::size_t>(count);
            _torn = text[written - 1] != '\n';
            text.remove_prefix(written);
        } else if (count == 0 || errno != EINTR) {
            return count == 0 ? ENOSPC : errno;
        }
    }
    return 0;
}

// A pipe that nobody reads is as good as a full disk. One that has room has it for PIPE_BUF bytes.
bool AuditLog::hasRoom() {
    pollfd output{_descriptor, POLLOUT, 0};
    _full = poll(&output, 1, _full ? 0 : patience) != 1;
    return !_full;
}

} // namespace smisd
