// Everything the class server keeps, behind one small interface: teachers and
// their sign-in sessions, classes with their code, message and profile,
// tasks, the students' answers and statistics, and the program's reports.
// The web and API layers see only this; SQLite is one implementation of it
// (sqlite_storage.cpp), and a larger installation can add another without
// touching them. Times are seconds since the epoch; JSON travels as text.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace server {

struct Teacher {
    int64_t id = 0;
    std::string email; // lower case, the sign-in name
    std::string name;
    std::string passwordHash; // libsodium's crypto_pwhash string
};

struct Session {
    std::string tokenHash; // the cookie's token is never stored, only its hash
    int64_t teacherId = 0;
    std::string csrf;
    double expires = 0;
};

struct ClassInfo {
    int64_t id = 0;
    int64_t teacherId = 0;
    std::string name;
    std::string code;        // what the students type, normalised
    std::string message;     // the class message; "" for none
    std::string messageId;   // changes with every new message
    std::string profile;     // "proeve", "hjemme", "jaevnstrom", "egen" or ""
    std::vector<std::string> off; // topic ids switched off
    bool stats = true;       // the students' copies send their practice summary
    double tasksUpdated = 0; // changes whenever the task list does; 0 before the first task
};

struct Task {
    std::string id;
    int64_t classId = 0;
    std::string title;
    std::string text;
    std::string due;     // as shown after "Afleveres ", e.g. "20.11.2026"; "" for none
    std::string mode;    // "view", "guide", "full" or "both"
    std::string circuit; // the circuit's JSON text; "" for none
    double created = 0;
};

struct Answer {
    int64_t id = 0;
    std::string taskId;
    std::string uid;    // the student's anonymous id
    std::string name;   // as the student typed it
    std::string status; // "done" or "question"
    std::string answer;
    double at = 0;
};

struct StatsUpload {
    std::string uid;
    std::string summary; // JSON text of the student's practice summary
    double at = 0;
};

// What the program sent by itself or the student by hand: kind "bug",
// "telemetry:usage" or "telemetry:crash", with the request as JSON text.
struct Report {
    int64_t id = 0;
    std::string kind;
    int64_t classId = 0; // 0 for none
    std::string body;
    double at = 0;
};

class Storage {
  public:
    virtual ~Storage() = default;

    // 0 when the e-mail is taken.
    virtual int64_t addTeacher(const Teacher& t) = 0;
    virtual std::optional<Teacher> teacherByEmail(const std::string& email) = 0;
    virtual std::optional<Teacher> teacherById(int64_t id) = 0;

    virtual void addSession(const Session& s) = 0;
    // Only a session that hasn't expired by `now`.
    virtual std::optional<Session> session(const std::string& tokenHash, double now) = 0;
    virtual void removeSession(const std::string& tokenHash) = 0;

    // Wrong passwords per sign-in name or address ("who"), for slowing down.
    struct Failures {
        int count = 0;
        double last = 0;
    };
    virtual Failures failures(const std::string& who) = 0;
    virtual void addFailure(const std::string& who, double now) = 0;
    virtual void clearFailures(const std::string& who) = 0;

    // 0 when the code is taken.
    virtual int64_t addClass(const ClassInfo& c) = 0;
    virtual std::vector<ClassInfo> classesOf(int64_t teacherId) = 0;
    virtual std::optional<ClassInfo> classById(int64_t id) = 0;
    virtual std::optional<ClassInfo> classByCode(const std::string& code) = 0;
    // Name, message, profile, off and stats; never the code or the owner.
    virtual void updateClass(const ClassInfo& c) = 0;
    // With its tasks, answers and statistics.
    virtual void deleteClass(int64_t id) = 0;

    // Adding and deleting move the class's tasksUpdated forward.
    virtual void addTask(const Task& t, double now) = 0;
    virtual void deleteTask(int64_t classId, const std::string& taskId, double now) = 0;
    virtual std::vector<Task> tasksOf(int64_t classId) = 0; // in the order they were posted
    virtual std::optional<Task> task(int64_t classId, const std::string& taskId) = 0;

    // Every hand-in and question is kept; returns its id.
    virtual int64_t addAnswer(int64_t classId, const Answer& a) = 0;
    virtual std::vector<Answer> answersOf(int64_t classId, const std::string& taskId) = 0; // newest first

    // The latest summary per student replaces the earlier one.
    virtual void putStats(int64_t classId, const StatsUpload& s) = 0;
    virtual std::vector<StatsUpload> statsOf(int64_t classId) = 0;

    // "/bug" and "/telemetry"; classId 0 for none.
    virtual void addReport(const std::string& kind, int64_t classId, const std::string& body, double now) = 0;
    // Those received since `since`, newest first, at most `limit`.
    virtual std::vector<Report> reports(double since, size_t limit) = 0;
};

// Opens (and on first use creates) the SQLite database at `path`. Throws
// std::runtime_error with the reason when it can't.
std::unique_ptr<Storage> openSqlite(const std::string& path);

} // namespace server
