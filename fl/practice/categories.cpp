#include "fl/practice/categories.h"

#include "fl/formulas/catalogue.h"
#include "fl/practice/circuitex.h"
#include "fl/practice/random.h"

namespace fl {

const std::vector<PracticeCategory>& practiceCategories() {
    static const std::vector<PracticeCategory> all = [] {
        std::vector<PracticeCategory> out = {{kAllTopics, "Alle emner", {}, {}, {}},
                                             {kWeakTopics, "Mine svage emner", {}, {}, {}}};
        for (const Formula& f : catalogue()) {
            if (!fitForPractice(f)) continue;
            const std::string topic = practiceTopic(f);
            bool seen = false;
            for (const PracticeCategory& c : out)
                seen = seen || c.key == topic;
            if (!seen) out.push_back({topic, topic, f.group, familyLockKey(f), {}});
        }
        for (const char* mode : {"dc", "ac"})
            out.push_back({circuitTopic(mode), circuitTopic(mode), "Kredsløb",
                           std::string("circ:") + mode + "|", mode});
        return out;
    }();
    return all;
}

std::vector<std::string> practiceTopics() {
    std::vector<std::string> out;
    for (const PracticeCategory& c : practiceCategories())
        if (!c.group.empty()) out.push_back(c.key);
    return out;
}

const PracticeCategory* findCategory(const std::string& key) {
    for (const PracticeCategory& c : practiceCategories())
        if (c.key == key) return &c;
    return nullptr;
}

Exercise exerciseForCategory(const std::string& key, const std::vector<std::string>& weak,
                             const KeyFilter& open) {
    if (key == kWeakTopics) {
        std::vector<const PracticeCategory*> pool;
        for (const std::string& topic : weak)
            if (const PracticeCategory* c = findCategory(topic);
                c && !c->group.empty() && (!open || open(c->lockKey)))
                pool.push_back(c);
        if (pool.empty()) return {};
        return exerciseForCategory(pickOne(pool)->key, {}, open);
    }
    const PracticeCategory* c = findCategory(key);
    if (!c || c->group.empty()) return makeExercise({}, {}, open);
    if (!c->circuit.empty()) return makeCircuitExercise(c->circuit, open);
    return makeExercise(c->group, c->key, open);
}

} // namespace fl
