#pragma once

// All builders of the managed-object library.
//
// A builder is built from plain values and is then the CIMObjectPath (...Path) or the CIMInstance
// (...Instance) that stands for an engine object: with the array's host, the namespace "root/snia",
// and the schema's keys of its class. An instance holds its keys and then the properties that the
// property list names (all, if that is null), carries a "Key" qualifier on each key when qualifiers
// are asked for, and has its path set.
//
// An id that names no object of the class throws CIMObjectNotFoundException, which names the id;
// engine failures throw DRAVOperationFailedException. Builders may be made from any thread; one
// builder is used by one thread.

#include "engine/builders/EndpointOfNetworkPipe.h"
#include "engine/builders/NetworkPipeComposition.h"
#include "engine/builders/Statistics.h"
#include "engine/builders/StorageVolume.h"
#include "engine/builders/TCPProtocolEndpoint.h"
#include "engine/builders/iSCSIConnection.h"
#include "engine/builders/iSCSINode.h"
#include "engine/builders/iSCSIProtocolEndpoint.h"
#include "engine/builders/iSCSISession.h"
#include "engine/builders/iSCSISettings.h"
