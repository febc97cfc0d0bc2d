// The practice records: levels and the weakest-first order on hand-made
// records, damaged records in the store, a restart, and the class summary.
#include "fl/practice/stats.h"

#include "store/datastore.h"
#include "tests/store/temp_store.h"

#include <gtest/gtest.h>

#include <limits>

namespace fl {
namespace {

TEST(Stats, levelsByShareOfRightAnswers) {
    struct Row {
        int right, total;
        const char* cls;
        const char* text;
    } rows[] = {
        {0, 2, "ny", "For få svar"},                           // both wrong, still too few
        {1, 3, "svag", "Svag"},      {3, 5, "mid", "På vej"},  // exactly 0.6
        {16, 20, "mid", "På vej"},   {17, 20, "god", "Stærk"}, // exactly 0.85
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.right) + " of " + std::to_string(row.total));
        const Level level = topicLevel({row.right, row.total});
        EXPECT_STREQ(levelClass(level), row.cls);
        EXPECT_STREQ(levelText(level), row.text);
    }
}

TEST(Stats, weakestFirstOnHandMadeRecords) {
    PracticeStats s;
    s.topics = {{"A", {0, 1}},  // 1.5 / 2 = 0.75
                {"B", {5, 10}}, // 5.5 / 11 = 0.5
                {"C", {9, 10}}, // 1.5 / 11
                {"D", {4, 8}},  // 4.5 / 9 = 0.5, ties with B and keeps its place after it
                {"E", {0, 0}}}; // 0.5 / 1 = 0.5
    std::vector<std::string> order;
    for (const auto& [name, t] : topicsWeakestFirst(s))
        order.push_back(name);
    EXPECT_EQ(order, (std::vector<std::string>{"A", "B", "D", "E", "C"}));
    // Weak means below 60 % with at least three answers.
    EXPECT_EQ(weakTopics(s), (std::vector<std::string>{"B", "D"}));

    s.formulas = {{"ohm", {1, 1}}, {"par2", {5, 10}}, {"XL", {0, 4}}};
    std::vector<std::string> formulas;
    for (const auto& [key, f] : formulasWeakestFirst(s))
        formulas.push_back(key);
    EXPECT_EQ(formulas, (std::vector<std::string>{"ohm", "par2"})); // never wrong: not listed
}

TEST(Stats, damagedRecordsReadAsFallbacks) {
    struct Row {
        const char* name;
        const char* json;
        int topics, right, total; // of topic "X" when there is one
    } rows[] = {
        {"not an object", "[1,2]", 0, 0, 0},
        {"topics of the wrong kind", R"({"topics":[1]})", 0, 0, 0},
        {"a record that is text", R"({"topics":{"X":"abc"}})", 0, 0, 0},
        {"a count that is text", R"({"topics":{"X":{"right":"3","total":5}}})", 1, 0, 5},
        {"more right than answered", R"({"topics":{"X":{"right":9,"total":5}}})", 1, 5, 5},
        {"negative counts", R"({"topics":{"X":{"right":-2,"total":-1}}})", 1, 0, 0},
        {"fractions", R"({"topics":{"X":{"right":1.9,"total":2.5}}})", 1, 1, 2},
        {"beyond 32 bits", R"({"topics":{"X":{"right":1,"total":1e30}}})", 1, 1,
         std::numeric_limits<int32_t>::max()},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const PracticeStats s = statsFromJson(Json::parse(row.json));
        ASSERT_EQ(static_cast<int>(s.topics.size()), row.topics);
        if (row.topics == 0) continue;
        EXPECT_EQ(s.topics.at("X").right, row.right);
        EXPECT_EQ(s.topics.at("X").total, row.total);
    }
    const std::vector<ExamRecord> exams =
        examsFromJson(Json::parse(R"([5, {"date":7,"topic":"Motorer","right":3,"total":2}])"));
    ASSERT_EQ(exams.size(), 1u);
    EXPECT_EQ(exams[0].date, "");
    EXPECT_EQ(exams[0].right, 2);
}

TEST(Stats, examsKeepTheNewestTen) {
    std::vector<ExamRecord> exams;
    for (int i = 0; i < 12; ++i)
        addExam(exams, {std::to_string(i), "Alle", i, 12, 60});
    ASSERT_EQ(exams.size(), 10u);
    EXPECT_EQ(exams.front().date, "11");
    EXPECT_EQ(exams.back().date, "2");
    EXPECT_EQ(examsFromJson(examsToJson(exams)).size(), 10u);
}

// The teacher reads a scenario's answers under its title, as the student does.
TEST(Stats, theClassSummaryHasItsShape) {
    Json empty;
    ASSERT_TRUE(Json::tryParse(classSummary({}, {}), empty));
    EXPECT_TRUE(empty.at("topics").isObject());
    EXPECT_TRUE(empty.at("topics").asObject().empty());

    PracticeStats s;
    addAnswer(s, "ohm", "Jævnstrøm", true, "2025-03-14");
    addAnswer(s, "XL", "Vekselstrøm", false, "2025-03-15");
    addAnswer(s, "tekst:kabel", "tekst:kabel", true, "2025-03-14");
    addAnswer(s, "tekst:kabel", "tekst:kabel", false, "2025-03-14");
    const Json sum = Json::parse(classSummary(s, {{"2025-03-15T10:00:00.000Z", "tekst:rc", 7, 10, 500}}));
    EXPECT_EQ(sum.at("answered").asNumber(), 4);
    EXPECT_EQ(sum.at("right").asNumber(), 2);
    EXPECT_EQ(sum.at("days").asNumber(), 2);
    EXPECT_EQ(sum.at("topics").at("Vekselstrøm").at("total").asNumber(), 1);
    EXPECT_EQ(sum.at("topics").at("Jævnstrøm").at("right").asNumber(), 1);
    EXPECT_FALSE(sum.at("topics").has("tekst:kabel"));
    EXPECT_EQ(sum.at("topics").at("Kabel til carport").at("right").asNumber(), 1);
    EXPECT_EQ(sum.at("topics").at("Kabel til carport").at("total").asNumber(), 2);
    EXPECT_EQ(sum.at("formulas").at("XL").at("wrong").asNumber(), 1);
    const Json& exam = sum.at("exams").asArray().at(0);
    EXPECT_EQ(exam.at("right").asNumber(), 7);
    EXPECT_EQ(exam.at("topic").asString(), "Modstand og kondensator i serie");
    EXPECT_FALSE(exam.has("seconds"));
    EXPECT_EQ(topicName("tekst:fjernet"), "Tekstopgave"); // a scenario that no longer exists
}

using StatsStoreTest = TempStoreTest;

TEST_F(StatsStoreTest, answersSurviveARestartUntilReset) {
    recordAnswer("ohm", "Jævnstrøm", true);
    recordAnswer("ohm", "Jævnstrøm", false);
    recordExam({"2025-03-15T10:00:00.000Z", "Jævnstrøm", 7, 10, 500});
    restart();
    const PracticeStats s = loadStats();
    EXPECT_EQ(s.topics.at("Jævnstrøm").total, 2);
    EXPECT_EQ(s.formulas.at("ohm").wrong, 1);
    ASSERT_EQ(s.days.size(), 1u);
    EXPECT_EQ(s.days.begin()->first, today());
    ASSERT_EQ(loadExams().size(), 1u);
    EXPECT_EQ(loadExams()[0].right, 7);
    // Under the names earlier versions wrote, so their files and exports still read.
    EXPECT_TRUE(storeGet("ov_stats").isObject());
    EXPECT_TRUE(storeGet("exam_hist").isArray());
    storeSet("ov_right", Json(3.0));
    resetStats();
    restart();
    EXPECT_TRUE(loadStats().empty());
    EXPECT_TRUE(loadExams().empty());
    EXPECT_TRUE(storeGet("ov_right").isNull());
}

} // namespace
} // namespace fl
