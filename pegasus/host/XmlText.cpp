#include <Pegasus/Common/Utf.h>
#include <algorithm>
#include <array>
#include <host/XmlText.h>

namespace Pegasus::Xml {

namespace {

// Replaces what XML would read as markup or lose: special characters, control characters, and
// blanks that stand at an end or beside another.
class Escaper {
public:
    explicit Escaper(std::string& out) : _out(out) {}

    // Characters that go out as they are, as many as there are at `p`. Most of any text.
    template<class Unit>
    const Unit* takePlain(const Unit* p, const Unit* end) {
        const Unit* const begin = p;
        while (p != end && *p < 0x80 && _isPlain[*p])
            ++p;
        if (p != begin) {
            const std::size_t size = _out.size();
            _out.resize(size + static_cast<std::size_t>(p - begin));
            std::transform(begin, p, _out.data() + size,
                           [](Unit c) { return static_cast<char>(c); });
            _blank = false;
        }
        return p;
    }

    void put(Uint32 c) {
        const bool afterBlank = _blank;
        _blank = c == ' ' && !afterBlank;
        if (c == ' ')
            _out += afterBlank ? "&#32;" : " ";
        else if (c >= 0x80)
            _putUtf8(c);
        else
            _putReference(c);
    }

    // `start` is where the text began.
    void finish(std::size_t start) {
        if (_blank && _out.size() != start)
            _out.replace(_out.size() - 1, 1, "&#32;");
    }

private:
    void _putUtf8(Uint32 c) {
        char bytes[4];
        _out.append(bytes, Utf::writeUtf8(bytes, c));
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

    static constexpr std::array<bool, 0x80> _isPlain = [] {
        std::array<bool, 0x80> plain = {};
        std::fill(plain.begin() + 0x21, plain.begin() + 0x7F, true);
        for (const char c : {'&', '<', '>', '"', '\''})
            plain[static_cast<std::size_t>(c)] = false;
        return plain;
    }();

    std::string& _out;
    bool _blank = true; // the last character is a blank as it is, or this is the start
};

} // namespace

void appendEscaped(std::string& out, const String& text) {
    const std::size_t start = out.size();
    Escaper escaper(out);
    const Char16 *p = text.getChar16Data(), *const end = p + text.size();
    while ((p = escaper.takePlain(p, end)) != end)
        escaper.put(Utf::readUtf16(p, end));
    escaper.finish(start);
}

void appendEscaped(std::string& out, std::string_view utf8) {
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
