// The installation reference's tables and its page markup. Each table names
// the rule it comes from, and the page prints that source under it, as a
// teacher's handout does.
#include "fl/glossary/install.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/glossary/insttest.h"

#include <algorithm>

namespace fl {

const std::vector<ConductorColour>& conductorColours() {
    static const std::vector<ConductorColour> table{
        {"L1", "Fase 1", "Brun", "#8b5a2b", "I 1-fasede kabler er fasen brun."},
        {"L2", "Fase 2", "Sort", "#1b1b1b", ""},
        {"L3", "Fase 3", "Grå", "#8c9096", ""},
        {"N", "Nulleder", "Blå", "#2f7fd1",
         "Har kablet ingen nulleder, må den blå leder bruges til andet – men aldrig som beskyttelsesleder."},
        {"PE", "Beskyttelsesleder (jord)", "Grøn/gul", "#3aa345 #f2d21b",
         "Grøn/gul må aldrig bruges til andet end beskyttelsesleder og udligning."},
        {"PEN", "Kombineret nul og beskyttelse", "Grøn/gul med blå mærkning", "#3aa345 #f2d21b",
         "Mærkes blå i enderne (eller blå med grøn/gul mærkning). Findes kun i faste installationer med "
         "tilstrækkeligt tværsnit."},
    };
    return table;
}

const std::vector<OlderColour>& olderColours() {
    static const std::vector<OlderColour> table{
        {"Brun, sort, sort", "Faserne i 5-leder kabler før den nuværende ordning (brun, sort, grå)",
         "Fra 1970'erne til begyndelsen af 2000'erne"},
        {"Sort eller brun", "Fase i 1-fasede kabler", "Begge farver ses i ældre installationer"},
        {"Lyseblå", "Nulleder – men kan i 3-leder kabler uden nul være brugt som tændtråd mellem afbryder og lampe",
         "Fra 1970'erne"},
        {"Rød", "I meget gamle installationer ofte beskyttelsesleder (jord) – men rød er også brugt som fase",
         "Før grøn/gul blev indført i 1970'erne"},
        {"Grøn/gul", "Altid beskyttelsesleder", "Siden 1970'erne"},
    };
    return table;
}

const std::vector<IpLevel>& ipSolids() {
    static const std::vector<IpLevel> table{
        {'0', "Ingen beskyttelse mod berøring eller fremmedlegemer."},
        {'1', "Beskyttet mod faste fremmedlegemer på 50 mm og derover – en hånd (håndryg) kan ikke nå farlige dele."},
        {'2', "Beskyttet mod faste fremmedlegemer på 12,5 mm og derover – fingersikker."},
        {'3', "Beskyttet mod faste fremmedlegemer på 2,5 mm og derover – fx værktøj."},
        {'4', "Beskyttet mod faste fremmedlegemer på 1,0 mm og derover – fx tråd og små insekter."},
        {'5', "Støvbeskyttet: støv kan trænge ind, men ikke så meget, at det skader funktion eller sikkerhed."},
        {'6', "Støvtæt."},
    };
    return table;
}

const std::vector<IpLevel>& ipWater() {
    static const std::vector<IpLevel> table{
        {'0', "Ingen beskyttelse mod vand."},
        {'1', "Beskyttet mod lodret faldende vanddråber."},
        {'2', "Beskyttet mod faldende vanddråber, når kapslingen hælder op til 15°."},
        {'3', "Beskyttet mod regn: vandsprøjt op til 60° fra lodret."},
        {'4', "Beskyttet mod vandstænk fra alle retninger."},
        {'5', "Beskyttet mod vandstråler fra alle retninger (dyse 6,3 mm)."},
        {'6', "Beskyttet mod kraftige vandstråler (dyse 12,5 mm)."},
        {'7', "Beskyttet mod kortvarig nedsænkning (1 m i 30 minutter)."},
        {'8', "Beskyttet mod vedvarende nedsænkning på de vilkår, fabrikanten angiver (strengere end 7)."},
        {'9', "Beskyttet mod vandstråler med højt tryk og høj temperatur (højtryksrenser)."},
    };
    return table;
}

const std::vector<IpLevel>& ipAccess() {
    static const std::vector<IpLevel> table{
        {'A', "Farlige dele kan ikke nås med håndryggen."},
        {'B', "Farlige dele kan ikke nås med en finger."},
        {'C', "Farlige dele kan ikke nås med værktøj (2,5 mm)."},
        {'D', "Farlige dele kan ikke nås med en tråd (1,0 mm)."},
    };
    return table;
}

const std::vector<IpLevel>& ipSupplementary() {
    static const std::vector<IpLevel> table{
        {'H', "Højspændingsmateriel."},
        {'M', "Prøvet mod vand, mens de bevægelige dele (fx en motors rotor) er i bevægelse."},
        {'S', "Prøvet mod vand, mens de bevægelige dele står stille."},
        {'W', "Egnet til brug under de vejrforhold, der er aftalt med fabrikanten."},
    };
    return table;
}

const std::vector<IpExample>& ipExamples() {
    static const std::vector<IpExample> table{
        {"Kapslinger og afdækninger indendørs (tørre rum)", "IP2X",
         "DS/HD 60364-4-41, anneks A, A.2: mindst IPXXB eller IP2X"},
        {"Badeværelse, område 0 (inde i badekar eller brusekar)", "IPX7", "DS/HD 60364-7-701, 701.512.2"},
        {"Badeværelse, område 1 og 2", "IPX4", "DS/HD 60364-7-701, 701.512.2"},
        {"Område 1 og 2, hvor der rengøres med vandstråler (fx offentlige baderum)", "IPX5",
         "DS/HD 60364-7-701, 701.512.2"},
        {"Udendørs stikkontakt (vandstænk og små fremmedlegemer)", "IP44",
         "DS/HD 60364-5-51, tabel 51A: AD4 vandstænk → IPX4, AE3 små fremmedlegemer → IP4X"},
        {"Rum, der spules med vand (vaskehal, stald)", "IPX5", "DS/HD 60364-5-51, tabel 51A: AD5 vandstråler"},
        {"Dykpumpe og andet neddykket materiel", "IPX8", "DS/HD 60364-5-51, tabel 51A: AD8 neddykning"},
    };
    return table;
}

namespace {

const IpLevel* levelOf(const std::vector<IpLevel>& table, char c) {
    for (const IpLevel& l : table)
        if (l.code == c) return &l;
    return nullptr;
}

std::string onlyCode(const std::string& typed) {
    std::string out;
    for (char c : typed) {
        if (static_cast<unsigned char>(c) <= ' ') continue;
        out += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    }
    return out;
}

} // namespace

IpReading readIpCode(const std::string& typed) {
    IpReading r;
    const std::string code = onlyCode(typed);
    r.code = code;
    if (code.empty()) {
        r.error = "Skriv en IP-kode, fx IP44.";
        return r;
    }
    if (code.rfind("IP", 0) != 0) {
        r.error = "En IP-kode begynder med bogstaverne IP, fx IP44.";
        return r;
    }
    if (code.size() < 4) {
        r.error = "Efter IP kommer to cifre (eller X for et ciffer, der ikke er angivet), fx IP44 eller IPX4.";
        return r;
    }
    const char first = code[2], second = code[3];
    const IpLevel* solids = levelOf(ipSolids(), first);
    const IpLevel* water = levelOf(ipWater(), second);
    if (first != 'X' && !solids) {
        r.error = (first >= '7' && first <= '9')
                      ? "Det første ciffer går kun fra 0 til 6."
                      : "Efter IP kommer to cifre (eller X for et ciffer, der ikke er angivet), fx IP44 eller IPX4.";
        return r;
    }
    if (second != 'X' && !water) {
        r.error = "Efter IP kommer to cifre (eller X for et ciffer, der ikke er angivet), fx IP44 eller IPX4.";
        return r;
    }
    r.lines.push_back(first == 'X' ? "<b>X</b> – berøring og fremmedlegemer er ikke angivet (ikke prøvet)."
                                   : std::string("<b>") + first + "</b> – " + solids->meaning);
    r.lines.push_back(second == 'X' ? "<b>X</b> – vand er ikke angivet (ikke prøvet)."
                                    : std::string("<b>") + second + "</b> – " + water->meaning);
    // Then at most one additional letter (A–D), then supplementary letters (H, M, S, W), each once.
    size_t i = 4;
    if (i < code.size()) {
        if (const IpLevel* a = levelOf(ipAccess(), code[i])) {
            r.lines.push_back(std::string("<b>") + code[i] + "</b> – " + a->meaning);
            ++i;
        }
    }
    std::string seen;
    for (; i < code.size(); ++i) {
        const IpLevel* s = levelOf(ipSupplementary(), code[i]);
        if (!s || seen.find(code[i]) != std::string::npos) {
            r.lines.clear();
            r.error = "\"" + htmlEscape(code.substr(i, 1)) +
                      "\" hører ikke til her: efter de to cifre kan der stå ét af bogstaverne A–D og derefter H, "
                      "M, S eller W.";
            return r;
        }
        seen += code[i];
        r.lines.push_back(std::string("<b>") + code[i] + "</b> – " + s->meaning);
    }
    return r;
}

const std::vector<PoeClass>& poeClasses() {
    static const std::vector<PoeClass> table{
        {0, "IEEE 802.3af", "Type 1", 15.4, 12.95}, {1, "IEEE 802.3af", "Type 1", 4.0, 3.84},
        {2, "IEEE 802.3af", "Type 1", 7.0, 6.49},   {3, "IEEE 802.3af", "Type 1", 15.4, 12.95},
        {4, "IEEE 802.3at", "Type 2", 30.0, 25.5},  {5, "IEEE 802.3bt", "Type 3", 45.0, 40.0},
        {6, "IEEE 802.3bt", "Type 3", 60.0, 51.0},  {7, "IEEE 802.3bt", "Type 4", 75.0, 62.0},
        {8, "IEEE 802.3bt", "Type 4", 90.0, 71.3},
    };
    return table;
}

const std::vector<PoeType>& poeTypes() {
    static const std::vector<PoeType> table{
        {"Type 1", "IEEE 802.3af (2003)", "PoE", 2, "44–57 V", 0.35},
        {"Type 2", "IEEE 802.3at (2009)", "PoE+", 2, "50–57 V", 0.6},
        {"Type 3", "IEEE 802.3bt (2018)", "PoE++", 4, "50–57 V", 0.6},
        {"Type 4", "IEEE 802.3bt (2018)", "PoE++", 4, "52–57 V", 0.96},
    };
    return table;
}

const std::vector<InstallSymbol>& installSymbols() {
    // Drawn on a 64 × 48 grid; the stroke colour is set by the caller.
    static const std::vector<InstallSymbol> table{
        {"stik", "Stikkontakt med jord", "Udtag til stikprop med beskyttelseskontakt",
         "<path d=\"M20 18 A12 12 0 0 0 44 18\"/><line x1=\"32\" y1=\"30\" x2=\"32\" y2=\"44\"/>"
         "<line x1=\"18\" y1=\"12\" x2=\"46\" y2=\"12\"/>"},
        {"afb", "Afbryder, 1-polet", "Tænder og slukker et lampested",
         "<circle cx=\"24\" cy=\"32\" r=\"4\"/><line x1=\"27\" y1=\"29\" x2=\"42\" y2=\"14\"/>"
         "<line x1=\"42\" y1=\"14\" x2=\"47\" y2=\"19\"/>"},
        {"korr", "Korrespondanceafbryder", "Tænder og slukker samme lampe fra to steder, fx i en trappe",
         "<circle cx=\"32\" cy=\"24\" r=\"4\"/><line x1=\"35\" y1=\"21\" x2=\"48\" y2=\"8\"/>"
         "<line x1=\"48\" y1=\"8\" x2=\"53\" y2=\"13\"/><line x1=\"29\" y1=\"27\" x2=\"16\" y2=\"40\"/>"
         "<line x1=\"16\" y1=\"40\" x2=\"11\" y2=\"35\"/>"},
        {"lampe", "Lampested", "Udtag til en lampe (fast armatur eller DCL)",
         "<circle cx=\"32\" cy=\"24\" r=\"12\"/><line x1=\"23.5\" y1=\"15.5\" x2=\"40.5\" y2=\"32.5\"/>"
         "<line x1=\"40.5\" y1=\"15.5\" x2=\"23.5\" y2=\"32.5\"/>"},
        {"lysstof", "Lysstof- eller LED-armatur", "Aflangt armatur; længden kan tegnes i målestok",
         "<line x1=\"10\" y1=\"24\" x2=\"54\" y2=\"24\"/><line x1=\"10\" y1=\"16\" x2=\"10\" y2=\"32\"/>"
         "<line x1=\"54\" y1=\"16\" x2=\"54\" y2=\"32\"/>"},
        {"tavle", "Gruppetavle", "Tavlen med sikringer og fejlstrømsafbrydere",
         "<rect x=\"14\" y=\"14\" width=\"36\" height=\"20\"/><path d=\"M14 34 L50 14 L50 34 Z\" "
         "fill=\"currentColor\"/>"},
        {"sikring", "Sikring", "Smeltesikring eller automatsikring i en strømvej",
         "<rect x=\"24\" y=\"10\" width=\"16\" height=\"28\"/><line x1=\"32\" y1=\"2\" x2=\"32\" y2=\"46\"/>"},
        {"jord", "Jord", "Forbindelse til jord, fx jordspyd",
         "<line x1=\"32\" y1=\"6\" x2=\"32\" y2=\"26\"/><line x1=\"18\" y1=\"26\" x2=\"46\" y2=\"26\"/>"
         "<line x1=\"23\" y1=\"33\" x2=\"41\" y2=\"33\"/><line x1=\"28\" y1=\"40\" x2=\"36\" y2=\"40\"/>"},
        {"pe", "Beskyttelsesjord", "Klemme til beskyttelseslederen (PE)",
         "<circle cx=\"32\" cy=\"26\" r=\"18\"/><line x1=\"32\" y1=\"10\" x2=\"32\" y2=\"24\"/>"
         "<line x1=\"22\" y1=\"24\" x2=\"42\" y2=\"24\"/><line x1=\"25.5\" y1=\"30\" x2=\"38.5\" y2=\"30\"/>"
         "<line x1=\"29\" y1=\"36\" x2=\"35\" y2=\"36\"/>"},
        {"motor", "Motor, 3-faset", "Trefaset motor; M i en cirkel",
         "<circle cx=\"32\" cy=\"24\" r=\"16\"/><text x=\"32\" y=\"25\" text-anchor=\"middle\" font-size=\"15\" "
         "font-family=\"sans-serif\" fill=\"currentColor\" stroke=\"none\">M</text><text x=\"32\" y=\"36\" "
         "text-anchor=\"middle\" font-size=\"8\" font-family=\"sans-serif\" fill=\"currentColor\" "
         "stroke=\"none\">3~</text>"},
        {"trafo", "Transformer", "To viklinger: fx ringetransformer eller sikkerhedstransformer",
         "<circle cx=\"25\" cy=\"24\" r=\"12\"/><circle cx=\"39\" cy=\"24\" r=\"12\"/>"},
    };
    return table;
}

const std::vector<InstallFact>& installFacts() {
    static const std::vector<InstallFact> table = [] {
        std::vector<InstallFact> out;
        for (const ConductorColour& c : conductorColours())
            out.push_back({"inst:farve:" + c.conductor, "farver", "Hvilken farve har " + c.conductor + " (" +
                                                                 c.role + ")?",
                           c.colour});
        for (const IpLevel& l : ipSolids())
            out.push_back({std::string("inst:ip1:") + l.code, "ip",
                           std::string("IP") + l.code + "X – hvad betyder første ciffer " + l.code + "?", l.meaning});
        for (const IpLevel& l : ipWater())
            out.push_back({std::string("inst:ip2:") + l.code, "ip",
                           std::string("IPX") + l.code + " – hvad betyder andet ciffer " + l.code + "?", l.meaning});
        for (const IpExample& e : ipExamples())
            out.push_back({"inst:ipex:" + e.code + ":" + std::to_string(out.size()), "ip",
                           "Hvilken IP-kode kræves: " + e.place + "?", e.code + " (" + e.source + ")"});
        for (const PoeClass& p : poeClasses())
            out.push_back({"inst:poe:" + std::to_string(p.number), "poe",
                           "PoE klasse " + std::to_string(p.number) + ": hvor meget effekt ved kilden og ved "
                                                                          "apparatet?",
                           fmtWithUnit(p.psePower, "W") + " ved kilden, " + fmtWithUnit(p.pdPower, "W") +
                               " ved apparatet (" + p.standard + ")"});
        for (const InstallFact& f : verificationFacts())
            out.push_back(f);
        return out;
    }();
    return table;
}

namespace {

std::string tableStart(const std::vector<std::string>& heads) {
    std::string html = "<div class=\"tbl\"><table><tr>";
    for (const std::string& h : heads)
        html += "<th style=\"text-align:left\">" + h + "</th>";
    return html + "</tr>";
}

std::string cell(const std::string& text) { return "<td style=\"text-align:left\">" + text + "</td>"; }

std::string source(const std::string& text) { return "<p class=\"crumb\">Kilde: " + text + "</p>"; }

std::string swatch(const std::string& colours) {
    std::string html;
    size_t from = 0;
    while (from < colours.size()) {
        size_t to = colours.find(' ', from);
        if (to == std::string::npos) to = colours.size();
        html += "<span style=\"background-color:" + colours.substr(from, to - from) + "\">&nbsp;&nbsp;&nbsp;</span>";
        from = to + 1;
    }
    return html;
}

std::string cardsChip(const std::string& deck, const std::string& text) {
    return "<p><a class=\"chip\" href=\"cards:" + deck + "\">→ " + text + "</a></p>";
}

std::string coloursTab() {
    std::string html = "<h3>Ledningsfarver i nye installationer</h3>" +
                       tableStart({"Leder", "Funktion", "Farve", "Bemærk"});
    for (const ConductorColour& c : conductorColours())
        html += "<tr>" + cell("<b>" + c.conductor + "</b>") + cell(c.role) + cell(swatch(c.swatch) + " " + c.colour) +
                cell(c.note) + "</tr>";
    html += "</table></div>" +
            source("DS/HD 308 S2 (identifikation af ledere i kabler og ledninger) og DS/HD 60364-5-51, afsnit "
                   "514.3 (identifikation af ledere).");
    html += "<h3>Farver i ældre installationer</h3>" + tableStart({"Farve", "Betydning", "Hvornår"});
    for (const OlderColour& c : olderColours())
        html += "<tr>" + cell("<b>" + c.colour + "</b>") + cell(c.meaning) + cell(c.period) + "</tr>";
    html += "</table></div>";
    html += msgBox("<b>Farven er aldrig et bevis.</b> I gamle installationer kan farverne være brugt anderledes, "
                   "og en leder kan være skiftet ud. Mål altid med en topolet spændingstester, før du rører ved "
                   "en leder.",
                   true);
    html += cardsChip("farver", "Øv farverne som kort");
    return html;
}

std::string levelTable(const std::string& head, const std::vector<IpLevel>& levels) {
    std::string html = tableStart({head, "Betydning"});
    for (const IpLevel& l : levels)
        html += "<tr>" + cell(std::string("<b>") + l.code + "</b>") + cell(l.meaning) + "</tr>";
    return html + "</table></div>";
}

std::string ipTab(const std::string& ip) {
    std::string html;
    if (!ip.empty()) {
        const IpReading r = readIpCode(ip);
        if (!r.error.empty()) {
            html += msgBox(r.error, true);
        } else {
            html += "<p class=\"ipbig\">" + htmlEscape(r.code) + "</p>";
            for (const std::string& line : r.lines)
                html += "<p>" + line + "</p>";
        }
    }
    html += "<p>En IP-kode fortæller, hvor godt en kapsling beskytter mod berøring og fremmedlegemer (første "
            "ciffer) og mod vand (andet ciffer). Et X betyder, at egenskaben ikke er angivet. Efter cifrene kan "
            "der stå et tillægsbogstav (A–D) og et supplerende bogstav (H, M, S, W). Jo højere tal, jo bedre "
            "beskyttelse – men 7 og 8 (nedsænkning) dækker ikke nødvendigvis 5 og 6 (vandstråler).</p>";
    html += "<h3>Typiske krav</h3>" + tableStart({"Sted", "Mindst", "Kilde"});
    for (const IpExample& e : ipExamples())
        html += "<tr>" + cell(e.place) + cell("<a href=\"ip:" + e.code + "\"><b>" + e.code + "</b></a>") +
                cell("<span class=\"crumb\">" + e.source + "</span>") + "</tr>";
    html += "</table></div>";
    html += "<h3>Første ciffer: berøring og fremmedlegemer</h3>" + levelTable("Ciffer", ipSolids());
    html += "<h3>Andet ciffer: vand</h3>" + levelTable("Ciffer", ipWater());
    html += "<h3>Tillægsbogstav: beskyttelse af personer</h3>" + levelTable("Bogstav", ipAccess());
    html += "<h3>Supplerende bogstav</h3>" + levelTable("Bogstav", ipSupplementary());
    html += source("DS/EN 60529 (kapslingsklasser, IP-kode); ciffer 9 kom til med tillæg A2.");
    html += cardsChip("ip", "Øv IP-koderne som kort");
    return html;
}

std::string symbolsTab(const std::string& ink) {
    std::string html = "<p>De mest brugte symboler på installationsplaner. Firmaer og tegneprogrammer bruger "
                       "små varianter, så tjek altid tegningens signaturforklaring.</p>";
    html += "<div class=\"tbl\"><table>";
    for (const InstallSymbol& s : installSymbols()) {
        std::string svg = "<g fill=\"none\" stroke=\"" + ink +
                          "\" stroke-width=\"2\" stroke-linecap=\"round\" stroke-linejoin=\"round\" color=\"" +
                          ink + "\">" + s.svg + "</g>";
        html += "<tr><td>" + figure(svg, 64, 48) + "</td>" + cell("<b>" + s.name + "</b><br>" + s.use) + "</tr>";
    }
    html += "</table></div>";
    html += source("DS/EN 60617-11 (grafiske symboler til diagrammer: installationsplaner).");
    return html;
}

std::string poeTab() {
    std::string html = "<p>Med PoE (Power over Ethernet) får et apparat både data og strøm gennem netværkskablet "
                       "– fx et trådløst accesspunkt, et IP-kamera eller en IP-telefon. Kilden (PSE, switch eller "
                       "injektor) og apparatet (PD) aftaler en klasse. Effekten ved apparatet er mindre end ved "
                       "kilden, fordi en del går tabt i op til 100 m kabel.</p>";
    html += "<h3>Klasser</h3><div class=\"tbl\"><table><tr><th>Klasse</th><th style=\"text-align:left\">Standard"
            "</th><th style=\"text-align:left\">Type</th><th>Ved kilden (PSE)</th><th>Ved apparatet (PD)</th></tr>";
    for (const PoeClass& p : poeClasses())
        html += "<tr><td>" + std::to_string(p.number) + "</td>" + cell(p.standard) + cell(p.type) + "<td>" +
                fmtWithUnit(p.psePower, "W") + "</td><td>" + fmtWithUnit(p.pdPower, "W") + "</td></tr>";
    html += "</table></div>";
    html += "<h3>Typer</h3><div class=\"tbl\"><table><tr><th style=\"text-align:left\">Type</th><th "
            "style=\"text-align:left\">Standard</th><th style=\"text-align:left\">Navn</th><th>Par med strøm</th>"
            "<th>Spænding ved kilden</th><th>Største strøm</th></tr>";
    for (const PoeType& t : poeTypes())
        html += "<tr>" + cell(t.type) + cell(t.standard) + cell(t.name) + "<td>" + std::to_string(t.pairs) +
                "</td><td>" + t.pseVoltage + "</td><td>" + (t.pairs == 4 ? "2 × " : "") +
                fmtWithUnit(t.currentPerPair * 1000, "mA") + "</td></tr>";
    html += "</table></div>";
    html += "<p class=\"hint0\">Klasse 0 er standardklassen for apparater, der ikke melder en klasse: kilden "
            "reserverer fuld Type 1-effekt. Et apparat, der kræver mere end kilden kan give, starter ikke – eller "
            "kører med nedsat funktion. Spændingen er under 60 V jævnspænding.</p>";
    html += source("IEEE 802.3af-2003, IEEE 802.3at-2009 og IEEE 802.3bt-2018 (Power over Ethernet).");
    html += cardsChip("poe", "Øv PoE-klasserne som kort");
    return html;
}

} // namespace

std::string installHtml(const std::string& tab, const std::string& ip, const std::string& ink) {
    if (tab == "ip") return ipTab(ip);
    if (tab == "symboler") return symbolsTab(ink);
    if (tab == "poe") return poeTab();
    return coloursTab();
}

} // namespace fl
