#include "app/widgets/svgview.h"

#include <QPainter>
#include <QSvgRenderer>

namespace app {

SvgView::SvgView(QWidget* parent) : QWidget(parent), renderer(new QSvgRenderer(this)) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SvgView::setSvg(const std::string& svg) {
    const QSize before = natural;
    text = svg;
    if (svg.empty() || !renderer->load(QByteArray::fromStdString(svg)))
        natural = QSize();
    else
        natural = renderer->defaultSize();
    rendered = QImage();
    // A slider's redraw keeps the size: only a new size costs a layout pass.
    if (natural != before) updateGeometry();
    update();
}

QSize SvgView::sizeHint() const {
    return natural.isEmpty() ? QSize(0, 0) : natural;
}

int SvgView::heightForWidth(int width) const {
    if (natural.isEmpty()) return 0;
    return width >= natural.width() ? natural.height() : natural.height() * width / natural.width();
}

void SvgView::paintEvent(QPaintEvent*) {
    if (natural.isEmpty()) return;
    QSizeF size = natural;
    if (size.width() > width()) size *= double(width()) / size.width();
    if (size.height() > height()) size *= double(height()) / size.height();
    const qreal ratio = devicePixelRatioF();
    const QSize pixels = (size * ratio).toSize();
    if (pixels.isEmpty()) return;
    if (rendered.size() != pixels) {
        rendered = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        rendered.fill(Qt::transparent);
        QPainter r(&rendered);
        r.setRenderHint(QPainter::Antialiasing, true);
        r.setRenderHint(QPainter::TextAntialiasing, true);
        renderer->render(&r, QRectF(QPointF(0, 0), QSizeF(pixels)));
        rendered.setDevicePixelRatio(ratio);
    }
    QPainter p(this);
    p.drawImage(QPointF((width() - size.width()) / 2, 0), rendered);
}

} // namespace app
