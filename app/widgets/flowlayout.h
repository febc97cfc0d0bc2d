// A layout that places its items left to right and wraps to a new line
// when the next one would pass the right edge; for chips and small buttons.
#pragma once

#include <QLayout>

#include <vector>

namespace app {

class FlowLayout : public QLayout {
public:
    explicit FlowLayout(QWidget* parent = nullptr, int hSpacing = 6, int vSpacing = 6);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    // Puts `w` at `index` (clamped to the end), as QBoxLayout::insertWidget does.
    void insertWidget(int index, QWidget* w);
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect& rect) override;

    int horizontalSpacing() const { return hSpacing; }
    int verticalSpacing() const { return vSpacing; }

private:
    // Measures (place false) or places the items inside rect; returns the height used.
    int doLayout(const QRect& rect, bool place) const;

    std::vector<QLayoutItem*> items;
    int hSpacing;
    int vSpacing;
};

}  // namespace app
