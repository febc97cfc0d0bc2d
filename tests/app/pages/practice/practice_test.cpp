// Practice as a student meets it: exercises answered right, wrong and
// unreadably, and the answers found again on the statistics page; the page's
// own links, the teacher's closed topics, and what does and doesn't count.
// The verdicts' and the statistics sheet's words are the core's tests' business.
#include "app/pages/practice/ovelserpage.h"
#include "app/pages/practice/statistikpage.h"
#include "app/pages/practice/tekstpage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/practice/random.h"
#include "fl/practice/stats.h"
#include "store/datastore.h"
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"
#include "tests/app/pages/tools/driving.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

using app::test::contains;

// The facit as a student would type it, with a decimal comma.
QString typed(double value) {
    return QString::fromStdString(fl::fmtValue10(value));
}

class PracticeTest : public FreshAppTest {
  protected:
    void SetUp() override {
        FreshAppTest::SetUp();
        fl::seedRandom(21);
    }

    static QPushButton* button(QWidget* page, const QString& text) {
        for (QPushButton* b : page->findChildren<QPushButton*>())
            if (b->text() == text) return b;
        ADD_FAILURE() << "no button " << text.toStdString();
        return nullptr;
    }

    // Types the answer and presses Enter, as at the keyboard.
    static std::string answer(app::OvelserPage* page, const QString& text) {
        page->answerEdit()->clear();
        QTest::keyClicks(page->answerEdit(), text);
        QTest::keyClick(page->answerEdit(), Qt::Key_Return);
        return page->verdictView()->markup();
    }

    static void chooseTopic(app::OvelserPage* page, const QString& key) {
        QComboBox* box = page->topicBox();
        const int at = box->findData(key);
        ASSERT_GE(at, 0) << key.toStdString();
        box->setCurrentIndex(at);
        emit box->activated(at);
    }
};

TEST_F(PracticeTest, threeAnswersAreJudgedExplainedAndCountedOnTheStatisticsPage) {
    app::MainWindow& w = open();
    w.navigate("ovelser");
    auto* page = current<app::OvelserPage>();
    ASSERT_NE(page, nullptr);
    chooseTopic(page, "Jævnstrøm");
    ASSERT_FALSE(page->exercise().empty());
    EXPECT_EQ(page->exercise().topic, "Jævnstrøm");
    EXPECT_TRUE(contains(page->statementView()->markup(), "Find <b>"));

    // Right, to the digits shown on a calculator.
    const std::string right = answer(page, typed(page->exercise().facit));
    EXPECT_TRUE(contains(right, "✓ <b>Rigtigt!</b>")) << right;
    QTest::keyClick(page->answerEdit(), Qt::Key_Return); // Enter again: the next exercise
    EXPECT_TRUE(page->answerEdit()->text().isEmpty());

    // A wrong answer counts; a unit typed along is not read, and not counted.
    answer(page, typed(page->exercise().facit * 1000));
    QTest::mouseClick(page->nextButton(), Qt::LeftButton);
    answer(page, "2,38 A");
    EXPECT_EQ(page->scoreLabel()->text(), "Rigtige: 1 af 2");

    QTest::mouseClick(button(page, "Se statistik"), Qt::LeftButton);
    auto* stats = current<app::StatistikPage>();
    ASSERT_NE(stats, nullptr);
    const std::string sheet = stats->view()->markup();
    EXPECT_TRUE(contains(sheet, "<td style=\"text-align:left\">Jævnstrøm</td><td class=\"data\">1 af 2</td>"))
        << sheet;
}

TEST_F(PracticeTest, statisticsLinksOpenTheirExercisesAndAResetAsksFirst) {
    fl::PracticeStats s;
    for (int i = 0; i < 4; ++i)
        fl::addAnswer(s, "motNs", "Motorer", i == 0, fl::today());
    fl::saveStats(s);
    app::MainWindow& w = open();
    w.navigate("statistik");
    auto* stats = current<app::StatistikPage>();
    ASSERT_NE(stats, nullptr);
    ASSERT_TRUE(clickLink(stats->view(), "ov:Motorer"));
    auto* page = current<app::OvelserPage>();
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->topicBox()->currentData().toString(), "Motorer");
    EXPECT_EQ(page->exercise().topic, "Motorer");

    w.navigate("statistik");
    ASSERT_TRUE(clickLink(stats->view(), "ov:svag"));
    EXPECT_EQ(page->topicBox()->currentData().toString(), "svag");
    EXPECT_EQ(page->exercise().topic, "Motorer"); // the one weak topic

    // A text problem's row opens that scenario on its own page.
    for (int i = 0; i < 3; ++i)
        fl::addAnswer(s, "tekst:kabel", "tekst:kabel", false, fl::today());
    fl::saveStats(s);
    w.navigate("statistik");
    ASSERT_TRUE(clickLink(stats->view(), "ov:tekst:kabel"));
    auto* tekst = current<app::TekstPage>();
    ASSERT_NE(tekst, nullptr);
    EXPECT_EQ(tekst->topicBox()->currentData().toString(), "kabel");
    ASSERT_TRUE(tekst->problem().has_value());
    EXPECT_EQ(tekst->problem()->key, "kabel");

    // Resetting asks first; the empty page leads on to the exercises.
    w.navigate("statistik");
    bool agree = false;
    stats->confirmReset = [&] { return agree; };
    ASSERT_TRUE(clickLink(stats->view(), "act:streset"));
    EXPECT_FALSE(fl::loadStats().empty());
    agree = true;
    ASSERT_TRUE(clickLink(stats->view(), "act:streset"));
    EXPECT_TRUE(fl::loadStats().empty());
    EXPECT_TRUE(contains(stats->view()->markup(), "Du har ikke svaret på nogen opgaver endnu."));
    ASSERT_TRUE(clickLink(stats->view(), "go:ovelser"));
    EXPECT_EQ(current<app::OvelserPage>(), page);
}

TEST_F(PracticeTest, closedTopicsVanishAndAnEmptyChoiceSaysWhy) {
    app::options().off = {"ac_motor"};
    app::test::FakeHost host;
    app::OvelserPage page(&host);
    page.onEnter();
    EXPECT_LT(page.topicBox()->findData("Motorer"), 0);
    EXPECT_GE(page.topicBox()->findData("Jævnstrøm"), 0);
    for (int i = 0; i < 40; ++i) {
        page.next();
        EXPECT_NE(page.exercise().topic, "Motorer");
    }
    chooseTopic(&page, "svag"); // nothing answered yet, so nothing weak
    EXPECT_TRUE(page.exercise().empty());
    EXPECT_TRUE(contains(page.statementView()->markup(), "Du har ingen svage emner lige nu."));
    EXPECT_FALSE(page.checkButton()->isEnabled());
    // A weak text problem can't be drawn here: the choice names it rather than deny it.
    fl::PracticeStats s;
    for (int i = 0; i < 3; ++i)
        fl::addAnswer(s, "tekst:kabel", "tekst:kabel", false, fl::today());
    fl::saveStats(s);
    page.next();
    EXPECT_TRUE(page.exercise().empty());
    const std::string shown = page.statementView()->markup();
    EXPECT_TRUE(contains(shown, "tekstopgaverne er „Kabel til carport“")) << shown;
    EXPECT_FALSE(contains(shown, "ingen svage emner"));
}

TEST_F(PracticeTest, aCircuitTopicShowsTheDrawingAndTheTeacherCanCloseIt) {
    app::test::FakeHost host;
    app::OvelserPage page(&host);
    page.onEnter();
    chooseTopic(&page, QStringLiteral("Kredsløb – vekselstrøm"));
    ASSERT_TRUE(page.exercise().circuit);
    const std::string shown = page.statementView()->markup();
    EXPECT_TRUE(contains(shown, "<p class=\"fig\"><img src=\"f:0\"")) << shown;
    QTest::mouseClick(page.hintButton(), Qt::LeftButton);
    EXPECT_TRUE(contains(page.hintView()->markup(), "Fremgangsmåde")) << page.hintView()->markup();

    app::options().off = {"veksel"};
    page.onEnter();
    EXPECT_LT(page.topicBox()->findData(QStringLiteral("Kredsløb – vekselstrøm")), 0);
    EXPECT_GE(page.topicBox()->findData(QStringLiteral("Kredsløb – jævnstrøm")), 0);
    EXPECT_FALSE(page.exercise().circuit); // the closed one left the screen
}

TEST_F(PracticeTest, onlyTheFirstAnswerBeforeTheSolutionCounts) {
    app::test::FakeHost host;
    app::OvelserPage page(&host);
    int sounds = 0;
    page.playSound = [&] { ++sounds; };
    page.onEnter();
    const double facit = page.exercise().facit;
    answer(&page, typed(facit * 7));
    answer(&page, typed(facit)); // right at the second go: the first answer stands
    EXPECT_EQ(page.scoreLabel()->text(), "Rigtige: 0 af 1");
    EXPECT_EQ(sounds, 1);

    page.next();
    QTest::mouseClick(page.solutionButton(), Qt::LeftButton);
    EXPECT_TRUE(page.solutionArea()->isVisibleTo(&page));
    EXPECT_TRUE(contains(page.solutionArea()->view()->markup(), "FACIT"));
    page.soundBox()->setChecked(false);
    answer(&page, typed(page.exercise().facit));
    EXPECT_EQ(page.scoreLabel()->text(), "Rigtige: 0 af 1");
    EXPECT_EQ(sounds, 1);
    EXPECT_FALSE(storeGet("ov_lyd").asBool(true));

    QTest::mouseClick(page.hintButton(), Qt::LeftButton);
    EXPECT_TRUE(contains(page.hintView()->markup(), "formelsamlingen"));
    QTest::mouseClick(button(&page, "Nulstil"), Qt::LeftButton);
    EXPECT_EQ(page.scoreLabel()->text(), "");
}

} // namespace
