// The choices of the exercise page and the weak topics drawn from.
#include "fl/practice/categories.h"

#include "tests/fl/practice/seeded.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using CategoryTest = SeededTest<3>;

TEST_F(CategoryTest, weakTopicsAreDrawnAmongThoseStillOpen) {
    EXPECT_TRUE(exerciseForCategory("svag", {}).empty());
    const std::vector<std::string> weak = {"Motorer", "Kompensering", "ingen sådan"};
    const KeyFilter open = [](const std::string& k) { return k != "sub:El-lære|Kompensering"; };
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(exerciseForCategory("svag", weak, open).topic, "Motorer");
    EXPECT_TRUE(exerciseForCategory("svag", {"Kompensering"}, open).empty());
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(exerciseForCategory("Arealer", {}).topic, "Arealer");
}

TEST_F(CategoryTest, weakTextProblemsAreNamedWhenNoExerciseCanBeDrawn) {
    struct Row {
        const char* name;
        std::vector<std::string> weak;
        std::string text;
    };
    const Row rows[] = {
        {"no weak topic: the page's own message", {}, ""},
        {"one text problem",
         {"tekst:komp"},
         "Dit svage emne blandt tekstopgaverne er „Kompensering af en motor“ – den øver du under "
         "Tekstopgaver."},
        {"two text problems",
         {"tekst:komp", "tekst:kabel"},
         "Dine svage emner blandt tekstopgaverne er „Kompensering af en motor“ og „Kabel til carport“ – "
         "dem øver du under Tekstopgaver."},
        {"a closed exercise topic and a text problem",
         {"Kompensering", "tekst:kabel"},
         "Der er ingen opgaver i dine svage emner lige nu. Dit svage emne blandt tekstopgaverne er "
         "„Kabel til carport“ – den øver du under Tekstopgaver."},
        {"only closed exercise topics", {"Kompensering"}, "Der er ingen opgaver i dine svage emner lige nu."},
    };
    // A text problem is never drawn as an exercise.
    EXPECT_TRUE(exerciseForCategory("svag", {"tekst:komp"}).empty());
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(weakTopicsElsewhereText(row.weak), row.text);
    }
}

TEST_F(CategoryTest, circuitTopicsDrawCircuitsThatTheTeachersKeysClose) {
    struct Row {
        const char* topic;
        const char* lockKey; // and the start of every exercise's key
    } rows[] = {
        {"Kredsløb – jævnstrøm", "circ:dc|"},
        {"Kredsløb – vekselstrøm", "circ:ac|"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.topic);
        const PracticeCategory* c = findCategory(row.topic);
        ASSERT_NE(c, nullptr);
        EXPECT_EQ(c->lockKey, row.lockKey);
        for (int i = 0; i < 10; ++i) {
            const Exercise ex = exerciseForCategory(row.topic, {});
            ASSERT_TRUE(ex.circuit);
            EXPECT_EQ(ex.topic, row.topic);
            EXPECT_EQ(ex.key.rfind(row.lockKey, 0), 0u) << ex.key;
        }
        const KeyFilter closed = [&](const std::string& k) { return k.rfind(row.lockKey, 0) != 0; };
        EXPECT_TRUE(exerciseForCategory(row.topic, {}, closed).empty());
        // A weak circuit topic is drawn like any other.
        EXPECT_EQ(exerciseForCategory("svag", {row.topic}).topic, row.topic);
    }
    // Every exercise of "Alle emner" is on a formula family.
    for (int i = 0; i < 50; ++i)
        EXPECT_NE(exerciseForCategory("", {}).formula, nullptr);
}

} // namespace
} // namespace fl
