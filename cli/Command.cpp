#include "cli/Command.h"

namespace cli {

array::Array& Context::array() {
    if (!_array) {
        _array = array::Array::open(array::stateDirectory(state));
    }
    return *_array;
}

} // namespace cli
