// What the formula page does with its fields before anything is solved: read
// each through the field reader, find the one quantity left empty, and refuse
// in plain words what can't be solved. Also the interpretation line under a
// field as the student types.
#pragma once

#include "fl/formulas/formula.h"

#include <map>
#include <string>
#include <vector>

namespace fl {

struct FieldCheck {
    std::map<std::string, double> values; // every field that was read
    std::vector<std::string> empty;       // symbols, in the order of the fields
    std::vector<std::string> unreadable;
    std::string target;  // the quantity to find; empty when refused
    std::string refusal; // the sentence for the student; empty when the solve may go ahead
};

// `texts` maps each symbol to what its field holds; a missing symbol counts
// as an empty field. Refusals, first match wins:
//   a field that doesn't read     "Jeg kan ikke læse værdien for R, I.", then what may be typed,
//                                 or that a number is too large to work with
//   not exactly one field empty   "Udfyld alle værdier undtagen den, du vil finde. Tomme felter nu: U, I."
//   no form for the empty one     "X<sub>L</sub> kan ikke isoleres direkte i denne formel. Se noten ovenfor."
FieldCheck checkFields(const Formula& f, const std::map<std::string, std::string>& texts);

// The line under a field: "= " + the value as read, a warning in `badColour`
// for text that doesn't read or a number too large, nothing for an empty field.
std::string interpretLine(const std::string& text, const std::string& badColour);

} // namespace fl
