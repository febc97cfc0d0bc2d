#include "fl/circuit/search.h"

#include "tests/fl/circuit/trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace fl {
namespace {

using testing::group;
using testing::leaf;
using testing::makeRoot;
bool matches(const std::vector<double>& got, const std::vector<double>& want, double tol) {
    for (size_t i = 0; i < want.size(); ++i)
        if (std::fabs(got[i] - want[i]) > tol * std::fabs(want[i])) return false;
    return true;
}

// Whether the targets pin the unknowns down near the truth: the columns of
// the Jacobian (in logarithms) must not be close to dependent.
bool identifiable(SearchProblem& problem, const std::vector<double>& truth) {
    const size_t n = truth.size(), m = problem.targets().size();
    std::vector<double> x(n), r0(m), r1(m), J(m * n);
    for (size_t i = 0; i < n; ++i)
        x[i] = std::log(truth[i]);
    if (!problem.residual(x.data(), r0.data())) return false;
    for (size_t i = 0; i < n; ++i) {
        std::vector<double> xp = x;
        xp[i] += 1e-6;
        if (!problem.residual(xp.data(), r1.data())) return false;
        for (size_t t = 0; t < m; ++t)
            J[t * n + i] = (r1[t] - r0[t]) / 1e-6;
    }
    // Gram determinant over the product of squared column lengths (1 for orthogonal columns).
    std::vector<double> G(n * n);
    double lengths = 1;
    for (size_t i = 0; i < n; ++i)
        for (size_t k = 0; k < n; ++k) {
            for (size_t t = 0; t < m; ++t)
                G[i * n + k] += J[t * n + i] * J[t * n + k];
        }
    for (size_t i = 0; i < n; ++i) {
        if (G[i * n + i] < 1e-6) return false; // a target that barely moves with this unknown
        lengths *= G[i * n + i];
    }
    double det = 1;
    for (size_t c = 0; c < n; ++c) {
        size_t piv = c;
        for (size_t r = c + 1; r < n; ++r)
            if (std::fabs(G[r * n + c]) > std::fabs(G[piv * n + c])) piv = r;
        if (G[piv * n + c] == 0) return false;
        if (piv != c)
            for (size_t k = 0; k < n; ++k)
                std::swap(G[c * n + k], G[piv * n + k]);
        det *= G[c * n + c];
        for (size_t r = c + 1; r < n; ++r) {
            const double f = G[r * n + c] / G[c * n + c];
            for (size_t k = c; k < n; ++k)
                G[r * n + k] -= f * G[c * n + k];
        }
    }
    return lengths > 0 && std::fabs(det) / lengths > 1e-4;
}

// Hides one to three values of a solved random circuit, gives as many of its
// computed quantities instead, and asks the search for the hidden values.
TEST(MultiStart, recoversHiddenValuesOfRandomCircuits) {
    std::mt19937 rng(7);
    int unique = 0, several = 0, skipped = 0, missed = 0;
    for (int round = 0; round < 240; ++round) {
        const bool ac = round % 2 == 1;
        std::uniform_int_distribution<int> leaves(2, 8), levels(1, 4);
        testing::RandomCircuit rc = testing::randomCircuit(rng, leaves(rng), levels(rng), ac);
        const Values truth = forward(rc.root, rc.values, ac);

        std::vector<CNodePtr> parts;
        walk(rc.root, [&](const CNodePtr& n) {
            if (!n->group) parts.push_back(n);
        });
        std::shuffle(parts.begin(), parts.end(), rng);
        const int hide = std::min<int>(parts.size(), 1 + round % 3);
        std::vector<std::string> unknowns;
        std::vector<Target> targets;
        Values given = rc.values;
        std::uniform_int_distribution<int> which(0, 2);
        for (int h = 0; h < hide; ++h) {
            const CNodePtr& n = parts[h];
            unknowns.push_back(n->name);
            given.erase(n->name);
            const char* q[] = {"U_", "I_", "P_"};
            std::string sym = q[which(rng)] + n->name;
            if (ac && n->k != "R" && sym[0] == 'P') sym = "I_" + n->name; // no active power in a reactance
            targets.push_back({sym, truth.at(sym), sym});
        }
        if (round % 5 == 0) {
            // The source voltage too, fixed by the total current.
            unknowns.push_back("U");
            given.erase("U");
            targets.push_back({"I", truth.at("I"), "I"});
        }
        std::vector<double> want;
        for (const std::string& u : unknowns)
            want.push_back(rc.values.at(u));

        SCOPED_TRACE("round " + std::to_string(round));
        SearchProblem problem(rc.root, ac, given, unknowns, targets);
        if (!identifiable(problem, want)) {
            ++skipped;
            continue;
        }
        const std::vector<Solution> found = multiStart(problem);
        ASSERT_FALSE(found.empty());
        const bool hit = std::any_of(found.begin(), found.end(),
                                     [&](const Solution& s) { return matches(s.x, want, 1e-6); });
        // With the fixed seeds a root just beside a shallow extremum can hide
        // behind its twin; that must stay rare, and what is found must fit.
        if (!hit) {
            ++missed;
            EXPECT_LE(missed, 1) << found.size() << " solutions, none the truth";
        }
        // Every solution reproduces every target.
        for (const Solution& s : found) {
            const std::vector<double> computed = problem.evaluate(s.x);
            for (size_t t = 0; t < targets.size(); ++t)
                EXPECT_NEAR(computed[t], targets[t].value, 1e-7 * std::fabs(targets[t].value))
                    << targets[t].symbol;
            EXPECT_LT(s.cost, 1e-18);
            EXPECT_EQ(s.path.front().size(), unknowns.size());
            EXPECT_TRUE(matches(s.path.back(), s.x, 1e-12));
        }
        (found.size() == 1 ? unique : several)++;
        if (::testing::Test::HasFailure()) break;
    }
    // The sample holds both kinds of answer.
    EXPECT_GT(unique, 100);
    EXPECT_GT(several, 0);
    EXPECT_LT(skipped, 80);
}

TEST(MultiStart, triesOnlyTheFirst400Starts) {
    // Starts with a negative seed can't be evaluated; the good ones come only
    // after the first 400 in the order where the last unknown turns fastest.
    CNodePtr root = makeRoot({leaf("R"), leaf("R")});
    SearchProblem problem(root, false, {{"U", 10}}, {"R1", "R2"}, {{"I_R1", 0.5, ""}, {"U_R2", 4.0, ""}});
    std::vector<double> late(400, -1.0), inTime(399, -1.0);
    late.push_back(10.0);
    inTime.push_back(10.0);
    EXPECT_TRUE(multiStart(problem, {{1.0}, late}).empty());
    ASSERT_EQ(multiStart(problem, {{1.0}, inTime}).size(), 1u);
    EXPECT_NEAR(multiStart(problem, {{1.0}, inTime})[0].x[0], 12.0, 1e-9);
}

TEST(MultiStart, aKindWithoutSeedsLeavesNoStart) {
    EXPECT_TRUE(seedsFor("A1").empty());
    CNodePtr root = makeRoot({leaf("R")});
    SearchProblem problem(root, false, {{"R1", 5.0}}, {"U"}, {{"I", 2.0, ""}});
    EXPECT_EQ(multiStart(problem).size(), 1u);
    EXPECT_TRUE(multiStart(problem, {{}}).empty());
}

TEST(Residual, failsOnWhatCantBeComputed) {
    CNodePtr root = makeRoot({group("P", {leaf("R"), leaf("R")})});
    const double x[] = {std::log(10.0)};
    double r[2];
    SearchProblem unreachable(root, false, {{"R2", 10.0}, {"U", 10}}, {"R1"}, {{"Q_R1", 1.0, ""}});
    EXPECT_FALSE(unreachable.reachable(0));
    EXPECT_FALSE(unreachable.residual(x, r));

    SearchProblem zeroTarget(root, false, {{"R2", 10.0}, {"U", 10}}, {"R1"}, {{"I", 0.0, ""}});
    EXPECT_FALSE(zeroTarget.residual(x, r));

    SearchProblem shorted(root, false, {{"R2", 0.0}, {"U", 10}}, {"R1"}, {{"I", 1.0, ""}});
    EXPECT_FALSE(shorted.residual(x, r));

    SearchProblem fine(root, false, {{"R2", 10.0}, {"U", 10}}, {"R1"}, {{"I", 2.0, ""}, {"cosphi", 0.9, ""}});
    ASSERT_TRUE(fine.residual(x, r));
    EXPECT_NEAR(r[0], 0.0, 1e-15);             // ln(2/2)
    EXPECT_NEAR(r[1], (1.0 - 0.9) * 5, 1e-15); // cos φ is compared by difference

    EXPECT_THROW(SearchProblem(root, false, {{"U", 10}}, {"R1"}, {}), std::runtime_error); // R2 missing
}

} // namespace
} // namespace fl
