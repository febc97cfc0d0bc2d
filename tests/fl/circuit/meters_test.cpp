#include "fl/circuit/meters.h"

#include "fl/circuit/sheet.h"
#include "tests/fl/circuit/circuits.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using testing::outline;

using testing::circuit;
using testing::group;
using testing::leaf;

TEST(StripMeters, findsEachMetersHostInTheMeterFreeCopy) {
    struct Row {
        const char* name;
        Circuit c;
        const char* copy;   // outline of the meter-free copy (drawn names)
        const char* symbol; // what the first meter shows
    };
    const Row rows[] = {
        {"ideal ammeter in the main series", circuit("dc", {leaf("R"), leaf("A")}), "root(R1)", "I"},
        {"ideal ammeter in a branch",
         circuit("dc",
                 {group("P", {group("S", {leaf("R"), leaf("A")}), group("S", {leaf("R"), leaf("R")})})}),
         "root(A(R1 C(R2 R3)))", "I_R1"},
        {"ideal voltmeter across one resistor",
         circuit("dc", {leaf("R"), group("P", {leaf("R"), leaf("V")})}), "root(R1 R2)", "U_R2"},
        {"voltmeter across a series group keeps that group",
         circuit("dc", {leaf("R"), group("P", {group("S", {leaf("R"), leaf("R")}), leaf("V")})}),
         "root(R1 B(R2 R3))", "U_B"},
        {"voltmeter across several branches shows the group",
         circuit("dc", {leaf("R"), group("P", {leaf("R"), leaf("R"), leaf("V")})}), "root(R1 A(R2 R3))",
         "U_A"},
        {"meter with an inner resistance stays as a resistor",
         circuit("dc", {group("P", {leaf("R"), leaf("V", "", "10k")})}), "root(A(R1 V1))", "U_V1"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Circuit c = row.c;
        const CNodePtr drawn = c.root;
        {
            MeterGuard guard(c);
            const auto& info = guard.info();
            ASSERT_EQ(info->error, "");
            EXPECT_TRUE(c.solving);
            EXPECT_EQ(outline(c.root), row.copy);
            ASSERT_FALSE(info->meters.empty());
            EXPECT_EQ(info->meters[0].symbol, row.symbol);
        }
        EXPECT_EQ(c.root, drawn);
        EXPECT_FALSE(c.solving);
    }
}

TEST(StripMeters, placementErrorsInTheStudentsWords) {
    struct Row {
        const char* name;
        Circuit c;
        const char* error;
    };
    const Row rows[] = {
        {"ammeter alone in parallel", circuit("dc", {group("P", {leaf("R"), leaf("A")})}),
         "A1: et amperemeter må ikke sidde alene parallelt – det kortslutter (et ideelt amperemeter har "
         "ingen modstand). Sæt det i serie."},
        {"voltmeter in series", circuit("dc", {leaf("R"), leaf("V")}),
         "V1: et voltmeter skal sidde parallelt med det, det måler over – ikke i serie."},
        {"only meters", circuit("dc", {leaf("A")}), "Tegn mindst én komponent ud over målerne."},
        {"ammeter alone in a branch", circuit("dc", {group("P", {leaf("R"), group("S", {leaf("A")})})}),
         "A1 sidder alene i en gren og kortslutter den."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Circuit c = row.c;
        const CNodePtr drawn = c.root;
        const Sheet s = computeSheet(c);
        EXPECT_EQ(s.error, row.error);
        EXPECT_EQ(c.root, drawn);
        EXPECT_FALSE(c.solving);
    }
}

TEST(Meters, readingsBecomeKnownQuantitiesAndTheRestAreReported) {
    // A1 reads 2 A in series with R1 at 10 V: R1 is found.
    Circuit read = circuit("dc", {leaf("R"), leaf("A", "2")}, {{"U", "10"}});
    const Sheet found = computeSheet(read);
    ASSERT_EQ(found.error, "");
    EXPECT_NEAR(found.values.at("R1"), 5.0, 1e-9);
    ASSERT_EQ(found.targets.size(), 1u);
    EXPECT_EQ(found.targets[0].symbol, "I");
    EXPECT_TRUE(found.meterSteps.empty()); // checked like any target instead

    // Without a usable reading it only shows the result.
    Circuit shown = circuit("dc", {leaf("R", "5"), leaf("A", "abc")}, {{"U", "10"}});
    const Sheet s = computeSheet(shown);
    ASSERT_EQ(s.error, "");
    ASSERT_EQ(s.meterSteps.size(), 1u);
    EXPECT_EQ(s.meterSteps[0].title, "Måler A1");
    EXPECT_EQ(s.meterSteps[0].html,
              "<p class=\"hint0\">Amperemeteret A1 sidder i serie og viser strømmen dér <b>2 A</b></p>");

    // A real voltmeter loads what it measures.
    Circuit loaded = circuit("dc", {leaf("R", "10k"), group("P", {leaf("R", "10k"), leaf("V", "", "10k")})},
                             {{"U", "30"}});
    const Sheet l = computeSheet(loaded);
    ASSERT_EQ(l.error, "");
    EXPECT_NEAR(l.values.at("U_V1"), 10.0, 1e-9);
    ASSERT_EQ(l.meterSteps.size(), 1u);
    EXPECT_EQ(l.meterSteps[0].html, "<p class=\"hint0\">Voltmeteret V1 (med indre modstand) viser <b>10 "
                                    "V</b> <span class=\"crumb\">regnet "
                                    "som en modstand i kredsen</span></p>");
}

} // namespace
} // namespace fl
