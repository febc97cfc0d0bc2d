// The SQLite storage under concurrent hand-ins: each answered one is stored
// once, a refused one fails alone, and the WAL is copied back into the
// database while the server runs.
#include "server/storage.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <thread>

namespace {

class SqliteStorageTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string tmpl = (std::filesystem::temp_directory_path() / "ostro_store_XXXXXX").string();
        ASSERT_TRUE(mkdtemp(tmpl.data()));
        dir = tmpl;
        db = server::openSqlite(path());
        server::ClassInfo c;
        c.teacherId = db->addTeacher({0, "l@skole.dk", "Lærer", "x"});
        c.name = "1A";
        c.code = "AAAA2222";
        classId = db->addClass(c);
        server::Task t;
        t.id = "t1";
        t.classId = classId;
        t.title = "Opgave";
        t.mode = "both";
        db->addTask(t, 1000);
    }
    void TearDown() override {
        db.reset();
        std::filesystem::remove_all(dir);
    }
    std::string path() const { return (dir / "k.db").string(); }

    static server::Answer answer(const std::string& task, const std::string& text) {
        return {0, task, "u1", "Ida", "done", text, 1000};
    }

    std::filesystem::path dir;
    std::unique_ptr<server::Storage> db;
    int64_t classId = 0;
};

// Threads hand in at once, so that many share a transaction; every fifth
// names a task that isn't there and must fail without taking the others
// of its transaction along.
TEST_F(SqliteStorageTest, concurrentHandInsAreStoredOnceAndRefusalsFailAlone) {
    constexpr int kThreads = 12, kEach = 25;
    std::atomic<int> refused{0}, wronglyAccepted{0};
    std::vector<std::vector<int64_t>> ids(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            for (int n = 0; n < kEach; ++n) {
                const bool bad = n % 5 == 4;
                const server::Answer a = answer(bad ? "nosuch" : "t1", std::to_string(t) + "-" + std::to_string(n));
                try {
                    ids[t].push_back(db->addAnswer(classId, a));
                    wronglyAccepted += bad;
                } catch (const std::exception&) {
                    refused += bad;
                }
            }
        });
    for (std::thread& t : threads) t.join();

    EXPECT_EQ(wronglyAccepted, 0);
    EXPECT_EQ(refused, kThreads * kEach / 5);
    std::map<int64_t, int> idCount;
    for (const auto& list : ids)
        for (int64_t id : list) ++idCount[id];
    const std::vector<server::Answer> stored = db->answersOf(classId, "t1");
    ASSERT_EQ(stored.size(), size_t(kThreads * kEach * 4 / 5));
    std::map<std::string, int> textCount;
    for (const server::Answer& a : stored) {
        ++textCount[a.answer];
        EXPECT_EQ(idCount[a.id], 1) << "the id returned for " << a.answer;
    }
    for (int t = 0; t < kThreads; ++t) {
        for (int n = 0; n < kEach; ++n) {
            if (n % 5 != 4) {
                EXPECT_EQ(textCount[std::to_string(t) + "-" + std::to_string(n)], 1);
            }
        }
    }
}

// The writer never checkpoints itself; without the checkpointing thread
// the database file would not grow before it is closed, and the WAL would
// grow for ever.
TEST_F(SqliteStorageTest, walIsCopiedBackWhileOpen) {
    const auto size = [](const std::string& p) {
        std::error_code ec;
        const auto n = std::filesystem::file_size(p, ec);
        return ec ? uintmax_t(0) : n;
    };
    const uintmax_t before = size(path());
    const std::string text(3900, 'x');
    int n = 0;
    while (size(path() + "-wal") < 1100 * 4096u && n < 5000)
        db->addAnswer(classId, answer("t1", text + std::to_string(n++)));
    for (int i = 0; i < 500 && size(path()) <= before; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_GT(size(path()), before);
    EXPECT_EQ(db->answersOf(classId, "t1").size(), size_t(n));
}

} // namespace
