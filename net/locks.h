// What the teacher has switched off, as pure functions of the off set. A
// topic of the topic table closes routes and finer keys ("sub:El-lære|
// Kompensering", "circ:ac|", "tekst:komp", …); a row key ending in "|"
// closes every key it is a prefix of. The interface asks these with the set
// it holds (AppOptions::off); nothing here keeps state.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace net {

using OffSet = std::set<std::string>;

// The id of the first topic, in table order, that closes the route; "" when
// it is open. A formula family is closed by "udregnere" or through the
// "sub:" key of its group and topic.
std::string offReason(const std::string& route, const OffSet& off);
// The id of the first topic, in table order, whose keys close `key`.
std::string offReasonKey(const std::string& key, const OffSet& off);

inline bool isOpen(const std::string& route, const OffSet& off) { return offReason(route, off).empty(); }
inline bool isOpenKey(const std::string& key, const OffSet& off) { return offReasonKey(key, off).empty(); }

// "Prøve" for "proeve" and so on; "" for a profile without a label.
std::string profileLabel(const std::string& profile);
// The topic's name ("Kompensering" for "ac_komp"); "" for an unknown id.
std::string topicName(const std::string& id);

// Names of the table's topics that went from off to on (`opened`) and from
// on to off (`closed`), in table order. Ids that are in no row are ignored.
struct OffChange {
    std::vector<std::string> opened;
    std::vector<std::string> closed;
};
OffChange diffOff(const OffSet& before, const OffSet& after);

} // namespace net
