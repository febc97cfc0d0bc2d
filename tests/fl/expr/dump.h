// A compact prefix form of a tree for the expression tests, so a row can state
// the exact shape it expects: "(sum +a -(prod *2 /b))".
#pragma once

#include "fl/expr/node.h"
#include "fl/expr/numbers.h"

#include <ostream>
#include <string>

namespace fl {

inline std::string dump(const NodePtr& n) {
    if (!n) return "null";
    switch (n->kind) {
    case NodeKind::Num:
        return fmtShortest(n->value);
    case NodeKind::Pi:
        return "π";
    case NodeKind::Var:
        return n->name;
    case NodeKind::Sum: {
        std::string s = "(sum";
        for (const auto& t : n->terms)
            s += (t.sign < 0 ? " -" : " +") + dump(t.node);
        return s + ")";
    }
    case NodeKind::Prod: {
        std::string s = "(prod";
        for (const auto& f : n->factors)
            s += std::string(" ") + f.op + dump(f.node);
        return s + ")";
    }
    case NodeKind::Pow:
        return "(pow " + dump(n->base) + " " + dump(n->exponent) + ")";
    case NodeKind::Func:
        return "(" + n->name + " " + dump(n->arg) + ")";
    default:
        return "(kind " + std::to_string(static_cast<int>(n->kind)) + ")";
    }
}

inline void PrintTo(const NodePtr& n, std::ostream* os) {
    *os << dump(n);
}

} // namespace fl
