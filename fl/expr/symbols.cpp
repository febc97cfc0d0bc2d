// The constant tables of the language: function names, inverses and labels,
// and the hand-made display forms of the catalogue's symbols, which render
// consults before its naming rules.
#include "fl/expr/symbols.h"

#include <set>

namespace fl {

bool isFunctionName(const std::string& name) {
    static const std::set<std::string> names{"sqrt", "sin",  "cos", "tan", "asin",
                                             "acos", "atan", "abs", "log", "ln"};
    return names.count(name) > 0;
}

std::string inverseFunction(const std::string& name) {
    static const std::map<std::string, std::string> inv{{"sin", "asin"}, {"asin", "sin"}, {"cos", "acos"},
                                                        {"acos", "cos"}, {"tan", "atan"}, {"atan", "tan"}};
    auto it = inv.find(name);
    return it == inv.end() ? std::string() : it->second;
}

std::string functionLabel(const std::string& name) {
    static const std::map<std::string, std::string> labels{{"sqrt", "√"},
                                                           {"asin", "sin<sup>−1</sup>"},
                                                           {"acos", "cos<sup>−1</sup>"},
                                                           {"atan", "tan<sup>−1</sup>"}};
    auto it = labels.find(name);
    return it == labels.end() ? name : it->second;
}

const std::map<std::string, std::string>& symbolTable() {
    static const std::map<std::string, std::string> table{
        {"UR", "U<sub>R</sub>"},
        {"UL", "U<sub>L</sub>"},
        {"UC", "U<sub>C</sub>"},
        {"XL", "X<sub>L</sub>"},
        {"XC", "X<sub>C</sub>"},
        {"phi", "φ"},
        {"cosphi", "cos φ"},
        {"rho", "ρ"},
        {"dU", "ΔU"},
        {"dUp", "ΔU%"},
        {"UB", "U<sub>B</sub>"},
        {"RI", "R<sub>I</sub>"},
        {"Ry", "R<sub>y</sub>"},
        {"Uy", "U<sub>y</sub>"},
        {"UI", "U<sub>I</sub>"},
        {"Ik", "I<sub>k</sub>"},
        {"Ueff", "U<sub>eff</sub>"},
        {"Umax", "U<sub>max</sub>"},
        {"RV", "R<sub>V</sub>"},
        {"UV", "U<sub>V</sub>"},
        {"RF", "R<sub>F</sub>"},
        {"UF", "U<sub>F</sub>"},
        {"IA", "I<sub>A</sub>"},
        {"UA", "U<sub>A</sub>"},
        {"Rsh", "R<sub>shunt</sub>"},
        {"Ish", "I<sub>shunt</sub>"},
        {"RL", "R<sub>L</sub>"},
        {"hyp", "hyp"},
        {"mod", "mod.kat"},
        {"hos", "hos.kat"},
        {"Vs", "V<sub>sum</sub>"},
        {"Rt", "R<sub>total</sub>"},
        {"It", "I<sub>total</sub>"},
        {"Pt", "P<sub>total</sub>"},
        {"xs", "x<sub>sum</sub>"},
        {"ys", "y<sub>sum</sub>"},
        {"Iw", "I<sub>v</sub>"},
        {"Ib", "I<sub>r</sub>"},
        {"NV", "N/V"},
        {"QC", "Q<sub>C</sub>"},
        {"QC1", "Q<sub>C</sub> pr. kondensator"},
        {"cosphi1", "cos φ<sub>1</sub>"},
        {"cosphi2", "cos φ<sub>2</sub>"},
        {"phi1", "φ<sub>1</sub>"},
        {"phi2", "φ<sub>2</sub>"},
        {"P_D", "P<sub>Δ</sub>"},
        {"I_ND", "I<sub>NΔ</sub>"},
        {"P_fejlF", "P<sub>fejl, fase</sub>"},
        {"P_fejlK", "P<sub>fejl, komponent</sub>"},
        {"Lk", "L<sub>kabel</sub>"},
        {"dUmax", "ΔU<sub>max</sub>"},
        {"I_Bdim", "I<sub>B,dim</sub>"},
        {"sinphi", "sin φ"},
        {"sinphi_k", "sin φ"},
        {"cosphi_k", "cos φ"},
        {"dU_f", "ΔU<sub>fase</sub>"},
        {"dU_ft", "ΔU<sub>fase,tot</sub>"},
        {"dU_n", "ΔU<sub>net</sub>"},
        {"R_l", "R<sub>l</sub>"},
        {"X_l", "X<sub>l</sub>"},
        {"Ik_fr", "I<sub>k,FR</sub>"},
        {"Ik_max", "I<sub>k,max</sub>"},
        {"R_sum", "ΣR"},
        {"X_sum", "ΣX"},
        {"R_kab", "R<sub>kabel</sub>"},
        {"X_kab", "X<sub>kabel</sub>"},
        {"Ik_net", "I<sub>k,min,net</sub>"},
        {"R_netmin", "R<sub>net</sub>"},
        {"I_Nks", "I<sub>N,kabelskab</sub>"},
        {"k_fr", "k"},
        {"k_v", "k<sub>varme</sub>"},
        {"l_stik", "l<sub>stik</sub>"},
        {"l_grp", "l<sub>grp</sub>"},
        {"R_lstik", "R<sub>l,stik</sub>"},
        {"R_lgrp", "R<sub>l,grp</sub>"},
        {"R_tavle", "R<sub>tavle</sub>"},
        {"Ik_gt", "I<sub>k,min,tavle</sub>"},
        {"Ik_bg", "I<sub>k,min,brugsg.</sub>"},
        {"I_Ngrp", "I<sub>N,grp</sub>"},
        {"k_a", "k"},
        {"dUpmax", "ΔU%<sub>max</sub>"},
        {"RLmax", "R<sub>L,max</sub>"},
        {"qmin", "q<sub>min</sub>"},
        {"E_J", "E<sub>J</sub>"},
        {"k_el", "k<sub>el</sub>"},
        {"Pris", "Pris"},
        {"B", "B"},
        {"T_tb", "T<sub>tilbage</sub>"},
        {"Inv", "Investering"},
        {"eta", "η"},
        {"P_ud", "P<sub>ud</sub>"},
        {"P_ind", "P<sub>ind</sub>"},
        {"h", "h"},
        {"d_dage", "d"},
        {"E_kWh", "E"},
        {"P_kW", "P"},
        {"t_s", "t"},
        {"B_aar", "B"},
        {"P1w", "P<sub>før</sub>"},
        {"P2w", "P<sub>efter</sub>"},
        {"tt", "t"},
        {"Rv", "R"},
        {"ev", "Værdi"},
        {"n_s", "n<sub>s</sub>"},
        {"nr", "n"},
        {"P_1", "P<sub>1</sub>"},
        {"P_2", "P<sub>2</sub>"},
        {"P_tab", "P<sub>tab</sub>"},
        {"k_st", "k"},
        {"I_st", "I<sub>start</sub>"},
        {"I_stY", "I<sub>start,Y</sub>"},
        {"I_stD", "I<sub>start,Δ</sub>"},
        {"f_r", "f<sub>r</sub>"},
        {"M", "M"},
        {"omega", "ω"},
        {"Uss", "U<sub>ss</sub>"},
        {"Umid", "U<sub>mid</sub>"},
        {"u_t", "u"},
        {"alpha", "α"},
        {"T", "T"},
        {"R_e", "R<sub>e</sub>"},
        {"U_L", "U<sub>L</sub>"},
        {"I_dn", "I<sub>Δn</sub>"},
        {"U0", "U<sub>tilslutning</sub>"},
        {"U1", "U<sub>udtag</sub>"},
        {"I_a", "I<sub>a</sub>"},
        {"I_n", "I<sub>n</sub>"},
        {"Z_s", "Z<sub>s</sub>"},
        {"U_0", "U<sub>0</sub>"},
    };
    return table;
}

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool startsWith(const std::string& s, const char* prefix) {
    return s.rfind(prefix, 0) == 0;
}

} // namespace

std::string symbolDisplay(const std::string& name) {
    const auto& table = symbolTable();
    if (auto it = table.find(name); it != table.end()) return it->second;
    if (startsWith(name, "cosphi_")) return "cos φ<sub>" + name.substr(7) + "</sub>";
    if (startsWith(name, "phi_")) return "φ<sub>" + name.substr(4) + "</sub>";
    // Active, reactive and harmonic current: Iw_1 reads I with the index v,1.
    if (name.size() >= 4 && name[0] == 'I' && name[2] == '_') {
        const char kind = name[1] == 'w' ? 'v' : name[1] == 'b' ? 'r' : name[1] == 'h' ? 'h' : 0;
        if (kind) return std::string("I<sub>") + kind + "," + name.substr(3) + "</sub>";
    }
    if (auto u = name.find('_'); u != std::string::npos)
        return name.substr(0, u) + "<sub>" + name.substr(u + 1) + "</sub>";
    // R12 reads R with the index 12.
    size_t letters = 0;
    while (letters < name.size() && isLetter(name[letters]))
        ++letters;
    size_t digits = letters;
    while (digits < name.size() && isDigit(name[digits]))
        ++digits;
    if (letters > 0 && digits > letters && digits == name.size())
        return name.substr(0, letters) + "<sub>" + name.substr(letters) + "</sub>";
    return name;
}

} // namespace fl
