#include "tests/support/ServedArray.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "array/adapter/ThisArray.h"
#include "tests/array/ArrayFixture.h"
#include "tests/support/Log.h"

namespace scripted {

namespace {

// A state directory that the engine of this process finds.
class StateDirectory {
public:
    StateDirectory() {
        setenv("DRAV_STATE_DIR", _directory.path().c_str(), 1);
        array::Array::openOrCreate(_directory.path());
    }

private:
    array::TemporaryDirectory _directory;
};

} // namespace

array::Array& emptyServedArray() {
    using namespace Pegasus;
    static const StateDirectory directory;
    array::Array& served = array::theArray();
    served.change([](array::Change& change) {
        for (const CLASSID_e objectClass :
             {CLASSID_ISCSI_SESSION, CLASSID_LOGICAL_UNIT, CLASSID_TARGET, CLASSID_INITIATOR,
              CLASSID_VOLUME, CLASSID_TCP_ENDPOINT}) {
            for (const array::Id id : change.snapshot().ids(objectClass)) {
                change.remove(id);
            }
        }
    });
    return served;
}

array::ErrorCode refusal(const std::function<void()>& call) {
    try {
        call();
    } catch (const Pegasus::DRAVOperationFailedException& exception) {
        EXPECT_NE(log().back(), "complete");
        return static_cast<array::ErrorCode>(exception.code);
    }
    ADD_FAILURE() << "not refused";
    return {};
}

} // namespace scripted
