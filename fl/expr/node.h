// The expression tree of the formula language: an immutable node shared by
// pointer, its constructors and the structural walks over it (node.cpp).
// Reading text into a tree is parser.h, numbers eval.h, HTML render.h; the
// names of functions and the display forms of symbols are symbols.h.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace fl {

struct Node;
using NodePtr = std::shared_ptr<const Node>;

// Which fields of a Node carry meaning, by kind; the others stay at their
// defaults:
//   Num   `value`; `degree` when the program wrote an angle; `literal` with
//         `hasLiteral` when the number is shown as typed
//   Pi    nothing
//   Var   `name`
//   Sum   `terms`, each with its sign
//   Prod  `factors`, each multiplied or divided
//   Pow   `base` and `exponent`, both set
//   Func  `name` (one of isFunctionName) and `arg`
enum class NodeKind : int32_t { Num = 0, Pi = 1, Var = 2, Sum = 3, Prod = 4, Pow = 5, Func = 6 };

struct SumTerm {
    int32_t sign = 1;  // +1 or -1
    NodePtr node;
};

struct ProdFactor {
    char op = '*';  // '*' or '/'
    NodePtr node;
};

struct Node {
    NodeKind kind = NodeKind::Num;
    double value = 0.0;
    bool degree = false;     // an angle written by the program: rendered with "°"
    bool hasLiteral = false; // render `literal` instead of formatting `value`
    std::string literal;
    std::string name;
    std::vector<SumTerm> terms;
    std::vector<ProdFactor> factors;
    NodePtr base, exponent;
    NodePtr arg;
};

// Plain constructors: the tree exactly as given, as the parser reads it.
NodePtr makeNum(double v);
NodePtr makePi();
NodePtr makeVar(const std::string& name);
NodePtr makeFunc(const std::string& name, NodePtr arg);
NodePtr makePow(NodePtr base, NodePtr exponent);
NodePtr makeSumRaw(std::vector<SumTerm> terms);
NodePtr makeProdRaw(std::vector<ProdFactor> factors);
// Canonical forms for expressions the program writes itself: nested sums and
// products flattened, a/0.5 as 2·a, numeric factors merged into one leading
// coefficient, π before the other factors.
NodePtr makeSum(std::vector<SumTerm> terms);
NodePtr makeProduct(std::vector<ProdFactor> factors);

int countVar(const NodePtr& node, const std::string& name);
void collectVars(const NodePtr& node, std::set<std::string>& out);
std::vector<NodePtr> children(const NodePtr& node);
// Maps each child in order, but a power's exponent before its base; a leaf comes back as it is.
NodePtr mapChildren(const NodePtr& node, const std::function<NodePtr(const NodePtr&)>& fn);

}  // namespace fl
