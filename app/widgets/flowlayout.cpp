#include "app/widgets/flowlayout.h"

#include <QWidget>

#include <algorithm>

namespace app {

FlowLayout::FlowLayout(QWidget* parent, int h, int v) : QLayout(parent), hSpacing(h), vSpacing(v) {
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() {
    for (QLayoutItem* item : items) delete item;
}

void FlowLayout::addItem(QLayoutItem* item) { items.push_back(item); }

void FlowLayout::insertWidget(int index, QWidget* w) {
    addChildWidget(w);
    const auto at = index < 0 || index > count() ? items.end() : items.begin() + index;
    items.insert(at, new QWidgetItem(w));
    invalidate();
}

int FlowLayout::count() const { return int(items.size()); }

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items[size_t(index)] : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (index < 0 || index >= count()) return nullptr;
    QLayoutItem* item = items[size_t(index)];
    items.erase(items.begin() + index);
    invalidate();
    return item;
}

Qt::Orientations FlowLayout::expandingDirections() const { return {}; }

bool FlowLayout::hasHeightForWidth() const { return true; }

int FlowLayout::heightForWidth(int width) const { return doLayout(QRect(0, 0, width, 0), false); }

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* item : items) size = size.expandedTo(item->minimumSize());
    const QMargins m = contentsMargins();
    return size + QSize(m.left() + m.right(), m.top() + m.bottom());
}

QSize FlowLayout::sizeHint() const { return minimumSize(); }

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    doLayout(rect, true);
}

int FlowLayout::doLayout(const QRect& rect, bool place) const {
    const QMargins m = contentsMargins();
    const QRect area = rect.adjusted(m.left(), m.top(), -m.right(), -m.bottom());
    int x = area.x();
    int y = area.y();
    int lineHeight = 0;
    bool lineEmpty = true;
    for (QLayoutItem* item : items) {
        if (item->widget() && item->widget()->isHidden()) continue;
        const QSize hint = item->sizeHint();
        // A full line wraps; an item wider than the area still gets a line of its own.
        if (x + hint.width() > area.right() + 1 && !lineEmpty) {
            x = area.x();
            y += lineHeight + vSpacing;
            lineHeight = 0;
        }
        lineEmpty = false;
        if (place) item->setGeometry(QRect(QPoint(x, y), hint));
        x += hint.width() + hSpacing;
        lineHeight = std::max(lineHeight, hint.height());
    }
    return y + lineHeight + m.bottom() - rect.y();
}

}  // namespace app
