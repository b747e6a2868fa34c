#include "server/schema/MofDirectory.h"

#include "server/schema/MofReader.h"

using Pegasus::CIMNamespaceName;

namespace smisd {

void readMofDirectory(const std::filesystem::path& directory, Repository& repository) {
    const CIMNamespaceName elements(elementNamespace);
    const CIMNamespaceName interop(interopNamespace);
    readMof(directory / "access-schema.mof", elements, repository);
    readMof(directory / "interop-schema.mof", interop, repository);
    readMof(directory / "interop-instances.mof", interop, repository);
    for (const char* name : otherInteropNamespaces) {
        readMof(directory / "interop-schema.mof", CIMNamespaceName(name), repository);
        readMof(directory / "interop-instances.mof", CIMNamespaceName(name), repository);
    }
    readMof(directory / "access-registration.mof", interop, repository);
}

} // namespace smisd
