// Random damage to real documents: the parser may refuse, but only with its
// own error, never by crashing, hanging or throwing anything else; what it
// accepts writes back and reads again as the same value. The seed is fixed so
// a failure repeats; the iteration number is in the message.
#include "store/datastore.h"
#include "store/json.h"
#include "tests/store/as_written.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<std::string> seeds() {
    Json store = Json::object();
    store["app"] = "Keldvarn";
    store["saved"] = "2026-03-05T10:11:12.000Z";
    store["version"] = 1;
    Json& data = store["data"] = Json::object();
    Json stats = Json::object();
    for (const char* topic : {"ohm", "effekt", "serie", "parallel", "3fase"}) {
        stats[topic]["right"] = 7;
        stats[topic]["total"] = 12.5;
        stats[topic]["last"] = "2026-02-01T08:00:00.000Z";
    }
    data["fs_ov_stats"] = Json::dump(stats);
    Json circuit = Json::object();
    circuit["kind"] = "S";
    for (int i = 0; i < 3; ++i) {
        Json r = Json::object();
        r["kind"] = "R";
        r["name"] = "R" + std::to_string(i + 1);
        r["value"] = 4.7e3 * (i + 1);
        circuit["children"].push(r);
    }
    data["fs_kreds"] = Json::dump(circuit);
    data["fs_komma"] = "true";
    data["fs_rund"] = "\"d2\"";
    data["fs_student_name"] = Json::dump(Json("Åse Ærø \"Øster\"\t\\"));
    data["fs_tekst"] = "1.25";

    return {
        Json::dump(store, 1),
        Json::dump(store, 0),
        Json::dump(store, 4),
        R"({"fs_komma":"false","fs_usage_starts":"3","fs_theme":"\"dark\""})",
        R"(["\ud83d\ude00","\ud83d","\u00e6\u00f8\u00e5","\b\f\n\r\t\/\\\"",-0,1e-7,-1.5E+300,1.,-,1e])",
        R"([{"id":"t1","text":"R = 47 Ω.\nSvar","answer":4.893617021276596,"due":null,"ok":true}])",
        R"([[[[[[[[[[{"a":[[[[{"b":null}]]]]}]]]]]]]]]])",
    };
}

// Pieces that sit on the parser's edges; "" stands for a NUL byte.
const char* const fragments[] = {"[",       "]",     "{",   "}",    "\"", "\\",    "\\u",     "\\ud83d",
                                 "\\ude00", "\\u12", "\\x", ",",    ":",  "-",     "1e",      "e+",
                                 ".",       "null",  "tru", "fals", "0",  "1e400", "-1e-400", "\xff",
                                 "\xc3",    "æ",     " ",   "\n",   ""};

std::string mutate(std::string text, const std::vector<std::string>& pool, std::mt19937& rng) {
    auto pick = [&](size_t n) { return n == 0 ? size_t(0) : size_t(rng() % n); };
    const int rounds = 1 + int(rng() % 4);
    for (int r = 0; r < rounds; ++r) {
        switch (rng() % 7) {
        case 0: // flip one bit
            if (!text.empty()) text[pick(text.size())] ^= char(1 << (rng() % 8));
            break;
        case 1: // cut off the end
            text.resize(pick(text.size() + 1));
            break;
        case 2: { // insert a troublesome fragment
            const std::string f = fragments[pick(std::size(fragments))];
            text.insert(pick(text.size() + 1), f.empty() ? std::string(1, '\0') : f);
            break;
        }
        case 3: { // delete a range
            const size_t at = pick(text.size() + 1);
            text.erase(at, pick(64));
            break;
        }
        case 4: { // splice in a piece of another document
            const std::string& other = pool[pick(pool.size())];
            const size_t from = pick(other.size());
            text.insert(pick(text.size() + 1), other.substr(from, pick(200)));
            break;
        }
        case 5: { // duplicate a range in place
            const size_t from = pick(text.size() + 1);
            text.insert(from, text.substr(from, pick(100)));
            break;
        }
        case 6: // open a deep nest
            text.insert(pick(text.size() + 1),
                        std::string(Json::maxDepth - 20 + pick(60), rng() % 2 ? '[' : '{'));
            break;
        }
    }
    return text;
}

TEST(JsonFuzz, damagedDocumentsNeverCrashAndWhatParsesRoundTrips) {
    const std::vector<std::string> pool = seeds();
    std::mt19937 rng(424242);
    int accepted = 0;
    int refused = 0;
    for (int i = 0; i < 30000; ++i) {
        SCOPED_TRACE("iteration " + std::to_string(i));
        const std::string text = mutate(pool[rng() % pool.size()], pool, rng);
        Json v;
        try {
            v = Json::parse(text);
        } catch (const std::runtime_error& e) {
            ASSERT_EQ(std::string(e.what()).rfind("json: ", 0), 0u) << e.what();
            Json untouched(1);
            ASSERT_FALSE(Json::tryParse(text, untouched));
            ASSERT_EQ(untouched, Json(1));
            ++refused;
            continue;
        }
        ++accepted;
        const std::string compact = Json::dump(v);
        Json again;
        ASSERT_TRUE(Json::tryParse(compact, again)) << compact;
        ASSERT_EQ(again, asWritten(v)) << compact;
        ASSERT_EQ(Json::dump(again), compact);
        ASSERT_EQ(Json::parse(Json::dump(v, 1)), again);
    }
    // Both outcomes must really have been exercised.
    EXPECT_GT(accepted, 1000);
    EXPECT_GT(refused, 1000);
}

TEST(JsonFuzz, damagedFilesNeverBreakTheStore) {
    std::string tmpl = (fs::temp_directory_path() / "store_fuzz_XXXXXX").string();
    ASSERT_NE(mkdtemp(tmpl.data()), nullptr);
    const fs::path file = fs::path(tmpl) / "data.json";
    const std::vector<std::string> pool = seeds();
    std::mt19937 rng(777);
    DataStore& store = DataStore::instance();
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE("iteration " + std::to_string(i));
        const std::string text = mutate(pool[rng() % 2], pool, rng);
        {
            std::ofstream out(file, std::ios::binary | std::ios::trunc);
            out << text;
        }
        store.resetForTest();
        store.set("before", 1); // memory only: no path yet
        store.setPath(file.string());
        Json doc;
        const bool object = Json::tryParse(text, doc) && doc.isObject();
        ASSERT_EQ(store.load(), object);
        if (!object) {
            ASSERT_EQ(store.keys(), std::vector<std::string>{"before"});
            continue;
        }
        for (const std::string& key : store.keys())
            store.get(key); // any stored text, read safely
        ASSERT_TRUE(store.save());
        store.resetForTest();
        store.setPath(file.string());
        ASSERT_TRUE(store.load());
    }
    store.resetForTest();
    fs::remove_all(tmpl);
}

} // namespace
