// The series circuit of R, L and C on an alternating voltage: every
// quantity at once with its working (the "ac" tool), the same numbers
// without text for the demonstration's sliders, and the demonstration's
// pictures. Signs follow the circuit solver: the source voltage is the
// reference, φ is positive when the circuit is inductive (the current lags).
#pragma once

#include "fl/fig/canvas.h"
#include "fl/fig/phasor.h"
#include "fl/tools/frame.h"

#include <array>
#include <cmath>
#include <map>
#include <string>

namespace fl {

// NaN for a part that isn't there; U or I.
struct SeriesRlc {
    double R = NAN, L = NAN, C = NAN;
    double f = 50;
    double U = NAN, I = NAN;
};

struct SeriesRlcValues {
    double omega = NAN, XL = 0, XC = 0, X = NAN, Z = NAN;
    double U = NAN, I = NAN, UR = NAN, UL = NAN, UC = NAN;
    double phi = NAN;                               // degrees, −90 … 90, positive when inductive
    double cosphi = NAN, P = NAN, Q = NAN, S = NAN; // Q with the sign of φ
    double f0 = NAN; // the resonance frequency; NaN unless both L and C are there
};

// Without text or allocation, for every slider move. Results are not finite
// when Z is 0 or neither U nor I is given.
SeriesRlcValues seriesRlc(const SeriesRlc& in);

// Form keys R, L, C (any of them may be empty: the part isn't there), f,
// and U or I. `values`, when given, receives every quantity of the sheet by
// its symbol ("XL", "Z", "UR", "phi", "f_r", …).
ToolOut acSeries(const FormMap& form, std::map<std::string, double>* values = nullptr);

// The phasor diagram of both pages: the current horizontal, the voltage of
// each part that is there (U_R along I, U_L up, U_C down), the same added
// head to tail, and their sum U with the angle φ. Empty without a current.
FigureOut seriesPhasors(const SeriesRlcValues& v, bool hasR, bool hasL, bool hasC);
// The scene of that diagram, before it is drawn; no vectors without a current.
VectorScene seriesPhasorScene(const SeriesRlcValues& v, bool hasR, bool hasL, bool hasC);

// "induktiv", "kapacitiv" or "ohmsk" by the sign of the reactance; below
// 1e-12 of the impedance it counts as none.
std::string reactiveWord(double X, double Z);

// The demonstration: one setting of the sliders.
struct DemoSetting {
    double R = 100, L = 0.5, C = 10e-6, f = 50, U = 230;
};

// Within this fraction of f₀ the demonstration says "resonans".
inline constexpr double kResonanceBand = 0.02;
bool atResonance(const SeriesRlcValues& v, double f);

// What each slider spans, in the order R, L, C, f.
struct DemoRange {
    double lo, hi;
    const char* symbol; // beside the slider
    const char* unit;
    const char* name;   // for the tool tip and screen readers
};
const std::array<DemoRange, 4>& demoRanges();
inline constexpr int kSliderSteps = 1000;

// Everything the demonstration shows for one setting, drawn anew at every
// move: u and i over two periods, the phasors, the current over frequency
// with f and f₀ marked, and a line of the values. The figures carry their
// shapes, for the page to paint without an SVG renderer.
struct DemoView {
    FigureOut curves, phasors, resonance;
    std::string readout;                    // HTML
    bool resonant = false;
};
DemoView demoView(const DemoSetting& s);

// Slider positions 0 … steps on a logarithmic scale from lo to hi, so that
// 1 mH and 1 H are as easy to reach.
double sliderValue(int pos, int steps, double lo, double hi);
int sliderPosition(double value, int steps, double lo, double hi);

} // namespace fl
