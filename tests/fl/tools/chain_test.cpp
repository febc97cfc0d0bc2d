// The equation chain: the order of its blocks, each kind of step, what it
// skips and warns of. What an unknown must wait for, the every-subset
// property, and the sorting of givens that disagree run through the tools
// that hand it their lists.
#include "fl/tools/chain.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using ChainTest = SettingsTest;

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
    // clang-format off
    const Row rows[] = {
        {"target evaluated", {{"P", "U*I", "P", ""}}, {{"U", 230}, {"I", 2}}, "P", 460,
         "P=U · I=230 · 2=460"},
        {"identity forwards", {{"I_F", "I_N", "", ""}}, {{"I_N", 5}}, "I_F", 5, "I_F=I_N=5"},
        {"identity backwards", {{"I_F", "I_N", "", ""}}, {{"I_F", 5}}, "I_N", 5, "I_N=I_F=5"},
        {"isolated first", {{"P", "U*I", "P", ""}}, {{"P", 460}, {"U", 230}}, "I", 2,
         "P=U · IFormlenU · I=PByt om på siderneI=[P / U]Divider med U på begge sider"
         "I=[P / U]=[460 / 230]=2"},
        {"inverse function", {{"phi", "acos(cosphi)", "", ""}}, {{"phi", 60}}, "cosphi", 0.5, ""},
    };
    // clang-format on
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

} // namespace
} // namespace fl
