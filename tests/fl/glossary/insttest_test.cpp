// The installation test guide's calculators against values worked by hand,
// and the guide's table of tests.
#include "fl/glossary/insttest.h"

#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace fl {
namespace {

TEST(LoopLimit, largestLoopImpedanceForABreaker) {
    const double nan = std::nan("");
    const struct {
        const char* name;
        double in;
        char ch;
        double measured;
        double ia, zsMax, zsMeasuredMax, fault;
        bool passes;
    } rows[] = {
        // Ia = k·In; Zs = 230 / Ia; 2/3 of that for a measurement at room temperature.
        {"lowerCaseB10", 10, 'b', nan, 50, 4.6, 3.0666667, nan, false},
        {"D20", 20, 'D', nan, 400, 0.575, 0.3833333, nan, false},
        {"B16Measured2", 16, 'B', 2.0, 80, 2.875, 1.9166667, 115, true},
        {"C16Measured1,5", 16, 'C', 1.5, 160, 1.4375, 0.9583333, 153.33333, false},
        {"C16ExactlyAtTheLimit", 16, 'C', 1.4375, 160, 1.4375, 0.9583333, 160, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const LoopLimit r = loopLimit(row.in, row.ch, 230, row.measured);
        EXPECT_NEAR(r.ia, row.ia, 1e-9);
        EXPECT_NEAR(r.zsMax, row.zsMax, 1e-6);
        EXPECT_NEAR(r.zsMeasuredMax, row.zsMeasuredMax, 1e-6);
        if (std::isnan(row.fault))
            EXPECT_TRUE(std::isnan(r.faultCurrent));
        else
            EXPECT_NEAR(r.faultCurrent, row.fault, 1e-4);
        EXPECT_EQ(r.passes, row.passes);
    }
    EXPECT_EQ(tripFactor('E'), 0);
}

TEST(EarthLimit, largestEarthResistanceBehindAnRcd) {
    const double nan = std::nan("");
    const struct {
        double idn, ul, measured;
        double raMax, touch;
        bool passes;
    } rows[] = {
        {0.03, 50, nan, 1666.6667, nan, false},
        {0.03, 50, 200, 1666.6667, 6, true},
        {0.3, 50, 180, 166.66667, 54, false},
    };
    for (const auto& row : rows) {
        const EarthLimit r = earthLimit(row.idn, row.ul, row.measured);
        EXPECT_NEAR(r.raMax, row.raMax, 1e-3);
        if (std::isnan(row.touch))
            EXPECT_TRUE(std::isnan(r.touchVoltage));
        else
            EXPECT_NEAR(r.touchVoltage, row.touch, 1e-9);
        EXPECT_EQ(r.passes, row.passes);
    }
}

using LimitCalculator = SettingsTest;

TEST_F(LimitCalculator, showsTheLimitsInDanishNumbers) {
    const std::string html = limitCalculatorHtml(
        {{"In", "16"}, {"kar", "C"}, {"U0", "230"}, {"Zs", "1,2"}, {"Idn", "30m"}, {"UL", "50"}, {"RA", ""}});
    for (const char* part : {"<span class=\"big2\">1,4375 Ω</span>", "= 191,67 A",
                             "<p class=\"ok\">✓ Den målte Z<sub>s</sub> er under grænsen",
                             "Men der er ikke 2/3-margen", "<span class=\"big2\">1666,7 Ω</span>"})
        EXPECT_NE(html.find(part), std::string::npos) << part;
    EXPECT_EQ(html.find("Berøringsspænding ved den målte"), std::string::npos) << "no RA given";
}

// A form filled in but for one field, which is left empty or given a bad value.
TEST_F(LimitCalculator, asksForWhatIsMissingAndRefusesTheImpossible) {
    const std::map<std::string, std::string> filled{
        {"In", "16"}, {"kar", "B"}, {"U0", "230"}, {"Idn", "30m"}, {"UL", "50"}};
    const struct {
        const char* field;
        const char* value;
        const char* text;
    } rows[] = {
        {"In", "", "Skriv sikringens mærkestrøm I<sub>n</sub>, fx 16."},
        {"kar", "K", "Noget passer ikke – tjek værdierne. Mærkestrøm og spænding skal være positive tal"},
        {"Zs", "1,2Ω", "Noget passer ikke – tjek værdierne. Mærkestrøm"},
        {"Idn", "", "Skriv RCD'ens mærkeudløserstrøm IΔn, fx 30m for 30 mA."},
        {"UL", "0", "Noget passer ikke – tjek værdierne. IΔn og berøringsspændingen"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.field);
        std::map<std::string, std::string> fields = filled;
        fields[row.field] = row.value;
        EXPECT_NE(limitCalculatorHtml(fields).find(row.text), std::string::npos);
    }
}

TEST(VerificationGuide, eightTestsEachWithItsClauseAndAnchor) {
    const auto& tests = verificationTests();
    ASSERT_EQ(tests.size(), 8u);
    std::set<std::string> ids;
    for (const VerificationTest& t : tests) {
        SCOPED_TRACE(t.id);
        EXPECT_TRUE(ids.insert(t.id).second);
        EXPECT_EQ(t.source.rfind("DS/HD 60364-6, 6.4.3.", 0), 0u);
        EXPECT_FALSE(t.how.empty() || t.setting.empty() || t.limit.empty());
        EXPECT_NE(insttestHtml("hvad").find("<a name=\"t-" + t.id + "\"></a>"), std::string::npos);
    }
    EXPECT_EQ(insttestHtml("ukendt"), insttestHtml("hvad"));
}

} // namespace
} // namespace fl
