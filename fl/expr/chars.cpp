// std::from_chars / std::to_chars behind the few printf and strtod shapes the
// formatters need. from_chars reports out-of-range without a value, so the
// strtod answer (infinity or zero) is worked out here from the magnitude.
#include "fl/expr/chars.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

namespace fl::chars {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Decimal magnitude of an unsigned number text that from_chars found out of
// range: > 0 means it overflowed, otherwise it underflowed.
long magnitude(std::string_view t) {
    size_t i = 0;
    long lead = 0; // digits before the point, leading zeros skipped
    bool seenNonZero = false;
    for (; i < t.size() && isDigit(t[i]); ++i) {
        if (t[i] != '0') seenNonZero = true;
        if (seenNonZero) ++lead;
    }
    long fracZeros = 0;
    if (i < t.size() && t[i] == '.') {
        ++i;
        for (; i < t.size() && isDigit(t[i]); ++i) {
            if (!seenNonZero && t[i] == '0')
                ++fracZeros;
            else
                seenNonZero = true;
        }
    }
    long mag = lead > 0 ? lead : -fracZeros;
    if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
        ++i;
        bool neg = false;
        if (i < t.size() && (t[i] == '+' || t[i] == '-')) neg = t[i++] == '-';
        long exp = 0;
        for (; i < t.size() && isDigit(t[i]); ++i)
            exp = std::min(exp * 10 + (t[i] - '0'), 100000L);
        mag += neg ? -exp : exp;
    }
    return mag;
}

std::string print(double value, std::chars_format fmt, int precision) {
    // Fixed notation of 1e308 needs 309 digits before the point.
    std::vector<char> buf(static_cast<size_t>(std::max(precision, 0)) + 400);
    auto r = std::to_chars(buf.data(), buf.data() + buf.size(), value, fmt, std::max(precision, 0));
    return std::string(buf.data(), r.ptr);
}

} // namespace

std::optional<double> toDouble(std::string_view text) {
    bool neg = false;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        neg = text[0] == '-';
        text.remove_prefix(1);
    }
    // from_chars would take "inf" and "nan"; strtod-shaped numbers start with a digit or a point.
    if (text.empty() || !(isDigit(text[0]) || text[0] == '.')) return std::nullopt;
    double v = 0.0;
    auto r = std::from_chars(text.data(), text.data() + text.size(), v, std::chars_format::general);
    if (r.ptr != text.data() + text.size()) return std::nullopt;
    if (r.ec == std::errc::result_out_of_range)
        v = magnitude(text) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    else if (r.ec != std::errc())
        return std::nullopt;
    return neg ? -v : v;
}

std::string printE(double value, int precision) {
    return print(value, std::chars_format::scientific, precision);
}
std::string printF(double value, int precision) {
    return print(value, std::chars_format::fixed, precision);
}
std::string printG(double value, int precision) {
    return print(value, std::chars_format::general, std::max(precision, 1));
}

} // namespace fl::chars
