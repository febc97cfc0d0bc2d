// The one place where typed text becomes a number and a number becomes text:
// the field reader, the calculator's normaliser, the prefix tables, the
// rounding settings and the formatters. Locale-independent throughout.
#pragma once

#include <map>
#include <string>

namespace fl {

struct DisplaySettings {
    bool decimalComma = true;
    std::string rounding = "p5";  // "p5" or "d2"; anything else counts as "p5"
    bool oneStepAtATime = false;
};

DisplaySettings& displaySettings();

double readValue(const std::string& text, bool* empty = nullptr);
bool parseWithPrefix(const std::string& text, double* mantissa, std::string* prefix);
double calc(const std::string& text, const std::map<std::string, double>* vars = nullptr);
std::string prettyCalc(const std::string& text);
std::string trimmed(const std::string& text);

std::string fmtNumber(double value, int sig = 5);
std::string fmtWithUnit(double value, const std::string& unit);
std::string fmtPlain(double value, int sig);
std::string fmtShortest(double value);
std::string fmtRounded(double value, int sig);
std::string fmtValue10(double value);
std::string superscript(const std::string& text);

// Prefix tables: "p" "n" "u" "µ" "μ" "m" "k" "M" "G".
int prefixExponent(const std::string& prefix, bool* found = nullptr);
double prefixFactor(const std::string& prefix, bool* found = nullptr);
// The prefix for a power of ten that is a multiple of 3 in -12..9 ("" for 0, "µ" for -6).
std::string prefixFor(int exponent);
// Names a typed expression may use without a value.
bool isKnownCalcName(const std::string& name);

}  // namespace fl
