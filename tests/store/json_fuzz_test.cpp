// Random damage to real documents: the parser may refuse, but only with its
// own error, never by crashing, hanging or throwing anything else; what it
// accepts writes back and reads again as the same value. The seed is fixed so
// a failure repeats; the iteration number is in the message.
#include "store/json.h"
#include "tests/store/as_written.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// A data file as the store writes it, in each indentation, and the shapes
// the parser treats specially.
std::vector<std::string> seeds() {
    const Json store =
        Json::parse(R"({"app":"Keldvarn","data":{"fs_kreds":"{\"children\":[{\"kind\":\"R\",\"name\":\"R1\",)"
                    R"(\"value\":4700},{\"kind\":\"R\",\"name\":\"R2\",\"value\":9400}],\"kind\":\"S\"}",)"
                    R"("fs_komma":"true","fs_ov_stats":"{\"ohm\":{\"last\":\"2026-02-01T08:00:00.000Z\",)"
                    R"(\"right\":7,\"total\":12.5}}","fs_rund":"\"d2\"",)"
                    R"("fs_student_name":"\"Åse Ærø \\\"Øster\\\"\\t\\\\\""},)"
                    R"("saved":"2026-03-05T10:11:12.000Z","version":1})");
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

} // namespace
