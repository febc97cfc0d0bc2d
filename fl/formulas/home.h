// The markup of the home page and the pieces it shares with the finder: tile
// grids, compact chips and the icons as data references. What is open is
// asked through a predicate, and the colours come from the caller, so that
// the markup is a plain function of its inputs; the page only shows it.
#pragma once

#include "fl/formulas/lists.h"

#include <functional>
#include <string>
#include <vector>

namespace fl {

// The colours a tile is drawn in, "#rrggbb" each.
struct TileLook {
    std::string background;
    std::string border;
    std::string text;
    std::string accent; // the icon's stroke
};

// Whether a route (a tile or a formula family) is open to the student.
using OpenRoute = std::function<bool(const std::string& route)>;

// The tile's icon as a whole SVG document in a data reference for an <img>,
// drawn at `px` pixels; empty when the route has no icon. A family without a
// drawing of its own gets the formula icon.
std::string iconImageRef(const std::string& route, const std::string& colour, int px);
// The same for an icon key of the set ("finder", "formel", a route).
std::string iconKeyImageRef(const std::string& key, const std::string& colour, int px);

// One cell of a tile grid, all one link: the icon, the name in bold, and
// `belowHtml` on the next line (the subtitle, or the finder's blurb and count).
std::string tileCell(const std::string& href, const std::string& iconRef, int iconPx, const std::string& name,
                     const std::string& belowHtml, const TileLook& look);
// Cells three to a row, the last row filled up with empty cells; an empty
// list gives an empty text.
std::string tileTable(const std::vector<std::string>& cells);
// The open routes among `routes` as tiles ("go:" links); `large` draws
// the icon at 44 pixels instead of 34. Unknown routes are skipped.
std::string tileGrid(const std::vector<std::string>& routes, bool large, const OpenRoute& open,
                     const TileLook& look);
// The open routes as compact chips: `<a class="hchip" href="go:…">`.
std::string chipRow(const std::vector<std::string>& routes, const OpenRoute& open);

struct HomeState {
    std::vector<std::string> recent; // routes, newest first, as stored
    OpenRoute open;
    bool somethingOff = false; // the teacher has switched a topic off
    std::string profileLabel;  // "Prøve" and the like; may be empty
    TileLook look;
};

// At most three recently used routes that are still known and open,
// "laast" never among them.
std::vector<std::string> recentRoutes(const std::vector<std::string>& recent, const OpenRoute& open);
// One chip per topic of the catalogue, each leading to the topic's first open
// family, grouped by the book's parts.
std::string formulaChips(const OpenRoute& open);
std::string homeMarkup(const HomeState& state);

} // namespace fl
