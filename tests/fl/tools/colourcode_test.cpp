// The colour code pages' sheets: rings to a value with its range, a wanted
// value to the nearest standard one and its rings, and the refusals.
#include "fl/tools/resistors.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using ColourCodeTool = SettingsTest;

FormMap rings(std::initializer_list<const char*> colours) {
    FormMap form{{"ringe", std::to_string(colours.size())}};
    int i = 1;
    for (const char* c : colours)
        form["r" + std::to_string(i++)] = c;
    return form;
}

TEST_F(ColourCodeTool, ringsGiveTheValueItsRangeAndItsSeries) {
    struct Row {
        const char* name;
        FormMap form;
        double ohms;
        std::string facit;
        std::string part; // somewhere in the sheet
    };
    const Row rows[] = {
        // 27 · 1000 = 27 kΩ; ±5 % is 25,65 … 28,35 kΩ.
        {"four rings", rings({"rod", "violet", "orange", "guld"}), 27000,
         "R = 27 kΩ ± 5 % 25,65 kΩ … 28,35 kΩ", "E12✓ ja27 kΩE24✓ ja27 kΩE96nej26,7 kΩ"},
        // 470 · 0,01 = 4,7 Ω, ±1 % is 4,653 … 4,747 Ω.
        {"five rings with silver", rings({"gul", "violet", "sort", "solv", "brun"}), 4.7,
         "R = 4,7 Ω ± 1 % 4,653 Ω … 4,747 Ω", "Ring 4 (sølv) ganger med 0,01."},
        // 100 · 10 = 1 kΩ; 50 ppm/K of 1000 Ω is 0,05 Ω a degree.
        {"six rings", rings({"brun", "sort", "sort", "brun", "brun", "rod"}), 1000,
         "R = 1 kΩ ± 1 % 990 Ω … 1,01 kΩ · 50 ppm/K",
         "dR=[(R · TK) / 1000000]=[(1000 · 50) / 1000000]=50 mΩ"},
        {"no standard value", rings({"rod", "rod", "rod", "rod", "brun"}), 22200,
         "R = 22,2 kΩ ± 1 % 21,978 kΩ … 22,422 kΩ", "22,2 kΩ er ingen standardværdi."},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ToolRun run = runOnce([&] { return colourToValue(r.form); });
        ASSERT_TRUE(run.out.ok) << run.out.err;
        EXPECT_DOUBLE_EQ(recentValue(run.out, "R"), r.ohms);
        EXPECT_EQ(run.sheet.facit, r.facit);
        EXPECT_TRUE(contains(run.text, r.part)) << run.text;
    }
}

TEST_F(ColourCodeTool, aWantedValueGetsTheNearestStandardValueAndItsRings) {
    struct Row {
        const char* name;
        FormMap form;
        double standard;
        std::string facit;
    };
    // clang-format off
    const Row rows[] = {
        {"E12 in four rings is silver", formOf("R=4,5k serie=E12 ringe=4"), 4700,
         "gul – violet – rød – sølv 4,7 kΩ ± 10 %"},
        {"E24 in four rings is gold", formOf("R=5020 serie=E24 ringe=4"), 5100,
         "grøn – brun – rød – guld 5,1 kΩ ± 5 %"},
        {"E24 in five rings is brown", formOf("R=4,7k serie=E24 ringe=5"), 4700,
         "gul – violet – sort – brun – brun 4,7 kΩ ± 1 %"},
        {"E96 needs five rings even when four are asked for", formOf("R=4,5k serie=E96 ringe=4"), 4530,
         "gul – grøn – orange – brun – brun 4,53 kΩ ± 1 %"},
        {"six rings add 100 ppm/K", formOf("R=100 serie=E12 ringe=6"), 100,
         "brun – sort – sort – sort – brun – brun 100 Ω ± 1 %"},
    };
    // clang-format on
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ToolRun run = runOnce([&] { return valueToColour(r.form); });
        ASSERT_TRUE(run.out.ok) << run.out.err;
        EXPECT_DOUBLE_EQ(recentValue(run.out, "R_E"), r.standard);
        EXPECT_EQ(run.sheet.facit, r.facit);
    }
    // The deviation: (4700 − 4500) / 4500 · 100 = 4,4444 %.
    const ToolRun e12 = runOnce([&] { return valueToColour(rows[0].form); });
    EXPECT_TRUE(contains(e12.sheet.blocks.at(0).body, "I E12 ligger 4,5 kΩ mellem 3,9 kΩ og 4,7 kΩ."));
    EXPECT_TRUE(contains(e12.sheet.blocks.at(0).body, "=4,4444 %"));
}

TEST_F(ColourCodeTool, refusalsSayWhatIsWrongAndMarkTheField) {
    const Refused byRings[] = {
        {"a black first ring", "ringe=4 r1=sort r2=rod r3=rod r4=guld",
         "Første ring kan ikke være sort – vend modstanden og læs fra den anden ende (ringen for tolerance "
         "sidder tættest på enden og står lidt for sig selv).",
         "r1"},
    };
    expectRefused(colourToValue, byRings);
    const Refused byValue[] = {
        {"no value", "serie=E12", "Udfyld <span class=\"v\">R</span>.", "R"},
        {"zero", "R=0", "Modstanden skal være større end 0 Ω.", "R"},
        {"below the code", "R=0,01 serie=E12 ringe=4",
         "Farvekoden kan ikke vise 0,01 Ω – med 4 ringe går den fra 0,1 Ω til 99 GΩ.", "R"},
    };
    expectRefused(valueToColour, byValue);
}

} // namespace
} // namespace fl
