// Symbols, shape, signature, links and words of a circuit tree. These walks
// never fail; a symbol that a calculation needs and doesn't find is the
// forward pass's error to raise.
#include "fl/circuit/analysis.h"

#include "fl/expr/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fl {

double lookup(const Values& values, const std::string& symbol) {
    auto it = values.find(symbol);
    return it == values.end() ? std::numeric_limits<double>::quiet_NaN() : it->second;
}

bool isRootNode(const CNode& node) {
    return node.id == "root";
}

std::string nodeSymbol(const CNode& node, const std::string& q) {
    if (isRootNode(node)) {
        static const std::map<std::string, std::string> kRoot = {
            {"U", "U"}, {"I", "I"}, {"P", "P_tot"}, {"R", "R_tot"},       {"X", "X_tot"}, {"Z", "Z"},
            {"Q", "Q"}, {"S", "S"}, {"phi", "phi"}, {"cosphi", "cosphi"}, {"Iw", "Iw"},   {"Ib", "Ib"}};
        auto it = kRoot.find(q);
        return it == kRoot.end() ? q : it->second;
    }
    return q + "_" + node.name;
}

std::string voltageSymbol(const CNode& node) {
    return nodeSymbol(node, "U");
}
std::string currentSymbol(const CNode& node) {
    return nodeSymbol(node, "I");
}
std::string powerSymbol(const CNode& node) {
    return nodeSymbol(node, "P");
}

std::string resistanceSymbol(const CNode& node) {
    if (node.group || isRootNode(node)) return nodeSymbol(node, "R");
    if (node.k == "C") return std::string();
    if (node.k == "L") return "R_" + node.name;
    return node.name;
}

bool reactanceSymbol(const CNode& node, int* sign, std::string* symbol) {
    int s;
    if (node.group || isRootNode(node) || node.k == "L")
        s = 1;
    else if (node.k == "C")
        s = -1;
    else
        return false;
    if (sign) *sign = s;
    if (symbol) *symbol = nodeSymbol(node, "X");
    return true;
}

std::string impedanceSymbol(const CNode& node) {
    if (node.group || isRootNode(node)) return nodeSymbol(node, "Z");
    if (node.k == "L") return (hasOwnResistance(node) != OwnNone ? "Z_" : "X_") + node.name;
    if (node.k == "C") return "X_" + node.name;
    return node.name;
}

std::string kindWord(const std::string& k) {
    static const std::map<std::string, std::string> kWords = {
        {"R", "Modstand"},  {"L", "Spole"},       {"C", "Kondensator"},   {"A", "Amperemeter"},
        {"V", "Voltmeter"}, {"S", "Seriegruppe"}, {"P", "Parallelgruppe"}};
    auto it = kWords.find(k);
    return it == kWords.end() ? k : it->second;
}

std::string describe(const CNode& node) {
    if (isRootNode(node)) return "Hele kredsen";
    if (!node.group) return node.name;
    std::string s = (node.k == "P" ? "Parallelgruppe " : "Seriegruppe ") + node.name;
    if (!node.ch.empty()) {
        s += " <span class=\"crumb\">";
        for (size_t i = 0; i < node.ch.size(); ++i)
            s += (i ? ", " : "") + node.ch[i]->name;
        s += "</span>";
    }
    return s;
}

std::string nodeWords(const CNode& node) {
    if (isRootNode(node)) return "hele kredsen";
    if (node.group) return (node.k == "P" ? "parallelgruppe " : "seriegruppe ") + node.name;
    return node.name;
}

CNodePtr parallelBlock(const CNodePtr& root) {
    if (!root || root->ch.size() != 1) return nullptr;
    const CNodePtr& p = root->ch.front();
    if (!p->group || p->k != "P") return nullptr;
    for (const CNodePtr& branch : p->ch) {
        if (!branch->group) continue;
        if (branch->k != "S") return nullptr;
        for (const CNodePtr& leaf : branch->ch)
            if (leaf->group) return nullptr;
    }
    return p;
}

std::string shape(const CNodePtr& root, bool isAc) {
    if (!isAc) return "dc";
    bool hasGroup = false;
    walk(root, [&](const CNodePtr& n) {
        if (n != root && n->group) hasGroup = true;
    });
    if (parallelBlock(root)) return "par";
    return hasGroup ? "mixed" : "series";
}

namespace {

// Shortest exact text, or "?" for a value not known.
std::string sigNumber(double v) {
    return std::isfinite(v) ? fmtShortest(v) : std::string("?");
}

double typedValue(const std::string& text) {
    if (!valueLink(text).empty()) return std::numeric_limits<double>::quiet_NaN();
    return readValue(text);
}

} // namespace

std::string signature(const CNode& node, const Values* values) {
    if (!node.group) {
        double v = values && values->count(node.name) ? values->at(node.name) : typedValue(node.v);
        std::string s = node.k + sigNumber(v);
        if (node.k == "L") {
            double r = std::numeric_limits<double>::quiet_NaN();
            const std::string sym = "R_" + node.name;
            if (values && values->count(sym))
                r = values->at(sym);
            else if (hasOwnResistance(node, &r) != OwnKnown)
                r = std::numeric_limits<double>::quiet_NaN();
            if (std::isfinite(r)) s += "/" + sigNumber(r);
        }
        return s;
    }
    std::vector<std::string> parts;
    parts.reserve(node.ch.size());
    for (const CNodePtr& c : node.ch)
        parts.push_back(signature(*c, values));
    std::sort(parts.begin(), parts.end());
    std::string s = node.k + "(";
    for (const std::string& p : parts)
        s += p + ";";
    return s + ")";
}

int hasOwnResistance(const CNode& node, double* outR) {
    if (node.k != "L") return OwnNone;
    const std::string t = trimmed(node.r);
    if (t.empty()) return OwnNone;
    if (t == "?") return OwnUnknown;
    if (!valueLink(t).empty()) return OwnLinked;
    double v = readValue(t);
    if (!std::isfinite(v)) return OwnNone;
    if (outR) *outR = v;
    return OwnKnown;
}

std::string valueLink(const std::string& text) {
    const std::string t = trimmed(text);
    size_t i = 0;
    auto blanks = [&] {
        while (i < t.size() && (t[i] == ' ' || t[i] == '\t'))
            ++i;
    };
    if (t.empty() || t[i] != '=') return std::string();
    ++i;
    blanks();
    if (i >= t.size()) return std::string();
    char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(t[i])));
    if (letter != 'R' && letter != 'L' && letter != 'C') return std::string();
    ++i;
    blanks();
    size_t digits = i;
    while (i < t.size() && t[i] >= '0' && t[i] <= '9')
        ++i;
    if (i == digits || i != t.size()) return std::string();
    return std::string(1, letter) + t.substr(digits);
}

std::map<std::string, CNodePtr> collectByName(const CNodePtr& root) {
    std::map<std::string, CNodePtr> out;
    walk(root, [&](const CNodePtr& n) {
        if (!n->group) out[n->name] = n;
    });
    return out;
}

CNodePtr findByName(const CNodePtr& root, const std::string& name) {
    CNodePtr found;
    if (name.empty()) return found;
    walk(root, [&](const CNodePtr& n) {
        if (!found && n != root && n->name == name) found = n;
    });
    return found;
}

std::string describeSymbol(const std::string& symbol, const CNodePtr& root, bool isAc) {
    static const std::map<std::string, std::string> kWhole = {
        {"U", "kildespændingen"},
        {"I", "den samlede strøm"},
        {"Z", "kredsens samlede impedans"},
        {"X_tot", "kredsens samlede reaktans"},
        {"Q", "den samlede reaktive effekt"},
        {"S", "den samlede tilsyneladende effekt"},
        {"cosphi", "kredsens effektfaktor"},
        {"phi", "vinklen mellem U og strømmen i hele kredsen"},
        {"Iw", "virkestrømmen i hele kredsen (i fase med U)"},
        {"Ib", "den reaktive strøm i hele kredsen"},
        {"f", "frekvensen"},
        {"U_h", "hjælpespændingen"},
        {"I_h", "strømmen ved hjælpespændingen"},
        {"Iw_h", "virkestrømmen ved hjælpespændingen"},
        {"Ib_h", "den reaktive strøm ved hjælpespændingen"},
    };
    if (symbol == "R_tot")
        return isAc ? "kredsens ækvivalente modstand (den ohmske del)" : "kredsens samlede modstand";
    if (symbol == "P_tot" || symbol == "P") return isAc ? "den samlede aktive effekt" : "den samlede effekt";
    if (auto it = kWhole.find(symbol); it != kWhole.end()) return it->second;

    // A component's own value.
    if (CNodePtr n = findByName(root, symbol); n && !n->group) {
        if (n->k == "L") return "induktansen " + n->name;
        if (n->k == "C") return "kapaciteten " + n->name;
        return "modstanden " + n->name;
    }
    const size_t us = symbol.find('_');
    if (us == std::string::npos) return symbol;
    const std::string q = symbol.substr(0, us);
    const std::string name = symbol.substr(us + 1);
    CNodePtr n = findByName(root, name);
    if (!n && q == "X" && (name == "L" || name == "C"))
        return name == "L" ? "spolernes samlede reaktans" : "kondensatorernes samlede reaktans";
    const std::string who = n ? nodeWords(*n) : name;
    if (q == "U") return "spændingen over " + who;
    if (q == "I") return "strømmen gennem " + who;
    if (q == "Z") return "impedansen af " + who;
    if (q == "X") {
        if (n && n->k == "L") return "den induktive reaktans i " + who;
        if (n && n->k == "C") return "den kapacitive reaktans i " + who;
        return "reaktansen i " + who;
    }
    if (q == "R") return "den ohmske modstand i " + who;
    if (q == "P") return "den aktive effekt i " + who;
    if (q == "Q") return "den reaktive effekt i " + who;
    if (q == "S") return "den tilsyneladende effekt i " + who;
    if (q == "cosphi") return "effektfaktoren for " + who;
    if (q == "phi") return "vinklen mellem U og strømmen i " + who;
    if (q == "Iw") return "virkestrømmen i " + who + " (i fase med U)";
    if (q == "Ib") return "den reaktive strøm i " + who;
    if (q == "Ih") return "strømmen i " + who + " ved hjælpespændingen";
    return symbol;
}

std::string unitOf(const std::string& symbol, const CNodePtr& root) {
    if (symbol == "f") return "Hz";
    if (symbol.rfind("cosphi", 0) == 0) return "";
    if (symbol.rfind("phi", 0) == 0) return "°";
    if (CNodePtr n = findByName(root, symbol); n && !n->group) {
        if (n->k == "L") return "H";
        if (n->k == "C") return "F";
        return "Ω";
    }
    const std::string q = symbol.substr(0, symbol.find('_'));
    if (q == "U") return "V";
    if (q == "I" || q == "Iw" || q == "Ib" || q == "Ih") return "A";
    if (q == "P") return "W";
    if (q == "Q") return "VAr";
    if (q == "S") return "VA";
    if (q == "R" || q == "X" || q == "Z") return "Ω";
    return "";
}

} // namespace fl
