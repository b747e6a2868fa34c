#include "tests/support/ServedArray.h"

#include <stdlib.h>

#include <stdexcept>

#include "array/TheArray.h"

namespace scripted {

namespace {

namespace fs = std::filesystem;

// A directory of mode 0700 that DRAV_STATE_DIR names, with an array in it.
class StateDirectory {
public:
    StateDirectory() {
        std::string name = (fs::temp_directory_path() / "served-array-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary directory " + name);
        _path = name;
        setenv("DRAV_STATE_DIR", name.c_str(), 1);
        array::Array::openOrCreate(_path);
    }
    StateDirectory(const StateDirectory&) = delete;
    StateDirectory& operator=(const StateDirectory&) = delete;
    ~StateDirectory() {
        std::error_code ignored;
        fs::remove_all(_path, ignored);
    }

private:
    fs::path _path;
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
            for (const array::Id id : change.state().ids(objectClass))
                change.remove(id);
        }
    });
    return served;
}

} // namespace scripted
