// The motor from its rating plate: whatever the plate's numbers determine,
// found in any direction by the chain, then the givens held against the
// equations, since plate values are rounded and students mistype.
#include "fl/tools/anydirection.h"
#include "fl/tools/machinefigs.h"

#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"

#include <cmath>

namespace fl {

namespace {

using tool::hint;
using tool::msg;

// What a plate can carry: the form's fields.
const std::vector<std::string> kPlate{"U_N", "f", "P_2", "I_N", "cosphi", "eta", "nr", "p", "k_st"};

// A polpar count within this of a whole number is one; 60·f/n within it of
// a whole number rounds to that number, not below it.
constexpr double kWhole = 1e-9;

// p = floor(60·f / n): the rotor turns a little slower than the field, so
// the synchronous speed is the nearest one above n.
bool derivePolePairs(ToolSheet& s) {
    const double f = s.vars.count("f") ? s.vars.at("f") : NAN;
    const double nr = s.vars.count("nr") ? s.vars.at("nr") : NAN;
    if (s.vars.count("p") || !(nr > 0) || !std::isfinite(f) || !(60 * f > nr)) return false;
    std::map<std::string, double> scratch = s.vars;
    const StepOutcome raw = evaluateStep("p", parse("60*f/nr"), scratch, "", s.shown);
    const double p = std::max(1.0, std::floor(raw.value + kWhole));
    s.vars["p"] = p;
    s.sections.steps.push_back({"Antal polpar ud fra omdrejningstallet", "",
                                hint("Rotoren drejer lidt langsommere end drejefeltet, så det synkrone "
                                     "omdrejningstal er det nærmeste "
                                     "<b>over</b> n. Regn 60 · f / n, og rund <b>ned</b> til et helt tal:") +
                                    raw.html +
                                    eqTable({{tool::symbolHtml("p"), "<b>" + fmtNumber(p) + "</b>",
                                              "rundet ned til et helt antal polpar", false}}),
                                "p", "f,nr"});
    return true;
}

bool known(const std::map<std::string, double>& vars, std::initializer_list<const char*> keys) {
    for (const char* k : keys)
        if (!vars.count(k)) return false;
    return true;
}

} // namespace

const std::vector<ToolQuantity>& motorQuantities() {
    static const std::vector<ToolQuantity> table{
        {"U_N", "V", "netspænding"},
        {"f", "Hz", "frekvens"},
        {"P_2", "W", "afgivet effekt (akseleffekt)"},
        {"I_N", "A", "mærkestrøm"},
        {"cosphi", "", "effektfaktor"},
        {"eta", "", "virkningsgrad"},
        {"nr", "o/min", "omdrejningstal"},
        {"p", "", "antal polpar"},
        {"k_st", "", "startstrømsfaktor"},
        {"P_1", "W", "optaget effekt"},
        {"P_tab", "W", "tab i motoren"},
        {"S", "VA", "tilsyneladende effekt"},
        {"Q", "VAr", "reaktiv effekt"},
        {"n_s", "o/min", "synkront omdrejningstal"},
        {"s", "%", "slip"},
        {"f_r", "Hz", "rotorfrekvens"},
        {"M", "Nm", "moment på akslen"},
        {"I_st", "A", "startstrøm ved direkte start"},
        {"I_stY", "A", "startstrøm ved stjerne-trekant-start"},
    };
    return table;
}

std::vector<ChainEquation> motorEquations(bool threePhase, bool starDelta) {
    const std::string root = threePhase ? "sqrt(3)*" : "";
    const std::string rootText = threePhase ? "√3 · " : "";
    const char* page = "standardformel";
    std::vector<ChainEquation> list{
        {"P_1", root + "U_N*I_N*cosphi", "Optaget effekt fra nettet (P₁ = " + rootText + "U · I · cos φ)",
         page},
        {"eta", "P_2/P_1", "Virkningsgrad (η = P₂ / P₁)", page},
        {"P_tab", "P_1-P_2", "Tab i motoren (P<sub>tab</sub> = P₁ − P₂)", page},
        {"S", root + "U_N*I_N", "Tilsyneladende effekt (S = " + rootText + "U · I)", page},
        {"Q", "sqrt(S**2-P_1**2)", "Reaktiv effekt (Q = √(S² − P₁²))", page},
        {"n_s", "60*f/p", "Synkront omdrejningstal (n<sub>s</sub> = 60 · f / p)", page},
        {"s", "(n_s-nr)/n_s*100", "Slip (s = (n<sub>s</sub> − n) / n<sub>s</sub> · 100 %)", page},
        {"f_r", "s/100*f", "Rotorfrekvens (f<sub>r</sub> = s · f)", page},
        {"M", "60*P_2/(2*PI*nr)", "Moment på akslen (M = P₂ · 60 / (2 · π · n))", page},
        {"I_st", "k_st*I_N", "Startstrøm ved direkte start (I<sub>start</sub> = k · I<sub>N</sub>)", page},
    };
    if (starDelta)
        list.push_back(
            {"I_stY", "I_st/3", "Startstrøm ved stjerne-trekant-start (1/3 af direkte start)", page});
    return list;
}

ToolOut motor(const FormMap& form, bool threePhase, bool starDelta) {
    return runTool("Motor", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        if (!refuseNegative(out, in, {"U_N", "f", "P_2", "I_N", "nr", "k_st"})) return;

        ToolSheet s;
        s.vars = in.numbers;
        s.shown = in.shown;
        std::string notes;
        double eta = in.get("eta");
        // 87 means 87 %: a plate or a textbook writes it either way.
        if (eta > 1 && eta <= 100) {
            eta /= 100;
            s.vars["eta"] = eta;
            s.shown.erase("eta");
            notes += msg("η er skrevet i procent – der regnes med η = " + fmtNumber(eta, 5) + ".", false);
        }
        auto refuseWithNotes = [&](const std::string& text, const char* key) {
            refuse(out, text, {key});
            out.err = notes + out.err;
        };
        if (in.has("eta") && (!(eta > 0) || eta > 1))
            return refuseWithNotes("Virkningsgraden η skal være mellem 0 og 1 (fx 0,87).", "eta");
        const double cosphi = in.get("cosphi");
        if (in.has("cosphi") && (!(cosphi > 0) || cosphi > 1))
            return refuseWithNotes("cos φ skal ligge mellem 0 og 1 (fx 0,83).", "cosphi");
        const double p = in.get("p");
        if (in.has("p") && (p < 1 || !(std::fabs(p - std::round(p)) < kWhole)))
            return refuseWithNotes(
                "Antal polpar p skal være et helt tal (1, 2, 3 …). En 4-polet motor har 2 polpar.", "p");

        std::set<std::string> given;
        for (const std::string& key : kPlate) {
            if (!in.has(key)) continue;
            const ToolQuantity* q = anydir::find(motorQuantities(), key);
            const std::string name = key == "U_N" && !threePhase ? "spænding" : q->name;
            auto shown = s.shown.find(key);
            addGivenRow(s, name, q->unit, key, shown == s.shown.end() ? std::string() : shown->second, key);
            given.insert(key);
        }

        const bool polpar = derivePolePairs(s);
        const ChainSetup setup = anydir::setupFor(motorQuantities(), s.shown);
        const ChainResult chain = solveChain(motorEquations(threePhase, starDelta), s.vars, setup);
        s.sections.steps.insert(s.sections.steps.end(), chain.blocks.begin(), chain.blocks.end());
        const anydir::Checked checked = anydir::check(chain, s.vars, setup);
        if (!checked.conflicts.empty())
            notes += msg("Nogle af de givne tal passer ikke sammen – tjek dem:<br>" +
                             anydir::lines(checked.conflicts),
                         true);
        if (!checked.nearMisses.empty())
            notes += msg(
                "Nogle tal passer næsten, men ikke helt – det er normalt, fordi tallene på en mærkeplade er "
                "afrundede:<br>" +
                    anydir::lines(checked.nearMisses),
                false);

        if (chain.blocks.empty() && !polpar) {
            refuse(out,
                   "Med de tal kan programmet ikke finde mere. Udfyld fx U, I og cos φ (så findes P₁), og P₂ "
                   "eller η.");
            out.err = notes + out.err;
            return;
        }

        std::vector<std::string> wanted{"P_1",    "eta", "P_tab", "S",   "Q", "I_N", "P_2",
                                        "cosphi", "n_s", "s",     "f_r", "M", "I_st"};
        if (starDelta) wanted.push_back("I_stY");
        const std::vector<std::string> missing = anydir::unknownOf(s.vars, wanted);
        if (!missing.empty()) {
            std::string text = "Kunne ikke findes med de givne tal: " + tool::symbolList(missing) + ".";
            if (!s.vars.count("I_st") && !in.has("k_st"))
                text += " Skriv startstrømsfaktoren k (typisk 5–8) for at få startstrømmen.";
            if (!known(s.vars, {"s", "M", "n_s", "f_r"}) && !in.has("nr"))
                text += " Skriv omdrejningstallet n for at få slip og moment.";
            notes += msg(text, false);
        }

        // Two rules a student can check by hand, each in its own copy so the
        // found values stay as the chain found them.
        if (known(s.vars, {"P_2", "nr"})) {
            std::map<std::string, double> copy = s.vars;
            s.sections.check += hint("Huskereglen M ≈ 9550 · P₂[kW] / n skal give næsten det samme moment:") +
                                evaluateStep("M", parse("9550*(P_2/1000)/nr"), copy, "Nm", s.shown).html;
        }
        if (known(s.vars, {"P_1", "P_2", "P_tab"})) {
            std::map<std::string, double> copy = s.vars;
            s.sections.check += hint("Optaget effekt = afgivet effekt + tab:") +
                                evaluateStep("P_1", parse("P_2+P_tab"), copy, "W", s.shown).html;
        }

        s.sections.results = anydir::knownGrid(motorQuantities(), s.vars, given);
        s.sections.figure = anydir::figureWithFound(motorFigure(anydir::drawn(s.vars, given), threePhase, starDelta));
        s.id = "msheet";
        s.crumb = "Motor";
        s.title = "Udregning af motoren";
        anydir::finishWithNotes(out, s, notes, anydir::found(motorQuantities(), s.vars, given));
    });
}

} // namespace fl
