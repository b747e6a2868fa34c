#pragma once

#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"

namespace Pegasus {

// What initialize does in every provider: finds the engine and keeps a copy of the server's handle.
inline void attach(DRAVEngine*& engine, CIMOMHandle& kept, const CIMOMHandle& cimom) {
    engine = DRAVEngine::_getInstance();
    kept = cimom;
}

} // namespace Pegasus
