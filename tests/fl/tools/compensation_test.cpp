// Compensation against numbers worked out here from Q_C = P · (tan φ₁ − tan φ₂)
// and C = Q / (U² · ω) per capacitor, and the refusals in their words.
#include "fl/tools/machines.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using CompensationTest = SettingsTest;

double tanOf(double cosphi) {
    return std::sqrt(1 - cosphi * cosphi) / cosphi;
}

TEST_F(CompensationTest, capacitorsComeOutAsTheTextbookSays) {
    const double root3 = std::sqrt(3.0);
    struct Row {
        const char* name;
        FormMap form;
        const char* net;
        double p; // the active power, given or from I
        double cos1, cos2;
        double uc; // the voltage over one capacitor
        int capacitors;
        double u, f;   // for the line current
        double phases; // 1 or √3 in I = S / (U · phases)
    };
    const Row rows[] = {
        {"single-phase",
         {{"U", "230"}, {"f", "50"}, {"P", "1000"}, {"cosphi1", "0,7"}, {"cosphi2", "0,95"}},
         "1",
         1000,
         0.7,
         0.95,
         230,
         1,
         230,
         50,
         1},
        {"single-phase from the current",
         {{"U", "230"}, {"f", "50"}, {"I", "8"}, {"cosphi1", "0,6"}, {"cosphi2", "0,9"}},
         "1",
         230 * 8 * 0.6,
         0.6,
         0.9,
         230,
         1,
         230,
         50,
         1},
        {"delta, capacitor on the line voltage",
         {{"U", "400"}, {"f", "50"}, {"P", "22k"}, {"cosphi1", "0,75"}, {"cosphi2", "0,95"}},
         "D",
         22000,
         0.75,
         0.95,
         400,
         3,
         400,
         50,
         root3},
        {"star, capacitor on the phase voltage",
         {{"U", "400"}, {"f", "50"}, {"P", "22k"}, {"cosphi1", "0,75"}, {"cosphi2", "0,95"}},
         "Y",
         22000,
         0.75,
         0.95,
         400 / root3,
         3,
         400,
         50,
         root3},
        {"star at 60 Hz from the current",
         {{"U", "690"}, {"f", "60"}, {"I", "100"}, {"cosphi1", "0,8"}, {"cosphi2", "1"}},
         "Y",
         690 * 100 * root3 * 0.8,
         0.8,
         1,
         690 / root3,
         3,
         690,
         60,
         root3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolRun r = runOnce([&] { return compensate(row.form, row.net); });
        ASSERT_TRUE(r.out.ok) << r.err;
        const double qc = row.p * (tanOf(row.cos1) - tanOf(row.cos2));
        const double omega = 2 * M_PI * row.f;
        const double c = qc / row.capacitors / (row.uc * row.uc * omega);
        EXPECT_NEAR(recentValue(r.out, "QC"), qc, 1e-9 * qc);
        EXPECT_NEAR(recentValue(r.out, "C"), c, 1e-9 * c);
        const double i2 = row.p / row.cos2 / (row.u * row.phases);
        EXPECT_TRUE(contains(r.sheet.results, "I_2" + sheetText(tool::formatValue(i2, "A"), {})))
            << r.sheet.results;
        EXPECT_TRUE(contains(r.sheet.check, "✓ Passer")) << r.sheet.check;
        EXPECT_TRUE(contains(r.sheet.facit, "C = " + sheetText(tool::formatValue(c, "F"), {})))
            << r.sheet.facit;
    }
}

TEST_F(CompensationTest, starNeedsThreeTimesTheCapacitanceOfDelta) {
    const FormMap form{{"U", "400"}, {"f", "50"}, {"P", "15k"}, {"cosphi1", "0,7"}, {"cosphi2", "0,92"}};
    const ToolRun star = runOnce([&] { return compensate(form, "Y"); });
    const ToolRun delta = runOnce([&] { return compensate(form, "D"); });
    EXPECT_NEAR(recentValue(star.out, "C") / recentValue(delta.out, "C"), 3, 1e-12);
    EXPECT_TRUE(star.sheet.block("I stjerne ligger hver kondensator på fasespændingen"));
    EXPECT_TRUE(contains(star.sheet.facit, "pr. kondensator (3 stk. i stjerne)"));
    EXPECT_EQ(star.sheet.title, "Kompensering til cos φ = 0,92");
}

TEST_F(CompensationTest, theSheetFollowsWhatWasGiven) {
    struct Row {
        const char* name;
        FormMap form;
        const char* net;
        bool powerBlock;    // "Den aktive effekt ud fra strømmen" stands first
        bool currentBefore; // I₁ gets its own step in the last block
        const char* page;   // of the last block
    };
    const Row rows[] = {
        {"P given",
         {{"U", "230"}, {"f", "50"}, {"P", "1k"}, {"cosphi1", "0,7"}, {"cosphi2", "0,95"}},
         "1",
         false,
         true,
         "(formelsamlingen s. 13)"},
        {"I given",
         {{"U", "230"}, {"f", "50"}, {"I", "6"}, {"cosphi1", "0,7"}, {"cosphi2", "0,95"}},
         "1",
         true,
         false,
         "(formelsamlingen s. 13)"},
        {"I given, three-phase",
         {{"U", "400"}, {"f", "50"}, {"I", "6"}, {"cosphi1", "0,7"}, {"cosphi2", "0,95"}},
         "D",
         true,
         false,
         "(YΔ-arket)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolRun r = runOnce([&] { return compensate(row.form, row.net); });
        ASSERT_TRUE(r.out.ok) << r.err;
        EXPECT_EQ(r.sheet.blocks.front().title == "Den aktive effekt ud fra strømmen", row.powerBlock);
        const SheetParts::Block* last = r.sheet.block("Tilsyneladende effekt og strøm før og efter");
        ASSERT_TRUE(last);
        EXPECT_EQ(contains(last->body, "I_1=[S_1"), row.currentBefore) << last->body;
        EXPECT_EQ(last->page, row.page);
    }
}

TEST_F(CompensationTest, refusalsAreToldInTheirWords) {
    struct Row {
        const char* name;
        FormMap form;
        const char* net;
        const char* err;
    };
    const FormMap full{{"U", "230"}, {"f", "50"}, {"P", "1k"}, {"cosphi1", "0,7"}, {"cosphi2", "0,95"}};
    auto with = [&](const std::string& key, const std::string& text) {
        FormMap f = full;
        if (text.empty())
            f.erase(key);
        else
            f[key] = text;
        return f;
    };
    const Row rows[] = {
        {"no power and no current", with("P", ""), "1", "Udfyld P eller I."},
        {"no voltage, three-phase", with("U", ""), "D", "Udfyld U_N."},
        {"gaps and neither P nor I",
         {{"f", "50"}, {"cosphi2", "0,95"}},
         "1",
         "Udfyld U, cos φ_1 og P eller I."},
        {"cos φ₁ above 1", with("cosphi1", "1,3"), "1", "cos φ skal ligge mellem 0 og 1."},
        {"cos φ₂ zero", with("cosphi2", "0"), "1", "cos φ skal ligge mellem 0 og 1."},
        {"wanted equal to present", with("cosphi2", "0,7"), "1",
         "Den ønskede cos φ skal være større end den nuværende – ellers er der intet at kompensere."},
        {"wanted below present", with("cosphi2", "0,6"), "Y",
         "Den ønskede cos φ skal være større end den nuværende – ellers er der intet at kompensere."},
        {"unreadable", with("P", "1kk"), "1", "Jeg kan ikke læse P"},
        {"negative power", with("P", "-1k"), "1", "Negative værdier giver ingen mening her – ret P."},
        {"zero frequency", with("f", "0"), "1", "Noget passer ikke – tjek værdierne. intet reelt svar"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolRun r = runOnce([&] { return compensate(row.form, row.net); });
        EXPECT_FALSE(r.out.ok);
        EXPECT_EQ(r.err, row.err);
        EXPECT_TRUE(r.out.html.empty());
    }
}

TEST_F(CompensationTest, fullCompensationLeavesNoReactivePower) {
    const ToolRun r = runOnce([] {
        return compensate({{"U", "230"}, {"f", "50"}, {"P", "2k"}, {"cosphi1", "0,8"}, {"cosphi2", "1"}},
                          "1");
    });
    ASSERT_TRUE(r.out.ok) << r.err;
    EXPECT_TRUE(contains(r.sheet.results, "Q_20 VAr")) << r.sheet.results;
    EXPECT_NEAR(recentValue(r.out, "QC"), 1500, 1e-9);
}

} // namespace
} // namespace fl
