// The file form of a circuit: what the store, the saved list, the clipboard
// and a teacher's task hold. Names, layout and cached impedances are not
// stored; the reader does not normalise.
#pragma once

#include "fl/circuit/model.h"
#include "store/json.h"

namespace fl {

// Trees beyond these are refused: no drawn circuit comes near them, and the
// solvers and the drawing stay bounded.
constexpr int kMaxCircuitDepth = 64;
constexpr size_t kMaxCircuitNodes = 2000;

Json toJson(const Circuit& c);
Json nodeToJson(const CNodePtr& node);
// False, with `out` untouched, when `value` is not a circuit.
bool fromJson(const Json& value, Circuit& out);
// The clipboard's form: the JSON on one line.
std::string toText(const Circuit& c);
bool fromText(const std::string& text, Circuit& out);

} // namespace fl
