// The small tools and the alternating-current pages as a student and a
// teacher use them: each route builds its page, forms offer what their
// choices allow, results reach the strip, pictures follow what is picked,
// and the demonstration redraws at every slider move.
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"
#include "tests/app/pages/tools/driving.h"

#include "app/pages/tools/acpages.h"
#include "app/pages/tools/farvepage.h"
#include "app/pages/tools/smallpages.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/widgets/figureview.h"
#include "app/widgets/svgview.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTest>

#include <cmath>

namespace {

using app::test::contains;
using app::test::sheetOf;

double resultOf(const app::test::FakeHost& host, const QString& name) {
    for (const auto& r : host.results)
        if (r.name == name) return r.value;
    return NAN;
}

void pick(QComboBox* combo, const char* data) {
    const int at = combo->findData(QString::fromUtf8(data));
    ASSERT_GE(at, 0) << data;
    combo->setCurrentIndex(at);
}

void enter(app::ToolPage* page, const char* key) {
    QTest::keyClick(page->field(key)->edit, Qt::Key_Return);
}

class SmallToolsTest : public FreshAppTest {
  protected:
    app::test::FakeHost host;
};

TEST_F(SmallToolsTest, unitPageOffersTheUnitsOfTheChosenKind) {
    app::EnhederPage page(&host);
    page.show();
    pick(page.kindChoice(), "energi");
    EXPECT_EQ(page.fromChoice()->count(), 6);
    EXPECT_FALSE(page.unitChoice()->isVisibleTo(&page));
    pick(page.fromChoice(), "kWh");
    page.field("x")->setText("2,5");
    enter(&page, "x");
    EXPECT_TRUE(contains(sheetOf(&page), "2,5 kWh = 9000000 J = 9000 kJ = 9 MJ")) << sheetOf(&page);

    pick(page.kindChoice(), "prefiks");
    EXPECT_TRUE(page.unitChoice()->isVisibleTo(&page));
    EXPECT_EQ(page.fromChoice()->count(), 8);
    EXPECT_EQ(page.fromChoice()->currentData().toString(), "p");
}

TEST_F(SmallToolsTest, resistorListSaysWhatItReadAsItIsTyped) {
    app::ResPage page(&host);
    app::ValueField* list = page.field("liste");
    QTest::keyClicks(list->edit, "100; 220");
    EXPECT_EQ(list->interp->text(), "= 2 modstande: 100 Ω · 220 Ω");
    pick(page.findChild<QComboBox*>(), "parallel");
    enter(&page, "liste");
    EXPECT_DOUBLE_EQ(resultOf(host, "R<sub>total</sub>"), 68.75);

    QTest::keyClicks(list->edit, "; x");
    EXPECT_TRUE(list->interp->text().contains("kan ikke læses"));
}

TEST_F(SmallToolsTest, colourPageDrawsTheRingsAsTheyArePicked) {
    app::FarvePage page(&host);
    page.show();
    // It opens on a resistor a student is likely to hold: 4,7 kΩ.
    EXPECT_TRUE(contains(page.preview()->svg(), "#fbc02d")); // yellow
    pick(page.ringChoice(1), "rod");
    EXPECT_TRUE(contains(page.preview()->svg(), "#d32f2f"));
    QTest::mouseClick(page.runButton(), Qt::LeftButton);
    EXPECT_TRUE(contains(sheetOf(&page), "2,7 kΩ ± 5 %")) << sheetOf(&page);

    // Five rings: the third is a digit now, the fourth the multiplier.
    pick(page.countChoice(), "5");
    EXPECT_GE(page.ringChoice(3)->findData("sort"), 0);
    EXPECT_LT(page.ringChoice(3)->findData("guld"), 0);
    EXPECT_GE(page.ringChoice(4)->findData("guld"), 0);
    EXPECT_TRUE(page.ringChoice(5)->isVisibleTo(&page));
    EXPECT_FALSE(page.ringChoice(6)->isVisibleTo(&page));

    // The other way: the rings give way to the value, and the picture waits for the answer.
    pick(page.directionChoice(), "vaerdi");
    EXPECT_FALSE(page.ringChoice(1)->isVisibleTo(&page));
    EXPECT_TRUE(page.field("R")->isVisibleTo(&page));
    EXPECT_TRUE(page.preview()->isEmpty());
    page.field("R")->setText("4,5k");
    pick(page.seriesChoice(), "E12");
    pick(page.countChoice(), "4");
    enter(&page, "R");
    EXPECT_TRUE(contains(sheetOf(&page), "gul – violet – rød – sølv")) << sheetOf(&page);
}

TEST_F(SmallToolsTest, vectorPageAsksForWhatItsFormNeeds) {
    app::VecPage vec(&host);
    vec.show();
    EXPECT_TRUE(vec.field("v1")->isVisibleTo(&vec));
    EXPECT_FALSE(vec.field("x1")->isVisibleTo(&vec));
    pick(vec.formChoice(), "rekt");
    EXPECT_FALSE(vec.field("V4")->isVisibleTo(&vec));
    EXPECT_TRUE(vec.field("y4")->isVisibleTo(&vec));
    vec.field("x1")->setText("3");
    vec.field("y2")->setText("4");
    enter(&vec, "y2");
    EXPECT_DOUBLE_EQ(resultOf(host, "v<sub>sum</sub>"), 5);
}

TEST_F(SmallToolsTest, demonstrationRedrawsAtEveryMoveAndFindsResonance) {
    app::AcDemoPage page(&host);
    const std::string curves = page.curves()->figure().body, readout = page.readout()->text().toStdString();
    EXPECT_FALSE(page.phasors()->isEmpty());
    EXPECT_FALSE(page.resonance()->isEmpty());

    QSlider* f = page.slider(app::AcDemoPage::F);
    f->setValue(f->value() + 1);
    EXPECT_NE(page.curves()->figure().body, curves);
    EXPECT_NE(page.readout()->text().toStdString(), readout);
    // Only the moved quantity changes.
    EXPECT_DOUBLE_EQ(page.setting().C, 10e-6);

    QTest::mouseClick(page.resonanceButton(), Qt::LeftButton);
    const double f0 = 1 / (2 * M_PI * std::sqrt(0.5 * 10e-6));
    EXPECT_DOUBLE_EQ(page.setting().f, f0);
    EXPECT_TRUE(page.readout()->text().contains("Resonans"));
    EXPECT_FALSE(page.resonanceButton()->isEnabled());

    // A change of theme draws the same setting in the other colours.
    const std::string light = page.curves()->figure().body;
    app::setThemeMode(app::ThemeDark);
    page.onTheme();
    EXPECT_NE(page.curves()->figure().body, light);
}

// The line of values changes at every step without a layout pass of the
// page; when it needs more or fewer lines, it still gets them.
TEST_F(SmallToolsTest, demonstrationsReadoutAlwaysHasRoomForItsLines) {
    app::AcDemoPage page(&host);
    QLabel* readout = page.readout();
    for (const int width : {1100, 520}) {
        SCOPED_TRACE(width);
        page.resize(width, 900);
        page.QWidget::show();
        QApplication::processEvents();
        QSlider* f = page.slider(app::AcDemoPage::F);
        for (const int to : {f->value() + 1, f->maximum(), f->minimum()}) {
            f->setValue(to);
            QApplication::processEvents();
            EXPECT_EQ(readout->height(), readout->heightForWidth(readout->width())) << to;
        }
        QTest::mouseClick(page.resonanceButton(), Qt::LeftButton);
        QApplication::processEvents();
        EXPECT_EQ(readout->height(), readout->heightForWidth(readout->width()));
    }
}

} // namespace
