// Which drawing a figure key means, tested in the order of the groups:
// electricity, alternating current, mathematics.
#include "fl/fig/formulafig.h"

#include "fl/expr/symbols.h"
#include "fl/expr/numbers.h"
#include "fl/fig/formulafig_parts.h"

#include <algorithm>
#include <functional>

namespace fl {

namespace figs {

double Given::pos(const std::string& symbol) const {
    auto it = values.find(symbol);
    if (it == values.end() || !std::isfinite(it->second) || !(it->second > 0)) return NAN;
    return it->second;
}

std::string Given::label(const std::string& symbol, const std::string& unit, const std::string& shown) const {
    const std::string name = shown.empty() ? symbolDisplay(symbol) : shown;
    const double v = pos(symbol);
    return std::isfinite(v) ? name + " = " + fmtWithUnit(v, unit) : name;
}

double firstOf(std::initializer_list<double> candidates, double fallback) {
    for (double c : candidates)
        if (std::isfinite(c) && c > 0) return c;
    return fallback;
}

double ratio(double a, double b, double fallback, double lo, double hi) {
    if (!(std::isfinite(a) && a > 0 && std::isfinite(b) && b > 0)) return fallback;
    return std::clamp(b / a, lo, hi);
}

} // namespace figs

namespace {

using Draw = std::function<FigureOut(const figs::Given&)>;

const std::vector<std::pair<std::string, Draw>>& table() {
    using namespace figs;
    static const std::vector<std::pair<std::string, Draw>> t = [] {
        std::vector<std::pair<std::string, Draw>> v;
        const auto add = [&](std::initializer_list<const char*> keys, const auto& draw) {
            for (const char* k : keys) {
                const std::string key = k;
                v.push_back({key, [key, draw](const Given& g) { return draw(g, key); }});
            }
        };
        const auto plain = [](FigureOut (*f)(const Given&)) {
            return [f](const Given& g, const std::string&) { return f(g); };
        };
        add({"circ"}, plain(circFigure));
        add({"par2"}, plain(par2Figure));
        add({"parI"}, plain(parIFigure));
        add({"batt"}, plain(battFigure));
        add({"wire", "vd"}, [](const Given& g, const std::string& k) { return cableFigure(g, k == "vd"); });
        add({"shunt"}, plain(shuntFigure));
        add({"formod"}, plain(formodFigure));
        add({"eff"}, plain(effFigure));
        add({"ZRL", "ZRC", "ZRLC"}, impedanceFigure);
        add({"Zcoil"}, plain(coilImpedanceFigure));
        add({"URL", "URC", "URLC"}, voltageFigure);
        add({"cosZ", "cosU", "cosP"}, cosFigure);
        add({"SPQ", "Pac", "Qac"}, powerFigure);
        add({"phiT"}, plain(phiFigure));
        add({"rt", "trig", "t45", "t30"}, rightTriangleFigure);
        add({"triA", "triS", "heron"}, areaTriangleFigure);
        add({"rect", "square", "paral", "trap", "rhomb"}, quadFigure);
        add({"poly"}, plain(polygonFigure));
        add({"circO", "circA", "circD", "arc", "sector", "segment"}, circleFigure);
        add({"vec1"}, plain(vectorFigure));
        add({"komp"}, plain(kompFigure));
        add({"tfPow", "tfY", "tfD"}, threePhaseFigure);
        add({"trafo"}, plain(trafoFigure));
        return v;
    }();
    return t;
}

} // namespace

const std::vector<std::string>& figureKeys() {
    static const std::vector<std::string> keys = [] {
        std::vector<std::string> k;
        for (const auto& [key, draw] : table())
            k.push_back(key);
        return k;
    }();
    return keys;
}

bool hasFigure(const std::string& key) {
    const auto& keys = figureKeys();
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

FigureOut formulaFigure(const std::string& key, const std::map<std::string, double>& values,
                        const std::string& sought) {
    for (const auto& [k, draw] : table())
        if (k == key) return draw(figs::Given{values, sought});
    return {};
}

std::string figureFor(const std::string& key, const std::map<std::string, double>& values,
                      const std::string& sought, std::string* outCaption) {
    const FigureOut fig = formulaFigure(key, values, sought);
    if (outCaption) *outCaption = fig.caption;
    return svgDocument(fig);
}

std::string formulaFigureMarkup(const std::string& key, const std::map<std::string, double>& values,
                                const std::string& sought) {
    return figureMarkup(formulaFigure(key, values, sought));
}

} // namespace fl
