// Formula figures of direct current and the trade: small circuits with their
// source, components, meters and current arrows, the sine of the effective
// value, the transformer and the three-phase connections. Each is laid out on
// a fixed grid of its own; numbers only change the labels.
#include "fl/expr/numbers.h"
#include "fl/fig/formulafig_parts.h"
#include "fl/fig/symbols.h"

#include <algorithm>
#include <cmath>

namespace fl::figs {

namespace {

constexpr double kPi = 3.141592653589793;

// A text whose class is that of the sought quantity.
void label(Canvas& cv, const Given& g, double x, double y, const std::string& symbol, const std::string& unit,
           std::string_view anchor, const std::string& shown = {}, const std::string& extraCls = {}) {
    std::string cls = g.cls(symbol);
    if (!extraCls.empty()) cls += (cls.empty() ? "" : " ") + extraCls;
    cv.text(x, y, g.label(symbol, unit, shown), anchor, cls);
}

// The same at the first of `spots` where it covers nothing drawn so far.
void labelAmong(Canvas& cv, const Given& g, const std::vector<Canvas::Spot>& spots, const std::string& symbol,
                const std::string& unit) {
    cv.textAmong(spots, g.label(symbol, unit), g.cls(symbol));
}

// A voltage marked between two points: a thin line with a head at the plus end.
void voltageMark(Canvas& cv, double x1, double y1, double x2, double y2) {
    cv.arrow(x1, y1, x2, y2, "ref", 9, 7);
}

// The closed loop of a small circuit.
void loop(Canvas& cv, double x0, double y0, double x1, double y1) {
    cv.polyline({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}, {x0, y0}}, "wire");
}

Canvas sized() {
    Canvas cv;
    cv.setBounds(460, 280);
    cv.keepSpace();
    return cv;
}

void dot(Canvas& cv, double x, double y) { cv.circle(x, y, 3.2, "node"); }

void terminal(Canvas& cv, double x, double y) { cv.circle(x, y, 4, "comp"); }

} // namespace

FigureOut circFigure(const Given& g) {
    Canvas cv = sized();
    loop(cv, 130, 60, 330, 220);
    cellSymbol(cv, {130, 140, true, 0});
    resistorSymbol(cv, {330, 140, true, 0});
    label(cv, g, 104, 140, "U", "V", "end");
    label(cv, g, 346, 140, "R", "Ω", "start");
    if (g.mentions("P")) labelAmong(cv, g, {{346, 166, "start"}, {230, 180, "middle"}}, "P", "W");
    currentArrow(cv, 230, 60, 1, 0, g.label("I", "A"), g.cls("I").empty() ? "cur" : "hl");
    return {cv.body(), 460, 280, {}, cv.takeShapes()};
}

FigureOut par2Figure(const Given& g) {
    // Each resistor's label stands right of it, inside the group's frame: the
    // branches move apart for a long value (a longer one still is set
    // smaller), and the whole is centred.
    const std::string l1 = g.label("R1", "Ω"), l2 = g.label("R2", "Ω");
    const double room1 = std::clamp(textWidth(l1, g.cls("R1")), 40.0, 120.0);
    const double room2 = std::clamp(textWidth(l2, g.cls("R2")), 40.0, 120.0);
    const double r1 = 150, r2 = r1 + 16 + room1 + 14, right = r2 + 16 + room2 + 10;
    const double dx = 230 - (24 + right) / 2;
    const double source = 40 + dx, a = r1 + dx, b = r2 + dx, left = 116 + dx, frameR = right + dx;
    Canvas cv = sized();
    cv.polyline({{a, 50}, {source, 50}, {source, 230}, {a, 230}}, "wire");
    cv.line(a, 50, b, 50, "wire");
    cv.line(a, 230, b, 230, "wire");
    cellSymbol(cv, {source, 140, true, 0});
    resistorSymbol(cv, {a, 140, true, 90});
    resistorSymbol(cv, {b, 140, true, 90});
    dot(cv, a, 50);
    dot(cv, a, 230);
    cv.rect(left, 34, frameR - left, 212, "gbox", 8);
    cv.textFit(a + 16, 140, l1, "start", g.cls("R1"), room1);
    cv.textFit(b + 16, 140, l2, "start", g.cls("R2"), room2);
    currentArrow(cv, a, 196, 0, 1, "I<sub>1</sub>");
    currentArrow(cv, b, 196, 0, 1, "I<sub>2</sub>");
    currentArrow(cv, (source + left) / 2, 50, 1, 0, "I");
    cv.textFit((left + frameR) / 2, 262, g.label("Rt", "Ω"), "middle", g.cls("Rt"), 440);
    return {cv.body(), 460, 280, {}, cv.takeShapes()};
}

FigureOut parIFigure(const Given& g) {
    struct Branch {
        std::string k, symbol;
    };
    std::vector<Branch> branches{{"R", "I_R"}};
    const bool coil = g.mentions("I_L"), cap = g.mentions("I_C");
    if (coil || !cap) branches.push_back({"L", "I_L"});
    if (cap) branches.push_back({"C", "I_C"});
    const bool three = branches.size() == 3;
    const double source = three ? 60 : 80, step = three ? 100 : 140, first = three ? 160 : 200;
    const double last = first + step * static_cast<double>(branches.size() - 1);

    Canvas cv = sized();
    cv.polyline({{first, 50}, {source, 50}, {source, 230}, {first, 230}}, "wire");
    cv.line(first, 50, last, 50, "wire");
    cv.line(first, 230, last, 230, "wire");
    acSourceSymbol(cv, {source, 140, true, 0});
    for (size_t k = 0; k < branches.size(); ++k) {
        const double x = first + step * static_cast<double>(k);
        const SymbolAt at{x, 120, true, 70};
        if (branches[k].k == "R") resistorSymbol(cv, at);
        else if (branches[k].k == "L") coilSymbol(cv, at);
        else capacitorSymbol(cv, at);
        cv.line(x, 190, x, 230, "wire");
        cv.text(x - 22, 120, branches[k].k, "end", "sym");
        const std::string cls = g.cls(branches[k].symbol);
        cv.arrow(x, 166, x, 206, "cur", 11, 8);
        cv.textFit(x + 8, 186, g.label(branches[k].symbol, "A"), "start", cls.empty() ? "cur" : "hl", step - 14);
        if (k + 1 < branches.size()) {
            dot(cv, x, 50);
            dot(cv, x, 230);
        }
    }
    currentArrow(cv, (source + first) / 2, 50, 1, 0, g.label("I", "A"), g.cls("I").empty() ? "cur" : "hl");
    std::string caption = "Grenstrømmene lægges sammen som vektorer til den samlede strøm I";
    if (g.mentions("cosphi"))
        caption += " · " + g.label("cosphi", "") + (g.cls("cosphi").empty() ? "" : " (søgt)");
    return {cv.body(), 460, 280, caption, cv.takeShapes()};
}

FigureOut battFigure(const Given& g) {
    const bool shorted = g.mentions("Ik");
    const bool cells = g.mentions("n");
    Canvas cv = sized();
    cv.polyline({{430, 60}, {150, 60}, {150, 220}, {430, 220}, {430, 60}}, "wire");
    // Inside the battery: the ideal source and the inner resistance.
    cellSymbol(cv, {150, 140, true, 0});
    resistorSymbol(cv, {215, 60, false, 0});
    cv.rect(106, 28, 170, 222, "gbox", 8);
    cv.text(114, 40, cells ? "Batteri (n celler)" : "Batteriet", "start", "glab");
    terminal(cv, 276, 60);
    terminal(cv, 276, 220);
    label(cv, g, 215, 86, "RI", "Ω", "middle");
    if (g.mentions("UI")) label(cv, g, 215, 108, "UI", "V", "middle");
    if (cells) label(cv, g, 200, 180, "n", "", "middle");
    // Beside the cell inside the frame, else outside it.
    labelAmong(cv, g, {{126, 140, "end"}, {98, 140, "end"}, {162, 150, "start"}, {162, 200, "start"}}, "E", "V");
    const std::string current = shorted ? "Ik" : "I";
    if (shorted || g.mentions("I"))
        currentArrow(cv, 353, 60, 1, 0, g.label(current, "A"), g.cls(current).empty() ? "cur" : "hl");
    if (!shorted) {
        resistorSymbol(cv, {353, 220, false, 0});
        label(cv, g, 353, 246, "Ry", "Ω", "middle");
        if (g.mentions("Uy")) {
            voltageMark(cv, 292, 200, 292, 80);
            labelAmong(cv, g, {{300, 140, "start"}, {300, 160, "start"}}, "Uy", "V");
        }
    }
    std::string caption = "Batteriet = en ideel spændingskilde E i serie med den indre modstand R<sub>I</sub>";
    if (cells) {
        const double n = g.pos("n");
        caption = std::isfinite(n) ? "Batteri med " + fmtNumber(n) + " celler" : "Batteri med n celler";
        caption += ": E og R<sub>I</sub> gælder pr. celle";
    }
    if (shorted) caption = "Kortslutning: kun den indre modstand begrænser strømmen";
    return {cv.body(), 460, 280, caption, cv.takeShapes()};
}

FigureOut cableFigure(const Given& g, bool drop) {
    Canvas cv = sized();
    cv.polyline({{120, 140}, {120, 90}, {340, 90}, {340, 190}, {120, 190}, {120, 140}}, "wire");
    acSourceSymbol(cv, {120, 140, true, 0});
    resistorSymbol(cv, {340, 140, true, 0});
    cv.text(340, 214, "Belastning", "middle", "mut");
    // The two conductors of the cable, frem and tilbage.
    cv.rect(170, 82, 140, 16, "gbox", 6);
    cv.rect(170, 182, 140, 16, "gbox", 6);
    cv.text(240, 70, "frem", "middle", "mut");
    cv.text(240, 212, "tilbage", "middle", "mut");
    if (drop) {
        label(cv, g, 96, 140, "U", "V", "end");
        label(cv, g, 356, 140, "UB", "V", "start");
        label(cv, g, 240, 130, "dU", "V", "middle");
        if (g.mentions("dUp")) label(cv, g, 240, 154, "dUp", "%", "middle");
        if (g.mentions("RL")) label(cv, g, 240, 244, "RL", "Ω", "middle");
        if (g.mentions("I")) currentArrow(cv, 145, 90, 1, 0, g.label("I", "A"), g.cls("I").empty() ? "cur" : "hl");
    } else {
        label(cv, g, 240, 122, "rho", "Ω·mm²/m", "middle");
        label(cv, g, 240, 144, "q", "mm²", "middle");
        label(cv, g, 240, 166, "l", "m", "middle", "l (i alt)");
        label(cv, g, 240, 244, "RL", "Ω", "middle");
    }
    const double l = g.pos("l");
    const std::string length = std::isfinite(l) ? fmtWithUnit(l / 2, "m") : std::string("l/2");
    return {cv.body(), 460, 280, "kabel: " + length + " frem + " + length + " tilbage", cv.takeShapes()};
}

FigureOut shuntFigure(const Given& g) {
    Canvas cv = sized();
    cv.line(40, 145, 130, 145, "wire");
    cv.line(330, 145, 420, 145, "wire");
    cv.line(130, 95, 130, 195, "wire");
    cv.line(330, 95, 330, 195, "wire");
    meterSymbol(cv, {230, 95, false, 100}, "A");
    resistorSymbol(cv, {230, 195, false, 100});
    dot(cv, 130, 145);
    dot(cv, 330, 145);
    currentArrow(cv, 80, 145, 1, 0, g.label("I", "A"), g.cls("I").empty() ? "cur" : "hl");
    label(cv, g, 230, 60, "IA", "A", "middle", {}, g.cls("IA").empty() ? "cur" : "");
    label(cv, g, 230, 130, "UA", "V", "middle");
    label(cv, g, 230, 226, "Rsh", "Ω", "middle");
    cv.arrow(160, 195, 180, 195, "cur", 9, 7);
    return {cv.body(), 460, 280,
            "Shunten sidder parallelt med amperemeteret: I<sub>shunt</sub> = I − I<sub>A</sub> og U<sub>shunt</sub> = "
            "U<sub>A</sub>",
            cv.takeShapes()};
}

FigureOut formodFigure(const Given& g) {
    Canvas cv = sized();
    // The wire stops at each symbol, so that nothing runs behind the meter's letter.
    cv.line(50, 110, 146, 110, "wire");
    cv.line(194, 110, 294, 110, "wire");
    cv.line(326, 110, 410, 110, "wire");
    resistorSymbol(cv, {170, 110, false, 0});
    meterSymbol(cv, {310, 110, false, 0}, "V");
    terminal(cv, 50, 110);
    terminal(cv, 410, 110);
    label(cv, g, 170, 80, "RF", "Ω", "middle");
    label(cv, g, 310, 78, "RV", "Ω", "middle");
    // The voltages as spans below the line.
    const auto span = [&](double x0, double x1, double y) {
        cv.line(x0, y, x1, y, "thin");
        cv.line(x0, y - 6, x0, y + 6, "thin");
        cv.line(x1, y - 6, x1, y + 6, "thin");
    };
    span(250, 370, 160);
    label(cv, g, 310, 178, "UV", "V", "middle");
    span(50, 410, 214);
    label(cv, g, 230, 232, "U", "V", "middle");
    return {cv.body(), 460, 280, "Formodstanden sidder i serie med voltmeteret, så strømmen er den samme",
            cv.takeShapes()};
}

FigureOut effFigure(const Given& g) {
    const double umax = firstOf({g.pos("Umax"), g.pos("Ueff") * std::sqrt(2.0)}, 325);
    AxesPlot plot;
    plot.x0 = 0, plot.x1 = 20, plot.y0 = -umax, plot.y1 = umax;
    plot.xLabel = "t [ms]";
    plot.yLabel = "u [V]";
    AxesPlot::Curve sine;
    sine.cls = "w1";
    for (int k = 0; k <= 100; ++k)
        sine.points.push_back({k * 0.2, umax * std::sin(2 * kPi * k / 100.0)});
    plot.curves.push_back(std::move(sine));
    const double ueff = umax / std::sqrt(2.0);
    plot.overlay = [&g, umax, ueff](Canvas& cv, const std::function<Pt(Pt)>& map) {
        const Pt a = map({0, ueff}), b = map({20, ueff});
        cv.line(a.x, a.y, b.x, b.y, "dash");
        // Past 7,5 ms the curve has fallen below U_eff, so the text above the line is clear of it.
        const Pt e = map({8, ueff});
        cv.text(e.x, e.y - 12, g.label("Ueff", "V"), "start", g.cls("Ueff").empty() ? "t2" : "hl");
        // Above the flat top of the curve, not on it.
        const Pt peak = map({5, umax});
        cv.circle(peak.x, peak.y, 3.5, "node");
        cv.text(peak.x + 8, peak.y - 13, g.label("Umax", "V"), "start", g.cls("Umax").empty() ? "t1" : "hl");
    };
    FigureOut f = drawAxes(plot);
    f.caption = "Sinusspænding ved 50 Hz: U<sub>eff</sub> = U<sub>max</sub> / √2 ≈ 0,707 · U<sub>max</sub>";
    return f;
}

FigureOut trafoFigure(const Given& g) {
    Canvas cv = sized();
    cv.polyline({{146, 80}, {200, 80}, {200, 116}}, "wire");
    cv.polyline({{146, 200}, {200, 200}, {200, 164}}, "wire");
    cv.polyline({{314, 80}, {260, 80}, {260, 116}}, "wire");
    cv.polyline({{314, 200}, {260, 200}, {260, 164}}, "wire");
    coilSymbol(cv, {200, 140, true, 0});
    coilSymbol(cv, {260, 140, true, 0});
    // The iron core between the windings.
    cv.line(222, 100, 222, 180, "ln");
    cv.line(238, 100, 238, 180, "ln");
    for (double x : {146.0, 314.0})
        for (double y : {80.0, 200.0})
            terminal(cv, x, y);
    label(cv, g, 196, 228, "N1", "", "end");
    label(cv, g, 264, 228, "N2", "", "start");
    voltageMark(cv, 132, 188, 132, 92);
    voltageMark(cv, 328, 188, 328, 92);
    cv.textFit(124, 140, g.label("U1", "V", "U<sub>1</sub>"), "end", g.cls("U1"), 118);
    cv.textFit(336, 140, g.label("U2", "V", "U<sub>2</sub>"), "start", g.cls("U2"), 118);
    if (g.mentions("I1"))
        currentArrow(cv, 173, 80, 1, 0, g.label("I1", "A"), g.cls("I1").empty() ? "cur" : "hl");
    if (g.mentions("I2"))
        currentArrow(cv, 287, 80, 1, 0, g.label("I2", "A"), g.cls("I2").empty() ? "cur" : "hl");
    std::string caption = "Transformer: to viklinger på samme jernkerne";
    if (g.mentions("u")) caption += " · " + g.label("u", "") + " = U<sub>1</sub> / U<sub>2</sub>";
    return {cv.body(), 460, 280, caption, cv.takeShapes()};
}

FigureOut threePhaseFigure(const Given& g, const std::string& key) {
    Canvas cv = sized();
    const double ys[3] = {60, 130, 200};
    for (int k = 0; k < 3; ++k)
        cv.text(30, ys[k], "L" + std::to_string(k + 1), "end", "sym");
    // The line voltage between L1 and L2, the line current in L1.
    voltageMark(cv, 70, ys[1] - 6, 70, ys[0] + 6);
    label(cv, g, 78, 95, "U_N", "V", "start");

    std::string caption;
    if (key == "tfY") {
        for (int k = 0; k < 3; ++k) {
            cv.line(36, ys[k], 260, ys[k], "wire");
            resistorSymbol(cv, {300, ys[k], false, 0});
            cv.line(324, ys[k], 370, ys[k], "wire");
        }
        cv.line(370, ys[0], 370, ys[2], "wire");
        dot(cv, 370, ys[1]);
        cv.text(382, ys[1], "N", "start", "sym");
        if (g.mentions("I_N")) currentArrow(cv, 190, ys[0], 1, 0, g.label("I_N", "A"), g.cls("I_N").empty() ? "cur" : "hl");
        label(cv, g, 300, 34, "U_F", "V", "middle");
        if (g.mentions("I_F")) label(cv, g, 300, 84, "I_F", "A", "middle");
        label(cv, g, 300, 226, "R", "Ω", "middle");
        caption = "Stjerne: U<sub>F</sub> = U<sub>N</sub> / √3 og I<sub>F</sub> = I<sub>N</sub>";
    } else if (key == "tfD") {
        // The delta's corners sit on the three lines, so each line runs straight to its corner.
        const Pt top{340, ys[0]}, left{270, ys[1]}, bottom{340, ys[2]};
        cv.line(36, ys[0], top.x, top.y, "wire");
        cv.line(36, ys[1], left.x, left.y, "wire");
        cv.line(36, ys[2], bottom.x, bottom.y, "wire");
        cv.polygon({top, left, bottom}, "wire");
        // A resistor on each side of the delta, turned along it.
        for (auto [a, b] : {std::pair{top, left}, std::pair{left, bottom}, std::pair{bottom, top}}) {
            const double mx = (a.x + b.x) / 2, my = (a.y + b.y) / 2;
            const double len = std::hypot(b.x - a.x, b.y - a.y);
            const double ux = (b.x - a.x) / len, uy = (b.y - a.y) / len;
            const double hx = ux * 22, hy = uy * 22, wx = -uy * 8, wy = ux * 8;
            cv.polygon({{mx - hx - wx, my - hy - wy}, {mx + hx - wx, my + hy - wy}, {mx + hx + wx, my + hy + wy},
                        {mx - hx + wx, my - hy + wy}},
                       "comp");
        }
        for (Pt p : {top, left, bottom})
            dot(cv, p.x, p.y);
        if (g.mentions("I_N")) currentArrow(cv, 160, ys[0], 1, 0, g.label("I_N", "A"), g.cls("I_N").empty() ? "cur" : "hl");
        label(cv, g, 356, ys[1], "I_F", "A", "start");
        label(cv, g, 292, 182, "R", "Ω", "end");
        caption = "Trekant: U<sub>F</sub> = U<sub>N</sub> og I<sub>F</sub> = I<sub>N</sub> / √3";
    } else {
        for (int k = 0; k < 3; ++k)
            cv.line(36, ys[k], 270, ys[k], "wire");
        cv.rect(270, 36, 150, 188, "comp", 8);
        cv.text(345, 52, "Belastning 3~", "middle", "mut");
        if (g.mentions("I_N")) currentArrow(cv, 190, ys[0], 1, 0, g.label("I_N", "A"), g.cls("I_N").empty() ? "cur" : "hl");
        double y = 84;
        for (const auto& [sym, unit] : std::initializer_list<std::pair<const char*, const char*>>{
                 {"S", "VA"}, {"P", "W"}, {"Q", "VAr"}, {"cosphi", ""}, {"phi", "°"}, {"U_F", "V"}, {"I_F", "A"}}) {
            if (!g.mentions(sym)) continue;
            cv.textFit(345, y, g.label(sym, unit), "middle", g.cls(sym), 140);
            y += 24;
        }
        if (g.mentions("I_F") || g.mentions("U_F"))
            caption = "Med fasestørrelserne: P = 3 · U<sub>F</sub> · I<sub>F</sub> · cos φ";
        else caption = "Trefaset belastning: S = U<sub>N</sub> · I<sub>N</sub> · √3";
    }
    if (g.mentions("P_fejl")) {
        label(cv, g, 230, 262, "P_fejl", "W", "middle");
    }
    return {cv.body(), 460, 280, caption, cv.takeShapes()};
}

} // namespace fl::figs
