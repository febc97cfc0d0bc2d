// The home page's markup: which tiles and groups appear for what is stored
// and what is open, the tile grid's shape, and the icons as data references.
#include "fl/formulas/home.h"

#include "fl/formulas/catalogue.h"
#include "fl/formulas/icons.h"

#include <QByteArray>

#include "tests/fl/formulas/markup_util.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace markup_util;

// The h3 headings in the order they stand.
std::vector<std::string> headings(const std::string& html) {
    std::vector<std::string> out;
    const std::string open = "<h3 class=\"sh\">";
    for (size_t at = html.find(open); at != std::string::npos; at = html.find(open, at + 1)) {
        const size_t start = at + open.size();
        out.push_back(html.substr(start, html.find("</h3>", start) - start));
    }
    return out;
}

TEST(RecentRoutes, keepsThreeKnownOpenRoutes) {
    using Routes = std::vector<std::string>;
    EXPECT_EQ(fl::recentRoutes({"laast", "nosuch", "ohm", "kreds"}, {}), (Routes{"ohm", "kreds"}));
    const Routes four = {"trafo", "ohm", "kabel", "sf1"};
    EXPECT_EQ(fl::recentRoutes(four, {}), (Routes{"trafo", "ohm", "kabel"}));
    EXPECT_EQ(fl::recentRoutes(four, closing({"ohm"})), (Routes{"trafo", "kabel", "sf1"}))
        << "a closed route makes room";
}

TEST(TileTable, fillsTheLastRowWithEmptyCells) {
    struct Row {
        size_t cells;
        size_t rows;
        size_t empty;
    };
    const Row rows[] = {{1, 1, 2}, {3, 1, 0}, {7, 3, 2}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.cells);
        const std::string html = fl::tileTable(std::vector<std::string>(r.cells, "<td>x</td>"));
        EXPECT_EQ(count(html, "<tr>"), r.rows);
        EXPECT_EQ(count(html, "<td></td>"), r.empty);
        EXPECT_EQ(count(html, "<td>x</td>"), r.cells);
    }
    EXPECT_EQ(fl::tileTable({}), "");
}

TEST(TileGrid, drawsOpenKnownRoutesAsLinkedTiles) {
    const std::string html =
        fl::tileGrid({"trafo", "nosuch", "komp", "ohm"}, false, closing({"komp"}), kLook);
    EXPECT_EQ(count(html, "<td class=\"tile\""), 2u);
    EXPECT_TRUE(has(html, "<a href=\"go:trafo\">"));
    EXPECT_TRUE(has(html, "<a href=\"go:ohm\">"));
    EXPECT_FALSE(has(html, "go:komp"));
    EXPECT_TRUE(has(html,
                    "<b style=\"color:#1b1f24;font-size:11pt\">Transformer</b><br><span class=\"crumb\">"
                    "Diagram og formelhjul – skriv det kendte, find resten</span></a></td>"));
    EXPECT_TRUE(has(html, "bgcolor=\"#ffffff\" style=\"border:1px solid #d3d9e1\""));
    EXPECT_EQ(count(html, "width=\"34\" height=\"34\""), 2u);
    // A formula has no subtitle of its own: its topic stands there.
    EXPECT_TRUE(has(html, "Ohms lov</b><br><span class=\"crumb\">Formel · Jævnstrøm</span>"));
}

TEST(IconImageRef, embedsTheDrawingAtItsShownSize) {
    struct Row {
        const char* route;
        const char* icon; // the drawing it must carry
    };
    // Drawings of different lengths exercise every tail of the encoding.
    const Row rows[] = {{"trafo", "trafo"}, {"ohm", "formel"}, {"finder", "finder"}};
    std::set<size_t> tails;
    for (const Row& r : rows) {
        SCOPED_TRACE(r.route);
        const std::string ref = fl::iconImageRef(r.route, "#7ea5ff", 38);
        const std::string head = "data:image/svg+xml;base64,";
        ASSERT_EQ(ref.compare(0, head.size(), head), 0);
        const QByteArray decoded = QByteArray::fromBase64(QByteArray::fromStdString(ref.substr(head.size())),
                                                          QByteArray::AbortOnBase64DecodingErrors);
        ASSERT_FALSE(decoded.isEmpty());
        std::string expected = fl::iconDocument(r.icon, "#7ea5ff");
        expected.replace(expected.find("width=\"48\" height=\"48\""), 22, "width=\"38\" height=\"38\"");
        EXPECT_EQ(decoded.toStdString(), expected);
        tails.insert(expected.size() % 3);
    }
    EXPECT_EQ(tails.size(), 3u);
    EXPECT_EQ(fl::iconImageRef("nosuch", "#000000", 34), "");
}

TEST(FormulaChips, leadToTheFirstOpenFamilyOfEachTopic) {
    const std::string all = fl::formulaChips({});
    // One chip per topic and group; the first of "Jævnstrøm" is Ohm's law.
    std::set<std::pair<std::string, std::string>> topics;
    for (const fl::Formula& f : fl::catalogue())
        if (!f.topic.empty()) topics.insert({f.group, f.topic});
    EXPECT_EQ(count(all, "class=\"hchip\""), topics.size());
    EXPECT_EQ(
        all.find(
            "<a class=\"hchip\" href=\"go:ohm\">&nbsp;<span class=\"crumb\">El</span> Jævnstrøm&nbsp;</a>"
            "&nbsp; "),
        0u);
    EXPECT_LT(all.find("</span> Jævnstrøm"), all.find("<span class=\"crumb\">3-faset</span>"));
    EXPECT_LT(all.find("<span class=\"crumb\">3-faset</span>"), all.find("<span class=\"crumb\">Mat</span>"));

    // Closing Ohm's law moves the chip on to the topic's next family.
    const std::string closed = fl::formulaChips(closing({"ohm"}));
    EXPECT_FALSE(has(closed, "go:ohm\""));
    EXPECT_TRUE(has(closed, "go:power\">&nbsp;<span class=\"crumb\">El</span> Jævnstrøm"));
}

TEST(HomeMarkup, showsItsGroupsInOrder) {
    struct Row {
        const char* name;
        std::vector<std::string> recent;
        std::set<std::string> closed;
        std::vector<std::string> headings;
    };
    const std::vector<std::string> full = {"Senest brugt",    "Mest brugt",     "Øv og lær",
                                           "Flere værktøjer", "Dimensionering", "Småværktøjer og hjælp",
                                           "Formler"};
    const std::vector<std::string> noRecent(full.begin() + 1, full.end());
    const Row rows[] = {
        {"everything", {"ohm"}, {}, full},
        {"nothing recent", {}, {}, noRecent},
        {"calculators closed",
         {},
         {"udregnere"},
         std::vector<std::string>(noRecent.begin(), noRecent.end() - 1)},
        {"a whole group closed",
         {},
         {"sf1", "sf3", "ikmax", "ikmin"},
         {"Mest brugt", "Øv og lær", "Flere værktøjer", "Småværktøjer og hjælp", "Formler"}},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        fl::HomeState s;
        s.recent = r.recent;
        s.open = closing(r.closed);
        s.look = kLook;
        const std::string html = fl::homeMarkup(s);
        EXPECT_EQ(headings(html), r.headings);
    }
}

TEST(HomeMarkup, bigTilesOnlyForTheMostUsed) {
    fl::HomeState s;
    s.look = kLook;
    const std::string html = fl::homeMarkup(s);
    const size_t most = html.find("Mest brugt"), next = html.find("Øv og lær");
    EXPECT_EQ(count(html.substr(most, next - most), "width=\"44\""), 6u);
    EXPECT_EQ(count(html.substr(next), "width=\"44\""), 0u);
}

// The hint closes the page.
TEST(HomeMarkup, tellsWhenTheTeacherHasSwitchedSomethingOff) {
    const std::string hint = "<p class=\"hint\">Din lærer har slået nogle dele af programmet fra";
    const std::string tail =
        ". De kommer tilbage, når læreren slår dem til, og du trykker »Opdatér« øverst til højre.</p>";
    fl::HomeState s;
    s.profileLabel = "Prøve";
    s.look = kLook;
    EXPECT_FALSE(has(fl::homeMarkup(s), "class=\"hint\""));
    s.somethingOff = true;
    EXPECT_TRUE(fl::homeMarkup(s).ends_with(hint + " (profil: Prøve)" + tail));
    s.profileLabel.clear();
    EXPECT_TRUE(fl::homeMarkup(s).ends_with(hint + tail));
}

} // namespace
