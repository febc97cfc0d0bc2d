// The rules the number readers and formatters keep, shared by the tests and
// the fuzzers: a field never throws and gives NaN or a finite number; every
// finite double formats to text that reads back as a finite number within one
// unit of the last digit shown. Each check is empty when the rule holds, else
// says what broke it.
#pragma once

#include "fl/expr/chars.h"
#include "fl/expr/numbers.h"

#include <cmath>
#include <limits>
#include <string>

namespace fl {

// Rounding to `sig` digits is off by at most half a unit (a whole one where
// the digits are cut at the largest double), reading back by half an ulp.
inline bool readsBackNear(double back, double v, int sig) {
    return std::isfinite(back) && std::fabs(back - v) <= 2 * std::fabs(v) * std::pow(10.0, 1 - sig) +
                                                             std::numeric_limits<double>::denorm_min();
}

// Under the current display settings.
inline std::string formatBreak(double v, int sig) {
    const std::string shown = fmtNumber(v, sig);
    if (!std::isfinite(v)) return shown == "?" ? "" : "fmtNumber of a non-finite value: " + shown;
    if (shown == "?" || shown.find("inf") != std::string::npos || shown.find("nan") != std::string::npos)
        return "fmtNumber: " + shown;
    const std::string rounded = fmtRounded(v, sig);
    if (!readsBackNear(chars::toDouble(rounded).value_or(NAN), v, sig)) return "fmtRounded: " + rounded;
    const std::string plain = fmtPlain(v, sig);
    if (!readsBackNear(chars::toDouble(plain).value_or(NAN), v, sig)) return "fmtPlain: " + plain;
    const std::string shortest = fmtShortest(v);
    if (chars::toDouble(shortest) != v) return "fmtShortest: " + shortest;
    const std::string carried = fmtValue10(v);
    if (!readsBackNear(readValue(carried), v, 10)) return "fmtValue10: " + carried;
    return {};
}

// A field as typed: NaN or a finite number, the plain reader's value where it
// reads the text, and a value that survives being carried to another field.
inline std::string valueBreak(const std::string& text) {
    double v = 0;
    try {
        v = readValue(text);
    } catch (...) {
        return "readValue threw";
    }
    if (std::isinf(v)) return "readValue gave an infinity";
    double mantissa = 0;
    std::string prefix;
    if (parseWithPrefix(text, &mantissa, &prefix)) {
        const double want = mantissa * prefixFactor(prefix);
        if (std::isfinite(want) ? v != want : !std::isnan(v)) return "readValue differs from parseWithPrefix";
    }
    if (std::isnan(v)) return {};
    const std::string carried = fmtValue10(v);
    if (!readsBackNear(readValue(carried), v, 10)) return "carried as " + carried;
    return {};
}

} // namespace fl
