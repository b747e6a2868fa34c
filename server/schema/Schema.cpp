#include "server/schema/Schema.h"

#include "server/schema/Inheritance.h"

#include <algorithm>

using namespace Pegasus;

namespace smisd {

void Schema::declare(const QualifierDeclaration& qualifier) {
    _qualifiers.emplace(qualifier.name, qualifier);
}

void Schema::declare(const CIMClass& cimClass) {
    const CIMClass full = withInherited(cimClass, findClass(cimClass.getSuperClassName()));
    _classes.emplace(full.getClassName(), full);
    _subclasses[full.getSuperClassName()].push_back(full.getClassName());
    if (full.isAssociation())
        _associations.push_back(full.getClassName());
}

void Schema::add(const CIMInstance& instance) {
    _instances.push_back(instance);
}

const QualifierDeclaration* Schema::findQualifier(const CIMName& name) const {
    const auto found = _qualifiers.find(name);
    return found == _qualifiers.end() ? nullptr : &found->second;
}

const CIMClass* Schema::findClass(const CIMName& name) const {
    const auto found = _classes.find(name);
    return found == _classes.end() ? nullptr : &found->second;
}

std::vector<CIMName> Schema::subclasses(const CIMName& name, bool deep) const {
    Names result;
    const auto found = _subclasses.find(name);
    if (found != _subclasses.end())
        collect(found->second, deep, result);
    return result;
}

void Schema::collect(const Names& names, bool deep, Names& result) const {
    for (const CIMName& name : names) {
        result.push_back(name);
        const auto found = _subclasses.find(name);
        if (deep && found != _subclasses.end())
            collect(found->second, deep, result);
    }
}

bool Schema::isA(const CIMName& name, const CIMName& ancestor) const {
    for (const CIMClass* one = findClass(name); one; one = findClass(one->getSuperClassName()))
        if (one->getClassName() == ancestor)
            return true;
    return false;
}

std::vector<CIMName> Schema::associationsOf(const CIMName& name) const {
    const auto pointsAtClass = [&](const CIMName& association) {
        const CIMClass& declared = *findClass(association);
        for (Uint32 i = 0; i < declared.getPropertyCount(); ++i) {
            const CIMConstProperty property = declared.getProperty(i);
            if (property.getType() == CIMTYPE_REFERENCE &&
                isA(name, property.getReferenceClassName()))
                return true;
        }
        return false;
    };
    Names result;
    std::copy_if(_associations.begin(), _associations.end(), std::back_inserter(result),
                 pointsAtClass);
    return result;
}

} // namespace smisd
