// The finder's markup in both modes, the formula cards and the formula page's
// static view: what each node shows for what is open, and the counts.
#include "fl/formulas/finderview.h"

#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"

#include "tests/fl/formulas/markup_util.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace markup_util;

std::string finder(const std::string& path, int mode, std::set<std::string> closed = {}) {
    fl::resetFigures();
    fl::FinderState s;
    s.path = path;
    s.mode = mode;
    s.open = closing(std::move(closed));
    s.look = kLook;
    return fl::finderMarkup(s);
}

TEST(FinderMarkup, countsOpenFamiliesThroughTheSubtree) {
    // Direct current: 4 + 1 + 5 + 2 + 4 families under five subjects.
    EXPECT_TRUE(has(finder("", 0), "5 emner · 16 formler ›"));
    const std::string dc = finder("dc", 0);
    EXPECT_TRUE(has(dc.substr(dc.find("fm:dc/led")), "5 formler ›"));
    EXPECT_TRUE(has(dc.substr(dc.find("fm:dc/mod")), "1 formel ›"));
    EXPECT_TRUE(has(finder("", 0, {"wire"}), "5 emner · 15 formler ›")) << "a closed family is not counted";
    EXPECT_TRUE(has(dc, "<h3 class=\"sh\">Formler <span class=\"crumb\">(16)</span></h3>"));
    EXPECT_TRUE(has(finder("dc/ohm", 0), "<h3 class=\"sh\">Formler</h3>"));
}

TEST(FinderMarkup, pathsOfTheTilesAndUnknownNodes) {
    const std::string root = finder("", 0);
    for (const char* id : {"dc", "ac", "tf", "energi", "inst", "ma"})
        EXPECT_TRUE(has(root, std::string("href=\"fm:") + id + "\""));
    EXPECT_TRUE(has(finder("ac", 1), "href=\"fm:ac/serie\""));
    EXPECT_EQ(count(root, "width=\"38\" height=\"38\""), 6u);
    // Each subject is drawn like a tool of its own: no two look alike.
    std::set<std::string> pictures;
    for (size_t at = root.find("<img src=\""); at != std::string::npos; at = root.find("<img src=\"", at + 1))
        pictures.insert(root.substr(at, root.find('"', at + 10) - at));
    EXPECT_EQ(pictures.size(), 6u);
    EXPECT_EQ(finder("dc/nosuch", 0), fl::msgBox("Emnet findes ikke.", false));
}

TEST(FinderMarkup, blurbStandsAboveASubjectButNotTheRoot) {
    EXPECT_EQ(finder("dc/ohm", 0).rfind("<p class=\"hint\">U, I, R og P – de fire grundstørrelser", 0), 0u);
    EXPECT_EQ(finder("", 0).find("<p class=\"hint\">"), std::string::npos);
}

TEST(FinderMarkup, aClosedSubjectSaysSoAndDropsOutOfItsParent) {
    const std::set<std::string> closed = {"kompQ", "kompC", "komp"};
    const std::string node = finder("ac/komp", 0, closed);
    EXPECT_TRUE(has(node, "Din lærer har slået dette emne fra for skolen."));
    EXPECT_FALSE(has(node, "<div class=\"card\">"));
    EXPECT_FALSE(has(node, "Lad programmet regne det"));
    EXPECT_FALSE(has(finder("ac", 0, closed), "fm:ac/komp\""));
    EXPECT_TRUE(has(finder("ac", 0, {"kompQ"}), "fm:ac/komp\""));
    EXPECT_FALSE(has(finder("ac/komp", 0, {"kompQ"}), "slået dette emne fra"));
}

TEST(FinderMarkup, routeChipsForTheOpenTools) {
    struct Row {
        const char* name;
        std::set<std::string> closed;
        std::vector<std::string> shown;
        std::vector<std::string> hidden;
    };
    const Row rows[] = {
        {"all open", {}, {"go:res\">&nbsp;Modstande i serie / parallel&nbsp;", "go:kreds\">"}, {}},
        {"one closed", {"res"}, {"go:kreds\">"}, {"go:res\""}},
        {"all closed", {"res", "kreds"}, {}, {"Lad programmet regne det", "go:res\"", "go:kreds\""}},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        for (int mode : {0, 1}) {
            const std::string html = finder("dc/mod", mode, r.closed);
            for (const std::string& s : r.shown)
                EXPECT_TRUE(has(html, s)) << s;
            for (const std::string& s : r.hidden)
                EXPECT_FALSE(has(html, s)) << s;
        }
    }
}

TEST(FinderMarkup, calculatorsInModeOneCardsInModeZero) {
    const std::string calculators = finder("energi", 1, {"enJ"});
    EXPECT_EQ(count(calculators, "Åbn udregneren ›"), 6u);
    EXPECT_FALSE(has(calculators, "go:enJ\""));
    EXPECT_TRUE(
        has(calculators, "<h3 class=\"sh\">Udregnere <span class=\"crumb\">(Energi og pris) – klik på en"));
    EXPECT_FALSE(has(calculators, "<div class=\"card\">"));
    EXPECT_TRUE(has(finder("dc/ohm", 1), "<span class=\"crumb\">Find U, I eller R</span>"));
    // Subjects above the leaves have no calculators of their own.
    EXPECT_FALSE(has(finder("dc", 1), "Åbn udregneren ›"));

    const std::string cards = finder("energi", 0, {"enJ"});
    EXPECT_EQ(count(cards, "<div class=\"card\">"), 6u);
    EXPECT_EQ(count(cards, "→ Åbn udregneren"), 6u);
}

TEST(FormulaCard, explainsEveryLetterAndListsEveryArrangement) {
    fl::resetFigures();
    const std::string card = fl::formulaCard(*fl::findFormula("ohm"));
    EXPECT_EQ(
        card.rfind("<div class=\"card\"><p><b style=\"font-size:12.5pt\"><a href=\"go:ohm\">Ohms lov</a></b> "
                   "<span class=\"crumb\">(formelsamlingen s. 3)</span></p>",
                   0),
        0u);
    EXPECT_TRUE(has(card, "<p><b>Bruges til:</b> Grundformlen i el-lære"));
    EXPECT_TRUE(has(
        card, "<b>Strøm</b> <span class=\"crumb\">[A]</span><br><span class=\"hint0\">Ladning pr. sekund"));
    EXPECT_EQ(count(card, "<tr><td width=\"95\" class=\"eq\""), 3u);
    for (const char* form : {">U</span> = ", ">I</span> = ", ">R</span> = "})
        EXPECT_TRUE(has(card, form)) << form;
    EXPECT_FALSE(has(card, "Bemærk:"));
    EXPECT_TRUE(
        has(fl::formulaCard(*fl::findFormula("ZRLC")), "<p class=\"hint0\"><b>Bemærk:</b> Brug værktøjet"));
}

TEST(FormulaStatic, primaryFormThenTheOthersAndWhatCantBeReached) {
    struct Row {
        const char* key;
        size_t others;     // lines of the other arrangements
        bool unreachable;  // closes with the line about the tools
        const char* where; // the definitions' line, "" for none
    };
    const Row rows[] = {
        {"ohm", 2, false, ""},
        {"ZRLC", 1, true, ""},
        {"heron", 0, true, "<p class=\"crumb\">hvor <span class=\"v\">s</span> = "},
    };
    const std::string closing =
        "<p class=\"crumb\">De øvrige størrelser kan ikke isoleres enkelt her – brug et af "
        "værktøjerne til dem.</p>";
    for (const Row& r : rows) {
        SCOPED_TRACE(r.key);
        fl::resetFigures();
        const std::string html = fl::formulaStatic(*fl::findFormula(r.key));
        EXPECT_EQ(html.rfind("<div class=\"eq\">", 0), 0u);
        EXPECT_EQ(count(html, "<div class=\"eq\" style=\"font-size:13pt\">"), r.others);
        EXPECT_EQ(html.size() >= closing.size() &&
                      html.compare(html.size() - closing.size(), closing.size(), closing) == 0,
                  r.unreachable);
        if (*r.where)
            EXPECT_TRUE(has(html, r.where));
        else
            EXPECT_FALSE(has(html, "hvor "));
    }
    fl::resetFigures();
    EXPECT_TRUE(has(fl::formulaStatic(*fl::findFormula("heron")), "(den halve omkreds)</p>"));
}

} // namespace
