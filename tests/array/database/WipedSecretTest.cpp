#include <fstream>
#include <iterator>

#include <SQLiteCpp/Database.h>

#include "array/database/StateDirectory.h"
#include "tests/array/ArrayFixture.h"

// What stands on disk of a secret that is no longer one.

namespace array {
namespace {

constexpr const char* secret = "a secret that nobody may find";

class WipedSecretTest : public ArrayFixture {
protected:
    // The files of the state directory in which the secret stands.
    std::vector<std::string> holders() const {
        std::vector<std::string> found;
        for (const auto& file : fs::directory_iterator(state())) {
            std::ifstream in(file.path(), std::ios::binary);
            const std::string all((std::istreambuf_iterator<char>(in)),
                                  std::istreambuf_iterator<char>());
            if (all.find(secret) != std::string::npos) {
                found.push_back(file.path().filename().string());
            }
        }
        return found;
    }
    void set(Id initiator, const std::string& value) {
        change([&](Change& change) {
            change.modify(initiator, Initiator{"iqn.2026-01.com.example:host1", value});
        });
    }
    // Puts what the log has into array.db.
    void checkpoint() const {
        SQLite::Database(databaseIn(state()).string(), SQLite::OPEN_READWRITE)
            .exec("PRAGMA wal_checkpoint");
    }

    const Id _initiator = addInitiator("host1", secret);
};

TEST_F(WipedSecretTest, IsNowhereWhenItWasCleared) {
    checkpoint();
    EXPECT_EQ(holders().size(), 2u); // so it would be found
    set(_initiator, "");
    EXPECT_EQ(holders(), std::vector<std::string>{});
}

TEST_F(WipedSecretTest, IsNowhereWhenAnotherWasSet) {
    set(_initiator, "another good secret");
    EXPECT_EQ(holders(), std::vector<std::string>{});
}

TEST_F(WipedSecretTest, IsNowhereWhenItsOwnerWasRemoved) {
    change([&](Change& change) { change.remove(_initiator); });
    EXPECT_EQ(holders(), std::vector<std::string>{});
    const Id target = create(Target{"iqn.2026-01.com.example:t1", secret});
    change([&](Change& change) { change.remove(target); });
    EXPECT_EQ(holders(), std::vector<std::string>{});
}

TEST_F(WipedSecretTest, IsNowhereInFreedPages) {
    change([](Change& change) {
        for (int i = 0; i < 1000; ++i) {
            change.create(Initiator{"iqn.2026-01.com.example:h" + std::to_string(i), secret});
        }
    });
    change([&](Change& change) {
        for (const Id id : change.snapshot().ids(Pegasus::CLASSID_INITIATOR)) {
            change.remove(id);
        }
    });
    checkpoint();
    EXPECT_EQ(holders(), std::vector<std::string>{});
}

TEST_F(WipedSecretTest, IsNowhereAfterTheNextChangeIfSomebodyWasReading) {
    {
        SQLite::Database reader(databaseIn(state()).string());
        reader.exec("BEGIN; SELECT * FROM array");
        set(_initiator, "");
        EXPECT_EQ(holders(), std::vector<std::string>{"array.db-wal"});
        reader.exec("ROLLBACK");
    }
    addVolume();
    EXPECT_EQ(holders(), std::vector<std::string>{});
}

} // namespace
} // namespace array
