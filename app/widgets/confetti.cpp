#include "app/widgets/confetti.h"

#include <QDateTime>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace app {

ConfettiOverlay::ConfettiOverlay(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground);
    if (parent) setGeometry(parent->rect());

    static const char* const palette[] = {"#2b63e6", "#ffcc33", "#4cc26b", "#ff6b6b", "#7ea5ff", "#ff9f43"};
    std::srand(unsigned(QDateTime::currentMSecsSinceEpoch()));
    const int w = std::max(1, width());
    parts.reserve(kParticles);
    for (int i = 0; i < kParticles; ++i) {
        Particle p;
        p.x = std::rand() % w;
        p.y = -20 - std::rand() % 200;
        p.vx = (std::rand() % 100 - 50) / 40.0;
        p.vy = (std::rand() % 30) / 10.0 + 2;
        p.angle = std::rand() % 360;
        p.spin = (std::rand() % 20 - 10) * 0.5;
        p.width = std::rand() % 6 + 6;
        p.height = std::rand() % 5 + 3;
        p.colour = QColor(palette[std::rand() % 6]);
        parts.push_back(p);
    }

    timer.setInterval(16);
    connect(&timer, &QTimer::timeout, this, &ConfettiOverlay::tick);
    timer.start();
    raise();
    show();
}

void ConfettiOverlay::tick() {
    ++ticks;
    for (Particle& p : parts) {
        p.x += p.vx;
        p.y += p.vy;
        p.vy += 0.05;
        p.angle += p.spin;
    }
    if (ticks > kLastTick) {
        timer.stop();
        deleteLater();
        return;
    }
    update();
}

double ConfettiOverlay::opacity() const {
    if (ticks <= 120) return 1.0;
    return std::max(0.0, 1.0 - (ticks - 120) / 50.0);
}

void ConfettiOverlay::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setOpacity(opacity());
    for (const Particle& p : parts) {
        painter.save();
        painter.translate(p.x, p.y);
        painter.rotate(p.angle);
        painter.fillRect(QRectF(-p.width / 2, -p.height / 2, p.width, p.height), p.colour);
        painter.restore();
    }
}

}  // namespace app
