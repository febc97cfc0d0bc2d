// What a visit to a page leaves in the store: the route on screen, the
// recent routes for the home page's "Senest brugt" and the counts per page
// for the usage report. Plain functions over the store, apart from the window.
#pragma once

#include "store/json.h"

#include <string>

namespace app {

// The title the window shows for a route: the tile's or the family's name
// without tags; empty for the home page and for unknown routes.
std::string pageTitle(const std::string& route);

// `recent` after a visit to `route`: the route first, then the earlier
// entries that are strings and not the route, six in all at most. Anything
// but an array counts as empty.
Json recentAfter(const Json& recent, const std::string& route);
// `usage` after a visit to a page titled `title`: its count, one up;
// "Forside" stands for the empty title. Anything but an object counts as empty.
Json usageAfter(const Json& usage, const std::string& title);

// Stores the route as "last"; the home page and the locked page don't enter
// "recent", and the locked page isn't counted in "usage".
void recordVisit(const std::string& route);

} // namespace app
