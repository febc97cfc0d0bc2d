// Inside the formula figures: what every drawing reads its numbers through,
// and the drawings of each group of keys (formulafig_el.cpp, _ac.cpp, _math.cpp).
#pragma once

#include "fl/fig/canvas.h"

#include <cmath>
#include <map>
#include <string>

namespace fl::figs {

struct Given {
    const std::map<std::string, double>& values;
    const std::string& sought;

    // A usable magnitude: finite and above zero; NaN otherwise.
    double pos(const std::string& symbol) const;
    // Asked for, or known with a usable value.
    bool mentions(const std::string& symbol) const { return symbol == sought || std::isfinite(pos(symbol)); }
    std::string cls(const std::string& symbol) const { return symbol == sought ? "hl" : ""; }
    // "R = 47 Ω", or the symbol alone when its number can't be used. `shown`
    // replaces the symbol's usual display form.
    std::string label(const std::string& symbol, const std::string& unit, const std::string& shown = {}) const;
};

// The first usable of the candidates, else `fallback`.
double firstOf(std::initializer_list<double> candidates, double fallback);
// b / a held to [lo, hi], or `fallback` when either is unusable: proportions
// that stay readable whatever the numbers.
double ratio(double a, double b, double fallback, double lo = 0.2, double hi = 5);

FigureOut circFigure(const Given& g);
FigureOut par2Figure(const Given& g);
FigureOut parIFigure(const Given& g);
FigureOut battFigure(const Given& g);
FigureOut cableFigure(const Given& g, bool drop);
FigureOut shuntFigure(const Given& g);
FigureOut formodFigure(const Given& g);
FigureOut effFigure(const Given& g);
FigureOut trafoFigure(const Given& g);
FigureOut threePhaseFigure(const Given& g, const std::string& key);

FigureOut impedanceFigure(const Given& g, const std::string& key);
FigureOut coilImpedanceFigure(const Given& g);
FigureOut voltageFigure(const Given& g, const std::string& key);
FigureOut cosFigure(const Given& g, const std::string& key);
FigureOut powerFigure(const Given& g, const std::string& key);
FigureOut phiFigure(const Given& g);
FigureOut kompFigure(const Given& g);
FigureOut vectorFigure(const Given& g);

FigureOut rightTriangleFigure(const Given& g, const std::string& key);
FigureOut areaTriangleFigure(const Given& g, const std::string& key);
FigureOut quadFigure(const Given& g, const std::string& key);
FigureOut polygonFigure(const Given& g);
FigureOut circleFigure(const Given& g, const std::string& key);

} // namespace fl::figs
