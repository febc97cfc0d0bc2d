// The eight scenarios of the text problems: what each draws, the story it
// tells and its parts in order. Every list holds values found on real
// equipment, so the worked answers stay believable; U = 230 V and f = 50 Hz
// unless a story says otherwise.
#include "fl/practice/tekst.h"

#include "fl/practice/random.h"

#include <cmath>

namespace fl {

namespace {

using List = std::vector<double>;

std::string n(double v) {
    return storyNumber(v);
}

TekstGen kedel() {
    TekstGen g;
    const double P = pickOne(List{1800, 2000, 2200, 2400, 3000});
    const double t = pickOne(List{10, 15, 20, 30});
    const double k = pickOne(List{1.5, 2, 2.5, 3});
    g.vars = {{"P", P}, {"U", 230}, {"t_min", t}, {"k_el", k}};
    g.given = {{"P", "W", P}, {"U", "V", 230}, {"t_min", "min/dag", t}, {"k_el", "kr/kWh", k}};
    g.story = "En elkedel er mærket " + n(P) + " W, 230 V. Den er tændt i alt " + n(t) +
              " minutter om dagen hele året (365 dage), og elprisen er " + n(k) + " kr/kWh.";
    g.parts = {
        {"Effektloven: I = P / U.", "A", "P/U", "I", "Hvor stor er strømmen, når kedlen er tændt?"},
        {"Ohms lov: R = U / I (eller R = U² / P).", "Ω", "U/I", "R", "Hvad er varmelegemets modstand?"},
        {"E = P · t. Regn P om til kW (÷ 1000) og tiden om til timer (÷ 60), og gang med 365 dage.", "kWh",
         "P/1000*t_min/60*365", "E_kWh", "Hvor meget energi bruger kedlen på et år?"},
        {"Pris = energi · elpris.", "kr", "E_kWh*k_el", "Pris", "Hvad koster det om året?"},
    };
    return g;
}

TekstGen kabel() {
    TekstGen g;
    const double l = pickOne(List{20, 25, 30, 35, 40, 50, 60});
    const double q = pickOne(List{1.5, 2.5});
    const double I = pickOne(List{10, 13, 16});
    g.vars = {{"l", l}, {"q", q}, {"I", I}, {"U", 230}, {"rho", 0.0175}};
    g.given = {{"l", "m", l}, {"q", "mm²", q}, {"I", "A", I}, {"U", "V", 230}, {"rho", "Ω·mm²/m", 0.0175}};
    g.story = "Der trækkes et " + n(l) + " m langt kabel fra tavlen ud til en carport. Lederne er af kobber (ρ = " +
              n(0.0175) + " Ω·mm²/m) med tværsnittet " + n(q) + " mm². Belastningen i carporten trækker " + n(I) +
              " A ved 230 V (enfaset).";
    g.parts = {
        {"R = ρ · l / q. Strømmen løber både frem og tilbage, så lederlængden er 2 · " + n(l) + " m.", "Ω",
         "rho*2*l/q", "RL", "Hvor stor er ledningsmodstanden?"},
        {"ΔU = I · R (Ohms lov på ledningen).", "V", "I*RL", "dU", "Hvor stort er spændingsfaldet i kablet?"},
        {"ΔU% = ΔU / U · 100.", "%", "dU/U*100", "dUp", "Hvor mange procent er det?"},
        {"Spændingen ved belastningen er forsyningsspændingen minus spændingsfaldet.", "V", "U-dU", "UB",
         "Hvor stor er spændingen ude ved carporten?"},
        {"P = I² · R – tabet bliver til varme i kablet.", "W", "I**2*RL", "P_tab",
         "Hvor stort er effekttabet i kablet?"},
    };
    return g;
}

TekstGen spole() {
    TekstGen g;
    const double L = pickOne(List{0.05, 0.08, 0.1, 0.12, 0.15, 0.2});
    const double R = pickOne(List{20, 30, 40, 55, 70}); // the coil's own resistance: found, never told
    // What an ammeter shows: three digits.
    const double I = round3(230 / std::sqrt(R * R + std::pow(314.159 * L, 2)));
    g.vars = {{"L", L}, {"R", R}, {"U", 230}, {"f", 50}, {"I", I}};
    g.given = {{"L", "H", L}, {"U", "V", 230}, {"f", "Hz", 50}, {"I", "A", I}};
    g.story = "En spole mærket " + n(L * 1000) + " mH tilsluttes 230 V, 50 Hz. Den optager " + n(I) + " A.";
    g.parts = {
        {"Ohms lov for vekselstrøm: Z = U / I.", "Ω", "U/I", "Z", "Hvor stor er spolens impedans?"},
        {"X_L = 2 · π · f · L (husk mH → H).", "Ω", "2*PI*f*L", "XL",
         "Hvor stor er spolens induktive reaktans?"},
        {"Modstandstrekanten: Z² = R² + X_L², så R = √(Z² − X_L²).", "Ω", "sqrt(Z**2-XL**2)", "RL",
         "Hvor stor er spolens egen (ohmske) modstand?"},
        {"cos φ = R / Z.", "", "RL/Z", "cosphi", "Hvad er effektfaktoren cos φ?"},
        {"P = I² · R – kun den ohmske modstand bruger aktiv effekt.", "W", "I**2*RL", "P",
         "Hvor stor er den aktive effekt (varmen i spolen)?"},
    };
    return g;
}

TekstGen komp() {
    TekstGen g;
    const double P = pickOne(List{750, 1100, 1500, 2200});
    const double c1 = pickOne(List{0.7, 0.75, 0.8});
    const double c2 = pickOne(List{0.9, 0.95});
    g.vars = {{"P", P}, {"U", 230}, {"f", 50}, {"cosphi1", c1}, {"cosphi2", c2}};
    g.given = {{"P", "W", P}, {"U", "V", 230}, {"f", "Hz", 50}, {"cosphi1", "", c1}, {"cosphi2", "", c2}};
    g.story = "En enfaset motor optager " + n(P) + " W ved 230 V, 50 Hz. Effektfaktoren er cos φ = " + n(c1) +
              ". Den skal forbedres til cos φ = " + n(c2) + " med en kondensator parallelt med motoren.";
    g.parts = {
        {"P = U · I · cos φ, så I = P / (U · cos φ).", "A", "P/(U*cosphi1)", "I1",
         "Hvor stor er strømmen før kompenseringen?"},
        {"Q_C = P · (tan φ₁ − tan φ₂), hvor φ = cos⁻¹(cos φ).", "VAr", "P*(tan(acos(cosphi1))-tan(acos(cosphi2)))",
         "QC", "Hvor meget reaktiv effekt skal kondensatoren levere?"},
        {"C = Q_C / (2 · π · f · U²). Svar i µF.", "F", "QC/(2*PI*f*U**2)", "C",
         "Hvor stor skal kondensatoren være?"},
        {"Samme P, men med den nye cos φ: I = P / (U · cos φ).", "A", "P/(U*cosphi2)", "I2",
         "Hvor stor er strømmen efter kompenseringen?"},
    };
    return g;
}

TekstGen varme3() {
    TekstGen g;
    const double R = pickOne(List{20, 27, 33, 40, 47, 56});
    g.vars = {{"R", R}, {"U_N", 400}};
    g.given = {{"R", "Ω", R}, {"U_N", "V", 400}};
    g.story = "Et trefaset varmelegeme består af tre ens modstande på " + n(R) +
              " Ω. De er forbundet i stjerne til nettet med netspændingen 400 V (symmetrisk belastning).";
    g.parts = {
        {"I stjerne er U_F = U_N / √3.", "V", "U_N/sqrt(3)", "U_F",
         "Hvor stor er spændingen over hver modstand (fasespændingen)?"},
        {"I = U_F / R. I stjerne er fasestrømmen lig netstrømmen.", "A", "U_F/R", "I_F",
         "Hvor stor er strømmen i hver ledning?"},
        {"P = 3 · U_F · I_F (tre ens faser, cos φ = 1).", "W", "3*U_F*I_F", "P", "Hvor stor er den samlede effekt?"},
        {"I trekant får hver modstand hele netspændingen: P = 3 · U_N² / R (3 gange så meget som i stjerne).", "W",
         "3*U_N**2/R", "P_D", "Hvor stor bliver effekten, hvis varmelegemet kobles om til trekant?"},
    };
    return g;
}

TekstGen motor() {
    TekstGen g;
    const double P2 = pickOne(List{2200, 3000, 4000, 5500, 7500});
    const double cosphi = pickOne(List{0.8, 0.82, 0.84, 0.86});
    const double eta = pickOne(List{0.82, 0.85, 0.87, 0.89});
    const double nr = pickOne(List{1420, 1435, 1445, 1460, 2850, 2890, 960});
    // The pole pairs follow from the speed: the synchronous speed is the next one above it.
    const double p = std::floor(3000 / nr);
    g.vars = {{"P_2", P2}, {"U_N", 400}, {"cosphi", cosphi}, {"eta", eta}, {"nr", nr}, {"f", 50}, {"p", p}};
    g.given = {{"P_2", "W", P2}, {"U_N", "V", 400}, {"cosphi", "", cosphi},
               {"eta", "", eta},  {"nr", "o/min", nr}, {"f", "Hz", 50}};
    g.story = "På mærkepladen af en trefaset asynkronmotor står: " + n(P2 / 1000) + " kW · 400 V · cos φ " +
              n(cosphi) + " · η " + n(eta) + " · " + n(nr) + " o/min · 50 Hz.";
    TekstDel ns{"n_s = 60 · f / p. Det nærmeste synkrone omdrejningstal over n er 3000, 1500, 1000 eller 750 o/min.",
                "o/min", "60*f/p", "n_s", "Hvad er motorens synkrone omdrejningstal?"};
    ns.hintFn = [](const TekstVars& v) {
        const double speed = v.at("nr");
        return "Antal polpar: 60 · f / n = 60 · 50 / " + storyNumber(speed) + " = " + storyNumber(3000 / speed) +
               ", rundet ned: p = <b>" + storyNumber(v.at("p")) + "</b>.";
    };
    g.parts = {
        ns,
        {"Mærkepladens effekt er den afgivne (P₂). Optaget: P₁ = P₂ / η.", "W", "P_2/eta", "P_1",
         "Hvor stor effekt optager motoren fra nettet?"},
        {"P₁ = √3 · U · I · cos φ, så I = P₁ / (√3 · U · cos φ).", "A", "P_1/(sqrt(3)*U_N*cosphi)", "I_N",
         "Hvor stor er strømmen i tilledningen?"},
        {"s = (n_s − n) / n_s · 100 %.", "%", "(n_s-nr)/n_s*100", "s", "Hvor stort er slippet?"},
        {"M = P₂ · 60 / (2 · π · n) ≈ 9550 · P₂[kW] / n.", "Nm", "60*P_2/(2*PI*nr)", "M",
         "Hvor stort er momentet på akslen?"},
    };
    return g;
}

TekstGen rc() {
    TekstGen g;
    const double R = pickE12(47, 470);
    const double C = pickOne(List{4.7, 10, 22, 33}) / 1e6;
    g.vars = {{"R", R}, {"C", C}, {"U", 230}, {"f", 50}};
    g.given = {{"R", "Ω", R}, {"C", "F", C}, {"U", "V", 230}, {"f", "Hz", 50}};
    g.story = "En modstand på " + n(R) + " Ω og en kondensator på " + n(C * 1e6) +
              " µF er forbundet i serie og tilsluttet 230 V, 50 Hz.";
    g.parts = {
        {"X_C = 1 / (2 · π · f · C) (husk µF → F).", "Ω", "1/(2*PI*f*C)", "XC",
         "Hvor stor er kondensatorens kapacitive reaktans?"},
        {"Modstandstrekanten: Z = √(R² + X_C²).", "Ω", "sqrt(R**2+XC**2)", "Z", "Hvor stor er kredsens impedans?"},
        {"I = U / Z.", "A", "U/Z", "I", "Hvor stor er strømmen?"},
        {"U_R = I · R.", "V", "I*R", "UR", "Hvor stor er spændingen over modstanden?"},
        {"U_C = I · X_C. (U_R + U_C er større end U – de skal lægges sammen som vektorer.)", "V", "I*XC", "UC",
         "Hvor stor er spændingen over kondensatoren?"},
    };
    return g;
}

TekstGen trafo() {
    TekstGen g;
    const double US = pickOne(List{12, 24});
    const double NP = pickOne(List{690, 920, 1150, 1380});
    const double P = pickOne(List{50, 60, 100, 150});
    g.vars = {{"U_P", 230}, {"U_S", US}, {"N_P", NP}, {"P", P}};
    g.given = {{"U_P", "V", 230}, {"U_S", "V", US}, {"N_P", "", NP}, {"P", "W", P}};
    g.story = "En transformer (regn den som ideel) omsætter 230 V til " + n(US) + " V. Primærviklingen har " + n(NP) +
              " vindinger. På sekundærsiden er der tilsluttet lamper på i alt " + n(P) + " W.";
    g.parts = {
        {"n = U_P / U_S.", "", "U_P/U_S", "n", "Hvad er transformerens omsætningsforhold?"},
        {"n = N_P / N_S, så N_S = N_P / n.", "vindinger", "N_P/n", "N_S",
         "Hvor mange vindinger har sekundærviklingen?"},
        {"I_S = P / U_S.", "A", "P/U_S", "I_S", "Hvor stor er strømmen på sekundærsiden?"},
        {"Strømmen omsættes den modsatte vej: I_P = I_S / n (samme effekt på begge sider).", "A", "I_S/n", "I_P",
         "Hvor stor er strømmen på primærsiden?"},
    };
    return g;
}

} // namespace

const std::vector<TekstTopic>& tekstTopics() {
    static const std::vector<TekstTopic> table = {
        {"kedel", "Elkedel", kedel, ""},
        {"kabel", "Kabel til carport", kabel, "kabel ledning spændingsfald"},
        {"spole", "Spole med tab", spole, "vekselstrøm spole impedans reaktans"},
        {"komp", "Kompensering af en motor", komp, "kompensering kondensator"},
        {"varme3", "Trefaset varmelegeme", varme3, "trefaset stjerne trekant netspænding"},
        {"motor", "Motorens mærkeplade", motor, "motor trefaset omdrejningstal slip moment"},
        {"rc", "Modstand og kondensator i serie", rc, "vekselstrøm kondensator impedans reaktans"},
        {"trafo", "Transformer til lamper", trafo, ""},
    };
    return table;
}

} // namespace fl
