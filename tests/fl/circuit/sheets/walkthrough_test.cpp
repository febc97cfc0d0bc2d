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
#include <cstring>
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
    for (const char* unit : {"VAr", "VA", "Hz", "V", "A", "W", "Ω", "S", "°", "H", "F"})
        if (text.size() > std::strlen(unit) && text.ends_with(unit)) {
            text.erase(text.size() - std::strlen(unit));
            break;
        }
    // The minus sign, and "2,4·10⁻⁶": the power of ten in superscript digits.
    const std::pair<const char*, const char*> plain[] = {
        {"−", "-"}, {"·10", "e"}, {"⁻", "-"}, {"⁰", "0"}, {"¹", "1"}, {"²", "2"}, {"³", "3"},
        {"⁴", "4"}, {"⁵", "5"},   {"⁶", "6"}, {"⁷", "7"}, {"⁸", "8"}, {"⁹", "9"}};
    for (const auto& [from, to] : plain)
        for (size_t at; (at = text.find(from)) != std::string::npos;)
            text.replace(at, std::strlen(from), to);
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
            EXPECT_FALSE(st.pages.empty());
            const std::string text = shownResult(st.html);
            const double value = readShown(text);
            ASSERT_TRUE(std::isfinite(value)) << "[" << text << "]";
            const std::string unit = stepUnit(st.target, s.root);
            if (solver.count(st.target)) {
                // A capacitive branch's reactance is summed as a positive number, and says so.
                const bool turned = contains(st.html, "X regnes som et positivt tal");
                const double expected = solver.at(st.target);
                EXPECT_EQ(text, tool::formatValue(turned ? std::fabs(expected) : expected, unit));
                if (turned) {
                    EXPECT_LT(expected, 0.0);
                }
            }

            // A branch's reactive part stands as a positive number, as its angle does.
            if (st.target.rfind("Ib_", 0) == 0 && st.target != "Ib_h") {
                EXPECT_GE(value, 0.0);
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

// Each kind of step cites the page of the book its formula stands on.
TEST_F(Walkthrough, stepsCiteThePageOfTheirFormula) {
    Circuit c = circuit("ac", {leaf("R", "100"), leaf("L", "0,5", "20"), leaf("C", "10u")}, {{"U", "230"}});
    const Sheet s = computeSheet(c);
    ASSERT_EQ(s.error, "");
    std::map<std::string, std::string> pages;
    for (const CircuitStep& st : s.steps)
        pages[st.target] = st.pages;
    const std::pair<const char*, const char*> rows[] = {{"X_L1", "11"}, {"Z_L1", "18"}, {"X_C1", "15"},
                                                        {"Z", "12"},    {"P", "13"},    {"phi", "8"}};
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
        {"Strømmen i C1 – Ohms lov med impedans", "Ohms lov gælder for hver enkelt del"},
        {"Kirchhoffs 2. lov (R1, A): spændingerne lægges sammen", "Kirchhoffs 2. lov (spændingsloven)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.title);
        EXPECT_EQ(whyText(row.title, false).rfind(row.starts, 0), 0u) << whyText(row.title, false);
    }
    EXPECT_EQ(
        whyText("Noget helt andet", false),
        "Brug formlen med de værdier, du allerede kender eller har fundet i trinnene ovenfor. Isolér den "
        "størrelse, du mangler, før du sætter tal ind.");
    EXPECT_EQ(whyText("Noget helt andet", true).rfind("Brug formlen med de værdier", 0), 0u);
    EXPECT_NE(whyText("Noget helt andet", true).find("vinkler og reaktanser"), std::string::npos);
}

TEST_F(Walkthrough, firstFormulaKeepsOnlyTheFirstRow) {
    const std::string body = "<table class=\"eqs\"><tr><td class=\"l\">a</td><td class=\"m\">=</td><td "
                             "class=\"r\">b</td><td class=\"n\"></td></tr><tr><td class=\"l\"></td><td "
                             "class=\"m\">=</td><td class=\"r\">3</td><td class=\"n\"></td></tr></table>";
    EXPECT_EQ(firstFormula(body), "<table class=\"eqs\"><tr><td class=\"l\">a</td><td class=\"m\">=</td><td "
                                  "class=\"r\">b</td><td class=\"n\"></td></tr></table>");
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
    EXPECT_EQ(p.given,
              (std::vector<std::string>{"U = 230 V – kildespænding", "R_1 = 100 Ω – modstand",
                                        "R_2 = 220 Ω – modstand", "I_R3 = 0,5 A – strøm gennem R3"}));
    ASSERT_GE(p.blocks.size(), 8u);
    EXPECT_EQ(p.blocks[0].title, "De ukendte kan ikke isoleres – programmet prøver sig frem");
    // The trials as a table: the first seed first, the answer last and marked.
    const std::string r3 = symbolDisplay("R3"), ir3 = symbolDisplay("I_R3");
    EXPECT_TRUE(contains(html, "<tr><th>Forsøg</th><th>" + r3 + "</th><th>" + ir3 +
                                   " udregnet</th></tr><tr><td>1</td><td>1</td>"));
    EXPECT_TRUE(contains(html, "<tr class=\"calc\">"));
    EXPECT_TRUE(
        contains(html, "<td>247,5</td><td>0,5</td></tr></table></div><p><b>" + r3 + " = 247,5 Ω</b></p>"));
    const SheetParts::Block* ra = p.block("Parallelforbindelse (R2, R3)");
    ASSERT_NE(ra, nullptr);
    EXPECT_EQ(ra->page, "(formelsamlingen s. 4)");
    EXPECT_TRUE(contains(ra->body, "=116,47 Ω")) << ra->body;
    const SheetParts::Block* ohm = p.block("Ohms lov for hele kredsen");
    ASSERT_NE(ohm, nullptr);
    EXPECT_TRUE(contains(ohm->body, "1,0625 A")) << ohm->body;
    EXPECT_TRUE(contains(p.check, "I_R3: opgivet 0,5 A, udregnet 0,5 A")) << p.check;
    EXPECT_TRUE(contains(p.check, "✓ Alle formlerne passer med de fundne værdier")) << p.check;
    EXPECT_TRUE(contains(p.results, "R3247,5 Ω123,75 V0,5 A61,875 W")) << p.results;
    // Both drawings, the voltage bar and no alternating-current figure.
    EXPECT_EQ(r.figs.size(), 3u);
    EXPECT_FALSE(contains(r.html, "cos φ"));
    EXPECT_FALSE(contains(r.html, "Strømtrekant"));
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
        EXPECT_EQ(contains(html,
                           "<div class=\"msg bad\">Nogle af de givne værdier passer ikke sammen:<br><span "
                           "class=\"v\">I</span> = 2,04 A, men udregningen giver 2 A</div>"),
                  !row.rounding);
        // The formulas agree with what was found even where a given was rounded.
        EXPECT_EQ(contains(html, "✓ Alle formlerne passer"), row.rounding);
    }
}

// The sheets' own sentences, letter for letter: each row a circuit, the sheet
// it is shown on, the texts that sheet holds and the texts it must not.
TEST_F(Walkthrough, sentencesOfTheSheetsStandInTheirWords) {
    enum Kind { Calculated, Guide, Task };
    struct Row {
        const char* name;
        Circuit c;
        Kind kind;
        std::vector<std::string> present, absent = {};
    };
    const auto ac = [](std::vector<CNodePtr> ch, const char* U = "230") {
        return circuit("ac", std::move(ch), {{"U", U}});
    };
    const auto zeroCapacitor = [&] { return ac({leaf("R", "10"), leaf("C", "0")}, "10"); };
    const auto seriesDc = [] { return circuit("dc", {leaf("R", "4"), leaf("R", "2")}, {{"U", "12"}}); };
    const auto seriesAc = [&] { return ac({leaf("R", "4"), leaf("L", "0,1")}, "12"); };
    const auto lossy = [] { return group("P", {leaf("R", "100"), leaf("L", "0,5", "20")}); };
    const std::string power = " (P = U · I · cos φ, Q = U · I · sin φ, S = U · I) <span class=\"crumb\">"
                              "(formelsamlingen s. 12–13)</span></p>";
    const Row rows[] = {
        {"a capacitor of zero",
         zeroCapacitor(),
         Calculated,
         {"<div class=\"msg bad\">Udregningen stoppede, fordi tallene ikke giver et reelt svar. Tjek de "
          "indtastede værdier.</div>"},
         {"Resultater"}},
        {"the guide of a calculation that stops",
         zeroCapacitor(),
         Guide,
         {"<p class=\"hint0\">Bemærk: med de opgivne tal stoppede den fulde udregning undervejs, så tjek "
          "tallene, før du regner.</p>",
          "<div class=\"msg\">Programmet kunne ikke finde en fremgangsmåde ud fra de opgivne værdier – der "
          "mangler nok en oplysning.</div>"}},
        {"only the impedance",
         circuit("ac", {leaf("R", "30"), leaf("L")}, {{"Z", "50"}}),
         Calculated,
         {"<p class=\"hint0\">Impedanser og vinkler afhænger ikke af spændingen, så komponenten kan findes "
          "ud fra Z alene. Skriv også U (eller I), hvis du skal bruge strømme, spændinger og effekter.</p>"}},
        // R1 takes 100 W at 100 V in series with 10 Ω: R1² − 80·R1 + 100 = 0.
        {"a search with two answers",
         circuit("dc", {known(leaf("R"), "", "", "100"), leaf("R", "10")}, {{"U", "100"}}),
         Calculated,
         {"<p class=\"hint0\">De ukendte (R<sub>1</sub>) kan ikke isoleres i én formel ad gangen her, fordi "
          "de hænger sammen gennem hele kredsen. Så programmet prøver sig frem: det gætter på de ukendte, "
          "regner hele kredsen igennem (med de samme formler som nedenfor – for vekselstrøm med komplekse "
          "tal, Parallel s. 10–11) og retter gættet, indtil de udregnede værdier passer med de opgivne: "
          "P<sub>R1</sub> = 100 W.</p>",
          "<p><b>R<sub>1</sub> = 1,2702 Ω</b></p>",
          "<p>Bemærk: der findes også en anden løsning, som passer lige så godt: R<sub>1</sub> = 78,73 Ω. "
          "Tjek opgaven for, hvilken der er den rigtige.</p>",
          "<div class=\"msg\"><b>Bemærk:</b> der findes også en anden løsning, som passer lige så godt med "
          "de opgivne tal: R<sub>1</sub> = 78,73 Ω. Formlerne herunder finder den ene. Tjek opgaven for, "
          "hvilken der er den rigtige.</div>",
          "Nu kendes alle komponentværdier – hele kredsen regnes igennem</p>",
          "<p class=\"hint0\">Herunder regnes kredsen igennem med formlerne, så alle strømme, spændinger og "
          "effekter kommer med. Til sidst tjekkes det, at resultatet giver de opgivne værdier.</p>"}},
        // 100 V and 3 A over 10 Ω and 31,4 Ω: only with about 1,14 Ω in the coil.
        {"a coil that must have losses",
         circuit("ac", {leaf("R", "10"), leaf("L", "0,1")}, {{"U", "100"}, {"I", "3"}}),
         Calculated,
         {"<div class=\"msg\"><b>Bemærk:</b> L1 kan ikke være en ideel spole. Med de opgivne tal går det kun "
          "op, hvis spolen også har en ohmsk modstand (tab i kobbertråden). Programmet har derfor selv "
          "fundet spolens egen modstand: <b>R<sub>L1</sub> = 1,1423 Ω</b>. Skulle spolen være ideel, er "
          "nogle af de opgivne tal forkerte.</div>",
          "Effektfaktor: cos φ = R / Z <span class=\"crumb\">(formelsamlingen s. 12)</span>",
          "Tilsyneladende effekt <span class=\"crumb\">(formelsamlingen s. 13)</span>"}},
        // 5 A is more than 100 V can drive through 31,4 Ω of reactance.
        {"a coil whose losses don't help either",
         circuit("ac", {leaf("R", "10"), leaf("L", "0,1")}, {{"U", "100"}, {"I", "5"}}),
         Calculated,
         {"<div class=\"msg\"><b>De opgivne tal passer ikke sammen</b> – se under Kontrol nederst. "
          "Programmet prøvede også at give L1 en ukendt egen modstand, men det gik heller ikke op – tjek "
          "tallene.</div>"}},
        {"nothing to check",
         circuit("dc", {leaf("R", "5")}, {{"U", "10"}}),
         Calculated,
         {"<h3 class=\"sh\">Kontrol</h3><p class=\"hint0\">Ingen kontrol mulig med de fundne værdier.</p>"}},
        {"a given that comes out exactly",
         circuit("dc", {leaf("R", "4"), leaf("R")}, {{"U", "12"}, {"I", "2"}}),
         Calculated,
         {"<p class=\"hint0\">De fundne værdier giver præcis det, opgaven oplyste:</p><div "
          "class=\"known\"><div><span class=\"v\">I</span>: opgivet 2 A, udregnet 2 A</div></div>"}},
        {"the guide of a direct-current series",
         seriesDc(),
         Guide,
         {"<h3 class=\"sh\">Tjek dit resultat</h3><p class=\"hint0\">Brug Kirchhoffs love som kontrol: "
          "delspændingerne i en serie skal give kildespændingen, og grenstrømmene i en parallel skal give "
          "den samlede strøm. Effekterne i komponenterne skal tilsammen give den samlede effekt.</p>",
          "<p class=\"h4\"><span class=\"stnum\">1</span> Find kredsens samlede modstand – Serieforbindelse "
          "(R1, R2): modstandene lægges sammen</p><span class=\"crumb\">formelsamlingen s. 3</span>"}},
        {"the task of a direct-current series",
         seriesDc(),
         Task,
         {"<h3 class=\"sh\">Find</h3><ol><li>strømmen I og strømmen i hver gren</li><li>spændingen over hver "
          "komponent</li><li>effekten i hver komponent og den samlede effekt.</li></ol><p "
          "class=\"hint0\">Skriv formlen først, sæt tallene ind, og husk enheden på resultatet. Tjek til "
          "sidst med Kirchhoffs love.</p>",
          "<p class=\"crumb\">Facit kan ses i \"Tegn et kredsløb\" (hele udregningen) eller trin for trin i "
          "\"Kredsløb – fremgangsmåde\".</p>"}},
        {"the guide of an alternating-current series",
         seriesAc(),
         Guide,
         {"<h3 class=\"sh\">Tjek dit resultat</h3><p class=\"hint0\">Regn effekttrekanten igennem til sidst: "
          "S² skal give P² + Q², og cos φ = P/S skal passe med vinklen fra impedanstrekanten. Grenstrømmene "
          "lagt sammen som vektorer skal give den samlede strøm.</p>"}},
        {"the task of an alternating-current series",
         seriesAc(),
         Task,
         {"<h3 class=\"sh\">Find</h3><ol><li>reaktanserne X<sub>L</sub> og X<sub>C</sub></li><li>impedansen "
          "Z og vinklen φ</li><li>strømmen I og strømmen i hver gren</li><li>spændingen over hver "
          "komponent</li><li>den aktive, den reaktive og den tilsyneladende effekt og effekttrekanten (S² = "
          "P² + Q²).</li></ol><p class=\"hint0\">Skriv formlen først, sæt tallene ind, og husk enheden på "
          "resultatet. Tjek til sidst med Kirchhoffs love og effekttrekanten (S² = P² + Q²).</p>"}},
        {"no reactance to find among resistors", ac({leaf("R", "4")}, "12"), Task, {}, {"reaktans"}},
        {"R ∥ L ∥ C ∥ C",
         ac({group("P", {leaf("R", "100"), leaf("L", "0,5"), leaf("C", "10u"), leaf("C", "1u")})}),
         Calculated,
         {"Strømmene i kondensatorerne lægges sammen",
          "Strømmen i R1 – samme spænding 230 V over alle grene, I = U / R<sub>1</sub> <span class=\"crumb\">"
          "(formelsamlingen s. 5–9)</span>",
          "Effekt og effektfaktor i R1" + power +
              "<p class=\"hint0\">En modstand: strømmen er i fase med U, så φ = 0° og cos φ = 1 – al "
              "effekten er aktiv (varme).</p>",
          "Effekt og effektfaktor i L1" + power +
              "<p class=\"hint0\">En ideel spole: strømmen er 90° efter U (induktiv), så φ = 90° og cos φ = "
              "0 – spolen bruger ingen aktiv effekt, kun reaktiv.</p>",
          "Effekt og effektfaktor i C1" + power +
              "<p class=\"hint0\">En kondensator: strømmen er 90° før U (kapacitiv), så φ = 90° og cos φ = 0 "
              "– ingen aktiv effekt, kun reaktiv.</p><p class=\"hint0\">Grenen er kapacitiv. Q står som et "
              "positivt tal, men trækkes fra de induktive grenes Q, når grenene lægges sammen.</p>",
          "Aktiv effekt – kun modstandene bruger aktiv effekt (P = U · I<sub>R</sub>) <span class=\"crumb\">"
          "(formelsamlingen s. 13)</span>",
          "Reaktiv effekt <span class=\"crumb\">(formelsamlingen s. 13)</span></p><p class=\"hint0\">Den "
          "aktive effekt lægges sammen gren for gren. Den reaktive effekt også, men de kapacitive grenes Q "
          "trækkes fra de induktive (Q = Q<sub>L</sub> − Q<sub>C</sub>):</p>",
          "Den samlede strøm – strømtrekanten: I² = I<sub>R</sub>² + (I<sub>L</sub> − I<sub>C</sub>)² <span "
          "class=\"crumb\">(formelsamlingen s. 5, 7, 8)</span>",
          "Effektfaktor: cos φ = I<sub>R</sub> / I <span class=\"crumb\">(formelsamlingen s. 8)</span>",
          "Samlet impedans: I = U / z <span class=\"crumb\">"},
         {"Resultatet er minus", "med komplekse tal"}},
        {"R ∥ a lossy coil",
         ac({lossy()}),
         Calculated,
         {"Aktiv effekt ud fra den aktive strøm (P = U · I<sub>v</sub>) <span class=\"crumb\">"
          "(formelsamlingen s. 13)</span>",
          "Spolens impedans: z<sub>L</sub> = R<sub>L</sub> + iX<sub>L</sub> (L1) <span class=\"crumb\">"
          "(formelsamlingen s. 6)</span>",
          "Effekt og effektfaktor i L1" + power +
              "<p class=\"hint0\">Spolen har egen (ohmsk) modstand, så strømmen er forskudt φ efter U "
              "(induktiv). cos φ findes i modstandstrekanten for grenen:</p>",
          "<p class=\"hint0\">Effekten bliver til varme i spolens egen modstand – P = I² · R giver det "
          "samme:</p>",
          "Vinklen i L1: z = R + iX = z∠φ, så tan φ = X / R <span class=\"crumb\">(formelsamlingen s. 6, "
          "10)</span>",
          "Strømmen i L1 er forskudt φ – den aktive del (i fase med U) <span "
          "class=\"crumb\">(formelsamlingen s. 26 (komposanter))</span>",
          "Strømmene i modstandene lægges sammen <span class=\"crumb\">",
          "Den samlede strøm – strømtrekanten: I = I<sub>R</sub>∠0° + I<sub>L</sub>∠−φ<sub>L</sub> + "
          "I<sub>C</sub>∠90° <span class=\"crumb\">",
          "Effektfaktor: cos φ = den aktive strøm / I <span class=\"crumb\">"}},
        {"an inductive series branch ∥ C",
         ac({group("P", {group("S", {leaf("R", "50"), leaf("L", "0,2")}), leaf("C", "22u")})}),
         Calculated,
         {"Grenen B er en seriekreds: de ohmske modstande lægges sammen <span class=\"crumb\">",
          "Grenen B: reaktanserne lægges sammen (spole plus, kondensator minus) <span class=\"crumb\">",
          "<p class=\"hint0\">Grenen har både ohmsk modstand og reaktans, så strømmen er forskudt φ efter U "
          "(induktiv). cos φ findes i modstandstrekanten for grenen:</p>",
          "<p class=\"hint0\">Effekten bliver til varme i grenens modstande – P = I² · R giver det "
          "samme:</p>"}},
        // 100 Ω ∥ 47 µF at 50 Hz: X_C = 67,726 Ω, so the capacitor's Q outweighs.
        {"a capacitive parallel",
         ac({group("P", {leaf("R", "100"), leaf("C", "47u")})}),
         Calculated,
         {"<p class=\"hint0\">Resultatet er minus, fordi den kapacitive effekt er størst – kredsen er "
          "kapacitiv. Så vendes regnestykket om (Q = Q<sub>C</sub> − Q<sub>L</sub>), og Q = <b>781,09 "
          "VAr</b> (kapacitiv).</p>"}},
        {"mixed, from the current",
         circuit("ac", {leaf("R", "47"), group("P", {leaf("L", "0,2"), leaf("C", "22u")})}, {{"I", "2"}}),
         Calculated,
         {"Spændingen – Ohms lov med impedans <span class=\"crumb\">(formelsamlingen s. 12)</span>",
          "<p class=\"hint0\">Grenstrømmene er faseforskudt, så impedanserne lægges sammen som komplekse "
          "tal: hver gren skrives som z∠φ, man tager 1/z, lægger sammen og vender tilbage. Resultatet "
          "skrives som R + iX, så det kan lægges i serie med resten.</p>",
          "Spolernes induktive reaktans <span class=\"crumb\">(formelsamlingen s. 11)</span>",
          "Kondensatorernes kapacitive reaktans <span class=\"crumb\">(formelsamlingen s. 15)</span>",
          "Parallel (L1, C1): z = (1/z₁ + 1/z₂ + …)⁻¹ med komplekse tal <span "
          "class=\"crumb\">(formelsamlingen s. 10–11)</span>",
          "Parallel: spændingen er den samme over alle grene <span class=\"crumb\">(formelsamlingen s. "
          "4)</span>",
          "<p class=\"hint0\">φ er plus: gruppen virker induktivt</p>",
          "Strømmen i hver gren – Ohms lov med impedans <span class=\"crumb\">(formelsamlingen s. "
          "12)</span>"},
         {"26 (komposanter)"}},
        // X_L = 62,83 Ω against X_C = 144,69 Ω: the coil takes more current.
        {"mixed, with a lossy coil, each branch as a complex number",
         ac({leaf("R", "47"), group("P", {leaf("L", "0,2", "10"), leaf("C", "22u"), leaf("R", "100")})}),
         Calculated,
         {"Spolens impedans – spolen har både ohmsk modstand og reaktans <span "
          "class=\"crumb\">(formelsamlingen s. 18)</span>",
          "Strømmene er faseforskudt – del dem i en aktiv del (i fase med U) og en reaktiv del (90° "
          "forskudt) <span class=\"crumb\">(formelsamlingen s. 26 (komposanter))</span>",
          "<p class=\"hint0\">Som komplekst tal: z = R + iX = z∠φ</p><p>L1 – spole med tab: z∠φ</p><p>C1 – "
          "kondensator: vinkel −90°</p><p>R2 – modstand: vinkel 0°</p>"}},
        // Its reactance is negative: the part 90° off is taken by its size.
        {"mixed, a capacitive series branch",
         ac({leaf("R", "47"),
             group("P", {group("S", {leaf("R", "50"), leaf("C", "22u")}), leaf("L", "0,2")})}),
         Calculated,
         {"<span class=\"v\">I<sub>r,B</sub></span></td>", "<td>22 µF</td>",
          "<span class=\"crumb\">kap.</span>", "<h3 class=\"sh\">Effekt i hver gren</h3>",
          "(Kirchhoffs 1. lov er opfyldt som vektorer)", "Modstandstrekant"}},
        // X_C1 = 144,69 Ω against X_L1 = 31,416 Ω: summed the other way round.
        {"a capacitive series branch with a coil",
         ac({group("P",
                   {group("S", {leaf("R", "50"), leaf("L", "0,1"), leaf("C", "22u")}), leaf("R", "100")})}),
         Calculated,
         {"Grenen B: reaktanserne lægges sammen (kondensator plus, spole minus) <span class=\"crumb\">"
          "(formelsamlingen s. 3, 18, 20)</span></p><p class=\"hint0\">Grenen B er kapacitiv: X regnes som "
          "et positivt tal</p>",
          "Vinklen i B: z = R − iX = z∠−φ, så tan φ = X / R – grenen er kapacitiv, så strømmen er φ før U",
          "<span class=\"v\">X<sub>B</sub></span></td><td class=\"m\">=</td><td class=\"r\"><span "
          "class=\"v\">X<sub>C1</sub></span> − <span class=\"v\">X<sub>L1</sub></span></td>"}},
        // Three series branches are groups B, C and D: I_C belongs to one of
        // them, so the sums by kind give way to the complex sum.
        {"a group that owns the capacitors' symbol",
         ac({group("P", {group("S", {leaf("R", "50"), leaf("C", "22u")}),
                         group("S", {leaf("R", "50"), leaf("L", "0,2")}),
                         group("S", {leaf("R", "10"), leaf("L", "0,1")})})}),
         Calculated,
         {"Parallel (B, C, D): z = (1/z₁ + 1/z₂ + …)⁻¹ med komplekse tal"}},
        // U_h is set by the sheet's own hint, not found by a step.
        {"the guide with only the current",
         circuit("ac", {lossy()}, {{"I", "3"}}),
         Guide,
         {"hjælpespændingen <span class=\"crumb\">opgivet</span>"}},
        {"only the current",
         circuit("ac", {lossy()}, {{"I", "3"}}),
         Calculated,
         {"<p class=\"hint0\">U er ikke opgivet. Strømmene i grenene er proportionale med U, så kredsens "
          "impedans Z afhænger ikke af U. Regn derfor først med en hjælpespænding U<sub>h</sub> = 100 V:</p>",
          "Reaktanserne: X<sub>L</sub> = 2 · π · f · L og X<sub>C</sub> = 1 / (2 · π · f · C) <span "
          "class=\"crumb\">(formelsamlingen s. 11, 15)</span>",
          "Impedans og vinkel i L1 med både R og X: z = √(R² + X²) og cos φ = R / z <span class=\"crumb\">"
          "(formelsamlingen s. 12, 18)</span>",
          "Find U – først kredsens impedans Z med en hjælpespænding <span class=\"crumb\">(formelsamlingen "
          "s. 12)</span></p><p class=\"hint0\">Kredsens impedans er den samme ved alle spændinger:</p>",
          "Spændingen: U = I · Z <span class=\"crumb\">(formelsamlingen s. 12)</span></p><p "
          "class=\"hint0\">Nu kendes Z, og den opgivne strøm giver spændingen:</p>",
          "Gren R1 – strøm og effekt <span class=\"crumb\">(formelsamlingen s. 5–10)</span>"},
         {"Minus betyder"}},
        {"only the current, capacitive",
         circuit("ac", {group("P", {leaf("R", "100"), leaf("C", "47u")})}, {{"I", "3"}}),
         Calculated,
         {"<p class=\"hint0\">Minus betyder, at kredsen er kapacitiv. Videre regnes med talværdien.</p>"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Circuit c = row.c;
        std::string html;
        if (row.kind == Task) {
            html = opgaveark(c, "x");
        } else if (row.kind == Guide) {
            html = fremgangsmaade(c, "x");
        } else {
            const Sheet s = computeSheet(c);
            ASSERT_EQ(s.error, "");
            html = regneark(s, c, "x");
        }
        html = takeRender(html).html;
        for (const std::string& text : row.present)
            EXPECT_TRUE(contains(html, text)) << text;
        for (const std::string& text : row.absent)
            EXPECT_FALSE(contains(html, text)) << text;
    }
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
    const std::string error = computeSheet(c).error;
    ASSERT_NE(error, "");
    EXPECT_EQ(fremgangsmaade(c, "x"), "<div class=\"msg bad\">" + error + "</div>");
}

// The task sheet gives what was typed and nothing the solve found; the guide
// draws what the task sheet draws, narrowed to 720 when wider.
TEST_F(Walkthrough, theTaskSheetAndTheGuideShowWhatWasTypedAndNoResult) {
    std::vector<CNodePtr> row;
    for (int i = 0; i < 8; ++i)
        row.push_back(leaf("R", std::to_string(10 * (i + 1))));
    row.push_back(leaf("R"));
    const Circuit wide = circuit("dc", row, {{"U", "230"}, {"I", "0,5"}});
    Circuit c = wide;
    const RenderResult guide = takeRender(fremgangsmaade(c, "x"));
    RenderResult task = takeRender(opgaveark(c, "x"));
    ASSERT_EQ(guide.figs.size(), 1u);
    ASSERT_EQ(task.figs.size(), 1u);
    EXPECT_EQ(guide.figs[0], task.figs[0]);
    EXPECT_LE(std::stoi(between(guide.html, "<img src=\"f:0\" width=\"", "\"")), 720);
    EXPECT_EQ(toText(c), toText(wide)); // nothing was solved or changed

    c = studentsCircuit();
    task = takeRender(opgaveark(c, "x"));
    EXPECT_TRUE(contains(task.html, "<h2>Opgave: regn kredsløbet</h2>"));
    EXPECT_TRUE(contains(task.html, "I<sub>R3</sub> = 0,5 A"));
    EXPECT_TRUE(contains(task.figs[0], "230 V"));
    for (const char* found : {"247,5", "123,75", "1,0625", "116,47"})
        EXPECT_FALSE(contains(task.html + task.figs[0], found)) << found;
}

} // namespace
} // namespace fl
