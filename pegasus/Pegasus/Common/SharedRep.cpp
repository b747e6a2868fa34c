#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/SharedRep.h>

namespace Pegasus {

SharedRep::~SharedRep() = default;

void SharedRep::_end() {
    delete this;
}

void throwUninitializedObject() {
    throw UninitializedObjectException();
}

} // namespace Pegasus
