// The catalogue as data: its order, each family's group and topic, the
// records' internal consistency, and whole rows checked field by field.
// Parsing and evaluating the forms is in catalogue_forms_test.cpp.
#include "fl/formulas/catalogue.h"

#include "fl/formulas/lists.h"

#include <gtest/gtest.h>

#include <set>

namespace {

// Records as readable lines, so that a failing comparison shows the row.
std::vector<std::string> lines(const std::vector<fl::FormulaVar>& vars) {
    std::vector<std::string> out;
    for (const fl::FormulaVar& v : vars)
        out.push_back(v.symbol + " \"" + v.name + "\" [" + v.unit + "]");
    return out;
}

std::vector<std::string> lines(const std::vector<fl::FormulaForm>& forms) {
    std::vector<std::string> out;
    for (const fl::FormulaForm& f : forms)
        out.push_back(f.var + " = " + f.expr);
    return out;
}

using Lines = std::vector<std::string>;

const char* const El = "El-lære";
const char* const Mat = "Matematik";
const char* const Tre = "Trefaset";

struct Expected {
    const char* key;
    const char* group;
    const char* topic;
};

// Every family in the book's order, with the group and topic its row states.
// The topics are assigned from lists of keys, so this also checks those lists.
const Expected kFamilies[] = {
    {"ohm", El, "Jævnstrøm"},
    {"power", El, "Jævnstrøm"},
    {"powerR", El, "Jævnstrøm"},
    {"powerU", El, "Jævnstrøm"},
    {"par2", El, "Jævnstrøm"},
    {"formod", El, "Jævnstrøm"},
    {"shunt", El, "Jævnstrøm"},
    {"wire", El, "Jævnstrøm"},
    {"qd", El, "Jævnstrøm"},
    {"vd1", El, "Jævnstrøm"},
    {"vd2", El, "Jævnstrøm"},
    {"vd3", El, "Jævnstrøm"},
    {"batt", El, "Batteri"},
    {"battE", El, "Batteri"},
    {"ik", El, "Batteri"},
    {"cells", El, "Batteri"},
    {"trU", El, "Transformer"},
    {"trI", El, "Transformer"},
    {"trR", El, "Transformer"},
    {"S", El, "Transformer"},
    {"eff", El, "Vekselspænding"},
    {"XL", El, "Vekselstrøm"},
    {"XC", El, "Vekselstrøm"},
    {"ZRL", El, "Vekselstrøm"},
    {"ZRC", El, "Vekselstrøm"},
    {"ZRLC", El, "Vekselstrøm"},
    {"Zcoil", El, "Vekselstrøm"},
    {"URL", El, "Vekselstrøm"},
    {"URC", El, "Vekselstrøm"},
    {"URLC", El, "Vekselstrøm"},
    {"ULX", El, "Vekselstrøm"},
    {"UCX", El, "Vekselstrøm"},
    {"cosZ", El, "Vekselstrøm"},
    {"cosU", El, "Vekselstrøm"},
    {"cosP", El, "Vekselstrøm"},
    {"phi", El, "Vekselstrøm"},
    {"Pac", El, "Vekselstrøm"},
    {"Qac", El, "Vekselstrøm"},
    {"SPQ", El, "Vekselstrøm"},
    {"QX", El, "Vekselstrøm"},
    {"QUI", El, "Vekselstrøm"},
    {"pRL", El, "Parallel vekselstrøm"},
    {"pRC", El, "Parallel vekselstrøm"},
    {"pRLC", El, "Parallel vekselstrøm"},
    {"pcos", El, "Parallel vekselstrøm"},
    {"reson", El, "Vekselstrøm"},
    {"pyth", Mat, "Trekanter og trigonometri"},
    {"sinV", Mat, "Trekanter og trigonometri"},
    {"cosV", Mat, "Trekanter og trigonometri"},
    {"tanV", Mat, "Trekanter og trigonometri"},
    {"t45", Mat, "Trekanter og trigonometri"},
    {"t30h", Mat, "Trekanter og trigonometri"},
    {"t30l", Mat, "Trekanter og trigonometri"},
    {"triA", Mat, "Arealer"},
    {"triS", Mat, "Arealer"},
    {"heron", Mat, "Arealer"},
    {"trap", Mat, "Arealer"},
    {"paral", Mat, "Arealer"},
    {"rect", Mat, "Arealer"},
    {"rhomb", Mat, "Arealer"},
    {"square", Mat, "Arealer"},
    {"polyV", Mat, "Polygoner"},
    {"polyS", Mat, "Polygoner"},
    {"polyA", Mat, "Polygoner"},
    {"circO", Mat, "Cirkler"},
    {"circA", Mat, "Cirkler"},
    {"circAd", Mat, "Cirkler"},
    {"arc", Mat, "Cirkler"},
    {"sector", Mat, "Cirkler"},
    {"segment", Mat, "Cirkler"},
    {"vecL", Mat, "Vektorer"},
    {"vecX", Mat, "Vektorer"},
    {"vecY", Mat, "Vektorer"},
    {"tfS", Tre, "Trefaset effekt"},
    {"tfP", Tre, "Trefaset effekt"},
    {"tfQ", Tre, "Trefaset effekt"},
    {"tfUY", Tre, "Stjerne og trekant"},
    {"tfID", Tre, "Stjerne og trekant"},
    {"tfR", Tre, "Stjerne og trekant"},
    {"tfPf", Tre, "Trefaset effekt"},
    {"tfSf", Tre, "Trefaset effekt"},
    {"tfQf", Tre, "Trefaset effekt"},
    {"tfPDY", Tre, "Stjerne og trekant"},
    {"tfIDY", Tre, "Stjerne og trekant"},
    {"tfFY", Tre, "Fejl"},
    {"tfFD1", Tre, "Fejl"},
    {"tfFD2", Tre, "Fejl"},
    {"tfHalf", Tre, "Fejl"},
    {"tf23", Tre, "Fejl"},
    {"kompQ", El, "Kompensering"},
    {"kompC", El, "Kompensering"},
    {"enE", El, "Energi og pris"},
    {"enJ", El, "Energi og pris"},
    {"enAar", El, "Energi og pris"},
    {"enPris", El, "Energi og pris"},
    {"enBes", El, "Energi og pris"},
    {"enTilb", El, "Energi og pris"},
    {"enEta", El, "Energi og pris"},
    {"motNs", El, "Motorer"},
    {"motSlip", El, "Motorer"},
    {"motFr", El, "Motorer"},
    {"motEta", El, "Motorer"},
    {"motTab", El, "Motorer"},
    {"motI3", El, "Motorer"},
    {"motI1", El, "Motorer"},
    {"motM", El, "Motorer"},
    {"motStart", El, "Motorer"},
    {"motYD", El, "Motorer"},
    {"acT", El, "Vekselspænding"},
    {"acW", El, "Vekselspænding"},
    {"acSS", El, "Vekselspænding"},
    {"acMid", El, "Vekselspænding"},
    {"acForm", El, "Vekselspænding"},
    {"acInst", El, "Vekselspænding"},
    {"acVinkel", El, "Vekselspænding"},
    {"instRe", El, "Installationstest"},
    {"instIa", El, "Installationstest"},
    {"instZs", El, "Installationstest"},
};

TEST(Catalogue, holdsEveryFamilyInTheBooksOrderWithItsGroupAndTopic) {
    const std::vector<fl::Formula>& all = fl::catalogue();
    ASSERT_EQ(all.size(), std::size(kFamilies));
    for (size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(kFamilies[i].key);
        EXPECT_EQ(all[i].key, kFamilies[i].key);
        EXPECT_EQ(all[i].group, kFamilies[i].group);
        EXPECT_EQ(all[i].topic, kFamilies[i].topic);
    }
}

TEST(Catalogue, findFormulaIsCaseSensitiveAndFindsEveryKey) {
    for (const Expected& e : kFamilies) {
        SCOPED_TRACE(e.key);
        const fl::Formula* f = fl::findFormula(e.key);
        ASSERT_NE(f, nullptr);
        EXPECT_EQ(f->key, e.key);
    }
    for (const char* key : {"Ohm", "OHM", "xl", "s", "tfs", "", "ohm "}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(fl::findFormula(key), nullptr);
    }
    EXPECT_NE(fl::findFormula("S"), fl::findFormula("tfS"));
}

TEST(Catalogue, topicsFollowTheLastListAndMotorsAlwaysGoUnderMotorer) {
    EXPECT_EQ(fl::findFormula("eff")->topic, "Vekselspænding");
    EXPECT_EQ(fl::findFormula("motNs")->topic, "Motorer");
    int motors = 0;
    for (const fl::Formula& f : fl::catalogue())
        if (f.key.rfind("mot", 0) == 0) {
            SCOPED_TRACE(f.key);
            EXPECT_EQ(f.topic, "Motorer");
            ++motors;
        }
    EXPECT_EQ(motors, 10);
}

TEST(Catalogue, findVarBySymbol) {
    const fl::Formula& ohm = *fl::findFormula("ohm");
    ASSERT_NE(fl::findVar(ohm, "R"), nullptr);
    EXPECT_EQ(fl::findVar(ohm, "R")->name, "Modstand");
    EXPECT_EQ(fl::findVar(ohm, "r"), nullptr);
    EXPECT_EQ(fl::findVar(ohm, "P"), nullptr);
}

TEST(Catalogue, pageRefNamesTheBookOnlyForPageNumbers) {
    struct Row {
        const char* page;
        const char* expected;
    };
    const Row rows[] = {
        {"3", "formelsamlingen s. 3"},
        {"9, 13", "formelsamlingen s. 9, 13"},
        {"3 (afledt)", "formelsamlingen s. 3 (afledt)"},
        {"13 og 15 (Q = U²/X og X_C)", "formelsamlingen s. 13 og 15 (Q = U²/X og X_C)"},
        {"Parallel s. 5", "Parallel s. 5"},
        {"YΔ-arket, fælles", "YΔ-arket, fælles"},
        {"– standardformel", "– standardformel"},
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
    auto count = [](const std::string& s, const std::string& what) {
        size_t n = 0;
        for (size_t at = s.find(what); at != std::string::npos; at = s.find(what, at + 1))
            ++n;
        return n;
    };
    for (const fl::Formula& f : fl::catalogue())
        for (const std::string* text : {&f.note, &f.altLabel, &f.altNote, &f.title}) {
            SCOPED_TRACE(f.key + ": " + *text);
            for (const char* tag : {"sub", "sup", "b"})
                EXPECT_EQ(count(*text, std::string("<") + tag + ">"),
                          count(*text, std::string("</") + tag + ">"));
            EXPECT_EQ(text->find(" - "), std::string::npos) << "a hyphen where a dash or minus belongs";
        }
}

TEST(CatalogueRows, ohm) {
    const fl::Formula& f = *fl::findFormula("ohm");
    EXPECT_EQ(f.title, "Ohms lov");
    EXPECT_EQ(f.group, "El-lære");
    EXPECT_EQ(f.topic, "Jævnstrøm");
    EXPECT_EQ(f.page, "3");
    EXPECT_EQ(f.figure, "circ");
    EXPECT_EQ(f.search, "spænding strøm modstand ohm");
    EXPECT_EQ(lines(f.vars), (Lines{"U \"Spænding\" [V]", "I \"Strøm\" [A]", "R \"Modstand\" [Ω]"}));
    EXPECT_EQ(lines(f.forms), (Lines{"U = I*R", "I = U/R", "R = U/I"}));
    EXPECT_TRUE(f.note.empty());
    EXPECT_TRUE(f.defaults.empty());
    EXPECT_TRUE(f.definitions.empty());
    EXPECT_TRUE(f.altForms.empty());
}

TEST(CatalogueRows, heronWorksOutTheHalfPerimeterFirst) {
    const fl::Formula& f = *fl::findFormula("heron");
    EXPECT_EQ(f.page, "29");
    EXPECT_EQ(lines(f.forms), (Lines{"A = sqrt(s*(s-a)*(s-b)*(s-c))"}));
    ASSERT_EQ(f.definitions.size(), 1u);
    EXPECT_EQ(f.definitions[0].symbol, "s");
    EXPECT_EQ(f.definitions[0].expr, "(a+b+c)/2");
    EXPECT_EQ(f.definitions[0].label, "den halve omkreds");
    for (const fl::Formula& other : fl::catalogue())
        EXPECT_TRUE(other.key == "heron" || other.definitions.empty()) << other.key;
}

TEST(CatalogueRows, pRLCCarriesTheCapacitiveRoot) {
    const fl::Formula& f = *fl::findFormula("pRLC");
    EXPECT_EQ(f.page, "Parallel s. 8");
    EXPECT_EQ(lines(f.forms), (Lines{"I = sqrt(I_R**2+(I_L-I_C)**2)", "I_R = sqrt(I**2-(I_L-I_C)**2)",
                                     "I_L = I_C+sqrt(I**2-I_R**2)", "I_C = I_L-sqrt(I**2-I_R**2)"}));
    EXPECT_EQ(lines(f.altForms), (Lines{"I_L = I_C-sqrt(I**2-I_R**2)", "I_C = I_L+sqrt(I**2-I_R**2)"}));
    EXPECT_EQ(f.altLabel, "hvis kredsen i stedet er kapacitiv (I<sub>C</sub> > I<sub>L</sub>)");
    EXPECT_EQ(f.altNote, "Den induktive løsning giver et negativt tal, så kredsen må være <b>kapacitiv</b> "
                         "(I<sub>C</sub> > I<sub>L</sub>). Så vender fortegnet:");
    for (const fl::Formula& other : fl::catalogue())
        EXPECT_TRUE(other.key == "pRLC" || other.altForms.empty()) << other.key;
}

TEST(CatalogueRows, defaultsAreTheTextsOfTheirFields) {
    struct Row {
        const char* key;
        const char* symbol;
        const char* text;
    };
    const Row rows[] = {
        {"wire", "rho", "0,0175"}, {"XL", "f", "50"},         {"XC", "f", "50"},
        {"kompC", "f", "50"},      {"motNs", "f", "50"},      {"motFr", "f", "50"},
        {"motI3", "U_N", "400"},   {"motI1", "U", "230"},     {"acVinkel", "f", "50"},
        {"instRe", "U_L", "50"},   {"instRe", "I_dn", "30m"}, {"instIa", "k_a", "10"},
        {"instZs", "U_0", "230"},
    };
    size_t total = 0;
    for (const fl::Formula& f : fl::catalogue())
        total += f.defaults.size();
    EXPECT_EQ(total, std::size(rows));
    for (const Row& r : rows) {
        SCOPED_TRACE(std::string(r.key) + " " + r.symbol);
        const fl::Formula& f = *fl::findFormula(r.key);
        ASSERT_TRUE(f.defaults.count(r.symbol));
        EXPECT_EQ(f.defaults.at(r.symbol), r.text);
    }
}

TEST(CatalogueRows, aFewFieldsAcrossTheBook) {
    struct Row {
        const char* key;
        const char* title;
        const char* page;
        const char* figure;
        size_t vars;
        size_t forms;
    };
    const Row rows[] = {
        {"S", "Tilsyneladende effekt / transformerstørrelse (S = U·I)", "9, 13", "", 3, 3},
        {"ZRLC", "Impedans R + L + C", "20", "ZRLC", 4, 2},
        {"cells", "n battericeller i serie", "8", "batt", 5, 5},
        {"polyA", "Regulær polygon – areal", "31", "poly", 3, 2},
        {"tfFD1", "Fejl i trekant – en fase afbrudt: P_fejl = U_N²/R + U_N²/(R + R)", "YΔ-arket, fejl", "tfD",
         3, 3},
        {"kompC", "Kondensator til kompensering: C = Q_C / (2·π·f·U²)", "13 og 15 (Q = U²/X og X_C)", "", 4,
         4},
        {"instZs", "Største sløjfeimpedans (Z_s = U_0 / I_a)", "– standardformel", "", 3, 3},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.key);
        const fl::Formula& f = *fl::findFormula(r.key);
        EXPECT_EQ(f.title, r.title);
        EXPECT_EQ(f.page, r.page);
        EXPECT_EQ(f.figure, r.figure);
        EXPECT_EQ(f.vars.size(), r.vars);
        EXPECT_EQ(f.forms.size(), r.forms);
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
    EXPECT_EQ(ohm->search, "spænding strøm modstand ohm");
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
