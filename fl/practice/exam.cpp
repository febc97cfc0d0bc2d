#include "fl/practice/exam.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/practice/circuitex.h"

#include <algorithm>

namespace fl {

namespace {

constexpr int kRedraws = 3;

} // namespace

Exam startExam(const std::string& topic, const std::string& label, int count, int limitMinutes, int64_t nowMs,
               const std::function<Exercise()>& draw) {
    Exam exam;
    exam.topic = topic;
    exam.topicLabel = label;
    exam.limitMinutes = std::max(0, limitMinutes);
    exam.startMs = nowMs;
    for (int i = 0; i < count; ++i) {
        for (int attempt = 0; attempt <= kRedraws; ++attempt) {
            Exercise ex = draw();
            if (ex.empty()) continue;
            exam.exercises.push_back(std::move(ex));
            break;
        }
    }
    exam.answers.assign(exam.exercises.size(), std::string());
    return exam;
}

bool setAnswer(Exam& exam, size_t index, const std::string& text) {
    if (exam.handedIn || index >= exam.answers.size()) return false;
    exam.answers[index] = text;
    return true;
}

bool isAnswered(const Exam& exam, size_t index) {
    return index < exam.answers.size() && !trimmed(exam.answers[index]).empty();
}

int unansweredCount(const Exam& exam) {
    int n = 0;
    for (size_t i = 0; i < exam.answers.size(); ++i)
        n += isAnswered(exam, i) ? 0 : 1;
    return n;
}

int secondsLeft(const Exam& exam, int64_t nowMs) {
    if (exam.limitMinutes <= 0) return -1;
    const int64_t leftMs = int64_t{exam.limitMinutes} * 60000 - (nowMs - exam.startMs);
    // Rounded up, so the clock shows 0:00 only when the time really is up.
    return leftMs <= 0 ? 0 : static_cast<int>((leftMs + 999) / 1000);
}

bool timeIsUp(const Exam& exam, int64_t nowMs) {
    return exam.limitMinutes > 0 && secondsLeft(exam, nowMs) == 0;
}

std::string clockText(int seconds) {
    seconds = std::max(0, seconds);
    const int s = seconds % 60;
    return std::to_string(seconds / 60) + (s < 10 ? ":0" : ":") + std::to_string(s);
}

std::string durationText(int seconds) {
    seconds = std::max(0, seconds);
    if (seconds < 60) return std::to_string(seconds) + " s";
    return std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
}

ExamResult judgeExam(const Exam& exam) {
    ExamResult r;
    r.total = static_cast<int>(exam.exercises.size());
    for (size_t i = 0; i < exam.exercises.size(); ++i) {
        const Exercise& ex = exam.exercises[i];
        r.judgements.push_back(judgeAnswer(exam.answers[i], ex.facit, ex.scale));
        if (r.judgements.back().correct) ++r.right;
    }
    r.pct = r.total > 0 ? r.right * 100 / r.total : 0;
    return r;
}

ExamResult handIn(Exam& exam, int64_t nowMs) {
    if (!exam.handedIn) {
        int64_t used = std::max<int64_t>(0, nowMs - exam.startMs) / 1000;
        if (exam.limitMinutes > 0) used = std::min<int64_t>(used, int64_t{exam.limitMinutes} * 60);
        exam.usedSeconds = static_cast<int32_t>(std::min<int64_t>(used, INT32_MAX));
        exam.handedIn = true;
    }
    return judgeExam(exam);
}

std::string examVerdict(int pct) {
    if (pct >= 90) return "Flot! Du har styr på det.";
    if (pct >= 60) return "Godt gået – kig på de forkerte herunder, og se tipsene.";
    return "Gennemgå løsningerne herunder – og prøv igen bagefter.";
}

bool examCelebrates(int pct) {
    return pct >= 90;
}

ExamRecord examRecord(const Exam& exam, const ExamResult& result, const std::string& date) {
    return {date, exam.topicLabel, result.right, result.total, exam.usedSeconds};
}

std::string examHeading(const Exam& exam) {
    return "Eksamen · " + exam.topicLabel + " · tid brugt " + durationText(exam.usedSeconds);
}

std::string examScoreText(const ExamResult& r) {
    return "Resultat: " + std::to_string(r.right) + " af " + std::to_string(r.total) + " rigtige (" +
           std::to_string(r.pct) + " %)";
}

std::string examRowHtml(const Exam& exam, const ExamResult& result, size_t index) {
    const Exercise& ex = exam.exercises.at(index);
    const AnswerJudgement& j = result.judgements.at(index);
    const std::string typed = trimmed(exam.answers.at(index));
    std::string html = std::string("<p><b>") +
                       (j.correct ? "<span class=\"ok\">✓</span>" : "<span class=\"bad\">✗</span>") +
                       " Opgave " + std::to_string(index + 1) + ": </b>" + symbolHtml(ex.title) + "</p>";
    html += "<p class=\"hint0\">Dit svar: <b>" + (typed.empty() ? std::string("(intet svar)") : htmlEscape(typed)) +
            "</b> · Facit: <b>" + shownValue(ex.facit, ex.unit) + "</b></p>";
    if (!j.correct) {
        std::string tip;
        if (j.empty || j.unreadable)
            tip = typed.empty() ? "Du svarede ikke på opgaven." : "Svaret kunne ikke læses som et tal.";
        else
            tip = diagnoseAnswer(j.value, ex.facit, ex);
        if (!tip.empty()) html += "<div class=\"note\"><b>Tip:</b> " + tip + "</div>";
    }
    return html;
}

std::string exerciseStatementHtml(const Exercise& ex) {
    if (ex.circuit) return circuitStatement(ex);
    return ex.formula ? exerciseStatement(ex) : ex.statement;
}

RenderResult exerciseSolution(const Exercise& ex) {
    if (!ex.formula) return ex.solution;
    try {
        std::string html = exerciseSolutionHtml(ex);
        return takeRender(std::move(html));
    } catch (const std::exception&) {
        resetFigures();
        return takeRender(msgBox("Udregningen gik i stå – tjek værdierne.", true));
    }
}

} // namespace fl
