// The electrician's symbols on a canvas: resistor, coil, capacitor, meter and
// the two sources, each centred on its axis, lying (current left to right)
// or standing (current top to bottom), with optional leads. The schematic and
// the small circuits of the formula figures draw with these, so that a
// resistor looks the same everywhere.
#pragma once

#include "fl/fig/canvas.h"

#include <string>

namespace fl {

struct SymbolAt {
    double cx = 0, cy = 0;
    bool standing = false; // the axis runs down instead of right
    double lead = 0;       // leads out to this distance from the centre on both sides; 0 none
};

// A rectangle of 48 by 18.
void resistorSymbol(Canvas& cv, const SymbolAt& at);
// Four half circles over 48.
void coilSymbol(Canvas& cv, const SymbolAt& at);
// Two plates 12 apart, 30 long.
void capacitorSymbol(Canvas& cv, const SymbolAt& at);
// A circle of radius 16 with its letter ("A", "V").
void meterSymbol(Canvas& cv, const SymbolAt& at, const std::string& letter);
// A cell: the long plate (plus) first, left or on top, the short thick one 10 after it.
void cellSymbol(Canvas& cv, const SymbolAt& at);
// A circle of radius 16 with a sine inside.
void acSourceSymbol(Canvas& cv, const SymbolAt& at);

// A current arrow of class "cur" along a wire, 40 long, centred at (cx, cy)
// and pointing in (dx, dy), with its text (of class `textCls`) beside a
// vertical arrow or above a horizontal one.
void currentArrow(Canvas& cv, double cx, double cy, double dx, double dy, const std::string& label,
                  const std::string& textCls = "cur");

} // namespace fl
