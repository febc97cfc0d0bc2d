#include "fl/fig/canvas.h"

#include "tests/fl/fig/svg_check.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>

namespace fl {
namespace {

using testing::svgElements;
using testing::svgProblem;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(CanvasTest, elementsWithNumbersThatAreNotFiniteAreLeftOut) {
    const double inf = std::numeric_limits<double>::infinity();
    Canvas cv;
    cv.line(0, kNaN, 1, 1, "ln");
    cv.rect(0, 0, inf, 1, "comp");
    cv.circle(kNaN, 0, 3, "node");
    cv.polygon({{0, 0}, {1, kNaN}, {2, 2}}, "shape");
    cv.arrow(0, 0, inf, 0, "cur");
    cv.text(kNaN, 0, "U", "middle", "");
    cv.arc(0, 0, 10, kNaN, 40, "ang");
    EXPECT_TRUE(cv.items.empty());
    cv.line(0, 0, 1, 1, "ln");
    EXPECT_EQ(svgProblem(cv.document(10, 10)), "");
}

TEST(CanvasTest, aSubscriptIsItsOwnSmallerLoweredText) {
    Canvas cv;
    cv.text(100, 50, "U<sub>R1</sub> = 5 V", "middle", "");
    const auto el = svgElements(cv.document(200, 100));
    // Halo and letters for each of three runs.
    ASSERT_EQ(el.size(), 6u);
    const auto &u = el[3], &sub = el[4], &rest = el[5];
    EXPECT_EQ(u.text, "U");
    EXPECT_EQ(sub.text, "R1");
    EXPECT_EQ(rest.text, " = 5 V");
    EXPECT_LT(sub.num("font-size"), u.num("font-size"));
    EXPECT_GT(sub.num("y"), u.num("y"));
    EXPECT_EQ(rest.num("y"), u.num("y"));
    EXPECT_LT(u.num("x"), sub.num("x"));
    EXPECT_LT(sub.num("x"), rest.num("x"));
}

TEST(CanvasTest, textIsEscapedAndKeepsItsSpaces) {
    Canvas cv;
    cv.text(10, 10, "a < b & c", "start", "");
    const auto el = svgElements(cv.document(100, 20));
    ASSERT_EQ(el.size(), 2u);
    EXPECT_EQ(el[1].text, "a < b & c");
    EXPECT_EQ(el[1].attrs.at("xml:space"), "preserve");
}

TEST(CanvasTest, anArrowEndsInItsHeadAndAShortOneKeepsAHead) {
    for (double len : {100.0, 8.0}) {
        SCOPED_TRACE(len);
        Canvas cv;
        cv.arrow(10, 50, 10 + len, 50, "cur", 13, 9);
        const auto el = svgElements(cv.document(200, 100));
        ASSERT_EQ(el.size(), 2u);
        EXPECT_EQ(el[0].tag, "line");
        EXPECT_EQ(el[1].tag, "polygon");
        // The head's tip is the arrow's end; the line stops at the head's base.
        EXPECT_EQ(el[1].attrs.at("points").substr(0, el[1].attrs.at("points").find(' ')),
                  num(10 + len) + ",50");
        EXPECT_LT(el[0].num("x2"), 10 + len);
        EXPECT_GT(el[0].num("x2"), 10);
    }
}

// Mapped points of a fitted polygon stay inside the margins, the drawing is
// centred and undistorted.
TEST(FigTest, aFittedPolygonIsCentredInsideItsMarginsAndUndistorted) {
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> coord(-1e3, 1e3);
    for (int round = 0; round < 200; ++round) {
        Fig fig;
        const int n = 2 + round % 5;
        for (int k = 0; k < n; ++k)
            fig.pts.push_back({coord(rng), coord(rng) * (round % 3 == 0 ? 1e-3 : 1)});
        fig.W = 460, fig.H = 280, fig.mx = 90, fig.my = 36;
        fig.fit();
        double x0 = 1e9, x1 = -1e9, y0 = 1e9, y1 = -1e9;
        for (const Pt& p : fig.polyPoints(fig.pts)) {
            x0 = std::min(x0, p.x), x1 = std::max(x1, p.x), y0 = std::min(y0, p.y), y1 = std::max(y1, p.y);
        }
        EXPECT_GE(x0, 90 - 1e-6);
        EXPECT_LE(x1, 370 + 1e-6);
        EXPECT_GE(y0, 36 - 1e-6);
        EXPECT_LE(y1, 244 + 1e-6);
        EXPECT_NEAR((x0 + x1) / 2, 230, 1e-6);
        EXPECT_NEAR((y0 + y1) / 2, 140, 1e-6);
        // One scale in both directions: a model distance keeps its ratio.
        const Pt a = fig.pt(fig.pts[0]), b = fig.pt(fig.pts[1]);
        EXPECT_NEAR(std::hypot(b.x - a.x, b.y - a.y),
                    std::hypot(fig.pts[1].x - fig.pts[0].x, fig.pts[1].y - fig.pts[0].y) * fig.scale,
                    1e-6 * std::max(1.0, fig.scale));
    }
}

TEST(FigTest, aSoughtSideIsDrawnAgainHighlighted) {
    Fig fig;
    fig.pts = {{0, 0}, {4, 0}, {4, 3}};
    fig.edges = {{0, 1, "a = 4", ""}, {1, 2, "b = 3", "hl"}, {0, 2, "c", ""}};
    const std::string svg = svgDocument(drawFig(fig));
    EXPECT_EQ(svgProblem(svg), "");
    int highlighted = 0;
    for (const auto& e : svgElements(svg))
        if (e.tag == "line" && e.attrs.count("stroke-width") && e.attrs.at("stroke-width") == "4.5")
            ++highlighted;
    EXPECT_EQ(highlighted, 1);
}

TEST(AxesTest, tickStepsAreOneTwoAndAHalfFiveOrTenTimesAPowerOfTen) {
    const struct {
        double span, step;
    } rows[] = {{13, 1}, {1.3, 0.1}, {30, 2.5}, {60, 5}, {100, 10}, {0.004, 0.0005}, {0, 1}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.span);
        EXPECT_NEAR(tickStep(r.span), r.step, 1e-12);
    }
}

// A canvas that keeps shapes records each element the SVG holds, as the
// painter needs it, in either theme; path() and raw() are for SVG alone.
TEST(CanvasTest, keptShapesAreTheSvgElementsOneForOne) {
    struct Row {
        const char* name;
        std::function<void(Canvas&)> draw;
        size_t shapes;
    };
    const Row rows[] = {
        {"line of a class", [](Canvas& c) { c.line(1, 2, 30.04, 40, "grid"); }, 1},
        {"stroke without a width", [](Canvas& c) { c.line(0, 0, 10, 10, "w2"); }, 1},
        {"rounded rectangle", [](Canvas& c) { c.rect(4, 5, 60, 20, "comp", 2); }, 1},
        {"node", [](Canvas& c) { c.circle(50, 60, 4.5, "node"); }, 1},
        {"curve",
         [](Canvas& c) {
             c.polyline({{0, 0}, {10, 5.55}, {20, 0}}, "w1 ln");
         },
         1},
        {"arrow: a line and a head", [](Canvas& c) { c.arrow(10, 100, 200, 30, "res"); }, 2},
        {"sector and bow",
         [](Canvas& c) {
             c.arc(100, 100, 30, -58.2, 0, "ang");
             c.bow(100, 100, 20, 10, 200, "thin");
         },
         2},
        {"label: halo, then letters", [](Canvas& c) { c.text(100, 50, "f = 50 Hz", "start", "sym"); }, 2},
        {"subscripts: halos of all runs before the letters",
         [](Canvas& c) { c.text(200, 50, "f<sub>0</sub> = 71 Hz", "middle", "hl"); }, 6},
        {"anchored at the end, squeezed to fit",
         [](Canvas& c) { c.textFit(300, 40, "i / A", "end", "vl2", 12); }, 2},
        {"path and raw are left out",
         [](Canvas& c) {
             c.path("M0 0 L10 10", "wire");
             c.raw("<circle cx=\"1\" cy=\"1\" r=\"1\"/>");
         },
         0},
    };
    for (const bool dark : {false, true}) {
        setFigColors(dark ? testing::otherFigColors() : lightFigColors());
        for (const Row& r : rows) {
            SCOPED_TRACE(std::string(r.name) + (dark ? " (dark)" : ""));
            Canvas c;
            c.keepShapes = true;
            c.setBounds(460, 280);
            r.draw(c);
            EXPECT_EQ(c.shapes.size(), r.shapes);
            if (r.shapes == 0) continue;
            EXPECT_EQ(testing::shapeProblem(c.shapes, c.document(460, 280)), "");
            Canvas plain;
            plain.keepShapes = false;
            r.draw(plain);
            EXPECT_TRUE(plain.shapes.empty());
            EXPECT_EQ(plain.body(), c.body());
        }
    }
    setFigColors(lightFigColors());
}

// A sheet paints a figure from its shapes only when they hold all of it,
// and finds them by the figure's number however results are joined.
TEST(CanvasTest, aFigureCarriesItsShapesIntoTheSheetOnlyWhenTheyAreWhole) {
    const auto figureOf = [](const std::string& word, const std::function<void(Canvas&)>& more) {
        Canvas c;
        c.text(20, 10, word, "start", "");
        if (more) more(c);
        return FigureOut(c.body(), 60, 20, {}, c.takeShapes());
    };
    const struct {
        const char* name;
        std::function<void(Canvas&)> more;
        bool whole;
    } rows[] = {
        {"lines, a bow and a label",
         [](Canvas& c) {
             c.line(0, 0, 5, 5, "wire");
             c.bow(9, 9, 4, 180, 0, "wire coil");
         },
         true},
        {"with a path", [](Canvas& c) { c.path("M0 0 L10 10", "wire"); }, false},
        {"with a raw element", [](Canvas& c) { c.raw("<g/>"); }, false},
        {"not kept", [](Canvas& c) { c.keepShapes = false; }, false},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        resetFigures();
        FigureOut fig = figureOf("x", r.more);
        EXPECT_EQ(fig.shapes.empty(), !r.whole);
        figureMarkup(std::move(fig));
        const RenderResult sheet = takeRender("");
        ASSERT_EQ(sheet.figs.size(), 1u);
        EXPECT_EQ(sheet.shapesOf(0) != nullptr, r.whole);
    }

    // A figure without shapes first, then two results joined: each keeps its own.
    resetFigures();
    figureMarkup(figureOf("a", [](Canvas& c) { c.raw("<g/>"); }));
    figureMarkup(figureOf("b", nullptr));
    RenderResult first = takeRender("");
    RenderResult svgOnly;
    svgOnly.figs = {"<svg/>"};
    figureMarkup(figureOf("c", nullptr));
    RenderResult second = takeRender("");
    svgOnly.append(first);
    svgOnly.append(second);
    svgOnly.append(RenderResult{"", {"<svg/>"}, {}, {}});
    ASSERT_EQ(svgOnly.figs.size(), 5u);
    const char* const expected[] = {nullptr, nullptr, "b", "c", nullptr};
    for (size_t n = 0; n < 5; ++n) {
        SCOPED_TRACE(n);
        const ShapeFigure* shapes = svgOnly.shapesOf(n);
        ASSERT_EQ(shapes != nullptr, expected[n] != nullptr);
        if (shapes) {
            EXPECT_EQ(shapes->shapes.back().text, expected[n]);
        }
    }
    resetFigures();
}

} // namespace
} // namespace fl
