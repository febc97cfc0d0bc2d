// Compensation against numbers worked out here from Q_C = P · (tan φ₁ − tan φ₂)
// and C = Q / (U² · ω) per capacitor, and the refusals in their words.
#include "fl/tools/machines.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using CompensationTest = SettingsTest;

TEST_F(CompensationTest, capacitorsAndTheSheetComeOutAsTheTextbookSays) {
    const double root3 = std::sqrt(3.0);
    struct Row {
        const char* form;
        const char* net;
        double p;         // the active power, given or from I
        double uc;        // the voltage over one capacitor
        double u, phases; // I = S / (U · phases), phases 1 or √3
    };
    const Row rows[] = {
        {"U=230 f=50 P=1000 cosphi1=0,7 cosphi2=0,95", "1", 1000, 230, 230, 1},
        {"U=230 f=50 I=8 cosphi1=0,6 cosphi2=0,9", "1", 230 * 8 * 0.6, 230, 230, 1},
        {"U=400 f=50 P=22k cosphi1=0,75 cosphi2=0,95", "D", 22000, 400, 400, root3},
        {"U=400 f=50 P=22k cosphi1=0,75 cosphi2=0,95", "Y", 22000, 400 / root3, 400, root3},
        {"U=690 f=60 I=100 cosphi1=0,8 cosphi2=1", "Y", 690 * 100 * root3 * 0.8, 690 / root3, 690, root3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.form + std::string(" ") + row.net);
        const FormMap form = formOf(row.form);
        const ToolRun r = runOnce([&] { return compensate(form, row.net); });
        ASSERT_TRUE(r.out.ok) << r.err;
        const double cos1 = readValue(form.at("cosphi1")), cos2 = readValue(form.at("cosphi2"));
        // Q_C = P · (tan φ₁ − tan φ₂); C = Q_C / n / (U_C² · ω), n = 3 capacitors on three phases
        const double qc = row.p * (std::tan(std::acos(cos1)) - std::tan(std::acos(cos2)));
        const double omega = 2 * M_PI * readValue(form.at("f"));
        const double c = qc / (row.phases > 1 ? 3 : 1) / (row.uc * row.uc * omega);
        EXPECT_NEAR(recentValue(r.out, "QC"), qc, 1e-9 * qc);
        EXPECT_NEAR(recentValue(r.out, "C"), c, 1e-9 * c);
        const double i2 = row.p / cos2 / (row.u * row.phases);
        EXPECT_TRUE(contains(r.sheet.results, "I_2" + sheetText(tool::formatValue(i2, "A"), {})))
            << r.sheet.results;
        EXPECT_TRUE(contains(r.sheet.check, "✓ Passer")) << r.sheet.check;
        EXPECT_TRUE(contains(r.sheet.facit, "C = " + sheetText(tool::formatValue(c, "F"), {})))
            << r.sheet.facit;
        if (cos2 == 1) {
            EXPECT_TRUE(contains(r.sheet.results, "Q_20 VAr")) << r.sheet.results;
        }
        EXPECT_EQ(r.sheet.title, "Kompensering til cos φ = " + form.at("cosphi2"));
        // Given a current, the power is found first and the current before needs no step of its own.
        const bool byCurrent = form.count("I") > 0;
        EXPECT_EQ(r.sheet.blocks.front().title == "Den aktive effekt ud fra strømmen", byCurrent);
        const SheetParts::Block* last = r.sheet.block("Tilsyneladende effekt og strøm før og efter");
        ASSERT_TRUE(last);
        EXPECT_EQ(contains(last->body, "I_1=[S_1"), !byCurrent) << last->body;
        EXPECT_EQ(last->page, row.phases > 1 ? "(YΔ-arket)" : "(formelsamlingen s. 13)");
        const bool star = std::string(row.net) == "Y";
        EXPECT_EQ(r.sheet.block("I stjerne ligger hver kondensator på fasespændingen") != nullptr, star);
        EXPECT_EQ(contains(r.sheet.facit, "pr. kondensator (3 stk. i stjerne)"), star);
    }
}

TEST_F(CompensationTest, refusalsAreToldInTheirWords) {
    const std::string full = "U=230 f=50 cosphi1=0,7 cosphi2=0,95 ";
    const char* wanted =
        "Den ønskede cos φ skal være større end den nuværende – ellers er der intet at kompensere.";
    struct Row {
        std::string form;
        const char* net;
        const char* err;
    };
    const Row rows[] = {
        {full, "1", "Udfyld P eller I."},
        {"f=50 P=1k cosphi1=0,7 cosphi2=0,95", "D", "Udfyld U_N."},
        {"f=50 cosphi2=0,95", "1", "Udfyld U, cos φ_1 og P eller I."},
        {full + "P=1k cosphi1=1,3", "1", "cos φ skal ligge mellem 0 og 1."},
        {full + "P=1k cosphi2=0", "1", "cos φ skal ligge mellem 0 og 1."},
        {full + "P=1k cosphi2=0,7", "1", wanted},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.form);
        const ToolRun r = runOnce([&] { return compensate(formOf(row.form), row.net); });
        EXPECT_FALSE(r.out.ok);
        EXPECT_EQ(r.err, row.err);
        EXPECT_TRUE(r.out.html.empty());
    }
}

} // namespace
} // namespace fl
