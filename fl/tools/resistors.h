// Resistors as a student meets them in the drawer: the E series of standard
// values, the colour code in 4, 5 and 6 bands both ways, and the total of a
// list in series or in parallel with the nearest standard value. Each tool
// is one pure function of the form's texts; the pages only declare forms.
#pragma once

#include "fl/fig/canvas.h"
#include "fl/tools/frame.h"

#include <string>
#include <vector>

namespace fl {

enum class ESeries { E12, E24, E96 };

// One decade of the series as whole numbers, ascending: E12 and E24 with two
// digits (10 … 82, 10 … 91), E96 with three (100 … 976).
const std::vector<int>& seriesDigits(ESeries s);
const char* seriesName(ESeries s);
// "E12", "E24", "E96"; false for anything else.
bool seriesFromName(const std::string& name, ESeries* out);

// digits · 10^exponent without the rounding error of a multiplication by a
// negative power (47 · 10⁻² is 0.47, not 0.47000000000000003).
double scaledDigits(long long digits, int exponent);

// The standard value of the series nearest `ohms` by ratio, across decades
// (9,1 Ω goes to 10 Ω in E12, not to 8,2 Ω). NaN for a value that isn't
// finite and above zero.
double nearestStandard(double ohms, ESeries s);
// The standard values just below and just above `ohms` (equal ones count as
// both); NaN outside the finite positive numbers.
void standardNeighbours(double ohms, ESeries s, double* below, double* above);
bool isStandard(double ohms, ESeries s);
// A resistance as resistors are labelled: 470 Ω, 4,7 kΩ, 2,2 MΩ.
std::string ohmsText(double ohms);

// What a coloured ring can mean at each place of the code.
enum class BandRole { Digit, Multiplier, Tolerance, Tempco };

struct BandColour {
    std::string key;       // form data, plain letters: "rod", "solv", "ingen"
    std::string name;      // as the student says it: "rød", "sølv"
    std::string hex;       // the paint of the figure
    int digit = -1;        // 0–9; −1 when the colour is no digit
    int exponent = 99;     // multiplier 10^exponent; 99 when it is no multiplier
    double tolerance = -1; // ± %; −1 when it is no tolerance
    double tempco = -1;    // ppm/K; −1 when it is no temperature coefficient
};

// IEC 60062, in the order of the digits, then gold, silver and "no ring".
const std::vector<BandColour>& bandColours();
const BandColour* findBand(const std::string& key);
// The colours that may stand in a ring of this role, in table order.
std::vector<const BandColour*> bandsFor(BandRole role);

// A resistor read from its rings.
struct ColourReading {
    double ohms = 0, tolerance = 0;
    double tempco = -1;       // ppm/K; −1 for 4 and 5 rings
    std::string error;        // why the rings can't be read; empty when they can
    std::vector<int> badRing; // 1-based places the error is about
};

// `keys` in reading order: 4 rings (2 digits, multiplier, tolerance), 5 (3
// digits, …) or 6 (… and the temperature coefficient).
ColourReading readBands(const std::vector<std::string>& keys);

// The digit rings and the multiplier for `ohms` with 2 or 3 significant
// digits; empty when the value needs more digits or a multiplier beyond
// silver (×0,01) … white (×10⁹).
std::vector<std::string> valueBands(double ohms, int digits);

// The resistor with its rings in reading order and what each means below
// it; the body is beige for 4 rings (carbon) and blue for 5 and 6 (metal
// film), as in the drawer. Rings that can't be read are still drawn.
FigureOut resistorFigure(const std::vector<std::string>& keys);
// The same as a whole SVG document, for the picture beside the form.
std::string resistorSvg(const std::vector<std::string>& keys);

// Form keys "ringe" ("4", "5" or "6"), "r1" … "r6" (colour keys by place).
ToolOut colourToValue(const FormMap& form);
// Form keys "R", "serie" ("E12", "E24", "E96"), "ringe".
ToolOut valueToColour(const FormMap& form);

// The values of a typed list, separated by ";" or line breaks (the comma is
// the decimal mark). `error` names the first entry that doesn't read.
struct ValueList {
    std::vector<double> values;
    std::vector<std::string> shown; // as typed, in display form
    std::string error;
};
ValueList readList(const std::string& text);
// The interpretation line under the list field: "= 3 værdier: …", the
// refusal in `badColour`, or empty for an empty field.
std::string listInterpretation(const std::string& text, const std::string& badColour);

// Form keys "liste" (the resistances) and "kobling" ("serie" or "parallel").
ToolOut resistorTotal(const FormMap& form);

} // namespace fl
