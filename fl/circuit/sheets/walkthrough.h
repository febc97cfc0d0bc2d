// The walkthrough sheets of a solved circuit, as result markup: the
// calculated sheet ("Regneark") with its steps, tables, checks and figures;
// the guide without numbers ("Fremgangsmåde"), which gives the formulas in
// the order to use them and why; and the task sheet ("Opgaveark"), which
// solves nothing. Every step cites its page in the class's formula book.
//
// A sheet belongs to the caller's rendering pass (fl/expr/markup.h): call
// resetFigures() first and takeRender() after, since schematics and
// triangles are images of the pass. Separate from fl_circuit because the
// figures (fl_fig) are drawn from the circuit model.
#pragma once

#include "fl/circuit/sheet.h"

#include <string>

namespace fl {

// "24.11.2026": the date in a sheet's head.
std::string sheetDate();

// The calculated sheet of a solve of `drawn` (the tree with its meters, as
// the student drew it). `sheet.error` must be empty: an error is shown on
// its own. The overload takes the working circuit and today's date.
std::string regneark(const Sheet& sheet, Circuit& drawn, const std::string& date);
std::string regneark(const Sheet& sheet);

// The guide: solves `c` in full and gives the formulas without numbers;
// a solve that ends in a message gives that message.
std::string fremgangsmaade(Circuit& c, const std::string& date);
std::string fremgangsmaade();

// The task sheet: the drawing and what was given, with room for the working.
std::string opgaveark(Circuit& c, const std::string& date);
std::string opgaveark();

// The paragraph after "<b>Hvorfor:</b> " for a step: the explanation whose
// key the title holds first, in the order the keys are tested; a general one
// otherwise.
std::string whyText(const std::string& title, bool isAc);
// The first equation line of a step's working, as an equation table of one
// row; a leading hint paragraph is left out. Empty when there is none.
std::string firstFormula(const std::string& stepHtml);

} // namespace fl
