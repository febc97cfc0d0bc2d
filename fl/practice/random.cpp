#include "fl/practice/random.h"

#include <charconv>
#include <cmath>
#include <optional>

namespace fl {

namespace {

std::optional<std::mt19937>& source() {
    static std::optional<std::mt19937> s;
    return s;
}

// to_chars rounds the exact binary value as printf's "%.2e" and "%.*f" do,
// and neither it nor from_chars asks the locale for the decimal mark.
double readBack(const char* text) {
    double v = 0.0;
    std::from_chars(text, text + std::char_traits<char>::length(text), v);
    return v;
}

} // namespace

std::mt19937& randomSource() {
    if (!source()) source().emplace(std::random_device{}());
    return *source();
}

void seedRandom(uint32_t seed) {
    source().emplace(seed);
}

double randReal(double a, double b) {
    std::mt19937& g = randomSource();
    const uint64_t first = g() >> 11;
    const uint64_t second = static_cast<uint64_t>(g()) << 21;
    const double u = static_cast<double>((first | second) & ((uint64_t{1} << 53) - 1)) * 0x1p-53;
    return a + u * (b - a);
}

size_t randInt(size_t n) {
    if (n <= 1) return 0;
    const auto i = static_cast<size_t>(randReal(0.0, static_cast<double>(n)));
    return i < n ? i : n - 1;
}

double round3(double x) {
    if (x == 0.0 || !std::isfinite(x)) return x;
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf - 1, x, std::chars_format::scientific, 2);
    *res.ptr = '\0';
    return readBack(buf);
}

double roundDec(double x, int d) {
    if (!std::isfinite(x)) return x;
    char buf[512];
    const auto res = std::to_chars(buf, buf + sizeof buf - 1, x, std::chars_format::fixed, d < 0 ? 0 : d);
    if (res.ec != std::errc()) return x;
    *res.ptr = '\0';
    return readBack(buf);
}

double round(double x) {
    return std::round(x);
}

} // namespace fl
