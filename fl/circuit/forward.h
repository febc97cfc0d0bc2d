// The forward calculation: with every component value and the source
// voltage known, every impedance, voltage, current and power of the tree, in
// complex numbers for both kinds of current (in direct current the imaginary
// parts stay zero). The search calls it once per residual, so the tree is
// compiled once into a flat plan whose run neither allocates nor recurses.
#pragma once

#include "fl/circuit/analysis.h"

#include <complex>
#include <string>
#include <vector>

namespace fl {

using Cx = std::complex<double>;

// a / b by the scaled method, which stays clear of overflow; a zero or NaN
// divisor gives (NaN, NaN).
Cx cdiv(Cx a, Cx b);
// ω = 2π·f, with 50 Hz for a frequency that is absent (NaN) or not above zero.
double omegaOf(double f);

struct ForwardPlan {
    struct Item {
        char k = 'R';
        int kidsBegin = 0, kidsEnd = 0; // range in `kids`
        int value = -1;                 // input slot of a leaf's own value
        int ownR = -1;                  // input slot of a coil's own resistance; -1 ideal
        int outU = -1, outI = -1, outP = -1;
        int outR = -1, outX = -1, outZ = -1; // groups; leaves: X and Z of coils and capacitors
        CNode* node = nullptr;
    };
    bool isAc = false;
    std::vector<Item> items; // pre-order, the root first
    std::vector<int> kids;
    std::vector<std::string> inputs;  // slot → symbol
    std::vector<std::string> outputs; // slot → symbol
    int inU = -1, inF = -1;
    // Whole-circuit outputs.
    int oZ = -1, oI = -1, oU = -1, oCos = -1, oP = -1, oPtot = -1, oRtot = -1, oXtot = -1;
    int oPhi = -1, oQ = -1, oS = -1, oIw = -1, oIb = -1;

    int inputSlot(const std::string& symbol) const;  // -1 when absent
    int outputSlot(const std::string& symbol) const; // -1 when absent
};

// Per-run scratch, sized once for a plan.
struct ForwardWork {
    std::vector<Cx> z, u, i;
    std::vector<double> out;
    void prepare(const ForwardPlan& plan);
};

// Names must be current. A coil counts as having an own resistance when its
// `r` isn't empty, or when `values` holds "R_" + its name.
ForwardPlan compilePlan(const CNodePtr& root, bool isAc, const Values* values = nullptr);
// `in` holds one value per input slot; an ideal coil's slot is ignored.
// Non-finite results are left as they come: they mean "not computed".
void runPlan(const ForwardPlan& plan, const double* in, ForwardWork& work);
// The same plan computing only the output slots in `keep` (the others stay
// as they were): what a search needs of each pass.
ForwardPlan leanPlan(const ForwardPlan& plan, const std::vector<int>& keep);

// The map form: every result symbol of the tree. Raises std::runtime_error
// "mangler " + symbol for a value it needs and doesn't find. Caches each
// node's impedance in its `z`.
Values forward(const CNodePtr& root, const Values& values, bool isAc);
// The impedance of a node (its subtree), filling `z` below it.
Cx impedance(const CNodePtr& node, const Values& values, bool isAc);

// Voltage and current phasors of every node, keyed by id: the source voltage
// lies on the real axis.
struct NodePhasor {
    Cx z, u, i;
};
std::map<std::string, NodePhasor> phasors(const CNodePtr& root, const Values& values, bool isAc);

} // namespace fl
