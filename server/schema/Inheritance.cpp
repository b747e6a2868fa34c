#include "server/schema/Inheritance.h"

#include <vector>

using namespace Pegasus;

namespace smisd {
namespace {

// Qualifiers that go to subclasses stand before the element's own ones, the last one first, as
// OpenPegasus lists them. An own one replaces an inherited one.
template<class Element, class Inherited>
void inheritQualifiers(Element& element, const Inherited& inherited) {
    std::vector<CIMQualifier> own;
    for (Uint32 i = 0; i < element.getQualifierCount(); ++i)
        own.push_back(element.getQualifier(i));
    std::vector<CIMQualifier> propagated;
    for (Uint32 i = 0; i < inherited.getQualifierCount(); ++i) {
        const CIMConstQualifier qualifier = inherited.getQualifier(i);
        const bool isOwn = element.findQualifier(qualifier.getName()) != PEG_NOT_FOUND;
        if (!isOwn && qualifier.getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS)) {
            propagated.push_back(qualifier.clone());
            propagated.back().setPropagated(true);
        }
    }
    while (element.getQualifierCount() > 0)
        element.removeQualifier(element.getQualifierCount() - 1);
    for (auto qualifier = propagated.rbegin(); qualifier != propagated.rend(); ++qualifier)
        element.addQualifier(*qualifier);
    for (const CIMQualifier& qualifier : own)
        element.addQualifier(qualifier);
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
        if (Access::find(declared, feature.getName()) != PEG_NOT_FOUND)
            continue;
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
    if (superclass)
        inheritFeatures<Access>(result, declared, *superclass);
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

} // namespace

CIMClass withInherited(const CIMClass& declared, const CIMClass* superclass) {
    CIMClass result(declared.getClassName(), declared.getSuperClassName());
    for (Uint32 i = 0; i < declared.getQualifierCount(); ++i)
        result.addQualifier(declared.getQualifier(i).clone());
    if (superclass)
        inheritQualifiers(result, *superclass);
    addFeatures<PropertyAccess>(result, declared, superclass);
    addFeatures<MethodAccess>(result, declared, superclass);
    return result;
}

} // namespace smisd
