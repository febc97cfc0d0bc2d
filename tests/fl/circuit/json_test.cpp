#include "fl/circuit/json.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

const char* const kValid =
    R"({"mode":"ac","src":{"U":"230","f":"50","I":"","P":"","R":"","cos":"0,8","Z":""},)"
    R"("root":{"k":"S","id":"root","ch":[{"k":"P","id":"n7","ch":[)"
    R"({"k":"R","id":"n8","v":"5,5k","U":"","I":"","P":"","r":""},)"
    R"({"k":"L","id":"n9","v":"=L2","U":"","I":"0,2","P":"","r":"?"}],"U":"","I":"","P":"","R":""},)"
    R"({"k":"A","id":"n12","v":"0,5","U":"","I":"","P":"","r":"0,1"}],"U":"","I":"","P":"","R":""},"sel":"n9"})";

TEST(CircuitJson, roundTripKeepsEveryTypedText) {
    Circuit c;
    ASSERT_TRUE(fromJson(Json::parse(kValid), c));
    EXPECT_EQ(c.mode, "ac");
    EXPECT_EQ(c.sel, "n9");
    EXPECT_EQ(c.src["cos"], "0,8");
    ASSERT_EQ(c.root->ch.size(), 2u);
    const CNodePtr& coil = c.root->ch[0]->ch[1];
    EXPECT_EQ(coil->v, "=L2");
    EXPECT_EQ(coil->r, "?");
    EXPECT_EQ(coil->I, "0,2");
    EXPECT_TRUE(c.root->ch[0]->group);
    EXPECT_FALSE(c.root->ch[1]->group);

    EXPECT_EQ(Json::dump(toJson(c)), Json::dump(Json::parse(kValid)));
    // No selection is written as null; every source field is written.
    const Json j = toJson(defaultCircuit());
    EXPECT_TRUE(j.at("sel").isNull());
    EXPECT_EQ(j.at("src").asObject().size(), 7u);
}

TEST(CircuitJson, readsLenientlyWhereTheShapeIsRight) {
    Circuit c;
    ASSERT_TRUE(
        fromJson(Json::parse(R"({"mode":5,"src":{"U":12,"x":"y","f":""},)"
                             R"("root":{"k":"R","id":"n3","ch":[{"k":"R","v":7,"extra":"z"}]},"sel":4})"),
                 c));
    EXPECT_EQ(c.mode, "dc");
    EXPECT_EQ(c.src["U"], "");   // not a string
    EXPECT_EQ(c.src["x"], "y");  // unknown names are kept
    EXPECT_EQ(c.src["f"], "");   // an empty frequency stays empty
    EXPECT_EQ(c.src["cos"], ""); // absent keeps the default
    EXPECT_EQ(c.root->id, "root");
    EXPECT_EQ(c.root->k, "S");
    EXPECT_TRUE(c.root->group);
    EXPECT_EQ(c.root->ch[0]->v, "");
    EXPECT_EQ(c.root->ch[0]->id, "");
    EXPECT_EQ(c.sel, "");

    Circuit noF;
    ASSERT_TRUE(fromJson(Json::parse(R"({"src":{},"root":{"ch":[]}})"), noF));
    EXPECT_EQ(noF.src["f"], "50");
    EXPECT_TRUE(noF.root->ch.empty());
}

TEST(CircuitJson, refusesWhatIsNoCircuitAndLeavesTheTargetAlone) {
    struct Row {
        const char* name;
        const char* text;
    };
    const Row rows[] = {
        {"not an object", R"([1,2])"},
        {"no root", R"({"src":{}})"},
        {"root without children", R"({"src":{},"root":{"k":"S"}})"},
        {"no source", R"({"root":{"ch":[]}})"},
        {"unknown kind", R"({"src":{},"root":{"ch":[{"k":"Q"}]}})"},
        {"leaf with children", R"({"src":{},"root":{"ch":[{"k":"R","ch":[]}]}})"},
        {"group without children", R"({"src":{},"root":{"ch":[{"k":"P"}]}})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Circuit c = defaultCircuit();
        c.sel = "keep";
        EXPECT_FALSE(fromJson(Json::parse(row.text), c));
        EXPECT_EQ(c.sel, "keep");
        EXPECT_EQ(c.root->ch.size(), 1u);
    }
}

Json nested(int depth) {
    Json inner = Json::object();
    inner["k"] = "R";
    for (int d = 0; d < depth; ++d) {
        Json g = Json::object();
        g["k"] = d % 2 ? "S" : "P";
        g["ch"] = Json::array();
        g["ch"].push(std::move(inner));
        inner = std::move(g);
    }
    Json top = Json::object();
    top["src"] = Json::object();
    top["root"] = std::move(inner);
    return top;
}

TEST(CircuitJson, boundsDepthAndSize) {
    Circuit c;
    EXPECT_TRUE(fromJson(nested(kMaxCircuitDepth - 1), c));
    EXPECT_FALSE(fromJson(nested(kMaxCircuitDepth), c));

    Json wide = Json::object();
    wide["src"] = Json::object();
    wide["root"]["ch"] = Json::array();
    for (int i = 0; i < 100000; ++i) {
        Json leaf = Json::object();
        leaf["k"] = "R";
        wide["root"]["ch"].push(std::move(leaf));
    }
    EXPECT_FALSE(fromJson(wide, c));
}

} // namespace
} // namespace fl
