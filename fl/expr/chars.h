// Conversions between double and text with the C library's "C"-locale
// semantics, whatever the process locale says. The Danish locale makes
// strtod and printf use a decimal comma; every number the core reads or
// writes goes through here instead.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace fl::chars {

// strtod over the whole text: an optional sign, digits with an optional
// point, an optional exponent. Overflow gives ±infinity and underflow ±0, as
// strtod does. nullopt when the text is not entirely one number.
std::optional<double> toDouble(std::string_view text);

std::string printE(double value, int precision); // "%.*e"
std::string printF(double value, int precision); // "%.*f"
std::string printG(double value, int precision); // "%.*g"

} // namespace fl::chars
