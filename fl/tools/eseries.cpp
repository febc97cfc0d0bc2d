// The E series and the colour table, and the two directions of the code:
// rings to ohms and ohms to rings. Values are kept as whole digits and a
// power of ten, so that 0,47 Ω and 4,7 MΩ come out exact.
#include "fl/tools/resistors.h"

#include "fl/expr/numbers.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

// Two values this close count as one.
constexpr double kSame = 1e-9;

bool same(double a, double b) {
    return std::fabs(a - b) <= kSame * std::max(std::fabs(a), std::fabs(b));
}

// Every standard value of the decades around `ohms`, ascending.
std::vector<double> candidates(double ohms, ESeries s) {
    const std::vector<int>& digits = seriesDigits(s);
    const int width = s == ESeries::E96 ? 3 : 2;
    const int decade = static_cast<int>(std::floor(std::log10(ohms)));
    std::vector<double> out;
    for (int e = decade - 1; e <= decade + 1; ++e)
        for (int d : digits)
            out.push_back(scaledDigits(d, e - (width - 1)));
    return out;
}

} // namespace

const std::vector<int>& seriesDigits(ESeries s) {
    // IEC 60063. E24 keeps its historical values (27, 30, 33, 36, 39, 43, 47,
    // 82) where the geometric rule would give others; E96 follows the rule.
    static const std::vector<int> e12{10, 12, 15, 18, 22, 27, 33, 39, 47, 56, 68, 82};
    static const std::vector<int> e24{10, 11, 12, 13, 15, 16, 18, 20, 22, 24, 27, 30,
                                      33, 36, 39, 43, 47, 51, 56, 62, 68, 75, 82, 91};
    static const std::vector<int> e96{
        100, 102, 105, 107, 110, 113, 115, 118, 121, 124, 127, 130, 133, 137, 140, 143, 147, 150, 154, 158,
        162, 165, 169, 174, 178, 182, 187, 191, 196, 200, 205, 210, 215, 221, 226, 232, 237, 243, 249, 255,
        261, 267, 274, 280, 287, 294, 301, 309, 316, 324, 332, 340, 348, 357, 365, 374, 383, 392, 402, 412,
        422, 432, 442, 453, 464, 475, 487, 499, 511, 523, 536, 549, 562, 576, 590, 604, 619, 634, 649, 665,
        681, 698, 715, 732, 750, 768, 787, 806, 825, 845, 866, 887, 909, 931, 953, 976};
    switch (s) {
    case ESeries::E12:
        return e12;
    case ESeries::E24:
        return e24;
    default:
        return e96;
    }
}

const char* seriesName(ESeries s) {
    return s == ESeries::E12 ? "E12" : s == ESeries::E24 ? "E24" : "E96";
}

bool seriesFromName(const std::string& name, ESeries* out) {
    for (ESeries s : {ESeries::E12, ESeries::E24, ESeries::E96})
        if (name == seriesName(s)) {
            *out = s;
            return true;
        }
    return false;
}

double scaledDigits(long long digits, int exponent) {
    // Powers of ten up to 10²² are exact doubles; a division by one rounds once.
    const double d = static_cast<double>(digits);
    return exponent >= 0 ? d * std::pow(10.0, exponent) : d / std::pow(10.0, -exponent);
}

double nearestStandard(double ohms, ESeries s) {
    if (!std::isfinite(ohms) || !(ohms > 0)) return NAN;
    double best = NAN, bestDistance = INFINITY;
    for (double c : candidates(ohms, s)) {
        // By ratio, as the series are built: 9,1 lies 0,9 from both 8,2 and 10,
        // but 11 % above the one and 9 % below the other.
        const double distance = std::fabs(std::log(ohms / c));
        if (distance < bestDistance - 1e-12) {
            best = c;
            bestDistance = distance;
        }
    }
    return best;
}

void standardNeighbours(double ohms, ESeries s, double* below, double* above) {
    *below = *above = NAN;
    if (!std::isfinite(ohms) || !(ohms > 0)) return;
    for (double c : candidates(ohms, s)) {
        if (c <= ohms || same(c, ohms)) *below = c;
        if ((c >= ohms || same(c, ohms)) && std::isnan(*above)) *above = c;
    }
}

bool isStandard(double ohms, ESeries s) {
    return std::isfinite(ohms) && ohms > 0 && same(nearestStandard(ohms, s), ohms);
}

std::string ohmsText(double ohms) {
    // Below 1 kΩ plain ohms: a resistor is never labelled in mΩ.
    static const struct {
        double from;
        const char* prefix;
    } kSteps[] = {{1e9, "G"}, {1e6, "M"}, {1e3, "k"}};
    const double mag = std::fabs(ohms);
    if (std::isfinite(ohms))
        for (const auto& s : kSteps)
            // 999 999,99 Ω shows as 1 MΩ, not as 1000 kΩ.
            if (mag >= s.from * 0.999995) return fmtNumber(ohms / s.from) + " " + s.prefix + "Ω";
    return fmtWithUnit(ohms, "Ω");
}

const std::vector<BandColour>& bandColours() {
    // Digit, multiplier exponent, tolerance in %, temperature coefficient in ppm/K.
    static const std::vector<BandColour> table{
        {"sort", "sort", "#1c1c1c", 0, 0, -1, 250},  {"brun", "brun", "#7a4520", 1, 1, 1, 100},
        {"rod", "rød", "#d32f2f", 2, 2, 2, 50},      {"orange", "orange", "#f57c00", 3, 3, 0.05, 15},
        {"gul", "gul", "#fbc02d", 4, 4, 0.02, 25},   {"gron", "grøn", "#2e7d32", 5, 5, 0.5, 20},
        {"bla", "blå", "#1e5bc6", 6, 6, 0.25, 10},   {"violet", "violet", "#7b1fa2", 7, 7, 0.1, 5},
        {"gra", "grå", "#8c8c8c", 8, 8, 0.01, 1},    {"hvid", "hvid", "#f4f4f4", 9, 9, -1, -1},
        {"guld", "guld", "#c9a227", -1, -1, 5, -1},  {"solv", "sølv", "#b9bdc3", -1, -2, 10, -1},
        {"ingen", "ingen ring", "", -1, 99, 20, -1},
    };
    return table;
}

const BandColour* findBand(const std::string& key) {
    for (const BandColour& b : bandColours())
        if (b.key == key) return &b;
    return nullptr;
}

std::vector<const BandColour*> bandsFor(BandRole role) {
    std::vector<const BandColour*> out;
    for (const BandColour& b : bandColours()) {
        const bool fits = role == BandRole::Digit        ? b.digit >= 0
                          : role == BandRole::Multiplier ? b.exponent != 99
                          : role == BandRole::Tolerance  ? b.tolerance > 0
                                                         : b.tempco > 0;
        if (fits) out.push_back(&b);
    }
    return out;
}

ColourReading readBands(const std::vector<std::string>& keys) {
    ColourReading r;
    const size_t n = keys.size();
    if (n < 4 || n > 6) {
        r.error = "En modstand har 4, 5 eller 6 ringe.";
        return r;
    }
    const size_t digits = n == 4 ? 2 : 3;
    std::vector<const BandColour*> band(n);
    for (size_t i = 0; i < n; ++i)
        band[i] = findBand(keys[i]);
    auto refuse = [&](size_t place, const std::string& text) {
        r.error = text;
        r.badRing = {static_cast<int>(place + 1)};
        return r;
    };
    long long value = 0;
    for (size_t i = 0; i < digits; ++i) {
        if (!band[i] || band[i]->digit < 0)
            return refuse(i, "Ring " + std::to_string(i + 1) + " er et ciffer og kan ikke være " +
                                 (band[i] ? band[i]->name : keys[i]) + ".");
        value = value * 10 + band[i]->digit;
    }
    // A black first ring happens when the rings are read from the wrong end.
    if (band[0]->digit == 0)
        return refuse(
            0, "Første ring kan ikke være sort – vend modstanden og læs fra den anden ende (ringen for "
               "tolerance sidder tættest på enden og står lidt for sig selv).");
    const BandColour* mult = band[digits];
    if (!mult || mult->exponent == 99)
        return refuse(digits, "Ring " + std::to_string(digits + 1) + " er multiplikatoren og kan ikke være " +
                                  (mult ? mult->name : keys[digits]) + ".");
    const BandColour* tol = band[digits + 1];
    if (!tol || tol->tolerance < 0)
        return refuse(digits + 1, "Ring " + std::to_string(digits + 2) + " er tolerancen og kan ikke være " +
                                      (tol ? tol->name : keys[digits + 1]) + ".");
    if (n == 6) {
        const BandColour* tc = band[5];
        if (!tc || tc->tempco < 0)
            return refuse(5, "Ring 6 er temperaturkoefficienten og kan ikke være " +
                                 (tc ? tc->name : keys[5]) + ".");
        r.tempco = tc->tempco;
    }
    r.ohms = scaledDigits(value, mult->exponent);
    r.tolerance = tol->tolerance;
    return r;
}

std::vector<std::string> valueBands(double ohms, int digits) {
    if (!std::isfinite(ohms) || !(ohms > 0) || digits < 2 || digits > 3) return {};
    int exponent = static_cast<int>(std::floor(std::log10(ohms))) - (digits - 1);
    long long whole = std::llround(ohms / scaledDigits(1, exponent));
    // log10 may land a hair below a power of ten: 1000 must be 100 · 10, not 1000 · 1.
    const long long top = digits == 2 ? 100 : 1000;
    if (whole >= top) {
        ++exponent;
        whole = std::llround(ohms / scaledDigits(1, exponent));
    } else if (whole < top / 10) {
        --exponent;
        whole = std::llround(ohms / scaledDigits(1, exponent));
    }
    if (!same(scaledDigits(whole, exponent), ohms) || exponent < -2 || exponent > 9) return {};
    std::vector<std::string> out;
    const std::string text = std::to_string(whole);
    for (char c : text)
        for (const BandColour& b : bandColours())
            if (b.digit == c - '0') {
                out.push_back(b.key);
                break;
            }
    for (const BandColour& b : bandColours())
        if (b.exponent == exponent) {
            out.push_back(b.key);
            break;
        }
    return out;
}

} // namespace fl
