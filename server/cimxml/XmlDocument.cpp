#include "server/cimxml/XmlDocument.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <string_view>

#include "server/operation/Utf8.h"

namespace smisd {
namespace {

struct Entity {
    std::string_view name;
    char character;
};
constexpr Entity entities[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view trimmed(std::string_view text) {
    const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), isSpace).base();
    return first < last ? std::string_view(&*first, static_cast<size_t>(last - first))
                        : std::string_view();
}

// Appends what "&reference;" stands for; false when it stands for nothing.
bool appendReference(std::string_view reference, std::string& out) {
    if (!reference.starts_with('#')) {
        const auto* entity = std::find_if(std::begin(entities), std::end(entities),
                                          [&](const Entity& e) { return e.name == reference; });
        if (entity == std::end(entities)) {
            return false;
        }
        out += entity->character;
        return true;
    }
    reference.remove_prefix(1);
    int base = 10;
    if (reference.starts_with('x')) {
        base = 16;
        reference.remove_prefix(1);
    }
    Pegasus::Uint32 point = 0;
    const char* end = reference.data() + reference.size();
    const auto parsed = std::from_chars(reference.data(), end, point, base);
    if (parsed.ec != std::errc() || parsed.ptr != end || point == 0 || point > 0x10FFFF ||
        Pegasus::Utf::isSurrogate(point)) {
        return false;
    }
    char bytes[4];
    out.append(bytes, Pegasus::Utf::writeUtf8(bytes, point));
    return true;
}

std::string withoutReferences(const Element& element, std::string_view raw) {
    std::string out;
    out.reserve(raw.size());
    for (size_t at = 0; at < raw.size();) {
        const size_t ampersand = raw.find('&', at);
        out += raw.substr(at, ampersand - at);
        if (ampersand == std::string_view::npos) {
            break;
        }
        const size_t end = raw.find(';', ampersand);
        if (end == std::string_view::npos ||
            !appendReference(raw.substr(ampersand + 1, end - ampersand - 1), out)) {
            element.fail(ElementError::notWellFormed, "Malformed reference");
        }
        at = end + 1;
    }
    return out;
}

pugi::xml_node firstContent(pugi::xml_node node) {
    while (node.type() == pugi::node_comment) {
        node = node.next_sibling();
    }
    return node;
}

constexpr std::size_t leastReferenceUnits = 64 * 1024;

const ElementError noDeclaration(ElementError::validation, 0,
                                 "Expected <?xml ... ?> style declaration");

[[noreturn]] void refuse(const char* cimError, const std::string& detail) {
    throw BadRequest(400, cimError, detail);
}

} // namespace

Element::Element(pugi::xml_node node, std::size_t* referenceUnits)
    : _node(node), _next(firstContent(node.first_child())), _referenceUnits(referenceUnits) {}

std::optional<std::string> Element::attribute(const char* attributeName) const {
    const pugi::xml_attribute found = _node.attribute(attributeName);
    if (!found) {
        return std::nullopt;
    }
    return withoutReferences(*this, found.value());
}

std::string Element::requiredAttribute(const char* attributeName, const char* complaint) const {
    std::optional<std::string> value = attribute(attributeName);
    if (!value) {
        fail(ElementError::validation,
             std::string(complaint) + " " + name() + "." + attributeName + " attribute");
    }
    return *std::move(value);
}

std::optional<Element> Element::take(const char* childName) {
    if (_next.type() != pugi::node_element || std::strcmp(_next.name(), childName) != 0) {
        return std::nullopt;
    }
    const Element child(_next, _referenceUnits);
    _next = firstContent(_next.next_sibling());
    return child;
}

Element Element::expect(const char* childName, const char* expectation) {
    std::optional<Element> child = take(childName);
    if (!child) {
        fail(ElementError::validation, expectation != nullptr
                                           ? std::string(expectation)
                                           : std::string("expected ") + childName + " element");
    }
    return *child;
}

void Element::end() const {
    if (!_next) {
        return;
    }
    const char* found = _next.type() == pugi::node_element ? _next.name() : _next.value();
    fail(ElementError::validation,
         std::string("Expected close of ") + name() + " element, got " + found + " instead");
}

std::string Element::text(Content accepted) const {
    Element rest = *this;
    const pugi::xml_node content = _next;
    const bool isText = content.type() == pugi::node_pcdata;
    if (isText || (content.type() == pugi::node_cdata && accepted == Content::textOrCData)) {
        rest._next = firstContent(content.next_sibling());
    }
    rest.end();
    return isText ? withoutReferences(*this, trimmed(content.value())) : content.value();
}

void Element::spendReferenceUnits(std::size_t count) const {
    if (count > *_referenceUnits) {
        fail(ElementError::validation, "The reference keys are too long");
    }
    *_referenceUnits -= count;
}

void Element::fail(ElementError::Kind kind, const std::string& text) const {
    throw ElementError(kind, _node.offset_debug(), text);
}

XmlDocument::XmlDocument(std::string text, unsigned maximumDepth)
    : _text(std::move(text)), _referenceUnits(leastReferenceUnits + 4 * _text.size()) {
    if (!isUtf8(_text)) {
        refuse("request-not-valid", "Invalid UTF-8 character detected.");
    }
    if (_text.starts_with("\xEF\xBB\xBF")) {
        throw badRequest(noDeclaration); // a byte order mark, which pugixml would pass over
    }
    if (_text.find('\0') != std::string::npos) {
        refuse("request-not-well-formed", "Null character");
    }
    const pugi::xml_parse_result parsed = _document.load_buffer_inplace(
        _text.data(), _text.size(),
        pugi::parse_cdata | pugi::parse_declaration | pugi::parse_doctype | pugi::parse_pi,
        pugi::encoding_utf8);
    if (parsed.status == pugi::status_no_document_element) {
        throw badRequest(noDeclaration);
    }
    if (!parsed) {
        throw badRequest(
            ElementError(ElementError::notWellFormed, parsed.offset, parsed.description()));
    }
    checkTree(maximumDepth);
}

void XmlDocument::checkTree(unsigned maximumDepth) const {
    if (_document.first_child().type() != pugi::node_declaration) {
        throw badRequest(noDeclaration);
    }
    for (const pugi::xml_node& node : _document.children()) {
        if (node.type() == pugi::node_doctype) {
            throw badRequest(ElementError(ElementError::validation, node.offset_debug(),
                                          "Expected open of CIM element"));
        }
    }

    struct Walker : pugi::xml_tree_walker {
        explicit Walker(unsigned theLimit) : limit(theLimit) {}
        bool for_each(pugi::xml_node& node) override {
            if (node.type() == pugi::node_pi) {
                Element(node, nullptr).fail(ElementError::notWellFormed, "Processing instruction");
            }
            if (static_cast<unsigned>(depth() + 1) > limit) { // the root is at 0
                Element(node.parent(), nullptr)
                    .fail(ElementError::validation, "More than " + std::to_string(limit) +
                                                        " nested elements are not supported");
            }
            return true;
        }
        const unsigned limit;
    } check(maximumDepth);
    try {
        _document.root().traverse(check);
    } catch (const ElementError& error) {
        throw badRequest(error);
    }
}

// Elements, attributes and texts by the characters that begin them, or end what is before them.
ReadingCost readingCost(std::string_view text) {
    constexpr std::size_t nodeBytes = 64; // as pugixml has them where pointers have 64 bits
    constexpr std::size_t attributeBytes = 40;
    constexpr std::size_t operationBytes = 256; // of an element: an estimate
    std::size_t elements = 0;
    std::size_t texts = 0;
    std::size_t attributes = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        elements += text[i] == '<' && text[i + 1] != '/';
        texts += text[i] == '>' && text[i + 1] != '<';
        attributes += text[i] == '=';
    }
    return {(elements + texts) * nodeBytes + attributes * attributeBytes,
            elements * operationBytes + 2 * text.size()};
}

BadRequest XmlDocument::badRequest(const ElementError& error) const {
    const auto end =
        _text.begin() +
        std::clamp<std::ptrdiff_t>(error.offset(), 0, static_cast<std::ptrdiff_t>(_text.size()));
    const std::string line =
        ": on line " + std::to_string(1 + std::count(_text.begin(), end, '\n'));
    switch (error.kind()) {
    case ElementError::notWellFormed:
        return {400, "request-not-well-formed", error.what() + line};
    case ElementError::validation:
        return {400, "request-not-valid", "Validation error" + line + ": " + error.what()};
    default:
        return {400, "request-not-valid", "Semantic error" + line + ": " + error.what()};
    }
}

} // namespace smisd
