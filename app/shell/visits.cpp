#include "app/shell/visits.h"

#include "fl/expr/markup.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"
#include "store/datastore.h"
#include "store/keys.h"

namespace app {

namespace {
constexpr size_t kRecentMax = 6;
} // namespace

std::string pageTitle(const std::string& route) {
    if (route == fl::route::Home) return {};
    const fl::Tile* tile = fl::findFamilyOrTile(route);
    return tile ? fl::stripTags(tile->name) : std::string();
}

Json recentAfter(const Json& recent, const std::string& route) {
    Json out = Json::array();
    out.push(Json(route));
    for (const Json& entry : recent.asArray())
        if (entry.isString() && entry.str != route && out.arr.size() < kRecentMax) out.push(entry);
    return out;
}

Json usageAfter(const Json& usage, const std::string& title) {
    Json out = usage.isObject() ? usage : Json::object();
    Json& count = out[title.empty() ? std::string("Forside") : title];
    count = Json(count.asNumber(0) + 1);
    return out;
}

void recordVisit(const std::string& route) {
    storeSet(key::Last, Json(route));
    if (route == fl::route::Locked) return;
    if (route != fl::route::Home) storeSet(key::Recent, recentAfter(storeGet(key::Recent), route));
    storeSet(key::Usage, usageAfter(storeGet(key::Usage), pageTitle(route)));
}

} // namespace app
