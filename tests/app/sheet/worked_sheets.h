// Real worked sheets for the sheet view's tests and benchmark: one family
// solved by the solve driver, in its card as the formula page shows it, and a
// long sheet of many families appended one after another.
#pragma once

#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/solve.h"
#include "tests/fl/formulas/sample_values.h"

#include <random>
#include <stdexcept>

namespace sheets {

inline fl::RenderResult worked(const std::string& key, const std::map<std::string, double>& values,
                               const std::string& target, const fl::FigureSource& figure = {}) {
    fl::resetFigures();
    const fl::Formula* f = fl::findFormula(key);
    if (!f) throw std::invalid_argument("no family " + key);
    const fl::SolveResult s = fl::solveSheet(*f, values, {}, target, figure);
    return fl::takeRender("<div class=\"card sheet\" id=\"" + key +
                          "\"><div class=\"sheet-head\"><div class=\"crumb\">Formler</div><h2>" + f->title +
                          "</h2></div>" + s.html + "</div>");
}

// The first `count` families that offer a second quantity, each solved for it
// from believable values.
inline fl::RenderResult manyFamilies(int count, unsigned seed = 7) {
    std::mt19937 rng(seed);
    fl::RenderResult all;
    int taken = 0;
    for (const fl::Formula& f : fl::catalogue()) {
        if (taken == count) break;
        auto values = fl::sample::values(f, rng);
        if (!values || f.forms.size() < 2) continue;
        const std::string target = f.forms[1].var;
        values->erase(target);
        all.append(worked(f.key, *values, target));
        ++taken;
    }
    return all;
}

} // namespace sheets
