#include "server/reports.h"

#include "server/html.h"
#include "store/json.h"

#include <algorithm>
#include <sstream>

namespace server {

namespace {

bool isRuntime(const std::string& module) {
    for (const char* lib : {"libc.so", "libstdc++.so", "libgcc_s.so", "libpthread.so"})
        if (module.rfind(lib, 0) == 0) return true;
    return false;
}

// "  #3 mod!sym+0x1c  (f.cpp:9)" → "mod!sym"; "  #3 mod+0x2a4f0" stays "mod+0x2a4f0".
std::string frameSpot(const std::string& line, std::string& module) {
    const size_t space = line.find(' ', 3);
    std::string f = space == std::string::npos ? std::string() : line.substr(space + 1);
    const size_t source = f.find("  (");
    if (source != std::string::npos) f.resize(source);
    const size_t bang = f.find('!');
    module = f.substr(0, bang == std::string::npos ? f.find("+0x") : bang);
    if (bang != std::string::npos) {
        const size_t offset = f.rfind("+0x");
        if (offset != std::string::npos && offset > bang) f.resize(offset);
    }
    return f;
}

double number(const Json& j) { return j.isNumber() ? j.num : 0; }

} // namespace

std::string crashSignature(const std::string& record, int frames) {
    std::istringstream in(record);
    std::string line;
    if (!std::getline(in, line) || line.find(" crash: ") == std::string::npos) return {};
    const size_t code = line.find("exception ");
    std::string out = code == std::string::npos ? std::string("exception ?")
                                                : line.substr(code, line.find(' ', code + 10) - code);
    int taken = 0;
    while (taken < frames && std::getline(in, line)) {
        if (line.rfind("  #", 0) != 0) continue;
        std::string module;
        const std::string spot = frameSpot(line, module);
        if (spot.empty() || isRuntime(module)) continue;
        out += "\n" + spot;
        ++taken;
    }
    return out;
}

ReportsSummary summariseReports(const std::vector<Report>& reports) {
    ReportsSummary s;
    std::map<std::string, CrashGroup> groups;
    std::map<std::string, double> pages;
    std::set<std::string> copies;
    for (const Report& r : reports) {
        Json body;
        if (!Json::tryParse(r.body, body) || !body.isObject()) continue;
        if (r.kind == "bug") {
            s.bugs.push_back({r.at, r.classId, body.at("text").asString(), body.at("contact").asString(),
                              body.at("version").asString(), body.at("edition").asString(),
                              body.at("page").asString(), body.at("os").asString()});
        } else if (r.kind == "telemetry:crash") {
            const std::string& text = body.at("text").asString();
            std::string sig = crashSignature(text);
            if (sig.empty()) sig = "(ulæselig rapport)";
            CrashGroup& g = groups[sig];
            if (g.count == 0) {
                g.signature = sig;
                g.last = r.at;
                g.example = text; // the list is newest first
            }
            ++g.count;
            g.first = r.at;
            g.versions.insert(body.at("version").asString());
            g.copies.insert(body.at("uid").asString());
        } else if (r.kind == "telemetry:usage") {
            ++s.usageReports;
            s.starts += number(body.at("starts"));
            copies.insert(body.at("uid").asString());
            for (const auto& [page, count] : body.at("pages").asObject()) pages[page] += number(count);
        }
    }
    for (auto& [sig, g] : groups) s.crashes.push_back(std::move(g));
    std::stable_sort(s.crashes.begin(), s.crashes.end(), [](const CrashGroup& a, const CrashGroup& b) {
        return a.count != b.count ? a.count > b.count : a.last > b.last;
    });
    for (const auto& [page, visits] : pages) s.pages.push_back({page, visits});
    std::stable_sort(s.pages.begin(), s.pages.end(),
                     [](const PageUse& a, const PageUse& b) { return a.visits > b.visits; });
    s.copies = copies.size();
    return s;
}

namespace {

std::string whole(double v) { return std::to_string(static_cast<long long>(v + 0.5)); }

std::string lines(const std::string& text) {
    std::string out;
    for (char c : esc(text)) out += c == '\n' ? std::string("<br>") : std::string(1, c);
    return out;
}

std::string joined(const std::set<std::string>& items) {
    std::string out;
    for (const std::string& i : items) out += (out.empty() ? "" : ", ") + (i.empty() ? std::string("?") : i);
    return out;
}

} // namespace

std::string reportsPage(const ReportsView& v) {
    const ReportsSummary& s = v.summary;
    std::string body = "<h1>Rapporter fra programmet</h1><p class=\"hint\">De seneste " + std::to_string(v.days) +
                       " dage. Brugsstatistik og nedbrud kommer kun fra elever, der har sagt ja til at sende "
                       "dem.</p>";

    body += "<section class=\"card\" id=\"fejl\"><h2>Fejlrapporter (" + std::to_string(s.bugs.size()) + ")</h2>";
    if (s.bugs.empty()) {
        body += "<p>Ingen fejlrapporter.</p>";
    } else {
        body += "<table class=\"bugs\"><thead><tr><th>Modtaget</th><th>Rapport</th><th>Kontakt</th>"
                "<th>Teknisk info</th></tr></thead><tbody>";
        for (const BugEntry& b : s.bugs) {
            std::string tech;
            if (!b.version.empty())
                tech = esc(b.version + " · " + b.edition) + "<br>side: " + esc(b.page) + "<br>" + esc(b.os);
            body += "<tr><td data-label=\"Modtaget\">" + danishTime(b.at) + "</td><td data-label=\"Rapport\">" +
                    lines(b.text) + "</td><td data-label=\"Kontakt\">" + esc(b.contact) +
                    "</td><td data-label=\"Teknisk info\">" + (tech.empty() ? "–" : tech) + "</td></tr>";
        }
        body += "</tbody></table>";
    }
    body += "</section>";

    int crashCount = 0;
    for (const CrashGroup& g : s.crashes) crashCount += g.count;
    body += "<section class=\"card\" id=\"nedbrud\"><h2>Nedbrud (" + std::to_string(crashCount) + ")</h2>";
    if (s.crashes.empty()) {
        body += "<p>Ingen nedbrud.</p>";
    } else {
        body += "<p class=\"hint\">Samlet efter de øverste rammer i stakken; den nyeste rapport i hver gruppe kan "
                "foldes ud.</p><table class=\"crashes\"><thead><tr><th>Antal</th><th>Øverst i stakken</th>"
                "<th>Versioner</th><th>Kopier</th><th>Senest</th></tr></thead><tbody>";
        for (const CrashGroup& g : s.crashes)
            body += "<tr><td data-label=\"Antal\">" + std::to_string(g.count) +
                    "</td><td data-label=\"Øverst i stakken\"><code>" + lines(g.signature) +
                    "</code><details><summary>Nyeste rapport</summary><pre>" + esc(g.example) +
                    "</pre></details></td><td data-label=\"Versioner\">" + esc(joined(g.versions)) +
                    "</td><td data-label=\"Kopier\">" + std::to_string(g.copies.size()) +
                    "</td><td data-label=\"Senest\">" + danishTime(g.last) + "</td></tr>";
        body += "</tbody></table>";
    }
    body += "</section>";

    body += "<section class=\"card\" id=\"brug\"><h2>Brug af siderne</h2><p class=\"hint\">" +
            std::to_string(s.usageReports) + (s.usageReports == 1 ? " rapport" : " rapporter") + " fra " +
            std::to_string(s.copies) + (s.copies == 1 ? " kopi" : " kopier") + " af programmet, " + whole(s.starts) +
            " starter i alt.</p>";
    if (s.pages.empty()) {
        body += "<p>Ingen brugsstatistik.</p>";
    } else {
        body += "<table class=\"usage\"><thead><tr><th>Side</th><th>Åbnet</th></tr></thead><tbody>";
        for (const PageUse& p : s.pages)
            body += "<tr><td data-label=\"Side\">" + esc(p.page) + "</td><td data-label=\"Åbnet\">" + whole(p.visits) +
                    "</td></tr>";
        body += "</tbody></table>";
    }
    body += "</section>";
    return page({"Rapporter", v.teacherName, v.csrf}, body);
}

} // namespace server
