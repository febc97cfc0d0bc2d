// The three parts of the explanation table, split by subject so that no
// file grows past what a reviewer can read against the catalogue in one go.
#pragma once

#include "fl/formulas/help.h"

#include <vector>

namespace fl::help {

std::vector<FamilyHelp> electricBlocks(); // direct and alternating current, batteries, transformers
std::vector<FamilyHelp> mathBlocks();     // triangles, areas, circles, vectors
std::vector<FamilyHelp> tradeBlocks();    // three-phase, compensation, energy, motors, waveforms, tests

} // namespace fl::help
