// Phasor scenes: arrows on a grid, true to scale, with the angle between the
// reference and the result. A scene can be written by hand (the vector
// figure of the formula pages) or built from a solved circuit: the branch
// currents of a parallel group against its voltage, or the part voltages of
// a series against its current, added head to tail.
#pragma once

#include "fl/circuit/analysis.h"
#include "fl/fig/canvas.h"

#include <string>
#include <vector>

namespace fl {

struct SceneVector {
    Pt from, to;         // in the quantity's own units, y up
    std::string cls;     // "res" the result, "cur" a current, "ref" the reference
    std::string name;    // "I<sub>R1</sub>"; empty gives "v<sub>n</sub>"
    std::string length;  // "2,3 A"; may be empty
    bool dashed = false; // continues another vector: a side of the parallelogram of addition
    bool highlight = false; // the name in the accent colour: the quantity sought
};

struct VectorScene {
    std::vector<SceneVector> vectors;
    // The sector between these two, with `angleText` on its bisector; -1 for none.
    int reference = -1, result = -1;
    std::string angleText;
    std::string angleCls; // "hl" when the angle is sought
    int W = 460, H = 300;
    std::string caption;
};

// The grid, the axes and the arrows. The scale is one for all vectors, so
// every arrow's length stands for its magnitude; a vector too short to see
// at that scale is left out. Empty when no vector has a length.
FigureOut drawVectors(const VectorScene& scene);

// The branch currents of the parallel group `groupId` (empty: the first one
// in pre-order) against that group's voltage, which lies horizontally.
// `values` must hold what a forward pass needs; an empty scene otherwise, or
// when the circuit has no parallel group.
VectorScene currentScene(const CNodePtr& root, const Values& values, bool isAc, const std::string& groupId = {});
// The voltages of the parts of the series `groupId` (empty: the root, or the
// first series group with two parts) against that series' current.
VectorScene voltageScene(const CNodePtr& root, const Values& values, bool isAc, const std::string& groupId = {});

} // namespace fl
