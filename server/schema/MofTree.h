// The text of a MOF file as a tree of the grammar's rules, and how to walk it.
#pragma once

#include <memory>
#include <string>

#include <Pegasus/Common/CIMName.h>
#include <tao/pegtl/contrib/parse_tree.hpp>

#include "server/schema/MofGrammar.h"

namespace smisd::mof {

using Node = tao::pegtl::parse_tree::node;

// Throws MofError, which names `fileName`. The tree refers to both texts, which must outlive it.
std::unique_ptr<Node> parse(const std::string& text, const std::string& fileName);

// Throws MofError at the node's place.
[[noreturn]] void fail(const Node& at, const std::string& text);

// The first child of the rule, or null.
template<class Rule>
const Node* find(const Node& parent) {
    for (const auto& child : parent.children) {
        if (child->is_type<Rule>()) {
            return child.get();
        }
    }
    return nullptr;
}

// The same where the grammar demands one.
template<class Rule>
const Node& get(const Node& parent) {
    return *find<Rule>(parent);
}

// Calls `use` with each child of the rule, in order.
template<class Rule, class Use>
void each(const Node& parent, Use use) {
    for (const auto& child : parent.children) {
        if (child->is_type<Rule>()) {
            use(*child);
        }
    }
}

// The name that a node such as ClassName holds, as the file spells it.
Pegasus::CIMName name(const Node& node);
std::string word(const Node& node);

} // namespace smisd::mof
