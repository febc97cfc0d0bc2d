// Exercises on a drawn circuit: a few templates per kind of current, each a
// function that draws a circuit with workshop values; the circuit solver
// works it out and one of its quantities is asked for. The component values
// stand on the schematic, which the statement carries as a figure.
#pragma once

#include "fl/circuit/model.h"
#include "fl/practice/exercise.h"

#include <functional>
#include <string>
#include <vector>

namespace fl {

struct CircuitTemplate {
    std::string mode; // "dc" or "ac"
    std::string name; // "Serieforbindelse", "Kompensering", …
    std::function<Circuit()> make;
};

const std::vector<CircuitTemplate>& circuitTemplates();
// "circ:dc|Serieforbindelse": its key in the statistics and in the teacher's list.
std::string circuitKey(const CircuitTemplate& t);
// "Kredsløb – jævnstrøm" or "Kredsløb – vekselstrøm".
std::string circuitTopic(const std::string& mode);

// The drawing with its component values, then the givens and the question.
// Writes the drawing into the caller's rendering pass.
std::string circuitStatement(const Exercise& ex);
// The hint: the formulas to use in their order, without numbers. Writes into
// the caller's rendering pass.
std::string circuitHint(const Exercise& ex);

// Draws the template's circuit and asks for one of its quantities; up to 80
// attempts, empty when none gave an answer.
Exercise circuitExercise(const CircuitTemplate& t);
// A template of the mode that `open` lets through, drawn uniformly.
Exercise makeCircuitExercise(const std::string& mode, const KeyFilter& open = {});

} // namespace fl
