// Every form of every family, read by the formula language's own parser and
// evaluated: a form must parse, use only its family's quantities, and each
// rewritten form must give back the values the primary form was computed
// from. This is what catches a slipped sign, exponent or symbol in a row.
#include "fl/formulas/catalogue.h"

#include "fl/expr/eval.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <random>
#include <set>
#include <sstream>

namespace {

using Values = std::map<std::string, double>;

std::string show(const Values& values) {
    std::ostringstream out;
    out.precision(17);
    for (const auto& [k, v] : values)
        out << k << "=" << v << " ";
    return out.str();
}

// Believable values: most quantities anywhere from 0.5 to 500 (drawn evenly
// on a log scale, so small and large both occur); the rest as an electrician
// meets them. A key of "" applies to every family.
struct Range {
    const char* key;
    const char* symbol;
    double lo, hi;
    bool whole = false;
};

const Range kRanges[] = {
    {"", "cosphi", 0.6, 0.98},
    {"", "eta", 0.6, 0.98},
    {"kompQ", "cosphi1", 0.6, 0.85},
    {"kompQ", "cosphi2", 0.88, 0.99},
    {"", "n", 3, 12, true}, // cells in series, corners of a polygon
    {"", "p", 1, 4, true},  // pole pairs
    {"motSlip", "s", 1, 8}, // slip in %
    {"motFr", "s", 1, 8},
    // Angles beyond the principal range of asin/acos, where the book's
    // figures allow them; the branches below account for them.
    {"triS", "C", 5, 175},
    {"acInst", "alpha", 0, 360},
    {"vecX", "V", 0, 360},
    {"vecY", "V", 0, 360},
    {"arc", "V", 5, 355},
    {"sector", "V", 5, 355},
    {"segment", "V", 5, 355},
};

double draw(const fl::Formula& f, const fl::FormulaVar& v, std::mt19937& rng) {
    const Range* range = nullptr;
    for (const Range& r : kRanges)
        if (v.symbol == r.symbol && (std::string(r.key).empty() || f.key == r.key)) range = &r;
    if (range && range->whole) return std::uniform_int_distribution<int>(int(range->lo), int(range->hi))(rng);
    if (range) return std::uniform_real_distribution<double>(range->lo, range->hi)(rng);
    if (v.unit == "°") return std::uniform_real_distribution<double>(5, 85)(rng); // phase and triangle angles
    return std::exp(std::uniform_real_distribution<double>(std::log(0.5), std::log(500.0))(rng));
}

// Where a rewritten form may rightly give another value than the one drawn.
enum class Branch { SameSine, SameCosine, OtherRoot };

struct Allowance {
    const char* key;
    const char* var;
    Branch branch;
    const char* reason;
};

const Allowance kAllowances[] = {
    {"triS", "C", Branch::SameSine, "asin gives the acute angle; an obtuse C has the same sine (180° − C)"},
    {"acInst", "alpha", Branch::SameSine, "asin gives −90°…90°; the same voltage comes again at 180° − α"},
    {"vecY", "V", Branch::SameSine, "asin gives −90°…90°; a vector to the left has the same y/v"},
    {"vecX", "V", Branch::SameCosine, "acos gives 0°…180°; a vector below the x-axis has the same x/v"},
    {"pRLC", "I_L", Branch::OtherRoot, "a capacitive circuit (I_C > I_L) takes the root in altForms"},
    {"pRLC", "I_C", Branch::OtherRoot, "a capacitive circuit (I_C > I_L) takes the root in altForms"},
};

constexpr double kDegree = std::numbers::pi / 180;

bool close(double got, double want) {
    return std::abs(got - want) <= 1e-7 * std::max(std::abs(want), 1.0);
}

const fl::FormulaForm* formFor(const std::vector<fl::FormulaForm>& forms, const std::string& var) {
    for (const fl::FormulaForm& f : forms)
        if (f.var == var) return &f;
    return nullptr;
}

// Draws the primary form's inputs until they give a finite, positive result,
// then works out the definitions and the primary quantity. False if no such
// values turn up, which means the primary form itself is wrong.
bool drawFamily(const fl::Formula& f, std::mt19937& rng, Values& values) {
    const fl::FormulaForm& primary = f.forms.front();
    fl::NodePtr expr = fl::parse(primary.expr);
    for (int attempt = 0; attempt < 1000; ++attempt) {
        values.clear();
        for (const fl::FormulaVar& v : f.vars)
            if (v.symbol != primary.var) values[v.symbol] = draw(f, v, rng);
        for (const fl::FormulaDef& d : f.definitions)
            values[d.symbol] = fl::eval(fl::parse(d.expr), values);
        double result = fl::eval(expr, values);
        if (std::isfinite(result) && result > 0) {
            values[primary.var] = result;
            return true;
        }
    }
    return false;
}

TEST(CatalogueForms, everyFormParsesAndUsesOnlyItsFamilysQuantities) {
    for (const fl::Formula& f : fl::catalogue()) {
        SCOPED_TRACE(f.key);
        std::set<std::string> known, defined;
        for (const fl::FormulaVar& v : f.vars)
            known.insert(v.symbol);
        for (const fl::FormulaDef& d : f.definitions)
            defined.insert(d.symbol);

        std::set<std::string> reached = {f.forms.front().var};
        for (const fl::FormulaDef& d : f.definitions) {
            std::set<std::string> used;
            ASSERT_NO_THROW(fl::collectVars(fl::parse(d.expr), used)) << d.expr;
            for (const std::string& s : used)
                EXPECT_TRUE(known.count(s)) << d.symbol << " uses " << s;
            reached.insert(used.begin(), used.end());
        }
        std::vector<fl::FormulaForm> all = f.forms;
        all.insert(all.end(), f.altForms.begin(), f.altForms.end());
        for (const fl::FormulaForm& form : all) {
            SCOPED_TRACE(form.var + " = " + form.expr);
            fl::NodePtr node;
            ASSERT_NO_THROW(node = fl::parse(form.expr));
            std::set<std::string> used;
            fl::collectVars(node, used);
            for (const std::string& s : used)
                EXPECT_TRUE(known.count(s) || defined.count(s)) << s;
            EXPECT_FALSE(used.count(form.var)) << "the quantity stands on both sides";
            if (&form == &all.front()) reached.insert(used.begin(), used.end());
        }
        // A quantity the primary form doesn't hold could never be worked out.
        for (const std::string& s : known)
            EXPECT_TRUE(reached.count(s)) << s << " is not in the primary form";
    }
}

TEST(CatalogueForms, everyDefaultReadsAsATypedValue) {
    for (const fl::Formula& f : fl::catalogue())
        for (const auto& [symbol, text] : f.defaults) {
            SCOPED_TRACE(f.key + " " + symbol + " \"" + text + "\"");
            bool empty = true;
            double v = fl::readValue(text, &empty);
            EXPECT_FALSE(empty);
            EXPECT_TRUE(std::isfinite(v) && v > 0);
        }
    EXPECT_DOUBLE_EQ(fl::readValue(fl::findFormula("wire")->defaults.at("rho")), 0.0175);
    EXPECT_DOUBLE_EQ(fl::readValue(fl::findFormula("instRe")->defaults.at("I_dn")), 0.03);
}

TEST(CatalogueForms, everyRewrittenFormGivesBackTheDrawnValue) {
    std::mt19937 rng(20240917);
    std::map<std::string, int> branchesTaken;
    for (const fl::Formula& f : fl::catalogue()) {
        SCOPED_TRACE(f.key);
        for (int trial = 0; trial < 200; ++trial) {
            Values drawn;
            ASSERT_TRUE(drawFamily(f, rng, drawn)) << "no values make the primary form finite and positive";
            for (size_t i = 1; i < f.forms.size(); ++i) {
                const fl::FormulaForm& form = f.forms[i];
                Values given = drawn;
                given.erase(form.var);
                const double want = drawn.at(form.var);
                const double got = fl::eval(fl::parse(form.expr), given);
                if (close(got, want)) continue;

                const Allowance* allowed = nullptr;
                for (const Allowance& a : kAllowances)
                    if (f.key == a.key && form.var == a.var) allowed = &a;
                bool ok = false;
                if (allowed && allowed->branch == Branch::SameSine)
                    ok = close(std::sin(got * kDegree), std::sin(want * kDegree));
                if (allowed && allowed->branch == Branch::SameCosine)
                    ok = close(std::cos(got * kDegree), std::cos(want * kDegree));
                if (allowed && allowed->branch == Branch::OtherRoot) {
                    const fl::FormulaForm* alt = formFor(f.altForms, form.var);
                    ok = alt && close(fl::eval(fl::parse(alt->expr), given), want);
                }
                if (ok) ++branchesTaken[f.key + " " + form.var];
                EXPECT_TRUE(ok) << form.var << " = " << form.expr << " gives " << got << ", drawn " << want
                                << (allowed
                                        ? std::string("\n  nor does its allowance hold: ") + allowed->reason
                                        : "")
                                << "\n  values: " << show(drawn);
                if (!ok) break;
            }
            if (HasFailure()) return;
        }
    }
    // An allowance that is never needed hides nothing but would hide a slip
    // later: each must be a branch these values really reach.
    for (const Allowance& a : kAllowances)
        EXPECT_GT(branchesTaken[std::string(a.key) + " " + a.var], 0)
            << a.key << " " << a.var << ": " << a.reason;
}

} // namespace
