// What the exercise page offers to practise: every topic of the fit
// families in catalogue order, under its group, the exercises on drawn
// circuits of both kinds of current, and the weak topics of the student's
// own records. The choice is kept in the store as its key.
#pragma once

#include "fl/practice/exercise.h"

#include <string>
#include <vector>

namespace fl {

struct PracticeCategory {
    std::string key;     // "" for every topic, "svag" for the weak ones, else the topic's name
    std::string label;   // as the list shows it
    std::string group;   // the topic's group; empty for the two above
    std::string lockKey; // the teacher's key that closes it; empty for the two above
    std::string circuit; // "dc" or "ac" for the exercises on a drawn circuit, else empty
};

inline constexpr const char* kAllTopics = "";
inline constexpr const char* kWeakTopics = "svag";

// "Alle emner", "Mine svage emner", the topics in order of the catalogue, then
// the circuits under "Kredsløb", closed by "circ:dc|" and "circ:ac|".
const std::vector<PracticeCategory>& practiceCategories();
// The topics alone, as the statistics name them.
std::vector<std::string> practiceTopics();
const PracticeCategory* findCategory(const std::string& key);

// An exercise for the chosen category: a topic's families, a drawn circuit,
// any open family, or one of `weak` (weakest first, as the records give them)
// that is still open. Empty when nothing fits: no weak topic yet, or every
// family closed. "Alle emner" keeps to the families: a circuit is asked for
// by its own topic.
Exercise exerciseForCategory(const std::string& key, const std::vector<std::string>& weak,
                             const KeyFilter& open = {});

// What to tell a student for whom "Mine svage emner" drew nothing although
// `weak` (weakest first) is not empty: text problems are practised on their
// own page, and a closed topic can't be drawn. Empty when `weak` is empty, so
// the page's own "no weak topics" message stands.
std::string weakTopicsElsewhereText(const std::vector<std::string>& weak);

} // namespace fl
