#include "server/schema/MofTree.h"

#include <Pegasus/Common/String.h>

#include "server/schema/MofReader.h"

namespace smisd::mof {
namespace {

using namespace tao::pegtl;

// What the reader expected where a rule did not match.
template<class Rule>
constexpr const char* expected = nullptr;

template<>
constexpr auto expected<CommentEnd> = "expected '*/' before the end of the file";
template<>
constexpr auto expected<EscapeCode> = "expected one of b t n f r \" ' \\ or x and up to four "
                                      "hexadecimal digits after '\\'";
template<>
constexpr auto expected<TextEnd<'"'>> = "expected '\"' before the end of the line";
template<>
constexpr auto expected<TextEnd<'\''>> = "expected ''' after one character";
template<>
constexpr auto expected<CharPart> = "expected a character";
template<>
constexpr auto expected<Constant> = "expected a value";
template<>
constexpr auto expected<Value> = "expected a value or '{'";
template<>
constexpr auto expected<ListEnd> = "expected a value, ',' or '}'";
template<>
constexpr auto expected<RefWord> = "expected a type, or REF after the name of a class";
template<>
constexpr auto expected<ArrayEnd> = "expected a size or ']'";
template<>
constexpr auto expected<DeclarationEnd> = "expected ';'";
template<>
constexpr auto expected<FlavorName> = "expected the name of a flavor";
template<>
constexpr auto expected<plus<FlavorName>> = expected<FlavorName>;
template<>
constexpr auto expected<FlavorWords> = expected<FlavorName>;
template<>
constexpr auto expected<QualifierValueEnd> = "expected ')'";
template<>
constexpr auto expected<Qualifier> = "expected the name of a qualifier";
template<>
constexpr auto expected<Qualifiers> = expected<Qualifier>;
template<>
constexpr auto expected<QualifierName> = expected<Qualifier>;
template<>
constexpr auto expected<QualifierListEnd> = "expected '(', '{', ',' or ']' after a qualifier";
template<>
constexpr auto expected<ScopeName> = "expected the name of a scope";
template<>
constexpr auto expected<ScopeWords> = expected<ScopeName>;
template<>
constexpr auto expected<WordsStart> = "expected '('";
template<>
constexpr auto expected<WordsEnd> = "expected ',' or ')'";
template<>
constexpr auto expected<FlavorList> = "expected Flavor";
template<>
constexpr auto expected<TypeColon> = "expected ':'";
template<>
constexpr auto expected<DataType> = "expected a type";
template<>
constexpr auto expected<ScopeComma> = "expected ',' and Scope";
template<>
constexpr auto expected<ScopeWord> = "expected Scope";
template<>
constexpr auto expected<QualifierDeclarationEnd> = "expected ',' or ';'";
template<>
constexpr auto expected<FeatureName> = "expected the name of a property or method";
template<>
constexpr auto expected<FeatureRest> = "expected '(', '[', '=' or ';'";
template<>
constexpr auto expected<FeatureBody> = "expected the type of a property or method";
template<>
constexpr auto expected<ParameterName> = "expected the name of a parameter";
template<>
constexpr auto expected<ParameterBody> = "expected the type of a parameter";
template<>
constexpr auto expected<Parameter> = "expected a parameter";
template<>
constexpr auto expected<ParametersEnd> = "expected a parameter, ',' or ')'";
template<>
constexpr auto expected<ClassName> = "expected the name of a class";
template<>
constexpr auto expected<SuperclassName> = "expected the name of the superclass";
template<>
constexpr auto expected<ClassStart> = "expected ':' or '{'";
template<>
constexpr auto expected<ClassEnd> = "expected a property, a method or '}'";
template<>
constexpr auto expected<OfWord> = "expected 'of'";
template<>
constexpr auto expected<InstanceStart> = "expected '{'";
template<>
constexpr auto expected<AssignmentMark> = "expected '='";
template<>
constexpr auto expected<InstanceEnd> = "expected the name of a property or '}'";
template<>
constexpr auto expected<PragmaName> = "expected the name of a pragma";
template<>
constexpr auto expected<StringValue> = "expected a string";
template<>
constexpr auto expected<PragmaEnd> = "expected ')'";
template<>
constexpr auto expected<ClassOrInstance> = "expected class or instance";
template<>
constexpr auto expected<FileEnd> =
    "expected a class, a qualifier declaration, an instance or a #pragma";

struct Messages {
    template<class Rule>
    static constexpr const char* message = expected<Rule>;
    template<class Rule>
    static constexpr bool raise_on_failure = false;
};

template<class Rule>
using Control = must_if<Messages, normal, false>::control<Rule>;

// The rules that become nodes.
template<class Rule>
using Selector = parse_tree::selector<
    Rule, parse_tree::store_content::on<
              ArrayMark, AssignedName, Assignment, CharPart, CharValue, ClassBody, ClassName,
              Declaration, DefaultValue, EscapeCode, FalseValue, Feature, FeatureName, FlavorName,
              InstanceBody, ListValue, Name, NullValue, NumberText, OneCharacter, Parameter,
              ParameterName, Parameters, PlainText, Pragma, PragmaName, Qualifier,
              QualifierDeclaration, QualifierList, QualifierName, QualifierValue, ReferenceClass,
              ScopeName, StringPart, StringValue, SuperclassName, TrueValue, TypeWord>>;

} // namespace

std::unique_ptr<Node> parse(const std::string& text, const std::string& fileName) {
    memory_input<tracking_mode::eager, eol::lf_crlf, std::string_view> input(
        text.data(), text.data() + text.size(), fileName);
    try {
        return parse_tree::parse<File, Selector, nothing, Control>(input);
    } catch (const parse_error& error) {
        const position& at = error.positions().front();
        throw MofError(fileName, at.line, at.column, std::string(error.message()));
    }
}

void fail(const Node& at, const std::string& text) {
    const position begin = at.begin();
    throw MofError(std::string(begin.source), begin.line, begin.column, text);
}

std::string word(const Node& node) {
    return node.children.front()->string();
}

Pegasus::CIMName name(const Node& node) {
    return Pegasus::CIMName(Pegasus::String(word(node).c_str()));
}

} // namespace smisd::mof
