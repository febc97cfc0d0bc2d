// A timed exam: a set of generated exercises answered without feedback, the
// clock, the hand-in and what it shows afterwards (points, facit, tips and
// the verdict), and the record the statistics keep. Time comes in as
// milliseconds from the caller's clock, so a test can run the clock by hand;
// the page owns the timer that asks.
#pragma once

#include "fl/practice/exercise.h"
#include "fl/practice/judge.h"
#include "fl/practice/stats.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace fl {

// Milliseconds since the epoch, or any steady count the caller prefers.
using ExamClock = std::function<int64_t()>;

struct Exam {
    std::string topic;      // the category key the set was drawn for
    std::string topicLabel; // as the heading shows it
    std::vector<Exercise> exercises;
    std::vector<std::string> answers; // as typed, one per exercise
    size_t current = 0;
    int limitMinutes = 0; // 0: no limit
    int64_t startMs = 0;
    int32_t usedSeconds = 0; // set by the hand-in
    bool handedIn = false;

    size_t size() const { return exercises.size(); }
};

// Choices of the setup screen.
inline const std::vector<int> kExamCounts = {5, 10, 15, 20};
inline const std::vector<int> kExamMinutes = {0, 10, 20, 30, 45, 60};

// `count` exercises from `draw`; an empty one is drawn again up to three
// times, then left out, so a thin topic gives a shorter exam, never a hole.
Exam startExam(const std::string& topic, const std::string& label, int count, int limitMinutes, int64_t nowMs,
               const std::function<Exercise()>& draw);

// Refused (false) after the hand-in or for an index outside the set.
bool setAnswer(Exam& exam, size_t index, const std::string& text);
bool isAnswered(const Exam& exam, size_t index);
int unansweredCount(const Exam& exam);

// Seconds left, never below 0; −1 without a limit.
int secondsLeft(const Exam& exam, int64_t nowMs);
bool timeIsUp(const Exam& exam, int64_t nowMs);
// "12:05": minutes and seconds of a count-down.
std::string clockText(int seconds);
// "3 min 20 s", "45 s".
std::string durationText(int seconds);

struct ExamResult {
    int right = 0;
    int total = 0;
    int pct = 0; // right · 100 / total, whole
    std::vector<AnswerJudgement> judgements;
};

// Judges every answer (an empty or unreadable one counts as wrong) and stops
// the clock: the time used is what passed since the start, at most the limit.
// A second hand-in changes nothing.
ExamResult handIn(Exam& exam, int64_t nowMs);
ExamResult judgeExam(const Exam& exam);

// "Flot! …" from 90 %, "Godt gået – …" from 60 %, else "Gennemgå …".
std::string examVerdict(int pct);
// Confetti from 90 %.
bool examCelebrates(int pct);

// The statistics' record; `date` in UTC as the files write it.
ExamRecord examRecord(const Exam& exam, const ExamResult& result, const std::string& date);

// The texts of the results screen.
std::string examHeading(const Exam& exam);   // "Eksamen · " + topic + " · tid brugt " + time
std::string examScoreText(const ExamResult& r); // "Resultat: 8 af 10 rigtige (80 %)"
// One exercise's row: the mark and number, the answer against the facit,
// and the diagnosis of a wrong answer.
std::string examRowHtml(const Exam& exam, const ExamResult& result, size_t index);
// The statement of an exercise, for a formula family or a drawn circuit; a
// circuit's drawing goes into the caller's rendering pass.
std::string exerciseStatementHtml(const Exercise& ex);
// The worked solution: takes the rendering pass, so call it with an empty one (a provider).
RenderResult exerciseSolution(const Exercise& ex);

} // namespace fl
