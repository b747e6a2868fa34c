#include "server/cimxml/XmlDocument.h"

#include "tests/server/cimxml/Requests.h"

namespace smisd::test {
namespace {

std::string refusalOfText(const std::string& text) {
    return refusalOf([&] { const XmlDocument document(text); });
}

std::string textOf(const std::string& xml) {
    return readElement(xml, [](const Element& root) { return root.text(); });
}

std::string nested(int depth) {
    std::string xml;
    for (int i = 0; i < depth; ++i) {
        xml += "<a>";
    }
    for (int i = 0; i < depth; ++i) {
        xml += "</a>";
    }
    return declaration + xml;
}

TEST(XmlDocument, TextWithoutDeclarationIsNotValid) {
    const std::string expected = "400 request-not-valid: Validation error: on line 1: Expected "
                                 "<?xml ... ?> style declaration";
    EXPECT_EQ(refusalOfText("<CIM/>"), expected);
    EXPECT_EQ(refusalOfText(""), expected);
    EXPECT_EQ(refusalOfText("hello"), expected);
    EXPECT_EQ(refusalOfText("\xEF\xBB\xBF" + declaration + "<CIM/>"), expected);
}

TEST(XmlDocument, UnclosedOrMismatchedElementIsNotWellFormed) {
    EXPECT_TRUE(
        refusalOfText(declaration + "<a><b></a>").starts_with("400 request-not-well-formed"));
    EXPECT_TRUE(refusalOfText(declaration + "<a>").starts_with("400 request-not-well-formed"));
    EXPECT_TRUE(refusalOfText(declaration + "<a b=c/>").starts_with("400 request-not-well-formed"));
}

TEST(XmlDocument, InvalidUtf8IsNotValid) {
    const std::string expected = "400 request-not-valid: Invalid UTF-8 character detected.";
    EXPECT_EQ(refusalOfText(declaration + "<a>\xC3</a>"), expected);
    EXPECT_EQ(refusalOfText(declaration + "<a>\xED\xA0\x80</a>"), expected);
    EXPECT_EQ(refusalOfText(declaration + "<a>\xC0\xAF</a>"), expected);
    EXPECT_EQ(refusalOfText(std::string("\xFF\xFE<\0", 4)), expected);
}

TEST(XmlDocument, NullCharacterIsNotWellFormed) {
    EXPECT_EQ(refusalOfText(declaration + std::string("<a>\0</a>", 8)),
              "400 request-not-well-formed: Null character");
}

TEST(XmlDocument, DocumentTypeIsRefused) {
    const std::string expected =
        "400 request-not-valid: Validation error: on line 1: Expected open of CIM element";
    EXPECT_EQ(refusalOfText(declaration + "<!DOCTYPE a [<!ENTITY e \"x\">]><a>&e;</a>"), expected);
    EXPECT_EQ(refusalOfText(declaration + "<!DOCTYPE a><a/>"), expected);
}

TEST(XmlDocument, ProcessingInstructionIsRefused) {
    const std::string expected = "400 request-not-well-formed: Processing instruction: on line 1";
    EXPECT_EQ(refusalOfText(declaration + "<a><?x y?></a>"), expected);
    EXPECT_EQ(refusalOfText(declaration + "<?x y?><a/>"), expected);
}

TEST(XmlDocument, DepthIsLimited) {
    EXPECT_EQ(refusalOfText(nested(usualDepth)), "no refusal");
    EXPECT_EQ(refusalOfText(nested(usualDepth + 1)),
              "400 request-not-valid: Validation error: on line 1: More than 32 nested elements "
              "are not supported");
    EXPECT_TRUE(refusalOfText(nested(100000)).starts_with("400 request-not-valid"));
}

TEST(XmlDocument, ErrorNamesTheLine) {
    const XmlDocument document(declaration + "\n<a>\n\n<b/></a>");
    Element root = document.root();
    const Element child = root.expect("b");
    try {
        child.requiredAttribute("NAME");
        FAIL();
    } catch (const ElementError& error) {
        EXPECT_STREQ(document.badRequest(error).what(),
                     "Validation error: on line 4: missing b.NAME attribute");
    }
}

TEST(Element, TextIsTrimmedBeforeReferencesAreReplaced) {
    EXPECT_EQ(textOf("<a> \n two  words\t</a>"), "two  words");
    EXPECT_EQ(textOf("<a>&#32;x&#x20;</a>"), " x ");
    EXPECT_EQ(textOf("<a>&lt;&gt;&amp;&quot;&apos;</a>"), "<>&\"'");
    EXPECT_EQ(textOf("<a>&amp;lt;</a>"), "&lt;");
    EXPECT_EQ(textOf("<a>&#xe9;&#x20AC;&#128512;</a>"), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(textOf("<a></a>"), "");
    EXPECT_EQ(textOf("<a/>"), "");
    EXPECT_EQ(textOf("<a>  </a>"), "");
}

TEST(Element, CDataIsTakenAsItStands) {
    EXPECT_EQ(textOf("<a><![CDATA[ <b>&amp; ]]></a>"), " <b>&amp; ");
    EXPECT_EQ(elementErrorOf("<a><![CDATA[x]]></a>",
                             [](const Element& root) { root.text(Element::Content::text); }),
              "validation: Expected close of a element, got x instead");
}

TEST(Element, UnknownReferencesAreNotWellFormed) {
    const auto read = [](const Element& root) { root.text(); };
    for (const char* reference : {"&e;", "&;", "&", "&amp", "&#;", "&#x;", "&#0;", "&#xD800;",
                                  "&#x110000;", "&#-1;", "&#12x;", "&#99999999999;"}) {
        EXPECT_EQ(elementErrorOf(std::string("<a>") + reference + "</a>", read),
                  "notWellFormed: Malformed reference")
            << reference;
    }
}

TEST(Element, AttributeReferencesAreReplaced) {
    const auto read = [](const Element& root) { return root.requiredAttribute("n"); };
    EXPECT_EQ(readElement("<a n='&quot;&#65;'/>", read), "\"A");
    EXPECT_EQ(elementErrorOf("<a n='&e;'/>", read), "notWellFormed: Malformed reference");
}

TEST(Element, TextEndsAtTheFirstOtherContent) {
    const auto read = [](const Element& root) { root.text(); };
    EXPECT_EQ(elementErrorOf("<a>x<b/></a>", read),
              "validation: Expected close of a element, got b instead");
    EXPECT_EQ(elementErrorOf("<a>sh<!-- -->ort</a>", read),
              "validation: Expected close of a element, got ort instead");
}

TEST(Element, ChildrenAreReadInOrder) {
    readElement("<a><!-- c --><b/><c/></a>", [](Element root) {
        EXPECT_FALSE(root.take("c"));
        EXPECT_TRUE(root.take("b"));
        EXPECT_THROW(root.end(), ElementError);
        EXPECT_TRUE(root.take("c"));
        EXPECT_NO_THROW(root.end());
        return 0;
    });
    EXPECT_EQ(elementErrorOf("<a>text<b/></a>", [](Element root) { root.expect("b"); }),
              "validation: expected b element");
}

} // namespace
} // namespace smisd::test
