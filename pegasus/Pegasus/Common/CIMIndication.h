#ifndef Pegasus_CIMIndication_h
#define Pegasus_CIMIndication_h

#include <Pegasus/Common/CIMInstance.h>

namespace Pegasus {

typedef CIMInstance CIMIndication;

} // namespace Pegasus

#endif
