// Numeric evaluation of a tree. Angles are degrees throughout the language;
// arithmetic never throws, NaN and infinities travel as values for the
// callers to test.
#include "fl/expr/eval.h"

#include <cmath>

namespace fl {

namespace {
constexpr double kPi = 3.141592653589793;
constexpr double kDeg = 0.017453292519943295; // π/180
} // namespace

double applyFunc(const std::string& name, double x) {
    if (name == "sqrt") return std::sqrt(x);
    if (name == "abs") return std::fabs(x);
    if (name == "log") return std::log10(x);
    if (name == "ln") return std::log(x);
    if (name == "sin") return std::sin(x * kDeg);
    if (name == "cos") return std::cos(x * kDeg);
    if (name == "tan") return std::tan(x * kDeg);
    if (name == "asin") return std::asin(x) / kDeg;
    if (name == "acos") return std::acos(x) / kDeg;
    if (name == "atan") return std::atan(x) / kDeg;
    throw std::runtime_error("ukendt funktion " + name);
}

double eval(const NodePtr& node, const std::map<std::string, double>& vars) {
    if (!node) throw std::runtime_error("ukendt node");
    switch (node->kind) {
    case NodeKind::Num:
        return node->value;
    case NodeKind::Pi:
        return kPi;
    case NodeKind::Var: {
        auto it = vars.find(node->name);
        if (it == vars.end()) throw std::runtime_error("mangler " + node->name);
        return it->second;
    }
    case NodeKind::Sum: {
        double s = 0.0;
        for (const auto& t : node->terms)
            s += t.sign * eval(t.node, vars);
        return s;
    }
    case NodeKind::Prod: {
        double p = 1.0;
        for (const auto& f : node->factors) {
            if (f.op == '*')
                p *= eval(f.node, vars);
            else
                p /= eval(f.node, vars);
        }
        return p;
    }
    case NodeKind::Pow:
        return std::pow(eval(node->base, vars), eval(node->exponent, vars));
    case NodeKind::Func:
        return applyFunc(node->name, eval(node->arg, vars));
    default:
        throw std::runtime_error("ukendt node");
    }
}

} // namespace fl
