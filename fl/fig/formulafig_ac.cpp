// Formula figures of alternating current: the resistance, voltage and power
// triangles with the reactive side up for a coil and down for a capacitor,
// the cosine triangles that show their ratio, the triangle of compensation
// with its two angles, and the vector with its components.
#include "fl/expr/numbers.h"
#include "fl/fig/formulafig_parts.h"
#include "fl/fig/phasor.h"
#include "fl/fig/triangles.h"

#include <algorithm>
#include <cmath>

namespace fl::figs {

namespace {

constexpr double kDeg = 0.017453292519943295; // π/180

// A right triangle from the numbers where they make one, else from fixed
// proportions, which the caption then owns up to.
FigureOut triangle(RightTriangle t, bool fromValues) {
    const bool usable = fromValues && t.foot > 0 && std::fabs(t.upright) > 1e-12 && std::isfinite(t.foot) &&
                        std::isfinite(t.upright) && std::fabs(t.upright) / t.foot < 1e6 &&
                        t.foot / std::fabs(t.upright) < 1e6;
    if (usable) return rightTriangle(t);
    t.foot = 4;
    t.upright = t.upright < 0 ? -3 : 3;
    FigureOut f = rightTriangle(t);
    f.caption = t.title + " · <b>ikke i målestok</b>: tegnet med faste forhold";
    return f;
}

// The legs and hypotenuse of a triangle whose upright leg is `up` less
// `down` (either may be absent: empty symbol). A missing side follows from
// the other two; the upright points down when `down` wins.
struct Sides {
    double foot = NAN, upright = NAN, hyp = NAN;
    bool fromValues = false;
};

Sides reactiveSides(const Given& g, const std::string& foot, const std::string& hyp, const std::string& up,
                    const std::string& down) {
    Sides s;
    const double f = g.pos(foot), h = g.pos(hyp);
    const double u = up.empty() ? 0 : g.pos(up), d = down.empty() ? 0 : g.pos(down);
    double x = NAN;
    if (std::isfinite(u) && std::isfinite(d)) x = u - d;
    s.foot = f, s.hyp = h;
    if (std::isfinite(x) && x != 0 && std::isfinite(f)) {
        s.upright = x;
        s.fromValues = true;
    } else if (std::isfinite(f) && std::isfinite(h) && h > f) {
        // Pythagoras: the reactive side from the other two, on the side the
        // known part of it points to.
        const double sign = (up.empty() || (!std::isfinite(u) && std::isfinite(d))) ? -1 : 1;
        s.upright = sign * std::sqrt(h * h - f * f);
        s.fromValues = true;
    } else if (std::isfinite(x) && x != 0 && std::isfinite(h) && h > std::fabs(x)) {
        s.foot = std::sqrt(h * h - x * x);
        s.upright = x;
        s.fromValues = true;
    } else {
        s.upright = up.empty() ? -1 : 1;
    }
    return s;
}

// "X<sub>L</sub> − X<sub>C</sub> = 40 Ω" or turned round when the capacitor wins.
std::string differenceText(const Given& g, const std::string& a, const std::string& b, const std::string& unit,
                           double upright, const std::string& na, const std::string& nb) {
    const double u = g.pos(a), d = g.pos(b);
    const bool turned = upright < 0;
    std::string text = turned ? nb + " − " + na : na + " − " + nb;
    if (std::isfinite(u) && std::isfinite(d) && u != d) text += " = " + fmtWithUnit(std::fabs(u - d), unit);
    return text;
}

std::string eitherCls(const Given& g, const std::string& a, const std::string& b) {
    return (g.sought == a || g.sought == b) ? "hl" : "";
}

} // namespace

FigureOut impedanceFigure(const Given& g, const std::string& key) {
    const std::string up = key == "ZRC" ? "" : "XL", down = key == "ZRL" ? "" : "XC";
    const Sides s = reactiveSides(g, "R", "Z", up, down);
    RightTriangle t;
    t.foot = s.foot, t.upright = s.upright;
    t.footText = g.label("R", "Ω"), t.footCls = g.cls("R");
    t.hypText = g.label("Z", "Ω"), t.hypCls = g.cls("Z");
    if (key == "ZRLC") {
        t.uprightText = differenceText(g, "XL", "XC", "Ω", s.upright, "X<sub>L</sub>", "X<sub>C</sub>");
        t.uprightCls = eitherCls(g, "XL", "XC");
    } else {
        const std::string x = key == "ZRL" ? "XL" : "XC";
        t.uprightText = g.label(x, "Ω"), t.uprightCls = g.cls(x);
    }
    t.title = "Modstandstrekant";
    return triangle(t, s.fromValues);
}

FigureOut coilImpedanceFigure(const Given& g) {
    // The two resistances lie end to end along the foot.
    const double r = g.pos("R"), rl = g.pos("RL"), x = g.pos("XL"), z = g.pos("Z");
    double foot = std::isfinite(r) && std::isfinite(rl) ? r + rl : NAN;
    double up = x;
    if (!std::isfinite(foot) && std::isfinite(z) && std::isfinite(x) && z > x) foot = std::sqrt(z * z - x * x);
    if (!std::isfinite(up) && std::isfinite(z) && std::isfinite(foot) && z > foot) up = std::sqrt(z * z - foot * foot);
    RightTriangle t;
    t.foot = foot, t.upright = up;
    std::string footText = "R + R<sub>L</sub>";
    if (std::isfinite(r) && std::isfinite(rl)) footText += " = " + fmtWithUnit(r + rl, "Ω");
    if (std::isfinite(r) || std::isfinite(rl))
        footText += "  (" + g.label("R", "Ω") + ", " + g.label("RL", "Ω") + ")";
    t.footText = footText;
    t.footCls = eitherCls(g, "R", "RL");
    t.uprightText = g.label("XL", "Ω"), t.uprightCls = g.cls("XL");
    t.hypText = g.label("Z", "Ω"), t.hypCls = g.cls("Z");
    t.title = "Modstandstrekant – de ohmske modstande lægges sammen";
    return triangle(t, std::isfinite(foot) && std::isfinite(up));
}

FigureOut voltageFigure(const Given& g, const std::string& key) {
    const std::string up = key == "URC" ? "" : "UL", down = key == "URL" ? "" : "UC";
    const Sides s = reactiveSides(g, "UR", "U", up, down);
    RightTriangle t;
    t.foot = s.foot, t.upright = s.upright;
    t.footText = g.label("UR", "V"), t.footCls = g.cls("UR");
    t.hypText = g.label("U", "V"), t.hypCls = g.cls("U");
    if (key == "URLC") {
        t.uprightText = differenceText(g, "UL", "UC", "V", s.upright, "U<sub>L</sub>", "U<sub>C</sub>");
        t.uprightCls = eitherCls(g, "UL", "UC");
    } else {
        const std::string u = key == "URL" ? "UL" : "UC";
        t.uprightText = g.label(u, "V"), t.uprightCls = g.cls(u);
    }
    t.title = key == "URC" ? "Spændingstrekant – kondensatoren tegnes nedad" : "Spændingstrekant";
    return triangle(t, s.fromValues);
}

FigureOut cosFigure(const Given& g, const std::string& key) {
    struct Names {
        std::string foot, hyp, unitFoot, unitHyp, upright, title;
    };
    const Names n = key == "cosZ"   ? Names{"R", "Z", "Ω", "Ω", "X", "Modstandstrekant: cos φ = R / Z = "}
                    : key == "cosU" ? Names{"UR", "U", "V", "V", "U<sub>X</sub>",
                                            "Spændingstrekant: cos φ = U<sub>R</sub> / U = "}
                                    : Names{"P", "S", "W", "VA", "Q", "Effekttrekant: cos φ = P / S = "};
    const double f = g.pos(n.foot), h = g.pos(n.hyp);
    double c = g.pos("cosphi");
    if (!(c <= 1)) c = NAN;
    if (!std::isfinite(c) && std::isfinite(f) && std::isfinite(h) && f < h) c = f / h;
    const bool known = std::isfinite(c) && c < 1;
    const double phi = known ? std::acos(c) : 36.87 * kDeg;
    RightTriangle t;
    t.foot = 1, t.upright = std::tan(phi);
    t.footText = g.label(n.foot, n.unitFoot), t.footCls = g.cls(n.foot);
    t.hypText = g.label(n.hyp, n.unitHyp), t.hypCls = g.cls(n.hyp);
    t.uprightText = n.upright;
    t.angleCls = g.cls("cosphi");
    t.title = n.title + (std::isfinite(c) ? fmtNumber(c) : std::string("?"));
    return triangle(t, known);
}

FigureOut powerFigure(const Given& g, const std::string& key) {
    RightTriangle t;
    bool fromValues = false;
    if (key == "SPQ") {
        const Sides s = reactiveSides(g, "P", "S", "Q", "");
        t.foot = s.foot, t.upright = s.upright, fromValues = s.fromValues;
        t.footText = g.label("P", "W"), t.footCls = g.cls("P");
        t.uprightText = g.label("Q", "VAr"), t.uprightCls = g.cls("Q");
        t.hypText = g.label("S", "VA"), t.hypCls = g.cls("S");
        t.title = "Effekttrekant";
    } else {
        // S = U · I is the hypotenuse; the angle comes from cos φ or φ.
        const double u = g.pos("U"), i = g.pos("I");
        const double s = u * i;
        double phi = NAN;
        if (key == "Pac") {
            const double c = g.pos("cosphi");
            if (c < 1) phi = std::acos(c);
            else if (std::isfinite(g.pos("P")) && std::isfinite(s) && g.pos("P") < s) phi = std::acos(g.pos("P") / s);
        } else {
            const double p = g.pos("phi");
            if (p < 90) phi = p * kDeg;
            else if (std::isfinite(g.pos("Q")) && std::isfinite(s) && g.pos("Q") < s) phi = std::asin(g.pos("Q") / s);
        }
        fromValues = std::isfinite(phi);
        if (!fromValues) phi = 36.87 * kDeg;
        t.foot = std::cos(phi), t.upright = std::sin(phi);
        t.footText = g.label("P", "W"), t.footCls = g.cls("P");
        t.uprightText = g.label("Q", "VAr"), t.uprightCls = g.cls("Q");
        t.hypText = "S = U · I" + (std::isfinite(s) ? " = " + fmtWithUnit(s, "VA") : std::string());
        t.hypCls = eitherCls(g, "U", "I");
        if (key == "Pac") {
            t.angleCls = g.cls("cosphi");
        } else {
            t.angleText = g.label("phi", "°");
            t.angleCls = g.cls("phi");
        }
        t.title = "Effekttrekant med S = U · I";
        if (key == "Pac" && g.mentions("cosphi")) t.title += " · " + g.label("cosphi", "");
    }
    return triangle(t, fromValues);
}

FigureOut phiFigure(const Given& g) {
    double c = g.pos("cosphi");
    if (!(c < 1) && g.pos("phi") < 90) c = std::cos(g.pos("phi") * kDeg);
    const bool known = c < 1;
    const double phi = known ? std::acos(c) : 36.87 * kDeg;
    RightTriangle t;
    t.foot = std::cos(phi), t.upright = std::sin(phi);
    t.footText = known ? "cos φ = " + fmtNumber(std::cos(phi)) : "cos φ";
    t.uprightText = known ? "sin φ = " + fmtNumber(std::sin(phi)) : "sin φ";
    t.hypText = "1";
    t.footCls = g.cls("cosphi");
    t.angleText = known ? "φ = " + fmtWithUnit(phi / kDeg, "°") : "φ";
    t.title = "Trekant med hypotenuse 1: den vandrette side er cos φ";
    t.angleCls = g.cls("phi");
    return triangle(t, known);
}

FigureOut kompFigure(const Given& g) {
    const double p = firstOf({g.pos("P")}, 1);
    const double c1 = g.pos("cosphi1"), c2 = g.pos("cosphi2");
    const bool known = c1 < 1 && c2 <= 1 && c2 > c1;
    const double true1 = known ? std::acos(c1) / kDeg : 45.0, true2 = known ? std::acos(c2) / kDeg : 20.0;
    // A steep first angle is drawn at most 55°, so that the foot leaves room
    // for the angles' names, and the second in proportion below it, but wide
    // enough to hold its name.
    const double d1 = std::min(true1, 55.0);
    const double d2 = std::max(true1 > 0 ? true2 * d1 / true1 : 0, std::min(15.0, d1 / 2));
    const double q1 = p * std::tan(d1 * kDeg), q2 = p * std::tan(d2 * kDeg);
    Fig fig;
    fig.pts = {{0, 0}, {p, 0}, {p, q1}, {p, q2}};
    fig.strokeShape = false;
    fig.preDraw = [](Fig& f, Pt) {
        f.polygon(f.polyPoints({f.pts[0], f.pts[1], f.pts[2]}), "shape");
        const Pt o = f.pt(f.pts[0]), b2 = f.pt(f.pts[3]);
        f.line(o.x, o.y, b2.x, b2.y, "ln");
    };
    fig.edges = {{0, 1, g.label("P", "W"), g.cls("P")},
                 {1, 3, "Q<sub>2</sub>", ""},
                 {3, 2, g.label("QC", "VAr"), g.cls("QC")}};
    // The angles carry their names only: a number would run into the upright side
    // of a steep triangle. The cosines stand in the caption. The smaller angle
    // has the wider arc, so that each name can stand by its own arc.
    fig.angles = {{0, 1, 3, "φ<sub>2</sub>", g.cls("cosphi2"), false, 44},
                  {0, 1, 2, "φ<sub>1</sub>", g.cls("cosphi1"), false, 24},
                  {1, 0, 2, {}, {}, true}};
    fig.title = "Kompensering: Q<sub>C</sub> = Q<sub>1</sub> − Q<sub>2</sub> = P · (tan φ<sub>1</sub> − tan "
                "φ<sub>2</sub>)";
    for (const char* c : {"cosphi1", "cosphi2"}) {
        const std::string shown = std::string("cos φ<sub>") + c[6] + "</sub>";
        if (g.mentions(c)) fig.title += " · " + (g.sought == c ? "<b>" + g.label(c, "", shown) + "</b>" : g.label(c, "", shown));
    }
    if (!known)
        fig.caption = " · <b>ikke i målestok</b>";
    else if (std::fabs(d1 - true1) <= 0.5 && std::fabs(d2 - true2) <= 0.5)
        fig.caption = " · tegnet i målestok";
    else
        fig.caption =
            " · <b>ikke i målestok</b>: tegnet med φ<sub>1</sub> = " + fmtNumber(d1, 3) +
            "° og φ<sub>2</sub> = " + fmtNumber(d2, 3) +
            "° så den er til at læse – de rigtige vinkler er φ<sub>1</sub> = " + fmtNumber(true1, 3) +
            "° og φ<sub>2</sub> = " + fmtNumber(true2, 3) + "°";
    return drawFig(fig);
}

FigureOut vectorFigure(const Given& g) {
    double x = g.pos("x"), y = g.pos("y");
    const double v = g.pos("v"), a = g.pos("V");
    const bool angle = a < 90;
    if (!(std::isfinite(x) && std::isfinite(y))) {
        if (std::isfinite(v) && angle) x = v * std::cos(a * kDeg), y = v * std::sin(a * kDeg);
        else if (std::isfinite(v) && std::isfinite(x) && v > x) y = std::sqrt(v * v - x * x);
        else if (std::isfinite(v) && std::isfinite(y) && v > y) x = std::sqrt(v * v - y * y);
        else if (std::isfinite(x) && angle) y = x * std::tan(a * kDeg);
        else if (std::isfinite(y) && angle) x = y / std::tan(a * kDeg);
    }
    const bool known = std::isfinite(x) && std::isfinite(y) && x > 0 && y > 0;
    if (!known) x = 4, y = 3;

    VectorScene sc;
    // The name stands above each arrow; the number below it.
    const auto text = [&](double value) { return known ? fmtNumber(value) : std::string(); };
    sc.vectors.push_back({{0, 0}, {x, 0}, "cur", "x", text(x), false, g.sought == "x"});
    sc.vectors.push_back({{0, 0}, {0, y}, "cur", "y", text(y), false, g.sought == "y"});
    sc.vectors.push_back({{x, 0}, {x, y}, "", {}, {}, true, false});
    sc.vectors.push_back({{0, y}, {x, y}, "", {}, {}, true, false});
    sc.vectors.push_back(
        {{0, 0}, {x, y}, "res", "v", text(std::hypot(x, y)), false, g.sought == "v"});
    sc.reference = 0;
    sc.result = 4;
    sc.angleText = known ? "V = " + fmtWithUnit(std::atan2(y, x) / kDeg, "°") : "V";
    sc.angleCls = g.cls("V");
    sc.caption = std::string("Vektoren v med komposanterne x og y") +
                 (known ? " · tegnet i målestok" : " · <b>ikke i målestok</b>");
    return drawVectors(sc);
}

} // namespace fl::figs
