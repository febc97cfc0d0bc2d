// The live figure paints what the SVG renderer shows of the same figure: the
// demonstration's three figures and the machine tools' live figures, painted
// from their shapes and rendered from their SVG, in both themes, differ only
// where glyph edges are rasterised a little differently.
#include "app/widgets/figureview.h"

#include "tests/app/figure_compare.h"
#include "tests/app/fresh_app.h"

#include "fl/tools/ac.h"
#include "fl/tools/machinefigs.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

using FigureViewTest = FreshAppTest;

QImage rendered(const fl::FigureOut& fig) {
    QImage img = app::test::panelImage(fig.w, fig.h);
    QSvgRenderer svg(QByteArray::fromStdString(fl::svgDocument(fig)));
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    svg.render(&p, QRectF(0, 0, fig.w, fig.h));
    return img;
}

QImage painted(const fl::FigureOut& fig) {
    QImage img = app::test::panelImage(fig.w, fig.h);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    app::paintShapes(p, fig.shapes, 1, {});
    return img;
}

// The demonstration's figures and the machine tools' live figures: coils, the
// source's sine, resistors at an angle, unknowns, given and found values.
TEST_F(FigureViewTest, paintsEveryFigureAsTheSvgRendererShowsIt) {
    const fl::MachineValues v{
        {{"U_N", 400}, {"I_N", 11}, {"P_2", 5500}, {"cosphi", 0.83}, {"R", 20}, {"U_P", 230}, {"U_S", 12}},
        {"I_N", "U_S"}};
    for (const int theme : {app::ThemeLight, app::ThemeDark}) {
        app::setThemeMode(theme);
        const fl::DemoView demo = fl::demoView(fl::DemoSetting{});
        std::vector<std::pair<std::string, fl::FigureOut>> figures = {
            {"motor", fl::motorFigure(v, true, false)},
            {"motor star-delta", fl::motorFigure(v, false, true)},
            {"transformer", fl::transformerFigure(v)},
            {"star", fl::connectionFigure(v, true, "R")},
            {"delta", fl::connectionFigure(v, false, "Z")},
        };
        for (const fl::FigureOut* fig : {&demo.curves, &demo.phasors, &demo.resonance})
            figures.emplace_back("demonstration, " + std::to_string(fig->w) + " wide", *fig);
        for (const auto& [name, fig] : figures) {
            SCOPED_TRACE(name + (theme == app::ThemeDark ? ", dark" : ""));
            EXPECT_LT(app::test::blockDifference(painted(fig), rendered(fig)), app::test::kSame);
        }
    }
}

// Without letters both ways draw nearly the same pixels (a block differs by
// under 1), so a finer measure holds here: a lost dash pattern moves a block
// by about 13, a square corner by about 40, both within what the figures
// above must allow for glyph edges.
TEST_F(FigureViewTest, dashesAndRoundedCornersArePaintedAsTheSvgShowsThem) {
    for (const int theme : {app::ThemeLight, app::ThemeDark}) {
        app::setThemeMode(theme);
        fl::Canvas cv;
        cv.line(10, 12, 230, 12, "dash");
        cv.rect(10, 30, 100, 60, "comp", 10);
        cv.rect(130, 30, 100, 60, "gbox", 8);
        const fl::FigureOut fig(cv.body(), 240, 100, {}, cv.takeShapes());
        ASSERT_EQ(fig.shapes.size(), 3u);
        EXPECT_LT(app::test::blockDifference(painted(fig), rendered(fig)), 4) << theme;
    }
}

} // namespace
