// Resistors in series and parallel from a typed list: totals worked by hand,
// the checks on the sheet, the list's reading and its refusals.
#include "fl/tools/resistors.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/tools/tool_run.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using ResTotal = SettingsTest;

TEST_F(ResTotal, totalsAreWorkedOutWithTheirCheck) {
    struct Row {
        const char* name;
        const char* list;
        const char* how;
        double total;
        std::string part; // somewhere in the sheet
    };
    const Row rows[] = {
        {"series", "100; 220; 4,7k", "serie", 5020, "R_total=R_1 + R_2 + R_3=100 + 220 + 4,7k=5020 Ω"},
        // 100 · 220 / 320 = 68,75 Ω
        {"two in parallel, also as product over sum", "100; 220", "parallel", 68.75,
         "To modstande kan også regnes som produkt over sum:R_total=[(R_1 · R_2) / (R_1 + R_2)]"},
        {"equal ones in parallel", "3,3k\n3300;3,3k", "parallel", 1100,
         "3 ens modstande i parallel giver R / 3 = 1,1 kΩ."},
        {"line breaks and a trailing separator", "1k\n2k;", "serie", 3000,
         "I serie er R_total større end den største"},
        {"a zero in series is a wire", "0; 47", "serie", 47, "R_total=R_1 + R_2=0 + 47=47 Ω"},
        {"one alone", "470", "parallel", 470, "R_total=[1 / (1 / R_1)]"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ToolRun run = runOnce([&] { return resistorTotal({{"liste", r.list}, {"kobling", r.how}}); });
        ASSERT_TRUE(run.out.ok) << run.out.err;
        EXPECT_NEAR(recentValue(run.out, "Rt"), r.total, 1e-9 * r.total);
        EXPECT_TRUE(contains(run.text, r.part)) << run.text;
        EXPECT_TRUE(contains(run.sheet.check, "✓")) << run.sheet.check;
    }
    // The nearest standard values of 5020 Ω: 4,7k (−6,3745 %), 5,1k (+1,5936 %), 4,99k (−0,59761 %).
    const ToolRun series = runOnce([] {
        return resistorTotal({{"liste", "100; 220; 4,7k"}, {"kobling", "serie"}});
    });
    EXPECT_TRUE(contains(series.sheet.results, "E124,7 kΩ−6,3745 %E245,1 kΩ+1,5936 %E964,99 kΩ−0,59761 %"))
        << series.sheet.results;
    EXPECT_EQ(series.sheet.facit, "R_total = 5,02 kΩ nærmeste E24-værdi 5,1 kΩ");
}

TEST_F(ResTotal, aListThatCantBeUsedIsRefusedInWords) {
    struct Row {
        const char* name;
        const char* list;
        const char* how;
        std::string text;
    };
    const Row rows[] = {
        {"letters", "100; tre", "serie",
         "Jeg kan ikke læse værdi nr. 2 (»tre«). Skriv værdierne adskilt af semikolon, fx 100; 220; 4,7k."},
        {"empty", " ; ", "serie", "Skriv modstandene i feltet, adskilt af semikolon, fx 100; 220; 4,7k."},
        {"negative", "10; -5", "serie", "Negative modstande findes ikke – ret værdi nr. 2."},
        {"a short circuit in parallel", "10; 0", "parallel",
         "R2 = 0 Ω kortslutter de andre: i parallel bliver R<sub>total</sub> = 0 Ω, og al strømmen går "
         "gennem den."},
        {"too many", "1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1", "serie",
         "Højst 30 modstande ad gangen."},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ToolOut out = resistorTotal({{"liste", r.list}, {"kobling", r.how}});
        EXPECT_FALSE(out.ok);
        EXPECT_EQ(refusal(out), r.text);
        EXPECT_EQ(out.badKeys, std::vector<std::string>{"liste"});
    }
}

TEST_F(ResTotal, theFieldSaysWhatItRead) {
    EXPECT_EQ(listInterpretation("", "red"), "");
    EXPECT_EQ(listInterpretation("100; 4,7k", "red"), "= 2 modstande: 100 Ω · 4,7 kΩ");
    EXPECT_EQ(listInterpretation("2,2M", "red"), "= 1 modstand: 2,2 MΩ");
    EXPECT_EQ(listInterpretation("100; x", "red"), "<span style=\"color:red\">kan ikke læses</span>");
}

} // namespace
} // namespace fl
