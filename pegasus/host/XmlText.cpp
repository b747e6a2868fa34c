#include "pegasus/host/XmlText.h"

#include <string>

#include <Pegasus/Common/Utf.h>

namespace Pegasus::Xml {

namespace {

template<class Unit>
bool isPlain(Unit c) {
    return c > 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"' && c != '\'';
}

// Appends ASCII characters, if all are such as `isFit` takes. No branch in the loop, so that it
// works on many at a time.
template<class Unit, class IsFit>
bool appendIfAll(Text& out, const Unit* units, std::size_t count, IsFit isFit) {
    char* const to = out.room(count);
    unsigned unfit = 0;
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = static_cast<char>(units[i]);
        unfit |= !isFit(units[i]);
    }
    if (unfit == 0) {
        out.added(count);
    }
    return unfit == 0;
}

// Replaces what XML would read as markup or lose: special characters, control characters, and
// blanks that stand at an end or beside another.
class Escaper {
public:
    explicit Escaper(Text& out) : _out(out) {}

    // Characters that go out as they are, as many as there are at `p`.
    template<class Unit>
    const Unit* takePlain(const Unit* p, const Unit* end) {
        for (; p != end && isPlain(*p); ++p) {
            _out += static_cast<char>(*p);
            _blank = false;
        }
        return p;
    }

    void put(Uint32 c) {
        const bool afterBlank = _blank;
        _blank = c == ' ' && !afterBlank;
        if (c == ' ') {
            _out += afterBlank ? "&#32;" : " ";
        } else if (c >= 0x80) {
            _putUtf8(c);
        } else {
            _putReference(c);
        }
    }

    // `start` is where the text began.
    void finish(std::size_t start) {
        if (_blank && _out.size() != start) {
            _out.cut(_out.size() - 1);
            _out += "&#32;";
        }
    }

private:
    void _putUtf8(Uint32 c) {
        char* const bytes = _out.room(4);
        _out.added(static_cast<std::size_t>(Utf::writeUtf8(bytes, c) - bytes));
    }

    void _putReference(Uint32 c) {
        switch (c) {
        case '&':
            _out += "&amp;";
            break;
        case '<':
            _out += "&lt;";
            break;
        case '>':
            _out += "&gt;";
            break;
        case '"':
            _out += "&quot;";
            break;
        case '\'':
            _out += "&apos;";
            break;
        default:
            _out.append("&#").append(std::to_string(c)).append(";");
        }
    }

    Text& _out;
    bool _blank = true; // the last character is a blank as it is, or this is the start
};

} // namespace

void appendName(Text& out, const CIMName& name) {
    const String& text = name.getString();
    const auto isAscii = [](Uint16 c) { return c < 0x80; };
    if (!appendIfAll(out, text.getChar16Data(), text.size(), isAscii)) {
        appendEscaped(out, text);
    }
}

void appendEscaped(Text& out, const String& text) {
    const Char16 *p = text.getChar16Data(), *const end = p + text.size();
    if (appendIfAll(out, p, text.size(), isPlain<Uint16>)) { // most texts
        return;
    }
    const std::size_t start = out.size();
    Escaper escaper(out);
    while ((p = escaper.takePlain(p, end)) != end) {
        escaper.put(Utf::readUtf16(p, end));
    }
    escaper.finish(start);
}

void appendEscaped(Text& out, std::string_view utf8) {
    const std::size_t start = out.size();
    Escaper escaper(out);
    const auto* p = reinterpret_cast<const unsigned char*>(utf8.data());
    const auto* const end = p + utf8.size();
    while ((p = escaper.takePlain(p, end)) != end) {
        const Uint32 c = Utf::readUtf8(p, end);
        escaper.put(c == Utf::malformed ? (++p, Uint32(0xFFFD)) : c);
    }
    escaper.finish(start);
}

} // namespace Pegasus::Xml
