// The formula painter: draws an expression tree as typeset mathematics, with
// two-dimensional fractions, root signs over their radicands, real
// superscripts and sub-scripted symbols. Sheets show these as their "m:N"
// images; the layout is a small box model of our own (width, height above
// and depth below the baseline), drawn with vector strokes so that it stays
// sharp at any device pixel ratio.
#pragma once

#include "fl/expr/node.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QSizeF>

class QPainter;

namespace app {

struct MathStyle {
    QFont font; // the main line's face and size
    QColor color = Qt::black;
    double lineHeight = 18; // height of the main line, in logical pixels
    // The text the image stands in, and how. The text engine centres an
    // inline image a quarter x-height above the baseline; an image alone in
    // a table cell of a row of centred cells lies on the row's middle. The
    // image is padded so that either way its fraction axis meets the axis
    // of that text. An empty family means the math font itself.
    QFont around;
    bool ownCell = false;
};

// The sheets' style: the math font at 13 pt in the text colour, main line
// 18 pixels; both follow the text scale. `ownCell` for an image that stands
// alone in a cell of an equation table; `pt` (scaled already) for one in a
// formula line of another size.
MathStyle sheetMathStyle(bool ownCell = false, double pt = 0);

// Where the image's content lies, in logical pixels.
struct MathMetrics {
    QSizeF size;         // the whole image, padding included
    double baseline = 0; // of the main line, from the top
    double axis = 0;     // the fraction bars' height, from the top
    double ink = 0;      // width of the expression itself, without padding
};

// The document sets images of class "math" to vertical-align: middle.
MathMetrics mathMetrics(const fl::NodePtr& node, const MathStyle& style);
QImage mathImage(const fl::NodePtr& node, const MathStyle& style, double dpr);
// Paints the same image with its top left corner at `topLeft`.
void paintMath(QPainter& painter, const QPointF& topLeft, const fl::NodePtr& node, const MathStyle& style);

} // namespace app
