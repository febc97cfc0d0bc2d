// The joining of results with renumbered image references; the text helpers
// and the block builders.
#include "fl/expr/markup.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

TEST(Markup, appendRenumbersFiguresAndMathsSeparately) {
    RenderResult first;
    first.html = "<img src=\"f:0\" width=\"10\" height=\"20\"><img src=\"f:1\" width=\"1\" height=\"1\">";
    first.figs = {"a", "b"};
    first.maths = {makeNum(1)};

    RenderResult second;
    second.html = "<p class=\"fig\"><img src=\"f:0\" width=\"5\" height=\"6\"></p>"
                  "<img class=\"math\" src=\"m:0\"> og <img class=\"math\" src=\"m:1\">"
                  "<img src=\"f:10\" width=\"5\" height=\"6\">";
    second.figs = {"c"};
    second.maths = {makeNum(2), makeNum(3)};

    first.append(second);
    EXPECT_EQ(first.html,
              "<img src=\"f:0\" width=\"10\" height=\"20\"><img src=\"f:1\" width=\"1\" height=\"1\">"
              "<p class=\"fig\"><img src=\"f:2\" width=\"5\" height=\"6\"></p>"
              "<img class=\"math\" src=\"m:1\"> og <img class=\"math\" src=\"m:2\">"
              "<img src=\"f:12\" width=\"5\" height=\"6\">");
    EXPECT_EQ(first.figs, (std::vector<std::string>{"a", "b", "c"}));
    ASSERT_EQ(first.maths.size(), 3u);
    EXPECT_EQ(first.maths[2]->value, 3);
}

struct TextRow {
    const char* name;
    std::string (*fn)(const std::string&);
    const char* input;
    const char* expected;
};

const TextRow kTextRows[] = {
    {"escapeAmpersandFirst", htmlEscape, "a<b & c>d &lt;", "a&lt;b &amp; c&gt;d &amp;lt;"},
    {"symbolOnlyLettersInIndex", symbolHtml, "U_12 og I_Nx2", "U_12 og I<sub>Nx</sub>2"},
    {"symbolCosPhi", symbolHtml, "cos φ_2 = 0,9", "cos φ<sub>2</sub> = 0,9"},
    {"stripTags", stripTags, "<p class=\"x\">U<sub>1</sub> = 5</p>", "U1 = 5"},
    {"stripKeepsStrayBrackets", stripTags, "a <> b < c", "a <> b < c"},
    {"plainIndex", htmlToPlain, "U<sub>R</sub> = 5", "UR = 5"},
    {"plainPowerDigits", htmlToPlain, "q = 2,5 mm<sup>2</sup>", "q = 2,5 mm²"},
    {"plainPowerLetters", htmlToPlain, "x<sup>n</sup> + x<sup>ab</sup>", "x^n + x^(ab)"},
    {"plainTagsAndEntities", htmlToPlain, "<b>U</b>&nbsp;&lt;&nbsp;5 &amp; &gt;", "U < 5 & >"},
};

TEST(Markup, textHelpers) {
    for (const TextRow& row : kTextRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.fn(row.input), row.expected);
    }
}

TEST(Markup, stepBlocksNumberTheirStepsAndCiteTheBook) {
    const std::vector<StepBlock> steps = {
        {"Find I", "6", "<p>a</p>"}, {"Find P", "YΔ-arket", "<p>b</p>"}, {"Find Q", "", "<p>c</p>"}};
    const std::string head = "<h3 class=\"sh\">Udregning trin for trin</h3><div class=\"steps\">";
    EXPECT_EQ(
        stepBlocks(steps),
        head + "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">1</span> Find I</p><p>a</p></div>"
               "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">2</span> Find P</p><p>b</p></div>"
               "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">3</span> Find "
               "Q</p><p>c</p></div></div>");
    // The book's page stands after the title, in brackets; a step without one gets none.
    const std::string book = stepBlocksBook(steps);
    EXPECT_NE(book.find("Find I <span class=\"crumb\">(formelsamlingen s. 6)</span></p>"), std::string::npos);
    EXPECT_NE(book.find("Find P <span class=\"crumb\">(YΔ-arket)</span></p>"), std::string::npos);
    EXPECT_NE(book.find("Find Q</p>"), std::string::npos);
    EXPECT_EQ(stepBlocks({}), "");
}

TEST(Markup, sheetPutsItsSectionsInOrderAndLeavesOutTheEmpty) {
    SheetSections s;
    s.given = {"U = 230 V", "R = 47 Ω"};
    s.steps = {{"Find I", "3", "<p>I = U / R</p>"}};
    s.figure = "<p class=\"fig\">F</p>";
    s.check = "<p>ok</p>";
    s.results = "<p>I = 4,89 A</p>";
    s.answer = "I = 4,89 A";
    s.revealed = "mere";
    s.concealed = "tryk";
    const std::string html = sheet("sheet", {"Værktøj", "Ohm"}, "Strømmen", s);
    size_t at = 0;
    for (const char* part :
         {"<div class=\"card sheet\" id=\"sheet\"><div class=\"sheet-head\"><div class=\"crumb\">Værktøj · "
          "Ohm</div>",
          "<h2>Strømmen</h2>", "Givet</h3><div class=\"known\"><div>U = 230 V</div><div>R = 47 Ω</div></div>",
          "(formelsamlingen s. 3)", "Grafik</h3><p class=\"fig\">F</p>", "Kontrol</h3><p>ok</p>",
          "Resultater</h3><p>I = 4,89 A</p>", "<span class=\"k\">FACIT</span> &nbsp; I = 4,89 A</div>",
          "<div class=\"spoiler\">mere</div><div class=\"spoiler-alt\">tryk</div></div>"}) {
        const size_t found = html.find(part, at);
        ASSERT_NE(found, std::string::npos) << part << " after " << at << " in " << html;
        at = found;
    }
    EXPECT_EQ(sheet("s2", {}, "Tom", {}), "<div class=\"card sheet\" id=\"s2\"><div "
                                          "class=\"sheet-head\"><div class=\"crumb\"></div><h2>Tom</h2>"
                                          "</div></div>");
}

// An index, an entity, a span and bold adding nothing, other tags dropped.
TEST(Markup, parseRichRuns) {
    using Runs = std::vector<std::pair<std::string, Script>>;
    const std::pair<const char*, Runs> rows[] = {
        {"U<sub>1</sub> &lt; 5", {{"U", Script::Normal}, {"1", Script::Sub}, {" < 5", Script::Normal}}},
        {"<span class=\"v\">I</span><sub><b>N</b></sub>&nbsp;&amp;",
         {{"I", Script::Normal}, {"N", Script::Sub}, {" &", Script::Normal}}},
        {"a<br>b<font color=\"red\">c</font>", {{"abc", Script::Normal}}},
    };
    for (const auto& [html, runs] : rows) {
        SCOPED_TRACE(html);
        Runs got;
        for (const RichRun& r : parseRichRuns(html))
            got.emplace_back(r.text, r.script);
        EXPECT_EQ(got, runs);
    }
}

} // namespace
} // namespace fl
