// The constant tables of the language: function names, their inverses and
// labels, and the display forms of symbols, hand-made for the catalogue's
// and built by naming rules for the rest.
#pragma once

#include <map>
#include <string>

namespace fl {

bool isFunctionName(const std::string& name);
std::string inverseFunction(const std::string& name); // empty when none
std::string functionLabel(const std::string& name);
// The display form of a variable as every writer shows it ("R12" → "R<sub>12</sub>").
std::string symbolDisplay(const std::string& varName);
// The symbols whose display form is given by hand rather than by the naming rules.
const std::map<std::string, std::string>& symbolTable();

} // namespace fl
