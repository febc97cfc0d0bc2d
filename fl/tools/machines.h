// The machine tools: the capacitors that lift a load's cos φ, and the three
// tools that work in any direction (motor, transformer, symmetrical
// three-phase load), which hand their equation lists to solveChain and then
// compare what was given with what the equations say. Each is one pure
// function of the form's texts; its page declares the form and draws the
// live figure from the same tables.
#pragma once

#include "fl/tools/chain.h"

#include <string>
#include <vector>

namespace fl {

// A quantity of a tool: its form key or symbol, unit and Danish noun (for
// given rows and the messages that name it).
struct ToolQuantity {
    std::string key;
    std::string unit;
    std::string name;
};

// Form keys P or I, cosphi1, cosphi2, U, f. `net` is "1" (single-phase), "D"
// or "Y" (three capacitors in delta or star on the line voltage, read from U).
ToolOut compensate(const FormMap& form, const std::string& net);

// Form keys U_N, f, P_2, I_N, cosphi, eta, nr, p, k_st: any subset.
ToolOut motor(const FormMap& form, bool threePhase, bool starDelta);
// The motor's equations, every one on the page "standardformel".
std::vector<ChainEquation> motorEquations(bool threePhase, bool starDelta);
// Every symbol the motor knows, the plate's fields first.
const std::vector<ToolQuantity>& motorQuantities();

// The transformer's form, in the order of display; also its name table.
struct TrafoField {
    std::string group; // "Primær", "Fælles", "Sekundær"
    std::string key;
    std::string label;
    std::string unit;
};
const std::vector<TrafoField>& transformerFields();
const std::vector<ChainEquation>& transformerEquations();
// Form keys as transformerFields(); at least three given.
ToolOut transformer(const FormMap& form);

// Form keys U_N, U_F, I_N, I_F, R, cosphi, P, S, Q. `perPhase` is "R" for a
// resistive load, else "Z": the form's R then feeds Z.
ToolOut threePhaseLoad(const FormMap& form, bool star);
std::vector<ChainEquation> threePhaseEquations(bool star, const std::string& perPhase);
const std::vector<ToolQuantity>& threePhaseQuantities();

} // namespace fl
