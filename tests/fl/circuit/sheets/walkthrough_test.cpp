// The walkthrough sheets. The main properties run over random circuits in
// both kinds of current: every number a step shows is the solver's value for
// its symbol at the shown precision, and every step, evaluated with the
// numbers shown before it, gives the number it shows.
#include "fl/circuit/sheets/walkthrough.h"

#include "fl/circuit/forward.h"
#include "fl/circuit/json.h"
#include "fl/expr/eval.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/expr/symbols.h"
#include "fl/tools/frame.h"
#include "tests/fl/circuit/trees.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/sheet_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

namespace fl {
namespace {

using testing::circuit;
using testing::group;
using testing::known;
using testing::leaf;

class Walkthrough : public SettingsTest {};

// A random circuit with its values typed into the drawing, and its source.
Circuit typedCircuit(std::mt19937& rng, bool ac) {
    std::uniform_int_distribution<int> leaves(1, 7), levels(1, 3);
    testing::RandomCircuit rc = testing::randomCircuit(rng, leaves(rng), levels(rng), ac);
    Circuit c = defaultCircuit(ac ? "ac" : "dc");
    c.root = rc.root;
    walk(c.root, [&](const CNodePtr& n) {
        if (n->group) return;
        n->v = fmtShortest(rc.values.at(n->name));
        if (rc.values.count("R_" + n->name)) n->r = fmtShortest(rc.values.at("R_" + n->name));
    });
    c.src["U"] = fmtShortest(rc.values.at("U"));
    if (ac) c.src["f"] = fmtShortest(rc.values.at("f"));
    nameCircuit(c);
    return c;
}

// The last bold text of a step: its result, "1,0625 A".
std::string shownResult(const std::string& html) {
    const size_t b = html.rfind("<b>");
    if (b == std::string::npos) return {};
    return html.substr(b + 3, html.find("</b>", b) - b - 3);
}

// "14,434 mΩ" → 0.014434; NaN for text that isn't a number with a unit.
double readShown(std::string text) {
    for (const char* unit : {"VAr", "VA", "Hz", "V", "A", "W", "Ω", "S", "°", "H", "F"}) {
        const std::string u = unit;
        if (text.size() > u.size() && text.compare(text.size() - u.size(), u.size(), u) == 0) {
            text.erase(text.size() - u.size());
            break;
        }
    }
    if (text.rfind("−", 0) == 0) text.replace(0, std::string("−").size(), "-");
    // "2,4·10⁻⁶": the power of ten in superscript digits.
    if (const size_t dot = text.find("·10"); dot != std::string::npos) {
        std::string exponent;
        static const std::vector<std::pair<std::string, char>> kSup = {
            {"⁻", '-'}, {"⁰", '0'}, {"¹", '1'}, {"²", '2'}, {"³", '3'}, {"⁴", '4'},
            {"⁵", '5'}, {"⁶", '6'}, {"⁷", '7'}, {"⁸", '8'}, {"⁹", '9'}};
        for (size_t i = dot + std::string("·10").size(); i < text.size();) {
            bool found = false;
            for (const auto& [sup, c] : kSup)
                if (text.compare(i, sup.size(), sup) == 0) {
                    exponent += c;
                    i += sup.size();
                    found = true;
                    break;
                }
            if (!found) break;
        }
        text = text.substr(0, dot) + "e" + exponent;
    }
    return readValue(text);
}

TEST_F(Walkthrough, everyShownNumberIsTheSolversValueAndEveryStepRunsOnTheNumbersBeforeIt) {
    std::mt19937 rng(2024);
    int checkedSteps = 0;
    for (int round = 0; round < 160; ++round) {
        const bool ac = round % 2 == 1;
        Circuit c = typedCircuit(rng, ac);
        SCOPED_TRACE("round " + std::to_string(round) + " " + toText(c));
        resetFigures();
        const Sheet s = computeSheet(c);
        ASSERT_EQ(s.error, "");
        if (s.stopped) continue;

        // The solver's own values: one forward pass from the typed inputs.
        Values inputs;
        walk(s.root, [&](const CNodePtr& n) {
            if (n->group) return;
            inputs[n->name] = readValue(n->v);
            if (!n->r.empty()) inputs["R_" + n->name] = readValue(n->r);
        });
        inputs["U"] = readValue(c.src["U"]);
        if (ac) inputs["f"] = readValue(c.src["f"]);
        const Values solver = forward(s.root, inputs, ac);

        std::map<std::string, double> shown = inputs;
        for (const CircuitStep& st : s.steps) {
            SCOPED_TRACE(st.title);
            ASSERT_FALSE(st.target.empty());
            const std::string text = shownResult(st.html);
            const double value = readShown(text);
            ASSERT_TRUE(std::isfinite(value)) << "[" << text << "]";
            const std::string unit = stepUnit(st.target, s.root);
            if (solver.count(st.target)) {
                EXPECT_EQ(text, tool::formatValue(solver.at(st.target), unit));
            }

            // The equation the step used, with the numbers shown so far.
            const NodePtr formula = parse(st.formula);
            std::set<std::string> inFormula;
            collectVars(formula, inFormula);
            std::string lhs = st.target;
            if (inFormula.count(st.target)) // rearranged: the equation's own target is among the others
                for (const std::string& u : st.uses)
                    if (!inFormula.count(u)) lhs = u;
            std::map<std::string, double> vars = shown;
            vars[st.target] = value;
            for (const std::string& sym : inFormula)
                ASSERT_TRUE(vars.count(sym)) << sym << " is used before any step shows it";
            ASSERT_TRUE(vars.count(lhs));
            const double got = eval(formula, vars);
            // Shown numbers carry five digits: allow for how much the formula
            // magnifies their rounding.
            double spread = 0;
            for (const std::string& sym : inFormula) {
                double most = 0;
                for (double factor : {1 + 1e-4, 1 - 1e-4}) {
                    std::map<std::string, double> nudged = vars;
                    nudged[sym] *= factor;
                    const double moved = std::fabs(eval(formula, nudged) - got) * 1e4;
                    if (std::isfinite(moved)) most = std::max(most, moved);
                }
                spread += most;
            }
            EXPECT_NEAR(got, vars.at(lhs), 1e-3 * (std::fabs(vars.at(lhs)) + spread) + 1e-9) << st.formula;
            shown[st.target] = value;
            ++checkedSteps;
        }
    }
    EXPECT_GT(checkedSteps, 1500);
}

TEST_F(Walkthrough, everyFormulaStepNamesItsPage) {
    std::mt19937 rng(7);
    for (int round = 0; round < 40; ++round) {
        Circuit c = typedCircuit(rng, round % 2);
        const Sheet s = computeSheet(c);
        for (const CircuitStep& st : s.steps) {
            EXPECT_FALSE(st.pages.empty()) << st.title;
        }
    }
}

// Each kind of step cites the page of the book its formula stands on.
TEST_F(Walkthrough, stepsCiteThePageOfTheirFormula) {
    Circuit c = circuit("ac", {leaf("R", "100"), leaf("L", "0,5", "20"), leaf("C", "10u")}, {{"U", "230"}});
    const Sheet s = computeSheet(c);
    ASSERT_EQ(s.error, "");
    std::map<std::string, std::string> pages;
    for (const CircuitStep& st : s.steps)
        pages[st.target] = st.pages;
    const std::pair<const char*, const char*> rows[] = {
        {"X_L1", "11"}, {"Z_L1", "18"}, {"X_C1", "15"}, {"Z", "12"}, {"P", "13"}, {"phi", "8"}};
    for (const auto& [target, page] : rows)
        EXPECT_EQ(pages[target], page) << target;
}

TEST_F(Walkthrough, whyTextsTakeTheFirstKeyInTheirOrder) {
    struct Row {
        const char* title;
        const char* starts;
    };
    const Row rows[] = {
        {"Ohms lov for hele kredsen", "Når hele kredsen er samlet"},
        {"Ohms lov for R1", "Ohms lov gælder for hver enkelt del"},
        {"Spændingen over L1", "Spændingen over en del findes"},
        {"Spænding over R1 (U = I · X)", "Spændingen over en del er strømmen"},
        {"Serieforbindelse (R1, R2): modstandene lægges sammen", "I en serieforbindelse sidder"},
        {"Strømmen i C1 – Ohms lov med impedans", "Ohms lov gælder for hver enkelt del"},
        {"Kirchhoffs 2. lov (R1, A): spændingerne lægges sammen", "Kirchhoffs 2. lov (spændingsloven)"},
        {"De ukendte kan ikke isoleres – programmet prøver sig frem", "Her hænger de ukendte sammen"},
        {"Grupperne A og B er ens", "Ens grupper opfører sig ens"},
        {"Måler A1", "Et amperemeter sidder i serie"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.title);
        EXPECT_EQ(whyText(row.title, false).rfind(row.starts, 0), 0u) << whyText(row.title, false);
    }
    EXPECT_EQ(whyText("Noget helt andet", false),
              "Brug formlen med de værdier, du allerede kender eller har fundet i trinnene ovenfor. Isolér den "
              "størrelse, du mangler, før du sætter tal ind.");
    EXPECT_EQ(whyText("Noget helt andet", true).rfind("Brug formlen med de værdier", 0), 0u);
    EXPECT_NE(whyText("Noget helt andet", true).find("vinkler og reaktanser"), std::string::npos);
}

TEST_F(Walkthrough, firstFormulaKeepsOnlyTheFirstRowAndLeavesTheHintOut) {
    const std::string body = "<p class=\"hint0\">En forklaring.</p><table class=\"eqs\"><tr><td class=\"l\">a</td>"
                             "<td class=\"m\">=</td><td class=\"r\">b</td><td class=\"n\"></td></tr><tr><td "
                             "class=\"l\"></td><td class=\"m\">=</td><td class=\"r\">3</td><td "
                             "class=\"n\"></td></tr></table>";
    EXPECT_EQ(firstFormula(body), "<table class=\"eqs\"><tr><td class=\"l\">a</td><td class=\"m\">=</td><td "
                                  "class=\"r\">b</td><td class=\"n\"></td></tr></table>");
    EXPECT_EQ(firstFormula("<p class=\"hint0\">Kun tekst.</p>"), "");
}

// The student's road: R1 in series with R2 ∥ R3, the current of R3 given.
Circuit studentsCircuit() {
    return circuit("dc", {leaf("R", "100"), group("P", {leaf("R", "220"), known(leaf("R"), "", "0,5")})},
                   {{"U", "230"}});
}

TEST_F(Walkthrough, theCalculatedSheetOfTheStudentsCircuit) {
    Circuit c = studentsCircuit();
    const Sheet s = computeSheet(c);
    const std::string html = regneark(s, c, "24.11.2026");
    const RenderResult r = takeRender(html);
    const SheetParts p = sheetParts(r.html, r.maths);
    EXPECT_EQ(between(r.html, "<div class=\"crumb\">", "</div>"), "Regneark · Jævnstrøm · 24.11.2026");
    EXPECT_EQ(p.title, "Udregning af kredsløbet");
    EXPECT_EQ(p.given, (std::vector<std::string>{"U = 230 V – kildespænding", "R_1 = 100 Ω – modstand",
                                                  "R_2 = 220 Ω – modstand", "I_R3 = 0,5 A – strøm gennem R3"}));
    ASSERT_GE(p.blocks.size(), 8u);
    EXPECT_EQ(p.blocks[0].title, "De ukendte kan ikke isoleres – programmet prøver sig frem");
    const SheetParts::Block* ra = p.block("Parallelforbindelse (R2, R3)");
    ASSERT_NE(ra, nullptr);
    EXPECT_EQ(ra->page, "(formelsamlingen s. 4)");
    EXPECT_TRUE(contains(ra->body, "=116,47 Ω")) << ra->body;
    const SheetParts::Block* ohm = p.block("Ohms lov for hele kredsen");
    ASSERT_NE(ohm, nullptr);
    EXPECT_TRUE(contains(ohm->body, "1,0625 A")) << ohm->body;
    EXPECT_TRUE(contains(p.check, "I_R3: opgivet 0,5 A, udregnet 0,5 A")) << p.check;
    EXPECT_TRUE(contains(p.check, "✓ Alle formlerne passer med de fundne værdier.")) << p.check;
    EXPECT_TRUE(contains(p.results, "R3247,5 Ω123,75 V0,5 A61,875 W")) << p.results;
    // Both drawings, the voltage bar and no alternating-current figure.
    EXPECT_EQ(r.figs.size(), 3u);
    EXPECT_FALSE(contains(r.html, "cos φ"));
    EXPECT_FALSE(contains(r.html, "Strømtrekant"));
}

TEST_F(Walkthrough, aSheetWithoutARealAnswerStopsWithTheSentence) {
    Circuit c = circuit("ac", {leaf("R", "10"), leaf("C", "0")}, {{"U", "10"}});
    const Sheet s = computeSheet(c);
    ASSERT_EQ(s.error, "");
    const std::string html = regneark(s, c, "x");
    EXPECT_TRUE(contains(html, "<div class=\"msg bad\">Udregningen stoppede, fordi tallene ikke giver et reelt svar. "
                               "Tjek de indtastede værdier.</div></div>"));
    EXPECT_FALSE(contains(html, "Resultater"));
    EXPECT_FALSE(contains(html, "class=\"step\""));
}

TEST_F(Walkthrough, mismatchesUnderOnePercentAreRoundingAndAboveAreWrong) {
    struct Row {
        const char* current;
        bool rounding;
    };
    // 12 V over 4 Ω + 2 Ω is 2 A.
    const Row rows[] = {{"2,01", true}, {"2,04", false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.current);
        Circuit c = circuit("dc", {leaf("R", "4"), leaf("R", "2")}, {{"U", "12"}, {"I", row.current}});
        const Sheet s = computeSheet(c);
        ASSERT_EQ(s.mismatches.size(), 1u);
        const std::string html = regneark(s, c, "x");
        EXPECT_EQ(contains(html, "det skyldes afrunding i opgaven"), row.rounding);
        EXPECT_EQ(contains(html, "<div class=\"msg bad\">Nogle af de givne værdier passer ikke sammen:<br>"),
                  !row.rounding);
        // The formulas agree with what was found even where a given was rounded.
        EXPECT_EQ(contains(html, "✓ Alle formlerne passer"), row.rounding);
    }
}

TEST_F(Walkthrough, alternatingCurrentTablesShowCapacitorsInMicrofaradAndTheSideOfGroups) {
    Circuit c = circuit("ac", {leaf("R", "100"), group("P", {leaf("R", "50"), leaf("C", "47u")})}, {{"U", "230"}});
    const Sheet s = computeSheet(c);
    const RenderResult r = takeRender(regneark(s, c, "x"));
    EXPECT_TRUE(contains(r.html, "<td>47 µF</td>")) << r.html;
    EXPECT_TRUE(contains(r.html, "<span class=\"crumb\">kap.</span>"));
    EXPECT_TRUE(contains(r.html, "<h3 class=\"sh\">Effekt i hver gren</h3>"));
    EXPECT_TRUE(contains(r.html, "(Kirchhoffs 1. lov er opfyldt som vektorer)"));
    EXPECT_TRUE(contains(r.html, "Modstandstrekant"));
}

TEST_F(Walkthrough, theGuideNumbersTheStepsItKeepsAndPointsBackOnly) {
    std::mt19937 rng(11);
    for (int round = 0; round < 40; ++round) {
        Circuit c = round == 0 ? studentsCircuit() : typedCircuit(rng, round % 2);
        SCOPED_TRACE(toText(c));
        const std::string html = fremgangsmaade(c, "x");
        ASSERT_TRUE(contains(html, "<h2>Sådan regner du kredsløbet</h2>")) << html;
        int expected = 1;
        static const std::string kNum = "<span class=\"stnum\">";
        for (size_t at = html.find(kNum); at != std::string::npos; at = html.find(kNum, at + 1)) {
            const int n = std::stoi(html.substr(at + kNum.size()));
            EXPECT_EQ(n, expected++);
            const size_t end = html.find("</div>", at);
            const std::string step = html.substr(at, end - at);
            EXPECT_TRUE(contains(step, "<b>Hvorfor:</b>"));
            for (size_t f = step.find("fra trin "); f != std::string::npos; f = step.find("fra trin ", f + 1))
                EXPECT_LT(std::stoi(step.substr(f + 9)), n);
            EXPECT_FALSE(contains(step, "</b> =")); // no result of a calculation
        }
        EXPECT_GT(expected, 1);
    }
    Circuit c = studentsCircuit();
    const std::string html = fremgangsmaade(c, "x");
    EXPECT_TRUE(contains(html, "Find modstanden R3 – De ukendte kan ikke isoleres")) << html;
    EXPECT_TRUE(contains(html, "strømmen gennem R3 <span class=\"crumb\">opgivet</span>"));
}

TEST_F(Walkthrough, theGuideShowsTheSolversMessageInstead) {
    Circuit c = circuit("dc", {leaf("R", "5"), leaf("R", "7")});
    EXPECT_EQ(fremgangsmaade(c, "x"),
              "<div class=\"msg bad\">Alle komponenter er kendt, men der mangler en spænding eller strøm at regne "
              "med. Skriv kildespændingen U – eller den samlede strøm I.</div>");
}

TEST_F(Walkthrough, theTaskSheetGivesTheGivensAndNoResult) {
    Circuit c = studentsCircuit();
    const RenderResult r = takeRender(opgaveark(c, "x"));
    EXPECT_TRUE(contains(r.html, "<h2>Opgave: regn kredsløbet</h2>"));
    EXPECT_TRUE(contains(r.html, "I<sub>R3</sub> = 0,5 A"));
    EXPECT_FALSE(contains(r.html, "247,5"));
    EXPECT_FALSE(contains(r.html, "reaktans"));
    EXPECT_TRUE(contains(r.html, "<table class=\"dataTable\">"));
    EXPECT_EQ(r.figs.size(), 1u);
    EXPECT_EQ(c.root->ch.size(), 2u); // nothing was solved or changed
}

} // namespace
} // namespace fl
