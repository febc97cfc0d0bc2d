// Circuit to JSON and back. The reader is strict about the shape (an object
// with "src" and a "root" that has "ch") and lenient about members: a member
// that is missing or isn't a string reads as empty text.
#include "fl/circuit/json.h"

#include <algorithm>

namespace fl {

namespace {

const std::string& member(const Json& obj, const char* key) {
    return obj.at(key).asString();
}

bool knownKind(const std::string& k) {
    static const char* const kKinds[] = {"S", "P", "R", "L", "C", "A", "V"};
    return std::find(std::begin(kKinds), std::end(kKinds), k) != std::end(kKinds);
}

void readFields(const Json& j, CNode& n) {
    n.id = member(j, "id");
    n.U = member(j, "U");
    n.I = member(j, "I");
    n.P = member(j, "P");
    if (n.group) {
        n.R = member(j, "R");
    } else {
        n.v = member(j, "v");
        n.r = member(j, "r");
    }
}

} // namespace

Json nodeToJson(const CNodePtr& node) {
    Json j = Json::object();
    j["k"] = node->k;
    j["id"] = node->id;
    if (node->group) {
        Json ch = Json::array();
        for (const CNodePtr& c : node->ch)
            ch.push(nodeToJson(c));
        j["ch"] = std::move(ch);
        j["U"] = node->U;
        j["I"] = node->I;
        j["P"] = node->P;
        j["R"] = node->R;
    } else {
        j["v"] = node->v;
        j["U"] = node->U;
        j["I"] = node->I;
        j["P"] = node->P;
        j["r"] = node->r;
    }
    return j;
}

Json toJson(const Circuit& c) {
    Json j = Json::object();
    j["mode"] = c.mode;
    Json src = Json::object();
    for (const auto& [key, text] : c.src)
        src[key] = text;
    j["src"] = std::move(src);
    j["root"] = c.root ? nodeToJson(c.root) : Json::object();
    j["sel"] = c.sel.empty() ? Json() : Json(c.sel);
    return j;
}

bool fromJson(const Json& value, Circuit& out) {
    if (!value.isObject()) return false;
    const Json& rootJ = value.at("root");
    if (!rootJ.isObject() || !rootJ.at("ch").isArray() || !value.at("src").isObject()) return false;

    Circuit c = defaultCircuit();
    c.mode = value.at("mode").isString() && member(value, "mode") == "ac" ? "ac" : "dc";
    for (const auto& [key, text] : value.at("src").asObject())
        c.src[key] = text.asString();

    auto root = std::make_shared<CNode>();
    root->k = member(rootJ, "k") == "P" ? "P" : "S";
    root->group = true;
    readFields(rootJ, *root);
    root->id = "root";

    // Iterative, so that no file can exhaust the stack.
    struct Pending {
        const Json* json;
        CNode* node;
        int depth;
    };
    std::vector<Pending> stack{{&rootJ, root.get(), 1}};
    size_t count = 1;
    while (!stack.empty()) {
        Pending p = stack.back();
        stack.pop_back();
        const Json::array_t& kids = p.json->at("ch").asArray();
        if (p.depth >= kMaxCircuitDepth && !kids.empty()) return false;
        for (const Json& kj : kids) {
            if (!kj.isObject() || ++count > kMaxCircuitNodes) return false;
            auto n = std::make_shared<CNode>();
            n->k = member(kj, "k");
            n->group = kj.at("ch").isArray();
            if (!knownKind(n->k) || n->group != (n->k == "S" || n->k == "P")) return false;
            readFields(kj, *n);
            p.node->ch.push_back(n);
            if (n->group) stack.push_back({&kj, n.get(), p.depth + 1});
        }
    }
    c.root = root;
    c.sel = member(value, "sel");
    noteIds(c.root);
    out = std::move(c);
    return true;
}

std::string toText(const Circuit& c) {
    return Json::dump(toJson(c), 0);
}

bool fromText(const std::string& text, Circuit& out) {
    Json j;
    return Json::tryParse(text, j) && fromJson(j, out);
}

} // namespace fl
