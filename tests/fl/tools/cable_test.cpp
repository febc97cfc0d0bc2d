// The cable tools against numbers worked out here from the textbook
// formulas, written out in each test, never through the tools' helpers;
// the tables' edges; and the refusals in their exact words.
#include "fl/tools/cable.h"

#include "fl/expr/numbers.h"
#include "fl/tools/tables.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

const double kRoot3 = std::sqrt(3.0);
const double kSections[] = {1.5, 2.5, 4, 6, 10, 16, 25, 35, 50, 70, 95, 120, 150, 185, 240, 300};

// Equal to 1e-9, and shown as the house formats it.
void expectShown(const ToolRun& r, const std::string& symbol, double expected, const std::string& where) {
    EXPECT_NEAR(recentValue(r.out, symbol), expected, 1e-9 * std::fabs(expected)) << symbol;
    EXPECT_TRUE(contains(where, fmtNumber(expected))) << symbol << " in " << where;
}

int ticks(const std::string& text) {
    int n = 0;
    for (size_t at = text.find("✓"); at != std::string::npos; at = text.find("✓", at + 1))
        ++n;
    return n;
}

using CableTest = SettingsTest;

TEST_F(CableTest, tablesGiveTheirValuesAndNaNOffTheTable) {
    struct Row {
        const char* name;
        double value;
        double expected; // NaN: not in the table
    };
    const Row rows[] = {
        {"Cu smallest", cableResistance(false, 1.5), 12.1},
        {"Al 10 doesn't exist", cableResistance(true, 10), NAN},
        {"Al smallest", cableResistance(true, 16), 1.91},
        {"a size within 1e-9", cableResistance(false, 2.5 + 1e-10), 7.41},
        {"a size off the list", cableResistance(false, 2.4), NAN},
        {"pvik5 ends at 35", cableReactance("pvik5", 35), 0.094},
        {"nosp4 at 16 doesn't exist", cableReactance("nosp4", 16), NAN},
        {"unknown type", cableReactance("pvik9", 10), NAN},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        if (std::isnan(r.expected))
            EXPECT_TRUE(std::isnan(r.value));
        else
            EXPECT_EQ(r.value, r.expected);
    }
    for (const CableType& t : cableTypes())
        EXPECT_EQ(t.x.size(), crossSections().size()) << t.key;
}

TEST_F(CableTest, cableSizeMatchesTheTextbook) {
    struct Row {
        const char* name;
        bool three;
        double rho;
        FormMap form;
        double q;
    };
    const Row rows[] = {
        {"classroom case", false, kRhoCopper, formOf("U=230 I=10 Lk=50 dUpmax=3"), 4},
        {"power, three-phase, aluminium", true, kRhoAluminium,
         formOf("U=400 P=11k cosphi=0,85 Lk=80 dUpmax=4"), 6},
        {"power without cos φ", false, kRhoCopper, formOf("U=230 P=2300 Lk=20 dUpmax=2"), 2.5},
        {"exactly a standard size", false, kRhoCopper, formOf("U=100 I=5 Lk=50 dUpmax=3,5"), 2.5},
        {"near the top", true, kRhoAluminium, formOf("U=400 I=300 Lk=150 dUpmax=3"), 240},
        {"zero length", false, kRhoCopper, formOf("U=230 I=10 Lk=0 dUpmax=3"), 1.5},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const double u = readValue(r.form.at("U")), lk = readValue(r.form.at("Lk")),
                     p = readValue(r.form.at("dUpmax"));
        const double cosphi = r.form.count("cosphi") ? readValue(r.form.at("cosphi")) : 1;
        double i = r.form.count("I") ? readValue(r.form.at("I")) : readValue(r.form.at("P")) / (u * cosphi);
        if (!r.form.count("I") && r.three) i /= kRoot3;
        // ΔU_max = U·p/100; R_L,max = ΔU_max/I (1-phase, l = 2·Lk) or ΔU_max/(√3·I) (3-phase, l = Lk)
        const double dUmax = u * p / 100;
        const double l = r.three ? lk : 2 * lk;
        const double rlmax = r.three ? dUmax / (kRoot3 * i) : dUmax / i;
        const double qmin = r.rho * l / rlmax;
        size_t at = 0;
        while (kSections[at] < qmin - 1e-9)
            ++at;
        const double q = kSections[at];
        const double du = (r.three ? kRoot3 : 1) * i * r.rho * l / q;
        const double dup = du * 100 / u;
        EXPECT_EQ(q, r.q);

        const ToolRun got = runOnce([&] { return dimensionCable(r.form, r.three, r.rho); });
        ASSERT_TRUE(got.out.ok) << got.out.err;
        expectShown(got, "q", q, got.sheet.facit);
        EXPECT_TRUE(contains(got.sheet.facit, "spændingsfald " + fmtNumber(dup) + " %"));
        const auto* minimum = got.sheet.block("Mindste tværsnit");
        ASSERT_TRUE(minimum);
        EXPECT_TRUE(contains(minimum->body, fmtNumber(qmin) + " mm²")) << minimum->body;
        EXPECT_EQ(minimum->page, "(formelsamlingen s. 6)");
        EXPECT_EQ(got.sheet.check, "✓ " + fmtNumber(dup) + " % er under grænsen på " + fmtNumber(p) + " %");
        // Seven rows around the chosen size, two of them below it where there are.
        const size_t first = at >= 2 ? at - 2 : 0;
        EXPECT_EQ(ticks(got.sheet.results), static_cast<int>(std::min<size_t>(7, 16 - first) - (at - first)));
        EXPECT_EQ(got.sheet.title,
                  "Kabel: " + fmtNumber(q) + " mm² " + (r.rho == kRhoCopper ? "kobber" : "aluminium"));
    }
}

TEST_F(CableTest, voltageDropMatchesTheTextbookForEveryCableType) {
    int cases = 0;
    for (const CableType& type : cableTypes())
        for (size_t k = 0; k < crossSections().size(); ++k)
            for (bool aluminium : {false, true})
                for (bool three : {false, true}) {
                    const double q = crossSections()[k];
                    const double rl = cableResistance(aluminium, q), xl = type.x[k];
                    if (std::isnan(rl) || std::isnan(xl)) continue;
                    SCOPED_TRACE(type.key + " " + std::to_string(q) + (aluminium ? " Al" : " Cu") +
                                 (three ? " 3-faset" : " 1-faset"));
                    const double u = three ? 400 : 230, ib = 6 + static_cast<double>(k) * 9,
                                 len = 15 + static_cast<double>(k % 5) * 20, cosphi = 0.8, sf = 0.9;
                    const FormMap form =
                        formOf((three ? "U_N=" : "U_F=") + fmtShortest(u) + " I_B=" + fmtShortest(ib) +
                               " sf=0,9 cosphi=0,8 l=" + fmtShortest(len) + " R_l=" + fmtShortest(rl) +
                               " X_l=" + fmtShortest(xl));
                    // ΔU = k · I·sf · L · (R·cos φ + X·sin φ), k = 2 (1-phase) or √3 (3-phase)
                    const double sinphi = std::sqrt(1 - cosphi * cosphi);
                    const double du =
                        (three ? kRoot3 : 2) * ib * sf * len / 1000 * (rl * cosphi + xl * sinphi);
                    const double dup = du * 100 / u;
                    const ToolRun got = runOnce([&] { return voltageDrop(form, three); });
                    ASSERT_TRUE(got.out.ok) << got.out.err;
                    expectShown(got, "dUp", dup, got.sheet.facit);
                    expectShown(got, three ? "dU_n" : "dU_ft", du, got.sheet.facit);
                    int within = 0;
                    for (double limit : {3.0, 5.0, 6.0, 8.0})
                        within += dup <= limit + 1e-9;
                    EXPECT_EQ(ticks(got.sheet.results), within + 1); // and the ✓ of the explanation
                    ++cases;
                }
    EXPECT_GT(cases, 300);
}

TEST_F(CableTest, voltageDropClassroomCaseAndItsEdges) {
    const FormMap base = formOf("U_F=230 I_B=10 l=30 cosphi=1 R_l=12,1 X_l=0,108");
    ToolRun got = runOnce([&] { return voltageDrop(base, false); });
    ASSERT_TRUE(got.out.ok);
    EXPECT_EQ(got.sheet.title, "Spændingsfald 3,1565 %: 7,26 V");
    EXPECT_EQ(got.sheet.block("sin φ ud fra cos φ")->page, "(formelsamlingen s. 12)");

    // A factor of 0 counts as 1; its row says what was typed, the working uses 1.
    FormMap zero = base;
    zero["sf"] = "0";
    got = runOnce([&] { return voltageDrop(zero, false); });
    EXPECT_EQ(got.sheet.given[2], "sf = 0 – samtidighedsfaktor");
    EXPECT_TRUE(contains(got.sheet.block("Dimensioneringsstrømmen")->body, "10 · 1 · 1"))
        << got.sheet.blocks[0].body;
    EXPECT_NEAR(recentValue(got.out, "dUp"), 7.26 * 100 / 230, 1e-12);

    // A drop of exactly 3 % passes the 3 % limit.
    got = runOnce([&] { return voltageDrop(formOf("U_F=200 I_B=10 l=100 R_l=3 X_l=0"), false); });
    EXPECT_TRUE(contains(got.sheet.results, "3 % ✓5 % ✓"));
}

TEST_F(CableTest, shortCircuitMaxMatchesTheTextbook) {
    const char* const rows[] = {
        "U_N=400 Ik_fr=16000 cosphi_k=0,3 l=10 R_l=1,83 X_l=0,091", // classroom case, 10 mm² Cu pvik3
        "U_N=400 Ik_fr=16000 cosphi_k=1 l=10 R_l=1,83 X_l=0,091",
        "U_N=400 Ik_fr=25000 cosphi_k=0,2 l=0 R_l=0,388 X_l=0,073", // board at the cabinet
    };
    for (const char* row : rows) {
        SCOPED_TRACE(row);
        const FormMap form = formOf(row);
        const auto v = [&](const char* key) { return readValue(form.at(key)); };
        // Z = U/(√3·Ik); R = Z·cos φ, X = Z·sin φ; Ik,max = U/(√3·√((R+R_kab)² + (X+X_kab)²))
        const double z = v("U_N") / (kRoot3 * v("Ik_fr")), cosphi = v("cosphi_k");
        const double rs = z * cosphi + v("l") / 1000 * v("R_l");
        const double xs = z * std::sqrt(1 - cosphi * cosphi) + v("l") / 1000 * v("X_l");
        const double ik = v("U_N") / (kRoot3 * std::sqrt(rs * rs + xs * xs));
        const ToolRun got = runOnce([&] { return shortCircuitMax(form); });
        ASSERT_TRUE(got.out.ok) << got.out.err;
        expectShown(got, "Ik_max", ik, got.sheet.facit);
        EXPECT_TRUE(contains(got.sheet.facit, fmtNumber(ik / 1000) + " kA"));
        EXPECT_TRUE(contains(got.sheet.check, "✓"));
    }
}

TEST_F(CableTest, shortCircuitMinMatchesTheTextbookAndChecksTheBreaker) {
    const std::string cables = "U_F=230 k_fr=5 k_v=1,5 l_stik=20 R_lstik=1,83 l_grp=30 R_lgrp=12,1 ";
    struct Row {
        std::string form;
        int verdict; // 1 trips, 0 doesn't, −1 no check
    };
    const Row rows[] = {
        {cables + "I_Nks=35 I_Ngrp=10 k_a=10", 0}, // the classroom case, C 10 A
        {cables + "I_Nks=35 I_Ngrp=10 k_a=5", 1},
        {cables + "I_Nks=35 I_Ngrp= k_a=10", -1},
        {cables + "I_Nks=20 l_stik=0 l_grp=0 I_Ngrp=10 k_a=10", 1}, // exactly the trip current
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.form);
        const FormMap form = formOf(r.form);
        const auto v = [&](const char* key) { return readValue(form.at(key)); };
        // R_net = U/(k·I_N); R = l/1000 · R_l · 2 · k_v for each cable; Ik = U/ΣR
        const double rtavle =
            v("U_F") / (v("k_fr") * v("I_Nks")) + v("l_stik") / 1000 * v("R_lstik") * 2 * v("k_v");
        const double igt = v("U_F") / rtavle;
        const double ibg = v("U_F") / (rtavle + v("l_grp") / 1000 * v("R_lgrp") * 2 * v("k_v"));
        const ToolRun got = runOnce([&] { return shortCircuitMin(form); });
        ASSERT_TRUE(got.out.ok) << got.out.err;
        expectShown(got, "Ik_bg", ibg, got.sheet.facit);
        expectShown(got, "Ik_gt", igt, got.sheet.facit);
        if (r.verdict < 0) {
            EXPECT_TRUE(got.sheet.check.empty());
            EXPECT_EQ(got.sheet.given.size(), 8u);
            continue;
        }
        const double ia = v("k_a") * v("I_Ngrp");
        EXPECT_TRUE(contains(got.sheet.check, "=" + fmtNumber(ia) + " A"));
        EXPECT_EQ(contains(got.sheet.check, "– afbryderen slår fra"), r.verdict == 1) << got.sheet.check;
        EXPECT_EQ(contains(got.sheet.check, "slår ikke sikkert fra"), r.verdict == 0);
    }
}

TEST_F(CableTest, badInputGetsItsMessageAndItsFieldsMarked) {
    struct Row {
        ToolOut (*tool)(const FormMap&);
        std::string form;
        const char* message;
        const char* marked;
    };
    auto cable1 = [](const FormMap& f) { return dimensionCable(f, false, kRhoCopper); };
    auto cable3al = [](const FormMap& f) { return dimensionCable(f, true, kRhoAluminium); };
    auto drop1 = [](const FormMap& f) { return voltageDrop(f, false); };
    const std::string drop = "U_F=230 I_B=10 l=30 R_l=12,1 X_l=0,108 ";
    const std::string ikmax = "U_N=400 Ik_fr=16k cosphi_k=0,3 l=10 R_l=1,83 X_l=0,091 ";
    const char* cosphi = "cos φ skal ligge mellem 0 og 1.";
    const Row rows[] = {
        {cable1, "U= I= P= Lk= dUpmax=4",
         "Udfyld spændingen, kabellængden, det største spændingsfald og enten I eller P.", "U I P Lk"},
        {cable1, "U=230 I=10 Lk=-5 dUpmax=3", "Negative værdier giver ingen mening her – ret L_kabel.", "Lk"},
        {cable3al, "U=400 I=300 Lk=200 dUpmax=2",
         "Der skal bruges mindst 372,82 mm² – det er større end standardkablerne her (300 mm²). "
         "Overvej parallelle kabler eller en kortere/højere spænding.",
         "dUpmax"},
        {cable1, "U=230 P=2k cosphi=1,2 Lk=5 dUpmax=3", cosphi, "cosphi"},
        // A size the conductor isn't made in leaves the table values empty.
        {drop1, drop + "R_l= X_l=", "Udfyld R_l, X_l.", "R_l X_l"},
        {drop1, drop + "cosphi=0", cosphi, "cosphi"},
        {drop1, drop + "X_l= I_B=x", "Jeg kan ikke læse I_B", "I_B"}, // letters beat empty fields
        {shortCircuitMax, ikmax + "l=", "Udfyld l.", "l"},
        {shortCircuitMax, ikmax + "cosphi_k=0", cosphi, "cosphi_k"},
        {shortCircuitMin, "U_F=230 k_fr=5 k_v=1,5", "Udfyld I_N,kabelskab, l_stik, R_l,stik, l_grp, R_l,grp.",
         "I_Nks l_stik R_lstik l_grp R_lgrp"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.form);
        const ToolRun got = runOnce([&] { return r.tool(formOf(r.form)); });
        EXPECT_FALSE(got.out.ok);
        EXPECT_TRUE(got.out.html.empty());
        EXPECT_TRUE(contains(got.out.err, "class=\"msg bad\""));
        EXPECT_EQ(got.err, r.message);
        EXPECT_EQ(keysText(got.out.badKeys), r.marked);
    }
}

} // namespace
} // namespace fl
