#include "cli/Tree.h"

#include <algorithm>
#include <ostream>

#include "array/model/Text.h"

namespace cli {

namespace {

std::size_t width(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

} // namespace

std::vector<std::string> aligned(std::vector<std::vector<std::string>> lines) {
    std::vector<std::size_t> widths;
    for (auto& line : lines) {
        std::ranges::transform(line, line.begin(), array::escaped);
        widths.resize(std::max(widths.size(), line.size()));
        for (std::size_t i = 0; i < line.size(); ++i) {
            widths[i] = std::max(widths[i], width(line[i]));
        }
    }
    std::vector<std::string> result;
    for (const auto& line : lines) {
        std::string text;
        for (std::size_t i = 0; i < line.size(); ++i) {
            text += line[i] + std::string(widths[i] - width(line[i]) + 2, ' ');
        }
        text.erase(text.find_last_not_of(' ') + 1);
        result.push_back(std::move(text));
    }
    return result;
}

namespace {

void draw(std::ostream& out, const std::vector<Branch>& branches, const std::string& indent,
          bool atTop) {
    std::vector<std::vector<std::string>> cells;
    cells.reserve(branches.size());
    for (const Branch& branch : branches) {
        cells.push_back(branch.cells);
    }
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
