// The strict formula language: tokeniser and recursive-descent parser. What a
// student types is normalised first (calc.cpp); the catalogue's forms are
// written in this language directly.
#include "fl/expr/parser.h"

#include "fl/expr/chars.h"
#include "fl/expr/symbols.h"

#include <stdexcept>

namespace fl {

namespace {

// Deeper than any formula needs. Beyond it "(" (or whatever token opens the
// next level) is reported as unexpected, so pasted walls of parentheses or
// signs fail with an ordinary parse text instead of exhausting the stack,
// here and in every recursive walk over the tree.
constexpr int kMaxDepth = 100;

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isNameChar(char c) {
    return isAlpha(c) || isDigit(c) || c == '_';
}

struct Parser {
    std::vector<std::string> tokens;
    size_t pos = 0;
    std::string src;
    int depth = 0; // nesting of the recursive descent, bounded by kMaxDepth
};

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what);
}

std::vector<std::string> tokenize(const std::string& s) {
    std::vector<std::string> tokens;
    const size_t n = s.size();
    size_t i = 0;
    auto digitsFrom = [&](size_t j) {
        while (j < n && isDigit(s[j]))
            ++j;
        return j;
    };
    while (i < n) {
        const char c = s[i];
        if (isSpace(c)) {
            ++i;
        } else if (isDigit(c) || (c == '.' && i + 1 < n && isDigit(s[i + 1]))) {
            size_t j = digitsFrom(i);
            if (j < n && s[j] == '.') j = digitsFrom(j + 1);
            if (j < n && (s[j] == 'e' || s[j] == 'E')) {
                size_t k = j + 1;
                if (k < n && (s[k] == '+' || s[k] == '-')) ++k;
                // "2e" is 2 and the name e: the exponent needs a digit.
                if (k < n && isDigit(s[k])) j = digitsFrom(k);
            }
            tokens.push_back(s.substr(i, j - i));
            i = j;
        } else if (isAlpha(c) || c == '_') {
            size_t j = i;
            while (j < n && isNameChar(s[j]))
                ++j;
            tokens.push_back(s.substr(i, j - i));
            i = j;
        } else if (c == '*' && i + 1 < n && s[i + 1] == '*') {
            tokens.emplace_back("**");
            i += 2;
        } else if (c == '-' || c == '+' || c == '*' || c == '/' || c == '(' || c == ')' || c == ',') {
            // The comma belongs to no rule; tokenising it lets "1,5" fail as leftover text.
            tokens.emplace_back(1, c);
            ++i;
        } else {
            fail("parse: " + s);
        }
    }
    return tokens;
}

const std::string& peek(const Parser& p) {
    static const std::string end;
    return p.pos < p.tokens.size() ? p.tokens[p.pos] : end;
}

void expect(Parser& p, const std::string& want) {
    if (peek(p) != want) fail("forventede " + want + " i " + p.src);
    ++p.pos;
}

NodePtr parseSum(Parser& p);
NodePtr parsePower(Parser& p);

NodePtr parsePrimary(Parser& p) {
    if (p.pos >= p.tokens.size()) fail("uventet slut");
    const std::string tok = p.tokens[p.pos++];
    if (tok == "(") {
        NodePtr inner = parseSum(p);
        expect(p, ")");
        return inner;
    }
    if (tok == "-") return makeSumRaw({{-1, parsePower(p)}});
    if (tok == "+") return parsePower(p);
    if (isDigit(tok[0]) || tok[0] == '.') return makeNum(chars::toDouble(tok).value_or(0.0));
    if (tok == "PI" || tok == "pi") return makePi();
    if (isFunctionName(tok)) {
        expect(p, "(");
        NodePtr arg = parseSum(p);
        expect(p, ")");
        return makeFunc(tok, std::move(arg));
    }
    if (isAlpha(tok[0]) || tok[0] == '_') return makeVar(tok);
    fail("uventet " + tok);
}

// Every cycle of the grammar passes through power, so the depth is counted here.
NodePtr parsePower(Parser& p) {
    struct Level {
        Parser& p;
        explicit Level(Parser& parser) : p(parser) {
            if (++p.depth > kMaxDepth) {
                if (p.pos >= p.tokens.size()) fail("uventet slut");
                fail("uventet " + p.tokens[p.pos]);
            }
        }
        ~Level() { --p.depth; }
    } level(p);

    NodePtr base = parsePrimary(p);
    if (peek(p) != "**") return base;
    ++p.pos;
    NodePtr exponent;
    if (peek(p) == "-") {
        ++p.pos;
        exponent = makeSumRaw({{-1, parsePower(p)}});
    } else {
        exponent = parsePower(p);
    }
    return makePow(std::move(base), std::move(exponent));
}

NodePtr parseTerm(Parser& p) {
    std::vector<ProdFactor> factors{{'*', parsePower(p)}};
    while (peek(p) == "*" || peek(p) == "/") {
        const char op = peek(p)[0];
        ++p.pos;
        factors.push_back({op, parsePower(p)});
    }
    if (factors.size() == 1) return factors[0].node;
    return makeProdRaw(std::move(factors));
}

NodePtr parseSum(Parser& p) {
    int32_t sign = 1;
    if (peek(p) == "-" || peek(p) == "+") {
        sign = peek(p) == "-" ? -1 : 1;
        ++p.pos;
    }
    std::vector<SumTerm> terms{{sign, parseTerm(p)}};
    while (peek(p) == "+" || peek(p) == "-") {
        sign = peek(p) == "-" ? -1 : 1;
        ++p.pos;
        terms.push_back({sign, parseTerm(p)});
    }
    if (terms.size() == 1 && terms[0].sign == 1) return terms[0].node;
    return makeSumRaw(std::move(terms));
}

} // namespace

NodePtr parse(const std::string& text) {
    Parser p;
    p.src = text;
    p.tokens = tokenize(text);
    NodePtr root = parseSum(p);
    if (p.pos != p.tokens.size()) fail("rest i " + text);
    return root;
}

} // namespace fl
