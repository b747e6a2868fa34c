#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cli {

// Joins the cells of each line, two blanks or more apart, so that the cells of all lines stand in
// columns. Texts are UTF-8; each character counts as one wide.
std::vector<std::string> aligned(std::vector<std::vector<std::string>> lines);

// A line of a drawn tree and what hangs below it.
struct Branch {
    std::vector<std::string> cells; // aligned with those of its siblings
    std::vector<Branch> children;
};

// Draws branches that stand side by side, each with its children below it.
void drawTree(std::ostream& out, const std::vector<Branch>& branches);

} // namespace cli
