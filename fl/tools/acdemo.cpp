// The demonstration of the series circuit: logarithmic sliders, the test for
// resonance, and the pictures redrawn at every move.
#include "fl/tools/ac.h"

#include <algorithm>
#include <cmath>

namespace fl {

bool atResonance(const SeriesRlcValues& v, double f) {
    return std::isfinite(v.f0) && std::fabs(f / v.f0 - 1) <= kResonanceBand;
}

double sliderValue(int pos, int steps, double lo, double hi) {
    const double t = std::clamp(static_cast<double>(pos) / std::max(steps, 1), 0.0, 1.0);
    return lo * std::pow(hi / lo, t);
}

int sliderPosition(double value, int steps, double lo, double hi) {
    if (!(value > 0)) return 0;
    const double t = std::log(value / lo) / std::log(hi / lo);
    return static_cast<int>(std::lround(std::clamp(t, 0.0, 1.0) * steps));
}

} // namespace fl
