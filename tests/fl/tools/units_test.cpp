// The unit converter: each conversion against a factor written out here,
// shown as a step; diameters, cross-sections and angles by their formulas.
#include "fl/tools/small.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using UnitTool = SettingsTest;

TEST_F(UnitTool, everyOtherUnitOfTheKindIsAStep) {
    struct Row {
        const char* name;
        FormMap form;
        std::string block; // the title of one step
        std::string body;  // and its text
        std::string facit;
    };
    const Row rows[] = {
        {"kWh to joule", formOf("art=energi fra=kWh x=2,5"), "kWh → J",
         "1 kWh = 3600000 J.2,5 kWh=2,5 · 3600000 J=9000000 J",
         "2,5 kWh = 9000000 J = 9000 kJ = 9 MJ = 2500 Wh = 0,0025 MWh"},
        {"kJ to Wh has no whole factor", formOf("art=energi fra=kJ x=36"), "kJ → Wh",
         "1 Wh = 3,6 kJ.36 kJ=36 · 1000 / 3600 Wh=10 Wh",
         "36 kJ = 36000 J = 0,036 MJ = 10 Wh = 0,01 kWh = 10·10⁻⁶ MWh"},
        {"prefixes with a unit, the silly ones left out", formOf("art=prefiks fra=p enhed=F x=4700"),
         "pF → nF", "1 nF = 1000 pF.4700 pF=4700 / 1000 nF=4,7 nF",
         "4700 pF = 4,7 nF = 0,0047 µF = 4,7·10⁻⁶ mF"},
        {"a prefix typed in the field counts", formOf("art=prefiks fra=1 enhed=Ω x=4,7k"), "Ω → kΩ",
         "1 kΩ = 1000 Ω.4,7 kΩ=4700 / 1000 kΩ=4,7 kΩ",
         "4,7 kΩ = 4700000 mΩ = 4,7 kΩ = 0,0047 MΩ = 4,7·10⁻⁶ GΩ"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ToolRun run = runOnce([&] { return convertUnits(r.form); });
        ASSERT_TRUE(run.out.ok) << run.out.err;
        const SheetParts::Block* b = run.sheet.block(r.block);
        ASSERT_NE(b, nullptr) << run.text;
        EXPECT_EQ(b->body, r.body);
        EXPECT_EQ(run.sheet.facit, r.facit);
    }
}

TEST_F(UnitTool, conductorsAndAnglesGoThroughTheirFormulas) {
    struct Row {
        const char* name;
        FormMap form;
        const char* symbol;
        double expected;
    };
    const Row rows[] = {
        // π · 1,78² / 4 = 2,4885 mm²
        {"diameter to section", formOf("art=leder fra=mm x=1,78"), "A", M_PI * 1.78 * 1.78 / 4},
        // √(4 · 2,5 / π) = 1,7841 mm
        {"section to diameter", formOf("art=leder fra=mm2 x=2,5"), "d", std::sqrt(10 / M_PI)},
        {"a right angle in radians", formOf("art=vinkel fra=grader x=90"), "v_rad", M_PI / 2},
        {"one radian in degrees", formOf("art=vinkel fra=rad x=1"), "v", 180 / M_PI},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ToolRun run = runOnce([&] { return convertUnits(r.form); });
        ASSERT_TRUE(run.out.ok) << run.out.err;
        EXPECT_NEAR(recentValue(run.out, r.symbol), r.expected, 1e-12 * std::fabs(r.expected));
    }
    const ToolRun wire = runOnce([&] { return convertUnits(rows[0].form); });
    EXPECT_TRUE(contains(wire.sheet.results, "Nærmeste standardtværsnit er 2,5 mm²")) << wire.sheet.results;
    const ToolRun right = runOnce([&] { return convertUnits(rows[2].form); });
    EXPECT_EQ(right.sheet.facit, "90° = 1,5708 rad = 0,5·π rad");
}

TEST_F(UnitTool, aValueThatCantBeConvertedIsRefused) {
    const Refused rows[] = {
        {"empty", "art=energi fra=J", "Skriv den værdi, der skal omregnes.", "x"},
        {"no wire", "art=leder fra=mm x=0", "Diameteren skal være større end 0.", "x"},
    };
    expectRefused(convertUnits, rows);
}

} // namespace
} // namespace fl
