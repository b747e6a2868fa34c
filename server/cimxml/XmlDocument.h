// The XML of a request as a tree of elements that are read in order.
//
// The text comes from a stranger. Neither document types nor entities beyond the five of XML are
// accepted, and the tree is at most as deep as is said. Content is taken as OpenPegasus takes it:
// white space around it goes, white space within it, in references and in CDATA sections stays.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace smisd {

// Deep enough for a reference with a reference key with a reference key; each level doubles the
// escapes in the text of the keys above it.
constexpr unsigned usualDepth = 32;
constexpr unsigned greatestDepth = 48; // that may be asked for

// A request that is refused before there is an operation in it: answered with an HTTP status, the
// header CIMError unless it is empty (DSP0200, "Errors and Status Codes in CIM-XML Message
// Exchange") and what() as the detail for people.
class BadRequest : public std::runtime_error {
public:
    BadRequest(unsigned status, std::string cimError, const std::string& detail)
        : std::runtime_error(detail), _status(status), _cimError(std::move(cimError)) {}

    unsigned status() const { return _status; }
    const std::string& cimError() const { return _cimError; }

private:
    unsigned _status;
    std::string _cimError;
};

// What is wrong with an element, and where; becomes a BadRequest by way of
// XmlDocument::badRequest.
class ElementError : public std::runtime_error {
public:
    enum Kind { notWellFormed, validation, semantic };

    ElementError(Kind kind, std::ptrdiff_t offset, const std::string& text)
        : std::runtime_error(text), _kind(kind), _offset(offset) {}

    Kind kind() const { return _kind; }
    std::ptrdiff_t offset() const { return _offset; }

private:
    Kind _kind;
    std::ptrdiff_t _offset; // into the text of the document, in bytes
};

// An element and how far its children have been read. Cheap to copy; valid as long as its document.
// All functions but the constructor throw ElementError.
class Element {
public:
    // `referenceUnits` are those that spendReferenceUnits may still take.
    Element(pugi::xml_node node, std::size_t* referenceUnits);

    const char* name() const { return _node.name(); }

    // The value with its references replaced.
    std::optional<std::string> attribute(const char* attributeName) const;
    // "missing CLASSNAME.NAME attribute"; `complaint` replaces the first word
    std::string requiredAttribute(const char* attributeName,
                                  const char* complaint = "missing") const;

    // The next child, if it has the name.
    std::optional<Element> take(const char* childName);
    // "expected INSTANCENAME element", or `expectation` when given
    Element expect(const char* childName, const char* expectation = nullptr);
    // Nothing is left to read: "Expected close of INSTANCE element, got VALUE instead"
    void end() const;
    bool atEnd() const { return !_next; }
    const char* nextName() const { return _next.name(); }

    // The content of an element that has only text: one run of it, or one CDATA section where that
    // is accepted.
    enum class Content { text, textOrCData };
    std::string text(Content accepted = Content::textOrCData) const;

    // A reference key is text within text, and each level doubles its escapes: all of a document's
    // together may have some times the units of its text, lest few bytes cost much.
    void spendReferenceUnits(std::size_t count) const;

    [[noreturn]] void fail(ElementError::Kind kind, const std::string& text) const;

private:
    pugi::xml_node _node;
    pugi::xml_node _next; // first child that was not read
    std::size_t* _referenceUnits;
};

class XmlDocument {
public:
    // Throws BadRequest: the text is not UTF-8, not well-formed, no XML document, or too deep.
    explicit XmlDocument(std::string text, unsigned maximumDepth = usualDepth);

    Element root() const { return Element(_document.document_element(), &_referenceUnits); }

    BadRequest badRequest(const ElementError& error) const;

private:
    void checkTree(unsigned maximumDepth) const;

    std::string _text; // the tree points into it
    pugi::xml_document _document;
    mutable std::size_t _referenceUnits = 0;
};

// The bytes that reading a document of this text takes at most, beside the text: of the tree of its
// elements, and of the operation that is made from it.
struct ReadingCost {
    std::size_t tree = 0;
    std::size_t operation = 0;
};
ReadingCost readingCost(std::string_view text);

} // namespace smisd
