// The circuit editor: the schematic as a picture with its hit boxes.
#include "app/pages/circuit/circuiteditor.h"

#include "app/shell/theme.h"
#include "fl/fig/style.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace app {

CircuitEditor::CircuitEditor(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMouseTracking(true);
    refresh();
}

void CircuitEditor::setCircuit(fl::Circuit* circuit) {
    source = circuit;
    refresh();
}

fl::Circuit& CircuitEditor::circuit() const { return source ? *source : fl::currentCircuit(); }

void CircuitEditor::refresh() {
    hits.clear();
    hover = -1;
    fl::Circuit& c = circuit();
    fl::SchematicOptions opt;
    opt.selection = c.sel;
    opt.halos = false;
    svg = fl::schematic(c, {}, opt, &hits, &natW, &natH);
    drawnColors = fl::figColors().slot;
    renderer.load(QByteArray::fromStdString(svg));
    picture = QImage();
    setMinimumHeight(pictureHeight());
    updateGeometry();
    update();
}

QSize CircuitEditor::sizeHint() const {
    const double w = std::min(880.0, natW);
    return {static_cast<int>(std::ceil(w)), static_cast<int>(std::ceil(w * natH / std::max(natW, 1.0)))};
}

double CircuitEditor::scaleFactor() const { return std::min(natW, static_cast<double>(width())) / std::max(natW, 1.0); }

int CircuitEditor::pictureHeight() const {
    return static_cast<int>(std::ceil(std::min(natW, static_cast<double>(width())) * natH / std::max(natW, 1.0)));
}

QPointF CircuitEditor::toWidget(QPointF svgPoint) const { return svgPoint * scaleFactor(); }

int CircuitEditor::hitAt(QPointF pos) const {
    const double f = scaleFactor();
    if (!(f > 0)) return -1;
    const double x = pos.x() / f, y = pos.y() / f;
    // A click on a component is the component's, even inside a frame.
    for (size_t i = 0; i < hits.size(); ++i)
        if (!hits[i].group && hits[i].contains(x, y)) return static_cast<int>(i);
    // A group comes after its children and before the groups around it, so
    // the first frame that holds the point is the innermost.
    for (size_t i = 0; i < hits.size(); ++i)
        if (hits[i].group && hits[i].contains(x, y)) return static_cast<int>(i);
    return -1;
}

void CircuitEditor::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), qcolor(colors().panel));
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::SmoothPixmapTransform, true);
    const double w = std::min(natW, static_cast<double>(width()));
    const double h = w * natH / std::max(natW, 1.0);
    // Drawing the SVG's texts is the slow part: the picture is drawn once per
    // change and size, and a hover only lays its wash over it.
    const double dpr = devicePixelRatioF();
    const QSize size(static_cast<int>(std::ceil(w * dpr)), static_cast<int>(std::ceil(h * dpr)));
    if (picture.size() != size || picture.devicePixelRatio() != dpr) {
        picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(dpr);
        picture.fill(Qt::transparent);
        if (renderer.isValid()) {
            QPainter ip(&picture);
            ip.setRenderHint(QPainter::Antialiasing, true);
            ip.setRenderHint(QPainter::TextAntialiasing, true);
            renderer.render(&ip, QRectF(0, 0, w, h));
        }
    }
    p.drawImage(QPointF(0, 0), picture);
    if (hover >= 0 && static_cast<size_t>(hover) < hits.size()) {
        const fl::HitBox& b = hits[static_cast<size_t>(hover)];
        // Fainter on a group, so that a frame under the pointer doesn't drown its parts.
        QColor c = qcolor(colors().accent);
        c.setAlpha(b.group ? 28 : 46);
        p.setPen(Qt::NoPen);
        p.setBrush(c);
        const double f = scaleFactor();
        p.drawRoundedRect(QRectF(b.x * f, b.y * f, b.w * f, b.h * f), 6 * f, 6 * f);
    }
}

void CircuitEditor::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The picture shrinks with the width; the widget's height follows it.
    setMinimumHeight(pictureHeight());
}

void CircuitEditor::mousePressEvent(QMouseEvent* event) {
    const int i = hitAt(event->position());
    emit selected(i < 0 ? QString() : QString::fromStdString(hits[static_cast<size_t>(i)].id));
}

void CircuitEditor::mouseMoveEvent(QMouseEvent* event) {
    const int i = hitAt(event->position());
    setCursor(i < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
    if (i == hover) return;
    hover = i;
    update();
}

void CircuitEditor::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    hover = -1;
    update();
}

void CircuitEditor::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // A hidden widget hears nothing of a change of theme.
    if (fl::figColors().slot != drawnColors) refresh();
}

void CircuitEditor::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // A change of theme reaches every widget as a new palette or stylesheet;
    // the drawing follows once the figure colours are no longer those it has.
    const QEvent::Type t = event->type();
    const bool themed = t == QEvent::PaletteChange || t == QEvent::ApplicationPaletteChange || t == QEvent::StyleChange;
    if (themed && fl::figColors().slot != drawnColors) refresh();
}

} // namespace app
