// The symmetrical three-phase load: every subset of random loads in star and
// delta, reconnection and faults, and the reading of an empty cos φ.
#include "fl/tools/machines.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

const std::vector<std::string> kWanted{"phi", "U_N", "U_F", "I_N", "I_F", "P", "S", "Q", "cosphi"};

// P = √3 · U_N · I_N · cos φ; star: U_F = U_N / √3, I_F = I_N; delta: U_F = U_N, I_F = I_N / √3.
// The per-phase value sits under the form key "R" whether it is R or Z.
Vars loadTruth(std::mt19937& rng, bool star, bool resistive) {
    const double root3 = std::sqrt(3.0);
    Vars v;
    v["U_N"] = pick(rng, {230.0, 400.0, 690.0});
    v["P"] = logUniform(rng, 100, 500e3);
    v["cosphi"] = resistive ? 1.0 : uniform(rng, 0.6, 0.99);
    v["I_N"] = v["P"] / (root3 * v["U_N"] * v["cosphi"]);
    v["U_F"] = star ? v["U_N"] / root3 : v["U_N"];
    v["I_F"] = star ? v["I_N"] : v["I_N"] / root3;
    v["R"] = v["U_F"] / v["I_F"];
    v["S"] = root3 * v["U_N"] * v["I_N"];
    v["Q"] = v["S"] * std::sin(std::acos(v["cosphi"]));
    v["phi"] = std::acos(v["cosphi"]) * 180 / M_PI;
    return v;
}

using ThreePhaseTest = SettingsTest;

TEST_F(ThreePhaseTest, everySubsetFindsWhatItDeterminesAndNamesTheRest) {
    std::mt19937 rng(78);
    SubsetCheck check;
    check.keys = {"U_N", "U_F", "I_N", "I_F", "R", "cosphi", "P", "S", "Q", "phi"};
    check.wanted = kWanted;
    check.unitOf = unitsOf(threePhaseQuantities());
    for (const bool star : {true, false})
        for (const bool resistive : {true, false})
            for (int draw = 0; draw < 2; ++draw) {
                const Vars truth = loadTruth(rng, star, resistive);
                const std::string perPhase = resistive ? "R" : "Z";
                check.symbol = [&](const std::string& k) { return k == "R" ? perPhase : k; };
                const std::vector<ChainEquation> list = threePhaseEquations(star, perPhase);
                // Q = 0 says nothing about the current, so a resistive load leaves it out.
                std::vector<std::string> keys{"U_N", "U_F", "I_N", "I_F", "R", "cosphi", "P", "S"};
                if (!resistive) keys.push_back("Q");
                forEverySubset(keys, [&](unsigned mask, const std::set<std::string>& given) {
                    if (HasFatalFailure()) return;
                    SCOPED_TRACE(std::string(star ? "Y" : "D") + (resistive ? " R" : " Z") + " mask " +
                                 std::to_string(mask));
                    FormMap form;
                    std::set<std::string> symbols;
                    for (const std::string& k : given) {
                        form[k] = fmtShortest(truth.at(k));
                        symbols.insert(check.symbol(k));
                    }
                    // An empty cos φ is a pure resistance unless the givens say
                    // otherwise: a reactive power, or a cos φ they determine below 1.
                    if (resistive && !given.count("cosphi")) symbols.insert("cosphi");
                    const std::set<std::string> expected = determined(list, symbols);
                    if (!expected.count("cosphi") && !given.count("Q"))
                        return; // not the load the form describes
                    checkSubset(runOnce([&] { return threePhaseLoad(form, star); }), check, symbols, expected,
                                truth);
                });
            }
}

TEST_F(ThreePhaseTest, reconnectionAndFaultsFollowTheLoad) {
    struct Row {
        const char* form;
        bool star;
        std::vector<std::string> titles; // of the blocks after the load itself
        std::vector<std::string> texts;  // in those blocks
    };
    const std::string toDelta = "Hvis de samme belastninger kobles i trekant";
    const std::string starFault = "Fejl: en fase eller en komponent afbrudt (stjerne uden nul)";
    // clang-format off
    const Row rows[] = {
        {"U_N=400 R=20", true, {toDelta, starFault},
         {"P_Δ=3 · P_Y=3 · 8000=24 kW", "I_NΔ=3 · I_NY=3 · 11,547=34,641 A", "P_fejl", "=4000 W",
          "Det er halv effekt: P / 2 = 4000 W ✓"}},
        {"U_N=400 R=20", false, {"Hvis de samme belastninger kobles i stjerne", "Fejl i trekant"},
         {"=8000 W", "I_NY=[I_NΔ / 3]=[34,641 / 3]=11,547 A", "= halv effekt: P / 2 = 12 kW ✓",
          "= 2/3 af effekten: 2/3 · P = 16 kW ✓"}},
        {"U_N=400 R=20 cosphi=0,9", true, {toDelta}, {}},
        // A given power that disagrees earns no tick.
        {"U_N=400 R=20 P=7000 cosphi=1", true, {toDelta, starFault}, {"Det er halv effekt: P / 2 = 3500 W</"}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.form + std::string(row.star ? " Y" : " D"));
        const ToolRun r = runOnce([&] { return threePhaseLoad(formOf(row.form), row.star); });
        ASSERT_TRUE(r.out.ok) << r.err;
        std::vector<std::string> titles;
        std::string body;
        for (const SheetParts::Block& b : r.sheet.blocks)
            if ((b.page == "(YΔ-arket, fælles)" && b.title.rfind("Hvis", 0) == 0) ||
                b.page == "(YΔ-arket, fejl)") {
                titles.push_back(b.title);
                body += b.body + "</";
            }
        EXPECT_EQ(titles, row.titles);
        for (const std::string& t : row.texts)
            EXPECT_TRUE(contains(body, t)) << t << " in " << body;
    }
}

TEST_F(ThreePhaseTest, perPhaseSymbolAndEmptyCosPhiAreReadFromTheLoad) {
    struct Row {
        std::string form;
        const char* perPhase; // the symbol a given per-phase value gets; empty: none given
        bool assumed;         // the sheet says the empty field counts as 1
    };
    const Row rows[] = {
        {"U_N=400 R=20", "R", true},
        {"U_N=400 R=20 cosphi=1", "R", false},
        {"U_N=400 R=20 cosphi=0,8", "Z", false},
        {"U_N=400 I_N=10 P=" + fmtShortest(std::sqrt(3.0) * 4000), "", true}, // 1 give or take rounding
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.form);
        const ToolRun r = runOnce([&] { return threePhaseLoad(formOf(row.form), true); });
        ASSERT_TRUE(r.out.ok) << r.err;
        bool givenPerPhase = false, assumed = false;
        for (const std::string& g : r.sheet.given) {
            givenPerPhase = givenPerPhase || g.rfind(std::string(row.perPhase) + " = ", 0) == 0;
            assumed = assumed || contains(g, "ren modstand, da feltet er tomt");
        }
        EXPECT_EQ(givenPerPhase, *row.perPhase != 0) << row.perPhase;
        EXPECT_EQ(assumed, row.assumed);
    }
}

TEST_F(ThreePhaseTest, refusalsAndConflictsAreToldInTheirWords) {
    const Said rows[] = {
        {"U_N=400 R=20 cosphi=1,1", false, "cos φ skal ligge mellem 0 og 1."},
        {"U_N=400 cosphi=0", false, "cos φ skal ligge mellem 0 og 1."},
        {"Q=3k", false,
         "Med de værdier kan programmet ikke finde mere. Udfyld fx netspændingen og enten modstanden pr. "
         "fase, strømmen eller effekten."},
        {"U_N=400 I_N=10 I_F=12", true,
         "Nogle af de givne værdier passer ikke sammen:Stjerne: fasestrømmen er lig netstrømmen: I_F = 12 A, "
         "men formlen giver 10 A"},
        {"U_N=400 U_F=200 Q=1k", false,
         "De givne værdier passer ikke sammen:Stjerne: fasespændingen er netspændingen delt med √3: U_F = "
         "200 V, men formlen giver 230,94 V"},
    };
    expectSaid([](const FormMap& f) { return threePhaseLoad(f, true); }, rows);
}

} // namespace
} // namespace fl
