// Explanation texts on the formula cards: what each family is used for, and
// what each of its letters means. Plain Danish with a little HTML (<sub>, <b>);
// the cards place them, the catalogue owns the names and units beside them.
#pragma once

#include <string>
#include <vector>

namespace fl {

struct QuantityHelp {
    std::string symbol;
    std::string text;
};

struct FamilyHelp {
    std::string key;
    std::string purpose;
    std::vector<QuantityHelp> quantities;
};

// All blocks, in catalogue order, built once.
const std::vector<FamilyHelp>& familyHelp();

// Empty when the family has no text.
std::string familyPurpose(const std::string& key);
// Empty when the family or the symbol has no text.
std::string quantityHelp(const std::string& key, const std::string& symbol);

} // namespace fl
