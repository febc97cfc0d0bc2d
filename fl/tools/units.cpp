// The unit converter: a value in one unit shown in every other unit of its
// kind, each conversion as a step with the factor a student would use; a
// conductor's diameter and cross-section through the circle's area; degrees
// and radians through π/180.
#include "fl/tools/small.h"

#include "fl/expr/numbers.h"
#include "fl/tools/tables.h"

#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;

// A conversion whose result falls outside these is left out.
constexpr double kSmallest = 1e-6;
constexpr double kLargest = 1e9;

std::string formValue(const FormMap& form, const std::string& key) {
    auto it = form.find(key);
    return it == form.end() ? std::string() : it->second;
}

const UnitKind* findKind(const std::string& key) {
    for (const UnitKind& k : unitKinds())
        if (k.key == key) return &k;
    return nullptr;
}

bool whole(double v) {
    return v >= 1 && std::fabs(v - std::round(v)) < 1e-9 * v;
}

// The operation that takes a number in `from` to one in `to`: "· 1000",
// "/ 3600" or "· 1000 / 3600".
std::string factorText(const UnitDef& from, const UnitDef& to) {
    const double r = from.factor / to.factor;
    if (whole(r)) return "· " + fmtNumber(std::round(r), 15);
    if (whole(1 / r)) return "/ " + fmtNumber(std::round(1 / r), 15);
    return "· " + fmtNumber(from.factor, 15) + " / " + fmtNumber(to.factor, 15);
}

// "1 kWh = 3600000 J", put the way round that has a whole number.
std::string relation(const UnitDef& from, const UnitDef& to, const std::string& unit) {
    const double r = from.factor / to.factor;
    const UnitDef& big = r >= 1 ? from : to;
    const UnitDef& small = r >= 1 ? to : from;
    const double n = big.factor / small.factor;
    const std::string left = "1 " + big.unit + unit, right = small.unit + unit;
    return left + " = " + fmtNumber(n, whole(n) ? 15 : 5) + (right.empty() ? "" : " " + right);
}

// A unit with its prefix, or words for the bare number.
std::string unitName(const UnitDef& u, const std::string& unit) {
    const std::string t = u.unit + unit;
    return t.empty() ? "uden præfiks" : t;
}

std::string withUnit(const std::string& number, const std::string& unit) {
    return unit.empty() ? number : number + " " + unit;
}

// Angles and the conductor: two units, one formula each way.
void formulaSteps(ToolSheet& s, const std::string& kind, const std::string& from, std::vector<KvItem>& grid,
                  std::string& answer, std::vector<RecentValue>& recent) {
    if (kind == "vinkel") {
        if (from == "grader") {
            addStepBlock(s, "Grader → radianer", "", {{"rad", "v*PI/180", "v_rad"}},
                         hint("En hel omgang er 360° = 2π rad, så 1° = π/180 rad."));
        } else {
            addStepBlock(s, "Radianer → grader", "", {{"°", "v_rad*180/PI", "v"}},
                         hint("En hel omgang er 2π rad = 360°, så 1 rad = 180°/π ≈ 57,3°."));
        }
        const double deg = s.vars.at("v"), rad = s.vars.at("v_rad");
        grid = {{"Grader", fmtWithUnit(deg, "°"), from != "grader"},
                {"Radianer", formatValue(rad, "rad"), from == "grader"},
                {"Som brøkdel af π", fmtNumber(rad / M_PI) + " · π rad"}};
        answer = fmtWithUnit(deg, "°") + " = " + formatValue(rad, "rad") + " = " + fmtNumber(rad / M_PI) +
                 "·π rad";
        recent = {
            {from == "grader" ? "v_rad" : "v", from == "grader" ? rad : deg, from == "grader" ? "rad" : "°"}};
        return;
    }
    if (from == "mm") {
        addStepBlock(s, "Diameter → tværsnit (cirklens areal)", "", {{"mm²", "PI*d**2/4", "A"}},
                     hint("Lederen er en cirkel: A = π · r² = π · d² / 4."));
    } else {
        addStepBlock(s, "Tværsnit → diameter", "", {{"mm", "sqrt(4*A/PI)", "d"}},
                     hint("A = π · d² / 4 løst for d: d = √(4 · A / π)."));
    }
    const double d = s.vars.at("d"), a = s.vars.at("A");
    // The standard section nearest the area, by ratio.
    double nearest = NAN;
    for (double q : crossSections())
        if (std::isnan(nearest) || std::fabs(std::log(q / a)) < std::fabs(std::log(nearest / a))) nearest = q;
    grid = {{"Diameter", formatValue(d, "mm"), from != "mm"},
            {"Tværsnit", formatValue(a, "mm²"), from == "mm"},
            {"Nærmeste standardtværsnit", formatValue(nearest, "mm²")}};
    answer = "d = " + formatValue(d, "mm") + " ⇔ A = " + formatValue(a, "mm²");
    recent = {{from == "mm" ? "A" : "d", from == "mm" ? a : d, from == "mm" ? "mm²" : "mm"}};
    s.sections.results =
        hint("Nærmeste standardtværsnit er " + formatValue(nearest, "mm²") +
             ". Mål over lederen uden isolation; en mangetrådet leder måles bedst ved at tælle "
             "trådene og regne på én.");
}

} // namespace

const std::vector<UnitKind>& unitKinds() {
    static const std::vector<UnitKind> kinds{
        {"prefiks",
         "Præfikser (p, n, µ, m, k, M, G)",
         {{"p", "p – piko (10⁻¹²)", "p", 1e-12},
          {"n", "n – nano (10⁻⁹)", "n", 1e-9},
          {"u", "µ – mikro (10⁻⁶)", "µ", 1e-6},
          {"m", "m – milli (10⁻³)", "m", 1e-3},
          {"1", "intet præfiks", "", 1},
          {"k", "k – kilo (10³)", "k", 1e3},
          {"M", "M – mega (10⁶)", "M", 1e6},
          {"G", "G – giga (10⁹)", "G", 1e9}}},
        {"effekt",
         "Effekt (W, kW, MW)",
         {{"W", "W", "W", 1}, {"kW", "kW", "kW", 1e3}, {"MW", "MW", "MW", 1e6}}},
        {"energi",
         "Energi (J, Wh, kWh)",
         {{"J", "J (joule = Ws)", "J", 1},
          {"kJ", "kJ", "kJ", 1e3},
          {"MJ", "MJ", "MJ", 1e6},
          {"Wh", "Wh", "Wh", 3600},
          {"kWh", "kWh", "kWh", 3.6e6},
          {"MWh", "MWh", "MWh", 3.6e9}}},
        {"leder",
         "Leder: diameter ↔ tværsnit",
         {{"mm", "diameter i mm", "mm", 0}, {"mm2", "tværsnit i mm²", "mm²", 0}}},
        {"vinkel",
         "Vinkel: grader ↔ radianer",
         {{"grader", "grader (°)", "°", 0}, {"rad", "radianer (rad)", "rad", 0}}},
    };
    return kinds;
}

const std::vector<std::string>& prefixUnits() {
    static const std::vector<std::string> units{"", "V", "A", "Ω", "W", "F", "H", "Hz", "m", "g"};
    return units;
}

ToolOut convertUnits(const FormMap& form) {
    return runTool("Enhedsomregner", [&](ToolOut& out) {
        const UnitKind* kind = findKind(formValue(form, "art"));
        if (!kind) kind = &unitKinds().front();
        const UnitDef* from = nullptr;
        for (const UnitDef& u : kind->units)
            if (u.key == formValue(form, "fra")) from = &u;
        if (!from) from = &kind->units.front();
        ToolInputs in;
        if (!openForm(out, {{"x", formValue(form, "x")}}, in)) return;
        if (!in.has("x")) {
            refuse(out, "Skriv den værdi, der skal omregnes.", {"x"});
            return;
        }
        const double x = in.get("x");
        std::string unit;
        if (kind->key == "prefiks") {
            const std::string typed = formValue(form, "enhed");
            for (const std::string& u : prefixUnits())
                if (u == typed) unit = u;
        }

        ToolSheet s;
        std::vector<KvItem> grid;
        std::string answer;
        std::vector<RecentValue> recent;
        if (kind->key == "leder" || kind->key == "vinkel") {
            if (kind->key == "leder" && !(x > 0)) {
                refuse(out,
                       std::string(from->key == "mm" ? "Diameteren" : "Tværsnittet") +
                           " skal være større end 0.",
                       {"x"});
                return;
            }
            const std::string var = kind->key == "vinkel" ? (from->key == "grader" ? "v" : "v_rad")
                                                          : (from->key == "mm" ? "d" : "A");
            s.vars[var] = x;
            s.shown[var] = in.shown.at("x");
            addGivenRow(s, from->label, from->unit, var, in.shown.at("x"), var);
            formulaSteps(s, kind->key, from->key, grid, answer, recent);
        } else {
            addGivenRow(s, "værdien", from->unit + unit, "x", in.shown.at("x"), "x");
            const std::string xs = tool::shownWithUnit(in.shown.at("x"), from->unit + unit);
            for (const UnitDef& to : kind->units) {
                if (&to == from) continue;
                const double y = x * from->factor / to.factor;
                // 4700 pF in GF is no answer anyone asks for.
                if (x != 0 && (std::fabs(y) < kSmallest || std::fabs(y) >= kLargest)) continue;
                // The number itself, not as typed: "4,7k Ω / 1000" would read as nonsense.
                const std::string line = withUnit(fmtNumber(x) + " " + factorText(*from, to), to.unit + unit);
                s.sections.steps.push_back(
                    {unitName(*from, unit) + " → " + unitName(to, unit), "",
                     hint(relation(*from, to, unit) + ".") +
                         eqTable(
                             {{xs, line, {}, false},
                              {{}, "<b>" + withUnit(fmtNumber(y), to.unit + unit) + "</b>", {}, false}})});
                grid.push_back({unitName(to, unit), withUnit(fmtNumber(y), to.unit + unit)});
                answer += " = " + withUnit(fmtNumber(y), to.unit + unit);
            }
            answer = xs + answer;
            const double base = x * from->factor;
            recent = {{"x", base, kind->key == "energi" ? "J" : kind->key == "effekt" ? "W" : unit}};
        }

        s.sections.results = kvGrid(grid, 3) + s.sections.results;
        s.id = "enhedsheet";
        s.crumb = "Enhedsomregner · " + kind->label;
        s.title = tool::shownWithUnit(in.shown.at("x"), from->unit + unit) + " omregnet";
        s.sections.answer = "<span class=\"big2\">" + answer + "</span>";
        finish(out, s, recent);
    });
}

} // namespace fl
