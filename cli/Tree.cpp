#include "cli/Tree.h"

#include <ostream>

#include "cli/Aligned.h"

namespace cli {

namespace {

void draw(std::ostream& out, const std::vector<Branch>& branches, const std::string& indent,
          bool atTop) {
    std::vector<std::vector<std::string>> cells;
    cells.reserve(branches.size());
    for (const Branch& branch : branches)
        cells.push_back(branch.cells);
    const std::vector<std::string> lines = aligned(cells);
    for (std::size_t i = 0; i < branches.size(); ++i) {
        const bool last = i + 1 == branches.size();
        out << indent << (atTop ? "" : last ? "└─ " : "├─ ") << lines[i] << '\n';
        draw(out, branches[i].children, indent + (atTop ? "" : last ? "   " : "│  "), false);
    }
}

} // namespace

void drawTree(std::ostream& out, const std::vector<Branch>& branches) {
    draw(out, branches, "", true);
}

} // namespace cli
