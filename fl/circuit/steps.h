// The formula steps of a circuit sheet: one generator per shape, each a list
// of equations that find one symbol from others. The equation chain solves
// the list in whatever direction the known values allow, so the same
// generator serves the closed pass of a solve (whatever can be found from
// what is given) and the steps of the final sheet (everything, from the
// component values and the source).
#pragma once

#include "fl/circuit/analysis.h"
#include "fl/tools/chain.h"

#include <functional>
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
    std::vector<std::string> uses; // the other symbols of its equation
};

// What a generator may read besides the values.
struct StepScope {
    CNodePtr root; // meter-free, named
    bool isAc = false;
    std::string shape;                        // "dc", "series", "par", "mixed"
    std::map<std::string, std::string> links; // follower symbol → the symbol it copies
    std::set<std::string> given;              // symbols the task gave
    // The closed pass also takes the equations that only restate what the
    // tree says (one current through a series, one voltage over a parallel);
    // the final sheet leaves them to the tables.
    bool closed = false;
    std::map<std::string, std::string> shown; // givens as typed, for the substituted lines
};

// One equation of a generator, with the node it is about.
struct StepEquation {
    ChainEquation eq;
    CNodePtr node;
    bool closedOnly = false;
    std::string lead; // a hint paragraph before the equation lines
    // Left out of the closed pass: an equation whose direction or words were
    // chosen from the solved circuit (a branch's side, the sign of a sum).
    bool sheetOnly = false;
    // Paragraphs that depend on the values found, before and after the lines.
    std::function<std::string(const Values&)> leadAt, after;
};

// The generator of `scope.shape`, in the order a student works: reactances,
// groups from the innermost out, the whole circuit, then down the tree to
// every part, the powers, and the sums that serve as checks. `known` holds
// what the pass starts from, `preview` the solved circuit where the words of
// a step depend on it (a branch that is capacitive); both may be null.
std::vector<StepEquation> equationsFor(const StepScope& scope, const Values* known = nullptr,
                                       const Values* preview = nullptr);

// Runs the generator over `values` through the equation chain: every
// equation with exactly one unknown that can be isolated is evaluated and
// its result stored; the rest is skipped. Returns the steps that ran, in
// order. Throws std::runtime_error "intet reelt svar" when a step has no
// real result; what was found before it stays in `values`.
std::vector<CircuitStep> stepsFor(const StepScope& scope, Values& values);

// The unit of any symbol a generator writes ("S" for the parts of an admittance).
std::string stepUnit(const std::string& symbol, const CNodePtr& root);

} // namespace fl
