// The formula painter, judged by its pixels: sharp bars on whole pixels at
// every device pixel ratio, no ink cut off at the image's edge for any form of
// the catalogue, and fraction bars that meet the axis of the text beside them
// in a real sheet.
#include "app/sheet/mathpainter.h"

#include "app/sheet/sheetview.h"
#include "app/shell/theme.h"
#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/formulas/catalogue.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>

#include <cmath>

namespace {

class MathPainterTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { app::installFontSubstitutions(); }
    void TearDown() override { fl::resetFigures(); }
};

// Pixels of a row at least this opaque.
int rowCount(const QImage& img, int y, int minAlpha) {
    int n = 0;
    for (int x = 0; x < img.width(); ++x)
        n += qAlpha(img.pixel(x, y)) >= minAlpha;
    return n;
}

QRect inkRect(const QImage& img) {
    QRect r;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (qAlpha(img.pixel(x, y)) > 0) r |= QRect(x, y, 1, 1);
    return r;
}

TEST_F(MathPainterTest, fractionBarsAreSharpAndOnTheAxis) {
    struct Row {
        const char* name;
        const char* expr;
        double dpr;
    };
    const Row rows[] = {
        {"simple, 150 %", "U/R", 1.5},
        {"root in the denominator", "1/(2*pi*sqrt(L*C))", 1.0},
        {"sums above and below", "(a+b)/(c-d)", 2.0},
    };
    const app::MathStyle style = app::sheetMathStyle();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const fl::NodePtr n = fl::parse(row.expr);
        const QImage img = app::mathImage(n, style, row.dpr).convertToFormat(QImage::Format_ARGB32);
        const app::MathMetrics m = app::mathMetrics(n, style);
        const QRect ink = inkRect(img);
        // The bar: rows that are fully opaque over nearly the whole ink width.
        std::vector<int> bar;
        for (int y = 0; y < img.height(); ++y)
            if (rowCount(img, y, 255) >= ink.width() * 9 / 10) bar.push_back(y);
        ASSERT_FALSE(bar.empty());
        EXPECT_EQ(bar.back() - bar.front() + 1, int(bar.size())) << "one bar, no gaps";
        EXPECT_LE(double(bar.size()), std::ceil(2 * row.dpr));
        // Its neighbours aren't smeared grey over the bar's length.
        EXPECT_LT(rowCount(img, bar.front() - 1, 64), ink.width() / 2);
        EXPECT_LT(rowCount(img, bar.back() + 1, 64), ink.width() / 2);
        const double barMiddle = (bar.front() + bar.back() + 1) / 2.0 / row.dpr;
        EXPECT_NEAR(barMiddle, m.axis, 1.0);
    }
}

// Every form of every family draws, and no ink touches the image's edge,
// where the text engine would cut it off.
TEST_F(MathPainterTest, everyCatalogueFormDrawsWithinItsImage) {
    const app::MathStyle style = app::sheetMathStyle();
    int drawn = 0;
    for (const fl::Formula& f : fl::catalogue())
        for (const fl::FormulaForm& form : f.forms) {
            SCOPED_TRACE(f.key + ": " + form.expr);
            const QImage img =
                app::mathImage(fl::parse(form.expr), style, 1.0).convertToFormat(QImage::Format_ARGB32);
            const QRect ink = inkRect(img);
            ASSERT_FALSE(ink.isEmpty());
            EXPECT_GE(ink.left(), 1);
            EXPECT_GE(ink.top(), 1);
            EXPECT_LE(ink.right(), img.width() - 2);
            EXPECT_LE(ink.bottom(), img.height() - 2);
            ++drawn;
        }
    EXPECT_GT(drawn, 118);
}

// Rows of a rendered view: the "=" beside an image is drawn in a colour of
// its own, so that its two strokes and the image's bar can be told apart.
struct Probe {
    double equalsMiddle = -1;
    double barMiddle = -1;
};

Probe probe(const QString& html, const fl::NodePtr& node) {
    app::SheetView view;
    view.resize(640, 300);
    view.setExtraCss(".probe { color: #ff0000; }");
    fl::RenderResult r;
    r.html = html.toStdString();
    r.maths = {node};
    view.setContent(r);
    const QImage img = view.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    Probe p;
    int firstRed = -1, lastRed = -1, redRight = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) {
            const QRgb c = img.pixel(x, y);
            if (qRed(c) > 200 && qGreen(c) < 90 && qBlue(c) < 90) {
                if (firstRed < 0) firstRed = y;
                lastRed = y;
                redRight = std::max(redRight, x);
            }
        }
    if (firstRed < 0) return p;
    p.equalsMiddle = (firstRed + lastRed + 1) / 2.0;
    int best = 0;
    std::vector<int> bar;
    for (int y = 0; y < img.height(); ++y) {
        int dark = 0;
        for (int x = redRight + 1; x < img.width(); ++x)
            dark += qGray(img.pixel(x, y)) < 110;
        if (dark > best) {
            best = dark;
            bar = {y};
        } else if (dark == best && !bar.empty() && bar.back() == y - 1) {
            bar.push_back(y);
        }
    }
    if (!bar.empty()) p.barMiddle = (bar.front() + bar.back() + 1) / 2.0;
    return p;
}

TEST_F(MathPainterTest, fractionBarMeetsTheAxisOfTheTextBesideIt) {
    const QString cell =
        R"(<table class="eqs"><tr><td class="l"><span class="v">X</span></td>)"
        R"(<td class="m"><span class="probe">=</span></td><td class="r"><img class="math" src="m:0"></td></tr></table>)";
    const QString inlined = R"(<p>Sæt ind: <span class="probe">=</span> <img class="math" src="m:0"></p>)";
    struct Row {
        const char* name;
        const QString* html;
        const char* expr;
    };
    const Row rows[] = {
        {"cell, nested", &cell, "1/(1/R1+1/R2)"},
        {"inline, nested", &inlined, "1/(1/R1+1/R2+1/R3)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Probe p = probe(*row.html, fl::parse(row.expr));
        ASSERT_GE(p.equalsMiddle, 0);
        ASSERT_GE(p.barMiddle, 0);
        EXPECT_NEAR(p.barMiddle, p.equalsMiddle, 1.0);
    }
}

} // namespace
