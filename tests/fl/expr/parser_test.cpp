// The strict language: what parses to which tree, which texts fail with which
// message, and that absurd input fails cleanly instead of overflowing the stack.
#include "fl/expr/node.h"
#include "tests/fl/expr/dump.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

struct ShapeRow {
    const char* name;
    const char* text;
    const char* tree;
};

const ShapeRow kShapes[] = {
    {"number", "230", "230"},
    {"leadingPointNumber", ".5", "0.5"},
    {"trailingPointNumber", "5.", "5"},
    {"exponentNumber", "1e3", "1000"},
    {"signedExponent", "2.5E-3", "0.0025"},
    {"piLower", "pi", "π"},
    {"piUpper", "PI", "π"},
    {"mixedCasePiIsAVariable", "Pi", "Pi"},
    {"underscoreName", "_a1", "_a1"},
    {"sumKeepsSignsInOneNode", "a - b + c", "(sum +a -b +c)"},
    {"productKeepsOpsInOneNode", "a*b/c", "(prod *a *b /c)"},
    {"leadingMinusIsOneTermSum", "-2", "(sum -2)"},
    {"leadingPlusVanishes", "+a", "a"},
    {"leadingMinusBindsLooserThanProduct", "-a*b", "(sum -(prod *a *b))"},
    {"leadingMinusBindsLooserThanPower", "-2**2", "(sum -(pow 2 2))"},
    {"powerIsRightAssociative", "2**3**2", "(pow 2 (pow 3 2))"},
    {"negativeExponent", "2**-1", "(pow 2 (sum -1))"},
    {"unaryMinusAfterOperator", "2*-3", "(prod *2 *(sum -3))"},
    {"unaryPlusAfterOperator", "2*+3", "(prod *2 *3)"},
    {"doubleMinus", "--a", "(sum -(sum -a))"},
    {"parenthesesLeaveNoNode", "(a+b)", "(sum +a +b)"},
    {"nestedParentheses", "((a))", "a"},
    {"parenthesisedSumInProduct", "(a+b)*c", "(prod *(sum +a +b) *c)"},
    {"nestedProductKeptRaw", "a/(b*c)", "(prod *a /(prod *b *c))"},
    {"function", "sqrt(P*R)", "(sqrt (prod *P *R))"},
    {"functionOfSum", "sin(a+30)", "(sin (sum +a +30))"},
    {"blanksSkipped", " \t1 +\n2 ", "(sum +1 +2)"},
    {"catalogueForm", "1/(1/R1+1/R2)", "(prod *1 /(sum +(prod *1 /R1) +(prod *1 /R2)))"},
};

TEST(Parser, buildsTheTreeOfEachForm) {
    for (const auto& row : kShapes) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(dump(parse(row.text)), row.tree) << row.text;
    }
}

TEST(Parser, keepsTheWholeSourceInItsMessages) {
    // Also checks the messages carry the text, not a token or a position.
    try {
        parse("a + (b");
        FAIL();
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "forventede ) i a + (b");
    }
}

struct ErrorRow {
    const char* name;
    const char* text;
    const char* what;
};

const ErrorRow kErrors[] = {
    {"empty", "", "uventet slut"},
    {"blank", "   ", "uventet slut"},
    {"danglingOperator", "2+", "uventet slut"},
    {"danglingPower", "2**", "uventet slut"},
    {"implicitProduct", "2x", "rest i 2x"},
    {"implicitProductWithParenthesis", "2(3)", "rest i 2(3)"},
    {"decimalComma", "1,5", "rest i 1,5"},
    {"exponentWithoutDigits", "1e", "rest i 1e"},
    {"loneComma", ",", "uventet ,"},
    {"closingParenthesisFirst", ")", "uventet )"},
    {"doubleOperator", "2*/3", "uventet /"},
    {"unclosedParenthesis", "(1+2", "forventede ) i (1+2"},
    {"functionWithoutParenthesis", "sin 30", "forventede ( i sin 30"},
    {"bareFunctionName", "sqrt", "forventede ( i sqrt"},
    {"unclosedFunction", "sin(30", "forventede ) i sin(30"},
    {"lonePoint", ".", "parse: ."},
    {"caret", "2^3", "parse: 2^3"},
    {"equals", "U=R*I", "parse: U=R*I"},
    {"percent", "5%", "parse: 5%"},
    {"greekLetter", "2*π", "parse: 2*π"},
    {"omega", "R*Ω", "parse: R*Ω"},
};

TEST(Parser, failsWithTheExactText) {
    for (const auto& row : kErrors) {
        SCOPED_TRACE(row.name);
        try {
            parse(row.text);
            ADD_FAILURE() << "parsed: " << row.text;
        } catch (const std::runtime_error& e) {
            EXPECT_STREQ(e.what(), row.what);
        }
    }
}

TEST(Parser, refusesNestingDeeperThanAnyFormulaWithAnOrdinaryText) {
    const struct {
        const char* name;
        std::string text;
        const char* what;
    } rows[] = {
        {"parentheses", std::string(5000, '(') + "1" + std::string(5000, ')'), "uventet ("},
        {"unclosedParentheses", std::string(10000, '('), "uventet ("},
        {"functions",
         [] {
             std::string s;
             for (int i = 0; i < 3000; ++i)
                 s += "sin(";
             return s + "1" + std::string(3000, ')');
         }(),
         "uventet sin"},
        {"unaryMinus", std::string(5000, '-') + "1", "uventet -"},
        {"powerChain",
         [] {
             std::string s = "2";
             for (int i = 0; i < 5000; ++i)
                 s += "**2";
             return s;
         }(),
         "uventet 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        try {
            parse(row.text);
            ADD_FAILURE() << "parsed";
        } catch (const std::runtime_error& e) {
            EXPECT_STREQ(e.what(), row.what);
        }
    }
}

TEST(Parser, acceptsTheNestingRealFormulasUse) {
    const std::string text = std::string(40, '(') + "a" + std::string(40, ')');
    EXPECT_EQ(dump(parse(text)), "a");
    std::string chain = "2";
    for (int i = 0; i < 30; ++i)
        chain += "**1";
    EXPECT_NO_THROW(parse(chain));
}

TEST(Parser, longFlatTextParses) {
    std::string text = "1";
    for (int i = 0; i < 5000; ++i)
        text += "+1";
    EXPECT_DOUBLE_EQ(eval(parse(text), {}), 5001.0);
}

} // namespace
} // namespace fl
