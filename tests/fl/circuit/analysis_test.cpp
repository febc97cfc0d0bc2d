#include "fl/circuit/analysis.h"

#include "tests/fl/circuit/trees.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using testing::group;
using testing::leaf;
using testing::makeRoot;

// root(A(R1 L1 C1) L2), with L2 having an own resistance.
CNodePtr sample() {
    CNodePtr coil = leaf("L");
    coil->r = "12";
    return makeRoot({group("P", {leaf("R"), leaf("L"), leaf("C")}), coil});
}

TEST(Symbols, followTheTableForEveryKindOfNode) {
    const CNodePtr root = sample();
    const CNodePtr group = root->ch[0], r1 = group->ch[0], l1 = group->ch[1], c1 = group->ch[2],
                   l2 = root->ch[1];
    struct Row {
        const char* name;
        std::string got, want;
    };
    const Row rows[] = {
        {"source voltage", voltageSymbol(*root), "U"},
        {"total power", powerSymbol(*root), "P_tot"},
        {"total resistance", resistanceSymbol(*root), "R_tot"},
        {"total impedance", impedanceSymbol(*root), "Z"},
        {"total apparent power", nodeSymbol(*root, "S"), "S"},
        {"group resistance", resistanceSymbol(*group), "R_A"},
        {"group impedance", impedanceSymbol(*group), "Z_A"},
        {"resistor resistance is its value", resistanceSymbol(*r1), "R1"},
        {"resistor impedance is its value", impedanceSymbol(*r1), "R1"},
        {"coil resistance is its own", resistanceSymbol(*l1), "R_L1"},
        {"ideal coil impedance is its reactance", impedanceSymbol(*l1), "X_L1"},
        {"lossy coil impedance", impedanceSymbol(*l2), "Z_L2"},
        {"capacitor has no resistance", resistanceSymbol(*c1), ""},
        {"capacitor impedance is its reactance", impedanceSymbol(*c1), "X_C1"},
        {"capacitor reactive power", nodeSymbol(*c1, "Q"), "Q_C1"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.got, row.want) << row.name;

    int sign = 0;
    std::string sym;
    EXPECT_FALSE(reactanceSymbol(*r1, &sign, &sym));
    ASSERT_TRUE(reactanceSymbol(*c1, &sign, &sym));
    EXPECT_EQ(sign, -1);
    EXPECT_EQ(sym, "X_C1");
    ASSERT_TRUE(reactanceSymbol(*l1, &sign, &sym));
    EXPECT_EQ(sign, 1);
    ASSERT_TRUE(reactanceSymbol(*root, &sign, &sym));
    EXPECT_EQ(sym, "X_tot");
}

TEST(Shape, classifiesTheWholeCircuit) {
    auto branch = [](std::vector<CNodePtr> ch) { return group("S", std::move(ch)); };
    struct Row {
        const char* name;
        CNodePtr root;
        bool ac;
        const char* shape;
    };
    const Row rows[] = {
        {"anything in direct current", makeRoot({group("P", {leaf("R"), leaf("R")})}), false, "dc"},
        {"a series of leaves", makeRoot({leaf("R"), leaf("L"), leaf("C")}), true, "series"},
        {"parallel of leaves", makeRoot({group("P", {leaf("R"), leaf("C")})}), true, "par"},
        {"parallel of branches", makeRoot({group("P", {branch({leaf("R"), leaf("L")}), leaf("C")})}), true,
         "par"},
        {"a third level in a branch",
         makeRoot({group("P", {branch({leaf("R"), group("P", {leaf("L"), leaf("C")})}), leaf("C")})}), true,
         "mixed"},
        {"a parallel beside a series part", makeRoot({leaf("R"), group("P", {leaf("L"), leaf("C")})}), true,
         "mixed"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(shape(row.root, row.ac), row.shape) << row.name;
        EXPECT_EQ(parallelBlock(row.root) != nullptr,
                  std::string(row.shape) == "par" || std::string(row.name) == "anything in direct current")
            << row.name;
    }
}

TEST(Signature, equalExactlyForInterchangeableGroups) {
    auto par = [](const char* a, const char* b) { return group("P", {leaf("R", a), leaf("C", b)}); };
    const std::string base = signature(*par("10", "1e-6"));
    EXPECT_EQ(signature(*group("P", {leaf("C", "1u"), leaf("R", "10,0")})), base);
    EXPECT_NE(signature(*par("10", "2e-6")), base);
    EXPECT_NE(signature(*group("S", {leaf("R", "10"), leaf("C", "1e-6")})), base);

    // A link is equal to its target once the values are resolved.
    CNodePtr root = makeRoot({par("47", "1e-6"), group("P", {leaf("R", "=R1"), leaf("C", "1e-6")})});
    EXPECT_NE(signature(*root->ch[0]), signature(*root->ch[1]));
    const Values resolved = {{"R1", 47.0}, {"R2", 47.0}};
    EXPECT_EQ(signature(*root->ch[0], &resolved), signature(*root->ch[1], &resolved));

    // A coil's own resistance is part of it.
    CNodePtr lossy = leaf("L", "0,1"), ideal = leaf("L", "0,1");
    lossy->r = "5";
    EXPECT_NE(signature(*lossy), signature(*ideal));
}

TEST(ValueLink, acceptsOnlyTheLinkGrammar) {
    struct Row {
        const char* text;
        const char* want;
    };
    const Row rows[] = {
        {"=R1", "R1"}, {"= r 12", "R12"}, {"=L3", "L3"}, {"=c2", "C2"}, {"  =R1  ", "R1"},
        {"=X1", ""},   {"R1", ""},        {"=R", ""},    {"=R1a", ""},  {"==R1", ""},
        {"=R-1", ""},  {"", ""},          {"=", ""},     {"=R1 2", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(valueLink(row.text), row.want) << row.text;
}

TEST(OwnResistance, tellsIdealUnknownKnownAndLinked) {
    struct Row {
        const char* kind;
        const char* r;
        int want;
        double value;
    };
    const Row rows[] = {
        {"L", "", OwnNone, 0},       {"L", "  ", OwnNone, 0},     {"L", "?", OwnUnknown, 0},
        {"L", "2,5", OwnKnown, 2.5}, {"L", "1k", OwnKnown, 1000}, {"L", "=L2", OwnLinked, 0},
        {"R", "5", OwnNone, 0},      {"A", "0,1", OwnNone, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.kind) + " '" + row.r + "'");
        CNodePtr n = leaf(row.kind);
        n->r = row.r;
        double out = 0;
        EXPECT_EQ(hasOwnResistance(*n, &out), row.want);
        if (row.want == OwnKnown) {
            EXPECT_DOUBLE_EQ(out, row.value);
        }
    }
}

TEST(Words, describeSymbolsInPlainDanish) {
    const CNodePtr root = sample();
    struct Row {
        const char* symbol;
        bool ac;
        const char* want;
    };
    const Row rows[] = {
        {"R_tot", true, "kredsens ækvivalente modstand (den ohmske del)"},
        {"R_tot", false, "kredsens samlede modstand"},
        {"U_A", true, "spændingen over parallelgruppe A"},
        {"I_R1", true, "strømmen gennem R1"},
        {"X_L1", true, "den induktive reaktans i L1"},
        {"R_L2", true, "den ohmske modstand i L2"},
        {"Iw_A", true, "virkestrømmen i parallelgruppe A (i fase med U)"},
        {"Ih_R1", true, "strømmen i R1 ved hjælpespændingen"},
        {"Ib_h", true, "den reaktive strøm ved hjælpespændingen"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(describeSymbol(row.symbol, root, row.ac), row.want) << row.symbol;

    EXPECT_EQ(describe(*root->ch[0]), "Parallelgruppe A <span class=\"crumb\">R1, L1, C1</span>");
    EXPECT_EQ(describe(*root->ch[1]), "L2");
    EXPECT_EQ(unitOf("C1", root), "F");
    EXPECT_EQ(unitOf("Q", root), "VAr");
    EXPECT_EQ(unitOf("phi_A", root), "°");
}

} // namespace
} // namespace fl
