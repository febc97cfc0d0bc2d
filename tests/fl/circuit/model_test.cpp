#include "fl/circuit/model.h"

#include "fl/circuit/json.h"
#include "store/datastore.h"
#include "tests/fl/circuit/circuits.h"

#include <gtest/gtest.h>

#include <sstream>

namespace fl {
namespace {

using testing::outline;

std::string idOf(Circuit& c, const std::string& name) {
    nameCircuit(c);
    if (name == "root") return "root";
    std::string id = "missing:" + name;
    walk(c.root, [&](const CNodePtr& n) {
        if (n != c.root && n->name == name) id = n->id;
    });
    return id;
}

// The selected node's name, "root", "" for none, "lost" where it names no node.
std::string selectedName(Circuit& c) {
    if (c.sel.empty()) return "";
    CNodePtr n;
    if (!find(c.root, c.sel, &n, nullptr)) return "lost";
    nameCircuit(c);
    return n == c.root ? "root" : n->name;
}

TEST(Edit, buildsTheTreeByRule) {
    struct Row {
        const char* name;
        const char* ops; // "R1 par R, R2 del": the node to select by name, the edit, the kind
        const char* tree;
        const char* selected;
    };
    const Row rows[] = {
        {"parallel to the only resistor keeps the root", "R1 par R", "root(A(R1 R2))", "R2"},
        {"series on the root appends", "root ser R", "root(R1 R2)", "R2"},
        {"parallel on the root wraps what it held", "root ser R, root par L", "root(A(B(R1 R2) L1))", "L1"},
        {"series inside a parallel makes a branch", "R1 par R, R1 ser C", "root(A(B(R1 C1) R2))", "C1"},
        {"series in a series inserts behind the node", "root ser R, R1 ser L", "root(R1 L1 R2)", "L1"},
        {"parallel to a whole parallel group joins it", "R1 par R, root par A", "root(A(R1 R2 A1))", "A1"},
        // The parent selected, A, vanishes in the normalising: the selection is emptied.
        {"deleting one of two in a parallel removes the group", "R1 par R, R2 del", "root(R1)", ""},
        {"deleting in the main series selects nothing", "root ser R, R1 del", "root(R1)", ""},
        {"deleting shifts later group letters", "R1 par R, root ser R, R3 par R, R1 del", "root(R1 A(R2 R3))",
         ""},
        {"deleting inside a branch selects the branch", "R1 par R, R1 ser R, R1 ser R, R1 del",
         "root(A(B(R1 R2) R3))", "B"},
        {"up selects the parent", "R1 par R, R2 up", "root(A(R1 R2))", "A"},
        {"unknown kind changes nothing", "R1 ser X", "root(R1)", "R1"},
        {"a selection that names no node changes nothing", "nobody ser R", "root(R1)", "lost"},
        // Group "C" and capacitor "C1" are different names.
        {"groups take letters in pre-order, parts count per kind", "R1 par L, L1 ser A, root ser C, C1 par A",
         "root(A(R1 B(L1 A1)) C(C1 A2))", "A2"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Circuit c = defaultCircuit();
        std::istringstream ops(row.ops);
        for (std::string op; std::getline(ops, op, ',');) {
            std::istringstream words(op);
            std::string select, what, kind;
            words >> select >> what >> kind;
            c.sel = idOf(c, select);
            edit(c, what, kind);
        }
        nameCircuit(c);
        EXPECT_EQ(outline(c.root), row.tree);
        EXPECT_EQ(selectedName(c), row.selected);
        EXPECT_EQ(c.root->id, "root");
    }
}

TEST(Ids, freshIdsAreNeverReusedAndFollowWhatWasRead) {
    Circuit c = defaultCircuit();
    c.root->ch[0]->id = "n900000";
    ASSERT_TRUE(fromText(toText(c), c)); // reading a circuit notes its ids
    EXPECT_EQ(makeNode("R")->id, "n900001");
    // Ids that aren't of the counter's form leave it alone.
    c.root->ch[0]->id = "nx5";
    noteIds(c.root);
    EXPECT_EQ(makeNode("R")->id, "n900002");
}

class WorkingCircuit : public ::testing::Test {
  protected:
    void SetUp() override {
        DataStore::instance().resetForTest();
        resetCurrentCircuitForTest();
    }
    void TearDown() override {
        resetCurrentCircuitForTest();
        DataStore::instance().resetForTest();
    }
    static Circuit acCircuit() {
        Circuit c = defaultCircuit("ac");
        c.root->ch[0]->k = "L";
        c.root->ch[0]->v = "0,1";
        return c;
    }
};

TEST_F(WorkingCircuit, loadTakesTheRightKeyAndMigratesAnOldAlternatingCurrentCircuit) {
    struct Row {
        const char* name;
        Json kreds, kredsAc;
        const char* mode;
        const char* wantMode;
        const char* wantKind; // kind of the first component
        bool wantMoved;       // "kreds_ac" now holds the circuit from "kreds"
    };
    const Json ac = toJson(acCircuit());
    Json otherAc = ac;
    otherAc["root"]["ch"].arr[0]["v"] = "0,5";
    const Row rows[] = {
        {"empty store gives the default", Json(), Json(), "", "dc", "R", false},
        {"first use takes the mode of kreds", ac, Json(), "", "ac", "L", false},
        {"dc moves an ac circuit out of kreds", ac, Json(), "dc", "dc", "R", true},
        {"ac falls back to an ac circuit in kreds", ac, Json("broken"), "ac", "ac", "L", false},
        {"garbage gives the default", Json("x"), Json(3.0), "ac", "ac", "R", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        DataStore::instance().resetForTest();
        if (!row.kreds.isNull()) storeSet("kreds", row.kreds);
        if (!row.kredsAc.isNull()) storeSet("kreds_ac", row.kredsAc);
        const Circuit c = loadCircuit(row.mode);
        EXPECT_EQ(c.mode, row.wantMode);
        ASSERT_FALSE(c.root->ch.empty());
        EXPECT_EQ(c.root->ch[0]->k, row.wantKind);
        Circuit moved;
        const bool hasAc = fromJson(storeGet("kreds_ac"), moved);
        EXPECT_EQ(hasAc && row.wantMoved && moved.root->ch[0]->v == "0,1", row.wantMoved);
    }
}

TEST_F(WorkingCircuit, eachKindOfCurrentKeepsItsOwnCircuit) {
    switchMode("dc");
    Circuit& dc = currentCircuit();
    dc.sel = "root";
    edit(dc, "ser", "R");
    dc.src["U"] = "230";

    switchMode("ac");
    EXPECT_EQ(currentCircuit().mode, "ac");
    EXPECT_EQ(currentCircuit().root->ch.size(), 1u);
    EXPECT_EQ(currentCircuit().src["U"], "");
    EXPECT_EQ(currentCircuit().src["f"], "50");

    switchMode("dc");
    EXPECT_EQ(currentCircuit().root->ch.size(), 2u);
    EXPECT_EQ(currentCircuit().src["U"], "230");
}

TEST_F(WorkingCircuit, nothingIsSavedWhileSolving) {
    Circuit c = defaultCircuit();
    c.src["U"] = "12";
    c.solving = true;
    setCircuit(c);
    saveCircuit();
    EXPECT_TRUE(storeGet("kreds").isNull());
    currentCircuit().solving = false;
    saveCircuit();
    EXPECT_EQ(storeGet("kreds").at("src").at("U").asString(), "12");
}

TEST_F(WorkingCircuit, savedCircuitsKeepTheirNames) {
    Circuit a = defaultCircuit(), b = acCircuit();
    EXPECT_FALSE(saveCircuitAs("   ", a));
    EXPECT_TRUE(saveCircuitAs("  Opgave 3 side 12 ", a));
    EXPECT_TRUE(saveCircuitAs("Opgave 3 side 12", b)); // overwritten without asking
    EXPECT_TRUE(saveCircuitAs("Spole", b));
    EXPECT_EQ(savedCircuitNames(), (std::vector<std::string>{"Opgave 3 side 12", "Spole"}));

    Circuit out;
    ASSERT_TRUE(openSavedCircuit("Opgave 3 side 12", out));
    EXPECT_EQ(out.mode, "ac");
    EXPECT_FALSE(renameSavedCircuit("Spole", " "));
    EXPECT_FALSE(renameSavedCircuit("Spole", "Spole"));
    EXPECT_FALSE(renameSavedCircuit("Ingen", "Ny"));
    EXPECT_TRUE(renameSavedCircuit("Spole", "Spole med tab"));
    removeSavedCircuit("Opgave 3 side 12");
    EXPECT_EQ(savedCircuitNames(), (std::vector<std::string>{"Spole med tab"}));

    // What isn't a circuit can't be opened, and the clipboard text is one line.
    Json saved = storeGet("kreds_saved");
    saved["Ødelagt"] = "x";
    storeSet("kreds_saved", saved);
    EXPECT_FALSE(openSavedCircuit("Ødelagt", out));
    EXPECT_EQ(toText(b).find('\n'), std::string::npos);
    ASSERT_TRUE(fromText(toText(b), out));
    EXPECT_EQ(toText(out), toText(b));
    EXPECT_FALSE(fromText("Udklip fra et andet program", out));
}

} // namespace
} // namespace fl
