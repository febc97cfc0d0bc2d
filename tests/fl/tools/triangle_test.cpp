// The right-angled triangle: every pair of its five parts that fixes it gives
// the same triangle (3, 4, 5 and a 30°-60°-90° one), three parts are held
// against each other, and what can't be a triangle is refused in words.
#include "fl/tools/small.h"

#include "fl/expr/numbers.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using TriangleTool = SettingsTest;

struct Triangle {
    double a, b, c, A, B;
    double get(const std::string& k) const {
        return k == "a" ? a : k == "b" ? b : k == "c" ? c : k == "A" ? A : B;
    }
};

TEST_F(TriangleTool, everyPairThatFixesTheTriangleGivesTheSameOne) {
    // tan A = 3/4; a 30°-60°-90° triangle has sides 1 : √3 : 2.
    const double a345 = std::atan(0.75) * 180 / M_PI;
    const Triangle shapes[] = {{3, 4, 5, a345, 90 - a345}, {2, 2 * std::sqrt(3.0), 4, 30, 60}};
    const char* const parts[] = {"a", "b", "c", "A", "B"};
    for (const Triangle& t : shapes)
        for (const char* p : parts)
            for (const char* q : parts) {
                const std::string first = p, second = q;
                if (first >= second || (std::isupper(first[0]) && std::isupper(second[0]))) continue;
                SCOPED_TRACE(first + " and " + second + " of " + fmtShortest(t.a) + ", " + fmtShortest(t.b));
                const ToolRun run = runOnce([&] {
                    return rightTriangle(
                        {{first, fmtShortest(t.get(first))}, {second, fmtShortest(t.get(second))}});
                });
                ASSERT_TRUE(run.out.ok) << run.out.err;
                for (const char* k : parts) {
                    if (k == first || k == second) continue;
                    EXPECT_NEAR(recentValue(run.out, k), t.get(k), 1e-9 * t.get(k)) << k;
                }
                EXPECT_TRUE(contains(run.sheet.results, "T" + fmtNumber(t.a * t.b / 2))) << run.sheet.results;
                EXPECT_TRUE(contains(run.sheet.results, "O" + fmtNumber(t.a + t.b + t.c)));
            }
}

TEST_F(TriangleTool, theWorkingNamesItsFormulaAndPage) {
    const ToolRun run = runOnce([] { return rightTriangle(formOf("a=3 c=5")); });
    ASSERT_TRUE(run.out.ok);
    const SheetParts::Block* pyth = run.sheet.block("Pythagoras");
    ASSERT_NE(pyth, nullptr);
    EXPECT_EQ(pyth->page, "(formelsamlingen s. 22)");
    EXPECT_TRUE(contains(pyth->body, "b=[√(c² − a²)]=[√(5² − 3²)]=[√(25 − 9)]=[√(16)]=4")) << pyth->body;
    // A third part that agrees is taken as a check; one that doesn't is refused.
    EXPECT_TRUE(rightTriangle(formOf("a=3 b=4 c=5")).ok);
    EXPECT_TRUE(rightTriangle(formOf("a=3 b=4 A=36,87")).ok);
}

TEST_F(TriangleTool, whatCantBeARightTriangleIsRefused) {
    const Refused rows[] = {
        {"one part", "a=3", "Giv to af de fem: kateterne a og b, hypotenusen c og vinklerne A og B.", ""},
        {"two angles", "A=30 B=60",
         "To vinkler giver kun trekantens form, ikke dens størrelse – giv mindst én side.", "A B"},
        {"a right angle among the acute ones", "a=3 A=90",
         "Vinklerne A og B er spidse: de ligger mellem 0° og 90°. Den rette vinkel (90°) står mellem "
         "kateterne.",
         "A"},
        {"a leg as long as the hypotenuse", "b=5 c=5",
         "Hypotenusen c er den længste side – den skal være længere end <span class=\"v\">b</span>.", "c b"},
        {"a zero side", "a=0 b=4",
         "Sider og vinkler skal være større end 0 – ret <span class=\"v\">a</span>.", "a"},
        {"three sides that don't fit", "a=3 b=4 c=6",
         "De givne værdier passer ikke sammen – en retvinklet trekant er fastlagt af to af dem. Pythagoras: "
         "c² = a² + "
         "b²: <span class=\"v\">c</span> = 6, men formlen giver 5.",
         "a b c"},
    };
    expectRefused(rightTriangle, rows);
}

} // namespace
} // namespace fl
