// The student's practice records: answers per topic, per formula family and
// per day, and the latest exams; their level and the weakest-first order;
// their place in the store and the summary the class service sends. The page
// that shows them is written by statsheet.h.
//
// Store "ov_stats", an object:
//   {"topics":   {"Jævnstrøm": {"right": 7, "total": 9}, …},
//    "formulas": {"ohm": {"wrong": 1, "total": 4}, …},
//    "days":     {"2025-03-14": {"right": 5, "wrong": 2}, …}}   (local dates)
// Store "exam_hist", an array of at most 10 records, newest first:
//   [{"date": "2025-03-14T09:12:00.000Z", "topic": "Jævnstrøm",
//     "right": 8, "total": 10, "seconds": 612}, …]
// A member of the wrong kind reads as nothing; counts are clamped to 0..2³¹−1
// and `right` to at most `total`, so a damaged record never breaks a page.
#pragma once

#include "store/json.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace fl {

struct TopicStat {
    int32_t right = 0;
    int32_t total = 0;
    int32_t wrong() const { return total - right; }
};

struct FormulaStat {
    int32_t wrong = 0;
    int32_t total = 0;
};

struct DayStat {
    int32_t right = 0;
    int32_t wrong = 0;
};

struct ExamRecord {
    std::string date; // UTC, "%04d-%02d-%02dT%02d:%02d:%02d.000Z"
    std::string topic;
    int32_t right = 0;
    int32_t total = 0;
    int32_t seconds = 0; // time used
};

struct PracticeStats {
    std::map<std::string, TopicStat> topics;
    std::map<std::string, FormulaStat> formulas;
    std::map<std::string, DayStat> days; // "YYYY-MM-DD"

    bool empty() const;
};

PracticeStats statsFromJson(const Json& value);
Json statsToJson(const PracticeStats& stats);
std::vector<ExamRecord> examsFromJson(const Json& value);
Json examsToJson(const std::vector<ExamRecord>& exams);

// One answer: to its topic, its family (`key`) and its day.
void addAnswer(PracticeStats& stats, const std::string& key, const std::string& topic, bool right,
               const std::string& day);
// Puts the exam first and keeps the newest 10.
void addExam(std::vector<ExamRecord>& exams, const ExamRecord& exam);

enum class Level { New, Weak, Mid, Good };
// Fewer than 3 answers: too few to tell; below 60 % right: weak; below 85 %: on the way.
Level topicLevel(const TopicStat& t);
const char* levelClass(Level level); // "ny", "svag", "mid", "god"
const char* levelText(Level level);  // "For få svar", "Svag", "På vej", "Stærk"

// The name a student reads for a topic of the records. Exercise topics are
// names already; a text problem's scenario is recorded by its key
// ("tekst:kabel") and reads as its title ("Kabel til carport").
std::string topicName(const std::string& topic);

// (wrong + 0.5) / (total + 1): a wrong answer weighs less the more answers there are.
double weakness(int32_t wrong, int32_t total);
std::vector<std::pair<std::string, TopicStat>> topicsWeakestFirst(const PracticeStats& stats);
// Only families with a wrong answer.
std::vector<std::pair<std::string, FormulaStat>> formulasWeakestFirst(const PracticeStats& stats);
// Topics of level weak, weakest first.
std::vector<std::string> weakTopics(const PracticeStats& stats);

// The summary the class service sends to the teacher, as compact JSON:
//   {"answered": 42, "right": 30, "days": 6,
//    "topics":   {"Jævnstrøm": {"right": 7, "total": 9}, …},   (by topicName)
//    "formulas": {"ohm": {"wrong": 1, "total": 4}, …},
//    "exams":    [{"date": …, "topic": …, "right": 8, "total": 10}, …]}
// "topics" is always an object, empty when nothing has been answered. The
// service adds "uid", "version" and "key" itself. Pure: reads only its arguments.
std::string classSummary(const PracticeStats& stats, const std::vector<ExamRecord>& exams);

// The store's copies.
PracticeStats loadStats();
void saveStats(const PracticeStats& stats);
std::vector<ExamRecord> loadExams();
// Today's local date, "YYYY-MM-DD".
std::string today();
// Read, add today's answer, write.
void recordAnswer(const std::string& key, const std::string& topic, bool right);
void recordExam(const ExamRecord& exam);
// Forgets every answer and exam, and the exercise page's running score.
void resetStats();

} // namespace fl
