// The machine figures: clean SVG numbers whatever the values (none, found,
// extreme), unknowns as "?", found values in the accent colour, and the live
// ones paintable from their shapes alone.
#include "fl/tools/machinefigs.h"

#include "fl/fig/style.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/fig/svg_check.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

#include <cmath>
#include <regex>

namespace fl {
namespace {

using MachineFigsTest = SettingsTest;

// The pages paint these figures from their shapes at every keystroke: an
// element written only as SVG would be missing.
TEST_F(MachineFigsTest, everyFigureDrawsCleanlyFromNothingToExtremes) {
    const MachineValues none;
    const MachineValues typical{
        {{"U_N", 400}, {"I_N", 11}, {"P_2", 5500}, {"R", 20}, {"U_P", 230}, {"I_S", 5}}, {"I_N"}};
    const MachineValues huge{{{"U_N", 690}, {"I_N", 1e6}, {"P", 1e9}, {"S", 2e9}, {"R", 1e-9}, {"P_1", 1e12}},
                             {"P"}};
    const MachineValues odd{{{"U_N", NAN}, {"I_N", INFINITY}, {"n", -3}}, {}};
    static const std::regex element("<(line|rect|circle|polygon|polyline|path|text)[ >]");
    struct Row {
        const char* name;
        FigureOut fig;
    };
    const Row rows[] = {
        {"motor empty", motorFigure(none, true, false)},  {"motor star-delta", motorFigure(huge, true, true)},
        {"motor odd", motorFigure(odd, false, false)},    {"transformer", transformerFigure(typical)},
        {"transformer odd", transformerFigure(odd)},      {"star", connectionFigure(huge, true, "R")},
        {"delta", connectionFigure(typical, false, "Z")},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        ASSERT_FALSE(r.fig.empty());
        EXPECT_EQ(testing::svgProblem(svgDocument(r.fig)), "");
        const auto drawn = std::distance(std::sregex_iterator(r.fig.body.begin(), r.fig.body.end(), element),
                                         std::sregex_iterator());
        EXPECT_GT(drawn, 20);
        EXPECT_EQ(static_cast<long>(r.fig.shapes.size()), drawn);
    }
    EXPECT_TRUE(compensationFigure(none).empty());
    const MachineValues tiny{
        {{"P", 1e6}, {"Q1", 1}, {"Q2", 0.5}, {"QC", 0.5}, {"phi1", 0.06}, {"phi2", 0.03}}, {}};
    EXPECT_EQ(testing::svgProblem(svgDocument(compensationFigure(tiny))), "");
}

TEST_F(MachineFigsTest, valuesShowAsKnownFoundOrUnknown) {
    const MachineValues v{{{"U_N", 400}, {"P", 8000}, {"I_N", 11.547}}, {"P", "I_N"}};
    const FigureOut fig = connectionFigure(v, true, "R");
    const std::string accent = "fill=\"" + figColors().slot[5] + "\"";
    // The power stands in its own group, drawn in the accent colour since it was found.
    const std::string power = between(fig.body, "<g id=\"tfPow\">", "</g>");
    EXPECT_TRUE(contains(power, ">P = 8000 W<")) << power;
    EXPECT_TRUE(contains(power, accent)) << power;
    EXPECT_TRUE(contains(fig.body, "> = 400 V<")) << "U_N as given";
    EXPECT_TRUE(contains(fig.body, ">S = ?<")) << "S unknown";
    const MachineValues c{
        {{"P", 1000}, {"Q1", 1020.2}, {"Q2", 328.68}, {"QC", 691.52}, {"phi1", 45.573}, {"phi2", 18.195}},
        {}};
    EXPECT_TRUE(
        contains(compensationFigure(c).caption, "kondensatorerne fjerner 691,52 VAr af den reaktive effekt"));
}

// The power triangle before and after: whatever the two angles, far apart,
// close together or the second gone, no text runs over a line, a bow or
// another text; φ₁ never stands in φ₂'s sector, and φ₂ stays in its own or
// just below the foot.
TEST_F(MachineFigsTest, compensationLabelsKeepClearAndByTheirOwnAngles) {
    const double deg = 0.017453292519943295;
    const struct {
        double phi1, phi2, p;
    } rows[] = {{45.573, 18.195, 1000}, {25.8, 24.5, 1000}, {60, 5, 1000}, {36.87, 0, 2000}, {70, 69, 0.5}};
    for (const auto& r : rows) {
        SCOPED_TRACE(std::to_string(r.phi1) + "° → " + std::to_string(r.phi2) + "°");
        const double q1 = r.p * std::tan(r.phi1 * deg), q2 = r.p * std::tan(r.phi2 * deg);
        const FigureOut f = compensationFigure(
            {{{"P", r.p}, {"Q1", q1}, {"Q2", q2}, {"QC", q1 - q2}, {"phi1", r.phi1}, {"phi2", r.phi2}},
             {"QC", "Q2"}});
        const std::string svg = svgDocument(f);
        ASSERT_EQ(testing::svgProblem(svg), "");
        EXPECT_EQ(testing::labelClashes(svg, f.w, f.h), "") << svg;
        // The foot's left end is the corner of both angles.
        double ox = NAN, oy = NAN;
        std::map<std::string, std::pair<double, double>> names;
        const auto elements = testing::svgElements(svg);
        for (size_t i = 0; i + 1 < elements.size(); ++i) {
            const auto& e = elements[i];
            if (e.tag == "line" && std::isnan(ox) && e.num("y1") == e.num("y2") &&
                e.attrs.at("stroke-width") == "2")
                ox = e.num("x1"), oy = e.num("y1");
            if (e.tag == "text" && !e.has("stroke") && e.text == "φ")
                names[elements[i + 1].text] = {e.num("x") + 4, e.num("y") - 0.35 * e.num("font-size")};
        }
        ASSERT_EQ(names.size(), 2u) << svg;
        const auto angle = [&](std::pair<double, double> p) {
            return std::atan2(oy - p.second, p.first - ox) / deg;
        };
        EXPECT_GT(angle(names["1"]), r.phi2) << "φ₁ in φ₂'s sector";
        EXPECT_LT(angle(names["2"]), std::max(r.phi2, 0.0) + 0.5) << "φ₂ above its sector";
    }
}

} // namespace
} // namespace fl
