// The small everyday tools: energy and its price with the saving of a
// replacement, the unit converter, the right-angled triangle from any two of
// its parts, and the sum of vectors. Each is one pure function of the form's
// texts; the pages only declare forms.
#pragma once

#include "fl/tools/frame.h"

#include <string>
#include <vector>

namespace fl {

// Form keys P (W, one appliance), n (how many, 1 when empty), h (hours a
// day), d_dage (days a year, 365 when empty), k_el (kr/kWh); for a
// replacement P2 (W, the new one) and Inv (kr, what the replacement costs).
ToolOut energyPrice(const FormMap& form);

// One unit of a kind of quantity, with its size in the kind's base unit.
struct UnitDef {
    std::string key;   // form data: "kWh", "u", "mm2"
    std::string label; // as the chooser shows it
    std::string unit;  // as a result shows it: "kWh", "µ", "mm²"
    double factor = 1; // in the base unit (J, W, the bare number); 0 for the kinds that aren't a factor
};

struct UnitKind {
    std::string key;   // "energi"
    std::string label; // "Energi (J, Wh, kWh)"
    std::vector<UnitDef> units;
};

// The kinds in the chooser's order: prefixes, power, energy, a conductor's
// diameter and cross-section, angles.
const std::vector<UnitKind>& unitKinds();
// The units a prefix may stand before, for the prefix kind ("" for none).
const std::vector<std::string>& prefixUnits();

// Form keys "art" (a kind's key), "fra" (one of its units' keys), "x" (the
// value), and for prefixes "enhed" (one of prefixUnits()).
ToolOut convertUnits(const FormMap& form);

// Form keys a and b (the legs), c (the hypotenuse), A and B (the acute
// angles in degrees, A opposite a). Any two, not both angles; more are
// checked against each other.
ToolOut rightTriangle(const FormMap& form);

// Up to this many vectors on the vector page.
inline constexpr int kVectorCount = 4;

// Form keys "form" ("polar" or "rekt"); per vector i = 1 … kVectorCount
// either v<i> (length) and V<i> (angle in degrees) or x<i> and y<i>.
ToolOut addVectors(const FormMap& form);

// The angle of (x, y) in degrees, −180 < angle ≤ 180; 0 for the zero vector.
double vectorAngle(double x, double y);

} // namespace fl
