// The icon set of the tiles and the finder: one stroke drawing on a 48 × 48
// grid per route, plus "formel" for formula families and "finder" for the
// finder's subject nodes. Choosing the colour and size is left to the page.
#pragma once

#include <string>

namespace fl {

// The inner SVG of a 48 × 48 drawing (stroke-only elements, no fill), or an
// empty text when the key has no icon of its own.
std::string iconSvg(const std::string& key);

// The whole SVG document: the inner drawing wrapped with the common stroke
// (2.5 wide, round caps and joins) in strokeColour, e.g. "#2457d6". Empty
// when the key has no icon.
std::string iconDocument(const std::string& key, const std::string& strokeColour);

} // namespace fl
