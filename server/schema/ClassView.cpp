#include "server/schema/ClassView.h"

using namespace Pegasus;

namespace smisd {
namespace {

// Of a class, property, method or parameter.
template<class Element>
void removeQualifiers(Element&& element, bool onlyPropagated) {
    for (Uint32 i = element.getQualifierCount(); i-- > 0;)
        if (!onlyPropagated || element.getQualifier(i).getPropagated())
            element.removeQualifier(i);
}

template<class Use>
void eachProperty(CIMClass& of, Use use) {
    for (Uint32 i = 0; i < of.getPropertyCount(); ++i)
        use(of.getProperty(i));
}

template<class Use>
void eachMethod(CIMClass& of, Use use) {
    for (Uint32 i = 0; i < of.getMethodCount(); ++i)
        use(of.getMethod(i));
}

void removeQualifiersOfAll(CIMClass& from, bool onlyPropagated) {
    removeQualifiers(from, onlyPropagated);
    eachProperty(from, [&](CIMProperty property) { removeQualifiers(property, onlyPropagated); });
    eachMethod(from, [&](CIMMethod method) {
        removeQualifiers(method, onlyPropagated);
        for (Uint32 i = 0; i < method.getParameterCount(); ++i)
            removeQualifiers(method.getParameter(i), onlyPropagated);
    });
}

void removePropagated(CIMClass& from) {
    for (Uint32 i = from.getPropertyCount(); i-- > 0;)
        if (from.getProperty(i).getPropagated())
            from.removeProperty(i);
    for (Uint32 i = from.getMethodCount(); i-- > 0;)
        if (from.getMethod(i).getPropagated())
            from.removeMethod(i);
    removeQualifiersOfAll(from, true);
}

bool contains(const CIMPropertyList& list, const CIMName& name) {
    for (Uint32 i = 0; i < list.size(); ++i)
        if (list[i] == name)
            return true;
    return false;
}

void removePropertiesBut(CIMClass& from, const CIMPropertyList& kept) {
    for (Uint32 i = from.getPropertyCount(); i-- > 0;)
        if (!contains(kept, from.getProperty(i).getName()))
            from.removeProperty(i);
}

void removeClassOrigins(CIMClass& from) {
    eachProperty(from, [](CIMProperty property) { property.setClassOrigin(CIMName()); });
    eachMethod(from, [](CIMMethod method) { method.setClassOrigin(CIMName()); });
}

} // namespace

CIMClass viewOf(const CIMClass& complete, const ClassParts& parts) {
    CIMClass result = complete.clone();
    if (parts.localOnly)
        removePropagated(result);
    if (!parts.properties.isNull())
        removePropertiesBut(result, parts.properties);
    if (!parts.includeQualifiers)
        removeQualifiersOfAll(result, false);
    if (!parts.includeClassOrigin)
        removeClassOrigins(result);
    return result;
}

} // namespace smisd
