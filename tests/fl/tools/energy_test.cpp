// Energy and price, worked by hand: a year of use, the saving of a
// replacement and its payback time, and the refusals.
#include "fl/tools/small.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using EnergyTool = SettingsTest;

// Days typed in; an empty field, a whole year, is worked in the replacement below.
TEST_F(EnergyTool, aYearOfUseAndWhatItCosts) {
    // 10 · 60 W · 5 h · 200 / 1000 = 600 kWh; · 2,5 kr = 1500 kr.
    const ToolRun run = runOnce([] { return energyPrice(formOf("P=60 n=10 h=5 d_dage=200 k_el=2,5")); });
    ASSERT_TRUE(run.out.ok) << run.out.err;
    EXPECT_NEAR(recentValue(run.out, "E"), 600, 1e-9 * 600);
    EXPECT_NEAR(recentValue(run.out, "Pris"), 1500, 1e-9 * 1500);
}

TEST_F(EnergyTool, aReplacementSavesAndPaysBack) {
    // Ten 60 W bulbs for 8 W LEDs, 5 h a day: 1095 kWh and 146 kWh a year,
    // 2737,50 kr and 365 kr at 2,50 kr/kWh; 2372,50 kr saved, 400 kr back
    // after 400 / 2372,5 = 0,1686 years (2 months).
    const ToolRun run = runOnce([] { return energyPrice(formOf("P=60 n=10 h=5 k_el=2,5 P2=8 Inv=400")); });
    ASSERT_TRUE(run.out.ok) << run.out.err;
    EXPECT_DOUBLE_EQ(recentValue(run.out, "B_aar"), 2372.5);
    EXPECT_DOUBLE_EQ(recentValue(run.out, "E_spar"), 949);
    EXPECT_NEAR(recentValue(run.out, "T_tb"), 400 / 2372.5, 1e-12);
    EXPECT_TRUE(contains(run.text, "E_1=[(n · P_1 · h · d) / 1000]=[(10 · 60 · 5 · 365) / 1000]=1095 kWh"));
    EXPECT_TRUE(contains(run.sheet.results, "Det er2,0232 måneder")) << run.sheet.results;
    EXPECT_EQ(run.sheet.facit, "Besparelse 2372,5 kr pr. år (949 kWh) · tilbagebetalt efter 0,1686 år");

    // Nothing to save: the sheet says so, and there is no payback.
    const ToolRun none = runOnce([] { return energyPrice(formOf("P=8 h=5 k_el=2,5 P2=60 Inv=400")); });
    ASSERT_TRUE(none.out.ok);
    EXPECT_TRUE(contains(none.sheet.results, "sparer ingenting på elregningen"));
    EXPECT_TRUE(std::isnan(recentValue(none.out, "T_tb")));
}

TEST_F(EnergyTool, refusalsNameWhatIsMissingOrImpossible) {
    const Refused rows[] = {
        {"nothing", "",
         "Udfyld <span class=\"v\">P</span>, <span class=\"v\">h</span>, <span "
         "class=\"v\">k<sub>el</sub></span>.",
         "P h k_el"},
        {"a day of 25 hours", "P=60 h=25 k_el=2",
         "Et døgn har kun 24 timer – <span class=\"v\">h</span> er brugstiden pr. dag.", "h"},
        {"a year of 400 days", "P=60 h=5 d_dage=400 k_el=2", "Et år har højst 366 dage.", "d_dage"},
    };
    expectRefused(energyPrice, rows);
}

} // namespace
} // namespace fl
