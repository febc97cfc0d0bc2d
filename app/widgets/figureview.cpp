#include "app/widgets/figureview.h"

#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

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

// A halo: the letters widened by 2 px on every side in the panel colour, as
// the SVG's stroke of 4 with round joins widens them. The letters come from
// the glyph cache and are widened by a disc, which costs far less than
// stroking their outlines; kept per text and font.
struct Halo {
    QImage image;
    QPointF topLeft; // from the run's start on the baseline
};

QImage widened(const QImage& letters, double radius, QRgb colour) {
    struct Tap {
        int dx, dy;
        int weight; // of 256: the disc's edge is soft
    };
    std::vector<Tap> taps;
    const int reach = int(std::ceil(radius));
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            const double cover = std::clamp(radius + 0.5 - std::hypot(dx, dy), 0.0, 1.0);
            if (cover > 0) taps.push_back({dx, dy, int(std::lround(cover * 256))});
        }
    const int w = letters.width(), h = letters.height();
    QImage out(letters.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < w; ++x) {
            int most = 0;
            for (const Tap& t : taps) {
                const int sx = x + t.dx, sy = y + t.dy;
                if (sx < 0 || sy < 0 || sx >= w || sy >= h) continue;
                const int a = qAlpha(reinterpret_cast<const QRgb*>(letters.constScanLine(sy))[sx]) * t.weight;
                most = std::max(most, a);
            }
            line[x] = qPremultiply(qRgba(qRed(colour), qGreen(colour), qBlue(colour), most >> 8));
        }
    }
    return out;
}

const Halo& haloFor(const QString& text, const FontEntry& font, quint64 key, double scale, QRgb colour,
                    qreal ratio) {
    static QHash<QString, Halo> halos;
    // Numbers change at every step: the cache starts over rather than grow.
    if (halos.size() > 4000) halos.clear();
    const QString id = text + QChar(0x1f) + QString::number(key) + QChar(0x1f) + QString::number(colour) +
                       QChar(0x1f) + QString::number(ratio);
    if (auto it = halos.constFind(id); it != halos.constEnd()) return *it;
    const double grow = 2 * scale;
    const QRectF box = font.metrics.boundingRect(text).adjusted(-grow - 2, -grow - 2, grow + 2, grow + 2);
    QImage letters((box.size() * ratio).toSize() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
    letters.setDevicePixelRatio(ratio);
    letters.fill(Qt::transparent);
    QPainter q(&letters);
    q.setFont(font.font);
    q.setPen(Qt::black);
    q.drawText(-box.topLeft(), text);
    q.end();
    Halo h;
    h.topLeft = box.topLeft();
    h.image = widened(letters, grow * ratio, colour);
    h.image.setDevicePixelRatio(ratio);
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
    // The figure lies on a card of the panel colour: painting that colour
    // itself spares the card and the window beneath a repaint at every step.
    setAttribute(Qt::WA_OpaquePaintEvent);
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
    QPainter p(this);
    p.fillRect(rect(), QColor(QLatin1String(fl::figColors().slot[1].c_str())));
    if (natural.isEmpty()) return;
    double scale = 1;
    if (natural.width() > width()) scale = double(width()) / natural.width();
    if (natural.height() * scale > height()) scale = double(height()) / natural.height();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    paintShapes(p, fig.shapes, scale, QPointF((width() - natural.width() * scale) / 2, 0));
}

} // namespace app
