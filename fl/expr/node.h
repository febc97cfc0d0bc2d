// The formula language: an immutable expression tree, its parser, evaluator,
// canonicalising constructors and HTML rendering. Number display goes through
// fl/expr/numbers.h; the expression images of renderMath through markup.h.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace fl {

struct Node;
using NodePtr = std::shared_ptr<const Node>;

enum NodeKind : int32_t { Num = 0, Pi = 1, Var = 2, Sum = 3, Prod = 4, Pow = 5, Func = 6 };

struct SumTerm {
    int32_t sign = 1;  // +1 or -1
    NodePtr node;
};

struct ProdFactor {
    char op = '*';  // '*' or '/'
    NodePtr node;
};

struct Node {
    int32_t kind = Num;
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

struct Parser {
    std::vector<std::string> tokens;
    size_t pos = 0;
    std::string src;
    int depth = 0;  // nesting of the recursive descent, bounded so deep text can't exhaust the stack
};

// Parses the strict language. Throws std::runtime_error: "parse: " + text for a
// character outside it, "rest i " + text for leftover tokens, "uventet slut",
// "uventet " + token, "forventede " + token + " i " + text.
NodePtr parse(const std::string& text);
// Throws "mangler " + name for a variable without a value; arithmetic never throws.
double eval(const NodePtr& node, const std::map<std::string, double>& vars);
// Angles in degrees. Throws "ukendt funktion " + name.
double applyFunc(const std::string& name, double x);
int countVar(const NodePtr& node, const std::string& name);
void collectVars(const NodePtr& node, std::set<std::string>& out);
std::vector<NodePtr> children(const NodePtr& node);
// Maps each child in order, but a power's exponent before its base; a leaf comes back as it is.
NodePtr mapChildren(const NodePtr& node, const std::function<NodePtr(const NodePtr&)>& fn);

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

// Constant tables.
bool isFunctionName(const std::string& name);
std::string inverseFunction(const std::string& name);  // empty when none
std::string functionLabel(const std::string& name);
std::string symbolDisplay(const std::string& varName);  // the display form used by render
// The symbols whose display form is given by hand rather than by the naming rules.
const std::map<std::string, std::string>& symbolTable();

// HTML of the tree; `tall` draws fractions and roots in two dimensions.
std::string render(const NodePtr& node, bool tall);
// An expression image ("m:N" through addMath) when needsTall, else render(node, false).
std::string renderMath(const NodePtr& node);
// A fraction or a square root anywhere in the tree.
bool needsTall(const NodePtr& node);
std::string renderParen(const NodePtr& node, bool wrapIfLoose, bool tall);
std::string renderOperand(const NodePtr& node);
// The label callback for tool computations that want no extra label per value.
std::function<std::string(const std::string&)> noK();

}  // namespace fl
