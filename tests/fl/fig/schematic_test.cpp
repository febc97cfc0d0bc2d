#include "fl/fig/schematic.h"

#include "fl/circuit/forward.h"
#include "fl/fig/style.h"
#include "tests/fl/circuit/trees.h"
#include "tests/fl/fig/svg_check.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace fl {
namespace {

using testing::group;
using testing::leaf;
using testing::svgElements;
using testing::svgProblem;

// Leaves as they are met, every group but the root after its children.
void drawingOrder(const CNodePtr& n, std::vector<std::string>& out) {
    if (!n->group) {
        out.push_back(n->id);
        return;
    }
    for (const CNodePtr& c : n->ch)
        drawingOrder(c, out);
    if (n->id != "root") out.push_back(n->id);
}

bool overlap(const HitBox& a, const HitBox& b) {
    return a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h && b.y < a.y + a.h;
}

bool inside(const HitBox& inner, const HitBox& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.w <= outer.x + outer.w &&
           inner.y + inner.h <= outer.y + outer.h;
}

TEST(SchematicTest, extentsAreMeasuredBottomUp) {
    // clang-format off
    const struct {
        const char* name;
        std::function<CNodePtr()> tree;
        bool ac;
        Extent outer;
    } rows[] = {
        {"leaf, dc", [] { return leaf("R"); }, false, {116, 112, 38}},
        {"leaf, ac", [] { return leaf("C"); }, true, {116, 136, 38}},
        {"empty group as a leaf, framed", [] { return group("S", {}); }, false, {132, 138, 56}},
        {"series: widths add, the deepest part sets the height",
         [] { return group("S", {leaf("R"), group("P", {leaf("R"), leaf("R")})}); }, false, {308, 284, 74}},
        {"parallel: heights add with 8 between, 44 for the rails",
         [] { return group("P", {leaf("R"), leaf("R")}); }, false, {176, 258, 56}},
    };
    // clang-format on
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CNodePtr n = r.tree();
        measure(n, r.ac);
        EXPECT_EQ(n->extent.w, r.outer.w);
        EXPECT_EQ(n->extent.h, r.outer.h);
        EXPECT_EQ(n->extent.above, r.outer.above);
        // The frame: 16 wider, 26 higher, the axis 18 lower.
        EXPECT_EQ(n->extent.w - n->innerExtent.w, n->group ? 16 : 0);
        EXPECT_EQ(n->extent.h - n->innerExtent.h, n->group ? 26 : 0);
    }
}

// The geometry that can be checked, over random trees of up to 20 parts in
// both kinds of current, some of them meters.
TEST(SchematicTest, randomTreesGiveValidDrawingsWithOrderedDisjointBoxesInside) {
    std::mt19937 rng(17);
    for (int round = 0; round < 500; ++round) {
        const bool ac = round % 2 == 1;
        const int leaves = 1 + round % 20;
        testing::RandomCircuit rc = testing::randomCircuit(rng, leaves, 4, ac);
        walk(rc.root, [&](const CNodePtr& n) {
            if (!n->group && rng() % 7 == 0) n->k = rng() % 2 ? "A" : "V";
        });
        Circuit c = defaultCircuit(ac ? "ac" : "dc");
        c.root = rc.root;
        SCOPED_TRACE(testing::outline(c.root));
        const Values values = round % 3 == 0 ? Values{} : rc.values;
        SchematicOptions opt;
        opt.selection = c.root->ch.empty() ? "" : c.root->ch.back()->id;
        std::vector<HitBox> hits;
        double W = 0, H = 0;
        const std::string svg = schematic(c, values, opt, &hits, &W, &H);
        ASSERT_EQ(svgProblem(svg), "");
        // A sheet paints the same drawing from its shapes.
        const FigureOut fig = schematicFigure(c, values, opt, nullptr, nullptr);
        EXPECT_EQ(svgDocument(fig), svg);
        EXPECT_EQ(testing::shapeProblem(fig.shapes, svg), "");

        std::vector<std::string> order;
        drawingOrder(c.root, order);
        ASSERT_EQ(hits.size(), order.size());
        for (size_t i = 0; i < hits.size(); ++i) {
            EXPECT_EQ(hits[i].id, order[i]);
            EXPECT_GE(hits[i].x, 0);
            EXPECT_GE(hits[i].y, 0);
            EXPECT_LE(hits[i].x + hits[i].w, W);
            EXPECT_LE(hits[i].y + hits[i].h, H);
        }
        for (size_t i = 0; i < hits.size(); ++i)
            for (size_t j = i + 1; j < hits.size(); ++j)
                if (!hits[i].group && !hits[j].group) {
                    EXPECT_FALSE(overlap(hits[i], hits[j])) << hits[i].id << " " << hits[j].id;
                }
        // A group's frame holds its children's boxes.
        walk(c.root, [&](const CNodePtr& g) {
            if (!g->group || g->id == "root") return;
            const auto boxOf = [&](const std::string& id) {
                for (const HitBox& b : hits)
                    if (b.id == id) return b;
                return HitBox{};
            };
            const HitBox frame = boxOf(g->id);
            for (const CNodePtr& child : g->ch)
                EXPECT_TRUE(inside(boxOf(child->id), frame)) << child->id << " in " << g->id;
        });
    }
}

// The editor draws without halos, which only holds while no text of a
// schematic without results runs over a wire, a plate or a group's frame,
// whatever the values typed.
TEST(SchematicTest, withoutResultsNoTextCrossesALine) {
    std::mt19937 rng(23);
    const char* typed[] = {"", "4k7", "123,45", "0,0012", "=R1", "1e6", "47u", "x"};
    for (int round = 0; round < 300; ++round) {
        const bool ac = round % 2 == 1;
        testing::RandomCircuit rc = testing::randomCircuit(rng, 1 + round % 20, 4, ac);
        walk(rc.root, [&](const CNodePtr& n) {
            if (n->group) return;
            if (rng() % 7 == 0) n->k = rng() % 2 ? "A" : "V";
            n->v = typed[rng() % std::size(typed)];
            n->r = n->k == "L" ? typed[rng() % std::size(typed)] : "";
        });
        Circuit c = defaultCircuit(ac ? "ac" : "dc");
        c.root = rc.root;
        c.src["U"] = "230";
        SCOPED_TRACE(testing::outline(c.root));
        SchematicOptions opt;
        opt.halos = false;
        double W = 0, H = 0;
        const std::string svg = schematic(c, {}, opt, nullptr, &W, &H);
        ASSERT_EQ(svg.find("stroke-width=\"4\""), std::string::npos) << "a halo";
        EXPECT_EQ(testing::labelClashes(svg, W, H), "");
    }
}

TEST(SchematicTest, anEmptyRootStillHasSourceRailsAndABlockOfLeafSize) {
    Circuit c = testing::circuit("dc", {});
    std::vector<HitBox> hits{{"stale", 0, 0, 1, 1, false}};
    double W = 0, H = 0;
    const std::string svg = schematic(c, {}, {}, &hits, &W, &H);
    EXPECT_EQ(svgProblem(svg), "");
    EXPECT_TRUE(hits.empty());
    EXPECT_EQ(W, 62 + 116 + 22 + 30);
    EXPECT_EQ(H, 112 + 12 + 30 + 58);
}

TEST(SchematicTest, computedValuesAndTheCurrentArrowAppearOnlyWithResults) {
    const std::string accent = lightFigColors().slot[5];
    const auto count = [&](const std::string& svg) {
        int computed = 0, current = 0;
        for (const auto& e : svgElements(svg)) {
            if (e.tag != "text") continue;
            if (e.attrs.count("stroke") == 0 && e.attrs.at("fill") == accent) ++computed;
            if (e.attrs.count("stroke") == 0 && e.text.rfind("I = ", 0) == 0) ++current;
        }
        return std::pair{computed, current};
    };
    for (const char* mode : {"dc", "ac"}) {
        SCOPED_TRACE(mode);
        Circuit c = testing::circuit(
            mode, {leaf("R", "100"), group("P", {leaf("R", "220"), leaf("R", "330")})}, {{"U", "230"}});
        EXPECT_EQ(count(schematic(c, {}, {}, nullptr, nullptr, nullptr)), std::pair(0, 0));
        Values in{{"U", 230}, {"R1", 100}, {"R2", 220}, {"R3", 330}};
        const Values solved = forward(c.root, in, std::string(mode) == "ac");
        const auto [computed, current] = count(schematic(c, solved, {}, nullptr, nullptr, nullptr));
        EXPECT_GT(computed, 0);
        EXPECT_EQ(current, 1);
    }
}

TEST(SchematicTest, valueLinesFollowWhatIsTypedAndWhatIsKnown) {
    const struct {
        const char* name;
        std::string v, r;
        Values values;
        const char* line;
    } rows[] = {
        {"typed", "4,7k", "", {}, "R<sub>1</sub> = 4700 Ω"},
        {"unknown", "", "", {}, "R<sub>1</sub> = ? Ω"},
        {"computed", "", "", {{"R1", 47}}, "R<sub>1</sub> = 47 Ω"},
        {"a link names its target", "=r2", "", {}, "R<sub>1</sub> = R<sub>2</sub>"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        Circuit c = testing::circuit("dc", {leaf("R", r.v, r.r), leaf("R", "1")});
        const std::string joined = testing::svgText(schematic(c, r.values, {}, nullptr, nullptr, nullptr));
        // Runs of one label follow each other; the subscripts come as their own runs.
        std::string want = r.line;
        for (const char* tag : {"<sub>", "</sub>"})
            for (size_t at; (at = want.find(tag)) != std::string::npos;)
                want.replace(at, std::string(tag).size(), "|");
        EXPECT_NE(joined.find(want), std::string::npos) << joined;
    }
}

TEST(SchematicTest, theSelectionAndTheStepsSubjectAreMarkedAtTheirBox) {
    Circuit c = testing::circuit("dc", {leaf("R", "1"), leaf("R", "2")});
    SchematicOptions opt;
    opt.selection = c.root->ch[0]->id;
    opt.subject = c.root->ch[1]->id;
    std::vector<HitBox> hits;
    const auto el = svgElements(schematic(c, {}, opt, &hits, nullptr, nullptr));
    int marks = 0;
    for (const auto& e : el) {
        if (e.tag != "rect" || !e.has("rx") || e.attrs.at("rx") != "6") continue;
        ++marks;
        const HitBox& box = hits[marks == 1 ? 0 : 1];
        EXPECT_EQ(e.num("x"), box.x);
        EXPECT_EQ(e.num("y"), box.y);
        EXPECT_EQ(e.num("width"), box.w);
    }
    EXPECT_EQ(marks, 2);
}

TEST(SchematicTest, metersShowTheirReadingFromTheSolve) {
    Circuit c = testing::circuit("dc", {leaf("R", "10"), leaf("A")}, {{"U", "10"}});
    Values v{{"A1", 1.0}};
    const std::string joined = testing::svgText(schematic(c, v, {}, nullptr, nullptr, nullptr));
    EXPECT_NE(joined.find("viser 1 A|"), std::string::npos) << joined;
    EXPECT_NE(joined.find("ideel|"), std::string::npos);
}

TEST(SchematicTest, quantitiesTakeAPrefixWhereTheNumberWouldBeLong) {
    const struct {
        double v;
        const char* unit;
        const char* text;
    } rows[] = {{47e-6, "F", "47 µF"}, {0.1, "H", "100 mH"}, {2, "H", "2 H"},     {4700, "Ω", "4700 Ω"},
                {47000, "Ω", "47 kΩ"}, {0.5, "A", "0,5 A"},  {0.02, "A", "20 mA"}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.text);
        EXPECT_EQ(quantityText(r.v, r.unit), r.text);
    }
}

} // namespace
} // namespace fl
