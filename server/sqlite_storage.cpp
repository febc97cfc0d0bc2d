// SQLite behind the storage interface. Writes go through one connection
// behind one mutex: every statement is short, so a queue costs less than
// writers contending for the database's lock. Reads go through a few
// connections of their own, so that a check-in never waits behind a
// hand-in's sync to disk; WAL lets them read while a write is under way,
// each statement seeing what was committed when it began. WAL with synchronous=FULL:
// an answered hand-in is on disk before the student hears "afleveret",
// whether the process is killed or the power goes. Hand-ins that arrive
// together share one transaction and so one sync, and the WAL is copied
// back into the database by a thread of its own, so that no hand-in waits
// for that copy and its syncs. Every statement is prepared once and bound;
// no value is ever pasted into SQL text.
#include "server/storage.h"

#include <sqlite3.h>

#include <array>
#include <atomic>
#include <cmath>
#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace server {

namespace {

const char* const kSchema = R"sql(
CREATE TABLE IF NOT EXISTS teachers (
    id INTEGER PRIMARY KEY,
    email TEXT NOT NULL UNIQUE,
    name TEXT NOT NULL,
    password_hash TEXT NOT NULL
);
CREATE TABLE IF NOT EXISTS sessions (
    token_hash TEXT PRIMARY KEY,
    teacher_id INTEGER NOT NULL REFERENCES teachers(id) ON DELETE CASCADE,
    csrf TEXT NOT NULL,
    expires REAL NOT NULL
);
CREATE TABLE IF NOT EXISTS login_failures (
    who TEXT PRIMARY KEY,
    count INTEGER NOT NULL,
    last REAL NOT NULL
);
CREATE TABLE IF NOT EXISTS classes (
    id INTEGER PRIMARY KEY,
    teacher_id INTEGER NOT NULL REFERENCES teachers(id) ON DELETE CASCADE,
    name TEXT NOT NULL,
    code TEXT NOT NULL UNIQUE,
    message TEXT NOT NULL DEFAULT '',
    message_id TEXT NOT NULL DEFAULT '',
    profile TEXT NOT NULL DEFAULT '',
    off TEXT NOT NULL DEFAULT '',
    stats INTEGER NOT NULL DEFAULT 1,
    tasks_updated REAL NOT NULL DEFAULT 0
);
CREATE INDEX IF NOT EXISTS classes_teacher ON classes(teacher_id);
CREATE TABLE IF NOT EXISTS tasks (
    class_id INTEGER NOT NULL REFERENCES classes(id) ON DELETE CASCADE,
    id TEXT NOT NULL,
    title TEXT NOT NULL,
    text TEXT NOT NULL,
    due TEXT NOT NULL,
    mode TEXT NOT NULL,
    circuit TEXT NOT NULL,
    created REAL NOT NULL,
    PRIMARY KEY (class_id, id)
);
CREATE TABLE IF NOT EXISTS answers (
    id INTEGER PRIMARY KEY,
    class_id INTEGER NOT NULL,
    task_id TEXT NOT NULL,
    uid TEXT NOT NULL,
    name TEXT NOT NULL,
    status TEXT NOT NULL,
    answer TEXT NOT NULL,
    at REAL NOT NULL,
    FOREIGN KEY (class_id, task_id) REFERENCES tasks(class_id, id) ON DELETE CASCADE
);
CREATE INDEX IF NOT EXISTS answers_task ON answers(class_id, task_id);
CREATE TABLE IF NOT EXISTS class_stats (
    class_id INTEGER NOT NULL REFERENCES classes(id) ON DELETE CASCADE,
    uid TEXT NOT NULL,
    summary TEXT NOT NULL,
    at REAL NOT NULL,
    PRIMARY KEY (class_id, uid)
);
CREATE TABLE IF NOT EXISTS reports (
    id INTEGER PRIMARY KEY,
    kind TEXT NOT NULL,
    class_id INTEGER,
    body TEXT NOT NULL,
    at REAL NOT NULL
);
)sql";

// The off list is kept as ids separated by blanks; ids hold none.
std::string joinIds(const std::vector<std::string>& ids) {
    std::string out;
    for (const std::string& id : ids) out += (out.empty() ? "" : " ") + id;
    return out;
}

std::vector<std::string> splitIds(const std::string& text) {
    std::vector<std::string> out;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(' ', start);
        if (end == std::string::npos) end = text.size();
        if (end > start) out.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return out;
}

class SqliteStorage final : public Storage {
  public:
    explicit SqliteStorage(const std::string& path) {
        const int rc = sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
        if (rc != SQLITE_OK) {
            const std::string reason = db_ ? sqlite3_errmsg(db_) : "out of memory";
            sqlite3_close(db_);
            throw std::runtime_error("kan ikke åbne databasen " + path + ": " + reason);
        }
        sqlite3_busy_timeout(db_, 5000);
        exec("PRAGMA journal_mode=WAL");
        exec("PRAGMA synchronous=FULL");
        exec("PRAGMA foreign_keys=ON");
        exec(kSchema);
        for (ReadConnection& r : readers_) {
            if (sqlite3_open_v2(path.c_str(), &r.db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
                const std::string reason = r.db ? sqlite3_errmsg(r.db) : "out of memory";
                closeAll();
                throw std::runtime_error("kan ikke åbne databasen " + path + ": " + reason);
            }
            sqlite3_busy_timeout(r.db, 5000);
            sqlite3_exec(r.db, "PRAGMA query_only=ON", nullptr, nullptr, nullptr);
        }
        if (sqlite3_open_v2(path.c_str(), &checkpointDb_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            const std::string reason = checkpointDb_ ? sqlite3_errmsg(checkpointDb_) : "out of memory";
            closeAll();
            throw std::runtime_error("kan ikke åbne databasen " + path + ": " + reason);
        }
        sqlite3_exec(checkpointDb_, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
        // Replaces the writer's own checkpoint after a commit.
        sqlite3_wal_hook(db_, &SqliteStorage::walGrew, this);
        checkpointer_ = std::thread([this] { checkpointLoop(); });
    }

    ~SqliteStorage() override {
        {
            std::lock_guard lock(checkpointMutex_);
            stopping_ = true;
        }
        checkpointWanted_.notify_one();
        checkpointer_.join();
        closeAll();
    }

    int64_t addTeacher(const Teacher& t) override {
        std::lock_guard lock(mutex_);
        Query q = query("INSERT OR IGNORE INTO teachers(email, name, password_hash) VALUES (?, ?, ?)");
        q.bind(t.email, t.name, t.passwordHash);
        q.run();
        return sqlite3_changes(db_) ? sqlite3_last_insert_rowid(db_) : 0;
    }

    std::optional<Teacher> teacherByEmail(const std::string& email) override {
        std::lock_guard lock(mutex_);
        Query q = query("SELECT id, email, name, password_hash FROM teachers WHERE email = ?");
        q.bind(email);
        return readTeacher(q);
    }

    std::optional<Teacher> teacherById(int64_t id) override {
        std::lock_guard lock(mutex_);
        Query q = query("SELECT id, email, name, password_hash FROM teachers WHERE id = ?");
        q.bind(id);
        return readTeacher(q);
    }

    void addSession(const Session& s) override {
        std::lock_guard lock(mutex_);
        Query q = query("INSERT INTO sessions(token_hash, teacher_id, csrf, expires) VALUES (?, ?, ?, ?)");
        q.bind(s.tokenHash, s.teacherId, s.csrf, s.expires);
        q.run();
    }

    std::optional<Session> session(const std::string& tokenHash, double now) override {
        std::lock_guard lock(mutex_);
        Query q = query("SELECT token_hash, teacher_id, csrf, expires FROM sessions WHERE token_hash = ? AND expires > ?");
        q.bind(tokenHash, now);
        if (!q.step()) return std::nullopt;
        return Session{q.text(0), q.int64(1), q.text(2), q.real(3)};
    }

    void removeSession(const std::string& tokenHash) override {
        std::lock_guard lock(mutex_);
        Query q = query("DELETE FROM sessions WHERE token_hash = ?");
        q.bind(tokenHash);
        q.run();
    }

    Failures failures(const std::string& who) override {
        std::lock_guard lock(mutex_);
        Query q = query("SELECT count, last FROM login_failures WHERE who = ?");
        q.bind(who);
        if (!q.step()) return {};
        return {static_cast<int>(q.int64(0)), q.real(1)};
    }

    void addFailure(const std::string& who, double now) override {
        std::lock_guard lock(mutex_);
        Query q = query("INSERT INTO login_failures(who, count, last) VALUES (?, 1, ?) "
                        "ON CONFLICT(who) DO UPDATE SET count = count + 1, last = excluded.last");
        q.bind(who, now);
        q.run();
    }

    void clearFailures(const std::string& who) override {
        std::lock_guard lock(mutex_);
        Query q = query("DELETE FROM login_failures WHERE who = ?");
        q.bind(who);
        q.run();
    }

    int64_t addClass(const ClassInfo& c) override {
        std::lock_guard lock(mutex_);
        Query q = query("INSERT OR IGNORE INTO classes(teacher_id, name, code, message, message_id, profile, off, "
                        "stats, tasks_updated) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
        q.bind(c.teacherId, c.name, c.code, c.message, c.messageId, c.profile, joinIds(c.off),
               int64_t(c.stats), c.tasksUpdated);
        q.run();
        return sqlite3_changes(db_) ? sqlite3_last_insert_rowid(db_) : 0;
    }

    std::vector<ClassInfo> classesOf(int64_t teacherId) override {
        Reader r = reader();
        Query q = r.query(std::string(kClassColumns) + " WHERE teacher_id = ? ORDER BY name, id");
        q.bind(teacherId);
        std::vector<ClassInfo> out;
        while (q.step()) out.push_back(readClass(q));
        return out;
    }

    std::optional<ClassInfo> classById(int64_t id) override {
        Reader r = reader();
        Query q = r.query(std::string(kClassColumns) + " WHERE id = ?");
        q.bind(id);
        if (!q.step()) return std::nullopt;
        return readClass(q);
    }

    std::optional<ClassInfo> classByCode(const std::string& code) override {
        Reader r = reader();
        Query q = r.query(std::string(kClassColumns) + " WHERE code = ?");
        q.bind(code);
        if (!q.step()) return std::nullopt;
        return readClass(q);
    }

    void updateClass(const ClassInfo& c) override {
        std::lock_guard lock(mutex_);
        Query q = query("UPDATE classes SET name = ?, message = ?, message_id = ?, profile = ?, off = ?, stats = ? "
                        "WHERE id = ?");
        q.bind(c.name, c.message, c.messageId, c.profile, joinIds(c.off), int64_t(c.stats), c.id);
        q.run();
    }

    void deleteClass(int64_t id) override {
        std::lock_guard lock(mutex_);
        Transaction tx(*this);
        for (const char* sql : {"DELETE FROM answers WHERE class_id = ?", "DELETE FROM tasks WHERE class_id = ?",
                                "DELETE FROM class_stats WHERE class_id = ?", "DELETE FROM classes WHERE id = ?"}) {
            Query q = query(sql);
            q.bind(id);
            q.run();
        }
        tx.commit();
    }

    void addTask(const Task& t, double now) override {
        std::lock_guard lock(mutex_);
        Transaction tx(*this);
        Query q = query("INSERT INTO tasks(class_id, id, title, text, due, mode, circuit, created) "
                        "VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
        q.bind(t.classId, t.id, t.title, t.text, t.due, t.mode, t.circuit, t.created);
        q.run();
        touchTasks(t.classId, now);
        tx.commit();
    }

    void deleteTask(int64_t classId, const std::string& taskId, double now) override {
        std::lock_guard lock(mutex_);
        Transaction tx(*this);
        for (const char* sql : {"DELETE FROM answers WHERE class_id = ? AND task_id = ?",
                                "DELETE FROM tasks WHERE class_id = ? AND id = ?"}) {
            Query q = query(sql);
            q.bind(classId, taskId);
            q.run();
        }
        touchTasks(classId, now);
        tx.commit();
    }

    std::vector<Task> tasksOf(int64_t classId) override {
        Reader r = reader();
        Query q = r.query(std::string(kTaskColumns) + " WHERE class_id = ? ORDER BY created, rowid");
        q.bind(classId);
        std::vector<Task> out;
        while (q.step()) out.push_back(readTask(q));
        return out;
    }

    std::optional<Task> task(int64_t classId, const std::string& taskId) override {
        Reader r = reader();
        Query q = r.query(std::string(kTaskColumns) + " WHERE class_id = ? AND id = ?");
        q.bind(classId, taskId);
        if (!q.step()) return std::nullopt;
        return readTask(q);
    }

    // The first hand-in to find no write under way writes every one waiting
    // in one transaction; those arriving meanwhile wait for the next. Each
    // returns only once its own is committed.
    int64_t addAnswer(int64_t classId, const Answer& a) override {
        PendingAnswer mine{classId, &a, 0, nullptr, false};
        std::unique_lock lock(pendingMutex_);
        pending_.push_back(&mine);
        while (!mine.done) {
            if (writingAnswers_) {
                answersWritten_.wait(lock);
                continue;
            }
            writingAnswers_ = true;
            std::vector<PendingAnswer*> batch;
            batch.swap(pending_);
            lock.unlock();
            writeAnswers(batch);
            lock.lock();
            for (PendingAnswer* p : batch) p->done = true;
            writingAnswers_ = false;
            answersWritten_.notify_all();
        }
        if (mine.error) std::rethrow_exception(mine.error);
        return mine.id;
    }

    std::vector<Answer> answersOf(int64_t classId, const std::string& taskId) override {
        Reader r = reader();
        Query q = r.query("SELECT id, task_id, uid, name, status, answer, at FROM answers "
                        "WHERE class_id = ? AND task_id = ? ORDER BY at DESC, id DESC");
        q.bind(classId, taskId);
        std::vector<Answer> out;
        while (q.step())
            out.push_back({q.int64(0), q.text(1), q.text(2), q.text(3), q.text(4), q.text(5), q.real(6)});
        return out;
    }

    void putStats(int64_t classId, const StatsUpload& s) override {
        std::lock_guard lock(mutex_);
        Query q = query("INSERT INTO class_stats(class_id, uid, summary, at) VALUES (?, ?, ?, ?) "
                        "ON CONFLICT(class_id, uid) DO UPDATE SET summary = excluded.summary, at = excluded.at");
        q.bind(classId, s.uid, s.summary, s.at);
        q.run();
    }

    std::vector<StatsUpload> statsOf(int64_t classId) override {
        Reader r = reader();
        Query q = r.query("SELECT uid, summary, at FROM class_stats WHERE class_id = ? ORDER BY at");
        q.bind(classId);
        std::vector<StatsUpload> out;
        while (q.step()) out.push_back({q.text(0), q.text(1), q.real(2)});
        return out;
    }

    void addReport(const std::string& kind, int64_t classId, const std::string& body, double now) override {
        std::lock_guard lock(mutex_);
        Query q = query("INSERT INTO reports(kind, class_id, body, at) VALUES (?, ?, ?, ?)");
        q.bind(kind, classId, body, now);
        if (classId == 0) sqlite3_bind_null(q.stmt, 2);
        q.run();
    }

    std::vector<Report> reports(double since, size_t limit) override {
        Reader r = reader();
        Query q = r.query("SELECT id, kind, IFNULL(class_id, 0), body, at FROM reports WHERE at >= ? "
                          "ORDER BY at DESC, id DESC LIMIT ?");
        q.bind(since, static_cast<int64_t>(limit));
        std::vector<Report> out;
        while (q.step()) out.push_back({q.int64(0), q.text(1), q.int64(2), q.text(3), q.real(4)});
        return out;
    }

  private:
    struct PendingAnswer {
        int64_t classId;
        const Answer* answer;
        int64_t id = 0;
        std::exception_ptr error;
        bool done = false;
    };

    // One refused row (a task deleted since the hand-in was checked) fails
    // alone; anything that undoes the transaction fails them all.
    void writeAnswers(const std::vector<PendingAnswer*>& batch) {
        std::lock_guard lock(mutex_);
        try {
            Transaction tx(*this);
            for (PendingAnswer* p : batch) {
                try {
                    Query q = query("INSERT INTO answers(class_id, task_id, uid, name, status, answer, at) "
                                    "VALUES (?, ?, ?, ?, ?, ?, ?)");
                    const Answer& a = *p->answer;
                    q.bind(p->classId, a.taskId, a.uid, a.name, a.status, a.answer, a.at);
                    q.run();
                    p->id = sqlite3_last_insert_rowid(db_);
                } catch (const std::exception&) {
                    if (sqlite3_get_autocommit(db_)) throw; // SQLite rolled the transaction back
                    p->error = std::current_exception();
                }
            }
            tx.commit();
        } catch (const std::exception&) {
            for (PendingAnswer* p : batch)
                if (!p->error) p->error = std::current_exception();
        }
    }

    static int walGrew(void* self, sqlite3*, const char*, int pages) {
        auto* s = static_cast<SqliteStorage*>(self);
        if (pages >= kCheckpointPages) {
            std::lock_guard lock(s->checkpointMutex_);
            s->checkpointDue_ = true;
            s->checkpointWanted_.notify_one();
        }
        return SQLITE_OK;
    }

    // PASSIVE: copies what no reader still needs, and never holds up a
    // writer; the WAL starts over once all of it is copied.
    void checkpointLoop() {
        std::unique_lock lock(checkpointMutex_);
        for (;;) {
            checkpointWanted_.wait(lock, [this] { return checkpointDue_ || stopping_; });
            if (stopping_) return;
            checkpointDue_ = false;
            lock.unlock();
            sqlite3_wal_checkpoint_v2(checkpointDb_, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
            lock.lock();
        }
    }

    void closeAll() {
        sqlite3_close(checkpointDb_);
        checkpointDb_ = nullptr;
        for (ReadConnection& r : readers_) {
            for (auto& [sql, stmt] : r.statements) sqlite3_finalize(stmt);
            sqlite3_close(r.db);
            r.db = nullptr;
        }
        for (auto& [sql, stmt] : statements_) sqlite3_finalize(stmt);
        sqlite3_close(db_);
    }

    static constexpr const char* kClassColumns =
        "SELECT id, teacher_id, name, code, message, message_id, profile, off, stats, tasks_updated FROM classes";
    static constexpr const char* kTaskColumns =
        "SELECT id, class_id, title, text, due, mode, circuit, created FROM tasks";

    // A prepared statement from the cache, reset when it goes out of scope.
    struct Query {
        sqlite3* db;
        sqlite3_stmt* stmt;
        int next = 1;

        ~Query() {
            sqlite3_reset(stmt);
            sqlite3_clear_bindings(stmt);
        }
        void bindOne(const std::string& v) {
            check(sqlite3_bind_text(stmt, next++, v.data(), static_cast<int>(v.size()), SQLITE_TRANSIENT));
        }
        void bindOne(int64_t v) { check(sqlite3_bind_int64(stmt, next++, v)); }
        void bindOne(double v) { check(sqlite3_bind_double(stmt, next++, v)); }
        template <class... T>
        void bind(const T&... values) {
            (bindOne(values), ...);
        }
        bool step() {
            const int rc = sqlite3_step(stmt);
            if (rc == SQLITE_ROW) return true;
            if (rc == SQLITE_DONE) return false;
            throw std::runtime_error(std::string("database: ") + sqlite3_errmsg(db));
        }
        void run() {
            while (step()) {
            }
        }
        std::string text(int col) const {
            const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(stmt, col));
            return p ? std::string(p, static_cast<size_t>(sqlite3_column_bytes(stmt, col))) : std::string();
        }
        int64_t int64(int col) const { return sqlite3_column_int64(stmt, col); }
        double real(int col) const { return sqlite3_column_double(stmt, col); }
        void check(int rc) const {
            if (rc != SQLITE_OK) throw std::runtime_error(std::string("database: ") + sqlite3_errmsg(db));
        }
    };

    // Rolls back unless committed, so that an exception leaves nothing half done.
    struct Transaction {
        SqliteStorage& s;
        bool done = false;
        explicit Transaction(SqliteStorage& storage) : s(storage) { s.exec("BEGIN IMMEDIATE"); }
        void commit() {
            s.exec("COMMIT");
            done = true;
        }
        ~Transaction() {
            if (!done) sqlite3_exec(s.db_, "ROLLBACK", nullptr, nullptr, nullptr);
        }
    };

    static Query prepare(sqlite3* db, std::map<std::string, sqlite3_stmt*>& cache, const std::string& sql) {
        sqlite3_stmt*& stmt = cache[sql];
        if (!stmt && sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
            cache.erase(sql);
            throw std::runtime_error(std::string("database: ") + sqlite3_errmsg(db));
        }
        return Query{db, stmt};
    }
    // On the writing connection; the caller holds mutex_.
    Query query(const std::string& sql) { return prepare(db_, statements_, sql); }

    struct ReadConnection {
        sqlite3* db = nullptr;
        std::map<std::string, sqlite3_stmt*> statements;
        std::mutex mutex;
    };
    // One reading connection, held until it goes out of scope.
    struct Reader {
        ReadConnection& c;
        std::unique_lock<std::mutex> lock;
        Query query(const std::string& sql) { return prepare(c.db, c.statements, sql); }
    };
    // The first free one from a turning start, or else wait for one.
    Reader reader() {
        const size_t first = nextReader_.fetch_add(1, std::memory_order_relaxed);
        for (size_t i = 0; i < readers_.size(); ++i) {
            ReadConnection& c = readers_[(first + i) % readers_.size()];
            std::unique_lock lock(c.mutex, std::try_to_lock);
            if (lock.owns_lock()) return Reader{c, std::move(lock)};
        }
        ReadConnection& c = readers_[first % readers_.size()];
        return Reader{c, std::unique_lock(c.mutex)};
    }

    void exec(const char* sql) {
        char* error = nullptr;
        if (sqlite3_exec(db_, sql, nullptr, nullptr, &error) != SQLITE_OK) {
            const std::string reason = error ? error : "unknown";
            sqlite3_free(error);
            throw std::runtime_error("database: " + reason);
        }
    }

    // A strictly growing stamp, so that every change is seen as one even
    // within the same millisecond.
    void touchTasks(int64_t classId, double now) {
        Query q = query("UPDATE classes SET tasks_updated = MAX(tasks_updated + 1, ?) WHERE id = ?");
        q.bind(std::floor(now * 1000), classId);
        q.run();
    }

    static std::optional<Teacher> readTeacher(Query& q) {
        if (!q.step()) return std::nullopt;
        return Teacher{q.int64(0), q.text(1), q.text(2), q.text(3)};
    }

    static ClassInfo readClass(const Query& q) {
        ClassInfo c;
        c.id = q.int64(0);
        c.teacherId = q.int64(1);
        c.name = q.text(2);
        c.code = q.text(3);
        c.message = q.text(4);
        c.messageId = q.text(5);
        c.profile = q.text(6);
        c.off = splitIds(q.text(7));
        c.stats = q.int64(8) != 0;
        c.tasksUpdated = q.real(9);
        return c;
    }

    static Task readTask(const Query& q) {
        return Task{q.text(0), q.int64(1), q.text(2), q.text(3), q.text(4), q.text(5), q.text(6), q.real(7)};
    }

    sqlite3* db_ = nullptr;
    std::mutex mutex_;
    std::map<std::string, sqlite3_stmt*> statements_;
    // Enough for two cores: a read holds one for some microseconds.
    std::array<ReadConnection, 4> readers_;
    std::atomic<size_t> nextReader_{0};

    std::mutex pendingMutex_;
    std::condition_variable answersWritten_;
    std::vector<PendingAnswer*> pending_;
    bool writingAnswers_ = false;

    // SQLite's own threshold for a checkpoint.
    static constexpr int kCheckpointPages = 1000;
    sqlite3* checkpointDb_ = nullptr;
    std::thread checkpointer_;
    std::mutex checkpointMutex_;
    std::condition_variable checkpointWanted_;
    bool checkpointDue_ = false;
    bool stopping_ = false;
};

} // namespace

std::unique_ptr<Storage> openSqlite(const std::string& path) { return std::make_unique<SqliteStorage>(path); }

} // namespace server
