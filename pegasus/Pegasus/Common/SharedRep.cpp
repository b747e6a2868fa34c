#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/SharedRep.h>

namespace Pegasus {

SharedRep::~SharedRep() = default;

void throwUninitializedObject() {
    throw UninitializedObjectException();
}

} // namespace Pegasus
