// Judging a typed answer, and the diagnosis that reads like a teacher: the
// answer is compared with what each typical mistake would have given, in a
// fixed order, so that the specific explanation wins over the general one.
#pragma once

#include "fl/practice/exercise.h"

#include <string>
#include <vector>

namespace fl {

struct AnswerJudgement {
    bool empty = false;      // nothing typed
    bool unreadable = false; // no number: a unit typed along, a letter, a typo
    bool correct = false;
    double value = 0.0;    // the answer as a number, after scaling
    double relError = 0.0; // |value − facit| / |facit|
};

struct DiagnosisCandidate {
    double value = 0.0;
    std::string message;
};

// Every numeric answer of the practice pages is right within 2 %.
constexpr double kAnswerTolerance = 0.02;

// A plain number without a prefix is multiplied by `scale` when it isn't 1, so
// a capacitance asked in µF can be answered "47"; "47u" stands as written.
// Danish thousands points ("1.500", "12.500,5") are read as such when that
// reading is the nearer one: "1.500" is 1500 to a Dane and 1.5 to a calculator.
AnswerJudgement judgeAnswer(const std::string& text, double facit, double scale);

// What each typical mistake would have given, in the order in which they are tried.
std::vector<DiagnosisCandidate> diagnosisCandidates(double facit, const Exercise& ex);
// The explanation of the first mistake that fits the answer, a remark on
// rounding when it is near, or empty.
std::string diagnoseAnswer(double answer, double facit, const Exercise& ex);

// The verdict under the exercise, in result markup.
std::string verdictHtml(const AnswerJudgement& judgement, const Exercise& ex);

} // namespace fl
