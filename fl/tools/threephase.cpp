// A symmetrical three-phase load in star or delta, solved in any direction
// from the star/delta sheet's formulas; then the same load connected the
// other way, and (for a pure resistance) what a broken phase or component
// leaves of the power.
#include "fl/tools/anydirection.h"
#include "fl/tools/machinefigs.h"

#include "fl/expr/parser.h"

#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;
using tool::msg;

const std::vector<std::string> kForm{"U_N", "U_F", "I_N", "I_F", "R", "cosphi", "P", "S", "Q"};
const std::vector<std::string> kWanted{"phi", "U_N", "U_F", "I_N", "I_F", "P", "S", "Q", "cosphi"};

// cos φ within this of 1 is a pure resistance.
constexpr double kResistive = 1e-12;

std::string ydPage(const char* tail) {
    return std::string(kYdSheet) + tail;
}

bool known(const std::map<std::string, double>& vars, std::initializer_list<const char*> keys) {
    for (const char* k : keys)
        if (!vars.count(k)) return false;
    return true;
}

// An empty cos φ is a pure resistance, unless the other givens decide it
// (P and S, or P with U and I) or a reactive power says otherwise. Which one
// it is decides whether the per-phase quantity is R or Z, so it is settled
// before the chain that writes the sheet.
struct CosPhi {
    std::string perPhase = "R";
    bool assumeOne = false;
};

CosPhi settleCosPhi(const ToolInputs& in, bool star) {
    CosPhi c;
    if (in.has("cosphi")) {
        c.perPhase = std::fabs(in.get("cosphi") - 1) <= kResistive ? "R" : "Z";
        return c;
    }
    if (in.get("Q") > 0) {
        c.perPhase = "Z";
        return c;
    }
    std::map<std::string, double> probe;
    for (const std::string& k : kForm)
        if (in.has(k)) probe[k] = in.get(k);
    // A throw here is the real chain's to report.
    try {
        solveChain(threePhaseEquations(star, "R"), probe);
    } catch (const std::exception&) {
    }
    // Found as 1 give or take rounding, it is taken as exactly 1: a
    // cos φ of 1 + 1e-16 would leave φ = cos⁻¹(cos φ) without an answer.
    if (probe.count("cosphi") && std::fabs(probe.at("cosphi") - 1) > kResistive) {
        c.perPhase = "Z";
        return c;
    }
    c.assumeOne = true;
    return c;
}

// |P_x − expected| within 1e-6 of P earns a tick.
std::string halfOrThird(const std::string& lead, double expected, double got, double p) {
    const bool ok = std::fabs(got - expected) <= 1e-6 * std::fabs(p);
    return "<p class=\"hint0\">" + lead + formatValue(expected, "W") +
           (ok ? " <span class=\"ok\">✓</span>" : "") + "</p>";
}

// P_Δ = 3 · P_Y and I_NΔ = 3 · I_NY: in delta each load has √3 times the voltage.
void addReconnection(ToolSheet& s, bool star) {
    if (!known(s.vars, {"I_N", "P"})) return;
    const std::string other = star ? "trekant" : "stjerne";
    if (star) {
        s.vars["P_Y"] = s.vars.at("P");
        s.vars["I_NY"] = s.vars.at("I_N");
        addStepBlock(s, "Hvis de samme belastninger kobles i " + other, ydPage(", fælles"),
                     {{"W", "3*P_Y", "P_D"}, {"A", "3*I_NY", "I_ND"}},
                     hint("I trekant får hver belastning hele netspændingen (√3 gange mere), så effekten og "
                          "netstrømmen bliver 3 gange større:"));
    } else {
        s.vars["P_D"] = s.vars.at("P");
        s.vars["I_ND"] = s.vars.at("I_N");
        addStepBlock(
            s, "Hvis de samme belastninger kobles i " + other, ydPage(", fælles"),
            {{"W", "P_D/3", "P_Y"}, {"A", "I_ND/3", "I_NY"}},
            hint("I stjerne får hver belastning kun U<sub>N</sub>/√3, så effekten og netstrømmen bliver 3 "
                 "gange mindre:"));
    }
}

// Faults of a pure resistance: what is left in series or in parallel on U_N.
void addFaults(ToolSheet& s, bool star) {
    if (!known(s.vars, {"R", "U_N", "P"})) return;
    const double p = s.vars.at("P");
    if (star) {
        // U_N² / (R + R): the two remaining loads in series between two phases.
        const StepOutcome f = evaluateStep("P_fejl", parse("U_N**2/(R+R)"), s.vars, "W", s.shown);
        s.sections.steps.push_back(
            {"Fejl: en fase eller en komponent afbrudt (stjerne uden nul)", ydPage(", fejl"),
             hint("De to resterende modstande sidder i serie mellem to faser:") + f.html +
                 halfOrThird("Det er halv effekt: P / 2 = ", p / 2, f.value, p)});
        return;
    }
    // One phase gone: one load still on U_N, two in series on U_N.
    const StepOutcome phase = evaluateStep("P_fejlF", parse("U_N**2/R+U_N**2/(R+R)"), s.vars, "W", s.shown);
    // One load gone: the two whole ones still on U_N.
    const StepOutcome part = evaluateStep("P_fejlK", parse("U_N**2/R+U_N**2/R"), s.vars, "W", s.shown);
    s.sections.steps.push_back(
        {"Fejl i trekant", ydPage(", fejl"),
         hint("<b>En fase afbrudt:</b> én modstand ligger stadig på U<sub>N</sub>, og de to andre ligger i "
              "serie på "
              "U<sub>N</sub>:") +
             phase.html + halfOrThird("= halv effekt: P / 2 = ", p / 2, phase.value, p) +
             hint("<b>Én komponent afbrudt:</b> de to hele modstande ligger stadig på U<sub>N</sub>:") +
             part.html + halfOrThird("= 2/3 af effekten: 2/3 · P = ", 2 * p / 3, part.value, p)});
}

} // namespace

const std::vector<ToolQuantity>& threePhaseQuantities() {
    static const std::vector<ToolQuantity> table{
        {"U_N", "V", "netspænding"},
        {"U_F", "V", "fasespænding"},
        {"I_N", "A", "netstrøm"},
        {"I_F", "A", "fasestrøm"},
        {"R", "Ω", "modstanden pr. fase"},
        {"Z", "Ω", "impedansen pr. fase"},
        {"cosphi", "", "effektfaktor"},
        {"phi", "°", "faseforskydningsvinklen"},
        {"P", "W", "aktiv effekt i alt"},
        {"S", "VA", "tilsyneladende effekt i alt"},
        {"Q", "VAr", "reaktiv effekt i alt"},
        {"P_D", "W", "effekten i trekant"},
        {"P_Y", "W", "effekten i stjerne"},
        {"I_ND", "A", "netstrømmen i trekant"},
        {"I_NY", "A", "netstrømmen i stjerne"},
        {"P_fejl", "W", "effekten med fejlen"},
        {"P_fejlF", "W", "effekten med en fase afbrudt"},
        {"P_fejlK", "W", "effekten med én komponent afbrudt"},
    };
    return table;
}

std::vector<ChainEquation> threePhaseEquations(bool star, const std::string& perPhase) {
    std::vector<ChainEquation> list;
    if (star) {
        list.push_back({"U_F", "U_N/sqrt(3)", "Stjerne: fasespændingen er netspændingen delt med √3",
                        ydPage(", stjerne")});
        list.push_back({"I_F", "I_N", "Stjerne: fasestrømmen er lig netstrømmen", ydPage(", stjerne")});
    } else {
        list.push_back({"U_F", "U_N",
                        "Trekant: hver belastning ligger mellem to faser, så U<sub>F</sub> = U<sub>N</sub>",
                        ydPage(", trekant")});
        list.push_back(
            {"I_F", "I_N/sqrt(3)", "Trekant: fasestrømmen er netstrømmen delt med √3", ydPage(", trekant")});
    }
    const std::vector<ChainEquation> common{
        {perPhase, "U_F/I_F", "Ohms lov for én fase (" + perPhase + " = U<sub>F</sub> / I<sub>F</sub>)", ""},
        {"phi", "acos(cosphi)", "Faseforskydningsvinkel", "12"},
        {"P", "U_N*I_N*sqrt(3)*cosphi", "Aktiv effekt (P = U<sub>N</sub> · I<sub>N</sub> · √3 · cos φ)",
         ydPage(", fælles")},
        {"S", "U_N*I_N*sqrt(3)", "Tilsyneladende effekt (S = U<sub>N</sub> · I<sub>N</sub> · √3)",
         ydPage(", fælles")},
        {"Q", "U_N*I_N*sqrt(3)*sin(phi)", "Reaktiv effekt (Q = U<sub>N</sub> · I<sub>N</sub> · √3 · sin φ)",
         ydPage(", fælles")},
        {"P", "3*U_F*I_F*cosphi",
         "Aktiv effekt ud fra fasestørrelserne (P = 3 · U<sub>F</sub> · I<sub>F</sub> · cos φ)", ""},
        {"S", "3*U_F*I_F",
         "Tilsyneladende effekt ud fra fasestørrelserne (S = 3 · U<sub>F</sub> · I<sub>F</sub>)", ""},
        {"cosphi", "P/S", "Effektfaktor (cos φ = P / S)", "13"},
    };
    list.insert(list.end(), common.begin(), common.end());
    return list;
}

ToolOut threePhaseLoad(const FormMap& form, bool star) {
    return runTool("Trefaset", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        if (!refuseNegative(out, in, {"U_N", "U_F", "I_N", "I_F", "R", "P", "S", "Q"})) return;
        const double cosphi = in.get("cosphi");
        if (in.has("cosphi") && (!(cosphi > 0) || cosphi > 1)) {
            refuse(out, "cos φ skal ligge mellem 0 og 1.", {"cosphi"});
            return;
        }

        const CosPhi cos = settleCosPhi(in, star);
        const std::string& perPhase = cos.perPhase;
        ToolSheet s;
        std::set<std::string> given;
        for (const std::string& key : kForm) {
            if (!in.has(key)) continue;
            // The form's R is the impedance Z when the load isn't resistive.
            const std::string symbol = key == "R" ? perPhase : key;
            s.vars[symbol] = in.get(key);
            s.shown[symbol] = in.shown.at(key);
            given.insert(symbol);
            addGivenInput(s, in, key, anydir::find(threePhaseQuantities(), symbol)->name,
                          anydir::find(threePhaseQuantities(), symbol)->unit, {}, symbol);
        }
        if (cos.assumeOne) {
            s.vars["cosphi"] = 1;
            given.insert("cosphi");
            addGivenRow(s, "effektfaktor – ren modstand, da feltet er tomt", "", "cosphi", "1", "cosphi");
        }

        const ChainSetup setup = anydir::setupFor(threePhaseQuantities(), s.shown);
        const ChainResult chain = solveChain(threePhaseEquations(star, perPhase), s.vars, setup);
        s.sections.steps = chain.blocks;
        const anydir::Checked checked = anydir::check(chain, s.vars, setup);
        const std::vector<std::string> missing = anydir::unknownOf(s.vars, kWanted);
        const std::string near = checked.nearMisses.empty()
                                     ? std::string()
                                     : msg("Nogle af de givne værdier passer næsten, men ikke helt:<br>" +
                                               anydir::lines(checked.nearMisses),
                                           false);

        if (chain.blocks.empty() && (!checked.conflicts.empty() || !missing.empty())) {
            if (!checked.conflicts.empty())
                refuse(out, "De givne værdier passer ikke sammen:<br>" + anydir::lines(checked.conflicts));
            else
                refuse(out, "Med de værdier kan programmet ikke finde mere. Udfyld fx netspændingen og enten "
                            "modstanden pr. fase, strømmen eller effekten.");
            out.err += near;
            return;
        }

        std::string notes;
        if (!missing.empty())
            notes += msg(
                "Disse kunne ikke findes ud fra de givne værdier: " + tool::symbolList(missing) + ".", false);
        if (!checked.conflicts.empty())
            notes += msg(
                "Nogle af de givne værdier passer ikke sammen:<br>" + anydir::lines(checked.conflicts), true);
        notes += near;

        // The grid shows what the load itself is; what follows are what-ifs.
        const std::string grid = anydir::knownGrid(threePhaseQuantities(), s.vars, given);
        s.sections.figure =
            anydir::figureWithFound(connectionFigure(anydir::drawn(s.vars, given), star, perPhase));
        const std::vector<RecentValue> recent = anydir::found(threePhaseQuantities(), s.vars, given);
        addReconnection(s, star);
        if (perPhase == "R") addFaults(s, star);

        s.sections.results = grid;
        s.id = "tfsheet";
        s.crumb = std::string("Trefaset · ") + (star ? "stjerne (Y)" : "trekant (Δ)");
        s.title = std::string("Trefaset belastning i ") + (star ? "stjerne" : "trekant");
        anydir::finishWithNotes(out, s, notes, recent);
    });
}

} // namespace fl
