#pragma once

#include <Pegasus/Common/Config.h>

#define PEGASUS_COMMON_LINKAGE PEGASUS_EXPORT
