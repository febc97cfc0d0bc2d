// The voltage drop of a chosen cable with resistance and reactance, in the
// form of the class's dimensioning sheet, against the limits of table G.52.1.
#include "fl/tools/cable.h"

#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;

// A drop within this of a limit still passes it.
constexpr double kEdge = 1e-9;

struct Limit {
    const char* installation;
    double lighting;
    double other;
};

// Table G.52.1, in % of the nominal voltage.
constexpr Limit kLimits[] = {
    {"A – forsynet direkte fra offentligt forsyningssystem", 3, 5},
    {"B – forsynet fra privat lavspændingsforsyning", 6, 8},
};

std::string limitCell(double limit, double dup) {
    return "<td>" + formatValue(limit, "%") + " " +
           (dup <= limit + kEdge ? "<span class=\"ok\">✓</span>" : "<span class=\"bad\">✗</span>") + "</td>";
}

std::string limitTable(double dup) {
    std::string out = "<h4>Højst tilladte spændingsfald</h4><div class=\"tbl\"><table><tr><th "
                      "style=\"text-align:left\">Installationstype (tabel G.52.1)</th><th>Belysning</th><th>Anden "
                      "anvendelse</th></tr>";
    for (const Limit& l : kLimits)
        out += std::string("<tr><td style=\"text-align:left\">") + l.installation + "</td>" + limitCell(l.lighting, dup) +
               limitCell(l.other, dup) + "</tr>";
    return out + "</table></div>" +
           hint("✓ betyder, at " + formatValue(dup, "%") +
                " er inden for grænsen. Når hovedledningssystemet er længere end 100 m, må grænserne øges med 0,005 % "
                "pr. meter over 100 m, dog højst med 0,5 %.");
}

} // namespace

ToolOut voltageDrop(const FormMap& form, bool threePhase) {
    const std::string uv = threePhase ? "U_N" : "U_F";
    return runTool(threePhase ? "Spaendingsfald 3-faset" : "Spaendingsfald 1-faset", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        const std::vector<std::string> missing = missingKeys(in, {uv, "I_B", "l", "R_l", "X_l"});
        if (!missing.empty()) {
            refuse(out, tool::fillIn(missing), missing);
            return;
        }
        if (!refuseNegative(out, in, {uv, "I_B", "l", "R_l", "X_l"})) return;

        ToolSheet s;
        s.vars = in.numbers;
        s.shown = in.shown;
        // A factor left out, or one not above 0, counts as 1; the given row
        // still shows what was typed, but the working uses the 1.
        for (const char* k : {"sf", "uf"})
            if (!(in.get(k) > 0)) {
                s.vars[k] = 1;
                s.shown.erase(k);
            }
        if (!in.has("cosphi")) s.vars["cosphi"] = 1;
        const double cosphi = s.vars.at("cosphi");
        if (!(cosphi > 0) || cosphi > 1) {
            refuse(out, "cos φ skal ligge mellem 0 og 1.", {"cosphi"});
            return;
        }

        addGivenInput(s, in, uv, threePhase ? "netspænding" : "fasespænding", "V");
        addGivenInput(s, in, "I_B", "belastningsstrøm (brug sikringens størrelse, hvis I dimensionerer efter den)",
                      "A");
        addGivenInput(s, in, "sf", "samtidighedsfaktor", "", "1");
        addGivenInput(s, in, "uf", "udvidelsesfaktor", "", "1");
        addGivenInput(s, in, "l", "kabellængde (enkelt vej)", "m");
        addGivenInput(s, in, "cosphi", "effektfaktor", "", "1");
        addGivenInput(s, in, "R_l", "kablets modstand pr. km (tabel 13)", "Ω/km");
        addGivenInput(s, in, "X_l", "kablets reaktans pr. km (tabel 16/17)", "Ω/km");
        s.sections.given.push_back(hint("Samtidigheds- og udvidelsesfaktoren er 1, hvis de ikke bruges."));

        addStepBlock(s, "Dimensioneringsstrømmen (I<sub>B,dim</sub> = I<sub>B</sub> · sf · uf)", "",
                     {{"A", "I_B*sf*uf", "I_Bdim"}});
        addStepBlock(s, "Længden i km – tabellerne er i Ω pr. km", "", {{"km", "l/1000", "L"}});
        addStepBlock(s, "sin φ ud fra cos φ (sin φ = √(1 − cos² φ))", "12", {{"", "sqrt(1-cosphi**2)", "sinphi"}});
        std::string dropKey;
        if (threePhase) {
            addStepBlock(s,
                         "Spændingsfaldet mellem to faser (ΔU<sub>net</sub> = √3 · I<sub>B,dim</sub> · L · "
                         "(R<sub>l</sub> · cos φ + X<sub>l</sub> · sin φ))",
                         "", {{"V", "sqrt(3)*I_Bdim*L*(R_l*cosphi+X_l*sinphi)", "dU_n"}},
                         hint("Ved symmetrisk 3-faset belastning løber der ingen strøm i nul. Spændingsfaldet "
                              "mellem to faser er √3 gange faldet i én leder."));
            addStepBlock(s,
                         "Spændingsfaldet i procent af netspændingen (ΔU% = ΔU<sub>net</sub> · 100 / "
                         "U<sub>N</sub>)",
                         "6", {{"%", "dU_n*100/U_N", "dUp"}});
            dropKey = "dU_n";
        } else {
            addStepBlock(s,
                         "Spændingsfaldet i fasen (ΔU<sub>fase</sub> = I<sub>B,dim</sub> · L · (R<sub>l</sub> · "
                         "cos φ + X<sub>l</sub> · sin φ))",
                         "", {{"V", "I_Bdim*L*(R_l*cosphi+X_l*sinphi)", "dU_f"}});
            addStepBlock(s,
                         "Det totale spændingsfald – strømmen løber frem i fasen og tilbage i nul "
                         "(ΔU<sub>fase,tot</sub> = ΔU<sub>fase</sub> · 2)",
                         "", {{"V", "dU_f*2", "dU_ft"}});
            addStepBlock(s,
                         "Spændingsfaldet i procent af fasespændingen (ΔU% = ΔU<sub>fase,tot</sub> · 100 / "
                         "U<sub>F</sub>)",
                         "6", {{"%", "dU_ft*100/U_F", "dUp"}});
            dropKey = "dU_ft";
        }

        const double dup = s.vars.at("dUp"), drop = s.vars.at(dropKey);
        s.sections.results = limitTable(dup) +
                             "<div class=\"note\">Husk også at tjekke kablets <b>strømværdi</b> og beskyttelsen for "
                             "den aktuelle installationsmetode. Denne beregning ser kun på spændingsfaldet.</div>";
        s.id = threePhase ? "sf3sheet" : "sf1sheet";
        s.crumb = std::string("Dimensionering · spændingsfald ") + (threePhase ? "3-faset" : "1-faset");
        s.title = "Spændingsfald " + formatValue(dup, "%") + ": " + formatValue(drop, "V");
        s.sections.answer = "<span class=\"big\">ΔU% = " + formatValue(dup, "%") + "</span> <span class=\"crumb\">" +
                            tool::symbolHtml(dropKey) + " = " + formatValue(drop, "V") + "</span>";
        finish(out, s, {{"dUp", dup, "%"}, {dropKey, drop, "V"}});
    });
}

} // namespace fl
