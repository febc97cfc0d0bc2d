#include "app/widgets/page.h"

#include "app/widgets/helpers.h"
#include "app/widgets/valuefield.h"

#include <QEasingCurve>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

namespace app {

Page::Page(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    setFrameShape(QFrame::NoFrame);

    inner = new QWidget;
    inner->setObjectName("pageInner");
    inner->setMaximumWidth(1080);
    layout = new QVBoxLayout(inner);
    layout->setContentsMargins(22, 18, 22, 40);
    layout->setSpacing(14);
    layout->addStretch(1);
    setWidget(inner);
}

Card* Page::addCard() {
    auto* card = new Card(inner);
    addWidget(card);
    return card;
}

void Page::addWidget(QWidget* widget) { layout->insertWidget(std::max(0, layout->count() - 1), widget); }

QPropertyAnimation* Page::animation() {
    if (!scrollAnim) {
        scrollAnim = new QPropertyAnimation(verticalScrollBar(), "value", this);
        scrollAnim->setEasingCurve(QEasingCurve::OutCubic);
        connect(scrollAnim, &QPropertyAnimation::finished, this, [this] { scrollTarget = -1; });
    }
    return scrollAnim;
}

void Page::scrollToWidget(int y) {
    QScrollBar* bar = verticalScrollBar();
    QPropertyAnimation* anim = animation();
    anim->stop();
    scrollTarget = -1;
    anim->setDuration(220);
    anim->setStartValue(bar->value());
    anim->setEndValue(std::clamp(y, bar->minimum(), bar->maximum()));
    anim->start();
}

void Page::scrollToTop() {
    if (scrollAnim) scrollAnim->stop();
    scrollTarget = -1;
    verticalScrollBar()->setValue(0);
}

void Page::wheelEvent(QWheelEvent* event) {
    const int dy = event->angleDelta().y();
    if (event->modifiers() != Qt::NoModifier || event->buttons() != Qt::NoButton || dy == 0) {
        QScrollArea::wheelEvent(event);
        return;
    }
    QScrollBar* bar = verticalScrollBar();
    const int step = bar->singleStep();
    // One notch (120) is three steps; a touchpad's small deltas still move one.
    int distance = dy / 120 * step * 3;
    if (distance == 0) distance = dy > 0 ? step : -step;

    int target = scrollTarget < 0 ? bar->value() : scrollTarget;
    target = std::clamp(target - distance, bar->minimum(), bar->maximum());
    scrollTarget = target;

    QPropertyAnimation* anim = animation();
    anim->stop();
    anim->setDuration(160);
    anim->setStartValue(bar->value());
    anim->setEndValue(target);
    anim->start();
    event->accept();
}

Card::Card(QWidget* parent) : QFrame(parent) {
    setObjectName("card");
    layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->setSpacing(6);
}

QLabel* Card::addTitle(const QString& text) { return addLabel(text, "sh"); }

QLabel* Card::addSubtitle(const QString& text) { return addLabel(text, "crumb"); }

QLabel* Card::addLabel(const QString& text, const QString& cls) {
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);
    label->setOpenExternalLinks(false);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    if (!cls.isEmpty()) label->setProperty("class", cls);
    layout->addWidget(label);
    return label;
}

QGridLayout* Card::grid() {
    if (!fieldGrid) {
        fieldArea = new QWidget(this);
        fieldGrid = new QGridLayout(fieldArea);
        fieldGrid->setContentsMargins(0, 4, 0, 4);
        fieldGrid->setVerticalSpacing(8);
        fieldGrid->setHorizontalSpacing(10);
        fieldGrid->setColumnStretch(1, 1);
        layout->addWidget(fieldArea);
    }
    return fieldGrid;
}

ValueField* Card::addField(const QString& key, const QString& label, const QString& unit, const QString& def,
                           const QString& desc) {
    QGridLayout* g = grid();
    auto* field = new ValueField(key, label, unit, def, desc, fieldArea);
    g->addWidget(field, g->rowCount(), 0, 1, 2);
    fields.push_back(field);
    return field;
}

QHBoxLayout* Card::addRow(const QString& label, QWidget* widget) {
    QGridLayout* g = grid();
    const int row = g->rowCount();
    auto* name = new QLabel(label, fieldArea);
    name->setTextFormat(Qt::RichText);
    name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    name->setMinimumWidth(80);
    auto* box = new QHBoxLayout;
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(10);
    if (widget) box->addWidget(widget);
    box->addStretch(1);
    g->addWidget(name, row, 0);
    g->addLayout(box, row, 1);
    return box;
}

QHBoxLayout* Card::addButtonRow() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 8, 0, 0);
    row->addStretch(1);
    layout->addLayout(row);
    return row;
}

QPushButton* Card::addButton(QHBoxLayout* row, const QString& text, const QString& cls) {
    auto* button = makeButton(text, this, cls);
    row->insertWidget(std::max(0, row->count() - 1), button);
    return button;
}

std::map<std::string, std::string> Card::values() const {
    std::map<std::string, std::string> out;
    for (const ValueField* f : fields) out[f->key.toStdString()] = f->text().toStdString();
    return out;
}

}  // namespace app
