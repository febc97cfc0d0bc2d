// The equation chain: from a list of equations and whatever values are
// known, find every quantity the knowns determine, in whatever direction
// they allow, and write one worked block per quantity found. The tools that
// work in any direction (motor, transformer, three-phase load) and the
// circuit walkthrough share it.
//
//   for (;;) {                       // one round = one quantity found
//       take the first equation, in list order, with exactly one unknown
//       that can be brought to stand alone;
//       none: stop
//   }
//
// An unknown that is the equation's target is evaluated directly; one inside
// the formula is first isolated by the rearranger (fl/expr/isolate.h), and an
// unknown that stands twice is left for another equation. A quantity that
// no equation reaches stays absent from the values: nothing is invented.
// Writes result markup, so it belongs to the caller's rendering pass.
#pragma once

#include "fl/tools/frame.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace fl {

struct ChainEquation {
    std::string target;  // the symbol the equation defines
    std::string formula; // the right-hand side, in the formula language
    std::string title;   // of the block that uses it
    std::string page;    // the reference: "12", "standardformel", "9 og formelhjulet"; may be empty
    NodePtr node = {};   // `formula` parsed; solveChain parses it when empty
};

struct ChainResult {
    // In the order of solving. `solves` holds the quantity found, `uses` the
    // equation's other symbols joined by ",".
    std::vector<StepBlock> blocks;
    std::vector<ChainEquation> equations; // the list, with every tree parsed
    std::vector<size_t> solvedBy;         // per block, the index of its equation
    bool negative = false;                // a resistance came out negative and the guard didn't allow it
};

struct ChainSetup {
    // The unit of a symbol, for its result line (and the negative-resistance
    // test on "Ω"); empty function or text for none.
    std::function<std::string(const std::string&)> unitOf = {};
    // Givens as the user typed them, shown in the substituted lines.
    std::map<std::string, std::string> shown = {};
    // The walkthrough's guard: true lets a negative resistance for this
    // symbol pass without the warning. Tools leave it empty.
    std::function<bool(const std::string&)> allowNegative = {};
    // The walkthrough's choice: an equation whose value has no real answer
    // (a division by zero, the root of a negative number) is dropped and its
    // unknown left to other equations, instead of ending the whole chain.
    bool skipFailed = false;
};

// `vars` holds the givens (an entry that is NaN counts as unknown and is
// dropped) and grows by every quantity found. Throws std::runtime_error
// "intet reelt svar" when a step has no real result (unless `skipFailed`),
// and the parser's texts
// for a formula that doesn't parse.
ChainResult solveChain(const std::vector<ChainEquation>& equations, std::map<std::string, double>& vars,
                       const ChainSetup& setup = {});

// How far a known value and its equation disagree:
// |a − b| / max(|a|, |b|, 1e-12) up to 1e-6 is equal, up to 0.03 a near miss
// (rounded plate values), above that a conflict.
struct ChainMismatch {
    size_t equation = 0;
    double stated = 0.0;   // the value held for the target
    double computed = 0.0; // what the formula gives
    double relative = 0.0;
    bool conflict = false; // false: a near miss
    std::string line;      // title + ": " + symbol = stated + ", men formlen giver " + computed
};

// The equations whose symbols are all known and that found none of them,
// compared; equal ones are left out. In list order.
std::vector<ChainMismatch> chainMismatches(const ChainResult& chain, const std::map<std::string, double>& vars,
                                           const ChainSetup& setup = {});

} // namespace fl
