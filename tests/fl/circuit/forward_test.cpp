#include "fl/circuit/forward.h"

#include "tests/fl/circuit/trees.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace fl {
namespace {

using testing::leaf;
using testing::makeRoot;
using testing::RandomCircuit;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// Relative agreement, measured against `scale` for quantities that may be 0.
void expectClose(const Values& got, const std::string& symbol, double want, double scale) {
    SCOPED_TRACE(symbol);
    ASSERT_TRUE(got.count(symbol)) << "missing";
    const double v = got.at(symbol);
    EXPECT_LE(std::fabs(v - want), 1e-9 * std::max({std::fabs(want), std::fabs(v), scale}))
        << "got " << v << ", nodal analysis " << want;
}

void checkAgainstNodal(const RandomCircuit& rc) {
    const Values got = forward(rc.root, rc.values, rc.isAc);
    const testing::Nodal nodal = testing::solveNodal(rc);
    const CNode* root = rc.root.get();
    const testing::C zt = nodal.z.at(root), it = nodal.i.at(root);
    const double U = rc.values.at("U");
    expectClose(got, "Z", std::abs(zt), 0);
    expectClose(got, "I", std::abs(it), 0);
    expectClose(got, "R_tot", zt.real(), std::abs(zt));
    expectClose(got, "X_tot", zt.imag(), std::abs(zt));
    expectClose(got, "cosphi", zt.real() / std::abs(zt), 1);
    expectClose(got, "P", (U * std::conj(it)).real(), U * std::abs(it));
    walk(rc.root, [&](const CNodePtr& n) {
        if (n == rc.root) return;
        const testing::C u = nodal.u.at(n.get()), i = nodal.i.at(n.get()), z = nodal.z.at(n.get());
        const double s = std::abs(u) * std::abs(i);
        expectClose(got, "U_" + n->name, std::abs(u), 0);
        expectClose(got, "I_" + n->name, std::abs(i), 0);
        expectClose(got, "P_" + n->name, rc.isAc ? (u * std::conj(i)).real() : s, s);
        if (n->group) {
            expectClose(got, "R_" + n->name, z.real(), std::abs(z));
            if (rc.isAc) {
                expectClose(got, "Z_" + n->name, std::abs(z), 0);
                expectClose(got, "X_" + n->name, z.imag(), std::abs(z));
            }
        } else if (rc.isAc && n->k != "R") {
            expectClose(got, "X_" + n->name, std::fabs(z.imag()), 0);
        }
    });
}

TEST(Forward, agreesWithNodalAnalysisOnRandomTrees) {
    std::mt19937 rng(20240611);
    for (int round = 0; round < 400; ++round) {
        const bool ac = round % 2 == 1;
        std::uniform_int_distribution<int> leaves(1, 8), levels(1, 4);
        const RandomCircuit rc = testing::randomCircuit(rng, leaves(rng), levels(rng), ac);
        SCOPED_TRACE("round " + std::to_string(round) + (ac ? " ac" : " dc"));
        checkAgainstNodal(rc);
        if (::testing::Test::HasFailure()) break;
    }
}

TEST(Forward, frequencyFallsBackTo50WhenAbsentOrNotPositive) {
    CNodePtr root = makeRoot({leaf("L")});
    const double x50 = 2 * M_PI * 50 * 0.1;
    for (double f : {kNaN, 0.0, -60.0}) {
        Values in = {{"L1", 0.1}, {"U", 230.0}};
        if (!std::isnan(f)) in["f"] = f;
        EXPECT_NEAR(forward(root, in, true).at("X_L1"), x50, 1e-12) << f;
    }
    EXPECT_NEAR(forward(root, {{"L1", 0.1}, {"U", 230.0}, {"f", 60.0}}, true).at("X_L1"), x50 * 1.2, 1e-12);
}

TEST(Forward, signsOfCapacitiveCircuits) {
    CNodePtr root = makeRoot({leaf("R"), leaf("C")});
    const double xc = 1 / (2 * M_PI * 50 * 100e-6);
    const Values got = forward(root, {{"R1", xc}, {"C1", 100e-6}, {"U", 100}, {"f", 50}}, true);
    EXPECT_NEAR(got.at("phi"), 45.0, 1e-9);
    EXPECT_LT(got.at("Ib"), 0.0);
    EXPECT_GT(got.at("Q"), 0.0);
    EXPECT_NEAR(got.at("S"), std::hypot(got.at("P"), got.at("Q")), 1e-9);

    CNodePtr pure = makeRoot({leaf("C")});
    const Values reactive = forward(pure, {{"C1", 1e-5}, {"U", 100}, {"f", 50}}, true);
    EXPECT_NEAR(reactive.at("cosphi"), 0.0, 1e-15);
    EXPECT_NEAR(reactive.at("phi"), 90.0, 1e-12);
}

TEST(Forward, coilOwnResistanceFromItsField) {
    CNodePtr root = makeRoot({leaf("L")});
    root->ch[0]->r = "30";
    const Values got = forward(root, {{"L1", 40 / (2 * M_PI * 50)}, {"U", 100}}, true);
    EXPECT_NEAR(got.at("Z"), 50.0, 1e-9);
    EXPECT_NEAR(got.at("Z_L1"), 50.0, 1e-9);
    EXPECT_NEAR(got.at("P_L1"), 4.0 * 30.0, 1e-9); // I²·R_L with I = 2 A
}

TEST(ComplexDivision, scaledMethodStaysClearOfOverflowAndRefusesZero) {
    struct Row {
        const char* name;
        Cx a, b, want;
    };
    const Row rows[] = {
        {"plain", {1, 2}, {3, 4}, {0.44, 0.08}},
        {"huge parts", {1e300, 1e300}, {1e300, 1e300}, {1, 0}},
        {"tiny parts", {1e-300, 0}, {0, 1e-300}, {0, -1}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Cx got = cdiv(row.a, row.b);
        EXPECT_NEAR(got.real(), row.want.real(), 1e-12);
        EXPECT_NEAR(got.imag(), row.want.imag(), 1e-12);
    }
    for (Cx bad : {Cx(0, 0), Cx(kNaN, 1), Cx(1, kNaN)}) {
        const Cx got = cdiv(Cx(1, 1), bad);
        EXPECT_TRUE(std::isnan(got.real()) && std::isnan(got.imag()));
    }
    EXPECT_EQ(cdiv(Cx(1, 0), Cx(0, -kInf)), Cx(0, 0)); // an open branch draws nothing
}

} // namespace
} // namespace fl
