// The main window: navigation and what it records, the sidebar with its
// search, links, the results strip, notices, the settings panel and the
// teacher's profile. Every case starts from an empty store in a temporary
// directory and leaves the global settings as it found them.
#include "app/shell/lockedpage.h"
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/shell/routes.h"
#include "app/shell/settingspanel.h"
#include "app/shell/theme.h"
#include "app/widgets/page.h"
#include "app/widgets/valuefield.h"
#include "fl/formulas/lists.h"
#include "store/datastore.h"
#include "tests/app/fresh_app.h"
#include "tests/support/disk_faults.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <filesystem>
#include <memory>

namespace {

using Strings = std::vector<std::string>;

class WindowTest : public FreshAppTest {
  protected:
    // Unshown unless a case shows it: painting every page only slows the run.
    app::MainWindow& open() {
        window = std::make_unique<app::MainWindow>();
        return *window;
    }

    QTreeWidgetItem* sidebarRow(const QString& data) const {
        for (QTreeWidgetItemIterator it(window->sidebar()); *it; ++it)
            if ((*it)->data(0, Qt::UserRole).toString() == data) return *it;
        return nullptr;
    }
};

// ---------------------------------------------------------------- routes

TEST_F(WindowTest, everyRouteOpensItsOwnPageWithItsTitle) {
    std::set<std::string> tileRoutes, factoryRoutes;
    for (const auto& [route, make] : app::pageFactory())
        factoryRoutes.insert(route);
    app::MainWindow& w = open();
    for (const fl::Tile& tile : fl::tiles()) {
        tileRoutes.insert(tile.route);
        const QString route = QString::fromStdString(tile.route);
        SCOPED_TRACE(tile.route);
        w.navigate(route);
        EXPECT_EQ(w.currentRoute(), route);
        ASSERT_NE(w.currentPage(), nullptr);
        const QString expected = route == "hjem" ? QString("Ostrovalden Skole")
                                                 : QString::fromStdString(tile.name) + " – Ostrovalden Skole";
        EXPECT_EQ(w.windowTitle(), expected);
    }
    EXPECT_EQ(factoryRoutes, tileRoutes) << "every tile has a page and nothing else has";
    // A family's name reads without the underscores of its indices.
    w.navigate("tfUY");
    EXPECT_EQ(w.windowTitle(), "Stjerne: UF = UN / √3 – Ostrovalden Skole");
    for (const char* route : {"", "Ohm", "go:trafo"}) {
        SCOPED_TRACE(route);
        w.navigate("trafo");
        w.navigate(route);
        EXPECT_EQ(w.currentRoute(), "hjem");
        EXPECT_EQ(storeGetString("last"), "hjem");
    }
}

TEST_F(WindowTest, renavigatingKeepsPreviousAndScrollsToTop) {
    app::MainWindow& w = open();
    w.resize(1000, 600);
    w.show();
    w.navigate("trafo");
    app::Page* trafo = w.currentPage();
    w.navigate("kabel");
    app::Page* page = w.currentPage();
    for (int i = 0; i < 20; ++i)
        page->addCard()->setMinimumHeight(120);
    QApplication::processEvents();
    page->verticalScrollBar()->setValue(300);
    ASSERT_EQ(page->verticalScrollBar()->value(), 300);
    QSignalSpy spy(&w, &app::MainWindow::navigated);
    w.navigate("kabel");
    EXPECT_EQ(w.previousRoute(), "trafo");
    EXPECT_EQ(page->verticalScrollBar()->value(), 0);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.last().at(0).toString(), "kabel");
    w.navigate("trafo");
    EXPECT_EQ(w.currentPage(), trafo) << "pages are made once and kept";
    EXPECT_EQ(w.previousRoute(), "kabel");
    // Alt+← and the mouse's back button go to the page shown before, and back again.
    QShortcut* backKey = nullptr;
    for (QShortcut* s : w.findChildren<QShortcut*>())
        if (s->key() == QKeySequence(QKeySequence::Back)) backKey = s;
    ASSERT_NE(backKey, nullptr);
    emit backKey->activated();
    EXPECT_EQ(w.currentRoute(), "kabel");
    QMouseEvent back(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), Qt::BackButton, Qt::BackButton,
                     Qt::NoModifier);
    QApplication::sendEvent(w.currentPage()->viewport(), &back);
    EXPECT_EQ(w.currentRoute(), "trafo");
}

// ---------------------------------------------------------------- links

TEST_F(WindowTest, globalLinkSchemesNavigate) {
    app::MainWindow& w = open();
    w.openLink("go:trafo");
    EXPECT_EQ(w.currentRoute(), "trafo");
    w.openLink("gl:Ohms lov");
    EXPECT_EQ(w.currentRoute(), "ordliste");
    EXPECT_EQ(storeGetString("ordliste_q"), "Ohms lov");
    w.openLink("it:rcd");
    EXPECT_EQ(w.currentRoute(), "insttest");
    EXPECT_EQ(storeGetString("insttest_tab"), "hvad");
}

// ---------------------------------------------------------------- sidebar

TEST_F(WindowTest, searchFindsByNameAndSearchWords) {
    struct Row {
        const char* text;
        Strings rows;
        const char* firstHit;
    };
    const Row rows[] = {
        {"hpfi", {"⌂ Forside", "HJÆLP OG OVERBLIK", "Test af installation"}, "insttest"},
        {"  FARVEKODE ", {"⌂ Forside", "SMÅVÆRKTØJER", "Modstandens farvekode"}, "farve"},
        {"zz", {"⌂ Forside"}, "hjem"},
    };
    app::MainWindow& w = open();
    w.show();
    const auto sidebarRows = [&w] {
        Strings shown;
        for (QTreeWidgetItemIterator it(w.sidebar()); *it; ++it)
            shown.push_back((*it)->text(0).toStdString());
        return shown;
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        w.navigate("trafo");
        w.searchBox()->setText(QString::fromUtf8(row.text));
        EXPECT_EQ(sidebarRows(), row.rows);
        w.openFirstHit();
        EXPECT_EQ(w.currentRoute(), row.firstHit);
    }
    QLineEdit* box = w.searchBox();
    box->setFocus();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(box, &escape);
    EXPECT_TRUE(box->text().isEmpty());
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(box, &down);
    EXPECT_NE(w.sidebar()->currentItem(), nullptr);
}

TEST_F(WindowTest, sidebarDropsClosedRoutesAndCurrentSuffixes) {
    app::options().off = {"vaerktoj"};
    open();
    EXPECT_EQ(sidebarRow("trafo"), nullptr);
    EXPECT_EQ(sidebarRow("sec:n_dim"), nullptr) << "a section with nothing left is skipped";
    ASSERT_NE(sidebarRow("kreds"), nullptr);
    EXPECT_EQ(sidebarRow("kreds")->text(0), "Tegn et kredsløb");
    EXPECT_EQ(sidebarRow("kredsguideac")->text(0), "Kredsløb – fremgangsmåde");
    EXPECT_EQ(sidebarRow("sec:n_dc")->text(0), "KREDSLØB – JÆVNSTRØM");
    EXPECT_TRUE(sidebarRow("hjem")->isSelected());
}

TEST_F(WindowTest, sectionsOpenAsStoredAndFlipOnClickAndEntriesNavigate) {
    storeSet("navOpen", Json::parse(R"({"n_tools":false,"n_dim":true,"n_ov":"ja"})"));
    app::MainWindow& w = open();
    const std::pair<const char*, bool> rows[] = {
        {"n_tools", false}, {"n_dim", true}, {"n_ov", false}, {"n_help", true}, {"n_dc", false}};
    for (const auto& [section, expanded] : rows) {
        SCOPED_TRACE(section);
        QTreeWidgetItem* head = sidebarRow(QString("sec:") + section);
        ASSERT_NE(head, nullptr);
        EXPECT_EQ(head->isExpanded(), expanded);
        EXPECT_EQ(head->text(1), expanded ? "▾" : "▸");
    }
    QTreeWidgetItem* dc = sidebarRow("sec:n_dc");
    emit w.sidebar()->itemClicked(dc, 0);
    EXPECT_TRUE(dc->isExpanded());
    EXPECT_TRUE(storeGet("navOpen").at("n_dc").asBool());
    EXPECT_FALSE(storeGet("navOpen").at("n_tools").asBool());
    // A click on an entry goes there, and the section of the page on screen opens by itself.
    emit w.sidebar()->itemClicked(sidebarRow("trafo"), 0);
    QApplication::processEvents();
    EXPECT_EQ(w.currentRoute(), "trafo");
    EXPECT_EQ(sidebarRow("sec:n_tools")->text(1), "▾");
    EXPECT_TRUE(sidebarRow("trafo")->isSelected());
}

// ---------------------------------------------------------------- results

TEST_F(WindowTest, eleventhResultPushesOutTheOldestAndNaNNeverEnters) {
    app::MainWindow& w = open();
    EXPECT_TRUE(w.resultStrip()->isHidden());
    for (int i = 1; i <= 11; ++i)
        w.addResult(QString("R_%1").arg(i), i, "Ω");
    w.addResult("X", std::nan(""), "Ω");
    w.addResult("Y", INFINITY, "Ω");
    const auto& records = w.resultRecords();
    ASSERT_EQ(records.size(), 10u);
    EXPECT_EQ(records.front().name, "R_11");
    EXPECT_EQ(records.back().name, "R_2");
    EXPECT_FALSE(w.resultStrip()->isHidden());
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(w.resultStrip()->findChildren<QPushButton*>().size(), 10);
    const auto shown = [&w](const QString& text) {
        for (QPushButton* b : w.resultStrip()->findChildren<QPushButton*>())
            if (b->text() == text) return true;
        return false;
    };
    w.addResult("U<sub>R1</sub>", 1234.5678, "V");
    EXPECT_TRUE(shown("UR1 = 1234,6 V"));
    app::options().komma = false;
    app::applyDisplaySettings();
    emit w.hostSignals()->settingsChanged();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(shown("UR1 = 1234.6 V"));
}

TEST_F(WindowTest, resultClickWritesIntoTheLastFieldUsed) {
    app::MainWindow& w = open();
    w.show();
    w.navigate("trafo");
    app::ValueField* field = w.currentPage()->addCard()->addField("U", "Spænding", "V");
    w.addResult("U", 230.0 / 47, "V");
    QPushButton* first = w.resultStrip()->findChild<QPushButton*>();
    ASSERT_NE(first, nullptr);
    first->click();
    EXPECT_TRUE(field->text().isEmpty()) << "no field used yet: nothing is written";
    w.activateWindow();
    field->edit->setFocus();
    QApplication::processEvents();
    w.searchBox()->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(w.lastUsedField(), field->edit) << "the search box is never the last field";
    first->click();
    EXPECT_EQ(field->text(), "4,893617021") << "the value carried in full, not as shown";
}

// ---------------------------------------------------------------- notices

TEST_F(WindowTest, noticeWithIdShowsUntilClosedOnce) {
    app::MainWindow& w = open();
    EXPECT_TRUE(w.noticeBar()->isHidden()) << "nothing to tell at the start";
    storeSet("notice_seen", Json("not a list"));
    w.showNotice("<b>Besked</b>", "class:7");
    EXPECT_FALSE(w.noticeBar()->isHidden());
    w.noticeBar()->findChild<QPushButton*>("noticeClose")->click();
    EXPECT_TRUE(w.noticeBar()->isHidden());
    EXPECT_EQ(Json::dump(storeGet("notice_seen")), R"(["class:7"])");
    w.showNotice("<b>Besked</b>", "class:7");
    EXPECT_TRUE(w.noticeBar()->isHidden());
    w.showNotice("<b>Ny besked</b>", "class:8");
    EXPECT_FALSE(w.noticeBar()->isHidden());
    w.noticeBar()->findChild<QPushButton*>("noticeClose")->click();
    w.showNotice("Opdateret", "");
    w.noticeBar()->findChild<QPushButton*>("noticeClose")->click();
    w.showNotice("Opdateret", "");
    EXPECT_FALSE(w.noticeBar()->isHidden());
    EXPECT_EQ(Json::dump(storeGet("notice_seen")), R"(["class:7","class:8"])");
}

// ---------------------------------------------------------------- settings

TEST_F(WindowTest, settingsPanelWritesStoresAndSignals) {
    app::MainWindow& w = open();
    app::SettingsPanel* p = w.settingsPanel();
    QSignalSpy settings(w.hostSignals(), &app::HostSignals::settingsChanged);
    QSignalSpy theme(w.hostSignals(), &app::HostSignals::themeChanged);
    QSignalSpy steps(w.hostSignals(), &app::HostSignals::stepModeChanged);

    p->comma->setChecked(false);
    EXPECT_FALSE(app::options().komma);
    EXPECT_FALSE(storeGet("komma").asBool(true));
    EXPECT_EQ(settings.count(), 1);

    p->rounding->setCurrentIndex(1);
    emit p->rounding->activated(1);
    EXPECT_EQ(app::options().rund, "d2");
    EXPECT_EQ(storeGetString("rund"), "d2");
    EXPECT_EQ(settings.count(), 2);

    p->steps->setChecked(true);
    EXPECT_TRUE(storeGet("trinvis").asBool());
    ASSERT_EQ(steps.count(), 1);
    EXPECT_TRUE(steps.last().at(0).toBool());
    EXPECT_EQ(w.statusText()->text(), "Afrunding: som formelsamlingen · decimalpunktum · ét trin ad gangen");

    p->textSize->setCurrentIndex(1);
    emit p->textSize->activated(1);
    EXPECT_EQ(app::textScale(), 1.15);
    EXPECT_EQ(storeGet("tekst").asNumber(), 1.15);
    EXPECT_EQ(w.sidebar()->parentWidget()->width(), 322);
    EXPECT_TRUE(qApp->styleSheet().contains("font-size: 12.1pt"));
    EXPECT_EQ(settings.count(), 3);
    EXPECT_EQ(theme.count(), 1);

    const std::pair<const char*, bool> modes[] = {{"dark", true}, {"auto", false}, {"light", false}};
    for (auto [stored, dark] : modes) {
        SCOPED_TRACE(stored);
        p->themeButton->click();
        EXPECT_EQ(storeGetString("theme"), stored);
        EXPECT_EQ(app::colors().dark, dark);
    }
    EXPECT_EQ(theme.count(), 4);
}

TEST(SettingsPanel, textSizeComboShowsTheStoredScaleByThresholds) {
    const std::pair<double, int> rows[] = {{1.05, 0}, {1.06, 1}, {1.25, 1}, {1.26, 2}};
    for (auto [scale, index] : rows) {
        SCOPED_TRACE(scale);
        EXPECT_EQ(app::textSizeIndex(scale), index);
    }
}

// A save shows as a mark with its time; the first look at the file only notes
// it. How a save fails, and that the old file survives it, is the store's
// business; the window says so while it lasts.
TEST_F(WindowTest, statusBarMarksSavesAndWarnsWhileTheyFail) {
    const std::string folder = dir.path().toStdString() + "/laast";
    std::filesystem::create_directories(folder);
    DataStore& store = DataStore::instance();
    store.setPath(folder + "/data.json");
    store.set("fc", "før");
    app::MainWindow& w = open();
    EXPECT_TRUE(w.savedMark()->isHidden());
    std::filesystem::permissions(folder, std::filesystem::perms(0555));
    {
        AsNobody nobody;
        store.set("fc", "kort");
    }
    w.checkSaved();
    EXPECT_FALSE(w.savedMark()->isHidden());
    EXPECT_EQ(w.savedMark()->text(), "⚠ Kunne ikke gemme dine data – prøver igen ved næste ændring");

    std::filesystem::permissions(folder, std::filesystem::perms(0755));
    store.set("fc", "igen");
    w.checkSaved();
    const QDateTime saved = QFileInfo(QString::fromStdString(store.path())).lastModified();
    EXPECT_EQ(w.savedMark()->text(), "✓ gemt " + saved.toString("HH:mm"));
}

// ---------------------------------------------------------------- profile

// A closed topic leaves the screen, and its locked page says what is closed
// and under which profile; the visit is the locked page's, which the visits'
// own test keeps out of recent and usage. Which routes a lock closes is the
// locks' own test.
TEST_F(WindowTest, profileChangeClosesTheTopicOnScreenButNotARunningExam) {
    app::MainWindow& w = open();
    w.navigate("komp");
    app::Page* before = w.currentPage();
    QSignalSpy nav(&w, &app::MainWindow::navigated);
    w.applyProfile();
    EXPECT_EQ(nav.count(), 0) << "an unchanged profile keeps pages and place";
    EXPECT_EQ(w.currentPage(), before);
    app::options().off = {"ac_komp"};
    app::options().profile = "jaevnstrom";
    w.applyProfile();
    EXPECT_EQ(w.currentRoute(), "hjem");
    w.navigate("komp");
    EXPECT_EQ(w.currentRoute(), "laast");
    EXPECT_EQ(storeGetString("locked_feature"), "ac_komp");
    EXPECT_EQ(storeGetString("locked_page"), "komp");
    EXPECT_EQ(storeGetString("last"), "laast");
    EXPECT_EQ(w.windowTitle(), "Slået fra af din lærer – Ostrovalden Skole");
    auto* locked = qobject_cast<app::LockedPage*>(w.currentPage());
    ASSERT_NE(locked, nullptr);
    const QString text = locked->text->text();
    EXPECT_TRUE(text.startsWith("<b>Kompensering</b> er slået fra for skolen (profil: Kun jævnstrøm).<br>"))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith("Programmet er ikke i stykker."));
    EXPECT_TRUE(
        app::lockedText("nosuch", "").startsWith("<b>Denne funktion</b> er slået fra for skolen.<br>"));
    app::options().off.clear();
    w.applyProfile();
    EXPECT_EQ(w.currentRoute(), "komp");
    EXPECT_NE(w.currentPage(), before) << "pages are made anew after a change";

    w.navigate("eksamen");
    app::Page* exam = w.currentPage();
    app::options().profile = "proeve";
    app::options().off = {"vaerktoj"};
    w.applyProfile();
    EXPECT_EQ(w.currentRoute(), "eksamen");
    EXPECT_EQ(w.currentPage(), exam);
}

// Refilling the sidebar keeps its place; a chosen entry out of view is brought into it.
TEST_F(WindowTest, sidebarKeepsItsPlaceAndShowsTheChosenEntry) {
    app::MainWindow& w = open();
    w.resize(1000, 500);
    w.show();
    QTreeWidget* tree = w.sidebar();
    const auto inView = [&](const char* route) {
        return tree->viewport()->rect().contains(tree->visualItemRect(sidebarRow(route)));
    };
    ASSERT_FALSE(inView("minedata"));
    w.navigate("minedata");
    EXPECT_TRUE(inView("minedata"));
    const int scrolled = tree->verticalScrollBar()->value();
    ASSERT_TRUE(inView("minform"));
    w.navigate("minform");
    EXPECT_EQ(tree->verticalScrollBar()->value(), scrolled);
}

} // namespace
