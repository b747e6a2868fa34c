#include "server/schema/Schema.h"

#include <algorithm>
#include <iterator>

#include "server/schema/ClassView.h"

using namespace Pegasus;

namespace smisd {

void Schema::declare(const QualifierDeclaration& qualifier) {
    _qualifiers.emplace(qualifier.name, qualifier);
}

void Schema::declare(const CIMClass& cimClass) {
    const CIMClass full = withInherited(cimClass, findClass(cimClass.getSuperClassName()));
    _classes.emplace(full.getClassName(), full);
    _subclasses[full.getSuperClassName()].push_back(full.getClassName());
    for (Uint32 i = 0; i < full.getPropertyCount(); ++i) {
        _propertyNames.insert(full.getProperty(i).getName());
    }
    if (full.isAssociation()) {
        addLinks(full);
    }
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
    if (found != _subclasses.end()) {
        collect(found->second, deep, result);
    }
    return result;
}

void Schema::collect(const Names& names, bool deep, Names& result) const {
    for (const CIMName& name : names) {
        result.push_back(name);
        const auto found = _subclasses.find(name);
        if (deep && found != _subclasses.end()) {
            collect(found->second, deep, result);
        }
    }
}

bool Schema::isA(const CIMName& name, const CIMName& ancestor) const {
    for (const CIMClass* one = findClass(name); one; one = findClass(one->getSuperClassName())) {
        if (one->getClassName() == ancestor) {
            return true;
        }
    }
    return false;
}

void Schema::addLinks(const CIMClass& association) {
    std::vector<CIMConstProperty> references;
    for (Uint32 i = 0; i < association.getPropertyCount(); ++i) {
        if (association.getProperty(i).getType() == CIMTYPE_REFERENCE) {
            references.push_back(association.getProperty(i));
        }
    }
    for (size_t from = 0; from < references.size(); ++from) {
        for (size_t to = 0; to < references.size(); ++to) {
            if (from != to) {
                _links.push_back(
                    {association.getClassName(), references[from].getReferenceClassName(),
                     references[from].getName(), references[to].getReferenceClassName(),
                     references[to].getName()});
            }
        }
    }
}

std::vector<Link> Schema::linksFrom(const CIMName& name) const {
    std::vector<Link> result;
    std::copy_if(_links.begin(), _links.end(), std::back_inserter(result),
                 [&](const Link& link) { return isA(name, link.fromClass); });
    return result;
}

} // namespace smisd
