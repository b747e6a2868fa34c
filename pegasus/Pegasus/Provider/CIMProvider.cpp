#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/CIMProvider.h>

namespace Pegasus {

CIMProvider::CIMProvider() = default;
CIMProvider::~CIMProvider() = default;

CIMInstanceProvider::CIMInstanceProvider() = default;
CIMInstanceProvider::~CIMInstanceProvider() = default;

CIMMethodProvider::CIMMethodProvider() = default;
CIMMethodProvider::~CIMMethodProvider() = default;

CIMAssociationProvider::CIMAssociationProvider() = default;
CIMAssociationProvider::~CIMAssociationProvider() = default;

} // namespace Pegasus
