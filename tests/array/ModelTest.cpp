#include "tests/array/ArrayFixture.h"
#include "tests/array/support/History.h"

namespace array {
namespace {

class ModelTest : public ArrayFixture, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(ModelTest, ALongHistoryGivesWhatAPlainModelGives) {
    History history(GetParam());
    Model model;
    const auto follower = Array::open(state());
    int refused = 0;
    for (int i = 0; i < 1200; ++i) {
        const History::Step step = history.step(model, array());
        ASSERT_EQ(step.inArray, step.inModel) << "step " << i << ": " << step.kind;
        refused += step.inModel ? 0 : 1;
        if (i % 50 == 0) {
            ASSERT_TRUE(Model::of(*now()).hasObjectsOf(model)) << "step " << i;
            ASSERT_TRUE(Model::of(*follower->snapshot()).hasObjectsOf(model)) << "step " << i;
        }
        if (i % 400 == 0) {
            reopen();
        }
    }
    EXPECT_GT(refused, 100);
    EXPECT_LT(refused, 900);
    EXPECT_GT(model.units.size(), 10u);
    EXPECT_TRUE(Model::of(*now()).hasObjectsOf(model));
    EXPECT_TRUE(array().check().empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, ModelTest, testing::Values(1u, 2u, 3u));

} // namespace
} // namespace array
