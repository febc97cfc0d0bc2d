// The machine tools' figures: the power triangle before and after
// compensation, the motor's plate with its power flow, the transformer's
// schematic and the star or delta connection of a three-phase load. Each
// draws whatever values it is given: a known value in the text colour, a
// found one in the accent colour, an unknown one as "?". The sheets pass
// their results; the pages' live figures pass the form as typed. The motor,
// transformer and connection figures keep their shapes too, for the pages'
// painter, which redraws them at every keystroke.
#pragma once

#include "fl/fig/canvas.h"

#include <map>
#include <set>
#include <string>

namespace fl {

struct MachineValues {
    std::map<std::string, double> values; // symbol → value; absent is unknown
    std::set<std::string> found;          // computed rather than given
};

// P, Q1, Q2, QC, phi1, phi2 (degrees). Empty without a positive P and Q1.
FigureOut compensationFigure(const MachineValues& v);

// 660 wide, 256 high or 278 with star-delta start.
FigureOut motorFigure(const MachineValues& v, bool threePhase, bool starDelta);

// 680 by 285.
FigureOut transformerFigure(const MachineValues& v);

// The connection with its voltages, currents and per-phase value (`perPhase`
// "R" or "Z"); the power stands in a group with the id "tfPow".
FigureOut connectionFigure(const MachineValues& v, bool star, const std::string& perPhase);

} // namespace fl
