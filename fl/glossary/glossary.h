// The dictionary of the trade: every term with its symbol, unit, formula,
// a plain explanation and the routes where it is used, in six sections of
// groups; the search that finds a term with or without the Danish letters
// typed; and the markup of the glossary page. The page itself is in app/;
// what the teacher has closed is asked through the predicate passed in.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fl {

struct GlossaryEntry {
    std::string term;    // the headword, also the key of "gls:" links
    std::string symbol;  // may be empty
    std::string unit;    // may be empty
    std::string formula; // display text such as "U = I · R"; may be empty
    std::string text;
    std::string section;
    std::string group;
    std::vector<std::string> links; // routes or family keys of the "→" chips
};

// All entries in display order: section by section, group by group.
const std::vector<GlossaryEntry>& glossary();
// "Grundbegreber", "Jævnstrøm", "Vekselstrøm", "Energi og pris", "Matematik", "Installation".
const std::vector<std::string>& glossarySections();
// The entry whose term is `key`, compared as the search compares; null when none.
const GlossaryEntry* findGlossaryEntry(const std::string& key);

// Lower case with æ, ø, å written ae, oe, aa (and é, ü, ö, ä folded likewise),
// so that "spaendingsfald" and "Spændingsfald" meet.
std::string foldDanish(std::string_view text);

// The teacher's closing: true when a key ("gl:" + section + "|" + group,
// "gle:" + term) is open.
using KeyOpen = std::function<bool(const std::string& key)>;
bool glossaryEntryOpen(const GlossaryEntry& e, const KeyOpen& open);

// Indices into glossary() of the open entries whose term, symbol, formula or
// text holds `query`, folded; every open entry for a blank query.
std::vector<size_t> searchGlossary(const std::string& query, const KeyOpen& open);

// The page's document: with a blank search the chosen section group by
// group, otherwise the hits of all sections with their count.
std::string glossaryHtml(const std::string& search, const std::string& section, const KeyOpen& open);
// One entry opened by a "gls:" link; a key that names no open entry says so
// and offers what the search finds for it.
std::string glossaryEntryHtml(const std::string& key, const KeyOpen& open);
// The sections that hold at least one open entry, in order.
std::vector<std::string> openGlossarySections(const KeyOpen& open);

} // namespace fl
