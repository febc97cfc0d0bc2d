// Numeric evaluation of a tree. Angles are degrees throughout the language;
// arithmetic never throws, so NaN and infinities reach the caller as values.
#pragma once

#include "fl/expr/node.h"

#include <map>
#include <string>

namespace fl {

// Throws std::runtime_error "mangler " + name for a variable without a value.
double eval(const NodePtr& node, const std::map<std::string, double>& vars);
// Throws "ukendt funktion " + name.
double applyFunc(const std::string& name, double x);

} // namespace fl
