#ifndef CLI_ALIGNED_H
#define CLI_ALIGNED_H

#include <string>
#include <vector>

namespace cli {

// Joins the cells of each line, two blanks or more apart, so that the cells of all lines stand in
// columns. Texts are UTF-8; each character counts as one wide.
std::vector<std::string> aligned(const std::vector<std::vector<std::string>>& lines);

} // namespace cli

#endif
