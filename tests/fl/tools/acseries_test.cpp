// The series RLC tool: a circuit's sheet worked by hand, agreement with the circuit
// page's solver on the same circuits, the demonstration's numbers against
// the sheet's, and the refusals.
#include "fl/tools/ac.h"

#include "fl/circuit/sheet.h"
#include "tests/fl/circuit/circuits.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using AcTool = SettingsTest;

// The numbers are held against the circuit solver and the demonstration below.
TEST_F(AcTool, aCircuitWorkedByHand) {
    // R = 30 Ω, L = 0,2 H, C = 100 µF at 50 Hz on 230 V.
    const ToolRun run = runOnce([&] { return acSeries(formOf("R=30 L=0,2 C=100u f=50 U=230")); });
    ASSERT_TRUE(run.out.ok) << run.out.err;
    EXPECT_TRUE(contains(run.text, "X_L=2 · π · f · L=2 · π · 50 · 0,2=62,832 Ω")) << run.text;
    EXPECT_TRUE(contains(run.sheet.results, "φ45,94° induktiv")) << run.sheet.results;
    EXPECT_EQ(run.sheet.block("Resonansfrekvensen")->page, "(Parallel s. 4 og 8)");
    EXPECT_TRUE(contains(run.sheet.check, "= 230 V = U ✓"));
}

struct Agreement {
    const char* name;
    const char *R, *L, *C, *f, *U, *I;
};

// The tool's symbol and the circuit solver's for the same quantity.
const std::pair<const char*, const char*> kSameQuantity[] = {
    {"Z", "Z"}, {"I", "I"},           {"U", "U"},     {"UR", "U_R1"}, {"UL", "U_L1"}, {"UC", "U_C1"},
    {"P", "P"}, {"cosphi", "cosphi"}, {"phi", "phi"}, {"XL", "X_L1"}, {"XC", "X_C1"}};

TEST_F(AcTool, agreesWithTheCircuitSolverOnTheSameCircuit) {
    const Agreement rows[] = {
        {"inductive", "30", "0,2", "100u", "50", "230", ""},
        {"capacitive", "100", "0,5", "20u", "50", "230", ""},
        {"R and C at 1 kHz", "1k", "", "2,2u", "1000", "12", ""},
        {"L and C alone", "", "0,1", "10u", "50", "10", ""},
        {"R alone at 60 Hz", "47", "", "", "60", "230", ""},
        {"the current given", "30", "0,2", "100u", "50", "", "2"},
    };
    for (const Agreement& r : rows) {
        SCOPED_TRACE(r.name);
        std::vector<CNodePtr> parts;
        if (*r.R) parts.push_back(testing::leaf("R", r.R));
        if (*r.L) parts.push_back(testing::leaf("L", r.L));
        if (*r.C) parts.push_back(testing::leaf("C", r.C));
        std::map<std::string, std::string> src{{"f", r.f}};
        if (*r.U) src["U"] = r.U;
        if (*r.I) src["I"] = r.I;
        Circuit c = testing::circuit("ac", parts, src);
        const Sheet sheet = computeSheet(c);
        ASSERT_EQ(sheet.error, "");

        std::map<std::string, double> tool;
        const ToolOut out =
            acSeries({{"R", r.R}, {"L", r.L}, {"C", r.C}, {"f", r.f}, {"U", r.U}, {"I", r.I}}, &tool);
        ASSERT_TRUE(out.ok) << out.err;
        int compared = 0;
        for (const auto& [mine, theirs] : kSameQuantity) {
            auto it = sheet.values.find(theirs);
            if (it == sheet.values.end() || !tool.count(mine)) continue;
            EXPECT_NEAR(tool.at(mine), it->second, 1e-9 * std::max(std::fabs(it->second), 1.0)) << mine;
            ++compared;
        }
        EXPECT_GE(compared, 7);
    }
}

TEST_F(AcTool, theDemonstrationComputesWhatTheSheetShows) {
    const struct { double R, L, C, f; } rows[] = {{100, 0.5, 20e-6, 50}, {10, 0.05, 1e-3, 200}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.R);
        std::map<std::string, double> sheet;
        const FormMap form = formOf("R=" + fmtShortest(r.R) + " L=" + fmtShortest(r.L) +
                                    " C=" + fmtShortest(r.C) + " f=" + fmtShortest(r.f) + " U=230");
        ASSERT_TRUE(acSeries(form, &sheet).ok);
        const SeriesRlcValues v = seriesRlc({r.R, r.L, r.C, r.f, 230, NAN});
        // clang-format off
        const std::pair<const char*, double> same[] = {
            {"XL", v.XL}, {"XC", v.XC}, {"Z", v.Z}, {"I", v.I}, {"UR", v.UR}, {"UL", v.UL}, {"UC", v.UC},
            {"P", v.P}, {"S", v.S}, {"Q", std::fabs(v.Q)}, {"phi", std::fabs(v.phi)}, {"f_r", v.f0}};
        // clang-format on
        for (const auto& [symbol, value] : same)
            EXPECT_NEAR(sheet.at(symbol), value, 1e-9 * value) << symbol;
        EXPECT_EQ(v.phi > 0, v.XL > v.XC);
    }
}

TEST_F(AcTool, refusalsNameTheFieldToFix) {
    const Refused rows[] = {
        {"no part", "f=50 U=230",
         "Udfyld mindst én af R, L og C – et felt, der står tomt, er en del, der ikke er med.", "R L C"},
        {"both U and I", "R=10 f=50 U=230 I=2",
         "Giv enten spændingen U eller strømmen I – den anden regnes ud.", "U I"},
        {"neither U nor I", "R=10 f=50", "Udfyld spændingen U eller strømmen I.", "U I"},
        {"no frequency", "R=10 U=230", "Udfyld frekvensen f (normalt 50 Hz).", "f"},
        {"direct current", "C=10u f=0 U=230",
         "Frekvensen skal være større end 0 Hz – ved 0 Hz (jævnstrøm) spærrer kondensatoren.", "f"},
        {"no capacitance", "R=10 C=0 f=50 U=230",
         "C = 0 F giver en uendelig stor X<sub>C</sub>. Lad feltet stå tomt, hvis der ingen kondensator er.",
         "C"},
        // X_L = X_C = 1 Ω at f = 1/(2π) Hz, and no resistance.
        {"resonance without R", "L=1 C=1 f=1/(2π) U=230",
         "Noget passer ikke – tjek værdierne (Z må ikke blive 0). <span class=\"crumb\">intet reelt "
         "svar</span>",
         ""},
    };
    expectRefused([](const FormMap& f) { return acSeries(f); }, rows);
    // A farad typed for a microfarad is answered, with the question beside it.
    const ToolRun slip = runOnce([] { return acSeries(formOf("R=10 C=0,05 f=50 U=230")); });
    ASSERT_TRUE(slip.out.ok);
    EXPECT_TRUE(contains(slip.sheet.results, "Mente du 0,05 µF? Skriv det som 0,05u.")) << slip.sheet.results;
}

TEST_F(AcTool, theReactanceDecidesTheWord) {
    EXPECT_EQ(reactiveWord(5, 10), "induktiv");
    EXPECT_EQ(reactiveWord(-5, 10), "kapacitiv");
    EXPECT_EQ(reactiveWord(1e-14, 10), "ohmsk");
}

TEST(AcDemo, slidersAreLogarithmicAndRoundTrip) {
    EXPECT_DOUBLE_EQ(sliderValue(0, 1000, 1e-3, 1), 1e-3);
    // Half way on a log scale is the geometric middle.
    EXPECT_NEAR(sliderValue(500, 1000, 1e-3, 1e-1), 1e-2, 1e-15);
    EXPECT_DOUBLE_EQ(sliderValue(-5, 1000, 1, 100), 1);
    for (int pos : {0, 1, 333, 999, 1000})
        EXPECT_EQ(sliderPosition(sliderValue(pos, 1000, 10, 1e4), 1000, 10, 1e4), pos);
    EXPECT_EQ(sliderPosition(1e9, 1000, 10, 1e4), 1000);
    EXPECT_EQ(sliderPosition(0, 1000, 10, 1e4), 0);

    const SeriesRlcValues v = seriesRlc({100, 0.5, 20e-6, 50, 230, NAN}); // f₀ = 50,33 Hz
    EXPECT_TRUE(atResonance(v, 50));
    EXPECT_FALSE(atResonance(v, 50.33 * 1.03));
    EXPECT_FALSE(atResonance(seriesRlc({100, 0.5, NAN, 50, 230, NAN}), 50));
}

} // namespace
} // namespace fl
