// The search behind a backwards problem. Working on logarithms keeps every
// unknown positive and puts farads and kilo-ohms on one scale; the seed table
// bounds the work (at most 400 starts of at most 200 iterations).
#include "fl/circuit/search.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace fl {

SearchProblem::SearchProblem(const CNodePtr& root, bool isAc, const Values& given,
                             std::vector<std::string> unknowns, std::vector<Target> targets,
                             const std::vector<std::pair<std::string, std::string>>& followers)
    : unknowns_(std::move(unknowns)), targets_(std::move(targets)) {
    // A coil whose own resistance is sought or copied needs its slot.
    Values known = given;
    for (const std::string& u : unknowns_)
        known.emplace(u, 1.0);
    for (const auto& f : followers)
        known.emplace(f.first, 1.0);
    plan_ = compilePlan(root, isAc, &known);
    work_.prepare(plan_);
    full_ = plan_;
    in_.assign(plan_.inputs.size(), std::numeric_limits<double>::quiet_NaN());

    for (const std::string& u : unknowns_)
        unknownSlot_.push_back(plan_.inputSlot(u));
    for (const auto& [follower, leader] : followers) {
        const int fs = plan_.inputSlot(follower);
        auto it = std::find(unknowns_.begin(), unknowns_.end(), leader);
        if (fs >= 0 && it != unknowns_.end())
            follow_.push_back({fs, static_cast<int>(it - unknowns_.begin())});
    }
    for (size_t s = 0; s < plan_.inputs.size(); ++s) {
        const std::string& sym = plan_.inputs[s];
        const int slot = static_cast<int>(s);
        const bool bound =
            std::find(unknownSlot_.begin(), unknownSlot_.end(), slot) != unknownSlot_.end() ||
            std::any_of(follow_.begin(), follow_.end(), [&](auto& f) { return f.first == slot; });
        if (bound) continue;
        auto it = given.find(sym);
        if (it != given.end()) {
            in_[s] = it->second;
        } else if (slot != plan_.inF) {
            double r;
            const ForwardPlan::Item* coil = nullptr;
            for (const ForwardPlan::Item& item : plan_.items)
                if (item.ownR == slot) coil = &item;
            if (coil && hasOwnResistance(*coil->node, &r) == OwnKnown)
                in_[s] = r;
            else
                throw std::runtime_error("mangler " + sym);
        }
    }
    for (size_t i = 0; i < unknownSlot_.size(); ++i)
        if (unknownSlot_[i] < 0) throw std::runtime_error("mangler " + unknowns_[i]);
    lastLog_.assign(unknownSlot_.size(), std::numeric_limits<double>::quiet_NaN());
    for (const Target& t : targets_) {
        targetSlot_.push_back(plan_.outputSlot(t.symbol));
        targetIsCos_.push_back(t.symbol == "cosphi");
    }
    plan_ = leanPlan(full_, targetSlot_);
}

void SearchProblem::bind(const double* x, bool logarithmic, const ForwardPlan& plan) {
    // A Jacobian column moves one unknown: the other exponentials still hold.
    for (size_t i = 0; i < unknownSlot_.size(); ++i) {
        if (!logarithmic) {
            in_[unknownSlot_[i]] = x[i];
            lastLog_[i] = std::numeric_limits<double>::quiet_NaN();
        } else if (!(x[i] == lastLog_[i])) {
            in_[unknownSlot_[i]] = std::exp(x[i]);
            lastLog_[i] = x[i];
        }
    }
    for (const auto& [slot, u] : follow_)
        in_[slot] = in_[unknownSlot_[u]];
    runPlan(plan, in_.data(), work_);
}

bool SearchProblem::residual(const double* logx, double* r) {
    bind(logx, true, plan_);
    for (size_t t = 0; t < targets_.size(); ++t) {
        const int slot = targetSlot_[t];
        if (slot < 0) return false;
        const double c = work_.out[slot], g = targets_[t].value;
        // cos φ lives in 0..1, where a ratio would overweight small values.
        r[t] = targetIsCos_[t] ? (c - g) * 5.0 : std::log(std::fabs(c) / std::fabs(g));
        if (!std::isfinite(r[t])) return false;
    }
    return true;
}

std::vector<double> SearchProblem::evaluate(const std::vector<double>& x) {
    bind(x.data(), false, plan_);
    std::vector<double> out(targets_.size(), std::numeric_limits<double>::quiet_NaN());
    for (size_t t = 0; t < targets_.size(); ++t)
        if (targetSlot_[t] >= 0 && std::isfinite(work_.out[targetSlot_[t]]))
            out[t] = work_.out[targetSlot_[t]];
    return out;
}

Values SearchProblem::results(const std::vector<double>& x) {
    std::fill(work_.out.begin(), work_.out.end(), std::numeric_limits<double>::quiet_NaN());
    bind(x.data(), false, full_);
    Values out;
    for (size_t s = 0; s < plan_.outputs.size(); ++s)
        out[plan_.outputs[s]] = work_.out[s];
    return out;
}

std::vector<double> seedsFor(const std::string& unknown) {
    if (unknown.rfind("R_", 0) == 0) return {1, 10, 100};
    if (unknown == "U") return {10, 230, 1000};
    switch (unknown.empty() ? '\0' : unknown[0]) {
    case 'R':
        return {1, 10, 100, 1000};
    case 'L':
        return {0.01, 0.1, 1.0};
    case 'C':
        return {1e-6, 1e-5, 1e-4};
    default:
        return {};
    }
}

namespace {

// Solves A·d = g in place by Gaussian elimination with partial pivoting.
bool solveLinear(std::vector<double>& A, std::vector<double>& g, size_t n, std::vector<double>& d) {
    for (size_t col = 0; col < n; ++col) {
        size_t piv = col;
        for (size_t row = col + 1; row < n; ++row)
            if (std::fabs(A[row * n + col]) > std::fabs(A[piv * n + col])) piv = row;
        if (!(std::fabs(A[piv * n + col]) >= 1e-300)) return false;
        if (piv != col) {
            for (size_t k = 0; k < n; ++k)
                std::swap(A[col * n + k], A[piv * n + k]);
            std::swap(g[col], g[piv]);
        }
        for (size_t row = col + 1; row < n; ++row) {
            const double f = A[row * n + col] / A[col * n + col];
            if (f == 0.0) continue;
            for (size_t k = col; k < n; ++k)
                A[row * n + k] -= f * A[col * n + k];
            g[row] -= f * g[col];
        }
    }
    for (size_t i = n; i-- > 0;) {
        double s = g[i];
        for (size_t k = i + 1; k < n; ++k)
            s -= A[i * n + k] * d[k];
        d[i] = s / A[i * n + i];
    }
    return true;
}

} // namespace

std::vector<Solution> multiStart(SearchProblem& problem, const std::vector<std::vector<double>>& seeds) {
    const size_t n = problem.unknowns().size();
    const size_t m = problem.targets().size();
    std::vector<Solution> found;
    if (n == 0 || seeds.size() != n) return found;
    for (const auto& s : seeds)
        if (s.empty()) return found; // a kind without seeds leaves no start

    std::vector<double> x(n), trial(n), xp(n), d(n), g(n), A(n * n), J(m * n);
    std::vector<double> r(m), rt(m), rp(m);
    std::vector<size_t> digit(n, 0);
    constexpr double kStep = 1e-7;

    const double perIteration = static_cast<double>(problem.passSize() + m) * (n + 1);
    double spent = 0.0;
    for (size_t start = 0; start < kMaxStarts && spent < kSearchBudget; ++start) {
        if (start > 0) {
            // Odometer over the seed lists: the last unknown turns fastest.
            size_t i = n;
            while (i > 0 && ++digit[i - 1] == seeds[i - 1].size())
                digit[--i] = 0;
            if (i == 0) break;
        }
        for (size_t i = 0; i < n; ++i)
            x[i] = std::log(seeds[i][digit[i]]);
        if (!problem.residual(x.data(), r.data())) continue;

        double cost = 0.0;
        for (double v : r)
            cost += v * v;
        double lambda = 0.001;
        std::vector<std::vector<double>> path{x};

        for (int iter = 0; cost > 1e-26 && iter < 200 && spent < kSearchBudget; ++iter) {
            spent += perIteration;
            // J column i = (r(x + h·eᵢ) − r) / h
            bool ok = true;
            for (size_t i = 0; i < n && ok; ++i) {
                xp = x;
                xp[i] += kStep;
                ok = problem.residual(xp.data(), rp.data());
                for (size_t t = 0; t < m && ok; ++t)
                    J[t * n + i] = (rp[t] - r[t]) / kStep;
            }
            if (!ok) break;
            // (JᵀJ + λ·diag(JᵀJ + 1e-12)) d = −Jᵀr, JᵀJ filled row by row of J
            std::fill(A.begin(), A.end(), 0.0);
            std::fill(g.begin(), g.end(), 0.0);
            for (size_t t = 0; t < m; ++t) {
                const double* row = &J[t * n];
                for (size_t i = 0; i < n; ++i) {
                    g[i] -= row[i] * r[t];
                    for (size_t k = i; k < n; ++k)
                        A[i * n + k] += row[i] * row[k];
                }
            }
            for (size_t i = 0; i < n; ++i)
                for (size_t k = 0; k < i; ++k)
                    A[i * n + k] = A[k * n + i];
            for (size_t i = 0; i < n; ++i)
                A[i * n + i] += (A[i * n + i] + 1e-12) * lambda;
            if (!solveLinear(A, g, n, d)) break;
            for (size_t i = 0; i < n; ++i)
                trial[i] = x[i] + std::clamp(d[i], -3.0, 3.0);

            double trialCost = 0.0;
            const bool good = problem.residual(trial.data(), rt.data());
            if (good)
                for (double v : rt)
                    trialCost += v * v;
            if (good && trialCost < cost) {
                x = trial;
                r = rt;
                cost = trialCost;
                lambda = std::max(1e-12, lambda * 0.25);
                path.push_back(trial);
            } else {
                lambda *= 6.0;
                if (lambda > 1e14) break;
            }
        }
        if (!(cost < 1e-18)) continue;

        Solution s;
        s.cost = cost;
        s.x.resize(n);
        for (size_t i = 0; i < n; ++i)
            s.x[i] = std::exp(x[i]);
        const bool seen = std::any_of(found.begin(), found.end(), [&](const Solution& e) {
            for (size_t i = 0; i < n; ++i)
                if (std::fabs(e.x[i] - s.x[i]) > std::max(1e-12, std::fabs(e.x[i])) * 1e-5) return false;
            return true;
        });
        if (seen) continue;
        for (auto& p : path)
            for (double& v : p)
                v = std::exp(v);
        s.path = std::move(path);
        found.push_back(std::move(s));
    }
    return found;
}

std::vector<Solution> multiStart(SearchProblem& problem) {
    std::vector<std::vector<double>> seeds;
    for (const std::string& u : problem.unknowns())
        seeds.push_back(seedsFor(u));
    return multiStart(problem, seeds);
}

} // namespace fl
