// The small figures beside formula families, drawn from the numbers of the
// calculation at hand: the triangle with its sides marked, the circle with
// its radius, the resistors with their current. A family names its figure by
// a key; several families share one. The quantity that was sought is drawn
// in the accent colour. A missing or unusable number leaves its symbol alone
// on its side; the shape then falls back to fixed proportions, so a known
// key always gives a figure.
#pragma once

#include "fl/fig/canvas.h"

#include <map>
#include <string>
#include <vector>

namespace fl {

// The figure of `key` for `values` (symbol → value; an absent or non-finite
// entry is unknown), with `sought` highlighted. Empty for a key without one.
FigureOut formulaFigure(const std::string& key, const std::map<std::string, double>& values,
                        const std::string& sought);
// The same as SVG text; the caption (HTML) goes to `outCaption` when given.
std::string figureFor(const std::string& key, const std::map<std::string, double>& values,
                      const std::string& sought, std::string* outCaption = nullptr);
bool hasFigure(const std::string& key);
// Every key that has a figure, in the order they are tested.
const std::vector<std::string>& figureKeys();

// For solveSheet: the figure as a figure block of the current rendering
// pass (fl/expr/markup.h), or empty.
std::string formulaFigureMarkup(const std::string& key, const std::map<std::string, double>& values,
                                const std::string& sought);

} // namespace fl
