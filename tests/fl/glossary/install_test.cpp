// The installation reference: the IP reader position by position, and the
// tables' own consistency where a slip would mislead a student.
#include "fl/glossary/install.h"

#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

#include <set>

namespace fl {
namespace {

TEST(IpCode, readsEachPosition) {
    const struct {
        const char* typed;
        const char* code;
        std::vector<std::string> starts; // each line's opening
    } rows[] = {
        {"IP44",
         "IP44",
         {"<b>4</b> – Beskyttet mod faste fremmedlegemer på 1,0 mm", "<b>4</b> – Beskyttet mod vandstænk"}},
        {" ip x4 ", "IPX4", {"<b>X</b> – berøring", "<b>4</b> – Beskyttet mod vandstænk"}},
        {"IP20B",
         "IP20B",
         {"<b>2</b> – ", "<b>0</b> – Ingen", "<b>B</b> – Farlige dele kan ikke nås med en finger"}},
        {"IPXXD", "IPXXD", {"<b>X</b>", "<b>X</b> – vand", "<b>D</b>"}},
        {"IP55CHM", "IP55CHM", {"<b>5</b>", "<b>5</b>", "<b>C</b>", "<b>H</b>", "<b>M</b>"}},
        {"IPX9", "IPX9", {"<b>X</b>", "<b>9</b> – Beskyttet mod vandstråler med højt tryk"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.typed);
        const IpReading r = readIpCode(row.typed);
        EXPECT_EQ(r.error, "");
        EXPECT_EQ(r.code, row.code);
        ASSERT_EQ(r.lines.size(), row.starts.size());
        for (size_t i = 0; i < r.lines.size(); ++i)
            EXPECT_EQ(r.lines[i].rfind(row.starts[i], 0), 0u) << r.lines[i];
    }
}

TEST(IpCode, refusesWhatIsNoCode) {
    const auto notHere = [](const std::string& letter) {
        return "\"" + letter +
               "\" hører ikke til her: efter de to cifre kan der stå ét af bogstaverne A–D og derefter H, M, "
               "S eller W.";
    };
    const std::string digits =
        "Efter IP kommer to cifre (eller X for et ciffer, der ikke er angivet), fx IP44 eller IPX4.";
    const struct {
        const char* typed;
        std::string error;
    } rows[] = {
        {"", "Skriv en IP-kode, fx IP44."},
        {"44", "En IP-kode begynder med bogstaverne IP, fx IP44."},
        {"IP4", digits},
        {"IPA4", digits},
        {"IP74", "Det første ciffer går kun fra 0 til 6."},
        {"IP44Q", notHere("Q")},
        {"IP44HH", notHere("H")},
        {"IP44WA", notHere("A")},
        {"IP44<", notHere("&lt;")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.typed);
        const IpReading r = readIpCode(row.typed);
        EXPECT_EQ(r.error, row.error);
        EXPECT_TRUE(r.lines.empty());
    }
}

TEST(InstallTables, everyExampleCodeReadsAndEveryFactHasItsOwnKey) {
    for (const IpExample& e : ipExamples())
        EXPECT_EQ(readIpCode(e.code).error, "") << e.code;
    std::set<std::string> keys;
    for (const InstallFact& f : installFacts()) {
        EXPECT_TRUE(keys.insert(f.key).second) << f.key;
        EXPECT_EQ(f.key.rfind("inst:", 0), 0u);
        EXPECT_FALSE(f.back.empty()) << f.key;
    }
}

TEST(InstallTables, poeDeviceGetsLessThanTheSourceAndClassesRise) {
    int expected = 0;
    for (const PoeClass& p : poeClasses()) {
        EXPECT_EQ(p.number, expected++);
        EXPECT_LT(p.pdPower, p.psePower) << "class " << p.number;
    }
    EXPECT_EQ(expected, 9);
    for (size_t i = 5; i < poeClasses().size(); ++i)
        EXPECT_GT(poeClasses()[i].psePower, poeClasses()[i - 1].psePower);
}

using InstallPage = SettingsTest;

TEST_F(InstallPage, eachTabNamesItsSourceAndTheIpTabReadsTheField) {
    for (const char* tab : {"farver", "ip", "symboler", "poe"}) {
        SCOPED_TRACE(tab);
        EXPECT_NE(installHtml(tab, "", "#222").find("<p class=\"crumb\">Kilde: "), std::string::npos);
    }
    EXPECT_EQ(installHtml("nonsense", "", "#222"), installHtml("farver", "", "#222"));
    EXPECT_NE(installHtml("ip", "ip65", "#222").find("<p class=\"ipbig\">IP65</p>"), std::string::npos);
    EXPECT_NE(installHtml("ip", "IP9", "#222").find("msg bad"), std::string::npos);
    resetFigures();
    const std::string symbols = installHtml("symboler", "", "#e5e7eb");
    EXPECT_EQ(takeRender(symbols).figs.size(), installSymbols().size());
}

} // namespace
} // namespace fl
