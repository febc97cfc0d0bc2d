// Test support: circuits written as nested calls, with fresh ids as the
// editor would give them.
#pragma once

#include "fl/circuit/model.h"

#include <map>
#include <string>
#include <vector>

namespace fl::testing {

inline CNodePtr leaf(const std::string& k, const std::string& v = std::string(),
                     const std::string& r = std::string()) {
    CNodePtr n = makeNode(k);
    n->v = v;
    n->r = r;
    return n;
}

inline CNodePtr group(const std::string& k, std::vector<CNodePtr> ch) {
    CNodePtr g = makeNode(k);
    g->ch = std::move(ch);
    return g;
}

inline CNodePtr known(CNodePtr n, const std::string& U, const std::string& I,
                      const std::string& P = std::string()) {
    n->U = U;
    n->I = I;
    n->P = P;
    return n;
}

// "root(A(R1 R2) R3)": display names, groups with their children.
inline std::string outline(const CNodePtr& n) {
    if (!n->group) return n->name;
    std::string s = (n->id == "root" ? std::string("root") : n->name) + "(";
    for (size_t i = 0; i < n->ch.size(); ++i)
        s += (i ? " " : "") + outline(n->ch[i]);
    return s + ")";
}

inline Circuit circuit(const std::string& mode, std::vector<CNodePtr> ch,
                       const std::map<std::string, std::string>& src = {}) {
    Circuit c = defaultCircuit(mode);
    c.root->ch = std::move(ch);
    for (const auto& [key, text] : src)
        c.src[key] = text;
    nameCircuit(c);
    return c;
}

} // namespace fl::testing
