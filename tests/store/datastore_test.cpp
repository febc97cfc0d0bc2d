// DataStore against real files in a fresh temporary directory: the exact file
// form, load of both forms and of broken files, damaged files set aside,
// atomic saves and saves that fail on a read-only folder or a full disk, bundles.
#include "store/datastore.h"
#include "tests/store/temp_store.h"
#include "tests/support/disk_faults.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string readAll(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void writeAll(const fs::path& p, const std::string& text) {
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out << text;
}

// The document with its "saved" stamp replaced, after checking its form.
std::string withoutStamp(const std::string& text) {
    static const std::regex stamp(R"("saved": "\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.000Z")");
    EXPECT_TRUE(std::regex_search(text, stamp)) << text;
    return std::regex_replace(text, stamp, "\"saved\": \"*\"");
}

class DataStoreTest : public TempStoreTest {
  protected:
    void SetUp() override {
        TempStoreTest::SetUp();
        file = dir_ / "data.json";
    }
    static DataStore& store() { return DataStore::instance(); }
    void usePath() { store().setPath(file.string()); }

    fs::path file;
};

TEST_F(DataStoreTest, savedFileHasTheExactDocumentForm) {
    store().set("b", "x");
    store().set("a", 1.5);
    Json c = Json::object();
    c["k"].push(1);
    c["k"].push("æ\t\"");
    store().set("c", c);
    EXPECT_EQ(withoutStamp(readAll(file)), "{\n"
                                           " \"app\": \"Keldvarn\",\n"
                                           " \"data\": {\n"
                                           "  \"fs_a\": \"1.5\",\n"
                                           "  \"fs_b\": \"\\\"x\\\"\",\n"
                                           "  \"fs_c\": \"{\\\"k\\\":[1,\\\"æ\\\\t\\\\\\\"\\\"]}\"\n"
                                           " },\n"
                                           " \"saved\": \"*\",\n"
                                           " \"version\": 1\n"
                                           "}");
    EXPECT_FALSE(fs::exists(dir_ / "data.json.tmp"));
    EXPECT_EQ(withoutStamp(store().exportText()), withoutStamp(readAll(file)));

    // What was written reads back as the same values, under the Danish locale too.
    restart();
    EXPECT_EQ(store().get("a"), Json(1.5));
    EXPECT_EQ(store().get("c"), c);
    EXPECT_EQ(store().keys(), (std::vector<std::string>{"a", "b", "c"}));
    // Every set and remove rewrites the file.
    store().remove("c");
    EXPECT_EQ(readAll(file).find("fs_c"), std::string::npos);
    store().set("a", 2);
    EXPECT_NE(readAll(file).find("\"fs_a\": \"2\""), std::string::npos);
}

std::vector<fs::path> damagedCopies(const fs::path& dir) {
    std::vector<fs::path> out;
    for (const auto& entry : fs::directory_iterator(dir))
        if (entry.path().filename().string().rfind("data-beskadiget-", 0) == 0) out.push_back(entry.path());
    return out;
}

TEST_F(DataStoreTest, damagedFileIsMovedAsideByteForByteAndTheStoreStartsEmpty) {
    const std::string good = R"({"app":"Keldvarn","data":{"fs_fc":"{\"kort\":[1,2]}"},"version":1})";
    const struct {
        const char* name;
        std::optional<std::string> bytes; // none: no file at all
        bool setAside = true;             // false: nothing in it to keep
        bool unreadable = false;
    } rows[] = {
        {"cut off", good.substr(0, good.size() / 2)},
        {"byte order mark in front", "\xEF\xBB\xBF" + good},
        {"top level is an array", "[" + good + "]"},
        {"a file the user can't read", good, true, true},
        {"missing file", std::nullopt, false}, // a first start
        {"empty file", "", false},             // power cut before the save was flushed
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const fs::path& old : damagedCopies(dir_))
            fs::remove(old);
        fs::remove(file);
        if (row.bytes) writeAll(file, *row.bytes);
        store().resetForTest();
        store().set("kept", "yes"); // memory only: no path yet
        usePath();
        {
            std::optional<AsNobody> nobody;
            if (row.unreadable) {
                fs::permissions(file, fs::perms::none);
                if (geteuid() == 0) {
                    ASSERT_EQ(chown(dir_.c_str(), AsNobody::uid(), AsNobody::uid()), 0);
                }
                nobody.emplace();
            }
            EXPECT_FALSE(store().load());
        }
        EXPECT_EQ(store().keys(), std::vector<std::string>{"kept"});
        if (!row.setAside) {
            EXPECT_EQ(store().damagedCopy(), "");
            EXPECT_TRUE(damagedCopies(dir_).empty());
            continue;
        }

        const fs::path copy = store().damagedCopy();
        EXPECT_EQ(copy.parent_path(), dir_);
        if (row.unreadable) fs::permissions(copy, fs::perms::owner_read);
        EXPECT_EQ(damagedCopies(dir_), std::vector<fs::path>{copy});
        EXPECT_EQ(readAll(copy), *row.bytes);
        EXPECT_FALSE(fs::exists(file));

        // The start's first save makes a fresh file; the next start reads it
        // and leaves the copy alone.
        store().set("usage_starts", 1);
        restart();
        EXPECT_EQ(store().damagedCopy(), "");
        EXPECT_EQ(damagedCopies(dir_), std::vector<fs::path>{copy});
        EXPECT_EQ(readAll(copy), *row.bytes);
    }
}

TEST_F(DataStoreTest, aSecondDamageInTheSameSecondKeepsBothCopies) {
    writeAll(file, "{1");
    EXPECT_FALSE(store().load());
    const std::string first = store().damagedCopy();
    writeAll(file, "{2");
    EXPECT_FALSE(store().load());
    const std::string second = store().damagedCopy();
    ASSERT_NE(first, second);
    EXPECT_EQ(readAll(first), "{1");
    EXPECT_EQ(readAll(second), "{2");
}

TEST_F(DataStoreTest, folderNamedLikeTheFileStartsEmptyAndSavesFail) {
    fs::create_directories(file / "inside");
    EXPECT_FALSE(store().load());
    EXPECT_EQ(store().damagedCopy(), "");
    EXPECT_TRUE(store().keys().empty());
    store().set("a", 1);
    EXPECT_TRUE(store().saveFailing());
    EXPECT_EQ(store().get("a"), Json(1));
    EXPECT_TRUE(fs::is_directory(file / "inside"));
    EXPECT_FALSE(fs::exists(dir_ / "data.json.tmp"));
}

TEST_F(DataStoreTest, failedSaveKeepsTheOldFileAndMemoryAndRetriesLater) {
    // What fails a save, and how to take the obstacle away again.
    const struct {
        const char* name;
        std::function<void(const fs::path& dir)> put;
        std::function<void(const fs::path& dir)> clear;
        bool asNobody = false;
    } rows[] = {
        {"read-only folder", [](const fs::path& d) { fs::permissions(d, fs::perms(0555)); },
         [](const fs::path& d) { fs::permissions(d, fs::perms(0700)); }, true},
        // Writes into /dev/full fail with ENOSPC, as on a full disk.
        {"full disk", [](const fs::path& d) { fs::create_symlink("/dev/full", d / "data.json.tmp"); },
         [](const fs::path&) {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        store().resetForTest();
        usePath();
        store().set("a", 1);
        ASSERT_FALSE(store().saveFailing());
        const std::string before = readAll(file);

        row.put(dir_);
        {
            std::optional<AsNobody> nobody;
            if (row.asNobody) nobody.emplace();
            store().set("a", 2); // the set's own save fails
        }
        EXPECT_TRUE(store().saveFailing());
        EXPECT_EQ(readAll(file), before);
        EXPECT_EQ(store().get("a"), Json(2));
        EXPECT_FALSE(fs::exists(fs::symlink_status(dir_ / "data.json.tmp"))) << "a partial temporary remains";

        row.clear(dir_);
        store().set("b", 3);
        EXPECT_FALSE(store().saveFailing());
        EXPECT_NE(readAll(file).find("\"fs_a\": \"2\""), std::string::npos);
    }
}

// A process killed at any moment of a save (the student pulls the plug on a
// hung program, here during an import) leaves the last whole file, old or
// new, never a mix; the next start's save sweeps away the temporary the
// killed one was writing.
TEST_F(DataStoreTest, killDuringSavesLeavesAWholeFile) {
    const auto bundle = [](const std::string& marker) {
        Json data = Json::object();
        for (int i = 0; i < 2000; ++i) // about half a megabyte
            data["fs_k" + std::to_string(i)] = Json(Json::dump(Json(marker + std::string(200, 'x')), 0));
        Json doc = Json::object();
        doc["app"] = Json("Keldvarn");
        doc["data"] = std::move(data);
        return Json::dump(doc, 1);
    };
    const std::string a = bundle("old"), b = bundle("new");
    ASSERT_TRUE(store().importBundle(a, nullptr));
    std::mt19937 rng(12345);
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i)
                store().importBundle(i % 2 ? a : b, nullptr);
        }
        usleep(std::uniform_int_distribution<useconds_t>(2000, 40000)(rng));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));

        store().resetForTest();
        usePath();
        ASSERT_TRUE(store().load()) << readAll(file).substr(0, 200);
        EXPECT_EQ(store().damagedCopy(), "");
        ASSERT_EQ(store().keys().size(), 2000u);
        const std::string first = store().getString("k0");
        EXPECT_TRUE(first.rfind("old", 0) == 0 || first.rfind("new", 0) == 0) << first.substr(0, 10);
        EXPECT_EQ(store().getString("k1999").substr(0, 3), first.substr(0, 3));
        ASSERT_TRUE(store().save());
        EXPECT_FALSE(fs::exists(dir_ / "data.json.tmp"));
    }
    EXPECT_TRUE(damagedCopies(dir_).empty());
}

TEST_F(DataStoreTest, loadReadsBothFormsAndFiltersMembers) {
    const struct {
        const char* name;
        std::string text;
        std::vector<std::pair<std::string, std::string>> entries; // key, stored JSON text
    } rows[] = {
        {"flat form of older versions", R"({"fs_a":"1","other":"2"})", {{"a", "1"}}},
        {"unprefixed and non-string members dropped",
         R"({"data":{"x":"1","fs_n":5,"fs_o":{},"fs_ok":"[1]","FS_up":"1"}})",
         {{"ok", "[1]"}}},
        {"data that is no object counts as empty", R"({"data":[1],"fs_a":"1"})", {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        store().set("stale", 1); // in memory, for the load to replace
        writeAll(file, row.text);
        ASSERT_TRUE(store().load());
        std::vector<std::string> keys;
        for (const auto& [key, text] : row.entries) {
            keys.push_back(key);
            EXPECT_EQ(store().get(key), Json::parse(text)) << key;
        }
        EXPECT_EQ(store().keys(), keys);
    }
}

// An unparsable value stays in the store as it was read; only its reading falls back.
TEST_F(DataStoreTest, readsFallBackOnMissingOrUnparsableValues) {
    writeAll(file, R"({"data":{"fs_n":"2.5","fs_s":"\"tekst\"","fs_bad":"{"}})");
    ASSERT_TRUE(store().load());
    EXPECT_EQ(store().keys(), (std::vector<std::string>{"bad", "n", "s"}));
    const struct {
        const char* name;
        const char* key;
        Json fallback;
        Json value;
        std::string text; // getString's answer, with "fb" to fall back on
    } rows[] = {
        {"string", "s", Json(), Json("tekst"), "tekst"},
        {"number, read under the Danish locale", "n", Json(), Json(2.5), "fb"},
        {"missing key", "none", Json(7), Json(7), "fb"},
        {"unparsable text", "bad", Json("fb"), Json("fb"), "fb"},
        {"prefix is added, never expected from the caller", "fs_n", Json(-1), Json(-1), "fb"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(store().get(row.key, row.fallback), row.value);
        EXPECT_EQ(store().getString(row.key, "fb"), row.text);
    }
}

TEST_F(DataStoreTest, bundleValidation) {
    const struct {
        const char* name;
        std::string text;
        bool valid;
        std::string date; // "unchanged" with `count` −1 where refused
        int count;
    } rows[] = {
        {"own bundle",
         R"({"app":"Keldvarn","data":{"fs_a":"1","fs_b":"2","x":"3","fs_n":4},"saved":"2026-03-05T10:11:12.000Z","version":1})",
         true, "5.3.2026", 2},
        {"earlier name", R"({"app":"Ostrovalden","data":{},"saved":"2025-12-31T23:59:59.000Z"})", true,
         "31.12.2025", 0},
        {"other program", R"({"app":"other","data":{}})", false, "unchanged", -1},
        {"data is an array", R"({"app":"Keldvarn","data":[]})", false, "unchanged", -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string date = "unchanged";
        int count = -1;
        EXPECT_EQ(store().validateBundle(row.text, &date, &count), row.valid);
        EXPECT_EQ(date, row.date);
        EXPECT_EQ(count, row.count);
        EXPECT_EQ(store().validateBundle(row.text, nullptr, nullptr), row.valid);
    }
}

} // namespace
