// The teacher's pages as HTML, from plain data. Forms post multipart bodies
// (so long task texts and circuits pass) and carry the session's CSRF token.
#pragma once

#include "server/storage.h"

#include <map>
#include <string>
#include <vector>

namespace server {

struct SignInView {
    std::string csrf;
    std::string email;
    std::string error;
    std::string notice;
};
std::string signInPage(const SignInView& v);

struct SignUpView {
    std::string csrf;
    std::string name, email;
    bool needsCode = false;
    std::string error;
};
std::string signUpPage(const SignUpView& v);

struct ClassesView {
    std::string csrf;
    std::string teacherName;
    std::vector<ClassInfo> classes;
    std::map<int64_t, size_t> taskCounts;
    std::string error;
};
std::string classesPage(const ClassesView& v);

// What the new-task form had when it was refused, so nothing is lost.
struct TaskDraft {
    std::string title, text, due, mode = "both", circuit;
};

struct ClassView {
    std::string csrf;
    std::string teacherName;
    ClassInfo cls;
    std::vector<Task> tasks;
    std::map<std::string, std::pair<int, int>> answerCounts; // task id → (hand-ins, questions)
    int statsStudents = 0;
    TaskDraft draft;
    std::string error;  // shown at the form it belongs to
    std::string errorAt; // "task", "message", "profile"
    std::string notice;
};
std::string classPage(const ClassView& v);

struct TaskView {
    std::string csrf;
    std::string teacherName;
    ClassInfo cls;
    Task task;
    std::vector<Answer> answers;
};
std::string taskPage(const TaskView& v);

struct StatsView {
    std::string csrf;
    std::string teacherName;
    ClassInfo cls;
    std::vector<StatsUpload> uploads;
};
std::string statsPage(const StatsView& v);

std::string errorPage(const std::string& csrf, const std::string& teacherName, const std::string& title,
                      const std::string& text);

// Task modes in the order the form offers them, with the teacher's words.
const std::vector<std::pair<std::string, std::string>>& taskModes();

} // namespace server
