// The tool frame: what a typed field becomes, how a result is shown, the
// working of one step, and the refusals every tool shares.
#include "fl/tools/frame.h"

#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/sheet_text.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using FrameTest = SettingsTest;

TEST_F(FrameTest, readFormKeepsNumbersAsTypedAndSortsOutTheRest) {
    struct Row {
        const char* name;
        const char* text;
        bool comma;
        double value; // NaN: not among the numbers
        const char* shown;
        bool bad;
    };
    const Row rows[] = {
        {"prefix kilo", "16k", true, 16000, "16k", false},
        {"point shown as comma", "0.3", true, 0.3, "0,3", false},
        {"comma shown as point", "0,3", false, 0.3, "0.3", false},
        {"electricians' notation", "4k7", true, 4700, "4,7k", false},
        {"exponent", "1e3", true, 1000, "1·10<sup>3</sup>", false},
        {"expression shows its value", "230/47", true, 230.0 / 47, "4,8936", false},
        {"blank", "   ", true, NAN, "", false},
        {"letters", "abc", true, NAN, "", true},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        use(r.comma, "p5");
        const ToolInputs in = readForm({{"x", r.text}});
        EXPECT_EQ(in.bad.size(), r.bad ? 1u : 0u);
        if (std::isnan(r.value)) {
            EXPECT_FALSE(in.has("x"));
            EXPECT_TRUE(std::isnan(in.get("x")));
            EXPECT_EQ(in.shown.count("x"), 0u);
        } else {
            EXPECT_NEAR(in.get("x"), r.value, 1e-12 * std::fabs(r.value));
            EXPECT_EQ(in.shown.at("x"), r.shown);
        }
    }
}

TEST_F(FrameTest, formatValueChoosesAPrefixOnlyForUnitsThatTakeOne) {
    struct Row {
        double value;
        const char* unit;
        const char* expected;
    };
    const Row rows[] = {
        {0.5, "A", "0,5 A"}, {0.014434, "Ω", "14,434 mΩ"}, {16000, "A", "16 kA"}, {999999.7, "W", "1 MW"},
        {1e-13, "V", "0 V"}, {12000, "mm²", "12000 mm²"},  {0.4, "", "0,4"},      {NAN, "A", "? A"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(tool::formatValue(r.value, r.unit), r.expected) << r.value << " " << r.unit;
}

TEST_F(FrameTest, evaluateStepWritesFormulaNumbersEachRoundAndTheResult) {
    struct Row {
        const char* name;
        const char* target;
        const char* formula;
        std::map<std::string, double> vars;
        std::map<std::string, std::string> shown;
        const char* unit;
        double value;
        const char* text;
    };
    // clang-format off
    const Row rows[] = {
        {"current from power", "I", "P/(U*cosphi)", {{"P", 1000}, {"U", 230}, {"cosphi", 0.9}}, {}, "A",
         1000 / 207.0,
         "I=[P / (U · cos φ)]=[1000 / (230 · 0,9)]=[1000 / 207]=4,8309 A"},
        {"given as typed", "Z_net", "U_N/(sqrt(3)*Ik_fr)", {{"U_N", 400}, {"Ik_fr", 16000}},
         {{"Ik_fr", "16k"}}, "Ω", 400 / (std::sqrt(3.0) * 16000),
         "Z_net=[U_N / (√(3) · I_k,FR)]=[400 / (√(3) · 16k)]=[400 / (1,7321 · 16k)]=[400 / 27713]=14,434 mΩ"},
        {"no arithmetic left after the numbers", "L", "l", {{"l", 30}}, {}, "m", 30, "L=l=30 m"},
        {"tiny result is zero", "d", "a-b", {{"a", 1 + 1e-13}, {"b", 1}}, {}, "V", 0, ""},
    };
    // clang-format on
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        std::map<std::string, double> vars = r.vars;
        resetFigures();
        const StepOutcome out = evaluateStep(r.target, parse(r.formula), vars, r.unit, r.shown);
        const std::string text = sheetText(out.html, takeRender(out.html).maths);
        EXPECT_EQ(out.value, r.value);
        EXPECT_EQ(vars.at(r.target), r.value);
        if (*r.text) {
            EXPECT_EQ(text, r.text);
        }
    }
}

TEST_F(FrameTest, evaluateStepRefusesWhatHasNoRealAnswer) {
    struct Row {
        const char* formula;
        const char* error;
    };
    const Row rows[] = {
        {"sqrt(a)", "intet reelt svar"},
        {"1/(a+1)", "intet reelt svar"},
        {"b*2", "mangler b"},
    };
    for (const Row& r : rows) {
        std::map<std::string, double> vars{{"a", -1}};
        EXPECT_EQ(errorOf([&] { evaluateStep("x", parse(r.formula), vars, ""); }), r.error) << r.formula;
        EXPECT_EQ(vars.count("x"), 0u) << r.formula;
    }
}

TEST_F(FrameTest, runToolTurnsAThrownErrorIntoTheStandardRefusalAndNoSheet) {
    const ToolOut out = runTool("Prøve", [](ToolOut& o) {
        o.html = "halv";
        o.ok = true;
        throw std::runtime_error("a<b");
    });
    EXPECT_FALSE(out.ok);
    EXPECT_TRUE(out.html.empty());
    EXPECT_EQ(out.title, "Prøve");
    EXPECT_EQ(out.err,
              "<div class=\"msg bad\">Noget passer ikke – tjek værdierne. <span class=\"crumb\">a&lt;b</span>"
              "</div>");
}

TEST_F(FrameTest, openFormNamesEveryUnreadableFieldAndNothingElse) {
    ToolOut out;
    ToolInputs in;
    EXPECT_FALSE(openForm(out, {{"U_N", "4OO"}, {"l", ""}, {"cosphi", "x"}, {"I", "10"}}, in));
    EXPECT_EQ(sheetText(out.err, {}), "Jeg kan ikke læse U_N, cos φ");
    EXPECT_EQ(out.badKeys, (std::vector<std::string>{"U_N", "cosphi"}));
    EXPECT_FALSE(out.ok);
}

TEST_F(FrameTest, givenRowsShowWhatWasTypedOrTheFallback) {
    ToolSheet s;
    const ToolInputs in = readForm({{"Ik_fr", "16k"}, {"sf", ""}});
    addGivenInput(s, in, "Ik_fr", "Ik max ved kabelskabet", "A");
    addGivenInput(s, in, "sf", "samtidighedsfaktor", "", "1");
    s.vars["q"] = 0.00016;
    addGivenRow(s, "tværsnit", "mm²", "q", "", "q");
    ASSERT_EQ(s.sections.given.size(), 3u);
    EXPECT_EQ(sheetText(s.sections.given[0], {}), "I_k,FR = 16 kA – Ik max ved kabelskabet");
    EXPECT_EQ(sheetText(s.sections.given[1], {}), "sf = 1 – samtidighedsfaktor");
    EXPECT_EQ(sheetText(s.sections.given[2], {}), "q = 160·10⁻⁶ mm² – tværsnit");
}

} // namespace
} // namespace fl
