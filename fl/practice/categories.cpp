#include "fl/practice/categories.h"

#include "fl/formulas/catalogue.h"
#include "fl/practice/circuitex.h"
#include "fl/practice/random.h"
#include "fl/practice/stats.h"
#include "fl/practice/tekst.h"

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

std::string weakTopicsElsewhereText(const std::vector<std::string>& weak) {
    static const std::string kTekst = tekstLockKey("");
    std::vector<std::string> texts;
    bool exercises = false;
    for (const std::string& topic : weak) {
        if (topic.compare(0, kTekst.size(), kTekst) == 0)
            texts.push_back(topicName(topic));
        else
            exercises = true;
    }
    std::string out = exercises ? "Der er ingen opgaver i dine svage emner lige nu." : "";
    if (texts.empty()) return out;
    std::string names;
    for (size_t i = 0; i < texts.size(); ++i)
        names += (i == 0 ? "" : i + 1 == texts.size() ? " og " : ", ") + std::string("„") + texts[i] + "“";
    if (!out.empty()) out += ' ';
    out += texts.size() == 1 ? "Dit svage emne blandt tekstopgaverne er " + names + " – den øver du under Tekstopgaver."
                             : "Dine svage emner blandt tekstopgaverne er " + names +
                                   " – dem øver du under Tekstopgaver.";
    return out;
}

} // namespace fl
