#include "fl/circuit/sheet.h"

#include "fl/circuit/json.h"
#include "tests/fl/circuit/circuits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace fl {
namespace {

using testing::circuit;
using testing::group;
using testing::known;
using testing::leaf;

const double kTwoPiF = 2 * M_PI * 50;

struct ErrorRow {
    const char* name;
    Circuit c;
    std::string error;
};

TEST(Solve, answersWithTheMessageOfTheFirstProblem) {
    const std::string link = "\"=\" skal pege på en anden komponent af samme slags (fx =R1 for en modstand, "
                             "eller =L1 i spolens R-felt): ";
    const std::string cosRange = "effektfaktor skal være et tal mellem 0 og 1 (fx 0,8), men der står ";
    const std::string count =
        "ud fra. Der skal være lige så mange kendte værdier som ukendte. Du kan fx opgive ";
    const std::string countEnd =
        " under \"Kilden og hele kredsen\", eller en kendt spænding eller strøm ved en komponent (kolonnerne "
        "\"Kendt U\" og \"Kendt I\"). Står der i opgaven, at nogle komponenter er ens, så skriv fx "
        "<b>=R1</b> i feltet for den anden – så tæller de som én ukendt.";
    const ErrorRow rows[] = {
        {"an empty drawing", circuit("dc", {}, {{"U", "abc"}}), "Tegn mindst én komponent først."},
        {"a coil in direct current", circuit("dc", {leaf("R", "x"), leaf("L")}),
         "Spoler og kondensatorer bruges i vekselstrøm. Skift strømart til <b>Vekselstrøm</b>, eller slet "
         "dem."},
        {"fields that can't be read, a direct current's frequency too",
         circuit("dc", {leaf("R", "5 Ω"), known(leaf("R", "1"), "", "2A")},
                 {{"U", "abc"}, {"f", "y"}, {"I", "z"}, {"R", "1,2,3"}}),
         "Jeg kan ikke læse: kildespænding, frekvens, samlet strøm, samlet modstand, R1, strøm gennem R2."},
        {"a negative resistor", circuit("dc", {leaf("R", "-5")}, {{"U", "10"}}),
         "<b>R<sub>1</sub> = −5 Ω</b> kan ikke bruges – en modstand kan ikke være negativ. "
         "Skriv værdien uden minus."},
        {"a negative coil, capacitor and own resistance",
         circuit("ac", {leaf("L", "−0,1", "-3"), leaf("C", "-4µ7"), leaf("R", "0")}, {{"U", "230"}}),
         "<b>L<sub>1</sub> = −0,1 H</b> kan ikke bruges – en spoles induktans kan ikke være negativ. "
         "<b>R<sub>L1</sub> = −3 Ω</b> kan ikke bruges – spolens egen modstand kan ikke være negativ. "
         "<b>C<sub>1</sub> = −4,7·10⁻⁶ F</b> kan ikke bruges – "
         "en kondensators kapacitet kan ikke være negativ. Skriv værdierne uden minus."},
        {"a link to nothing", circuit("dc", {leaf("R", "5"), leaf("R", "=R7")}, {{"U", "1"}}), link + "R7"},
        {"a link to itself", circuit("dc", {leaf("R", "5"), leaf("R", "= r2")}, {{"U", "1"}}), link + "R2"},
        {"a link to another kind", circuit("ac", {leaf("C", "1u"), leaf("R", "=C1")}, {{"U", "1"}}),
         link + "C1"},
        {"an own resistance linked to a resistor", circuit("ac", {leaf("R", "5"), leaf("L", "1", "=R1")}),
         link + "R1"},
        {"links in a ring", circuit("dc", {leaf("R", "=R2"), leaf("R", "=R1")}, {{"U", "1"}}), link + "R1"},
        {"no frequency", circuit("ac", {leaf("R", "5")}, {{"U", "1"}, {"f", ""}}),
         "Skriv frekvensen f (normalt 50 Hz)."},
        {"direct current doesn't use a frequency of zero",
         circuit("dc", {leaf("R", "5")}, {{"U", "1"}, {"f", "0"}}), ""},
        {"a frequency far above the trade's",
         circuit("ac", {leaf("R", "5"), leaf("C", "1u")}, {{"U", "1"}, {"f", "1G"}}), ""},
        {"the source fields of alternating current in their order",
         circuit("ac", {leaf("R", "5")},
                 {{"U", "a"}, {"f", "b"}, {"I", "c"}, {"P", "d"}, {"cos", "e"}, {"Z", "g"}}),
         "Jeg kan ikke læse: kildespænding, frekvens, samlet strøm, aktiv effekt, effektfaktor, samlet "
         "impedans."},
        {"a frequency of zero, before a cos φ out of range",
         circuit("ac", {leaf("R", "5")}, {{"U", "1"}, {"f", "0"}, {"cos", "80"}}),
         "Skriv frekvensen f (normalt 50 Hz)."},
        {"cos φ above 100", circuit("ac", {leaf("R", "5")}, {{"U", "1"}, {"cos", "120"}}), cosRange + "120."},
        {"cos φ of zero", circuit("ac", {leaf("R", "5")}, {{"U", "1"}, {"cos", "0"}}), cosRange + "0."},
        {"cos φ typed as an angle or a percentage",
         circuit("ac", {leaf("R", "5")}, {{"U", "1"}, {"cos", "80"}}),
         cosRange +
             "80. Mente du:<div class=\"chips\"><a class=\"chip big\" href=\"fix:src|cos|0.1736\">Det er "
             "vinklen φ = 80° → brug cos φ = 0,17365</a><br><a class=\"chip big\" "
             "href=\"fix:src|cos|0.8\">Det er 80 % → brug cos φ = 0,8</a></div>"},
        {"cos φ of 90 is no angle", circuit("ac", {leaf("R", "5")}, {{"U", "1"}, {"cos", "90"}}),
         cosRange + "90. Mente du:<div class=\"chips\"><a class=\"chip big\" href=\"fix:src|cos|0.9\">Det er "
                    "90 % → brug cos φ = 0,9</a></div>"},
        {"cos φ of 100 is a whole percentage", circuit("ac", {leaf("R", "5")}, {{"U", "1"}, {"cos", "100"}}),
         cosRange + "100. Mente du:<div class=\"chips\"><a class=\"chip big\" href=\"fix:src|cos|1\">Det er "
                    "100 % → brug cos φ = 1</a></div>"},
        {"what alternating current can be given instead",
         circuit("ac", {leaf("R", "10"), leaf("L")}, {{"U", "230"}}),
         "Der er <b>1 ukendte</b> (L<sub>1</sub>), men kun <b>0 kendte værdier</b> at regne baglæns " +
             count + "cos φ, P, Z eller I" + countEnd},
        {"only the total resistance, and the resistors unknown",
         circuit("dc", {leaf("R"), leaf("R")}, {{"R", "30"}}),
         "Der er <b>3 ukendte</b> (R<sub>1</sub>, R<sub>2</sub>, U), men kun <b>1 kendt værdi</b> at regne "
         "baglæns " +
             count + "P<sub>tot</sub> eller I" + countEnd},
        {"nothing to start from", circuit("dc", {leaf("R", "5"), leaf("R")}),
         "Der er for få kendte værdier til at komme i gang. Disse værdier kendes ikke: <b>R<sub>2</sub></b>. "
         "Skriv dem, hvis opgaven giver dem. Der mangler en spænding eller strøm: skriv kildespændingen U "
         "eller den samlede strøm I. Er en værdi ukendt med vilje, skal opgaven give en anden størrelse i "
         "stedet – fx I, P<sub>tot</sub> eller R<sub>tot</sub>, eller en kendt spænding eller strøm ved en "
         "komponent (kolonnerne \"Kendt U\" og \"Kendt I\"). Der skal være lige så mange kendte værdier som "
         "ukendte."},
        {"a total resistance is no voltage or current",
         circuit("dc", {leaf("R", "10"), leaf("R", "20")}, {{"R", "30"}}),
         "Alle komponenter er kendt, men der mangler en spænding eller strøm at regne med. Skriv "
         "kildespændingen U – eller den samlede strøm I."},
        {"a power no resistor can take",
         circuit("dc", {known(leaf("R"), "", "", "100"), leaf("R", "50")}, {{"U", "100"}}),
         "Programmet kunne ikke finde værdier, der passer med alle de opgivne tal. Tjek at tallene er "
         "skrevet rigtigt, og at de hører til de rigtige komponenter."},
    };
    for (const ErrorRow& row : rows) {
        SCOPED_TRACE(row.name);
        Circuit c = row.c;
        EXPECT_EQ(computeSheet(c).error, row.error);
    }
}

TEST(Solve, asksWhetherAPrefixWasMeantForUnrealisticValues) {
    CNodePtr cap = leaf("C", "0,02");
    CNodePtr coil = leaf("L", "25");
    Circuit c = circuit("ac", {leaf("R", "10"), cap, coil}, {{"U", "230"}});
    const Sheet s = computeSheet(c);
    EXPECT_EQ(s.fixes, (std::vector<std::string>{"comp|" + cap->id + "|0,02u", "comp|" + coil->id + "|25m"}));
    EXPECT_NE(
        s.error.find(
            "<b>C1 = 0,02 F</b> er urealistisk stort – kondensatorer er normalt på nogle µF "
            "(mikrofarad). Mente du 0,02 µF? <div class=\"chips\"><a class=\"chip big\" href=\"fix:comp|" +
            cap->id + "|0,02u\">Ret til 0,02 µF</a></div>"),
        std::string::npos)
        << s.error;
    EXPECT_NE(s.error.find("<b>L1 = 25 H</b> er urealistisk stort"), std::string::npos);
}

TEST(Solve, worksForwardsAndBackwards) {
    struct Row {
        const char* name;
        Circuit c;
        std::map<std::string, double> want;
        size_t searched = 0; // number of unknowns the search looked for
    };
    const Row rows[] = {
        {"a resistor from the current",
         circuit("dc", {leaf("R", "4"), leaf("R")}, {{"U", "12"}, {"I", "2"}}),
         {{"R2", 2}, {"U_R2", 4}}},
        {"equal resistors by a link",
         circuit("dc", {group("P", {leaf("R"), leaf("R", "=R1")})}, {{"U", "12"}, {"I", "2"}}),
         {{"R1", 12}, {"R2", 12}, {"I_R2", 1}},
         1},
        {"the voltage from the current",
         circuit("dc", {leaf("R", "4"), leaf("R", "2")}, {{"I", "2"}}),
         {{"U", 12}, {"U_R1", 8}}},
        {"the voltage from a power",
         circuit("dc", {leaf("R", "4"), leaf("R", "2")}, {{"P", "24"}}),
         {{"U", 12}, {"I", 2}}},
        {"a known voltage at a component",
         circuit("dc", {known(leaf("R"), "6", ""), leaf("R", "2")}, {{"U", "12"}}),
         {{"R1", 2}, {"I", 3}}},
        {"a group's resistance",
         circuit("dc", {leaf("R", "1"), known(group("P", {leaf("R", "6"), leaf("R")}), "", "")},
                 {{"U", "10"}, {"R", "5"}}),
         {{"R3", 12}, {"R_A", 4}, {"I", 2}}},
        {"a coil's own resistance",
         circuit("ac", {leaf("L", "=L2", "?"), leaf("L", "0,1")}, {{"U", "100"}, {"I", "1"}}),
         {{"R_L1", std::sqrt(1e4 - std::pow(kTwoPiF * 0.2, 2))}, {"L1", 0.1}}},
        {"the power factor",
         circuit("ac", {leaf("R", "30"), leaf("C")}, {{"U", "100"}, {"cos", "0,6"}}),
         {{"X_C1", 40}, {"I", 2}, {"phi", std::acos(0.6) * 180 / M_PI}}},
        {"a resistor in a parallel from its current",
         circuit("dc", {group("P", {leaf("R", "6"), known(leaf("R"), "", "3")})}, {{"U", "12"}}),
         {{"R2", 4}}},
        // 100 V over R1 = 10 Ω and a coil with X = 40 Ω and R = 20 Ω: I = 2 A.
        {"a coil's own resistance where the numbers need one",
         circuit("ac", {leaf("R", "10"), leaf("L", "0,12732395447351627")}, {{"U", "100"}, {"I", "2"}}),
         {{"R_L1", 20}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Circuit c = row.c;
        const std::string typed = toText(c);
        const Sheet s = computeSheet(c);
        EXPECT_EQ(toText(c), typed); // nothing typed is changed, a retry's "?" is gone again
        ASSERT_EQ(s.error, "");
        EXPECT_TRUE(s.mismatches.empty());
        EXPECT_FALSE(s.stopped);
        EXPECT_EQ(s.unknowns.size(), row.searched);
        for (const auto& [sym, v] : row.want) {
            ASSERT_TRUE(s.values.count(sym)) << sym;
            EXPECT_NEAR(s.values.at(sym), v, 1e-7 * std::fabs(v)) << sym;
        }
        // What the givens determine is worked out in closed steps, never by trying.
        EXPECT_EQ(s.searchSteps.size(), row.searched > 0 ? 2u : 0u);
        EXPECT_FALSE(s.steps.empty());
    }
}

TEST(Solve, impedanceAloneFindsACoilWithAnAuxiliaryVoltageThatIsNeverShown) {
    Circuit c = circuit("ac", {leaf("R", "30"), leaf("L")}, {{"Z", "50"}});
    const Sheet s = computeSheet(c);
    ASSERT_EQ(s.error, "");
    EXPECT_NEAR(s.values.at("L1"), 40 / kTwoPiF, 1e-9); // X_L = √(50² − 30²)
    EXPECT_NEAR(s.values.at("cosphi"), 0.6, 1e-12);
    EXPECT_TRUE(s.auxVoltage);
    for (const char* sym : {"U", "I", "U_R1", "I_L1", "P", "Q", "S"})
        EXPECT_FALSE(s.values.count(sym)) << sym;
}

TEST(Solve, namesEqualGroupsInSeries) {
    Circuit c = circuit(
        "ac", {group("P", {leaf("R"), leaf("C", "10u")}), group("P", {leaf("R", "=R1"), leaf("C", "10u")})},
        {{"U", "230"}, {"I", "2"}});
    const Sheet s = computeSheet(c);
    ASSERT_EQ(s.error, "");
    EXPECT_EQ(s.equalGroups, (std::vector<std::string>{"A", "B"}));
    ASSERT_EQ(s.searchSteps.size(), 3u);
    EXPECT_EQ(s.searchSteps[0].title, "Grupperne A og B er ens");
    EXPECT_EQ(s.searchSteps[0].formula, "U/2");
    EXPECT_NEAR(s.values.at("U_A"), 115, 1e-7);
    EXPECT_NEAR(s.values.at("U_B"), 115, 1e-7);
}

TEST(Solve, anyTypedTextGivesAMessageOrASheetNeverAnException) {
    const char* const texts[] = {"",    "0",   "-5",   "1e308", "1e-308", "nan", "inf",     "1/0",   "?",
                                 "=R1", "=L1", "=C2",  "abc",   "5,5k",   "70u", "-0",      "1e-30", "230",
                                 "0,8", "=R9", "2,2M", "1e20",  "-1e-9",  "(",   "sqrt(-1)"};
    std::mt19937 rng(99);
    std::uniform_int_distribution<size_t> pick(0, std::size(texts) - 1);
    std::uniform_int_distribution<int> kind(0, 5);
    for (int round = 0; round < 300; ++round) {
        const bool ac = round % 2;
        std::vector<CNodePtr> parts;
        const int count = 1 + round % 4;
        for (int i = 0; i < count; ++i) {
            CNodePtr n = leaf(std::string(1, "RRLCAV"[kind(rng)]), texts[pick(rng)], texts[pick(rng)]);
            known(n, texts[pick(rng)], texts[pick(rng)], texts[pick(rng)]);
            parts.push_back(n);
        }
        std::vector<CNodePtr> top = round % 3 ? std::vector<CNodePtr>{group("P", parts)} : parts;
        Circuit c = circuit(ac ? "ac" : "dc", top,
                            {{"U", texts[pick(rng)]},
                             {"I", texts[pick(rng)]},
                             {"P", texts[pick(rng)]},
                             {"f", texts[pick(rng)]},
                             {"cos", texts[pick(rng)]},
                             {"Z", texts[pick(rng)]},
                             {"R", texts[pick(rng)]}});
        const CNodePtr drawn = c.root;
        SCOPED_TRACE("round " + std::to_string(round));
        Sheet s;
        EXPECT_NO_THROW(s = computeSheet(c));
        EXPECT_EQ(c.root, drawn);
        EXPECT_FALSE(c.solving);
        for (const auto& [sym, v] : s.values)
            EXPECT_TRUE(std::isfinite(v)) << sym;
    }
}

} // namespace
} // namespace fl
