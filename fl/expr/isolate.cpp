// The rearranger. State is two sides: `cur`, which holds the target, and
// `other`. Each rule peels one layer off `cur` and applies its inverse to
// `other`, and says what it did in the words a student hears in class.
#include "fl/expr/isolate.h"

#include "fl/expr/render.h"
#include "fl/expr/symbols.h"

namespace fl {

namespace {

// Rearranging never takes more passes than this; a formula that needs more is
// left to the catalogue's rewritten forms.
constexpr int kMaxPasses = 26;

bool holds(const NodePtr& node, const std::string& target) {
    return countVar(node, target) > 0;
}

// The first term or factor that holds the target, and the others in their order.
template <class Item>
bool splitAtTarget(const std::vector<Item>& items, const std::string& target, Item& found,
                   std::vector<Item>& rest) {
    bool seen = false;
    for (const Item& item : items) {
        if (!seen && holds(item.node, target)) {
            found = item;
            seen = true;
        } else {
            rest.push_back(item);
        }
    }
    return seen;
}

std::string capitalised(std::string note) {
    if (!note.empty() && note[0] >= 'a' && note[0] <= 'z') note[0] = static_cast<char>(note[0] - 'a' + 'A');
    return note;
}

std::string joined(const std::vector<NodePtr>& nodes, const char* sep) {
    std::string out;
    for (size_t i = 0; i < nodes.size(); ++i) {
        if (i > 0) out += sep;
        out += renderOperand(nodes[i]);
    }
    return out;
}

// "Træk a og b fra", "læg c til", "divider med a · b", ...: the parts of a
// note, joined by " og " and closed by " på begge sider".
std::string bothSides(const std::vector<std::string>& parts) {
    std::string out;
    for (size_t i = 0; i < parts.size(); ++i) {
        if (i > 0) out += " og ";
        out += parts[i];
    }
    return capitalised(out + " på begge sider");
}

bool sumRule(NodePtr& cur, NodePtr& other, const std::string& target, std::string& note) {
    SumTerm found;
    std::vector<SumTerm> rest;
    if (!splitAtTarget(cur->terms, target, found, rest)) return false;
    const NodePtr t = found.node;

    if (found.sign < 0) {
        // −t + rest = other  ⇒  t = rest − other
        note = "Læg " + renderOperand(t) + " til og træk " + renderOperand(other) + " fra på begge sider";
        rest.push_back({-1, other});
        other = makeSum(std::move(rest));
    } else {
        // t + a − c = other  ⇒  t = other − a + c
        std::vector<NodePtr> plus, minus;
        for (const auto& r : rest)
            (r.sign > 0 ? plus : minus).push_back(r.node);
        std::vector<std::string> parts;
        if (!plus.empty()) parts.push_back("træk " + joined(plus, " og ") + " fra");
        if (!minus.empty()) parts.push_back("læg " + joined(minus, " og ") + " til");
        note = bothSides(parts);
        std::vector<SumTerm> side{{1, other}};
        for (const auto& r : rest)
            side.push_back({-r.sign, r.node});
        other = makeSum(std::move(side));
    }
    cur = t;
    return true;
}

bool prodRule(NodePtr& cur, NodePtr& other, const std::string& target, std::string& note) {
    ProdFactor found;
    std::vector<ProdFactor> rest;
    if (!splitAtTarget(cur->factors, target, found, rest)) return false;
    const NodePtr t = found.node;

    if (found.op == '/') {
        // rest / t = other  ⇒  t = rest / other
        note = "Gang med " + renderOperand(t) + " og divider med " + renderOperand(other) + " på begge sider";
        rest.push_back({'/', other});
        other = makeProduct(std::move(rest));
    } else {
        // t · a / c = other  ⇒  t = other · c / a
        std::vector<NodePtr> times, over;
        for (const auto& r : rest)
            (r.op == '*' ? times : over).push_back(r.node);
        std::vector<std::string> parts;
        if (!times.empty()) parts.push_back("divider med " + joined(times, " · "));
        if (!over.empty()) parts.push_back("gang med " + joined(over, " · "));
        note = bothSides(parts);
        std::vector<ProdFactor> side;
        for (const auto& n : times)
            side.push_back({'/', n});
        side.push_back({'*', other});
        for (const auto& n : over)
            side.push_back({'*', n});
        other = makeProduct(std::move(side));
    }
    cur = t;
    return true;
}

bool powRule(NodePtr& cur, NodePtr& other, const std::string& target, std::string& note) {
    // b² = other  ⇒  b = √other; the negative root is not taken here.
    const NodePtr& e = cur->exponent;
    if (!holds(cur->base, target) || !e || e->kind != NodeKind::Num || e->value != 2.0) return false;
    note = "Tag kvadratroden på begge sider";
    other = makeFunc("sqrt", other);
    cur = cur->base;
    return true;
}

bool funcRule(NodePtr& cur, NodePtr& other, std::string& note) {
    if (cur->name == "sqrt") {
        // √a = other  ⇒  a = other²
        note = "Sæt begge sider i anden";
        other = makePow(other, makeNum(2));
    } else if (const std::string inv = inverseFunction(cur->name); !inv.empty()) {
        // sin(a) = other  ⇒  a = sin⁻¹(other)
        note = "Tag " + functionLabel(inv) + " på begge sider";
        other = makeFunc(inv, other);
    } else {
        return false; // abs, log, ln: no way back that a student is taught here
    }
    cur = cur->arg;
    return true;
}

bool applyRule(NodePtr& cur, NodePtr& other, const std::string& target, std::string& note) {
    switch (cur->kind) {
    case NodeKind::Sum:
        return sumRule(cur, other, target, note);
    case NodeKind::Prod:
        return prodRule(cur, other, target, note);
    case NodeKind::Pow:
        return powRule(cur, other, target, note);
    case NodeKind::Func:
        return funcRule(cur, other, note);
    default:
        return false;
    }
}

} // namespace

bool isolate(const NodePtr& expr, const std::string& name, const std::string& target, Isolation& out) {
    if (!expr || countVar(expr, target) != 1) return false;
    NodePtr cur = expr;
    NodePtr other = makeVar(name);
    out = Isolation{};
    // name = expr is turned round first, so the target's side is always on the left.
    out.steps.push_back({renderMath(cur), renderMath(other), "Byt om på siderne", false});
    for (int pass = 1; pass <= kMaxPasses; ++pass) {
        if (cur->kind == NodeKind::Var && cur->name == target) {
            out.result = other;
            return true;
        }
        std::string note;
        if (!applyRule(cur, other, target, note)) return false;
        out.steps.push_back({renderMath(cur), renderMath(other), note, false});
    }
    return false;
}

} // namespace fl
