// The equation chain and its consistency check. Each round scans the list
// from the top, so the blocks follow the order of solving, not of the list.
#include "fl/tools/chain.h"

#include "fl/expr/eval.h"
#include "fl/expr/isolate.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

namespace fl {

namespace {

// One round finds one quantity; a list can't need more than this.
constexpr int kMaxRounds = 500;
constexpr double kEqual = 1e-6;
constexpr double kNearMiss = 0.03;

const char* const kNegative = "Negativ modstand – de indtastede værdier passer ikke sammen.";

std::string unitOf(const ChainSetup& setup, const std::string& symbol) {
    return setup.unitOf ? setup.unitOf(symbol) : std::string();
}

std::vector<std::string> symbolsOf(const ChainEquation& eq) {
    std::set<std::string> names;
    collectVars(eq.node, names);
    names.insert(eq.target);
    return {names.begin(), names.end()};
}

std::string joinOthers(const std::vector<std::string>& symbols, const std::string& unknown) {
    std::string out;
    for (const std::string& s : symbols) {
        if (s == unknown) continue;
        if (!out.empty()) out += ",";
        out += s;
    }
    return out;
}

// The working for `unknown`, or false when it can't be isolated here.
bool workFor(const ChainEquation& eq, const std::string& unknown, std::map<std::string, double>& vars,
             const ChainSetup& setup, StepOutcome& outcome) {
    const std::string unit = unitOf(setup, unknown);
    // target = f(…)  ⇒  evaluate f
    if (unknown == eq.target) {
        outcome = evaluateStep(unknown, eq.node, vars, unit, setup.shown);
        return true;
    }
    // target = v, an identity  ⇒  v = target
    if (eq.node->kind == NodeKind::Var) {
        outcome = evaluateStep(unknown, makeVar(eq.target), vars, unit, setup.shown);
        return true;
    }
    // target = f(…, x, …)  ⇒  x = f⁻¹(target, …), if x stands once
    Isolation iso;
    if (!isolate(eq.node, eq.target, unknown, iso)) return false;
    const std::string formula =
        eqTable({{tool::symbolHtml(eq.target), renderMath(eq.node), "Formlen", false}}) + eqTable(iso.steps);
    outcome = evaluateStep(unknown, iso.result, vars, unit, setup.shown);
    outcome.html = formula + outcome.html;
    return true;
}

} // namespace

ChainResult solveChain(const std::vector<ChainEquation>& equations, std::map<std::string, double>& vars,
                       const ChainSetup& setup) {
    ChainResult result;
    result.equations = equations;
    std::vector<std::vector<std::string>> symbols;
    for (ChainEquation& eq : result.equations) {
        if (!eq.node) eq.node = parse(eq.formula);
        symbols.push_back(symbolsOf(eq));
    }
    for (auto it = vars.begin(); it != vars.end();)
        it = std::isnan(it->second) ? vars.erase(it) : std::next(it);

    std::vector<char> dropped(result.equations.size(), 0);
    for (int round = 0; round < kMaxRounds; ++round) {
        bool found = false;
        for (size_t i = 0; i < result.equations.size() && !found; ++i) {
            if (dropped[i]) continue;
            const ChainEquation& eq = result.equations[i];
            std::string unknown;
            int count = 0;
            for (const std::string& s : symbols[i])
                if (!vars.count(s)) {
                    unknown = s;
                    ++count;
                }
            if (count != 1) continue;
            StepOutcome outcome;
            try {
                if (!workFor(eq, unknown, vars, setup, outcome)) continue;
            } catch (const std::runtime_error&) {
                if (!setup.skipFailed) throw;
                dropped[i] = 1;
                continue;
            }
            // A negative resistance means the givens contradict each other;
            // say so and go on, so the student sees where it came from.
            // X_tot is a reactance sum and may be negative (capacitive).
            if (unitOf(setup, unknown) == "Ω" && outcome.value < 0 && unknown != "X_tot" &&
                !(setup.allowNegative && setup.allowNegative(unknown))) {
                outcome.html += tool::msg(kNegative, true);
                result.negative = true;
            }
            result.blocks.push_back({eq.title, eq.page, outcome.html, unknown, joinOthers(symbols[i], unknown)});
            result.solvedBy.push_back(i);
            found = true;
        }
        if (!found) break;
    }
    return result;
}

std::vector<ChainMismatch> chainMismatches(const ChainResult& chain, const std::map<std::string, double>& vars,
                                           const ChainSetup& setup) {
    std::set<size_t> used(chain.solvedBy.begin(), chain.solvedBy.end());
    std::vector<ChainMismatch> out;
    for (size_t i = 0; i < chain.equations.size(); ++i) {
        const ChainEquation& eq = chain.equations[i];
        if (used.count(i)) continue;
        bool known = true;
        for (const std::string& s : symbolsOf(eq))
            known = known && vars.count(s) > 0;
        if (!known) continue;
        const double a = vars.at(eq.target);
        const double b = eval(eq.node, vars);
        // |a − b| / max(|a|, |b|, 1e-12)
        const double rel = std::fabs(a - b) / std::max({std::fabs(a), std::fabs(b), 1e-12});
        if (!(rel > kEqual)) continue;
        const std::string unit = unitOf(setup, eq.target);
        out.push_back({i, a, b, rel, rel > kNearMiss,
                       eq.title + ": " + tool::symbolHtml(eq.target) + " = " + tool::formatValue(a, unit) +
                           ", men formlen giver " + tool::formatValue(b, unit)});
    }
    return out;
}

} // namespace fl
