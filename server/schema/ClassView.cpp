#include "server/schema/ClassView.h"

#include <vector>

#include <Pegasus/Common/PropertyListAccess.h>

using namespace Pegasus;

namespace smisd {
namespace {

// Qualifiers that go to subclasses stand before the element's own ones, the last one first, as
// OpenPegasus lists them. An own one replaces an inherited one.
template<class Element, class Inherited>
void inheritQualifiers(Element& element, const Inherited& inherited) {
    std::vector<CIMQualifier> own;
    for (Uint32 i = 0; i < element.getQualifierCount(); ++i) {
        own.push_back(element.getQualifier(i));
    }
    std::vector<CIMQualifier> propagated;
    for (Uint32 i = 0; i < inherited.getQualifierCount(); ++i) {
        const CIMConstQualifier qualifier = inherited.getQualifier(i);
        const bool isOwn = element.findQualifier(qualifier.getName()) != PEG_NOT_FOUND;
        if (!isOwn && qualifier.getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS)) {
            propagated.push_back(qualifier.clone());
            propagated.back().setPropagated(true);
        }
    }
    while (element.getQualifierCount() > 0) {
        element.removeQualifier(element.getQualifierCount() - 1);
    }
    for (auto qualifier = propagated.rbegin(); qualifier != propagated.rend(); ++qualifier) {
        element.addQualifier(*qualifier);
    }
    for (const CIMQualifier& qualifier : own) {
        element.addQualifier(qualifier);
    }
}

struct PropertyAccess {
    using Feature = CIMProperty;
    static Uint32 count(const CIMClass& of) { return of.getPropertyCount(); }
    static Uint32 find(const CIMClass& in, const CIMName& name) { return in.findProperty(name); }
    static CIMConstProperty get(const CIMClass& of, Uint32 i) { return of.getProperty(i); }
    static CIMProperty get(CIMClass& of, Uint32 i) { return of.getProperty(i); }
    static void add(CIMClass& to, const CIMProperty& feature) { to.addProperty(feature); }
};

struct MethodAccess {
    using Feature = CIMMethod;
    static Uint32 count(const CIMClass& of) { return of.getMethodCount(); }
    static Uint32 find(const CIMClass& in, const CIMName& name) { return in.findMethod(name); }
    static CIMConstMethod get(const CIMClass& of, Uint32 i) { return of.getMethod(i); }
    static CIMMethod get(CIMClass& of, Uint32 i) { return of.getMethod(i); }
    static void add(CIMClass& to, const CIMMethod& feature) { to.addMethod(feature); }
};

// The superclass's features that the class does not declare anew. What the superclass inherited
// itself is shared with it.
template<class Access>
void inheritFeatures(CIMClass& result, const CIMClass& declared, CIMClass superclass) {
    for (Uint32 i = 0; i < Access::count(superclass); ++i) {
        typename Access::Feature feature = Access::get(superclass, i);
        if (Access::find(declared, feature.getName()) != PEG_NOT_FOUND) {
            continue;
        }
        if (!feature.getPropagated()) {
            feature = feature.clone();
            feature.setPropagated(true);
        }
        Access::add(result, feature);
    }
}

template<class Access>
void addFeatures(CIMClass& result, const CIMClass& declared, const CIMClass* superclass) {
    using Feature = typename Access::Feature;
    if (superclass) {
        inheritFeatures<Access>(result, declared, *superclass);
    }
    for (Uint32 i = 0; i < Access::count(declared); ++i) {
        Feature feature = Access::get(declared, i).clone();
        feature.setClassOrigin(declared.getClassName());
        const Uint32 at =
            superclass ? Access::find(*superclass, feature.getName()) : Uint32(PEG_NOT_FOUND);
        if (at != PEG_NOT_FOUND) {
            const auto overridden = Access::get(*superclass, at);
            feature.setClassOrigin(overridden.getClassOrigin());
            inheritQualifiers(feature, overridden);
        }
        Access::add(result, feature);
    }
}

// Of a class, property, method or parameter.
template<class Element>
void removeQualifiers(Element&& element, bool onlyPropagated) {
    for (Uint32 i = element.getQualifierCount(); i-- > 0;) {
        if (!onlyPropagated || element.getQualifier(i).getPropagated()) {
            element.removeQualifier(i);
        }
    }
}

template<class Use>
void eachProperty(CIMClass& of, Use use) {
    for (Uint32 i = 0; i < of.getPropertyCount(); ++i) {
        use(of.getProperty(i));
    }
}

template<class Use>
void eachMethod(CIMClass& of, Use use) {
    for (Uint32 i = 0; i < of.getMethodCount(); ++i) {
        use(of.getMethod(i));
    }
}

void removeQualifiersOfAll(CIMClass& from, bool onlyPropagated) {
    removeQualifiers(from, onlyPropagated);
    eachProperty(from, [&](CIMProperty property) { removeQualifiers(property, onlyPropagated); });
    eachMethod(from, [&](CIMMethod method) {
        removeQualifiers(method, onlyPropagated);
        for (Uint32 i = 0; i < method.getParameterCount(); ++i) {
            removeQualifiers(method.getParameter(i), onlyPropagated);
        }
    });
}

void removePropagated(CIMClass& from) {
    for (Uint32 i = from.getPropertyCount(); i-- > 0;) {
        if (from.getProperty(i).getPropagated()) {
            from.removeProperty(i);
        }
    }
    for (Uint32 i = from.getMethodCount(); i-- > 0;) {
        if (from.getMethod(i).getPropagated()) {
            from.removeMethod(i);
        }
    }
    removeQualifiersOfAll(from, true);
}

void removePropertiesBut(CIMClass& from, const CIMPropertyList& kept) {
    for (Uint32 i = from.getPropertyCount(); i-- > 0;) {
        if (!PropertyListAccess::contains(kept, from.getProperty(i).getName())) {
            from.removeProperty(i);
        }
    }
}

void removeClassOrigins(CIMClass& from) {
    eachProperty(from, [](CIMProperty property) { property.setClassOrigin(CIMName()); });
    eachMethod(from, [](CIMMethod method) { method.setClassOrigin(CIMName()); });
}

} // namespace

CIMClass withInherited(const CIMClass& declared, const CIMClass* superclass) {
    CIMClass result(declared.getClassName(), declared.getSuperClassName());
    for (Uint32 i = 0; i < declared.getQualifierCount(); ++i) {
        result.addQualifier(declared.getQualifier(i).clone());
    }
    if (superclass) {
        inheritQualifiers(result, *superclass);
    }
    addFeatures<PropertyAccess>(result, declared, superclass);
    addFeatures<MethodAccess>(result, declared, superclass);
    return result;
}

CIMClass viewOf(const CIMClass& complete, const ClassParts& parts) {
    CIMClass result = complete.clone();
    if (parts.localOnly) {
        removePropagated(result);
    }
    if (!parts.properties.isNull()) {
        removePropertiesBut(result, parts.properties);
    }
    if (!parts.includeQualifiers) {
        removeQualifiersOfAll(result, false);
    }
    if (!parts.includeClassOrigin) {
        removeClassOrigins(result);
    }
    return result;
}

} // namespace smisd
