// Short-circuit currents at the board from the operator's figures at the
// cable cabinet. The two differ in their physics on purpose: Ik max is
// three-phase, one conductor, R and X apart and cold; Ik min is single-phase,
// phase and neutral in series (· 2), resistance only and hot (· k_v).
#include "fl/tools/cable.h"

#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"

#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;

// A current within this of the trip current still trips.
constexpr double kEdge = 1e-9;

const char* const kSinTitle = "sin φ ud fra cos φ (sin φ = √(1 − cos² φ))";

} // namespace

ToolOut shortCircuitMax(const FormMap& form) {
    return runTool("Ik max", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        const std::vector<std::string> keys{"U_N", "Ik_fr", "cosphi_k", "l", "R_l", "X_l"};
        const std::vector<std::string> missing = missingKeys(in, keys);
        if (!missing.empty()) {
            refuse(out, tool::fillIn(missing), missing);
            return;
        }
        const double cosphi = in.get("cosphi_k");
        if (!(cosphi > 0) || cosphi > 1) {
            refuse(out, "cos φ skal ligge mellem 0 og 1.", {"cosphi_k"});
            return;
        }
        if (!refuseNegative(out, in, keys)) return;

        ToolSheet s;
        s.vars = in.numbers;
        s.shown = in.shown;
        addGivenInput(s, in, "U_N", "netspænding", "V");
        addGivenInput(s, in, "Ik_fr", "Ik max ved kabelskabet (3-faset, oplyst i FR)", "A");
        addGivenInput(s, in, "cosphi_k", "cos φ ved kortslutning (oplyst i FR)", "");
        addGivenInput(s, in, "l", "stikledningens længde", "m");
        addGivenInput(s, in, "R_l", "stikledningens modstand pr. km (tabel 13)", "Ω/km");
        addGivenInput(s, in, "X_l", "stikledningens reaktans pr. km (tabel 16/17)", "Ω/km");

        addStepBlock(s, "Nettets impedans ved kabelskabet (Z = U<sub>N</sub> / (√3 · I<sub>k</sub>))", "",
                     {{"Ω", "U_N/(sqrt(3)*Ik_fr)", "Z_net"}});
        addStepBlock(s, kSinTitle, "12", {{"", "sqrt(1-cosphi_k**2)", "sinphi_k"}});
        addStepBlock(s, "Nettets modstand og reaktans (R = Z · cos φ, X = Z · sin φ)", "",
                     {{"Ω", "Z_net*cosphi_k", "R_net"}, {"Ω", "Z_net*sinphi_k", "X_net"}});
        addStepBlock(s, "Stikledningens modstand og reaktans – længden i km gange tabelværdien", "",
                     {{"km", "l/1000", "L"}, {"Ω", "L*R_l", "R_kab"}, {"Ω", "L*X_l", "X_kab"}},
                     hint("Ved en 3-faset kortslutning regnes kun med én leder (der løber ingen strøm tilbage i "
                          "nul)."));
        addStepBlock(s, "Læg modstandene sammen og reaktanserne sammen hver for sig", "",
                     {{"Ω", "R_net+R_kab", "R_sum"}, {"Ω", "X_net+X_kab", "X_sum"}});
        addStepBlock(s, "Ik max i gruppetavlen (I<sub>k,max</sub> = U<sub>N</sub> / (√3 · √(ΣR² + ΣX²)))", "",
                     {{"A", "U_N/(sqrt(3)*sqrt(R_sum**2+X_sum**2))", "Ik_max"}});

        const double ik = s.vars.at("Ik_max"), fr = s.vars.at("Ik_fr");
        const std::string ka = formatValue(ik / 1000, "kA");
        // The service cable only adds impedance, so the board sees less than the cabinet.
        s.sections.check = ik <= fr + kEdge
                               ? "<p class=\"ok\">✓ " + tool::symbolHtml("Ik_max") + " = " + ka +
                                     " er mindre end ved kabelskabet (" + formatValue(fr / 1000, "kA") +
                                     ") – stikledningen begrænser strømmen</p>"
                               : "<p class=\"bad\">✗ " + tool::symbolHtml("Ik_max") + " = " + ka +
                                     " er større end ved kabelskabet – tjek værdierne</p>";
        s.sections.results = "<div class=\"note\">Sikringer og automatsikringer i gruppetavlen skal kunne bryde "
                             "mindst " +
                             ka + " – sammenlign med deres <b>brydeevne</b> (fx 6 kA eller 10 kA).</div>";
        s.id = "ikmaxsheet";
        s.crumb = "Dimensionering · Ik max";
        s.title = "Ik max i gruppetavlen: " + ka;
        s.sections.answer = "<span class=\"big\">" + tool::symbolHtml("Ik_max") + " = " + ka +
                            "</span> <span class=\"crumb\">= " + fmtWithUnit(ik, "A") + "</span>";
        finish(out, s, {{"Ik_max", ik, "A"}});
    });
}

ToolOut shortCircuitMin(const FormMap& form) {
    return runTool("Ik min", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        const std::vector<std::string> keys{"U_F", "I_Nks", "k_fr", "k_v", "l_stik", "R_lstik", "l_grp", "R_lgrp"};
        const std::vector<std::string> missing = missingKeys(in, keys);
        if (!missing.empty()) {
            refuse(out, tool::fillIn(missing), missing);
            return;
        }
        if (!refuseNegative(out, in, {"U_F", "I_Nks", "k_fr", "k_v", "l_stik", "R_lstik", "l_grp", "R_lgrp", "I_Ngrp"}))
            return;
        const bool check = in.get("I_Ngrp") > 0;

        ToolSheet s;
        s.vars = in.numbers;
        s.shown = in.shown;
        addGivenInput(s, in, "U_F", "fasespænding", "V");
        addGivenInput(s, in, "I_Nks", "sikringen i kabelskabet", "A");
        addGivenInput(s, in, "k_fr", "Ik min ved kabelskabet er k · I<sub>N</sub> (FR: 5)", "");
        addGivenInput(s, in, "k_v", "varmeudviklingsfaktor ved kortslutning (50 % = 1,5)", "");
        addGivenInput(s, in, "l_stik", "stikledningens længde", "m");
        addGivenInput(s, in, "R_lstik", "stikledningens modstand pr. km", "Ω/km");
        addGivenInput(s, in, "l_grp", "gruppeledningens længde", "m");
        addGivenInput(s, in, "R_lgrp", "gruppeledningens modstand pr. km", "Ω/km");
        if (check) addGivenInput(s, in, "I_Ngrp", "gruppeafbryderens mærkestrøm", "A");

        addStepBlock(s, "Ik min ved kabelskabet (I<sub>k,min</sub> = k · I<sub>N</sub>)", "",
                     {{"A", "k_fr*I_Nks", "Ik_net"}});
        addStepBlock(s, "Nettets modstand (R<sub>net</sub> = U<sub>F</sub> / I<sub>k,min</sub>)", "",
                     {{"Ω", "U_F/Ik_net", "R_netmin"}},
                     hint("Ved den mindste kortslutningsstrøm regnes kun med modstanden – fase og nul i serie."));
        addStepBlock(s,
                     "Stikledningens modstand – frem og tilbage (· 2) og varm efter kortslutningen (· " +
                         fmtNumber(in.get("k_v"), 5) + ")",
                     "", {{"Ω", "l_stik/1000*R_lstik*2*k_v", "R_stik"}});
        addStepBlock(s,
                     "Den samlede modstand frem til gruppetavlen (R<sub>tavle</sub> = R<sub>net</sub> + "
                     "R<sub>stik</sub>)",
                     "", {{"Ω", "R_netmin+R_stik", "R_tavle"}});
        addStepBlock(s, "Ik min i gruppetavlen (I<sub>k,min</sub> = U<sub>F</sub> / R<sub>tavle</sub>)", "",
                     {{"A", "U_F/R_tavle", "Ik_gt"}});
        addStepBlock(s, "Gruppeledningens modstand – frem og tilbage og varm", "",
                     {{"Ω", "l_grp/1000*R_lgrp*2*k_v", "R_grp"}});
        addStepBlock(s,
                     "Ik min ved brugsgenstanden (I<sub>k,min</sub> = U<sub>F</sub> / (R<sub>tavle</sub> + "
                     "R<sub>grp</sub>))",
                     "", {{"A", "U_F/(R_tavle+R_grp)", "Ik_bg"}});

        const double bg = s.vars.at("Ik_bg"), gt = s.vars.at("Ik_gt");
        if (check) {
            // The page puts the characteristic's factor in; B (5) when it didn't.
            if (!in.has("k_a")) s.vars["k_a"] = 5;
            const StepOutcome trip = evaluateStep("I_a", parse("k_a*I_Ngrp"), s.vars, "A", s.shown);
            const std::string a = formatValue(bg, "A"), b = formatValue(trip.value, "A");
            s.sections.check =
                hint("Gruppeafbryderen skal slå fra med det samme (magnetisk), når der er kortslutning ved "
                     "brugsgenstanden. Udløsestrømmen er k · I<sub>N</sub> (B: 5, C: 10, D: 20):") +
                trip.html +
                (bg >= trip.value - kEdge
                     ? "<p class=\"ok\">✓ " + a + " er større end " + b + " – afbryderen slår fra</p>"
                     : "<p class=\"bad\">✗ " + a + " er mindre end " + b +
                           " – afbryderen slår ikke sikkert fra. Brug et større tværsnit, en kortere gruppe eller en "
                           "anden karakteristik.</p>");
        }
        s.id = "ikminsheet";
        s.crumb = "Dimensionering · Ik min";
        s.title = "Ik min ved brugsgenstanden: " + fmtWithUnit(bg, "A");
        s.sections.answer = "<span class=\"big\">" + tool::symbolHtml("Ik_bg") + " = " + fmtWithUnit(bg, "A") +
                            "</span> <span class=\"crumb\">" + tool::symbolHtml("Ik_gt") + " = " + fmtWithUnit(gt, "A") +
                            " i gruppetavlen</span>";
        finish(out, s, {{"Ik_bg", bg, "A"}, {"Ik_gt", gt, "A"}});
    });
}

} // namespace fl
