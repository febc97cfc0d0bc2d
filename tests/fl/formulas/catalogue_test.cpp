// The catalogue as data: its order, each family's group and topic, and the
// records' internal consistency. Parsing and evaluating the forms is in
// catalogue_forms_test.cpp.
#include "fl/formulas/catalogue.h"

#include "fl/formulas/lists.h"
#include "tests/fl/formulas/markup_util.h"

#include <gtest/gtest.h>

#include <set>

namespace {

const char* const El = "El-lære";
const char* const Mat = "Matematik";
const char* const Tre = "Trefaset";

// Every family in the book's order, in runs of one group and topic. The
// topics are assigned from lists of keys, so this also checks those lists.
struct Run {
    const char* group;
    const char* topic;
    std::vector<const char*> keys;
};

const Run kRuns[] = {
    {El,
     "Jævnstrøm",
     {"ohm", "power", "powerR", "powerU", "par2", "formod", "shunt", "wire", "qd", "vd1", "vd2", "vd3"}},
    {El, "Batteri", {"batt", "battE", "ik", "cells"}},
    {El, "Transformer", {"trU", "trI", "trR", "S"}},
    {El, "Vekselspænding", {"eff"}},
    {El, "Vekselstrøm", {"XL",  "XC",   "ZRL",  "ZRC",  "ZRLC", "Zcoil", "URL", "URC", "URLC", "ULX",
                         "UCX", "cosZ", "cosU", "cosP", "phi",  "Pac",   "Qac", "SPQ", "QX",   "QUI"}},
    {El, "Parallel vekselstrøm", {"pRL", "pRC", "pRLC", "pcos"}},
    {El, "Vekselstrøm", {"reson"}},
    {Mat, "Trekanter og trigonometri", {"pyth", "sinV", "cosV", "tanV", "t45", "t30h", "t30l"}},
    {Mat, "Arealer", {"triA", "triS", "heron", "trap", "paral", "rect", "rhomb", "square"}},
    {Mat, "Polygoner", {"polyV", "polyS", "polyA"}},
    {Mat, "Cirkler", {"circO", "circA", "circAd", "arc", "sector", "segment"}},
    {Mat, "Vektorer", {"vecL", "vecX", "vecY"}},
    {Tre, "Trefaset effekt", {"tfS", "tfP", "tfQ"}},
    {Tre, "Stjerne og trekant", {"tfUY", "tfID", "tfR"}},
    {Tre, "Trefaset effekt", {"tfPf", "tfSf", "tfQf"}},
    {Tre, "Stjerne og trekant", {"tfPDY", "tfIDY"}},
    {Tre, "Fejl", {"tfFY", "tfFD1", "tfFD2", "tfHalf", "tf23"}},
    {El, "Kompensering", {"kompQ", "kompC"}},
    {El, "Energi og pris", {"enE", "enJ", "enAar", "enPris", "enBes", "enTilb", "enEta"}},
    {El,
     "Motorer",
     {"motNs", "motSlip", "motFr", "motEta", "motTab", "motI3", "motI1", "motM", "motStart", "motYD"}},
    {El, "Vekselspænding", {"acT", "acW", "acSS", "acMid", "acForm", "acInst", "acVinkel"}},
    {El, "Installationstest", {"instRe", "instIa", "instZs"}},
};

struct Expected {
    const char* key;
    const char* group;
    const char* topic;
};

std::vector<Expected> families() {
    std::vector<Expected> out;
    for (const Run& run : kRuns)
        for (const char* key : run.keys)
            out.push_back({key, run.group, run.topic});
    return out;
}

TEST(Catalogue, holdsEveryFamilyInTheBooksOrderWithItsGroupAndTopic) {
    const std::vector<fl::Formula>& all = fl::catalogue();
    const std::vector<Expected> expected = families();
    ASSERT_EQ(all.size(), 118u);
    ASSERT_EQ(expected.size(), 118u);
    for (size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(expected[i].key);
        EXPECT_EQ(all[i].key, expected[i].key);
        EXPECT_EQ(all[i].group, expected[i].group);
        EXPECT_EQ(all[i].topic, expected[i].topic);
    }
}

TEST(Catalogue, findFormulaIsCaseSensitive) {
    ASSERT_NE(fl::findFormula("motYD"), nullptr);
    EXPECT_EQ(fl::findFormula("motYD")->key, "motYD");
    for (const char* key : {"Ohm", "s", "ohm "}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(fl::findFormula(key), nullptr);
    }
    EXPECT_NE(fl::findFormula("S"), fl::findFormula("tfS"));
}

TEST(Catalogue, pageRefNamesTheBookOnlyForPageNumbers) {
    struct Row {
        const char* page;
        const char* expected;
    };
    const Row rows[] = {
        {"3", "formelsamlingen s. 3"},
        {"3 (afledt)", "formelsamlingen s. 3 (afledt)"},
        {"Parallel s. 5", "Parallel s. 5"},
        {"", ""},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.page);
        EXPECT_EQ(fl::pageRef(r.page, "formelsamlingen"), r.expected);
    }
}

// Slips that need no parser: a unit spelt differently, a form for a quantity
// the family doesn't have, a default for a field that doesn't exist.
TEST(Catalogue, recordsAreConsistent) {
    const std::set<std::string> units = {"",      "%",  "A",      "F",     "H",    "Hz",     "J",     "Nm",
                                         "V",     "VA", "VAr",    "W",     "dage", "h",      "h/dag", "kW",
                                         "kWh",   "kr", "kr/kWh", "kr/år", "m",    "mm",     "mm²",   "o/min",
                                         "rad/s", "s",  "°",      "år",    "Ω",    "Ω·mm²/m"};
    for (const fl::Formula& f : fl::catalogue()) {
        SCOPED_TRACE(f.key);
        EXPECT_FALSE(f.title.empty());
        EXPECT_FALSE(f.page.empty());
        EXPECT_FALSE(f.search.empty());
        EXPECT_TRUE(f.search.front() != ' ' && f.search.back() != ' ' &&
                    f.search.find("  ") == std::string::npos);
        EXPECT_FALSE(f.generate);
        std::set<std::string> symbols;
        for (const fl::FormulaVar& v : f.vars) {
            EXPECT_TRUE(symbols.insert(v.symbol).second) << v.symbol;
            EXPECT_FALSE(v.name.empty()) << v.symbol;
            EXPECT_TRUE(units.count(v.unit)) << v.symbol << " [" << v.unit << "]";
        }
        ASSERT_FALSE(f.forms.empty());
        std::set<std::string> solvable;
        for (const fl::FormulaForm& form : f.forms) {
            EXPECT_TRUE(symbols.count(form.var)) << form.var;
            EXPECT_TRUE(solvable.insert(form.var).second) << "two forms for " << form.var;
        }
        for (const fl::FormulaForm& form : f.altForms)
            EXPECT_TRUE(solvable.count(form.var) && form.var != f.forms[0].var) << form.var;
        for (const auto& [symbol, text] : f.defaults)
            EXPECT_TRUE(symbols.count(symbol)) << symbol;
        for (const fl::FormulaDef& d : f.definitions)
            EXPECT_FALSE(symbols.count(d.symbol)) << d.symbol;
        EXPECT_EQ(f.altForms.empty(), f.altLabel.empty());
        EXPECT_EQ(f.altForms.empty(), f.altNote.empty());
    }
}

// Notes and labels are HTML put straight into a page: an unclosed tag would
// spill over everything after it.
TEST(Catalogue, htmlTextsCloseTheirTags) {
    for (const fl::Formula& f : fl::catalogue())
        for (const std::string* text : {&f.note, &f.altLabel, &f.altNote, &f.title}) {
            SCOPED_TRACE(f.key + ": " + *text);
            for (const char* tag : {"sub", "sup", "b"})
                EXPECT_EQ(markup_util::count(*text, std::string("<") + tag + ">"),
                          markup_util::count(*text, std::string("</") + tag + ">"));
            EXPECT_EQ(text->find(" - "), std::string::npos) << "a hyphen where a dash or minus belongs";
        }
}

// A family key is a route too; one that equalled a tile's route would hide
// the tile.
TEST(CatalogueAndLists, familyTilesComeFirstAndNeverShadowATile) {
    for (const fl::Formula& f : fl::catalogue())
        EXPECT_EQ(fl::findTile(f.key), nullptr) << f.key;

    const fl::Tile* ohm = fl::findFamilyOrTile("ohm");
    ASSERT_NE(ohm, nullptr);
    EXPECT_EQ(ohm->route, "ohm");
    EXPECT_EQ(ohm->name, "Ohms lov");
    const fl::Tile* kreds = fl::findFamilyOrTile("kreds");
    ASSERT_NE(kreds, nullptr);
    EXPECT_EQ(kreds, fl::findTile("kreds"));
    EXPECT_EQ(fl::findFamilyOrTile("Ohm"), nullptr);
    EXPECT_EQ(fl::findFamilyOrTile("nosuch"), nullptr);
}

TEST(CatalogueAndLists, theFinderListsEveryFamilyAndOnlyFamilies) {
    std::vector<std::string> keys = fl::subtreeKeys(fl::finderTree());
    std::set<std::string> inFinder(keys.begin(), keys.end());
    for (const std::string& k : keys)
        EXPECT_NE(fl::findFormula(k), nullptr) << k;
    for (const fl::Formula& f : fl::catalogue())
        EXPECT_TRUE(inFinder.count(f.key)) << f.key;
}

// "sub:" + group + "|" + topic closes a group of exercises; a topic that no
// family has would close nothing.
TEST(CatalogueAndLists, exerciseKeysOfTheTopicTableNameRealTopics) {
    for (const fl::Topic& t : fl::topics())
        for (const std::string& key : t.keys) {
            if (key.rfind("sub:", 0) != 0) continue;
            SCOPED_TRACE(t.id + ": " + key);
            size_t bar = key.find('|');
            ASSERT_NE(bar, std::string::npos);
            std::string group = key.substr(4, bar - 4), topic = key.substr(bar + 1);
            bool found = false;
            for (const fl::Formula& f : fl::catalogue())
                found = found || (f.group == group && (topic.empty() || f.topic == topic));
            EXPECT_TRUE(found);
        }
}

} // namespace
