// The strict formula language read into a tree. What a student types is
// normalised into it first (numbers.h: calc, readValue); the catalogue's
// forms are written in it directly.
#pragma once

#include "fl/expr/node.h"

#include <string>

namespace fl {

// Throws std::runtime_error: "parse: " + text for a character outside the
// language, "rest i " + text for leftover tokens, "uventet slut",
// "uventet " + token, "forventede " + token + " i " + text.
NodePtr parse(const std::string& text);

} // namespace fl
