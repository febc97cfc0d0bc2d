// Lookup in the explanation table. The table is small and read only when a
// card is drawn, so a linear search by key is enough.
#include "fl/formulas/help.h"

#include "fl/formulas/help_blocks.h"

#include <algorithm>
#include <iterator>

namespace fl {

const std::vector<FamilyHelp>& familyHelp() {
    static const std::vector<FamilyHelp> table = [] {
        std::vector<FamilyHelp> all;
        for (auto part : {help::electricBlocks, help::mathBlocks, help::tradeBlocks}) {
            auto blocks = part();
            all.insert(all.end(), std::make_move_iterator(blocks.begin()),
                       std::make_move_iterator(blocks.end()));
        }
        return all;
    }();
    return table;
}

namespace {

const FamilyHelp* findHelp(const std::string& key) {
    const auto& table = familyHelp();
    auto it = std::find_if(table.begin(), table.end(), [&](const FamilyHelp& h) { return h.key == key; });
    return it == table.end() ? nullptr : &*it;
}

} // namespace

std::string familyPurpose(const std::string& key) {
    const FamilyHelp* h = findHelp(key);
    return h ? h->purpose : std::string();
}

std::string quantityHelp(const std::string& key, const std::string& symbol) {
    const FamilyHelp* h = findHelp(key);
    if (!h) return {};
    for (const QuantityHelp& q : h->quantities)
        if (q.symbol == symbol) return q.text;
    return {};
}

} // namespace fl
