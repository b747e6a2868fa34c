#ifndef CLI_TREE_H
#define CLI_TREE_H

#include <iosfwd>
#include <string>
#include <vector>

namespace cli {

// A line of a drawn tree and what hangs below it.
struct Branch {
    std::vector<std::string> cells; // aligned with those of its siblings
    std::vector<Branch> children;
};

// Draws branches that stand side by side, each with its children below it.
void drawTree(std::ostream& out, const std::vector<Branch>& branches);

} // namespace cli

#endif
