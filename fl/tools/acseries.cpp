// The series RLC circuit: reactances, impedance, current, the voltage over
// each part, the phase, the three powers and the resonance frequency, each
// as a worked block with its page in the class's book.
#include "fl/tools/ac.h"

#include "fl/expr/numbers.h"
#include "fl/fig/phasor.h"
#include "fl/fig/schematic.h"
#include "fl/fig/triangles.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;

// The same as the circuit solver's, so that both pages agree to the last digit.
constexpr double kTwoPi = 6.283185307179586;

// Coils and capacitors beyond these are typing slips (F for µF, H for mH).
constexpr double kLargeC = 0.01;
constexpr double kLargeL = 20;

// runTool's frame, with the words the alternating-current tool uses: its
// usual failure is an impedance of 0.
ToolOut runAc(const std::function<void(ToolOut&)>& body) {
    ToolOut out;
    out.title = "Vekselstrømskreds";
    try {
        body(out);
    } catch (const std::exception& e) {
        out = ToolOut{};
        out.title = "Vekselstrømskreds";
        out.err = tool::msg("Noget passer ikke – tjek værdierne (Z må ikke blive 0). <span class=\"crumb\">" +
                                htmlEscape(e.what()) + "</span>",
                            true);
    }
    return out;
}

// Z as a formula of the parts that are there.
std::string impedanceFormula(bool r, bool l, bool c) {
    const std::string x = l && c ? "(XL-XC)" : l ? "XL" : "XC";
    if (!l && !c) return "R";
    if (!r) return l && c ? "abs(XL-XC)" : x;
    return "sqrt(R**2+" + x + "**2)";
}

std::string impedanceTitle(bool r, bool l, bool c) {
    if (r && l && c) return "Impedansen: Z = √(R² + (X<sub>L</sub> − X<sub>C</sub>)²)";
    if (r && l) return "Impedansen: Z = √(R² + X<sub>L</sub>²)";
    if (r && c) return "Impedansen: Z = √(R² + X<sub>C</sub>²)";
    if (l && c) return "Impedansen: Z = |X<sub>L</sub> − X<sub>C</sub>|";
    return "Impedansen";
}

std::string impedancePage(bool r, bool l, bool c) {
    if (r && l && c) return "20";
    if (r && l) return "12";
    if (r && c) return "17";
    return "";
}

// A large C or L is most likely F typed for µF, H for mH.
std::string slipNotes(const ToolInputs& in) {
    std::string out;
    if (in.get("C") > kLargeC)
        out += "<div class=\"note\"><b>C = " + in.shown.at("C") +
               " F</b> er urealistisk stort – kondensatorer er normalt på nogle µF (mikrofarad). Mente du " +
               in.shown.at("C") + " µF? Skriv det som " + in.shown.at("C") + "u.</div>";
    if (in.get("L") > kLargeL)
        out += "<div class=\"note\"><b>L = " + in.shown.at("L") +
               " H</b> er urealistisk stort – spoler er normalt højst nogle få henry. Mente du " +
               in.shown.at("L") + " mH? Skriv det som " + in.shown.at("L") + "m.</div>";
    return out;
}

// R along the foot, X upright (down when capacitive), Z the hypotenuse.
FigureOut impedanceTriangle(double r, double xl, double xc, bool l, bool c) {
    RightTriangle t;
    t.foot = r;
    t.upright = xl - xc;
    const std::string x = l && c ? (xl >= xc ? "X<sub>L</sub> − X<sub>C</sub>" : "X<sub>C</sub> − X<sub>L</sub>")
                          : l    ? "X<sub>L</sub>"
                                 : "X<sub>C</sub>";
    t.footText = "R = " + quantityText(r, "Ω");
    t.uprightText = x + " = " + quantityText(std::fabs(xl - xc), "Ω");
    t.hypText = "Z = " + quantityText(std::hypot(r, xl - xc), "Ω");
    t.title = "Modstandstrekant";
    return rightTriangle(t);
}

} // namespace

FigureOut seriesPhasors(const SeriesRlcValues& v, bool hasR, bool hasL, bool hasC) {
    return drawVectors(seriesPhasorScene(v, hasR, hasL, hasC));
}

VectorScene seriesPhasorScene(const SeriesRlcValues& v, bool hasR, bool hasL, bool hasC) {
    if (!(v.I > 0) || !std::isfinite(v.I) || !std::isfinite(v.U)) return {};
    // Relative to the current: U_R along it, U_L a quarter turn ahead, U_C behind.
    std::vector<std::pair<std::string, Pt>> parts;
    if (hasR) parts.push_back({"U<sub>R</sub>", {v.UR, 0}});
    if (hasL) parts.push_back({"U<sub>L</sub>", {0, v.UL}});
    if (hasC) parts.push_back({"U<sub>C</sub>", {0, -v.UC}});
    if (parts.empty()) return {};
    const Pt sum{hasR ? v.UR : 0, (hasL ? v.UL : 0) - (hasC ? v.UC : 0)};
    double longest = std::hypot(sum.x, sum.y);
    for (const auto& [n, p] : parts)
        longest = std::max(longest, std::hypot(p.x, p.y));
    VectorScene sc;
    // The current only gives the direction; it reaches past the others so that its head shows.
    sc.vectors.push_back({{0, 0}, {longest * 1.15, 0}, "ref", "I", quantityText(v.I, "A")});
    for (const auto& [n, p] : parts)
        sc.vectors.push_back({{0, 0}, p, "", n, quantityText(std::hypot(p.x, p.y), "V")});
    Pt at = parts.front().second;
    for (size_t k = 1; k < parts.size(); ++k) {
        const Pt next{at.x + parts[k].second.x, at.y + parts[k].second.y};
        sc.vectors.push_back({at, next, "", {}, {}, true});
        at = next;
    }
    if (parts.size() > 1) {
        sc.vectors.push_back({{0, 0}, sum, "res", "U", quantityText(v.U, "V")});
        sc.reference = 0;
        sc.result = static_cast<int>(sc.vectors.size()) - 1;
        if (std::fabs(v.phi) > 0.05) sc.angleText = "φ = " + fmtNumber(std::fabs(v.phi), 3) + "°";
    }
    sc.caption = "Vektordiagram for spændingerne: strømmen I ligger vandret. Spændingen over en modstand er i fase "
                 "med I, over en spole 90° før (opad), over en kondensator 90° efter (nedad). Tilsammen giver de "
                 "kildespændingen U (blå).";
    return sc;
}

std::string reactiveWord(double X, double Z) {
    if (!(std::fabs(X) > 1e-12 * std::max(std::fabs(Z), 1.0))) return "ohmsk";
    return X > 0 ? "induktiv" : "kapacitiv";
}

SeriesRlcValues seriesRlc(const SeriesRlc& in) {
    SeriesRlcValues v;
    v.omega = kTwoPi * in.f;
    if (in.L > 0) v.XL = v.omega * in.L;
    if (std::isfinite(in.C)) v.XC = 1 / (v.omega * in.C);
    const double r = std::isfinite(in.R) ? in.R : 0.0;
    v.X = v.XL - v.XC;
    v.Z = std::hypot(r, v.X);
    if (std::isfinite(in.U)) {
        v.U = in.U;
        v.I = in.U / v.Z;
    } else {
        v.I = in.I;
        v.U = in.I * v.Z;
    }
    v.UR = v.I * r;
    v.UL = v.I * v.XL;
    v.UC = v.I * v.XC;
    v.phi = std::atan2(v.X, r) * 180 / M_PI;
    v.cosphi = r / v.Z;
    v.S = v.U * v.I;
    v.P = v.S * v.cosphi;
    v.Q = v.S * v.X / v.Z;
    if (in.L > 0 && in.C > 0) v.f0 = 1 / (kTwoPi * std::sqrt(in.L * in.C));
    return v;
}

ToolOut acSeries(const FormMap& form, std::map<std::string, double>* values) {
    return runAc([&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        const bool r = in.has("R"), l = in.has("L") && in.get("L") != 0, c = in.has("C");
        if (!in.has("R") && !in.has("L") && !c) {
            refuse(out, "Udfyld mindst én af R, L og C – et felt, der står tomt, er en del, der ikke er med.",
                   {"R", "L", "C"});
            return;
        }
        if (!in.has("f")) {
            refuse(out, "Udfyld frekvensen f (normalt 50 Hz).", {"f"});
            return;
        }
        if (in.has("U") && in.has("I")) {
            refuse(out, "Giv enten spændingen U eller strømmen I – den anden regnes ud.", {"U", "I"});
            return;
        }
        if (!in.has("U") && !in.has("I")) {
            refuse(out, "Udfyld spændingen U eller strømmen I.", {"U", "I"});
            return;
        }
        if (!refuseNegative(out, in, {"R", "L", "C", "U", "I"})) return;
        if (!(in.get("f") > 0)) {
            refuse(out, "Frekvensen skal være større end 0 Hz – ved 0 Hz (jævnstrøm) spærrer kondensatoren.",
                   {"f"});
            return;
        }
        if (c && in.get("C") == 0) {
            refuse(out,
                   "C = 0 F giver en uendelig stor X<sub>C</sub>. Lad feltet stå tomt, hvis der ingen "
                   "kondensator "
                   "er.",
                   {"C"});
            return;
        }
        const bool givenU = in.has("U");

        ToolSheet s;
        s.vars = in.numbers;
        s.shown = in.shown;
        if (in.has("R")) addGivenInput(s, in, "R", "modstand", "Ω");
        if (in.has("L")) addGivenInput(s, in, "L", "spolens induktans", "H");
        if (c) addGivenInput(s, in, "C", "kondensatorens kapacitet", "F");
        addGivenInput(s, in, "f", "frekvens", "Hz");
        addGivenInput(s, in, givenU ? "U" : "I", givenU ? "spænding over hele kredsen" : "strøm i kredsen",
                      givenU ? "V" : "A");
        s.sections.given.push_back(hint("R, L og C sidder i serie: den samme strøm løber gennem dem alle. Et "
                                        "tomt felt er en del, der ikke "
                                        "er med."));
        if (!l) s.vars["XL"] = 0;
        if (!c) s.vars["XC"] = 0;

        if (l)
            addStepBlock(s, "Spolens reaktans: X<sub>L</sub> = 2 · π · f · L", "11",
                         {{"Ω", "2*PI*f*L", "XL"}});
        if (c)
            addStepBlock(s, "Kondensatorens reaktans: X<sub>C</sub> = 1 / (2 · π · f · C)", "15",
                         {{"Ω", "1/(2*PI*f*C)", "XC"}});
        addStepBlock(
            s, impedanceTitle(r, l, c), impedancePage(r, l, c), {{"Ω", impedanceFormula(r, l, c), "Z"}},
            l && c ? hint("X<sub>L</sub> og X<sub>C</sub> trækkes fra hinanden: spændingerne over spolen og "
                          "kondensatoren er i modfase og ophæver hinanden delvis.")
                   : std::string());
        if (givenU)
            addStepBlock(s, "Strømmen (Ohms lov for vekselstrøm): I = U / Z", "", {{"A", "U/Z", "I"}});
        else
            addStepBlock(s, "Spændingen (Ohms lov for vekselstrøm): U = I · Z", "", {{"V", "I*Z", "U"}});

        std::vector<CalcStep> parts;
        if (r) parts.push_back({"V", "I*R", "UR"});
        if (l) parts.push_back({"V", "I*XL", "UL"});
        if (c) parts.push_back({"V", "I*XC", "UC"});
        addStepBlock(s, "Spændingen over hver del",
                     l   ? "12"
                     : c ? "15"
                         : "",
                     parts, hint("Den samme strøm I løber gennem alle delene."));
        const double u = s.vars.at("U");
        const double ul = l ? s.vars.at("UL") : 0, uc = c ? s.vars.at("UC") : 0;
        if (l && c && std::max(ul, uc) > u)
            s.sections.steps.back().html +=
                hint("Spændingen over " + std::string(ul > uc ? "spolen" : "kondensatoren") +
                     " er større end U. Det er ingen fejl: delspændingerne lægges sammen som vektorer, og "
                     "U<sub>L</sub> "
                     "og U<sub>C</sub> peger modsat hinanden.");

        const double xl = s.vars.at("XL"), xc = s.vars.at("XC"), z = s.vars.at("Z");
        const std::string word = reactiveWord(xl - xc, z);
        const std::string lag =
            word == "induktiv"    ? "X<sub>L</sub> er størst: kredsen er induktiv, og strømmen er "
                                    "efter spændingen."
            : word == "kapacitiv" ? "X<sub>C</sub> er størst: kredsen er kapacitiv, og strømmen er "
                                    "før spændingen."
                                  : "Reaktanserne ophæver hinanden: kredsen er ohmsk, og strøm og "
                                    "spænding er i fase.";
        if (r) {
            addStepBlock(s, "Faseforskydningen: cos φ = R / Z", "12",
                         {{"", "R/Z", "cosphi"}, {"°", "acos(cosphi)", "phi"}}, hint(lag));
        } else {
            s.vars["cosphi"] = 0;
            s.vars["phi"] = 90;
            s.sections.steps.push_back(
                {"Faseforskydningen", "12",
                 hint("Uden modstand er cos φ = R / Z = 0 og φ = 90°: kredsen bruger ingen aktiv effekt. " +
                      lag)});
        }
        addStepBlock(
            s, "Effekterne", "13",
            {{"W", "U*I*cosphi", "P"}, {"VAr", "U*I*sin(phi)", "Q"}, {"VA", "U*I", "S"}},
            hint("P er den aktive effekt, som bliver til varme i R. Q pendler frem og tilbage mellem kilden "
                 "og spolens og kondensatorens felter. S = U · I er det, nettet skal levere."));
        if (l && c) {
            addStepBlock(
                s, "Resonansfrekvensen: f<sub>r</sub> = 1 / (2 · π · √(L · C))", "Parallel s. 4 og 8",
                {{"Hz", "1/(2*PI*sqrt(L*C))", "f_r"}},
                hint("Ved f<sub>r</sub> er X<sub>L</sub> = X<sub>C</sub>: Z er mindst (Z = R) og strømmen "
                     "størst."));
        }

        const double i = s.vars.at("I"), p = s.vars.at("P"), q = s.vars.at("Q"), sa = s.vars.at("S");
        const double ur = r ? s.vars.at("UR") : 0;
        s.sections.check =
            "<p>√(U<sub>R</sub>² + (U<sub>L</sub> − U<sub>C</sub>)²) = " +
            formatValue(std::hypot(ur, ul - uc), "V") + " = U <span class=\"ok\">✓</span></p>" +
            "<p>√(P² + Q²) = " + formatValue(std::hypot(p, q), "VA") + " = S <span class=\"ok\">✓</span></p>";

        std::vector<KvItem> grid;
        if (l) grid.push_back({tool::symbolHtml("XL"), formatValue(xl, "Ω")});
        if (c) grid.push_back({tool::symbolHtml("XC"), formatValue(xc, "Ω")});
        grid.push_back({"Z", formatValue(z, "Ω"), true});
        grid.push_back({"I", formatValue(i, "A"), givenU});
        grid.push_back({"U", formatValue(u, "V"), !givenU});
        if (r) grid.push_back({tool::symbolHtml("UR"), formatValue(ur, "V")});
        if (l) grid.push_back({tool::symbolHtml("UL"), formatValue(ul, "V")});
        if (c) grid.push_back({tool::symbolHtml("UC"), formatValue(uc, "V")});
        grid.push_back({"φ", fmtWithUnit(s.vars.at("phi"), "°") + " " + word, true});
        grid.push_back({"cos φ", fmtNumber(s.vars.at("cosphi"))});
        grid.push_back({"P", formatValue(p, "W")});
        grid.push_back({"Q", formatValue(q, "VAr")});
        grid.push_back({"S", formatValue(sa, "VA")});
        if (l && c) grid.push_back({tool::symbolHtml("f_r"), formatValue(s.vars.at("f_r"), "Hz")});
        s.sections.results = kvGrid(grid, 3) + slipNotes(in);
        SeriesRlcValues drawn;
        drawn.I = i, drawn.U = u, drawn.UR = ur, drawn.UL = ul, drawn.UC = uc;
        drawn.phi = s.vars.at("phi");
        s.sections.figure = figureMarkup(seriesPhasors(drawn, r, l, c)) +
                            (r ? figureMarkup(impedanceTriangle(s.vars.at("R"), xl, xc, l, c)) : std::string());

        s.id = "acsheet";
        s.crumb = "Vekselstrømskreds · R, L og C i serie";
        s.title = "Z = " + formatValue(z, "Ω") + ", " +
                  (givenU ? "I = " + formatValue(i, "A") : "U = " + formatValue(u, "V")) +
                  ", φ = " + fmtWithUnit(s.vars.at("phi"), "°") + " " + word;
        s.sections.answer = "<span class=\"big\">Z = " + formatValue(z, "Ω") + " · " +
                            (givenU ? "I = " + formatValue(i, "A") : "U = " + formatValue(u, "V")) +
                            "</span> <span class=\"crumb\">φ = " + fmtWithUnit(s.vars.at("phi"), "°") + " " +
                            word + " · P = " + formatValue(p, "W") + "</span>";
        if (values) *values = s.vars;
        finish(out, s,
               {{"Z", z, "Ω"},
                givenU ? RecentValue{"I", i, "A"} : RecentValue{"U", u, "V"},
                {"phi", s.vars.at("phi"), "°"},
                {"P", p, "W"}});
    });
}

} // namespace fl
