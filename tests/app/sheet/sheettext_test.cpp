// The rewriting of result markup for the text engine, on small hand-made
// pieces that pin the nesting cases down. Whole worked sheets go through the
// same functions in sheetview_test.cpp.
#include "app/sheet/sheettext.h"

#include <gtest/gtest.h>

namespace {

using app::ThemeColors;

const ThemeColors& light() {
    return app::lightColors();
}

std::string str(const QString& s) {
    return s.toStdString();
}

TEST(SheetText, fitImagesNarrowsOnlyWideFigures) {
    struct Row {
        const char* name;
        int maxWidth;
        const char* input;
        const char* expected;
    };
    const Row rows[] = {
        {"wide figure at 770", 770, R"(<img src="f:0" width="1200" height="600">)",
         R"(<img src="f:0" width="770" height="385">)"},
        {"height rounds to nearest", 170, R"(<img src="f:3" width="460" height="280">)",
         R"(<img src="f:3" width="170" height="103">)"},
        {"exactly the limit kept", 460, R"(<img src="f:1" width="460" height="280">)",
         R"(<img src="f:1" width="460" height="280">)"},
        {"expression images untouched", 10, R"(<img class="math" src="m:0">)",
         R"(<img class="math" src="m:0">)"},
        {"other attribute order untouched", 10, R"(<img width="900" src="f:0" height="9">)",
         R"(<img width="900" src="f:0" height="9">)"},
        {"each of several", 300,
         R"(a<img src="f:0" width="600" height="200">b<img src="f:1" width="200" height="100">c)",
         R"(a<img src="f:0" width="300" height="100">b<img src="f:1" width="200" height="100">c)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(str(app::fitImages(row.input, row.maxWidth)), row.expected);
    }
}

TEST(SheetText, divEndCountsNestedDivs) {
    const QString html = R"(<div class="card"><div class="a"><div>x</div></div>y</div>tail)";
    const qsizetype open = html.indexOf('>') + 1;
    EXPECT_EQ(html.mid(app::divEnd(html, open)), "tail");
    const QString unclosed = R"(<div class="card"><div>x</div>)";
    EXPECT_EQ(app::divEnd(unclosed, unclosed.indexOf('>') + 1), unclosed.size());
}

TEST(SheetText, findDivMatchesWholeClassWords) {
    struct Row {
        const char* name;
        const char* html;
        const char* cls;
        int expected;
    };
    const Row rows[] = {
        {"one of several words", R"(<p>x</p><div class="card sheet">)", "sheet", 8},
        {"a longer word is another class", R"(<div class="spoiler-alt">)", "spoiler", -1},
        {"steps is not step", R"(<div class="steps"><div class="step">)", "step", 19},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(app::findDiv(row.html, 0, QString::fromLatin1(row.cls)), row.expected);
    }
}

TEST(SheetText, spoilersShowOneSideOnly) {
    const QString html = R"(<div class="spoiler"><div class="facit">A</div></div>)"
                         R"(<div class="spoiler-alt"><p>B</p></div><div class="spoiler">C</div>)";
    EXPECT_EQ(str(app::applySpoilers(html, true)), R"(<div class="facit">A</div>C)");
    EXPECT_EQ(str(app::applySpoilers(html, false)), "<p>B</p>");
}

TEST(SheetText, cutStepsKeepsTheFirstOnes) {
    const QString html = R"(<div class="steps"><div class="step">1<div class="msg">m</div></div>)"
                         R"(<div class="step">2</div><div class="step">3</div></div>after)";
    EXPECT_EQ(app::countSteps(html), 3);
    EXPECT_EQ(str(app::cutSteps(html, 0)), R"(<div class="steps"></div>after)");
    EXPECT_EQ(str(app::cutSteps(html, 1)),
              R"(<div class="steps"><div class="step">1<div class="msg">m</div></div></div>after)");
    EXPECT_EQ(app::cutSteps(html, 3), html);
    EXPECT_EQ(app::cutSteps(html, 7), html);
}

TEST(SheetText, cardsBecomeFramedTablesInsideOut) {
    const QString html = R"(<div class="card sheet" id="s"><h2>T</h2><div class="card">inner</div></div>)";
    const QString out = app::wrapCards(html, light());
    EXPECT_FALSE(out.contains("<div"));
    EXPECT_EQ(out.count("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"14\" border=\"1\" "
                        "bordercolor=\"#d3d9e1\""),
              2);
    EXPECT_TRUE(out.contains("<td bgcolor=\"#ffffff\" align=\"left\" style=\"text-align:left;border:1px "
                             "solid #d3d9e1\"><h2>T</h2><table"));
    EXPECT_TRUE(out.endsWith("inner</td></tr></table></td></tr></table>"));
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
        {"empty card", R"(<div class="card"></div>)", true, ""},
        {"two cards", R"(<div class="card">a</div><div class="card">b</div>)", false, ""},
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

TEST(SheetText, dataTablesGetClassAlignmentAndStripes) {
    struct Row {
        const char* name;
        bool dark;
        const char* input;
        const char* expected;
    };
    const Row rows[] = {
        {"every second row, light", false,
         R"(<div class="tbl"><table><tr><th>a</th></tr><tr><td>1</td></tr><tr class="calc"><td>2</td></tr><tr><td>3</td></tr></table></div>)",
         R"(<div class="tbl"><table class="data" align="left" cellspacing="0"><tr><th>a</th></tr><tr bgcolor="#f4f6f9"><td>1</td></tr><tr class="calc"><td>2</td></tr><tr bgcolor="#f4f6f9"><td>3</td></tr></table></div>)"},
        {"existing class and row attributes kept, dark", true,
         R"(<div class="tbl"><table class="data wsfact" width="50%"><tr><td>1</td></tr><tr class="calc"><td>2</td></tr></table></div>)",
         R"(<div class="tbl"><table class="data wsfact" width="50%" align="left" cellspacing="0"><tr><td>1</td></tr><tr bgcolor="#1f232a" class="calc"><td>2</td></tr></table></div>)"},
        {"a class without data gets it", false,
         R"(<div class="tbl"><table class="wsfact"><tr><td>1</td></tr></table></div>)",
         R"(<div class="tbl"><table class="data wsfact" align="left" cellspacing="0"><tr><td>1</td></tr></table></div>)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(str(app::rewriteBoxes(row.input, row.dark ? app::darkColors() : light())), row.expected);
        EXPECT_FALSE(app::rewriteBoxes(row.input, light(), app::Medium::Paper).contains("bgcolor"))
            << "no stripes on paper";
    }
}

TEST(SheetText, boxesTakeTheirColours) {
    const ThemeColors& c = light();
    struct Row {
        const char* name;
        const char* input;
        std::string cell;
    };
    const Row rows[] = {
        {"message", R"(<div class="msg">x</div>)", "bgcolor=\"" + c.chip + "\" style=\"text-align:left\">x"},
        {"bad message", R"(<div class="msg bad">x</div>)",
         "bgcolor=\"" + c.chip + "\" style=\"text-align:left;color:" + c.bad + "\">x"},
        {"ok box", R"(<div class="msg ok-box">x</div>)",
         "bgcolor=\"" + c.soft + "\" style=\"text-align:left;color:" + c.ok + "\">x"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string out = str(app::rewriteBoxes(row.input, c));
        EXPECT_EQ(out.rfind("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"8\" "
                            "style=\"margin-top:6px;margin-bottom:6px\"><tr><td align=\"left\" ",
                            0),
                  0u)
            << out;
        EXPECT_NE(out.find(row.cell + "</td></tr></table>"), std::string::npos) << out;
    }
}

TEST(SheetText, stepsPutTheirNumberInABadge) {
    const QString html =
        R"(<div class="step"><p class="h4"><span class="stnum">2</span> Isolér <span class="v">I</span></p>)"
        R"(<div class="msg">m</div></div>)";
    const std::string out = str(app::rewriteBoxes(html, light()));
    EXPECT_NE(out.find(R"(<td class="stline" colspan="2" height="1" bgcolor="#d3d9e1"></td>)"),
              std::string::npos);
    EXPECT_NE(
        out.find(
            R"(<td class="stbadge" width="34" valign="top"><span class="stnum">&nbsp;2&nbsp;</span></td>)"),
        std::string::npos);
    EXPECT_NE(
        out.find(
            R"(<td class="stbody" valign="top"><p class="h4" style="margin-top:0">Isolér <span class="v">I</span></p><table)"),
        std::string::npos);
    EXPECT_EQ(out.find("<div"), std::string::npos);

    // On paper the line is the cells' top border: no row of its own, whose
    // background a page break would stretch.
    const std::string paper = str(app::rewriteBoxes(html, light(), app::Medium::Paper));
    EXPECT_EQ(paper.find("stline"), std::string::npos);
    EXPECT_NE(
        paper.find(R"(<td class="stbadge" width="34" valign="top" style="border-top:1px solid #d3d9e1">)"),
        std::string::npos);
    EXPECT_NE(paper.find(R"(<td class="stbody" valign="top" style="border-top:1px solid #d3d9e1">)"),
              std::string::npos);
}

TEST(SheetText, equationCellsAreCentredAndTheirLoneImagesKnown) {
    const QString html =
        R"(<table class="eqs"><tr><td class="l">I</td><td class="m">=</td><td class="r"><img class="math" src="m:4"></td>)"
        R"(<td class="n">Divider med <img class="math" src="m:5"></td></tr></table>)"
        R"(<table><tr><td><img class="math" src="m:6"></td></tr></table>)";
    const QString out = app::rewriteBoxes(html, light());
    EXPECT_EQ(out.count("<td valign=\"middle\""), 4);
    EXPECT_EQ(app::cellImages(out), QSet<QString>{"m:4"});
}

TEST(SheetText, noPrintElementsAreDropped) {
    struct Row {
        const char* name;
        const char* input;
        const char* expected;
    };
    const Row rows[] = {
        {"a paragraph", R"(a<p class="no-print">x</p>b)", "ab"},
        {"a nested div", R"(a<div class="x no-print"><div>y</div>z</div>b)", "ab"},
        {"other classes stay", R"(<p class="hint">x</p>)", R"(<p class="hint">x</p>)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(str(app::dropNoPrint(row.input)), row.expected);
    }
}

TEST(SheetText, titleIsTheFirstHeadingAsText) {
    EXPECT_EQ(
        str(app::sheetTitle(
            R"(<div class="crumb">x</div><h2>Ohms lov – find <span class="v">I</span> &amp; U</h2><h2>2</h2>)")),
        "Ohms lov – find I & U");
    EXPECT_EQ(str(app::sheetTitle("<p>no heading</p>")), "");
}

} // namespace

// Inline sizes follow the text scale and reach the inline elements inside,
// which the text engine would otherwise size by their ancestors' rules.
TEST(SheetText, inlineSizesScaleAndReachInside) {
    struct Row {
        const char* name;
        const char* html;
        double scale;
        const char* expected;
    };
    const Row rows[] = {
        {"scaled", "<span style=\"color:#fff;font-size:9pt\">3 formler</span>", 1.3,
         "<span style=\"color:#fff;font-size:11.7pt\">3 formler</span>"},
        {"a variable inside a sized formula", "<p class=\"eq\" style=\"font-size:16pt\">S = <span class=\"v\">U</span></p>",
         1.0, "<p class=\"eq\" style=\"font-size:16pt\">S = <span class=\"v\" style=\"font-size:16.0pt\">U</span></p>"},
        {"an index inside a title", "<b style=\"font-size:12.5pt\"><a href=\"go:x\">U<sub>N</sub></a></b>", 1.0,
         "<b style=\"font-size:12.5pt\"><a href=\"go:x\" style=\"font-size:12.5pt\">U<sub "
         "style=\"font-size:12.5pt\">N</sub></a></b>"},
        {"an image in a formula line takes the line's class size", "<div class=\"eq\"><img class=\"math\" src=\"m:0\"></div>",
         1.3, "<div class=\"eq\"><img class=\"math\" src=\"m:0\" style=\"font-size:24.7pt\"></div>"},
        {"a class of its own keeps its size", "<p style=\"font-size:16pt\"><span class=\"crumb\">(s. 3)</span></p>", 1.0,
         "<p style=\"font-size:16pt\"><span class=\"crumb\">(s. 3)</span></p>"},
        {"nothing sized stays as it is", "<p>U = <span class=\"v\">R</span></p>", 1.3,
         "<p>U = <span class=\"v\">R</span></p>"},
        {"the size ends with its element", "<b style=\"font-size:20pt\">a</b><i>b</i>", 1.0,
         "<b style=\"font-size:20pt\">a</b><i>b</i>"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        EXPECT_EQ(app::inlineSizes(QString::fromUtf8(r.html), r.scale).toStdString(), r.expected);
    }
}

TEST(SheetText, headingsBecomeParagraphsOfTheirClass) {
    struct Row {
        const char* name;
        const char* html;
        const char* expected;
    };
    const Row rows[] = {
        {"bare", "<h2>Ohms lov</h2>", "<p class=\"h2\">Ohms lov</p>"},
        {"with classes", "<h3 class=\"sh pdf-break\">Facit</h3>", "<p class=\"h3 sh pdf-break\">Facit</p>"},
        {"other attributes kept", "<h4 style=\"color:#fff\">a</h4>",
         "<p class=\"h4\" style=\"color:#fff\">a</p>"},
        {"inline markup inside", "<h3 class=\"sh\">Formler <span class=\"crumb\">(3)</span></h3>",
         "<p class=\"h3 sh\">Formler <span class=\"crumb\">(3)</span></p>"},
        {"other tags untouched", "<hr><p>h2</p><h1>x</h1>", "<hr><p>h2</p><h1>x</h1>"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        EXPECT_EQ(str(app::plainHeadings(QString::fromUtf8(r.html))), r.expected);
    }
}

TEST(SheetText, mathSizesReadTheImagesSizes) {
    const QString html = app::inlineSizes(
        "<p class=\"eq\" style=\"font-size:16pt\">S = <img class=\"math\" src=\"m:2\"></p><p><img class=\"math\" "
        "src=\"m:3\"></p>",
        1.0);
    const QMap<QString, double> sizes = app::mathSizes(html);
    EXPECT_EQ(sizes.value("m:2"), 16.0);
    EXPECT_FALSE(sizes.contains("m:3"));
}

TEST(SheetText, longSheetsAreCutBetweenTopLevelTablesOnly) {
    const QString html = "<h3>a</h3><table><tr><td><table></table></td></tr></table><p>b</p><table></table>";
    const QList<qsizetype> cuts = app::topLevelCuts(html);
    ASSERT_EQ(cuts.size(), 3);
    EXPECT_EQ(cuts[0], 0);
    EXPECT_EQ(html.mid(cuts[1], 13), "<table><tr><t");
    EXPECT_EQ(html.mid(cuts[2]), "<table></table>");
}

TEST(SheetText, chipsHoldTogetherButTheirTagsAndTheTextAroundThemDoNot) {
    const QString html = QStringLiteral(
        "<p>Energi og pris</p><a class=\"hchip\" href=\"go:energi\">&nbsp;<span class=\"crumb\">El</span> "
        "Energi og pris&nbsp;</a>&nbsp; <a class=\"chip\" href=\"go:x\">to ord</a>");
    EXPECT_EQ(app::holdChipsTogether(html).toStdString(),
              "<p>Energi og pris</p><a class=\"hchip\" href=\"go:energi\">&nbsp;<span class=\"crumb\">El</span>&nbsp;"
              "Energi&nbsp;og&nbsp;pris&nbsp;</a>&nbsp; <a class=\"chip\" href=\"go:x\">to ord</a>");
}
