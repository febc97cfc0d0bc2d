// One tool run as a test sees it: the record, the sheet cut into parts, the
// hints above the sheet and the refusal, all as text; and the every-direction
// harness the machine tools share: random consistent truths, every subset of
// the form's fields given, and a propagation oracle that says what each
// subset determines.
#pragma once

#include "fl/expr/eval.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/tools/chain.h"
#include "tests/fl/tools/sheet_text.h"

#include <cmath>
#include <functional>
#include <random>
#include <set>

namespace fl {

struct ToolRun {
    ToolOut out;
    SheetParts sheet;
    std::string notes; // the hints above the sheet
    std::string err;
    std::string text; // the whole sheet as plain text
};

template <typename F> ToolRun runOnce(F&& tool) {
    resetFigures();
    ToolRun r;
    r.out = tool();
    const RenderResult pass = takeRender({});
    r.sheet = sheetParts(r.out.html, pass.maths);
    r.notes =
        sheetText(between(r.out.html, "<div class=\"result\">", "<div class=\"card sheet\""), pass.maths);
    r.err = sheetText(r.out.err, pass.maths);
    r.text = sheetText(r.out.html, pass.maths);
    return r;
}

inline double recentValue(const ToolOut& out, const std::string& symbol) {
    for (const RecentValue& v : out.recent)
        if (v.symbol == symbol) return v.value;
    return NAN;
}

// The refusal's text without its frame.
inline std::string refusal(const ToolOut& out) {
    return between(out.err, "<div class=\"msg bad\">", "</div>");
}

inline double relDiff(double a, double b) {
    return std::fabs(a - b) / std::max({std::fabs(a), std::fabs(b), 1e-300});
}

// A symbol as the sheet shows it in text ("P_1", "cos φ").
inline std::string symbolText(const std::string& key) {
    return sheetText(tool::symbolHtml(key), {});
}

// The exact decimal text of a value, the way a form field could hold it.
inline std::string typed(double v) {
    return fmtShortest(v);
}

inline double uniform(std::mt19937& rng, double a, double b) {
    return std::uniform_real_distribution<double>(a, b)(rng);
}
inline double logUniform(std::mt19937& rng, double a, double b) {
    return std::exp(uniform(rng, std::log(a), std::log(b)));
}
template <typename T> T pick(std::mt19937& rng, std::initializer_list<T> options) {
    std::uniform_int_distribution<size_t> d(0, options.size() - 1);
    return *(options.begin() + d(rng));
}

// What a set of knowns determines through `list`: an equation with one
// unknown settles it, if the unknown is its target or stands once in it.
inline std::set<std::string> determined(const std::vector<ChainEquation>& list, std::set<std::string> known) {
    std::vector<std::pair<NodePtr, std::set<std::string>>> parsed;
    for (const ChainEquation& eq : list) {
        NodePtr node = parse(eq.formula);
        std::set<std::string> symbols;
        collectVars(node, symbols);
        symbols.insert(eq.target);
        parsed.emplace_back(node, symbols);
    }
    for (bool grew = true; grew;) {
        grew = false;
        for (size_t i = 0; i < list.size(); ++i) {
            std::vector<std::string> unknown;
            for (const std::string& s : parsed[i].second)
                if (!known.count(s)) unknown.push_back(s);
            if (unknown.size() == 1 &&
                (unknown[0] == list[i].target || countVar(parsed[i].first, unknown[0]) == 1)) {
                known.insert(unknown[0]);
                grew = true;
            }
        }
    }
    return known;
}

// Calls `body` with every subset of `keys` (as a bit mask and the set).
inline void forEverySubset(const std::vector<std::string>& keys,
                           const std::function<void(unsigned, const std::set<std::string>&)>& body) {
    for (unsigned mask = 0; mask < (1u << keys.size()); ++mask) {
        std::set<std::string> given;
        for (size_t i = 0; i < keys.size(); ++i)
            if (mask & (1u << i)) given.insert(keys[i]);
        body(mask, given);
    }
}

} // namespace fl
