// Worksheets: the exercises and their answer lines, the facit at the back in
// its three forms, fresh draws on every sheet, and the stored options.
#include "fl/practice/worksheet.h"

#include "fl/practice/categories.h"
#include "fl/practice/exam.h"
#include "tests/fl/practice/seeded.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

class WorksheetTest : public SeededTest<11> {
  protected:
    static Worksheet sheet(const std::string& facit, bool room = false) {
        WorksheetOptions o;
        o.topic = "Jævnstrøm";
        o.facit = facit;
        o.room = room;
        return drawWorksheet(o, "Jævnstrøm", "14. marts 2025",
                             [] { return exerciseForCategory("Jævnstrøm", {}); });
    }
    static size_t count(const std::string& html, const std::string& part) {
        size_t n = 0;
        for (size_t at = html.find(part); at != std::string::npos; at = html.find(part, at + 1))
            ++n;
        return n;
    }
};

TEST_F(WorksheetTest, theFacitOptionDecidesWhatStandsAtTheBack) {
    struct Row {
        const char* facit;
        bool sentence, table, solutions, room;
    };
    const Row rows[] = {
        {"svar", true, true, false, false},
        {"losning", true, true, true, true},
        {"ingen", false, false, false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.facit);
        const Worksheet ws = sheet(row.facit, row.room);
        ASSERT_EQ(ws.exercises.size(), 10u);
        resetFigures();
        const RenderResult r = worksheetRender(ws, true);
        EXPECT_EQ(r.html.rfind("<div class=\"card sheet\" id=\"wssheet\"><div class=\"sheet-head\"><div "
                               "class=\"crumb\">Opgaveark · Jævnstrøm · 14. marts 2025 · 10 opgaver</div>",
                               0),
                  0u);
        EXPECT_EQ(r.html.find(" Facit står bagerst.") != std::string::npos, row.sentence);
        EXPECT_EQ(r.html.find("<h3 class=\"sh pdf-break\">Facit</h3>") != std::string::npos, row.table);
        // Paper keeps an exercise with its answer line, and a solution's heading with the solution.
        EXPECT_EQ(count(r.html, "<div class=\"pdf-keep\"><div class=\"wsprob\">"), 10u);
        EXPECT_EQ(count(r.html, "<div class=\"pdf-next\"><h3 class=\"sh\">Løsning til opgave "),
                  row.solutions ? 10u : 0u);
        EXPECT_EQ(count(r.html, "<div class=\"wsbox\">"), row.room ? 10u : 0u);
        for (size_t i = 0; i < ws.exercises.size(); ++i) {
            const Exercise& ex = ws.exercises[i];
            EXPECT_NE(
                r.html.find("<p class=\"h4\">Opgave " + std::to_string(i + 1) + ": " + symbolHtml(ex.title)),
                std::string::npos);
            const std::string answer = "<td><b>" + worksheetAnswer(ex) + "</b></td>";
            EXPECT_EQ(r.html.find(answer) != std::string::npos, row.table) << answer;
        }
        // Without "Vis facit" the screen shows the exercises alone.
        const RenderResult hidden = worksheetRender(ws, false);
        EXPECT_EQ(hidden.html.find("wsfac"), std::string::npos);
        EXPECT_EQ(count(hidden.html, "<div class=\"wsprob\">"), 10u);
        EXPECT_EQ(r.html.substr(r.html.size() - 6), "</div>");
    }
}

TEST_F(WorksheetTest, everySheetIsDrawnAnew) {
    const Worksheet a = sheet("svar"), b = sheet("svar");
    EXPECT_NE(worksheetRender(a, true).html, worksheetRender(b, true).html);
    std::set<std::string> keys;
    for (const Exercise& ex : a.exercises)
        keys.insert(ex.key + ex.target + std::to_string(ex.facit));
    EXPECT_GT(keys.size(), 5u);
}

TEST_F(WorksheetTest, theAnswerLineHasTheUnitTheAnswerIsAskedIn) {
    WorksheetOptions o;
    o.count = 5;
    Exercise cap;
    cap.key = "xc";
    cap.title = "Kapacitiv reaktans";
    cap.topic = "Vekselstrøm";
    cap.unit = "F";
    cap.scale = 1e-6;
    cap.facit = 47e-6;
    const Worksheet ws = drawWorksheet(o, "Alle emner", "1. april 2025", [&] { return cap; });
    const std::string html = worksheetRender(ws, true).html;
    EXPECT_NE(html.find("Svar: ______________________ µF</p>"), std::string::npos);
    EXPECT_NE(html.find("<td><b>47 µF</b></td>"), std::string::npos);
}

TEST_F(WorksheetTest, optionsSurviveTheStoreAndIgnoreNonsense) {
    WorksheetOptions o;
    o.topic = "Motorer";
    o.count = 15;
    o.facit = "losning";
    o.room = true;
    const WorksheetOptions back = worksheetOptionsFromJson(worksheetOptionsToJson(o));
    EXPECT_EQ(back.topic, "Motorer");
    EXPECT_EQ(back.count, 15);
    EXPECT_EQ(back.facit, "losning");
    EXPECT_TRUE(back.room);
    const WorksheetOptions bad =
        worksheetOptionsFromJson(Json::parse(R"({"topic": 3, "count": 1000, "facit": "alt", "room": "ja"})"));
    EXPECT_EQ(bad.topic, "");
    EXPECT_EQ(bad.count, 10);
    EXPECT_EQ(bad.facit, "svar");
    EXPECT_FALSE(bad.room);
}

} // namespace
} // namespace fl
