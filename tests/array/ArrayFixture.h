#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "array/Array.h"
#include "array/model/ErrorCode.h"
#include "array/model/Text.h"

namespace array {

namespace fs = std::filesystem;

// A directory of mode 0700 that is gone at the end.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (fs::temp_directory_path() / "array-XXXXXX").string();
        if (!mkdtemp(name.data())) {
            throw std::runtime_error("no temporary directory");
        }
        _path = name;
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        fs::permissions(_path, fs::perms::owner_all, ignored);
        fs::remove_all(_path, ignored);
    }
    const fs::path& path() const { return _path; }

private:
    fs::path _path;
};

// What a call threw: code and message; code 0: nothing.
struct Failure {
    ErrorCode code{};
    std::string message;
};

inline Failure failureOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const Pegasus::DRAVOperationFailedException& failure) {
        return {static_cast<ErrorCode>(failure.code), toUtf8(failure.getMessage())};
    }
    return {};
}

// Expects a call to be refused so.
inline void expectFailure(ErrorCode code, const std::string& message,
                          const std::function<void()>& call) {
    const Failure failure = failureOf(call);
    EXPECT_EQ(static_cast<int>(failure.code), static_cast<int>(code));
    EXPECT_EQ(failure.message, message);
}

// An array in a state directory of its own.
class ArrayFixture : public testing::Test {
protected:
    fs::path state() const { return _directory.path() / "state"; }
    Array& array() { return *_array; }
    SnapshotPtr now() { return _array->snapshot(); }

    void reopen() {
        _array.reset();
        _array = Array::open(state());
    }

    void change(const std::function<void(Change&)>& make) { _array->change(make); }
    template<class Record>
    Id create(const Record& record) {
        Id id = 0;
        change([&](Change& change) { id = change.create(record); });
        return id;
    }

    // Objects with good values.
    Id addTarget(const std::string& name = "t1") {
        return create(Target{"iqn.2026-01.com.example:" + name, {}});
    }
    Id addInitiator(const std::string& name = "host1", const std::string& secret = {}) {
        return create(Initiator{"iqn.2026-01.com.example:" + name, secret});
    }
    Id addVolume(const std::string& name = "60014051A2B3C4D5") {
        return create(Volume{name, "mail", 1 << 30, 0});
    }
    Id addUnit(Id target, std::uint32_t lun, Id volume) {
        return create(LogicalUnit{target, lun, 0, volume, {}});
    }
    Id addEndpoint(const std::string& address = "192.0.2.10") {
        return create(Endpoint{address, 3260});
    }

    TemporaryDirectory _directory;
    std::unique_ptr<Array> _array = Array::openOrCreate(state());
};

} // namespace array
