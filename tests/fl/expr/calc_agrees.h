// The rule the calculator's two readers keep, shared by the tests and the
// fuzzer: whatever calc accepts, the live preview shows, each number on the
// node it stands for; and either fails only with its own documented texts.
#pragma once

#include "fl/expr/numbers.h"

#include <map>
#include <stdexcept>
#include <string>

namespace fl {

inline bool isDocumentedText(const std::string& what) {
    for (const char* prefix : {"Ukendt tegn", "Ukendt navn: ", "parse: ", "rest i ", "uventet ",
                               "forventede ", "mangler ", "ukendt funktion ", "ukendt node"})
        if (what.rfind(prefix, 0) == 0) return true;
    return false;
}

// Empty when the rule holds for `text`, else what broke it.
inline std::string calcDisagreement(const std::string& text) {
    static const std::map<std::string, double> ans{{"ans", 1.5}};
    bool accepted = false;
    try {
        calc(text, &ans);
        accepted = true;
    } catch (const std::runtime_error& e) {
        if (!isDocumentedText(e.what())) return std::string("calc: ") + e.what();
    } catch (const std::exception& e) {
        return std::string("calc threw ") + e.what();
    }
    try {
        prettyCalc(text);
    } catch (const std::runtime_error& e) {
        if (accepted) return std::string("calc accepts, the preview fails: ") + e.what();
        if (!isDocumentedText(e.what())) return std::string("prettyCalc: ") + e.what();
    } catch (const std::exception& e) {
        return std::string("prettyCalc threw ") + e.what();
    }
    return {};
}

} // namespace fl
