#include <algorithm>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMObjectPathRep.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/HostName.h>

namespace Pegasus {

static const CIMObjectPathRep& emptyPath() {
    static const CIMObjectPathRep empty;
    return empty;
}

static const CIMObjectPathRep& contentOf(const Shared<CIMObjectPathRep>& rep) {
    return rep ? *rep : emptyPath();
}

static void checkHost(const String& host) {
    static thread_local String checked; // nearly all paths name one host
    if (host.size() == 0 || String::equal(host, checked)) {
        return;
    }
    if (!isLegalHost(host)) {
        throwMalformedObjectName(host, "invalid hostname");
    }
    checked = host;
}

// In order, with each reference in its canonical form.
static void makeCanonical(Array<CIMKeyBinding>& keys) {
    for (Uint32 i = 0; i < keys.size(); ++i) {
        const CIMKeyBinding& key = std::as_const(keys)[i];
        if (key.getType() != CIMKeyBinding::REFERENCE) {
            continue;
        }
        const String text = CIMObjectPath(key.getValue()).toString();
        if (text != key.getValue()) {
            keys[i].setValue(text);
        }
    }
    sortKeys(keys);
}

CIMObjectPath::CIMObjectPath(const String& objectName) {
    set(objectName);
}

CIMObjectPath::CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace,
                             const CIMName& className, Array<CIMKeyBinding> keyBindings) {
    set(host, nameSpace, className, std::move(keyBindings));
}

CIMObjectPath& CIMObjectPath::operator=(const String& objectName) {
    set(objectName);
    return *this;
}

void CIMObjectPath::clear() {
    *this = CIMObjectPath();
}

void CIMObjectPath::set(const String& host, const CIMNamespaceName& nameSpace,
                        const CIMName& className, Array<CIMKeyBinding> keyBindings) {
    checkHost(host);
    makeCanonical(keyBindings);
    Shared<CIMObjectPathRep> rep(new CIMObjectPathRep);
    rep->keys = std::move(keyBindings);
    rep->host = host;
    rep->nameSpace = nameSpace;
    rep->className = className;
    _rep = std::move(rep);
}

void CIMObjectPath::set(const String& objectName) {
    Shared<CIMObjectPathRep> rep(new CIMObjectPathRep);
    String reason;
    if (!parseObjectPath(objectName, *rep, reason)) {
        throwMalformedObjectName(objectName, reason);
    }
    _rep = std::move(rep);
}

const String& CIMObjectPath::getHost() const {
    return contentOf(_rep).host;
}

void CIMObjectPath::setHost(const String& host) {
    checkHost(host);
    _rep.own().host = host;
}

const CIMNamespaceName& CIMObjectPath::getNameSpace() const {
    return contentOf(_rep).nameSpace;
}

void CIMObjectPath::setNameSpace(const CIMNamespaceName& nameSpace) {
    _rep.own().nameSpace = nameSpace;
}

const CIMName& CIMObjectPath::getClassName() const {
    return contentOf(_rep).className;
}

void CIMObjectPath::setClassName(const CIMName& className) {
    _rep.own().className = className;
}

const Array<CIMKeyBinding>& CIMObjectPath::getKeyBindings() const {
    return contentOf(_rep).keys;
}

void CIMObjectPath::setKeyBindings(Array<CIMKeyBinding> keyBindings) {
    makeCanonical(keyBindings);
    _rep.own().keys = std::move(keyBindings);
}

String CIMObjectPath::toString() const {
    return textOf(contentOf(_rep));
}

Boolean CIMObjectPath::identical(const CIMObjectPath& x) const {
    return equalPaths(contentOf(_rep), contentOf(x._rep));
}

Uint32 CIMObjectPath::makeHashCode() const {
    return hashOf(contentOf(_rep));
}

Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y) {
    return x.identical(y);
}

Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y) {
    return !x.identical(y);
}

} // namespace Pegasus
