// The main road through the program as a student walks it: home page,
// formula finder, a formula's page, solving it and where the answer goes; and
// the formula page's refusals, the finder's path and the home page's tiles.
// Every case starts from an empty store in a temporary directory.
#include "app/pages/formulas/finderpage.h"
#include "app/pages/formulas/formulapage.h"
#include "app/pages/formulas/homepage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"
#include "store/datastore.h"
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"
#include "tests/app/pages/tools/driving.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

using app::test::contains;
using app::test::type;

using PagesTest = FreshAppTest;

TEST_F(PagesTest, studentWalksFromHomeToASolvedOhm) {
    open();
    auto* home = current<app::HomePage>();
    ASSERT_NE(home, nullptr);

    ASSERT_TRUE(clickLink(home->view(), "go:finder"));
    auto* finder = current<app::FinderPage>();
    ASSERT_NE(finder, nullptr);

    ASSERT_TRUE(clickLink(finder->view(), "fm:dc"));     // "Jævnstrøm"
    ASSERT_TRUE(clickLink(finder->view(), "fm:dc/ohm")); // "Ohms lov og effekt"
    EXPECT_EQ(finder->path(), "dc/ohm");

    ASSERT_TRUE(clickLink(finder->view(), "go:ohm"));
    auto* page = current<app::FormulaPage>();
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->formula()->key, "ohm");

    type(page->field("U"), "230");
    type(page->field("R"), "47");
    QTest::keyClick(page->field("R")->edit, Qt::Key_Return);

    // The sheet's blocks are the sheet's own tests, and where the answer goes
    // is the next case's; here it stands, solved.
    EXPECT_TRUE(contains(app::test::sheetOf(page), "4,8936 A"));
}

// A default counts as given until it is emptied; then it is the one wanted.
// "Ryd" empties every field, answers included, and puts the formula back.
// While the work runs, the button says so and the cursor waits.
TEST_F(PagesTest, defaultCountsAsFilledClearingItMakesItTheTargetAndClearStartsAfresh) {
    app::test::FakeHost host;
    app::FormulaPage page(fl::findFormula("XL"), &host);
    const std::string formula = page.resultArea()->view()->markup();
    EXPECT_EQ(formula.rfind("<div class=\"eq\">", 0), 0u);
    // Only the worked sheet offers itself as a PDF.
    EXPECT_TRUE(page.resultArea()->pdfBar()->isHidden());
    EXPECT_EQ(page.field("f")->text(), "50");
    page.field("L")->setText("0,1");
    QString during;
    bool enabled = true;
    bool waiting = false;
    QTimer::singleShot(0, [&] {
        during = page.solveButton()->text();
        enabled = page.solveButton()->isEnabled();
        waiting = QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
    });
    page.solveClicked();
    EXPECT_EQ(during, "Regner…");
    EXPECT_FALSE(enabled);
    EXPECT_TRUE(waiting);
    EXPECT_EQ(page.solveButton()->text(), "Løs");
    EXPECT_TRUE(page.solveButton()->isEnabled());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(page.field("XL")->edit->placeholderText(), "= 31,416");
    EXPECT_FALSE(page.resultArea()->pdfBar()->isHidden());
    ASSERT_EQ(host.results.size(), 1u) << "the answer goes to the results strip";
    EXPECT_EQ(host.results[0].name, "X<sub>L</sub>");
    EXPECT_NEAR(host.results[0].value, 31.4159, 1e-4);
    EXPECT_EQ(host.results[0].unit, "Ω");

    const std::string first = page.resultArea()->view()->markup();
    page.solveClicked();
    EXPECT_EQ(page.resultArea()->view()->markup(), first);
    page.field("XL")->setText("31,416");
    page.field("f")->setText("");
    page.solveClicked();
    EXPECT_EQ(page.field("XL")->edit->placeholderText(), "");
    EXPECT_EQ(page.field("f")->edit->placeholderText(), "= 50");

    page.clearButton()->click();
    EXPECT_TRUE(page.resultArea()->pdfBar()->isHidden());
    for (app::ValueField* f : page.fields()) {
        EXPECT_EQ(f->text(), "");
        EXPECT_EQ(f->edit->placeholderText(), "");
    }
    EXPECT_EQ(page.resultArea()->view()->markup(), formula);
}

TEST_F(PagesTest, backLinkLeadsToWhereTheStudentCameFrom) {
    app::test::FakeHost host;
    app::FormulaPage page(fl::findFormula("ohm"), &host);
    page.show();
    const std::pair<const char*, const char*> rows[] = {
        {"finder", "← Formelfinder"}, {"udregnere", "← Udregnere"}, {"trafo", ""}};
    for (const auto& [from, link] : rows) {
        SCOPED_TRACE(from);
        host.previous = from;
        page.onEnter();
        EXPECT_EQ(page.backLink()->isVisible(), *link != 0);
        if (*link) {
            EXPECT_TRUE(page.backLink()->text().contains(QString::fromUtf8(link)));
            emit page.backLink()->linkActivated(page.backLink()->text());
            EXPECT_EQ(host.routes.back(), from);
        }
    }
}

TEST_F(PagesTest, finderKeepsAPathForEachModeAndWalksBack) {
    app::MainWindow& w = open();
    w.navigate("finder");
    auto* finder = current<app::FinderPage>();
    ASSERT_NE(finder, nullptr);
    finder->setPath("ac/serie");
    w.navigate("udregnere");
    auto* calculators = current<app::FinderPage>();
    ASSERT_NE(calculators, finder);
    EXPECT_EQ(calculators->path(), "");
    calculators->setPath("energi");
    EXPECT_TRUE(contains(calculators->view()->markup(), "Åbn udregneren ›"));
    EXPECT_FALSE(contains(finder->view()->markup(), "Åbn udregneren ›"));
    EXPECT_EQ(storeGetString("finder_path"), "ac/serie");
    EXPECT_EQ(storeGetString("udregnere_path"), "energi");

    w.navigate("hjem");
    w.navigate("finder");
    EXPECT_EQ(finder->path(), "ac/serie");
    std::vector<std::string> labels;
    for (QPushButton* b : finder->pathButtons())
        labels.push_back(b->text().toStdString());
    EXPECT_EQ(labels, (std::vector<std::string>{"← Tilbage", "Alle emner", "Vekselstrøm",
                                                "Seriekredsløb (R, L, C i serie)"}));

    finder->pathButtons().front()->click();
    EXPECT_EQ(finder->path(), "ac");
    finder->pathButtons()[1]->click();
    EXPECT_EQ(finder->path(), "");
    EXPECT_EQ(finder->pathButtons().front()->text(), "Alle emner");
}

TEST_F(PagesTest, homeShowsWhatWasUsedAndHidesWhatIsClosed) {
    app::MainWindow& w = open();
    w.navigate("trafo");
    w.navigate("ohm");
    w.navigate("hjem");
    auto* home = current<app::HomePage>();
    const std::string html = home->view()->markup();
    const size_t recent = html.find("Senest brugt"), most = html.find("Mest brugt");
    ASSERT_LT(recent, most);
    const std::string recentPart = html.substr(recent, most - recent);
    EXPECT_LT(recentPart.find("go:ohm"), recentPart.find("go:trafo"));

    app::options().off = {"udregnere"};
    w.navigate("hjem");
    const std::string closed = home->view()->markup();
    EXPECT_FALSE(contains(closed, "go:udregnere\""));
    EXPECT_TRUE(contains(closed, "Din lærer har slået nogle dele af programmet fra"));
}

// A refusal offers no PDF. One of a field marks the field; it is about what
// stood in the fields: typing again, or coming back to the page later, puts
// the formula in its place.
TEST_F(PagesTest, refusalsOfferNoPdfAndAFieldsRefusalGoesOnceTheFieldsChangeOrThePageIsEnteredAgain) {
    app::FormulaPage page(fl::findFormula("ohm"), nullptr);
    const std::string formula = page.resultArea()->view()->markup();
    for (const bool byTyping : {true, false}) {
        SCOPED_TRACE(byTyping ? "typing" : "entering");
        page.field("U")->setText("abc");
        QTest::keyClick(page.field("U")->edit, Qt::Key_Return);
        EXPECT_EQ(
            page.resultArea()->view()->markup(),
            fl::msgBox("Jeg kan ikke læse værdien for U. Skriv et tal uden enhed, fx 230, 0,5, 4,7k, 25e-6 "
                       "eller 400/√3 – med højst ét decimalkomma.",
                       true));
        EXPECT_EQ(page.field("U")->text(), "abc");
        EXPECT_EQ(page.field("U")->edit->property("class").toString(), "err");
        EXPECT_EQ(page.field("R")->edit->property("class").toString(), "");
        if (byTyping) {
            type(page.field("U"), "230");
        } else {
            page.onEnter();
        }
        EXPECT_EQ(page.resultArea()->view()->markup(), formula);
        EXPECT_EQ(page.field("U")->edit->property("class").toString(), "");
        page.field("U")->setText("");
    }

    // Where the solving gets stuck, the page says so in its own words, and the
    // sheet before it is no longer offered as a PDF.
    app::FormulaPage stuck(fl::findFormula("ZRL"), nullptr);
    stuck.field("Z")->setText("5");
    stuck.field("XL")->setText("3");
    stuck.solveClicked();
    ASSERT_FALSE(stuck.resultArea()->pdfBar()->isHidden());
    stuck.field("Z")->setText("3");
    stuck.field("XL")->setText("5");
    stuck.solveClicked();
    EXPECT_EQ(stuck.resultArea()->view()->markup(),
              fl::msgBox("Udregningen gik i stå – tjek værdierne.", true));
    EXPECT_TRUE(stuck.resultArea()->pdfBar()->isHidden());
}

// Each step revealed pushes the reveal bar down; the page follows it, so the
// student presses "Vis næste trin" again without scrolling.
TEST_F(PagesTest, revealingAStepKeepsTheNextButtonInView) {
    app::MainWindow& w = open();
    app::options().trinvis = true;
    emit w.hostSignals()->stepModeChanged(true);
    w.navigate("tfP");
    auto* page = current<app::FormulaPage>();
    ASSERT_NE(page, nullptr);
    page->field("U_N")->setText("400");
    page->field("I_N")->setText("16");
    page->field("cosphi")->setText("0,85");
    QTest::keyClick(page->field("U_N")->edit, Qt::Key_Return);
    QApplication::processEvents();
    // The answer has no heading of its own; the PDF takes the family's name, indices as in the title bar.
    EXPECT_EQ(page->resultArea()->pdfTitle(), "Aktiv effekt (P = UN·IN·√3·cos φ)");
    QPushButton* next = page->resultArea()->sheetBox()->nextButton();
    ASSERT_TRUE(next->isVisible());
    page->ensureWidgetVisible(next);
    QApplication::processEvents();

    int presses = 0;
    for (; next->isVisible() && presses < 10; ++presses) {
        SCOPED_TRACE(presses);
        QTest::mouseClick(next, Qt::LeftButton);
        QTest::qWait(100);
        if (!next->isVisible()) break;
        const QRect shown(next->mapTo(page->viewport(), QPoint()), next->size());
        EXPECT_TRUE(page->viewport()->rect().contains(shown))
            << shown.y() << " in " << page->viewport()->height();
    }
    EXPECT_GE(presses, 3);
}

} // namespace
