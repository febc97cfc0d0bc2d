// The guide and the task sheet. The guide solves in full but shows no
// numbers: only the steps that find something new, each with its first
// formula line, why it is taken and what it needs from earlier steps. The
// task sheet reads the givens and solves nothing.
#include "fl/circuit/setup.h"
#include "fl/circuit/sheets/sheetparts.h"

#include <map>
#include <set>

namespace fl {

using namespace sheetparts;

namespace {

const char* const kNoWay =
    "Programmet kunne ikke finde en fremgangsmåde ud fra de opgivne værdier – der mangler nok en oplysning.";

std::string guideStep(int n, const std::string& find, const std::string& title, const std::string& pages,
                      const std::string& formula, bool isAc, const std::vector<std::string>& needs) {
    std::string out = "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">" + std::to_string(n) + "</span> Find " +
                      find + " – " + title + "</p>";
    if (!pages.empty()) out += "<span class=\"crumb\">formelsamlingen s. " + pages + "</span>";
    out += formula + "<p class=\"hint0\"><b>Hvorfor:</b> " + whyText(title, isAc) + "</p>";
    if (!needs.empty()) out += "<p class=\"hint0\"><b>Det skal du bruge:</b> " + join(needs, ", ") + ".</p>";
    return out + "</div>";
}

} // namespace

std::string firstFormula(const std::string& stepHtml) {
    size_t from = 0;
    // A leading hint is an explanation, not the formula.
    while (stepHtml.compare(from, 17, "<p class=\"hint0\">") == 0) {
        const size_t end = stepHtml.find("</p>", from);
        if (end == std::string::npos) return {};
        from = end + 4;
    }
    const size_t table = stepHtml.find("<table class=\"eqs\">", from);
    if (table == std::string::npos) return {};
    const size_t row = stepHtml.find("<tr>", table);
    const size_t rowEnd = stepHtml.find("</tr>", row == std::string::npos ? table : row);
    if (row == std::string::npos || rowEnd == std::string::npos) return {};
    return "<table class=\"eqs\">" + stepHtml.substr(row, rowEnd + 5 - row) + "</table>";
}

std::string fremgangsmaade(Circuit& c, const std::string& date) {
    const Sheet s = computeSheet(c);
    if (!s.error.empty()) return msgBox(s.error, true);
    std::string out = head("Fremgangsmåde", s.isAc, date, "Sådan regner du kredsløbet");
    out += drawing(c, {}, 720);
    out += "<p class=\"hint0\">Her får du ikke tallene regnet ud. Du får formlerne i den rækkefølge, du skal bruge "
           "dem, og hvorfor. Regn selv hvert trin igennem på papir eller med lommeregneren – og brug \"Tegn et "
           "kredsløb\", hvis du vil have hele udregningen bagefter.</p>";
    out += "<h3 class=\"sh\">Det du kender</h3><div class=\"known\">" + givenLines(s) + "</div>";
    out += missingAdvice(s);

    std::set<std::string> given = s.givenSymbols;
    for (const Given& g : s.given)
        if (!g.symbol.empty()) given.insert(g.symbol);
    std::map<std::string, int> foundAt;
    const auto needs = [&](const std::vector<std::string>& symbols) {
        std::vector<std::string> out;
        for (const std::string& sym : symbols) {
            std::string where;
            if (auto it = foundAt.find(sym); it != foundAt.end())
                where = "fra trin " + std::to_string(it->second);
            else if (given.count(sym) || s.links.count(sym) || sym == "U_h") // U_h: set by the sheet's hint
                where = "opgivet";
            out.push_back(describeSymbol(sym, s.root, s.isAc) +
                          (where.empty() ? std::string() : " <span class=\"crumb\">" + where + "</span>"));
        }
        return out;
    };

    std::string steps;
    int n = 0;
    for (const CircuitStep& st : s.searchSteps) {
        if (st.target.empty()) {
            // The search finds the unknowns together, from the given quantities.
            if (st.title.find("kan ikke isoleres") == std::string::npos || s.unknowns.empty()) continue;
            std::vector<std::string> what, from;
            for (const std::string& u : s.unknowns)
                what.push_back(describeSymbol(u, s.root, s.isAc));
            for (const Target& t : s.targets)
                from.push_back(t.symbol);
            ++n;
            steps += guideStep(n, join(what, " og "), st.title, st.pages, {}, s.isAc, needs(from));
            for (const std::string& u : s.unknowns)
                foundAt.emplace(u, n);
            continue;
        }
        if (given.count(st.target) || foundAt.count(st.target)) continue;
        ++n;
        steps += guideStep(n, describeSymbol(st.target, s.root, s.isAc), st.title, st.pages, {}, s.isAc, {});
        foundAt.emplace(st.target, n);
    }
    for (const CircuitStep& st : s.steps) {
        if (st.target.empty() || given.count(st.target) || foundAt.count(st.target)) continue;
        const std::vector<std::string> in = needs(st.uses);
        ++n;
        steps += guideStep(n, describeSymbol(st.target, s.root, s.isAc), st.title, st.pages, firstFormula(st.html),
                           s.isAc, in);
        foundAt.emplace(st.target, n);
    }
    if (n == 0)
        out += msgBox(kNoWay, false);
    else
        out += "<h3 class=\"sh\">Formlerne i den rækkefølge, du skal bruge dem</h3><div class=\"steps\">" + steps +
               "</div>";

    out += "<h3 class=\"sh\">Tjek dit resultat</h3><p class=\"hint0\">";
    out += s.isAc ? "Regn effekttrekanten igennem til sidst: S² skal give P² + Q², og cos φ = P/S skal passe med "
                    "vinklen fra impedanstrekanten. Grenstrømmene lagt sammen som vektorer skal give den samlede "
                    "strøm."
                  : "Brug Kirchhoffs love som kontrol: delspændingerne i en serie skal give kildespændingen, og "
                    "grenstrømmene i en parallel skal give den samlede strøm. Effekterne i komponenterne skal "
                    "tilsammen give den samlede effekt.";
    out += "</p>";
    if (s.stopped)
        out += "<p class=\"hint0\">Bemærk: med de opgivne tal stoppede den fulde udregning undervejs, så tjek "
               "tallene, før du regner.</p>";
    return out + "</div>";
}

std::string fremgangsmaade() {
    return fremgangsmaade(currentCircuit(), sheetDate());
}

std::string opgaveark(Circuit& c, const std::string& date) {
    const bool isAc = c.mode == "ac";
    std::string out = head("Opgaveark", isAc, date, "Opgave: regn kredsløbet");
    out += drawing(c, {}, 0);
    std::string given;
    bool coils = false, caps = false;
    {
        MeterGuard guard(c);
        if (guard.info()->error.empty()) {
            nameCircuit(c);
            const Setup su = readSetup(c, guard.info().get());
            for (const Given& g : su.given)
                given += g.line;
        }
        walk(c.root, [&](const CNodePtr& n) {
            coils = coils || n->k == "L";
            caps = caps || n->k == "C";
        });
    }
    out += "<h3 class=\"sh\">Det er opgivet</h3><div class=\"known\">" + given + "</div>";
    out += "<h3 class=\"sh\">Find</h3><ol>";
    // The powers item and the closing hint share their ending.
    const char* ending = isAc ? " og effekttrekanten (S² = P² + Q²)." : ".";
    if (isAc) {
        if (coils || caps) out += "<li>reaktanserne X<sub>L</sub> og X<sub>C</sub></li>";
        out += "<li>impedansen Z og vinklen φ</li>";
    }
    out += "<li>strømmen I og strømmen i hver gren</li><li>spændingen over hver komponent</li>";
    out += std::string("<li>") +
           (isAc ? "den aktive, den reaktive og den tilsyneladende effekt" : "effekten i hver komponent og den samlede effekt") +
           ending + "</li>";
    out += "</ol><p class=\"hint0\">Skriv formlen først, sæt tallene ind, og husk enheden på resultatet. Tjek til "
           "sidst med Kirchhoffs love";
    out += std::string(ending) + "</p>";
    out += "<h3 class=\"sh\">Din udregning</h3><table class=\"dataTable\"><tr><th style=\"width:22%\">Størrelse</th>"
           "<th style=\"width:38%\">Formel</th><th>Tal ind og resultat</th></tr>";
    for (int row = 0; row < 10; ++row)
        out += "<tr><td>&nbsp;<br>&nbsp;</td><td></td><td></td></tr>";
    out += "</table><p class=\"crumb\">Facit kan ses i \"Tegn et kredsløb\" (hele udregningen) eller trin for trin i "
           "\"Kredsløb – fremgangsmåde\".</p>";
    return out + "</div>";
}

std::string opgaveark() {
    return opgaveark(currentCircuit(), sheetDate());
}

} // namespace fl
