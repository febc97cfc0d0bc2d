// The typed-expression normaliser: what the calculator and the value fields
// accept, the messages for what they don't, the live preview with numbers as
// typed, and that no input whatever can crash them.
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/render.h"
#include "tests/fl/expr/calc_agrees.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using CalcTest = SettingsTest;

const double kPi = 3.141592653589793;

TEST_F(CalcTest, evaluatesTypedExpressions) {
    const std::map<std::string, double> ans{{"ans", 3}, {"R1", 5}};
    const struct {
        const char* name;
        const char* text;
        double value;
        bool withAns;
    } rows[] = {
        {"implicitPi", "2π", 2 * kPi, false},
        {"piAfterPrefixLetter", "2pi", 2 * kPi, false},
        {"inverseCosineWithBlank", "cos ⁻¹(0,5)", 60, false},
        {"rootOfParenthesis", "√(9+16)", 5, false},
        {"caretRightAssociative", "2^3^2", 512, false},
        {"prefixThenSum", "5k+1", 5001, false},
        {"exponentNotPrefix", "1e-3", 0.001, false},
        {"decimalCommaEverywhere", "1,5+2,5", 4, false},
        {"multiplicationAndDivisionSigns", "3×4·2÷8", 3, false},
        {"minusSign", "−5+2", -3, false},
        {"implicitBeforeFunction", "3sin(30)", 1.5, false},
        {"implicitLastResult", "2ans", 6, true},
        {"namesOfTheTable", "R1*ans", 15, true},
        {"digitAfterPrefixJoinsItsExponent", "2,1k5", 2.1e35, false},
        {"electricianNotationInASum", "4k7+2k2", 6900, false},
        {"electricianNotationBeforeParenthesis", "2k2(2)", 4400, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_NEAR(calc(row.text, row.withAns ? &ans : nullptr), row.value,
                    1e-12 * std::max(1.0, std::fabs(row.value)))
            << row.text;
    }
}

struct TextRow {
    const char* name;
    const char* text;
    std::string expected;
};

TEST_F(CalcTest, failsWithTheDocumentedTexts) {
    const TextRow rows[] = {
        {"letterAfterPrefix", "2min", "Ukendt navn: min"},
        {"lastResultWithoutValue", "ans+1", "Ukendt navn: ans"},
        {"numberGluedToFunctionName", "sin30", "Ukendt navn: sin30"},
        {"noBreakSpace", "5\u00a0500", "Ukendt tegn"},
        {"twoCommas", "1,5,5", "rest i 1.5.5"},
        {"logIsNoImplicitProduct", "2log(5)", "rest i 2log(5)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(errorOf([&] { calc(row.text); }), row.expected);
    }
}

// The live line, with a drawn expression replaced by its tall rendering.
std::string preview(const std::string& text) {
    resetFigures();
    const std::string html = prettyCalc(text);
    const RenderResult r = takeRender(html);
    if (html == "<img class=\"math\" src=\"m:0\">" && r.maths.size() == 1)
        return "[" + render(r.maths[0], true) + "]";
    EXPECT_TRUE(r.maths.empty());
    return html;
}

TEST_F(CalcTest, prettyCalcShowsNumbersAsTyped) {
    const std::string fn = "<span class=\"fn\">";
    const TextRow rows[] = {
        {"prefixesKept", "5,5k+70u", "5,5k + 70µ"},
        {"exponentAsPowerOfTen", "1e-3*5", "1·10<sup>−3</sup> · 5"},
        {"implicitPi", "2π", "2 · π"},
        {"inverseSine", "sin⁻¹(0,5)", fn + "sin<sup>−1</sup></span>(0,5)"},
        {"fractionDrawn", "230/47", "[<span class=\"fr\"><span>230</span><span>47</span></span>]"},
        {"powerTower", "2^3^4", "2<sup>3<sup>4</sup></sup>"},
        {"strayCommaIsAPoint", "sin(30,)", fn + "sin</span>(30°)"},
        {"trailingPointBeforeExponent", "9,e1", "9·10<sup>1</sup>"},
        {"electricianNotationShowsTheMark", "4k7+1u5", "4,7k + 1,5µ"},
        {"digitAfterPrefixShownAsItsExponent", "2,1k5", "210·10³³"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(preview(row.text), row.expected) << row.text;
    }
    use(false, "p5");
    EXPECT_EQ(preview("2,5+1.5"), "2.5 + 1.5");
}

// The preview holds the typed numbers in the order they were typed, whatever
// the tree's shape: the digits read off the rendering are the digits typed.
TEST_F(CalcTest, previewKeepsTheTypedNumbersInOrder) {
    auto digits = [](const std::string& s) {
        std::string d;
        for (char c : s)
            if (c >= '0' && c <= '9') d += c;
        return d;
    };
    for (const char* text : {"3^2^1", "(2+3)^(4-1)", "√(9)^2", "1/2^3", "7-2^5·3", "sin(30)^2+cos(60)^2",
                             "2^(3^(4^5))", "1/(1/4+1/6)"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(digits(preview(text)), digits(text));
        EXPECT_EQ(calcDisagreement(text), "");
    }
}

// Whatever arrives in a field (pasted text, deep nesting, broken UTF-8)
// gives NaN or a number, calc fails only with its own texts, and
// what calc accepts the preview shows.
void expectSurvives(const std::string& text) {
    double v = 0;
    ASSERT_NO_THROW(v = readValue(text));
    EXPECT_TRUE(std::isnan(v) || std::isfinite(v));
    EXPECT_EQ(calcDisagreement(text), "");
}

std::string repeat(const std::string& s, int n) {
    std::string out;
    for (int i = 0; i < n; ++i)
        out += s;
    return out;
}

TEST_F(CalcTest, badInputNeverCrashes) {
    const struct {
        const char* name;
        std::string text;
    } rows[] = {
        {"tenThousandDigits", repeat("9", 10000)},
        {"tenThousandMinusSigns", repeat("-", 10000) + "1"},
        {"fiveThousandRoots", repeat("√", 5000) + "2"},
        {"invalidUtf8", "\xff\xfe\xfd"},
        {"truncatedUtf8", "5\xc3"},
        {"nulByte", std::string("5\0k", 3)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        expectSurvives(row.text);
        EXPECT_TRUE(std::isnan(readValue(row.text))) << "none of these is a number";
    }
    const std::string sum = "1" + repeat("+1", 4999);
    expectSurvives(sum);
    EXPECT_DOUBLE_EQ(readValue(sum), 5000.0) << "a long flat sum is still a sum";
}

} // namespace
} // namespace fl
