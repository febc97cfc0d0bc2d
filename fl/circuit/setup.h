// What a solve starts from: every typed field read and checked, the given
// lines, the quantities a solution must reproduce, the unknowns and the links
// between values. Used by the driver only.
#pragma once

#include "fl/circuit/sheet.h"

#include <set>
#include <string>
#include <vector>

namespace fl {

struct Setup {
    std::string error; // a message that stops the solve before any calculation
    std::vector<std::string> fixes;

    Values values; // known inputs and given quantities under their symbols
    std::vector<Given> given;
    std::vector<Target> targets;
    std::vector<std::string> unknowns;        // components and own resistances, in tree order
    std::map<std::string, std::string> links; // follower → leader, chains resolved
    std::set<std::string> givenSymbols;
    std::vector<std::string> emptyComponents; // names whose value is not given
    bool hasU = false, hasI = false, hasP = false, hasZ = false;
};

// Reads the source fields and every node of the (meter-free) tree of `c`,
// which must be named; the meters' readings come from `meters`.
Setup readSetup(const Circuit& c, const MeterInfo* meters);

// Whether a quantity grows with the source voltage (voltages, currents,
// powers) or not (impedances, resistances, cos φ).
bool scalesWithVoltage(const std::string& symbol);

// The message parts used when there is too little to start from.
std::string countMessage(const std::vector<std::string>& unknowns, size_t reachable, bool isAc);
std::string missingMessage(const Setup& su, const Circuit& c);

// "R<sub>1</sub> = 10 Ω, R<sub>2</sub> = 20 Ω" for a point of the search.
std::string solutionText(const std::vector<std::string>& unknowns, const std::vector<double>& x,
                         const CNodePtr& root, bool bold);
// The search told as a table of its trials (fewer than 4 unknowns), with
// the values found and a second solution if there is one.
CircuitStep trialTableStep(SearchProblem& problem, const std::vector<Solution>& solutions, int second,
                           const CNodePtr& root);
// Names of the groups in series directly under the root that share one
// signature; empty when there are fewer than two.
std::vector<std::string> equalGroupNames(const CNodePtr& root, const Values& values);
// The text that tells equal groups in place of a trial table.
std::vector<CircuitStep> equalGroupSteps(const std::vector<std::string>& names, const CNodePtr& root);

} // namespace fl
