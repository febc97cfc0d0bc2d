// The strict language: what parses to which tree, which texts fail with which
// message, and that absurd input fails cleanly instead of overflowing the stack.
#include "fl/expr/parser.h"
#include "tests/fl/expr/dump.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

struct Row {
    const char* name;
    const char* text;
    const char* expected; // the tree, or the error's text
};

const Row kShapes[] = {
    {"signedExponent", "2.5E-3", "0.0025"},
    {"piLower", "pi", "π"},
    {"sumKeepsSignsInOneNode", "a - b + c", "(sum +a -b +c)"},
    {"productKeepsOpsInOneNode", "a*b/c", "(prod *a *b /c)"},
    {"leadingMinusBindsLooserThanProduct", "-a*b", "(sum -(prod *a *b))"},
    {"leadingMinusBindsLooserThanPower", "-2**2", "(sum -(pow 2 2))"},
    {"powerIsRightAssociative", "2**3**2", "(pow 2 (pow 3 2))"},
    {"negativeExponent", "2**-1", "(pow 2 (sum -1))"},
    {"doubleMinus", "--a", "(sum -(sum -a))"},
    {"nestedProductKeptRaw", "a/(b*c)", "(prod *a /(prod *b *c))"},
    {"function", "sqrt(P*R)", "(sqrt (prod *P *R))"},
    {"blanksSkipped", " \t1 +\n2 ", "(sum +1 +2)"},
};

TEST(Parser, buildsTheTreeOfEachForm) {
    for (const auto& row : kShapes) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(dump(parse(row.text)), row.expected) << row.text;
    }
}

const Row kErrors[] = {
    {"empty", "", "uventet slut"},
    {"decimalComma", "1,5", "rest i 1,5"},
    {"closingParenthesisFirst", ")", "uventet )"},
    {"unclosedParenthesis", "(1+2", "forventede ) i (1+2"},
    {"functionWithoutParenthesis", "sin 30", "forventede ( i sin 30"},
    {"caret", "2^3", "parse: 2^3"},
};

TEST(Parser, failsWithTheExactText) {
    for (const auto& row : kErrors) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(errorOf([&] { parse(row.text); }), row.expected);
    }
}

std::string repeat(const std::string& s, int n) {
    std::string out;
    for (int i = 0; i < n; ++i)
        out += s;
    return out;
}

TEST(Parser, boundsNestingWellAboveWhatFormulasUse) {
    const struct {
        const char* name;
        std::string text;
        const char* what;
    } rows[] = {
        {"parentheses", repeat("(", 5000) + "1" + repeat(")", 5000), "uventet ("},
        {"functions", repeat("sin(", 3000) + "1" + repeat(")", 3000), "uventet sin"},
        {"powerChain", "2" + repeat("**2", 5000), "uventet 2"},
        {"fortyParentheses", repeat("(", 40) + "a" + repeat(")", 40), "(no error)"},
        {"thirtyPowers", "2" + repeat("**1", 30), "(no error)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(errorOf([&] { parse(row.text); }), row.what);
    }
}

} // namespace
} // namespace fl
