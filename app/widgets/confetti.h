// A short burst of paper over a widget after a right answer: 90 particles,
// under three seconds, then the overlay deletes itself.
#pragma once

#include <QColor>
#include <QTimer>
#include <QWidget>

#include <vector>

namespace app {

class ConfettiOverlay : public QWidget {
    Q_OBJECT
public:
    struct Particle {
        double x, y, vx, vy, angle, spin, width, height;
        QColor colour;
    };

    explicit ConfettiOverlay(QWidget* parent);

    const std::vector<Particle>& particles() const { return parts; }
    int tickCount() const { return ticks; }
    // One frame of motion; the timer calls it every 16 ms.
    void tick();
    // 1 until tick 120, then fading to 0 over 50 ticks.
    double opacity() const;

    static constexpr int kParticles = 90;
    static constexpr int kLastTick = 170;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<Particle> parts;
    QTimer timer;
    int ticks = 0;
};

}  // namespace app
