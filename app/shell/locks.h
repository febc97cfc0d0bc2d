// What the teacher has switched off. A topic closes routes and finer keys
// ("sub:El-lære|Kompensering", "circ:ac|", …); every list of the program asks
// here before it shows an entry. The off set itself comes from the class
// service, through AppOptions.
#pragma once

#include <QString>

#include <set>
#include <string>

namespace app {

// The id of the topic that closes the route, or "" when it is open. A formula
// family is closed by "udregnere" or by a topic holding its "sub:" key.
std::string offReason(const std::string& route, const std::set<std::string>& off);
std::string offReason(const std::string& route);
// The id of the topic whose keys close `key`; a row key ending in "|" closes
// every key it is a prefix of.
std::string offReasonKey(const std::string& key, const std::set<std::string>& off);
std::string offReasonKey(const std::string& key);

inline bool isOpen(const std::string& route) { return offReason(route).empty(); }
inline bool isOpenKey(const std::string& key) { return offReasonKey(key).empty(); }

// "Prøve" for "proeve" and so on; empty for a profile without a label.
QString profileLabel(const std::string& profile);
// The topic's name for the locked page; empty for an unknown id.
QString topicName(const std::string& id);

}  // namespace app
