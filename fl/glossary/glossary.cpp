// The glossary table joined from its parts, the folded search and the page
// markup. Each entry's search text is folded once, so a keystroke costs one
// substring scan per entry.
#include "fl/glossary/glossary.h"

#include "fl/expr/markup.h"
#include "fl/formulas/lists.h"
#include "fl/glossary/entries.h"

#include <algorithm>

namespace fl {

namespace {

std::vector<GlossaryEntry> buildGlossary() {
    std::vector<GlossaryEntry> out;
    for (auto part : {entries::basics, entries::alternating, entries::trade}) {
        for (const entries::Group& g : part()) {
            for (const entries::Row& r : g.rows)
                out.push_back({r.term, r.symbol, r.unit, r.formula, r.text, g.section, g.name, r.links});
        }
    }
    return out;
}

// What the search looks in, folded: term, symbol, formula and text, tags gone.
const std::vector<std::string>& haystacks() {
    static const std::vector<std::string> list = [] {
        std::vector<std::string> out;
        for (const GlossaryEntry& e : glossary())
            out.push_back(foldDanish(e.term + "\n" + stripTags(e.symbol) + "\n" + stripTags(e.formula) + "\n" +
                                     stripTags(e.text)));
        return out;
    }();
    return list;
}

// The two-byte UTF-8 letters the fold knows, each with its ASCII spelling.
struct Fold {
    unsigned char lead, trail;
    const char* ascii;
};
constexpr Fold kFolds[] = {
    {0xC3, 0xA6, "ae"}, {0xC3, 0x86, "ae"}, // æ Æ
    {0xC3, 0xB8, "oe"}, {0xC3, 0x98, "oe"}, // ø Ø
    {0xC3, 0xA5, "aa"}, {0xC3, 0x85, "aa"}, // å Å
    {0xC3, 0xA4, "ae"}, {0xC3, 0x84, "ae"}, // ä Ä
    {0xC3, 0xB6, "oe"}, {0xC3, 0x96, "oe"}, // ö Ö
    {0xC3, 0xBC, "u"},  {0xC3, 0x9C, "u"},  // ü Ü
    {0xC3, 0xA9, "e"},  {0xC3, 0x89, "e"},  // é É
};

std::string routeTitle(const std::string& route) {
    const Tile* t = findFamilyOrTile(route);
    return t ? t->name : std::string();
}

std::string card(const GlossaryEntry& e) {
    std::string html = "<div class=\"card\"><p><b style=\"font-size:12pt\">" + e.term + "</b>";
    if (!e.symbol.empty()) html += " <span class=\"glsymb\">" + symbolHtml(e.symbol) + "</span>";
    if (!e.unit.empty()) html += " <span class=\"crumb\">[" + e.unit + "]</span>";
    html += "</p>";
    if (!e.formula.empty()) html += "<p class=\"glf\">" + symbolHtml(e.formula) + "</p>";
    html += "<p>" + symbolHtml(e.text) + "</p><p>";
    for (const std::string& route : e.links) {
        const std::string title = routeTitle(route);
        if (title.empty()) continue;
        html += "<a class=\"chip\" href=\"go:" + route + "\">→ " + symbolHtml(title) + "</a> &nbsp; ";
    }
    html += "</p></div>";
    return html;
}

bool isBlank(const std::string& s) {
    return std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) <= ' '; });
}

} // namespace

const std::vector<GlossaryEntry>& glossary() {
    static const std::vector<GlossaryEntry> table = buildGlossary();
    return table;
}

const std::vector<std::string>& glossarySections() {
    static const std::vector<std::string> list{"Grundbegreber",  "Jævnstrøm", "Vekselstrøm",
                                               "Energi og pris", "Matematik", "Installation"};
    return list;
}

std::string foldDanish(std::string_view text) {
    std::string out;
    out.reserve(text.size() + 8);
    for (size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c < 0x80) {
            out += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
            continue;
        }
        bool folded = false;
        if (i + 1 < text.size()) {
            const auto next = static_cast<unsigned char>(text[i + 1]);
            for (const Fold& f : kFolds) {
                if (f.lead == c && f.trail == next) {
                    out += f.ascii;
                    ++i;
                    folded = true;
                    break;
                }
            }
        }
        // Other letters (φ, Ω, µ) are kept as they are; they only match themselves.
        if (!folded) out += static_cast<char>(c);
    }
    return out;
}

const GlossaryEntry* findGlossaryEntry(const std::string& key) {
    const std::string want = foldDanish(key);
    for (const GlossaryEntry& e : glossary())
        if (foldDanish(e.term) == want) return &e;
    return nullptr;
}

bool glossaryEntryOpen(const GlossaryEntry& e, const KeyOpen& open) {
    if (!open) return true;
    return open("gle:" + e.term) && open("gl:" + e.section + "|" + e.group);
}

std::vector<size_t> searchGlossary(const std::string& query, const KeyOpen& open) {
    // Blanks at the ends are the keyboard's, not the student's.
    const size_t a = query.find_first_not_of(" \t\r\n");
    const size_t b = query.find_last_not_of(" \t\r\n");
    const std::string needle = a == std::string::npos ? std::string() : foldDanish(query.substr(a, b - a + 1));
    const auto& all = glossary();
    const auto& hay = haystacks();
    std::vector<size_t> hits;
    for (size_t i = 0; i < all.size(); ++i) {
        if (!needle.empty() && hay[i].find(needle) == std::string::npos) continue;
        if (glossaryEntryOpen(all[i], open)) hits.push_back(i);
    }
    return hits;
}

std::vector<std::string> openGlossarySections(const KeyOpen& open) {
    std::vector<std::string> out;
    for (const std::string& section : glossarySections()) {
        for (const GlossaryEntry& e : glossary()) {
            if (e.section == section && glossaryEntryOpen(e, open)) {
                out.push_back(section);
                break;
            }
        }
    }
    return out;
}

std::string glossaryHtml(const std::string& search, const std::string& section, const KeyOpen& open) {
    const auto& all = glossary();
    std::string html;
    if (isBlank(search)) {
        std::string group;
        for (const GlossaryEntry& e : all) {
            if (e.section != section || !glossaryEntryOpen(e, open)) continue;
            if (e.group != group) {
                group = e.group;
                html += "<h3 class=\"sh\">" + group + "</h3>";
            }
            html += card(e);
        }
        return html;
    }
    const std::vector<size_t> hits = searchGlossary(search, open);
    if (hits.empty()) return "<p class=\"hint\">Ingen resultater.</p>";
    html = "<p class=\"hint0\">" + std::to_string(hits.size()) + " ord i alle emner matcher \"" +
           htmlEscape(search) + "\".</p>";
    std::string group;
    for (size_t i : hits) {
        if (all[i].group != group) {
            group = all[i].group;
            html += "<p class=\"hint0\" style=\"margin-top:10px\"><b>" + group + "</b></p>";
        }
        html += card(all[i]);
    }
    return html;
}

std::string glossaryEntryHtml(const std::string& key, const KeyOpen& open) {
    const GlossaryEntry* e = findGlossaryEntry(key);
    if (e && glossaryEntryOpen(*e, open))
        return "<p class=\"hint0\">" + e->section + " · " + e->group + "</p>" + card(*e);
    std::string html = e ? msgBox("Din lærer har slået ordet \"" + htmlEscape(e->term) + "\" fra lige nu.", true)
                         : msgBox("Ordet \"" + htmlEscape(key) + "\" findes ikke i ordlisten.", true);
    const std::vector<size_t> hits = searchGlossary(key, open);
    if (!hits.empty()) {
        html += "<p class=\"hint0\">Måske et af disse:</p><p>";
        for (size_t i = 0; i < hits.size() && i < 8; ++i) {
            const std::string& term = glossary()[hits[i]].term;
            html += "<a class=\"chip\" href=\"gls:" + term + "\">" + term + "</a> &nbsp; ";
        }
        html += "</p>";
    }
    return html;
}

} // namespace fl
