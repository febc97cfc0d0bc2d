// Building trees: the plain constructors the parser uses, the canonicalising
// ones the program uses when it writes an expression itself, and the
// structural walks.
#include "fl/expr/node.h"

#include <algorithm>
#include <cmath>

namespace fl {

NodePtr makeNum(double v) {
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Num;
    n->value = v;
    return n;
}

NodePtr makePi() {
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Pi;
    return n;
}

NodePtr makeVar(const std::string& name) {
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Var;
    n->name = name;
    return n;
}

NodePtr makeFunc(const std::string& name, NodePtr arg) {
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Func;
    n->name = name;
    n->arg = std::move(arg);
    return n;
}

NodePtr makePow(NodePtr base, NodePtr exponent) {
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Pow;
    n->base = std::move(base);
    n->exponent = std::move(exponent);
    return n;
}

NodePtr makeSumRaw(std::vector<SumTerm> terms) {
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Sum;
    n->terms = std::move(terms);
    return n;
}

NodePtr makeProdRaw(std::vector<ProdFactor> factors) {
    auto n = std::make_shared<Node>();
    n->kind = NodeKind::Prod;
    n->factors = std::move(factors);
    return n;
}

namespace {

void flattenSum(const std::vector<SumTerm>& in, int32_t outer, std::vector<SumTerm>& out) {
    for (const auto& t : in) {
        // s·(a ± b)  ⇒  s·a ± s·b
        if (t.node && t.node->kind == NodeKind::Sum)
            flattenSum(t.node->terms, outer * t.sign, out);
        else
            out.push_back({outer * t.sign, t.node});
    }
}

void flattenProd(const std::vector<ProdFactor>& in, bool flip, std::vector<ProdFactor>& out) {
    for (const auto& f : in) {
        const bool div = (f.op == '/') != flip;
        // x / (a·b/c)  ⇒  x / a / b · c
        if (f.node && f.node->kind == NodeKind::Prod)
            flattenProd(f.node->factors, div, out);
        else
            out.push_back({div ? '/' : '*', f.node});
    }
}

} // namespace

NodePtr makeSum(std::vector<SumTerm> terms) {
    std::vector<SumTerm> flat;
    flat.reserve(terms.size());
    flattenSum(terms, 1, flat);
    if (flat.size() == 1 && flat[0].sign == 1) return flat[0].node;
    return makeSumRaw(std::move(flat));
}

NodePtr makeProduct(std::vector<ProdFactor> factors) {
    std::vector<ProdFactor> flat;
    flat.reserve(factors.size());
    flattenProd(factors, false, flat);

    std::vector<NodePtr> numer, denom;
    double coef = 1.0;
    for (const auto& f : flat) {
        if (f.op == '/') {
            // a / x with x = 1/q for a whole q  ⇒  q · a   (a/0.5 reads better as 2·a)
            if (f.node && f.node->kind == NodeKind::Num && f.node->value > 0 && f.node->value < 1) {
                const double inv = 1.0 / f.node->value;
                const double q = std::round(inv);
                if (std::fabs(inv - q) < 1e-9) {
                    coef *= q;
                    continue;
                }
            }
            denom.push_back(f.node);
        } else if (f.node && f.node->kind == NodeKind::Num) {
            coef *= f.node->value;
        } else {
            numer.push_back(f.node);
        }
    }
    // π goes first among the symbols, so the program writes 2·π·f whatever the order given.
    std::stable_partition(numer.begin(), numer.end(),
                          [](const NodePtr& n) { return n && n->kind == NodeKind::Pi; });

    std::vector<ProdFactor> out;
    out.reserve(numer.size() + denom.size() + 1);
    if (coef != 1.0 || numer.empty()) out.push_back({'*', makeNum(coef)});
    for (auto& n : numer)
        out.push_back({'*', std::move(n)});
    for (auto& n : denom)
        out.push_back({'/', std::move(n)});
    if (out.size() == 1) return out[0].node;
    return makeProdRaw(std::move(out));
}

std::vector<NodePtr> children(const NodePtr& node) {
    std::vector<NodePtr> out;
    if (!node) return out;
    switch (node->kind) {
    case NodeKind::Sum:
        for (const auto& t : node->terms)
            out.push_back(t.node);
        break;
    case NodeKind::Prod:
        for (const auto& f : node->factors)
            out.push_back(f.node);
        break;
    case NodeKind::Pow:
        out.push_back(node->base);
        out.push_back(node->exponent);
        break;
    case NodeKind::Func:
        out.push_back(node->arg);
        break;
    default:
        break;
    }
    return out;
}

NodePtr mapChildren(const NodePtr& node, const std::function<NodePtr(const NodePtr&)>& fn) {
    if (!node) return node;
    switch (node->kind) {
    case NodeKind::Sum: {
        std::vector<SumTerm> terms;
        terms.reserve(node->terms.size());
        for (const auto& t : node->terms)
            terms.push_back({t.sign, fn(t.node)});
        return makeSumRaw(std::move(terms));
    }
    case NodeKind::Prod: {
        std::vector<ProdFactor> factors;
        factors.reserve(node->factors.size());
        for (const auto& f : node->factors)
            factors.push_back({f.op, fn(f.node)});
        return makeProdRaw(std::move(factors));
    }
    case NodeKind::Pow: {
        // Exponent first; a pass that needs reading order (the calculator's
        // literals) walks the tree itself.
        NodePtr exponent = fn(node->exponent);
        NodePtr base = fn(node->base);
        return makePow(std::move(base), std::move(exponent));
    }
    case NodeKind::Func:
        return makeFunc(node->name, fn(node->arg));
    default:
        return node;
    }
}

int countVar(const NodePtr& node, const std::string& name) {
    if (!node) return 0;
    if (node->kind == NodeKind::Var) return node->name == name ? 1 : 0;
    int n = 0;
    for (const auto& c : children(node))
        n += countVar(c, name);
    return n;
}

void collectVars(const NodePtr& node, std::set<std::string>& out) {
    if (!node) return;
    if (node->kind == NodeKind::Var) {
        out.insert(node->name);
        return;
    }
    for (const auto& c : children(node))
        collectVars(c, out);
}

} // namespace fl
