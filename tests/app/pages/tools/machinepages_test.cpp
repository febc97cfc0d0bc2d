// The machine tools as a student uses them: the live figures following the
// keyboard without computing, the example and "Ryd", remembered values and
// choices; the numbers of the sheets are the tools' own tests' business.
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"
#include "tests/app/pages/tools/driving.h"

#include "app/pages/tools/machinepages.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/mainwindow.h"
#include "app/widgets/figureview.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

using app::test::contains;
using app::test::figureOf;
using app::test::noteOf;
using app::test::sheetOf;
using app::test::type;

// The letters the live figure paints, each run closed by "<" as in its SVG.
std::string paintedText(const app::ToolPage* page) {
    std::string out;
    for (const fl::Shape& s : figureOf(page)->figure().shapes)
        if (s.kind == fl::Shape::Text && !s.halo) out += s.text + "<";
    return out;
}

class MachinePagesTest : public FreshAppTest {
  protected:
    app::test::FakeHost host;
};

TEST_F(MachinePagesTest, liveFiguresFollowTheKeyboardWithoutComputing) {
    struct Row {
        const char* route;
        const char* key;
        const char* typed;
        const char* drawn;
    };
    const Row rows[] = {
        {"motor", "I_N", "11", " = 11 A<"},
        {"trafo", "N_S", "52", " = 52<"},
        {"trefase", "R", "20", " = 20 Ω<"},
    };
    app::MainWindow& w = open();
    for (const Row& r : rows) {
        SCOPED_TRACE(std::string(r.route) + " " + r.key);
        w.navigate(r.route);
        auto* page = current<app::ToolPage>();
        ASSERT_NE(page, nullptr);
        const std::string before = paintedText(page);
        EXPECT_FALSE(contains(before, r.drawn));
        type(page->field(r.key), r.typed);
        EXPECT_TRUE(contains(paintedText(page), r.drawn));
        EXPECT_FALSE(page->resultArea()->view()->hasContent());
        EXPECT_FALSE(page->noteView()->isVisible());
        EXPECT_FALSE(page->lastOut().ok);
    }
    EXPECT_TRUE(w.resultRecords().empty());
}

TEST_F(MachinePagesTest, exampleFillsThePlateOfEachKindAndRuns) {
    struct Row {
        const char* name;
        int phases; // index of "Trefaset" / "Enfaset"
        const char* voltage;
        const char* power; // as the example writes it, and kept for the next start
        const char* part;
    };
    const Row rows[] = {
        {"three-phase", 0, "400", "5,5k", "36,347 Nm"},
        {"single-phase", 1, "230", "750", "1016,6 W"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        host.results.clear();
        app::MotorPage page(&host);
        page.phaseChoice()->setCurrentIndex(r.phases);
        page.field("eta")->setText("0,5"); // the example's blanks are blanked
        QPushButton* example = nullptr;
        for (QPushButton* b : page.findChildren<QPushButton*>())
            if (b->text() == "Eksempel") example = b;
        ASSERT_NE(example, nullptr);
        QTest::mouseClick(example, Qt::LeftButton);
        EXPECT_EQ(page.field("U_N")->text(), r.voltage);
        EXPECT_EQ(page.field("eta")->text(), "");
        ASSERT_TRUE(page.lastOut().ok) << noteOf(&page);
        EXPECT_TRUE(contains(sheetOf(&page), r.part)) << sheetOf(&page);
        EXPECT_FALSE(host.results.empty());
        QApplication::processEvents();
        EXPECT_EQ(DataStore::instance().getString("motor_P_2"), r.power);
    }
}

TEST_F(MachinePagesTest, motorClearRestoresTheNetForTheKindOfMotor) {
    app::MotorPage page(&host);
    page.phaseChoice()->setCurrentIndex(1);
    EXPECT_EQ(page.field("U_N")->text(), "230");
    EXPECT_EQ(page.field("U_N")->desc->text(), "Spænding");
    page.field("U_N")->setText("240");
    page.field("f")->setText("60");
    page.field("I_N")->setText("5,2");
    page.run();
    QTest::mouseClick(page.clearButton(), Qt::LeftButton);
    EXPECT_EQ(page.field("U_N")->text(), "230");
    EXPECT_EQ(page.field("f")->text(), "50");
    EXPECT_EQ(page.field("I_N")->text(), "");
    EXPECT_FALSE(page.noteView()->isVisible());
    EXPECT_TRUE(contains(paintedText(&page), " = 230 V<"));

    // A voltage the student typed survives a change of kind; a default follows it
    // (the same rule as the cable tools' and the compensation's choice of net).
    page.field("U_N")->setText("240");
    page.phaseChoice()->setCurrentIndex(0);
    EXPECT_EQ(page.field("U_N")->text(), "240");
    EXPECT_EQ(page.field("U_N")->desc->text(), "Netspænding (mellem to faser)");
    page.field("U_N")->setText("230");
    page.phaseChoice()->setCurrentIndex(0);
    page.phaseChoice()->setCurrentIndex(1);
    page.phaseChoice()->setCurrentIndex(0);
    EXPECT_EQ(page.field("U_N")->text(), "400");
}

TEST_F(MachinePagesTest, starDeltaStartAddsItsCurrentToFigureAndSheet) {
    app::MotorPage page(&host);
    EXPECT_EQ(figureOf(&page)->sizeHint(), QSize(660, 256));
    page.startChoice()->setCurrentIndex(page.startChoice()->findData("yd"));
    EXPECT_EQ(figureOf(&page)->sizeHint(), QSize(660, 278));
    page.field("I_N")->setText("11");
    page.field("k_st")->setText("6");
    page.run();
    EXPECT_TRUE(contains(sheetOf(&page), "Startstrøm ved stjerne-trekant-start")) << sheetOf(&page);
}

// The plate figure stands beside the fields where it has room at nearly its
// own size, and above them where it hasn't, never squeezed.
TEST_F(MachinePagesTest, plateFigureStandsBesideTheFieldsOnlyWhereItIsNotSqueezed) {
    app::MotorPage page(&host);
    const QWidget* fields = page.form()->fieldArea;
    for (const int width : {1900, 1000}) {
        SCOPED_TRACE(width);
        page.resize(width, 800);
        page.show();
        QApplication::processEvents();
        QApplication::processEvents();
        const QRect fig(figureOf(&page)->mapTo(&page, QPoint()), figureOf(&page)->size());
        const QRect form(fields->mapTo(&page, QPoint()), fields->size());
        if (width > 1500) {
            EXPECT_GE(fig.left(), form.right());
            EXPECT_GE(fig.width(), 594);
        } else {
            EXPECT_LE(fig.bottom(), form.top());
            EXPECT_GE(fig.width(), 660);
        }
    }
}

TEST_F(MachinePagesTest, transformerRemembersItsValuesUntilCleared) {
    {
        app::TrafoPage page(&host);
        page.field("U_P")->setText("230");
        page.field("U_S")->setText("12");
        page.field("S")->setText("60");
        QTest::keyClick(page.field("S")->edit, Qt::Key_Return);
        EXPECT_TRUE(contains(sheetOf(&page), "0,26087 A"));
        QApplication::processEvents();
    }
    app::TrafoPage again(&host);
    EXPECT_EQ(again.field("U_P")->text(), "230");
    EXPECT_EQ(again.field("S")->text(), "60");
    EXPECT_TRUE(contains(paintedText(&again), " = 60 VA<"));
    QTest::mouseClick(again.clearButton(), Qt::LeftButton);
    EXPECT_TRUE(again.formEmpty());
    EXPECT_TRUE(DataStore::instance().get("trafo_U_P").isNull());
    EXPECT_FALSE(contains(paintedText(&again), " = 60 VA<"));
    app::TrafoPage third(&host);
    EXPECT_TRUE(third.formEmpty());
}

TEST_F(MachinePagesTest, connectionChoiceDecidesSheetAndFigureAndIsKept) {
    app::TrefasePage page(&host);
    EXPECT_EQ(page.connectionChoice()->currentData().toString(), "Y");
    page.field("R")->setText("20");
    const std::string star = paintedText(&page);
    page.connectionChoice()->setCurrentIndex(page.connectionChoice()->findData("D"));
    EXPECT_NE(paintedText(&page), star);
    EXPECT_TRUE(contains(paintedText(&page), "Trekant"));
    page.run();
    EXPECT_TRUE(contains(sheetOf(&page), "Trefaset belastning i trekant")) << sheetOf(&page);
    EXPECT_EQ(DataStore::instance().getString("tf_conn"), "D");
    app::TrefasePage again(&host);
    EXPECT_EQ(again.connectionChoice()->currentData().toString(), "D");
}

} // namespace
