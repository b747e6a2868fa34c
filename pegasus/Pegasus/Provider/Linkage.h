#ifndef Pegasus_Provider_Linkage_h
#define Pegasus_Provider_Linkage_h

#include <Pegasus/Common/Config.h>

#define PEGASUS_PROVIDER_LINKAGE PEGASUS_EXPORT

#endif
