// Power-factor correction: the reactive power the capacitors must supply to
// lift cos φ₁ to cos φ₂, and the capacitance of one capacitor for a
// single-phase load or a three-phase bank in delta or star. The active power
// stays; only Q, and with it S and the current, falls.
#include "fl/tools/machines.h"

#include "fl/tools/machinefigs.h"

#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"

#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;

} // namespace

ToolOut compensate(const FormMap& form, const std::string& net) {
    const bool threePhase = net == "D" || net == "Y";
    const bool delta = net == "D";
    return runTool("Kompensering", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        // The field U holds the line voltage U_N of a three-phase net.
        const std::string uv = threePhase ? "U_N" : "U";
        std::vector<std::string> missing, missingSymbols;
        for (const char* key : {"U", "cosphi1", "cosphi2", "f"})
            if (!in.has(key)) {
                missing.push_back(key);
                missingSymbols.push_back(std::string(key) == "U" ? uv : key);
            }
        const bool hasP = in.has("P");
        if (!missing.empty() || (!hasP && !in.has("I"))) {
            std::string text = "Udfyld " + tool::symbolList(missingSymbols);
            if (!hasP && !in.has("I")) {
                text += (missing.empty() ? "" : " og ") + std::string("P eller I.");
                missing.push_back("P");
                missing.push_back("I");
            } else {
                text += ".";
            }
            refuse(out, text, missing);
            return;
        }
        if (!refuseNegative(out, in, {"P", "I", "U", "f"})) return;
        const double c1 = in.get("cosphi1"), c2 = in.get("cosphi2");
        for (const char* key : {"cosphi1", "cosphi2"}) {
            const double c = in.get(key);
            if (!(c > 0) || c > 1) {
                refuse(out, "cos φ skal ligge mellem 0 og 1.", {key});
                return;
            }
        }
        if (!(c2 > c1)) {
            refuse(
                out,
                "Den ønskede cos φ skal være større end den nuværende – ellers er der intet at kompensere.",
                {"cosphi2"});
            return;
        }

        ToolSheet s;
        s.vars = {{uv, in.get("U")}, {"f", in.get("f")}, {"cosphi1", c1}, {"cosphi2", c2}};
        s.shown = {{uv, in.shown.at("U")},
                   {"f", in.shown.at("f")},
                   {"cosphi1", in.shown.at("cosphi1")},
                   {"cosphi2", in.shown.at("cosphi2")}};
        addGivenInput(s, in, "U", threePhase ? "netspænding" : "spænding", "V", {}, uv);
        addGivenInput(s, in, "f", "frekvens", "Hz");
        addGivenInput(s, in, "cosphi1", "før kompensering", "");
        addGivenInput(s, in, "cosphi2", "ønsket efter kompensering", "");
        if (hasP) {
            s.vars["P"] = in.get("P");
            s.shown["P"] = in.shown.at("P");
            addGivenInput(s, in, "P", "aktiv effekt", "W");
        } else {
            s.vars["I1"] = in.get("I");
            s.shown["I1"] = in.shown.at("I");
            addGivenInput(s, in, "I", "strøm før kompensering", "A", {}, "I1");
        }

        const std::string bookPage = threePhase ? kYdSheet : "13";
        if (!hasP)
            addStepBlock(s, "Den aktive effekt ud fra strømmen", bookPage,
                         {{"W", threePhase ? "U_N*I1*sqrt(3)*cosphi1" : "U*I1*cosphi1", "P"}});
        addStepBlock(s, "Vinklerne før og efter (φ = cos⁻¹(cos φ))", "12",
                     {{"°", "acos(cosphi1)", "phi1"}, {"°", "acos(cosphi2)", "phi2"}});
        addStepBlock(s, "Reaktiv effekt før og efter – effekttrekanten (Q = P · tan φ)", "13",
                     {{"VAr", "P*tan(phi1)", "Q1"}, {"VAr", "P*tan(phi2)", "Q2"}},
                     hint("P er den samme før og efter – kondensatorerne ændrer kun den reaktive effekt."));
        addStepBlock(s, "Kondensatorerne skal levere forskellen: Q<sub>C</sub> = P · (tan φ₁ − tan φ₂)", "",
                     {{"VAr", "Q1-Q2", "QC"}});

        const std::string ydAnd13 = std::string(kYdSheet) + " og s. 13";
        if (!threePhase) {
            addStepBlock(s, "Kondensatorens reaktans (Q = U² / X)", "13", {{"Ω", "U**2/QC", "XC"}});
            addStepBlock(s, "Kondensatorens kapacitet (X<sub>C</sub> = 1 / (2 · π · f · C))", "15",
                         {{"F", "1/(2*PI*f*XC)", "C"}});
        } else {
            addStepBlock(s, "Der bruges 3 kondensatorer – hver leverer en tredjedel", "",
                         {{"VAr", "QC/3", "QC1"}});
            if (delta)
                addStepBlock(
                    s,
                    "I trekant ligger hver kondensator på netspændingen, så U<sub>C</sub> = U<sub>N</sub> "
                    "(Q = U² / X)",
                    ydAnd13, {{"Ω", "U_N**2/QC1", "XC"}});
            else
                addStepBlock(
                    s,
                    "I stjerne ligger hver kondensator på fasespændingen U<sub>F</sub> = U<sub>N</sub> / √3 "
                    "(Q = U² / X)",
                    ydAnd13, {{"V", "U_N/sqrt(3)", "U_F"}, {"Ω", "U_F**2/QC1", "XC"}});
            addStepBlock(s, "Kapacitet pr. kondensator (X<sub>C</sub> = 1 / (2 · π · f · C))", "15",
                         {{"F", "1/(2*PI*f*XC)", "C"}});
        }

        std::vector<CalcStep> closing{{"VA", "P/cosphi1", "S1"}, {"VA", "P/cosphi2", "S2"}};
        const std::string root = threePhase ? "/(U_N*sqrt(3))" : "/U";
        if (hasP) closing.push_back({"A", "S1" + root, "I1"});
        closing.push_back({"A", "S2" + root, "I2"});
        addStepBlock(s, "Tilsyneladende effekt og strøm før og efter", bookPage, closing);
        s.sections.steps.back().html +=
            hint("Samme aktive effekt med højere cos φ giver mindre S – og dermed mindre strøm i kablerne.");

        {
            // cos φ = P / √(P² + (Q₁ − Q_C)²) must come out as the wanted one.
            std::map<std::string, double> copy = s.vars;
            const StepOutcome again =
                evaluateStep("cosphi2", parse("P/sqrt(P**2+(Q1-QC)**2)"), copy, "", s.shown);
            s.sections.check = hint("Med kondensatorerne bliver den reaktive effekt Q<sub>1</sub> − "
                                    "Q<sub>C</sub>. Så skal cos φ = "
                                    "P / S blive den ønskede:") +
                               again.html +
                               (std::fabs(again.value - c2) < 1e-6 ? "<p class=\"ok\">✓ Passer</p>"
                                                                   : "<p class=\"bad\">✗ Passer ikke</p>");
        }

        MachineValues drawn{s.vars, {"Q1", "Q2", "QC", "S1", "S2", "phi1", "phi2"}};
        if (!hasP) drawn.found.insert("P");
        s.sections.figure = figureMarkup(compensationFigure(drawn));

        const std::string where = delta ? "trekant" : "stjerne";
        struct Row {
            const char* key;
            const char* unit;
        };
        const Row rows[] = {{"QC", "VAr"}, {"C", "F"},   {"XC", "Ω"},  {"I1", "A"},
                            {"I2", "A"},   {"S1", "VA"}, {"S2", "VA"}, {"Q2", "VAr"}};
        std::vector<KvItem> items;
        for (const Row& r : rows) {
            std::string key = tool::symbolHtml(r.key);
            if (threePhase && std::string(r.key) == "QC") key += " <span class=\"crumb\">i alt</span>";
            items.push_back({key, formatValue(s.vars.at(r.key), r.unit), std::string(r.key) == "QC"});
        }
        s.sections.results = kvGrid(items, 4);

        const double qc = s.vars.at("QC"), c = s.vars.at("C");
        s.id = "ksheet";
        s.crumb =
            "Kompensering · " + (threePhase ? "3-faset, kondensatorer i " + where : std::string("1-faset"));
        s.title = "Kompensering til cos φ = " + fmtNumber(c2, 5);
        s.sections.answer =
            "<span class=\"big\">" + tool::symbolHtml("QC") + " = " + formatValue(qc, "VAr") + "</span>";
        if (threePhase)
            s.sections.answer += " <span class=\"crumb\">pr. kondensator (3 stk. i " + where + ")</span>";
        s.sections.answer +=
            " <span class=\"big2\">" + tool::symbolHtml("C") + " = " + formatValue(c, "F") + "</span>";
        finish(out, s, {{"C", c, "F"}, {"QC", qc, "VAr"}});
    });
}

} // namespace fl
