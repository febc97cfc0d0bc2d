// The right-angled triangle from any two of its parts: the equation chain
// finds the rest in whatever order the givens allow, and a third given is
// held against the others.
#include "fl/tools/small.h"

#include "fl/expr/numbers.h"
#include "fl/fig/canvas.h"
#include "fl/tools/chain.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

using tool::hint;

const char* const kParts[] = {"a", "b", "c", "A", "B"};

bool isAngle(const std::string& key) {
    return key == "A" || key == "B";
}

// In the order the chain tries them; the first that can be used wins.
const std::vector<ChainEquation>& equations() {
    static const std::vector<ChainEquation> list{
        {"c", "sqrt(a**2+b**2)", "Pythagoras: c² = a² + b²", "22"},
        {"a", "c*sin(A)", "sin A = a / c", "25"},
        {"b", "c*cos(A)", "cos A = b / c", "25"},
        {"B", "90-A", "Vinkelsummen: A + B + 90° = 180°", ""},
        {"a", "b*tan(A)", "tan A = a / b", "25"},
        {"T", "a*b/2", "Arealet: T = ½ · a · b", "29"},
        {"O", "a+b+c", "Omkredsen: O = a + b + c", ""},
    };
    return list;
}

std::string sideOrAngle(const std::string& key, double v) {
    return isAngle(key) ? fmtWithUnit(v, "°") : fmtNumber(v);
}

// A sliver of a triangle can't be read: below this the angle is drawn wider.
constexpr double kReadable = 15;

// The triangle true to scale while both angles are readable; the sides the
// student didn't give are in the accent colour.
FigureOut triangleFigure(const std::map<std::string, double>& v, const ToolInputs& in) {
    const double A = v.at("A");
    const double drawn = std::clamp(A, kReadable, 90 - kReadable);
    Fig fig;
    // Corners A, C (the right angle) and B: b along the foot, a upright.
    fig.pts = {{0, 0}, {1, 0}, {1, std::tan(drawn * M_PI / 180)}};
    const auto side = [&](const char* k) { return std::string(k) + " = " + fmtNumber(v.at(k)); };
    const auto cls = [&](const char* k) { return in.has(k) ? std::string() : std::string("hl"); };
    fig.edges = {{0, 1, side("b"), cls("b")}, {1, 2, side("a"), cls("a")}, {0, 2, side("c"), cls("c")}};
    // The angles' values stand at their corners, outside the triangle, where
    // a long label has room even at the sharp corner.
    fig.angles = {{0, 1, 2, {}, {}, false, 20}, {2, 0, 1, {}, {}, false, 20}, {1, 2, 0, {}, {}, true, 14}};
    const auto corner = [&](const char* k) { return std::string(in.has(k) ? "sym" : "hl"); };
    fig.marks = {{fig.pts[0], "A = " + fmtWithUnit(A, "°"), corner("A")},
                 {fig.pts[1], "C", "sym"},
                 {fig.pts[2], "B = " + fmtWithUnit(v.at("B"), "°"), corner("B")}};
    fig.custom = true;
    fig.W = 460, fig.H = 300, fig.mx = 100, fig.my = 48;
    fig.title = "Blå sider og vinkler er fundet ved udregning";
    fig.caption = std::fabs(drawn - A) > 0.5 ? " · <b>ikke i målestok</b>: tegnet med A = " + fmtNumber(drawn, 3) +
                                                   "°, så den er til at læse"
                                             : " · tegnet i målestok";
    return drawFig(fig);
}

} // namespace

ToolOut rightTriangle(const FormMap& form) {
    return runTool("Retvinklet trekant", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        std::vector<std::string> given, nonPositive;
        for (const char* k : kParts)
            if (in.has(k)) {
                given.push_back(k);
                if (!(in.get(k) > 0)) nonPositive.push_back(k);
            }
        if (!nonPositive.empty()) {
            refuse(out,
                   "Sider og vinkler skal være større end 0 – ret " + tool::symbolList(nonPositive) + ".",
                   nonPositive);
            return;
        }
        size_t sides = 0;
        for (const std::string& k : given)
            if (!isAngle(k)) ++sides;
        if (given.size() < 2) {
            refuse(out, "Giv to af de fem: kateterne a og b, hypotenusen c og vinklerne A og B.");
            return;
        }
        if (sides == 0) {
            refuse(out, "To vinkler giver kun trekantens form, ikke dens størrelse – giv mindst én side.",
                   {"A", "B"});
            return;
        }
        for (const char* k : {"A", "B"})
            if (in.get(k) >= 90) {
                refuse(out,
                       std::string("Vinklerne A og B er spidse: de ligger mellem 0° og 90°. Den rette vinkel "
                                   "(90°) står mellem kateterne."),
                       {k});
                return;
            }
        for (const char* leg : {"a", "b"})
            if (in.has("c") && in.get(leg) >= in.get("c")) {
                refuse(out,
                       "Hypotenusen c er den længste side – den skal være længere end " +
                           tool::symbolHtml(leg) + ".",
                       {"c", leg});
                return;
            }

        ToolSheet s;
        s.vars = in.numbers;
        s.shown = in.shown;
        static const char* const kNames[] = {"den ene katete (over for A)", "den anden katete (over for B)",
                                             "hypotenusen (over for den rette vinkel)", "vinklen ved b og c",
                                             "vinklen ved a og c"};
        for (size_t i = 0; i < 5; ++i)
            if (in.has(kParts[i])) addGivenInput(s, in, kParts[i], kNames[i], isAngle(kParts[i]) ? "°" : "");

        ChainSetup setup;
        setup.unitOf = [](const std::string& sym) { return isAngle(sym) ? std::string("°") : std::string(); };
        setup.shown = in.shown;
        const ChainResult chain = solveChain(equations(), s.vars, setup);
        for (const char* k : kParts)
            if (!s.vars.count(k)) {
                refuse(out, "Ud fra det givne kan trekanten ikke findes – giv to af a, b, c, A og B.");
                return;
            }
        s.sections.steps = chain.blocks;

        std::string lines;
        for (const ChainMismatch& m : chainMismatches(chain, s.vars, setup)) {
            if (m.conflict) {
                refuse(
                    out,
                    "De givne værdier passer ikke sammen – en retvinklet trekant er fastlagt af to af dem. " +
                        m.line + ".",
                    given);
                return;
            }
            lines += "<p>" + m.line + " – det er afrunding.</p>";
        }
        const double a = s.vars.at("a"), b = s.vars.at("b"), c = s.vars.at("c"), A = s.vars.at("A"),
                     B = s.vars.at("B");
        s.sections.check = "<p>A + B = " + fmtWithUnit(A, "°") + " + " + fmtWithUnit(B, "°") + " = " +
                           fmtWithUnit(A + B, "°") +
                           " <span class=\"ok\">✓</span></p><p>a² + b² = " + fmtNumber(a * a + b * b) +
                           " og c² = " + fmtNumber(c * c) + " <span class=\"ok\">✓</span></p>" + lines;
        std::vector<KvItem> grid;
        for (const char* k : {"a", "b", "c", "A", "B", "T", "O"})
            grid.push_back({tool::symbolHtml(k), sideOrAngle(k, s.vars.at(k)), !in.has(k)});
        s.sections.results = kvGrid(grid, 4) + hint("Fremhævede værdier er fundet ved udregning.");
        s.sections.figure = figureMarkup(triangleFigure(s.vars, in));
        s.id = "trisheet";
        s.crumb = "Retvinklet trekant · formelsamling s. 22–25";
        s.title = "a = " + fmtNumber(a) + ", b = " + fmtNumber(b) + ", c = " + fmtNumber(c);
        s.sections.answer = "<span class=\"big2\">a = " + fmtNumber(a) + " · b = " + fmtNumber(b) +
                            " · c = " + fmtNumber(c) + " · A = " + fmtWithUnit(A, "°") +
                            " · B = " + fmtWithUnit(B, "°") + "</span>";
        std::vector<RecentValue> recent;
        for (const char* k : kParts)
            if (!in.has(k)) recent.push_back({k, s.vars.at(k), isAngle(k) ? "°" : ""});
        finish(out, s, recent);
    });
}

} // namespace fl
