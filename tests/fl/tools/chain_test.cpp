// The equation chain. The main property runs over whole equation lists: for
// random consistent values and every subset of givens, the chain finds
// exactly what the givens determine, to 1e-9, and invents nothing.
#include "fl/tools/chain.h"

#include "fl/expr/eval.h"
#include "fl/expr/parser.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/sheet_text.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

namespace fl {
namespace {

using Vars = std::map<std::string, double>;

// An ideal transformer: every symbol stands once in each formula.
const std::vector<ChainEquation> kTransformer{
    {"n", "U_P/U_S", "n ud fra spændingerne", "9"}, {"n", "N_P/N_S", "n ud fra vindingerne", "9"},
    {"n", "I_S/I_P", "n ud fra strømmene", "9"},     {"S", "U_P*I_P", "S primær", "9"},
    {"S", "U_S*I_S", "S sekundær", "9"},             {"N_P", "U_P*NV", "N_P ud fra N/V", ""},
    {"N_S", "U_S*NV", "N_S ud fra N/V", ""},         {"U_S", "I_S*R_B", "Ohms lov", ""},
};

Vars transformerTruth(std::mt19937& rng) {
    auto in = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(rng); };
    Vars v{{"U_P", in(100, 1000)}, {"U_S", in(5, 400)}, {"I_S", in(0.1, 100)}, {"NV", in(0.5, 5)}};
    v["n"] = v["U_P"] / v["U_S"];
    v["I_P"] = v["I_S"] / v["n"];
    v["S"] = v["U_S"] * v["I_S"];
    v["N_P"] = v["U_P"] * v["NV"];
    v["N_S"] = v["U_S"] * v["NV"];
    v["R_B"] = v["U_S"] / v["I_S"];
    return v;
}

// A symmetrical star load, with angles and their inverse functions.
const std::vector<ChainEquation> kStar{
    {"U_F", "U_N/sqrt(3)", "fasespænding", ""},     {"I_F", "I_N", "fasestrøm", ""},
    {"R", "U_F/I_F", "Ohms lov", ""},                {"phi", "acos(cosphi)", "vinkel", "12"},
    {"P", "U_N*I_N*sqrt(3)*cosphi", "P", ""},        {"S", "U_N*I_N*sqrt(3)", "S", ""},
    {"Q", "U_N*I_N*sqrt(3)*sin(phi)", "Q", ""},      {"P", "3*U_F*I_F*cosphi", "P fra fasen", ""},
    {"S", "3*U_F*I_F", "S fra fasen", ""},           {"cosphi", "P/S", "cos φ", "13"},
};

Vars starTruth(std::mt19937& rng) {
    auto in = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(rng); };
    Vars v{{"U_N", in(200, 700)}, {"R", in(5, 100)}, {"cosphi", in(0.6, 0.95)}};
    v["U_F"] = v["U_N"] / std::sqrt(3.0);
    v["I_F"] = v["U_F"] / v["R"];
    v["I_N"] = v["I_F"];
    v["phi"] = std::acos(v["cosphi"]) * 180 / M_PI;
    v["S"] = 3 * v["U_F"] * v["I_F"];
    v["P"] = v["S"] * v["cosphi"];
    v["Q"] = v["S"] * std::sin(v["phi"] * M_PI / 180);
    return v;
}

std::set<std::string> symbolsOf(const ChainEquation& eq, NodePtr& node) {
    node = parse(eq.formula);
    std::set<std::string> s;
    collectVars(node, s);
    s.insert(eq.target);
    return s;
}

// What the givens determine, worked out without the chain: an equation with
// one unknown settles it, provided the unknown is its target or stands once
// in its formula.
std::set<std::string> determined(const std::vector<ChainEquation>& list, std::set<std::string> known) {
    for (bool grew = true; grew;) {
        grew = false;
        for (const ChainEquation& eq : list) {
            NodePtr node;
            std::vector<std::string> unknown;
            for (const std::string& s : symbolsOf(eq, node))
                if (!known.count(s)) unknown.push_back(s);
            if (unknown.size() == 1 && (unknown[0] == eq.target || countVar(node, unknown[0]) == 1)) {
                known.insert(unknown[0]);
                grew = true;
            }
        }
    }
    return known;
}

double rel(double a, double b) {
    return std::fabs(a - b) / std::max({std::fabs(a), std::fabs(b), 1.0});
}

using ChainTest = SettingsTest;

TEST_F(ChainTest, everySubsetOfGivensFindsExactlyWhatItDetermines) {
    struct Case {
        const char* name;
        const std::vector<ChainEquation>* list;
        Vars (*truth)(std::mt19937&);
    };
    const Case cases[] = {{"transformer", &kTransformer, transformerTruth}, {"star load", &kStar, starTruth}};
    std::mt19937 rng(17);
    for (const Case& c : cases) {
        for (int draw = 0; draw < 3; ++draw) {
            const Vars truth = c.truth(rng);
            std::vector<std::string> names;
            for (const auto& [k, v] : truth)
                names.push_back(k);
            for (unsigned mask = 0; mask < (1u << names.size()); ++mask) {
                Vars vars;
                std::set<std::string> given;
                for (size_t i = 0; i < names.size(); ++i)
                    if (mask & (1u << i)) {
                        vars[names[i]] = truth.at(names[i]);
                        given.insert(names[i]);
                    }
                SCOPED_TRACE(std::string(c.name) + " mask " + std::to_string(mask));
                resetFigures();
                const ChainResult r = solveChain(*c.list, vars);
                const std::set<std::string> expected = determined(*c.list, given);
                for (const std::string& n : names) {
                    ASSERT_EQ(vars.count(n) > 0, expected.count(n) > 0) << n;
                    if (vars.count(n)) {
                        ASSERT_LE(rel(vars.at(n), truth.at(n)), 1e-9) << n;
                    }
                }
                ASSERT_EQ(r.blocks.size(), expected.size() - given.size());
                for (const ChainEquation& eq : r.equations) {
                    bool known = true;
                    for (const std::string& s : symbolsOf(eq, *const_cast<NodePtr*>(&eq.node)))
                        known = known && vars.count(s);
                    if (known) {
                        ASSERT_LE(rel(vars.at(eq.target), eval(eq.node, vars)), 1e-9) << eq.title;
                    }
                }
            }
        }
    }
}

TEST_F(ChainTest, blocksFollowTheOrderOfSolvingNotOfTheList) {
    const std::vector<ChainEquation> list{
        {"a", "b*c", "a", ""}, {"b", "d+1", "b", ""}, {"c", "2*d", "c", ""}};
    Vars vars{{"d", 3}};
    const ChainResult r = solveChain(list, vars);
    EXPECT_EQ(r.solvedBy, (std::vector<size_t>{1, 2, 0}));
    ASSERT_EQ(r.blocks.size(), 3u);
    EXPECT_EQ(r.blocks[0].solves, "b");
    EXPECT_EQ(r.blocks[0].uses, "d");
    EXPECT_EQ(r.blocks[2].solves, "a");
    EXPECT_EQ(r.blocks[2].uses, "b,c");
    EXPECT_EQ(vars.at("a"), 24);
}

TEST_F(ChainTest, eachKindOfStepWritesItsWorking) {
    struct Row {
        const char* name;
        std::vector<ChainEquation> list;
        Vars given;
        const char* found;
        double value;
        const char* text; // the block, as text
    };
    const Row rows[] = {
        {"target evaluated", {{"P", "U*I", "P", ""}}, {{"U", 230}, {"I", 2}}, "P", 460, "P=U · I=230 · 2=460"},
        {"identity forwards", {{"I_F", "I_N", "", ""}}, {{"I_N", 5}}, "I_F", 5, "I_F=I_N=5"},
        {"identity backwards", {{"I_F", "I_N", "", ""}}, {{"I_F", 5}}, "I_N", 5, "I_N=I_F=5"},
        {"isolated first",
         {{"P", "U*I", "P", ""}},
         {{"P", 460}, {"U", 230}},
         "I",
         2,
         "P=U · IFormlenU · I=PByt om på siderneI=[P / U]Divider med U på begge siderI=[P / U]=[460 / 230]=2"},
        {"inverse function", {{"phi", "acos(cosphi)", "", ""}}, {{"phi", 60}}, "cosphi", 0.5, ""},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        resetFigures();
        Vars vars = r.given;
        const ChainResult c = solveChain(r.list, vars);
        const RenderResult pass = takeRender({});
        ASSERT_EQ(c.blocks.size(), 1u);
        EXPECT_EQ(c.blocks[0].solves, r.found);
        EXPECT_NEAR(vars.at(r.found), r.value, 1e-12);
        if (*r.text) {
            EXPECT_EQ(sheetText(c.blocks[0].html, pass.maths), r.text);
        }
    }
}

TEST_F(ChainTest, anUnknownThatStandsTwiceWaitsForAnotherEquation) {
    const std::vector<ChainEquation> list{{"s", "(n_s-nr)/n_s*100", "slip", ""}, {"n_s", "60*f/p", "n_s", ""}};
    Vars vars{{"s", 4}, {"nr", 1440}, {"f", 50}};
    EXPECT_TRUE(solveChain(list, vars).blocks.empty());
    EXPECT_EQ(vars.size(), 3u);
    vars["p"] = 2;
    const ChainResult r = solveChain(list, vars);
    ASSERT_EQ(r.blocks.size(), 1u);
    EXPECT_EQ(r.blocks[0].solves, "n_s");
}

TEST_F(ChainTest, aNegativeResistanceIsToldUnlessTheGuardAllowsIt) {
    const std::vector<ChainEquation> list{{"R_2", "U/I-R_1", "rest", ""}, {"X_tot", "X_L-X_C", "X", ""}};
    auto ohm = [](const std::string&) { return std::string("Ω"); };
    const std::string warning = "Negativ modstand – de indtastede værdier passer ikke sammen.";
    Vars vars{{"U", 10}, {"I", 1}, {"R_1", 20}, {"X_L", 1}, {"X_C", 5}};
    ChainResult r = solveChain(list, vars, {ohm});
    EXPECT_TRUE(r.negative);
    EXPECT_EQ(vars.at("R_2"), -10);
    EXPECT_TRUE(contains(r.blocks[0].html, warning));
    EXPECT_FALSE(contains(r.blocks[1].html, warning)); // a reactance sum may be negative
    Vars again{{"U", 10}, {"I", 1}, {"R_1", 20}};
    r = solveChain(list, again, {ohm, {}, [](const std::string& s) { return s == "R_2"; }});
    EXPECT_FALSE(r.negative);
    EXPECT_FALSE(contains(r.blocks[0].html, warning));
}

TEST_F(ChainTest, noRealAnswerLeavesTheChainAndNaNCountsAsUnknown) {
    Vars vars{{"y", -4}};
    EXPECT_EQ(errorOf([&] { solveChain({{"x", "sqrt(y)", "", ""}}, vars); }), "intet reelt svar");
    Vars withNan{{"y", 4}, {"x", NAN}};
    solveChain({{"x", "sqrt(y)", "", ""}}, withNan);
    EXPECT_EQ(withNan.at("x"), 2);
}

TEST_F(ChainTest, aFailedStepIsDroppedWhenAskedAndAnotherEquationFindsItsUnknown) {
    // x has no real value by the first equation; the second finds it, and z follows.
    const std::vector<ChainEquation> list{
        {"x", "sqrt(y)", "root", ""}, {"x", "w*2", "double", ""}, {"z", "x+1", "next", ""}};
    ChainSetup setup;
    setup.skipFailed = true;
    Vars vars{{"y", -4}, {"w", 3}};
    const ChainResult r = solveChain(list, vars, setup);
    ASSERT_EQ(r.blocks.size(), 2u);
    EXPECT_EQ(r.blocks[0].title, "double");
    EXPECT_EQ(vars.at("x"), 6);
    EXPECT_EQ(vars.at("z"), 7);
    Vars stuck{{"y", -4}};
    EXPECT_TRUE(solveChain(list, stuck, setup).blocks.empty());
    EXPECT_FALSE(stuck.count("x"));
}

TEST_F(ChainTest, mismatchesSortNearMissesFromConflictsAndSkipTheSolvingEquation) {
    struct Row {
        const char* name;
        Vars given;
        std::vector<std::string> lines; // as text, with "!" before a conflict
    };
    const Row rows[] = {
        {"agrees", {{"U_P", 230}, {"U_S", 12}, {"n", 230.0 / 12}}, {}},
        {"near miss", {{"U_P", 230}, {"U_S", 12}, {"n", 19.5}},
         {"n ud fra spændingerne: n = 19,5, men formlen giver 19,167"}},
        {"conflict", {{"U_P", 230}, {"U_S", 12}, {"n", 20}},
         {"!n ud fra spændingerne: n = 20, men formlen giver 19,167"}},
        {"the equation that solved is not checked", {{"U_P", 230}, {"U_S", 12}}, {}},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        Vars vars = r.given;
        const ChainResult c = solveChain(kTransformer, vars);
        std::vector<std::string> lines;
        for (const ChainMismatch& m : chainMismatches(c, vars))
            lines.push_back((m.conflict ? "!" : "") + sheetText(m.line, {}));
        EXPECT_EQ(lines, r.lines);
    }
}

} // namespace
} // namespace fl
