#include "app/locks.h"

#include "app/options.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/lists.h"

namespace app {

std::string offReasonKey(const std::string& key, const std::set<std::string>& off) {
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

std::string offReason(const std::string& route, const std::set<std::string>& off) {
    if (off.empty()) return {};
    if (const fl::Formula* f = fl::findFormula(route)) {
        if (off.count("udregnere")) return "udregnere";
        return offReasonKey("sub:" + f->group + "|" + f->topic, off);
    }
    for (const fl::Topic& topic : fl::topics()) {
        if (!off.count(topic.id)) continue;
        for (const std::string& r : topic.routes)
            if (r == route) return topic.id;
    }
    return {};
}

std::string offReason(const std::string& route) { return offReason(route, options().off); }

std::string offReasonKey(const std::string& key) { return offReasonKey(key, options().off); }

QString profileLabel(const std::string& profile) {
    if (profile == "proeve") return QStringLiteral("Prøve");
    if (profile == "hjemme") return QStringLiteral("Hjemmearbejde");
    if (profile == "jaevnstrom") return QStringLiteral("Kun jævnstrøm");
    if (profile == "egen") return QStringLiteral("Egen");
    return {};
}

QString topicName(const std::string& id) {
    for (const fl::Topic& topic : fl::topics())
        if (topic.id == id) return QString::fromStdString(topic.name);
    return {};
}

}  // namespace app
