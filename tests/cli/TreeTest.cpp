#include "cli/Tree.h"

#include <sstream>

#include <gtest/gtest.h>

namespace {

TEST(Aligned, PutsCellsInColumnsByCharactersAndNotByBytes) {
    EXPECT_EQ(cli::aligned({{"a", "b", "c"}, {"äöü", "b"}, {}}),
              (std::vector<std::string>{"a    b  c", "äöü  b", ""}));
}

TEST(Aligned, LeavesNoBlanksAtTheEnd) {
    EXPECT_EQ(cli::aligned({{"a", ""}, {"b", "long"}}), (std::vector<std::string>{"a", "b  long"}));
}

TEST(Tree, DrawsEachBranchBelowItsParentAndAlignsSiblings) {
    std::ostringstream out;
    cli::drawTree(out, {{{"top"},
                         {{{"one", "1"}, {{{"leaf"}, {}}, {{"leaf"}, {}}}},
                          {{"three", "3"}, {{{"leaf"}, {}}}}}},
                        {{"second"}, {}}});
    EXPECT_EQ(out.str(), "top\n"
                         "├─ one    1\n"
                         "│  ├─ leaf\n"
                         "│  └─ leaf\n"
                         "└─ three  3\n"
                         "   └─ leaf\n"
                         "second\n");
}

} // namespace
