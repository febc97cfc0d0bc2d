// The catalogue as data: its order, each family's group and topic, and the
// records' internal consistency. That every form gives back the values it
// was drawn from is checked through the solve driver, family by family.
#include "fl/formulas/catalogue.h"

#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/formulas/lists.h"
#include "tests/fl/formulas/markup_util.h"

#include <gtest/gtest.h>

#include <set>

namespace {

// The book's order: where each run of one group and topic begins, with the
// family that opens it; every family between two starts belongs to the first.
TEST(Catalogue, holdsEveryFamilyInTheBooksOrderWithItsGroupAndTopic) {
    struct Run {
        size_t at;
        const char* key;
        const char* group;
        const char* topic;
    };
    const char *El = "El-lære", *Mat = "Matematik", *Tre = "Trefaset";
    const Run runs[] = {
        {0, "ohm", El, "Jævnstrøm"},
        {12, "batt", El, "Batteri"},
        {16, "trU", El, "Transformer"},
        {20, "eff", El, "Vekselspænding"},
        {21, "XL", El, "Vekselstrøm"},
        {41, "pRL", El, "Parallel vekselstrøm"},
        {45, "reson", El, "Vekselstrøm"},
        {46, "pyth", Mat, "Trekanter og trigonometri"},
        {53, "triA", Mat, "Arealer"},
        {61, "polyV", Mat, "Polygoner"},
        {64, "circO", Mat, "Cirkler"},
        {70, "vecL", Mat, "Vektorer"},
        {73, "tfS", Tre, "Trefaset effekt"},
        {76, "tfUY", Tre, "Stjerne og trekant"},
        {79, "tfPf", Tre, "Trefaset effekt"},
        {82, "tfPDY", Tre, "Stjerne og trekant"},
        {84, "tfFY", Tre, "Fejl"},
        {89, "kompQ", El, "Kompensering"},
        {91, "enE", El, "Energi og pris"},
        {98, "motNs", El, "Motorer"},
        {108, "acT", El, "Vekselspænding"},
        {115, "instRe", El, "Installationstest"},
    };
    const std::vector<fl::Formula>& all = fl::catalogue();
    ASSERT_EQ(all.size(), 118u);
    size_t run = 0;
    std::set<std::string> keys;
    for (size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(all[i].key);
        if (run + 1 < std::size(runs) && runs[run + 1].at == i) ++run;
        if (runs[run].at == i) {
            EXPECT_EQ(all[i].key, runs[run].key);
        }
        EXPECT_EQ(all[i].group, runs[run].group);
        EXPECT_EQ(all[i].topic, runs[run].topic);
        EXPECT_TRUE(keys.insert(all[i].key).second);
    }
}

// Keys are routes: a family never shadows a tile.
TEST(Catalogue, familiesLeaveTheTilesTheirRoutes) {
    for (const fl::Formula& f : fl::catalogue())
        EXPECT_EQ(fl::findTile(f.key), nullptr) << f.key;
    EXPECT_EQ(fl::findFamilyOrTile("kreds"), fl::findTile("kreds"));
}

TEST(Catalogue, pageRefNamesTheBookOnlyForPageNumbers) {
    EXPECT_EQ(fl::pageRef("3", "formelsamlingen"), "formelsamlingen s. 3");
    EXPECT_EQ(fl::pageRef("Parallel s. 5", "formelsamlingen"), "Parallel s. 5");
    EXPECT_EQ(fl::pageRef("", "formelsamlingen"), "");
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
        // A default is typed into its field: it must read as a positive value.
        for (const auto& [symbol, text] : f.defaults) {
            EXPECT_TRUE(symbols.count(symbol)) << symbol;
            EXPECT_GT(fl::readValue(text), 0) << symbol << " \"" << text << "\"";
        }
        // A quantity the primary form never uses could never be worked out.
        std::set<std::string> reached = {f.forms[0].var};
        fl::collectVars(fl::parse(f.forms[0].expr), reached);
        for (const fl::FormulaDef& d : f.definitions) {
            EXPECT_FALSE(symbols.count(d.symbol)) << d.symbol;
            fl::collectVars(fl::parse(d.expr), reached);
        }
        for (const std::string& s : symbols)
            EXPECT_TRUE(reached.count(s)) << s << " is not in the primary form";
        EXPECT_EQ(f.altForms.empty(), f.altLabel.empty());
        EXPECT_EQ(f.altForms.empty(), f.altNote.empty());
    }
    EXPECT_DOUBLE_EQ(fl::readValue(fl::findFormula("wire")->defaults.at("rho")), 0.0175);
    EXPECT_DOUBLE_EQ(fl::readValue(fl::findFormula("instRe")->defaults.at("I_dn")), 0.03);
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

TEST(CatalogueAndLists, theFinderListsEveryFamilyAndOnlyFamilies) {
    std::vector<std::string> keys = fl::subtreeKeys(fl::finderTree());
    std::set<std::string> inFinder(keys.begin(), keys.end());
    for (const std::string& k : keys)
        EXPECT_NE(fl::findFormula(k), nullptr) << k;
    for (const fl::Formula& f : fl::catalogue())
        EXPECT_TRUE(inFinder.count(f.key)) << f.key;
}

} // namespace
