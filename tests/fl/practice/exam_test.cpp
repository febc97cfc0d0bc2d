// The exam: an honest clock that a test runs by hand, answers kept until the
// hand-in and refused after it, the points, the verdict and the rows.
#include "fl/practice/exam.h"

#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

constexpr int64_t kStart = 1'741'950'000'000; // some morning in March 2025, in ms
constexpr int64_t kMinute = 60'000;

using ExamTest = SettingsTest;

// An exercise whose facit is 2 A, as the generator would give it.
Exercise twoAmps(int n) {
    Exercise ex;
    ex.key = "ohm" + std::to_string(n);
    ex.title = "Ohms lov";
    ex.topic = "Jævnstrøm";
    ex.unit = "A";
    ex.target = "I";
    ex.facit = 2.0;
    return ex;
}

Exam examOf(int count, int minutes) {
    int n = 0;
    return startExam("Jævnstrøm", "Jævnstrøm", count, minutes, kStart, [&] { return twoAmps(++n); });
}

TEST_F(ExamTest, theClockHandsInAtTheLimitAndRecordsTheTimeUsed) {
    Exam exam = examOf(5, 10);
    ASSERT_EQ(exam.size(), 5u);
    EXPECT_EQ(secondsLeft(exam, kStart), 600);
    EXPECT_EQ(unansweredCount(exam), 5);
    EXPECT_TRUE(setAnswer(exam, 0, "2"));
    EXPECT_TRUE(setAnswer(exam, 3, "2,01"));
    EXPECT_EQ(secondsLeft(exam, kStart + 9 * kMinute + 59'500), 1); // half a second left still shows 0:01
    EXPECT_FALSE(timeIsUp(exam, kStart + 9 * kMinute + 59'999));
    EXPECT_TRUE(setAnswer(exam, 4, "4"));
    EXPECT_TRUE(timeIsUp(exam, kStart + 10 * kMinute));
    // The timer fires a little late; the time used is still the limit.
    const ExamResult r = handIn(exam, kStart + 10 * kMinute + 800);
    EXPECT_EQ(exam.usedSeconds, 600);
    EXPECT_EQ(r.right, 2);
    EXPECT_EQ(r.total, 5);
    EXPECT_EQ(r.pct, 40);
    // Everything typed before the limit is there, nothing after it gets in.
    EXPECT_EQ(exam.answers, (std::vector<std::string>{"2", "", "", "2,01", "4"}));
    EXPECT_FALSE(setAnswer(exam, 1, "2"));
    EXPECT_EQ(handIn(exam, kStart + 30 * kMinute).right, 2);
    EXPECT_EQ(exam.usedSeconds, 600);
    EXPECT_EQ(examHeading(exam), "Eksamen · Jævnstrøm · tid brugt 10 min 0 s");
    const ExamRecord rec = examRecord(exam, r, "2025-03-14T11:00:00.000Z");
    EXPECT_EQ(rec.seconds, 600);
    EXPECT_EQ(rec.right, 2);
    EXPECT_EQ(rec.total, 5);
}

TEST_F(ExamTest, withoutALimitTheTimeUsedIsTheTimeTakenAndTheClockCountsDown) {
    Exam exam = examOf(3, 0);
    EXPECT_EQ(secondsLeft(exam, kStart + 100 * kMinute), -1);
    EXPECT_FALSE(timeIsUp(exam, kStart + 1000 * kMinute));
    handIn(exam, kStart + 3 * kMinute + 20'400);
    EXPECT_EQ(exam.usedSeconds, 200);
    EXPECT_EQ(durationText(exam.usedSeconds), "3 min 20 s");
    const std::pair<int, const char*> clock[] = {{9, "0:09"}, {61, "1:01"}, {3600, "60:00"}, {-5, "0:00"}};
    for (const auto& [seconds, text] : clock)
        EXPECT_EQ(clockText(seconds), text);
}

TEST_F(ExamTest, pointsAndVerdictFollowThePercentage) {
    struct Row {
        int right, total, pct;
        const char* verdictStart;
        bool confetti;
    };
    const Row rows[] = {
        {9, 10, 90, "Flot!", true},
        {17, 19, 89, "Godt gået", false},
        {6, 10, 60, "Godt gået", false},
        {10, 17, 58, "Gennemgå", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.right) + " of " + std::to_string(row.total));
        Exam exam = examOf(row.total, 0);
        for (int i = 0; i < row.right; ++i)
            setAnswer(exam, size_t(i), "2");
        for (int i = row.right; i < row.total; ++i)
            setAnswer(exam, size_t(i), i % 2 ? "3" : "");
        const ExamResult r = handIn(exam, kStart + kMinute);
        EXPECT_EQ(r.pct, row.pct);
        EXPECT_EQ(examVerdict(r.pct).rfind(row.verdictStart, 0), 0u);
        EXPECT_EQ(examCelebrates(r.pct), row.confetti);
    }
    EXPECT_EQ(examScoreText({9, 10, 90, {}}), "Resultat: 9 af 10 rigtige (90 %)");
}

TEST_F(ExamTest, aThinTopicGivesAShorterExamWithoutHoles) {
    int calls = 0;
    const Exam exam = startExam("x", "x", 10, 0, kStart, [&] {
        ++calls;
        return calls % 5 == 0 ? twoAmps(calls) : Exercise{};
    });
    EXPECT_FALSE(exam.exercises.empty());
    for (const Exercise& ex : exam.exercises)
        EXPECT_FALSE(ex.empty());
    EXPECT_EQ(exam.answers.size(), exam.exercises.size());
}

TEST_F(ExamTest, rowsShowAnswerFacitAndTheTipOfAWrongAnswer) {
    Exam exam = examOf(4, 0);
    exam.exercises[1].title = "Effekt (P = U_F · I_F)";
    setAnswer(exam, 0, "2");
    setAnswer(exam, 1, "2000");
    setAnswer(exam, 2, "to ampere");
    const ExamResult r = handIn(exam, kStart);
    struct Row {
        size_t index;
        std::vector<std::string> has;
    };
    const Row rows[] = {
        {0, {"✓</span> Opgave 1: </b>Ohms lov", "Dit svar: <b>2</b> · Facit: <b>2 A</b>"}},
        {1,
         {"✗</span> Opgave 2: </b>Effekt (P = U<sub>F</sub> · I<sub>F</sub>)",
          "<b>Tip:</b> Dit svar er 1000 gange for stort."}},
        {2, {"Dit svar: <b>to ampere</b>", "<b>Tip:</b> Svaret kunne ikke læses som et tal."}},
        {3, {"Dit svar: <b>(intet svar)</b>", "<b>Tip:</b> Du svarede ikke på opgaven."}},
    };
    for (const Row& row : rows) {
        const std::string html = examRowHtml(exam, r, row.index);
        for (const std::string& part : row.has)
            EXPECT_NE(html.find(part), std::string::npos) << part << " in " << html;
        if (row.index == 0) {
            EXPECT_EQ(html.find("Tip:"), std::string::npos);
        }
    }
}

} // namespace
} // namespace fl
