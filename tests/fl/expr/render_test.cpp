// HTML of trees: the display forms of variable names, and how sums, products,
// powers and functions are drawn flat and tall.
#include "fl/expr/eval.h"
#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/expr/symbols.h"
#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using RenderTest = SettingsTest;

std::string v(const std::string& inner) {
    return "<span class=\"v\">" + inner + "</span>";
}

struct Row {
    const char* name;
    const char* input;
    std::string expected;
};

TEST_F(RenderTest, variableNamesFollowTheTableThenTheNamingRules) {
    const Row rows[] = {
        {"tableBeatsUnderscoreRule", "R_sum", "ΣR"},
        {"tableBeatsDigitRule", "U0", "U<sub>tilslutning</sub>"},
        {"cosphiIndex", "cosphi_2", "cos φ<sub>2</sub>"},
        {"phiIndex", "phi_a", "φ<sub>a</sub>"},
        {"activeCurrent", "Iw_1", "I<sub>v,1</sub>"},
        {"otherCurrentIndexUsesUnderscoreRule", "Ix_1", "Ix<sub>1</sub>"},
        {"underscoreSplitsAtTheFirst", "U_R1_x", "U<sub>R1_x</sub>"},
        {"lettersThenDigits", "R12", "R<sub>12</sub>"},
        {"digitsInsideStayPlain", "R1a", "R1a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(symbolDisplay(row.input), row.expected);
        EXPECT_EQ(render(makeVar(row.input), false), v(row.expected));
    }
}

TEST_F(RenderTest, drawsEachShapeFlat) {
    const std::string a = v("a"), b = v("b"), c = v("c");
    const Row rows[] = {
        {"sumWithMinusSign", "a - b + c", a + " − " + b + " + " + c},
        {"nestedSumParenthesised", "a - (b - c)", a + " − (" + b + " − " + c + ")"},
        {"severalFactorsParenthesised", "a*b/(c*2)", "(" + a + " · " + b + ") / (" + c + " · 2)"},
        {"loneSumParenthesised", "(a+b)/c", "(" + a + " + " + b + ") / " + c},
        {"powerOfSumParenthesised", "(a+b)**2", "(" + a + " + " + b + ")<sup>2</sup>"},
        {"powerOfNegativeParenthesised", "(-3)**2", "(−3)<sup>2</sup>"},
        {"minusOfPowerNotParenthesised", "-3**2", "−3<sup>2</sup>"},
        {"powerOfEngineeringNumberParenthesised", "0.00047**2", "(470·10⁻⁶)<sup>2</sup>"},
        {"flatExponent", "a**(1/b)", a + "<sup>1 / " + b + "</sup>"},
        {"rootOnTheLine", "sqrt(a*b)", "√(" + a + " · " + b + ")"},
        {"inverseLabel", "asin(a)", "<span class=\"fn\">sin<sup>−1</sup></span>(" + a + ")"},
        {"sineOfNumberInDegrees", "sin(30)", "<span class=\"fn\">sin</span>(30°)"},
        {"logOfNumberNoDegree", "log(30)", "<span class=\"fn\">log</span>(30)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(render(parse(row.input), false), row.expected) << row.input;
    }
}

TEST_F(RenderTest, drawsFractionsAndRootsTall) {
    const std::string a = v("a"), b = v("b"), c = v("c");
    auto fr = [](const std::string& n, const std::string& d) {
        return "<span class=\"fr\"><span>" + n + "</span><span>" + d + "</span></span>";
    };
    const Row rows[] = {
        {"productsInFraction", "a*b/(c*2)", fr(a + " · " + b, c + " · 2")},
        {"sumNumeratorNeedsNoParentheses", "(a+b)/c", fr(a + " + " + b, c)},
        {"sumAmongFactorsParenthesised", "(a+b)*c/b", fr("(" + a + " + " + b + ") · " + c, b)},
        {"tallRootHasFlatArgument", "sqrt(a/b)",
         "<span class=\"sq\">√<span class=\"rad\">" + a + " / " + b + "</span></span>"},
        {"tallExponent", "a**(1/b)", a + "<sup>" + fr("1", b) + "</sup>"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(render(parse(row.input), true), row.expected) << row.input;
    }
    EXPECT_EQ(render(makeProdRaw({{'/', makeVar("a")}}), true), fr("1", a)) << "an empty numerator shows 1";
}

TEST_F(RenderTest, anAngleCarriesOneDegreeSign) {
    auto deg = std::make_shared<Node>(*makeNum(36.87));
    deg->degree = true;
    EXPECT_EQ(render(deg, false), "36,87°");
    EXPECT_EQ(render(makeFunc("cos", deg), false), "<span class=\"fn\">cos</span>(36,87°)")
        << "no second degree sign";
    EXPECT_EQ(render(makePow(deg, makeNum(2)), false), "(36,87°)<sup>2</sup>");
}

TEST_F(RenderTest, renderMathEmbedsTallExpressionsAsImages) {
    EXPECT_EQ(renderMath(parse("a*b")), v("a") + " · " + v("b"));
    // A fraction or root at any depth makes the whole expression tall.
    EXPECT_TRUE(needsTall(parse("a+sin(b/c)")));
    EXPECT_TRUE(needsTall(parse("a**(b+sqrt(c))")));
    const NodePtr frac = parse("U/R");
    const NodePtr root = parse("sqrt(P*R)");
    EXPECT_EQ(renderMath(frac), "<img class=\"math\" src=\"m:0\">");
    EXPECT_EQ(renderMath(root), "<img class=\"math\" src=\"m:1\">");
    const RenderResult r = takeRender("x");
    ASSERT_EQ(r.maths.size(), 2u);
    EXPECT_EQ(r.maths[0], frac);
    EXPECT_EQ(r.maths[1], root);
}

TEST_F(RenderTest, parenthesesOnlyWhereAskedForAndLoose) {
    const NodePtr sum = parse("a+b"), neg = makeNum(-2), prod = parse("a*b");
    EXPECT_EQ(renderParen(sum, true, false), "(" + v("a") + " + " + v("b") + ")");
    EXPECT_EQ(renderParen(sum, false, false), v("a") + " + " + v("b"));
    EXPECT_EQ(renderParen(neg, true, false), "(−2)");
    EXPECT_EQ(renderParen(prod, true, false), v("a") + " · " + v("b"));
    EXPECT_EQ(renderOperand(sum), "(" + v("a") + " + " + v("b") + ")");
    EXPECT_EQ(renderOperand(neg), "−2");
}

TEST_F(RenderTest, deepTreesBuiltByTheProgramRenderAndEvaluate) {
    // The parser bounds nesting; trees the program builds itself stay shallow
    // in practice, but a few hundred levels must still be safe end to end.
    NodePtr n = makeVar("x");
    for (int i = 0; i < 500; ++i)
        n = makeSumRaw({{-1, makeProdRaw({{'*', n}, {'/', makeNum(2)}})}});
    EXPECT_NEAR(eval(n, {{"x", 1}}), std::ldexp(1.0, -500), 1e-300);
    EXPECT_FALSE(render(n, true).empty());
    EXPECT_NE(renderMath(n).find("m:0"), std::string::npos);
}

} // namespace
} // namespace fl
