// Json's accessors, its recursive-descent parser and its writer. Number text
// goes through std::from_chars/std::to_chars only, so a Danish locale (decimal
// comma) never changes what is read or written.
#include "store/json.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string_view>

namespace {

// Allocated once and never freed, so they stay valid even for code that runs
// while static objects are being destroyed at exit.
const std::string& emptyString() {
    static const std::string* const s = new std::string;
    return *s;
}
const Json::object_t& emptyObject() {
    static const Json::object_t* const o = new Json::object_t;
    return *o;
}
const Json::array_t& emptyArray() {
    static const Json::array_t* const a = new Json::array_t;
    return *a;
}
const Json& nullValue() {
    static const Json* const n = new Json;
    return *n;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Order of magnitude of a decimal span that from_chars found out of range:
// above zero it overflowed, otherwise it underflowed.
long long decimalMagnitude(std::string_view s) {
    size_t i = 0;
    if (i < s.size() && s[i] == '-') ++i;
    long long lead = 0; // digits before the point, leading zeros skipped
    long long zerosAfterPoint = 0;
    bool seenNonZero = false;
    while (i < s.size() && isDigit(s[i])) {
        if (s[i] != '0') seenNonZero = true;
        if (seenNonZero) ++lead;
        ++i;
    }
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && isDigit(s[i])) {
            if (!seenNonZero && s[i] == '0')
                ++zerosAfterPoint;
            else
                seenNonZero = true;
            ++i;
        }
    }
    long long exponent = 0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        ++i;
        bool negative = false;
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) negative = s[i++] == '-';
        while (i < s.size() && isDigit(s[i])) {
            if (exponent < 1000000000) exponent = exponent * 10 + (s[i] - '0');
            ++i;
        }
        if (negative) exponent = -exponent;
    }
    return (lead > 0 ? lead - 1 : -(zerosAfterPoint + 1)) + exponent;
}

// What strtod gives in the C locale for a span that holds an optional "-",
// digits, "." and an exponent: the longest readable prefix, 0 when there is
// none, and ±inf or ±0 when the value lies outside the doubles.
double readDecimal(std::string_view s) {
    double v = 0.0;
    auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    if (r.ec == std::errc()) return v;
    if (r.ec == std::errc::result_out_of_range) {
        const bool negative = !s.empty() && s[0] == '-';
        const double big = std::numeric_limits<double>::infinity();
        const double magnitude = decimalMagnitude(s) > 0 ? big : 0.0;
        return negative ? -magnitude : magnitude;
    }
    return 0.0;
}

void appendUtf8(std::string& out, unsigned long cp) {
    if (cp < 0x80) {
        out += char(cp);
    } else if (cp < 0x800) {
        out += char(0xC0 | (cp >> 6));
        out += char(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += char(0xE0 | (cp >> 12));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    } else {
        out += char(0xF0 | ((cp >> 18) & 0x07));
        out += char(0x80 | ((cp >> 12) & 0x3F));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    }
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// strtoul(four bytes, base 16) as the C library reads it: leading white
// space, a sign, an optional "0x", then hex digits up to the first other
// byte. A minus wraps around as unsigned arithmetic does.
unsigned long readHex4(std::string_view s) {
    size_t i = 0;
    while (i < s.size() && (s[i] == ' ' || (s[i] >= '\t' && s[i] <= '\r')))
        ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) negative = s[i++] == '-';
    if (i + 2 < s.size() && s[i] == '0' && (s[i + 1] == 'x' || s[i + 1] == 'X') && hexValue(s[i + 2]) >= 0)
        i += 2;
    unsigned long v = 0;
    for (; i < s.size() && hexValue(s[i]) >= 0; ++i)
        v = v * 16 + unsigned(hexValue(s[i]));
    return negative ? 0UL - v : v;
}

class Parser {
  public:
    explicit Parser(const std::string& text) : t_(text) {}

    Json document() {
        Json v = value(0);
        skipBlanks();
        if (p_ < t_.size()) fail("trailing characters");
        return v;
    }

  private:
    [[noreturn]] void fail(const char* reason) const { failAt(reason, p_); }
    [[noreturn]] static void failAt(const char* reason, size_t pos) {
        throw std::runtime_error(std::string("json: ") + reason + " at " + std::to_string(pos));
    }

    void skipBlanks() {
        while (p_ < t_.size()) {
            const char c = t_[p_];
            if (c != ' ' && c != '\n' && c != '\r' && c != '\t') break;
            ++p_;
        }
    }

    bool startsWith(std::string_view word) const { return t_.compare(p_, word.size(), word) == 0; }

    Json value(int depth) {
        skipBlanks();
        if (p_ >= t_.size()) fail("unexpected end");
        const char c = t_[p_];
        if (c == '{') return object(depth + 1);
        if (c == '[') return array(depth + 1);
        if (c == '"') return Json(string());
        // Literals match by prefix; whatever follows is the caller's business.
        if (startsWith("true")) {
            p_ += 4;
            return Json(true);
        }
        if (startsWith("false")) {
            p_ += 5;
            return Json(false);
        }
        if (startsWith("null")) {
            p_ += 4;
            return Json();
        }
        if (c == '-' || isDigit(c)) return number();
        fail("unexpected character");
    }

    void enter(int depth) const {
        if (depth > Json::maxDepth) fail("nesting too deep");
    }

    Json object(int depth) {
        enter(depth);
        ++p_; // "{"
        Json o = Json::object();
        skipBlanks();
        if (p_ < t_.size() && t_[p_] == '}') {
            ++p_;
            return o;
        }
        for (;;) {
            skipBlanks();
            if (p_ >= t_.size() || t_[p_] != '"') fail("expected string");
            std::string key = string();
            skipBlanks();
            if (p_ >= t_.size() || t_[p_] != ':') fail("expected :");
            ++p_;
            o.obj[std::move(key)] = value(depth); // a repeated key: the last one wins
            skipBlanks();
            if (p_ < t_.size() && t_[p_] == ',') {
                ++p_;
                continue;
            }
            if (p_ < t_.size() && t_[p_] == '}') {
                ++p_;
                return o;
            }
            fail("expected , or }");
        }
    }

    Json array(int depth) {
        enter(depth);
        ++p_; // "["
        Json a = Json::array();
        skipBlanks();
        if (p_ < t_.size() && t_[p_] == ']') {
            ++p_;
            return a;
        }
        for (;;) {
            a.arr.push_back(value(depth));
            skipBlanks();
            if (p_ < t_.size() && t_[p_] == ',') {
                ++p_;
                continue;
            }
            if (p_ < t_.size() && t_[p_] == ']') {
                ++p_;
                return a;
            }
            fail("expected , or ]");
        }
    }

    // -? digits* (. digits*)? ([eE] [+-]? digits*)?
    Json number() {
        const size_t start = p_;
        if (t_[p_] == '-') ++p_;
        while (p_ < t_.size() && isDigit(t_[p_]))
            ++p_;
        if (p_ < t_.size() && t_[p_] == '.') {
            ++p_;
            while (p_ < t_.size() && isDigit(t_[p_]))
                ++p_;
        }
        if (p_ < t_.size() && (t_[p_] == 'e' || t_[p_] == 'E')) {
            ++p_;
            if (p_ < t_.size() && (t_[p_] == '+' || t_[p_] == '-')) ++p_;
            while (p_ < t_.size() && isDigit(t_[p_]))
                ++p_;
        }
        return Json(readDecimal(std::string_view(t_).substr(start, p_ - start)));
    }

    unsigned long hex4() {
        if (t_.size() - p_ < 4) fail("bad \\u");
        const unsigned long v = readHex4(std::string_view(t_).substr(p_, 4));
        p_ += 4;
        return v;
    }

    std::string string() {
        ++p_; // opening quote
        std::string out;
        for (;;) {
            // Copy the plain run up to the next quote or backslash at once.
            size_t stop = p_;
            while (stop < t_.size() && t_[stop] != '"' && t_[stop] != '\\')
                ++stop;
            out.append(t_, p_, stop - p_);
            p_ = stop;
            if (p_ >= t_.size()) fail("unterminated string");
            if (t_[p_] == '"') {
                ++p_;
                return out;
            }
            ++p_; // backslash
            if (p_ >= t_.size()) fail("unterminated string");
            const char e = t_[p_];
            switch (e) {
            case '"':
                out += '"';
                break;
            case '/':
                out += '/';
                break;
            case '\\':
                out += '\\';
                break;
            case 'b':
                out += '\b';
                break;
            case 'f':
                out += '\f';
                break;
            case 'n':
                out += '\n';
                break;
            case 'r':
                out += '\r';
                break;
            case 't':
                out += '\t';
                break;
            case 'u': {
                ++p_;
                unsigned long cp = hex4();
                // hi lo  ⇒  0x10000 + ((hi − 0xD800) << 10) + (lo − 0xDC00); an unpaired hi stays as it is
                if (cp >= 0xD800 && cp <= 0xDBFF && t_.size() - p_ >= 6 && t_[p_] == '\\' &&
                    t_[p_ + 1] == 'u') {
                    const unsigned long lo = readHex4(std::string_view(t_).substr(p_ + 2, 4));
                    if (lo >= 0xDC00 && lo <= 0xDFFF) {
                        cp = 0x10000 + ((cp - 0xD800) << 10) + (lo - 0xDC00);
                        p_ += 6;
                    }
                }
                appendUtf8(out, cp);
                continue;
            }
            default:
                fail("bad escape");
            }
            ++p_;
        }
    }

    const std::string& t_;
    size_t p_ = 0;
};

void writeNumber(std::string& out, double v) {
    if (!std::isfinite(v)) {
        out += "null";
        return;
    }
    char buf[400]; // "%.0f" of a value just below 1e15 needs 17; "%.17g" needs 24
    if (std::fabs(v) < 1e15 && v == std::trunc(v)) {
        auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed, 0);
        out.append(buf, r.ptr);
        return;
    }
    // The shortest "%.{p}g" that reads back as the same double.
    for (int p = 1; p <= 17; ++p) {
        auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, p);
        if (readDecimal(std::string_view(buf, size_t(r.ptr - buf))) == v || p == 17) {
            out.append(buf, r.ptr);
            return;
        }
    }
}

void writeString(std::string& out, const std::string& s) {
    static const char hex[] = "0123456789abcdef";
    out += '"';
    size_t run = 0; // start of the bytes not yet copied
    for (size_t i = 0; i < s.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(s[i]);
        if (c >= 0x20 && c != '"' && c != '\\') continue;
        out.append(s, run, i - run);
        run = i + 1;
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += "\\u00";
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    out.append(s, run, s.size() - run);
    out += '"';
}

void newline(std::string& out, int indent, int depth) {
    out += '\n';
    out.append(size_t(indent) * size_t(depth), ' ');
}

void write(std::string& out, const Json& v, int indent, int depth) {
    switch (v.kind) {
    case Json::Bool:
        out += v.b ? "true" : "false";
        return;
    case Json::Number:
        writeNumber(out, v.num);
        return;
    case Json::String:
        writeString(out, v.str);
        return;
    case Json::Array: {
        if (v.arr.empty()) {
            out += "[]";
            return;
        }
        out += '[';
        bool first = true;
        for (const Json& e : v.arr) {
            if (!first) out += ',';
            first = false;
            if (indent > 0) newline(out, indent, depth + 1);
            write(out, e, indent, depth + 1);
        }
        if (indent > 0) newline(out, indent, depth);
        out += ']';
        return;
    }
    case Json::Object: {
        if (v.obj.empty()) {
            out += "{}";
            return;
        }
        out += '{';
        bool first = true;
        for (const auto& [key, member] : v.obj) {
            if (!first) out += ',';
            first = false;
            if (indent > 0) newline(out, indent, depth + 1);
            writeString(out, key);
            out += indent > 0 ? ": " : ":";
            write(out, member, indent, depth + 1);
        }
        if (indent > 0) newline(out, indent, depth);
        out += '}';
        return;
    }
    case Json::Null:
        break;
    }
    out += "null";
}

} // namespace

Json& Json::operator[](const std::string& key) {
    if (kind != Object) {
        kind = Object;
        obj.clear();
    }
    return obj[key];
}

void Json::push(Json v) {
    if (kind != Array) {
        kind = Array;
        arr.clear();
    }
    arr.push_back(std::move(v));
}

const std::string& Json::asString() const {
    return kind == String ? str : emptyString();
}
const Json::object_t& Json::asObject() const {
    return kind == Object ? obj : emptyObject();
}
const Json::array_t& Json::asArray() const {
    return kind == Array ? arr : emptyArray();
}

const Json& Json::at(const std::string& key) const {
    if (kind != Object) return nullValue();
    auto it = obj.find(key);
    return it == obj.end() ? nullValue() : it->second;
}

bool Json::has(const std::string& key) const {
    return kind == Object && obj.count(key) > 0;
}

Json Json::parse(const std::string& text) {
    return Parser(text).document();
}

bool Json::tryParse(const std::string& text, Json& out) {
    try {
        out = parse(text);
        return true;
    } catch (...) {
        return false;
    }
}

std::string Json::dump(const Json& value, int indent) {
    std::string out;
    write(out, value, indent < 0 ? 0 : indent, 0);
    return out;
}

bool operator==(const Json& a, const Json& b) {
    if (a.kind != b.kind) return false;
    switch (a.kind) {
    case Json::Null:
        return true;
    case Json::Bool:
        return a.b == b.b;
    case Json::Number:
        return a.num == b.num;
    case Json::String:
        return a.str == b.str;
    case Json::Array:
        return a.arr == b.arr;
    case Json::Object:
        return a.obj == b.obj;
    }
    return false;
}

void PrintTo(const Json& value, std::ostream* os) {
    *os << Json::dump(value);
}
