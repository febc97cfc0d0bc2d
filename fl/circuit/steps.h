// The formula steps of a circuit sheet: one generator per shape, each a
// sequence of steps that find one symbol from others. The same generator
// serves the closed pass of a solve (whatever can be found from what is
// given) and the steps of the final sheet.
#pragma once

#include "fl/circuit/analysis.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace fl {

struct CircuitStep {
    std::string target;  // symbol found, empty for a step of text only
    std::string formula; // expression text, e.g. "2*PI*f*L1"
    std::string title;
    std::string pages; // in the class's formula book: "11", "3, 18", "26 (komposanter)"
    std::string html;  // rendered equation lines, or a hint paragraph
    CNodePtr node;     // what the step concerns; its figure highlights it
};

// What a generator may read besides the values.
struct StepScope {
    CNodePtr root; // meter-free, named
    bool isAc = false;
    std::string shape;                        // "dc", "series", "par", "mixed"
    std::map<std::string, std::string> links; // follower symbol → the symbol it copies
    std::set<std::string> given;              // symbols the task gave
};

// Runs the generator of `scope.shape` over `values`: every step whose inputs
// are all known is evaluated and its result stored under its target; the
// others are skipped. Returns the steps that ran, in order.
std::vector<CircuitStep> stepsFor(const StepScope& scope, Values& values);

} // namespace fl
