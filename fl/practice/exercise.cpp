// The generator: values from the tables of nice numbers, the hidden quantity,
// and the texts around it. The hand-written generators are in generators.cpp.
#include "fl/practice/exercise.h"

#include "fl/expr/eval.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/expr/symbols.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/solve.h"
#include "fl/practice/random.h"

#include <charconv>
#include <cmath>
#include <ostream>
#include <set>

namespace fl {

namespace {

constexpr int kAttempts = 80;

const std::vector<double> kE12 = {10, 12, 15, 18, 22, 27, 33, 39, 47, 56, 68, 82};
const std::vector<double> kSyncSpeeds = {3000, 1500, 1000, 750};

bool startsWith(const std::string& s, const char* prefix) {
    return s.rfind(prefix, 0) == 0;
}

double roundE1(double x) {
    char buf[32];
    const auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::scientific, 1);
    double v = x;
    std::from_chars(buf, res.ptr, v);
    return v;
}

// Quantities that count things: asked for only when the answer is whole.
bool isCount(const std::string& symbol) {
    return symbol == "n" || symbol == "p" || symbol == "N1" || symbol == "N2";
}

// A ratio that can't exceed 1: asking for it makes sense only when it doesn't.
bool isFraction(const std::string& symbol) {
    return startsWith(symbol, "cosphi") || symbol == "eta";
}

struct Range {
    double lo, hi;
};

Range plausible(const std::string& symbol, const std::string& unit) {
    if (isFraction(symbol)) return {0.2, 1};
    if (symbol == "Vs") return {180, 3600}; // the angles of a polygon together
    static const std::map<std::string, Range> kUnits = {
        {"V", {0.1, 1000}},       {"A", {0.01, 1000}}, {"Ω", {0.01, 1e5}},    {"W", {0.1, 1e5}},
        {"VA", {0.1, 1e5}},       {"VAr", {0.1, 1e5}}, {"F", {1e-9, 1e-2}},   {"H", {1e-4, 10}},
        {"Hz", {1, 10000}},       {"°", {0.1, 360}},   {"%", {0.1, 100}},     {"o/min", {100, 4000}},
        {"Nm", {0.1, 10000}},     {"rad/s", {1, 1e5}}, {"kW", {0.01, 1000}},  {"kWh", {0.01, 1e6}},
        {"kr", {1, 1e7}},         {"kr/år", {1, 1e7}}, {"kr/kWh", {0.1, 20}}, {"h", {0.1, 1e5}},
        {"h/dag", {0.1, 24}},     {"dage", {1, 3650}}, {"år", {0.1, 100}},    {"s", {1e-4, 1e6}},
        {"J", {0.1, 1e10}},       {"mm²", {0.5, 500}}, {"mm", {0.1, 100}},    {"m", {0.1, 10000}},
        {"Ω·mm²/m", {0.01, 0.1}},
    };
    auto it = kUnits.find(unit);
    return it != kUnits.end() ? it->second : Range{0.01, 1e5};
}

// chooseForm rearranges on every call; the catalogue's forms never change,
// so its choices are kept. A family from elsewhere is rearranged each time.
NodePtr formFor(const Formula& f, const std::string& target) {
    const std::vector<Formula>& all = catalogue();
    if (all.empty() || &f < all.data() || &f >= all.data() + all.size()) return chooseForm(f, target).expr;
    static std::map<std::pair<const Formula*, std::string>, NodePtr> cache;
    auto [it, fresh] = cache.try_emplace({&f, target});
    if (fresh) it->second = chooseForm(f, target).expr;
    return it->second;
}

std::string symbolText(const std::string& symbol) {
    return varSpan(symbolDisplay(symbol));
}

// One attempt at an exercise for a family and its hidden quantity; empty when
// the drawn numbers give no answer a student could be asked for.
Exercise attempt(const Formula& f, const std::string& target) {
    SetAsidePass aside;
    std::map<std::string, double> values = drawValues(f);
    Exercise ex;
    ex.formula = &f;
    ex.target = target;
    // What the student sees is exactly what is computed with.
    for (const FormulaVar& v : f.vars) {
        if (v.symbol == target) continue;
        auto it = values.find(v.symbol);
        if (it == values.end()) return {};
        const std::string text = fmtValue10(it->second);
        const double back = readValue(text);
        if (!std::isfinite(back)) return {};
        ex.givenText[v.symbol] = text;
        ex.given[v.symbol] = back;
    }
    std::map<std::string, double> work = ex.given;
    try {
        for (const FormulaDef& d : f.definitions)
            work[d.symbol] = eval(parse(d.expr), work);
        ex.facit = eval(formFor(f, target), work);
    } catch (const std::exception&) {
        return {};
    }
    if (!std::isfinite(ex.facit) || ex.facit <= 0) return {};
    // A rewritten form can give a number that the book's formula refuses: a
    // cos φ after over-compensation comes out positive from cos(atan(…)) of a
    // negative tangent. |back − given| ≤ 1e-6 · max(|given|, 1), as in the check.
    // A quantity on which the formula is flat isn't determined by the others:
    // u = Umax · sin α with u = Umax leaves α anywhere near 90°.
    if (const std::string& var = f.forms.front().var; var != target) {
        const NodePtr primary = parse(f.forms.front().expr);
        const double given = work.at(var);
        const double tol = 1e-6 * std::max(std::fabs(given), 1.0);
        auto at = [&](double x) {
            work[target] = x;
            return eval(primary, work);
        };
        const double h = 1e-6 * ex.facit;
        const double change = at(ex.facit + h) - at(ex.facit - h);
        if (!(std::fabs(at(ex.facit) - given) <= tol) || !(std::fabs(change) > 2e-6 * tol)) return {};
    }
    if (isCount(target) && std::fabs(ex.facit - std::round(ex.facit)) > 1e-9 * ex.facit) return {};
    const FormulaVar* tv = findVar(f, target);
    ex.unit = tv ? tv->unit : std::string();
    if (!plausibleAnswer(target, ex.unit, ex.facit)) return {};

    // Capacitances are met in µF: a plain "47" answers 47 µF.
    if (ex.unit == "F") ex.scale = 1e-6;
    ex.key = f.key;
    ex.topic = practiceTopic(f);
    ex.title = f.title;
    ex.search = f.search;
    try {
        resetFigures(); // the rearranger's images belong to no sheet
        std::string html = exerciseSolutionHtml(ex);
        ex.solution = takeRender(std::move(html));
    } catch (const std::exception&) {
        return {}; // "intet reelt svar" somewhere on the way: not an exercise
    }
    ex.statement = exerciseStatement(ex);
    std::string hint = exerciseHint(ex);
    ex.hint = takeRender(std::move(hint));
    return ex;
}

} // namespace

SetAsidePass::~SetAsidePass() {
    resetFigures();
    for (size_t n = 0; n < outer_.figs.size(); ++n)
        addFigure(outer_.figs[n], n < outer_.figShapes.size() ? outer_.figShapes[n] : nullptr);
    for (const NodePtr& n : outer_.maths)
        addMath(n);
}

void PrintTo(const Exercise& ex, std::ostream* os) {
    if (ex.empty()) {
        *os << "(no exercise)";
        return;
    }
    *os << ex.key << ": find " << ex.target << " from";
    for (const auto& [symbol, text] : ex.givenText)
        *os << " " << symbol << "=" << text;
    *os << "; facit " << fmtPlain(ex.facit, 17);
}

bool plausibleAnswer(const std::string& symbol, const std::string& unit, double value) {
    const Range range = plausible(symbol, unit);
    return value >= range.lo && value <= range.hi;
}

std::string familyLockKey(const Formula& f) {
    return "sub:" + f.group + "|" + practiceTopic(f);
}

std::string practiceTopic(const Formula& f) {
    return f.topic.empty() ? "Andet" : f.topic;
}

std::vector<std::string> askableTargets(const Formula& f) {
    std::vector<std::string> out;
    for (const FormulaForm& form : f.forms) {
        bool twoAnswers = false;
        for (const FormulaForm& alt : f.altForms)
            twoAnswers = twoAnswers || alt.var == form.var;
        bool seen = false;
        for (const std::string& s : out)
            seen = seen || s == form.var;
        if (!twoAnswers && !seen && findVar(f, form.var)) out.push_back(form.var);
    }
    return out;
}

bool fitForPractice(const Formula& f) {
    if (f.forms.empty() || f.vars.empty() || askableTargets(f).empty()) return false;
    std::set<std::string> own;
    for (const FormulaVar& v : f.vars)
        own.insert(v.symbol);
    for (const FormulaDef& d : f.definitions)
        own.insert(d.symbol);
    try {
        for (const FormulaForm& form : f.forms) {
            std::set<std::string> used;
            collectVars(parse(form.expr), used);
            for (const std::string& s : used)
                if (!own.count(s)) return false;
        }
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

double runningSpeed(double synchronous) {
    return round((1 - randReal(0.02, 0.07)) * synchronous / 5) * 5;
}

double pickE12(double lo, double hi) {
    std::vector<double> found;
    for (int k = -1; k < 12 && std::pow(10.0, k + 1) <= hi; ++k)
        for (double e : kE12) {
            const double v = roundE1(e * std::pow(10.0, k));
            if (v >= lo && v <= hi) found.push_back(v);
        }
    return found.empty() ? lo : pickOne(found);
}

double drawValue(const std::string& symbol, const std::string& unit, const Formula& f) {
    if (auto it = f.defaults.find(symbol); it != f.defaults.end()) return readValue(it->second);
    if (startsWith(symbol, "cosphi")) return roundDec(randReal(0.5, 0.95), 2);
    if (symbol == "eta") return roundDec(randReal(0.6, 0.97), 2);
    if (unit == "o/min") return symbol == "n_s" ? pickOne(kSyncSpeeds) : runningSpeed(pickOne(kSyncSpeeds));
    if (unit == "Nm") return round3(randReal(2, 150));
    if (unit == "rad/s") return round3(randReal(100, 2500));
    if (symbol == "p") return pickOne(std::vector<double>{1, 2, 3, 4});
    if (symbol == "k_st") return pickOne(std::vector<double>{5, 6, 7, 8});
    if (unit == "kr/kWh") return pickOne(std::vector<double>{1.5, 2, 2.5, 3});
    if (unit == "kW") return round3(randReal(0.05, 5));
    if (unit == "h") return round(randReal(2, 2000));
    if (unit == "h/dag") return round(randReal(1, 24));
    if (unit == "dage") return pickOne(std::vector<double>{30, 90, 180, 365});
    if (unit == "kr" || unit == "kr/år") return round(randReal(100, 20000));
    if (unit == "år") return round3(randReal(1, 15));
    if (unit == "s") return round(randReal(10, 3600));
    if (symbol == "n") return std::floor(randReal(3, 9));
    if (symbol == "N1" || symbol == "N2") return round(randReal(20, 800));
    if (unit == "V") return pickOne(std::vector<double>{6, 12, 24, 48, 110, 230, 400});
    if (unit == "A") return round3(randReal(0.2, 16));
    if (unit == "Ω") return pickE12(1, 4700);
    if (unit == "W") return round3(randReal(10, 4000));
    if (unit == "VA" || unit == "VAr") return round3(randReal(50, 4000));
    if (unit == "H") return pickOne(std::vector<double>{0.02, 0.05, 0.08, 0.1, 0.15, 0.2, 0.3, 0.5});
    // The capacitors of a workshop drawer, in µF.
    if (unit == "F") return pickOne(std::vector<double>{4.7, 10, 22, 33, 47, 68, 100}) * 1e-6;
    if (unit == "Hz") return 50;
    if (unit == "°") return round(randReal(15, 75));
    if (unit == "mm²") return pickOne(std::vector<double>{1.5, 2.5, 4, 6, 10});
    if (unit == "mm") return pickOne(std::vector<double>{1.4, 1.8, 2.3, 2.8});
    if (unit == "m") return round(randReal(10, 120));
    if (unit == "%") return round3(randReal(1, 5));
    return roundDec(randReal(2, 40), 1);
}

std::map<std::string, double> drawValues(const Formula& f) {
    std::map<std::string, double> values;
    if (f.generate)
        values = f.generate();
    else if (auto gen = handGenerator(f.key))
        values = gen();
    for (const FormulaVar& v : f.vars)
        if (!values.count(v.symbol)) values[v.symbol] = drawValue(v.symbol, v.unit, f);
    return values;
}

Exercise exerciseFor(const Formula& f, const std::string& target) {
    for (int i = 0; i < kAttempts; ++i)
        if (Exercise ex = attempt(f, target); !ex.empty()) return ex;
    return {};
}

Exercise makeExercise(const std::string& group, const std::string& topic, const KeyFilter& open) {
    // Fitness parses every form; the catalogue doesn't change, so once is enough.
    static const std::vector<const Formula*> fit = [] {
        std::vector<const Formula*> out;
        for (const Formula& f : catalogue())
            if (fitForPractice(f)) out.push_back(&f);
        return out;
    }();
    std::vector<const Formula*> pool;
    for (const Formula* f : fit) {
        if (!group.empty() && f->group != group) continue;
        if (!topic.empty() && practiceTopic(*f) != topic) continue;
        if (open && !open(familyLockKey(*f))) continue;
        pool.push_back(f);
    }
    if (pool.empty()) return {};
    for (int i = 0; i < kAttempts; ++i) {
        const Formula& f = *pickOne(pool);
        const std::string target = pickOne(askableTargets(f));
        if (Exercise ex = attempt(f, target); !ex.empty()) return ex;
    }
    return {};
}

std::string shownValue(double value, const std::string& unit) {
    static const std::set<std::string> kPrefixed = {"V", "A", "Ω", "W", "F", "H", "VA", "VAr", "Hz"};
    const double mag = std::fabs(value);
    if (kPrefixed.count(unit) && std::isfinite(value) && value != 0 && (mag < 0.1 || mag >= 10000)) {
        int e = static_cast<int>(std::floor(std::log10(mag) / 3)) * 3;
        e = std::max(-12, std::min(9, e));
        if (const std::string prefix = prefixFor(e); !prefix.empty())
            return fmtNumber(value / std::pow(10.0, e)) + " " + prefix + unit;
    }
    return fmtWithUnit(value, unit);
}

std::string scaleHint(const Exercise& ex) {
    return ex.scale == 1e-6 ? "Svar i µF – fx 47 eller 47u." : std::string();
}

std::string exerciseStatement(const Exercise& ex) {
    if (!ex.formula) return {};
    const Formula& f = *ex.formula;
    std::string html = "<h3 class=\"sh\">Givet</h3><div class=\"known\">";
    for (const FormulaVar& v : f.vars) {
        auto it = ex.given.find(v.symbol);
        if (it == ex.given.end()) continue;
        html += "<div>" + symbolText(v.symbol) + " = " + shownValue(it->second, v.unit) +
                " <span class=\"crumb\">– " + v.name + "</span></div>";
    }
    html += "</div>";
    const FormulaVar* tv = findVar(f, ex.target);
    html += "<p class=\"hint0\">Find <b>" + (tv ? tv->name : ex.target) + "</b> (" + symbolText(ex.target) +
            ").</p>";
    if (const std::string s = scaleHint(ex); !s.empty()) html += "<p class=\"hint\">" + s + "</p>";
    return html;
}

std::string exerciseHint(const Exercise& ex) {
    if (!ex.formula) return {};
    const Formula& f = *ex.formula;
    const FormulaForm& primary = f.forms.front();
    std::string html = "<p class=\"hint0\">Formlen (" + pageRef(f.page, "formelsamlingen") + "):</p>";
    std::vector<WorkRow> rows{{symbolText(primary.var), renderMath(parse(primary.expr)), {}, false}};
    for (const FormulaDef& d : f.definitions)
        rows.push_back({symbolText(d.symbol), renderMath(parse(d.expr)), d.label, false});
    html += eqTable(rows);
    const std::string sym = symbolText(ex.target);
    html += ex.target == primary.var
                ? "<p class=\"hint0\">" + sym + " står allerede alene – sæt tallene ind.</p>"
                : "<p class=\"hint0\">Isolér " + sym + ", og sæt så tallene ind.</p>";
    if (const std::string s = scaleHint(ex); !s.empty()) html += "<p class=\"hint\">" + s + "</p>";
    return html;
}

std::string exerciseSolutionHtml(const Exercise& ex) {
    if (!ex.formula) return {};
    return solveSheet(*ex.formula, ex.given, {}, ex.target).html;
}

} // namespace fl
