// Formula figures of mathematics: right triangles with their angles, area
// triangles, quadrilaterals, the regular polygon and the circle with its
// arc, sector and segment. Proportions follow the numbers where they are
// readable; the caption says whether the drawing is true to scale.
#include "fl/expr/numbers.h"
#include "fl/fig/formulafig_parts.h"
#include "fl/fig/triangles.h"

#include <algorithm>
#include <cmath>

namespace fl::figs {

namespace {

constexpr double kDeg = 0.017453292519943295; // π/180

std::string scaleWord(bool trueScale) {
    return trueScale ? " · tegnet i målestok" : " · <b>ikke i målestok</b>";
}

// "A = 12", highlighted when the area is sought; `word` before it for the quadrilaterals.
FigInner areaText(const Given& g, const std::string& symbol, const std::string& word = {}) {
    std::string text = g.label(symbol, "");
    if (!word.empty()) {
        const double v = g.pos(symbol);
        text = std::isfinite(v) ? word + " = " + fmtNumber(v) : word + " " + symbol;
    }
    return {text, g.cls(symbol)};
}

// A text's estimated box on the screen, a few pixels of air around it.
struct Box {
    double x0, y0, x1, y1;
    bool meets(const Box& o) const { return x0 < o.x1 && o.x0 < x1 && y0 < o.y1 && o.y0 < y1; }
};

Box boxOf(Pt middleLeft, const std::string& text, const std::string& cls, double air = 3) {
    const double w = textWidth(text, cls), h = textStyle(cls).size;
    return {middleLeft.x - air, middleLeft.y - h / 2 - air, middleLeft.x + w + air, middleLeft.y + h / 2 + air};
}

// Inside a convex polygon given in screen points, borders excluded.
bool insideShape(const std::vector<Pt>& poly, Pt p) {
    int sign = 0;
    for (size_t i = 0; i < poly.size(); ++i) {
        const Pt a = poly[i], b = poly[(i + 1) % poly.size()];
        const double cross = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
        if (cross == 0) return false;
        const int s = cross > 0 ? 1 : -1;
        if (sign != 0 && s != sign) return false;
        sign = s;
    }
    return true;
}

bool boxInside(const std::vector<Pt>& poly, const Box& b) {
    return insideShape(poly, Pt{b.x0, b.y0}) && insideShape(poly, Pt{b.x1, b.y0}) &&
           insideShape(poly, Pt{b.x0, b.y1}) && insideShape(poly, Pt{b.x1, b.y1});
}

// The left-middle point nearest `want` at which the text lies inside the
// shape and clear of `avoid`; beside the shape on the right when there is no room.
Pt spotInside(const Fig& f, Pt want, const std::string& text, const std::string& cls, const std::vector<Box>& avoid) {
    const std::vector<Pt> poly = f.polyPoints(f.pts);
    double best = INFINITY, right = -INFINITY, top = INFINITY, bottom = -INFINITY;
    for (const Pt& p : poly)
        right = std::max(right, p.x), top = std::min(top, p.y), bottom = std::max(bottom, p.y);
    Pt spot{right + 12, (top + bottom) / 2};
    for (double dy = -f.H / 2.0; dy <= f.H / 2.0; dy += 3) {
        for (double dx = -f.W / 2.0; dx <= f.W / 2.0; dx += 3) {
            const double d = dx * dx + dy * dy;
            if (d >= best) continue;
            const Pt p{want.x + dx, want.y + dy};
            const Box b = boxOf(p, text, cls);
            if (!boxInside(poly, b)) continue;
            if (std::any_of(avoid.begin(), avoid.end(), [&](const Box& o) { return o.meets(b); })) continue;
            best = d, spot = p;
        }
    }
    return spot;
}

// A dashed height from `top` straight down to the foot `foot`, its label
// beside it at mid-height or, where the shape is too narrow there, lower
// down; then the area's text in the room that is left, near the middle.
void heightAndArea(Fig& f, Pt top, Pt foot, const std::string& text, const std::string& cls, const FigInner& area) {
    const Pt a = f.pt(top), b = f.pt(foot);
    f.line(a.x, a.y, b.x, b.y, "dash");
    f.polyline({{b.x + 9, b.y}, {b.x + 9, b.y - 9}, {b.x, b.y - 9}}, "thin");
    const std::vector<Pt> poly = f.polyPoints(f.pts);
    Pt label{b.x + 6, (a.y + b.y) / 2};
    for (double y = label.y; y < b.y - 12; y += 3) {
        if (boxInside(poly, boxOf({label.x, y}, text, cls))) {
            label.y = y;
            break;
        }
    }
    f.text(label.x, label.y, text, "start", cls);
    const Box line{b.x - 4, a.y, b.x + 13, b.y};
    double cx = 0, cy = 0;
    for (const Pt& p : poly)
        cx += p.x / double(poly.size()), cy += p.y / double(poly.size());
    const double w = textWidth(area.text, area.cls);
    const Pt spot = spotInside(f, {cx - w / 2, cy}, area.text, area.cls, {boxOf(label, text, cls), line});
    f.text(spot.x, spot.y, area.text, "start", area.cls);
}

// A dashed height from `top` straight down to the foot `foot`, its label beside it.
void height(Fig& f, Pt top, Pt foot, const std::string& text, const std::string& cls) {
    const Pt a = f.pt(top), b = f.pt(foot);
    f.line(a.x, a.y, b.x, b.y, "dash");
    f.polyline({{b.x + 9, b.y}, {b.x + 9, b.y - 9}, {b.x, b.y - 9}}, "thin");
    f.text(b.x + 6, (a.y + b.y) / 2, text, "start", cls);
}

} // namespace

FigureOut rightTriangleFigure(const Given& g, const std::string& key) {
    Fig fig;
    if (key == "t45" || key == "t30") {
        // Fixed shapes, always true to scale.
        const bool half = key == "t45";
        const double foot = half ? 1 : std::sqrt(3.0), up = 1;
        fig.pts = {{0, 0}, {foot, 0}, {0, up}};
        if (half) {
            fig.edges = {{0, 1, g.label("x", ""), g.cls("x")},
                         {0, 2, g.label("x", ""), g.cls("x")},
                         {1, 2, g.label("y", ""), g.cls("y")}};
            fig.angles = {{1, 0, 2, "45°"}, {2, 0, 1, "45°"}, {0, 1, 2, {}, {}, true}};
            fig.title = "45°-45°-90° trekant";
        } else {
            fig.edges = {{0, 1, g.label("b", ""), g.cls("b")},
                         {0, 2, g.label("a", ""), g.cls("a")},
                         {1, 2, g.label("c", ""), g.cls("c")}};
            fig.angles = {{1, 0, 2, "30°"}, {2, 0, 1, "60°"}, {0, 1, 2, {}, {}, true}};
            fig.title = "30°-60°-90° trekant: den korteste katete er halvdelen af hypotenusen";
        }
        fig.caption = scaleWord(true);
        return drawFig(fig);
    }

    double foot = NAN, up = NAN, trueDeg = NAN;
    std::string footText, upText, hypText, footCls, upCls, hypCls, angleText, angleCls;
    if (key == "rt") {
        double a = g.pos("a"), b = g.pos("b");
        const double c = g.pos("c");
        if (!std::isfinite(a) && std::isfinite(b) && c > b) a = std::sqrt(c * c - b * b);
        if (!std::isfinite(b) && std::isfinite(a) && c > a) b = std::sqrt(c * c - a * a);
        foot = a, up = b;
        footText = g.label("a", ""), upText = g.label("b", ""), hypText = g.label("c", "");
        footCls = g.cls("a"), upCls = g.cls("b"), hypCls = g.cls("c");
    } else {
        // trig: the angle V at the left end of the foot.
        const double v = g.pos("V"), mod = g.pos("mod"), hos = g.pos("hos"), hyp = g.pos("hyp");
        double deg = v < 90 ? v : NAN;
        if (!std::isfinite(deg)) {
            if (std::isfinite(mod) && std::isfinite(hyp) && mod < hyp) deg = std::asin(mod / hyp) / kDeg;
            else if (std::isfinite(hos) && std::isfinite(hyp) && hos < hyp) deg = std::acos(hos / hyp) / kDeg;
            else if (std::isfinite(mod) && std::isfinite(hos)) deg = std::atan(mod / hos) / kDeg;
        }
        if (std::isfinite(deg)) foot = 1, up = std::tan(deg * kDeg);
        footText = g.label("hos", ""), upText = g.label("mod", ""), hypText = g.label("hyp", "");
        footCls = g.cls("hos"), upCls = g.cls("mod"), hypCls = g.cls("hyp");
        angleText = g.label("V", "°"), angleCls = g.cls("V");
    }
    const bool known = std::isfinite(foot) && std::isfinite(up) && foot > 0 && up > 0;
    if (!known) foot = 4, up = 3;
    trueDeg = std::atan(up / foot) / kDeg;
    const double drawn = drawnAngle(trueDeg);
    fig.pts = {{0, 0}, {1, 0}, {1, std::tan(drawn * kDeg)}};
    fig.edges = {{0, 1, footText, footCls}, {1, 2, upText, upCls}, {0, 2, hypText, hypCls}};
    fig.preDraw = [](Fig& f, Pt) {
        // The right angle's square.
        const Pt c = f.pt(f.pts[1]);
        f.polyline({{c.x - 12, c.y}, {c.x - 12, c.y - 12}, {c.x, c.y - 12}}, "thin");
    };
    if (key == "rt") {
        // Angles are only named with numbers that come from the sides.
        if (known) fig.angles = {{0, 1, 2, fmtNumber(trueDeg, 3) + "°"}, {2, 0, 1, fmtNumber(90 - trueDeg, 3) + "°"}};
        else fig.angles = {{0, 1, 2}, {2, 0, 1}};
        fig.title = "Retvinklet trekant: a² + b² = c²";
    } else {
        fig.angles = {{0, 1, 2, angleText, angleCls}};
        fig.title = "Retvinklet trekant: V ligger mellem hosliggende katete og hypotenusen";
    }
    fig.caption = known ? scaleNote(drawn, trueDeg) : scaleWord(false);
    return drawFig(fig);
}

FigureOut areaTriangleFigure(const Given& g, const std::string& key) {
    Fig fig;
    bool known = false;
    if (key == "triA") {
        const double h = g.pos("h"), base = g.pos("g");
        const double r = ratio(base, h, NAN, 0.25, 1.2);
        known = std::isfinite(r) && r == h / base;
        const double up = std::isfinite(r) ? r : 0.7;
        fig.pts = {{0, 0}, {1, 0}, {0.35, up}};
        fig.edges = {{0, 1, g.label("g", ""), g.cls("g")}};
        const FigInner area = areaText(g, "A");
        fig.postDraw = [&g, up, area](Fig& f, Pt) {
            heightAndArea(f, {0.35, up}, {0.35, 0}, g.label("h", ""), g.cls("h"), area);
        };
        fig.title = "Trekant: A = ½ · h · g";
    } else if (key == "triS") {
        const double a = g.pos("a"), b = g.pos("b");
        double c = g.pos("C");
        if (!(c < 180)) c = NAN;
        if (!std::isfinite(c) && std::isfinite(a) && std::isfinite(b) && std::isfinite(g.pos("A"))) {
            const double s = 2 * g.pos("A") / (a * b);
            if (s <= 1) c = std::asin(s) / kDeg;
        }
        const double r = ratio(a, b, NAN, 0.25, 4);
        known = std::isfinite(c) && c >= 15 && c <= 165 && std::isfinite(r) && r == b / a;
        const double drawC = std::clamp(std::isfinite(c) ? c : 55.0, 15.0, 165.0), len = std::isfinite(r) ? r : 0.8;
        fig.pts = {{0, 0}, {1, 0}, {len * std::cos(drawC * kDeg), len * std::sin(drawC * kDeg)}};
        fig.edges = {{0, 1, g.label("a", ""), g.cls("a")}, {0, 2, g.label("b", ""), g.cls("b")}};
        fig.angles = {{0, 1, 2, g.label("C", "°"), g.cls("C")}};
        fig.inner = areaText(g, "A");
        fig.title = "Trekant: A = ½ · a · b · sin C";
    } else {
        double a = g.pos("a"), b = g.pos("b"), c = g.pos("c");
        known = std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && a + b > c && a + c > b && b + c > a;
        if (known) {
            const double longest = std::max({a, b, c}), shortest = std::min({a, b, c});
            known = shortest / longest > 0.05;
        }
        if (!known) a = 5, b = 6, c = 7;
        // c along the foot, the apex found from the other two.
        const double x = (c * c + b * b - a * a) / (2 * c), y = std::sqrt(std::max(0.0, b * b - x * x));
        fig.pts = {{0, 0}, {c, 0}, {x, y}};
        fig.edges = {{0, 1, g.label("c", ""), g.cls("c")},
                     {0, 2, g.label("b", ""), g.cls("b")},
                     {1, 2, g.label("a", ""), g.cls("a")}};
        fig.inner = areaText(g, "A");
        fig.title = "Herons formel: s er den halve omkreds";
    }
    fig.caption = scaleWord(known);
    return drawFig(fig);
}

FigureOut quadFigure(const Given& g, const std::string& key) {
    Fig fig;
    bool known = false;
    const auto corner = [](Fig& f, int i) {
        const Pt c = f.pt(f.pts[static_cast<size_t>(i)]);
        f.polyline({{c.x + 11, c.y}, {c.x + 11, c.y - 11}, {c.x, c.y - 11}}, "thin");
    };
    if (key == "rect" || key == "square") {
        const bool sq = key == "square";
        const double a = g.pos("a"), b = sq ? a : g.pos("b");
        const double r = sq ? 1 : ratio(a, b, NAN, 0.2, 2.5);
        known = sq ? true : std::isfinite(r) && r == b / a;
        const double up = std::isfinite(r) ? r : 0.6;
        fig.pts = {{0, 0}, {1, 0}, {1, up}, {0, up}};
        fig.edges = {{0, 1, g.label("a", ""), g.cls("a")}};
        if (!sq) fig.edges.push_back({1, 2, g.label("b", ""), g.cls("b")});
        fig.preDraw = [corner](Fig& f, Pt) { corner(f, 0); };
        fig.title = sq ? "Kvadrat: A = a²" : "Rektangel: A = a · b";
    } else if (key == "paral") {
        const double h = g.pos("h"), base = g.pos("g");
        const double r = ratio(base, h, NAN, 0.2, 1.5);
        known = std::isfinite(r) && r == h / base;
        const double up = std::isfinite(r) ? r : 0.55;
        fig.pts = {{0, 0}, {1, 0}, {1.3, up}, {0.3, up}};
        fig.edges = {{0, 1, g.label("g", ""), g.cls("g")}};
        fig.postDraw = [&g, up](Fig& f, Pt) { height(f, {1.3, up}, {1.3, 0}, g.label("h", ""), g.cls("h")); };
        fig.title = "Parallelogram: A = h · g";
    } else if (key == "trap") {
        const double h = g.pos("h"), a = g.pos("a"), b = g.pos("b");
        known = std::isfinite(h) && std::isfinite(a) && std::isfinite(b) && h / b >= 0.15 && h / b <= 1.5 &&
                a / b >= 0.15 && a / b <= 4;
        const double top = known ? a / b : 0.55, up = known ? h / b : 0.5;
        const double off = (1 - top) / 2;
        fig.pts = {{0, 0}, {1, 0}, {off + top, up}, {off, up}};
        fig.edges = {{0, 1, g.label("b", ""), g.cls("b")}, {3, 2, g.label("a", ""), g.cls("a")}};
        // The height near the left end of what the top and the bottom have in
        // common, so that it meets both; the area's text in the room beside it.
        const double lo = std::max(off, 0.0), hi = std::min(off + top, 1.0);
        const double hx = lo + std::min(0.06, (hi - lo) * 0.25);
        fig.postDraw = [&g, up, hx](Fig& f, Pt) {
            heightAndArea(f, {hx, up}, {hx, 0}, g.label("h", ""), g.cls("h"), areaText(g, "A", "Areal"));
        };
        fig.title = "Trapez: A = ½ · h · (a + b)";
    } else {
        const double d1 = g.pos("d1"), d2 = g.pos("d2");
        const double r = ratio(d1, d2, NAN, 0.25, 4);
        known = std::isfinite(r) && r == d2 / d1;
        const double v = std::isfinite(r) ? r : 0.6;
        fig.pts = {{-0.5, 0}, {0, -v / 2}, {0.5, 0}, {0, v / 2}};
        fig.postDraw = [&g, v](Fig& f, Pt) {
            const Pt l = f.pt({-0.5, 0}), r = f.pt({0.5, 0}), b = f.pt({0, -v / 2}), t = f.pt({0, v / 2});
            f.line(l.x, l.y, r.x, r.y, "dash");
            f.line(t.x, t.y, b.x, b.y, "dash");
            // Each diagonal is named beyond its end, outside the figure.
            f.text(r.x + 8, r.y, g.label("d1", ""), "start", g.cls("d1"));
            f.text(t.x, t.y - 14, g.label("d2", ""), "middle", g.cls("d2"));
        };
        fig.title = "Rombe: A = ½ · d<sub>1</sub> · d<sub>2</sub>";
    }
    FigInner area = areaText(g, "A", "Areal");
    if (key == "rhomb") {
        // The diagonals cross at the middle: the area stands below the figure.
        fig.postDraw = [inner = area, old = fig.postDraw](Fig& f, Pt c) {
            old(f, c);
            f.text(f.W / 2.0, f.H - 14.0, inner.text, "middle", inner.cls);
        };
    } else if (key != "trap") {
        fig.inner = area;
    }
    fig.caption = scaleWord(known);
    return drawFig(fig);
}

FigureOut polygonFigure(const Given& g) {
    double n = g.pos("n");
    if (!std::isfinite(n)) {
        const double v = g.pos("V"), vs = g.pos("Vs");
        if (v < 180) n = 360 / (180 - v);
        else if (std::isfinite(vs)) n = vs / 180 + 2;
    }
    const bool known = std::isfinite(n) && n >= 3 && std::fabs(n - std::round(n)) < 1e-6;
    const double count = known ? std::round(n) : 6;
    // A huge count draws as many corners as a figure can show; it closes all the same.
    const int drawn = static_cast<int>(std::min(count, 720.0));
    Fig fig;
    for (int k = 0; k < drawn; ++k) {
        // The first side lies flat at the bottom.
        const double a = (-90 - 180.0 / drawn + 360.0 * k / drawn) * kDeg;
        fig.pts.push_back({std::cos(a), std::sin(a)});
    }
    fig.edges = {{0, 1, g.label("x", ""), g.cls("x")}};
    if (drawn <= 60) {
        const std::string angle = g.mentions("V") ? g.label("V", "°") : fmtNumber((count - 2) * 180 / count, 4) + "°";
        fig.angles = {{1, 0, 2, angle, g.cls("V"), false, 16}};
    }
    if (g.mentions("A")) fig.inner = {g.label("A", ""), g.cls("A")};
    else if (g.mentions("Vs")) fig.inner = {g.label("Vs", "°"), g.cls("Vs")};
    fig.title = known ? "Regulær " + fmtNumber(count, 10) + "-kant" : "Regulær n-kant (tegnet som 6-kant)";
    if (g.sought == "n" && known) fig.title = "Regulær n-kant, her med " + fmtNumber(count, 10) + " kanter";
    fig.caption = known ? " · tegnet i målestok" : "";
    return drawFig(fig);
}

FigureOut circleFigure(const Given& g, const std::string& key) {
    const bool area = key == "circA", diam = key == "circD", round = key == "circO";
    // The angle of the arc, the sector or the segment.
    double v = g.pos("V");
    if (!(v < 360)) v = NAN;
    if (!std::isfinite(v)) {
        if (key == "arc" && std::isfinite(g.pos("b")) && std::isfinite(g.pos("d")))
            v = 360 * g.pos("b") / (M_PI * g.pos("d"));
        if (key == "sector" && std::isfinite(g.pos("A")) && std::isfinite(g.pos("r")))
            v = 360 * g.pos("A") / (M_PI * g.pos("r") * g.pos("r"));
    }
    const bool angleKnown = std::isfinite(v) && v > 0 && v < 360;
    const double deg = angleKnown ? std::clamp(v, 2.0, 358.0) : 70;

    Fig fig;
    fig.pts = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    fig.strokeShape = false;
    fig.preDraw = [&g, key, round, diam, deg](Fig& f, Pt c) {
        const double r = f.scale;
        if (key == "sector") {
            f.circle(c.x, c.y, r, "thin");
            f.arc(c.x, c.y, r, 90 - deg / 2, 90 + deg / 2, "shape");
        } else if (key == "segment") {
            f.circle(c.x, c.y, r, "thin");
            const double a0 = (90 - deg / 2) * kDeg, a1 = (90 + deg / 2) * kDeg;
            const Pt p0{c.x + r * std::cos(a0), c.y - r * std::sin(a0)}, p1{c.x + r * std::cos(a1), c.y - r * std::sin(a1)};
            // The bow and its chord close the segment.
            std::string d = "M" + num(p0.x) + " " + num(p0.y) + " A" + num(r) + " " + num(r) + " 0 " +
                            (deg > 180 ? "1" : "0") + " 0 " + num(p1.x) + " " + num(p1.y) + " Z";
            f.path(d, "shape");
            if (f.space) f.space->bow(c, r, a0, a1, false), f.space->segment(p0, p1);
            f.line(c.x, c.y, p0.x, p0.y, "dash");
            f.line(c.x, c.y, p1.x, p1.y, "dash");
        } else if (key == "arc") {
            f.circle(c.x, c.y, r, "thin");
            const double a0 = (90 - deg / 2) * kDeg, a1 = (90 + deg / 2) * kDeg;
            f.line(c.x, c.y, c.x + r * std::cos(a0), c.y - r * std::sin(a0), "dash");
            f.line(c.x, c.y, c.x + r * std::cos(a1), c.y - r * std::sin(a1), "dash");
            f.bow(c.x, c.y, r, 90 - deg / 2, 90 + deg / 2, "hlArc");
        } else {
            f.circle(c.x, c.y, r, "shape");
            if (round && g.sought == "O") f.circle(c.x, c.y, r, "hlArc");
        }
        f.circle(c.x, c.y, 3, "node");
        if (diam) {
            f.line(c.x - r, c.y, c.x + r, c.y, "ln");
        } else if (key != "arc" && key != "sector" && key != "segment") {
            f.line(c.x, c.y, c.x + r, c.y, "ln");
        }
    };
    fig.postDraw = [&g, key, round, area, diam, deg](Fig& f, Pt c) {
        const double r = f.scale;
        const bool q = diam && g.mentions("q");
        if (key == "arc" || key == "sector" || key == "segment") {
            f.arc(c.x, c.y, 22, 90 - deg / 2, 90 + deg / 2, "ang");
            const std::string angle = g.mentions("V") ? g.label("V", "°") : "V";
            // Inside a wide angle; below the centre where the angle is too narrow for it.
            f.text(c.x, deg >= 100 ? c.y - 38 : c.y + 20, angle, "middle", "angt " + g.cls("V"));
        }
        if (diam) {
            f.text(c.x, c.y - 14, g.label("d", q ? "mm" : ""), "middle", g.cls("d"));
            const std::string sym = q ? "q" : "A";
            f.text(c.x, c.y + r / 2, g.label(sym, q ? "mm²" : ""), "middle", g.cls(sym));
        } else if (key == "arc") {
            f.text(c.x, c.y + r + 16, g.label("d", ""), "middle", g.cls("d"));
            const double mid = 90 * kDeg;
            f.text(c.x + (r + 14) * std::cos(mid), c.y - (r + 14) * std::sin(mid), g.label("b", ""), "middle",
                   g.cls("b").empty() ? "res" : "hl");
        } else if (key == "sector" || key == "segment") {
            // The radius is named beside the right-hand side of the angle,
            // outside it and inside the circle where there is room.
            const double a0 = (90 - deg / 2) * kDeg, out = a0 - M_PI / 2;
            std::vector<Canvas::Spot> spots;
            for (double off : {14.0, 24.0, -14.0})
                for (double t : {0.5, 0.4, 0.6, 0.3, 0.7, 0.2}) {
                    const double sx = std::cos(out) * (off > 0 ? 1 : -1);
                    spots.push_back({c.x + r * t * std::cos(a0) + off * std::cos(out),
                                     c.y - r * t * std::sin(a0) - off * std::sin(out),
                                     sx > 0.3 ? "start" : sx < -0.3 ? "end" : "middle"});
                }
            // Past the end of the radius, outside the circle.
            const double ex = std::cos(a0);
            spots.push_back({c.x + (r + 10) * ex, c.y - (r + 10) * std::sin(a0), ex > 0.3 ? "start" : ex < -0.3 ? "end" : "middle"});
            f.textAmong(spots, g.label("r", ""), g.cls("r"));
            // The area inside where there is room for it, else above the arc.
            spots.clear();
            for (double h : {0.68, 0.9, 0.8, 0.6, 0.5, 0.4})
                if (key == "sector" || h > std::cos(deg / 2 * kDeg) + 0.06) spots.push_back({c.x, c.y - r * h, "middle"});
            spots.push_back({c.x, c.y - r - 14, "middle"});
            // Where the radius's label took the place above: past the other end of the arc, or below the
            // circle.
            spots.push_back(
                {c.x - (r + 10) * ex, c.y - (r + 10) * std::sin(a0), ex > 0.3 ? "end" : "middle"});
            spots.push_back({c.x, c.y + r + 16, "middle"});
            f.textAmong(spots, g.label("A", ""), g.cls("A"));
        } else {
            f.text(c.x + r / 2, c.y - 12, g.label("r", ""), "middle", g.cls("r"));
            if (round) f.text(c.x, c.y + r + 16, g.label("O", ""), "middle", g.cls("O"));
            if (area) f.text(c.x, c.y + r / 2, g.label("A", ""), "middle", g.cls("A"));
        }
    };
    std::string title;
    if (key == "circO") title = "Cirkel: O = 2 · π · r";
    else if (key == "circA") title = "Cirkel: A = π · r²";
    else if (key == "circD") title = "Cirkel: A = π / 4 · d²";
    else if (key == "arc") title = "Buen er tegnet med blåt";
    else if (key == "sector") title = "Udsnittet er farvet";
    else title = "Afsnittet (mellem buen og korden) er farvet";
    fig.title = title;
    fig.caption = (key == "arc" || key == "sector" || key == "segment") ? scaleWord(angleKnown && v == deg) : scaleWord(true);
    return drawFig(fig);
}

} // namespace fl::figs
