#include "fl/fig/phasor.h"

#include "fl/circuit/forward.h"
#include "fl/expr/numbers.h"
#include "fl/fig/triangles.h"
#include "tests/fl/circuit/trees.h"
#include "tests/fl/fig/svg_check.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <optional>
#include <random>

namespace fl {
namespace {

using testing::group;
using testing::leaf;
using testing::svgElements;
using testing::svgProblem;

constexpr double kDeg = 0.017453292519943295;

struct Arrow {
    double x1, y1, x2, y2; // tail and tip, on the screen
    double length() const { return std::hypot(x2 - x1, y2 - y1); }
    double angle() const { return std::atan2(-(y2 - y1), x2 - x1); } // y up
};

// Arrows as drawn: a line followed by its head, whose first point is the tip.
std::vector<Arrow> arrowsOf(const std::string& svg) {
    const auto el = svgElements(svg);
    std::vector<Arrow> out;
    for (size_t i = 0; i + 1 < el.size(); ++i) {
        if (el[i].tag != "line" || el[i + 1].tag != "polygon" || el[i].attrs.at("fill") != "none") continue;
        if (!el[i].has("stroke-width") || el[i].attrs.at("stroke-width") != "2.5") continue;
        const Pt tip = testing::svgPoints(el[i + 1])[0];
        out.push_back({el[i].num("x1"), el[i].num("y1"), tip.x, tip.y});
    }
    return out;
}

// Each arrow of a part and of the sum stands for its phasor: one scale for
// all, the angle from forward's phasors relative to the reference, to within
// 0.5°. The reference is drawn first, horizontally.
void checkScene(const std::string& svg, const std::vector<std::complex<double>>& parts,
                std::complex<double> sum, std::complex<double> reference) {
    ASSERT_EQ(svgProblem(svg), "");
    const std::vector<Arrow> arrows = arrowsOf(svg);
    ASSERT_EQ(arrows.size(), parts.size() + 2);
    EXPECT_NEAR(arrows[0].angle(), 0, 1e-9);
    std::vector<std::complex<double>> want = parts;
    want.push_back(sum);
    // The scale read from the longest arrow, the one least touched by rounding.
    const size_t top =
        std::max_element(want.begin(), want.end(), [](auto a, auto b) { return std::abs(a) < std::abs(b); }) -
        want.begin();
    const double longest = std::abs(want[top]);
    const double scale = arrows[top + 1].length() / longest;
    for (size_t k = 0; k < want.size(); ++k) {
        SCOPED_TRACE(k);
        const Arrow& a = arrows[k + 1];
        // Coordinates are rounded to 0.1 px; a short arrow carries that error.
        EXPECT_NEAR(a.length(), std::abs(want[k]) * scale, 0.2 + 1e-3 * longest * scale);
        if (a.length() > 20) {
            EXPECT_NEAR(std::remainder(a.angle() - (std::arg(want[k]) - std::arg(reference)), 2 * M_PI), 0,
                        0.5 * kDeg);
        }
    }
}

TEST(PhasorTest, currentArrowsFollowTheForwardPassOfRandomParallels) {
    std::mt19937 rng(23);
    const auto part = [&] { return leaf(std::string(1, "RLC"[rng() % 3])); };
    for (int round = 0; round < 150; ++round) {
        // Branches of one part or of two in series; every other parallel sits
        // behind a part of its own, so that its voltage is turned from U's.
        std::vector<CNodePtr> branches;
        for (int b = 0, n = 2 + round % 4; b < n; ++b)
            branches.push_back(rng() % 3 ? part() : group("S", {part(), part()}));
        const CNodePtr root = round % 2 ? testing::makeRoot({group("P", branches)})
                                        : testing::makeRoot({part(), group("P", branches)});
        Values values{{"U", testing::logUniform(rng, 5, 500)}, {"f", 50}};
        walk(root, [&](const CNodePtr& n) {
            if (n->k == "R") values[n->name] = testing::logUniform(rng, 1, 1000);
            if (n->k == "L") values[n->name] = testing::logUniform(rng, 0.005, 1);
            if (n->k == "C") values[n->name] = testing::logUniform(rng, 1e-6, 1e-4);
        });
        SCOPED_TRACE(testing::outline(root));
        const auto ph = phasors(root, values, true);
        const CNodePtr p = root->ch.back();
        std::vector<std::complex<double>> parts;
        for (const CNodePtr& c : p->ch)
            parts.push_back(ph.at(c->id).i);
        checkScene(svgDocument(drawVectors(currentScene(root, values, true))), parts, ph.at(p->id).i,
                   ph.at(p->id).u);
    }
}

TEST(PhasorTest, voltageArrowsFollowTheForwardPassOfRandomSeries) {
    std::mt19937 rng(29);
    for (int round = 0; round < 150; ++round) {
        testing::RandomCircuit rc = testing::randomCircuit(rng, 2 + round % 6, 3, true);
        if (rc.root->ch.size() < 2) continue;
        SCOPED_TRACE(testing::outline(rc.root));
        const auto ph = phasors(rc.root, rc.values, true);
        std::vector<std::complex<double>> parts;
        for (const CNodePtr& c : rc.root->ch)
            parts.push_back(ph.at(c->id).u);
        checkScene(svgDocument(drawVectors(voltageScene(rc.root, rc.values, true))), parts, ph.at("root").u,
                   ph.at("root").i);
    }
}

// Whatever the circuit, no name, value, angle or tick number of a scene
// runs over an arrow, an axis, the angle's arc or another text, and all of
// them stay inside the figure. Parallels for the currents, random trees for
// the voltages; dc puts every arrow on one line, the hardest crowd.
TEST(PhasorTest, labelsOfRandomScenesKeepClearOfLinesArcsAndEachOther) {
    std::mt19937 rng(37);
    int scenes = 0;
    for (int round = 0; round < 300; ++round) {
        const bool ac = round % 4 != 3;
        testing::RandomCircuit rc = testing::randomCircuit(rng, 2 + round % 7, 3, ac);
        if (round % 3 == 0) rc.root = testing::makeRoot({group("P", rc.root->ch)});
        walk(rc.root, [&](const CNodePtr& n) {
            if (!n->group && !rc.values.count(n->name))
                rc.values[n->name] = testing::logUniform(rng, 1, 1000);
        });
        SCOPED_TRACE(testing::outline(rc.root) + (ac ? " ac" : " dc"));
        for (const VectorScene& sc :
             {currentScene(rc.root, rc.values, ac), voltageScene(rc.root, rc.values, ac)}) {
            if (sc.vectors.empty()) continue;
            const FigureOut f = drawVectors(sc);
            const std::string svg = svgDocument(f);
            ASSERT_EQ(svgProblem(svg), "");
            EXPECT_EQ(testing::labelClashes(svg, f.w, f.h), "") << svg;
            ++scenes;
        }
    }
    EXPECT_GT(scenes, 300);
}

// The text of the angle stands by its arc, also where the angle is too
// small to hold it: R and L in series (the voltages) and in parallel (the
// currents), with the coil's share from a hair to nearly all.
TEST(PhasorTest, theAngleNamesItsArcFromNearby) {
    for (const bool parallel : {false, true})
        for (double deg : {0.5, 2.0, 5.0, 10.0, 17.0, 30.0, 60.0, 85.0}) {
            SCOPED_TRACE((parallel ? "parallel, " : "series, ") + fmtNumber(deg) + "°");
            const CNodePtr root = parallel ? testing::makeRoot({group("P", {leaf("R"), leaf("L")})})
                                           : testing::makeRoot({leaf("R"), leaf("L")});
            // X_L = R·tan φ in series, R / tan φ in parallel, at 50 Hz.
            const double x = parallel ? 100 / std::tan(deg * kDeg) : 100 * std::tan(deg * kDeg);
            const Values values{{"U", 230}, {"f", 50}, {"R1", 100}, {"L1", x / (2 * M_PI * 50)}};
            const VectorScene sc =
                parallel ? currentScene(root, values, true) : voltageScene(root, values, true);
            const FigureOut f = drawVectors(sc);
            const std::string svg = svgDocument(f);
            ASSERT_EQ(svgProblem(svg), "");
            EXPECT_EQ(testing::labelClashes(svg, f.w, f.h), "") << svg;
            std::optional<testing::Arc> arc;
            for (const testing::Arc& a : testing::svgArcs(svg))
                if (a.sector) arc = a;
            std::optional<testing::SvgElement> text;
            for (const auto& e : svgElements(svg))
                if (e.tag == "text" && !e.has("stroke") && e.text.rfind("φ = ", 0) == 0) text = e;
            ASSERT_TRUE(text && arc) << svg;
            // The nearest point of the text's box to the arc's centre.
            const testing::Box b = testing::textBox(*text);
            const double nx = std::clamp(arc->cx, b.x0, b.x1), ny = std::clamp(arc->cy, b.y0, b.y1);
            EXPECT_LE(std::hypot(nx - arc->cx, ny - arc->cy), arc->r + 30) << svg;
        }
}

TEST(PhasorTest, noSceneWithoutTheValuesItNeeds) {
    const CNodePtr par = testing::makeRoot({group("P", {leaf("R"), leaf("C")})});
    EXPECT_TRUE(currentScene(par, {{"U", 10}, {"R1", 5}}, true).vectors.empty()); // C1 missing
}

// The triangles of solved series circuits close with a right angle at the
// foot, and show the true angle where it is readable.
TEST(TriangleTest, circuitTrianglesCloseAndKeepTheirAngleWhereReadable) {
    std::mt19937 rng(31);
    int faithful = 0, adjusted = 0;
    for (int round = 0; round < 200; ++round) {
        testing::RandomCircuit rc = testing::randomCircuit(rng, 1 + round % 4, 1, true);
        Values v = forward(rc.root, rc.values, true);
        const double X = v.at("X_tot"), R = v.at("R_tot");
        // Resistors only, or no resistor at all: no triangle.
        if (std::fabs(X) < 1e-9 * R || R < 1e-9 * std::fabs(X)) continue;
        const double trueDeg = std::atan(std::fabs(X) / R) / kDeg;
        for (const char* which : {"Z", "U", "I", "Ibook", "S"}) {
            SCOPED_TRACE(std::string(which) + " in " + testing::outline(rc.root));
            const FigureOut f = circuitTriangle(which, rc.root, v);
            ASSERT_FALSE(f.empty());
            const std::string svg = svgDocument(f);
            ASSERT_EQ(svgProblem(svg), "");
            std::vector<Pt> pts;
            for (const auto& e : svgElements(svg))
                if (e.tag == "polygon" && pts.empty()) pts = testing::svgPoints(e);
            ASSERT_EQ(pts.size(), 3u);
            const auto vec = [&](int a, int b) {
                return std::pair{pts[b].x - pts[a].x, pts[b].y - pts[a].y};
            };
            const auto [ax, ay] = vec(1, 0);
            const auto [bx, by] = vec(1, 2);
            EXPECT_NEAR(ax * bx + ay * by, 0, 0.02 * std::hypot(ax, ay) * std::hypot(bx, by));
            const double drawn = std::atan(std::hypot(bx, by) / std::hypot(ax, ay)) / kDeg;
            EXPECT_NEAR(drawn, drawnAngle(trueDeg), 0.5);
            const bool note = f.caption.find("ikke i målestok") != std::string::npos;
            EXPECT_EQ(note, std::fabs(drawnAngle(trueDeg) - trueDeg) > 0.5);
            (note ? adjusted : faithful)++;
        }
    }
    EXPECT_GT(faithful, 0);
    EXPECT_GT(adjusted, 0);
}

TEST(TriangleTest, theReactiveSideOfTheCurrentPointsDownForACoil) {
    const CNodePtr root = testing::makeRoot({leaf("R"), leaf("L")});
    const Values coil{{"R_tot", 10}, {"X_tot", 10}, {"U", 100}};
    const Values cap{{"R_tot", 10}, {"X_tot", -10}, {"U", 100}};
    const auto third = [](const FigureOut& f) {
        for (const auto& e : svgElements(svgDocument(f)))
            if (e.tag == "polygon") return testing::svgPoints(e)[2].y - testing::svgPoints(e)[1].y;
        return 0.0;
    };
    EXPECT_GT(third(circuitTriangle("I", root, coil)), 0); // down on the screen
    EXPECT_LT(third(circuitTriangle("I", root, cap)), 0);
    EXPECT_LT(third(circuitTriangle("Z", root, coil)), 0); // the coil's reactance up
    EXPECT_GT(third(circuitTriangle("Z", root, cap)), 0);
}

TEST(TriangleTest, theBarOfASeriesIsCutInProportionToItsVoltages) {
    const CNodePtr root = testing::makeRoot({leaf("R"), leaf("R"), leaf("R")});
    const FigureOut f = voltageBar(root, {{"U_R1", 10}, {"U_R2", 30}, {"U_R3", 60}});
    ASSERT_EQ(svgProblem(svgDocument(f)), "");
    std::vector<double> widths;
    for (const auto& e : svgElements(svgDocument(f)))
        if (e.tag == "rect") widths.push_back(e.num("width"));
    ASSERT_EQ(widths.size(), 3u);
    EXPECT_NEAR(widths[1] / widths[0], 3, 0.05);
    EXPECT_NEAR(widths[2] / widths[0], 6, 0.1);
    EXPECT_NE(f.caption.find("tilsammen 100 V"), std::string::npos);
    EXPECT_TRUE(voltageBar(root, {{"U_R1", 10}, {"U_R2", 30}}).empty());
}

} // namespace
} // namespace fl
