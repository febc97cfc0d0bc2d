// Believable values for a family: every quantity but the primary one drawn in
// a range that suits its unit, and the primary one computed from its form, so
// that the set is consistent. Shared by the solve tests and the benchmark.
#pragma once

#include "fl/expr/eval.h"
#include "fl/expr/parser.h"
#include "fl/formulas/catalogue.h"

#include <cmath>
#include <map>
#include <optional>
#include <random>
#include <string>

namespace fl::sample {

struct Range {
    double lo, hi;
    bool whole = false; // counts: cells, corners, pole pairs
    bool logScale = false;
};

inline Range rangeFor(const Formula& f, const FormulaVar& v) {
    const std::string& s = v.symbol;
    if (v.unit == "°") {
        // Phase angles and the acute angles of a right triangle stay below 90°; a
        // triangle's or a curve's angle may be obtuse.
        const bool acute = s.rfind("phi", 0) == 0 || f.key == "sinV" || f.key == "cosV" || f.key == "tanV";
        return acute ? Range{10, 80} : Range{10, 170};
    }
    if (s.rfind("cosphi", 0) == 0 || s == "eta") return {0.5, 0.98};
    if (s == "n") return {3, 12, true};
    if (s == "p") return {1, 4, true};
    if (v.unit == "%") return {1, 10};
    if (v.unit == "F") return {1e-6, 1e-3, false, true};
    if (v.unit == "H") return {0.01, 2, false, true};
    if (v.unit == "Hz") return {20, 1000, false, true};
    if (v.unit == "A") return {0.05, 100, false, true};
    return {0.5, 5000, false, true};
}

inline double draw(const Range& r, std::mt19937& rng) {
    if (r.whole) return std::uniform_int_distribution<int>(int(r.lo), int(r.hi))(rng);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    if (r.logScale) return r.lo * std::pow(r.hi / r.lo, u(rng));
    return r.lo + (r.hi - r.lo) * u(rng);
}

// Every quantity of `vars` with a value; nothing when no believable set turns up.
inline std::optional<std::map<std::string, double>> values(const Formula& f, std::mt19937& rng) {
    const FormulaForm& primary = f.forms.front();
    const NodePtr expr = parse(primary.expr);
    for (int attempt = 0; attempt < 1000; ++attempt) {
        std::map<std::string, double> v;
        for (const FormulaVar& var : f.vars)
            if (var.symbol != primary.var) v[var.symbol] = draw(rangeFor(f, var), rng);
        std::map<std::string, double> scope = v;
        for (const FormulaDef& d : f.definitions)
            scope[d.symbol] = eval(parse(d.expr), scope);
        const double p = eval(expr, scope);
        if (!std::isfinite(p) || p <= 0) continue;
        // A computed power factor, efficiency or percentage has to be believable too.
        if (const FormulaVar* pv = findVar(f, primary.var);
            pv && (pv->symbol.rfind("cosphi", 0) == 0 || pv->symbol == "eta" || pv->unit == "%") &&
            p > rangeFor(f, *pv).hi)
            continue;
        v[primary.var] = p;
        return v;
    }
    return std::nullopt;
}

} // namespace fl::sample
