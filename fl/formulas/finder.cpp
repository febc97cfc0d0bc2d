// The finder's subject tree: six subjects, their leaves with the families and
// tools under each, and the walk by path. What the finder page draws from a
// node is the page's business.
#include "fl/formulas/lists.h"

#include <set>
#include <sstream>

namespace fl {

namespace {

std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string w; in >> w;)
        out.push_back(w);
    return out;
}

FinderNode leaf(const char* id, const char* title, const char* blurb, const char* keys,
                std::vector<std::string> routes = {}) {
    return {id, title, blurb, tileIcon("finder"), words(keys), std::move(routes), {}};
}

FinderNode subject(const char* id, const char* title, const char* blurb, std::vector<FinderNode> children) {
    return {id, title, blurb, tileIcon("finder"), {}, {}, std::move(children)};
}

FinderNode buildTree() {
    std::vector<FinderNode> subjects;

    subjects.push_back(subject(
        "dc", "Jævnstrøm", "Ohms lov, effekt, modstande, ledninger, måleinstrumenter og batterier",
        {
            leaf("ohm", "Ohms lov og effekt",
                 "U, I, R og P – de fire grundstørrelser og sammenhængen mellem dem",
                 "ohm power powerR powerU"),
            leaf("mod", "Modstande i serie og parallel",
                 "Erstatningsmodstand – og hele kredsløbet med strømme og spændinger", "par2",
                 {"res", "kreds"}),
            leaf("led", "Ledninger og spændingsfald",
                 "Ledningsmodstand, tværsnit og spændingsfald i volt og procent", "wire qd vd1 vd2 vd3",
                 {"kabel", "sf1", "sf3"}),
            leaf("maal", "Måleinstrumenter", "Formodstand til et voltmeter og shunt til et amperemeter",
                 "formod shunt"),
            leaf("bat", "Batterier",
                 "EMK, indre modstand, klemmespænding og kortslutningsstrøm – også flere celler i serie",
                 "batt battE ik cells"),
        }));

    subjects.push_back(subject(
        "ac", "Vekselstrøm",
        "Sinuskurven, serie- og parallelkredsløb, blandede forbindelser, effekt og cos φ, kompensering, "
        "motorer og "
        "transformer",
        {
            leaf("sinus", "Vekselspænding (sinuskurven)",
                 "Effektiv-, maksimal-, spids-spids- og middelværdi, periodetid, frekvens og vinklen på "
                 "kurven",
                 "eff acT acW acSS acMid acForm acInst acVinkel", {"acdemo"}),
            leaf("serie", "Seriekredsløb (R, L, C i serie)",
                 "Reaktans, impedans og spændingstrekanten for R, L og C i serie – og resonans",
                 "XL XC ZRL ZRC ZRLC Zcoil URL URC URLC ULX UCX reson", {"ac", "kredsac"}),
            leaf("parallel", "Parallelkredsløb", "Strømtrekanten for R, L og C i parallel, cos φ og resonans",
                 "XL XC pRL pRC pRLC pcos reson", {"kredsac"}),
            leaf("blandet", "Blandede forbindelser",
                 "Serie og parallel i samme kredsløb. Regnes gren for gren med formlerne herunder – eller "
                 "tegn "
                 "kredsløbet, så regner programmet det hele",
                 "XL XC ZRL ZRC ZRLC Zcoil pRL pRC pRLC pcos", {"kredsac"}),
            leaf("effekt", "Effekt og cos φ",
                 "Aktiv, reaktiv og tilsyneladende effekt, effekttrekanten og faseforskydningen φ",
                 "Pac Qac SPQ QX QUI cosZ cosU cosP phi"),
            leaf("komp", "Kompensering",
                 "Kondensatoren, der løfter cos φ: den reaktive effekt og kapaciteten", "kompQ kompC",
                 {"komp"}),
            leaf("motor", "Motorer",
                 "Omdrejningstal, slip, rotorfrekvens, virkningsgrad, tab, strøm, moment og startstrøm",
                 "motNs motSlip motFr motEta motTab motI3 motI1 motM motStart motYD", {"motor"}),
            leaf("trafo", "Transformer",
                 "Spænding, strøm, viklinger, omsætningsforhold og transformerstørrelse", "trU trI trR S",
                 {"trafo"}),
        }));

    subjects.push_back(subject(
        "tf", "Trefaset", "Stjerne og trekant, trefaset effekt, fejl, motorer og kompensering",
        {
            leaf("yd", "Stjerne og trekant",
                 "Fase- og netspænding, fase- og netstrøm, modstand pr. fase og omkobling mellem stjerne og "
                 "trekant",
                 "tfUY tfID tfR tfPDY tfIDY", {"trefase"}),
            leaf("effekt", "Trefaset effekt",
                 "S, P og Q ud fra net- eller fasestørrelser – med √3 eller gange 3",
                 "tfS tfP tfQ tfPf tfSf tfQf", {"trefase"}),
            leaf("fejl", "Fejl i stjerne og trekant",
                 "Hvad der sker med effekten, når en fase eller en komponent falder ud",
                 "tfFY tfFD1 tfFD2 tfHalf tf23", {"trefase"}),
            leaf("motor", "Trefaset motor",
                 "Mærkestrøm, startstrøm, stjerne-trekant-start, omdrejningstal, slip og virkningsgrad",
                 "motI3 motStart motYD motNs motSlip motEta", {"motor"}),
            leaf("komp", "Kompensering", "Kondensatorerne, der løfter cos φ – i stjerne eller trekant",
                 "kompQ kompC", {"komp"}),
        }));

    subjects.push_back(
        leaf("energi", "Energi og pris",
             "Energiforbrug i kWh og joule, elpris, besparelse, tilbagebetalingstid og virkningsgrad",
             "enE enJ enAar enPris enBes enTilb enEta", {"energi"}));

    subjects.push_back(subject(
        "inst", "Installation og test",
        "Jord, fejlstrømsafbryder og sikringer, ledninger og spændingsfald – og prøverne ved verifikation",
        {
            leaf("jord", "Jord, fejlstrømsafbryder og sikringer",
                 "Overgangsmodstand til jord, automatsikringens udløsestrøm og den største sløjfeimpedans",
                 "instRe instIa instZs", {"ikmax", "ikmin", "insttest"}),
            leaf("fald", "Ledninger og spændingsfald",
                 "Ledningsmodstand, tværsnit og spændingsfald i volt og procent – grænsen er 3 % til lys og "
                 "5 % til "
                 "andet",
                 "wire qd vd1 vd2 vd3", {"kabel", "sf1", "sf3"}),
        }));

    subjects.push_back(
        subject("ma", "Matematik", "Trekanter og trigonometri, arealer, polygoner, cirkler og vektorer",
                {
                    leaf("tri", "Trekanter og trigonometri",
                         "Pythagoras, sinus, cosinus og tangens og de særlige 45°- og 30°-60°-trekanter",
                         "pyth sinV cosV tanV t45 t30h t30l", {"tri"}),
                    leaf("areal", "Arealer", "Trekant, trapez, parallelogram, rektangel, rombe og kvadrat",
                         "triA triS heron trap paral rect rhomb square"),
                    leaf("poly", "Polygoner", "Hver vinkel, vinkelsummen og arealet af en regulær polygon",
                         "polyV polyS polyA"),
                    leaf("cirkel", "Cirkler", "Omkreds, areal, buelængde, cirkeludsnit og cirkelafsnit",
                         "circO circA circAd arc sector segment"),
                    leaf("vektor", "Vektorer", "Vektorens længde og dens x- og y-komposant", "vecL vecX vecY",
                         {"vec"}),
                }));

    return subject("", "Alle emner", "", std::move(subjects));
}

void collectKeys(const FinderNode& node, std::set<std::string>& seen, std::vector<std::string>& out) {
    for (const std::string& k : node.keys)
        if (seen.insert(k).second) out.push_back(k);
    for (const FinderNode& c : node.children)
        collectKeys(c, seen, out);
}

} // namespace

const FinderNode& finderTree() {
    static const FinderNode root = buildTree();
    return root;
}

const FinderNode* findNode(const std::string& path) {
    const FinderNode* node = &finderTree();
    if (path.empty()) return node;
    size_t start = 0;
    while (true) {
        size_t slash = path.find('/', start);
        std::string id = path.substr(start, slash == std::string::npos ? std::string::npos : slash - start);
        const FinderNode* next = nullptr;
        for (const FinderNode& c : node->children)
            if (c.id == id) next = &c;
        if (!next) return nullptr;
        node = next;
        if (slash == std::string::npos) return node;
        start = slash + 1;
    }
}

std::vector<std::string> subtreeKeys(const FinderNode& node) {
    std::set<std::string> seen;
    std::vector<std::string> out;
    collectKeys(node, seen, out);
    return out;
}

} // namespace fl
