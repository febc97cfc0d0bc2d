// The element writers, the polygon figure and the chart.
#include "fl/fig/canvas.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

constexpr double kDeg = 0.017453292519943295; // π/180

bool finite(std::initializer_list<double> vs) {
    for (double v : vs)
        if (!std::isfinite(v)) return false;
    return true;
}

void attr(std::string& out, const char* name, double v) {
    out += ' ';
    out += name;
    out += "=\"";
    appendNum(out, v);
    out += '"';
}

void appendEscaped(std::string& out, std::string_view s) {
    for (char c : s) {
        if (c == '&') out += "&amp;";
        else if (c == '<') out += "&lt;";
        else if (c == '>') out += "&gt;";
        else out += c;
    }
}

std::string pointList(const std::vector<Pt>& points) {
    std::string s;
    for (const Pt& p : points) {
        if (!s.empty()) s += ' ';
        appendNum(s, p.x);
        s += ',';
        appendNum(s, p.y);
    }
    return s;
}

bool finitePoints(const std::vector<Pt>& points) {
    for (const Pt& p : points)
        if (!finite({p.x, p.y})) return false;
    return true;
}

struct Run {
    std::string_view text;
    bool sub = false;
};

std::vector<Run> runsOf(std::string_view content) {
    std::vector<Run> runs;
    bool sub = false;
    size_t i = 0;
    while (i < content.size()) {
        const size_t open = content.find(sub ? "</sub>" : "<sub>", i);
        const size_t end = open == std::string_view::npos ? content.size() : open;
        if (end > i) runs.push_back({content.substr(i, end - i), sub});
        if (open == std::string_view::npos) break;
        i = open + (sub ? 6 : 5);
        sub = !sub;
    }
    return runs;
}

} // namespace

std::string svgHead(int w, int h) {
    const std::string ws = std::to_string(w), hs = std::to_string(h);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + ws + " " + hs + "\" width=\"" + ws +
           "\" height=\"" + hs + "\">";
}

void Canvas::line(double x1, double y1, double x2, double y2, std::string_view cls) {
    if (!finite({x1, y1, x2, y2})) return;
    if (space && cls != "grid") space->segment({x1, y1}, {x2, y2});
    std::string s = "<line";
    attr(s, "x1", x1);
    attr(s, "y1", y1);
    attr(s, "x2", x2);
    attr(s, "y2", y2);
    s += shapeAttrs(cls);
    s += "/>";
    items.push_back(std::move(s));
    keep(Shape::Line, {{x1, y1}, {x2, y2}}, cls);
}

void Canvas::rect(double x, double y, double w, double h, std::string_view cls, double rx) {
    if (!finite({x, y, w, h, rx}) || w < 0 || h < 0) return;
    if (space) {
        // A filled patch without an outline is no line; it may still be in the way.
        if (cls == "gap" || cls == "hsel") space->taken.push_back({x, y, x + w, y + h});
        else
            for (const auto& [a, b] : {std::pair<Pt, Pt>{{x, y}, {x + w, y}},
                                       {{x + w, y}, {x + w, y + h}},
                                       {{x + w, y + h}, {x, y + h}},
                                       {{x, y + h}, {x, y}}})
                space->segment(a, b);
    }
    std::string s = "<rect";
    attr(s, "x", x);
    attr(s, "y", y);
    attr(s, "width", w);
    attr(s, "height", h);
    if (rx > 0) attr(s, "rx", rx);
    s += shapeAttrs(cls);
    s += "/>";
    items.push_back(std::move(s));
    keep(Shape::Rect, {{x, y}, {w, h}}, cls, rx);
}

void Canvas::circle(double cx, double cy, double r, std::string_view cls) {
    if (!finite({cx, cy, r}) || r < 0) return;
    if (space) {
        if (cls == "node") space->taken.push_back({cx - r, cy - r, cx + r, cy + r});
        else space->bow({cx, cy}, r, 0, 2 * M_PI, false);
    }
    std::string s = "<circle";
    attr(s, "cx", cx);
    attr(s, "cy", cy);
    attr(s, "r", r);
    s += shapeAttrs(cls);
    s += "/>";
    items.push_back(std::move(s));
    keep(Shape::Circle, {{cx, cy}}, cls, r);
}

void Canvas::polygon(const std::vector<Pt>& points, std::string_view cls) {
    if (points.size() < 2 || !finitePoints(points)) return;
    if (space) {
        for (size_t k = 0; k < points.size(); ++k)
            space->segment(points[k], points[(k + 1) % points.size()]);
    }
    items.push_back("<polygon points=\"" + pointList(points) + "\"" + shapeAttrs(cls) + "/>");
    keep(Shape::Polygon, points, cls);
}

void Canvas::polyline(const std::vector<Pt>& points, std::string_view cls) {
    if (points.size() < 2 || !finitePoints(points)) return;
    if (space) {
        for (size_t k = 0; k + 1 < points.size(); ++k)
            space->segment(points[k], points[k + 1]);
    }
    items.push_back("<polyline points=\"" + pointList(points) + "\"" + shapeAttrs(cls) + "/>");
    keep(Shape::Polyline, points, cls);
}

void Canvas::path(const std::string& d, std::string_view cls) {
    if (d.empty()) return;
    pathItem(d, cls);
    unkept = true;
}

std::vector<Shape> Canvas::takeShapes() {
    if (!keepShapes || unkept) return {};
    return std::move(shapes);
}

void Canvas::pathItem(const std::string& d, std::string_view cls) {
    items.push_back("<path d=\"" + d + "\"" + shapeAttrs(cls) + "/>");
}

namespace {
// The number rule of the SVG, so that a painter draws the same pixels.
double tenth(double v) { return std::round(10.0 * v) / 10.0; }
} // namespace

void Canvas::keep(Shape::Kind kind, std::vector<Pt> pts, std::string_view cls, double r, double a0, double a1) {
    if (!keepShapes) return;
    Shape sh;
    sh.kind = kind;
    for (Pt& p : pts)
        p = {tenth(p.x), tenth(p.y)};
    sh.pts = std::move(pts);
    sh.cls = cls;
    sh.r = tenth(r), sh.a0 = a0, sh.a1 = a1;
    shapes.push_back(std::move(sh));
}

namespace {
std::string arcPath(double cx, double cy, double r, double a0, double a1, bool closed) {
    // Screen y points down: a counter-clockwise turn on the screen is sweep 0.
    const double x0 = cx + r * std::cos(a0 * kDeg), y0 = cy - r * std::sin(a0 * kDeg);
    const double x1 = cx + r * std::cos(a1 * kDeg), y1 = cy - r * std::sin(a1 * kDeg);
    const bool large = std::fabs(a1 - a0) > 180;
    const bool sweep = a1 < a0;
    std::string d;
    if (closed) {
        d = "M";
        appendNum(d, cx);
        d += ' ';
        appendNum(d, cy);
        d += " L";
    } else {
        d = "M";
    }
    appendNum(d, x0);
    d += ' ';
    appendNum(d, y0);
    d += " A";
    appendNum(d, r);
    d += ' ';
    appendNum(d, r);
    d += large ? " 0 1 " : " 0 0 ";
    d += sweep ? "1 " : "0 ";
    appendNum(d, x1);
    d += ' ';
    appendNum(d, y1);
    if (closed) d += " Z";
    return d;
}
} // namespace

void Canvas::arc(double cx, double cy, double r, double a0, double a1, std::string_view cls) {
    if (!finite({cx, cy, r, a0, a1}) || r <= 0 || std::fabs(a1 - a0) < 1e-9) return;
    if (space) space->bow({cx, cy}, r, a0 * kDeg, a1 * kDeg, true);
    pathItem(arcPath(cx, cy, r, a0, a1, true), cls);
    keep(Shape::Sector, {{cx, cy}}, cls, r, a0, a1);
}

void Canvas::bow(double cx, double cy, double r, double a0, double a1, std::string_view cls) {
    if (!finite({cx, cy, r, a0, a1}) || r <= 0 || std::fabs(a1 - a0) < 1e-9) return;
    if (space) space->bow({cx, cy}, r, a0 * kDeg, a1 * kDeg, false);
    pathItem(arcPath(cx, cy, r, a0, a1, false), cls);
    keep(Shape::Bow, {{cx, cy}}, cls, r, a0, a1);
}

void Canvas::arrow(double x1, double y1, double x2, double y2, std::string_view cls, double headLength,
                   double headWidth) {
    if (!finite({x1, y1, x2, y2, headLength, headWidth})) return;
    const double dx = x2 - x1, dy = y2 - y1, len = std::hypot(dx, dy);
    if (len < 1e-9) return;
    // A short arrow keeps a head in proportion, so that the head stays visible
    // and the line doesn't come out behind it.
    if (len < headLength * 1.6) {
        const double k = len / (headLength * 1.6);
        headLength *= k;
        headWidth *= std::max(k, 0.6);
    }
    const double ux = dx / len, uy = dy / len;
    const double bx = x2 - ux * headLength, by = y2 - uy * headLength;
    const std::string c(cls);
    line(x1, y1, bx, by, c + " ar");
    const double hx = -uy * headWidth / 2, hy = ux * headWidth / 2;
    polygon({{x2, y2}, {bx + hx, by + hy}, {bx - hx, by - hy}}, c + " ah");
}

void Canvas::text(double x, double y, std::string_view content, std::string_view anchor, std::string_view cls) {
    textAt(x, y, content, anchor, textStyle(cls));
}

void Canvas::textFit(double x, double y, std::string_view content, std::string_view anchor,
                     std::string_view cls, double maxWidth) {
    TextStyle style = textStyle(cls);
    const double w = textWidth(content, style.size, style.bold);
    if (w > maxWidth && maxWidth > 0) style.size = std::max(9.0, std::floor(style.size * maxWidth / w * 10) / 10);
    textAt(x, y, content, anchor, style);
}

Box Canvas::textBox(double& x, double& y, std::string_view content, std::string_view anchor,
                    TextStyle& style) const {
    const bool heavy = style.bold || style.weight >= 600;
    double w = textWidth(content, style.size, heavy);
    if (boundW > 0) {
        if (w > boundW - 4) {
            style.size = std::max(8.0, std::floor(style.size * (boundW - 4) / w * 10) / 10);
            w = textWidth(content, style.size, heavy);
        }
        const double left = anchor == "middle" ? x - w / 2 : anchor == "end" ? x - w : x;
        if (left < 2) x += 2 - left;
        else if (left + w > boundW - 2) x -= left + w - (boundW - 2);
    }
    if (boundH > 0) y = std::clamp(y, 0.6 * style.size + 1, boundH - 0.6 * style.size - 1);
    const double left = anchor == "middle" ? x - w / 2 : anchor == "end" ? x - w : x;
    // A subscript hangs below the line.
    const double below = content.find("<sub>") != std::string_view::npos ? kSubDrop * style.size : 0;
    return {left, y - 0.5 * style.size, left + w, y + 0.5 * style.size + below};
}

void Canvas::textAmong(const std::vector<Spot>& spots, std::string_view content, std::string_view cls) {
    if (spots.empty()) return;
    if (space) {
        for (const Spot& s : spots) {
            double x = s.x, y = s.y;
            TextStyle style = textStyle(cls);
            if (space->free(textBox(x, y, content, s.anchor, style))) {
                textAt(s.x, s.y, content, s.anchor, textStyle(cls));
                return;
            }
        }
    }
    textAt(spots.front().x, spots.front().y, content, spots.front().anchor, textStyle(cls));
}

void Canvas::textAt(double x, double y, std::string_view content, std::string_view anchor,
                    const TextStyle& given) {
    if (!finite({x, y}) || content.empty()) return;
    TextStyle style = given;
    if (boundW > 0 || boundH > 0 || space) {
        const Box box = textBox(x, y, content, anchor, style);
        if (space) space->taken.push_back(box);
    }
    const std::vector<Run> runs = runsOf(content);
    if (runs.empty()) return;

    const auto element = [&](double tx, double ty, std::string_view a, std::string_view text, double size,
                             bool isHalo) {
        // Spaces count as written: "U = 230 V  ·  f = 50 Hz", and the blank
        // that follows a subscript.
        std::string s = "<text xml:space=\"preserve\"";
        attr(s, "x", tx);
        attr(s, "y", ty);
        if (a != "start") {
            s += " text-anchor=\"";
            s += a;
            s += '"';
        }
        TextStyle sized = style;
        sized.size = size;
        s += textAttrs(sized, isHalo);
        s += '>';
        appendEscaped(s, text);
        s += "</text>";
        items.push_back(std::move(s));
        if (keepShapes) {
            Shape sh;
            sh.kind = Shape::Text;
            sh.pts = {{tenth(tx), tenth(ty)}};
            sh.text = text;
            sh.font = sized;
            sh.anchor = a == "middle" ? Shape::Middle : a == "end" ? Shape::End : Shape::Start;
            sh.halo = isHalo;
            shapes.push_back(std::move(sh));
        }
    };

    const double base = y + 0.35 * style.size;
    if (runs.size() == 1 && !runs[0].sub) {
        if (halos) element(x, base, anchor, runs[0].text, style.size, true);
        element(x, base, anchor, runs[0].text, style.size, false);
        return;
    }
    // A subscript needs its own element: the renderer places no tspan by
    // itself, so each run starts where the estimate says the last one ended.
    const double subSize = std::round(style.size * kSubSize * 10) / 10;
    const bool heavy = style.bold || style.weight >= 600;
    double total = 0;
    for (const Run& r : runs)
        total += textWidth(r.text, r.sub ? subSize : style.size, heavy);
    double cx = anchor == "middle" ? x - total / 2 : anchor == "end" ? x - total : x;
    for (int pass = halos ? 0 : 1; pass < 2; ++pass) {
        double px = cx;
        for (const Run& r : runs) {
            const double size = r.sub ? subSize : style.size;
            element(px, base + (r.sub ? kSubDrop * style.size : 0), "start", r.text, size, pass == 0);
            px += textWidth(r.text, size, heavy);
        }
    }
}

std::string Canvas::body() const {
    size_t n = 0;
    for (const std::string& s : items)
        n += s.size();
    std::string out;
    out.reserve(n);
    for (const std::string& s : items)
        out += s;
    return out;
}

std::string Canvas::document(int w, int h) const {
    std::string out = svgHead(w, h);
    size_t n = out.size() + 6;
    for (const std::string& s : items)
        n += s.size();
    out.reserve(n);
    for (const std::string& s : items)
        out += s;
    out += "</svg>";
    return out;
}

std::string svgDocument(const FigureOut& fig) {
    if (fig.empty()) return {};
    return svgHead(fig.w, fig.h) + fig.body + "</svg>";
}

ShapeFigurePtr takeShapeFigure(FigureOut& fig) {
    if (fig.empty() || fig.shapes.empty()) return nullptr;
    auto out = std::make_shared<ShapeFigure>();
    out->w = fig.w, out->h = fig.h;
    out->shapes = std::move(fig.shapes);
    fig.shapes.clear();
    return out;
}

std::string figureMarkup(FigureOut&& fig) {
    if (fig.empty()) return {};
    ShapeFigurePtr shapes = takeShapeFigure(fig);
    return figure(fig.body, fig.w, fig.h, fig.caption, std::move(shapes));
}

std::string figureShownAt(FigureOut&& fig, int width, int height) {
    const std::string svg = svgDocument(fig);
    return "<p class=\"fig\"><img src=\"" + addFigure(svg, takeShapeFigure(fig)) + "\" width=\"" +
           std::to_string(width) + "\" height=\"" + std::to_string(height) + "\"></p>";
}

// ---- Fig ----

void Fig::fit() {
    double x0 = 0, x1 = 1, y0 = 0, y1 = 1;
    if (!pts.empty()) {
        x0 = x1 = pts[0].x;
        y0 = y1 = pts[0].y;
        for (const Pt& p : pts) {
            x0 = std::min(x0, p.x), x1 = std::max(x1, p.x);
            y0 = std::min(y0, p.y), y1 = std::max(y1, p.y);
        }
    }
    const double spanX = x1 - x0, spanY = y1 - y0;
    scale = std::min((H - 2 * my) / std::max(1e-9, spanY), (W - 2 * mx) / std::max(1e-9, spanX));
    minX = x0, minY = y0;
    ox = (W - spanX * scale) * 0.5;
    oy = (H - spanY * scale) * 0.5;
}

Pt Fig::pt(Pt model) const { return {ox + (model.x - minX) * scale, H - oy - (model.y - minY) * scale}; }

std::vector<Pt> Fig::polyPoints(const std::vector<Pt>& model) const {
    std::vector<Pt> out;
    out.reserve(model.size());
    for (const Pt& p : model)
        out.push_back(pt(p));
    return out;
}

std::string Fig::captionText() const {
    std::string s = title + caption;
    if (!note.empty()) s += (s.empty() ? "" : " ") + note;
    return s;
}

namespace {

// The anchor of a label that sits on the side a normal points to.
std::string_view anchorFor(double nx) {
    if (std::fabs(nx) < 0.3) return "middle";
    return nx > 0 ? "start" : "end";
}

double angleOf(Pt from, Pt to) { return std::atan2(-(to.y - from.y), to.x - from.x) / kDeg; }

} // namespace

namespace {

struct EdgeLabel {
    double x = 0, y = 0;
    std::string_view anchor = "middle";
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0; // estimated extent
};

// At the edge's middle, on the side away from the centroid, anchored by the
// outward normal.
EdgeLabel edgeLabel(Pt a, Pt b, Pt c, const FigEdge& e) {
    const Pt mid{(a.x + b.x) / 2, (a.y + b.y) / 2};
    const double len = std::hypot(b.x - a.x, b.y - a.y);
    double nx = 0, ny = -1;
    if (len > 1e-9) nx = -(b.y - a.y) / len, ny = (b.x - a.x) / len;
    if (nx * (mid.x - c.x) + ny * (mid.y - c.y) < 0) nx = -nx, ny = -ny;
    const TextStyle st = textStyle(e.cls);
    const double gap = 8 + 0.5 * st.size * std::fabs(ny);
    EdgeLabel l;
    l.x = mid.x + nx * gap, l.y = mid.y + ny * gap;
    l.anchor = anchorFor(nx);
    const double w = textWidth(e.text, e.cls);
    l.x0 = l.anchor == "middle" ? l.x - w / 2 : l.anchor == "end" ? l.x - w : l.x;
    l.x1 = l.x0 + w;
    l.y0 = l.y - st.size * 0.6, l.y1 = l.y + st.size * 0.6;
    return l;
}

Pt centroidOf(const Fig& fig) {
    Pt c;
    for (const Pt& p : fig.pts)
        c.x += p.x / fig.pts.size(), c.y += p.y / fig.pts.size();
    return c;
}

} // namespace

FigureOut drawFig(Fig& fig) {
    if (!fig.custom) fig.W = 460, fig.H = 280, fig.mx = 90, fig.my = 36;
    const auto valid = [&](int i) { return i >= 0 && static_cast<size_t>(i) < fig.pts.size(); };
    // A long label may not fit in the margin. Where the drawing and its side
    // labels fit across (or down) together, they move as one to the middle;
    // otherwise the drawing shrinks until they do.
    double shiftX = 0, shiftY = 0;
    for (int round = 0; round < 6; ++round) {
        fig.fit();
        fig.ox += shiftX, fig.oy -= shiftY;
        const Pt c = fig.pt(centroidOf(fig));
        double lo = fig.W, hi = 0, top = fig.H, bottom = 0;
        for (const Pt& p : fig.pts) {
            const Pt q = fig.pt(p);
            lo = std::min(lo, q.x), hi = std::max(hi, q.x), top = std::min(top, q.y),
            bottom = std::max(bottom, q.y);
        }
        for (const FigEdge& e : fig.edges) {
            if (!valid(e.a) || !valid(e.b) || e.text.empty()) continue;
            const EdgeLabel l = edgeLabel(fig.pt(fig.pts[e.a]), fig.pt(fig.pts[e.b]), c, e);
            lo = std::min(lo, l.x0), hi = std::max(hi, l.x1), top = std::min(top, l.y0),
            bottom = std::max(bottom, l.y1);
        }
        const bool outX = lo < 4 || hi > fig.W - 4, outY = top < 4 || bottom > fig.H - 4;
        if (!outX && !outY) break;
        const double excess = std::max(hi - lo - (fig.W - 8), bottom - top - (fig.H - 8));
        if (excess > 0) {
            fig.mx = std::min(fig.mx + excess / 2 + 2, fig.W / 2.0 - 10);
            fig.my = std::min(fig.my + excess / 2 + 2, fig.H / 2.0 - 10);
        }
        if (outX) shiftX += (fig.W - (hi - lo)) / 2 - lo;
        if (outY) shiftY += (fig.H - (bottom - top)) / 2 - top;
    }
    const Pt c = fig.pt(centroidOf(fig));
    const std::vector<Pt> screen = fig.polyPoints(fig.pts);
    fig.setBounds(fig.W, fig.H);
    fig.keepSpace();

    if (fig.strokeShape && screen.size() >= 2) fig.polygon(screen, "shape");
    if (fig.preDraw) fig.preDraw(fig, c);
    for (const FigEdge& e : fig.edges)
        if (valid(e.a) && valid(e.b) && e.cls.find("hl") != std::string::npos)
            fig.line(screen[e.a].x, screen[e.a].y, screen[e.b].x, screen[e.b].y, "hlL");

    for (const FigMark& m : fig.marks) {
        const Pt p = fig.pt(m.p);
        fig.circle(p.x, p.y, 3.5, "node");
        double dx = p.x - c.x, dy = p.y - c.y;
        const double len = std::hypot(dx, dy);
        if (len < 1e-9) dx = 0, dy = -1;
        else dx /= len, dy /= len;
        if (!m.label.empty()) fig.text(p.x + dx * 26, p.y + dy * 26, m.label, "middle", m.cls);
    }

    for (const FigEdge& e : fig.edges) {
        if (!valid(e.a) || !valid(e.b) || e.text.empty()) continue;
        const EdgeLabel l = edgeLabel(screen[e.a], screen[e.b], c, e);
        fig.text(l.x, l.y, e.text, l.anchor, e.cls);
    }

    // All arcs first, so that no angle's text lands on another's arc.
    struct Interior {
        Pt v;
        double a0, a1; // degrees, a0 to a1 the shorter way round
    };
    std::vector<Interior> interiors;
    for (const FigAngle& an : fig.angles) {
        if (!valid(an.vertex) || !valid(an.from) || !valid(an.to)) {
            interiors.push_back({{}, NAN, NAN});
            continue;
        }
        const Pt v = screen[an.vertex];
        double a0 = angleOf(v, screen[an.from]), a1 = angleOf(v, screen[an.to]);
        if (a1 - a0 > 180) a1 -= 360;
        if (a0 - a1 > 180) a1 += 360;
        interiors.push_back({v, a0, a1});
        if (an.square) {
            const double s = 12;
            const double e0x = std::cos(a0 * kDeg) * s, e0y = -std::sin(a0 * kDeg) * s;
            const double e1x = std::cos(a1 * kDeg) * s, e1y = -std::sin(a1 * kDeg) * s;
            fig.polyline({{v.x + e0x, v.y + e0y}, {v.x + e0x + e1x, v.y + e0y + e1y}, {v.x + e1x, v.y + e1y}},
                         "thin");
        } else {
            fig.arc(v.x, v.y, an.radius, std::min(a0, a1), std::max(a0, a1), "ang");
        }
    }
    if (fig.inner) {
        // After the sides' labels and the arcs: at the centroid, or nearer a corner where a side runs through it.
        std::vector<Canvas::Spot> spots{{c.x, c.y, "middle"}};
        for (double share : {0.3, 0.5})
            for (const Pt& p : screen)
                spots.push_back({c.x + (p.x - c.x) * share, c.y + (p.y - c.y) * share, "middle"});
        for (double dy : {-12.0, 12.0, -24.0, 24.0})
            spots.push_back({c.x, c.y + dy, "middle"});
        // No room inside: above the shape, or beside it.
        double top = c.y, left = c.x, right = c.x;
        for (const Pt& p : screen)
            top = std::min(top, p.y), left = std::min(left, p.x), right = std::max(right, p.x);
        spots.push_back({c.x, top - 16, "middle"});
        spots.push_back({right + 12, c.y, "start"});
        spots.push_back({left - 12, c.y, "end"});
        fig.textAmong(spots, fig.inner->text, fig.inner->cls);
    }
    // A text on the bisector of the part of its arc that is its own (a
    // smaller angle at the same corner, inside it, claims its share); where a
    // line or a text is in the way, a little further out, then just outside
    // either arm by the arc's end, and only then further afield.
    const auto anchorOf = [](double ux) -> std::string_view {
        return std::fabs(ux) < 0.5 ? "middle" : ux > 0 ? "start" : "end";
    };
    for (size_t k = 0; k < fig.angles.size(); ++k) {
        const FigAngle& an = fig.angles[k];
        const Interior& in = interiors[k];
        if (an.label.empty() || !std::isfinite(in.a0)) continue;
        const double lo = std::min(in.a0, in.a1), hi = std::max(in.a0, in.a1);
        std::vector<std::pair<double, double>> own{{lo, hi}};
        for (size_t j = 0; j < fig.angles.size(); ++j) {
            const Interior& o = interiors[j];
            if (j == k || fig.angles[j].square || !std::isfinite(o.a0) ||
                std::hypot(o.v.x - in.v.x, o.v.y - in.v.y) > 0.5)
                continue;
            const double olo = std::min(o.a0, o.a1), ohi = std::max(o.a0, o.a1);
            if (olo < lo - 1e-6 || ohi > hi + 1e-6 || ohi - olo >= hi - lo - 1e-6) continue;
            std::vector<std::pair<double, double>> rest;
            for (const auto& [a, b] : own) {
                if (olo > a) rest.push_back({a, std::min(b, olo)});
                if (ohi < b) rest.push_back({std::max(a, ohi), b});
            }
            own = rest;
        }
        std::pair<double, double> mine{lo, hi};
        if (!own.empty())
            mine = *std::max_element(own.begin(), own.end(), [](const auto& a, const auto& b) {
                return a.second - a.first < b.second - b.first;
            });
        std::vector<Canvas::Spot> spots;
        const auto onBisector = [&](double from, double to, std::initializer_list<double> extras,
                                    std::initializer_list<double> shares) {
            for (double extra : extras)
                for (double share : shares) {
                    const double a = (from + (to - from) * share) * kDeg, r = an.radius * 1.35 + 8 + extra;
                    const double ux = std::cos(a), uy = -std::sin(a);
                    spots.push_back({in.v.x + ux * r, in.v.y + uy * r, anchorOf(ux)});
                }
        };
        onBisector(mine.first, mine.second, {0.0, 8.0, 18.0, 30.0, 46.0}, {0.5, 0.3, 0.7});
        for (const double arm : {hi, lo}) {
            // Not where the arm runs inside another angle: that side is the other's.
            bool inside = false;
            for (size_t j = 0; j < fig.angles.size(); ++j) {
                const Interior& o = interiors[j];
                inside = inside || (j != k && !fig.angles[j].square && std::isfinite(o.a0) &&
                                    std::hypot(o.v.x - in.v.x, o.v.y - in.v.y) <= 0.5 &&
                                    std::min(o.a0, o.a1) < arm - 1e-6 && std::max(o.a0, o.a1) > arm + 1e-6);
            }
            if (inside) continue;
            const double a = arm * kDeg, ux = std::cos(a), uy = -std::sin(a);
            const double out = arm == hi ? 1 : -1; // the normal that points away from the angle
            const double nx = uy * out, ny = -ux * out;
            for (double along : {an.radius, an.radius + 12, an.radius * 1.35 + 8})
                for (double off : {12.0, 20.0})
                    spots.push_back(
                        {in.v.x + ux * along + nx * off, in.v.y + uy * along + ny * off, anchorOf(nx)});
        }
        onBisector(lo, hi, {0.0, 8.0, 18.0, 30.0, 46.0, 66.0}, {0.5, 0.7, 0.3, 0.85, 0.15});
        fig.textAmong(spots, an.label, "angt " + an.cls);
    }
    if (fig.postDraw) fig.postDraw(fig, c);
    return {fig.body(), fig.W, fig.H, fig.captionText(), fig.takeShapes()};
}

// ---- Chart ----

double tickStep(double span, int most) {
    if (!(span > 0) || !std::isfinite(span)) return 1;
    const double raw = span / most;
    const double p = std::pow(10.0, std::floor(std::log10(raw)));
    for (double m : {1.0, 2.5, 5.0, 10.0})
        if (m * p >= raw) return m * p;
    return 10 * p;
}

FigureOut drawAxes(const AxesPlot& plot) {
    Canvas cv;
    cv.setBounds(plot.W, plot.H);
    double y0 = plot.y0, y1 = plot.y1, x0 = plot.x0, x1 = plot.x1;
    if (!(x1 > x0)) x0 = 0, x1 = 1;
    if (!(y1 > y0)) y0 = -1, y1 = 1;
    // Room above and below the curves.
    const double midY = (y0 + y1) / 2, halfY = (y1 - y0) / 2 * 1.18;
    y0 = midY - halfY, y1 = midY + halfY;
    const double pw = plot.W - plot.left - plot.right, ph = plot.H - plot.top - plot.bottom;
    const auto map = [&](Pt p) -> Pt {
        return {plot.left + (p.x - x0) / (x1 - x0) * pw, plot.top + (y1 - p.y) / (y1 - y0) * ph};
    };

    const double sx = tickStep(x1 - x0, 8), sy = tickStep(y1 - y0, 6);
    for (double t = std::ceil(x0 / sx) * sx; t <= x1 + 1e-9 * sx; t += sx) {
        const Pt a = map({t, y0}), b = map({t, y1});
        cv.line(a.x, a.y, b.x, b.y, "grid");
        cv.text(a.x, a.y + 12, fmtNumber(t) + plot.xUnit, "middle", "tick tbig");
    }
    for (double t = std::ceil(y0 / sy) * sy; t <= y1 + 1e-9 * sy; t += sy) {
        const Pt a = map({x0, t}), b = map({x1, t});
        cv.line(a.x, a.y, b.x, b.y, "grid");
        cv.text(a.x - 6, a.y, fmtNumber(std::fabs(t) < 1e-9 * sy ? 0.0 : t), "end", "tick tbig");
    }
    // The axes through the origin, or along the edge when it is outside.
    const double ax = std::clamp(0.0, x0, x1), ay = std::clamp(0.0, y0, y1);
    Pt a = map({x0, ay}), b = map({x1, ay});
    cv.line(a.x, a.y, b.x, b.y, "axis");
    a = map({ax, y0}), b = map({ax, y1});
    cv.line(a.x, a.y, b.x, b.y, "axis");

    for (const AxesPlot::Curve& curve : plot.curves) {
        std::vector<Pt> pts;
        pts.reserve(curve.points.size());
        for (const Pt& p : curve.points)
            pts.push_back(map(p));
        cv.polyline(pts, curve.cls + " ln");
    }
    if (!plot.xLabel.empty()) cv.text(plot.W - plot.right, map({x1, ay}).y - 12, plot.xLabel, "end", "mut");
    if (!plot.yLabel.empty()) cv.text(map({ax, y1}).x + 8, plot.top + 2, plot.yLabel, "start", "mut");
    if (plot.overlay) plot.overlay(cv, map);
    return {cv.body(), plot.W, plot.H, {}, cv.takeShapes()};
}

} // namespace fl
