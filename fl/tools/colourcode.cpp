// The colour code tools: rings read to a value with its tolerance (and, with
// six rings, its temperature coefficient), and a wanted value turned into
// the nearest standard value of a series and its rings.
#include "fl/tools/resistors.h"

#include "fl/expr/numbers.h"
#include "fl/fig/style.h"

#include <cmath>

namespace fl {

namespace {

using tool::hint;

std::string formValue(const FormMap& form, const std::string& key) {
    auto it = form.find(key);
    return it == form.end() ? std::string() : it->second;
}

// "4", "5" or "6"; anything else is 4.
int ringCount(const FormMap& form) {
    const std::string n = formValue(form, "ringe");
    return n == "5" ? 5 : n == "6" ? 6 : 4;
}

std::string bandName(const std::string& key) {
    const BandColour* b = findBand(key);
    return b ? b->name : key;
}

// What a ring at this place of an n-ring code says.
std::string ringRole(size_t place, size_t n) {
    const size_t digits = n == 4 ? 2 : 3;
    if (place < digits) return std::to_string(place + 1) + ". ciffer";
    if (place == digits) return "multiplikator";
    if (place == digits + 1) return "tolerance";
    return "temperaturkoefficient";
}

std::string multiplierText(int exponent) {
    return exponent == 0 ? std::string("× 1") : "× " + fmtNumber(scaledDigits(1, exponent), 10);
}

std::string percent(double p) {
    return "± " + fmtWithUnit(p, "%");
}

// What a ring means, for the table under the figure.
std::string meaning(const BandColour& b, size_t place, size_t n) {
    const size_t digits = n == 4 ? 2 : 3;
    if (place < digits) return std::to_string(b.digit);
    if (place == digits) return multiplierText(b.exponent);
    if (place == digits + 1) return percent(b.tolerance);
    return fmtNumber(b.tempco) + " ppm/K";
}

std::string ringTable(const std::vector<std::string>& keys) {
    std::string out =
        "<div class=\"tbl\"><table><tr><th>Ring</th><th>Farve</th><th>Betyder</th><th>Hvad</th></tr>";
    for (size_t i = 0; i < keys.size(); ++i) {
        const BandColour* b = findBand(keys[i]);
        if (!b) continue;
        out += "<tr><td>" + std::to_string(i + 1) + "</td><td>" + b->name + "</td><td>" +
               meaning(*b, i, keys.size()) + "</td><td>" + ringRole(i, keys.size()) + "</td></tr>";
    }
    return out + "</table></div>";
}

std::string ringNames(const std::vector<std::string>& keys) {
    std::string out;
    for (const std::string& k : keys) {
        if (k == "ingen") continue;
        if (!out.empty()) out += " – ";
        out += bandName(k);
    }
    return out;
}

// Which series hold the value, and the nearest of each that doesn't.
std::string seriesTable(double ohms) {
    std::string out = "<div class=\"tbl\"><table><tr><th>Række</th><th>Findes værdien?</th><th>Nærmeste "
                      "standardværdi</th></tr>";
    for (ESeries s : {ESeries::E12, ESeries::E24, ESeries::E96}) {
        const bool in = isStandard(ohms, s);
        out += std::string("<tr><td>") + seriesName(s) + "</td><td>" +
               (in ? "<span class=\"ok\">✓ ja</span>" : "nej") + "</td><td>" +
               ohmsText(nearestStandard(ohms, s)) + "</td></tr>";
    }
    return out + "</table></div>";
}

// The tolerance a series is sold with, as the last ring: E12 ±10 % (silver),
// E24 ±5 % (gold) on carbon resistors with 4 rings; metal film with 5 or 6
// rings and everything in E96 ±1 % (brown).
std::string toleranceFor(ESeries s, int rings) {
    if (rings == 4 && s == ESeries::E12) return "solv";
    if (rings == 4 && s == ESeries::E24) return "guld";
    return "brun";
}

// The short label under a ring: "4", "×10³", "±5 %", "100 ppm".
std::string ringLabel(const BandColour& b, size_t place, size_t n) {
    const size_t digits = n == 4 ? 2 : 3;
    if (place < digits) return b.digit >= 0 ? std::to_string(b.digit) : "?";
    if (place == digits) {
        if (b.exponent == 99) return "?";
        return b.exponent == 0 ? "×1" : b.exponent == 1 ? "×10" : "×10" + superscript(std::to_string(b.exponent));
    }
    if (place == digits + 1) return b.tolerance > 0 ? "±" + fmtWithUnit(b.tolerance, "%") : "?";
    return b.tempco > 0 ? fmtNumber(b.tempco) + " ppm" : "?";
}

} // namespace

FigureOut resistorFigure(const std::vector<std::string>& keys) {
    const size_t n = keys.size();
    if (n < 4 || n > 6) return {};
    constexpr int W = 560, H = 150;
    constexpr double axis = 52, bodyX = 110, bodyW = 340, bodyH = 52, ring = 16;
    // The value's rings from the left; tolerance (and coefficient) apart at
    // the right, with room for their longer labels.
    constexpr double stepLeft = 40, stepRight = 54, inset = 34;
    Canvas cv;
    cv.setBounds(W, H);
    cv.line(18, axis, bodyX + 4, axis, "ln");
    cv.line(bodyX + bodyW - 4, axis, W - 18, axis, "ln");
    // A body and rings have the colours of the thing, not of the theme.
    const std::string& edge = figColors().slot[3];
    cv.raw("<rect x=\"" + num(bodyX) + "\" y=\"" + num(axis - bodyH / 2) + "\" width=\"" + num(bodyW) +
           "\" height=\"" + num(bodyH) + "\" rx=\"18\" fill=\"" + (n == 4 ? "#e2c896" : "#8fb9e0") +
           "\" stroke=\"" + edge + "\" stroke-width=\"1.5\"/>");
    const size_t digits = n == 4 ? 2 : 3;
    for (size_t i = 0; i < n; ++i) {
        const bool left = i <= digits;
        const double x = left ? bodyX + inset + stepLeft * static_cast<double>(i)
                              : bodyX + bodyW - inset - ring - stepRight * static_cast<double>(n - 1 - i);
        const double room = (left ? stepLeft : stepRight) - 4;
        const BandColour* b = findBand(keys[i]);
        if (b && !b->hex.empty())
            cv.raw("<rect x=\"" + num(x) + "\" y=\"" + num(axis - bodyH / 2) + "\" width=\"" + num(ring) +
                   "\" height=\"" + num(bodyH) + "\" fill=\"" + b->hex + "\" stroke=\"" + edge +
                   "\" stroke-width=\"0.8\"/>");
        const double cx = x + ring / 2;
        cv.textFit(cx, axis + bodyH / 2 + 16, b ? ringLabel(*b, i, n) : "?", "middle", "sym", room);
        cv.textFit(cx, axis + bodyH / 2 + 36, b ? b->name : keys[i], "middle", "mut", room);
    }
    return {cv.body(), W, H, "Ringene læses fra venstre; toleranceringen sidder for sig selv i højre ende."};
}

std::string resistorSvg(const std::vector<std::string>& keys) {
    return svgDocument(resistorFigure(keys));
}

ToolOut colourToValue(const FormMap& form) {
    return runTool("Farvekode", [&](ToolOut& out) {
        const int n = ringCount(form);
        std::vector<std::string> keys;
        for (int i = 1; i <= n; ++i)
            keys.push_back(formValue(form, "r" + std::to_string(i)));
        const ColourReading reading = readBands(keys);
        if (!reading.error.empty()) {
            std::vector<std::string> bad;
            for (int place : reading.badRing)
                bad.push_back("r" + std::to_string(place));
            refuse(out, reading.error, bad);
            return;
        }
        const size_t digits = n == 4 ? 2 : 3;
        const BandColour& mult = *findBand(keys[digits]);
        long long whole = 0;
        std::string digitWords;
        for (size_t i = 0; i < digits; ++i) {
            const BandColour& b = *findBand(keys[i]);
            whole = whole * 10 + b.digit;
            digitWords += (i ? ", " : "") + b.name + " = " + std::to_string(b.digit);
        }

        ToolSheet s;
        s.vars = {{"cifre", static_cast<double>(whole)},
                  {"faktor", scaledDigits(1, mult.exponent)},
                  {"tol", reading.tolerance}};
        for (size_t i = 0; i < keys.size(); ++i)
            s.sections.given.push_back("Ring " + std::to_string(i + 1) + ": <b>" + bandName(keys[i]) +
                                       "</b> <span class=\"crumb\">– " + ringRole(i, keys.size()) +
                                       "</span>");
        s.sections.given.push_back(hint("Læs fra den ende, hvor ringene sidder tættest. Toleranceringen står "
                                        "lidt for sig selv i den anden "
                                        "ende."));

        s.sections.steps.push_back(
            {"Cifrene", "",
             hint("De første " + std::to_string(digits) + " ringe er cifre: " + digitWords + ".") +
                 eqTable({{tool::symbolHtml("cifre"), "<b>" + std::to_string(whole) + "</b>", {}, false}})});
        addStepBlock(s, "Multiplikatoren", "", {{"Ω", "cifre*faktor", "R"}},
                     hint("Ring " + std::to_string(digits + 1) + " (" + mult.name + ") ganger med " +
                          fmtNumber(scaledDigits(1, mult.exponent), 10) + "."));
        addStepBlock(s, "Tolerancen", "", {{"Ω", "R*(1-tol/100)", "R_min"}, {"Ω", "R*(1+tol/100)", "R_max"}},
                     hint("Ring " + std::to_string(digits + 2) + " (" + bandName(keys[digits + 1]) +
                          ") betyder " + percent(reading.tolerance) +
                          ": den rigtige modstand ligger et sted mellem " + tool::symbolHtml("R_min") +
                          " og " + tool::symbolHtml("R_max") + "."));
        if (n == 6) {
            s.vars["TK"] = reading.tempco;
            addStepBlock(s, "Temperaturkoefficienten", "", {{"Ω", "R*TK/1000000", "dR"}},
                         hint("Ring 6 (" + bandName(keys[5]) + ") betyder " + fmtNumber(reading.tempco) +
                              " ppm/K: modstanden ændrer sig højst " + fmtNumber(reading.tempco) +
                              " milliontedele pr. grad. dR er ændringen pr. grad (kelvin)."));
        }

        const double r = s.vars.at("R");
        s.sections.figure = figureMarkup(resistorFigure(keys));
        s.sections.results = ringTable(keys) + seriesTable(r);
        bool standard = false;
        for (ESeries e : {ESeries::E12, ESeries::E24, ESeries::E96})
            standard = standard || isStandard(r, e);
        if (!standard)
            s.sections.results +=
                "<div class=\"note\">" + ohmsText(r) +
                " er ingen standardværdi. Tjek, at du læser ringene i den rigtige rækkefølge og har farverne "
                "rigtigt – brun, rød og orange ligner hinanden i dårligt lys.</div>";
        s.id = "farvesheet";
        s.crumb = "Farvekode · " + std::to_string(n) + " ringe";
        s.title = ohmsText(r) + " " + percent(reading.tolerance);
        s.sections.answer = "<span class=\"big\">R = " + ohmsText(r) + " " + percent(reading.tolerance) +
                            "</span> <span class=\"crumb\">" + ohmsText(s.vars.at("R_min")) + " … " +
                            ohmsText(s.vars.at("R_max")) +
                            (n == 6 ? " · " + fmtNumber(reading.tempco) + " ppm/K" : std::string()) +
                            "</span>";
        finish(out, s, {{"R", r, "Ω"}});
    });
}

ToolOut valueToColour(const FormMap& form) {
    return runTool("Farvekode", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, {{"R", formValue(form, "R")}}, in)) return;
        if (!in.has("R")) {
            refuse(out, tool::fillIn({"R"}), {"R"});
            return;
        }
        const double wanted = in.get("R");
        if (!(wanted > 0)) {
            refuse(out, "Modstanden skal være større end 0 Ω.", {"R"});
            return;
        }
        ESeries series = ESeries::E24;
        seriesFromName(formValue(form, "serie"), &series);
        int rings = ringCount(form);
        std::string ringNote;
        if (series == ESeries::E96 && rings == 4) {
            rings = 5;
            ringNote = hint("E96-værdier har tre cifre, så der skal mindst 5 ringe til.");
        }
        const int digits = rings == 4 ? 2 : 3;
        const double standard = nearestStandard(wanted, series);
        std::vector<std::string> keys = valueBands(standard, digits);
        if (keys.empty()) {
            refuse(out,
                   "Farvekoden kan ikke vise " + ohmsText(standard) + " – med " + std::to_string(rings) +
                       " ringe går den fra " + ohmsText(scaledDigits(digits == 2 ? 10 : 100, -2)) + " til " +
                       ohmsText(scaledDigits(digits == 2 ? 99 : 999, 9)) + ".",
                   {"R"});
            return;
        }
        keys.push_back(toleranceFor(series, rings));
        if (rings == 6) keys.push_back("brun");

        ToolSheet s;
        s.vars = {{"R", wanted}, {"R_E", standard}};
        s.shown = in.shown;
        addGivenInput(s, in, "R", "den ønskede modstand", "Ω");
        s.sections.given.push_back(
            std::string("Række: <b>") + seriesName(series) + "</b> <span class=\"crumb\">– " +
            std::to_string(seriesDigits(series).size()) + " værdier pr. dekade</span>");
        s.sections.given.push_back("Ringe: <b>" + std::to_string(rings) + "</b>");

        double below = NAN, above = NAN;
        standardNeighbours(wanted, series, &below, &above);
        const std::string name = seriesName(series);
        std::string why;
        if (std::fabs(standard - wanted) <= 1e-9 * wanted)
            why = ohmsText(wanted) + " er selv en " + name + "-værdi.";
        else
            why = "I " + name + " ligger " + ohmsText(wanted) + " mellem " + ohmsText(below) + " og " +
                  ohmsText(above) + ". Den nærmeste – regnet i procent, som rækkerne er bygget – er " +
                  ohmsText(standard) + ".";
        addStepBlock(s, "Nærmeste standardværdi i " + name, "", {{"%", "(R_E-R)/R*100", "afvigelse"}},
                     hint(why));

        const double mult = scaledDigits(1, findBand(keys[static_cast<size_t>(digits)])->exponent);
        std::string digitText;
        for (int i = 0; i < digits; ++i)
            digitText += std::to_string(findBand(keys[static_cast<size_t>(i)])->digit);
        s.sections.steps.push_back(
            {"Cifre og multiplikator", "",
             ringNote +
                 hint(ohmsText(standard) + " = " + digitText + " · " + fmtNumber(mult, 10) +
                      " Ω: " + std::to_string(digits) + " ringe til cifrene og én, der ganger med " +
                      fmtNumber(mult, 10) + ".") +
                 ringTable(keys)});
        const BandColour& tol = *findBand(keys[static_cast<size_t>(digits) + 1]);
        s.sections.steps.push_back(
            {"Tolerancen", "",
             hint(std::string(name) + "-modstande " + (rings == 4 ? "med 4 ringe " : "med 5 eller 6 ringe ") +
                  "sælges normalt med " + percent(tol.tolerance) + ": " + tol.name + " ring." +
                  (rings == 6
                       ? " Den 6. ring er temperaturkoefficienten; 100 ppm/K (brun) er det almindelige."
                       : ""))});

        s.id = "farvesheet";
        s.crumb = "Farvekode · " + name + " · " + std::to_string(rings) + " ringe";
        s.title = ohmsText(standard) + ": " + ringNames(keys);
        s.sections.figure = figureMarkup(resistorFigure(keys));
        s.sections.answer = "<span class=\"big\">" + ringNames(keys) + "</span> <span class=\"crumb\">" +
                            ohmsText(standard) + " " + percent(tol.tolerance) + "</span>";
        finish(out, s, {{"R_E", standard, "Ω"}});
    });
}

} // namespace fl
