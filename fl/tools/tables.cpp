// The values of the class's tables 13 and 16/17, as printed; a dash there is
// a NaN here.
#include "fl/tools/tables.h"

#include <cmath>

namespace fl {

namespace {

constexpr double kMatch = 1e-9;
const double kNone = NAN;

} // namespace

const std::vector<double>& crossSections() {
    static const std::vector<double> list{1.5, 2.5, 4,  6,   10,  16,  25,  35,
                                          50,  70,  95, 120, 150, 185, 240, 300};
    return list;
}

const std::vector<CableType>& cableTypes() {
    const double n = kNone;
    static const std::vector<CableType> types{
        {"pvik3",
         "PVIK / PVIKL / PVIKS / NOIK / NOIKL / NOBH – 3-leder",
         {0.108, 0.099, 0.096, 0.092, 0.091, 0.086, 0.085, 0.073, 0.073, 0.072, 0.07, 0.07, 0.07, 0.07, 0.07, n}},
        {"pvik4",
         "PVIK / PVIKL / PVIKS / NOIK / NOIKL / NOBH / NOBH-CU-S – 4-leder",
         {0.115, 0.107, 0.103, 0.1, 0.099, 0.093, 0.092, 0.08, 0.08, 0.079, 0.077, 0.077, 0.077, 0.077, 0.077, n}},
        {"pvik5",
         "PVIK / PVIKL / PVIKS / NOIK / NOIKL / NOBH – 5-leder",
         {0.128, 0.12, 0.117, 0.113, 0.112, 0.107, 0.106, 0.094, n, n, n, n, n, n, n, n}},
        {"noikal4",
         "NOIK-AL-M / -S, NOBH-AL-M / -S, PEX-M-AL – 4-leder",
         {n, n, n, n, n, 0.091, 0.084, 0.082, 0.081, 0.08, 0.078, 0.077, 0.078, 0.078, 0.077, 0.077}},
        {"noikal5", "NOIK-AL-M – 5-leder", {n, n, n, n, n, 0.105, 0.098, n, n, n, n, n, n, n, n, n}},
        {"nosp3",
         "NOSP-CU / NOPBH-CU / NOSP-AL / NOPBH-AL – 3-leder",
         {n, 0.099, 0.096, 0.093, 0.091, 0.086, 0.077, 0.07, 0.074, 0.073, 0.071, 0.07, 0.071, 0.071, 0.07, n}},
        {"nosp4",
         "NOSP-CU / NOPBH-CU / NOSP-AL / NOPBH-AL – 4-leder",
         {n, n, n, n, n, n, n, n, 0.08, 0.079, 0.077, 0.077, 0.077, 0.077, 0.077, n}},
        {"noak3",
         "NOAK / NOABH (armeret) – 3-leder",
         {0.135, 0.124, 0.12, 0.116, 0.114, 0.107, 0.106, 0.091, 0.091, 0.09, 0.088, 0.087, 0.087, 0.087, 0.087, n}},
        {"noak4",
         "NOAK / NOABH / NOAK-CU-S / NOABH-CU-S (armeret) – 4-leder",
         {0.144, 0.133, 0.129, 0.125, 0.123, 0.116, 0.115, 0.101, 0.1, 0.099, 0.097, 0.096, 0.096, 0.096, 0.096, n}},
        {"noak5",
         "NOAK / NOABH (armeret) – 5-leder",
         {0.16, 0.15, 0.146, 0.142, 0.14, 0.133, 0.132, 0.117, n, n, n, n, n, n, n, n}},
    };
    return types;
}

int sectionIndex(double mm2) {
    const std::vector<double>& list = crossSections();
    for (size_t i = 0; i < list.size(); ++i)
        if (std::fabs(list[i] - mm2) <= kMatch) return static_cast<int>(i);
    return -1;
}

double cableResistance(bool aluminium, double mm2) {
    const double n = kNone;
    static const double copper[16] = {12.1,  7.41,  4.61,  3.08,  1.83,  1.15,   0.727,  0.525,
                                      0.388, 0.269, 0.194, 0.155, 0.126, 0.1017, 0.0787, n};
    static const double alu[16] = {n,     n,     n,     n,     n,     1.91,  1.2,   0.868,
                                   0.641, 0.444, 0.321, 0.254, 0.207, 0.166, 0.127, 0.103};
    const int i = sectionIndex(mm2);
    if (i < 0) return kNone;
    return aluminium ? alu[i] : copper[i];
}

double cableReactance(const std::string& typeKey, double mm2) {
    const int i = sectionIndex(mm2);
    if (i < 0) return kNone;
    for (const CableType& t : cableTypes())
        if (t.key == typeKey) return t.x[static_cast<size_t>(i)];
    return kNone;
}

} // namespace fl
