// The catalogue of formula families: constant records built once, in the
// order of the class's formula book, and found by key.
#pragma once

#include "fl/formulas/formula.h"

#include <string>
#include <vector>

namespace fl {

const std::vector<Formula>& catalogue();
const Formula* findFormula(const std::string& key);
const FormulaVar* findVar(const Formula& f, const std::string& symbol);
std::string pageRef(const std::string& page, const std::string& book);

}  // namespace fl
