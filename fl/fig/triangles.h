// Right triangles: one helper that draws two legs and a hypotenuse true to
// scale as long as the angle stays readable, and says so in the caption when
// it doesn't; the triangles of an alternating-current circuit built on it,
// and the stacked bar of voltages in a direct-current series.
#pragma once

#include "fl/circuit/analysis.h"
#include "fl/fig/canvas.h"

#include <string>

namespace fl {

struct RightTriangle {
    double foot = 0;    // the horizontal leg, > 0
    double upright = 0; // the other leg; below zero it points down
    std::string footText, uprightText, hypText; // labels, e.g. "R = 30 Ω" or just "R"
    std::string footCls, uprightCls, hypCls;    // "hl" for the side that is sought
    std::string angleText = "φ";               // at the angle between foot and hypotenuse
    std::string angleCls;                       // "hl" when the angle is sought
    std::string title;                          // the caption's start
    // The foot stands upright and the other leg goes to the right (or left
    // when below zero): the book's position of the current triangle.
    bool footUp = false;
};

// The drawn angle is the true one held to 30°..60°. Empty when a leg isn't a
// positive finite length (no angle exists).
FigureOut rightTriangle(const RightTriangle& t);
// " · tegnet i målestok", or the words that say it isn't and why.
std::string scaleNote(double drawnDeg, double trueDeg);
// The drawn angle for a true one: readable, and true where it can be.
double drawnAngle(double trueDeg);

// The triangles of a solved alternating-current circuit. `which` is
// "Z" (modstandstrekant), "U" (spændingstrekant), "I" (strømtrekant), "Ibook"
// (the same in the book's position) or "S" (effekttrekant). Empty when the
// values lack what the triangle needs or the reactive side is below 1e-12.
FigureOut circuitTriangle(const std::string& which, const CNodePtr& root, const Values& values);

// "Spændingsfordeling i serieforbindelsen – tilsammen U": one bar cut into the
// voltages of the root's parts. Empty unless every part's voltage is known.
FigureOut voltageBar(const CNodePtr& root, const Values& values);

} // namespace fl
