// The source fields of the circuit page, in the order the page shows them:
// shared by the field panel and the saved circuits' preview.
#pragma once

#include <vector>

namespace app {

struct SourceKey {
    const char* key;
    const char* symbol; // as in the sheets
    const char* label;
    const char* unit;
};

// The source fields in the order of the page.
inline std::vector<SourceKey> sourceKeys(bool ac) {
    if (!ac)
        return {{"U", "U", "Kildespænding", "V"},
                {"I", "I", "Samlet strøm (kun hvis den er givet)", "A"},
                {"P", "P_tot", "Samlet effekt (kun hvis den er givet)", "W"},
                {"R", "R_tot", "Samlet modstand (kun hvis den er givet)", "Ω"}};
    return {{"U", "U", "Kildespænding", "V"},
            {"f", "f", "Frekvens", "Hz"},
            {"I", "I", "Samlet strøm (kun hvis den er givet)", "A"},
            {"Z", "Z", "Samlet impedans (kun hvis den er givet)", "Ω"},
            {"P", "P", "Aktiv effekt (kun hvis den er givet)", "W"},
            {"cos", "cosphi",
             "Effektfaktor cos φ (kun hvis den er givet eller ønsket – fx 0,9 ved kompensering)", ""}};
}

} // namespace app
