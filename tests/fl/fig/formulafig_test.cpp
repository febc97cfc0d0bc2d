#include "fl/fig/formulafig.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/fig/style.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/solve.h"
#include "tests/fl/fig/svg_check.h"
#include "tests/fl/formulas/sample_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>

namespace fl {
namespace {

using testing::svgElements;
using testing::svgProblem;
using testing::svgText;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The symbols each figure key meets in the catalogue.
std::map<std::string, std::set<std::string>> symbolsByKey() {
    std::map<std::string, std::set<std::string>> out;
    for (const Formula& f : catalogue())
        for (const FormulaVar& v : f.vars)
            if (!f.figure.empty()) out[f.figure].insert(v.symbol);
    return out;
}

TEST(FormulaFigureTest, everyKeyOfTheCatalogueHasAFigureAndOnlyThose) {
    const auto keys = symbolsByKey();
    for (const auto& [key, symbols] : keys)
        EXPECT_TRUE(hasFigure(key)) << key;
    for (const std::string& key : figureKeys())
        EXPECT_TRUE(keys.count(key)) << key << " is in no family";
    for (const char* key : {"", "nope", "RT", "circ "}) {
        EXPECT_FALSE(hasFigure(key));
        std::string caption = "old";
        EXPECT_EQ(figureFor(key, {}, "", &caption), "");
        EXPECT_EQ(caption, "");
    }
}

// Every family with a figure, from its defaults and from random believable
// draws, with each of its quantities sought in turn.
TEST(FormulaFigureTest, everyFamilysFigureIsWellFormedForItsDefaultsAndRandomDraws) {
    std::mt19937 rng(41);
    int drawn = 0;
    for (const Formula& f : catalogue()) {
        if (f.figure.empty()) continue;
        std::vector<std::map<std::string, double>> sets;
        std::map<std::string, double> defaults;
        for (const auto& [symbol, text] : f.defaults)
            defaults[symbol] = readValue(text);
        sets.push_back(defaults);
        for (int k = 0; k < 4; ++k)
            if (auto v = sample::values(f, rng)) sets.push_back(*v);
        for (const auto& values : sets)
            for (const FormulaVar& sought : f.vars) {
                SCOPED_TRACE(f.key + " seeking " + sought.symbol);
                std::string caption;
                const std::string svg = figureFor(f.figure, values, sought.symbol, &caption);
                ASSERT_EQ(svgProblem(svg), "");
                const std::string text = svgText(svg) + caption;
                EXPECT_EQ(text.find("nan"), std::string::npos);
                EXPECT_EQ(text.find("inf"), std::string::npos);
                ++drawn;
            }
    }
    EXPECT_GT(drawn, 500);
}

// A number that can't stand on a side leaves the symbol alone there; the
// figure stays whole.
TEST(FormulaFigureTest, badNumbersLeaveTheSymbolAloneAndNeverBreakTheFigure) {
    const struct {
        const char* name;
        double value;
        bool shows; // the number may be printed
    } rows[] = {{"zero", 0, false},   {"negative", -5, false}, {"not a number", kNaN, false},
                {"infinite", std::numeric_limits<double>::infinity(), false}, {"huge", 1e300, true},
                {"tiny", 1e-300, true}};
    for (const auto& [key, symbols] : symbolsByKey()) {
        for (const auto& r : rows) {
            SCOPED_TRACE(key + ", " + r.name);
            std::map<std::string, double> values;
            for (const std::string& s : symbols)
                values[s] = r.value;
            for (const std::string& sought : {*symbols.begin(), std::string()}) {
                const FigureOut f = formulaFigure(key, values, sought);
                ASSERT_FALSE(f.empty());
                ASSERT_EQ(svgProblem(svgDocument(f)), "");
                const std::string text = svgText(svgDocument(f));
                if (!r.shows) {
                    EXPECT_EQ(text.find("= −"), std::string::npos) << text;
                    EXPECT_EQ(text.find(" = 0|"), std::string::npos) << text;
                }
                EXPECT_EQ(text.find('?'), std::string::npos) << text;
            }
        }
        SCOPED_TRACE(key + ", nothing known");
        EXPECT_EQ(svgProblem(figureFor(key, {}, "")), "");
    }
}

TEST(FormulaFigureTest, theSoughtQuantityIsInTheAccentColour) {
    const std::string accent = lightFigColors().slot[5];
    const struct {
        const char* key;
        std::map<std::string, double> values;
        const char* sought;
        const char* text;
    } rows[] = {{"rt", {{"a", 3}, {"b", 4}, {"c", 5}}, "c", "c = 5"},
                {"circ", {{"U", 230}, {"R", 46}, {"I", 5}}, "R", "R = 46 Ω"},
                {"SPQ", {{"P", 3}, {"Q", 4}, {"S", 5}}, "Q", "Q = 4 VAr"},
                {"circA", {{"r", 2}, {"A", 12.566}}, "A", "A = 12,566"}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.key);
        bool found = false;
        for (const auto& e : svgElements(figureFor(r.key, r.values, r.sought)))
            if (e.tag == "text" && !e.has("stroke") && e.text == r.text) {
                found = true;
                EXPECT_EQ(e.attrs.at("fill"), accent);
                EXPECT_EQ(e.attrs.at("font-weight"), "bold");
            }
        EXPECT_TRUE(found);
    }
}

TEST(FormulaFigureTest, theUprightOfTheVoltageTriangleTurnsWithTheLargerReactance) {
    const auto uprightDown = [](const std::string& svg) {
        for (const auto& e : svgElements(svg))
            if (e.tag == "polygon") {
                std::stringstream ss(e.attrs.at("points"));
                std::string a, b, c;
                ss >> a >> b >> c;
                return testing::svgNum(c.substr(c.find(',') + 1)) > testing::svgNum(b.substr(b.find(',') + 1));
            }
        return false;
    };
    const std::string coil = figureFor("URLC", {{"UR", 30}, {"UL", 80}, {"UC", 40}, {"U", 50}}, "U");
    EXPECT_NE(svgText(coil).find("U|L| − U|C| = 40 V|"), std::string::npos) << svgText(coil);
    EXPECT_FALSE(uprightDown(coil));
    const std::string cap = figureFor("URLC", {{"UR", 30}, {"UL", 40}, {"UC", 80}, {"U", 50}}, "U");
    EXPECT_NE(svgText(cap).find("U|C| − U|L| = 40 V|"), std::string::npos) << svgText(cap);
    EXPECT_TRUE(uprightDown(cap));
}

TEST(FormulaFigureTest, captionsSayWhetherTheDrawingIsTrueToScale) {
    const double deg = 0.017453292519943295;
    const struct {
        const char* key;
        std::map<std::string, double> values;
        const char* says;
    } rows[] = {
        {"cosZ", {{"cosphi", std::cos(5 * deg)}}, "ikke i målestok"},
        {"cosZ", {{"cosphi", std::cos(45 * deg)}}, "tegnet i målestok"},
        {"rt", {{"a", 100}, {"b", 1}}, "den rigtige vinkel er φ = 0,573°"},
        {"rt", {{"a", 4}, {"b", 3}}, "tegnet i målestok"},
        {"poly", {{"n", 1e6}}, "Regulær 1000000-kant · tegnet i målestok"},
        {"wire", {{"l", 50}}, "kabel: 25 m frem + 25 m tilbage"},
        {"batt", {{"Ik", 3}}, "Kortslutning: kun den indre modstand begrænser strømmen"},
        {"segment", {{"V", 90}}, "Afsnittet (mellem buen og korden) er farvet"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.key + std::string(" → ") + r.says);
        std::string caption;
        ASSERT_EQ(svgProblem(figureFor(r.key, r.values, "", &caption)), "");
        EXPECT_NE(caption.find(r.says), std::string::npos) << caption;
    }
}

TEST(FormulaFigureTest, aPolygonOfAHugeCountStillCloses) {
    for (double n : {3.0, 1e6, 1e12}) {
        SCOPED_TRACE(n);
        int corners = 0;
        for (const auto& e : svgElements(figureFor("poly", {{"n", n}}, "")))
            if (e.tag == "polygon") corners = static_cast<int>(std::count(e.attrs.at("points").begin(),
                                                                          e.attrs.at("points").end(), ',')) ;
        EXPECT_GE(corners, 3);
    }
}

TEST(FormulaFigureTest, theSolveDriverShowsTheFigureBesideTheSheet) {
    resetFigures();
    const Formula* ohm = findFormula("ohm");
    ASSERT_NE(ohm, nullptr);
    const SolveResult s = solveSheet(*ohm, {{"U", 230}, {"R", 46}}, {}, "I", formulaFigureMarkup);
    const RenderResult r = takeRender(s.html);
    ASSERT_EQ(r.figs.size(), 1u);
    EXPECT_EQ(svgProblem(r.figs[0]), "");
    EXPECT_NE(svgText(r.figs[0]).find("I = 5 A"), std::string::npos);
    EXPECT_NE(r.html.find("<img src=\"f:0\" width=\"460\" height=\"280\">"), std::string::npos);
}

} // namespace
} // namespace fl
