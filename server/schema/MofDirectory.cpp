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
    // A copy shares the declarations.
    for (const char* name : otherInteropNamespaces) {
        repository.open(CIMNamespaceName(name)) = repository.open(interop);
    }
    readMof(directory / "access-registration.mof", interop, repository);
}

} // namespace smisd
