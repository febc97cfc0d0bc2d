// Guards the premise of every other test: the suite really runs with the
// Danish decimal comma in the C library.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>

TEST(Locale, suiteRunsWithDanishDecimalComma) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.1f", 1.5);
    EXPECT_EQ(std::string(buf), "1,5") << "LC_ALL=da_DK.UTF-8 is missing; run scripts/setup.sh";
    EXPECT_DOUBLE_EQ(std::strtod("2,5", nullptr), 2.5);
}
