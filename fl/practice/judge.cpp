#include "fl/practice/judge.h"

#include "fl/expr/numbers.h"

#include <cmath>
#include <numbers>

namespace fl {

namespace {

const char* const kPrefixes[] = {"p", "n", "u", "µ", "μ", "m", "k", "M", "G"};

bool endsWith(const std::string& s, const std::string& tail) {
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

bool endsInPrefix(const std::string& s) {
    for (const char* p : kPrefixes)
        if (endsWith(s, p)) return true;
    return false;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// "1.500", "-12.500,5", "1.000.000": digits in groups of three behind points.
// The same without the points, or empty when the text isn't of that form.
std::string withoutThousandsPoints(const std::string& s) {
    size_t i = (!s.empty() && (s[0] == '-' || s[0] == '+')) ? 1 : 0;
    const size_t start = i;
    while (i < s.size() && isDigit(s[i]))
        ++i;
    if (i == start || i - start > 3) return {};
    std::string out = s.substr(0, i);
    int groups = 0;
    while (i < s.size() && s[i] == '.') {
        size_t j = i + 1;
        while (j < s.size() && isDigit(s[j]))
            ++j;
        if (j - i - 1 != 3) return {};
        out += s.substr(i + 1, 3);
        ++groups;
        i = j;
    }
    if (groups == 0) return {};
    if (i < s.size() && s[i] == ',') {
        size_t j = i + 1;
        while (j < s.size() && isDigit(s[j]))
            ++j;
        if (j == i + 1) return {};
        out += s.substr(i, j - i);
        i = j;
    }
    return i == s.size() ? out : std::string();
}

std::string lower(std::string s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

bool containsAny(const std::string& text, std::initializer_list<const char*> words) {
    for (const char* w : words)
        if (text.find(w) != std::string::npos) return true;
    return false;
}

double givenOr(const Exercise& ex, const char* symbol) {
    auto it = ex.given.find(symbol);
    return it == ex.given.end() ? NAN : it->second;
}

const std::string kPrefixMessage = " Tjek enhederne og præfikserne: mA ↔ A, W ↔ kW, mH ↔ H, mm ↔ m, ms ↔ s.";

} // namespace

AnswerJudgement judgeAnswer(const std::string& text, double facit, double scale) {
    AnswerJudgement j;
    const std::string t = trimmed(text);
    if (t.empty()) {
        j.empty = true;
        return j;
    }
    auto reading = [&](const std::string& s) {
        double v = readValue(s);
        if (scale != 1 && !endsInPrefix(s)) v *= scale;
        return v;
    };
    double value = reading(t);
    if (const std::string grouped = withoutThousandsPoints(t); !grouped.empty()) {
        const double other = reading(grouped);
        if (!std::isfinite(value) || std::fabs(other - facit) < std::fabs(value - facit)) value = other;
    }
    if (!std::isfinite(value)) {
        j.unreadable = true;
        return j;
    }
    j.value = value;
    j.relError = std::fabs(value - facit) / std::fabs(facit);
    // 2.04 against 2 is 2 % on paper, a hair above it in binary.
    j.correct = j.relError <= kAnswerTolerance * (1 + 1e-9);
    return j;
}

std::vector<DiagnosisCandidate> diagnosisCandidates(double f, const Exercise& ex) {
    const std::string text = lower(ex.title + " " + ex.search);
    const bool threePhase =
        containsAny(text, {"trefase", "trefaset", "stjerne", "trekant", "u<sub>n</sub>", "netspænding"});
    const bool cable = containsAny(text, {"kabel", "ledning", "spændingsfald"});
    const bool parallel = containsAny(text, {"parallel"});
    const bool alternating =
        ex.topic == "Vekselstrøm" || containsAny(text, {"vekselstrøm", "spole", "kondensator", "cos φ",
                                                        "impedans", "reaktans", "kompensering"});
    const bool motor = containsAny(text, {"motor", "omdrejningstal", "polpar", "slip", "moment"});
    const bool angular = containsAny(text, {"vinkelfrekvens", "ω"});
    const double eta = givenOr(ex, "eta");
    const double cosphi = givenOr(ex, "cosphi");
    const double twoPi = 2 * std::numbers::pi;
    const double sqrt3 = std::numbers::sqrt3;
    const double sqrt2 = std::numbers::sqrt2;

    const std::string etaText =
        " Har du glemt η – eller ganget med den i stedet for at dele (eller omvendt)? Husk: P₂ på "
        "mærkepladen er den <b>afgivne</b> effekt, så motoren tager P₁ = P₂ / η fra nettet.";
    const std::string cosText = " Har du glemt cos φ – eller ganget med den i stedet for at dele (eller "
                                "omvendt)? Ved vekselstrøm er P = U · I · cos φ, ikke bare U · I.";

    std::vector<DiagnosisCandidate> c;
    c.reserve(40);
    if (eta > 0 && eta < 1) {
        c.push_back({f * eta, "Dit svar er η gange for lille." + etaText});
        c.push_back({f / eta, "Dit svar er η gange for stort." + etaText});
    }
    if (cosphi > 0 && cosphi < 1) {
        c.push_back({f * cosphi, "Dit svar er cos φ gange for lille." + cosText});
        c.push_back({f / cosphi, "Dit svar er cos φ gange for stort." + cosText});
    }
    if (motor) {
        c.push_back({f * 2,
                     "Dit svar er dobbelt så stort som facit. Har du brugt antal <b>poler</b> i stedet for "
                     "antal <b>polpar</b>? p = antal poler / 2 (en 4-polet motor har 2 polpar)."});
        c.push_back({f / 2,
                     "Dit svar er halvt så stort som facit. Har du brugt antal <b>poler</b> i stedet for "
                     "antal <b>polpar</b>? p = antal poler / 2."});
        c.push_back({f * 60, "Dit svar er 60 gange for stort. Har du blandet omdrejninger pr. minut og pr. "
                             "sekund? Husk 60 i n<sub>s</sub> = 60 · f / p og i ω = 2 · π · n / 60."});
        c.push_back({f / 60, "Dit svar er 60 gange for lille. Har du blandet omdrejninger pr. minut og pr. "
                             "sekund? Husk 60 i n<sub>s</sub> = 60 · f / p."});
    }
    if (angular) {
        c.push_back({f / twoPi, "Dit svar er 2π gange for lille. Husk ω = 2 · π · f."});
        c.push_back({f * twoPi, "Dit svar er 2π gange for stort. f = ω / (2 · π)."});
    }
    c.push_back(
        {f / sqrt3, threePhase ? "Dit svar er √3 gange for lille. Har du glemt √3 – fx i P = U<sub>N</sub> · "
                                 "I<sub>N</sub> · √3 · cos φ, eller blandet fase- og netstørrelser "
                                 "(U<sub>F</sub> = U<sub>N</sub>/√3, I<sub>F</sub> = I<sub>N</sub>/√3)?"
                               : "Dit svar er √3 gange for lille."});
    c.push_back(
        {f * sqrt3, threePhase ? "Dit svar er √3 gange for stort. Har du blandet netspænding og fasespænding "
                                 "(U<sub>F</sub> = U<sub>N</sub>/√3) eller net- og fasestrøm "
                                 "(I<sub>F</sub> = I<sub>N</sub>/√3)?"
                               : "Dit svar er √3 gange for stort."});
    c.push_back({f / 2, cable ? "Dit svar er halvt så stort som facit. Har du glemt, at lederlængden er 2 × "
                                "kabellængden (strømmen løber frem og tilbage)?"
                              : "Dit svar er præcis halvt så stort som facit – har du glemt en faktor 2?"});
    c.push_back(
        {f * 2, cable ? "Dit svar er dobbelt så stort som facit. Har du ganget kabellængden med 2 to gange "
                        "– eller brugt 2 × længden i trefaset?"
                      : "Dit svar er præcis dobbelt så stort som facit."});
    c.push_back({f * 3, threePhase
                            ? "Dit svar er 3 gange for stort. Har du blandet effekten i én fase og den "
                              "samlede effekt – eller stjerne og trekant (P<sub>Δ</sub> = 3 · "
                              "P<sub>Y</sub>)?"
                            : "Dit svar er 3 gange for stort."});
    c.push_back({f / 3, threePhase
                            ? "Dit svar er 3 gange for lille. Har du kun regnet én fase med (P = 3 · "
                              "U<sub>F</sub> · I<sub>F</sub> · cos φ) – eller blandet stjerne og trekant?"
                            : "Dit svar er 3 gange for lille."});
    c.push_back({1 / f, parallel
                            ? "Dit svar er det omvendte af facit. Har du glemt at tage 1/… til sidst? Ved "
                              "parallelle modstande: R = 1 / (1/R₁ + 1/R₂ + …)."
                            : "Dit svar er det omvendte af facit (1 delt med svaret). Har du glemt at tage "
                              "1/… til sidst, eller byttet om på tæller og nævner?"});
    c.push_back({f * f, "Dit svar er facit i anden. Har du glemt at tage kvadratroden (√) til sidst?"});
    c.push_back({std::sqrt(f), "Dit svar er kvadratroden af facit. Har du glemt at sætte i anden (²)?"});
    c.push_back({f * 1000, "Dit svar er 1000 gange for stort." + kPrefixMessage});
    c.push_back({f / 1000, "Dit svar er 1000 gange for lille." + kPrefixMessage});
    c.push_back({f * 1e6, "Dit svar er en million gange for stort. Husk µ = 10⁻⁶: 50 µF = 50·10⁻⁶ F."});
    c.push_back({f / 1e6,
                 "Dit svar er en million gange for lille. Skriv kapaciteter i µF (fx 47 eller 47u) – "
                 "eller husk 10⁻⁶."});
    c.push_back({f * sqrt2, "Dit svar er √2 gange for stort. Har du brugt maksimalværdien i stedet for "
                            "effektværdien (U<sub>eff</sub> = U<sub>max</sub> / √2)?"});
    c.push_back({f / sqrt2, "Dit svar er √2 gange for lille. Har du blandet effektværdi og maksimalværdi "
                            "(U<sub>max</sub> = U<sub>eff</sub> · √2)?"});
    c.push_back({f * twoPi, alternating
                                ? "Dit svar er 2π gange for stort. Har du blandet X og L (X<sub>L</sub> = "
                                  "2 · π · f · L)?"
                                : "Dit svar er 2π gange for stort."});
    c.push_back({f / twoPi, alternating
                                ? "Dit svar er 2π gange for lille. Har du glemt 2 · π i X = 2 · π · f · L "
                                  "eller X<sub>C</sub> = 1/(2 · π · f · C)?"
                                : "Dit svar er 2π gange for lille."});
    c.push_back({f * 100, "Dit svar er 100 gange for stort – har du blandet procent og decimaltal?"});
    c.push_back({f / 100, "Dit svar er 100 gange for lille – skal svaret være i procent (× 100)?"});
    c.push_back({-f, "Talværdien er rigtig, men fortegnet er forkert."});
    if (ex.unit == "°") {
        c.push_back({f * 0.017453292519943295, "Dit svar ser ud til at være i radianer. Vinkler skal være i "
                                               "grader – sæt lommeregneren til DEG."});
        c.push_back({std::cos(f * std::numbers::pi / 180), "Du har angivet cos φ – der skal svares med selve "
                                                           "vinklen φ (φ = cos⁻¹(…))."});
    }
    if (ex.unit.empty() && f > 0 && f <= 1) {
        c.push_back({std::acos(f) * 180 / std::numbers::pi,
                     "Du har angivet vinklen φ – der skal svares med cos φ "
                     "(et tal mellem 0 og 1)."});
        c.push_back({std::acos(f), "Du har angivet vinklen i radianer – der skal svares med cos φ."});
    }
    return c;
}

std::string diagnoseAnswer(double answer, double facit, const Exercise& ex) {
    for (const DiagnosisCandidate& c : diagnosisCandidates(facit, ex)) {
        if (!std::isfinite(c.value) || c.value == 0) continue;
        if (std::fabs(answer - c.value) <= std::fabs(c.value) * kAnswerTolerance * (1 + 1e-9))
            return c.message;
    }
    if (std::fabs(answer - facit) / std::fabs(facit) <= 0.1)
        return "Du er tæt på. Forskellen skyldes nok afrunding undervejs – brug flere decimaler i "
               "mellemregningerne.";
    return {};
}

std::string verdictHtml(const AnswerJudgement& j, const Exercise& ex) {
    if (j.empty || j.unreadable)
        return msgBox(std::string("Jeg kan ikke læse dit svar. Skriv et tal, fx 2,38") +
                          (ex.scale != 1 ? " eller 70u" : "") + ".",
                      false);
    if (j.correct) {
        std::string html = "<div class=\"msg ok-box\">✓ <b>Rigtigt!</b>";
        // Within tolerance but not spot on: show the exact answer to compare with.
        if (j.relError > 0.005) html += " (det præcise svar er " + shownValue(ex.facit, ex.unit) + ")";
        return html + "</div>";
    }
    std::string html = "<div class=\"msg bad\">✗ Ikke helt. Prøv igen – eller tryk \"Hint\".</div>";
    if (const std::string tip = diagnoseAnswer(j.value, ex.facit, ex); !tip.empty())
        html += "<div class=\"note\"><b>Tip:</b> " + tip + "</div>";
    return html;
}

} // namespace fl
