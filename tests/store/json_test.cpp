// Json: the writer's number and string rules, the parser's accepted forms and
// its exact error texts, and round trips. Runs under the Danish locale, where
// a conversion through the C library would show up as a decimal comma.
#include "store/json.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

namespace {

const double inf = std::numeric_limits<double>::infinity();

Json obj(std::initializer_list<std::pair<const std::string, Json>> members) {
    Json o = Json::object();
    for (const auto& m : members)
        o.obj.insert(m);
    return o;
}

Json arr(std::initializer_list<Json> elements) {
    Json a = Json::array();
    for (const auto& e : elements)
        a.arr.push_back(e);
    return a;
}

// Same double, sign of zero included.
bool sameBits(double a, double b) {
    return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
}

TEST(JsonWriter, numbers) {
    const struct {
        const char* name;
        double value;
        const char* text;
    } rows[] = {
        {"negative zero", -0.0, "-0"},
        {"largest whole written in full", 999999999999999.0, "999999999999999"},
        {"1e15 leaves the whole branch", 1e15, "1e+15"},
        {"fraction stays fixed", 123456.789, "123456.789"},
        {"below %g's fixed range", 0.00001, "1e-05"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Json::dump(Json(row.value)), row.text);
    }
}

TEST(JsonWriter, structuresAndEscapes) {
    const Json nested = obj({{"b", arr({1, "x", Json()})}, {"a", obj({})}, {"c", Json::array()}});
    const struct {
        const char* name;
        Json value;
        int indent;
        std::string text;
    } rows[] = {
        {"one blank per level", nested, 1,
         "{\n \"a\": {},\n \"b\": [\n  1,\n  \"x\",\n  null\n ],\n \"c\": []\n}"},
        {"two-character escapes", Json("q\"b\\t\tn\nr\r"), 0, R"("q\"b\\t\tn\nr\r")"},
        {"other controls as \\u00xx", Json(std::string("\x01\b\f\x1f\0", 5)), 0,
         R"("\u0001\u0008\u000c\u001f\u0000")"},
        {"slash, DEL and UTF-8 stay raw", Json("a/b\x7f æøå Ω"), 0, "\"a/b\x7f æøå Ω\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Json::dump(row.value, row.indent), row.text);
    }
}

TEST(JsonParser, looseNumbersReadLikeStrtod) {
    const struct {
        const char* name;
        std::string text;
        double value;
    } rows[] = {
        {"lone minus", "-", 0.0},
        {"trailing point", "1.", 1.0},
        {"bare exponent", "1e", 1.0},
        {"minus then point", "-.5", -0.5},
        {"overflow", "1e400", inf},
        {"overflow despite a negative exponent", "1" + std::string(400, '0') + "e-10", inf},
        {"underflow despite a positive exponent", "0." + std::string(400, '0') + "1e5", 0.0},
        {"long mantissa in range", "1" + std::string(400, '0') + "e-500", 1e-100},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Json v = Json::parse(row.text);
        ASSERT_TRUE(v.isNumber());
        EXPECT_TRUE(sameBits(v.num, row.value)) << v.num << " vs " << row.value;
        // Inside an array the scanner must stop at the same place.
        const Json a = Json::parse("[" + row.text + "]");
        ASSERT_EQ(a.arr.size(), 1u);
        EXPECT_TRUE(sameBits(a.arr[0].num, row.value));
    }
}

TEST(JsonParser, accepts) {
    const struct {
        const char* name;
        std::string text;
        Json value;
    } rows[] = {
        {"blanks everywhere", " \t\r\n{ \"a\" :\n[ 1 ,\t2 ] } \r\n", obj({{"a", arr({1, 2})}})},
        {"last duplicate key wins", R"({"a":1,"b":0,"a":2})", obj({{"a", 2}, {"b", 0}})},
        {"simple escapes", R"("\"\\\/\b\f\n\r\t")", Json("\"\\/\b\f\n\r\t")},
        {"two-byte code point", R"("\u00e6\u00C6")", Json("æÆ")},
        {"surrogate pair joins", R"("\ud83d\ude00")", Json("\xF0\x9F\x98\x80")},
        {"lone high surrogate as it stands", R"("\ud83d")", Json("\xED\xA0\xBD")},
        {"hex digits stop at a non-digit", R"("\u12G4")", Json("\x12")},
        {"hex with blank and sign", R"("\u +41")", Json("A")},
        {"raw controls and UTF-8 accepted", "\"a\tb\nc æ\"", Json("a\tb\nc æ")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Json::parse(row.text), row.value);
    }
}

TEST(JsonParser, errorsNameReasonAndBytePosition) {
    std::string objects; // opened past the limit, never closed
    for (int i = 0; i <= Json::maxDepth; ++i)
        objects += "{\"a\":";
    const struct {
        const char* name;
        std::string text;
        std::string what;
    } rows[] = {
        {"empty text", "", "json: unexpected end at 0"},
        {"trailing comma", "[1,]", "json: unexpected character at 3"},
        {"after an object", "{}x", "json: trailing characters at 2"},
        {"comma then brace", R"({"a":1,})", "json: expected string at 7"},
        {"missing colon", R"({"a" 1})", "json: expected : at 5"},
        {"missing comma in object", R"({"a":1 "b":2})", "json: expected , or } at 7"},
        {"literal glued to the next", "[truefalse]", "json: expected , or ] at 5"},
        {"unterminated string", "\"abc", "json: unterminated string at 4"},
        {"unknown escape", R"("\x")", "json: bad escape at 2"},
        {"short \\u", R"("\u12")", "json: bad \\u at 3"},
        {"too deep", std::string(Json::maxDepth + 1, '['),
         "json: nesting too deep at " + std::to_string(Json::maxDepth)},
        {"too deep in objects", objects, "json: nesting too deep at " + std::to_string(Json::maxDepth * 5)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(errorOf([&] { Json::parse(row.text); }), row.what);
        Json out = obj({{"kept", 1}});
        EXPECT_FALSE(Json::tryParse(row.text, out));
        EXPECT_EQ(out, obj({{"kept", 1}}));
    }
}

// Significant digits of a number's text: those before any exponent, leading
// zeros and the point left out.
int significantDigits(const std::string& text) {
    int n = 0;
    bool started = false;
    for (char c : text) {
        if (c == 'e') break;
        if (c >= '1' && c <= '9') started = true;
        if (started && c >= '0' && c <= '9') ++n;
    }
    return n;
}

TEST(JsonRoundTrip, doublesReadBackExactlyInTheShortestForm) {
    std::mt19937_64 rng(20260305);
    std::uniform_real_distribution<double> everyday(-1000.0, 1000.0);
    for (int i = 0; i < 40000; ++i) {
        // Half arbitrary bit patterns, half values of the size a lesson uses.
        double v = i % 2 ? std::bit_cast<double>(rng()) : std::round(everyday(rng) * 1000.0) / 1000.0;
        if (!std::isfinite(v)) continue;
        const std::string text = Json::dump(Json(v));
        ASSERT_TRUE(sameBits(Json::parse(text).num, v)) << text;
        if (std::fabs(v) < 1e15 && v == std::trunc(v)) continue; // written in full
        char buf[64];
        auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific);
        ASSERT_EQ(significantDigits(text), significantDigits(std::string(buf, r.ptr))) << text;
    }
}

TEST(JsonAccess, readersGiveEmptiesOnAnotherKindAndWritersConvert) {
    Json n(5);
    EXPECT_TRUE(n.at("a").isNull());
    EXPECT_TRUE(n.asString().empty());
    EXPECT_TRUE(n.asObject().empty());
    EXPECT_EQ(n.asBool(true), true);
    EXPECT_EQ(Json("x").asNumber(-1), -1);

    n["a"] = "x";
    EXPECT_EQ(n, obj({{"a", "x"}}));
    Json s("text");
    s.push(1);
    EXPECT_EQ(s, arr({1}));
}

} // namespace
