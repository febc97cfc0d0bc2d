// The ideal transformer as a network of equations: any three independent
// values, and the chain finds the rest. S is the same on both sides.
#include "fl/tools/anydirection.h"
#include "fl/tools/machinefigs.h"

#include "fl/expr/parser.h"

#include <cmath>

namespace fl {

namespace {

using tool::hint;
using tool::msg;

// The quantities the student asks about; the load R_B is optional.
const std::vector<std::string> kWanted{"U_P", "I_P", "N_P", "n", "S", "NV", "U_S", "I_S", "N_S"};

const std::vector<ToolQuantity>& names() {
    static const std::vector<ToolQuantity> table = [] {
        std::vector<ToolQuantity> t;
        for (const TrafoField& f : transformerFields())
            t.push_back({f.key, f.unit, f.label});
        t.push_back({"S1", "VA", "effekten ind (primær)"});
        t.push_back({"S2", "VA", "effekten ud (sekundær)"});
        return t;
    }();
    return table;
}

// "Primærspænding" reads "primærspænding" inside a given row.
std::string lowerFirst(std::string text) {
    if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z') text[0] = static_cast<char>(text[0] - 'A' + 'a');
    return text;
}

bool known(const std::map<std::string, double>& vars, std::initializer_list<const char*> keys) {
    for (const char* k : keys)
        if (!vars.count(k)) return false;
    return true;
}

std::string ratioChecks(const ToolSheet& s) {
    struct Ratio {
        const char* formula;
        std::initializer_list<const char*> symbols;
    };
    const Ratio ratios[] = {
        {"U_P/U_S", {"U_P", "U_S"}}, {"N_P/N_S", {"N_P", "N_S"}}, {"I_S/I_P", {"I_S", "I_P"}}};
    std::string html;
    for (const Ratio& r : ratios) {
        if (!known(s.vars, r.symbols)) continue;
        std::map<std::string, double> copy = s.vars;
        html += evaluateStep("n", parse(r.formula), copy, "", s.shown).html;
    }
    if (html.empty()) return {};
    return hint("Omsætningsforholdet skal være det samme, uanset om det regnes med spændinger, vindinger "
                "eller "
                "strømme:") +
           html;
}

// S₁ = U_P · I_P must equal S₂ = U_S · I_S.
std::string powerCheck(const ToolSheet& s) {
    if (!known(s.vars, {"U_P", "I_P", "U_S", "I_S"})) return {};
    std::map<std::string, double> copy = s.vars;
    const StepOutcome in = evaluateStep("S1", parse("U_P*I_P"), copy, "VA", s.shown);
    const StepOutcome out = evaluateStep("S2", parse("U_S*I_S"), copy, "VA", s.shown);
    const bool same = std::fabs(in.value - out.value) <= 1e-6 * std::max(std::fabs(in.value), 1.0);
    return hint("Ideel transformer: effekten ind er lig effekten ud:") + in.html + out.html +
           (same ? "<p class=\"ok\">✓ Passer</p>" : "<p class=\"bad\">✗ Passer ikke</p>");
}

} // namespace

const std::vector<TrafoField>& transformerFields() {
    static const std::vector<TrafoField> table{
        {"Primær", "U_P", "Primærspænding", "V"},
        {"Primær", "I_P", "Primærstrøm", "A"},
        {"Primær", "N_P", "Antal primærvindinger", ""},
        {"Fælles", "n", "Omsætningsforhold (n = U<sub>P</sub> / U<sub>S</sub>)", ""},
        {"Fælles", "S", "Transformerens størrelse", "VA"},
        {"Fælles", "NV", "Vindinger pr. volt", "vind./V"},
        {"Sekundær", "U_S", "Sekundærspænding", "V"},
        {"Sekundær", "I_S", "Sekundærstrøm", "A"},
        {"Sekundær", "N_S", "Antal sekundærvindinger", ""},
        {"Sekundær", "R_B", "Belastningens modstand (valgfri)", "Ω"},
    };
    return table;
}

const std::vector<ChainEquation>& transformerEquations() {
    static const std::vector<ChainEquation> list{
        {"n", "U_P/U_S", "Omsætningsforhold ud fra spændingerne (n = U<sub>P</sub> / U<sub>S</sub>)",
         "9 og formelhjulet"},
        {"n", "N_P/N_S", "Omsætningsforhold ud fra vindingerne (n = N<sub>P</sub> / N<sub>S</sub>)",
         "9 og formelhjulet"},
        {"n", "I_S/I_P", "Omsætningsforhold ud fra strømmene (n = I<sub>S</sub> / I<sub>P</sub>)",
         "9 og formelhjulet"},
        {"S", "U_P*I_P", "Transformerens størrelse på primærsiden (S = U<sub>P</sub> · I<sub>P</sub>)",
         "9 og formelhjulet"},
        {"S", "U_S*I_S", "Transformerens størrelse på sekundærsiden (S = U<sub>S</sub> · I<sub>S</sub>)",
         "9 og formelhjulet"},
        {"N_P", "U_P*NV", "Primærvindinger ud fra vindinger pr. volt (N<sub>P</sub> = U<sub>P</sub> · N/V)",
         "formelhjulet"},
        {"N_S", "U_S*NV", "Sekundærvindinger ud fra vindinger pr. volt (N<sub>S</sub> = U<sub>S</sub> · N/V)",
         "formelhjulet"},
        {"U_S", "I_S*R_B",
         "Belastningen på sekundærsiden – Ohms lov (U<sub>S</sub> = I<sub>S</sub> · R<sub>B</sub>)", ""},
    };
    return list;
}

ToolOut transformer(const FormMap& form) {
    return runTool("Transformer", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        std::vector<std::string> keys;
        for (const TrafoField& f : transformerFields())
            keys.push_back(f.key);
        if (!refuseNegative(out, in, keys)) return;

        ToolSheet s;
        std::set<std::string> given;
        for (const TrafoField& f : transformerFields()) {
            if (!in.has(f.key)) continue;
            s.vars[f.key] = in.get(f.key);
            s.shown[f.key] = in.shown.at(f.key);
            given.insert(f.key);
        }
        if (given.size() < 3) {
            refuse(out, "Udfyld mindst tre af værdierne (fx U<sub>P</sub>, U<sub>S</sub> og S).");
            return;
        }
        for (const TrafoField& f : transformerFields())
            if (given.count(f.key)) addGivenInput(s, in, f.key, lowerFirst(f.label), f.unit);

        const ChainSetup setup = anydir::setupFor(names(), s.shown);
        const ChainResult chain = solveChain(transformerEquations(), s.vars, setup);
        s.sections.steps = chain.blocks;
        const anydir::Checked checked = anydir::check(chain, s.vars, setup);
        const std::vector<std::string> missing = anydir::unknownOf(s.vars, kWanted);
        const std::string near = checked.nearMisses.empty()
                                     ? std::string()
                                     : msg("Nogle af de givne værdier passer næsten, men ikke helt:<br>" +
                                               anydir::lines(checked.nearMisses),
                                           false);

        // Nothing new, but everything already given and in agreement: the
        // check is still worth showing.
        if (chain.blocks.empty() && (!checked.conflicts.empty() || !missing.empty())) {
            if (!checked.conflicts.empty())
                refuse(out, "De givne værdier passer ikke sammen:<br>" + anydir::lines(checked.conflicts));
            else
                refuse(
                    out,
                    "Med de værdier kan programmet ikke finde mere. Udfyld flere – fx både U<sub>P</sub> og "
                    "U<sub>S</sub> (så kendes n), og S eller en af strømmene.");
            out.err += near;
            return;
        }

        std::string notes;
        if (!missing.empty())
            notes += msg("Disse kunne ikke findes ud fra de givne værdier: " + tool::symbolList(missing) +
                             ". Udfyld flere værdier, hvis du skal bruge dem.",
                         false);
        if (!checked.conflicts.empty())
            notes += msg(
                "Nogle af de givne værdier passer ikke sammen:<br>" + anydir::lines(checked.conflicts), true);
        notes += near;

        s.sections.check = ratioChecks(s) + powerCheck(s);
        s.sections.results = anydir::knownGrid(names(), s.vars, given);
        s.sections.figure = anydir::figureWithFound(transformerFigure(anydir::drawn(s.vars, given)));
        s.id = "tsheet";
        s.crumb = "Transformer";
        s.title = "Udregning af transformeren";
        anydir::finishWithNotes(out, s, notes, anydir::found(names(), s.vars, given));
    });
}

} // namespace fl
