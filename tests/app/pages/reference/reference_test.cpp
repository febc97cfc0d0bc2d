// The reference pages as a student meets them: the glossary answering per
// keystroke and through links, the installation pages' links and tabs, the
// own formula sheet kept in the store.
#include "app/pages/reference/installpage.h"
#include "app/pages/reference/insttestpage.h"
#include "app/pages/reference/minformpage.h"
#include "app/pages/reference/ordlistepage.h"
#include "app/sheet/sheetview.h"
#include "tests/app/fresh_app.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

using ReferenceTest = FreshAppTest;

// A "gl:" link elsewhere leaves its text in the store, and the page reads it
// on entering. What the teacher closed stays out; the rest of its group stays.
TEST_F(ReferenceTest, glossaryAnswersEachKeystrokeItsLinksAndTheStoredSearchWithoutWhatIsClosed) {
    app::options().off = {"ac_komp"};
    app::OrdlistePage page(nullptr);
    QTest::keyClicks(page.searchBox(), QStringLiteral("spaendingsf"));
    EXPECT_NE(page.view()->markup().find("Spændingsfald"), std::string::npos);
    EXPECT_EQ(storeGetString("ordliste_q"), "spaendingsf");
    page.searchBox()->clear();
    EXPECT_NE(page.view()->markup().find("<h3 class=\"sh\">Størrelser og enheder</h3>"), std::string::npos);

    emit page.view()->action(QStringLiteral("gls:Kirchhoffs%201.%20lov"));
    EXPECT_NE(page.view()->markup().find("<b style=\"font-size:12pt\">Kirchhoffs 1. lov</b>"),
              std::string::npos);
    emit page.view()->action(QStringLiteral("gl:"));
    EXPECT_NE(page.view()->markup().find("class=\"sh\""), std::string::npos) << "back to the list";

    storeSet("ordliste_q", Json("resonans"));
    page.onEnter();
    EXPECT_EQ(page.searchBox()->text(), QStringLiteral("resonans"));
    EXPECT_NE(page.view()->markup().find(">Resonans</b>"), std::string::npos);

    page.setSection(QStringLiteral("Vekselstrøm"));
    EXPECT_EQ(page.view()->markup().find(">Kompensering</b>"), std::string::npos);
    EXPECT_NE(page.view()->markup().find(">Reaktiv effekt</b>"), std::string::npos);
}

TEST_F(ReferenceTest, installPageReadsCodesFromItsFieldAndLinks) {
    app::InstallPage page(nullptr);
    page.setTab(QStringLiteral("ip"));
    emit page.view()->action(QStringLiteral("ip:IPX7"));
    EXPECT_EQ(page.ipField()->text(), QStringLiteral("IPX7"));
    EXPECT_NE(page.view()->markup().find("<p class=\"ipbig\">IPX7</p>"), std::string::npos);
    EXPECT_EQ(storeGetString("inst_ip"), "IPX7");
    EXPECT_EQ(storeGetString("inst_tab"), "ip");

    emit page.view()->action(QStringLiteral("cards:ip"));
    EXPECT_EQ(storeGet("fc_opt").at("deck").asString(), "inst:ip");
    EXPECT_EQ(storeGet("fc_opt").at("mode").asString(), "nf");
}

TEST_F(ReferenceTest, installTestPageFollowsTabLinksAndComputes) {
    app::InstTestPage page(nullptr);
    EXPECT_EQ(page.tab(), QStringLiteral("hvad"));
    emit page.view()->action(QStringLiteral("tab:graenser"));
    EXPECT_EQ(page.tab(), QStringLiteral("graenser"));
    EXPECT_EQ(storeGetString("insttest_tab"), "graenser");
    page.setTab(QStringLiteral("beregn"));
    page.characteristicBox()->setCurrentIndex(1); // C
    EXPECT_NE(page.resultView()->markup().find("1,4375 Ω"), std::string::npos) << "C16 at 230 V by default";
}

TEST_F(ReferenceTest, ownFormulaSheetIsKeptInTheStore) {
    app::MinformPage page(nullptr);
    page.pin("ohm");
    page.pin("powerU");
    page.pin("ohm");
    page.move(1, -1);
    // What a fresh page reads from the store.
    app::MinformPage again(nullptr);
    ASSERT_EQ(again.items().size(), 2u);
    EXPECT_EQ(again.items()[1].key, "ohm");
    again.unpin(0);
    EXPECT_EQ(app::loadMinform().size(), 1u);
    const QString pdf = dir.path() + "/min.pdf";
    EXPECT_TRUE(again.exportPdf(pdf));
    EXPECT_GT(QFileInfo(pdf).size(), 1000);
}

} // namespace
