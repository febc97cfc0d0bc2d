// The sheet view as a widget: whole-cell clicks on tiles, its height, the
// image cache across rebuilds, redrawing on a change of theme, refitting
// figures on resize, and the result area's PDF bar.
#include "app/sheet/resultarea.h"
#include "app/sheet/sheettext.h"
#include "app/shell/options.h"
#include "app/shell/theme.h"
#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/formulas/home.h"
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QTextBlock>
#include <QTextDocument>

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

void send(QWidget* target, QEvent::Type type, QPoint pos, Qt::MouseButton button) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::MouseButtons(button) : Qt::NoButton;
    QMouseEvent e(type, pos, target->mapToGlobal(pos), button, held, Qt::NoModifier);
    QApplication::sendEvent(target, &e);
}

void click(QWidget* target, QPoint pos) {
    send(target, QEvent::MouseButtonPress, pos, Qt::LeftButton);
    send(target, QEvent::MouseButtonRelease, pos, Qt::LeftButton);
}

// The home page's own tiles: every cell is one link.
std::string tiles() {
    const fl::TileLook look{"#ffffff", "#d3d9e1", "#1b1f24", "#2457d6"};
    return "<h3 class=\"sh\">Mest brugt</h3>" +
           fl::tileGrid(
               {"kreds", "kredsac", "ovelser", "udregnere"}, false, [](const std::string&) { return true; },
               look) +
           "<p>Tekst med et <a href=\"go:ordliste\">link</a> under.</p>";
}

// A point inside the first tile's padding, off its link, and one on the link's text.
struct TilePoints {
    QPoint padding, link;
};

TilePoints tilePoints(const app::SheetView& view) {
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
    view.setContent(markup(tiles()));
    view.show();
    QStringList actions;
    QObject::connect(&view, &app::SheetView::action, [&](const QString& href) { actions << href; });

    const TilePoints p = tilePoints(view);
    ASSERT_FALSE(p.padding.isNull());
    ASSERT_FALSE(p.link.isNull());
    ASSERT_TRUE(view.anchorAt(p.padding).isEmpty());

    struct Row {
        const char* name;
        QPoint pos;
        QStringList expected;
    };
    const Row rows[] = {
        {"padding of the tile, by the release", p.padding, {"go:kreds"}},
        {"its link, by the browser alone", p.link, {"go:kreds"}},
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

TEST_F(SheetViewTest, heightFollowsTheDocumentAndClearGivesNone) {
    app::SheetView view;
    view.resize(600, 50);
    view.setContent(markup("<p>Én linje.</p>"));
    const int one = view.height();
    view.setContent(markup("<p>1</p><p>2</p><p>3</p><p>4</p><p>5</p><p>6</p>"));
    EXPECT_GT(view.height(), one + 40);
    view.show();
    QApplication::processEvents();
    // Inside the stylesheet's padding the viewport holds the whole document.
    EXPECT_NEAR(view.viewport()->height(), view.document()->size().height() + 4, 1.0);
    view.clear();
    EXPECT_EQ(view.height(), 0);
    EXPECT_FALSE(view.hasContent());
}

// A sheet with a data table, an expression image and a figure, as a provider.
fl::RenderResult themedSheet() {
    const std::string fig =
        fl::addFigure(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 600 200" )"
                      R"(width="600" height="200"><rect x="10" y="10" width="580" height="180" )"
                      R"(fill="#2457d6"/></svg>)");
    std::string html = "<div class=\"tbl\"><table><tr><th>a</th></tr><tr><td>1</td></tr></table></div><p>" +
                       fl::renderMath(fl::parse("U/R")) + "</p><p class=\"fig\"><img src=\"" + fig +
                       "\" width=\"600\" height=\"200\"></p>";
    return fl::takeRender(html);
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

TEST_F(SheetViewTest, aChangeOfThemeRedrawsStripesAndImages) {
    app::SheetView view;
    view.resize(700, 100);
    view.setProvider(themedSheet);
    view.document()->size(); // lays out, which loads the images
    EXPECT_TRUE(view.visibleHtml().contains("bgcolor=\"#f4f6f9\""));
    EXPECT_EQ(inkColour(cached(view, "m:0")), QColor("#1b1f24"));
    const qint64 before = cached(view, "f:0").cacheKey();

    app::setThemeMode(app::ThemeDark);
    view.refresh();
    view.document()->size();
    EXPECT_TRUE(view.visibleHtml().contains("bgcolor=\"#1f232a\""));
    EXPECT_EQ(inkColour(cached(view, "m:0")), QColor("#e6e8eb"));
    ASSERT_FALSE(cached(view, "f:0").isNull());
    EXPECT_NE(cached(view, "f:0").cacheKey(), before);
}

TEST_F(SheetViewTest, imagesAreDrawnOncePerContent) {
    app::SheetView view;
    view.resize(700, 100);
    std::string html = "<div class=\"steps\">";
    for (const char* e : {"U/R", "sqrt(P*R)", "1/(2*pi*f*C)"})
        html += "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">1</span> Trin</p><p>" +
                fl::renderMath(fl::parse(e)) + "</p></div>";
    fl::RenderResult r = fl::takeRender(html + "</div>");
    view.setStepMode(true);
    view.setContent(r);
    view.revealAll();
    view.document()->size();
    const qint64 first = cached(view, "m:0").cacheKey();
    view.setStepMode(false);
    view.setStepMode(true);
    view.revealNext();
    view.document()->size();
    EXPECT_EQ(cached(view, "m:0").cacheKey(), first);
    view.setContent(r);
    view.revealAll();
    view.document()->size();
    EXPECT_NE(cached(view, "m:0").cacheKey(), first) << "new content, new images";
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
}

TEST_F(SheetViewTest, pdfBarShowsOnlyWithSomethingToPrint) {
    app::ResultArea area(nullptr);
    area.resize(600, 300);
    EXPECT_TRUE(area.pdfBar()->isHidden());
    area.setHtml("<p>Et svar.</p>");
    EXPECT_FALSE(area.pdfBar()->isHidden());
    area.setHtml("");
    EXPECT_TRUE(area.pdfBar()->isHidden());
    area.setHtml("<p>Et svar.</p>");
    area.clear();
    EXPECT_TRUE(area.pdfBar()->isHidden());
    EXPECT_EQ(area.view()->height(), 0);
}

TEST_F(SheetViewTest, stepModeFollowsTheHost) {
    app::test::FakeHost host;
    host.steps = true;
    app::ResultArea area(&host);
    EXPECT_TRUE(area.view()->inStepMode()) << "from the host at construction";
    host.setStepMode(false);
    EXPECT_FALSE(area.view()->inStepMode());
    host.setStepMode(true);
    EXPECT_TRUE(area.view()->inStepMode());

    app::options().trinvis = true;
    EXPECT_TRUE(app::ResultArea(nullptr).view()->inStepMode()) << "without a host, from the options";
}

} // namespace
