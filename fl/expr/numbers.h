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

// One field as typed: a plain number with an optional prefix ("5,5k", "70µ"),
// or in electricians' notation with the prefix as the decimal mark ("4k7" is
// 4700), else a whole expression without names ("230/47", "√3·400"). NaN for
// anything unreadable or not finite; never throws. `*empty` tells a blank field.
double readValue(const std::string& text, bool* empty = nullptr);
// A plain number ("-5,5e3", "5 500") with an optional prefix as suffix, or
// "4k7" as mantissa 4.7 and prefix "k"; false otherwise.
bool parseWithPrefix(const std::string& text, double* mantissa, std::string* prefix);
// Normalises, parses and evaluates a typed expression; a number token like
// "4k7" reads as 4,7k there too. Throws std::runtime_error
// with "Ukendt tegn", "Ukendt navn: " + name, or the parser's texts.
double calc(const std::string& text, const std::map<std::string, double>* vars = nullptr);
// The calculator's live line: the typed expression as HTML with its numbers as
// typed. Throws the parser's texts when the text doesn't parse.
std::string prettyCalc(const std::string& text);
// Removes bytes <= 32 at both ends.
std::string trimmed(const std::string& text);

// The display form of a result: `sig` significant digits (the rounding
// setting applies at the default 5), engineering notation outside
// 0.001..1e7, U+2212 minus, the decimal mark of the settings; "?" if not finite.
std::string fmtNumber(double value, int sig = 5);
// fmtNumber(value) and the unit: "30°", "30 V", or the bare number for "".
std::string fmtWithUnit(double value, const std::string& unit);
// Machine text: plain decimals, a point, a hyphen minus, at most `sig` significant digits.
std::string fmtPlain(double value, int sig);
// The shortest plain decimal text that reads back as exactly `value`.
std::string fmtShortest(double value);
std::string fmtRounded(double value, int sig);
// What is written back into a field: ten significant digits, the settings' decimal mark.
std::string fmtValue10(double value);
// Digits and "-" as superscript characters ("-6" → "⁻⁶").
std::string superscript(const std::string& text);

// Prefix tables: "p" "n" "u" "µ" "μ" "m" "k" "M" "G".
int prefixExponent(const std::string& prefix, bool* found = nullptr);
double prefixFactor(const std::string& prefix, bool* found = nullptr);
// The prefix for a power of ten that is a multiple of 3 in -12..9 ("" for 0, "µ" for -6).
std::string prefixFor(int exponent);
// Names a typed expression may use without a value.
bool isKnownCalcName(const std::string& name);

}  // namespace fl
