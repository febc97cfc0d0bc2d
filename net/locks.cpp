#include "net/locks.h"

#include "fl/formulas/catalogue.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"

namespace net {

std::string offReasonKey(const std::string& key, const OffSet& off) {
    if (off.empty()) return {};
    for (const fl::Topic& topic : fl::topics()) {
        if (!off.count(topic.id)) continue;
        for (const std::string& k : topic.keys) {
            const bool prefix = !k.empty() && k.back() == '|' && key.compare(0, k.size(), k) == 0;
            if (prefix || k == key) return topic.id;
        }
    }
    return {};
}

std::string offReason(const std::string& route, const OffSet& off) {
    if (off.empty()) return {};
    if (const fl::Formula* f = fl::findFormula(route)) {
        if (off.count(fl::route::Calculators)) return fl::route::Calculators;
        return offReasonKey("sub:" + f->group + "|" + f->topic, off);
    }
    for (const fl::Topic& topic : fl::topics()) {
        if (!off.count(topic.id)) continue;
        for (const std::string& r : topic.routes)
            if (r == route) return topic.id;
    }
    return {};
}

std::string profileLabel(const std::string& profile) {
    if (profile == "proeve") return "Prøve";
    if (profile == "hjemme") return "Hjemmearbejde";
    if (profile == "jaevnstrom") return "Kun jævnstrøm";
    if (profile == "egen") return "Egen";
    return {};
}

std::string topicName(const std::string& id) {
    for (const fl::Topic& topic : fl::topics())
        if (topic.id == id) return topic.name;
    return {};
}

OffChange diffOff(const OffSet& before, const OffSet& after) {
    OffChange change;
    for (const fl::Topic& topic : fl::topics()) {
        const bool was = before.count(topic.id) > 0;
        const bool is = after.count(topic.id) > 0;
        if (was && !is) change.opened.push_back(topic.name);
        if (!was && is) change.closed.push_back(topic.name);
    }
    return change;
}

} // namespace net
