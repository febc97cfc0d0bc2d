// The statistics page: the empty state, the 14 bars, and what each card lists.
#include "fl/practice/statsheet.h"

#include "fl/expr/markup.h"
#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <regex>

namespace fl {
namespace {

using StatSheet = SettingsTest;

struct Rect {
    double y, h;
    bool faded;
    bool operator==(const Rect&) const = default;
};

void PrintTo(const Rect& r, std::ostream* os) {
    *os << "y " << r.y << " h " << r.h << (r.faded ? " faded" : "");
}

double number(const std::string& text) {
    double v = NAN;
    std::from_chars(text.data(), text.data() + text.size(), v);
    return v;
}

std::vector<Rect> rects(const std::string& svg) {
    static const std::regex re(
        R"re(<rect x="[0-9.]+" y="([0-9.]+)" width="26" height="([0-9.]+)" rx="3" fill="#[0-9a-f]+"( fill-opacity="0.55")?/>)re");
    std::vector<Rect> out;
    for (auto it = std::sregex_iterator(svg.begin(), svg.end(), re); it != std::sregex_iterator(); ++it)
        out.push_back({number((*it)[1]), number((*it)[2]), (*it)[3].matched});
    return out;
}

TEST_F(StatSheet, withoutAnswersOnlyTheMessage) {
    const std::string html = statsHtml({}, {}, {"Jævnstrøm"}, "2025-03-14");
    EXPECT_EQ(html,
              "<div class=\"card\"><h2>Statistik</h2><p>Du har ikke svaret på nogen opgaver endnu. Lav nogle "
              "Øvelser eller en Eksamen, så dukker din statistik op her.</p><p><a class=\"btn primary\" "
              "href=\"go:ovelser\">Gå til Øvelser</a></p></div>");
    EXPECT_TRUE(takeRender({}).figs.empty());
}

TEST_F(StatSheet, theLastFourteenDaysEndTodayAcrossAMonth) {
    PracticeStats s;
    s.days = {{"2025-02-28", {3, 1}}, {"2025-03-03", {1, 0}}, {"2025-02-17", {9, 9}}, {"2025-02-18", {2, 0}}};
    const std::vector<DayBar> days = lastDays(s, "2025-03-03");
    ASSERT_EQ(days.size(), 14u);
    EXPECT_EQ(days.front().label, "18/2"); // the 17th is one day too old
    EXPECT_EQ(days.front().right, 2);
    EXPECT_EQ(days[10].label, "28/2");
    EXPECT_EQ(days[10].wrong, 1);
    EXPECT_EQ(days.back().label, "3/3");
    EXPECT_EQ(days.back().right, 1);
    EXPECT_TRUE(lastDays(s, "i går").empty());
}

TEST_F(StatSheet, theBusiestDayIs110HighAndWrongAnswersStandFadedOnTop) {
    std::vector<DayBar> days(14);
    days[3] = {"", 6, 2}; // busiest: 8
    days[9] = {"", 0, 4}; // only wrong
    // Right answers from the axis at 130 up, the wrong ones on top; no
    // rectangle for an empty day or an empty part.
    EXPECT_EQ(rects(dayBarsSvg(days, {})),
              (std::vector<Rect>{{130 - 82.5, 82.5, false}, {130 - 110, 27.5, true}, {130 - 55, 55, true}}));
    EXPECT_NE(dayBarsSvg(days, {}).find("<line x1=\"24\" y1=\"130\" x2=\"590\" y2=\"130\""),
              std::string::npos);
}

TEST_F(StatSheet, cardsListWhatTheRecordsHold) {
    PracticeStats s;
    for (int i = 0; i < 4; ++i)
        addAnswer(s, "ohm", "Jævnstrøm", i == 0, "2025-03-14");
    addAnswer(s, "XL", "Vekselstrøm", true, "2025-03-14");
    addAnswer(s, "circ:dc|Serieforbindelse", "Kredsløb – jævnstrøm", false, "2025-03-13");
    addAnswer(s, "tekst:kabel", "tekst:kabel", false, "2025-03-14");
    const std::string html =
        statsHtml(s, {{"2025-03-12T10:00:00.000Z", "Jævnstrøm", 7, 10, 500}, {"", "tekst:motor", 4, 5, 300}},
                  {"Jævnstrøm", "Vekselstrøm", "Motorer", "Kredsløb – jævnstrøm"}, "2025-03-14");
    const RenderResult pass = takeRender(html);
    ASSERT_EQ(pass.figs.size(), 1u);

    const std::vector<std::string> headings = {"De sidste 14 dage", "Dine emner – de svageste først",
                                               "Formler du oftest regner forkert",
                                               "Emner du ikke har prøvet endnu", "Dine seneste eksamener"};
    size_t at = html.find("Opgaver besvaret");
    ASSERT_NE(at, std::string::npos);
    for (const std::string& h : headings) {
        const size_t next = html.find("<h3 class=\"sh\">" + h + "</h3>", at);
        ASSERT_NE(next, std::string::npos) << h;
        at = next;
    }
    // The weakest topic first, with its level and a way to practise it.
    EXPECT_LT(html.find("<td style=\"text-align:left\">Kredsløb – jævnstrøm</td>"),
              html.find("<td style=\"text-align:left\">Jævnstrøm</td>"));
    EXPECT_NE(html.find("1 af 4</td><td class=\"data\">25 %</td><td><span class=\"lvl svag\">Svag</span>"),
              std::string::npos);
    EXPECT_NE(html.find("href=\"ov:Jævnstrøm\">Øv</a>"), std::string::npos);
    // Only families answered wrong, and only those of the catalogue.
    EXPECT_NE(html.find("href=\"go:ohm\">Se formlen</a>"), std::string::npos);
    EXPECT_EQ(html.find("go:XL"), std::string::npos);
    EXPECT_EQ(html.find("go:circ:"), std::string::npos);
    // Not tried yet: only what has no answer.
    EXPECT_NE(html.find("<a class=\"chip\" href=\"ov:Motorer\">Motorer</a>"), std::string::npos);
    EXPECT_EQ(html.find(">Vekselstrøm</a>"), std::string::npos);
    EXPECT_NE(html.find("7 af 10 (70 %)"), std::string::npos);
    // A text problem shows its scenario's title; its key stays in the link, and it is no family.
    EXPECT_NE(html.find("<td style=\"text-align:left\">Kabel til carport</td>"), std::string::npos);
    EXPECT_NE(html.find("<td style=\"text-align:left\">Motorens mærkeplade</td>"), std::string::npos);
    EXPECT_NE(html.find("href=\"ov:tekst:kabel\">Øv</a>"), std::string::npos);
    EXPECT_EQ(std::regex_replace(html, std::regex("<[^>]*>"), "").find("tekst:"), std::string::npos);
    EXPECT_EQ(html.find("go:tekst:"), std::string::npos);
    EXPECT_NE(html.find("href=\"ov:svag\">→ Øv mine svage emner</a>"), std::string::npos);
    EXPECT_NE(html.find("href=\"act:streset\">Nulstil statistik</a>"), std::string::npos);
}

} // namespace
} // namespace fl
