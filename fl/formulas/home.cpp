// The home page's markup: its groups of tiles in their fixed order, the
// chips, the formula topics and the teacher's hint; and the tile grid that
// the finder uses as well.
#include "fl/formulas/home.h"

#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/icons.h"
#include "fl/formulas/routes.h"

#include <set>

namespace fl {

namespace {

std::string base64(const std::string& bytes) {
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    size_t i = 0;
    for (; i + 2 < bytes.size(); i += 3) {
        const unsigned n =
            (unsigned char)bytes[i] << 16 | (unsigned char)bytes[i + 1] << 8 | (unsigned char)bytes[i + 2];
        out += digits[n >> 18 & 63];
        out += digits[n >> 12 & 63];
        out += digits[n >> 6 & 63];
        out += digits[n & 63];
    }
    if (i < bytes.size()) {
        const bool two = i + 1 < bytes.size();
        const unsigned n = (unsigned char)bytes[i] << 16 | (two ? (unsigned char)bytes[i + 1] << 8 : 0u);
        out += digits[n >> 18 & 63];
        out += digits[n >> 12 & 63];
        out += two ? digits[n >> 6 & 63] : '=';
        out += '=';
    }
    return out;
}

void group(std::string& html, const std::string& title, const std::string& body) {
    if (body.empty()) return;
    html += "<h3 class=\"sh\">" + title + "</h3>" + body;
}

} // namespace

std::string iconKeyImageRef(const std::string& key, const std::string& colour, int px) {
    std::string svg = iconDocument(key, colour);
    if (svg.empty()) return {};
    // Drawn at the size it is shown: the text engine scales images without
    // smoothing, and thin strokes break up when shrunk.
    const std::string natural = "width=\"48\" height=\"48\"";
    if (const size_t at = svg.find(natural); at != std::string::npos)
        svg.replace(at, natural.size(),
                    "width=\"" + std::to_string(px) + "\" height=\"" + std::to_string(px) + "\"");
    return "data:image/svg+xml;base64," + base64(svg);
}

std::string iconImageRef(const std::string& route, const std::string& colour, int px) {
    if (!iconSvg(route).empty()) return iconKeyImageRef(route, colour, px);
    if (findFormula(route)) return iconKeyImageRef("formel", colour, px);
    return {};
}

std::string tileCell(const std::string& href, const std::string& iconRef, int iconPx, const std::string& name,
                     const std::string& belowHtml, const TileLook& look) {
    std::string html = "<td class=\"tile\" width=\"33%\" bgcolor=\"" + look.background +
                       "\" style=\"border:1px solid " + look.border + "\"><a href=\"" + href + "\">";
    if (!iconRef.empty()) {
        const std::string px = std::to_string(iconPx);
        html += "<img src=\"" + iconRef + "\" width=\"" + px + "\" height=\"" + px + "\"><br>";
    }
    html +=
        "<b style=\"color:" + look.text + ";font-size:11pt\">" + symbolHtml(name) + "</b><br>" + belowHtml +
        "</a></td>";
    return html;
}

std::string tileTable(const std::vector<std::string>& cells) {
    if (cells.empty()) return {};
    std::string html = "<table width=\"100%\" cellspacing=\"6\" cellpadding=\"10\">";
    for (size_t i = 0; i < cells.size(); i += 3) {
        html += "<tr>";
        for (size_t j = i; j < i + 3; ++j)
            html += j < cells.size() ? cells[j] : std::string("<td></td>");
        html += "</tr>";
    }
    return html + "</table>";
}

std::string tileGrid(const std::vector<std::string>& routes, bool large, const OpenRoute& open,
                     const TileLook& look) {
    const int px = large ? 44 : 34;
    std::vector<std::string> cells;
    for (const std::string& route : routes) {
        const Tile* tile = findFamilyOrTile(route);
        if (!tile || (open && !open(route))) continue;
        std::string subtitle = tile->subtitle;
        // A formula has no subtitle of its own; its topic tells where it belongs.
        if (const Formula* f = findFormula(route); f && subtitle.empty() && !f->topic.empty())
            subtitle = "Formel · " + f->topic;
        cells.push_back(tileCell("go:" + route, iconImageRef(route, look.accent, px), px, tile->name,
                                 "<span class=\"crumb\">" + subtitle + "</span>", look));
    }
    return tileTable(cells);
}

std::string chipRow(const std::vector<std::string>& routes, const OpenRoute& open) {
    std::string chips;
    for (const std::string& route : routes) {
        const Tile* tile = findFamilyOrTile(route);
        if (!tile || (open && !open(route))) continue;
        chips += "<a class=\"hchip\" href=\"go:" + route + "\">&nbsp;" + tile->name + "&nbsp;</a>&nbsp; ";
    }
    return chips.empty() ? std::string() : "<p class=\"chips\">" + chips + "</p>";
}

std::vector<std::string> recentRoutes(const std::vector<std::string>& recent, const OpenRoute& open) {
    std::vector<std::string> out;
    for (const std::string& route : recent) {
        if (out.size() == 3) break;
        if (route == fl::route::Locked || !findFamilyOrTile(route) || (open && !open(route))) continue;
        out.push_back(route);
    }
    return out;
}

std::string formulaChips(const OpenRoute& open) {
    static const std::pair<const char*, const char*> groups[] = {
        {"El-lære", "El"}, {"Trefaset", "3-faset"}, {"Matematik", "Mat"}};
    std::string chips;
    for (const auto& [name, label] : groups) {
        std::set<std::string> met;
        for (const Formula& f : catalogue()) {
            if (f.group != name || f.topic.empty() || met.count(f.topic) || (open && !open(f.key))) continue;
            met.insert(f.topic);
            chips += "<a class=\"hchip\" href=\"go:" + f.key + "\">&nbsp;<span class=\"crumb\">" + label +
                     "</span> " + f.topic + "&nbsp;</a>&nbsp; ";
        }
    }
    return chips;
}

std::string homeMarkup(const HomeState& s) {
    std::string html;
    group(html, "Senest brugt", tileGrid(recentRoutes(s.recent, s.open), false, s.open, s.look));
    group(html, "Mest brugt",
          tileGrid({"udregnere", "kreds", "kredsac", "kredsguide", "kredsguideac", "ovelser"}, true, s.open,
                   s.look));
    group(html, "Øv og lær",
          tileGrid({"tekstopgaver", "statistik", "opgaveark", "formelkort"}, false, s.open, s.look));
    group(html, "Flere værktøjer",
          tileGrid({"trafo", "trefase", "motor", "komp", "kabel", "acdemo", "ac", "res", "energi"}, false,
                   s.open, s.look));
    group(html, "Dimensionering", tileGrid({"sf1", "sf3", "ikmax", "ikmin"}, false, s.open, s.look));
    group(html, "Småværktøjer og hjælp",
          chipRow({"finder", "install", "insttest", "calc", "enheder", "farve", "ordliste", "minform",
                   "minedata", "tri", "vec"},
                  s.open));
    if (!s.open || s.open(fl::route::Calculators)) {
        const std::string chips = formulaChips(s.open);
        if (!chips.empty()) html += "<h3 class=\"sh\">Formler</h3><p class=\"chips\">" + chips + "</p>";
    }
    if (s.somethingOff) {
        html += "<p class=\"hint\">Din lærer har slået nogle dele af programmet fra";
        if (!s.profileLabel.empty()) html += " (profil: " + s.profileLabel + ")";
        html +=
            ". De kommer tilbage, når læreren slår dem til, og du trykker »Opdatér« øverst til højre.</p>";
    }
    return html;
}

} // namespace fl
