// The solve driver: chooses the form for the wanted quantity, works it out
// line by line and writes the sheet. The rearranging itself is
// fl/expr/isolate.cpp's, the markup builders are fl/expr/markup.cpp's, and the
// figure comes from whoever passes a FigureSource.
#include "fl/formulas/solve.h"

#include "fl/expr/eval.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/expr/symbols.h"
#include "fl/formulas/catalogue.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace fl {

namespace {

// A result smaller than this is shown, checked and stored as 0.
constexpr double kZero = 1e-12;
// workOut shows at most this many rounds of arithmetic.
constexpr int kMaxRounds = 20;
// The check passes within this share of the given value (or of 1, for small values).
constexpr double kCheckTolerance = 1e-6;
// Two roots closer than this share are the same answer.
constexpr double kSameRoot = 1e-9;

double snapZero(double v) {
    return std::fabs(v) < kZero ? 0.0 : v;
}

std::string symbol(const std::string& name) {
    return varSpan(symbolDisplay(name));
}

std::string hint(const std::string& html) {
    return "<p class=\"hint0\">" + html + "</p>";
}

// A value text with its unit, by the spacing rule of fmtWithUnit.
std::string withUnit(const std::string& text, const std::string& unit) {
    if (unit.empty()) return text;
    if (unit == "°") return text + unit;
    return text + " " + unit;
}

std::string unitOf(const Formula& f, const std::string& sym) {
    const FormulaVar* v = findVar(f, sym);
    return v ? v->unit : std::string();
}

// 0.047 A reads easier as 47 mA: a short conversion after the answer for units
// that take a prefix, when the plain number is small or large.
std::string prefixRemark(double value, const std::string& unit) {
    static const char* const kUnits[] = {"V", "A", "Ω", "W", "F", "H", "VA", "VAr", "Hz"};
    bool takesPrefix = false;
    for (const char* u : kUnits)
        takesPrefix = takesPrefix || unit == u;
    if (!takesPrefix || !std::isfinite(value) || value == 0.0) return {};
    const double mag = std::fabs(value);
    if (mag >= 0.1 && mag < 10000) return {};
    int e = static_cast<int>(std::floor(std::log10(mag) / 3)) * 3;
    e = std::max(-12, std::min(9, e));
    const std::string prefix = prefixFor(e);
    if (prefix.empty()) return {};
    return " <span class=\"crumb\">(= " + fmtNumber(value / std::pow(10.0, e)) + " " + prefix + unit +
           ")</span>";
}

std::string parenthesised(const std::string& text) {
    std::string out;
    out.reserve(text.size() + 2);
    out += '(';
    out += text;
    out += ')';
    return out;
}

std::string numberText(double v) {
    if (std::isnan(v)) return "(0/0)";
    if (std::isinf(v)) return v > 0 ? "(1/0)" : "(-1/0)";
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(v));
    std::string s(buf, res.ptr);
    return v < 0 ? parenthesised("-" + s) : s;
}

bool isAtom(const NodePtr& n) {
    return n->kind == NodeKind::Var || n->kind == NodeKind::Pi ||
           (n->kind == NodeKind::Num && n->value >= 0 && std::isfinite(n->value));
}

std::string operandText(const NodePtr& n, bool wrapProducts) {
    const bool wrap =
        n->kind == NodeKind::Sum || (wrapProducts && (n->kind == NodeKind::Prod || n->kind == NodeKind::Pow));
    return wrap ? parenthesised(formulaText(n)) : formulaText(n);
}

// One solve: the family, the wanted quantity and the values known so far
// (the givens, then each result as it is worked out).
struct Solve {
    const Formula& f;
    const std::string& target;
    std::map<std::string, double> values;
    std::set<std::string> degreeSet; // quantities measured in degrees
    std::string unit;                // the target's
    std::string sym;                 // the target's display form
};

StepBlock block(std::string title, std::string html) {
    return {std::move(title), {}, std::move(html)};
}

StepBlock knownBlock(const Solve& s, const std::map<std::string, std::string>& labels) {
    std::string html = "<div class=\"known\">";
    for (const FormulaVar& v : s.f.vars) {
        auto it = s.values.find(v.symbol);
        if (it == s.values.end()) continue;
        // What the student typed ("4,7k") reads better than the number it became.
        auto label = labels.find(v.symbol);
        const std::string shown = label != labels.end() && !label->second.empty()
                                      ? withUnit(label->second, v.unit)
                                      : fmtWithUnit(it->second, v.unit);
        html += "<div>" + symbol(v.symbol) + " = " + shown + " <span class=\"crumb\">– " + v.name +
                "</span></div>";
    }
    return block("Det kender vi", html + "</div>");
}

StepBlock wantedBlock(const Solve& s) {
    const FormulaVar* v = findVar(s.f, s.target);
    std::string html =
        "<div class=\"known\"><div>" + s.sym + " <span class=\"crumb\">– " + (v ? v->name : "");
    if (!s.unit.empty()) html += " [" + s.unit + "]";
    return block("Det skal vi finde", html + "</span></div></div>");
}

StepBlock formulaBlock(const Solve& s, const NodePtr& primary) {
    std::vector<WorkRow> rows{{symbol(s.f.forms.front().var), renderMath(primary), {}, false}};
    for (const FormulaDef& d : s.f.definitions)
        rows.push_back({symbol(d.symbol), renderMath(parse(d.expr)), d.label, false});
    return block("Formlen (" + pageRef(s.f.page, "formelsamlingen") + ")", eqTable(rows));
}

StepBlock isolationBlock(const Solve& s, const FormChoice& choice) {
    if (s.target == s.f.forms.front().var)
        return block("Isolér " + s.sym,
                     hint(s.sym + " står allerede alene, så vi kan sætte tallene ind med det samme."));
    if (choice.rearranged)
        return block("Isolér " + s.sym + " – få den til at stå alene", eqTable(choice.steps));
    return block("Isolér " + s.sym,
                 hint(s.sym + " står flere steder i formlen, så her bruges den omskrevne formel:") +
                     eqTable({{s.sym, renderMath(choice.expr), {}, false}}));
}

// The working, and the family's other root where it gives another positive
// answer: beside the first (`second`), or in its place when the first isn't
// positive. Returns the answer.
double workingBlocks(Solve& s, const NodePtr& expr, std::vector<StepBlock>& blocks) {
    std::string html;
    // Definitions first (Heron's s), then the target.
    for (const FormulaDef& d : s.f.definitions) {
        std::vector<WorkRow> rows;
        workOut(rows, d.symbol, parse(d.expr), s.values, s.degreeSet, unitOf(s.f, d.symbol));
        html += hint("Først " + d.label + " " + symbol(d.symbol) + ":") + eqTable(rows);
    }
    if (!s.f.definitions.empty()) html += hint("Så " + s.sym + ":");
    std::vector<WorkRow> rows;
    double answer = workOut(rows, s.target, expr, s.values, s.degreeSet, s.unit);
    html += eqTable(rows);

    std::string second;
    for (const FormulaForm& alt : s.f.altForms) {
        if (alt.var != s.target) continue;
        const NodePtr altExpr = parse(alt.expr);
        const double altValue = snapZero(eval(altExpr, s.values));
        if (!std::isfinite(altValue) || altValue <= 0 || std::fabs(altValue - answer) <= altValue * kSameRoot)
            break;
        std::vector<WorkRow> altRows;
        if (answer > 0) {
            std::map<std::string, double> scratch = s.values; // the check stays with the first answer
            workOut(altRows, s.target, altExpr, scratch, s.degreeSet, s.unit);
            second = hint("Formlen har to svar – " + s.f.altLabel + ":") + eqTable(altRows);
        } else {
            answer = workOut(altRows, s.target, altExpr, s.values, s.degreeSet, s.unit);
            html += hint(s.f.altNote) + eqTable(altRows);
        }
        break;
    }
    blocks.push_back(block("Sæt tallene ind og regn ud", html));
    if (!second.empty()) blocks.push_back(block("Anden mulighed", second));
    return answer;
}

// The answer put back into the formula as the book writes it; only when that
// formula's left side was given.
void checkBlock(const Solve& s, const NodePtr& primary, std::vector<StepBlock>& blocks) {
    const std::string& var = s.f.forms.front().var;
    auto given = s.values.find(var);
    if (s.target == var || given == s.values.end()) return;
    const std::string sym = symbol(var);
    const std::string unit = unitOf(s.f, var);
    const double back = snapZero(eval(primary, s.values));
    // |back − given| ≤ 1e-6 · max(|given|, 1)
    const bool ok =
        std::fabs(back - given->second) <= kCheckTolerance * std::max(std::fabs(given->second), 1.0);
    const std::string verdict =
        ok ? " <span class=\"ok\">✓ passer</span>"
           : " <span class=\"bad\">✗ passer ikke – tallene hænger måske ikke sammen</span>";
    blocks.push_back(
        block("Kontrol", hint("Sæt resultatet ind i den oprindelige formel – det skal give " + sym + " = " +
                              fmtWithUnit(given->second, unit) + ":") +
                             eqTable({{sym, renderMath(substitute(primary, s.values, &s.degreeSet)),
                                       "= " + fmtWithUnit(back, unit) + verdict, false}})));
}

} // namespace

std::string formulaText(const NodePtr& node) {
    if (!node) return "0";
    switch (node->kind) {
    case NodeKind::Num:
        return numberText(node->value);
    case NodeKind::Pi:
        return "PI";
    case NodeKind::Var:
        return node->name;
    case NodeKind::Sum: {
        std::string out;
        for (size_t i = 0; i < node->terms.size(); ++i) {
            const SumTerm& t = node->terms[i];
            if (i == 0)
                out += t.sign < 0 ? "-" : "";
            else
                out += t.sign < 0 ? "-" : "+";
            out += operandText(t.node, false);
        }
        return out;
    }
    case NodeKind::Prod: {
        std::string out;
        for (size_t i = 0; i < node->factors.size(); ++i) {
            const ProdFactor& f = node->factors[i];
            if (i == 0 && f.op == '/') out += "1";
            if (i > 0 || f.op == '/') out += f.op;
            // a/(b*c) and a/(b**c) keep their grouping; a*(b/c) reads the same either way.
            out += operandText(f.node, f.op == '/');
        }
        return out;
    }
    case NodeKind::Pow: {
        const std::string base =
            isAtom(node->base) ? formulaText(node->base) : parenthesised(formulaText(node->base));
        const std::string exp =
            isAtom(node->exponent) ? formulaText(node->exponent) : parenthesised(formulaText(node->exponent));
        return base + "**" + exp;
    }
    case NodeKind::Func:
        return node->name + "(" + formulaText(node->arg) + ")";
    default:
        return "0";
    }
}

NodePtr substitute(const NodePtr& node, const std::map<std::string, double>& values,
                   const std::set<std::string>* degreeSet) {
    if (!node) return node;
    if (node->kind == NodeKind::Var) {
        auto it = values.find(node->name);
        if (it == values.end()) return node;
        auto n = std::make_shared<Node>();
        n->kind = NodeKind::Num;
        n->value = it->second;
        n->degree = degreeSet && degreeSet->count(node->name) > 0;
        return n;
    }
    return mapChildren(node, [&](const NodePtr& c) { return substitute(c, values, degreeSet); });
}

NodePtr foldOnce(const NodePtr& node) {
    if (!node || node->kind == NodeKind::Num || node->kind == NodeKind::Pi || node->kind == NodeKind::Var)
        return node;
    bool innermost = true;
    for (const NodePtr& c : children(node))
        innermost = innermost && c && (c->kind == NodeKind::Num || c->kind == NodeKind::Pi);
    if (!innermost) return mapChildren(node, foldOnce);
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Num;
    n->value = eval(node, {});
    // An inverse trigonometric function yields an angle.
    n->degree = node->kind == NodeKind::Func &&
                (node->name == "asin" || node->name == "acos" || node->name == "atan");
    return n;
}

double workOut(std::vector<WorkRow>& rows, const std::string& name, const NodePtr& expr,
               std::map<std::string, double>& values, const std::set<std::string>& degreeSet,
               const std::string& unit) {
    const double value = snapZero(eval(expr, values));
    // √ of a negative number, a division by zero: no answer a student can use.
    if (!std::isfinite(value)) throw std::runtime_error("intet reelt svar");
    rows.push_back({symbol(name), renderMath(expr), {}, false});
    NodePtr cur = substitute(expr, values, &degreeSet);
    std::string last = render(expr, true);
    for (int round = 0; round < kMaxRounds && cur->kind != NodeKind::Num; ++round) {
        // A round that changes nothing a student can see gets no row.
        std::string shown = render(cur, true);
        if (shown != last) {
            rows.push_back({{}, renderMath(cur), {}, false});
            last = std::move(shown);
        }
        cur = foldOnce(cur);
    }
    rows.push_back({{}, "<b>" + fmtWithUnit(value, unit) + "</b>", {}, false});
    values[name] = value;
    return value;
}

FormChoice chooseForm(const Formula& f, const std::string& target) {
    FormChoice choice;
    if (f.forms.empty()) {
        choice.expr = makeNum(0);
        return choice;
    }
    const FormulaForm& primary = f.forms.front();
    const NodePtr expr = parse(primary.expr);
    if (target == primary.var) {
        choice.expr = expr;
        return choice;
    }
    Isolation iso;
    if (isolate(expr, primary.var, target, iso)) {
        choice.rearranged = true;
        choice.steps = std::move(iso.steps);
        choice.result = iso.result;
        choice.expr = iso.result;
        return choice;
    }
    // The catalogue's rewritten forms: for a quantity that stands twice, or in
    // a power the rearranger doesn't undo.
    for (const FormulaForm& form : f.forms)
        if (form.var == target) {
            choice.expr = parse(form.expr);
            return choice;
        }
    choice.expr = makeNum(0);
    return choice;
}

std::vector<FormulaForm> allForms(const Formula& f) {
    std::vector<FormulaForm> out;
    out.reserve(f.forms.size());
    for (const FormulaForm& form : f.forms)
        out.push_back({form.var, formulaText(chooseForm(f, form.var).expr)});
    return out;
}

SolveResult solveSheet(const Formula& f, std::map<std::string, double> values,
                       const std::map<std::string, std::string>& labels, const std::string& target,
                       const FigureSource& figure) {
    if (f.forms.empty()) throw std::runtime_error("ingen formel");
    // An empty field may arrive as NaN; the target is never a given.
    for (auto it = values.begin(); it != values.end();)
        it = std::isnan(it->second) || it->first == target ? values.erase(it) : std::next(it);

    Solve s{f, target, std::move(values), {}, unitOf(f, target), symbol(target)};
    for (const FormulaVar& v : f.vars)
        if (v.unit == "°") s.degreeSet.insert(v.symbol);
    const NodePtr primary = parse(f.forms.front().expr);
    const FormChoice choice = chooseForm(f, target);

    std::vector<StepBlock> blocks{knownBlock(s, labels), wantedBlock(s), formulaBlock(s, primary),
                                  isolationBlock(s, choice)};
    const double answer = workingBlocks(s, choice.expr, blocks);
    checkBlock(s, primary, blocks);

    std::string fig;
    if (figure && !f.figure.empty())
        if (std::string drawn = figure(f.figure, s.values, target); !drawn.empty())
            fig = "<div class=\"spoiler\">" + drawn + "</div>";

    SolveResult result;
    result.value = answer;
    result.html =
        "<div class=\"result\"><div class=\"spoiler\"><div class=\"facit\"><span class=\"k\">FACIT</span> "
        "&nbsp; <span class=\"big\">" +
        s.sym + " = " + fmtWithUnit(answer, s.unit) + "</span>" + prefixRemark(answer, s.unit) +
        "</div></div>" + fig + stepBlocks(blocks) + "</div>";
    return result;
}

} // namespace fl
