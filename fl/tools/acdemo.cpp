// The demonstration of the series circuit: logarithmic sliders, the test for
// resonance, and the pictures redrawn at every move. Everything here runs
// on each slider step, so it computes straight from SeriesRlcValues and
// writes each figure in one pass, as SVG and as shapes for the page's painter.
#include "fl/tools/ac.h"

#include "fl/expr/numbers.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

using tool::formatValue;

// Samples of a curve: smooth at the figure's width.
constexpr int kSamples = 240;

SeriesRlcValues solve(const DemoSetting& s, double f) {
    return seriesRlc({s.R, s.L, s.C, f, s.U, NAN});
}

// u and i over two periods. The current is drawn as i · R, so that at
// resonance, where I = U / R, both curves have the same height; its own
// scale in amperes stands on the right.
FigureOut curveFigure(const DemoSetting& s, const SeriesRlcValues& v) {
    const double period = 1000 / s.f; // ms
    const double uPeak = std::sqrt(2.0) * v.U, iPeak = std::sqrt(2.0) * v.I;
    const double shift = v.phi * M_PI / 180;
    AxesPlot plot;
    plot.right = 52;
    plot.x0 = 0, plot.x1 = 2 * period;
    plot.y0 = -uPeak, plot.y1 = uPeak;
    plot.xLabel = "t / ms";
    plot.yLabel = "u / V";
    AxesPlot::Curve u{{}, "w1"}, i{{}, "w2"};
    u.points.reserve(kSamples + 1);
    i.points.reserve(kSamples + 1);
    for (int k = 0; k <= kSamples; ++k) {
        const double t = plot.x1 * k / kSamples;
        const double wt = 2 * M_PI * t / period;
        u.points.push_back({t, uPeak * std::sin(wt)});
        // φ > 0: the current lags the voltage.
        i.points.push_back({t, iPeak * s.R * std::sin(wt - shift)});
    }
    plot.curves = {u, i};
    plot.overlay = [&](Canvas& cv, const std::function<Pt(Pt)>& map) {
        const double half = uPeak * 1.18, step = tickStep(2 * half, 6);
        const double right = plot.W - plot.right + 6;
        for (double t = std::ceil(-half / step) * step; t <= half + 1e-9 * step; t += step) {
            const std::string text = fmtNumber(std::fabs(t) < 1e-9 * step ? 0.0 : t / s.R);
            cv.textFit(right, map({0, t}).y, text, "start", "vl2", textWidth(text, 12.5));
        }
        cv.text(right, plot.top + 2, "i / A", "start", "vl2");
        // u over its first crest, i under its first trough: apart even when the curves coincide.
        const double quarter = period / 4;
        const Pt pu = map({quarter, uPeak}), pi = map({3 * quarter + period * v.phi / 360, -iPeak * s.R});
        cv.text(pu.x, pu.y - 12, "u", "middle", "t1");
        cv.text(pi.x, pi.y + 14, "i", "middle", "t2");
    };
    return drawAxes(plot);
}

// The current over frequency, with the setting's f and the resonance f₀.
FigureOut resonanceFigure(const DemoSetting& s, const SeriesRlcValues& v) {
    const double fMax = std::max({2.2 * v.f0, 1.25 * s.f, 10.0});
    const double top = s.U / s.R; // the current at resonance
    AxesPlot plot;
    plot.W = 940, plot.H = 240;
    plot.x0 = 0, plot.x1 = fMax;
    plot.y0 = 0, plot.y1 = top;
    plot.xLabel = "f / Hz";
    plot.yLabel = "I / A";
    AxesPlot::Curve curve{{}, "w2"};
    curve.points.reserve(kSamples + 2);
    bool peakTaken = false;
    for (int k = 1; k <= kSamples; ++k) {
        const double f = fMax * k / kSamples;
        // The peak itself, however narrow, is one of the points.
        if (!peakTaken && f >= v.f0) {
            curve.points.push_back({v.f0, top});
            peakTaken = true;
        }
        curve.points.push_back({f, solve(s, f).I});
    }
    plot.curves = {curve};
    const bool resonant = atResonance(v, s.f);
    plot.overlay = [&](Canvas& cv, const std::function<Pt(Pt)>& map) {
        const Pt base0 = map({v.f0, 0}), peak = map({v.f0, top});
        cv.line(base0.x, base0.y, peak.x, peak.y, "dash");
        cv.text(peak.x, peak.y - 12, "f<sub>0</sub> = " + formatValue(v.f0, "Hz"), "middle", "hl");
        if (resonant) return;
        const Pt base = map({s.f, 0}), here = map({s.f, v.I});
        cv.line(base.x, base.y, here.x, here.y, "ang");
        cv.circle(here.x, here.y, 4.5, "node");
        cv.text(here.x + (s.f < v.f0 ? -8 : 8), here.y - 12, "f = " + formatValue(s.f, "Hz"), s.f < v.f0 ? "end" : "start",
                "sym");
    };
    return drawAxes(plot);
}

std::string readoutLine(const DemoSetting& s, const SeriesRlcValues& v, bool resonant) {
    const std::string word = reactiveWord(v.X, v.Z);
    std::string out = "X<sub>L</sub> = " + formatValue(v.XL, "Ω") + " · X<sub>C</sub> = " + formatValue(v.XC, "Ω") +
                      " · Z = " + formatValue(v.Z, "Ω") + " · I = " + formatValue(v.I, "A") + " · φ = " +
                      fmtWithUnit(std::fabs(v.phi), "°") + " " + word + " · f<sub>0</sub> = " +
                      formatValue(v.f0, "Hz") + "<br>";
    if (resonant)
        return out + "<b class=\"ok\">Resonans:</b> X<sub>L</sub> = X<sub>C</sub>, så Z = R = " +
               formatValue(s.R, "Ω") + ", og strømmen er størst. Spændingerne over L og C ophæver hinanden.";
    return out + (word == "induktiv" ? "X<sub>L</sub> er størst: strømmen er efter spændingen. Skru f ned mod f<sub>0</sub>."
                                     : "X<sub>C</sub> er størst: strømmen er før spændingen. Skru f op mod f<sub>0</sub>.");
}

} // namespace

const std::array<DemoRange, 4>& demoRanges() {
    static const std::array<DemoRange, 4> ranges{{
        {1, 1000, "R", "Ω", "Modstand R"},
        {1e-3, 2, "L", "H", "Spolens induktans L"},
        {1e-6, 1e-3, "C", "F", "Kondensatorens kapacitet C"},
        {5, 500, "f", "Hz", "Frekvens f"},
    }};
    return ranges;
}

bool atResonance(const SeriesRlcValues& v, double f) {
    return std::isfinite(v.f0) && std::fabs(f / v.f0 - 1) <= kResonanceBand;
}

DemoView demoView(const DemoSetting& s) {
    const SeriesRlcValues v = solve(s, s.f);
    DemoView view;
    view.resonant = atResonance(v, s.f);
    view.curves = curveFigure(s, v);
    view.phasors = drawVectors(seriesPhasorScene(v, true, true, true));
    view.resonance = resonanceFigure(s, v);
    view.readout = readoutLine(s, v, view.resonant);
    return view;
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
