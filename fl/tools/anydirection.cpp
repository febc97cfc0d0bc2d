// Shared by the any-direction tools: how a solved chain is checked and shown.
#include "fl/tools/anydirection.h"

namespace fl::anydir {

const ToolQuantity* find(const std::vector<ToolQuantity>& table, const std::string& key) {
    for (const ToolQuantity& q : table)
        if (q.key == key) return &q;
    return nullptr;
}

ChainSetup setupFor(const std::vector<ToolQuantity>& table, const std::map<std::string, std::string>& shown) {
    ChainSetup setup;
    setup.unitOf = [&table](const std::string& key) {
        const ToolQuantity* q = find(table, key);
        return q ? q->unit : std::string();
    };
    setup.shown = shown;
    return setup;
}

Checked check(const ChainResult& chain, const std::map<std::string, double>& vars, const ChainSetup& setup) {
    Checked out;
    for (const ChainMismatch& m : chainMismatches(chain, vars, setup))
        (m.conflict ? out.conflicts : out.nearMisses).push_back(m.line);
    return out;
}

std::string lines(const std::vector<std::string>& list) {
    std::string out;
    for (const std::string& l : list) {
        if (!out.empty()) out += "<br>";
        out += l;
    }
    return out;
}

std::vector<std::string> unknownOf(const std::map<std::string, double>& vars,
                                   const std::vector<std::string>& keys) {
    std::vector<std::string> out;
    for (const std::string& k : keys)
        if (!vars.count(k)) out.push_back(k);
    return out;
}

std::string knownGrid(const std::vector<ToolQuantity>& table, const std::map<std::string, double>& vars,
                      const std::set<std::string>& given) {
    std::vector<KvItem> items;
    for (const ToolQuantity& q : table) {
        auto it = vars.find(q.key);
        if (it == vars.end()) continue;
        items.push_back(
            {tool::symbolHtml(q.key), tool::formatValue(it->second, q.unit), !given.count(q.key)});
    }
    return kvGrid(items, 4);
}

std::vector<RecentValue> found(const std::vector<ToolQuantity>& table,
                               const std::map<std::string, double>& vars,
                               const std::set<std::string>& given) {
    std::vector<RecentValue> out;
    for (const ToolQuantity& q : table) {
        auto it = vars.find(q.key);
        if (it != vars.end() && !given.count(q.key)) out.push_back({q.key, it->second, q.unit});
    }
    return out;
}

MachineValues drawn(const std::map<std::string, double>& vars, const std::set<std::string>& given) {
    MachineValues v{vars, {}};
    for (const auto& [key, value] : vars)
        if (!given.count(key)) v.found.insert(key);
    return v;
}

std::string figureWithFound(FigureOut&& fig) {
    if (fig.empty()) return {};
    return figureMarkup(std::move(fig)) + "<p class=\"crumb center\">Blå værdier er fundet ved udregning</p>";
}

void finishWithNotes(ToolOut& out, const ToolSheet& sheet, const std::string& notes,
                     std::vector<RecentValue> recent) {
    finish(out, sheet, std::move(recent));
    static const std::string kOpen = "<div class=\"result\">";
    out.html.insert(kOpen.size(), notes);
}

} // namespace fl::anydir
