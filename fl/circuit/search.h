// Guessing the unknowns of a circuit that can't be solved in closed form: a
// damped least-squares search (Levenberg-Marquardt) on the logarithms of the
// unknowns, from every start of a small seed table. The problem is bound to
// plan slots once, so a residual costs one forward pass and no allocation.
#pragma once

#include "fl/circuit/forward.h"

#include <string>
#include <utility>
#include <vector>

namespace fl {

// One quantity a solution must reproduce.
struct Target {
    std::string symbol;
    double value = 0.0;
    std::string label; // words for the check ("samlet strøm", "A1 viser (…)")
};

struct Solution {
    std::vector<double> x;                 // in the order of the unknowns
    std::vector<std::vector<double>> path; // accepted trials, the start included
    double cost = 0.0;
};

class SearchProblem {
  public:
    // `given` holds every known input (component values, own resistances,
    // "U", "f"); `followers` pairs a linked symbol with the unknown it copies.
    // Throws std::runtime_error "mangler " + symbol when an input is neither
    // given, unknown nor a follower.
    SearchProblem(const CNodePtr& root, bool isAc, const Values& given, std::vector<std::string> unknowns,
                  std::vector<Target> targets,
                  const std::vector<std::pair<std::string, std::string>>& followers = {});

    const std::vector<std::string>& unknowns() const { return unknowns_; }
    const std::vector<Target>& targets() const { return targets_; }
    // Nodes a forward pass goes through.
    size_t passSize() const { return plan_.items.size(); }
    // Whether the forward pass yields the target's symbol at all.
    bool reachable(size_t target) const { return targetSlot_[target] >= 0; }

    // One residual per target at the unknowns `logx`: ln(|computed|/|given|),
    // or 5·(computed − given) for "cosphi". False when a target can't be
    // computed or a residual isn't finite.
    bool residual(const double* logx, double* r);
    // The targets' computed values at plain values `x`; NaN where not computed.
    std::vector<double> evaluate(const std::vector<double>& x);
    // All forward results at plain values `x`, with the unknowns and followers bound.
    Values results(const std::vector<double>& x);

  private:
    void bind(const double* x, bool logarithmic, const ForwardPlan& plan);

    ForwardPlan full_; // every result, for `results`
    ForwardPlan plan_; // only the targets: the search's pass
    ForwardWork work_;
    std::vector<double> in_;
    std::vector<double> lastLog_; // the logarithm each unknown's input was made from
    std::vector<std::string> unknowns_;
    std::vector<Target> targets_;
    std::vector<int> unknownSlot_;
    std::vector<std::pair<int, int>> follow_; // (follower slot, unknown index)
    std::vector<int> targetSlot_;
    std::vector<char> targetIsCos_;
};

// Seeds by kind of unknown: resistor, coil, capacitor, own resistance
// ("R_" + name) and the source voltage "U". Any other name has none.
std::vector<double> seedsFor(const std::string& unknown);

constexpr size_t kMaxStarts = 400;
// Work of one search, counted per residual as the nodes of the forward pass
// plus the targets. Above what a drawn task needs (five unknowns on eight
// components with no start converging stay below it); it keeps a file of
// thousands of nodes, or a dozen unknowns, from freezing the page.
constexpr double kSearchBudget = 1e7;

// Levenberg-Marquardt from the first 400 starts of the Cartesian product of
// the seeds (the last unknown varies fastest). Converged, distinct solutions
// in the order of their starts, as plain values.
std::vector<Solution> multiStart(SearchProblem& problem, const std::vector<std::vector<double>>& seeds);
std::vector<Solution> multiStart(SearchProblem& problem);

} // namespace fl
