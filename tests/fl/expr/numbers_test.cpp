// Reading typed values and showing numbers, under the Danish C locale the
// whole suite runs in: nothing here may follow the process locale.
#include "fl/expr/chars.h"
#include "fl/expr/numbers.h"
#include "tests/fl/expr/number_rules.h"
#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace fl {
namespace {

using NumbersTest = SettingsTest;

struct ReadRow {
    const char* name;
    const char* text;
    double value;
};

TEST_F(NumbersTest, readValueReadsWhatStudentsType) {
    const ReadRow rows[] = {
        {"decimalCommaWithKilo", "5,5k", 5500},
        {"microAsU", "70u", 70e-6},
        {"microSign", "4µ7", 4.7e-6},
        {"greekMu", "70μ", 70e-6},
        {"decimalPoint", "2.38", 2.38},
        {"thousandsBlank", "5 500", 5500},
        {"thousandsNoBreakSpace", "5\u00a0500", 5500},
        {"division", "230/47", 230.0 / 47.0},
        {"electricianBelowOne", "0m5", 0.5e-3},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        bool empty = true;
        EXPECT_NEAR(readValue(row.text, &empty), row.value, 1e-12 * std::fabs(row.value)) << row.text;
        EXPECT_FALSE(empty);
        EXPECT_EQ(valueBreak(row.text), "");
    }
}

TEST_F(NumbersTest, readValueGivesNaNForWhatItCannotRead) {
    const struct {
        const char* name;
        const char* text;
        bool empty;
    } rows[] = {
        {"nothing", "", true},
        {"blanks", "  \t", true},
        {"exponentWithoutDigits", "1e", false},
        {"kilovolt", "5kV", false},
        {"capitalKiloIsNoPrefix", "5K", false},
        {"lastResultOutsideCalculator", "ans", false},
        {"divisionByZero", "1/0", false},
        {"overflow", "1e999", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        bool empty = !row.empty;
        EXPECT_TRUE(std::isnan(readValue(row.text, &empty))) << row.text;
        EXPECT_EQ(empty, row.empty);
    }
    EXPECT_TRUE(std::isnan(readValue(""))); // the flag is optional
}

TEST_F(NumbersTest, parseWithPrefixSplitsMantissaAndPrefix) {
    const struct {
        const char* text;
        bool ok;
        double mantissa;
        const char* prefix;
    } rows[] = {
        {"5,5k", true, 5.5, "k"},  {"70μ", true, 70, "μ"},    {"-1,5E-3", true, -0.0015, ""},
        {"1e3k", true, 1000, "k"}, {"1,234,5", false, 0, ""}, {"1e", false, 0, ""},
        {"5T", false, 0, ""},      {"-2M2", true, -2.2, "M"}, {"4µ7", true, 4.7, "µ"},
        {"4k7k", false, 0, ""},    {"4,7k7", false, 0, ""},   {"4k7e3", false, 0, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        double m = -1;
        std::string p = "?";
        ASSERT_EQ(parseWithPrefix(row.text, &m, &p), row.ok);
        if (!row.ok) continue;
        EXPECT_DOUBLE_EQ(m, row.mantissa);
        EXPECT_EQ(p, row.prefix);
    }
}

struct FmtRow {
    const char* name;
    double value;
    int sig;
    const char* rounding;
    bool comma;
    const char* text;
};

TEST_F(NumbersTest, fmtNumberShowsNumbersAsTheFormulaBookDoes) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const FmtRow rows[] = {
        {"fiveDigits", 1234.5678, 5, "p5", true, "1234,6"},
        {"justBelowMillionRoundsUp", 999999.9999, 5, "p5", true, "1000000"},
        {"atLimitEngineering", 1e7, 5, "p5", true, "10·10⁶"},
        {"mantissaRoundsToThousand", 999.9996e6, 5, "p5", true, "1·10⁹"},
        {"negativeMicro", -0.00047, 5, "p5", true, "−470·10⁻⁶"},
        {"thousandthStaysPlain", 0.001, 5, "p5", true, "0,001"},
        {"pico", 1e-12, 5, "p5", true, "1·10⁻¹²"},
        {"belowPicoIsZero", 1e-13, 5, "p5", true, "0"},
        {"twoDecimals", 1234.5678, 5, "d2", true, "1234,57"},
        {"twoDecimalsTrimmed", 12.5, 5, "d2", true, "12,5"},
        {"twoDecimalsMillion", 1234567.891, 5, "d2", false, "1234567.89"},
        {"threeDigitsBelowOne", 0.123456, 5, "d2", true, "0,123"},
        {"bookEngineeringThreeDigits", 12345678, 5, "d2", true, "12,3·10⁶"},
        {"explicitDigitsIgnoreBookRounding", 1234.5678, 4, "d2", true, "1235"},
        {"unknownRoundingCountsAsFive", 1234.5678, 5, "xyz", true, "1234,6"},
        {"notANumber", nan, 5, "p5", true, "?"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        use(row.comma, row.rounding);
        EXPECT_EQ(fmtNumber(row.value, row.sig), row.text);
    }
}

TEST_F(NumbersTest, textFormatters) {
    const struct {
        const char* name;
        std::string got;
        const char* text;
    } rows[] = {
        {"plainWholeCut", fmtPlain(123456, 2), "120000"},
        {"plainRoundsUpAcrossPower", fmtPlain(9.99, 2), "10"},
        {"plainZeroDigitsMeansOne", fmtPlain(456, 0), "500"},
        {"shortestNoise", fmtShortest(0.1 + 0.2), "0.30000000000000004"},
        {"shortestHuge", fmtShortest(1e21), "1000000000000000000000"},
        {"roundedSmall", fmtRounded(0.000123456, 2), "0.00012"},
        {"superscriptOthersPass", superscript("a+1"), "a+¹"},
        {"unitAfterABlank", fmtWithUnit(30, "V"), "30 V"},
        {"degreesWithoutBlank", fmtWithUnit(30, "°"), "30°"},
        {"noUnitNoBlank", fmtWithUnit(30, ""), "30"},
        {"trimmedBlanksAndControlBytes", trimmed("\x01 a b \n\x1f"), "a b"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.got, row.text);
    }
}

TEST_F(NumbersTest, fmtValue10UsesTheSettingsDecimalMark) {
    EXPECT_EQ(fmtValue10(1.0 / 3), "0,3333333333");
    EXPECT_EQ(fmtValue10(-0.5), "-0,5");
    use(false, "p5");
    EXPECT_EQ(fmtValue10(1.0 / 3), "0.3333333333");
}

// Any finite double, the largest and the subnormal ones included, formats to
// text that reads back as a finite number within one unit of the last digit
// shown: "inf" in a field would be lost as NaN.
TEST_F(NumbersTest, everyFiniteDoubleFormatsToAFiniteNumber) {
    using limits = std::numeric_limits<double>;
    std::vector<double> values{limits::max(),
                               -limits::max(),
                               std::nextafter(limits::max(), 0.0),
                               9.9999999995e307,
                               1e308,
                               limits::min(),
                               limits::denorm_min(),
                               -limits::denorm_min(),
                               0.0};
    std::mt19937_64 rng(314159);
    while (values.size() < 4000) {
        const double v = std::bit_cast<double>(rng()); // every exponent equally likely
        if (std::isfinite(v)) values.push_back(v);
    }
    for (bool comma : {true, false}) {
        for (const char* rounding : {"p5", "d2"}) {
            use(comma, rounding);
            for (const double v : values) {
                for (int sig : {1, 2, 5, 10, 15, 17})
                    ASSERT_EQ(formatBreak(v, sig), "") << fmtShortest(v) << " to " << sig << " digits";
            }
        }
    }
}

TEST(Chars, conversionsIgnoreTheProcessLocale) {
    EXPECT_EQ(chars::printE(1234.5, 2), "1.23e+03");
    EXPECT_EQ(chars::toDouble("-.5"), -0.5);
    EXPECT_EQ(chars::toDouble("2,5"), std::nullopt);
    EXPECT_EQ(chars::toDouble("inf"), std::nullopt);
    // Out of range answers as strtod does.
    EXPECT_EQ(chars::toDouble("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(chars::toDouble(std::string(400, '9')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(chars::toDouble("0." + std::string(400, '0') + "1"), 0.0);
}

} // namespace
} // namespace fl
