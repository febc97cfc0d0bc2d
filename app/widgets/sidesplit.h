// A main widget with a side widget next to it, or the side below the main
// one when the space is narrower than a threshold.
#pragma once

#include <QWidget>

class QBoxLayout;

namespace app {

class SideSplit : public QWidget {
    Q_OBJECT
public:
    explicit SideSplit(int threshold = 820, QWidget* parent = nullptr);

    void setWidgets(QWidget* main, QWidget* side);
    bool isStacked() const { return stacked; }
    int threshold() const { return limit; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    QBoxLayout* box = nullptr;
    QWidget* mainWidget = nullptr;
    QWidget* side = nullptr;
    int limit;
    bool stacked = false;
};

}  // namespace app
