// DataStore against real files in a fresh temporary directory: the exact file
// form, load of both forms and of broken files, atomic saves, bundles.
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
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

class DataStoreTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string tmpl = (fs::temp_directory_path() / "store_test_XXXXXX").string();
        ASSERT_NE(mkdtemp(tmpl.data()), nullptr);
        dir = tmpl;
        file = dir / "data.json";
        store().resetForTest();
    }
    void TearDown() override {
        store().resetForTest();
        fs::remove_all(dir);
    }
    static DataStore& store() { return DataStore::instance(); }
    void usePath() { store().setPath(file.string()); }

    fs::path dir;
    fs::path file;
};

TEST_F(DataStoreTest, savedFileHasTheExactDocumentForm) {
    usePath();
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
    EXPECT_FALSE(fs::exists(dir / "data.json.tmp"));
    EXPECT_EQ(withoutStamp(store().exportText()), withoutStamp(readAll(file)));

    // What was written reads back as the same values, under the Danish locale too.
    store().resetForTest();
    usePath();
    ASSERT_TRUE(store().load());
    EXPECT_EQ(store().get("a"), Json(1.5));
    EXPECT_EQ(store().get("c"), c);
    EXPECT_EQ(store().keys(), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(DataStoreTest, everySetAndRemoveRewritesTheFile) {
    usePath();
    store().set("n", 1);
    EXPECT_NE(readAll(file).find("\"fs_n\": \"1\""), std::string::npos);
    store().set("n", 2);
    EXPECT_NE(readAll(file).find("\"fs_n\": \"2\""), std::string::npos);
    store().remove("n");
    EXPECT_EQ(readAll(file).find("fs_n"), std::string::npos);
    EXPECT_TRUE(store().keys().empty());
}

TEST_F(DataStoreTest, emptyStoreWritesAnEmptyDataObject) {
    usePath();
    ASSERT_TRUE(store().save());
    EXPECT_EQ(withoutStamp(readAll(file)),
              "{\n \"app\": \"Keldvarn\",\n \"data\": {},\n \"saved\": \"*\",\n \"version\": 1\n}");
}

TEST_F(DataStoreTest, withoutPathNothingIsWritten) {
    store().set("a", 1);
    EXPECT_FALSE(store().save());
    EXPECT_FALSE(store().load());
    EXPECT_EQ(store().get("a"), Json(1));
    EXPECT_TRUE(fs::is_empty(dir));
}

TEST_F(DataStoreTest, failedSaveLeavesTheOldFileWholeAndRetriesLater) {
    usePath();
    store().set("a", 1);
    const std::string before = readAll(file);

    // The temporary cannot be opened: the real file is not touched.
    fs::create_directory(dir / "data.json.tmp");
    store().set("a", 2);
    EXPECT_FALSE(store().save());
    EXPECT_EQ(readAll(file), before);
    EXPECT_EQ(store().get("a"), Json(2));

    // The next save after the obstacle is gone writes everything.
    fs::remove(dir / "data.json.tmp");
    store().set("b", 3);
    EXPECT_NE(readAll(file).find("\"fs_a\": \"2\""), std::string::npos);

    // The move fails when the real path is a directory with contents.
    const fs::path blocked = dir / "blocked";
    fs::create_directories(blocked / "inside");
    store().setPath(blocked.string());
    EXPECT_FALSE(store().save());
    EXPECT_TRUE(fs::is_directory(blocked / "inside"));
}

TEST_F(DataStoreTest, pathIsUtf8) {
    const fs::path sub = dir / fs::path(u8"Østerå data");
    fs::create_directory(sub);
    store().setPath((sub / "data.json").string());
    store().set("k", "v");
    store().resetForTest();
    store().setPath((sub / "data.json").string());
    ASSERT_TRUE(store().load());
    EXPECT_EQ(store().getString("k"), "v");
}

struct LoadRow {
    const char* name;
    std::string text;
    std::vector<std::pair<std::string, std::string>> entries; // key, stored JSON text
};

TEST_F(DataStoreTest, loadReadsBothFormsAndFiltersMembers) {
    const LoadRow rows[] = {
        {"nested form",
         R"({"app":"Keldvarn","data":{"fs_a":"1","fs_b":"\"x\""},"saved":"2026-01-01T00:00:00.000Z","version":1})",
         {{"a", "1"}, {"b", "\"x\""}}},
        {"flat form of older versions", R"({"fs_a":"1","other":"2"})", {{"a", "1"}}},
        {"any app, any version", R"({"app":"Fremmed","version":99,"data":{"fs_a":"true"}})", {{"a", "true"}}},
        {"unprefixed and non-string members dropped",
         R"({"data":{"x":"1","fs_n":5,"fs_o":{},"fs_ok":"[1]","FS_up":"1"}})",
         {{"ok", "[1]"}}},
        {"data that is no object counts as empty", R"({"data":[1],"fs_a":"1"})", {}},
        {"unparsable value is kept as text", R"({"data":{"fs_bad":"{"}})", {{"bad", "{"}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        store().resetForTest();
        writeAll(file, row.text);
        usePath();
        store().set("stale", 1);  // overwrites the file...
        writeAll(file, row.text); // ...so put the document back
        ASSERT_TRUE(store().load());
        std::vector<std::string> keys;
        for (const auto& [key, text] : row.entries) {
            keys.push_back(key);
            Json expected;
            if (Json::tryParse(text, expected)) {
                EXPECT_EQ(store().get(key), expected) << key;
            }
        }
        EXPECT_EQ(store().keys(), keys);

        // What was dropped is gone from the file at the next save.
        ASSERT_TRUE(store().save());
        std::vector<std::string> saved;
        const Json doc = Json::parse(readAll(file));
        for (const auto& member : doc.at("data").asObject())
            saved.push_back(member.first);
        for (auto& key : keys)
            key = "fs_" + key;
        EXPECT_EQ(saved, keys);
    }
}

struct BadFileRow {
    const char* name;
    std::optional<std::string> text; // nullopt: no file at all
};

TEST_F(DataStoreTest, failedLoadChangesNothing) {
    const BadFileRow rows[] = {
        {"missing file", std::nullopt},
        {"empty file", std::string()},
        {"top-level array", std::string("[]")},
        {"truncated document", std::string(R"({"app":"Keldvarn","data":{"fs_a":"1")")},
        {"binary bytes", std::string("\x00\xff\xfe{\"", 5)},
        {"a megabyte of [", std::string(1 << 20, '[')},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        fs::remove(file);
        if (row.text) writeAll(file, *row.text);
        store().resetForTest();
        usePath();
        EXPECT_FALSE(store().load());
        EXPECT_TRUE(store().keys().empty());

        // With entries already in memory, they stay as they were.
        store().resetForTest();
        store().set("kept", "yes"); // no path yet: memory only
        usePath();
        EXPECT_FALSE(store().load());
        EXPECT_EQ(store().keys(), std::vector<std::string>{"kept"});
        EXPECT_EQ(store().getString("kept"), "yes");
    }
}

struct ReadRow {
    const char* name;
    const char* key;
    Json fallback;
    Json expected;
};

TEST_F(DataStoreTest, readsFallBackOnMissingOrUnparsableValues) {
    writeAll(file, R"({"data":{"fs_n":"2.5","fs_s":"\"tekst\"","fs_bad":"{","fs_obj":"{\"a\":[1]}"}})");
    usePath();
    ASSERT_TRUE(store().load());
    Json objA = Json::object();
    objA["a"].push(1);
    const ReadRow rows[] = {
        {"number", "n", Json(), Json(2.5)},
        {"string", "s", Json(), Json("tekst")},
        {"object", "obj", Json(), objA},
        {"missing key", "none", Json(7), Json(7)},
        {"unparsable text", "bad", Json("fb"), Json("fb")},
        {"prefix is added, never expected from the caller", "fs_n", Json(-1), Json(-1)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(store().get(row.key, row.fallback), row.expected);
    }
    EXPECT_EQ(store().getString("s", "fb"), "tekst");
    EXPECT_EQ(store().getString("n", "fb"), "fb");
    EXPECT_EQ(storeGetString("bad", "fb"), "fb");
    EXPECT_EQ(storeGet("n"), Json(2.5));
}

struct BundleRow {
    const char* name;
    std::string text;
    bool valid;
    std::string date;
    int count;
};

TEST_F(DataStoreTest, bundleValidation) {
    const BundleRow rows[] = {
        {"own bundle",
         R"({"app":"Keldvarn","data":{"fs_a":"1","fs_b":"2","x":"3","fs_n":4},"saved":"2026-03-05T10:11:12.000Z","version":1})",
         true, "5.3.2026", 2},
        {"earlier name", R"({"app":"Ostrovalden","data":{},"saved":"2025-12-31T23:59:59.000Z"})", true,
         "31.12.2025", 0},
        {"no version needed", R"({"app":"Ostrovalden","data":{"fs_a":"1"},"saved":"2026-10-01"})", true,
         "1.10.2026", 1},
        {"short stamp as it stands", R"({"app":"Keldvarn","data":{},"saved":"i går"})", true, "i går", 0},
        {"no stamp", R"({"app":"Keldvarn","data":{}})", true, "", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string date = "unchanged";
        int count = -1;
        EXPECT_EQ(store().validateBundle(row.text, &date, &count), row.valid);
        EXPECT_EQ(date, row.date);
        EXPECT_EQ(count, row.count);
        EXPECT_TRUE(store().validateBundle(row.text, nullptr, nullptr));
    }
}

TEST_F(DataStoreTest, bundleRefusals) {
    const std::pair<const char*, std::string> rows[] = {
        {"other program", R"({"app":"other","data":{}})"},
        {"no app", R"({"data":{}})"},
        {"app not a string", R"({"app":1,"data":{}})"},
        {"data is an array", R"({"app":"Keldvarn","data":[]})"},
        {"no data", R"({"app":"Keldvarn"})"},
        {"top-level array", R"([{"app":"Keldvarn","data":{}}])"},
        {"not JSON", "Keldvarn"},
        {"empty", ""},
    };
    for (const auto& [name, text] : rows) {
        SCOPED_TRACE(name);
        std::string date = "unchanged";
        int count = -1;
        EXPECT_FALSE(store().validateBundle(text, &date, &count));
        EXPECT_EQ(date, "unchanged");
        EXPECT_EQ(count, -1);
    }
}

TEST_F(DataStoreTest, importReplacesAllEntriesAndSaves) {
    usePath();
    store().set("old", 1);
    std::string date;
    ASSERT_TRUE(store().importBundle(
        R"({"app":"Ostrovalden","data":{"fs_a":"\"ny\"","x":"1","fs_n":2},"saved":"2026-03-05T00:00:00.000Z"})",
        &date));
    EXPECT_EQ(date, "5.3.2026");
    EXPECT_EQ(store().keys(), std::vector<std::string>{"a"});
    EXPECT_EQ(store().getString("a"), "ny");

    store().resetForTest();
    usePath();
    ASSERT_TRUE(store().load());
    EXPECT_EQ(store().keys(), std::vector<std::string>{"a"});
}

TEST_F(DataStoreTest, refusedImportChangesNothing) {
    usePath();
    store().set("old", 1);
    const std::string before = readAll(file);
    std::string date = "unchanged";
    EXPECT_FALSE(store().importBundle(R"({"app":"other","data":{"fs_a":"1"}})", &date));
    EXPECT_EQ(date, "unchanged");
    EXPECT_EQ(store().keys(), std::vector<std::string>{"old"});
    EXPECT_EQ(readAll(file), before);
}

TEST_F(DataStoreTest, exportedTextImportsIntoAnotherStore) {
    usePath();
    store().set("ov_stats", Json::object());
    store().set("komma", false);
    const std::string bundle = store().exportText();
    store().resetForTest();
    int count = 0;
    std::string date;
    ASSERT_TRUE(store().validateBundle(bundle, &date, &count));
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(std::regex_match(date, std::regex(R"(\d{1,2}\.\d{1,2}\.\d{4})"))) << date;
    ASSERT_TRUE(store().importBundle(bundle, nullptr));
    EXPECT_EQ(store().get("komma", true), Json(false));
}

} // namespace
