// The choices of the exercise page and the weak topics drawn from.
#include "fl/practice/categories.h"

#include "fl/practice/random.h"
#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

#include <set>

namespace fl {
namespace {

class CategoryTest : public SettingsTest {
  protected:
    void SetUp() override {
        SettingsTest::SetUp();
        seedRandom(3);
    }
};

TEST_F(CategoryTest, everyTopicOnceAfterAllAndWeak) {
    const auto& all = practiceCategories();
    ASSERT_GE(all.size(), 3u);
    EXPECT_EQ(all[0].label, "Alle emner");
    EXPECT_EQ(all[1].key, "svag");
    EXPECT_EQ(all[1].label, "Mine svage emner");
    std::set<std::string> keys;
    for (size_t i = 2; i < all.size(); ++i) {
        EXPECT_TRUE(keys.insert(all[i].key).second) << all[i].key;
        EXPECT_EQ(all[i].lockKey, "sub:" + all[i].group + "|" + all[i].key);
    }
    EXPECT_TRUE(keys.count("Motorer"));
    EXPECT_EQ(practiceTopics().size(), all.size() - 2);
}

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
