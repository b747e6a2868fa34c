#include <Pegasus/Common/CIMObjectPathRep.h>

namespace Pegasus {

static void appendChar(String& out, char c) {
    out.append(Char16(static_cast<unsigned char>(c)));
}

static void appendQuoted(String& out, const String& text) {
    appendChar(out, '"');
    const Char16 *p = text.getChar16Data(), *const end = p + text.size();
    for (const Char16* plain = p; plain != end; p = plain) {
        while (plain != end && *plain != '"' && *plain != '\\') {
            ++plain;
        }
        out.append(p, static_cast<Uint32>(plain - p));
        if (plain != end) {
            appendChar(out, '\\');
            out.append(*plain++);
        }
    }
    appendChar(out, '"');
}

static void appendKey(String& out, const CIMKeyBinding& key) {
    out.append(key.getName().getString());
    appendChar(out, '=');
    if (key.getType() == CIMKeyBinding::STRING || key.getType() == CIMKeyBinding::REFERENCE) {
        appendQuoted(out, key.getValue());
    } else {
        out.append(key.getValue());
    }
}

String textOf(const CIMObjectPathRep& path) {
    String text;
    text.reserveCapacity(160); // most paths have less
    if (path.host.size() != 0) {
        appendChar(text, '/');
        appendChar(text, '/');
        text.append(path.host);
        appendChar(text, '/');
    }
    if (path.host.size() != 0 || !path.nameSpace.isNull()) {
        text.append(path.nameSpace.getString());
        appendChar(text, ':');
    }
    text.append(path.className.getString());
    for (Uint32 i = 0; i < path.keys.size(); ++i) {
        appendChar(text, i == 0 ? '.' : ',');
        appendKey(text, path.keys[i]);
    }
    return text;
}

bool equalPaths(const CIMObjectPathRep& x, const CIMObjectPathRep& y) {
    if (&x == &y) {
        return true;
    }
    if (!String::equalNoCase(x.host, y.host) || x.nameSpace != y.nameSpace ||
        x.className != y.className || x.keys.size() != y.keys.size()) {
        return false;
    }
    for (Uint32 i = 0; i < x.keys.size(); ++i) {
        if (!(x.keys[i] == y.keys[i])) {
            return false;
        }
    }
    return true;
}

// FNV-1a, 32 bits
static Uint32 mixed(Uint32 hash, Uint32 x) {
    return (hash ^ x) * 16777619U;
}

static Uint32 mixed(Uint32 hash, const String& text, bool foldCase) {
    String folded = text;
    if (foldCase) {
        folded.toLower();
    }
    for (const Char16 *p = folded.getChar16Data(), *end = p + folded.size(); p != end; ++p) {
        hash = mixed(hash, Uint32(*p));
    }
    return mixed(hash, folded.size());
}

// Equal keys give equal numbers, also where keys of different text are equal: of a number its value
// counts, if it is whole, and of a reference the path, if the text is one.
static Uint32 mixed(Uint32 hash, const CIMKeyBinding& key) {
    hash = mixed(hash, key.getName().getString(), true);
    const String& value = key.getValue();
    switch (key.getType()) {
    case CIMKeyBinding::STRING:
        return mixed(hash, value, false);
    case CIMKeyBinding::BOOLEAN:
        return mixed(hash, value, true);
    case CIMKeyBinding::NUMERIC: {
        const auto number = keyNumber(value);
        return number ? mixed(hash, static_cast<Uint32>(number->magnitude)) : hash;
    }
    case CIMKeyBinding::REFERENCE:
        break;
    }
    CIMObjectPathRep target;
    String ignored;
    return parseObjectPath(value, target, ignored) ? mixed(hash, hashOf(target)) : hash;
}

Uint32 hashOf(const CIMObjectPathRep& path) {
    Uint32 hash = 2166136261U;
    hash = mixed(hash, path.host, true);
    hash = mixed(hash, path.nameSpace.getString(), true);
    hash = mixed(hash, path.className.getString(), true);
    for (Uint32 i = 0; i < path.keys.size(); ++i) {
        hash = mixed(hash, path.keys[i]);
    }
    return hash;
}

} // namespace Pegasus
