// Cable sizing by voltage drop alone: the largest conductor resistance the
// limit allows, the cross-section that gives it, and the first standard size
// at or above that. Current ratings and protection are the user's tables.
#include "fl/tools/cable.h"

#include "fl/expr/numbers.h"
#include "fl/tools/tables.h"

#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;

// A computed section within this of a standard one takes that one.
constexpr double kSnap = 1e-9;

// The first standard section not below `qmin`; −1 when even 300 mm² is too small.
int chooseSection(double qmin) {
    const std::vector<double>& list = crossSections();
    for (size_t i = 0; i < list.size(); ++i)
        if (list[i] >= qmin - kSnap) return static_cast<int>(i);
    return -1;
}

std::string sectionLine(int chosen) {
    std::string out = "Standardtværsnit: ";
    const std::vector<double>& list = crossSections();
    for (size_t i = 0; i < list.size(); ++i) {
        if (i > 0) out += " · ";
        const std::string s = fmtNumber(list[i]);
        out += static_cast<int>(i) == chosen ? "<b class=\"ok\">" + s + "</b>" : s;
    }
    return hint(out + " mm²");
}

// Up to seven sizes around the chosen one (two below it where there are),
// each with its drop against the limit; without prefixes, so a column
// compares at a glance.
std::string comparison(const ToolSheet& s, int chosen, bool threePhase, const std::string& uv) {
    const double rho = s.vars.at("rho"), l = s.vars.at("l"), i = s.vars.at("I"), u = s.vars.at(uv),
                 limit = s.vars.at("dUpmax");
    const std::vector<double>& list = crossSections();
    std::string out = "<div class=\"tbl\"><table><tr><th>Tværsnit</th><th>" + tool::symbolHtml("RL") +
                      (threePhase ? " pr. leder" : " (frem + tilbage)") + "</th><th>ΔU</th><th>ΔU%</th><th>Grænse " +
                      formatValue(limit, "%") + "</th></tr>";
    const size_t first = static_cast<size_t>(std::max(chosen - 2, 0));
    for (size_t k = first; k < std::min(first + 7, list.size()); ++k) {
        // R = ρ · l / q;  ΔU = (√3) · I · R;  ΔU% = ΔU · 100 / U
        const double r = rho * l / list[k];
        const double du = (threePhase ? std::sqrt(3.0) : 1.0) * i * r;
        const double dup = du * 100 / u;
        const bool fits = dup <= limit + kSnap;
        out += std::string("<tr") + (static_cast<int>(k) == chosen ? " class=\"calc\"" : "") + "><td>" +
               fmtNumber(list[k]) + " mm²</td><td>" + fmtWithUnit(r, "Ω") + "</td><td>" + fmtWithUnit(du, "V") +
               "</td><td>" + fmtWithUnit(dup, "%") + "</td><td>" +
               (fits ? "<span class=\"ok\">✓</span>" : "<span class=\"bad\">✗ for stort fald</span>") +
               "</td></tr>";
    }
    return out + "</table></div>";
}

} // namespace

ToolOut dimensionCable(const FormMap& form, bool threePhase, double rho) {
    return runTool("Kabeldimensionering", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        const bool hasI = in.has("I");
        std::vector<std::string> missing = missingKeys(in, {"U", "I", "P", "Lk", "dUpmax"});
        // I or P will do; only both absent is a gap.
        if (hasI || in.has("P")) std::erase_if(missing, [](const std::string& k) { return k == "I" || k == "P"; });
        if (!missing.empty()) {
            refuse(out, "Udfyld spændingen, kabellængden, det største spændingsfald og enten I eller P.", missing);
            return;
        }
        if (!refuseNegative(out, in, {"U", "I", "P", "Lk", "dUpmax"})) return;
        const bool hasCos = in.has("cosphi");
        const double cosphi = hasCos ? in.get("cosphi") : 1.0;
        if (!hasI && (!(cosphi > 0) || cosphi > 1)) {
            refuse(out, "cos φ skal ligge mellem 0 og 1.", {"cosphi"});
            return;
        }

        // The one field U is U_N in a three-phase system.
        const std::string uv = threePhase ? "U_N" : "U";
        ToolSheet s;
        s.vars = {{"Lk", in.get("Lk")}, {"dUpmax", in.get("dUpmax")}, {"rho", rho}, {"cosphi", cosphi},
                  {uv, in.get("U")}};
        s.shown = in.shown;
        s.shown[uv] = in.shown.at("U");
        if (hasI)
            s.vars["I"] = in.get("I");
        else
            s.vars["P"] = in.get("P");

        addGivenInput(s, in, "U", threePhase ? "netspænding" : "spænding", "V", {}, uv);
        addGivenInput(s, in, "Lk", "kabellængde (enkelt vej)", "m");
        addGivenInput(s, in, "dUpmax", "største tilladte spændingsfald", "%");
        const bool copper = std::fabs(rho - kRhoCopper) < 1e-12;
        s.sections.given.push_back(tool::symbolHtml("rho") + " = " + fmtNumber(rho) + " Ω·mm²/m <span class=\"crumb\">– " +
                                   (copper ? "kobber" : "aluminium") + "</span>");
        if (hasI) {
            addGivenInput(s, in, "I", "belastningsstrøm", "A");
        } else {
            addGivenInput(s, in, "P", "effekt", "W");
            addGivenInput(s, in, "cosphi", "effektfaktor", "", "1");
        }

        if (!hasI)
            addStepBlock(s, "Strømmen ud fra effekten", threePhase ? kYdSheet : "13",
                         {{"A", threePhase ? "P/(U_N*sqrt(3)*cosphi)" : "P/(U*cosphi)", "I"}});
        addStepBlock(s, "Største tilladte spændingsfald i volt", "6", {{"V", uv + "*dUpmax/100", "dUmax"}});
        if (threePhase) {
            addStepBlock(s, "Lederlængden – ved symmetrisk belastning regnes med én leder", "", {{"m", "Lk", "l"}},
                         hint("I et symmetrisk 3-faset system løber der ingen strøm i nul, og spændingsfaldet mellem "
                              "to faser er ΔU = √3 · I · R<sub>L</sub>, hvor R<sub>L</sub> er modstanden i én leder."));
            addStepBlock(s, "Største tilladte modstand pr. leder (ΔU = √3 · I · R<sub>L</sub>)", "",
                         {{"Ω", "dUmax/(sqrt(3)*I)", "RLmax"}});
        } else {
            addStepBlock(s, "Lederlængden – strømmen løber frem og tilbage, så l = 2 × kabellængden", "6",
                         {{"m", "2*Lk", "l"}});
            addStepBlock(s, "Største tilladte ledningsmodstand (ΔU = I · R<sub>L</sub>)", "6",
                         {{"Ω", "dUmax/I", "RLmax"}});
        }
        addStepBlock(s, "Mindste tværsnit (R<sub>L</sub> = ρ · l / q, isoleret: q = ρ · l / R<sub>L</sub>)", "6",
                     {{"mm²", "rho*l/RLmax", "qmin"}});

        const double qmin = s.vars.at("qmin");
        const int chosen = chooseSection(qmin);
        if (chosen < 0) {
            refuse(out,
                   "Der skal bruges mindst " + formatValue(qmin, "mm²") +
                       " – det er større end standardkablerne her (300 mm²). Overvej parallelle kabler eller en "
                       "kortere/højere spænding.",
                   {"dUpmax"});
            return;
        }
        const double q = crossSections()[static_cast<size_t>(chosen)];
        s.vars["q"] = q;
        s.sections.steps.push_back(
            {"Vælg det nærmeste standardtværsnit, der er mindst " + tool::symbolHtml("qmin"), "",
             sectionLine(chosen) + eqTable({{tool::symbolHtml("q"), "<b>" + formatValue(q, "mm²") + "</b>",
                                             "det første, der er ≥ " + formatValue(qmin, "mm²"), false}})});
        addStepBlock(s, "Kontrol – spændingsfaldet med det valgte kabel", "6",
                     {{"Ω", "rho*l/q", "RL"},
                      {"V", threePhase ? "sqrt(3)*I*RL" : "I*RL", "dU"},
                      {"%", "dU*100/" + uv, "dUp"}});

        const double dup = s.vars.at("dUp"), limit = s.vars.at("dUpmax");
        // Cannot normally fail, since q was chosen to fit; it stays as a guard.
        s.sections.check = dup <= limit + kSnap ? "<p class=\"ok\">✓ " + formatValue(dup, "%") +
                                                      " er under grænsen på " + formatValue(limit, "%") + "</p>"
                                                : "<p class=\"bad\">✗ Over grænsen</p>";
        s.sections.results =
            comparison(s, chosen, threePhase, uv) +
            "<div class=\"note\">Husk også at tjekke kablets <b>strømværdi (belastningsevne)</b> og beskyttelsen i "
            "jeres tabeller for den aktuelle installationsmetode – det er ikke med i denne beregning, som kun ser på "
            "spændingsfaldet.</div>";
        s.id = "kbsheet";
        s.crumb = std::string("Kabeldimensionering · ") + (threePhase ? "3-faset" : "1-faset");
        s.title = "Kabel: " + fmtNumber(q) + " mm² " + (copper ? "kobber" : "aluminium");
        s.sections.answer = "<span class=\"big\">" + tool::symbolHtml("q") + " = " + formatValue(q, "mm²") +
                            "</span> <span class=\"crumb\">spændingsfald " + formatValue(dup, "%") + " (grænse " +
                            formatValue(limit, "%") + ")</span>";
        finish(out, s, {{"q", q, "mm²"}});
    });
}

} // namespace fl
