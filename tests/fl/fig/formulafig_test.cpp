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

// Every family's figure, from its defaults, from random believable draws and
// with every quantity at once at a value that prints wide (where labels run
// into the drawing), with each of its quantities sought in turn: well formed,
// no "nan" or "inf" shown, and no text over a line, an arc or another text,
// nor out of the figure.
TEST(FormulaFigureTest, everyFamilysFigureIsWellFormedAndItsLabelsKeepClear) {
    std::mt19937 rng(47);
    int drawn = 0;
    for (const Formula& f : catalogue()) {
        if (f.figure.empty()) continue;
        std::vector<std::map<std::string, double>> sets(1);
        for (const auto& [symbol, text] : f.defaults)
            sets[0][symbol] = readValue(text);
        for (int k = 0; k < 8; ++k)
            if (auto v = sample::values(f, rng)) sets.push_back(*v);
        for (double wide : {1234.5, 4700.0, 0.89356, 98765.4321}) {
            std::map<std::string, double>& values = sets.emplace_back();
            for (const FormulaVar& q : f.vars)
                values[q.symbol] = q.unit == "°" ? 40 : q.symbol.rfind("cos", 0) == 0 ? 0.8 : wide;
        }
        for (const auto& values : sets)
            for (const FormulaVar& sought : f.vars) {
                SCOPED_TRACE(f.key + " seeking " + sought.symbol);
                const FigureOut fig = formulaFigure(f.figure, values, sought.symbol);
                const std::string svg = svgDocument(fig);
                ASSERT_EQ(svgProblem(svg), "");
                const std::string text = svgText(svg) + fig.caption;
                EXPECT_EQ(text.find("nan"), std::string::npos);
                EXPECT_EQ(text.find("inf"), std::string::npos);
                EXPECT_EQ(testing::labelClashes(svg, fig.w, fig.h), "") << svg;
                ++drawn;
            }
    }
    EXPECT_GT(drawn, 1000);
}

// A number that can't stand on a side leaves the symbol alone there; the
// figure stays whole.
TEST(FormulaFigureTest, badNumbersLeaveTheSymbolAloneAndNeverBreakTheFigure) {
    const struct {
        const char* name;
        double value;
        bool shows; // the number may be printed
    } rows[] = {{"zero", 0, false},
                {"negative", -5, false},
                {"not a number", kNaN, false},
                {"infinite", std::numeric_limits<double>::infinity(), false},
                {"huge", 1e300, true},
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
                {"circ", {{"U", 230}, {"R", 46}, {"I", 5}}, "R", "R = 46 Ω"}};
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
            if (e.tag == "polygon") return testing::svgPoints(e)[2].y > testing::svgPoints(e)[1].y;
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
        {"cosZ", {{"cosphi", std::cos(80 * deg)}}, "ikke i målestok"},
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
            if (e.tag == "polygon")
                corners = static_cast<int>(
                    std::count(e.attrs.at("points").begin(), e.attrs.at("points").end(), ','));
        EXPECT_GE(corners, 3);
    }
}

// Compensation draws two angles at one corner: each name stands by its own
// arc, so φ₁ never sits inside φ₂'s sector, however close the two angles.
TEST(FormulaFigureTest, eachAngleOfCompensationIsNamedByItsOwnArc) {
    const struct {
        double c1, c2;
    } rows[] = {{0.7, 0.75}, {0.8, 0.81}, {0.5, 0.95}, {0.2, 0.9}, {0.85, 0.95}, {0.6, 0.99}, {0.3, 0.35}};
    for (const auto& r : rows) {
        SCOPED_TRACE(fmtNumber(r.c1) + " → " + fmtNumber(r.c2));
        const std::string svg = figureFor("komp", {{"P", 1000}, {"cosphi1", r.c1}, {"cosphi2", r.c2}}, "QC");
        ASSERT_EQ(svgProblem(svg), "");
        EXPECT_EQ(testing::labelClashes(svg, 460, 280), "") << svg;
        std::vector<testing::Arc> arcs;
        for (const testing::Arc& a : testing::svgArcs(svg))
            if (a.sector) arcs.push_back(a);
        std::map<std::string, Pt> names; // "1", "2" → the middle of φ's letter
        const auto elements = svgElements(svg);
        for (size_t i = 0; i + 1 < elements.size(); ++i) {
            const auto& e = elements[i];
            if (e.tag == "text" && !e.has("stroke") && e.text == "φ")
                names[elements[i + 1].text] = {e.num("x") + 4, e.num("y") - 0.35 * e.num("font-size")};
        }
        ASSERT_EQ(arcs.size(), 2u) << svg;
        ASSERT_EQ(names.size(), 2u) << svg;
        const testing::Arc& wide = arcs[0].r > arcs[1].r ? arcs[0] : arcs[1];  // φ₂'s
        const testing::Arc& inner = arcs[0].r > arcs[1].r ? arcs[1] : arcs[0]; // φ₁'s
        // Distance and angle (y up, degrees) from the corner.
        const auto polar = [&](Pt p) {
            return std::pair{std::hypot(p.x - wide.cx, p.y - wide.cy),
                             std::atan2(-(p.y - wide.cy), p.x - wide.cx) / 0.017453292519943295};
        };
        const double wideTo = std::max(polar(wide.from).second, polar(wide.to).second);
        const auto [d1, a1] = polar(names["1"]);
        const auto [d2, a2] = polar(names["2"]);
        EXPECT_GT(a1, wideTo) << "φ₁ in φ₂'s sector";
        EXPECT_LT(d1, inner.r + 40) << "φ₁ far from its arc";
        EXPECT_GT(a2, 0);
        EXPECT_LT(a2, wideTo) << "φ₂ outside its sector";
        EXPECT_GT(d2, wide.r) << "φ₂ inside the other arc";
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
