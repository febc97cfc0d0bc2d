#include "server/classroom.h"

#include "fl/formulas/lists.h"
#include "server/auth.h"
#include "store/json.h"

#include <sodium.h>

#include <algorithm>
#include <map>
#include <set>

namespace server {

const std::vector<ProfilePreset>& profilePresets() {
    static const std::vector<ProfilePreset> list = {
        {"", "Alt åbent", "Eleverne kan bruge hele programmet.", {}},
        {"proeve",
         "Prøve",
         "Alt, der regner for eleven, er slået fra. Lommeregner, ordliste og opslag er åbne.",
         {"udregnere", "kreds", "kredsguide", "vaerktoj", "smaa", "ovelser", "tekstopgaver", "opgaveark",
          "formelkort"}},
        {"hjemme",
         "Hjemmearbejde",
         "Eleverne regner selv: udregnerne og hele kredsløbsudregningen er slået fra, fremgangsmåden er åben.",
         {"udregnere", "kreds", "vaerktoj"}},
        {"jaevnstrom",
         "Kun jævnstrøm",
         "Alt om vekselstrøm er slået fra.",
         {"veksel", "ac_sinus", "ac_rlc", "ac_komp", "ac_trafo", "ac_motor", "ac_trefase"}},
        {"egen", "Egen", "Du vælger selv emnerne herunder.", {}},
    };
    return list;
}

const ProfilePreset* findPreset(const std::string& id) {
    for (const ProfilePreset& p : profilePresets())
        if (p.id == id) return &p;
    return nullptr;
}

namespace {

std::vector<std::string> inTableOrder(const std::set<std::string>& ids) {
    std::vector<std::string> out;
    for (const fl::Topic& t : fl::topics())
        if (ids.count(t.id)) out.push_back(t.id);
    return out;
}

} // namespace

ProfileChoice chooseProfile(const std::string& profile, const std::vector<std::string>& ticked,
                            const std::vector<std::string>& before) {
    const std::vector<std::string> ticks = inTableOrder({ticked.begin(), ticked.end()});
    const ProfilePreset* preset = findPreset(profile);
    if (preset && preset->id != "egen") {
        const std::vector<std::string> presetOff = inTableOrder({preset->off.begin(), preset->off.end()});
        const std::vector<std::string> old = inTableOrder({before.begin(), before.end()});
        if (ticks == presetOff || (ticks == old && presetOff != old)) return {preset->id, presetOff};
    }
    return {ticks.empty() ? "" : "egen", ticks};
}

std::string newClassCode() {
    static const char alphabet[] = "ABCDEFGHJKLMNPQRSTUVWXYZ23456789";
    std::string code(8, 'A');
    for (char& c : code) c = alphabet[randombytes_uniform(sizeof alphabet - 1)];
    return code;
}

std::string showCode(const std::string& code) {
    return code.size() == 8 ? code.substr(0, 4) + "-" + code.substr(4) : code;
}

std::vector<TopicStat> classTopics(const std::vector<StatsUpload>& uploads) {
    std::map<std::string, TopicStat> sums;
    for (const StatsUpload& u : uploads) {
        Json summary;
        if (!Json::tryParse(u.summary, summary)) continue;
        for (const auto& [name, stat] : summary.at("topics").asObject()) {
            const double right = stat.at("right").asNumber(-1);
            const double total = stat.at("total").asNumber(-1);
            // A record that can't be true is left out rather than skewing the class.
            if (!(total > 0 && right >= 0 && right <= total && total < 1e7)) continue;
            TopicStat& s = sums[name];
            s.topic = name;
            s.right += static_cast<int>(right);
            s.total += static_cast<int>(total);
            ++s.students;
        }
    }
    std::vector<TopicStat> out;
    for (auto& [name, s] : sums) out.push_back(s);
    const auto weakness = [](const TopicStat& s) { return (s.total - s.right + 0.5) / (s.total + 1.0); };
    std::stable_sort(out.begin(), out.end(),
                     [&](const TopicStat& a, const TopicStat& b) { return weakness(a) > weakness(b); });
    return out;
}

Level levelOf(int right, int total) {
    if (total < 3) return {"ny", "For få svar"};
    const double share = static_cast<double>(right) / total;
    if (share < 0.6) return {"svag", "Svag"};
    if (share < 0.85) return {"mid", "På vej"};
    return {"god", "Stærk"};
}

} // namespace server
