// The program's own JSON value, parser and writer. Used for "data.json", for
// every message of the class service and for the records kept inside the
// store's values. Numbers are doubles; objects keep their keys in byte order.
// The parser is strict about structure but loose about numbers ("-", "1." and
// "1e" are read the way the C library's strtod reads them); it never depends
// on the process locale.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

class Json {
  public:
    enum Kind : int32_t { Null = 0, Bool = 1, Number = 2, String = 3, Array = 4, Object = 5 };
    using array_t = std::vector<Json>;
    using object_t = std::map<std::string, Json>;

    // Deeper documents are refused with "nesting too deep", so that hostile
    // input cannot exhaust the stack.
    static constexpr int maxDepth = 400;

    Kind kind = Null;
    bool b = false;
    double num = 0.0;
    std::string str;
    array_t arr;
    object_t obj;

    Json() = default;
    Json(bool v) : kind(Bool), b(v) {}
    Json(double v) : kind(Number), num(v) {}
    Json(int v) : kind(Number), num(v) {}
    Json(const char* v) : kind(String), str(v ? v : "") {}
    Json(std::string v) : kind(String), str(std::move(v)) {}

    static Json array() {
        Json j;
        j.kind = Array;
        return j;
    }
    static Json object() {
        Json j;
        j.kind = Object;
        return j;
    }

    bool isNull() const { return kind == Null; }
    bool isBool() const { return kind == Bool; }
    bool isNumber() const { return kind == Number; }
    bool isString() const { return kind == String; }
    bool isArray() const { return kind == Array; }
    bool isObject() const { return kind == Object; }

    // Turns a non-object into an empty object first, then inserts null for a
    // missing key: reading through it changes the value.
    Json& operator[](const std::string& key);
    // Turns a non-array into an empty array first.
    void push(Json v);

    // Never fail: the wrong kind gives a process-wide empty value.
    const std::string& asString() const;
    const object_t& asObject() const;
    const array_t& asArray() const;
    double asNumber(double fallback = 0.0) const { return kind == Number ? num : fallback; }
    bool asBool(bool fallback = false) const { return kind == Bool ? b : fallback; }
    // Member lookup without changing the value; null when absent.
    const Json& at(const std::string& key) const;
    bool has(const std::string& key) const;

    // Strict parser (with the loose number grammar). Throws std::runtime_error
    // "json: <reason> at <byte position>".
    static Json parse(const std::string& text);
    // Catches everything; leaves `out` untouched on failure.
    static bool tryParse(const std::string& text, Json& out);
    // indent 0 is compact; otherwise blanks per level.
    static std::string dump(const Json& value, int indent = 0);
};

// Equal kinds and equal meaningful members; numbers compare as doubles, so
// 0 equals -0 and NaN equals nothing.
bool operator==(const Json& a, const Json& b);

// For test failures: the compact text.
void PrintTo(const Json& value, std::ostream* os);
