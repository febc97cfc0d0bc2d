// libFuzzer entry: any bytes typed into a value field. The field never throws
// and gives NaN or a finite number, agrees with the plain reader where that
// reads the text, and what it reads survives being carried to another field,
// with either decimal mark. Sanitizers catch the rest.
#include "tests/fl/expr/number_rules.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // A field holds a value, not a page of text.
    if (size > 256) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (bool comma : {true, false}) {
        fl::displaySettings().decimalComma = comma;
        const std::string broken = fl::valueBreak(text);
        if (!broken.empty()) {
            std::fprintf(stderr, "%s\n", broken.c_str());
            std::abort();
        }
    }
    return 0;
}
