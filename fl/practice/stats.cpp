#include "fl/practice/stats.h"

#include "fl/practice/tekst.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <limits>

namespace fl {

namespace {

constexpr size_t kMaxExams = 10;
constexpr int32_t kMaxCount = std::numeric_limits<int32_t>::max();

int32_t count(const Json& record, const char* member) {
    const double v = record.at(member).asNumber(0.0);
    if (!(v > 0)) return 0; // NaN too
    return v >= kMaxCount ? kMaxCount : static_cast<int32_t>(v);
}

int32_t plusOne(int32_t n) {
    return n < kMaxCount ? n + 1 : n;
}

Json pair(const char* a, int32_t x, const char* b, int32_t y) {
    Json o = Json::object();
    o[a] = Json(static_cast<double>(x));
    o[b] = Json(static_cast<double>(y));
    return o;
}

template <typename Stat>
std::vector<std::pair<std::string, Stat>> weakestFirst(const std::map<std::string, Stat>& table,
                                                       int32_t (*wrong)(const Stat&)) {
    std::vector<std::pair<std::string, Stat>> out(table.begin(), table.end());
    std::stable_sort(out.begin(), out.end(), [wrong](const auto& a, const auto& b) {
        return weakness(wrong(a.second), a.second.total) > weakness(wrong(b.second), b.second.total);
    });
    return out;
}

} // namespace

bool PracticeStats::empty() const {
    for (const auto& [name, t] : topics)
        if (t.total > 0) return false;
    return true;
}

PracticeStats statsFromJson(const Json& value) {
    PracticeStats s;
    for (const auto& [name, r] : value.at("topics").asObject()) {
        if (!r.isObject()) continue;
        TopicStat t{count(r, "right"), count(r, "total")};
        t.right = std::min(t.right, t.total);
        s.topics[name] = t;
    }
    for (const auto& [key, r] : value.at("formulas").asObject()) {
        if (!r.isObject()) continue;
        FormulaStat f{count(r, "wrong"), count(r, "total")};
        f.wrong = std::min(f.wrong, f.total);
        s.formulas[key] = f;
    }
    for (const auto& [day, r] : value.at("days").asObject())
        if (r.isObject()) s.days[day] = {count(r, "right"), count(r, "wrong")};
    return s;
}

Json statsToJson(const PracticeStats& s) {
    Json out = Json::object();
    Json& topics = out["topics"] = Json::object();
    for (const auto& [name, t] : s.topics)
        topics[name] = pair("right", t.right, "total", t.total);
    Json& formulas = out["formulas"] = Json::object();
    for (const auto& [key, f] : s.formulas)
        formulas[key] = pair("total", f.total, "wrong", f.wrong);
    Json& days = out["days"] = Json::object();
    for (const auto& [day, d] : s.days)
        days[day] = pair("right", d.right, "wrong", d.wrong);
    return out;
}

std::vector<ExamRecord> examsFromJson(const Json& value) {
    std::vector<ExamRecord> out;
    for (const Json& r : value.asArray()) {
        if (!r.isObject()) continue;
        ExamRecord e{r.at("date").asString(), r.at("topic").asString(), count(r, "right"), count(r, "total"),
                     count(r, "seconds")};
        e.right = std::min(e.right, e.total);
        out.push_back(std::move(e));
        if (out.size() == kMaxExams) break;
    }
    return out;
}

Json examsToJson(const std::vector<ExamRecord>& exams) {
    Json out = Json::array();
    for (const ExamRecord& e : exams) {
        Json r = Json::object();
        r["date"] = Json(e.date);
        r["topic"] = Json(e.topic);
        r["right"] = Json(static_cast<double>(e.right));
        r["total"] = Json(static_cast<double>(e.total));
        r["seconds"] = Json(static_cast<double>(e.seconds));
        out.push(std::move(r));
    }
    return out;
}

void addAnswer(PracticeStats& s, const std::string& key, const std::string& topic, bool right,
               const std::string& day) {
    TopicStat& t = s.topics[topic];
    t.total = plusOne(t.total);
    if (right) t.right = plusOne(t.right);
    FormulaStat& f = s.formulas[key];
    f.total = plusOne(f.total);
    if (!right) f.wrong = plusOne(f.wrong);
    DayStat& d = s.days[day];
    if (right)
        d.right = plusOne(d.right);
    else
        d.wrong = plusOne(d.wrong);
}

void addExam(std::vector<ExamRecord>& exams, const ExamRecord& exam) {
    exams.insert(exams.begin(), exam);
    if (exams.size() > kMaxExams) exams.resize(kMaxExams);
}

Level topicLevel(const TopicStat& t) {
    if (t.total < 3) return Level::New;
    const double share = static_cast<double>(t.right) / t.total;
    if (share < 0.6) return Level::Weak;
    if (share < 0.85) return Level::Mid;
    return Level::Good;
}

const char* levelClass(Level level) {
    switch (level) {
    case Level::New:
        return "ny";
    case Level::Weak:
        return "svag";
    case Level::Mid:
        return "mid";
    case Level::Good:
        return "god";
    }
    return "ny";
}

const char* levelText(Level level) {
    switch (level) {
    case Level::New:
        return "For få svar";
    case Level::Weak:
        return "Svag";
    case Level::Mid:
        return "På vej";
    case Level::Good:
        return "Stærk";
    }
    return "For få svar";
}

double weakness(int32_t wrong, int32_t total) {
    return (wrong + 0.5) / (static_cast<double>(total) + 1);
}

std::vector<std::pair<std::string, TopicStat>> topicsWeakestFirst(const PracticeStats& s) {
    return weakestFirst<TopicStat>(s.topics, [](const TopicStat& t) { return t.wrong(); });
}

std::vector<std::pair<std::string, FormulaStat>> formulasWeakestFirst(const PracticeStats& s) {
    auto all = weakestFirst<FormulaStat>(s.formulas, [](const FormulaStat& f) { return f.wrong; });
    std::erase_if(all, [](const auto& e) { return e.second.wrong == 0; });
    return all;
}

std::vector<std::string> weakTopics(const PracticeStats& s) {
    std::vector<std::string> out;
    for (const auto& [name, t] : topicsWeakestFirst(s))
        if (topicLevel(t) == Level::Weak) out.push_back(name);
    return out;
}

std::string topicName(const std::string& topic) {
    static const std::string kTekst = tekstLockKey("");
    if (topic.compare(0, kTekst.size(), kTekst) != 0) return topic;
    const TekstTopic* t = findTekstTopic(topic.substr(kTekst.size()));
    return t ? t->label : "Tekstopgave";
}

std::string classSummary(const PracticeStats& s, const std::vector<ExamRecord>& exams) {
    int64_t answered = 0, right = 0;
    // The teacher reads the names the student reads.
    PracticeStats named;
    named.formulas = s.formulas;
    for (const auto& [name, t] : s.topics) {
        answered += t.total;
        right += t.right;
        TopicStat& sum = named.topics[topicName(name)];
        sum.right = static_cast<int32_t>(std::min<int64_t>(int64_t{sum.right} + t.right, kMaxCount));
        sum.total = static_cast<int32_t>(std::min<int64_t>(int64_t{sum.total} + t.total, kMaxCount));
    }
    Json out = statsToJson(named);
    out.obj.erase("days");
    out["answered"] = Json(static_cast<double>(answered));
    out["right"] = Json(static_cast<double>(right));
    out["days"] = Json(static_cast<double>(s.days.size()));
    std::vector<ExamRecord> namedExams = exams;
    for (ExamRecord& e : namedExams)
        e.topic = topicName(e.topic);
    Json list = examsToJson(namedExams);
    for (Json& e : list.arr)
        e.obj.erase("seconds");
    out["exams"] = std::move(list);
    return Json::dump(out, 0);
}

PracticeStats loadStats() {
    return statsFromJson(storeGet(key::OvStats, Json::object()));
}

void saveStats(const PracticeStats& stats) {
    storeSet(key::OvStats, statsToJson(stats));
}

std::vector<ExamRecord> loadExams() {
    return examsFromJson(storeGet(key::ExamHist, Json::array()));
}

std::string today() {
    return QDate::currentDate().toString(Qt::ISODate).toStdString();
}

void recordAnswer(const std::string& key, const std::string& topic, bool right) {
    PracticeStats s = loadStats();
    addAnswer(s, key, topic, right, today());
    saveStats(s);
}

void recordExam(const ExamRecord& exam) {
    std::vector<ExamRecord> exams = loadExams();
    addExam(exams, exam);
    storeSet(key::ExamHist, examsToJson(exams));
}

void resetStats() {
    DataStore& store = DataStore::instance();
    for (const char* key : {key::OvStats, key::ExamHist, key::OvRight, key::OvTotal})
        store.remove(key);
}

} // namespace fl
