// libFuzzer entry: any bytes go to the calculator's two readers. What calc
// accepts the live preview must show, each typed number on the node it
// stands for; both fail only with their own texts. Sanitizers catch the rest.
#include "fl/expr/markup.h"
#include "tests/fl/expr/calc_agrees.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // A line of a pocket calculator; longer texts only repeat the same paths slower.
    if (size > 4096) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string broken = fl::calcDisagreement(text);
    fl::resetFigures(); // the preview's expression images collect per rendering pass
    if (!broken.empty()) {
        std::fprintf(stderr, "%s\n", broken.c_str());
        std::abort();
    }
    return 0;
}
