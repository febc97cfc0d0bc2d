// Builds the catalogue once from its rows, in the order of the formula book,
// and gives each family its topic. The rows themselves are in rows_*.cpp;
// the explanation texts and icons belong to help.cpp and icons.cpp.
#include "fl/formulas/catalogue.h"

#include "fl/formulas/rows.h"

#include <sstream>

namespace fl {

namespace {

// The sub-heading under which a family is listed. The lists are applied in
// this order and a later one wins: "eff" stands under "Vekselstrøm" first and
// ends under "Vekselspænding".
struct TopicList {
    const char* topic;
    const char* keys;
};

const TopicList kTopicLists[] = {
    {"Jævnstrøm", "ohm power powerR powerU par2 formod shunt wire qd vd1 vd2 vd3"},
    {"Batteri", "batt battE ik cells"},
    {"Vekselstrøm",
     "eff XL XC ZRL ZRC ZRLC Zcoil URL URC URLC ULX UCX cosZ cosU cosP phi Pac Qac SPQ QX QUI reson"},
    {"Parallel vekselstrøm", "pRL pRC pRLC pcos"},
    {"Transformer", "trU trI trR S"},
    {"Kompensering", "kompQ kompC"},
    {"Energi og pris", "enE enJ enAar enPris enBes enTilb enEta"},
    {"Stjerne og trekant", "tfUY tfID tfR tfPDY tfIDY"},
    {"Trefaset effekt", "tfS tfP tfQ tfPf tfSf tfQf"},
    {"Fejl", "tfFY tfFD1 tfFD2 tfHalf tf23"},
    {"Trekanter og trigonometri", "pyth sinV cosV tanV t45 t30h t30l"},
    {"Arealer", "triA triS heron trap paral rect rhomb square"},
    {"Polygoner", "polyV polyS polyA"},
    {"Cirkler", "circO circA circAd arc sector segment"},
    {"Vektorer", "vecL vecX vecY"},
    {"Installationstest", "instRe instIa instZs"},
    {"Vekselspænding", "eff acT acW acSS acMid acForm acInst acVinkel"},
};

// Every motor family, wherever else it is listed.
const char* const kMotorPrefix = "mot";
const char* const kMotorTopic = "Motorer";

Formula* find(std::vector<Formula>& list, const std::string& key) {
    for (Formula& f : list)
        if (f.key == key) return &f;
    return nullptr;
}

} // namespace

std::vector<Formula> rows::buildCatalogue() {
    std::vector<Formula> out;
    out.reserve(118);
    for (auto part : {rows::dcRows, rows::acRows, rows::mathRows, rows::threePhaseRows, rows::tradeRows})
        for (Formula& f : part())
            out.push_back(std::move(f));

    for (const TopicList& list : kTopicLists) {
        std::istringstream keys(list.keys);
        for (std::string key; keys >> key;)
            if (Formula* f = find(out, key)) f->topic = list.topic;
    }
    for (Formula& f : out)
        if (f.key.rfind(kMotorPrefix, 0) == 0) f.topic = kMotorTopic;
    return out;
}

const std::vector<Formula>& catalogue() {
    static const std::vector<Formula> list = rows::buildCatalogue();
    return list;
}

const Formula* findFormula(const std::string& key) {
    for (const Formula& f : catalogue())
        if (f.key == key) return &f;
    return nullptr;
}

const FormulaVar* findVar(const Formula& f, const std::string& symbol) {
    for (const FormulaVar& v : f.vars)
        if (v.symbol == symbol) return &v;
    return nullptr;
}

// "3" reads "formelsamlingen s. 3"; a reference that is already a text
// ("Parallel s. 5", "– standardformel") stands as it is.
std::string pageRef(const std::string& page, const std::string& book) {
    if (!page.empty() && page[0] >= '0' && page[0] <= '9') return book + " s. " + page;
    return page;
}

} // namespace fl
