// The small tools' pictures: every sheet draws the figures its givens allow
// and no more, each one well formed for the renderer, with the labels that
// say what the picture is; and the demonstration stays drawable at every
// corner of its sliders and says on which side of resonance it stands.
#include "fl/tools/ac.h"
#include "fl/tools/resistors.h"
#include "fl/tools/small.h"

#include "fl/expr/markup.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/fig/svg_check.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using SmallFigures = SettingsTest;
using testing::shapeProblem;
using testing::svgProblem;
using testing::svgText;

ToolOut ac(const FormMap& form) {
    return acSeries(form);
}

TEST_F(SmallFigures, eachSheetDrawsWhatItsGivensAllow) {
    struct Row {
        const char* name;
        ToolOut (*tool)(const FormMap&);
        const char* form;
        size_t figures;
        std::vector<std::string> labels; // in the figures' texts, "|" between text elements
        std::string caption;             // in the sheet, beside the figures
    };
    const Row rows[] = {
        {"4 rings", colourToValue, "ringe=4 r1=gul r2=violet r3=rod r4=guld", 1, {"7|", "×10²|"}, "venstre"},
        {"a value as its rings", valueToColour, "R=4,5k serie=E12 ringe=5", 1, {"violet|", "±1 %|"}, ""},
        {"two in series", resistorTotal, "liste=100;220 kobling=serie", 1, {}, "Modstandene i serie"},
        {"five in parallel are too many", resistorTotal, "liste=1k;2k;3k;4k;5k kobling=parallel", 0, {}, ""},
        {"3-4-5 to scale", rightTriangle, "a=3 b=4", 1, {"c = 5|"}, "tegnet i målestok"},
        {"a sliver drawn wider", rightTriangle, "a=1 c=100", 1, {"c = 100|"}, "ikke i målestok"},
        {"vectors", addVectors, "form=polar v1=3 V1=0 v2=4 V2=90", 1, {"5 ∠ 53,13°|"}, "forlængelse"},
        {"R, L and C", ac, "R=30 L=0,2 C=100u f=50 U=230", 2, {"U|C|", "R = 30 Ω|"}, "Modstandstrekant"},
        {"R alone: no triangle", ac, "R=30 f=50 U=230", 1, {"U|R|"}, "Vektordiagram for spændingerne"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        resetFigures();
        const ToolOut out = r.tool(formOf(r.form));
        ASSERT_TRUE(out.ok) << out.err;
        const RenderResult pass = takeRender({});
        ASSERT_EQ(pass.figs.size(), r.figures);
        std::string labels;
        for (const std::string& svg : pass.figs) {
            EXPECT_EQ(svgProblem(svg), "");
            labels += svgText(svg);
        }
        for (const std::string& l : r.labels)
            EXPECT_TRUE(contains(labels, l)) << l << " in " << labels;
        EXPECT_TRUE(contains(sheetText(out.html, pass.maths), r.caption)) << r.caption;
    }
}

TEST(ResistorFigure, onlyFourToSixRingsMakeAResistor) {
    EXPECT_TRUE(resistorFigure({"gul", "violet", "rod"}).empty());
    EXPECT_TRUE(resistorFigure({"brun", "sort", "sort", "brun", "brun", "rod", "rod"}).empty());
    // A ring that can't be read keeps its place with a question mark.
    const std::string svg = resistorSvg({"gul", "violet", "ukendt", "guld"});
    EXPECT_EQ(svgProblem(svg), "");
    EXPECT_TRUE(contains(svgText(svg), "?|")) << svgText(svg);
}

// Every corner of the sliders' box, and the middle of each side of it.
TEST_F(SmallFigures, theDemonstrationDrawsEverySettingOfItsSliders) {
    const auto& ranges = demoRanges();
    for (int mask = 0; mask < 81; ++mask) {
        double v[4];
        for (int q = 0, m = mask; q < 4; ++q, m /= 3)
            v[q] = sliderValue(m % 3 * kSliderSteps / 2, kSliderSteps, ranges[q].lo, ranges[q].hi);
        const DemoSetting s{v[0], v[1], v[2], v[3], DemoSetting{}.U};
        SCOPED_TRACE(std::to_string(s.R) + " Ω, " + std::to_string(s.L) + " H, " + std::to_string(s.C) +
                     " F, " + std::to_string(s.f) + " Hz");
        const DemoView view = demoView(s);
        // The page paints the shapes: they must be what the SVG says.
        for (const FigureOut* fig : {&view.curves, &view.phasors, &view.resonance}) {
            const std::string svg = svgDocument(*fig);
            EXPECT_EQ(svgProblem(svg), "");
            EXPECT_EQ(shapeProblem(fig->shapes, svg), "");
        }
        // "?" is what the formatter shows for a number that isn't finite.
        EXPECT_FALSE(contains(htmlToPlain(view.readout), "?")) << view.readout;
        const std::string resonance = svgText(svgDocument(view.resonance));
        EXPECT_TRUE(contains(resonance, "f|0| = ")) << resonance;
    }
}

TEST_F(SmallFigures, theDemonstrationSaysWhichSideOfResonanceItIsOn) {
    const DemoSetting base;
    const double f0 = 1 / (2 * M_PI * std::sqrt(base.L * base.C));
    struct Row {
        const char* name;
        double f;
        bool resonant;
        const char* says;
        bool marksF; // the setting's own f beside f₀ on the curve
    };
    const Row rows[] = {
        {"just outside the band", f0 * (1 - 1.5 * kResonanceBand), false, "Skru f op mod f", true},
        {"inside the band", f0 * (1 + 0.5 * kResonanceBand), true, "Resonans: XL = XC, så Z = R = 100 Ω",
         false},
        {"above: the coil wins", f0 * 2, false, "induktiv", true},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        DemoSetting s = base;
        s.f = r.f;
        const DemoView view = demoView(s);
        EXPECT_EQ(view.resonant, r.resonant);
        EXPECT_TRUE(contains(htmlToPlain(view.readout), r.says)) << view.readout;
        const std::string resonance = svgText(svgDocument(view.resonance));
        EXPECT_EQ(contains(resonance, "f = "), r.marksF) << resonance;
    }
}

TEST(SeriesPhasors, nothingToDrawWithoutACurrent) {
    SeriesRlcValues v = seriesRlc({100, 0.5, 10e-6, 50, 230, NAN});
    EXPECT_FALSE(seriesPhasors(v, true, true, true).empty());
    EXPECT_TRUE(seriesPhasors(v, false, false, false).empty());
    v.I = 0;
    EXPECT_TRUE(seriesPhasors(v, true, true, true).empty());
}

} // namespace
} // namespace fl
