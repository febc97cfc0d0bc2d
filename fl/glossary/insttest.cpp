// The eight tests of verification with their limits and sources, and the
// two calculators for the limits that depend on the circuit. The limits are
// those of the Danish installation rules: the installation order makes
// DS/HD 60364-6 the method of verification, and the limits come from that
// standard, from DS/HD 60364-4-41 and from the devices' product standards.
#include "fl/glossary/insttest.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"

#include <cmath>
#include <limits>

namespace fl {

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
} // namespace

const std::vector<InsulationLimit>& insulationLimits() {
    static const std::vector<InsulationLimit> table{
        {"SELV og PELV", 250, 0.5e6},
        {"Op til og med 500 V (fx 230/400 V), også FELV", 500, 1e6},
        {"Over 500 V", 1000, 1e6},
    };
    return table;
}

const std::vector<RcdTripTime>& rcdTripTimes() {
    static const std::vector<RcdTripTime> table{
        {0.5, kNaN, kNaN, kNaN},
        {1, 0.3, 0.13, 0.5},
        {2, 0.15, 0.06, 0.2},
        {5, 0.04, 0.05, 0.15},
    };
    return table;
}

const std::vector<DisconnectionTime>& disconnectionTimes() {
    static const std::vector<DisconnectionTime> table{
        {"Slutkredse til og med 63 A med stikkontakter, og til og med 32 A kun til fast tilsluttet materiel", 0.4,
         0.2},
        {"Fordelingskredse og andre kredse", 5, 1},
    };
    return table;
}

double tripFactor(char characteristic) {
    switch (characteristic) {
    case 'B':
    case 'b':
        return 5;
    case 'C':
    case 'c':
        return 10;
    case 'D':
    case 'd':
        return 20;
    default:
        return 0;
    }
}

LoopLimit loopLimit(double in, char characteristic, double u0, double measured) {
    LoopLimit r;
    r.ia = tripFactor(characteristic) * in;  // I_a = k · I_n
    r.zsMax = u0 / r.ia;                     // Z_s · I_a ≤ U_0  ⇒  Z_s ≤ U_0 / I_a
    r.zsMeasuredMax = r.zsMax * 2.0 / 3.0;   // conductors are warmer during a fault than when measured
    r.measured = measured;
    r.faultCurrent = std::isnan(measured) ? kNaN : u0 / measured; // I_f = U_0 / Z_s
    r.passes = !std::isnan(measured) && measured <= r.zsMax;
    return r;
}

EarthLimit earthLimit(double idn, double ul, double measured) {
    EarthLimit r;
    r.raMax = ul / idn;  // R_A · IΔn ≤ U_L  ⇒  R_A ≤ U_L / IΔn
    r.measured = measured;
    r.touchVoltage = std::isnan(measured) ? kNaN : measured * idn;
    r.passes = !std::isnan(measured) && measured <= r.raMax;
    return r;
}

const std::vector<VerificationTest>& verificationTests() {
    static const std::vector<VerificationTest> table{
        {"kont", "Beskyttelseslederens kontinuitet",
         "Viser, at beskyttelseslederen og udligningsforbindelserne er hele og forbundet fra hovedjordklemmen ud til "
         "hver stikkontakt, hvert udtag og hver udsat ledende del. Uden den virker hverken sikring eller RCD ved en "
         "fejl til stel.",
         "Installationen er spændingsløs. Mål mellem PE-skinnen i tavlen og PE i hvert udtag – eller forbind fase og "
         "PE i tavlen med en blæksprutte og mål mellem fase og PE ude i udtaget (R1 + R2). Husk også forbindelsen "
         "fra jordelektroden til hovedjordklemmen.",
         "Gennemgang (Ω) med mindst 0,2 A og 4–24 V. Nulstil målepindenes modstand før første måling.",
         "Ingen fast talgrænse: værdien skal være lav og passe med lederens længde og tværsnit, R = ρ · l / A "
         "(20 m 1,5 mm² kobber ≈ 0,23 Ω). En uendelig eller ustabil værdi betyder en afbrudt eller løs forbindelse.",
         "DS/HD 60364-6, 6.4.3.2; instrument efter DS/EN 61557-4"},
        {"iso", "Isolationsmodstand",
         "Viser, at isolationen mellem lederne og mod jord er intakt, så der ikke løber fejlstrøm, hvor der ikke "
         "skal. Fanger beskadigede kabler, skruer gennem ledninger og fugt i dåser.",
         "Installationen er spændingsløs, og følsomt udstyr (dæmpere, overspændingsbeskyttelse, elektronik) er koblet "
         "fra. Mål mellem de spændingsførende ledere indbyrdes og mellem dem og PE; lederne må samles med en "
         "blæksprutte og måles mod PE i én måling. Stikledningen skal med, så længe den ikke er sat under spænding.",
         "Isolation (MΩ) med 500 V DC for 230/400 V-kredse, 250 V DC for SELV og PELV, 1000 V DC over 500 V.",
         "Mindst <b>1 MΩ</b> ved 500 V DC for kredse op til 500 V; mindst 0,5 MΩ ved 250 V DC for SELV og PELV; "
         "mindst 1 MΩ ved 1000 V DC over 500 V. En god ny installation måler typisk over 200 MΩ.",
         "DS/HD 60364-6, 6.4.3.3, tabel 6.1 (SELV og PELV: 6.4.3.4); instrument efter DS/EN 61557-2"},
        {"pol", "Polaritet",
         "Viser, at fase og nul sidder rigtigt, så enpolede afbrydere og sikringer bryder fasen. Sidder afbryderen i "
         "nul, står lampefatningen under spænding, selv om lyset er slukket.",
         "Med spænding på: mål i hvert udtag L–N og L–PE (ca. 230 V) og N–PE (ca. 0 V). Kontrollér, at enpolede "
         "afbrydere og sikringer sidder i fasen.",
         "Spænding (V AC), eller installationstesterens udtagstest.",
         "L–N og L–PE ca. 230 V, N–PE ca. 0 V. Ingen enpolet afbryder eller sikring i nullederen.",
         "DS/HD 60364-6, 6.4.3.6"},
        {"afbr", "Automatisk afbrydelse: jordsløjfeimpedans",
         "Viser, at en fejl mellem fase og jord giver en fejlstrøm, der er stor nok til, at sikringen afbryder inden "
         "for den krævede tid. I et TT-system viser jordmodstanden sammen med RCD'en det samme.",
         "Med spænding på: mål Z<sub>s</sub> mellem fase og PE i det fjerneste udtag på hver gruppe. I TT-systemer "
         "måles jordelektrodens overgangsmodstand R<sub>A</sub> med jordmodstandsmåler og hjælpeelektroder (eller "
         "sløjfemetoden).",
         "Sløjfeimpedans L–PE (Ω); brug funktionen uden udløsning, når der sidder en RCD foran. Jordmodstand (Ω).",
         "TN: Z<sub>s</sub> · I<sub>a</sub> ≤ U<sub>0</sub>, altså Z<sub>s</sub> ≤ U<sub>0</sub> / I<sub>a</sub>, "
         "hvor I<sub>a</sub> giver afbrydelse inden for 0,4 s i slutkredse (230 V). TT: R<sub>A</sub> · IΔn ≤ 50 V. "
         "Beregn grænsen for din gruppe under fanen Beregn.",
         "DS/HD 60364-6, 6.4.3.7; grænser i DS/HD 60364-4-41, 411.3.2 (tabel 41.1), 411.4.4 og 411.5.3; "
         "instrumenter efter DS/EN 61557-3 og -5"},
        {"rcd", "Fejlstrømsafbryder (RCD)",
         "Viser, at RCD'en slår fra ved sin mærkeudløserstrøm og hurtigt nok til at beskytte mod stød. Testknappen "
         "alene viser kun mekanikken, ikke udløsestrøm og tid.",
         "Afbryd grupperne efter RCD'en, så lækstrømme ikke forstyrrer. Prøv med ½ IΔn (må ikke slå fra), med IΔn "
         "(skal slå fra) og med 5 IΔn; prøv i begge halvperioder (0° og 180°), og for type A også med pulserende "
         "jævnstrøm. Tryk til sidst på testknappen.",
         "RCD-test: IΔn (fx 30 mA), type (AC, A, B), ×½, ×1 og ×5, 0° og 180°.",
         "Almindelig RCD: højst <b>300 ms</b> ved IΔn og højst 40 ms ved 5 IΔn; ingen udløsning ved ½ IΔn. "
         "Selektiv (type S): 130–500 ms ved IΔn. Berøringsspændingen under prøven højst 50 V.",
         "DS/HD 60364-6, 6.4.3.7 og 6.4.3.8; tiderne i DS/EN 61008-1 og DS/EN 61009-1; instrument efter "
         "DS/EN 61557-6"},
        {"fase", "Fasefølge",
         "Viser, at faserne kommer i rækkefølgen L1, L2, L3, så trefasede motorer drejer den rigtige vej.",
         "Med spænding på: sæt fasefølgeindikatoren i hver trefaset stikkontakt og ved motortilslutninger.",
         "Fasefølge (drejefelt).",
         "Højredrejende (L1 → L2 → L3) i alle trefasede udtag.",
         "DS/HD 60364-6, 6.4.3.9; instrument efter DS/EN 61557-7"},
        {"funk", "Funktionsprøvning",
         "Viser, at tavler, styringer, afbrydere, nødstop og aflåsninger virker, som de skal – også at RCD'ens "
         "testknap slår den fra.",
         "Betjen alt materiel, der kan betjenes: afbrydere, kontaktorer, styringer, nødstop, RCD'ens testknap og "
         "automatik.",
         "Intet instrument – betjening og iagttagelse.",
         "Alt virker efter hensigten og efter fabrikantens anvisninger.",
         "DS/HD 60364-6, 6.4.3.10"},
        {"sf", "Spændingsfald",
         "Viser, at spændingen ude i installationen er høj nok, så lys, motorer og elektronik virker rigtigt.",
         "Mål spændingen i tavlen og i det fjerneste udtag under belastning, eller beregn faldet ud fra den målte "
         "impedans og strømmen.",
         "Spænding (V) eller sløjfeimpedans L–N (Ω).",
         "Vejledende, forsyning fra det offentlige net: højst <b>3 %</b> til belysning og <b>5 %</b> til andet. "
         "Egen transformer: 6 % og 8 %.",
         "DS/HD 60364-6, 6.4.3.11; grænserne i DS/HD 60364-5-52, 525 og anneks G (tabel G.52.1)"},
    };
    return table;
}

namespace {

std::string ms(double seconds) { return fmtWithUnit(seconds * 1000, "ms"); }

std::string source(const std::string& text) { return "<p class=\"crumb\">Kilde: " + text + "</p>"; }

std::string left(const std::string& text) { return "<td style=\"text-align:left\">" + text + "</td>"; }

std::string overviewTab() {
    std::string html = "<p>Før en ny eller ændret installation tages i brug, skal den verificeres: først eftersyn "
                       "(uden spænding), så afprøvning i denne rækkefølge, og til sidst en rapport. Kravet står i "
                       "installationsbekendtgørelsen, og metoden i DS/HD 60364-6. Gå videre til næste prøve, først "
                       "når den forrige er i orden.</p><p>";
    const auto& tests = verificationTests();
    for (size_t i = 0; i < tests.size(); ++i)
        html += "<a class=\"chip\" href=\"#t-" + tests[i].id + "\">" + std::to_string(i + 1) + ". " +
                tests[i].title + "</a> &nbsp; ";
    html += "</p>";
    for (size_t i = 0; i < tests.size(); ++i) {
        const VerificationTest& t = tests[i];
        html += "<a name=\"t-" + t.id + "\"></a><div class=\"card\"><h3>" + std::to_string(i + 1) + ". " + t.title +
                "</h3><p>" + t.why + "</p><p><b>Grænse:</b> " + t.limit + "</p>" + source(t.source) + "</div>";
    }
    html += "<p><a href=\"tab:saadan\">→ Sådan gør du, prøve for prøve</a> &nbsp; <a href=\"tab:graenser\">→ "
            "Grænseværdierne samlet</a> &nbsp; <a class=\"chip\" href=\"cards:test\">→ Øv grænserne som kort</a></p>";
    return html;
}

std::string howTab() {
    std::string html = msgBox("<b>Afprøvning under spænding er L-AUS-arbejde.</b> Gør installationen spændingsløs "
                              "til kontinuitet og isolation, og brug kun målekategori-godkendte ledninger og "
                              "instrumenter.",
                              true);
    const auto& tests = verificationTests();
    for (size_t i = 0; i < tests.size(); ++i) {
        const VerificationTest& t = tests[i];
        html += "<a name=\"t-" + t.id + "\"></a><div class=\"card\"><h3>" + std::to_string(i + 1) + ". " + t.title +
                "</h3><p><b>Sådan:</b> " + t.how + "</p><p><b>Instrumentet:</b> " + t.setting + "</p><p><b>Grænse:</b> " +
                t.limit + "</p>" + source(t.source) + "</div>";
    }
    return html;
}

std::string limitsTab() {
    std::string html = "<h3>Isolationsmodstand</h3><div class=\"tbl\"><table><tr><th style=\"text-align:left\">"
                       "Kredsens spænding</th><th>Prøvespænding (DC)</th><th>Mindst</th></tr>";
    for (const InsulationLimit& l : insulationLimits())
        html += "<tr>" + left(l.circuit) + "<td>" + fmtWithUnit(l.testVoltage, "V") + "</td><td>" +
                fmtWithUnit(l.minimum / 1e6, "MΩ") + "</td></tr>";
    html += "</table></div>" + source("DS/HD 60364-6, 6.4.3.3, tabel 6.1");

    html += "<h3>Fejlstrømsafbryder: udløsetider</h3><div class=\"tbl\"><table><tr><th>Prøvestrøm</th><th>"
            "Almindelig RCD</th><th>Selektiv (type S)</th></tr>";
    for (const RcdTripTime& t : rcdTripTimes()) {
        html += "<tr><td>" + fmtNumber(t.multiple) + " · IΔn</td>";
        if (std::isnan(t.generalMax))
            html += "<td>må ikke slå fra</td><td>må ikke slå fra</td></tr>";
        else
            html += "<td>højst " + ms(t.generalMax) + "</td><td>" + ms(t.selectiveMin) + " – " + ms(t.selectiveMax) +
                    "</td></tr>";
    }
    html += "</table></div>" + source("DS/EN 61008-1 og DS/EN 61009-1 (største brydetider); afprøvningen "
                                      "DS/HD 60364-6, 6.4.3.7 og 6.4.3.8");

    html += "<h3>Største afbrydelsestid ved fejl (U<sub>0</sub> = 230 V)</h3><div class=\"tbl\"><table><tr><th "
            "style=\"text-align:left\">Kreds</th><th>TN-system</th><th>TT-system</th></tr>";
    for (const DisconnectionTime& d : disconnectionTimes())
        html += "<tr>" + left(d.circuit) + "<td>" + fmtWithUnit(d.tn, "s") + "</td><td>" + fmtWithUnit(d.tt, "s") +
                "</td></tr>";
    html += "</table></div>" + source("DS/HD 60364-4-41, 411.3.2.2 (tabel 41.1), 411.3.2.3 og 411.3.2.4");

    html += "<h3>Automatsikringer: udløsestrøm I<sub>a</sub> = k · I<sub>n</sub></h3><div class=\"tbl\"><table>"
            "<tr><th>Karakteristik</th><th>Magnetisk udløsning</th><th>k (øverste grænse)</th></tr>"
            "<tr><td>B</td><td>3–5 · I<sub>n</sub></td><td>5</td></tr>"
            "<tr><td>C</td><td>5–10 · I<sub>n</sub></td><td>10</td></tr>"
            "<tr><td>D</td><td>10–20 · I<sub>n</sub></td><td>20</td></tr></table></div>" +
            source("DS/EN 60898-1 (automatsikringer), tabel over øjeblikkelig udløsning");

    html += "<h3>Spændingsfald</h3><div class=\"tbl\"><table><tr><th style=\"text-align:left\">Forsyning</th><th>"
            "Belysning</th><th>Anden anvendelse</th></tr><tr>" +
            left("Direkte fra det offentlige lavspændingsnet") + "<td>3 %</td><td>5 %</td></tr><tr>" +
            left("Fra egen transformer eller generator") + "<td>6 %</td><td>8 %</td></tr></table></div>" +
            source("DS/HD 60364-5-52, 525 og anneks G (informativt), tabel G.52.1");

    html += "<h3>Berøringsspænding</h3><p>Højst <b>50 V</b> vekselspænding (25 V i særlige områder som landbrug). "
            "I TT-systemer: R<sub>A</sub> · IΔn ≤ 50 V.</p>" +
            source("DS/HD 60364-4-41, 411.5.3; landbrug DS/HD 60364-7-705");
    return html;
}

std::string calculatorIntro() {
    return "<p>Grænsen for sløjfeimpedansen afhænger af sikringen. For en automatsikring er I<sub>a</sub> den "
           "strøm, der får den til at slå magnetisk fra med det samme: k · I<sub>n</sub> med k = 5 for B, 10 for C "
           "og 20 for D. Så skal Z<sub>s</sub> ≤ U<sub>0</sub> / I<sub>a</sub> (DS/HD 60364-4-41, 411.4.4).</p>"
           "<p>Lederne er varmere under en fejl end når du måler, så den målte værdi bør have margen: det "
           "informative anneks om sløjfemåling i DS/HD 60364-6 regner med 2/3 af grænsen.</p>"
           "<p>Bag en RCD i et TT-system er grænsen for jordmodstanden R<sub>A</sub> ≤ U<sub>L</sub> / IΔn "
           "(DS/HD 60364-4-41, 411.5.3).</p>";
}

std::string verdict(bool ok, const std::string& good, const std::string& bad) {
    return ok ? "<p class=\"ok\">✓ " + good + "</p>" : "<p class=\"bad\">✗ " + bad + "</p>";
}

} // namespace

std::string insttestHtml(const std::string& tab) {
    if (tab == "saadan") return howTab();
    if (tab == "graenser") return limitsTab();
    if (tab == "beregn") return calculatorIntro();
    return overviewTab();
}

std::string limitCalculatorHtml(const std::map<std::string, std::string>& fields) {
    auto value = [&](const char* key, bool* empty) {
        const auto it = fields.find(key);
        return readValue(it == fields.end() ? std::string() : it->second, empty);
    };
    auto text = [&](const char* key) {
        const auto it = fields.find(key);
        return it == fields.end() ? std::string() : trimmed(it->second);
    };
    std::string html;

    bool inEmpty = false, u0Empty = false, zsEmpty = false;
    const double in = value("In", &inEmpty);
    const double u0 = value("U0", &u0Empty);
    const double zs = value("Zs", &zsEmpty);
    const std::string kar = text("kar");
    const char ch = kar.size() == 1 ? kar[0] : '?';
    html += "<h3>Automatsikring i et TN-system</h3>";
    if (inEmpty) {
        html += msgBox("Skriv sikringens mærkestrøm I<sub>n</sub>, fx 16.", false);
    } else if (!(in > 0) || !(u0 > 0) || tripFactor(ch) == 0 || (!zsEmpty && !(zs > 0))) {
        html += msgBox("Noget passer ikke – tjek værdierne. Mærkestrøm og spænding skal være positive tal, og "
                       "karakteristikken B, C eller D.",
                       true);
    } else {
        const LoopLimit r = loopLimit(in, ch, u0, zsEmpty ? std::nan("") : zs);
        const std::string k = fmtNumber(tripFactor(ch));
        html += "<p>I<sub>a</sub> = k · I<sub>n</sub> = " + k + " · " + fmtWithUnit(in, "A") + " = <b>" +
                fmtWithUnit(r.ia, "A") + "</b></p>";
        html += "<p>Z<sub>s</sub> ≤ U<sub>0</sub> / I<sub>a</sub> = " + fmtWithUnit(u0, "V") + " / " +
                fmtWithUnit(r.ia, "A") + " = <span class=\"big2\">" + fmtWithUnit(r.zsMax, "Ω") + "</span></p>";
        html += "<p class=\"hint0\">Målt ved stuetemperatur bør den højst være 2/3 · " + fmtWithUnit(r.zsMax, "Ω") +
                " = <b>" + fmtWithUnit(r.zsMeasuredMax, "Ω") + "</b>.</p>";
        if (!zsEmpty) {
            html += "<p>Fejlstrøm ved den målte værdi: I<sub>f</sub> = " + fmtWithUnit(u0, "V") + " / " +
                    fmtWithUnit(zs, "Ω") + " = " + fmtWithUnit(r.faultCurrent, "A") + "</p>";
            html += verdict(r.passes,
                            "Den målte Z<sub>s</sub> er under grænsen: fejlstrømmen er mindst I<sub>a</sub>, og "
                            "sikringen slår fra i tide." +
                                std::string(zs > r.zsMeasuredMax ? " Men der er ikke 2/3-margen – mål igen, og "
                                                                   "tjek forbindelserne."
                                                                 : ""),
                            "Den målte Z<sub>s</sub> er over grænsen: sikringen slår ikke sikkert fra i tide. Brug "
                            "en mindre sikring, en anden karakteristik, et større tværsnit – eller en RCD.");
        }
    }

    bool idnEmpty = false, ulEmpty = false, raEmpty = false;
    const double idn = value("Idn", &idnEmpty);
    const double ul = value("UL", &ulEmpty);
    const double ra = value("RA", &raEmpty);
    html += "<h3>Fejlstrømsafbryder i et TT-system</h3>";
    if (idnEmpty) {
        html += msgBox("Skriv RCD'ens mærkeudløserstrøm IΔn, fx 30m for 30 mA.", false);
    } else if (!(idn > 0) || !(ul > 0) || (!raEmpty && !(ra >= 0))) {
        html += msgBox("Noget passer ikke – tjek værdierne. IΔn og berøringsspændingen skal være positive tal.", true);
    } else {
        const EarthLimit r = earthLimit(idn, ul, raEmpty ? std::nan("") : ra);
        html += "<p>R<sub>A</sub> ≤ U<sub>L</sub> / IΔn = " + fmtWithUnit(ul, "V") + " / " + fmtWithUnit(idn, "A") +
                " = <span class=\"big2\">" + fmtWithUnit(r.raMax, "Ω") + "</span></p>";
        if (!raEmpty) {
            html += "<p>Berøringsspænding ved den målte værdi: " + fmtWithUnit(ra, "Ω") + " · " +
                    fmtWithUnit(idn, "A") + " = " + fmtWithUnit(r.touchVoltage, "V") + "</p>";
            html += verdict(r.passes, "Jordmodstanden er under grænsen. Husk, at jorden tørrer ud og fryser – "
                                      "en lav værdi giver margen.",
                            "Jordmodstanden er for stor: berøringsspændingen kan overstige " + fmtWithUnit(ul, "V") +
                                ". Forbedr jordelektroden.");
        }
    }
    return html;
}

std::vector<InstallFact> verificationFacts() {
    std::vector<InstallFact> out;
    const auto& tests = verificationTests();
    for (size_t i = 0; i < tests.size(); ++i)
        out.push_back({"inst:test:" + tests[i].id, "test",
                       "Verifikationens prøve " + std::to_string(i + 1) + ": " + tests[i].title +
                           " – hvad er grænsen?",
                       tests[i].limit});
    for (const InsulationLimit& l : insulationLimits())
        out.push_back({"inst:iso:" + fmtPlain(l.testVoltage, 4), "test",
                       "Isolationsmodstand, " + l.circuit + ": prøvespænding og mindste værdi?",
                       fmtWithUnit(l.testVoltage, "V") + " DC, mindst " + fmtWithUnit(l.minimum / 1e6, "MΩ")});
    return out;
}

} // namespace fl
