#include <mutex>
#include <string>
#include <unordered_map>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

// Names given as C strings: literals, nearly all, of which every instance has copies. They are kept
// for good, since copying a text that is never destroyed costs no locked instruction. A program
// that makes up such names at run time gets ordinary ones when the room is used up.
class KeptNames {
public:
    String get(const char* name) {
        const String made(name);
        const std::lock_guard lock(_mutex);
        const auto kept = _names.find(name);
        if (kept != _names.end()) {
            return kept->second;
        }
        if (made.size() != 0 && _names.size() < most) {
            made._rep->owners.keepForever();
            _names.emplace(name, made);
        }
        return made;
    }

    // Never destroyed: names are dropped until the very end of the program.
    static KeptNames& instance() {
        static auto* const names = new KeptNames;
        return *names;
    }

private:
    static constexpr std::size_t most = 1000;

    std::mutex _mutex;
    std::unordered_map<std::string, String> _names;
};

static bool startsName(Uint32 c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           (c >= 0x80 && c <= 0xFFEF);
}

static bool continuesName(Uint32 c) {
    return startsName(c) || (c >= '0' && c <= '9');
}

static bool legalName(const Char16* begin, const Char16* end) {
    if (begin == end || !startsName(*begin)) {
        return false;
    }
    for (const Char16* p = begin; p != end; ++p) {
        if (!continuesName(*p)) {
            return false;
        }
    }
    return true;
}

Boolean CIMName::legal(const String& name) {
    const Char16* begin = name.getChar16Data();
    return legalName(begin, begin + name.size());
}

CIMName::CIMName(const String& name) : _name(name) {
    if (!legal(_name)) {
        throw InvalidNameException(_name);
    }
}

CIMName::CIMName(const char* name) : CIMName(KeptNames::instance().get(name)) {}

CIMName& CIMName::operator=(const String& name) {
    return *this = CIMName(name);
}

Boolean CIMName::equal(const CIMName& name) const {
    return String::equalNoCase(_name, name._name);
}

Boolean operator==(const CIMName& name1, const CIMName& name2) {
    return name1.equal(name2);
}

Boolean operator!=(const CIMName& name1, const CIMName& name2) {
    return !name1.equal(name2);
}

Boolean CIMNamespaceName::legal(const String& name) {
    const Char16* begin = name.getChar16Data();
    const Char16* const end = begin + name.size();
    if (begin != end && *begin == '/') {
        ++begin;
    }
    for (const Char16* p = begin; p != end; ++p) {
        if (*p == '/') {
            if (!legalName(begin, p)) {
                return false;
            }
            begin = p + 1;
        }
    }
    return legalName(begin, end);
}

CIMNamespaceName::CIMNamespaceName(const String& name) : _name(name) {
    if (!legal(_name)) {
        throw InvalidNamespaceNameException(_name);
    }
    if (_name.getChar16Data()[0] == '/') {
        _name.remove(0, 1);
    }
}

CIMNamespaceName::CIMNamespaceName(const char* name)
    : CIMNamespaceName(KeptNames::instance().get(name)) {}

CIMNamespaceName& CIMNamespaceName::operator=(const String& name) {
    return *this = CIMNamespaceName(name);
}

Boolean CIMNamespaceName::equal(const CIMNamespaceName& name) const {
    return String::equalNoCase(_name, name._name);
}

Boolean operator==(const CIMNamespaceName& name1, const CIMNamespaceName& name2) {
    return name1.equal(name2);
}

Boolean operator!=(const CIMNamespaceName& name1, const CIMNamespaceName& name2) {
    return !name1.equal(name2);
}

} // namespace Pegasus
