// libFuzzer entry: any bytes go to the parser; what it accepts must write
// back and read again as the same value, in both the compact and the
// indented form. Sanitizers catch the rest.
#include "store/json.h"
#include "tests/store/as_written.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Json v;
    try {
        v = Json::parse(text);
    } catch (const std::runtime_error& e) {
        if (std::string(e.what()).rfind("json: ", 0) != 0) std::abort();
        return 0;
    }
    const std::string compact = Json::dump(v);
    Json again;
    if (!Json::tryParse(compact, again)) std::abort();
    if (!(again == asWritten(v)) || Json::dump(again) != compact) std::abort();
    if (!(Json::parse(Json::dump(v, 1)) == again)) std::abort();
    return 0;
}
