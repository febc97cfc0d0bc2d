// Evaluation: precedence as the grammar gives it, degrees in the trigonometric
// functions, and arithmetic failures travelling as values.
#include "fl/expr/eval.h"
#include "fl/expr/parser.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

const std::map<std::string, double> kVars{{"a", 3}, {"b", 4}, {"Pi", 10}};

struct ValueRow {
    const char* name;
    const char* text;
    double value;
};

const ValueRow kValues[] = {
    {"leftToRightDivision", "12/3/2", 2},
    {"piConstant", "2*pi", 2 * 3.141592653589793},
    {"namedPiVariable", "Pi*2", 20},
    {"sineInDegrees", "sin(30)", 0.5},
    {"arcsineInDegrees", "asin(1)", 90},
    {"squareRoot", "sqrt(a*a+b*b)", 5},
    {"commonLogarithm", "log(1000)", 3},
    // Arithmetic failures travel as values, not exceptions.
    {"rootOfNegative", "sqrt(-1)", NAN},
    {"divisionByZero", "1/0", INFINITY},
    {"arcsineOutOfRange", "asin(2)", NAN},
};

TEST(Eval, computesEachRow) {
    for (const auto& row : kValues) {
        SCOPED_TRACE(row.name);
        const double got = eval(parse(row.text), kVars);
        if (!std::isfinite(row.value))
            EXPECT_TRUE(std::isnan(row.value) ? std::isnan(got) : got == row.value) << got;
        else
            EXPECT_NEAR(got, row.value, 1e-12 * std::max(1.0, std::fabs(row.value))) << row.text;
    }
}

TEST(Eval, failsWithTheExactText) {
    EXPECT_EQ(errorOf([] { eval(parse("U/R + x"), {{"U", 230}, {"R", 47}}); }), "mangler x");
    EXPECT_EQ(errorOf([] { eval(makeFunc("exp", makeNum(1)), {}); }), "ukendt funktion exp");
}

} // namespace
} // namespace fl
