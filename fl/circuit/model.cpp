// The circuit tree: fresh ids, walks, naming, normalising, the editing
// primitive and the working circuit with its two store keys. The file form
// is json.cpp's; what the numbers mean is left to the solvers.
#include "fl/circuit/model.h"

#include "fl/circuit/json.h"
#include "fl/expr/numbers.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <algorithm>
#include <optional>

namespace fl {

namespace {

long long g_nextId = 1;
std::optional<Circuit> g_current;

bool isGroupKind(const std::string& k) {
    return k == "S" || k == "P";
}

// "A" + count as a character code; past the Latin letters the codes go on,
// encoded as UTF-8 so that a name is always valid text.
std::string groupLetter(int count) {
    unsigned cp = 65u + static_cast<unsigned>(count);
    std::string s;
    if (cp < 0x80) {
        s += static_cast<char>(cp);
    } else if (cp < 0x800) {
        s += static_cast<char>(0xC0 | (cp >> 6));
        s += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        if (cp >= 0xD800 && cp < 0xE000) cp += 0x800; // skip the surrogates
        s += static_cast<char>(0xE0 | (cp >> 12));
        s += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        s += static_cast<char>(0x80 | (cp & 0x3F));
    }
    return s;
}

CNodePtr normaliseNode(const CNodePtr& node, bool isRoot) {
    if (!node->group) return node;
    std::vector<CNodePtr> kept;
    kept.reserve(node->ch.size());
    for (const CNodePtr& c : node->ch) {
        CNodePtr n = normaliseNode(c, false);
        if (n->group && n->k == node->k)
            kept.insert(kept.end(), n->ch.begin(), n->ch.end());
        else
            kept.push_back(n);
    }
    node->ch = std::move(kept);
    if (!isRoot && node->ch.size() == 1) return node->ch.front();
    return node;
}

} // namespace

CNodePtr makeNode(const std::string& k) {
    auto n = std::make_shared<CNode>();
    n->k = k;
    n->group = isGroupKind(k);
    n->id = "n" + std::to_string(g_nextId++);
    return n;
}

CNodePtr makeNode(const std::string& k, const std::string& v, std::vector<CNodePtr> ch) {
    CNodePtr n = makeNode(k);
    n->v = v;
    n->ch = std::move(ch);
    return n;
}

void noteIds(const CNodePtr& root) {
    walk(root, [](const CNodePtr& n) {
        const std::string& id = n->id;
        if (id.size() < 2 || id[0] != 'n') return;
        long long v = 0;
        for (size_t i = 1; i < id.size(); ++i) {
            if (id[i] < '0' || id[i] > '9') return;
            if (v > 1'000'000'000'000LL) return; // absurd ids can't exhaust the counter
            v = v * 10 + (id[i] - '0');
        }
        g_nextId = std::max(g_nextId, v + 1);
    });
}

std::map<std::string, std::string> defaultSource() {
    return {{"U", ""}, {"f", "50"}, {"I", ""}, {"P", ""}, {"R", ""}, {"cos", ""}, {"Z", ""}};
}

Circuit defaultCircuit(const std::string& mode) {
    Circuit c;
    c.mode = mode == "ac" ? "ac" : "dc";
    c.src = defaultSource();
    c.root = std::make_shared<CNode>();
    c.root->k = "S";
    c.root->id = "root";
    c.root->group = true;
    c.root->ch.push_back(makeNode("R"));
    return c;
}

void walk(const CNodePtr& root, const std::function<void(const CNodePtr&)>& fn) {
    if (!root) return;
    std::vector<CNodePtr> stack{root};
    while (!stack.empty()) {
        CNodePtr n = std::move(stack.back());
        stack.pop_back();
        fn(n);
        std::vector<CNodePtr> kids = n->ch;
        for (auto it = kids.rbegin(); it != kids.rend(); ++it)
            stack.push_back(*it);
    }
}

bool find(const CNodePtr& root, const std::string& id, CNodePtr* outNode, CNodePtr* outParent) {
    if (!root) return false;
    std::vector<std::pair<CNodePtr, CNodePtr>> stack{{root, nullptr}};
    while (!stack.empty()) {
        auto [n, parent] = stack.back();
        stack.pop_back();
        if (n->id == id) {
            if (outNode) *outNode = n;
            if (outParent) *outParent = parent;
            return true;
        }
        for (auto it = n->ch.rbegin(); it != n->ch.rend(); ++it)
            stack.push_back({*it, n});
    }
    return false;
}

CNodePtr deepCopy(const CNodePtr& node) {
    if (!node) return nullptr;
    auto top = std::make_shared<CNode>(*node);
    std::vector<CNodePtr> stack{top};
    while (!stack.empty()) {
        CNodePtr n = stack.back();
        stack.pop_back();
        for (CNodePtr& c : n->ch) {
            c = std::make_shared<CNode>(*c);
            stack.push_back(c);
        }
    }
    return top;
}

int treeDepth(const CNodePtr& root) {
    if (!root) return 0;
    int best = 0;
    std::vector<std::pair<const CNode*, int>> stack{{root.get(), 1}};
    while (!stack.empty()) {
        auto [n, d] = stack.back();
        stack.pop_back();
        best = std::max(best, d);
        for (const CNodePtr& c : n->ch)
            stack.push_back({c.get(), d + 1});
    }
    return best;
}

size_t treeSize(const CNodePtr& root) {
    size_t count = 0;
    walk(root, [&](const CNodePtr&) { ++count; });
    return count;
}

void nameNodes(const CNodePtr& root) {
    std::map<std::string, int> leafCount;
    int groups = 0;
    walk(root, [&](const CNodePtr& n) {
        if (n == root) {
            n->name.clear();
        } else if (n->group) {
            n->name = groupLetter(groups++);
        } else {
            n->name = n->k + std::to_string(++leafCount[n->k]);
        }
    });
}

void nameCircuit(Circuit& c) {
    if (!c.solving) nameNodes(c.root);
}

void normalise(const CNodePtr& root) {
    if (root) normaliseNode(root, true);
}

void edit(Circuit& c, const std::string& op, const std::string& kind) {
    if (c.sel.empty() || !c.root) return;
    CNodePtr node, parent;
    if (!find(c.root, c.sel, &node, &parent)) return;
    const bool isRoot = node == c.root;

    if (op == "up") {
        c.sel = parent ? parent->id : node->id;
        return;
    }
    if (op == "del") {
        if (isRoot) {
            node->ch.clear();
            c.sel.clear();
        } else {
            auto& ch = parent->ch;
            ch.erase(std::remove(ch.begin(), ch.end(), node), ch.end());
            c.sel = parent == c.root ? std::string() : parent->id;
        }
    } else if (op == "ser" || op == "par") {
        static const char* const kLeafKinds[] = {"R", "L", "C", "A", "V"};
        if (std::find(std::begin(kLeafKinds), std::end(kLeafKinds), kind) == std::end(kLeafKinds)) return;
        const std::string want = op == "ser" ? "S" : "P";
        CNodePtr leaf = makeNode(kind);
        if (isRoot && (want == "S" || node->ch.empty())) {
            node->ch.push_back(leaf);
        } else if (isRoot) {
            // The root stays; what it held becomes one branch beside the new leaf.
            CNodePtr old = makeNode("S");
            old->ch = node->ch;
            CNodePtr par = makeNode("P");
            par->ch = {old, leaf};
            node->ch = {par};
        } else if (parent->k == want) {
            auto& ch = parent->ch;
            ch.insert(std::find(ch.begin(), ch.end(), node) + 1, leaf);
        } else {
            CNodePtr g = makeNode(want);
            g->ch = {node, leaf};
            std::replace(parent->ch.begin(), parent->ch.end(), node, g);
        }
        c.sel = leaf->id;
    } else {
        return;
    }
    normalise(c.root);
    c.root->id = "root";
    if (!c.sel.empty() && !find(c.root, c.sel, nullptr, nullptr)) c.sel.clear();
}

std::string storeKeyFor(const std::string& mode) {
    return mode == "ac" ? key::KredsAc : key::Kreds;
}

Circuit loadCircuit(const std::string& requested) {
    std::string mode = requested;
    Circuit read;
    bool ok;
    if (mode.empty()) {
        ok = fromJson(storeGet(key::Kreds), read);
        mode = ok ? read.mode : "dc";
    } else {
        ok = fromJson(storeGet(storeKeyFor(mode)), read);
    }
    if (ok && mode == "dc" && read.mode == "ac") {
        // An older version kept its alternating-current circuit under "kreds".
        if (!storeGet(key::KredsAc).isObject()) storeSet(key::KredsAc, toJson(read));
        ok = false;
    }
    if (!ok && mode == "ac") {
        Circuit old;
        if (fromJson(storeGet(key::Kreds), old) && old.mode == "ac") {
            read = old;
            ok = true;
        }
    }
    Circuit out = ok ? read : defaultCircuit(mode);
    out.mode = mode == "ac" ? "ac" : "dc";
    return out;
}

Circuit& currentCircuit() {
    if (!g_current) g_current = loadCircuit("");
    return *g_current;
}

void setCircuit(const Circuit& c) {
    g_current = c;
    if (!g_current->root) g_current->root = defaultCircuit(c.mode).root;
}

void saveCircuit() {
    Circuit& c = currentCircuit();
    if (c.solving) return;
    storeSet(storeKeyFor(c.mode), toJson(c));
}

void switchMode(const std::string& mode) {
    const std::string want = mode == "ac" ? "ac" : "dc";
    if (g_current) {
        if (g_current->solving || g_current->mode == want) return;
        saveCircuit();
    }
    g_current = loadCircuit(want);
}

void resetCurrentCircuitForTest() {
    g_current.reset();
}

std::vector<std::string> savedCircuitNames() {
    std::vector<std::string> names;
    const Json saved = storeGet(key::KredsSaved);
    for (const auto& [name, value] : saved.asObject())
        names.push_back(name);
    return names;
}

bool saveCircuitAs(const std::string& name, const Circuit& c) {
    const std::string key = trimmed(name);
    if (key.empty()) return false;
    Json saved = storeGet(key::KredsSaved);
    if (!saved.isObject()) saved = Json::object();
    saved[key] = toJson(c);
    storeSet(key::KredsSaved, saved);
    return true;
}

bool openSavedCircuit(const std::string& name, Circuit& out) {
    return fromJson(storeGet(key::KredsSaved).at(trimmed(name)), out);
}

bool renameSavedCircuit(const std::string& from, const std::string& to) {
    const std::string oldKey = trimmed(from), newKey = trimmed(to);
    Json saved = storeGet(key::KredsSaved);
    if (newKey.empty() || newKey == oldKey || !saved.has(oldKey)) return false;
    saved[newKey] = saved.at(oldKey);
    saved.obj.erase(oldKey);
    storeSet(key::KredsSaved, saved);
    return true;
}

void removeSavedCircuit(const std::string& name) {
    Json saved = storeGet(key::KredsSaved);
    if (saved.obj.erase(trimmed(name))) storeSet(key::KredsSaved, saved);
}

} // namespace fl
