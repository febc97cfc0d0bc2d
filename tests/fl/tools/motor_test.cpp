// The motor: random consistent plates with every subset of the plate given,
// the readings no plate meets, and the refusals and hints in their words.
#include "fl/tools/machines.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

const std::vector<std::string> kPlate{"U_N", "f", "P_2", "I_N", "cosphi", "eta", "nr", "p", "k_st"};

// A plate from the textbook relations: P₁ = P₂ / η, I = P₁ / (√3 · U · cos φ),
// n = 60 · f / p · (1 − s).
Vars plate(std::mt19937& rng, bool threePhase) {
    Vars v;
    v["U_N"] = threePhase ? pick(rng, {230.0, 400.0, 690.0}) : 230.0;
    v["f"] = pick(rng, {50.0, 60.0});
    v["P_2"] = logUniform(rng, 100, 500e3);
    v["cosphi"] = uniform(rng, 0.6, 1.0);
    v["eta"] = uniform(rng, 0.7, 0.98);
    v["p"] = pick(rng, {1.0, 2.0, 3.0, 4.0});
    v["k_st"] = uniform(rng, 5, 8);
    const double slip = uniform(rng, 1, 6);
    v["n_s"] = 60 * v["f"] / v["p"];
    v["nr"] = v["n_s"] * (1 - slip / 100);
    v["s"] = slip;
    v["f_r"] = slip / 100 * v["f"];
    v["P_1"] = v["P_2"] / v["eta"];
    v["P_tab"] = v["P_1"] - v["P_2"];
    const double root = threePhase ? std::sqrt(3.0) : 1.0;
    v["I_N"] = v["P_1"] / (root * v["U_N"] * v["cosphi"]);
    v["S"] = root * v["U_N"] * v["I_N"];
    v["Q"] = v["S"] * std::sin(std::acos(v["cosphi"]));
    v["M"] = v["P_2"] / (2 * M_PI * v["nr"] / 60);
    v["I_st"] = v["k_st"] * v["I_N"];
    v["I_stY"] = v["I_st"] / 3;
    return v;
}

using MotorTest = SettingsTest;

TEST_F(MotorTest, everySubsetOfThePlateFindsWhatItDeterminesAndNamesTheRest) {
    std::mt19937 rng(18);
    SubsetCheck check;
    for (const ToolQuantity& q : motorQuantities())
        check.keys.push_back(q.key);
    check.gapText = "Kunne ikke findes med de givne tal: ";
    check.stuckText = "Med de tal kan programmet ikke finde mere";
    check.unitOf = unitsOf(motorQuantities());
    for (const bool threePhase : {true, false})
        for (const bool starDelta : {false, true}) {
            const std::vector<ChainEquation> list = motorEquations(threePhase, starDelta);
            check.wanted = {"P_1",    "eta", "P_tab", "S",   "Q", "I_N", "P_2",
                            "cosphi", "n_s", "s",     "f_r", "M", "I_st"};
            if (starDelta) check.wanted.push_back("I_stY");
            for (int draw = 0; draw < 2; ++draw) {
                const Vars truth = plate(rng, threePhase);
                forEverySubset(kPlate, [&](unsigned mask, const std::set<std::string>& given) {
                    if (HasFatalFailure()) return;
                    SCOPED_TRACE((threePhase ? "3-faset" : "1-faset") + std::string(starDelta ? " YΔ" : "") +
                                 " mask " + std::to_string(mask));
                    FormMap form;
                    for (const std::string& k : given)
                        form[k] = fmtShortest(truth.at(k));
                    std::set<std::string> start = given;
                    // The pole pairs come from n and f before the chain.
                    if (!given.count("p") && given.count("nr") && given.count("f")) start.insert("p");
                    const ToolRun r = runOnce([&] { return motor(form, threePhase, starDelta); });
                    checkSubset(r, check, given, determined(list, start), truth);
                });
            }
        }
}

// Two readings the every-subset run never meets: an efficiency typed in per
// cent, and a speed exactly at a synchronous one.
TEST_F(MotorTest, percentEfficiencyAndExactSynchronousSpeedAreReadAsMeant) {
    const double root3 = std::sqrt(3.0);
    struct Row {
        const char* form;
        Vars expected;
    };
    const Row rows[] = {
        {"U_N=400 I_N=10 cosphi=0,8 eta=87", {{"P_2", 0.87 * root3 * 400 * 10 * 0.8}}},
        {"f=50 nr=1500", {{"p", 2}, {"s", 0}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.form);
        const ToolRun r = runOnce([&] { return motor(formOf(row.form), true, false); });
        ASSERT_TRUE(r.out.ok) << r.err;
        for (const auto& [key, value] : row.expected)
            EXPECT_NEAR(recentValue(r.out, key), value, 1e-9 * std::max(1.0, value)) << key;
    }
}

TEST_F(MotorTest, refusalsAndHintsSpeakThePlatesLanguage) {
    const double current = 5500 / 0.87 / (std::sqrt(3.0) * 400 * 0.83); // η = 0,87 exactly
    const std::string offBy = "U_N=400 P_2=5500 eta=0,87 cosphi=0,83 I_N=";
    const Said rows[] = {
        {"U_N=400 I_N=10 eta=120", false, "Virkningsgraden η skal være mellem 0 og 1 (fx 0,87)."},
        {"eta=0", false, "Virkningsgraden η skal være mellem 0 og 1 (fx 0,87)."},
        {"U_N=400 I_N=10 cosphi=1,2", false, "cos φ skal ligge mellem 0 og 1 (fx 0,83)."},
        {"f=50 p=1,5", false,
         "Antal polpar p skal være et helt tal (1, 2, 3 …). En 4-polet motor har 2 polpar."},
        {"f=50 p=0", false, "Antal polpar p skal være et helt tal"},
        {"eta=90 cosphi=2", false,
         "η er skrevet i procent – der regnes med η = 0,9.cos φ skal ligge mellem 0 og 1 (fx 0,83)."},
        {"U_N=400 f=50", false,
         "Med de tal kan programmet ikke finde mere. Udfyld fx U, I og cos φ (så findes P₁), og P₂ eller η."},
        {"U_N=400 f=50 I_N=10 cosphi=0,8", true,
         "Kunne ikke findes med de givne tal: η, P_tab, P_2, n_s, s, f_r, M, I_start. Skriv "
         "startstrømsfaktoren k "
         "(typisk 5–8) for at få startstrømmen. Skriv omdrejningstallet n for at få slip og moment."},
        // n above the synchronous speed of any pole pair: no p, and nothing asked of it.
        {"U_N=400 f=50 I_N=10 cosphi=0,8 k_st=6 nr=3100 P_2=4k", true,
         "Kunne ikke findes med de givne tal: n_s, s, f_r."},
        // η beside P₁ from U, I and cos φ is held against P₂ / P₁: 2 % off is rounding, 5 % a conflict.
        {offBy + fmtShortest(current * 1.02), true,
         "Nogle tal passer næsten, men ikke helt – det er normalt, fordi tallene på en mærkeplade er "
         "afrundede:Virkningsgrad (η = P₂ / P₁): η = 0,87, men formlen giver 0,85294"},
        {offBy + fmtShortest(current * 1.05), true,
         "Nogle af de givne tal passer ikke sammen – tjek dem:Virkningsgrad (η = P₂ / P₁): η = 0,87, "
         "men formlen giver 0,82857"},
    };
    expectSaid([](const FormMap& f) { return motor(f, true, false); }, rows);
    EXPECT_FALSE(contains(
        runOnce([&] { return motor(formOf(offBy + fmtShortest(current)), true, false); }).notes, "passer"));
}

TEST_F(MotorTest, sheetShowsGivenPlainFoundBlueAndTheChecks) {
    const ToolRun r = runOnce(
        [] { return motor(formOf("U_N=400 f=50 P_2=5,5k I_N=11 cosphi=0,83 nr=1445 k_st=7"), true, false); });
    ASSERT_TRUE(r.out.ok);
    EXPECT_EQ(r.sheet.title, "Udregning af motoren");
    ASSERT_FALSE(r.sheet.blocks.empty());
    EXPECT_EQ(r.sheet.blocks[0].title, "Antal polpar ud fra omdrejningstallet");
    EXPECT_TRUE(contains(r.sheet.blocks[0].body, "p=2rundet ned til et helt antal polpar"));
    EXPECT_EQ(r.sheet.blocks[1].page, "(standardformel)");
    EXPECT_TRUE(contains(r.sheet.given[2], "P_2 = 5,5 kW – afgivet effekt"));
    EXPECT_TRUE(contains(r.sheet.check, "Huskereglen M ≈ 9550 · P₂[kW] / n"));
    EXPECT_TRUE(contains(r.sheet.check, "36,349 Nm"));
    EXPECT_TRUE(contains(r.sheet.check, "Optaget effekt = afgivet effekt + tab"));
    // Found values carry the highlight, given ones don't.
    EXPECT_TRUE(contains(r.out.html, "<td class=\"kv hl\"><span class=\"k\">" + tool::symbolHtml("P_1")));
    EXPECT_TRUE(contains(r.out.html, "<td class=\"kv\"><span class=\"k\">" + tool::symbolHtml("I_N")));
}

} // namespace
} // namespace fl
