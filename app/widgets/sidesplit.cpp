#include "app/widgets/sidesplit.h"

#include <QBoxLayout>
#include <QResizeEvent>

namespace app {

SideSplit::SideSplit(int threshold, QWidget* parent) : QWidget(parent), limit(threshold) {
    box = new QBoxLayout(QBoxLayout::LeftToRight, this);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(14);
}

void SideSplit::setWidgets(QWidget* main, QWidget* sideWidget) {
    mainWidget = main;
    side = sideWidget;
    if (main) box->addWidget(main, 1);
    if (side) box->addWidget(side, 0);
    arrange();
}

void SideSplit::arrange() {
    box->setDirection(stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    if (side) box->setAlignment(side, stacked ? Qt::AlignLeft : Qt::AlignTop);
    if (mainWidget) box->setStretchFactor(mainWidget, 1);
    if (side) box->setStretchFactor(side, 0);
}

void SideSplit::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!side) return;
    const bool narrow = event->size().width() < limit;
    if (narrow == stacked) return;
    stacked = narrow;
    arrange();
}

}  // namespace app
