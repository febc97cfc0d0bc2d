#include "app/shell/locks.h"

#include "app/shell/options.h"
#include "net/locks.h"

namespace app {

std::string offReasonKey(const std::string& key, const std::set<std::string>& off) {
    return net::offReasonKey(key, off);
}

std::string offReason(const std::string& route, const std::set<std::string>& off) {
    return net::offReason(route, off);
}

std::string offReason(const std::string& route) { return net::offReason(route, options().off); }

std::string offReasonKey(const std::string& key) { return net::offReasonKey(key, options().off); }

QString profileLabel(const std::string& profile) { return QString::fromStdString(net::profileLabel(profile)); }

QString topicName(const std::string& id) { return QString::fromStdString(net::topicName(id)); }

}  // namespace app
