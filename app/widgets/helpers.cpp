#include "app/widgets/helpers.h"

#include <QEasingCurve>
#include <QGraphicsOpacityEffect>
#include <QPointer>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QStyle>
#include <QVariant>

namespace app {

void repolish(QWidget* widget) {
    if (!widget) return;
    QStyle* style = widget->style();
    style->unpolish(widget);
    style->polish(widget);
    widget->update();
}

void setClass(QWidget* widget, const QString& name) {
    if (!widget) return;
    if (widget->property("class").toString() == name) return;
    widget->setProperty("class", name);
    if (widget->testAttribute(Qt::WA_WState_Polished)) repolish(widget);
}

QPushButton* makeButton(const QString& text, QWidget* parent, const QString& cls) {
    auto* b = new QPushButton(text, parent);
    if (!cls.isEmpty()) b->setProperty("class", cls);
    b->setCursor(Qt::PointingHandCursor);
    return b;
}

void fadeIn(QWidget* widget) {
    if (!widget) return;
    auto* effect = new QGraphicsOpacityEffect(widget);
    effect->setOpacity(0.15);
    widget->setGraphicsEffect(effect);
    // Parented to the widget: the effect is deleted when the fade ends.
    auto* anim = new QPropertyAnimation(effect, "opacity", widget);
    anim->setDuration(350);
    anim->setStartValue(0.15);
    anim->setEndValue(1.0);
    anim->setEasingCurve(QEasingCurve::OutCubic);
    QPointer<QGraphicsOpacityEffect> mine(effect);
    QObject::connect(anim, &QPropertyAnimation::finished, widget, [widget, mine] {
        // A later fade may already have replaced this effect.
        if (mine && widget->graphicsEffect() == mine) widget->setGraphicsEffect(nullptr);
    });
    anim->start(QAbstractAnimation::DeleteWhenStopped);
}

}  // namespace app
