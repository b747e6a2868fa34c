#include <Pegasus/Common/CIMObjectRep.h>
#include <Pegasus/Common/CIMPropertyRep.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

CIMObjectRep::CIMObjectRep(const CIMName& className) {
    if (className.isNull()) {
        throwUninitializedObject();
    }
    path.setClassName(className);
}

CIMObjectRep::CIMObjectRep(const CIMObjectRep& x)
    : SharedRep(x), path(x.path), qualifiers(x.qualifiers.clone()),
      properties(x.properties.clone()) {
    for (Uint32 i = 0; i < properties.size(); ++i) {
        PropertyAccess::setContained(properties[i], true);
    }
}

void CIMObjectRep::setPath(CIMObjectPath x) {
    if (x.getClassName().isNull()) {
        throwUninitializedObject();
    }
    if (x.getClassName() != path.getClassName()) {
        throw TypeMismatchException();
    }
    path = std::move(x);
}

void CIMObjectRep::addProperty(CIMProperty x) {
    properties.add(std::move(x), "property");
    PropertyAccess::setContained(properties[properties.size() - 1], true);
}

void CIMObjectRep::removeProperty(Uint32 index) {
    PropertyAccess::setContained(properties[index], false);
    properties.remove(index);
}

bool CIMObjectRep::identical(const CIMObjectRep& x) const {
    return isClass() == x.isClass() && path == x.path && qualifiers.identical(x.qualifiers) &&
           properties.identical(x.properties);
}

CIMClassRep::CIMClassRep(const CIMClassRep& x)
    : CIMObjectRep(x), superClassName(x.superClassName), methods(x.methods.clone()) {}

bool CIMClassRep::identical(const CIMObjectRep& x) const {
    if (!CIMObjectRep::identical(x)) {
        return false;
    }
    const auto& other = static_cast<const CIMClassRep&>(x);
    return superClassName == other.superClassName && methods.identical(other.methods);
}

const Shared<CIMObjectRep>& instanceRep(const Shared<CIMObjectRep>& rep) {
    if (!rep || rep->isClass()) {
        throw DynamicCastFailedException();
    }
    return rep;
}

const Shared<CIMObjectRep>& classRep(const Shared<CIMObjectRep>& rep) {
    if (!rep || !rep->isClass()) {
        throw DynamicCastFailedException();
    }
    return rep;
}

bool isTrue(const NamedList<CIMQualifier>& qualifiers, const char* name) {
    const Uint32 index = qualifiers.find(name);
    return index != PEG_NOT_FOUND && qualifiers[index].getValue() == CIMValue(true);
}

} // namespace Pegasus
