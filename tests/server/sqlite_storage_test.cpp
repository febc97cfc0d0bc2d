// The SQLite storage under concurrent hand-ins: each answered one is stored
// once, a refused one fails alone, and the WAL is copied back into the
// database while the server runs.
#include "tests/server/temp_db.h"

#include <map>
#include <mutex>
#include <thread>

namespace {

class SqliteStorageTest : public TempDbTest {
  protected:
    static server::Answer answer(const std::string& task, const std::string& text) {
        return {0, task, "u1", "Ida", "done", text, 1000};
    }
};

// Threads hand in at once, so that many share a transaction; every fifth
// names a task that isn't there and must fail without taking the others
// of its transaction along.
TEST_F(SqliteStorageTest, concurrentHandInsAreStoredOnceAndRefusalsFailAlone) {
    constexpr int kThreads = 12, kEach = 25;
    std::mutex mutex;
    std::map<std::string, int64_t> accepted; // answer → the id returned for it
    int refused = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            for (int n = 0; n < kEach; ++n) {
                const std::string text = std::to_string(t) + "-" + std::to_string(n);
                try {
                    const int64_t id = db->addAnswer(a, answer(n % 5 == 4 ? "nosuch" : "t1", text));
                    std::lock_guard lock(mutex);
                    accepted[text] = id;
                } catch (const std::exception&) {
                    std::lock_guard lock(mutex);
                    refused += n % 5 == 4;
                }
            }
        });
    for (std::thread& t : threads)
        t.join();

    EXPECT_EQ(refused, kThreads * kEach / 5);
    EXPECT_EQ(accepted.size(), size_t(kThreads * kEach - refused));
    std::map<std::string, int64_t> stored;
    for (const server::Answer& s : db->answersOf(a, "t1"))
        EXPECT_TRUE(stored.emplace(s.answer, s.id).second) << s.answer << " stored twice";
    EXPECT_EQ(stored, accepted);
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
        db->addAnswer(a, answer("t1", text + std::to_string(n++)));
    for (int i = 0; i < 500 && size(path()) <= before; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_GT(size(path()), before);
    EXPECT_EQ(db->answersOf(a, "t1").size(), size_t(n));
}

} // namespace
