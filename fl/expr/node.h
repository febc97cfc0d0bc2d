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
};

NodePtr parse(const std::string& text);
double eval(const NodePtr& node, const std::map<std::string, double>& vars);
double applyFunc(const std::string& name, double x);
int countVar(const NodePtr& node, const std::string& name);
void collectVars(const NodePtr& node, std::set<std::string>& out);
std::vector<NodePtr> children(const NodePtr& node);
NodePtr mapChildren(const NodePtr& node, const std::function<NodePtr(const NodePtr&)>& fn);

NodePtr makeNum(double v);
NodePtr makeVar(const std::string& name);
NodePtr makeFunc(const std::string& name, NodePtr arg);
NodePtr makePow(NodePtr base, NodePtr exponent);
NodePtr makeSumRaw(std::vector<SumTerm> terms);
NodePtr makeProdRaw(std::vector<ProdFactor> factors);
NodePtr makeSum(std::vector<SumTerm> terms);
NodePtr makeProduct(std::vector<ProdFactor> factors);

// Constant tables.
bool isFunctionName(const std::string& name);
std::string inverseFunction(const std::string& name);  // empty when none
std::string functionLabel(const std::string& name);
std::string symbolDisplay(const std::string& varName);  // the display form used by render

std::string render(const NodePtr& node, bool tall);
std::string renderMath(const NodePtr& node);
bool needsTall(const NodePtr& node);
std::string renderParen(const NodePtr& node, bool wrapIfLoose, bool tall);
std::string renderOperand(const NodePtr& node);
std::function<std::string(const std::string&)> noK();

}  // namespace fl
