#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include "engine/DRAVEngine.h"
#include "providers/iscsi/PipeAnswer.h"

namespace Pegasus {

// How the array's sessions and connections are listed and walked. The answer decides what of them
// is delivered.

// Answers with all objects of a class, in the engine's order. Refuses a class that is not served.
void listPipes(DRAVEngine& engine, const CIMName& className, PipeAnswer& answer);

// A walk from an object over an association.
struct PipeWalk {
    const CIMObjectPath& source;
    const CIMName& association;
    const CIMName* farEnd; // class of the objects wanted; null: the associations are wanted
    const char* tag;       // how the lines begin that a walk from an iSCSI endpoint writes
};

// Answers with what the walk leads to. Over CIM_EndpointOfNetworkPipe, between classes that it does
// not join, that is nothing; every other walk that is not served is refused.
void walkPipes(DRAVEngine& engine, const PipeWalk& walk, PipeAnswer& answer);

// An end of an association that the client names by its path.
AssociationEnd givenEnd(const String& role, const CIMObjectPath& path);

} // namespace Pegasus
