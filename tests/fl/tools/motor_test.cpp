// The motor: random consistent plates with every subset of the plate given,
// textbook numbers worked out here, and the refusals and hints in their words.
#include "fl/tools/machines.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using Vars = std::map<std::string, double>;

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
    for (const bool threePhase : {true, false})
        for (const bool starDelta : {false, true}) {
            const std::vector<ChainEquation> list = motorEquations(threePhase, starDelta);
            std::vector<std::string> wanted{"P_1",    "eta", "P_tab", "S",   "Q", "I_N", "P_2",
                                            "cosphi", "n_s", "s",     "f_r", "M", "I_st"};
            if (starDelta) wanted.push_back("I_stY");
            for (int draw = 0; draw < 2; ++draw) {
                const Vars truth = plate(rng, threePhase);
                forEverySubset(kPlate, [&](unsigned mask, const std::set<std::string>& given) {
                    SCOPED_TRACE((threePhase ? "3-faset" : "1-faset") + std::string(starDelta ? " YΔ" : "") +
                                 " mask " + std::to_string(mask));
                    FormMap form;
                    for (const std::string& k : given)
                        form[k] = typed(truth.at(k));
                    std::set<std::string> start = given;
                    // The pole pairs come from n and f before the chain.
                    if (!given.count("p") && given.count("nr") && given.count("f")) start.insert("p");
                    const std::set<std::string> expected = determined(list, start);
                    const ToolRun r = runOnce([&] { return motor(form, threePhase, starDelta); });
                    if (expected == given) {
                        ASSERT_FALSE(r.out.ok);
                        ASSERT_TRUE(contains(r.err, "Med de tal kan programmet ikke finde mere")) << r.err;
                        return;
                    }
                    ASSERT_TRUE(r.out.ok) << r.err;
                    std::string missing;
                    for (const std::string& k : wanted)
                        if (!expected.count(k)) missing += (missing.empty() ? "" : ", ") + symbolText(k);
                    for (const ToolQuantity& q : motorQuantities()) {
                        const double found = recentValue(r.out, q.key);
                        if (given.count(q.key) || !truth.count(q.key)) {
                            ASSERT_TRUE(std::isnan(found)) << q.key;
                            continue;
                        }
                        ASSERT_EQ(!std::isnan(found), expected.count(q.key) > 0) << q.key;
                        if (std::isnan(found)) continue;
                        ASSERT_LE(relDiff(found, truth.at(q.key)), 1e-9) << q.key;
                        ASSERT_TRUE(
                            contains(r.sheet.results,
                                     symbolText(q.key) + sheetText(tool::formatValue(found, q.unit), {})))
                            << q.key << " in " << r.sheet.results;
                    }
                    ASSERT_EQ(contains(r.notes, "Kunne ikke findes"), !missing.empty()) << r.notes;
                    ASSERT_TRUE(missing.empty() ||
                                contains(r.notes, "Kunne ikke findes med de givne tal: " + missing + "."))
                        << r.notes;
                    ASSERT_FALSE(contains(r.notes, "passer")) << r.notes;
                });
            }
        }
}

// Independent numbers: each row's expectation is written out from the
// textbook formulas here.
TEST_F(MotorTest, plateValuesGiveTheTextbookNumbers) {
    const double root3 = std::sqrt(3.0);
    struct Row {
        const char* name;
        FormMap form;
        bool threePhase, starDelta;
        Vars expected;
    };
    const Row rows[] = {
        {"three-phase example",
         {{"U_N", "400"},
          {"f", "50"},
          {"P_2", "5,5k"},
          {"I_N", "11"},
          {"cosphi", "0,83"},
          {"nr", "1445"},
          {"k_st", "7"}},
         true,
         false,
         {{"p", 2},
          {"n_s", 1500},
          {"s", 55.0 / 1500 * 100},
          {"f_r", 55.0 / 1500 * 50},
          {"P_1", root3 * 400 * 11 * 0.83},
          {"eta", 5500 / (root3 * 400 * 11 * 0.83)},
          {"P_tab", root3 * 400 * 11 * 0.83 - 5500},
          {"S", root3 * 400 * 11},
          {"Q", root3 * 400 * 11 * std::sqrt(1 - 0.83 * 0.83)},
          {"M", 5500 * 60 / (2 * M_PI * 1445)},
          {"I_st", 77}}},
        {"single-phase example",
         {{"U_N", "230"},
          {"f", "50"},
          {"P_2", "750"},
          {"I_N", "5,2"},
          {"cosphi", "0,85"},
          {"nr", "2820"},
          {"k_st", "5"}},
         false,
         false,
         {{"p", 1}, {"s", 6}, {"P_1", 230 * 5.2 * 0.85}, {"eta", 750 / (230 * 5.2 * 0.85)}, {"I_st", 26}}},
        {"star-delta start is a third of direct",
         {{"U_N", "400"}, {"I_N", "20"}, {"k_st", "6"}},
         true,
         true,
         {{"I_st", 120}, {"I_stY", 40}, {"S", root3 * 400 * 20}}},
        {"backwards: current from shaft power, efficiency and cos φ",
         {{"U_N", "400"}, {"P_2", "11k"}, {"eta", "0,9"}, {"cosphi", "0,85"}},
         true,
         false,
         {{"P_1", 11000 / 0.9}, {"I_N", 11000 / 0.9 / (root3 * 400 * 0.85)}}},
        {"backwards: pole pairs given, speed from slip is not asked, torque from n",
         {{"f", "60"}, {"p", "3"}, {"nr", "1164"}, {"P_2", "15k"}},
         true,
         false,
         {{"n_s", 1200}, {"s", 3}, {"f_r", 1.8}, {"M", 15000 * 60 / (2 * M_PI * 1164)}}},
        {"efficiency typed in percent",
         {{"U_N", "400"}, {"I_N", "10"}, {"cosphi", "0,8"}, {"eta", "87"}},
         true,
         false,
         {{"P_2", 0.87 * root3 * 400 * 10 * 0.8}}},
        {"exact synchronous speed keeps its pole pairs",
         {{"f", "50"}, {"nr", "1500"}},
         true,
         false,
         {{"p", 2}, {"s", 0}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolRun r = runOnce([&] { return motor(row.form, row.threePhase, row.starDelta); });
        ASSERT_TRUE(r.out.ok) << r.err;
        for (const auto& [key, value] : row.expected)
            EXPECT_NEAR(recentValue(r.out, key), value, 1e-9 * std::max(1.0, std::fabs(value))) << key;
    }
}

TEST_F(MotorTest, refusalsAndHintsSpeakThePlatesLanguage) {
    struct Row {
        const char* name;
        FormMap form;
        bool ok;
        const char* text; // in the refusal, or in the hints above the sheet
    };
    const Row rows[] = {
        {"efficiency in percent",
         {{"U_N", "400"}, {"I_N", "10"}, {"cosphi", "0,8"}, {"eta", "87"}},
         true,
         "η er skrevet i procent – der regnes med η = 0,87."},
        {"efficiency above 100",
         {{"U_N", "400"}, {"I_N", "10"}, {"eta", "120"}},
         false,
         "Virkningsgraden η skal være mellem 0 og 1 (fx 0,87)."},
        {"efficiency zero", {{"eta", "0"}}, false, "Virkningsgraden η skal være mellem 0 og 1 (fx 0,87)."},
        {"cos φ above 1",
         {{"U_N", "400"}, {"I_N", "10"}, {"cosphi", "1,2"}},
         false,
         "cos φ skal ligge mellem 0 og 1 (fx 0,83)."},
        {"pole pairs not whole",
         {{"f", "50"}, {"p", "1,5"}},
         false,
         "Antal polpar p skal være et helt tal (1, 2, 3 …). En 4-polet motor har 2 polpar."},
        {"pole pairs zero", {{"f", "50"}, {"p", "0"}}, false, "Antal polpar p skal være et helt tal"},
        {"percent note kept with a refusal",
         {{"eta", "90"}, {"cosphi", "2"}},
         false,
         "η er skrevet i procent – der regnes med η = 0,9.cos φ skal ligge mellem 0 og 1 (fx 0,83)."},
        {"nothing follows",
         {{"U_N", "400"}, {"f", "50"}},
         false,
         "Med de tal kan programmet ikke finde mere. Udfyld fx U, I og cos φ (så findes P₁), og P₂ eller η."},
        {"unreadable", {{"U_N", "400"}, {"I_N", "1x"}}, false, "Jeg kan ikke læse I_N"},
        {"negative current",
         {{"U_N", "400"}, {"I_N", "-3"}},
         false,
         "Negative værdier giver ingen mening her"},
        {"no k and no n",
         {{"U_N", "400"}, {"f", "50"}, {"I_N", "10"}, {"cosphi", "0,8"}},
         true,
         "Kunne ikke findes med de givne tal: η, P_tab, P_2, n_s, s, f_r, M, I_start. Skriv "
         "startstrømsfaktoren k "
         "(typisk 5–8) for at få startstrømmen. Skriv omdrejningstallet n for at få slip og moment."},
        {"n too fast for the net gives no pole pairs and asks nothing of it",
         {{"U_N", "400"},
          {"f", "50"},
          {"I_N", "10"},
          {"cosphi", "0,8"},
          {"k_st", "6"},
          {"nr", "3100"},
          {"P_2", "4k"}},
         true,
         "Kunne ikke findes med de givne tal: n_s, s, f_r."},
        {"more power taken than S allows has no real answer",
         {{"U_N", "400"}, {"I_N", "10"}, {"P_2", "9k"}, {"eta", "0,8"}},
         false,
         "Noget passer ikke – tjek værdierne. intet reelt svar"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolRun r = runOnce([&] { return motor(row.form, true, false); });
        EXPECT_EQ(r.out.ok, row.ok) << r.err;
        EXPECT_TRUE(contains(row.ok ? r.notes : r.err, row.text)) << (row.ok ? r.notes : r.err);
    }
}

TEST_F(MotorTest, givensThatDisagreeAreListedAsNearMissOrConflict) {
    const double root3 = std::sqrt(3.0);
    // P₁ from U, I and cos φ; η given beside it is held against P₂ / P₁.
    auto plateWithCurrentOff = [&](double factor) {
        const double current = 5500 / 0.87 / (root3 * 400 * 0.83) * factor;
        return FormMap{
            {"U_N", "400"}, {"P_2", "5500"}, {"eta", "0,87"}, {"cosphi", "0,83"}, {"I_N", typed(current)}};
    };
    struct Row {
        const char* name;
        double factor;
        const char* present;
        const char* absent;
    };
    const Row rows[] = {
        {"agrees", 1.0, "", "passer"},
        {"2 % off", 1.02,
         "Nogle tal passer næsten, men ikke helt – det er normalt, fordi tallene på en mærkeplade er "
         "afrundede:Virkningsgrad (η = P₂ / P₁): η = 0,87, men formlen giver 0,85294",
         "passer ikke sammen"},
        {"5 % off", 1.05,
         "Nogle af de givne tal passer ikke sammen – tjek dem:Virkningsgrad (η = P₂ / P₁): η = 0,87, "
         "men formlen giver 0,82857",
         "passer næsten"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolRun r = runOnce([&] { return motor(plateWithCurrentOff(row.factor), true, false); });
        ASSERT_TRUE(r.out.ok) << r.err;
        EXPECT_TRUE(contains(r.notes, row.present)) << r.notes;
        EXPECT_FALSE(contains(r.notes, row.absent)) << r.notes;
    }
}

TEST_F(MotorTest, sheetShowsGivenPlainFoundBlueAndTheChecks) {
    const ToolRun r = runOnce([] {
        return motor({{"U_N", "400"},
                      {"f", "50"},
                      {"P_2", "5,5k"},
                      {"I_N", "11"},
                      {"cosphi", "0,83"},
                      {"nr", "1445"},
                      {"k_st", "7"}},
                     true, false);
    });
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
