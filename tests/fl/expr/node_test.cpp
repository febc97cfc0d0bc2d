// The canonicalising constructors.
#include "fl/expr/node.h"
#include "tests/fl/expr/dump.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

const NodePtr a = makeVar("a"), b = makeVar("b"), c = makeVar("c"), f = makeVar("f");

struct SumRow {
    const char* name;
    std::vector<SumTerm> terms;
    const char* tree;
};

TEST(MakeSum, flattensWithoutSimplifying) {
    const SumRow rows[] = {
        {"singlePositiveTermIsTheNodeItself", {{1, a}}, "a"},
        {"singleNegativeTermStaysASum", {{-1, a}}, "(sum -a)"},
        {"nestedSumFlattened", {{1, a}, {1, makeSumRaw({{1, b}, {-1, c}})}}, "(sum +a +b -c)"},
        {"outerMinusFlipsInnerSigns", {{1, a}, {-1, makeSumRaw({{1, b}, {-1, c}})}}, "(sum +a -b +c)"},
        {"doubleNegationUnwrapped", {{-1, makeSumRaw({{-1, a}})}}, "a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(dump(makeSum(row.terms)), row.tree);
    }
}

struct ProductRow {
    const char* name;
    std::vector<ProdFactor> factors;
    const char* tree;
};

TEST(MakeProduct, writesTheCanonicalOrder) {
    const ProductRow rows[] = {
        {"coefficientThenPiThenSymbols", {{'*', makeNum(2)}, {'*', f}, {'*', makePi()}}, "(prod *2 *π *f)"},
        {"piMovesBeforeSymbolsStably", {{'*', b}, {'*', a}, {'*', makePi()}}, "(prod *π *b *a)"},
        {"numbersMultiplyIntoOneCoefficient",
         {{'*', a}, {'*', makeNum(2)}, {'*', makeNum(3)}},
         "(prod *6 *a)"},
        {"unitCoefficientDropped", {{'*', makeNum(1)}, {'*', a}, {'*', b}}, "(prod *a *b)"},
        {"onlyNumbersGiveANumber", {{'*', makeNum(2)}, {'*', makeNum(5)}}, "10"},
        {"divisionByHalfBecomesDouble", {{'*', a}, {'/', makeNum(0.5)}}, "(prod *2 *a)"},
        {"divisionByNonReciprocalKept", {{'*', a}, {'/', makeNum(0.3)}}, "(prod *a /0.3)"},
        {"loneDenominatorGetsUnitNumerator", {{'/', a}}, "(prod *1 /a)"},
        {"denominatorsKeepTheirOrder", {{'/', b}, {'*', a}, {'/', c}}, "(prod *a /b /c)"},
        {"nestedProductFlattened", {{'*', a}, {'*', makeProdRaw({{'*', b}, {'/', c}})}}, "(prod *a *b /c)"},
        {"divisionFlipsNestedOps", {{'*', a}, {'/', makeProdRaw({{'*', b}, {'/', c}})}}, "(prod *a *c /b)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(dump(makeProduct(row.factors)), row.tree);
    }
}

} // namespace
} // namespace fl
