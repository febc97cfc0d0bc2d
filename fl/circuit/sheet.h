// The one solving driver of the circuit page, for both kinds of current: it
// reads and checks what the student typed, finds what is unknown, searches
// where nothing can be isolated, works the circuit forwards and compares the
// result with every given quantity. It returns the parts of a sheet; the
// walkthrough writes them out as HTML.
#pragma once

#include "fl/circuit/meters.h"
#include "fl/circuit/search.h"
#include "fl/circuit/steps.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace fl {

// One line of "Givet".
struct Given {
    std::string line;   // <div>symbol = value <span class="crumb">– words</span></div>
    std::string symbol; // empty for a link between two components
    double value = 0.0;
};

// A given quantity that the solved circuit doesn't reproduce.
struct Mismatch {
    std::string symbol;
    std::string label;
    double given = 0.0;
    double computed = 0.0;
};

struct Sheet {
    // Non-empty: show this message and nothing else. Chips in it are links
    // "fix:" + one of `fixes`.
    std::string error;
    std::vector<std::string> fixes;

    bool isAc = false;
    std::string shape;
    Values values; // everything known at the end, finite values only
    std::vector<Given> given;
    std::vector<Target> targets;
    std::vector<std::string> unknowns;        // what the search looked for, in its order
    std::map<std::string, std::string> links; // follower symbol → leader symbol
    std::set<std::string> givenSymbols;       // everything the task gave, links included
    CNodePtr root;                            // the tree that was solved (meter-free, named)
    std::vector<Solution> solutions;
    int second = -1; // index of a second, different solution, or -1

    std::string intro; // hint before the steps
    // The trial table or the equal groups, then the head of the full pass.
    // A step whose `formula` is set still needs its equation lines.
    std::vector<CircuitStep> searchSteps;
    std::vector<CircuitStep> steps;      // the formula steps on the full map
    std::vector<CircuitStep> meterSteps; // readings of meters that had none typed
    std::vector<std::string> notes;      // "Bemærk" paragraphs, in order
    std::vector<Mismatch> mismatches;
    std::vector<std::string> equalGroups; // names of equal groups in series under the root

    // U is an auxiliary 100 V: currents, voltages and powers are left out.
    bool auxVoltage = false;
    // The forward pass gave no real answer (a zero divisor, an infinity).
    bool stopped = false;
    std::shared_ptr<MeterInfo> meters;
};

// Solves the working circuit with its meters taken out; the drawn tree is
// back in place on every way out.
Sheet computeSheet();
Sheet computeSheet(Circuit& c);
// The driver on a tree that has no meters, or with the meter-free copy in
// place and its `meters` for the readings.
Sheet solve(Circuit& c, bool noRetry, const MeterInfo* meters = nullptr);

// The auxiliary voltage of the methods that find Z first.
constexpr double kAuxVoltage = 100.0;
// More unknowns than any drawn task has: the search would only spin.
constexpr size_t kMaxUnknowns = 12;

// Words and units of values in sheet lines: "<b>R2 = 47 Ω</b>".
std::string valueText(const std::string& symbol, double value, const CNodePtr& root);

} // namespace fl
