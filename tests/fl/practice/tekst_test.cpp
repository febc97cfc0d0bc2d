// Text problems: every scenario's parts chain from the story's numbers, over
// many draws; the values stay believable; the draw is never thrown away more
// often than the machinery allows; checking a part reads like the exercises.
#include "fl/practice/tekst.h"

#include "tests/fl/practice/seeded.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <regex>
#include <set>

namespace fl {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kDraws = 2000;

using TekstTest = SeededTest<7>;

using Vars = std::map<std::string, double>;

struct Expected {
    double value;
    double lo, hi; // what an electrician would believe
};

// Each scenario worked out again here, from the story's numbers alone, in
// the order a student would; the ranges are what the job makes plausible.
struct Scenario {
    const char* key;
    std::set<std::string> story; // the quantities drawn for the story
    std::function<std::vector<Expected>(const Vars&)> solve;
};

const std::vector<Scenario>& scenarios() {
    static const std::vector<Scenario> table = {
        {"kedel",
         {"P", "U", "t_min", "k_el"},
         [](const Vars& v) -> std::vector<Expected> {
             const double P = v.at("P"), t = v.at("t_min"), k = v.at("k_el");
             const double I = P / 230, E = P / 1000 * t / 60 * 365;
             return {{I, 5, 15}, {230 / I, 15, 35}, {E, 100, 600}, {E * k, 100, 2000}};
         }},
        {"kabel",
         {"l", "q", "I", "U", "rho"},
         [](const Vars& v) -> std::vector<Expected> {
             const double R = 0.0175 * 2 * v.at("l") / v.at("q"), I = v.at("I");
             const double dU = I * R;
             return {{R, 0.2, 1.5},
                     {dU, 2, 25},
                     {dU / 230 * 100, 1, 11},
                     {230 - dU, 200, 228},
                     {I * I * R, 20, 400}};
         }},
        {"spole",
         {"L", "R", "U", "f", "I"},
         [](const Vars& v) -> std::vector<Expected> {
             const double I = v.at("I"), Z = 230 / I, X = 2 * kPi * 50 * v.at("L");
             const double R = std::sqrt(Z * Z - X * X);
             // The coil's resistance comes back within the ammeter's rounding of the drawn one.
             EXPECT_NEAR(R, v.at("R"), 0.03 * v.at("R") + 0.5);
             return {{Z, 20, 100}, {X, 15, 63}, {R, 15, 75}, {R / Z, 0.25, 1}, {I * I * R, 50, 2500}};
         }},
        {"komp",
         {"P", "U", "f", "cosphi1", "cosphi2"},
         [](const Vars& v) -> std::vector<Expected> {
             const double P = v.at("P"), c1 = v.at("cosphi1"), c2 = v.at("cosphi2");
             const double Q = P * (std::tan(std::acos(c1)) - std::tan(std::acos(c2)));
             return {{P / (230 * c1), 3, 15},
                     {Q, 100, 1600},
                     {Q / (2 * kPi * 50 * 230 * 230), 5e-6, 100e-6},
                     {P / (230 * c2), 3, 11}};
         }},
        {"varme3",
         {"R", "U_N"},
         [](const Vars& v) -> std::vector<Expected> {
             const double R = v.at("R"), UF = 400 / std::sqrt(3.0), I = UF / R;
             return {{UF, 230, 231}, {I, 4, 12}, {3 * UF * I, 2500, 8500}, {3 * 400 * 400 / R, 8000, 24500}};
         }},
        {"motor",
         {"P_2", "U_N", "cosphi", "eta", "nr", "f", "p"},
         [](const Vars& v) -> std::vector<Expected> {
             const double P2 = v.at("P_2"), nr = v.at("nr");
             // The synchronous speed is the nearest one above the running speed.
             double ns = 0;
             for (double s : {750.0, 1000.0, 1500.0, 3000.0})
                 if (s > nr && ns == 0) ns = s;
             const double P1 = P2 / v.at("eta");
             return {{ns, 1000, 3000},
                     {P1, 2400, 9200},
                     {P1 / (std::sqrt(3.0) * 400 * v.at("cosphi")), 3.5, 17},
                     {(ns - nr) / ns * 100, 2, 6},
                     {P2 * 60 / (2 * kPi * nr), 7, 75}};
         }},
        {"rc",
         {"R", "C", "U", "f"},
         [](const Vars& v) -> std::vector<Expected> {
             const double R = v.at("R"), X = 1 / (2 * kPi * 50 * v.at("C"));
             const double Z = std::hypot(R, X), I = 230 / Z;
             return {{X, 90, 680}, {Z, 100, 830}, {I, 0.25, 2.3}, {I * R, 15, 230}, {I * X, 30, 230}};
         }},
        {"trafo",
         {"U_P", "U_S", "N_P", "P"},
         [](const Vars& v) -> std::vector<Expected> {
             const double n = 230 / v.at("U_S"), IS = v.at("P") / v.at("U_S");
             return {{n, 9, 20}, {v.at("N_P") / n, 30, 150}, {IS, 2, 13}, {IS / n, 0.2, 0.7}};
         }},
    };
    return table;
}

TEST_F(TekstTest, everyScenarioChainsFromItsStoryOverManyDraws) {
    ASSERT_EQ(scenarios().size(), tekstTopics().size());
    for (const Scenario& s : scenarios()) {
        SCOPED_TRACE(s.key);
        int worstTries = 0;
        for (int draw = 0; draw < kDraws; ++draw) {
            int tries = 0;
            const std::optional<TekstProblem> p = makeTekst(s.key, {}, &tries);
            ASSERT_TRUE(p) << "no problem after " << tries << " draws";
            worstTries = std::max(worstTries, tries);
            ASSERT_EQ(p->key, s.key);
            // The story's quantities are all there; the rest are the parts' answers.
            Vars story;
            for (const std::string& q : s.story) {
                ASSERT_TRUE(p->vars.count(q)) << q;
                story[q] = p->vars.at(q);
            }
            ASSERT_EQ(p->vars.size(), s.story.size() + p->parts.size()) << ::testing::PrintToString(*p);
            const std::vector<Expected> expected = s.solve(story);
            ASSERT_EQ(expected.size(), p->parts.size());
            for (size_t i = 0; i < expected.size(); ++i) {
                const TekstDel& part = p->parts[i];
                SCOPED_TRACE(part.target);
                EXPECT_NEAR(part.value, expected[i].value, 1e-9 * std::fabs(expected[i].value))
                    << ::testing::PrintToString(*p);
                EXPECT_GE(part.value, expected[i].lo) << ::testing::PrintToString(*p);
                EXPECT_LE(part.value, expected[i].hi) << ::testing::PrintToString(*p);
                EXPECT_DOUBLE_EQ(p->vars.at(part.target), part.value);
                EXPECT_FALSE(part.solution.empty());
            }
        }
        // None of the lists can make a part fail: the first draw always stands.
        EXPECT_EQ(worstTries, 1);
    }
}

TEST_F(TekstTest, theStoryShowsTheDrawnNumbersAsTheStudentReadsThem) {
    struct Row {
        const char* key;
        std::vector<std::pair<std::string, double>> shown; // quantity and the factor the story shows it with
    };
    const Row rows[] = {
        {"kabel", {{"l", 1}, {"q", 1}, {"I", 1}}},
        {"spole", {{"L", 1000}, {"I", 1}}},
        {"motor", {{"P_2", 1e-3}, {"cosphi", 1}, {"eta", 1}, {"nr", 1}}},
        {"rc", {{"R", 1}, {"C", 1e6}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        for (int draw = 0; draw < 20; ++draw) {
            const TekstProblem p = *makeTekst(row.key);
            for (const auto& [q, factor] : row.shown) {
                const std::string number = " " + storyNumber(p.vars.at(q) * factor);
                EXPECT_TRUE(p.story.find(number + " ") != std::string::npos ||
                            p.story.find(number + ".") != std::string::npos)
                    << q << " in " << p.story;
            }
            EXPECT_FALSE(std::regex_search(p.story, std::regex("[0-9]\\.[0-9]"))) << p.story;
        }
    }
}

TEST_F(TekstTest, theMotorsHintCountsThePolePairs) {
    TekstGen g = findTekstTopic("motor")->make();
    g.vars["nr"] = 1420;
    g.vars["p"] = 2;
    workParts(g);
    EXPECT_NE(g.parts[0].solution.find("60 · 50 / 1420 = 2,1127, rundet ned: p = <b>2</b>."),
              std::string::npos)
        << g.parts[0].solution;
}

TEST_F(TekstTest, aPartWithoutAUsableAnswerThrowsTheDrawAway) {
    TekstGen g;
    g.vars = {{"U", 230}};
    g.parts = {{"", "V", "U-U", "x", "?"}};
    EXPECT_EQ(errorOf([&] { workParts(g); }), "ugyldigt");
}

TEST_F(TekstTest, aClosedScenarioIsNeverDrawnUnlessAllAre) {
    const KeyFilter onlyKedel = [](const std::string& k) { return k == "tekst:kedel"; };
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(makeTekst("alle", onlyKedel)->key, "kedel");
    // A closed choice falls back to every scenario, as does a list where all are closed.
    std::set<std::string> closedChoice, allClosed;
    const KeyFilter none = [](const std::string&) { return false; };
    for (int i = 0; i < 200; ++i) {
        allClosed.insert(makeTekst("alle", none)->key);
        closedChoice.insert(makeTekst("komp", onlyKedel)->key);
    }
    EXPECT_EQ(allClosed.size(), tekstTopics().size());
    EXPECT_EQ(closedChoice.size(), tekstTopics().size());
    EXPECT_EQ(openTekstTopics(onlyKedel).size(), 1u);
}

TEST_F(TekstTest, checkingAPartJudgesScalesAndDiagnoses) {
    TekstGen g = findTekstTopic("komp")->make();
    g.vars["P"] = 1500;
    g.vars["cosphi1"] = 0.8;
    g.vars["cosphi2"] = 0.95;
    TekstProblem p;
    static_cast<TekstGen&>(p) = g;
    p.key = "komp";
    p.title = "Kompensering af en motor";
    workParts(p);
    const double C = p.parts[2].value;
    ASSERT_NEAR(C, 38.03e-6, 0.01e-6);
    const std::string uF = storyNumber(C * 1e6);
    const std::string exact = "(det præcise svar er " + tekstAnswerText(p.parts[2]) + ")";
    EXPECT_EQ(tekstAnswerText(p.parts[2]), "38,027 µF");
    struct Row {
        std::string name;
        size_t part;
        std::string typed;
        bool readable, correct;
        std::string contains;
    };
    const std::vector<Row> rows = {
        {"µF typed plain", 2, uF, true, true, "✓ <b>Rigtigt!</b></div>"},
        {"µF rounded, still within tolerance", 2, "37,5", true, true, exact},
        {"unit typed along", 2, "38 µF", false, false, "fx 2,38 eller 70u."},
        {"a thousand times", 1, storyNumber(p.parts[1].value * 1000), true, false, "1000 gange for stort"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TekstVerdict v = judgeTekstPart(p, row.part, row.typed);
        EXPECT_EQ(v.readable, row.readable);
        EXPECT_EQ(v.correct, row.correct);
        EXPECT_NE(v.html.find(row.contains), std::string::npos) << v.html;
    }
}

TEST_F(TekstTest, theSolutionListsTheGivensAndEveryPartInOrder) {
    const TekstProblem p = *makeTekst("rc");
    resetFigures();
    const std::string html = tekstSolutionHtml(p);
    EXPECT_EQ(
        html.rfind("<div class=\"card\"><h3 class=\"sh\">Løsning – Modstand og kondensator i serie</h3>", 0),
        0u);
    // The capacitance among the givens is shown in µF.
    EXPECT_NE(html.find(storyNumber(p.vars.at("C") * 1e6) + " µF"), std::string::npos);
    size_t at = 0;
    for (size_t i = 0; i < p.parts.size(); ++i) {
        const std::string head = "<span class=\"stnum\">" + partLetter(i) + "</span> " + p.parts[i].question;
        const size_t found = html.find(head, at);
        ASSERT_NE(found, std::string::npos) << head;
        at = found;
    }
    // An index in a hint is a subscript, in the solution and under the row.
    EXPECT_NE(html.find("X<sub>C</sub> = 1 / (2 · π · f · C)"), std::string::npos);
    EXPECT_EQ(tekstHintHtml(p, 3), "<p class=\"hint0\">U<sub>R</sub> = I · R.</p>");
    EXPECT_EQ(tekstHeaderHtml(p),
              "<h2>Modstand og kondensator i serie</h2><div class=\"txstory\">" + p.story + "</div>");
    EXPECT_EQ(tekstQuestionHtml(p, 1), "<b>b)</b> Hvor stor er kredsens impedans?");
}

} // namespace
} // namespace fl
