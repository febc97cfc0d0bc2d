// The choices of the exercise page and the weak topics drawn from.
#include "fl/practice/categories.h"

#include "fl/practice/random.h"
#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

class CategoryTest : public SettingsTest {
  protected:
    void SetUp() override {
        SettingsTest::SetUp();
        seedRandom(3);
    }
};

TEST_F(CategoryTest, weakTopicsAreDrawnAmongThoseStillOpen) {
    EXPECT_TRUE(exerciseForCategory("svag", {}).empty());
    const std::vector<std::string> weak = {"Motorer", "Kompensering", "ingen sådan"};
    const KeyFilter open = [](const std::string& k) { return k != "sub:El-lære|Kompensering"; };
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(exerciseForCategory("svag", weak, open).topic, "Motorer");
    EXPECT_TRUE(exerciseForCategory("svag", {"Kompensering"}, open).empty());
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(exerciseForCategory("Arealer", {}).topic, "Arealer");
    EXPECT_FALSE(exerciseForCategory("", {}).empty());
}

} // namespace
} // namespace fl
