// Flashcards: the schedule over simulated days, the round's queue with its
// repetitions, the decks, and the states in the store across a restart and a
// damaged record.
#include "fl/practice/cards.h"

#include "fl/glossary/glossary.h"
#include "fl/practice/random.h"
#include "store/datastore.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/store/temp_store.h"

#include <gtest/gtest.h>

#include <tuple>

namespace fl {
namespace {

constexpr double kT0 = 1'741'950'000'000.0;

double day(double d) {
    return kT0 + d * kDayMs;
}

// One rating on a day, and where the card must stand after it.
struct Step {
    double day;
    int grade;
    int box;
    double dueDay;
};

struct ScheduleRow {
    const char* name;
    CardState start; // box 0: a card never rated
    std::vector<Step> steps;
};

// A state's numbers, so that one comparison states them all.
std::tuple<int, int, int, double> numbers(const CardState& s) {
    return {s.box, s.reps, s.good, s.due};
}

TEST(CardsSchedule, ratingsOverDaysMoveCardsAsTheIntervalTableSays) {
    const ScheduleRow rows[] = {
        {"known four times reaches box 5",
         {0, 0, 0, 0},
         {{0, Right, 2, 1}, {1, Right, 3, 4}, {4, Right, 4, 11}, {11, Right, 5, 27}}},
        {"box 5 stays and goes 16 days ahead", {5, 4, 4, day(0)}, {{0, Right, 5, 16}, {16, Right, 5, 32}}},
        {"almost keeps the box at half the interval", {4, 3, 3, day(0)}, {{0, Almost, 4, 3.5}}},
        {"almost in box 1 is due at once", {0, 0, 0, 0}, {{0, Almost, 1, 0}}},
        {"not known goes back to box 1 now", {3, 2, 2, day(0)}, {{0, Wrong, 1, 0}, {0, Right, 2, 1}}},
        {"a late review counts from the day it is rated", {2, 1, 1, day(1)}, {{9, Right, 3, 12}}},
    };
    for (const ScheduleRow& row : rows) {
        SCOPED_TRACE(row.name);
        CardStates states;
        if (row.start.box > 0) states["ohm"] = row.start;
        int reps = row.start.reps, good = row.start.good;
        for (const Step& s : row.steps) {
            // The student meets the card only when it is ready.
            EXPECT_TRUE(isDue(states, "ohm", day(s.day))) << "day " << s.day;
            Round once; // what the page does each day the card is met
            once.queue = {"ohm"};
            const CardState after = rate(once, states, s.grade, day(s.day));
            ++reps;
            good += s.grade == Right ? 1 : 0;
            EXPECT_EQ(after.box, s.box) << "day " << s.day;
            EXPECT_DOUBLE_EQ(after.due, day(s.dueDay)) << "day " << s.day;
            EXPECT_EQ(after.reps, reps);
            EXPECT_EQ(after.good, good);
            if (s.dueDay > s.day) {
                EXPECT_FALSE(isDue(states, "ohm", day(s.dueDay) - 1));
            }
        }
    }
}

TEST(CardsRound, repetitionsComeBackWhereTheRoundPutsThem) {
    struct Row {
        const char* name;
        std::vector<int> grades; // one per rating, in order
        std::vector<std::string> queue;
        int wrong, almost, right;
    };
    // clang-format off
    const Row rows[] = {
        {"not known returns four cards later", {Wrong},
         {"A", "B", "C", "D", "A", "E", "F", "G", "H"}, 1, 0, 0},
        {"almost returns six cards later", {Almost}, {"A", "B", "C", "D", "E", "F", "A", "G", "H"}, 0, 1, 0},
        {"almost twice is put back once", {Almost, Right, Right, Right, Right, Right, Almost},
         {"A", "B", "C", "D", "E", "F", "A", "G", "H"}, 0, 2, 5},
        {"not known has no limit", {Wrong, Right, Right, Right, Wrong},
         {"A", "B", "C", "D", "A", "E", "F", "G", "A", "H"}, 2, 0, 3},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Round r;
        r.queue = {"A", "B", "C", "D", "E", "F", "G", "H"};
        CardStates states;
        for (int g : row.grades)
            rate(r, states, g, kT0);
        EXPECT_EQ(r.queue, row.queue);
        EXPECT_EQ(r.wrong, row.wrong);
        EXPECT_EQ(r.almost, row.almost);
        EXPECT_EQ(r.right, row.right);
        EXPECT_EQ(r.pos, row.grades.size());
        EXPECT_FALSE(r.flipped);
    }
    // Near the end of a short queue the repetition goes last.
    Round r;
    r.queue = {"A", "B"};
    CardStates states;
    rate(r, states, Wrong, kT0);
    EXPECT_EQ(r.queue, (std::vector<std::string>{"A", "B", "A"}));
    skip(r);
    rate(r, states, Right, kT0);
    EXPECT_TRUE(r.finished());
    EXPECT_EQ(states.count("B"), 0u); // skipped: no rating, no record
}

TEST(CardsRound, aRoundTakesTheReadyCardsOrTheWholeDeck) {
    seedRandom(3);
    const std::vector<std::string> deck = deckCards("inst:poe");
    ASSERT_GE(deck.size(), 3u);
    CardStates states;
    states[deck[0]] = {3, 2, 2, day(5)}; // not ready until day 5
    states[deck[1]] = {2, 1, 1, day(-1)};
    const Round now = startRound("inst:poe", Direction::NameToFormula, states, day(0));
    EXPECT_EQ(now.queue.size(), deck.size() - 1);
    EXPECT_EQ(std::count(now.queue.begin(), now.queue.end(), deck[0]), 0);
    EXPECT_EQ(countDue("inst:poe", states, day(0)), int(deck.size()) - 1);
    EXPECT_EQ(startRound("inst:poe", Direction::NameToFormula, states, day(0), true).queue.size(),
              deck.size());
    EXPECT_EQ(countDue("inst:poe", states, day(5)), int(deck.size()));
}

TEST(CardsDecks, everyDeckHasCardsWithBothSides) {
    std::set<std::string> inst;
    for (const Deck& d : decks()) {
        SCOPED_TRACE(d.key);
        const std::vector<std::string> cards = deckCards(d.key);
        EXPECT_FALSE(cards.empty());
        EXPECT_EQ(std::set<std::string>(cards.begin(), cards.end()).size(), cards.size()) << "a card twice";
        for (const std::string& key : cards)
            for (Direction dir : {Direction::NameToFormula, Direction::FormulaToName}) {
                resetFigures();
                const std::string front = cardFrontHtml(key, dir), back = cardBackHtml(key, dir);
                EXPECT_EQ(front.find("findes ikke"), std::string::npos) << key;
                EXPECT_EQ(back.find("findes ikke"), std::string::npos) << key;
                EXPECT_NE(front, back) << key;
            }
        if (d.key.rfind("inst:", 0) == 0) inst.insert(cards.begin(), cards.end());
    }
    resetFigures();
    const std::vector<std::string> all = deckCards("inst");
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()), inst);
    EXPECT_TRUE(deckCards("ukendt").empty());
    EXPECT_EQ(deckCards("gl").size(), glossary().size());
}

TEST(CardsDecks, theTwoDirectionsAskOppositeThings) {
    resetFigures();
    EXPECT_NE(cardBackHtml("ohm", Direction::NameToFormula).find("<div class=\"eq fceq\">"),
              std::string::npos);
    EXPECT_NE(cardFrontHtml("ohm", Direction::FormulaToName).find("<div class=\"eq fceq\">"),
              std::string::npos);
    EXPECT_EQ(cardFrontHtml("ohm", Direction::NameToFormula).find("fceq"), std::string::npos);
    EXPECT_NE(cardFrontHtml("__SYM:U", Direction::NameToFormula).find("Hvilket symbol og hvilken enhed?"),
              std::string::npos);
    EXPECT_NE(cardFrontHtml("gl:Spænding", Direction::NameToFormula).find("<p class=\"fcq\">Spænding</p>"),
              std::string::npos);
    resetFigures();
}

TEST(CardsDecks, boxesCountEachBoxAndWhatIsReady) {
    CardStates states;
    const std::vector<std::string> deck = deckCards("inst:poe");
    ASSERT_GE(deck.size(), 6u);
    states[deck[0]] = {2, 1, 1, day(1)};
    states[deck[1]] = {2, 1, 1, day(-1)};
    states[deck[2]] = {5, 4, 4, day(10)};
    // Boxes from a damaged record: 0 counts as new, one past the last box in no box.
    states[deck[3]] = {0, 1, 1, day(10)};
    states[deck[4]] = {9, 1, 1, day(10)};
    const std::string html = boxesHtml("inst:poe", states, day(0));
    auto cell = [](int n, const char* name) {
        return "<span class=\"val\">" + std::to_string(n) + "</span><br><span class=\"k\">" + name +
               "</span>";
    };
    EXPECT_NE(html.find(cell(int(deck.size()) - 4, "Nye")), std::string::npos) << html;
    EXPECT_NE(html.find(cell(0, "Kasse 1")), std::string::npos);
    EXPECT_NE(html.find(cell(2, "Kasse 2")), std::string::npos);
    EXPECT_NE(html.find(cell(1, "Kasse 5")), std::string::npos);
    EXPECT_NE(html.find(std::to_string(deck.size()) + " kort i alt · " + std::to_string(deck.size() - 4) +
                        " klar nu."),
              std::string::npos);
}

// The process-wide copy of the cards is forgotten with the store.
class CardsStoreTest : public TempStoreTest {
  protected:
    void SetUp() override {
        TempStoreTest::SetUp();
        reloadCardStates();
    }
    void TearDown() override {
        TempStoreTest::TearDown();
        reloadCardStates();
    }
    void restart() override {
        TempStoreTest::restart();
        reloadCardStates();
    }
};

TEST_F(CardsStoreTest, statesSurviveARestartUntilTheirDeckIsReset) {
    Round r;
    r.queue = {"ohm", "gl:Spænding", "inst:poe:1"};
    rate(r, cardStates(), Right, day(0));
    rate(r, cardStates(), Almost, day(0));
    rate(r, cardStates(), Wrong, day(0));
    saveCardStates();
    const CardStates before = cardStates();
    restart();
    ASSERT_EQ(cardStates().size(), 3u);
    for (const auto& [key, s] : before)
        EXPECT_EQ(numbers(cardStates().at(key)), numbers(s)) << key;
    // Named numbers in the record.
    EXPECT_EQ(storeGet("fc").at("ohm").at("box").asNumber(), 2);
    EXPECT_DOUBLE_EQ(storeGet("fc").at("ohm").at("due").asNumber(), day(1));
    resetDeck("El-lære");
    restart();
    EXPECT_EQ(cardStates().count("ohm"), 0u);
    EXPECT_EQ(cardStates().count("gl:Spænding"), 1u);
}

TEST_F(CardsStoreTest, aDamagedRecordCostsOnlyThatCard) {
    storeSet("fc", Json::parse(R"({
        "ohm": "garbage",
        "gl:Spænding": {"box": 9, "reps": -3, "good": 2, "due": "soon"},
        "motor": {"box": 3, "reps": 2, "good": 5, "due": 1e12},
        "": {"box": 2},
        "__SYM:U": {"box": 0.5, "reps": 1e300}
    })"));
    restart();
    const CardStates& s = cardStates();
    EXPECT_EQ(s.count("ohm"), 0u);
    EXPECT_EQ(s.count(""), 0u);
    EXPECT_EQ(numbers(s.at("gl:Spænding")), std::make_tuple(9, 0, 0, 0.0));
    EXPECT_EQ(numbers(s.at("motor")), std::make_tuple(3, 2, 2, 1e12));
    EXPECT_EQ(numbers(s.at("__SYM:U")), std::make_tuple(0, INT32_MAX, 0, 0.0));
    // A box out of range holds no progress: the next ✓ goes from box 1 to 2, not to 5.
    Round again;
    again.queue = {"gl:Spænding"};
    EXPECT_EQ(rate(again, cardStates(), Right, day(0)).box, 2);
    // A record of the wrong kind altogether reads as no cards.
    storeSet("fc", Json("x"));
    restart();
    EXPECT_TRUE(cardStates().empty());
}

} // namespace
} // namespace fl
