// The rewriting of result markup for the text engine, on small hand-made
// pieces that pin the nesting cases down. Whole worked sheets go through the
// same functions in sheetview_test.cpp.
#include "app/sheet/sheettext.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using app::ThemeColors;
using Rewrite = std::function<QString(const QString&)>;

std::string str(const QString& s) {
    return s.toStdString();
}

Rewrite fit(int width) {
    return [width](const QString& h) { return app::fitImages(h, width); };
}
Rewrite boxes(const ThemeColors& c, app::Medium medium = app::Medium::Screen) {
    return [&c, medium](const QString& h) { return app::rewriteBoxes(h, c, medium); };
}
Rewrite sizes(double scale) {
    return [scale](const QString& h) { return app::inlineSizes(h, scale); };
}
Rewrite steps(int keep) {
    return [keep](const QString& h) { return app::cutSteps(h, keep); };
}
Rewrite spoilers(bool revealed) {
    return [revealed](const QString& h) { return app::applySpoilers(h, revealed); };
}

const QString kSteps = R"(<div class="steps"><div class="step">1<div class="msg">m</div></div>)"
                       R"(<div class="step">2</div><div class="step">3</div></div>after)";
const QString kSpoilers = R"(<div class="spoiler"><div class="facit">A</div></div>)"
                          R"(<div class="spoiler-alt"><p>B</p></div><div class="spoiler">C</div>)";

// Markup in, markup out, the whole text compared.
TEST(SheetText, rewritesToTheLetter) {
    struct Row {
        const char* name;
        Rewrite rewrite;
        QString input;
        std::string expected;
    };
    const Row rows[] = {
        // Figures: narrowed in proportion, never widened, others untouched.
        {"height rounds to nearest", fit(170), R"(<img src="f:3" width="460" height="281">)",
         R"(<img src="f:3" width="170" height="104">)"},
        {"exactly the limit kept", fit(460), R"(<img src="f:1" width="460" height="280">)",
         R"(<img src="f:1" width="460" height="280">)"},
        {"expression images untouched", fit(10), R"(<img class="math" src="m:0">)",
         R"(<img class="math" src="m:0">)"},
        {"each of several", fit(300),
         R"(a<img src="f:0" width="600" height="200">b<img src="f:1" width="200" height="100">c)",
         R"(a<img src="f:0" width="300" height="100">b<img src="f:1" width="200" height="100">c)"},
        // Steps and spoilers.
        {"no step kept", steps(0), kSteps, R"(<div class="steps"></div>after)"},
        {"the first step with what is nested in it", steps(1), kSteps,
         R"(<div class="steps"><div class="step">1<div class="msg">m</div></div></div>after)"},
        {"more than there are keeps all", steps(7), kSteps, kSteps.toStdString()},
        {"revealed spoilers", spoilers(true), kSpoilers, R"(<div class="facit">A</div>C)"},
        {"the other side before", spoilers(false), kSpoilers, "<p>B</p>"},
        // Paper.
        {"no-print nested div", app::dropNoPrint, R"(a<div class="x no-print"><div>y</div>z</div>b)", "ab"},
        {"other classes stay", app::dropNoPrint, R"(<p class="hint">x</p>)", R"(<p class="hint">x</p>)"},
        // Data tables get class, alignment and, on screen, a stripe on every second row.
        {"stripes, light", boxes(app::lightColors()),
         R"(<div class="tbl"><table><tr><th>a</th></tr><tr><td>1</td></tr><tr class="calc"><td>2</td></tr><tr><td>3</td></tr></table></div>)",
         R"(<div class="tbl"><table class="data" align="left" cellspacing="0"><tr><th>a</th></tr><tr bgcolor="#f4f6f9"><td>1</td></tr><tr class="calc"><td>2</td></tr><tr bgcolor="#f4f6f9"><td>3</td></tr></table></div>)"},
        {"existing class and row attributes kept, dark", boxes(app::darkColors()),
         R"(<div class="tbl"><table class="data wsfact" width="50%"><tr><td>1</td></tr><tr class="calc"><td>2</td></tr></table></div>)",
         R"(<div class="tbl"><table class="data wsfact" width="50%" align="left" cellspacing="0"><tr><td>1</td></tr><tr bgcolor="#1f232a" class="calc"><td>2</td></tr></table></div>)"},
        {"a class without data gets it, no stripes on paper", boxes(app::lightColors(), app::Medium::Paper),
         R"(<div class="tbl"><table class="wsfact"><tr><td>1</td></tr><tr><td>2</td></tr></table></div>)",
         R"(<div class="tbl"><table class="data wsfact" align="left" cellspacing="0"><tr><td>1</td></tr><tr><td>2</td></tr></table></div>)"},
        // Inline sizes follow the text scale and reach the inline elements
        // inside, which the text engine would otherwise size by their ancestors' rules.
        {"scaled", sizes(1.3), "<span style=\"color:#fff;font-size:9pt\">3 formler</span>",
         "<span style=\"color:#fff;font-size:11.7pt\">3 formler</span>"},
        {"a variable inside a sized formula", sizes(1.0),
         "<p class=\"eq\" style=\"font-size:16pt\">S = <span class=\"v\">U</span></p>",
         "<p class=\"eq\" style=\"font-size:16pt\">S = <span class=\"v\" "
         "style=\"font-size:16.0pt\">U</span></p>"},
        {"an index inside a title", sizes(1.0),
         "<b style=\"font-size:12.5pt\"><a href=\"go:x\">U<sub>N</sub></a></b>",
         "<b style=\"font-size:12.5pt\"><a href=\"go:x\" style=\"font-size:12.5pt\">U<sub "
         "style=\"font-size:12.5pt\">N</sub></a></b>"},
        {"an image in a formula line takes the line's class size", sizes(1.3),
         "<div class=\"eq\"><img class=\"math\" src=\"m:0\"></div>",
         "<div class=\"eq\"><img class=\"math\" src=\"m:0\" style=\"font-size:24.7pt\"></div>"},
        {"a class of its own keeps its size", sizes(1.0),
         "<p style=\"font-size:16pt\"><span class=\"crumb\">(s. 3)</span></p>",
         "<p style=\"font-size:16pt\"><span class=\"crumb\">(s. 3)</span></p>"},
        {"the size ends with its element", sizes(1.0), "<b style=\"font-size:20pt\">a</b><i>b</i>",
         "<b style=\"font-size:20pt\">a</b><i>b</i>"},
        // Headings become paragraphs of their class.
        {"heading with classes", app::plainHeadings, "<h3 class=\"sh pdf-break\">Facit</h3>",
         "<p class=\"h3 sh pdf-break\">Facit</p>"},
        {"heading's other attributes kept", app::plainHeadings, "<h4 style=\"color:#fff\">a</h4>",
         "<p class=\"h4\" style=\"color:#fff\">a</p>"},
        {"other tags untouched", app::plainHeadings, "<hr><p>h2</p><h1>x</h1>", "<hr><p>h2</p><h1>x</h1>"},
        // The title is the first heading as text.
        {"title", app::sheetTitle,
         R"(<div class="crumb">x</div><h2>Ohms lov – find <span class="v">I</span> &amp; U</h2><h2>2</h2>)",
         "Ohms lov – find I & U"},
        {"no title", app::sheetTitle, "<p>no heading</p>", ""},
        // Chips hold together, but not their tags nor the text around them.
        {"chips", app::holdChipsTogether,
         "<p>Energi og pris</p><a class=\"hchip\" href=\"go:energi\">&nbsp;<span class=\"crumb\">El</span> "
         "Energi og pris&nbsp;</a>&nbsp; <a class=\"chip\" href=\"go:x\">to ord</a>",
         "<p>Energi og pris</p><a class=\"hchip\" href=\"go:energi\">&nbsp;<span "
         "class=\"crumb\">El</span>&nbsp;"
         "Energi&nbsp;og&nbsp;pris&nbsp;</a>&nbsp; <a class=\"chip\" href=\"go:x\">to ord</a>"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(str(row.rewrite(row.input)), row.expected);
    }
    EXPECT_EQ(app::countSteps(kSteps), 3);
}

// Boxes into tables: what the cells must hold, the rest left to the rewrite.
TEST(SheetText, boxesBecomeTablesWithTheirColours) {
    const ThemeColors& c = app::lightColors();
    const QString step =
        R"(<div class="step"><p class="h4"><span class="stnum">2</span> Isolér <span class="v">I</span></p>)"
        R"(<div class="msg">m</div></div>)";
    struct Row {
        const char* name;
        Rewrite rewrite;
        QString input;
        std::vector<std::string> parts;
        const char* absent = "<div"; // the text engine frames no div
    };
    const Row rows[] = {
        {"cards framed inside out",
         [&c](const QString& h) { return app::wrapCards(h, c); },
         R"(<div class="card sheet" id="s"><h2>T</h2><div class="card">inner</div></div>)",
         {"<table width=\"100%\" cellspacing=\"0\" cellpadding=\"14\" border=\"1\" bordercolor=\"#d3d9e1\"",
          "<td bgcolor=\"#ffffff\" align=\"left\" style=\"text-align:left;border:1px solid "
          "#d3d9e1\"><h2>T</h2><table",
          "inner</td></tr></table></td></tr></table>"}},
        {"messages: plain, bad, ok",
         boxes(c),
         R"(<div class="msg">x</div><div class="msg bad">y</div><div class="msg ok-box">z</div>)",
         {"<table width=\"100%\" cellspacing=\"0\" cellpadding=\"8\" "
          "style=\"margin-top:6px;margin-bottom:6px\">"
          "<tr><td align=\"left\" bgcolor=\"" +
              c.chip + "\" style=\"text-align:left\">x</td></tr></table>",
          "bgcolor=\"" + c.chip + "\" style=\"text-align:left;color:" + c.bad + "\">y</td></tr></table>",
          "bgcolor=\"" + c.soft + "\" style=\"text-align:left;color:" + c.ok + "\">z</td></tr></table>"}},
        {"a step's number in a badge under a line",
         boxes(c),
         step,
         {R"(<td class="stline" colspan="2" height="1" bgcolor="#d3d9e1"></td>)",
          R"(<td class="stbadge" width="34" valign="top"><span class="stnum">&nbsp;2&nbsp;</span></td>)",
          R"(<td class="stbody" valign="top"><p class="h4" style="margin-top:0">Isolér <span class="v">I</span></p><table)"}},
        // On paper the line is the cells' top border: no row of its own, whose
        // background a page break would stretch.
        {"a step on paper",
         boxes(c, app::Medium::Paper),
         step,
         {R"(<td class="stbadge" width="34" valign="top" style="border-top:1px solid #d3d9e1">)",
          R"(<td class="stbody" valign="top" style="border-top:1px solid #d3d9e1">)"},
         "stline"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string out = str(row.rewrite(row.input));
        for (const std::string& part : row.parts)
            EXPECT_NE(out.find(part), std::string::npos) << part << "\n" << out;
        EXPECT_EQ(out.find(row.absent), std::string::npos) << out;
    }
}

TEST(SheetText, aSheetThatIsOneCardIsToldWithItsInside) {
    struct Row {
        const char* name;
        const char* html;
        bool whole;
        const char* inside;
    };
    const Row rows[] = {
        {"one card", R"(<div class="card sheet" id="s"><h2>T</h2><div class="card">i</div></div>)", true,
         R"(<h2>T</h2><div class="card">i</div>)"},
        {"space around", "\n <div class=\"card\"><p>x</p></div>\n", true, "<p>x</p>"},
        {"text after", R"(<div class="card">a</div><p>b</p>)", false, ""},
        {"text before", R"(<p>b</p><div class="card">a</div>)", false, ""},
        {"a card word inside another class", R"(<div class="cardx">a</div>)", false, ""},
        {"never closed", R"(<div class="card"><p>a</p>)", false, ""},
        {"empty", "", false, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QString inside = "untouched";
        EXPECT_EQ(app::wholeCard(row.html, &inside), row.whole);
        EXPECT_EQ(str(inside), row.whole ? row.inside : "untouched");
    }
}

} // namespace
