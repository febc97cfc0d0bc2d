// A student's data survive the process being killed in the middle of an
// import's save: whatever moment the kill comes, "data.json" reads whole, as
// either the old data or the new.
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string bundle(const std::string& marker, int entries) {
    Json data = Json::object();
    for (int i = 0; i < entries; ++i)
        data["fs_k" + std::to_string(i)] = Json(Json::dump(Json(marker + std::string(200, 'x')), 0));
    Json doc = Json::object();
    doc["app"] = Json("Keldvarn");
    doc["data"] = std::move(data);
    doc["saved"] = Json("2026-03-05T10:00:00.000Z");
    doc["version"] = Json(1);
    return Json::dump(doc, 1);
}

TEST(ImportKill, aKillDuringTheSaveLeavesAReadableFile) {
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / ("import_kill_" + std::to_string(getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    const std::string file = (dir / "data.json").string();
    const std::string a = bundle("old", 2000), b = bundle("new", 2000); // about half a megabyte each

    DataStore& store = DataStore::instance();
    store.resetForTest();
    store.setPath(file);
    ASSERT_TRUE(store.importBundle(a, nullptr));

    std::mt19937 rng(12345);
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        const pid_t pid = fork();
        if (pid == 0) {
            // Imports back and forth until killed.
            for (int i = 0;; ++i) DataStore::instance().importBundle(i % 2 ? a : b, nullptr);
        }
        usleep(std::uniform_int_distribution<useconds_t>(2000, 40000)(rng));
        kill(pid, SIGKILL);
        int status = 0;
        waitpid(pid, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));

        store.resetForTest();
        store.setPath(file);
        ASSERT_TRUE(store.load()) << "data.json unreadable after a kill";
        EXPECT_TRUE(store.damagedCopy().empty());
        ASSERT_EQ(store.keys().size(), 2000u);
        const std::string first = store.getString("k0");
        EXPECT_TRUE(first.rfind("old", 0) == 0 || first.rfind("new", 0) == 0) << first.substr(0, 10);
        // One whole file, never a mix of the two.
        EXPECT_EQ(store.getString("k1999").substr(0, 3), first.substr(0, 3));
    }
    store.resetForTest();
    std::filesystem::remove_all(dir);
}

} // namespace
