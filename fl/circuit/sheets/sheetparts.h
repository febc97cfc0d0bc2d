// Pieces the three sheets share: the head, the drawing as an image of the
// pass, the given lines, the advice on what couldn't be found and the step
// blocks of a solve. Not for use outside the sheets.
#pragma once

#include "fl/circuit/sheets/walkthrough.h"
#include "fl/expr/markup.h"

#include <string>
#include <vector>

namespace fl::sheetparts {

// A symbol in italics with its index.
std::string v(const std::string& symbol);
std::string join(const std::vector<std::string>& parts, const std::string& sep);
// <div class="card sheet" id="sheet">… with the crumb "what · Jævnstrøm · date"; the card stays open.
std::string head(const std::string& what, bool isAc, const std::string& date, const std::string& title);
// The schematic with `values` (empty: the givens only), scaled down to `maxWidth` (0: natural size).
std::string drawing(Circuit& drawn, const Values& values, double maxWidth);
std::string givenLines(const Sheet& s);
// Voltages and currents of the parts that the solve couldn't find.
std::vector<std::string> unknownNames(const Sheet& s);
// "Disse kunne ikke findes …" with what to type; empty when nothing is missing.
std::string missingAdvice(const Sheet& s);
// The search's steps, the formula steps and the meters, in the order of the sheet.
std::vector<StepBlock> blocks(const Sheet& s);

} // namespace fl::sheetparts
