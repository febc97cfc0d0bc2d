// Rearranging a formula for one of its quantities the way a teacher does it
// on the board: one operation on both sides at a time, each written down in
// words. Only a quantity that occurs once is attempted; the solve driver
// (fl/formulas/solve.h) falls back on the catalogue's rewritten forms.
#pragma once

#include "fl/expr/node.h"

#include <string>
#include <vector>

namespace fl {

// One row of working: left side = right side, with the words of the operation.
struct IsolateStep {
    std::string lhs;  // HTML
    std::string rhs;  // HTML
    std::string note; // may be empty
    bool plain = false;
};

// A row of a worked calculation has the same shape.
using WorkRow = IsolateStep;

struct Isolation {
    std::vector<IsolateStep> steps;
    NodePtr result; // the isolated right side
};

// The formula is `name = expr`. True with `out` filled when `target` could be
// brought to stand alone; on false `out` is of no use. Never throws for a
// well-formed tree. Renders the sides through renderMath, so it belongs to a
// rendering pass.
bool isolate(const NodePtr& expr, const std::string& name, const std::string& target, Isolation& out);

} // namespace fl
