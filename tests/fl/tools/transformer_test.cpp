// The transformer: every subset of a random consistent transformer, and the
// near misses, conflicts and refusals in their words.
#include "fl/tools/machines.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

const std::vector<std::string> kForm{"U_P", "I_P", "N_P", "n", "S", "NV", "U_S", "I_S", "N_S", "R_B"};

// An ideal transformer: n = U_P / U_S = N_P / N_S = I_S / I_P, S = U · I on both sides.
Vars transformerTruth(std::mt19937& rng) {
    Vars v;
    v["U_P"] = pick(rng, {230.0, 400.0, 690.0});
    v["U_S"] = pick(rng, {6.0, 12.0, 24.0, 42.0, 115.0, 230.0});
    v["S"] = logUniform(rng, 100, 500e3);
    v["NV"] = uniform(rng, 0.5, 5);
    v["n"] = v["U_P"] / v["U_S"];
    v["I_P"] = v["S"] / v["U_P"];
    v["I_S"] = v["S"] / v["U_S"];
    v["N_P"] = v["U_P"] * v["NV"];
    v["N_S"] = v["U_S"] * v["NV"];
    v["R_B"] = v["U_S"] / v["I_S"];
    return v;
}

using TransformerTest = SettingsTest;

TEST_F(TransformerTest, everySubsetFindsWhatItDeterminesAndNamesTheRest) {
    std::mt19937 rng(7);
    SubsetCheck check;
    check.keys = kForm;
    check.wanted = std::vector<std::string>(kForm.begin(), kForm.end() - 1); // all but R_B
    check.unitOf = unitsOf(transformerFields());
    for (int draw = 0; draw < 3; ++draw) {
        const Vars truth = transformerTruth(rng);
        forEverySubset(kForm, [&](unsigned mask, const std::set<std::string>& given) {
            if (HasFatalFailure()) return;
            SCOPED_TRACE("mask " + std::to_string(mask));
            FormMap form;
            for (const std::string& k : given)
                form[k] = fmtShortest(truth.at(k));
            const ToolRun r = runOnce([&] { return transformer(form); });
            if (given.size() < 3) {
                ASSERT_EQ(r.err, "Udfyld mindst tre af værdierne (fx U_P, U_S og S).");
                return;
            }
            const std::set<std::string> expected = determined(transformerEquations(), given);
            checkSubset(r, check, given, expected, truth);
            if (!r.out.ok) return;
            ASSERT_TRUE(contains(r.notes, "Udfyld flere værdier, hvis du skal bruge dem.") ||
                        !contains(r.notes, check.gapText));
            const bool pair = (expected.count("U_P") && expected.count("U_S")) ||
                              (expected.count("N_P") && expected.count("N_S")) ||
                              (expected.count("I_P") && expected.count("I_S"));
            ASSERT_EQ(contains(r.sheet.check, "Omsætningsforholdet skal være det samme"), pair)
                << r.sheet.check;
        });
    }
}

TEST_F(TransformerTest, conflictsAndGapsAreToldInTheirWords) {
    const Said rows[] = {
        // (20 − 19,167) / 20 = 4,2 %: a conflict, and nothing else follows from the three.
        {"U_P=230 U_S=12 n=20", false,
         "De givne værdier passer ikke sammen:Omsætningsforhold ud fra spændingerne (n = U_P / U_S): n = 20, "
         "men formlen giver 19,167"},
        {"I_P=2 N_S=50 R_B=3", false,
         "Med de værdier kan programmet ikke finde mere. Udfyld flere – fx både U_P og U_S (så kendes n), og "
         "S eller en af strømmene."},
        {"U_P=230 U_S=12 n=20 S=60", true,
         "Nogle af de givne værdier passer ikke sammen:Omsætningsforhold ud fra spændingerne (n = U_P / "
         "U_S): n = 20, men formlen giver 19,167"},
        {"U_P=230 U_S=12 n=19,5 S=60", true,
         "Nogle af de givne værdier passer næsten, men ikke helt:Omsætningsforhold ud fra spændingerne (n = "
         "U_P / U_S): n = 19,5, men formlen giver 19,167"},
        // Everything given: no step, only the check; one value off and it is refused.
        {"U_P=230 I_P=0,6 N_P=460 n=10 S=115 NV=2 U_S=23 I_S=5 N_S=46 R_B=4,6", false,
         "De givne værdier passer ikke sammen"},
    };
    expectSaid(transformer, rows);
    const ToolRun r = runOnce([] {
        return transformer(formOf("U_P=230 I_P=0,5 N_P=460 n=10 S=115 NV=2 U_S=23 I_S=5 N_S=46 R_B=4,6"));
    });
    ASSERT_TRUE(r.out.ok) << r.err;
    EXPECT_TRUE(r.sheet.blocks.empty());
    EXPECT_TRUE(contains(r.sheet.check, "Ideel transformer: effekten ind er lig effekten ud"));
    EXPECT_TRUE(contains(r.sheet.check, "✓ Passer"));
    EXPECT_EQ(r.notes, "");
}

} // namespace
} // namespace fl
