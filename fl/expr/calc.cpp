// The typed-expression normaliser: what a student writes in a field or the
// pocket calculator ("√3·400", "2,5k", "sin⁻¹(0,5)", "2π") rewritten into the
// strict language of parser.cpp, evaluated (calc) or shown with its numbers
// as typed (prettyCalc). Text is UTF-8 at the edges and QString inside.
#include "fl/expr/numbers.h"

#include "fl/expr/chars.h"
#include "fl/expr/eval.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/expr/replace_each.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <stdexcept>

namespace fl {

namespace {

// The calculator recomputes on every keystroke, so each pattern is compiled once.
const QRegularExpression& reInverseTrig() {
    static const QRegularExpression re(QStringLiteral("(sin|cos|tan)\\s*⁻¹"));
    return re;
}

bool isAsciiSpace(QChar c) {
    const char16_t u = c.unicode();
    return u == ' ' || u == '\t' || u == '\n' || u == '\v' || u == '\f' || u == '\r';
}

bool isAsciiAlnum(QChar c) {
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9');
}

// The symbol rewrites shared by calc and prettyCalc, up to the prefixes.
// `sqrtNumber` differs: calc has replaced commas already, prettyCalc keeps them.
void normaliseSymbols(QString& s, const QRegularExpression& sqrtNumber) {
    // The pattern passes are skipped when their sign is absent: same result, less work per keystroke.
    if (s.contains(QChar(0x207B))) s.replace(reInverseTrig(), QStringLiteral("a\\1")); // sin⁻¹ → asin
    s.replace(QChar(0x00D7), QLatin1Char('*'));                                        // ×
    s.replace(QChar(0x00B7), QLatin1Char('*'));                                        // ·
    s.replace(QChar(0x00F7), QLatin1Char('/'));                                        // ÷
    s.replace(QChar(0x2212), QLatin1Char('-'));                                        // −
    s.replace(QChar(0x03C0), QStringLiteral("PI"));                                    // π
    if (s.contains(QChar(0x221A))) {
        s.replace(sqrtNumber, QStringLiteral("sqrt(\\1)")); // √3 → sqrt(3)
        s.replace(QChar(0x221A), QStringLiteral("sqrt"));   // √(a+b) → sqrt(a+b)
    }
    s.replace(QLatin1Char('^'), QStringLiteral("**"));
    s.replace(QChar(0x03BC), QChar(0x00B5)); // Greek mu → micro sign
}

// "4k7", "2M2", "0m5": an electrician's value, the prefix standing where the
// decimal mark goes. Only a whole number token of that shape: "4,7k7", "1e4k7",
// "R4k7" and "4k7x" keep their usual reading. Shared by calc and the preview
// so both read the same tokens.
const QRegularExpression& reNotation() {
    static const QRegularExpression re(
        QStringLiteral("(?<![A-Za-z_µ\\d.,])(?<![eE][-+])(\\d+)(p|n|u|µ|m|k|M|G)(\\d+)(?![A-Za-z_µ\\d.,])"));
    return re;
}

// 2π, 3sin(30), 2(5), 2ans and (a)(b) multiply; nothing else does.
void addImplicitProducts(QString& s) {
    static const QRegularExpression digitBefore(
        QStringLiteral("(\\d)\\s*(?=PI|pi|sqrt|sin|cos|tan|asin|acos|atan|ans|\\()"));
    static const QRegularExpression parens(QStringLiteral("\\)\\s*\\("));
    s.replace(digitBefore, QStringLiteral("\\1*"));
    if (s.contains(QLatin1Char(')'))) s.replace(parens, QStringLiteral(")*("));
}

std::string utf8(QStringView s) {
    const QByteArray b = s.toUtf8();
    return std::string(b.constData(), static_cast<size_t>(b.size()));
}

// The matched number texts are ASCII by their patterns.
std::string ascii(QStringView s) {
    std::string out;
    out.reserve(static_cast<size_t>(s.size()));
    for (QChar c : s)
        out += static_cast<char>(c.unicode());
    return out;
}

QLatin1String latin1(const std::string& s) {
    return QLatin1String(s.data(), static_cast<qsizetype>(s.size()));
}

int exponentOf(QStringView prefix) {
    return prefixExponent(utf8(prefix));
}

} // namespace

double calc(const std::string& text, const std::map<std::string, double>* vars) {
    static const QRegularExpression sqrtNumber(QStringLiteral("√\\s*([\\d.]+)"));
    static const QRegularExpression prefixed(QStringLiteral("(\\d)(p|n|u|µ|m|k|M|G)(?![A-Za-z_(])"));
    // A number glued to the end of a name belongs to the name ("x2", "R1"), as
    // in the tokeniser; blanking it would report "x0" and refuse a key "R1".
    static const QRegularExpression number(QStringLiteral("(?<![A-Za-z_])\\d*\\.?\\d+(?:[eE][-+]?\\d+)?"));
    static const QRegularExpression name(QStringLiteral("[A-Za-z_]\\w*"));

    QString s = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    s.replace(QLatin1Char(','), QLatin1Char('.')); // every comma, unlike the plain reader
    normaliseSymbols(s, sqrtNumber);

    // 4k7 → 4.7e3, before the plain prefixes would make it 4e37.
    replaceEach(s, reNotation(), [](const QRegularExpressionMatch& m, QString& out) {
        out += m.capturedView(1);
        out += QLatin1Char('.');
        out += m.capturedView(3);
        out += QLatin1Char('e');
        out += QString::number(exponentOf(m.capturedView(2)));
    });
    // 5.5k → 5.5e3, 70u → 70e-6; a letter or "(" behind keeps "3min" and "2m(" as they are.
    replaceEach(s, prefixed, [](const QRegularExpressionMatch& m, QString& out) {
        out += m.capturedView(1);
        out += QLatin1Char('e');
        out += QString::number(exponentOf(m.capturedView(2)));
    });
    addImplicitProducts(s);

    // What is left once the numbers are gone must be names, operators and blanks.
    QString work = s;
    work.replace(number, QStringLiteral("0"));
    for (QChar c : work) {
        if (isAsciiAlnum(c) || c == QLatin1Char('_') || isAsciiSpace(c)) continue;
        if (QStringView(u"+-*/().").contains(c)) continue;
        throw std::runtime_error("Ukendt tegn");
    }
    for (auto it = name.globalMatch(work); it.hasNext();) {
        const std::string n = utf8(it.next().captured(0));
        if (isKnownCalcName(n) || (vars && vars->count(n))) continue;
        throw std::runtime_error("Ukendt navn: " + n);
    }

    static const std::map<std::string, double> none;
    return eval(parse(utf8(s)), vars ? *vars : none);
}

namespace {

// A number as the student typed it, and the value the parser will read from
// its machine text; the value pairs each literal with its node.
struct Literal {
    std::string shown;
    double value = 0;
    bool checkable = false; // false when the machine text is no single number token
    bool asValue = false;   // the node is shown by its value: the typed form isn't what is computed
};

// Gives each number node its literal in reading order: a power's base before
// its exponent, terms and factors left to right, as the tokens stood.
NodePtr giveLiterals(const NodePtr& n, const std::vector<Literal>& literals, size_t& next) {
    if (!n) return n;
    switch (n->kind) {
    case NodeKind::Num: {
        if (next >= literals.size()) return n;
        const Literal& lit = literals[next++];
        if (lit.asValue) return n;
        // A literal that lands on another number would show the student a
        // calculation that isn't the one performed.
        if (lit.checkable && lit.value != n->value)
            throw std::logic_error("prettyCalc: literal out of step");
        auto copy = std::make_shared<Node>(*n);
        copy->literal = lit.shown;
        copy->hasLiteral = true;
        return copy;
    }
    case NodeKind::Sum: {
        std::vector<SumTerm> terms;
        terms.reserve(n->terms.size());
        for (const auto& t : n->terms)
            terms.push_back({t.sign, giveLiterals(t.node, literals, next)});
        return makeSumRaw(std::move(terms));
    }
    case NodeKind::Prod: {
        std::vector<ProdFactor> factors;
        factors.reserve(n->factors.size());
        for (const auto& f : n->factors)
            factors.push_back({f.op, giveLiterals(f.node, literals, next)});
        return makeProdRaw(std::move(factors));
    }
    case NodeKind::Pow: {
        NodePtr base = giveLiterals(n->base, literals, next);
        NodePtr exponent = giveLiterals(n->exponent, literals, next);
        return makePow(std::move(base), std::move(exponent));
    }
    case NodeKind::Func:
        return makeFunc(n->name, giveLiterals(n->arg, literals, next));
    default:
        return n;
    }
}

} // namespace

std::string prettyCalc(const std::string& text) {
    // The character classes follow calc's after its comma rewrite, so that
    // both read the same numbers out of the same text.
    static const QRegularExpression sqrtNumber(QStringLiteral("√\\s*([\\d.,]+)"));
    // A number as the tokeniser reads one ("5", "2,5", "5,", ",5", "1e-3"), not inside a name
    // ("R12"), behind a prefix ("2µ5") or behind another number's digits; a prefix only
    // right after a digit, as in calc.
    // "4k7" is tried first (groups 1 to 3), as calc rewrites it first.
    static const QRegularExpression literal(
        reNotation().pattern() +
        QStringLiteral("|(?<![A-Za-z_µ\\d.,])((?:\\d+(?:[.,]\\d*)?|[.,]\\d+)(?:[eE][-+]?\\d+)?)"
                       "(?:(?<=\\d)(p|n|u|µ|m|k|M|G)(?![A-Za-z_(]))?"));

    QString s = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    normaliseSymbols(s, sqrtNumber);

    // Each number is shown as typed ("5,5k", "1·10⁻³") and read as machine text.
    const bool comma = displaySettings().decimalComma;
    std::vector<Literal> literals;
    replaceEach(s, literal, [&](const QRegularExpressionMatch& m, QString& out) {
        const bool notation = m.capturedStart(1) >= 0;
        std::string num =
            notation ? ascii(m.capturedView(1)) + "." + ascii(m.capturedView(3)) : ascii(m.capturedView(4));
        std::replace(num.begin(), num.end(), ',', '.');
        const size_t e = num.find_first_of("eE");
        const std::string mantissa = num.substr(0, e);
        const std::string exponent = e == std::string::npos ? std::string() : num.substr(e + 1);
        const QStringView prefix = m.capturedView(notation ? 2 : 5);

        Literal lit;
        lit.shown = mantissa.back() == '.' ? mantissa.substr(0, mantissa.size() - 1) : mantissa;
        if (comma) std::replace(lit.shown.begin(), lit.shown.end(), '.', ',');
        if (!exponent.empty()) {
            lit.shown += "·10<sup>";
            for (char c : exponent) {
                if (c == '-')
                    lit.shown += "−";
                else if (c != '+')
                    lit.shown += c;
            }
            lit.shown += "</sup>";
        }
        lit.shown += prefix == u"u" ? std::string("µ") : utf8(prefix);

        std::string machine = mantissa;
        if (!exponent.empty()) machine += "e" + exponent;
        if (!prefix.isEmpty()) machine += "e" + std::to_string(exponentOf(prefix));
        // "1e3k" becomes "1e3e3", two tokens that the parser refuses anyway.
        lit.checkable = exponent.empty() || prefix.isEmpty();
        // A digit right after the prefix joins its exponent, as in calc ("1,5m2" is 1.5e-32):
        // showing "1m" would hide what is computed.
        const qsizetype after = m.capturedEnd(0);
        lit.asValue = !prefix.isEmpty() && after < s.size() && s.at(after) >= u'0' && s.at(after) <= u'9';
        if (lit.checkable) lit.value = chars::toDouble(machine).value_or(0.0);
        literals.push_back(std::move(lit));
        out += latin1(machine);
    });
    // A comma outside a number is a point to calc ("sin(30,)" reads 30.).
    s.replace(QLatin1Char(','), QLatin1Char('.'));
    addImplicitProducts(s);

    size_t next = 0;
    return renderMath(giveLiterals(parse(utf8(s)), literals, next));
}

} // namespace fl
