// The cable tools as a student uses them: from the home page to a sized
// cable, the answer reused in the voltage drop, refusals that keep the form,
// the cable chooser filling R and X, and "Ryd".
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"
#include "tests/app/pages/tools/driving.h"

#include "app/pages/formulas/homepage.h"
#include "app/pages/tools/cablepages.h"
#include "app/pages/tools/cablepick.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/mainwindow.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

using app::test::clickLink;
using app::test::contains;
using app::test::noteOf;
using app::test::sheetOf;
using app::test::type;

using ToolPagesTest = FreshAppTest;

TEST_F(ToolPagesTest, studentSizesACableFromHomeAndReusesTheCurrentInTheVoltageDrop) {
    app::MainWindow& w = open();
    auto* home = current<app::HomePage>();
    ASSERT_NE(home, nullptr);
    ASSERT_TRUE(clickLink(home->view(), "go:kabel"));
    auto* kabel = current<app::KabelPage>();
    ASSERT_NE(kabel, nullptr);
    EXPECT_EQ(w.windowTitle(), "Kabeldimensionering – Ostrovalden Skole");

    EXPECT_EQ(kabel->field("U")->text(), "230");
    type(kabel->field("I"), "10");
    type(kabel->field("Lk"), "50");
    type(kabel->field("dUpmax"), "3");
    QTest::keyClick(kabel->field("dUpmax")->edit, Qt::Key_Return);

    EXPECT_TRUE(contains(sheetOf(kabel), "Kabel: 4 mm² kobber")) << sheetOf(kabel);
    EXPECT_FALSE(kabel->noteView()->isVisible());
    ASSERT_EQ(w.resultRecords().size(), 1u);
    EXPECT_EQ(w.resultRecords()[0].value, 4);

    // The current goes on to the voltage drop through the strip.
    w.navigate("sf1");
    auto* drop = current<app::DropPage>();
    ASSERT_NE(drop, nullptr);
    QTest::mouseClick(drop->field("I_B")->edit, Qt::LeftButton);
    QPushButton* chip = nullptr;
    for (QPushButton* b : w.resultStrip()->findChildren<QPushButton*>())
        if (b->isVisible() && b->text() == "q = 4 mm²") chip = b;
    ASSERT_NE(chip, nullptr);
    QTest::mouseClick(chip, Qt::LeftButton);
    EXPECT_EQ(drop->field("I_B")->text(), "4");
    type(drop->field("I_B"), "10");
    type(drop->field("l"), "30");
    type(drop->field("cosphi"), "1");
    QTest::keyClick(drop->field("l")->edit, Qt::Key_Return);
    EXPECT_TRUE(contains(sheetOf(drop), "Spændingsfald 3,1565 %: 7,26 V")) << sheetOf(drop);
    EXPECT_EQ(w.resultRecords()[0].unit, "V");
    EXPECT_EQ(w.resultRecords()[1].unit, "%");
}

// Every refusal takes this road; its texts are the tools' tests' business.
TEST_F(ToolPagesTest, aRefusalShowsInTheNoteMarksTheFieldAndKeepsTheForm) {
    open().navigate("ikmax");
    auto* page = current<app::ToolPage>();
    ASSERT_NE(page, nullptr);
    page->field("l")->setText("tre");
    QTest::mouseClick(page->runButton(), Qt::LeftButton);
    EXPECT_FALSE(page->resultArea()->view()->hasContent());
    EXPECT_TRUE(page->noteView()->isVisible());
    EXPECT_EQ(noteOf(page), "Jeg kan ikke læse l");
    EXPECT_EQ(page->field("l")->text(), "tre");
    EXPECT_EQ(page->field("l")->edit->property("class").toString(), "err");
    EXPECT_EQ(page->runButton()->text(), "Beregn");
    EXPECT_TRUE(page->runButton()->isEnabled());
}

TEST_F(ToolPagesTest, cablePickFillsFromTheTablesAndRemembersTheChoice) {
    app::test::FakeHost host;
    auto page = std::make_unique<app::DropPage>(true, &host);
    app::DropPage* drop = page.get();
    app::CablePick* pick = drop->cable();
    EXPECT_EQ(drop->field("X_l")->text(), "0,128"); // pvik5 at 1,5 mm²

    pick->material()->setCurrentIndex(pick->material()->findData("al"));
    EXPECT_EQ(drop->field("R_l")->text(), "");
    EXPECT_EQ(drop->field("R_l")->edit->placeholderText(), "findes ikke i tabellen – skriv værdien");
    pick->section()->setCurrentIndex(pick->section()->findData("16"));
    EXPECT_EQ(drop->field("R_l")->text(), "1,91");
    pick->type()->setCurrentIndex(pick->type()->findData("nosp4"));
    EXPECT_EQ(drop->field("R_l")->text(), "1,91");
    EXPECT_EQ(drop->field("X_l")->text(), "");
    EXPECT_EQ(drop->field("X_l")->edit->placeholderText(), "findes ikke for denne kabeltype – skriv værdien");

    const DataStore& store = DataStore::instance();
    EXPECT_EQ(store.getString("sf3_mat"), "al");
    EXPECT_EQ(store.getString("sf3_q"), "16");
    EXPECT_EQ(store.getString("sf3_type"), "nosp4");

    // A new page of the same tool opens with the same cable.
    app::DropPage again(true, &host);
    EXPECT_EQ(again.cable()->section()->currentData().toString(), "16");
    EXPECT_EQ(again.field("R_l")->text(), "1,91");
}

TEST_F(ToolPagesTest, clearPutsTheDefaultsBackAndTheChooserRefillsRAndX) {
    app::test::FakeHost host;
    auto page = std::make_unique<app::IkminPage>(&host);
    page->field("U_F")->setText("400");
    page->field("R_lstik")->setText("9");
    page->field("R_lgrp")->setText("");
    page->field("I_Nks")->setText("35");
    QTest::mouseClick(page->clearButton(), Qt::LeftButton);
    EXPECT_EQ(page->field("U_F")->text(), "230");
    EXPECT_EQ(page->field("k_v")->text(), "1,5");
    EXPECT_EQ(page->field("I_Nks")->text(), "");
    EXPECT_EQ(page->field("R_lstik")->text(), "1,83"); // 10 mm² copper
    EXPECT_EQ(page->field("R_lgrp")->text(), "12,1");  // 1,5 mm² copper
    EXPECT_FALSE(page->noteView()->isVisible());
    EXPECT_FALSE(page->resultArea()->view()->hasContent());
}

TEST_F(ToolPagesTest, characteristicReachesTheCheckAndAThemeChangeRedrawsTheSameRun) {
    app::test::FakeHost host;
    auto page = std::make_unique<app::IkminPage>(&host);
    page->field("I_Nks")->setText("35");
    page->field("l_stik")->setText("20");
    page->field("l_grp")->setText("30");
    page->field("I_Ngrp")->setText("10");
    auto* characteristic = page->form()->findChildren<QComboBox*>().last();
    characteristic->setCurrentIndex(1); // C
    page->run();
    EXPECT_TRUE(contains(sheetOf(page.get()), "slår ikke sikkert fra"));
    ASSERT_EQ(host.results.size(), 2u); // at the appliance, then at the board
    EXPECT_EQ(host.results[0].unit, "A");
    // Typing afterwards changes nothing until Enter, also when the sheet is redrawn.
    page->field("I_Ngrp")->setText("");
    page->onTheme();
    EXPECT_TRUE(contains(sheetOf(page.get()), "er mindre end 100 A"));
}

} // namespace
