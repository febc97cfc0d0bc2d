// The figure builder: element writers that append SVG elements to a list,
// `fl::Fig` for a polygon figure drawn from model coordinates (fitted,
// centred, never distorted), and a chart with axes. Everything is text; no
// drawing library. Colours and fonts come from fl/fig/style.h.
//
// All writer coordinates are pixels. A writer given a coordinate that isn't
// finite writes nothing, so no figure ever holds "nan" or "inf".
#pragma once

#include "fl/expr/markup.h"
#include "fl/fig/place.h"
#include "fl/fig/style.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fl {

// One element of a drawing as a painter other than SVG takes it: the same
// pixels and class words as the element's SVG text. A figure redrawn at every
// slider step is painted from these, since an SVG renderer lays out and
// strokes each label anew.
struct Shape {
    enum Kind { Line, Rect, Circle, Polygon, Polyline, Sector, Bow, Text };
    Kind kind = Line;
    // Line: the two ends. Polygon, Polyline: the corners. Rect: the corner,
    // then width and height. Circle, Sector, Bow: the centre. Text: the
    // anchor point on the baseline.
    std::vector<Pt> pts;
    double r = 0;          // Circle, Sector, Bow: the radius; Rect: the corners' radius
    double a0 = 0, a1 = 0; // Sector, Bow: degrees as Canvas::arc takes them
    std::string cls;       // class words for shapeStyle(); empty for a text
    // Text: one run of letters without markup, its font, and whether this is
    // the halo in the panel colour painted before the letters.
    std::string text;
    TextStyle font;
    enum Anchor { Start, Middle, End } anchor = Start;
    bool halo = false;
};

// The elements of one drawing, in the order of painting.
class Canvas {
  public:
    void line(double x1, double y1, double x2, double y2, std::string_view cls);
    // `rx` 0 gives a square corner.
    void rect(double x, double y, double w, double h, std::string_view cls, double rx = 0);
    void circle(double cx, double cy, double r, std::string_view cls);
    void polygon(const std::vector<Pt>& points, std::string_view cls);
    void polyline(const std::vector<Pt>& points, std::string_view cls);
    // `d` is path data the caller has written with num().
    void path(const std::string& d, std::string_view cls);
    // A sector from angle a0 to a1 (degrees, counter-clockwise on the screen
    // as in the model, 0 pointing right), closed through the centre.
    void arc(double cx, double cy, double r, double a0, double a1, std::string_view cls);
    // Just the bow of that sector, open.
    void bow(double cx, double cy, double r, double a0, double a1, std::string_view cls);
    // A line of class `cls` + " ar" ending at the base of a head of class
    // `cls` + " ah". An arrow shorter than its head gets a smaller head.
    void arrow(double x1, double y1, double x2, double y2, std::string_view cls, double headLength = 13,
               double headWidth = 9);
    // A label with a halo in the panel colour behind it; `y` is the middle of
    // the line. `content` is plain text that may hold <sub>…</sub>. `anchor` is
    // "start", "middle" or "end".
    void text(double x, double y, std::string_view content, std::string_view anchor = "middle",
              std::string_view cls = {});
    // The same, at a smaller size if it would be wider than `maxWidth`.
    void textFit(double x, double y, std::string_view content, std::string_view anchor, std::string_view cls,
                 double maxWidth);
    // One text at the first of `spots` where it covers no line or text the
    // canvas keeps (see keepSpace); at the first spot when none is free.
    struct Spot {
        double x, y;
        std::string_view anchor;
    };
    void textAmong(const std::vector<Spot>& spots, std::string_view content, std::string_view cls);
    // From here on, remember the lines, arcs, circles and texts written, so
    // that labels can be placed clear of them.
    void keepSpace() { space = LabelSpace{{}, {}, boundW, boundH}; }
    std::optional<LabelSpace> space;

    // A raw element, already written. Neither this nor path() is recorded as
    // a shape: a drawing that uses them is for SVG only.
    void raw(std::string element) {
        items.push_back(std::move(element));
        unkept = true;
    }

    // The drawing's size, when known: a text that would cross an edge is
    // moved inside, and squeezed if it is wider than the drawing.
    void setBounds(double w, double h) {
        boundW = w, boundH = h;
        if (space) space->W = w, space->H = h;
    }
    // Whether texts get their halo. A halo costs the renderer twice the
    // letters; a drawing whose texts stand clear of its lines can go without.
    bool halos = true;

    // The whole SVG document of `w` by `h`.
    std::string document(int w, int h) const;
    std::string body() const;

    std::vector<std::string> items;
    // With keepShapes, every element but path() and raw() is also recorded
    // here, in the same order as `items`.
    bool keepShapes = true;
    std::vector<Shape> shapes;
    // The shapes, moved out, when they hold the whole drawing; none when a
    // path() or raw() element would be missing from them.
    std::vector<Shape> takeShapes();

  private:
    bool unkept = false; // a path() or raw() element was written
    double boundW = 0, boundH = 0;
    void keep(Shape::Kind kind, std::vector<Pt> pts, std::string_view cls, double r = 0, double a0 = 0,
              double a1 = 0);
    void pathItem(const std::string& d, std::string_view cls);
    void textAt(double x, double y, std::string_view content, std::string_view anchor, const TextStyle& style);
    // Where textAt would put the letters, after moving them inside the bounds.
    Box textBox(double& x, double& y, std::string_view content, std::string_view anchor, TextStyle& style) const;
};

// The head every figure shares.
std::string svgHead(int w, int h);

// A finished figure: the elements, its size and the caption that goes below
// it in the sheet (HTML). An empty body means no figure.
struct FigureOut {
    FigureOut() = default;
    FigureOut(std::string body, int w, int h, std::string caption = {}, std::vector<Shape> shapes = {})
        : body(std::move(body)), w(w), h(h), caption(std::move(caption)), shapes(std::move(shapes)) {}

    std::string body;
    int w = 460, h = 280;
    std::string caption;
    // The elements again, when the canvas kept all of them; empty otherwise.
    std::vector<Shape> shapes;
    bool empty() const { return body.empty(); }
};

// A figure as a painter takes it, carried beside its SVG in a sheet
// (RenderResult::figShapes): the natural size and the elements.
struct ShapeFigure {
    int w = 0, h = 0;
    std::vector<Shape> shapes;
};
// The figure's shapes for a sheet, moved out of it; null when it has none.
ShapeFigurePtr takeShapeFigure(FigureOut& fig);

// The standalone SVG text of a figure.
std::string svgDocument(const FigureOut& fig);
// The figure as an image of the current rendering pass, with its caption
// (fl/expr/markup.h's figure block), and its shapes beside it when it has them.
std::string figureMarkup(FigureOut&& fig);
// The same image tag, without a caption, for a figure shown at a size other
// than its own (a schematic narrowed to what a page has room for).
std::string figureShownAt(FigureOut&& fig, int width, int height);

struct FigEdge {
    int a = 0, b = 0;      // indices in `pts`
    std::string text = {}; // "a = 3 m", or the bare symbol when the value is missing
    std::string cls = {};  // "hl" for the side that is sought
};

struct FigMark {
    Pt p;
    std::string label = {};
    std::string cls = {};
};

// An arc at pts[vertex] between the directions to pts[from] and pts[to].
struct FigAngle {
    int vertex = 0, from = 1, to = 2;
    std::string label = {};
    std::string cls = {};  // text class after "angt"
    bool square = false;   // a right angle: a small square instead of an arc
    double radius = 18;    // of the arc; a second angle at one vertex takes another
};

// A text at the centroid.
struct FigInner {
    std::string text;
    std::string cls;
};

// One polygon figure in model coordinates (y up).
struct Fig : Canvas {
    std::vector<Pt> pts;
    int W = 460, H = 280;
    double mx = 90, my = 36;
    bool custom = false; // use W, H, mx, my; otherwise 460 by 280 with 90 and 36
    std::function<void(Fig&, Pt)> preDraw;  // with the centroid, before the edges
    std::function<void(Fig&, Pt)> postDraw; // after all labels
    std::vector<FigEdge> edges;
    std::optional<FigInner> inner;
    std::vector<FigMark> marks;
    std::vector<FigAngle> angles;
    bool strokeShape = true;
    std::string title, caption, note;

    // The mapping, set by fit().
    double scale = 1, ox = 0, oy = 0, minX = 0, minY = 0;

    // Scale and offsets from the extent of `pts` within W, H, mx, my:
    // centred, undistorted.
    void fit();
    Pt pt(Pt model) const;
    std::vector<Pt> polyPoints(const std::vector<Pt>& model) const;
    // title, caption and note as one line of HTML.
    std::string captionText() const;
};

// Sets 460 by 280 with margins 90 and 36 unless `custom`, widens the margins
// where a side's label would leave the figure, then: fit, the polygon,
// preDraw, highlighted edges again with "hlL", marks with labels pushed away
// from the centroid, edge labels on the outer side, the inner mark where it
// covers no line, angle arcs and their texts in free places, postDraw.
FigureOut drawFig(Fig& fig);

// A chart of curves with a grid and axes through the origin.
struct AxesPlot {
    int W = 460, H = 280;
    double left = 56, right = 24, top = 20, bottom = 36; // plot margins
    double x0 = 0, x1 = 1, y0 = -1, y1 = 1;             // data range; y is widened by 1.18
    std::string xLabel, yLabel;
    std::string xUnit;                                    // appended to tick labels on x
    struct Curve {
        std::vector<Pt> points;
        std::string cls; // "w1" or "w2"
    };
    std::vector<Curve> curves;
    // Drawn after the curves, with the chart's mapping.
    std::function<void(Canvas&, const std::function<Pt(Pt)>&)> overlay;
};
FigureOut drawAxes(const AxesPlot& plot);

// A tick step of 1, 2.5, 5 or 10 times a power of ten that cuts `span` into
// at most about `most` steps.
double tickStep(double span, int most = 13);

} // namespace fl
