// Vectors added by their components: polar ones are split into x and y, the
// components summed, and the sum turned back into a length and an angle,
// with the quadrant told in words where tan⁻¹ alone would point wrong.
#include "fl/tools/small.h"

#include "fl/expr/numbers.h"
#include "fl/fig/phasor.h"

#include <cmath>

namespace fl {

namespace {

using tool::hint;

std::string idx(const char* name, int i) {
    return name + std::to_string(i);
}

// "x1+x2+x3"
std::string sumOf(const char* name, const std::vector<int>& used) {
    std::string out;
    for (int i : used)
        out += (out.empty() ? "" : "+") + idx(name, i);
    return out;
}

std::string angleText(double v) {
    return fmtWithUnit(v, "°");
}

std::string polarText(double x, double y) {
    return fmtNumber(std::hypot(x, y)) + " ∠ " + angleText(vectorAngle(x, y));
}

// Each vector from the origin, the same laid head to tail (dashed), and the
// sum in the accent colour: the addition as it is drawn by hand.
FigureOut vectorFigure(const std::map<std::string, double>& v, const std::vector<int>& used) {
    VectorScene scene;
    for (int i : used) {
        const double x = v.at(idx("x", i)), y = v.at(idx("y", i));
        scene.vectors.push_back({{0, 0}, {x, y}, "", "v<sub>" + std::to_string(i) + "</sub>", polarText(x, y)});
    }
    if (used.size() > 1) {
        double ax = v.at(idx("x", used.front())), ay = v.at(idx("y", used.front()));
        for (size_t k = 1; k < used.size(); ++k) {
            const double nx = ax + v.at(idx("x", used[k])), ny = ay + v.at(idx("y", used[k]));
            scene.vectors.push_back({{ax, ay}, {nx, ny}, "", {}, {}, true});
            ax = nx, ay = ny;
        }
        const double xs = v.at("xs"), ys = v.at("ys");
        scene.vectors.push_back({{0, 0}, {xs, ys}, "res", "v<sub>sum</sub>", polarText(xs, ys)});
    }
    scene.caption = used.size() > 1 ? "Vektorerne lagt i forlængelse af hinanden (stiplet) ender, hvor summen (blå) "
                                      "ender."
                                    : "Vektoren tegnet fra origo.";
    return drawVectors(scene);
}

} // namespace

double vectorAngle(double x, double y) {
    if (x == 0 && y == 0) return 0;
    const double a = std::atan2(y, x) * 180 / M_PI;
    return a <= -180 ? a + 360 : a;
}

ToolOut addVectors(const FormMap& form) {
    return runTool("Læg vektorer sammen", [&](ToolOut& out) {
        auto it = form.find("form");
        const bool polar = it == form.end() || it->second != "rekt";
        // Only the fields of the chosen form count; the others may hold leftovers.
        FormMap fields;
        for (int i = 1; i <= kVectorCount; ++i)
            for (const char* k :
                 polar ? std::vector<const char*>{"v", "V"} : std::vector<const char*>{"x", "y"})
                if (auto f = form.find(idx(k, i)); f != form.end()) fields[idx(k, i)] = f->second;
        ToolInputs in;
        if (!openForm(out, fields, in)) return;

        std::vector<int> used;
        for (int i = 1; i <= kVectorCount; ++i) {
            if (polar) {
                const bool hasV = in.has(idx("v", i)), hasA = in.has(idx("V", i));
                if (hasV != hasA) {
                    const std::string missing = hasV ? idx("V", i) : idx("v", i);
                    refuse(out,
                           "Vektor " + std::to_string(i) +
                               " skal have både en længde og en vinkel – udfyld " +
                               tool::symbolHtml(missing) + ".",
                           {missing});
                    return;
                }
                if (hasV) {
                    if (in.get(idx("v", i)) < 0) {
                        refuse(out, "En længde kan ikke være negativ – vend vinklen 180° i stedet.",
                               {idx("v", i)});
                        return;
                    }
                    used.push_back(i);
                }
            } else if (in.has(idx("x", i)) || in.has(idx("y", i))) {
                used.push_back(i);
            }
        }
        if (used.empty()) {
            refuse(out, polar ? "Skriv længde og vinkel for mindst én vektor."
                              : "Skriv x- og y-komposanten for mindst én vektor.");
            return;
        }

        ToolSheet s;
        s.shown = in.shown;
        for (int i : used) {
            const std::string n = "vektor " + std::to_string(i);
            if (polar) {
                s.vars[idx("v", i)] = in.get(idx("v", i));
                s.vars[idx("V", i)] = in.get(idx("V", i));
                addGivenInput(s, in, idx("v", i), "længden af " + n, "");
                addGivenInput(s, in, idx("V", i), "vinklen af " + n, "°");
            } else {
                // A component left empty is 0: the vector lies on an axis.
                for (const char* k : {"x", "y"}) {
                    const std::string key = idx(k, i);
                    s.vars[key] = in.has(key) ? in.get(key) : 0.0;
                    addGivenInput(s, in, key, std::string(k) + "-komposanten af " + n, "", "0");
                }
            }
        }
        if (polar)
            for (int i : used)
                addStepBlock(s, "Vektor " + std::to_string(i) + " på komposantform", "26",
                             {{"", idx("v", i) + "*cos(" + idx("V", i) + ")", idx("x", i)},
                              {"", idx("v", i) + "*sin(" + idx("V", i) + ")", idx("y", i)}},
                             i == used.front()
                                 ? hint("x = v · cos V og y = v · sin V. Vinklen regnes mod uret fra "
                                        "den vandrette akse.")
                                 : std::string());
        addStepBlock(s, used.size() > 1 ? "Læg komposanterne sammen" : "Komposanterne", "",
                     {{"", sumOf("x", used), "xs"}, {"", sumOf("y", used), "ys"}},
                     used.size() > 1
                         ? hint("Vektorer lægges sammen ved at lægge x'erne for sig og y'erne for sig.")
                         : std::string());
        const double xs = s.vars.at("xs"), ys = s.vars.at("ys");
        addStepBlock(s, "Summens længde (Pythagoras)", "26", {{"", "sqrt(xs**2+ys**2)", "v_sum"}});
        const double length = s.vars.at("v_sum");
        double angle = 0;
        if (length == 0) {
            s.sections.steps.push_back(
                {"Summens vinkel", "", hint("Summen er nulvektoren: den har længden 0 og ingen retning.")});
        } else if (xs == 0) {
            angle = ys > 0 ? 90 : -90;
            s.sections.steps.push_back(
                {"Summens vinkel", "",
                 hint(std::string("x<sub>sum</sub> = 0, så summen ligger på y-aksen og peger ") +
                      (ys > 0 ? "opad: V = 90°." : "nedad: V = −90°."))});
        } else {
            addStepBlock(s, "Summens vinkel", "26", {{"°", "atan(ys/xs)", xs > 0 ? "V_sum" : "V_tan"}},
                         hint("tan V = y / x."));
            if (xs < 0) {
                const bool up = ys >= 0;
                addStepBlock(
                    s, "Ret kvadranten", "", {{"°", up ? "V_tan+180" : "V_tan-180", "V_sum"}},
                    hint(std::string(
                             "x<sub>sum</sub> er negativ, så summen peger mod venstre. tan<sup>−1</sup> "
                             "giver altid en vinkel mellem −90° og 90°, så der skal ") +
                         (up ? "lægges 180° til." : "trækkes 180° fra.")));
            }
            angle = s.vars.at("V_sum");
        }

        std::string table = "<div class=\"tbl\"><table><tr><th>Vektor</th><th>x</th><th>y</th><th>Længde</th>"
                            "<th>Vinkel</th></tr>";
        for (int i : used) {
            const double x = s.vars.at(idx("x", i)), y = s.vars.at(idx("y", i));
            table += "<tr><td>" + std::to_string(i) + "</td><td>" + fmtNumber(x) + "</td><td>" +
                     fmtNumber(y) + "</td><td>" + fmtNumber(std::hypot(x, y)) + "</td><td>" +
                     angleText(vectorAngle(x, y)) + "</td></tr>";
        }
        table += "<tr class=\"calc\"><td><b>Sum</b></td><td>" + fmtNumber(xs) + "</td><td>" + fmtNumber(ys) +
                 "</td><td><b>" + fmtNumber(length) + "</b></td><td><b>" + angleText(angle) +
                 "</b></td></tr>";
        s.sections.results = table + "</table></div>";
        s.sections.figure = figureMarkup(vectorFigure(s.vars, used));
        s.id = "vecsheet";
        s.crumb = "Vektorer · formelsamling s. 26";
        s.title = "Summen: " + fmtNumber(length) + " ∠ " + angleText(angle);
        s.sections.answer = "<span class=\"big\">v<sub>sum</sub> = " + fmtNumber(length) + " ∠ " +
                            angleText(angle) + "</span> <span class=\"crumb\">x = " + fmtNumber(xs) +
                            ", y = " + fmtNumber(ys) + "</span>";
        finish(out, s, {{"v_sum", length, ""}, {"V_sum", angle, "°"}});
    });
}

} // namespace fl
