// A student's road through the practice pages of the second kind: one text
// problem part by part, a short exam handed in (also by the clock), a round
// of flashcards, and a worksheet saved as a PDF that pdftotext can read.
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"
#include "tests/app/pages/tools/driving.h"

#include "app/pages/practice/eksamenpage.h"
#include "app/pages/practice/formelkortpage.h"
#include "app/pages/practice/opgavearkpage.h"
#include "app/pages/practice/tekstpage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/options.h"
#include "fl/expr/markup.h"
#include "fl/practice/categories.h"
#include "fl/practice/random.h"
#include "fl/practice/stats.h"
#include "fl/practice/worksheet.h"
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

namespace {

using app::test::contains;
using app::test::type;

class PracticeMorePages : public FreshAppTest {
  protected:
    void SetUp() override {
        FreshAppTest::SetUp();
        fl::seedRandom(5);
        fl::reloadCardStates();
    }
    void TearDown() override {
        fl::reloadCardStates();
        FreshAppTest::TearDown();
    }
    app::test::FakeHost host;
};

TEST_F(PracticeMorePages, aStudentWorksATextProblemPartByPart) {
    storeSet("tx_tpl", Json("kabel"));
    app::options().off = {"ac_komp"};
    app::TekstPage page(&host);
    page.resize(1000, 800);
    page.show();
    EXPECT_LT(page.topicBox()->findData("komp"), 0) << "a closed scenario is not offered";
    EXPECT_EQ(page.topicBox()->itemData(0).toString(), "alle");
    ASSERT_TRUE(page.problem());
    const fl::TekstProblem& p = *page.problem();
    EXPECT_EQ(p.key, "kabel");
    EXPECT_TRUE(contains(page.storyView()->markup(), "<div class=\"txstory\">Der trækkes et "));
    ASSERT_EQ(page.rows().size(), 5u);
    EXPECT_EQ(page.rows()[0].field->placeholderText(), "Dit svar");

    // a) answered with a unit: unreadable, not counted.
    type(page.rows()[0].field, "0,8 ohm");
    QTest::keyClick(page.rows()[0].field, Qt::Key_Return);
    EXPECT_TRUE(contains(page.rows()[0].status->markup(), "Jeg kan ikke læse dit svar"));
    EXPECT_TRUE(fl::loadStats().empty());
    // a) a wrong number, then the hint, then the right one rounded as on paper.
    type(page.rows()[0].field, QString::fromStdString(fl::storyNumber(p.parts[0].value / 2)));
    QTest::mouseClick(page.rows()[0].check, Qt::LeftButton);
    EXPECT_TRUE(contains(page.rows()[0].status->markup(), "✗ Ikke helt."));
    QTest::mouseClick(page.rows()[0].hint, Qt::LeftButton);
    EXPECT_TRUE(contains(page.rows()[0].status->markup(), "R = ρ · l / q."));
    type(page.rows()[0].field, QString::fromStdString(fl::storyNumber(fl::round3(p.parts[0].value))));
    QTest::keyClick(page.rows()[0].field, Qt::Key_Return);
    EXPECT_TRUE(contains(page.rows()[0].status->markup(), "✓ <b>Rigtigt!</b>"));
    EXPECT_TRUE(page.problem()->parts[0].solved);
    // Only the first readable attempt of a part counts.
    const fl::PracticeStats stats = fl::loadStats();
    ASSERT_EQ(stats.topics.count("tekst:kabel"), 1u);
    EXPECT_EQ(stats.topics.at("tekst:kabel").total, 1);
    EXPECT_EQ(stats.topics.at("tekst:kabel").right, 0);

    // The whole solution, step by step, in the result area.
    QTest::mouseClick(page.solutionButton(), Qt::LeftButton);
    EXPECT_TRUE(page.solutionArea()->isVisible());
    EXPECT_EQ(page.solutionArea()->view()->steps(), 5);

    // A new problem replaces everything.
    QTest::mouseClick(page.nextButton(), Qt::LeftButton);
    EXPECT_TRUE(page.rows()[0].field->text().isEmpty());
    EXPECT_FALSE(page.solutionArea()->isVisible());
}

TEST_F(PracticeMorePages, aShortExamIsHandedInAndRecorded) {
    int64_t now = 1'741'950'000'000;
    app::EksamenPage page(&host);
    page.clock = [&] { return now; };
    int asked = -1;
    page.confirmHandIn = [&](int missing) {
        asked = missing;
        return true;
    };
    page.resize(1000, 800);
    page.show();
    page.topicBox()->setCurrentIndex(page.topicBox()->findData("Jævnstrøm"));
    page.countBox()->setCurrentIndex(page.countBox()->findData("5"));
    QTest::mouseClick(page.startButton(), Qt::LeftButton);
    ASSERT_TRUE(page.questionScreen()->isVisible());
    ASSERT_EQ(page.exam().size(), 5u);
    EXPECT_EQ(page.positionLabel()->text(), "Opgave 1 af 5");
    EXPECT_FALSE(page.timer().isActive()); // no limit chosen

    // Right answers to the first three, a wrong one to the fourth, none to the last.
    for (size_t i = 0; i < 4; ++i) {
        const fl::Exercise& ex = page.exam().exercises[i];
        const double typed = (i == 3 ? 3 : 1) * ex.facit / ex.scale;
        type(page.answerEdit(), QString::fromStdString(fl::storyNumber(typed)));
        QTest::mouseClick(page.nextButton(), Qt::LeftButton);
    }
    EXPECT_EQ(page.positionLabel()->text(), "Opgave 5 af 5");
    EXPECT_EQ(page.nextButton()->text(), "Aflever nu");
    EXPECT_TRUE(page.numberButtons()[0]->property("sel").toBool());
    EXPECT_FALSE(page.numberButtons()[4]->property("sel").toBool());
    // Going back shows the answer given before; it can still be changed.
    QTest::mouseClick(page.numberButtons()[1], Qt::LeftButton);
    EXPECT_FALSE(page.answerEdit()->text().isEmpty());

    now += 200'000;
    QTest::mouseClick(page.handInButton(), Qt::LeftButton);
    EXPECT_EQ(asked, 1);
    ASSERT_TRUE(page.resultScreen()->isVisible());
    EXPECT_EQ(page.scoreLabel()->text(), "Resultat: 3 af 5 rigtige (60 %)");
    EXPECT_TRUE(page.verdictLabel()->text().startsWith("Godt gået"));
    ASSERT_EQ(page.resultRows().size(), 5u);
    page.resultRows()[0].solutionButton->click();
    QApplication::processEvents();
    EXPECT_TRUE(page.resultRows()[0].solution->isVisible());
    EXPECT_EQ(page.resultRows()[0].solutionButton->text(), "Skjul løsning");
    EXPECT_FALSE(page.resultRows()[0].solution->markup().empty());

    const std::vector<fl::ExamRecord> exams = fl::loadExams();
    ASSERT_EQ(exams.size(), 1u);
    EXPECT_EQ(exams[0].topic, "Jævnstrøm");
    EXPECT_EQ(exams[0].right, 3);
    EXPECT_EQ(exams[0].total, 5);
    EXPECT_EQ(exams[0].seconds, 200);

    page.newExamButton()->click();
    EXPECT_TRUE(page.setupScreen()->isVisible());
}

TEST_F(PracticeMorePages, theClockHandsInWithoutAsking) {
    int64_t now = 1'741'950'000'000;
    app::EksamenPage page(&host);
    page.clock = [&] { return now; };
    page.confirmHandIn = [](int) {
        ADD_FAILURE() << "asked at the limit";
        return false;
    };
    page.countBox()->setCurrentIndex(page.countBox()->findData("5"));
    page.timeBox()->setCurrentIndex(page.timeBox()->findData("10"));
    page.startButton()->click();
    ASSERT_TRUE(page.timer().isActive());
    EXPECT_EQ(page.clockLabel()->text(), "⏱ 10:00");
    type(page.answerEdit(), "12,5");
    now += 9 * 60'000 + 30'000;
    page.tick();
    EXPECT_EQ(page.clockLabel()->text(), "⏱ 0:30");
    EXPECT_FALSE(page.exam().handedIn);
    now += 31'000;
    page.tick();
    EXPECT_TRUE(page.exam().handedIn);
    EXPECT_FALSE(page.timer().isActive());
    EXPECT_EQ(page.exam().answers[0], "12,5");
    EXPECT_EQ(fl::loadExams().at(0).seconds, 600);
}

TEST_F(PracticeMorePages, aFlashcardRoundMovesCardsBetweenBoxes) {
    double now = 1'741'950'000'000.0;
    storeSet("fc_opt", Json::parse(R"({"deck":"inst:poe","mode":"nf"})"));
    app::FormelkortPage page(&host);
    page.now = [&] { return now; };
    page.resize(1000, 800);
    page.show();
    // The keys are shortcuts of the window that holds the page.
    QApplication::setActiveWindow(&page);
    page.drawStart();
    EXPECT_EQ(page.deckBox()->currentData().toString(), "inst:poe");
    EXPECT_TRUE(contains(page.cardView()->markup(), " kort er klar."));
    QTest::mouseClick(page.startButton(), Qt::LeftButton);
    ASSERT_EQ(page.screen(), app::FormelkortPage::Screen::Front);
    const size_t cards = page.round().queue.size();
    ASSERT_GE(cards, 3u);

    // Space flips, 3 knows it, 1 doesn't: the unknown card comes back in this round.
    const std::string first = page.round().card();
    QTest::keyClick(page.flipButton(), Qt::Key_Space);
    ASSERT_EQ(page.screen(), app::FormelkortPage::Screen::Back);
    EXPECT_TRUE(contains(page.cardView()->markup(), "fcback"));
    QTest::keyClick(page.rateButton(fl::Right), Qt::Key_3);
    EXPECT_EQ(fl::cardStates().at(first).box, 2);
    QTest::mouseClick(page.flipButton(), Qt::LeftButton);
    QTest::mouseClick(page.rateButton(fl::Wrong), Qt::LeftButton);
    EXPECT_EQ(page.round().queue.size(), cards + 1);
    while (page.screen() != app::FormelkortPage::Screen::End) {
        QTest::mouseClick(page.flipButton(), Qt::LeftButton);
        QTest::mouseClick(page.rateButton(fl::Right), Qt::LeftButton);
    }
    EXPECT_TRUE(contains(page.cardView()->markup(), "Runden er færdig"));
    EXPECT_TRUE(contains(page.cardView()->markup(), "✗ Kunne ikke: <b>1</b>"));
    // Nothing is ready now; the next day everything is.
    page.drawStart();
    EXPECT_TRUE(contains(page.cardView()->markup(), "<p class=\"fcq center\">0 kort er klar.</p>"));
    EXPECT_TRUE(page.anywayButton()->isVisible());
    now += fl::kDayMs;
    page.drawStart();
    EXPECT_TRUE(contains(page.cardView()->markup(), std::to_string(cards) + " kort er klar."));
    // The states are in the store.
    EXPECT_EQ(storeGet("fc").at(first).at("box").asNumber(), 2);
}

// The text of a PDF, page by page, by pdftotext; empty when the tool is missing.
QStringList pdfPages(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    if (!p.waitForFinished(30000)) return {};
    return QString::fromUtf8(p.readAllStandardOutput()).split(QChar('\f'));
}

// Blanks as one space, the PDF's ligatures as letters.
QString squeezed(QString text) {
    text.replace(QChar(0xFB00), QLatin1String("ff")).replace(QChar(0xFB01), QLatin1String("fi"));
    text.replace(QChar(0xFB02), QLatin1String("fl")).remove(QChar(0x200B));
    return text.replace(QRegularExpression(QStringLiteral("\\s+")), QStringLiteral(" "));
}

TEST_F(PracticeMorePages, aWorksheetIsARealPdfWithTheFacitAtTheBack) {
    app::OpgavearkPage page(&host);
    page.resize(1000, 800);
    page.topicBox()->setCurrentIndex(page.topicBox()->findData("Jævnstrøm"));
    page.countBox()->setCurrentIndex(page.countBox()->findData(20));
    page.facitBox()->setCurrentIndex(page.facitBox()->findData("svar"));
    page.roomBox()->setChecked(true);
    QTest::mouseClick(page.newSheetButton(), Qt::LeftButton);
    ASSERT_EQ(page.sheet().exercises.size(), 20u);
    EXPECT_EQ(fl::worksheetOptionsFromJson(storeGet("ws_opt")).facit, "svar");
    EXPECT_FALSE(contains(page.sheetView()->markup(), "wsfac"));
    QTest::mouseClick(page.facitButton(), Qt::LeftButton);
    EXPECT_TRUE(contains(page.sheetView()->markup(), "<h3 class=\"sh pdf-break\">Facit</h3>"));
    QTest::mouseClick(page.facitButton(), Qt::LeftButton);

    const QString path = dir.filePath("ark.pdf");
    ASSERT_TRUE(page.savePdfTo(path));
    const QStringList pages = pdfPages(path);
    ASSERT_GT(pages.size(), 2) << "pdftotext missing or the PDF is empty";
    const QString all = squeezed(pages.join(' '));
    const int facitAt = all.indexOf(QStringLiteral("Facit Opgave Emne"));
    ASSERT_GT(facitAt, 0) << all.toStdString();
    for (size_t i = 0; i < page.sheet().exercises.size(); ++i) {
        const fl::Exercise& ex = page.sheet().exercises[i];
        const QString head = QStringLiteral("Opgave %1: ").arg(i + 1) +
                             squeezed(QString::fromStdString(fl::htmlToPlain(fl::symbolHtml(ex.title))));
        const int at = all.indexOf(head);
        EXPECT_GE(at, 0) << head.toStdString();
        EXPECT_LT(at, facitAt);
        const QString answer = QString::fromStdString(fl::htmlToPlain(fl::worksheetAnswer(ex)));
        EXPECT_GE(all.indexOf(answer, facitAt), 0) << answer.toStdString();
    }
    // The facit begins a page of its own.
    for (const QString& text : pages) {
        if (squeezed(text).contains(QStringLiteral("Facit Opgave Emne"))) {
            EXPECT_FALSE(squeezed(text).contains(QStringLiteral("Svar: ___"))) << text.toStdString();
        }
    }
}

} // namespace
