// HTML of a tree in the result markup's vocabulary, and the parenthesis
// rules that every writer of a tree shares, so the formula painter in the
// interface brackets exactly what this text brackets.
#pragma once

#include "fl/expr/node.h"

#include <string>

namespace fl {

// `tall` draws fractions and roots in two dimensions.
std::string render(const NodePtr& node, bool tall);
// An expression image ("m:N" through addMath) when needsTall, else render(node, false).
std::string renderMath(const NodePtr& node);
// A fraction or a square root anywhere in the tree.
bool needsTall(const NodePtr& node);
std::string renderParen(const NodePtr& node, bool wrapIfLoose, bool tall);
std::string renderOperand(const NodePtr& node);

// A sum or a negative number: bracketed as a term of a sum and as one of
// several factors.
bool isLoose(const NodePtr& node);
// A power's base that reads right without brackets: a name, π, or a
// non-negative number shown without a power of ten.
bool isBareBase(const NodePtr& base);
// sin, cos or tan of a plain number: the number is shown with "°".
bool wantsDegreeMark(const Node& func);

} // namespace fl
