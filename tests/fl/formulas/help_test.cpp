// The explanation table against the catalogue: every family and every letter
// has a text, nothing is keyed by a name the catalogue lacks (so a typo can't
// hide a missing text), and every text is finished card prose.
#include "fl/formulas/help.h"

#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kPurposeLimit = 200;
constexpr std::size_t kQuantityLimit = 160;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Characters a reader sees: code points outside tags.
std::size_t visibleLength(const std::string& html) {
    const std::string text = fl::stripTags(html);
    return std::count_if(text.begin(), text.end(), [](unsigned char c) { return (c & 0xC0) != 0x80; });
}

// The first thing wrong with a card text, or "" when it is fine.
std::string problem(const std::string& text, std::size_t limit) {
    if (text.empty()) return "tom";
    if (std::isspace(static_cast<unsigned char>(text.front())) ||
        std::isspace(static_cast<unsigned char>(text.back())))
        return "blanktegn i kanten";
    if (text.find("  ") != std::string::npos) return "dobbelt mellemrum";
    if (text.back() != '.') return "mangler punktum";
    if (visibleLength(text) > limit) return "for lang";

    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const char c = text[i];
        const char next = text[i + 1];
        const char prev = i > 0 ? text[i - 1] : ' ';
        // A hyphen joins words ("3-faset", "30°-60°"); before a digit after
        // anything else it stands for a minus or a range, which want − and –.
        if (c == '-' && isDigit(next) && !isAsciiLetter(prev) && static_cast<unsigned char>(prev) < 0x80)
            return "bindestreg som minus";
        if (c == '.' && isDigit(prev) && isDigit(next)) return "decimalpunktum";
    }
    for (const char* unit : {"V", "A", "W", "Ω", "Hz", "mm", "%"}) {
        for (std::size_t at = text.find(unit); at != std::string::npos; at = text.find(unit, at + 1))
            if (at > 0 && isDigit(text[at - 1])) return "enhed uden mellemrum";
    }

    std::vector<std::string> open;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        const std::size_t end = text.find('>', at);
        if (end == std::string::npos) return "ulukket tag";
        std::string tag = text.substr(at + 1, end - at - 1);
        const bool closing = !tag.empty() && tag.front() == '/';
        if (closing) tag.erase(0, 1);
        if (tag != "sub" && tag != "sup" && tag != "b" && tag != "i") return "ukendt tag";
        if (!closing)
            open.push_back(tag);
        else if (open.empty() || open.back() != tag)
            return "ubalanceret tag";
        else
            open.pop_back();
    }
    if (!open.empty()) return "ubalanceret tag";
    return "";
}

std::string lower(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// A reviewer reads the table beside the catalogue, block for block; so every
// family and every letter has its text, and no text is keyed by a name the
// catalogue lacks.
TEST(FamilyHelp, tableFollowsCatalogueOrder) {
    const auto& table = fl::familyHelp();
    const auto& cat = fl::catalogue();
    ASSERT_EQ(table.size(), cat.size());
    for (std::size_t i = 0; i < table.size(); ++i) {
        SCOPED_TRACE(cat[i].key);
        ASSERT_EQ(table[i].key, cat[i].key);
        EXPECT_EQ(fl::familyPurpose(cat[i].key), table[i].purpose);
        ASSERT_EQ(table[i].quantities.size(), cat[i].vars.size());
        for (std::size_t j = 0; j < table[i].quantities.size(); ++j) {
            EXPECT_EQ(table[i].quantities[j].symbol, cat[i].vars[j].symbol);
            EXPECT_EQ(fl::quantityHelp(cat[i].key, cat[i].vars[j].symbol), table[i].quantities[j].text);
        }
    }
}

TEST(FamilyHelp, textsAreFinishedCardProse) {
    for (const fl::FamilyHelp& h : fl::familyHelp()) {
        SCOPED_TRACE(h.key);
        EXPECT_EQ(problem(h.purpose, kPurposeLimit), "") << h.purpose;
        const fl::Formula* f = fl::findFormula(h.key);
        for (const fl::QuantityHelp& q : h.quantities) {
            SCOPED_TRACE(q.symbol);
            EXPECT_EQ(problem(q.text, kQuantityLimit), "") << q.text;
            // The card prints the name just above; the line must add to it.
            if (const fl::FormulaVar* v = f ? fl::findVar(*f, q.symbol) : nullptr) {
                EXPECT_NE(lower(q.text), lower(v->name) + ".");
            }
        }
    }
}

} // namespace
