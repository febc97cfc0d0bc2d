// Test entry for the core libraries. Takes the locale from the environment as
// Qt does at start, so a core conversion that follows the C locale shows up.
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
