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

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <set>
#include <sstream>

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

// "U_N=400 f=50 P_2=5,5k": a form as typed, one field per word; "k=" is an
// empty field.
inline FormMap formOf(const std::string& fields) {
    FormMap form;
    std::istringstream words(fields);
    for (std::string w; words >> w;) {
        const size_t eq = w.find('=');
        form[w.substr(0, eq)] = w.substr(eq + 1);
    }
    return form;
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

using Vars = std::map<std::string, double>;

// A form that is refused with `text`, or succeeds with `text` among its hints.
struct Said {
    std::string form; // as formOf reads it
    bool ok;
    std::string text;
};

template <typename Tool, size_t N> void expectSaid(Tool&& tool, const Said (&rows)[N]) {
    for (const Said& row : rows) {
        SCOPED_TRACE(row.form);
        const ToolRun r = runOnce([&] { return tool(formOf(row.form)); });
        EXPECT_EQ(r.out.ok, row.ok) << r.err;
        EXPECT_TRUE(contains(row.ok ? r.notes : r.err, row.text)) << (row.ok ? r.notes : r.err);
    }
}

// Fields as a row states them: "U I".
inline std::string keysText(const std::vector<std::string>& keys) {
    std::string text;
    for (const std::string& k : keys)
        text += (text.empty() ? "" : " ") + k;
    return text;
}

// A refused form: the words without their frame, no sheet, and the fields
// marked for the student to fix.
struct Refused {
    const char* name;
    std::string form;
    std::string text;
    std::string marked;
};

template <typename Tool, size_t N> void expectRefused(Tool&& tool, const Refused (&rows)[N]) {
    for (const Refused& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolOut out = tool(formOf(row.form));
        EXPECT_FALSE(out.ok);
        EXPECT_TRUE(out.html.empty());
        EXPECT_EQ(refusal(out), row.text);
        EXPECT_EQ(keysText(out.badKeys), row.marked);
    }
}

// A symbol as the sheet shows it in text ("P_1", "cos φ").
inline std::string symbolText(const std::string& key) {
    return sheetText(tool::symbolHtml(key), {});
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

// How an every-direction run is read: the form's keys (a key's symbol may
// differ, as "R" that stands for R or Z), the quantities the tool names when
// it can't find them, and its words for a gap and for nothing found.
struct SubsetCheck {
    std::vector<std::string> keys, wanted;
    std::string gapText = "Disse kunne ikke findes ud fra de givne værdier: ";
    std::string stuckText = "Med de værdier kan programmet ikke finde mere";
    std::function<std::string(const std::string&)> unitOf;
    std::function<std::string(const std::string&)> symbol = [](const std::string& k) { return k; };
};

// A key's unit by the tool's own list of its fields.
template <typename List> std::function<std::string(const std::string&)> unitsOf(const List& list) {
    return [list](const std::string& key) {
        for (const auto& field : list)
            if (field.key == key) return std::string(field.unit);
        return std::string();
    };
}

// One subset's run against the oracle: a key not given is found exactly when
// `expected` holds it, equal to the truth and shown in the results; the
// wanted ones not found are named; and no given is called off.
inline void checkSubset(const ToolRun& r, const SubsetCheck& c, const std::set<std::string>& given,
                        const std::set<std::string>& expected, const Vars& truth) {
    std::string missing;
    for (const std::string& k : c.wanted)
        if (!expected.count(k)) missing += (missing.empty() ? "" : ", ") + symbolText(k);
    if (expected == given && !missing.empty()) {
        ASSERT_FALSE(r.out.ok);
        ASSERT_TRUE(contains(r.err, c.stuckText)) << r.err;
        return;
    }
    ASSERT_TRUE(r.out.ok) << r.err;
    for (const std::string& k : c.keys) {
        const std::string symbol = c.symbol(k);
        const double found = recentValue(r.out, symbol);
        if (given.count(symbol) || !truth.count(k)) {
            ASSERT_TRUE(std::isnan(found)) << k;
            continue;
        }
        ASSERT_EQ(!std::isnan(found), expected.count(symbol) > 0) << k;
        if (std::isnan(found)) continue;
        // Relative, but a zero (Q of a resistance) is met absolutely.
        ASSERT_NEAR(found, truth.at(k), 1e-9 * std::max(1.0, std::fabs(truth.at(k)))) << k;
        ASSERT_TRUE(contains(r.sheet.results,
                             symbolText(symbol) + sheetText(tool::formatValue(found, c.unitOf(k)), {})))
            << k << " in " << r.sheet.results;
    }
    ASSERT_EQ(contains(r.notes, c.gapText), !missing.empty()) << r.notes;
    ASSERT_TRUE(missing.empty() || contains(r.notes, c.gapText + missing + ".")) << r.notes;
    ASSERT_FALSE(contains(r.notes, "passer")) << r.notes;
}

} // namespace fl
