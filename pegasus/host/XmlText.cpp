#include <Pegasus/Common/Utf.h>
#include <host/XmlText.h>

namespace Pegasus::Xml {

namespace {

// Replaces what XML would read as markup or lose: special characters, control characters, and
// blanks that stand at an end or beside another.
class Escaper {
public:
    explicit Escaper(std::string& out) : _out(out) {}

    void put(Uint32 c) {
        const bool afterBlank = _blank;
        _blank = false;
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
        case ' ':
            _blank = !afterBlank;
            _out += afterBlank ? "&#32;" : " ";
            break;
        default:
            if (c < 0x20 || c == 0x7F)
                _out.append("&#").append(std::to_string(c)).append(";");
            else
                _putPlain(c);
        }
        _any = true;
    }

    void finish() {
        if (_any && _blank)
            _out.replace(_out.size() - 1, 1, "&#32;");
    }

private:
    void _putPlain(Uint32 c) {
        if (c < 0x80) {
            _out += static_cast<char>(c);
        } else {
            char bytes[4];
            _out.append(bytes, Utf::writeUtf8(bytes, c));
        }
    }

    std::string& _out;
    bool _blank = true; // the last character is a blank as it is, or this is the start
    bool _any = false;
};

} // namespace

void appendEscaped(std::string& out, const String& text) {
    Escaper escaper(out);
    for (const Char16 *p = text.getChar16Data(), *const end = p + text.size(); p != end;)
        escaper.put(Utf::readUtf16(p, end));
    escaper.finish();
}

void appendEscaped(std::string& out, std::string_view utf8) {
    Escaper escaper(out);
    const auto* p = reinterpret_cast<const unsigned char*>(utf8.data());
    for (const unsigned char* const end = p + utf8.size(); p != end;) {
        const Uint32 c = Utf::readUtf8(p, end);
        escaper.put(c == Utf::malformed ? (++p, Uint32(0xFFFD)) : c);
    }
    escaper.finish();
}

} // namespace Pegasus::Xml
