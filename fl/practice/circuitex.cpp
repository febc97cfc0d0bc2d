#include "fl/practice/circuitex.h"

#include "fl/circuit/analysis.h"
#include "fl/circuit/sheet.h"
#include "fl/circuit/sheets/walkthrough.h"
#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"
#include "fl/fig/schematic.h"
#include "fl/practice/random.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

constexpr int kAttempts = 80;

CNodePtr resistor(double lo, double hi) {
    return makeNode("R", fmtValue10(pickE12(lo, hi)));
}

CNodePtr coil() {
    return makeNode("L", fmtValue10(pickOne(std::vector<double>{0.05, 0.1, 0.15, 0.2, 0.3, 0.5})));
}

// Typed as on a capacitor's label: "47u".
CNodePtr capacitor(const std::vector<double>& microfarads) {
    return makeNode("C", fmtValue10(pickOne(microfarads)) + "u");
}

Circuit build(const std::string& mode, std::vector<CNodePtr> ch, double volts) {
    Circuit c = defaultCircuit(mode);
    c.root->ch = std::move(ch);
    c.src["U"] = fmtValue10(volts);
    nameCircuit(c);
    return c;
}

double dcVolts() {
    return pickOne(std::vector<double>{12, 24, 48, 230});
}

// What may be asked: the whole circuit's current, resistance or impedance,
// power and power factor, and each component's voltage and current.
bool askable(const std::string& symbol, bool isAc) {
    static const std::vector<std::string> dc = {"I", "R_tot", "P_tot"};
    static const std::vector<std::string> ac = {"I", "Z", "P", "cosphi", "Q", "S"};
    for (const std::string& s : isAc ? ac : dc)
        if (symbol == s) return true;
    return symbol.rfind("U_", 0) == 0 || symbol.rfind("I_", 0) == 0;
}

std::string statement(const Exercise& ex, const Circuit& c, const Sheet& sheet) {
    std::string given;
    for (const char* key : {"U", "f"}) {
        if (std::string(key) == "f" && c.mode != "ac") continue;
        const double v = readValue(c.src.at(key));
        if (!given.empty()) given += ", ";
        given += varSpan(key) + " = " + shownValue(v, key[0] == 'U' ? "V" : "Hz");
    }
    return "<p class=\"hint0\">Givet: " + given + ". Komponenternes værdier står på tegningen.</p>" +
           "<p class=\"hint0\">Find <b>" + describeSymbol(ex.target, sheet.root, sheet.isAc) + "</b> (" +
           varSpan(symbolDisplay(ex.target)) + ").</p>";
}

// The answer first, then the circuit's whole calculated sheet.
std::string solution(const Exercise& ex, const Sheet& sheet, Circuit& c) {
    return "<div class=\"result\"><div class=\"spoiler\"><div class=\"facit\"><span class=\"k\">FACIT</span> "
           "&nbsp; <span class=\"big\">" +
           varSpan(symbolDisplay(ex.target)) + " = " + shownValue(ex.facit, ex.unit) +
           "</span></div></div></div>" + regneark(sheet, c, sheetDate());
}

Exercise attempt(const CircuitTemplate& t) {
    SetAsidePass aside;
    Circuit c = t.make();
    Exercise ex;
    Sheet sheet = computeSheet(c);
    if (sheet.error.empty() && !sheet.stopped) {
        const double volts = readValue(c.src["U"]);
        std::vector<std::string> targets;
        for (const auto& [symbol, value] : sheet.values) {
            if (!askable(symbol, sheet.isAc) || !std::isfinite(value) || value <= 0) continue;
            if (!plausibleAnswer(symbol, unitOf(symbol, sheet.root), value)) continue;
            // The voltage over a branch straight across the source is no question.
            if (unitOf(symbol, sheet.root) == "V" && std::fabs(value - volts) <= 1e-9 * volts) continue;
            targets.push_back(symbol);
        }
        if (!targets.empty()) {
            ex.target = pickOne(targets);
            ex.facit = sheet.values.at(ex.target);
            ex.unit = unitOf(ex.target, sheet.root);
            ex.key = circuitKey(t);
            ex.topic = circuitTopic(t.mode);
            ex.title = "Kredsløb: " + t.name;
            ex.search = t.mode == "ac" ? "vekselstrøm kredsløb" : "jævnstrøm kredsløb";
            ex.given = {{"U", readValue(c.src["U"])}};
            if (t.mode == "ac") ex.given["f"] = readValue(c.src["f"]);
            for (const auto& [symbol, value] : ex.given)
                ex.givenText[symbol] = fmtValue10(value);
            ex.statement = statement(ex, c, sheet);
            std::string html = solution(ex, sheet, c);
            ex.solution = takeRender(std::move(html));
            ex.circuit = std::make_shared<const Circuit>(c);
        }
    }
    return ex;
}

} // namespace

const std::vector<CircuitTemplate>& circuitTemplates() {
    static const std::vector<CircuitTemplate> all = {
        {"dc", "Serieforbindelse",
         [] {
             std::vector<CNodePtr> parts{resistor(10, 1000), resistor(10, 1000)};
             if (randInt(2)) parts.push_back(resistor(10, 1000));
             return build("dc", std::move(parts), dcVolts());
         }},
        {"dc", "Parallelforbindelse",
         [] {
             std::vector<CNodePtr> branches{resistor(10, 1000), resistor(10, 1000)};
             if (randInt(2)) branches.push_back(resistor(10, 1000));
             return build("dc", {makeNode("P", "", std::move(branches))}, dcVolts());
         }},
        {"dc", "Blandet forbindelse",
         [] {
             return build("dc",
                          {resistor(10, 470), makeNode("P", "", {resistor(22, 1000), resistor(22, 1000)})},
                          dcVolts());
         }},
        {"ac", "RL i serie",
         [] {
             return build("ac", {resistor(10, 470), coil()}, 230);
         }},
        {"ac", "RC i serie",
         [] {
             return build("ac", {resistor(10, 470), capacitor({4.7, 10, 22, 33, 47})}, 230);
         }},
        {"ac", "RLC i serie",
         [] {
             return build("ac", {resistor(10, 470), coil(), capacitor({10, 22, 33, 47, 68, 100})}, 230);
         }},
        {"ac", "RL parallel",
         [] {
             return build("ac", {makeNode("P", "", {resistor(22, 1000), coil()})}, 230);
         }},
        // A motor winding (R and L in series) with a capacitor across it.
        {"ac", "Kompensering",
         [] {
             return build(
                 "ac",
                 {makeNode("P", "",
                           {makeNode("S", "", {resistor(10, 100), coil()}), capacitor({10, 22, 33, 47})})},
                 230);
         }},
    };
    return all;
}

std::string circuitKey(const CircuitTemplate& t) {
    return "circ:" + t.mode + "|" + t.name;
}

std::string circuitTopic(const std::string& mode) {
    return mode == "ac" ? "Kredsløb – vekselstrøm" : "Kredsløb – jævnstrøm";
}

std::string circuitStatement(const Exercise& ex) {
    if (!ex.circuit) return ex.statement;
    Circuit c = *ex.circuit; // drawing numbers the nodes again
    double w = 0, h = 0;
    FigureOut fig = schematicFigure(c, {}, {}, &w, &h);
    // Drawn at its natural size, narrowed to what a page or a sheet has room for.
    const double shown = std::min(w, 560.0);
    const int width = static_cast<int>(std::lround(shown)),
              height = static_cast<int>(std::lround(h * shown / w));
    return figureShownAt(std::move(fig), width, height) + ex.statement;
}

std::string circuitHint(const Exercise& ex) {
    if (!ex.circuit) return {};
    Circuit c = *ex.circuit;
    return fremgangsmaade(c, sheetDate());
}

Exercise circuitExercise(const CircuitTemplate& t) {
    for (int i = 0; i < kAttempts; ++i)
        if (Exercise ex = attempt(t); !ex.empty()) return ex;
    return {};
}

Exercise makeCircuitExercise(const std::string& mode, const KeyFilter& open) {
    std::vector<const CircuitTemplate*> pool;
    for (const CircuitTemplate& t : circuitTemplates())
        if (t.mode == mode && (!open || open(circuitKey(t)))) pool.push_back(&t);
    if (pool.empty()) return {};
    return circuitExercise(*pickOne(pool));
}

} // namespace fl
