// The glossary: its table against the lists that point into it, the folded
// search, the teacher's keys and the page markup.
#include "fl/glossary/glossary.h"

#include "fl/formulas/catalogue.h"
#include "fl/formulas/lists.h"
#include "tests/fl/formulas/markup_util.h"

#include <gtest/gtest.h>

#include <set>

namespace fl {
namespace {

using namespace markup_util;

std::vector<std::string> termsOf(const std::vector<size_t>& hits) {
    std::vector<std::string> out;
    for (size_t i : hits)
        out.push_back(glossary()[i].term);
    return out;
}

const KeyOpen allOpen = [](const std::string&) { return true; };

TEST(GlossaryTable, sectionsComeInOrderAndEveryEntryIsWhole) {
    const auto& sections = glossarySections();
    std::set<std::string> folded;
    size_t section = 0;
    for (const GlossaryEntry& e : glossary()) {
        SCOPED_TRACE(e.term);
        while (section < sections.size() && sections[section] != e.section)
            ++section;
        ASSERT_LT(section, sections.size()) << "sections out of order or unknown: " << e.section;
        EXPECT_TRUE(folded.insert(foldDanish(e.term)).second) << "two entries answer the same gls: key";
        EXPECT_GT(e.text.size(), 120u) << "an explanation of a few sentences";
        EXPECT_EQ(e.text.back(), '.');
        for (const std::string& route : e.links)
            EXPECT_NE(findFamilyOrTile(route), nullptr) << "a chip to nowhere: " << route;
    }
    EXPECT_EQ(glossary().size(), 150u);
    EXPECT_EQ(openGlossarySections(allOpen), sections);
}

// A teacher's key of an unknown kind, or one that names no exercise group,
// glossary group or term, would switch nothing off.
TEST(GlossaryTable, everyTeacherKeyClosesSomething) {
    for (const Topic& topic : topics()) {
        for (const std::string& key : topic.keys) {
            SCOPED_TRACE(topic.id + " " + key);
            const size_t colon = key.find(':');
            const std::string kind = key.substr(0, colon + 1), rest = key.substr(colon + 1);
            bool hit = kind == "circ:" || kind == "tekst:";
            if (kind == "gle:") hit = findGlossaryEntry(rest) != nullptr;
            for (const GlossaryEntry& e : glossary()) {
                const std::string own = e.section + "|" + e.group;
                hit = hit || (kind == "gl:" && (rest.back() == '|' ? own.rfind(rest, 0) == 0 : own == rest));
            }
            // "sub:" + group + "|" + topic, the topic empty for the whole group.
            const size_t bar = rest.find('|');
            for (const Formula& f : catalogue())
                hit = hit || (kind == "sub:" && bar != std::string::npos && f.group == rest.substr(0, bar) &&
                              (bar + 1 == rest.size() || f.topic == rest.substr(bar + 1)));
            EXPECT_TRUE(hit);
        }
    }
}

TEST(GlossaryFold, danishLettersMeetTheirSpellings) {
    const struct {
        const char* in;
        const char* out;
    } rows[] = {
        {"Spændingsfald", "spaendingsfald"}, {"ØRESUND Å", "oeresund aa"}, {"Måling", "maaling"},
        {"Ohm's LOV", "ohm's lov"},          {"φ Ω µ", "φ Ω µ"},           {"\xc3", "\xc3"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(foldDanish(row.in), row.out) << row.in;
}

TEST(GlossarySearch, findsWithAndWithoutDanishLetters) {
    const struct {
        const char* name;
        const char* query;
        const char* term;
    } rows[] = {
        {"asciiSpelling", "spaendingsfald", "Spændingsfald"},
        {"onlyInTheExplanation", "vandtrykket", "Spænding"},
        {"inTheFormula", "U_L / IΔn", "Overgangsmodstand til jord"},
        {"symbolBehindATag", "f0", "Resonans"},
        {"blanksAroundIgnored", "  kirchhoff ", "Kirchhoffs 2. lov"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto terms = termsOf(searchGlossary(row.query, allOpen));
        EXPECT_NE(std::find(terms.begin(), terms.end(), row.term), terms.end()) << row.query;
    }
    EXPECT_EQ(searchGlossary("xyzzy", allOpen).size(), 0u);
    EXPECT_EQ(searchGlossary(" ", allOpen).size(), glossary().size());
}

TEST(GlossarySearch, theTeachersKeysHideEntriesAndGroups) {
    const KeyOpen closed = [](const std::string& key) {
        return key != "gle:Kompensering" && key != "gl:Vekselstrøm|Transformer";
    };
    const auto terms = termsOf(searchGlossary("", closed));
    EXPECT_EQ(std::count(terms.begin(), terms.end(), "Kompensering"), 0);
    EXPECT_EQ(std::count(terms.begin(), terms.end(), "Omsætningsforhold"), 0);
    EXPECT_EQ(std::count(terms.begin(), terms.end(), "Overkompensering"), 1);
    EXPECT_EQ(terms.size(), glossary().size() - 6);

    const KeyOpen mathsOff = [](const std::string& key) { return key.rfind("gl:Matematik|", 0) != 0; };
    const auto open = openGlossarySections(mathsOff);
    EXPECT_EQ(std::count(open.begin(), open.end(), "Matematik"), 0);
    EXPECT_EQ(glossaryHtml("", "Matematik", mathsOff), "");
}

TEST(GlossaryMarkup, aSectionShowsItsGroupsAndCards) {
    const std::string html = glossaryHtml("", "Jævnstrøm", allOpen);
    EXPECT_EQ(count(html, "<h3 class=\"sh\">"), 3u);
    EXPECT_EQ(count(html, "<div class=\"card\">"), 16u);
    EXPECT_EQ(
        html.rfind("<h3 class=\"sh\">Forbindelser</h3><div class=\"card\"><p><b style=\"font-size:12pt\">"
                   "Serieforbindelse</b> <span class=\"glsymb\">R<sub>total</sub></span> <span "
                   "class=\"crumb\">[Ω]</span></p><p class=\"glf\">",
                   0),
        0u);
    EXPECT_TRUE(has(html, "<a class=\"chip\" href=\"go:par2\">→ To modstande i parallel</a> &nbsp; "));
}

TEST(GlossaryMarkup, anEntryWithoutSymbolOrFormulaHasNoEmptySpans) {
    const std::string html = glossaryEntryHtml("Kredsløb", allOpen);
    EXPECT_FALSE(has(html, "glsymb"));
    EXPECT_FALSE(has(html, "class=\"crumb\">["));
    EXPECT_FALSE(has(html, "class=\"glf\""));
}

TEST(GlossaryMarkup, searchCountsItsHitsAndEscapesTheQuery) {
    const std::string html = glossaryHtml("spaendingsfald", "Grundbegreber", allOpen);
    const size_t hits = searchGlossary("spaendingsfald", allOpen).size();
    EXPECT_EQ(html.rfind("<p class=\"hint0\">" + std::to_string(hits) +
                             " ord i alle emner matcher \"spaendingsfald\".</p>",
                         0),
              0u);
    EXPECT_EQ(count(html, "<div class=\"card\">"), hits);
    EXPECT_TRUE(has(html, "<p class=\"hint0\" style=\"margin-top:10px\"><b>Ledninger</b></p>"));
    EXPECT_EQ(glossaryHtml("<b>x", "", allOpen), "<p class=\"hint\">Ingen resultater.</p>");
}

TEST(GlossaryMarkup, aLinkToAMissingOrClosedTermSaysSo) {
    const std::string missing = glossaryEntryHtml("Fluxkompensator", allOpen);
    EXPECT_TRUE(has(missing, "Ordet \"Fluxkompensator\" findes ikke i ordlisten."));
    const std::string near = glossaryEntryHtml("Kirchhoff", allOpen);
    EXPECT_TRUE(has(near, "href=\"gls:Kirchhoffs 1. lov\"")) << "what the search finds is offered";
    const KeyOpen closed = [](const std::string& key) { return key != "gle:Slip"; };
    EXPECT_TRUE(has(glossaryEntryHtml("slip", closed), "Din lærer har slået ordet \"Slip\" fra lige nu."));
    EXPECT_TRUE(
        has(glossaryEntryHtml("spaendingsfald", allOpen), "<b style=\"font-size:12pt\">Spændingsfald</b>"));
}

} // namespace
} // namespace fl
