// Test support for figures: whether an SVG text is well formed for both an
// XML reader and the Qt renderer, with every number in the one form the
// builder promises (digits, at most one decimal, a point, never "nan", "inf"
// or a locale's comma); and the elements of a figure read back as data.
#pragma once

#include "fl/fig/canvas.h"
#include "fl/fig/style.h"

#include <QRegularExpression>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace fl::testing {

// A palette that differs from the light one, and from itself, in every slot.
inline FigColors otherFigColors() {
    FigColors c;
    for (size_t i = 0; i < c.slot.size(); ++i)
        c.slot[i] = "#10" + std::string(i < 10 ? "0" : "") + std::to_string(i) + "20";
    c.dark = true;
    return c;
}

// A number of the SVG: always with a point, whatever the locale says.
inline double svgNum(std::string_view text) {
    double v = 0;
    std::from_chars(text.data(), text.data() + text.size(), v);
    return v;
}

struct SvgElement {
    std::string tag;
    std::map<std::string, std::string> attrs;
    std::string text;
    double num(const std::string& name) const { return svgNum(attrs.at(name)); }
    bool has(const std::string& name) const { return attrs.count(name) > 0; }
};

// The elements below the root, in order.
inline std::vector<SvgElement> svgElements(const std::string& svg) {
    std::vector<SvgElement> out;
    QXmlStreamReader xml(QByteArray::fromStdString(svg));
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++depth;
            if (depth == 1) continue;
            SvgElement e;
            e.tag = xml.name().toString().toStdString();
            for (const QXmlStreamAttribute& a : xml.attributes())
                e.attrs[a.qualifiedName().toString().toStdString()] = a.value().toString().toStdString();
            out.push_back(std::move(e));
        } else if (xml.isCharacters() && !out.empty() && depth > 1) {
            out.back().text += xml.text().toString().toStdString();
        } else if (xml.isEndElement()) {
            --depth;
        }
    }
    return out;
}

// The letters of every text, halos left out, joined by "|": a label with a
// subscript reads "U|R1| = 5 V".
inline std::string svgText(const std::string& svg) {
    std::string out;
    for (const SvgElement& e : svgElements(svg))
        if (e.tag == "text" && !e.has("stroke")) out += e.text + "|";
    return out;
}

// "12", "-0", "3.5": digits, at most one decimal, a point.
inline bool svgNumber(QStringView t) {
    qsizetype i = 0, n = t.size();
    if (i < n && t[i] == u'-') ++i;
    const qsizetype digits = i;
    while (i < n && t[i].isDigit())
        ++i;
    if (i == digits) return false;
    if (i == n) return true;
    return i + 2 == n && t[i] == u'.' && t[i + 1].isDigit();
}

// Empty when fine; otherwise what is wrong.
inline std::string svgProblem(const std::string& svg) {
    if (svg.empty()) return "empty";
    QXmlStreamReader xml(QByteArray::fromStdString(svg));
    static const char16_t* const kNumeric[] = {u"x",  u"y", u"x1", u"y1",    u"x2",     u"y2",       u"cx",
                                               u"cy", u"r", u"rx", u"width", u"height", u"font-size"};
    int elements = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement()) continue;
        ++elements;
        for (const QXmlStreamAttribute& a : xml.attributes()) {
            const QStringView name = a.qualifiedName(), value = a.value();
            const auto bad = [&](QStringView token) {
                return "<" + xml.name().toString().toStdString() + "> " + name.toString().toStdString() +
                       "=\"" + value.toString().toStdString() + "\": " + token.toString().toStdString();
            };
            if (value.contains(u"nan", Qt::CaseInsensitive) || value.contains(u"inf", Qt::CaseInsensitive))
                return bad(value);
            for (const char16_t* n : kNumeric)
                if (name == QStringView(n) && !svgNumber(value)) return bad(value);
            if (name == u"points" || name == u"viewBox") {
                for (QStringView pair : value.split(u' ', Qt::SkipEmptyParts))
                    for (QStringView t : pair.split(name == u"points" ? u',' : u' '))
                        if (!svgNumber(t)) return bad(t);
            }
            if (name == u"d") {
                // Commands and numbers, each number whole.
                qsizetype i = 0;
                while (i < value.size()) {
                    if (value[i] == u' ' || value[i].isLetter()) {
                        ++i;
                        continue;
                    }
                    qsizetype j = i;
                    while (j < value.size() && value[j] != u' ' && !value[j].isLetter())
                        ++j;
                    if (!svgNumber(value.mid(i, j - i))) return bad(value.mid(i, j - i));
                    i = j;
                }
            }
        }
    }
    if (xml.hasError()) return "XML: " + xml.errorString().toStdString();
    if (elements < 2) return "no elements";
    QSvgRenderer renderer(QByteArray::fromStdString(svg));
    if (!renderer.isValid()) return "the renderer refuses it";
    return {};
}

// Whether the segment a→b passes through the box (Liang–Barsky clipping).
inline bool segmentCrosses(double ax, double ay, double bx, double by, double x0, double y0, double x1,
                           double y1) {
    double t0 = 0, t1 = 1;
    const double dx = bx - ax, dy = by - ay;
    const double p[] = {-dx, dx, -dy, dy}, q[] = {ax - x0, x1 - ax, ay - y0, y1 - ay};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
        } else {
            const double t = q[i] / p[i];
            if (p[i] < 0)
                t0 = std::max(t0, t);
            else
                t1 = std::min(t1, t);
        }
    }
    return t0 < t1;
}

// The corners of a polygon or a polyline, as written.
inline std::vector<Pt> svgPoints(const SvgElement& e) {
    std::vector<Pt> out;
    std::istringstream in(e.attrs.at("points"));
    for (std::string pair; in >> pair;) {
        const size_t comma = pair.find(',');
        out.push_back({svgNum(pair.substr(0, comma)), svgNum(pair.substr(comma + 1))});
    }
    return out;
}

struct Box {
    double x0, y0, x1, y1;
};

// A text's line box, estimated from its place, anchor, size and weight as
// written; `ink` keeps only the letters, a little inside the line box.
inline Box textBox(const SvgElement& t, bool ink = false) {
    const double size = t.num("font-size"), w = textWidth(t.text, size, t.has("font-weight"));
    const std::string anchor = t.has("text-anchor") ? t.attrs.at("text-anchor") : "start";
    const double x = t.num("x") - (anchor == "middle" ? w / 2 : anchor == "end" ? w : 0);
    const double mid = t.num("y") - 0.35 * size, half = (ink ? 0.35 : 0.5) * size, in = ink ? 1 : 0;
    return {x + in, mid - half, x + w - in, mid + half};
}

struct Seg {
    double ax, ay, bx, by;
};

// An arc as the arc writer makes it: a sector "M cx cy L x0 y0 A r r 0 large
// sweep x1 y1 Z" or an open bow "M x0 y0 A r r 0 large sweep x1 y1". Its
// turn from the start point in screen angles (y down), in radians.
struct Arc {
    double cx, cy, r, a0, span;
    Pt from, to;
    bool sector;
};

inline std::vector<Arc> svgArcs(const std::string& svg) {
    std::vector<Arc> out;
    for (const SvgElement& e : svgElements(svg)) {
        if (e.tag != "path" || e.attrs.at("d").find('A') == std::string::npos) continue;
        const std::string& d = e.attrs.at("d");
        const bool closed = d.find('L') != std::string::npos;
        std::vector<double> p;
        std::istringstream in(d);
        for (std::string t; in >> t;) {
            t.erase(std::remove_if(t.begin(), t.end(),
                                   [](char c) { return std::isalpha(static_cast<unsigned char>(c)); }),
                    t.end());
            if (!t.empty()) p.push_back(svgNum(t));
        }
        if (p.size() < (closed ? 11u : 9u)) continue;
        const size_t o = closed ? 2 : 0;
        const double x0 = p[o], y0 = p[o + 1], r = p[o + 2], x1 = p[o + 7], y1 = p[o + 8];
        const bool large = p[o + 5] != 0, sweep = p[o + 6] != 0;
        // Screen angles grow with sweep 1; the centre is given for a sector,
        // else the one of the two whose turn is as large as the flag says.
        const auto turn = [&](double cx, double cy) {
            double span = std::atan2(y1 - cy, x1 - cx) - std::atan2(y0 - cy, x0 - cx);
            while (sweep && span < 0)
                span += 2 * M_PI;
            while (!sweep && span > 0)
                span -= 2 * M_PI;
            return span;
        };
        double cx = p[0], cy = p[1];
        if (!closed) {
            const double mx = (x0 + x1) / 2, my = (y0 + y1) / 2, hx = x1 - x0, hy = y1 - y0;
            const double chord = std::max(1e-9, std::hypot(hx, hy));
            const double off = std::sqrt(std::max(0.0, r * r - chord * chord / 4));
            cx = mx - hy / chord * off, cy = my + hx / chord * off;
            if ((std::fabs(turn(cx, cy)) > M_PI) != large)
                cx = mx + hy / chord * off, cy = my - hx / chord * off;
        }
        out.push_back({cx, cy, r, std::atan2(y0 - cy, x0 - cx), turn(cx, cy), {x0, y0}, {x1, y1}, closed});
    }
    return out;
}

// Every stroke a text could run into: lines (grid lines excepted: the halo
// covers them), the sides of polygons, polylines and stroked rectangles, and
// circles and arcs as short chords.
inline std::vector<Seg> svgSegments(const std::string& svg) {
    std::vector<Seg> lines;
    const std::string grid = figColors().slot[4];
    for (const SvgElement& e : svgElements(svg)) {
        if (e.tag == "line" && !(e.has("stroke") && e.attrs.at("stroke") == grid))
            lines.push_back({e.num("x1"), e.num("y1"), e.num("x2"), e.num("y2")});
        if (e.tag == "polygon" || e.tag == "polyline") {
            const std::vector<Pt> p = svgPoints(e);
            for (size_t k = 0; k + 1 < p.size(); ++k)
                lines.push_back({p[k].x, p[k].y, p[k + 1].x, p[k + 1].y});
            if (e.tag == "polygon" && p.size() >= 2)
                lines.push_back({p.back().x, p.back().y, p[0].x, p[0].y});
        }
        if (e.tag == "rect" && e.has("stroke")) {
            const double x = e.num("x"), y = e.num("y"), w = e.num("width"), h = e.num("height");
            lines.push_back({x, y, x + w, y}), lines.push_back({x, y + h, x + w, y + h});
            lines.push_back({x, y, x, y + h}), lines.push_back({x + w, y, x + w, y + h});
        }
        if (e.tag == "circle" && e.has("stroke")) {
            const double cx = e.num("cx"), cy = e.num("cy"), r = e.num("r");
            for (int k = 0; k < 72; ++k) {
                const double a = k * M_PI / 36, b = (k + 1) * M_PI / 36;
                lines.push_back(
                    {cx + r * std::cos(a), cy + r * std::sin(a), cx + r * std::cos(b), cy + r * std::sin(b)});
            }
        }
    }
    for (const Arc& a : svgArcs(svg)) {
        Pt prev = a.from;
        for (int k = 1; k <= 48; ++k) {
            const double t = a.a0 + a.span * k / 48;
            const Pt next{a.cx + a.r * std::cos(t), a.cy + a.r * std::sin(t)};
            lines.push_back({prev.x, prev.y, next.x, next.y});
            prev = next;
        }
        if (a.sector)
            lines.push_back({a.cx, a.cy, a.from.x, a.from.y}), lines.push_back({a.cx, a.cy, a.to.x, a.to.y});
    }
    return lines;
}

// Where a figure's texts meet its drawing: a text whose letters cross one of
// its segments, a text over another, or a text not wholly inside the figure.
// One line per clash; empty when the figure is clean.
inline std::string labelClashes(const std::string& svg, double W, double H) {
    struct Label {
        std::string text;
        Box b;
    };
    const std::vector<Seg> lines = svgSegments(svg);
    std::vector<Label> texts;
    for (const SvgElement& e : svgElements(svg))
        if (e.tag == "text" && !e.has("stroke")) texts.push_back({e.text, textBox(e, true)});
    std::ostringstream out;
    for (size_t i = 0; i < texts.size(); ++i) {
        const Box& t = texts[i].b;
        const double size = (t.y1 - t.y0) / 0.7;
        if (t.x0 < 0 || t.x1 > W || t.y0 - 0.15 * size < 0 || t.y1 + 0.15 * size > H)
            out << '"' << texts[i].text << "\" leaves the figure\n";
        for (const Seg& l : lines)
            if (segmentCrosses(l.ax, l.ay, l.bx, l.by, t.x0, t.y0, t.x1, t.y1)) {
                out << '"' << texts[i].text << "\" crosses " << l.ax << ',' << l.ay << " – " << l.bx << ','
                    << l.by << '\n';
                break;
            }
        for (size_t j = i + 1; j < texts.size(); ++j) {
            const Box& o = texts[j].b;
            if (t.x0 < o.x1 && o.x0 < t.x1 && t.y0 < o.y1 && o.y0 < t.y1)
                out << '"' << texts[i].text << "\" covers \"" << texts[j].text << "\"\n";
        }
    }
    return out.str();
}

// Empty when the shapes a canvas kept are its SVG elements one for one: the
// same kind, place, colours and letters; otherwise the first difference.
// A painter handed the shapes then draws what the SVG shows.
inline std::string shapeProblem(const std::vector<Shape>& shapes, const std::string& svg) {
    const std::vector<SvgElement> elements = svgElements(svg);
    if (shapes.size() != elements.size())
        return std::to_string(shapes.size()) + " shapes for " + std::to_string(elements.size()) + " elements";
    static const char* const kTag[] = {"line",     "rect", "circle", "polygon",
                                       "polyline", "path", "path",   "text"};
    const auto near = [](const SvgElement& e, const char* name, double v) {
        return e.has(name) && std::fabs(e.num(name) - v) <= 0.051;
    };
    const auto colour = [](int slot) {
        return slot < 0 ? std::string("none") : figColors().slot[size_t(slot)];
    };
    for (size_t i = 0; i < shapes.size(); ++i) {
        const Shape& s = shapes[i];
        const SvgElement& e = elements[i];
        const std::string at = "element " + std::to_string(i) + " <" + e.tag + ">: ";
        if (e.tag != kTag[s.kind]) return at + "shape of kind " + std::to_string(s.kind);
        if (s.kind == Shape::Text) {
            static const char* const kAnchor[] = {"start", "middle", "end"};
            const std::string anchor = e.has("text-anchor") ? e.attrs.at("text-anchor") : "start";
            if (s.text != e.text) return at + "text \"" + s.text + "\"";
            if (s.halo != e.has("stroke")) return at + "halo";
            if (!near(e, "x", s.pts[0].x) || !near(e, "y", s.pts[0].y)) return at + "place";
            if (anchor != kAnchor[s.anchor]) return at + "anchor";
            if (!near(e, "font-size", s.font.size)) return at + "size";
            if (!s.halo && e.attrs.at("fill") != colour(s.font.colour)) return at + "colour";
            if (s.font.bold != (e.has("font-weight") && e.attrs.at("font-weight") == "bold"))
                return at + "weight";
            if (s.font.italic != e.has("font-style")) return at + "slant";
            continue;
        }
        const ShapeStyle st = shapeStyle(s.cls);
        if (e.attrs.at("fill") != colour(st.fill)) return at + "fill of \"" + s.cls + "\"";
        if ((e.has("stroke") ? e.attrs.at("stroke") : "none") != colour(st.stroke))
            return at + "stroke of \"" + s.cls + "\"";
        if (st.stroke >= 0 && (st.width > 0 ? !near(e, "stroke-width", st.width) : e.has("stroke-width")))
            return at + "width of \"" + s.cls + "\"";
        bool placed = true;
        switch (s.kind) {
        case Shape::Line:
            placed = near(e, "x1", s.pts[0].x) && near(e, "y1", s.pts[0].y) && near(e, "x2", s.pts[1].x) &&
                     near(e, "y2", s.pts[1].y);
            break;
        case Shape::Rect:
            placed = near(e, "x", s.pts[0].x) && near(e, "y", s.pts[0].y) && near(e, "width", s.pts[1].x) &&
                     near(e, "height", s.pts[1].y);
            break;
        case Shape::Circle:
            placed = near(e, "cx", s.pts[0].x) && near(e, "cy", s.pts[0].y) && near(e, "r", s.r);
            break;
        case Shape::Polygon:
        case Shape::Polyline: {
            const std::vector<Pt> pts = svgPoints(e);
            placed = pts.size() == s.pts.size();
            for (size_t k = 0; placed && k < pts.size(); ++k)
                placed =
                    std::fabs(pts[k].x - s.pts[k].x) <= 0.051 && std::fabs(pts[k].y - s.pts[k].y) <= 0.051;
            break;
        }
        case Shape::Sector:
        case Shape::Bow: {
            // The path starts at the centre for a sector, on the bow otherwise.
            const double a = s.a0 * M_PI / 180;
            const Pt start = s.kind == Shape::Sector
                                 ? s.pts[0]
                                 : Pt{s.pts[0].x + s.r * std::cos(a), s.pts[0].y - s.r * std::sin(a)};
            const QStringList d = QString::fromStdString(e.attrs.at("d")).mid(1).split(u' ');
            placed = d.size() > 2 && std::fabs(svgNum(d[0].toStdString()) - start.x) <= 0.051 &&
                     std::fabs(svgNum(d[1].toStdString()) - start.y) <= 0.051 &&
                     (s.kind == Shape::Sector) == e.attrs.at("d").ends_with('Z');
            break;
        }
        case Shape::Text:
            break;
        }
        if (!placed) return at + "place";
    }
    return {};
}

} // namespace fl::testing
