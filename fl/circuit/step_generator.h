// The generator behind the circuit steps: one object per call, holding the
// scope and the route chosen for the branches of an ac parallel. Internal to
// fl_circuit: steps.cpp holds the shared routes, parallel_steps.cpp the
// branch-by-branch ones of an ac parallel.
#pragma once

#include "fl/circuit/steps.h"

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace fl::stepgen {

std::string join(const std::vector<std::string>& parts, const std::string& sep);
std::string childNames(const CNode& g);
bool hasOwnR(const CNode& n);
std::string zSym(const CNode& n);
std::string rPart(const CNode& n);
std::string xPart(const CNode& n, int* sign);
std::string signedSum(const std::vector<std::pair<int, std::string>>& terms);
bool ohmic(const CNodePtr& n);
bool reactive(const CNodePtr& n);
// A branch's current from the voltage all branches share: "Strømmen i B –
// samme spænding 230 V over alle grene, I = U / Z_B".
std::string sameVoltageTitle(const std::string& branch, const std::string& voltage, const std::string& z);

class StepGenerator {
  public:
    StepGenerator(const StepScope& scope, const Values* known, const Values* preview)
        : s_(scope), known_(known), preview_(preview) {}

    std::vector<StepEquation> run();

  private:
    void add(const std::string& target, const std::string& formula, const std::string& title,
             const std::string& pages, const CNodePtr& node, bool closedOnly = false);

    // A step of the final sheet only, with its hint paragraph.
    StepEquation& sheet(const std::string& target, const std::string& formula, const std::string& title,
                        const std::string& pages, const CNodePtr& node, const std::string& lead = {});

    double seen(const std::string& symbol) const;

    bool knownAtStart(const std::string& symbol) const;

    // A branch is capacitive when its current leads the voltage: a capacitor,
    // or a group whose reactance came out negative.
    bool capacitive(const CNode& n) const;

    bool isBranch(const CNodePtr& n) const;

    void postOrder(const CNodePtr& n, const std::function<void(const CNodePtr&)>& fn);

    // X = 2πfL, X = 1/(2πfC), and a lossy coil's z = √(R² + X²).
    void reactances(const CNodePtr& root);

    // Series: R = R₁ + R₂ + …; parallel: R = 1/(1/R₁ + 1/R₂ + …).
    void dcGroups(const CNodePtr& root);

    // A series of components only: the ohmic parts, the coils' and the
    // capacitors' reactances each summed, then Z = √(R² + (X_L − X_C)²).
    void acSeriesTotals(const CNodePtr& root);

    // Groups by complex numbers, written as real and imaginary parts: a
    // series adds both parts; a parallel adds the parts of 1/z and turns the
    // sum back: 1/z = (R − iX)/z², so z = (G − iB)/(G² + B²) with G, B the sums.
    void acGroups(const CNodePtr& root);

    // The whole circuit: Ohm's law, and in ac the power factor and the angle.
    void whole(const CNodePtr& root);

    // Down the tree: a series shares its current, a parallel its voltage;
    // `u` and `i` are the symbols the group's voltage and current go by.
    void down(const CNodePtr& g, const std::string& u, const std::string& i);

    // A branch at an angle in a mixed circuit: its current in the part in
    // phase with the voltage, I · R / z, and the part 90° off, I · |X| / z.
    // A pure R, L or C branch is one or the other already.
    void split(const CNodePtr& c, const std::string& i, const std::string& z);

    // Each branch of a group as z∠φ, with where its angle comes from.
    static std::string complexForms(const CNode& g);

    std::string angleTitle(const CNode& n) const;

    // A sum of currents under `symbol`, or the one current itself.
    std::string currentSum(const std::vector<std::string>& parts, const std::string& symbol,
                           const std::string& title);

    // The branches by their currents, all at the source voltage: each
    // branch's current, split where it is at an angle; the sums by kind; the
    // current triangle I² = I_R² + (I_L − I_C)²; then cos φ = I_R / I and Z = U / I.
    void branchCurrents(const CNodePtr& root);

    // Only I is known: the branches at an auxiliary voltage U_h give the
    // circuit's impedance, Z = U_h / I_h, which holds at every voltage; then U = I · Z.
    void auxiliary(const CNodePtr& root);

    // "230 V" when the pass starts from a known voltage, else its symbol.
    std::string sourceVoltage() const;

    std::string currentTitle(const CNode& c) const;

    std::string voltageTitle(const CNode& c) const;

    // The symbol a node's current and voltage go by where its own isn't
    // written: a series member's current is its group's.
    void refs(const CNodePtr& g, const std::string& u, const std::string& i,
              std::vector<std::tuple<CNodePtr, std::string, std::string>>& out);

    // Branch by branch: P = U·I·cos φ, Q = U·I·sin φ, S = U·I, with the
    // sentence that tells where the branch's current stands. Then the sums:
    // P adds up, Q too with the capacitive branches taken off.
    void branchPowers(const CNodePtr& root);

    void powers(const CNodePtr& root);

    static std::vector<std::string>
    names(const std::vector<std::tuple<CNodePtr, std::string, std::string>>& nodes);

    // Kirchhoff's laws: a series' voltages add up to its own, a parallel's
    // currents to its own. Used when a total is sought; otherwise checks.
    void kirchhoff(const CNodePtr& root);

    const StepScope& s_;
    const Values* known_;
    const Values* preview_;
    CNodePtr block_;        // the one parallel of a "par" circuit; its children are the branches
    bool aux_ = false;      // the branches at an auxiliary voltage, for U from the given current
    bool currents_ = false; // the branches by their currents at the given voltage
    std::vector<StepEquation> out_;
};

} // namespace fl::stepgen
