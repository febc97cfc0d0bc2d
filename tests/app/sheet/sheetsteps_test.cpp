// Worked sheets from the sheet builder, shown in the view the way a student
// meets them: step by step with the bar's texts, whole when there are no
// steps, spoilers both ways, and written to PDF.
#include "app/sheet/resultarea.h"
#include "app/shell/theme.h"
#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

class SheetStepsTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { app::installFontSubstitutions(); }
    void SetUp() override {
        app::setThemeMode(app::ThemeLight);
        fl::resetFigures();
    }
    void TearDown() override { fl::resetFigures(); }
};

// A sheet of three steps from the builder, its answer behind a spoiler.
fl::RenderResult threeSteps() {
    fl::resetFigures();
    fl::SheetSections s;
    s.steps = {{"Find strømmen", "3", "<p>" + fl::renderMath(fl::parse("U/R")) + "</p>", "I", "U,R"},
               {"Find effekten", "4", "<p>" + fl::renderMath(fl::parse("U**2/R")) + "</p>", "P", "U,R"},
               {"Find energien", "", "<p>E = P · t</p>", "E", "P,t"}};
    s.answer = "<span class=\"big\">E = 1,2 kWh</span>";
    s.concealed = "<p class=\"hint\">Regn selv først.</p>";
    return fl::takeRender(fl::sheet("tre", {"Opgave"}, "Tre trin", s));
}

TEST_F(SheetStepsTest, stepModeRevealsOneStepAtATimeThenTheAnswer) {
    app::SheetBox box;
    box.resize(700, 400);
    app::SheetView* view = box.view();
    view->setStepMode(true);
    view->setContent(threeSteps());
    ASSERT_EQ(view->steps(), 3);

    struct Stage {
        int shown;
        bool answer;
        bool bar;
        const char* label;
        const char* next;
    };
    const Stage stages[] = {
        {0, false, true, "Trin 0 af 3 vist – prøv selv at regne det næste trin, før du ser det",
         "Vis næste trin"},
        {2, false, true, "Trin 2 af 3 vist – prøv selv at regne det næste trin, før du ser det",
         "Vis sidste trin og facit"},
        {3, true, false, nullptr, nullptr},
    };
    for (const Stage& s : stages) {
        SCOPED_TRACE(s.shown);
        while (view->revealedSteps() < s.shown)
            (s.answer ? box.allButton() : box.nextButton())->click();
        const QString visible = view->visibleHtml();
        EXPECT_EQ(visible.count("class=\"stept\""), s.shown);
        EXPECT_EQ(visible.contains("FACIT"), s.answer);
        EXPECT_EQ(visible.contains("Regn selv først."), !s.answer);
        EXPECT_EQ(box.bar()->isHidden(), !s.bar);
        if (s.label) {
            EXPECT_EQ(box.label()->text().toStdString(), s.label);
            EXPECT_EQ(box.nextButton()->text().toStdString(), s.next);
        }
    }
}

// Without step mode the answer shows at once, and no spoiler reaches the
// text engine as a block.
TEST_F(SheetStepsTest, theAnswerShowsAtOnceWithoutStepMode) {
    app::SheetBox box;
    box.view()->setStepMode(false);
    box.view()->setContent(threeSteps());
    const QString visible = box.view()->visibleHtml();
    EXPECT_TRUE(visible.contains("FACIT"));
    EXPECT_FALSE(visible.contains("class=\"spoiler"));
    EXPECT_TRUE(box.bar()->isHidden());
}

// The text of a PDF, page by page; empty when pdftotext is missing.
QStringList pdfText(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
    if (!p.waitForFinished(30000)) return {};
    return QString::fromUtf8(p.readAllStandardOutput()).split(QChar('\f'));
}

TEST_F(SheetStepsTest, noPageCutsAWorkedStepOrAKeptBlockOrLeavesAHeadingAlone) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // Steps and kept blocks of uneven heights, so that boundaries fall everywhere;
    // every other one led by a heading and a line that go with it.
    const auto lead = [](const std::string& n) {
        return "<div class=\"pdf-next\"><h3 class=\"sh\">Overskrift " + n + "</h3></div><p>forklaring " + n +
               "</p>";
    };
    std::string html = "<div class=\"steps\">";
    for (int k = 1; k <= 30; ++k) {
        const std::string n = std::to_string(k);
        if (k % 2) html += lead("T" + n);
        html += "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">" + n + "</span> Trin " + n +
                " start</p>";
        for (int line = 0; line < 2 + (k * 7) % 9; ++line)
            html += "<p>mellemregning " + std::to_string(line) + "</p>";
        html += "<p>Trin " + n + " slut</p></div>";
    }
    html += "</div>";
    for (int k = 1; k <= 15; ++k) {
        const std::string n = std::to_string(k);
        if (k % 2) html += lead("B" + n);
        html += "<div class=\"pdf-keep\"><p>Blok " + n + " start</p>";
        for (int line = 0; line < 3 + (k * 5) % 11; ++line)
            html += "<p>linje " + std::to_string(line) + "</p>";
        html += "<p>Blok " + n + " slut</p></div>";
    }
    app::SheetView view;
    view.setContent(fl::takeRender(html));
    const QString path = dir.filePath("steps.pdf");
    ASSERT_TRUE(view.printToPdf("Trin", path));
    const QStringList pages = pdfText(path);
    // Kept blocks fill their pages: not one of them a page to itself.
    ASSERT_GT(pages.size(), 4) << "pdftotext missing or the PDF too short";
    EXPECT_LT(pages.size(), 20);
    const auto pageOf = [&](const QString& text) {
        for (int i = 0; i < pages.size(); ++i)
            if (pages[i].contains(text)) return i;
        return -1;
    };
    for (const char* kind : {"Trin", "Blok"})
        for (int k = 1; k <= (kind[0] == 'T' ? 30 : 15); ++k) {
            const QString start = QStringLiteral("%1 %2 start").arg(kind).arg(k);
            const int first = pageOf(start);
            ASSERT_GE(first, 0) << start.toStdString();
            EXPECT_EQ(pageOf(QStringLiteral("%1 %2 slut").arg(kind).arg(k)), first) << start.toStdString();
            if (k % 2) {
                const QString heading = QStringLiteral("Overskrift %1%2\n").arg(kind[0]).arg(k);
                EXPECT_EQ(pageOf(heading), first) << heading.toStdString();
            }
        }
}

TEST_F(SheetStepsTest, pdfButtonReportsItsOutcome) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    app::ResultArea area(nullptr);
    EXPECT_TRUE(area.pdfBar()->isHidden()) << "nothing to print";
    area.setProvider(threeSteps);
    EXPECT_FALSE(area.pdfBar()->isHidden());
    EXPECT_TRUE(area.savePdfTo(dir.filePath("ohm.pdf")));
    EXPECT_EQ(area.pdfButton()->text().toStdString(), "✓ PDF gemt");
    // One page and the form feed that ends it.
    EXPECT_EQ(pdfText(dir.filePath("ohm.pdf")).size(), 2);
    EXPECT_FALSE(area.savePdfTo(dir.filePath("findes/ikke/ohm.pdf")));
    EXPECT_EQ(area.pdfButton()->text().toStdString(), "Hent som PDF");
    EXPECT_TRUE(area.pdfButton()->isEnabled());
    area.clear();
    EXPECT_TRUE(area.pdfBar()->isHidden());
    EXPECT_EQ(area.view()->height(), 0);
}

} // namespace
