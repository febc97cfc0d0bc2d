// The pocket calculator: the keypad's and Tab's editing rules as tables, and
// the panel as a student uses it – typing, Enter, Up, "→ svar".
#include "app/sheet/sheetview.h"
#include "app/widgets/calcpanel.h"
#include "tests/app/fresh_app.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

TEST(CalcKeys, editTheLineAsTheKeypadPromises) {
    const struct {
        const char* name;
        const char* text;
        int start, end;
        const char* insert;
        const char* result;
        int cursor;
    } rows[] = {
        {"clearEmptiesTheLine", "230/47", 2, 2, "#CLR", "", 0},
        {"backspaceTakesTheCharacterBefore", "230", 2, 2, "#BS", "20", 1},
        {"backspaceAtTheStartChangesNothing", "230", 0, 0, "#BS", "230", 0},
        {"fractionAroundTheSelection", "2+3", 0, 3, "frac", "(2+3)/()", 7},
        {"emptyFractionWaitsInTheNumerator", "5+", 2, 2, "frac", "5+()/()", 3},
        {"inverseWithoutSelectionWaitsInside", "", 0, 0, "inv", "1/()", 3},
        {"inverseOfTheSelectionStandsBehind", "47", 0, 2, "inv", "1/(47)", 6},
        {"textReplacesTheSelection", "2*3", 1, 2, "^", "2^3", 2},
        {"backspaceTakesASelectionMadeBackwards", "2+30", 3, 1, "#BS", "20", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const app::CalcEdit e =
            app::applyKey(QString::fromUtf8(row.text), row.start, row.end, QString::fromUtf8(row.insert));
        EXPECT_EQ(e.text.toStdString(), row.result);
        EXPECT_EQ(e.cursor, row.cursor);
    }
}

TEST(CalcKeys, tabWalksThroughAFraction) {
    const struct {
        const char* text;
        int cursor, target;
    } rows[] = {
        {"()/()", 1, 4},    // numerator → denominator
        {"(2+3)/()", 7, 8}, // denominator → out of the fraction
        {"sin(30)", 0, 4},  // the next "(" first
        {"(2+3)*4", 2, 5},  // ")" without "/" → behind it
        {"230/47", 2, -1},  // no parenthesis: Tab leaves
    };
    for (const auto& row : rows)
        EXPECT_EQ(app::tabTarget(QString::fromUtf8(row.text), row.cursor), row.target)
            << row.text << " @" << row.cursor;
}

using CalcPanelTest = FreshAppTest;

TEST_F(CalcPanelTest, previewsAsTypedAndKeepsFinishedLines) {
    app::CalcPanel panel(true);
    panel.key(QStringLiteral("sin⁻¹"))->click();
    EXPECT_EQ(panel.lineEdit()->text(), QStringLiteral("asin("));
    QTest::keyClicks(panel.lineEdit(), QStringLiteral("2)"));
    EXPECT_NE(panel.liveView()->markup().find("Intet reelt svar"), std::string::npos);
    QTest::keyClick(panel.lineEdit(), Qt::Key_Up);
    EXPECT_EQ(panel.lineEdit()->text(), QStringLiteral("asin(2)"))
        << "Up with no finished line changes nothing";

    panel.lineEdit()->clear();
    QTest::keyClicks(panel.lineEdit(), QStringLiteral("2^3"));
    EXPECT_NE(panel.liveView()->markup().find("2<sup>3</sup>"), std::string::npos);
    EXPECT_NE(panel.liveView()->markup().find("= 8"), std::string::npos);
    QTest::keyClick(panel.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(panel.historySize(), 1);
    EXPECT_EQ(panel.lastAnswer(), 8);

    panel.lineEdit()->setText(QStringLiteral("ans·2"));
    EXPECT_NE(panel.liveView()->markup().find("= 16"), std::string::npos);
    panel.lineEdit()->clear();
    QTest::keyClick(panel.lineEdit(), Qt::Key_Up);
    EXPECT_EQ(panel.lineEdit()->text(), QStringLiteral("2^3"));

    panel.lineEdit()->setText(QStringLiteral("2+"));
    QTest::keyClick(panel.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(panel.historySize(), 1) << "a line without a value stays out of the history";
    EXPECT_NE(panel.liveView()->markup().find("uventet slut"), std::string::npos)
        << "the words stand in the view";
}

TEST_F(CalcPanelTest, answerChipsOnlyWithAnAnswerField) {
    app::CalcPanel panel;
    panel.lineEdit()->setText(QStringLiteral("230/47"));
    panel.finish();
    EXPECT_EQ(panel.historyView()->markup().find("→ svar"), std::string::npos);

    QLineEdit answer;
    panel.setAnswerTarget(&answer);
    EXPECT_NE(panel.historyView()->markup().find("href=\"use:0\">→ svar</a>"), std::string::npos);
    emit panel.historyView()->action(QStringLiteral("use:0"));
    EXPECT_EQ(answer.text(), QStringLiteral("4,893617021"));
    emit panel.historyView()->action(QStringLiteral("use:7"));
    EXPECT_EQ(answer.text(), QStringLiteral("4,893617021")) << "an index outside the history";
}

} // namespace
