// [//host/][namespace:]Class[.key=value{,key=value}]

#include <algorithm>
#include <utility>

#include <Pegasus/Common/CIMObjectPathRep.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/HostName.h>
#include <Pegasus/Common/Numeral.h>

namespace Pegasus {

namespace {

class Parser {
public:
    Parser(const String& text, CIMObjectPathRep& path, String& reason)
        : _p(text.getChar16Data()), _end(_p + text.size()), _path(path), _reason(reason) {}

    // Each step reads its part of the text; false if it is malformed.
    bool all() { return host() && nameSpace() && className() && keys(); }

private:
    bool host();
    bool nameSpace();
    bool className();
    bool keys();
    bool key();
    bool value(const CIMName& name);
    bool quoted(const CIMName& name);
    bool boolean(const CIMName& name, const String& text);
    bool number(const CIMName& name, const String& text);

    bool fail(const String& reason) {
        _reason = reason;
        return false;
    }
    bool failInKey(const String& reason) { return fail("invalid key-value pair, " + reason); }

    const Char16* find(char c) const { return std::find(_p, _end, Char16(Uint16(c))); }
    // The text up to `to`, which becomes the present place.
    String take(const Char16* to) {
        const Char16* from = std::exchange(_p, to);
        return String(from, static_cast<Uint32>(to - from));
    }
    void add(const CIMName& name, const String& text, CIMKeyBinding::Type type) {
        _path.keys.append(CIMKeyBinding(name, text, type));
    }

    const Char16* _p; // the present place
    const Char16* const _end;
    CIMObjectPathRep& _path;
    String& _reason;
};

bool Parser::host() {
    if (_end - _p < 2 || _p[0] != '/' || _p[1] != '/') {
        return true;
    }
    _p += 2;
    const Char16* slash = find('/');
    if (slash == _end) {
        return fail("missing slash after hostname");
    }
    _path.host = take(slash);
    if (!isLegalHost(_path.host)) {
        return fail("invalid hostname");
    }
    ++_p;
    return true;
}

bool Parser::nameSpace() {
    const Char16* colon = find(':');
    if (colon > find('.')) {
        colon = _end;
    }
    if (colon == _end) {
        return _path.host.size() == 0 || fail("host specified, missing namespace");
    }
    const String text = take(colon);
    const bool doubleSlash = _path.host.size() != 0 && text[0] == '/';
    if (doubleSlash || !CIMNamespaceName::legal(text)) {
        return fail("invalid namespace name");
    }
    _path.nameSpace = CIMNamespaceName(text);
    ++_p;
    return true;
}

bool Parser::className() {
    const String text = take(find('.'));
    if (!CIMName::legal(text)) {
        return fail("class name " + text + " not a legal CIM name");
    }
    _path.className = CIMName(text);
    return true;
}

bool Parser::keys() {
    if (_p == _end) {
        return true;
    }
    ++_p; // the dot
    while (_p != _end) {
        if (!key()) {
            return false;
        }
        if (_p == _end) {
            break;
        }
        if (*_p != ',') {
            return failInKey("next key-value pair has to start with comma");
        }
        ++_p;
    }
    sortKeys(_path.keys);
    return true;
}

bool Parser::key() {
    const Char16* equals = find('=');
    if (equals == _end) {
        return failInKey("missing equal sign");
    }
    const String text = take(equals);
    if (!CIMName::legal(text)) {
        return failInKey("invalid key name:" + text);
    }
    ++_p;
    return value(CIMName(text));
}

bool Parser::value(const CIMName& name) {
    if (_p != _end && *_p == '"') {
        return quoted(name);
    }
    const String text = take(find(','));
    const int first = text[0] | 0x20; // to lower case
    return first == 't' || first == 'f' ? boolean(name, text) : number(name, text);
}

bool isMarked(Char16 c) {
    return c == '"' || c == '\\';
}

// A text that is itself the path of an instance, which has a key, is a reference.
bool Parser::quoted(const CIMName& name) {
    String text;
    const Char16* plain = ++_p;
    while ((plain = std::find_if(plain, _end, isMarked)) != _end && *plain == '\\') {
        const Char16* const escaped = plain + 1;
        text.append(take(plain));
        if (escaped == _end || !isMarked(*escaped)) {
            return failInKey("malformed value");
        }
        _p = escaped;
        plain = escaped + 1;
    }
    text.append(take(plain));
    if (_p == _end) {
        return failInKey("missing quote in key value");
    }
    ++_p;

    CIMObjectPathRep target;
    String ignored;
    if (text.find(Char16('=')) != PEG_NOT_FOUND && parseObjectPath(text, target, ignored)) {
        add(name, textOf(target), CIMKeyBinding::REFERENCE);
    } else {
        add(name, text, CIMKeyBinding::STRING);
    }
    return true;
}

bool Parser::boolean(const CIMName& name, const String& text) {
    for (const char* literal : {"TRUE", "FALSE"}) {
        if (String::equalNoCase(text, literal)) {
            add(name, literal, CIMKeyBinding::BOOLEAN);
            return true;
        }
    }
    return failInKey("value should be TRUE or FALSE");
}

bool Parser::number(const CIMName& name, const String& text) {
    if (!wholeNumber(text)) {
        return failInKey(
            (text[0] == '-' ? "invalid negative number value " : "invalid number value ") + text);
    }
    add(name, text, CIMKeyBinding::NUMERIC);
    return true;
}

} // namespace

bool parseObjectPath(const String& text, CIMObjectPathRep& path, String& reason) {
    return Parser(text, path, reason).all();
}

void throwMalformedObjectName(const String& text, const String& reason) {
    throw MalformedObjectNameException(text + ", reason:\"" + reason + "\"");
}

} // namespace Pegasus
