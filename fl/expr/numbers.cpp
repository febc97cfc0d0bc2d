// Numbers as the student types them and as the class's formula book prints
// them: the display settings, the metric prefixes, the field reader and the
// formatters. The typed-expression normaliser is in calc.cpp.
#include "fl/expr/numbers.h"

#include "fl/expr/chars.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace fl {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Prefix {
    const char* text;
    int exponent;
    double factor;
};

constexpr Prefix kPrefixes[] = {
    {"p", -12, 1e-12}, {"n", -9, 1e-9}, {"u", -6, 1e-6}, {"µ", -6, 1e-6}, {"μ", -6, 1e-6},
    {"m", -3, 1e-3},   {"k", 3, 1e3},   {"M", 6, 1e6},   {"G", 9, 1e9},
};

const Prefix* findPrefix(const std::string& text) {
    for (const auto& p : kPrefixes)
        if (text == p.text) return &p;
    return nullptr;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// Number of significant digits in the shortest text that reads back exactly.
int shortestDigits(double v) {
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific);
    int n = 0;
    for (char* p = buf; p < r.ptr && *p != 'e'; ++p)
        if (isDigit(*p)) ++n;
    return n;
}

// "%.*e" with `sig` significant digits. Where rounding up would pass the
// largest double (1.797…e308 to 2e308, which reads back as infinity), the
// digits are cut instead: a value carried to another field must stay a number.
std::string printSig(double v, int sig) {
    const int precision = std::max(sig - 1, 0);
    std::string text = chars::printE(v, precision);
    if (!std::isfinite(v) || std::isfinite(chars::toDouble(text).value_or(0.0))) return text;
    const std::string exact = chars::printE(v, 330); // every digit a double near 1e308 has
    const size_t digitsEnd = (v < 0 ? 1 : 0) + 1 + (precision > 0 ? 1 + size_t(precision) : 0);
    return exact.substr(0, digitsEnd) + exact.substr(exact.find('e'));
}

// value rounded to `sig` significant digits, as printSig writes it.
double roundSig(double v, int sig) {
    return chars::toDouble(printSig(v, sig)).value_or(v);
}

// "4k7", "-2M2", "1u5": digits, one prefix, digits and nothing else. An
// electrician writes the prefix where the decimal mark goes, so 4k7 is 4,7 k.
bool readElectricianNotation(const std::string& s, double* mantissa, std::string* prefix) {
    const size_t n = s.size();
    size_t i = n > 0 && (s[0] == '+' || s[0] == '-') ? 1 : 0;
    const size_t whole = i;
    while (i < n && isDigit(s[i]))
        ++i;
    if (i == whole) return false;
    for (const auto& p : kPrefixes) {
        const size_t len = std::char_traits<char>::length(p.text);
        if (s.compare(i, len, p.text) != 0) continue;
        size_t j = i + len;
        const size_t fraction = j;
        while (j < n && isDigit(s[j]))
            ++j;
        if (j == fraction || j != n) return false;
        const auto value = chars::toDouble(s.substr(0, i) + "." + s.substr(fraction));
        if (!value) return false;
        if (mantissa) *mantissa = *value;
        if (prefix) *prefix = p.text;
        return true;
    }
    return false;
}

void replaceFirst(std::string& s, char from, char to) {
    if (auto i = s.find(from); i != std::string::npos) s[i] = to;
}

} // namespace

DisplaySettings& displaySettings() {
    static DisplaySettings settings;
    return settings;
}

int prefixExponent(const std::string& prefix, bool* found) {
    const Prefix* p = findPrefix(prefix);
    if (found) *found = p != nullptr;
    return p ? p->exponent : 0;
}

double prefixFactor(const std::string& prefix, bool* found) {
    const Prefix* p = findPrefix(prefix);
    if (found) *found = p != nullptr;
    return p ? p->factor : 1.0;
}

std::string prefixFor(int exponent) {
    switch (exponent) {
    case -12:
        return "p";
    case -9:
        return "n";
    case -6:
        return "µ";
    case -3:
        return "m";
    case 3:
        return "k";
    case 6:
        return "M";
    case 9:
        return "G";
    default:
        return "";
    }
}

bool isKnownCalcName(const std::string& name) {
    static const char* const names[] = {"sqrt", "abs",  "log",  "ln",   "sin", "cos",
                                        "tan",  "asin", "acos", "atan", "PI",  "pi"};
    return std::any_of(std::begin(names), std::end(names), [&](const char* n) { return name == n; });
}

std::string trimmed(const std::string& text) {
    auto low = [](char c) { return static_cast<unsigned char>(c) <= 32; };
    size_t b = 0, e = text.size();
    while (b < e && low(text[b]))
        ++b;
    while (e > b && low(text[e - 1]))
        --e;
    return text.substr(b, e - b);
}

bool parseWithPrefix(const std::string& text, double* mantissa, std::string* prefix) {
    // Blanks anywhere go, so "5 500" and "5,5 k" read; the no-break spaces a
    // copied Danish number carries as thousands separators count as blanks.
    std::string s;
    s.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (isSpace(text[i])) continue;
        if (c == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) == 0xA0) {
            ++i; // U+00A0
            continue;
        }
        if (c == 0xE2 && i + 2 < text.size() && static_cast<unsigned char>(text[i + 1]) == 0x80 &&
            (static_cast<unsigned char>(text[i + 2]) == 0x89 ||
             static_cast<unsigned char>(text[i + 2]) == 0xAF)) {
            i += 2; // U+2009, U+202F
            continue;
        }
        s += text[i];
    }
    replaceFirst(s, ',', '.'); // only the first: "1,234,5" is no number

    const size_t n = s.size();
    size_t i = 0;
    if (i < n && (s[i] == '+' || s[i] == '-')) ++i;
    size_t digits = 0;
    while (i < n && isDigit(s[i]))
        ++i, ++digits;
    if (i < n && s[i] == '.') {
        ++i;
        while (i < n && isDigit(s[i]))
            ++i, ++digits;
    }
    if (digits == 0) return false;
    if (i < n && (s[i] == 'e' || s[i] == 'E')) {
        size_t j = i + 1;
        if (j < n && (s[j] == '+' || s[j] == '-')) ++j;
        if (j < n && isDigit(s[j])) {
            while (j < n && isDigit(s[j]))
                ++j;
            i = j;
        }
    }
    const std::string suffix = s.substr(i);
    if (!suffix.empty() && !findPrefix(suffix)) return readElectricianNotation(s, mantissa, prefix);
    const auto value = chars::toDouble(std::string_view(s).substr(0, i));
    if (!value) return false;
    if (mantissa) *mantissa = *value;
    if (prefix) *prefix = suffix;
    return true;
}

double readValue(const std::string& text, bool* empty) {
    const std::string t = trimmed(text);
    if (empty) *empty = t.empty();
    if (t.empty()) return kNaN;
    double mantissa = 0;
    std::string prefix;
    if (parseWithPrefix(t, &mantissa, &prefix)) {
        // "1e999" overflows: no usable value, like anything else unreadable.
        const double v = mantissa * prefixFactor(prefix);
        return std::isfinite(v) ? v : kNaN;
    }
    try {
        const double v = calc(t);
        return std::isfinite(v) ? v : kNaN;
    } catch (...) {
        return kNaN;
    }
}

std::string superscript(const std::string& text) {
    static const char* const digits[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string out;
    for (char c : text) {
        if (isDigit(c))
            out += digits[c - '0'];
        else if (c == '-')
            out += "⁻";
        else
            out += c;
    }
    return out;
}

std::string fmtPlain(double value, int sig) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    if (value == 0) return "0";
    const std::string e = printSig(value, sig); // [-]d.ddde±xx
    const bool neg = e[0] == '-';
    const size_t start = neg ? 1 : 0;
    const size_t epos = e.find('e');
    std::string digits;
    for (size_t i = start; i < epos; ++i)
        if (e[i] != '.') digits += e[i];
    while (digits.size() > 1 && digits.back() == '0')
        digits.pop_back();
    int x = 0;
    const char* xs = e.data() + epos + 1;
    if (*xs == '+') ++xs;
    std::from_chars(xs, e.data() + e.size(), x);

    std::string out;
    const long len = static_cast<long>(digits.size());
    if (x < 0)
        out = "0." + std::string(static_cast<size_t>(-x - 1), '0') + digits;
    else if (len > x + 1)
        out = digits.substr(0, static_cast<size_t>(x + 1)) + "." + digits.substr(static_cast<size_t>(x + 1));
    else
        out = digits + std::string(static_cast<size_t>(x + 1 - len), '0');
    return neg ? "-" + out : out;
}

std::string fmtShortest(double value) {
    if (!std::isfinite(value)) return fmtPlain(value, 17);
    // No precision below the shortest round-trip length can read back; start
    // one below it because that length may be one too long near e±100.
    for (int p = std::max(1, shortestDigits(value) - 1); p <= 17; ++p)
        if (chars::toDouble(chars::printG(value, p)) == value) return fmtPlain(value, p);
    return fmtPlain(value, 17);
}

std::string fmtRounded(double value, int sig) {
    if (value == 0) return "0";
    return fmtShortest(roundSig(value, sig));
}

std::string fmtNumber(double value, int sig) {
    if (!std::isfinite(value)) return "?";
    if (std::fabs(value) < 1e-12) value = 0.0;
    const DisplaySettings& ds = displaySettings();
    // Book style (d2) only applies to the default precision; explicit callers keep theirs.
    const bool two = ds.rounding == "d2" && sig == 5;
    const int d = two ? 3 : sig;
    const double a = std::fabs(value);

    std::string s;
    if (two && a >= 1 && a < 1e7) {
        // Two decimals without trailing zeros: 12.3456 → 12.35, 12.5 → 12.5.
        s = fmtShortest(chars::toDouble(chars::printF(value, 2)).value_or(value));
    } else if (value != 0 && (a < 0.001 || a >= 1e7)) {
        // Engineering notation: the exponent a multiple of 3, the mantissa in [1, 1000).
        int e = static_cast<int>(std::floor(std::log10(a) / 3) * 3);
        double m = roundSig(value / std::pow(10.0, e), d);
        if (std::fabs(m) >= 1000) { // 999.9996e6 rounds up to 1000e6 = 1e9
            m = roundSig(m / 1000, d);
            e += 3;
        }
        s = fmtShortest(m) + "·10" + superscript(std::to_string(e));
    } else {
        s = fmtRounded(value, d);
    }
    if (!s.empty() && s[0] == '-') s.replace(0, 1, "−");
    if (ds.decimalComma) replaceFirst(s, '.', ',');
    return s;
}

std::string fmtWithUnit(double value, const std::string& unit) {
    std::string s = fmtNumber(value, 5);
    if (unit.empty()) return s;
    if (unit == "°") return s + unit;
    return s + " " + unit;
}

std::string fmtValue10(double value) {
    std::string s = fmtRounded(value, 10);
    if (displaySettings().decimalComma) replaceFirst(s, '.', ',');
    return s;
}

} // namespace fl
