// libFuzzer entry: eight bytes as a double (any bit pattern), then a digit
// count and the display settings. Every finite value formats to text that
// reads back as a finite number within one unit of its last digit; a
// non-finite one shows as "?". Sanitizers catch the rest.
#include "tests/fl/expr/number_rules.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 10) return 0;
    double v = 0;
    std::memcpy(&v, data, sizeof v);
    const int sig = 1 + data[8] % 17;
    fl::DisplaySettings& ds = fl::displaySettings();
    ds.decimalComma = data[9] & 1;
    ds.rounding = data[9] & 2 ? "d2" : "p5";
    const std::string broken = fl::formatBreak(v, data[9] & 4 ? 5 : sig);
    if (!broken.empty()) {
        std::fprintf(stderr, "%s\n", broken.c_str());
        std::abort();
    }
    return 0;
}
