// A fixture for tests that change the process-wide display settings: each test
// starts from the defaults (comma, five digits) and leaves them as it found them.
#pragma once

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"

#include <gtest/gtest.h>

namespace fl {

class SettingsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        saved_ = displaySettings();
        displaySettings() = DisplaySettings{};
        resetFigures();
    }
    void TearDown() override {
        displaySettings() = saved_;
        resetFigures();
    }
    static void use(bool comma, const char* rounding) {
        displaySettings().decimalComma = comma;
        displaySettings().rounding = rounding;
    }

  private:
    DisplaySettings saved_;
};

} // namespace fl
