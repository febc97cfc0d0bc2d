// The random source of the practice pages and the rounding that makes a drawn
// number look like one an electrician meets. One generator for the whole
// process, seeded from the operating system on first use; only tests give it
// a fixed seed. Interface thread only: drawing isn't reentrant.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace fl {

std::mt19937& randomSource();
// Replaces the source by one with a fixed seed, so that a run repeats exactly.
void seedRandom(uint32_t seed);

// a + u·(b − a), u from 53 random bits in [0, 1).
double randReal(double a, double b);
// A uniform index below n; 0 for n ≤ 1.
size_t randInt(size_t n);

template <typename T> const T& pickOne(const std::vector<T>& list) {
    return list[randInt(list.size())];
}

// Three significant digits; 0 and non-finite values pass through.
double round3(double x);
// `d` decimals.
double roundDec(double x, int d);
// To the nearest whole number.
double round(double x);

} // namespace fl
