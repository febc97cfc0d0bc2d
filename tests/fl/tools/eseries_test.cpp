// The E series against the standard's values, the nearest value by ratio,
// and the colour code both ways: every E24 value from 1 Ω to 10 MΩ goes
// to rings and back unchanged, in 4, 5 and 6 rings.
#include "fl/tools/resistors.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

TEST(ESeries, tablesAreTheStandardValues) {
    const std::vector<int> e12{10, 12, 15, 18, 22, 27, 33, 39, 47, 56, 68, 82};
    const std::vector<int> e24{10, 11, 12, 13, 15, 16, 18, 20, 22, 24, 27, 30,
                               33, 36, 39, 43, 47, 51, 56, 62, 68, 75, 82, 91};
    EXPECT_EQ(seriesDigits(ESeries::E12), e12);
    EXPECT_EQ(seriesDigits(ESeries::E24), e24);

    // E96 is the geometric rule 100 · 10^(i/96), rounded, throughout.
    const std::vector<int>& e96 = seriesDigits(ESeries::E96);
    ASSERT_EQ(e96.size(), 96u);
    for (size_t i = 0; i < e96.size(); ++i)
        EXPECT_EQ(e96[i], std::lround(100 * std::pow(10.0, static_cast<double>(i) / 96))) << i;
}

TEST(ESeries, nearestGoesByRatioAcrossDecades) {
    struct Row {
        const char* name;
        double ohms;
        ESeries series;
        double expected; // NaN: no standard value
    };
    const Row rows[] = {
        // √(8,2 · 10) = 9,055 is the middle by ratio.
        {"just under the ratio middle", 9.05, ESeries::E12, 8.2},
        {"just over it, into the next decade", 9.06, ESeries::E12, 10},
        {"below the first of a decade", 0.99, ESeries::E96, 1.0},
        {"zero has none", 0, ESeries::E12, NAN},
        {"infinity has none", INFINITY, ESeries::E12, NAN},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const double got = nearestStandard(r.ohms, r.series);
        if (std::isnan(r.expected))
            EXPECT_TRUE(std::isnan(got));
        else
            EXPECT_DOUBLE_EQ(got, r.expected);
    }
    // A value between two is the colour code sheet's; one on a standard value is both its neighbours.
    double below = 0, above = 0;
    standardNeighbours(4700, ESeries::E12, &below, &above);
    EXPECT_DOUBLE_EQ(below, 4700);
    EXPECT_DOUBLE_EQ(above, 4700);
}

TEST(ESeries, ohmsAreWrittenAsResistorsAreLabelled) {
    const struct {
        double ohms;
        const char* text;
    } rows[] = {{0.47, "0,47 Ω"}, {2.2e6, "2,2 MΩ"}, {999999.99, "1 MΩ"}, {1e9, "1 GΩ"}};
    for (const auto& r : rows)
        EXPECT_EQ(ohmsText(r.ohms), r.text) << r.ohms;
}

std::vector<std::string> plus(std::vector<std::string> rings, std::initializer_list<const char*> more) {
    for (const char* m : more)
        rings.push_back(m);
    return rings;
}

TEST(ColourCode, everyE24ValueFromOneOhmToTenMegaohmGoesBothWays) {
    std::vector<double> values;
    for (int decade = 0; decade <= 6; ++decade)
        for (int d : seriesDigits(ESeries::E24))
            values.push_back(scaledDigits(d, decade - 1));
    values.push_back(1e7);
    ASSERT_EQ(values.size(), 7u * 24 + 1);
    for (double v : values) {
        SCOPED_TRACE(v);
        const std::vector<std::string> two = valueBands(v, 2), three = valueBands(v, 3);
        ASSERT_EQ(two.size(), 3u);
        ASSERT_EQ(three.size(), 4u);
        const ColourReading four = readBands(plus(two, {"guld"}));
        const ColourReading five = readBands(plus(three, {"brun"}));
        const ColourReading six = readBands(plus(three, {"brun", "rod"}));
        EXPECT_EQ(four.error, "");
        EXPECT_DOUBLE_EQ(four.ohms, v);
        EXPECT_DOUBLE_EQ(four.tolerance, 5);
        EXPECT_DOUBLE_EQ(five.ohms, v);
        EXPECT_DOUBLE_EQ(five.tolerance, 1);
        EXPECT_DOUBLE_EQ(six.ohms, v);
        EXPECT_DOUBLE_EQ(six.tempco, 50);
    }
}

TEST(ColourCode, valuesGiveTheRingsOfTheTextbook) {
    struct Row {
        const char* name;
        double ohms;
        int digits;
        std::vector<std::string> rings; // empty: the code can't show it
    };
    const Row rows[] = {
        {"1 Ω needs gold", 1, 2, {"brun", "sort", "guld"}},
        {"1 Ω in five rings needs silver", 1, 3, {"brun", "sort", "sort", "solv"}},
        {"10 MΩ", 1e7, 2, {"brun", "sort", "bla"}},
        {"three digits don't fit in two", 4530, 2, {}},
        {"below silver", 0.05, 2, {}},
        {"above white", 1e12, 2, {}},
        {"zero", 0, 2, {}},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        EXPECT_EQ(valueBands(r.ohms, r.digits), r.rings);
    }
}

TEST(ColourCode, ringsThatCantStandWhereTheyAreAreRefusedWithTheirPlace) {
    struct Row {
        const char* name;
        std::vector<std::string> rings;
        std::string error;
        std::vector<int> bad;
    };
    // clang-format off
    const Row rows[] = {
        {"gold as a digit", {"rod", "guld", "orange", "guld"},
         "Ring 2 er et ciffer og kan ikke være guld.", {2}},
        {"no ring as multiplier", {"rod", "rod", "ingen", "guld"},
         "Ring 3 er multiplikatoren og kan ikke være ingen ring.", {3}},
        {"white as tolerance", {"rod", "rod", "rod", "rod", "hvid"},
         "Ring 5 er tolerancen og kan ikke være hvid.", {5}},
        {"gold as coefficient", {"rod", "rod", "rod", "rod", "brun", "guld"},
         "Ring 6 er temperaturkoefficienten og kan ikke være guld.", {6}},
        {"three rings", {"rod", "rod", "rod"}, "En modstand har 4, 5 eller 6 ringe.", {}},
    };
    // clang-format on
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const ColourReading c = readBands(r.rings);
        EXPECT_EQ(c.error, r.error);
        EXPECT_EQ(c.badRing, r.bad);
    }
    // Without a fourth ring a resistor is ±20 %.
    EXPECT_DOUBLE_EQ(readBands({"rod", "rod", "rod", "ingen"}).tolerance, 20);
}

} // namespace
} // namespace fl
