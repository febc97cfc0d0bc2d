// The typed-expression normaliser: what a student writes in a field or the
// pocket calculator ("√3·400", "2,5k", "sin⁻¹(0,5)", "2π") rewritten into the
// strict language of parser.cpp, evaluated (calc) or shown with its numbers
// as typed (prettyCalc). Text is UTF-8 at the edges and QString inside.
#include "fl/expr/markup.h"
#include "fl/expr/node.h"
#include "fl/expr/numbers.h"
#include "fl/expr/replace_each.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <functional>
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

std::string prettyCalc(const std::string& text) {
    static const QRegularExpression sqrtNumber(QStringLiteral("√\\s*(\\d+(?:[.,]\\d+)?)"));
    static const QRegularExpression literal(
        QStringLiteral("(\\d*[.,]?\\d+(?:[eE][-+]?\\d+)?)(?:(p|n|u|µ|m|k|M|G)(?![A-Za-z_(]))?"));

    QString s = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    normaliseSymbols(s, sqrtNumber);

    // Each number is shown as typed ("5,5k", "1·10⁻³") and read as machine text.
    const bool comma = displaySettings().decimalComma;
    std::vector<std::string> literals;
    replaceEach(s, literal, [&](const QRegularExpressionMatch& m, QString& out) {
        std::string num = ascii(m.capturedView(1));
        std::replace(num.begin(), num.end(), ',', '.');
        const size_t e = num.find_first_of("eE");
        const std::string mantissa = num.substr(0, e);
        const std::string exponent = e == std::string::npos ? std::string() : num.substr(e + 1);
        const QStringView prefix = m.capturedView(2);

        std::string shown = mantissa;
        if (comma) std::replace(shown.begin(), shown.end(), '.', ',');
        if (!exponent.empty()) {
            shown += "·10<sup>";
            for (char c : exponent) {
                if (c == '-')
                    shown += "−";
                else if (c != '+')
                    shown += c;
            }
            shown += "</sup>";
        }
        shown += prefix == u"u" ? std::string("µ") : utf8(prefix);
        literals.push_back(std::move(shown));

        out += latin1(mantissa);
        if (!exponent.empty()) out += QLatin1Char('e') + latin1(exponent);
        if (!prefix.isEmpty()) out += QLatin1Char('e') + QString::number(exponentOf(prefix));
    });
    addImplicitProducts(s);

    // Literals go to the numbers in the order mapChildren visits them, which
    // puts an exponent before its base; the preview may show 2^3 as 3^2.
    size_t next = 0;
    std::function<NodePtr(const NodePtr&)> give = [&](const NodePtr& n) -> NodePtr {
        if (n && n->kind == Num) {
            if (next >= literals.size()) return n;
            auto copy = std::make_shared<Node>(*n);
            copy->literal = literals[next++];
            copy->hasLiteral = true;
            return copy;
        }
        return mapChildren(n, give);
    };
    return renderMath(give(parse(utf8(s))));
}

} // namespace fl
