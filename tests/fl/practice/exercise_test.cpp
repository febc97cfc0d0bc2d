// The generator: believable numbers over every family and every target, the
// value rules whose order matters, the filters, the texts, and the rendering
// pass it must leave alone.
#include "fl/practice/exercise.h"

#include "fl/expr/eval.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/expr/symbols.h"
#include "fl/formulas/catalogue.h"
#include "tests/fl/practice/seeded.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace fl {
namespace {

using ExerciseTest = SeededTest<2024>;

struct Range {
    double lo, hi;
};

// What an electrician meets, wider than any table of the generator: a given
// outside it is a number no student would believe.
Range realistic(const std::string& symbol, const std::string& unit) {
    if (symbol.rfind("cosphi", 0) == 0) return {0.1, 1};
    if (symbol == "eta") return {0.5, 1};
    if (symbol == "p") return {1, 4};
    if (symbol == "n") return {3, 12};
    if (symbol == "k_st" || symbol == "k_a") return {3, 30};
    if (symbol == "N1" || symbol == "N2") return {10, 2000};
    static const std::map<std::string, Range> units = {
        {"V", {1, 1000}},          {"A", {0.01, 400}},    {"Ω", {0.1, 10000}},  {"W", {1, 50000}},
        {"VA", {10, 50000}},       {"VAr", {10, 50000}},  {"H", {0.001, 5}},    {"F", {1e-9, 1e-3}},
        {"Hz", {1, 1000}},         {"°", {1, 90}},        {"%", {0.1, 10}},     {"o/min", {500, 3000}},
        {"Nm", {1, 500}},          {"rad/s", {50, 5000}}, {"kW", {0.01, 100}},  {"kWh", {0.1, 1e5}},
        {"kr", {1, 1e6}},          {"kr/år", {1, 1e6}},   {"kr/kWh", {0.5, 5}}, {"h", {1, 10000}},
        {"h/dag", {1, 24}},        {"dage", {1, 366}},    {"år", {0.5, 50}},    {"s", {1e-4, 10000}},
        {"J", {0.1, 1e9}},         {"mm²", {0.5, 300}},   {"mm", {0.5, 20}},    {"m", {1, 1000}},
        {"Ω·mm²/m", {0.01, 0.03}},
    };
    auto it = units.find(unit);
    return it != units.end() ? it->second : Range{0.1, 100}; // lengths and ratios of the math pages
}

// Significant digits of a field text ("0,0175" → 3, "2925" → 4).
int significantDigits(const std::string& text) {
    std::string digits;
    for (char c : text)
        if (c >= '0' && c <= '9') digits += c;
    const size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos) return 0;
    digits = digits.substr(first);
    const bool whole = text.find_first_of(".,") == std::string::npos;
    if (!whole) return static_cast<int>(digits.size());
    const size_t last = digits.find_last_not_of('0');
    return static_cast<int>(last + 1);
}

// The hidden quantity found again from the shown givens by the family's
// primary form alone: evaluated when it is that form's left side, otherwise
// solved by Newton's method starting at the facit. Reports the slope, which
// is zero when the givens don't determine the quantity.
double recomputed(const Exercise& ex, double* slope) {
    const Formula& f = *ex.formula;
    const FormulaForm& primary = f.forms.front();
    const NodePtr expr = parse(primary.expr);
    auto rightSide = [&](double x) {
        std::map<std::string, double> v = ex.given;
        v[ex.target] = x;
        for (const FormulaDef& d : f.definitions)
            v[d.symbol] = eval(parse(d.expr), v);
        return eval(expr, v);
    };
    if (primary.var == ex.target) {
        *slope = 1;
        return rightSide(NAN);
    }
    const double wanted = ex.given.at(primary.var);
    double x = ex.facit;
    for (int i = 0; i < 30; ++i) {
        const double h = 1e-7 * std::fabs(x);
        const double d = (rightSide(x + h) - rightSide(x - h)) / (2 * h);
        *slope = d * std::fabs(x) / std::max(1.0, std::fabs(wanted));
        if (d == 0 || !std::isfinite(d)) return NAN;
        x -= (rightSide(x) - wanted) / d;
    }
    return x;
}

TEST_F(ExerciseTest, everyFamilyAndTargetGivesBelievableNumbersOverTenThousandDraws) {
    int draws = 0;
    for (const Formula& f : catalogue()) {
        if (!fitForPractice(f)) continue;
        int madeForFamily = 0;
        for (const std::string& target : askableTargets(f)) {
            for (int i = 0; i < 30; ++i, ++draws) {
                const Exercise ex = exerciseFor(f, target);
                if (ex.empty()) continue;
                ++madeForFamily;
                SCOPED_TRACE(::testing::PrintToString(ex));
                ASSERT_EQ(ex.given.size() + 1, f.vars.size());
                for (const auto& [symbol, value] : ex.given) {
                    const FormulaVar* v = findVar(f, symbol);
                    ASSERT_NE(v, nullptr);
                    const Range r = realistic(symbol, v->unit);
                    EXPECT_TRUE(std::isfinite(value) && value >= r.lo && value <= r.hi)
                        << symbol << " = " << value;
                    const std::string& text = ex.givenText.at(symbol);
                    EXPECT_EQ(readValue(text), value) << text;
                    const bool whole = value == std::round(value);
                    EXPECT_LE(significantDigits(text), whole ? 5 : 3) << text;
                }
                ASSERT_TRUE(std::isfinite(ex.facit));
                ASSERT_GT(ex.facit, 0);
                // A count is asked only when it comes out whole, a ratio only up to one.
                if (target == "n" || target == "p" || target == "N1" || target == "N2") {
                    EXPECT_NEAR(ex.facit, std::round(ex.facit), 1e-9 * ex.facit);
                }
                if (target.rfind("cosphi", 0) == 0 || target == "eta") {
                    EXPECT_LE(ex.facit, 1.0);
                }
                double slope = 0;
                const double again = recomputed(ex, &slope);
                EXPECT_NEAR(again, ex.facit, ex.facit * 0.02);
                EXPECT_GT(std::fabs(slope), 1e-6) << "the givens hardly move " << target;
                EXPECT_NE(ex.solution.html.find("FACIT"), std::string::npos);
                EXPECT_EQ(ex.solution.html.find("passer ikke"), std::string::npos);
            }
        }
        EXPECT_GT(madeForFamily, 0) << f.key << " never gives an exercise";
    }
    EXPECT_GE(draws, 10000);
}

TEST_F(ExerciseTest, valueRulesTakeTheFirstThatFits) {
    const Formula none;
    Formula withDefault;
    withDefault.defaults = {{"rho", "0,0175"}, {"I_dn", "30m"}};
    struct Row {
        const char* name;
        std::string symbol, unit;
        const Formula* f;
        std::set<double> allowed; // empty: only the range
        Range range;
        double step; // values are multiples of this; 0 for any
    };
    // clang-format off
    const Row rows[] = {
        {"a default wins over the unit", "rho", "Ω·mm²/m", &withDefault, {0.0175}, {0, 1}, 0},
        {"a default with a prefix", "I_dn", "A", &withDefault, {0.03}, {0, 1}, 0},
        {"a synchronous speed", "n_s", "o/min", &none, {3000, 1500, 1000, 750}, {0, 1e9}, 0},
        {"a running speed just below one", "nr", "o/min", &none, {}, {695, 2940}, 5},
        {"pole pairs before any unit", "p", "", &none, {1, 2, 3, 4}, {0, 1e9}, 0},
        {"a capacitor from the drawer, in µF", "C", "F", &none,
         {4.7e-6, 10e-6, 22e-6, 33e-6, 47e-6, 68e-6, 100e-6}, {0, 1e9}, 0},
        {"anything else: two to forty, one decimal", "x", "", &none, {}, {2, 40}, 0.1},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (int i = 0; i < 300; ++i) {
            const double v = drawValue(row.symbol, row.unit, *row.f);
            if (!row.allowed.empty()) {
                bool found = false;
                for (double a : row.allowed)
                    found = found || std::fabs(v - a) <= 1e-12 * a;
                EXPECT_TRUE(found) << v;
            }
            EXPECT_GE(v, row.range.lo);
            EXPECT_LE(v, row.range.hi);
            if (row.step > 0) {
                EXPECT_NEAR(v / row.step, std::round(v / row.step), 1e-6) << v;
            }
        }
    }
}

TEST_F(ExerciseTest, resistancesAreE12ValuesThatReachBothEndsOfTheirRange) {
    std::set<double> seen;
    for (int i = 0; i < 5000; ++i) {
        const double v = drawValue("R", "Ω", Formula{});
        ASSERT_GE(v, 1);
        ASSERT_LE(v, 4700);
        seen.insert(v);
    }
    EXPECT_TRUE(seen.count(1));
    EXPECT_TRUE(seen.count(4700));
    EXPECT_EQ(seen.size(), 12u * 3 + 9); // 1.0–8.2, 10–82, 100–820, 1000–4700
    EXPECT_EQ(pickE12(5, 5.5), 5);       // nothing between: the lower end
}

TEST_F(ExerciseTest, aFixedSeedRepeatsARunExactly) {
    auto run = [] {
        seedRandom(77);
        std::vector<std::string> out;
        for (int i = 0; i < 20; ++i)
            out.push_back(::testing::PrintToString(makeExercise({}, {})));
        return out;
    };
    EXPECT_EQ(run(), run());
}

TEST_F(ExerciseTest, filtersDrawOnlyFromWhatIsAskedAndOpen) {
    for (int i = 0; i < 100; ++i) {
        const Exercise motor = makeExercise("El-lære", "Motorer");
        ASSERT_FALSE(motor.empty());
        EXPECT_EQ(motor.topic, "Motorer");
        const Exercise three = makeExercise("Trefaset", {});
        ASSERT_FALSE(three.empty());
        EXPECT_EQ(three.formula->group, "Trefaset");
        const Exercise open =
            makeExercise({}, {}, [](const std::string& key) { return key != "sub:El-lære|Motorer"; });
        EXPECT_NE(open.topic, "Motorer");
    }
    EXPECT_TRUE(makeExercise("Matematik", "Motorer").empty());
    EXPECT_TRUE(makeExercise({}, "Motorer", [](const std::string&) { return false; }).empty());
    EXPECT_EQ(makeExercise("Ingen", {}).formula, nullptr);
}

TEST_F(ExerciseTest, theStatementListsTheGivensAndNamesTheWantedQuantity) {
    const Exercise ex = exerciseFor(*findFormula("ohm"), "I");
    ASSERT_FALSE(ex.empty());
    EXPECT_EQ(ex.statement.rfind(
                  "<h3 class=\"sh\">Givet</h3><div class=\"known\"><div><span class=\"v\">U</span> = ", 0),
              0u)
        << ex.statement;
    EXPECT_NE(ex.statement.find(" V <span class=\"crumb\">– Spænding</span></div>"), std::string::npos);
    EXPECT_NE(
        ex.statement.find("</div><p class=\"hint0\">Find <b>Strøm</b> (<span class=\"v\">I</span>).</p>"),
        std::string::npos);
    EXPECT_EQ(ex.scale, 1);
    EXPECT_NE(ex.hint.html.find("formelsamlingen s. 3"), std::string::npos);
    EXPECT_NE(ex.hint.html.find("Isolér"), std::string::npos);

    const Exercise cap = exerciseFor(*findFormula("XC"), "C");
    ASSERT_FALSE(cap.empty());
    EXPECT_EQ(cap.scale, 1e-6);
    EXPECT_EQ(cap.unit, "F");
    EXPECT_NE(cap.statement.find("Svar i µF – fx 47 eller 47u."), std::string::npos);
}

TEST_F(ExerciseTest, shownValuesTakeThePrefixAnElectricianWouldWrite) {
    struct Row {
        double value;
        const char* unit;
        const char* shown;
    } rows[] = {
        {0.03, "A", "30 mA"}, {47e-6, "F", "47 µF"},     {11000, "W", "11 kW"}, {0.1, "H", "0,1 H"},
        {30, "°", "30°"},     {0.0025, "s", "0,0025 s"}, {2.5, "", "2,5"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(shownValue(row.value, row.unit), row.shown);
}

TEST_F(ExerciseTest, drawingLeavesTheCallersRenderingPassAsItWas) {
    const std::string before = addMath(parse("a/b"));
    // Run first in a fresh process too: the rearranger's first use writes images.
    for (const Formula& f : catalogue())
        if (fitForPractice(f)) exerciseFor(f, askableTargets(f).back());
    const RenderResult pass = takeRender(before);
    ASSERT_EQ(pass.maths.size(), 1u);
    EXPECT_EQ(render(pass.maths[0], false), render(parse("a/b"), false));
    EXPECT_TRUE(pass.figs.empty());
}

} // namespace
} // namespace fl
