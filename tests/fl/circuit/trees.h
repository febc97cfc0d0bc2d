// Test support: random series/parallel trees in the editor's normal form,
// and an independent solution of them by nodal analysis (node voltages from
// the admittance matrix of the tree's two-terminal elements), so that the
// tree recursion of the forward pass is checked against another method.
#pragma once

#include "fl/circuit/analysis.h"
#include "tests/fl/circuit/circuits.h"

#include <cmath>
#include <complex>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace fl::testing {

using C = std::complex<double>;

struct RandomCircuit {
    CNodePtr root;
    Values values; // component values, own resistances, "U", "f"
    bool isAc = false;
};

inline double logUniform(std::mt19937& rng, double lo, double hi) {
    std::uniform_real_distribution<double> d(std::log(lo), std::log(hi));
    return std::exp(d(rng));
}

// A root "S" with the given children, ids set and names given.
inline CNodePtr makeRoot(std::vector<CNodePtr> ch) {
    CNodePtr root = group("S", std::move(ch));
    root->id = "root";
    int next = 1;
    walk(root, [&](const CNodePtr& n) {
        if (n != root) n->id = "t" + std::to_string(next++);
    });
    nameNodes(root);
    return root;
}

// `leaves` components split among nested groups of alternating kind, at most
// `levels` levels below the root.
inline RandomCircuit randomCircuit(std::mt19937& rng, int leaves, int levels, bool ac) {
    std::uniform_int_distribution<int> coin(0, 1);
    std::uniform_int_distribution<int> kind(0, 2);
    std::function<CNodePtr(const std::string&, int, int)> build = [&](const std::string& k, int n,
                                                                      int depth) -> CNodePtr {
        if (n == 1) return leaf(ac ? std::string(1, "RLC"[kind(rng)]) : std::string("R"));
        if (depth >= levels) {
            std::vector<CNodePtr> ch;
            for (int i = 0; i < n; ++i)
                ch.push_back(build(k, 1, depth));
            return group(k, ch);
        }
        std::uniform_int_distribution<int> parts(2, n);
        int count = parts(rng), left = n;
        std::vector<CNodePtr> ch;
        for (int i = 0; i < count; ++i) {
            const int rest = count - i - 1;
            std::uniform_int_distribution<int> size(1, left - rest);
            const int here = i + 1 == count ? left : size(rng);
            left -= here;
            ch.push_back(build(k == "S" ? "P" : "S", here, depth + 1));
        }
        return group(k, ch);
    };
    CNodePtr top = build(coin(rng) ? "S" : "P", leaves, 1);
    CNodePtr root = makeRoot(top->group && top->k == "S" ? top->ch : std::vector<CNodePtr>{top});

    RandomCircuit rc;
    rc.root = root;
    rc.isAc = ac;
    rc.values["U"] = logUniform(rng, 5, 500);
    if (ac) rc.values["f"] = coin(rng) ? 50.0 : logUniform(rng, 10, 2000);
    walk(root, [&](const CNodePtr& n) {
        if (n->group) return;
        if (n->k == "R") rc.values[n->name] = logUniform(rng, 1, 1000);
        if (n->k == "L") {
            rc.values[n->name] = logUniform(rng, 0.005, 1);
            if (coin(rng)) {
                n->r = "?"; // marks an own resistance; its value is in the map
                rc.values["R_" + n->name] = logUniform(rng, 1, 100);
            }
        }
        if (n->k == "C") rc.values[n->name] = logUniform(rng, 1e-6, 1e-4);
    });
    return rc;
}

// Node voltage and current phasors by nodal analysis.
struct Nodal {
    std::map<const CNode*, C> u, i, z;
};

inline Nodal solveNodal(const RandomCircuit& rc) {
    const double f = rc.values.count("f") ? rc.values.at("f") : 50.0;
    const double w = 2 * M_PI * f;
    struct Elem {
        int a, b;
        C y;
    };
    std::vector<Elem> elems;
    std::map<const CNode*, std::pair<int, int>> terminals;
    std::map<const CNode*, int> firstElem;
    int nodes = 2; // 0 ground, 1 the source's terminal
    std::function<void(const CNodePtr&, int, int)> place = [&](const CNodePtr& n, int a, int b) {
        terminals[n.get()] = {a, b};
        if (!n->group) {
            const double v = rc.values.at(n->name);
            C z;
            if (n->k == "R") z = v;
            if (n->k == "L")
                z = C(rc.values.count("R_" + n->name) ? rc.values.at("R_" + n->name) : 0.0, w * v);
            if (n->k == "C") z = C(0, -1 / (w * v));
            elems.push_back({a, b, 1.0 / z});
            return;
        }
        if (n->k == "P") {
            for (const CNodePtr& c : n->ch)
                place(c, a, b);
            return;
        }
        int from = a;
        for (size_t k = 0; k < n->ch.size(); ++k) {
            const int to = k + 1 == n->ch.size() ? b : nodes++;
            place(n->ch[k], from, to);
            from = to;
        }
    };
    place(rc.root, 1, 0);

    const C U = rc.values.at("U");
    const int n = nodes - 2; // unknown voltages of nodes 2..
    std::vector<C> Y(n * n), rhs(n), V(nodes);
    auto row = [](int node) { return node - 2; };
    for (const Elem& e : elems) {
        for (int side = 0; side < 2; ++side) {
            const int p = side ? e.b : e.a, q = side ? e.a : e.b;
            if (p < 2) continue;
            Y[row(p) * n + row(p)] += e.y;
            if (q >= 2) Y[row(p) * n + row(q)] -= e.y;
            if (q == 1) rhs[row(p)] += e.y * U;
        }
    }
    for (int c = 0; c < n; ++c) {
        int piv = c;
        for (int r = c + 1; r < n; ++r)
            if (std::abs(Y[r * n + c]) > std::abs(Y[piv * n + c])) piv = r;
        for (int k = 0; k < n; ++k)
            std::swap(Y[c * n + k], Y[piv * n + k]);
        std::swap(rhs[c], rhs[piv]);
        for (int r = c + 1; r < n; ++r) {
            const C fct = Y[r * n + c] / Y[c * n + c];
            for (int k = c; k < n; ++k)
                Y[r * n + k] -= fct * Y[c * n + k];
            rhs[r] -= fct * rhs[c];
        }
    }
    for (int r = n - 1; r >= 0; --r) {
        C s = rhs[r];
        for (int k = r + 1; k < n; ++k)
            s -= Y[r * n + k] * V[k + 2];
        V[r + 2] = s / Y[r * n + r];
    }
    V[1] = U;

    Nodal out;
    size_t next = 0;
    // Element currents in placement order give the leaves; groups sum up.
    std::function<C(const CNodePtr&)> current = [&](const CNodePtr& node) -> C {
        const auto [a, b] = terminals[node.get()];
        C i;
        if (!node->group) {
            const Elem& e = elems[next++];
            i = e.y * (V[e.a] - V[e.b]);
        } else if (node->k == "P") {
            for (const CNodePtr& c : node->ch)
                i += current(c);
        } else {
            for (size_t k = 0; k < node->ch.size(); ++k) {
                const C ck = current(node->ch[k]);
                if (k == 0) i = ck;
            }
        }
        out.u[node.get()] = V[a] - V[b];
        out.i[node.get()] = i;
        out.z[node.get()] = (V[a] - V[b]) / i;
        return i;
    };
    current(rc.root);
    return out;
}

} // namespace fl::testing
