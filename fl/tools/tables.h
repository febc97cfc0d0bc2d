// The cable tables the dimensioning tools share: the standard
// cross-sections, the conductors' resistivity, resistance per km at 50 Hz
// ("tabel 13") and reactance per km by cable type ("tabel 16/17"). Built
// once, read-only. A lookup off the tables gives NaN, never a guess.
#pragma once

#include <string>
#include <vector>

namespace fl {

// mm², ascending: 1.5 … 300.
const std::vector<double>& crossSections();

// Ω·mm²/m.
inline constexpr double kRhoCopper = 0.0175;
inline constexpr double kRhoAluminium = 0.0287;

struct CableType {
    std::string key;      // "pvik3"
    std::string label;    // as the chooser shows it
    std::vector<double> x; // Ω/km per cross-section; NaN where the type isn't made at that size
};

// The rows of the reactance table, in the chooser's order.
const std::vector<CableType>& cableTypes();

// The index of `mm2` among crossSections() within 1e-9; −1 when it isn't one.
int sectionIndex(double mm2);
// Ω/km, or NaN for a size the conductor isn't made in.
double cableResistance(bool aluminium, double mm2);
// Ω/km, or NaN for an unknown type or a size the type isn't made in.
double cableReactance(const std::string& typeKey, double mm2);

} // namespace fl
