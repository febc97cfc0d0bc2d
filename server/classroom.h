// What a teacher decides for a class and reads back from it: the profiles
// with the topics each switches off, new class codes, and the class's
// practice statistics summed over its students, weakest topic first.
#pragma once

#include "server/storage.h"

#include <string>
#include <vector>

namespace server {

struct ProfilePreset {
    std::string id;    // "" for everything open
    std::string label; // as the teacher reads it
    std::string hint;
    std::vector<std::string> off;
};
// "Alt åbent", then the four named profiles; "egen" has no preset topics.
const std::vector<ProfilePreset>& profilePresets();
const ProfilePreset* findPreset(const std::string& id);

// What a submitted profile form means: the ticked topics rule, and the
// profile's name stays only while the ticks are its preset (or the form was
// sent with a new profile and the old ticks, as a browser without script
// does); otherwise "egen", or "" when nothing is off. Unknown ids are dropped.
struct ProfileChoice {
    std::string profile;
    std::vector<std::string> off; // in topic-table order
};
ProfileChoice chooseProfile(const std::string& profile, const std::vector<std::string>& ticked,
                            const std::vector<std::string>& before);

// Eight characters from an alphabet without look-alikes (no O/0, I/1).
std::string newClassCode();
// "ABCDEFGH" → "ABCD-EFGH", easier to read aloud and to type.
std::string showCode(const std::string& code);

struct TopicStat {
    std::string topic;
    int right = 0;
    int total = 0;
    int students = 0; // who have answered in this topic
};
// Summed over the students' latest summaries ("topics": name → {right,
// total}), ordered by (wrong + 0.5) / (total + 1), largest first.
std::vector<TopicStat> classTopics(const std::vector<StatsUpload>& uploads);
// "For få svar", "Svag", "På vej" or "Stærk", with its class word.
struct Level {
    const char* cls;
    const char* text;
};
Level levelOf(int right, int total);

} // namespace server
