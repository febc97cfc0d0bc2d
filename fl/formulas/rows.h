// The catalogue's rows as they are written: one family per block, in the
// order of the formula book. buildCatalogue joins them in the order dc, ac,
// math, 3f, trade, and gives them their topics.
#pragma once

#include "fl/formulas/formula.h"

#include <vector>

namespace fl::rows {

std::vector<Formula> dcRows();   // Ohm's law to the transformer
std::vector<Formula> acRows();   // alternating current, series and parallel
std::vector<Formula> mathRows(); // triangles, areas, polygons, circles, vectors
std::vector<Formula> threePhaseRows();
std::vector<Formula> tradeRows(); // compensation, energy, motors, the sine wave, installation test

// A fresh catalogue built from the rows, with its topics; catalogue() keeps
// the one the program uses.
std::vector<Formula> buildCatalogue();

} // namespace fl::rows
