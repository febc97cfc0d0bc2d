// Vectors added by components: sums worked by hand in every quadrant, the
// quadrant step where tan⁻¹ alone would point wrong, and the refusals.
#include "fl/tools/small.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using VectorTool = SettingsTest;

TEST_F(VectorTool, sumsInEveryQuadrant) {
    struct Row {
        const char* name;
        FormMap form;
        double length, angle;
        bool quadrantStep; // the sheet turns tan⁻¹ by 180°
    };
    const double tan43 = std::atan(4.0 / 3) * 180 / M_PI;
    const Row rows[] = {
        // (10, 0) + (−5, 5√3) = (5, 5√3): 10 at 60°.
        {"two polar ones", formOf("form=polar v1=10 V1=0 v2=10 V2=120"), 10, 60, false},
        {"third quadrant", formOf("form=rekt x1=-3 y1=-4"), 5, -180 + tan43, true},
        {"second quadrant", formOf("form=rekt x1=-3 y1=4"), 5, 180 - tan43, true},
        {"fourth quadrant", formOf("form=rekt x1=3 y1=-4"), 5, -tan43, false},
        {"straight down, an empty x is 0", formOf("form=rekt y1=-2"), 2, -90, false},
        {"three forces that cancel", formOf("form=polar v1=1 V1=90 v2=1 V2=210 v3=1 V3=330"), 0, 0, false},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ToolRun run = runOnce([&] { return addVectors(r.form); });
        ASSERT_TRUE(run.out.ok) << run.out.err;
        EXPECT_NEAR(recentValue(run.out, "v_sum"), r.length, 1e-5);
        EXPECT_NEAR(recentValue(run.out, "V_sum"), r.angle, 1e-4);
        EXPECT_EQ(run.sheet.block("Ret kvadranten") != nullptr, r.quadrantStep);
    }
}

TEST_F(VectorTool, anglesOfTheFourDirections) {
    const struct {
        double x, y, angle;
    } rows[] = {{1, 0, 0}, {0, 1, 90}, {-1, 0, 180}, {0, -1, -90}, {-1, -1e-300, 180}, {0, 0, 0}};
    for (const auto& r : rows)
        EXPECT_DOUBLE_EQ(vectorAngle(r.x, r.y), r.angle) << r.x << ", " << r.y;
}

TEST_F(VectorTool, incompleteVectorsAreRefused) {
    const Refused rows[] = {
        {"a length without an angle", "form=polar v1=3 v2=4 V2=0",
         "Vektor 1 skal have både en længde og en vinkel – udfyld <span class=\"v\">V<sub>1</sub></span>.",
         "V1"},
        {"a negative length", "form=polar v1=-3 V1=10",
         "En længde kan ikke være negativ – vend vinklen 180° i stedet.", "v1"},
        {"nothing", "form=rekt", "Skriv x- og y-komposanten for mindst én vektor.", ""},
        // Fields of the other form are leftovers, not vectors.
        {"only the other form", "form=polar x1=3", "Skriv længde og vinkel for mindst én vektor.", ""},
    };
    expectRefused(addVectors, rows);
}

} // namespace
} // namespace fl
