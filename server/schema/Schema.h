// The classes, qualifiers and instances that the server knows, by namespace.
#pragma once

#include <map>
#include <set>
#include <vector>

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/String.h>

#include "server/operation/Operation.h"

namespace smisd {

// CIM names as keys of ordered containers: their case does not count. For CIMName and
// CIMNamespaceName.
struct NameOrder {
    template<class Name>
    bool operator()(const Name& left, const Name& right) const {
        return Pegasus::String::compareNoCase(left.getString(), right.getString()) < 0;
    }
};

// A way through an association: from one of its references to another. An association with two
// references has two links, one each way; one with a single reference has none.
struct Link {
    Pegasus::CIMName association;
    Pegasus::CIMName fromClass;
    Pegasus::CIMName fromRole;
    Pegasus::CIMName toClass;
    Pegasus::CIMName toRole;
};

// The declarations of one namespace. Filled once, by one thread; then read by any number of them.
// Objects that it returns are its own and must not be changed: clone them.
class Schema {
public:
    using Qualifiers = std::map<Pegasus::CIMName, QualifierDeclaration, NameOrder>;

    // Declares what is not declared yet. A class's superclass must be, and a property that the
    // superclass has must be of the same type.
    void declare(const QualifierDeclaration& qualifier);
    void declare(const Pegasus::CIMClass& cimClass);
    void add(const Pegasus::CIMInstance& instance);

    const Qualifiers& qualifiers() const { return _qualifiers; }
    const std::vector<Pegasus::CIMInstance>& instances() const { return _instances; }

    // Null if there is no such declaration.
    const QualifierDeclaration* findQualifier(const Pegasus::CIMName& name) const;

    // The class with everything that it inherits: class origins and propagated flags are set.
    const Pegasus::CIMClass* findClass(const Pegasus::CIMName& name) const;

    // The names of the properties of all classes.
    const std::set<Pegasus::CIMName, NameOrder>& propertyNames() const { return _propertyNames; }

    // The direct subclasses, and with `deep` those below them too, each before its own; of a null
    // name the classes without superclass. Empty for an unknown class.
    std::vector<Pegasus::CIMName> subclasses(const Pegasus::CIMName& name, bool deep) const;

    // Whether the class is `ancestor` or inherits from it.
    bool isA(const Pegasus::CIMName& name, const Pegasus::CIMName& ancestor) const;

    // The links that lead from the class or an ancestor of it, in the order of declaration of the
    // associations.
    std::vector<Link> linksFrom(const Pegasus::CIMName& name) const;

private:
    using Names = std::vector<Pegasus::CIMName>;

    void collect(const Names& names, bool deep, Names& result) const;
    void addLinks(const Pegasus::CIMClass& association);

    Qualifiers _qualifiers;
    std::map<Pegasus::CIMName, Pegasus::CIMClass, NameOrder> _classes;
    std::map<Pegasus::CIMName, Names, NameOrder> _subclasses; // of the null name: the roots
    std::set<Pegasus::CIMName, NameOrder> _propertyNames;
    std::vector<Link> _links;
    std::vector<Pegasus::CIMInstance> _instances;
};

// The schemas of all namespaces of the server. Filled once, by one thread; then read by any number
// of them.
class Repository {
public:
    using Schemas = std::map<Pegasus::CIMNamespaceName, Schema, NameOrder>;

    // Makes the namespace if there is none of the name.
    Schema& open(const Pegasus::CIMNamespaceName& nameSpace) { return _schemas[nameSpace]; }

    // Null if there is no such namespace.
    const Schema* find(const Pegasus::CIMNamespaceName& nameSpace) const {
        const auto found = _schemas.find(nameSpace);
        return found == _schemas.end() ? nullptr : &found->second;
    }

    const Schemas& schemas() const { return _schemas; }

private:
    Schemas _schemas;
};

} // namespace smisd
