// HTML of a tree, in the result markup's vocabulary (span.v, span.fn, span.fr,
// span.sq). Numbers are shown through fmtNumber; a step that needs a drawn
// fraction or root gets an expression image through addMath.
#include "fl/expr/render.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"

namespace fl {

namespace {

const char* const kMinus = "−"; // U+2212, never a hyphen on screen

std::string renderNum(const Node& n) {
    if (n.hasLiteral) return n.literal;
    std::string s = fmtNumber(n.value);
    if (n.degree) s += "°";
    return s;
}

// A list of factors joined by " · "; among two or more, sums and negative numbers need parentheses.
std::string joinFactors(const std::vector<NodePtr>& list, bool tall) {
    if (list.empty()) return "1";
    std::string out;
    for (size_t i = 0; i < list.size(); ++i) {
        if (i > 0) out += " · ";
        out += renderParen(list[i], list.size() >= 2, tall);
    }
    return out;
}

std::string renderSum(const Node& n, bool tall) {
    std::string out;
    for (size_t i = 0; i < n.terms.size(); ++i) {
        const auto& t = n.terms[i];
        if (i == 0)
            out += t.sign < 0 ? kMinus : "";
        else
            out += t.sign < 0 ? std::string(" ") + kMinus + " " : std::string(" + ");
        out += renderParen(t.node, true, tall);
    }
    return out;
}

std::string renderProd(const Node& n, bool tall) {
    std::vector<NodePtr> numer, denom;
    for (const auto& f : n.factors)
        (f.op == '/' ? denom : numer).push_back(f.node);
    if (denom.empty()) return joinFactors(numer, tall);
    if (tall)
        return "<span class=\"fr\"><span>" + joinFactors(numer, true) + "</span><span>" +
               joinFactors(denom, true) + "</span></span>";
    // A side of several factors needs parentheses; so does a lone sum, and a
    // lone product the parser kept from "a/(b*c)", which would read a/b·c.
    auto side = [](const std::vector<NodePtr>& list) {
        std::string s = joinFactors(list, false);
        const bool lone = list.size() == 1 && list[0] &&
                          (list[0]->kind == NodeKind::Sum || list[0]->kind == NodeKind::Prod);
        if (list.size() >= 2 || lone) return "(" + s + ")";
        return s;
    };
    return side(numer) + " / " + side(denom);
}

std::string renderPow(const Node& n, bool tall) {
    std::string base = render(n.base, tall);
    if (!isBareBase(n.base)) base = "(" + base + ")";
    return base + "<sup>" + render(n.exponent, tall) + "</sup>";
}

std::string renderFunc(const Node& n, bool tall) {
    if (n.name == "sqrt") {
        if (tall) return "<span class=\"sq\">√<span class=\"rad\">" + render(n.arg, false) + "</span></span>";
        return "√(" + render(n.arg, false) + ")";
    }
    std::string arg = render(n.arg, tall);
    if (wantsDegreeMark(n)) arg += "°";
    return "<span class=\"fn\">" + functionLabel(n.name) + "</span>(" + arg + ")";
}

} // namespace

bool isLoose(const NodePtr& n) {
    return n && (n->kind == NodeKind::Sum || (n->kind == NodeKind::Num && n->value < 0));
}

bool isBareBase(const NodePtr& b) {
    if (!b) return false;
    if (b->kind == NodeKind::Var || b->kind == NodeKind::Pi) return true;
    // 4,7·10⁻³ would read as a power of ten alone.
    return b->kind == NodeKind::Num && b->value >= 0 && !b->degree &&
           renderNum(*b).find("·10") == std::string::npos;
}

// sin(30) reads sin(30°): angles are degrees throughout.
bool wantsDegreeMark(const Node& f) {
    return (f.name == "sin" || f.name == "cos" || f.name == "tan") && f.arg && f.arg->kind == NodeKind::Num &&
           !f.arg->degree;
}

std::string render(const NodePtr& node, bool tall) {
    if (!node) return "?";
    switch (node->kind) {
    case NodeKind::Num:
        return renderNum(*node);
    case NodeKind::Pi:
        return "π";
    case NodeKind::Var:
        return "<span class=\"v\">" + symbolDisplay(node->name) + "</span>";
    case NodeKind::Sum:
        return renderSum(*node, tall);
    case NodeKind::Prod:
        return renderProd(*node, tall);
    case NodeKind::Pow:
        return renderPow(*node, tall);
    case NodeKind::Func:
        return renderFunc(*node, tall);
    default:
        return "?";
    }
}

bool needsTall(const NodePtr& node) {
    if (!node) return false;
    if (node->kind == NodeKind::Func && node->name == "sqrt") return true;
    if (node->kind == NodeKind::Prod)
        for (const auto& f : node->factors)
            if (f.op == '/') return true;
    for (const auto& c : children(node))
        if (needsTall(c)) return true;
    return false;
}

std::string renderMath(const NodePtr& node) {
    // A drawn image keeps a fraction's size inside a line of text.
    if (needsTall(node)) return "<img class=\"math\" src=\"" + addMath(node) + "\">";
    return render(node, false);
}

std::string renderParen(const NodePtr& node, bool wrapIfLoose, bool tall) {
    std::string s = render(node, tall);
    if (wrapIfLoose && isLoose(node)) return "(" + s + ")";
    return s;
}

std::string renderOperand(const NodePtr& node) {
    std::string s = renderMath(node);
    if (node && node->kind == NodeKind::Sum) return "(" + s + ")";
    return s;
}

} // namespace fl
