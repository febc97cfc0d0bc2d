// The page base and the card: where new content goes, how the column sits
// in a wide window, and how the wheel scrolls.
#include "app/widgets/page.h"
#include "app/widgets/valuefield.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {

// Exposes the column's layout, which only subclasses see.
class OpenPage : public app::Page {
  public:
    QVBoxLayout* column() const { return layout; }
};

// Wheel events reach a scroll area through its viewport, as from a mouse.
void wheel(QWidget* target, QPoint delta, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    const QPointF pos(10, 10);
    QWheelEvent event(pos, target->mapToGlobal(pos), QPoint(), delta, Qt::NoButton, mods, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(target, &event);
}

TEST(Page, cardAddedLaterStillComesBeforeTheStretch) {
    OpenPage page;
    page.addCard();
    page.show();
    QApplication::processEvents();
    app::Card* late = page.addCard();
    QVBoxLayout* col = page.column();
    ASSERT_EQ(col->count(), 3);
    EXPECT_EQ(col->itemAt(1)->widget(), late);
    EXPECT_NE(col->itemAt(2)->spacerItem(), nullptr);
}

TEST(Page, columnUsesNarrowWidthAndCentresInWideOne) {
    for (const auto& [width, columnWidth] : {std::pair{700, 700}, std::pair{1500, 1080}}) {
        SCOPED_TRACE(width);
        app::Page page;
        page.addCard();
        page.resize(width, 500);
        page.show();
        QApplication::processEvents();
        const QWidget* col = page.column();
        EXPECT_EQ(col->width(), columnWidth);
        EXPECT_EQ(col->x(), (page.viewport()->width() - col->width()) / 2);
    }
}

TEST(Page, wheelScrollsSmoothlyWithinTheRange) {
    app::Page page;
    for (int i = 0; i < 30; ++i)
        page.addCard()->addLabel(QString("Linje %1").arg(i))->setMinimumHeight(60);
    page.resize(600, 400);
    page.show();
    QApplication::processEvents();
    QScrollBar* bar = page.verticalScrollBar();
    ASSERT_GT(bar->maximum(), 10 * bar->singleStep());
    wheel(page.viewport(), QPoint(0, -120));
    wheel(page.viewport(), QPoint(0, -120));
    EXPECT_LT(bar->value(), 2 * 3 * bar->singleStep()) << "the wheel must animate, not jump";
    QTest::qWait(400);
    EXPECT_EQ(bar->value(), 2 * 3 * bar->singleStep());
    // A small touchpad step still moves one step, and upwards stops at the top.
    wheel(page.viewport(), QPoint(0, 30));
    QTest::qWait(300);
    EXPECT_EQ(bar->value(), 5 * bar->singleStep());
    wheel(page.viewport(), QPoint(0, 1200));
    QTest::qWait(300);
    EXPECT_EQ(bar->value(), 0);
    // Sideways is left to the scroll area, and so is Ctrl, which it turns into a page step at once.
    wheel(page.viewport(), QPoint(-120, 0));
    QTest::qWait(250);
    EXPECT_EQ(bar->value(), 0);
    wheel(page.viewport(), QPoint(0, -120), Qt::ControlModifier);
    EXPECT_EQ(bar->value(), bar->pageStep());
}

// The line under the edit changes at every keystroke without a layout pass
// of the field (and so of the page around it); a line wider than its room
// still gets the room. The symbol reads as on the sheets.
TEST(ValueField, interpretationLineAsksForRoomOnlyWhenItNeedsMore) {
    QWidget host;
    auto* column = new QVBoxLayout(&host);
    auto* field = new app::ValueField("cosphi_2", "Effektfaktor", "");
    column->addWidget(field);
    host.resize(500, 120);
    host.show();
    QApplication::processEvents();

    struct Counter : QObject {
        int passes = 0;
        bool eventFilter(QObject*, QEvent* e) override {
            passes += e->type() == QEvent::LayoutRequest;
            return false;
        }
    } counter;
    field->installEventFilter(&counter);
    for (const char* line : {"= 2", "= 23", "= 235 A", "= 23", ""}) {
        SCOPED_TRACE(line);
        field->setInterp(QString::fromUtf8(line));
        QApplication::processEvents();
        EXPECT_EQ(counter.passes, 0);
        EXPECT_EQ(field->interp->text(), QString::fromUtf8(line));
        EXPECT_EQ(field->interp->isVisible(), *line != 0);
    }
    field->setInterp(QString("= ") + QString(90, QChar('8')));
    QApplication::processEvents();
    EXPECT_EQ(counter.passes, 1);
    EXPECT_GE(field->minimumSizeHint().width(), field->interp->sizeHint().width());
    EXPECT_EQ(field->symbol->text().toStdString(), "cos φ<sub>2</sub>");
}

} // namespace
