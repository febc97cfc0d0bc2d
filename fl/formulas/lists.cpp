// The tile table with its subtitles, the sidebar's sections and the topic
// table, with their lookups. The finder tree is in finder.cpp; a family's tile
// is made from its catalogue record.
#include "fl/formulas/lists.h"

#include "fl/formulas/catalogue.h"
#include "fl/formulas/icons.h"

#include <map>

namespace fl {

namespace {

struct TileRow {
    const char* route;
    const char* name;
    const char* search;
};

// In the order the tile table is listed; the sidebar and the home page pick
// from it by route.
const TileRow kTileRows[] = {
    {"kreds", "Tegn et kredsløb – jævnstrøm",
     "tegn diagram kredsløb strømkreds serie parallel blandet jævnstrøm dc modstand"},
    {"kredsguide", "Kredsløb – fremgangsmåde, jævnstrøm",
     "fremgangsmåde formler rækkefølge kredsløb vejledning hvordan hvorfor jævnstrøm dc"},
    {"kredsac", "Tegn et kredsløb – vekselstrøm",
     "tegn diagram kredsløb strømkreds serie parallel blandet vekselstrøm ac spole kondensator impedans"},
    {"kredsguideac", "Kredsløb – fremgangsmåde, vekselstrøm",
     "fremgangsmåde formler rækkefølge kredsløb vejledning hvordan hvorfor vekselstrøm ac spole kondensator"},
    {"opgaver", "Opgaver fra læreren", "opgaver lærer aflevering klasse lektie"},
    {"ovelser", "Øvelser", "øvelse øvelser opgaver træning eksamen quiz test"},
    {"trafo", "Transformer", "transformer omsætningsforhold vindinger formelhjul primær sekundær"},
    {"trefase", "Trefaset (stjerne / trekant)",
     "trefaset 3-faset stjerne trekant y delta netspænding fasespænding fejl"},
    {"komp", "Kompensering", "kompensering faseforbedring kondensator cos phi"},
    {"kabel", "Kabeldimensionering", "kabel tværsnit spændingsfald dimensionering ledning"},
    {"sf1", "Spændingsfald 1-faset",
     "spændingsfald 1-faset enfaset fase nul kabel reaktans modstand pr km nkt dimensionering procent"},
    {"sf3", "Spændingsfald 3-faset",
     "spændingsfald 3-faset trefaset kabel reaktans modstand pr km nkt dimensionering procent"},
    {"ikmax", "Ik max (kortslutningsstrøm)",
     "ik max kortslutningsstrøm største gruppetavle kabelskab stikledning brydeevne impedans fr"},
    {"ikmin", "Ik min (kortslutningsstrøm)",
     "ik min kortslutningsstrøm mindste gruppetavle brugsgenstand stikledning gruppeledning udløsning "
     "automatsikring fr"},
    {"calc", "Lommeregner", "lommeregner regne"},
    {"ac", "Vekselstrømskreds (R, L, C i serie)", "vekselspænding rlc spole kondensator impedans serie"},
    {"res", "Modstande i serie / parallel", "modstand serie parallel forbindelse"},
    {"tri", "Retvinklet trekant", "retvinklet trekant trigonometri"},
    {"vec", "Læg vektorer sammen", "vektor sum komposant"},
    {"hjem", "Forside", "forside start hjem"},
    {"eksamen", "Eksamen", "eksamen prøve test tid point"},
    {"udregnere", "Udregnere – vælg emne",
     "udregnere udregner beregner alle formler emner jævnstrøm vekselstrøm serie parallel blandet trefaset "
     "motor energi"},
    {"finder", "Formelfinder",
     "formelfinder find formel emne emner oversigt jævnstrøm vekselstrøm serie parallel blandet trefaset "
     "motor"},
    {"ordliste", "Ordliste", "ordliste begreber forklaring betydning"},
    {"minform", "Min formelsamling (PDF)", "formelsamling pdf udskriv egne formler"},
    {"acdemo", "Vekselstrøm – interaktiv", "demo interaktiv skyder sinus visor resonans vekselstrøm"},
    {"enheder", "Enhedsomregner", "enheder omregn præfiks kwh joule mm2 diameter grader radianer"},
    {"farve", "Modstandens farvekode", "farvekode modstand farver ringe"},
    {"energi", "Energi og pris", "energi pris kwh forbrug besparelse tilbagebetaling"},
    {"motor", "Motor (mærkeplade)",
     "motor mærkeplade asynkronmotor omdrejningstal slip moment startstrøm stjerne trekant start "
     "virkningsgrad"},
    {"statistik", "Statistik", "statistik resultater svage emner fremskridt point"},
    {"opgaveark", "Opgaveark (PDF)", "opgaveark udskriv pdf opgaver papir facit lektier"},
    {"formelkort", "Formelkort", "formelkort flashcards huske lære udenad kort gentagelse"},
    {"insttest", "Test af installation",
     "test verifikation afprøvning installationstester isolationstest isolationsmodstand kontinuitet rcd "
     "fejlstrømsafbryder hpfi jordsløjfe sløjfeimpedans overgangsmodstand jordmodstand polaritet fasefølge "
     "spændingsfald "
     "kortslutningsstrøm funktionsprøve udløsetid måling"},
    {"install", "Installation: farver, IP og symboler",
     "installation ledningsfarver farver ledere fase nul jord pe pen grøn gul ip ipkode kapslingsklasse "
     "tæthedsklasse vand støv symboler el-symboler diagram badeværelse"},
    {"tekstopgaver", "Tekstopgaver", "tekstopgaver opgaver tekst flere trin prøve eksamen delopgaver"},
    {"laast", "Slået fra af din lærer", ""},
    {"minedata", "Gem og hent mine data",
     "gem hent data backup sikkerhedskopi fil statistik formelkort flyt computer"},
};

const std::map<std::string, std::string>& subtitles() {
    static const std::map<std::string, std::string> map = {
        {"kreds", "Modstande og jævnstrøm – hele udregningen, også baglæns"},
        {"kredsguide", "Jævnstrøm – kun formlerne i rækkefølge med forklaring, så du regner selv"},
        {"kredsac", "R, L og C med vekselstrøm – hele udregningen, også baglæns"},
        {"kredsguideac", "Vekselstrøm – kun formlerne i rækkefølge med forklaring, så du regner selv"},
        {"opgaver", "Opgaver, din lærer har sendt til klassen – åbn, regn og aflever"},
        {"trafo", "Diagram og formelhjul – skriv det kendte, find resten"},
        {"trefase", "Stjerne og trekant, omkobling og fejl"},
        {"ovelser", "Tilfældige opgaver med svar-tjek og tips"},
        {"eksamen", "Opgaver på tid med point og gennemgang"},
        {"finder", "Klik dig frem til emnet og se alle formlerne til det"},
        {"udregnere", "Alle udregnere, ordnet efter emne – skriv det du kender, så regner programmet resten"},
        {"insttest", "De otte prøver ved verifikation: hvad, hvorfor, grænser og sådan gør du"},
        {"komp", "Find kondensatoren til en bedre cos φ"},
        {"kabel", "Find tværsnittet ud fra spændingsfaldet"},
        {"sf1", "Spændingsfald i volt og procent med R og X fra kabeltabellen"},
        {"sf3", "Spændingsfald mellem to faser med R og X fra kabeltabellen"},
        {"ikmax", "Største kortslutningsstrøm i gruppetavlen"},
        {"ikmin", "Mindste kortslutningsstrøm i tavlen og ved brugsgenstanden"},
        {"acdemo", "Skru på R, L, C og f – og se kurverne ændre sig"},
        {"ac", "R, L og C i serie – alt på én gang"},
        {"res", "Hurtig udregning af R<sub>total</sub>"},
        {"energi", "kWh, pris, besparelse og tilbagebetaling"},
        {"motor", "Mærkeplade: strøm, η, slip, moment og startstrøm"},
        {"statistik", "Se hvilke emner du har styr på – og hvilke du skal øve"},
        {"opgaveark", "Print opgaver at regne på papir – med facit bagerst"},
        {"formelkort", "Lær formlerne udenad med kort, der kommer igen"},
        {"tekstopgaver", "Opgaver som til prøven – find tallene i teksten og regn flere trin"},
    };
    return map;
}

} // namespace

std::string tileSubtitle(const std::string& route) {
    auto it = subtitles().find(route);
    return it == subtitles().end() ? std::string() : it->second;
}

std::string tileIcon(const std::string& route) {
    return iconSvg(route);
}

const std::vector<Tile>& tiles() {
    static const std::vector<Tile> list = [] {
        std::vector<Tile> out;
        for (const TileRow& r : kTileRows)
            out.push_back({r.route, r.name, r.search, tileSubtitle(r.route), tileIcon(r.route)});
        return out;
    }();
    return list;
}

const Tile* findTile(const std::string& route) {
    for (const Tile& t : tiles())
        if (t.route == route) return &t;
    return nullptr;
}

namespace {

// A family is reached by its key; its tile carries its title and search words.
const std::vector<Tile>& familyTiles() {
    static const std::vector<Tile> list = [] {
        std::vector<Tile> out;
        for (const Formula& f : catalogue()) {
            std::string icon = tileIcon(f.key);
            out.push_back(
                {f.key, f.title, f.search, tileSubtitle(f.key), icon.empty() ? tileIcon("formel") : icon});
        }
        return out;
    }();
    return list;
}

} // namespace

const Tile* findFamilyOrTile(const std::string& route) {
    for (const Tile& t : familyTiles())
        if (t.route == route) return &t;
    return findTile(route);
}

const std::vector<Section>& sections() {
    static const std::vector<Section> list = {
        {"n_ud", "Udregnere", {"udregnere"}},
        {"n_dc", "Kredsløb – jævnstrøm", {"kreds", "kredsguide"}},
        {"n_ac", "Kredsløb – vekselstrøm", {"kredsac", "kredsguideac"}},
        {"n_tools", "Værktøjer", {"trafo", "trefase", "motor", "komp", "kabel", "ac", "res", "acdemo"}},
        {"n_dim", "Dimensionering", {"sf1", "sf3", "ikmax", "ikmin"}},
        {"n_ov",
         "Øv dig",
         {"opgaver", "ovelser", "tekstopgaver", "eksamen", "statistik", "opgaveark", "formelkort"}},
        {"n_help", "Hjælp og overblik", {"finder", "ordliste", "install", "insttest", "minform", "minedata"}},
        {"n_small", "Småværktøjer", {"calc", "enheder", "farve", "energi", "tri", "vec"}},
    };
    return list;
}

const std::vector<Topic>& topics() {
    static const std::vector<Topic> list = {
        {"udregnere",
         "Udregnere og Formelfinder",
         "Alle formel-udregnerne og formelsamlingen med forklaringer",
         {"udregnere", "finder"},
         {}},
        {"kreds", "Tegn et kredsløb", "Kredsløbstegneren med hele udregningen", {"kreds", "kredsac"}, {}},
        {"kredsguide",
         "Kredsløb – fremgangsmåde",
         "Samme tegning, men kun formlerne i rækkefølge med forklaring – ingen tal",
         {"kredsguide", "kredsguideac"},
         {}},
        {"jaevn",
         "Kredsløb med jævnstrøm",
         "Tegn et kredsløb og fremgangsmåden med jævnstrøm (modstande) og øvelserne med jævnstrømskredsløb",
         {"kreds", "kredsguide"},
         {"circ:dc|"}},
        {"opgaver",
         "Opgaver fra læreren",
         "Siden med de opgaver, læreren sender til klassen, og aflevering",
         {"opgaver"},
         {}},
        {"vaerktoj",
         "Værktøjer",
         "Transformer, trefaset, motor, kompensering, kabeldimensionering, spændingsfald, Ik max og Ik min, "
         "vekselstrømskreds, modstande, vekselstrøm – interaktiv",
         {"trafo", "trefase", "motor", "komp", "kabel", "sf1", "sf3", "ikmax", "ikmin", "ac", "res",
          "acdemo"},
         {}},
        {"calc", "Lommeregner", "Den indbyggede lommeregner", {"calc"}, {}},
        {"smaa",
         "Småværktøjer",
         "Enhedsomregner, farvekode, energi og pris, trekant, vektorer",
         {"enheder", "farve", "energi", "tri", "vec"},
         {}},
        {"ovelser", "Øvelser", "Tilfældige opgaver med svar-tjek og tips", {"ovelser"}, {}},
        {"tekstopgaver", "Tekstopgaver", "Opgaver i flere trin som til prøven", {"tekstopgaver"}, {}},
        {"eksamen", "Eksamen", "Opgaver på tid med point", {"eksamen"}, {}},
        {"statistik", "Statistik", "Elevens egne resultater og svage emner", {"statistik"}, {}},
        {"opgaveark", "Opgaveark (PDF)", "Opgaver til print med facit", {"opgaveark"}, {}},
        {"formelkort", "Formelkort", "Flashcards", {"formelkort"}, {}},
        {"ordliste", "Ordliste", "Forklaringer af begreberne", {"ordliste"}, {}},
        {"install", "Installation", "Ledningsfarver, IP-koder, symboler, sikringer, måling", {"install"}, {}},
        {"insttest", "Test af installation", "Verifikationens otte prøver", {"insttest"}, {}},
        {"minform", "Min formelsamling (PDF)", "Elevens egen formelsamling", {"minform"}, {}},
        {"veksel",
         "Kredsløb med vekselstrøm",
         "Tegn et kredsløb og fremgangsmåden med vekselstrøm og øvelserne med vekselstrømskredsløb",
         {"kredsac", "kredsguideac"},
         {"circ:ac|"}},
        {"ac_sinus",
         "Vekselspænding (sinuskurven)",
         "Effektiv-, maksimal- og middelværdi, periodetid og frekvens – udregnerne, Vekselstrøm – interaktiv "
         "og øvelserne",
         {"acdemo"},
         {"sub:El-lære|Vekselspænding", "gl:Vekselstrøm|Sinuskurven"}},
        {"ac_rlc",
         "Spoler, kondensatorer og impedans",
         "R, L og C i serie og parallel, reaktans, impedans, effekt og cos φ – udregnerne, Vekselstrømskreds "
         "(R, L, C i serie), øvelser og tekstopgaver",
         {"ac"},
         {"sub:El-lære|Vekselstrøm", "sub:El-lære|Parallel vekselstrøm", "tekst:spole", "tekst:rc",
          "gl:Vekselstrøm|Komponenter", "gl:Vekselstrøm|Serie og parallel",
          "gl:Vekselstrøm|Effekt og cos φ"}},
        {"ac_komp",
         "Kompensering",
         "Kondensatoren, der løfter cos φ – udregnerne, værktøjet, øvelserne og tekstopgaven",
         {"komp"},
         {"sub:El-lære|Kompensering", "circ:ac|Kompensering", "tekst:komp", "gle:Kompensering",
          "gle:Overkompensering"}},
        {"ac_trafo",
         "Transformer",
         "Spænding, strøm, viklinger og transformerstørrelse – udregnerne, værktøjet, øvelserne og "
         "tekstopgaven",
         {"trafo"},
         {"sub:El-lære|Transformer", "tekst:trafo", "gl:Vekselstrøm|Transformer"}},
        {"ac_motor",
         "Motorer",
         "Omdrejningstal, slip, virkningsgrad, strøm og startstrøm – udregnerne, Motor (mærkeplade), "
         "øvelserne og tekstopgaven",
         {"motor"},
         {"sub:El-lære|Motorer", "tekst:motor", "gl:Vekselstrøm|Motorer"}},
        {"ac_trefase",
         "Trefaset",
         "Stjerne og trekant, trefaset effekt og fejl – udregnerne, Trefaset (stjerne / trekant), "
         "Spændingsfald 3-faset, Ik max, øvelserne, tekstopgaven og ordlisten",
         {"trefase", "sf3", "ikmax"},
         // The glossary keeps the three-phase groups in its section "Vekselstrøm".
         {"sub:Trefaset|", "tekst:varme3", "gl:Vekselstrøm|Systemet", "gl:Vekselstrøm|Stjerne og trekant",
          "gl:Vekselstrøm|Effekt og fejl"}},
    };
    return list;
}

} // namespace fl
