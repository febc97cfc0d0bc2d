// The tool frame: form reading, the small texts of the sheets, and the step
// evaluator that writes a formula's working. One round of arithmetic is the
// solve driver's (foldOnce), so a tool's working reads like a formula page's.
#include "fl/tools/frame.h"

#include "fl/expr/eval.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/expr/symbols.h"
#include "fl/formulas/solve.h"

#include <cmath>
#include <stdexcept>

namespace fl {

namespace {

// A result smaller than this is shown and stored as 0.
constexpr double kZero = 1e-12;
// At most this many rounds of arithmetic are shown.
constexpr int kMaxRounds = 20;

double snapZero(double v) {
    return std::fabs(v) < kZero ? 0.0 : v;
}

bool isSpace(char c) {
    return static_cast<unsigned char>(c) <= 32;
}

bool endsWith(const std::string& s, const std::string& tail) {
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

// What a plain typed number looks like on the sheet: blanks gone, the decimal
// mark of the settings, a real minus, an exponent as a power of ten and the
// prefix as typed ("u" as µ). Anything else typed (an expression) shows as
// its value.
std::string displayForm(const std::string& text, double value) {
    double mantissa = 0;
    std::string prefix;
    if (!parseWithPrefix(text, &mantissa, &prefix)) return fmtNumber(value);
    std::string s;
    for (char c : text)
        if (!isSpace(c)) s += c;
    if (endsWith(s, prefix))
        s.erase(s.size() - prefix.size());
    else
        s = fmtShortest(mantissa); // "4k7": the prefix stood where the mark goes
    if (!s.empty() && s[0] == '+') s.erase(0, 1);
    std::string exponent;
    if (auto e = s.find_first_of("eE"); e != std::string::npos) {
        exponent = s.substr(e + 1);
        s.erase(e);
        if (!exponent.empty() && exponent[0] == '+') exponent.erase(0, 1);
        if (!exponent.empty() && exponent[0] == '-') exponent.replace(0, 1, "−");
    }
    const char mark = displaySettings().decimalComma ? ',' : '.';
    if (auto p = s.find_first_of(",."); p != std::string::npos) s[p] = mark;
    if (!s.empty() && s[0] == '-') s.replace(0, 1, "−");
    if (!exponent.empty()) s += "·10<sup>" + exponent + "</sup>";
    if (prefix == "u" || prefix == "μ") prefix = "µ";
    return s + prefix;
}

// Variables with a value become numbers; a given keeps the text it was typed as.
NodePtr substituteShown(const NodePtr& node, const std::map<std::string, double>& vars,
                        const std::map<std::string, std::string>& shown) {
    if (!node) return node;
    if (node->kind == NodeKind::Var) {
        auto it = vars.find(node->name);
        if (it == vars.end()) return node;
        auto n = std::make_shared<Node>();
        n->kind = NodeKind::Num;
        n->value = it->second;
        if (auto s = shown.find(node->name); s != shown.end()) {
            n->hasLiteral = true;
            n->literal = s->second;
        }
        return n;
    }
    return mapChildren(node, [&](const NodePtr& c) { return substituteShown(c, vars, shown); });
}

bool takesPrefix(const std::string& unit) {
    static const char* const kUnits[] = {"V", "A", "Ω", "W", "VA", "VAr", "F", "H", "Hz", "S"};
    for (const char* u : kUnits)
        if (unit == u) return true;
    return false;
}

} // namespace

const char* const kYdSheet = "YΔ-arket";

double ToolInputs::get(const std::string& key) const {
    auto it = numbers.find(key);
    return it == numbers.end() ? NAN : it->second;
}

ToolInputs readForm(const FormMap& form) {
    ToolInputs in;
    for (const auto& [key, text] : form) {
        bool empty = false;
        const double v = readValue(text, &empty);
        if (empty) continue;
        if (!std::isfinite(v)) {
            in.bad.push_back(key);
            continue;
        }
        in.numbers[key] = v;
        in.shown[key] = displayForm(text, v);
    }
    return in;
}

std::string renderToolSheet(const ToolSheet& sheet) {
    return "<div class=\"result\">" + fl::sheet(sheet.id, {sheet.crumb}, sheet.title, sheet.sections) + "</div>";
}

namespace tool {

std::string msg(const std::string& text, bool bad) {
    return msgBox(text, bad);
}

std::string formatValue(double value, const std::string& unit) {
    value = snapZero(value);
    const double mag = std::fabs(value);
    if (!takesPrefix(unit) || !std::isfinite(value) || value == 0.0 || (mag >= 0.1 && mag < 10000))
        return fmtWithUnit(value, unit);
    int e = static_cast<int>(std::floor(std::log10(mag) / 3)) * 3;
    e = std::max(-12, std::min(9, e));
    double scaled = value / std::pow(10.0, e);
    // Five digits would round 999,996 up to 1000: the next prefix reads better.
    if (std::fabs(scaled) >= 999.995 && e < 9) {
        e += 3;
        scaled /= 1000;
    }
    return fmtNumber(scaled) + " " + prefixFor(e) + unit;
}

std::string symbolHtml(const std::string& key) {
    return varSpan(symbolDisplay(key));
}

std::string symbolList(const std::vector<std::string>& keys) {
    std::string out;
    for (const std::string& k : keys) {
        if (!out.empty()) out += ", ";
        out += symbolHtml(k);
    }
    return out;
}

std::string hint(const std::string& html) {
    return "<p class=\"hint0\">" + html + "</p>";
}

std::string fillIn(const std::vector<std::string>& keys) {
    return "Udfyld " + symbolList(keys) + ".";
}

std::string shownWithUnit(const std::string& shown, const std::string& unit) {
    if (unit.empty()) return shown;
    static const char* const kPrefixes[] = {"p", "n", "µ", "m", "k", "M", "G"};
    for (const char* p : kPrefixes) {
        const std::string prefix = p;
        // A prefix stands after a digit; "1e3" has none.
        if (shown.size() > prefix.size() && endsWith(shown, prefix)) {
            const char before = shown[shown.size() - prefix.size() - 1];
            if (before >= '0' && before <= '9')
                return shown.substr(0, shown.size() - prefix.size()) + " " + prefix + unit;
        }
    }
    return unit == "°" ? shown + unit : shown + " " + unit;
}

} // namespace tool

void addGivenRow(ToolSheet& sheet, const std::string& name, const std::string& unit, const std::string& symbol,
                 const std::string& shown, const std::string& variable) {
    std::string value;
    if (!shown.empty()) {
        value = tool::shownWithUnit(shown, unit);
    } else {
        auto it = sheet.vars.find(variable);
        value = tool::formatValue(it == sheet.vars.end() ? NAN : it->second, unit);
    }
    sheet.sections.given.push_back(tool::symbolHtml(symbol) + " = " + value + " <span class=\"crumb\">– " + name +
                                   "</span>");
}

void addGivenInput(ToolSheet& sheet, const ToolInputs& in, const std::string& key, const std::string& name,
                   const std::string& unit, const std::string& fallback, const std::string& symbol) {
    auto it = in.shown.find(key);
    addGivenRow(sheet, name, unit, symbol.empty() ? key : symbol, it == in.shown.end() ? fallback : it->second,
                key);
}

StepOutcome evaluateStep(const std::string& target, const NodePtr& formula, std::map<std::string, double>& vars,
                         const std::string& unit, const std::map<std::string, std::string>& shown) {
    const double value = snapZero(eval(formula, vars));
    // √ of a negative number, a division by zero: no answer a student can use.
    if (!std::isfinite(value)) throw std::runtime_error("intet reelt svar");
    std::vector<WorkRow> rows{{tool::symbolHtml(target), renderMath(formula), {}, false}};
    NodePtr cur = substituteShown(formula, vars, shown);
    std::string last = render(formula, true);
    for (int round = 0; round < kMaxRounds && cur->kind != NodeKind::Num; ++round) {
        // A round that changes nothing a student can see gets no line.
        std::string text = render(cur, true);
        if (text != last) {
            rows.push_back({{}, renderMath(cur), {}, false});
            last = std::move(text);
        }
        cur = foldOnce(cur);
    }
    rows.push_back({{}, "<b>" + tool::formatValue(value, unit) + "</b>", {}, false});
    vars[target] = value;
    return {value, eqTable(rows)};
}

void addStepBlock(ToolSheet& sheet, const std::string& title, const std::string& page,
                  const std::vector<CalcStep>& steps, const std::string& leading) {
    std::string html = leading;
    for (const CalcStep& s : steps)
        html += evaluateStep(s.target, parse(s.formula), sheet.vars, s.unit, sheet.shown).html;
    sheet.sections.steps.push_back({title, page, html});
}

ToolOut runTool(const std::string& title, const std::function<void(ToolOut&)>& body) {
    ToolOut out;
    out.title = title;
    try {
        body(out);
    } catch (const std::exception& e) {
        out.ok = false;
        out.html.clear();
        out.recent.clear();
        out.err = tool::msg("Noget passer ikke – tjek værdierne. <span class=\"crumb\">" + htmlEscape(e.what()) +
                                "</span>",
                            true);
    }
    return out;
}

bool openForm(ToolOut& out, const FormMap& form, ToolInputs& in) {
    in = readForm(form);
    if (in.bad.empty()) return true;
    refuse(out, "Jeg kan ikke læse " + tool::symbolList(in.bad), in.bad);
    return false;
}

std::vector<std::string> missingKeys(const ToolInputs& in, const std::vector<std::string>& keys) {
    std::vector<std::string> out;
    for (const std::string& k : keys)
        if (!in.has(k)) out.push_back(k);
    return out;
}

bool refuseNegative(ToolOut& out, const ToolInputs& in, const std::vector<std::string>& keys) {
    std::vector<std::string> negative;
    for (const std::string& k : keys)
        if (in.get(k) < 0) negative.push_back(k);
    if (negative.empty()) return true;
    refuse(out, "Negative værdier giver ingen mening her – ret " + tool::symbolList(negative) + ".", negative);
    return false;
}

void refuse(ToolOut& out, const std::string& text, std::vector<std::string> keys) {
    out.err = tool::msg(text, true);
    out.badKeys = std::move(keys);
}

void finish(ToolOut& out, const ToolSheet& sheet, std::vector<RecentValue> recent) {
    out.html = renderToolSheet(sheet);
    out.recent = std::move(recent);
    out.ok = true;
}

} // namespace fl
