// The sheet view as a widget: whole-cell clicks on tiles, the image cache
// across rebuilds, redrawing on a change of theme, refitting figures on
// resize, typesetting at every text size, long sheets in pieces.
#include "app/sheet/mathpainter.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheettext.h"
#include "app/shell/options.h"
#include "app/shell/theme.h"
#include "fl/circuit/sheet.h"
#include "fl/circuit/sheets/walkthrough.h"
#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/fig/canvas.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/finderview.h"
#include "fl/formulas/home.h"
#include "tests/app/fake_host.h"
#include "tests/app/figure_compare.h"
#include "tests/app/fresh_app.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QGlyphRun>
#include <QMouseEvent>
#include <QPainter>
#include <QRawFont>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextLayout>

namespace {

class SheetViewTest : public FreshAppTest {
  protected:
    static void SetUpTestSuite() { app::installFontSubstitutions(); }
    void TearDown() override {
        FreshAppTest::TearDown();
        fl::resetFigures();
    }
};

fl::RenderResult markup(const std::string& html) {
    fl::RenderResult r;
    r.html = html;
    return r;
}

void click(QWidget* target, QPoint pos) {
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent e(type, pos, target->mapToGlobal(pos), Qt::LeftButton, held, Qt::NoModifier);
        QApplication::sendEvent(target, &e);
    }
}

// A point inside the first tile's padding, off its link, and one on the link's text.
std::pair<QPoint, QPoint> tilePoints(const app::SheetView& view) {
    for (int y = 0; y < view.height(); y += 2)
        for (int x = 0; x < view.width() / 3; x += 2) {
            const app::SheetView::Tile t = app::SheetView::tileAt(&view, QPoint(x, y));
            if (t.href.isEmpty()) continue;
            const QPoint corner = t.rect.topLeft().toPoint() + QPoint(3, 3);
            QPoint link;
            for (int yy = corner.y(); yy < int(t.rect.bottom()) && link.isNull(); ++yy)
                for (int xx = corner.x(); xx < int(t.rect.right()) && link.isNull(); ++xx)
                    if (!view.anchorAt(QPoint(xx, yy)).isEmpty()) link = QPoint(xx, yy);
            return {corner, link};
        }
    return {};
}

TEST_F(SheetViewTest, aClickAnywhereInATileActsOnce) {
    app::SheetView view;
    view.resize(720, 300);
    // The home page's own tiles: every cell is one link.
    const fl::TileLook look{"#ffffff", "#d3d9e1", "#1b1f24", "#2457d6"};
    view.setContent(markup("<h3 class=\"sh\">Mest brugt</h3>" +
                           fl::tileGrid(
                               {"kreds", "kredsac", "ovelser", "udregnere"}, false,
                               [](const std::string&) { return true; }, look) +
                           "<p>Tekst med et <a href=\"go:ordliste\">link</a> under.</p>"));
    view.show();
    QStringList actions;
    QObject::connect(&view, &app::SheetView::action, [&](const QString& href) { actions << href; });

    const auto [padding, link] = tilePoints(view);
    ASSERT_FALSE(padding.isNull());
    ASSERT_FALSE(link.isNull());
    ASSERT_TRUE(view.anchorAt(padding).isEmpty());

    struct Row {
        const char* name;
        QPoint pos;
        QStringList expected;
    };
    const Row rows[] = {
        {"padding of the tile, by the release", padding, {"go:kreds"}},
        {"its link, by the browser alone", link, {"go:kreds"}},
        {"outside every tile", QPoint(view.width() - 5, view.height() - 3), {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        actions.clear();
        click(view.viewport(), row.pos);
        QApplication::processEvents();
        EXPECT_EQ(actions, row.expected);
    }
}

// A sheet with a data table, a step with an expression image and a figure, as a provider.
fl::RenderResult themedSheet() {
    const std::string fig =
        fl::addFigure(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 600 200" )"
                      R"(width="600" height="200"><rect x="10" y="10" width="580" height="180" )"
                      R"(fill="#2457d6"/></svg>)");
    std::string html =
        "<div class=\"tbl\"><table><tr><th>a</th></tr><tr><td>1</td></tr></table></div>"
        "<div class=\"steps\"><div class=\"step\"><p class=\"h4\"><span class=\"stnum\">1</span> "
        "Trin</p><p>" +
        fl::renderMath(fl::parse("U/R")) + "</p></div></div><p class=\"fig\"><img src=\"" + fig +
        "\" width=\"600\" height=\"200\"></p>";
    return fl::takeRender(html);
}

// Lays out and paints the whole view: expressions are drawn as the text is
// laid out, figures when they are painted.
void paintWhole(app::SheetView& view) {
    QImage shot(view.size().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    view.render(&shot);
}

QImage cached(const app::SheetView& view, const QString& name) {
    return view.images().value(name).value<QImage>();
}

QColor inkColour(const QImage& image) {
    const QImage img = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (qAlpha(img.pixel(x, y)) == 255) return QColor(img.pixel(x, y));
    return {};
}

// Images are drawn once per content and theme: showing the steps again
// reuses them; a change of theme redraws them, and the stripes, in its
// colours; new content draws its own.
TEST_F(SheetViewTest, imagesAreRedrawnForANewThemeOrNewContentOnly) {
    app::SheetView view;
    view.resize(700, 100);
    view.setStepMode(true);
    view.setProvider(themedSheet);
    view.revealAll();
    paintWhole(view);
    EXPECT_EQ(inkColour(cached(view, "m:0")), QColor("#1b1f24"));
    const qint64 maths = cached(view, "m:0").cacheKey(), figure = cached(view, "f:0").cacheKey();
    view.setStepMode(false);
    view.setStepMode(true);
    view.revealNext();
    paintWhole(view);
    EXPECT_EQ(cached(view, "m:0").cacheKey(), maths);

    app::setThemeMode(app::ThemeDark);
    view.refresh();
    view.revealAll();
    paintWhole(view);
    EXPECT_EQ(inkColour(cached(view, "m:0")), QColor("#e6e8eb"));
    ASSERT_FALSE(cached(view, "f:0").isNull());
    EXPECT_NE(cached(view, "f:0").cacheKey(), figure);
    const qint64 dark = cached(view, "m:0").cacheKey();
    view.setProvider(themedSheet);
    view.revealAll();
    paintWhole(view);
    EXPECT_NE(cached(view, "m:0").cacheKey(), dark) << "new content, new images";
}

// The width the document gives the figure "f:0".
int figureWidth(const app::SheetView& view) {
    for (QTextBlock b = view.document()->begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat f = it.fragment().charFormat();
            if (f.isImageFormat() && f.toImageFormat().name() == "f:0") return int(f.toImageFormat().width());
        }
    return -1;
}

TEST_F(SheetViewTest, aWiderOrNarrowerViewRefitsItsFigures) {
    app::SheetView view;
    view.resize(800, 100);
    view.show();
    view.setProvider(themedSheet);
    EXPECT_EQ(figureWidth(view), 600);
    // The stylesheet's padding makes the viewport narrower than the widget.
    QApplication::processEvents();
    const int padding = view.width() - view.viewport()->width();
    view.resize(400 + padding, view.height());
    QApplication::processEvents();
    EXPECT_EQ(figureWidth(view), 370);
    EXPECT_EQ(cached(view, "f:0").deviceIndependentSize().toSize(), QSize(370, 123))
        << "drawn at its new size";
    view.resize(390 + padding, view.height()); // within 12 pixels: no rebuild
    QApplication::processEvents();
    EXPECT_EQ(figureWidth(view), 370);
    view.resize(100 + padding, view.height()); // narrower than 200 counts as 200
    QApplication::processEvents();
    EXPECT_EQ(figureWidth(view), 170);
}

TEST_F(SheetViewTest, stepModeFollowsTheHost) {
    app::test::FakeHost host;
    host.steps = true;
    app::ResultArea area(&host);
    EXPECT_TRUE(area.view()->inStepMode()) << "from the host at construction";
    host.setStepMode(false);
    EXPECT_FALSE(area.view()->inStepMode());

    app::options().trinvis = true;
    EXPECT_TRUE(app::ResultArea(nullptr).view()->inStepMode()) << "without a host, from the options";
}

// The glyphs as the text engine set them, not the format asked for: the
// fragment's runs at `pt` points, on the line's baseline.
void expectSetOnTheLine(const QTextBlock& block, const QTextFragment& frag, double pt, int dpi) {
    const QTextLine line = block.layout()->lineForTextPosition(frag.position() - block.position());
    const double wantPx = pt * dpi / 72.0;
    for (const QGlyphRun& run : line.glyphRuns(frag.position() - block.position(), frag.length())) {
        EXPECT_NEAR(run.rawFont().pixelSize(), wantPx, 0.6) << frag.text().toStdString();
        for (const QPointF& p : run.positions())
            EXPECT_NEAR(p.y(), line.y() + line.ascent(), 0.6) << frag.text().toStdString();
    }
}

// Every formula of the catalogue, on a tile (13 pt), a card (16 pt) and its
// own page (19 pt), at normal and the largest text size: the line's text is
// all of one size with the function names upright, and an expression image
// in it is drawn at that size with its main baseline on the text's.
TEST_F(SheetViewTest, everyPrimaryFormSitsOnOneBaselineAtOneSize) {
    const char* const lines[] = {"<span class=\"eq\" style=\"font-size:13pt\">%1</span>",
                                 "<p class=\"eq\" style=\"font-size:16pt\">%1</p>",
                                 "<div class=\"eq\">%1</div>"};
    const double sizes[] = {13, 16, 19};
    for (const double scale : {1.0, 1.3}) {
        app::setTextScale(scale);
        for (const fl::Formula& f : fl::catalogue()) {
            if (f.forms.empty()) continue;
            for (int kind = 0; kind < 3; ++kind) {
                SCOPED_TRACE(f.key + " at " + std::to_string(sizes[kind]) + " pt × " + std::to_string(scale));
                const double pt = sizes[kind] * scale;
                app::SheetView view;
                view.resize(900, 300);
                view.setProvider([&] {
                    const std::string line = fl::primaryFormula(f);
                    return fl::takeRender(
                        QString::fromLatin1(lines[kind]).arg(QString::fromStdString(line)).toStdString());
                });
                const QTextBlock block = view.document()->begin();
                const QTextLine text = block.layout()->lineAt(0);
                ASSERT_TRUE(text.isValid());
                ASSERT_EQ(block.layout()->lineCount(), 1);
                for (auto it = block.begin(); !it.atEnd(); ++it) {
                    const QTextFragment frag = it.fragment();
                    const QTextCharFormat fmt = frag.charFormat();
                    EXPECT_NEAR(fmt.fontPointSize(), pt, 0.06) << frag.text().toStdString();
                    const QString word = frag.text().trimmed();
                    if (word == "cos" || word == "sin" || word == "tan") {
                        EXPECT_FALSE(fmt.fontItalic());
                    }
                    if (!fmt.isImageFormat() && fmt.verticalAlignment() == QTextCharFormat::AlignNormal)
                        expectSetOnTheLine(block, frag, pt, view.logicalDpiY());
                    if (!fmt.isImageFormat()) continue;
                    EXPECT_EQ(fmt.verticalAlignment(), QTextCharFormat::AlignMiddle);
                    const QString name = fmt.toImageFormat().name();
                    const QImage drawn = view.images().value(name).value<QImage>();
                    ASSERT_FALSE(drawn.isNull()) << name.toStdString();
                    // The text engine centres an image on half an x-height above the baseline.
                    const double halfX = QFontMetrics(fmt.font()).xHeight() / 2.0;
                    const double ascent = (drawn.deviceIndependentSize().height() + halfX) / 2.0;
                    const int n = name.mid(2).toInt();
                    // The size the image must have been drawn at, set here and not
                    // taken from the view's own choice of style.
                    app::MathStyle line;
                    line.font = QFont(QStringLiteral("Cambria Math"));
                    line.font.setPointSizeF(pt);
                    line.lineHeight = 18 * pt / 13;
                    line.around = line.font;
                    const app::MathMetrics m = app::mathMetrics(view.mathNode(n), line);
                    EXPECT_NEAR(m.size.width(), drawn.deviceIndependentSize().width(), 1.0);
                    EXPECT_NEAR(m.size.height(), drawn.deviceIndependentSize().height(), 1.0);
                    EXPECT_NEAR(m.baseline, ascent, 1.0);
                }
            }
        }
    }
}

// Headings, and the remarks in them, are as large as the stylesheet says at
// every text size: the text engine would size a heading element from its
// own default font.
TEST_F(SheetViewTest, headingsFollowTheStylesheetAtEveryTextSize) {
    struct Row {
        const char* text;
        double pt;
    };
    const Row rows[] = {{"Udregning", 17}, {"Formler", 11.5}, {"(s. 3)", 9}, {"Trin", 10.5}, {"Tekst", 11}};
    for (const double scale : {1.0, 1.3}) {
        SCOPED_TRACE(scale);
        app::setTextScale(scale);
        app::SheetView view;
        view.resize(700, 300);
        view.setContent(
            markup("<h2>Udregning</h2><h3 class=\"sh\">Formler <span class=\"crumb\">(s. 3)</span></h3>"
                   "<h4>Trin</h4><p>Tekst</p>"));
        for (const Row& r : rows) {
            SCOPED_TRACE(r.text);
            const QTextCursor at = view.document()->find(QString::fromUtf8(r.text));
            ASSERT_FALSE(at.isNull());
            const QTextBlock block = at.block();
            bool found = false;
            for (auto it = block.begin(); !it.atEnd(); ++it)
                if (it.fragment().text().trimmed() == QString::fromUtf8(r.text)) {
                    found = true;
                    expectSetOnTheLine(block, it.fragment(), r.pt * scale, view.logicalDpiY());
                }
            EXPECT_TRUE(found);
        }
    }
}

// A long worked sheet is one card: its first screens show at once and the
// rest arrives, in order, while the event loop runs. The document draws the
// card's frame itself, so that the pieces append without laying out what came
// before; a figure is drawn only once it is painted; new content drops what an
// older one still had to append.
TEST_F(SheetViewTest, aLongWorkedSheetArrivesInPiecesFramedByItsDocument) {
    std::string html = "<div class=\"card sheet\"><h2>Ark</h2>";
    for (int i = 0; i < 60; ++i)
        html += "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">" + std::to_string(i + 1) +
                "</span> Trin " + std::to_string(i) + "</p><p>" + std::string(300, 'x') + "</p></div>";
    const std::string fig =
        fl::addFigure(R"(<svg xmlns="http://www.w3.org/2000/svg" width="300" height="100">)"
                      R"(<rect width="300" height="100" fill="#2457d6"/></svg>)");
    html += "<p class=\"fig\"><img src=\"" + fig + "\" width=\"300\" height=\"100\"></p></div>";
    const fl::RenderResult sheet = fl::takeRender(html);
    QWidget top;
    top.resize(900, 600);
    auto* view = new app::SheetView(&top);
    view->resize(880, 10);
    top.show();
    view->setContent(sheet);
    ASSERT_TRUE(view->loading());
    EXPECT_TRUE(view->document()->toPlainText().contains("Trin 0"));
    EXPECT_FALSE(view->document()->toPlainText().contains("Trin 59"));
    EXPECT_FALSE(view->visibleHtml().contains("cellpadding=\"14\"")) << "the card is no table";
    const QTextFrameFormat frame = view->document()->rootFrame()->frameFormat();
    EXPECT_EQ(frame.border(), 1);
    EXPECT_EQ(frame.padding(), 14);
    EXPECT_EQ(frame.borderBrush().color(), QColor("#d3d9e1"));
    for (int round = 0; round < 200 && view->loading(); ++round)
        QApplication::processEvents();
    ASSERT_FALSE(view->loading());
    const QString all = view->document()->toPlainText();
    for (int i = 1; i < 60; ++i)
        ASSERT_LT(all.indexOf(QString("Trin %1").arg(i - 1)), all.indexOf(QString("Trin %1").arg(i))) << i;
    EXPECT_EQ(view->document()->rootFrame()->frameFormat().padding(), 14) << "pieces keep the frame";
    EXPECT_GT(view->height(), 2000);
    EXPECT_FALSE(view->images().contains("f:0")) << "below the window, not painted yet";
    QImage shot(view->size(), QImage::Format_ARGB32_Premultiplied);
    view->render(&shot);
    EXPECT_EQ(cached(*view, "f:0").deviceIndependentSize().toSize(), QSize(300, 100));

    view->setContent(sheet);
    view->setContent(markup("<p>Kort</p>"));
    for (int round = 0; round < 50; ++round)
        QApplication::processEvents();
    EXPECT_EQ(view->document()->toPlainText().trimmed(), "Kort");
}

// A page out of view writes its markup when it is shown again, not at every
// change of theme or text size meanwhile.
TEST_F(SheetViewTest, aViewOutOfSightRefreshesWhenShownAgain) {
    QWidget top;
    auto* view = new app::SheetView(&top);
    top.show();
    int written = 0;
    view->setProvider([&written] {
        ++written;
        return markup("<p>x</p>");
    });
    ASSERT_EQ(written, 1);
    view->hide();
    view->refresh();
    view->refresh();
    EXPECT_EQ(written, 1);
    view->show();
    EXPECT_EQ(written, 2);
}

// A figure the core kept as shapes is painted from them; one without, or
// beyond the list of shapes, is rendered from its SVG.
TEST_F(SheetViewTest, figuresWithShapesArePaintedFromThemAndTheRestFromTheirSvg) {
    const std::string ink = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 20" width="40" )"
                            R"(height="20"><rect x="0" y="0" width="40" height="20" fill="#2457d6"/></svg>)";
    // Shapes that draw nothing: an image from them stays transparent.
    auto nothing = std::make_shared<fl::ShapeFigure>();
    nothing->w = 40, nothing->h = 20;
    fl::RenderResult r;
    for (int n = 0; n < 3; ++n)
        r.html += "<p class=\"fig\"><img src=\"f:" + std::to_string(n) + "\" width=\"40\" height=\"20\"></p>";
    r.figs = {ink, ink, ink};
    r.figShapes = {nothing, nullptr};
    app::SheetView view;
    view.resize(400, 100);
    view.setContent(r);
    paintWhole(view);
    const struct {
        const char* name;
        bool fromShapes;
    } rows[] = {{"f:0", true}, {"f:1", false}, {"f:2", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const QImage img = cached(view, row.name);
        ASSERT_FALSE(img.isNull());
        EXPECT_EQ(img.deviceIndependentSize().toSize(), QSize(40, 20));
        EXPECT_EQ(inkColour(img).isValid(), !row.fromShapes);
    }
}

// What a student sees must not change with the painter: every figure of an
// ac circuit's sheet (coils, capacitors, triangles, phasors), painted from its
// shapes at the size the sheet gives it and narrowed as in a small window,
// against its SVG rendered at that size. The figure view's test holds the
// painter in the dark theme.
TEST_F(SheetViewTest, sheetFiguresPaintedFromShapesLookAsTheirSvg) {
    fl::Circuit c = fl::defaultCircuit("ac");
    c.src["U"] = "230";
    c.root->ch = {fl::makeNode("R", "47"),
                  fl::makeNode("P", "",
                               {fl::makeNode("L", "0,2"),
                                fl::makeNode("S", "", {fl::makeNode("R", "100"), fl::makeNode("C", "47u")})}),
                  fl::makeNode("A", "")};
    const fl::RenderResult sheet = fl::takeRender(fl::regneark(fl::computeSheet(c), c, "x"));
    const QMap<QString, QSize> sizes = app::figureSizes(QString::fromStdString(sheet.html));
    int compared = 0;
    for (size_t n = 0; n < sheet.figs.size(); ++n) {
        const fl::ShapeFigure* shapes = sheet.shapesOf(n);
        if (!shapes) continue;
        const QSize size = sizes.value("f:" + QString::number(n));
        SCOPED_TRACE("f:" + std::to_string(n));
        ASSERT_TRUE(size.isValid());
        for (const QSize at : {size, size * 0.6}) {
            QImage painted = app::test::panelImage(at.width(), at.height());
            QImage rendered = painted;
            QPainter(&painted).drawImage(0, 0, app::paintFigure(*shapes, 1, at));
            QPainter(&rendered).drawImage(0, 0, app::renderFigure(sheet.figs[n], 1, at));
            EXPECT_LT(app::test::blockDifference(painted, rendered), app::test::kSame) << at.width();
        }
        ++compared;
    }
    EXPECT_GE(compared, 5);
}

} // namespace
