// The practice tests draw from the process-wide random source: each test
// starts it at its file's fixed seed, so that a failing draw repeats.
#pragma once

#include "fl/practice/random.h"
#include "tests/fl/expr/settings_fixture.h"

namespace fl {

template <uint32_t Seed> class SeededTest : public SettingsTest {
  protected:
    void SetUp() override {
        SettingsTest::SetUp();
        seedRandom(Seed);
    }
};

} // namespace fl
