// libFuzzer entry: any bytes as the circuit file form (a saved circuit, the
// clipboard, a teacher's task). What the reader accepts writes back as the
// same document and solves to a sheet or a message: only the solver's own
// runtime errors may leave computeSheet, the drawn tree is back as it was
// afterwards, and every value on the sheet is finite. Sanitizers catch the rest.
#include "fl/circuit/json.h"
#include "fl/circuit/sheet.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

[[noreturn]] void broken(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // A drawn circuit's file is a few hundred bytes; bigger trees only make
    // the search slower, not different.
    if (size > 4096) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    fl::Circuit c;
    if (!fl::fromText(text, c)) return 0;
    const std::string written = fl::toText(c);
    fl::Circuit again;
    if (!fl::fromText(written, again) || fl::toText(again) != written) broken("file form: " + written);
    try {
        const fl::Sheet s = fl::computeSheet(c);
        for (const auto& [symbol, value] : s.values)
            if (!std::isfinite(value)) broken("not finite: " + symbol);
    } catch (const std::runtime_error&) {
        // A missing symbol; the page says "Udregningen gik i stå – tjek værdierne."
    }
    if (fl::toText(c) != written) broken("the tree changed: " + fl::toText(c));
    return 0;
}
