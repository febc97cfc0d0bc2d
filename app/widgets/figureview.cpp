#include "app/widgets/figureview.h"

#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <array>
#include <cmath>

namespace app {

namespace {

// A font and its metrics by size, weight and slant, so that a label costs
// no font lookup.
struct FontEntry {
    QFont font;
    QFontMetricsF metrics;
};

quint64 fontKey(const fl::TextStyle& st, double scale, int dpi) {
    return quint64(std::lround(st.size * scale * 100)) << 24 | quint64(dpi) << 12 | quint64(st.weight) << 2 |
           (st.bold ? 2u : 0u) | (st.italic ? 1u : 0u);
}

const FontEntry& fontFor(const fl::TextStyle& st, double scale, int dpi) {
    static QHash<quint64, FontEntry> fonts;
    const quint64 key = fontKey(st, scale, dpi);
    if (auto it = fonts.constFind(key); it != fonts.constEnd()) return *it;
    QFont f;
    // The figures' own family list; where Segoe UI is absent the system's
    // sans takes over, as it does for the same figure in a sheet.
    f.setFamilies({QStringLiteral("Segoe UI"), QStringLiteral("system-ui"), QStringLiteral("sans-serif")});
    // Sizes are pixels and may be fractional (12.5): a point size carries them.
    f.setPointSizeF(st.size * scale * 72.0 / dpi);
    if (st.bold) f.setWeight(QFont::Bold);
    else if (st.weight) f.setWeight(QFont::Weight(st.weight));
    f.setItalic(st.italic);
    return *fonts.insert(key, {f, QFontMetricsF(f)});
}

// A halo: the letters' outline filled and stroked 4 px wide with round
// joins in the panel colour, rendered once and kept, since the stroker is
// what makes labels dear.
struct Halo {
    QImage image;
    QPointF topLeft; // from the run's start on the baseline
};

const Halo& haloFor(const QString& text, const FontEntry& font, quint64 key, double scale, QRgb colour,
                    qreal ratio) {
    static QHash<QString, Halo> halos;
    // Numbers change at every step: the cache starts over rather than grow.
    if (halos.size() > 4000) halos.clear();
    const QString id = text + QChar(0x1f) + QString::number(key) + QChar(0x1f) + QString::number(colour) +
                       QChar(0x1f) + QString::number(ratio);
    if (auto it = halos.constFind(id); it != halos.constEnd()) return *it;
    QPainterPath path;
    path.addText(0, 0, font.font, text);
    const double w = 4 * scale;
    const QRectF box = path.boundingRect().adjusted(-w / 2 - 1, -w / 2 - 1, w / 2 + 1, w / 2 + 1);
    Halo h;
    h.topLeft = box.topLeft();
    h.image = QImage((box.size() * ratio).toSize() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
    h.image.setDevicePixelRatio(ratio);
    h.image.fill(Qt::transparent);
    QPainter q(&h.image);
    q.setRenderHint(QPainter::Antialiasing, true);
    q.translate(-box.topLeft());
    const QColor c = QColor::fromRgb(colour);
    q.setPen(QPen(c, w, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    q.setBrush(c);
    q.drawPath(path);
    q.end();
    return *halos.insert(id, std::move(h));
}

void applyStyle(QPainter& p, const fl::ShapeStyle& st, const std::array<QColor, 15>& colours, double scale) {
    if (st.stroke >= 0) {
        // An SVG stroke without a width is 1 wide, with butt ends and mitred corners.
        const double width = st.width > 0 ? st.width : 1;
        QPen pen(colours[size_t(st.stroke)], width * scale);
        pen.setCapStyle(st.roundCap ? Qt::RoundCap : Qt::FlatCap);
        pen.setJoinStyle(st.roundJoin ? Qt::RoundJoin : Qt::MiterJoin);
        pen.setMiterLimit(4);
        if (st.dashOn > 0) pen.setDashPattern({st.dashOn / width, st.dashOff / width});
        p.setPen(pen);
    } else {
        p.setPen(Qt::NoPen);
    }
    p.setBrush(st.fill >= 0 ? QBrush(colours[size_t(st.fill)]) : QBrush(Qt::NoBrush));
}

} // namespace

void paintShapes(QPainter& p, const std::vector<fl::Shape>& shapes, double scale, QPointF offset) {
    const fl::FigColors& palette = fl::figColors();
    std::array<QColor, 15> colours;
    for (size_t k = 0; k < colours.size(); ++k)
        colours[k] = QColor(QLatin1String(palette.slot[k].c_str()));
    const int dpi = p.device()->logicalDpiY();
    const qreal ratio = p.device()->devicePixelRatioF();
    const auto at = [&](fl::Pt pt) { return QPointF(offset.x() + pt.x * scale, offset.y() + pt.y * scale); };
    QPolygonF poly;
    for (const fl::Shape& s : shapes) {
        if (s.kind == fl::Shape::Text) {
            const FontEntry& font = fontFor(s.font, scale, dpi);
            const QString text = QString::fromStdString(s.text);
            QPointF start = at(s.pts.front());
            if (s.anchor != fl::Shape::Start) {
                const double w = font.metrics.horizontalAdvance(text);
                start.rx() -= s.anchor == fl::Shape::Middle ? w / 2 : w;
            }
            if (s.halo) {
                const Halo& h = haloFor(text, font, fontKey(s.font, scale, dpi), scale,
                                        colours[1].rgb(), ratio);
                p.drawImage(start + h.topLeft, h.image);
            } else {
                p.setFont(font.font);
                p.setPen(colours[size_t(s.font.colour)]);
                p.drawText(start, text);
            }
            continue;
        }
        applyStyle(p, fl::shapeStyle(s.cls), colours, scale);
        switch (s.kind) {
        case fl::Shape::Line:
            p.drawLine(at(s.pts[0]), at(s.pts[1]));
            break;
        case fl::Shape::Rect: {
            const QRectF r(at(s.pts[0]), QSizeF(s.pts[1].x * scale, s.pts[1].y * scale));
            if (s.r > 0) p.drawRoundedRect(r, s.r * scale, s.r * scale);
            else p.drawRect(r);
            break;
        }
        case fl::Shape::Circle:
            p.drawEllipse(at(s.pts[0]), s.r * scale, s.r * scale);
            break;
        case fl::Shape::Polygon:
        case fl::Shape::Polyline:
            poly.clear();
            poly.reserve(qsizetype(s.pts.size()));
            for (const fl::Pt& pt : s.pts)
                poly.append(at(pt));
            if (s.kind == fl::Shape::Polygon) p.drawPolygon(poly, Qt::WindingFill);
            else p.drawPolyline(poly);
            break;
        case fl::Shape::Sector:
        case fl::Shape::Bow: {
            // Angles count counter-clockwise on the screen from the right, as Qt's do.
            const QPointF c = at(s.pts[0]);
            const double r = s.r * scale;
            const QRectF box(c.x() - r, c.y() - r, 2 * r, 2 * r);
            QPainterPath path;
            if (s.kind == fl::Shape::Sector) path.moveTo(c);
            else path.arcMoveTo(box, s.a0);
            path.arcTo(box, s.a0, s.a1 - s.a0);
            if (s.kind == fl::Shape::Sector) path.closeSubpath();
            p.drawPath(path);
            break;
        }
        case fl::Shape::Text:
            break;
        }
    }
}

FigureView::FigureView(QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void FigureView::setFigure(fl::FigureOut figure) {
    const QSize before = natural;
    fig = std::move(figure);
    natural = fig.empty() ? QSize() : QSize(fig.w, fig.h);
    // A slider's redraw keeps the size: only a new size costs a layout pass.
    if (natural != before) updateGeometry();
    update();
}

QSize FigureView::sizeHint() const {
    return natural.isEmpty() ? QSize(0, 0) : natural;
}

int FigureView::heightForWidth(int width) const {
    if (natural.isEmpty()) return 0;
    return width >= natural.width() ? natural.height() : natural.height() * width / natural.width();
}

void FigureView::paintEvent(QPaintEvent*) {
    if (natural.isEmpty()) return;
    double scale = 1;
    if (natural.width() > width()) scale = double(width()) / natural.width();
    if (natural.height() * scale > height()) scale = double(height()) / natural.height();
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    paintShapes(p, fig.shapes, scale, QPointF((width() - natural.width() * scale) / 2, 0));
}

} // namespace app
