// The grammar of MOF (DMTF DSP0004, annex A), as far as class, qualifier and instance declarations
// need it: no aliases, no structures.
//
// Every rule under must, if_must or list_must has its message in MofTree.cpp.
#pragma once

#include <tao/pegtl.hpp>

namespace smisd::mof {

namespace peg = tao::pegtl;

// Blanks and comments

struct CommentEnd : peg::until<peg::string<'*', '/'>> {};
struct BlockComment : peg::if_must<peg::string<'/', '*'>, CommentEnd> {};
struct LineComment : peg::seq<peg::two<'/'>, peg::until<peg::eolf>> {};
struct Blank : peg::star<peg::sor<peg::space, LineComment, BlockComment>> {};

template<class Rule>
struct Token : peg::seq<Rule, Blank> {};

template<char C>
struct Mark : Token<peg::one<C>> {};

// Names and keywords

struct NameStart : peg::sor<peg::alpha, peg::one<'_'>, peg::utf8::range<0x80, 0xFFEF>> {};
struct NamePart : peg::sor<NameStart, peg::digit> {};
struct Name : peg::seq<NameStart, peg::star<NamePart>> {};

template<char... C>
struct Keyword : Token<peg::seq<peg::istring<C...>, peg::not_at<NamePart>>> {};

struct ClassWord : Keyword<'c', 'l', 'a', 's', 's'> {};
struct FlavorWord : Keyword<'f', 'l', 'a', 'v', 'o', 'r'> {};
struct InstanceWord : Keyword<'i', 'n', 's', 't', 'a', 'n', 'c', 'e'> {};
struct OfWord : Keyword<'o', 'f'> {};
struct QualifierWord : Keyword<'q', 'u', 'a', 'l', 'i', 'f', 'i', 'e', 'r'> {};
struct RefWord : Keyword<'r', 'e', 'f'> {};
struct ScopeWord : Keyword<'s', 'c', 'o', 'p', 'e'> {};

// Values

struct HexCode : peg::seq<peg::one<'x', 'X'>, peg::rep_min_max<1, 4, peg::xdigit>> {};
struct EscapeCode : peg::sor<peg::one<'b', 't', 'n', 'f', 'r', '"', '\'', '\\'>, HexCode> {};
struct Escape : peg::if_must<peg::one<'\\'>, EscapeCode> {};

template<char Quote>
struct PlainCharacter : peg::utf8::not_one<Quote, '\\', '\r', '\n'> {};
template<char Quote>
struct TextEnd : peg::one<Quote> {};

struct PlainText : peg::plus<PlainCharacter<'"'>> {};
struct StringPart : peg::star<peg::sor<Escape, PlainText>> {};
struct QuotedPart : Token<peg::if_must<peg::one<'"'>, StringPart, TextEnd<'"'>>> {};
struct StringValue : peg::plus<QuotedPart> {};
struct OneCharacter : PlainCharacter<'\''> {};
struct CharPart : peg::sor<Escape, OneCharacter> {};
struct CharValue : Token<peg::if_must<peg::one<'\''>, CharPart, TextEnd<'\''>>> {};
struct Exponent : peg::seq<peg::one<'e', 'E'>, peg::one<'+', '-'>> {};
struct Digits : peg::plus<peg::sor<Exponent, peg::alnum, peg::one<'.'>>> {};
struct NumberText
    : peg::seq<peg::opt<peg::one<'+', '-'>>, peg::at<peg::sor<peg::digit, peg::one<'.'>>>, Digits> {
};
struct NumberValue : Token<NumberText> {};
struct TrueValue : Keyword<'t', 'r', 'u', 'e'> {};
struct FalseValue : Keyword<'f', 'a', 'l', 's', 'e'> {};
struct NullValue : Keyword<'n', 'u', 'l', 'l'> {};
struct Constant : peg::sor<StringValue, CharValue, NumberValue, TrueValue, FalseValue, NullValue> {
};
struct ListEnd : Mark<'}'> {};
struct ListValues : peg::list_must<Constant, Mark<','>> {};
struct ListValue : peg::seq<Mark<'{'>, peg::opt<ListValues>, peg::must<ListEnd>> {};
struct Value : peg::sor<ListValue, Constant> {};

// Types

struct TypeWord
    : peg::seq<peg::sor<peg::istring<'b', 'o', 'o', 'l', 'e', 'a', 'n'>,
                        peg::seq<peg::one<'u', 'U', 's', 'S'>, peg::istring<'i', 'n', 't'>,
                                 peg::sor<peg::one<'8'>, peg::string<'1', '6'>,
                                          peg::string<'3', '2'>, peg::string<'6', '4'>>>,
                        peg::seq<peg::istring<'r', 'e', 'a', 'l'>,
                                 peg::sor<peg::string<'3', '2'>, peg::string<'6', '4'>>>,
                        peg::istring<'c', 'h', 'a', 'r', '1', '6'>,
                        peg::istring<'s', 't', 'r', 'i', 'n', 'g'>,
                        peg::istring<'d', 'a', 't', 'e', 't', 'i', 'm', 'e'>>,
               peg::not_at<NamePart>> {};
struct DataType : Token<TypeWord> {};
struct ReferenceClass : Token<Name> {};
struct ReferenceType : peg::seq<ReferenceClass, peg::must<RefWord>> {};
struct Type : peg::sor<DataType, ReferenceType> {};
struct ArrayEnd : Mark<']'> {};
struct ArrayMark : peg::seq<Mark<'['>, peg::opt<NumberValue>, peg::must<ArrayEnd>> {};
struct DefaultValue : peg::if_must<Mark<'='>, Value> {};
struct DeclarationEnd : Mark<';'> {};

// Qualifiers

struct FlavorName : Token<Name> {};
struct QualifierName : Token<Name> {};
struct QualifierValueEnd : Mark<')'> {};
struct QualifierValue : peg::sor<ListValue, peg::if_must<Mark<'('>, Constant, QualifierValueEnd>> {
};
struct QualifierFlavors : peg::if_must<Mark<':'>, peg::plus<FlavorName>> {};
struct Qualifier : peg::seq<QualifierName, peg::opt<QualifierValue>, peg::opt<QualifierFlavors>> {};
struct Qualifiers : peg::list_must<Qualifier, Mark<','>> {};
struct QualifierListEnd : Mark<']'> {};
struct QualifierList : peg::if_must<Mark<'['>, Qualifiers, QualifierListEnd> {};

struct ScopeName : Token<Name> {};
struct WordsStart : Mark<'('> {};
struct WordsEnd : Mark<')'> {};
struct ScopeWords : peg::list_must<ScopeName, Mark<','>> {};
struct FlavorWords : peg::list_must<FlavorName, Mark<','>> {};
struct FlavorList : peg::if_must<FlavorWord, WordsStart, FlavorWords, WordsEnd> {};
struct TypeColon : Mark<':'> {};
struct ScopeComma : Mark<','> {};
struct QualifierDeclarationEnd : Mark<';'> {};
struct QualifierDeclaration
    : peg::if_must<QualifierWord, QualifierName, TypeColon, DataType, peg::opt<ArrayMark>,
                   peg::opt<DefaultValue>, ScopeComma, ScopeWord, WordsStart, ScopeWords, WordsEnd,
                   peg::opt<Mark<','>, peg::must<FlavorList>>, QualifierDeclarationEnd> {};

// Classes

struct FeatureName : Token<Name> {};
struct ParameterName : Token<Name> {};
struct ParameterBody : peg::seq<Type, peg::must<ParameterName>, peg::opt<ArrayMark>> {};
struct Parameter : peg::sor<peg::seq<QualifierList, peg::must<ParameterBody>>, ParameterBody> {};
struct ParametersEnd : Mark<')'> {};
struct Parameters
    : peg::if_must<Mark<'('>, peg::opt<peg::list_must<Parameter, Mark<','>>>, ParametersEnd> {};
struct MethodRest : peg::if_must<Parameters, DeclarationEnd> {};
struct PropertyRest : peg::seq<peg::opt<ArrayMark>,
                               peg::sor<peg::if_must<DefaultValue, DeclarationEnd>, Mark<';'>>> {};
struct FeatureRest : peg::sor<MethodRest, PropertyRest> {};
struct FeatureBody : peg::seq<Type, peg::must<FeatureName, FeatureRest>> {};
struct Feature : peg::sor<peg::seq<QualifierList, peg::must<FeatureBody>>, FeatureBody> {};
struct ClassName : Token<Name> {};
struct SuperclassName : Token<Name> {};
struct ClassStart : Mark<'{'> {};
struct ClassEnd : Mark<'}'> {};
struct ClassBody
    : peg::if_must<ClassWord, ClassName, peg::opt<peg::if_must<Mark<':'>, SuperclassName>>,
                   ClassStart, peg::star<Feature>, ClassEnd, DeclarationEnd> {};

// Instances

struct AssignedName : Token<Name> {};
struct AssignmentMark : Mark<'='> {};
struct Assignment : peg::seq<peg::opt<QualifierList>, AssignedName,
                             peg::must<AssignmentMark, Value, DeclarationEnd>> {};
struct InstanceStart : Mark<'{'> {};
struct InstanceEnd : Mark<'}'> {};
struct InstanceBody : peg::if_must<InstanceWord, OfWord, ClassName, InstanceStart,
                                   peg::star<Assignment>, InstanceEnd, DeclarationEnd> {};

// Files

struct PragmaName : Token<Name> {};
struct PragmaEnd : Mark<')'> {};
struct PragmaWord : Keyword<'#', 'p', 'r', 'a', 'g', 'm', 'a'> {};
struct Pragma : peg::if_must<PragmaWord, PragmaName, WordsStart, StringValue, PragmaEnd> {};
struct ClassOrInstance : peg::sor<ClassBody, InstanceBody> {};
struct Declaration
    : peg::sor<peg::seq<QualifierList, peg::must<ClassOrInstance>>, ClassOrInstance> {};
struct FileEnd : peg::eof {};
struct File
    : peg::seq<peg::opt<peg::utf8::bom>, Blank,
               peg::star<peg::sor<Pragma, QualifierDeclaration, Declaration>>, peg::must<FileEnd>> {
};

} // namespace smisd::mof
