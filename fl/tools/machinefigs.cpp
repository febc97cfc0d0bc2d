// The machine tools' figures, drawn on the figure builder's canvas with its
// class words; the two strokes it has no word for (the grey and blue sides of
// the power triangle) take the palette's colours directly.
#include "fl/tools/machinefigs.h"

#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"
#include "fl/fig/symbols.h"
#include "fl/tools/frame.h"

#include <cmath>

namespace fl {

namespace {

constexpr double kDeg = 0.017453292519943295; // π/180

double valueOf(const MachineValues& v, const std::string& key) {
    auto it = v.values.find(key);
    return it == v.values.end() ? NAN : it->second;
}

struct Label {
    std::string text;
    std::string cls;
};

// "P<sub>1</sub> = 6325,4 W", in the accent colour when found, "?" when unknown.
Label label(const MachineValues& v, const std::string& key, const std::string& unit) {
    const std::string symbol = symbolDisplay(key);
    const double x = valueOf(v, key);
    if (!std::isfinite(x)) return {symbol + " = ?", "mut"};
    return {symbol + " = " + tool::formatValue(x, unit), v.found.count(key) ? "hl" : ""};
}

void put(Canvas& cv, double x, double y, const Label& l, const char* anchor = "middle", double maxWidth = 0) {
    if (maxWidth > 0)
        cv.textFit(x, y, l.text, anchor, l.cls, maxWidth);
    else
        cv.text(x, y, l.text, anchor, l.cls);
}

// A line in a palette slot: the triangle's grey and blue sides.
void stroke(Canvas& cv, Pt a, Pt b, int slot, double width) {
    if (cv.space) cv.space->segment(a, b);
    cv.raw("<line x1=\"" + num(a.x) + "\" y1=\"" + num(a.y) + "\" x2=\"" + num(b.x) + "\" y2=\"" + num(b.y) +
           "\" stroke=\"" + figColors().slot[slot] + "\" stroke-width=\"" + num(width) +
           "\" stroke-linecap=\"round\"/>");
}

// A resistor lying along a→b, with wires from both ends to its body.
void resistorBetween(Canvas& cv, Pt a, Pt b) {
    const double len = std::hypot(b.x - a.x, b.y - a.y);
    if (!(len > 60)) return;
    const double ux = (b.x - a.x) / len, uy = (b.y - a.y) / len;
    const Pt m{(a.x + b.x) / 2, (a.y + b.y) / 2};
    const double hl = 24, hw = 9;
    cv.line(a.x, a.y, m.x - ux * hl, m.y - uy * hl, "wire");
    cv.line(m.x + ux * hl, m.y + uy * hl, b.x, b.y, "wire");
    cv.polygon({{m.x - ux * hl - uy * hw, m.y - uy * hl + ux * hw},
                {m.x + ux * hl - uy * hw, m.y + uy * hl + ux * hw},
                {m.x + ux * hl + uy * hw, m.y + uy * hl - ux * hw},
                {m.x - ux * hl + uy * hw, m.y - uy * hl - ux * hw}},
               "comp");
}

// A standing coil of `bumps` half circles of radius 9 from (x, y0) down,
// bulging to the left (−1) or the right (+1). Bows rather than one path, so
// that the live figure can paint it from shapes.
void standingCoil(Canvas& cv, double x, double y0, int bumps, int side) {
    for (int i = 0; i < bumps; ++i)
        cv.bow(x, y0 + 9 + 18 * i, 9, 90, side < 0 ? 270 : -90, "wire coil");
}

} // namespace

FigureOut compensationFigure(const MachineValues& v) {
    const double p = valueOf(v, "P"), q1 = valueOf(v, "Q1"), q2 = valueOf(v, "Q2"), qc = valueOf(v, "QC");
    const double phi1 = valueOf(v, "phi1"), phi2 = valueOf(v, "phi2");
    if (!(p > 0) || !(q1 > 0) || !std::isfinite(q2) || !std::isfinite(phi1) || !std::isfinite(phi2))
        return {};
    FigureOut out;
    out.w = 540, out.h = 300;
    Canvas cv;
    cv.setBounds(out.w, out.h);
    cv.keepSpace();
    // True to scale: P along the foot, Q upright, in the room left of the labels.
    const double x0 = 56, yb = 236, roomW = 290, roomH = 196;
    const double s = std::min(roomW / p, roomH / q1);
    const Pt o{x0, yb}, foot{x0 + p * s, yb}, top1{foot.x, yb - q1 * s},
        top2{foot.x, yb - std::max(q2, 0.0) * s};

    // The smaller angle has the wider bow, so that each name can stand by its own bow.
    const double r1 = 50, r2 = 78;
    cv.bow(o.x, o.y, r1, 0, phi1, "thin");
    cv.bow(o.x, o.y, r2, 0, phi2, "ang");
    stroke(cv, o, top1, 3, 2.5);
    stroke(cv, top2, top1, 3, 2.5);
    stroke(cv, o, top2, 5, 3.5);
    stroke(cv, foot, top2, 5, 3.5);
    cv.line(o.x, o.y, foot.x, foot.y, "ln");

    // The part the capacitors take away, bracketed beside the upright.
    const double bx = foot.x + 14;
    cv.line(bx, top2.y, bx, top1.y, "dash");
    cv.line(bx - 5, top1.y, bx + 5, top1.y, "dash");
    cv.line(bx - 5, top2.y, bx + 5, top2.y, "dash");

    const Label lp = label(v, "P", "W"), l1 = label(v, "Q1", "VAr"), l2 = label(v, "Q2", "VAr"),
                lc = label(v, "QC", "VAr");
    put(cv, (o.x + foot.x) / 2, yb + 20, lp);
    // Beside the bracket, each at the first place clear of the others.
    const double mc = (top1.y + top2.y) / 2;
    cv.textAmong(
        {{bx + 10, top1.y - 4, "start"}, {bx + 10, top1.y - 14, "start"}, {bx + 10, top1.y - 26, "start"}},
        l1.text, "mut");
    cv.textAmong({{bx + 10, mc + 6, "start"},
                  {bx + 10, mc + 16, "start"},
                  {bx + 10, top2.y + 12, "start"},
                  {bx + 10, top2.y + 24, "start"}},
                 lc.text, "t2");
    const double m2 = std::min(yb - 10, (yb + top2.y) / 2 + 10);
    cv.textAmong({{bx + 10, m2, "start"},
                  {bx + 10, m2 + 14, "start"},
                  {bx + 10, m2 - 14, "start"},
                  {bx + 10, yb - 4, "start"}},
                 l2.text, "hl");
    // The hypotenuses' labels beside their lines, above first, past the middle.
    const auto along = [&](Pt end, double at, double off) {
        const double len = std::hypot(end.x - o.x, end.y - o.y);
        const double nx = (end.y - o.y) / len, ny = -(end.x - o.x) / len; // to the upper left
        return Pt{o.x + (end.x - o.x) * at + nx * off, o.y + (end.y - o.y) * at + ny * off};
    };
    const auto beside = [&](Pt end, std::initializer_list<double> offsets) {
        std::vector<Canvas::Spot> spots;
        for (const bool turned : {false, true})
            for (double off : offsets)
                for (double at : {0.5, 0.62, 0.4, 0.75, 0.3}) {
                    const Pt s = along(end, at, off);
                    spots.push_back({s.x, s.y, (off > 0) != turned ? "end" : "start"});
                }
        return spots;
    };
    cv.textAmong(beside(top1, {14, 24, -14}), label(v, "S1", "VA").text, "mut");
    cv.textAmong(beside(top2, {17, -14, 27, -24}), label(v, "S2", "VA").text, "hl");
    // φ₁ just outside its hypotenuse by its bow; φ₂ in its own sector beyond its bow.
    const auto polar = [&](double deg, double r) {
        return Pt{o.x + r * std::cos(deg * kDeg), o.y - r * std::sin(deg * kDeg)};
    };
    std::vector<Canvas::Spot> spots1;
    for (double r : {r1 + 8, r1 + 20, r1 + 34, r1 - 4})
        for (double turn : {8.0, 14.0}) {
            const Pt at = polar(std::min(phi1 + turn, 88.0), r);
            spots1.push_back({at.x, at.y, "end"});
        }
    cv.textAmong(spots1, "φ<sub>1</sub> = " + fmtNumber(phi1, 4) + "°", "mut");
    std::vector<Canvas::Spot> spots2;
    for (double r : {r2 + 8, r2 + 18, r2 + 30, r2 + 46, r2 + 64})
        for (double share : {0.5, 0.35, 0.65}) {
            const Pt at = polar(phi2 * share, r);
            spots2.push_back({at.x, at.y, "start"});
        }
    // Where the sector is too narrow: below the foot, by the bow's end.
    for (double y : {yb + 14, yb + 38}) {
        spots2.push_back({o.x + r2, y, "middle"});
        spots2.push_back({o.x + r2 + 20, y, "start"});
    }
    cv.textAmong(spots2, "φ<sub>2</sub> = " + fmtNumber(phi2, 4) + "°", "hl");

    out.body = cv.body();
    out.caption = "Effekttrekanten før (grå) og efter kompensering (blå): kondensatorerne fjerner " +
                  tool::formatValue(qc, "VAr") + " af den reaktive effekt, så S og strømmen bliver mindre";
    return out;
}

FigureOut motorFigure(const MachineValues& v, bool threePhase, bool starDelta) {
    FigureOut out;
    out.w = 660, out.h = starDelta ? 278 : 256;
    Canvas cv;
    cv.setBounds(out.w, out.h);

    // Power flow: from the net into the motor, out on the shaft, the losses down.
    const double my = 92, mx = 150, r = 36;
    cv.arrow(14, my, mx - r - 4, my, "res");
    put(cv, 60, my - 20, label(v, "P_1", "W"), "middle", 104);
    cv.text(60, my + 20, threePhase ? "3 faser" : "1 fase", "middle", "mut");
    cv.circle(mx, my, r, "comp");
    cv.text(mx, my - 8, "M", "middle", "s17");
    cv.text(mx, my + 14, threePhase ? "3~" : "1~", "middle", "mut");
    cv.line(mx + r, my, mx + r + 16, my, "wire");
    cv.arrow(mx + r + 16, my, 300, my, "cur");
    put(cv, 246, my - 20, label(v, "P_2", "W"), "middle", 116);
    put(cv, 246, my + 20, label(v, "M", "Nm"), "middle", 116);
    put(cv, 246, my + 42, label(v, "nr", "o/min"), "middle", 116);
    cv.arrow(mx, my + r + 2, mx, my + r + 44, "ref");
    put(cv, mx + 10, my + r + 30, label(v, "P_tab", "W"), "start", 0);
    cv.text(mx - 10, my + r + 30, "tab", "end", "mut");

    // The plate.
    const double px = 322, py = 14, pw = 324, ph = 168;
    cv.rect(px, py, pw, ph, "comp", 8);
    cv.text(px + 12, py + 16, "Mærkeplade", "start", "mut");
    const char* const plate[3][3][2] = {{{"U_N", "V"}, {"I_N", "A"}, {"f", "Hz"}},
                                        {{"P_2", "W"}, {"cosphi", ""}, {"eta", ""}},
                                        {{"nr", "o/min"}, {"p", ""}, {"k_st", ""}}};
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 3; ++col)
            put(cv, px + 54 + col * 108, py + 52 + row * 44, label(v, plate[row][col][0], plate[row][col][1]),
                "middle", 102);

    // What the plate doesn't say, in a strip below.
    const char* const strip[6][2] = {{"S", "VA"}, {"Q", "VAr"},  {"n_s", "o/min"},
                                     {"s", "%"},  {"f_r", "Hz"}, {"I_st", "A"}};
    cv.line(14, 202, 646, 202, "grid");
    for (int i = 0; i < 6; ++i)
        put(cv, 62 + i * 107, 226, label(v, strip[i][0], strip[i][1]), "middle", 102);
    if (starDelta) put(cv, 330, 256, label(v, "I_stY", "A"), "middle", 300);

    out.body = cv.body();
    out.shapes = std::move(cv.shapes);
    return out;
}

FigureOut transformerFigure(const MachineValues& v) {
    FigureOut out;
    out.w = 680, out.h = 285;
    Canvas cv;
    cv.setBounds(out.w, out.h);
    const double top = 74, bottom = 182, cp = 258, cs = 418, core = 338;

    // Primary: source, wires, coil bulging towards the core.
    cv.line(96, top, cp, top, "wire");
    cv.line(96, bottom, cp, bottom, "wire");
    cv.line(96, top, 96, 112, "wire");
    cv.line(96, 144, 96, bottom, "wire");
    acSourceSymbol(cv, {96, 128, true, 0});
    cv.line(cp, top, cp, 92, "wire");
    standingCoil(cv, cp, 92, 4, 1);
    cv.line(cp, 164, cp, bottom, "wire");
    // The core between the windings.
    cv.line(core - 6, 60, core - 6, 196, "plate");
    cv.line(core + 6, 60, core + 6, 196, "plate");
    // Secondary: coil, wires, load.
    cv.line(cs, top, 580, top, "wire");
    cv.line(cs, bottom, 580, bottom, "wire");
    cv.line(cs, top, cs, 92, "wire");
    standingCoil(cv, cs, 92, 4, -1);
    cv.line(cs, 164, cs, bottom, "wire");
    cv.line(580, top, 580, 104, "wire");
    resistorSymbol(cv, {580, 128, true, 0});
    cv.line(580, 152, 580, bottom, "wire");

    for (const auto& [x, key] : {std::pair{176.0, "I_P"}, std::pair{500.0, "I_S"}}) {
        const Label l = label(v, key, "A");
        currentArrow(cv, x, top, 1, 0, l.text, l.cls.empty() ? "cur" : l.cls);
    }
    put(cv, 74, 128, label(v, "U_P", "V"), "end", 0);
    put(cv, 602, 128, label(v, "R_B", "Ω"), "start", 0);
    put(cv, 562, 128, label(v, "U_S", "V"), "end", 120);
    put(cv, cp - 12, 128, label(v, "N_P", ""), "end", 140);
    put(cv, cs + 12, 128, label(v, "N_S", ""), "start", 120);
    cv.text(core, 28, label(v, "n", "").text, "middle", label(v, "n", "").cls);
    put(cv, core, 222, label(v, "S", "VA"), "middle", 200);
    put(cv, core, 250, label(v, "NV", "vind./V"), "middle", 200);
    cv.text(96, 222, "Primær", "middle", "mut");
    cv.text(580, 222, "Sekundær", "middle", "mut");

    out.body = cv.body();
    out.shapes = std::move(cv.shapes);
    return out;
}

FigureOut connectionFigure(const MachineValues& v, bool star, const std::string& perPhase) {
    FigureOut out;
    out.w = 560, out.h = 290;
    Canvas cv;
    cv.setBounds(out.w, out.h);
    // Terminals L1 on top, L2 bottom left, L3 bottom right.
    const Pt c{196, 172};
    const double rad = 104;
    Pt t[3];
    for (int i = 0; i < 3; ++i) {
        const double a = (90 + 120 * i) * kDeg;
        t[i] = {c.x + rad * std::cos(a), c.y - rad * std::sin(a)};
    }
    if (star) {
        for (const Pt& p : t)
            resistorBetween(cv, c, p);
        cv.circle(c.x, c.y, 3.2, "node");
        cv.text(c.x, c.y + 24, "N", "middle", "mut");
    } else {
        resistorBetween(cv, t[0], t[1]);
        resistorBetween(cv, t[1], t[2]);
        resistorBetween(cv, t[2], t[0]);
    }
    // Leads out to the net, each with its line name.
    const Pt lead[3] = {{t[0].x, t[0].y - 48}, {t[1].x - 26, t[1].y + 14}, {t[2].x + 26, t[2].y + 14}};
    for (int i = 0; i < 3; ++i) {
        cv.line(t[i].x, t[i].y, lead[i].x, lead[i].y, "wire");
        cv.circle(t[i].x, t[i].y, 3.2, "node");
    }
    cv.text(lead[0].x + 10, lead[0].y + 4, "L1", "start", "sym");
    cv.text(lead[1].x - 4, lead[1].y + 16, "L2", "end", "sym");
    cv.text(lead[2].x + 4, lead[2].y + 16, "L3", "start", "sym");

    // The per-phase value beside the load that L1 feeds, the phase quantities beside it.
    const Pt loadMid =
        star ? Pt{(c.x + t[0].x) / 2, (c.y + t[0].y) / 2} : Pt{(t[0].x + t[2].x) / 2, (t[0].y + t[2].y) / 2};
    const double lx = loadMid.x + (star ? 20 : 40);
    put(cv, lx, loadMid.y - 8, label(v, perPhase, "Ω"), "start", 0);
    put(cv, lx, loadMid.y + 14, label(v, "U_F", "V"), "start", 0);
    put(cv, lx, loadMid.y + 36, label(v, "I_F", "A"), "start", 0);
    currentArrow(cv, lead[0].x, (lead[0].y + t[0].y) / 2, 0, 1, "");
    put(cv, lead[0].x - 16, (lead[0].y + t[0].y) / 2, label(v, "I_N", "A"), "end", 0);
    cv.line(t[1].x, t[1].y + 34, t[2].x, t[2].y + 34, "dash");
    put(cv, c.x, t[1].y + 50, label(v, "U_N", "V"), "middle", 0);

    // The load as a whole on the right.
    cv.text(404, 36, star ? "Stjerne (Y)" : "Trekant (Δ)", "start", "sym");
    // The group only names the power for the sheet; a painter of shapes needs nothing of it.
    cv.raw("<g id=\"tfPow\">");
    put(cv, 404, 74, label(v, "P", "W"), "start", 150);
    cv.raw("</g>");
    put(cv, 404, 104, label(v, "S", "VA"), "start", 150);
    put(cv, 404, 134, label(v, "Q", "VAr"), "start", 150);
    put(cv, 404, 164, label(v, "cosphi", ""), "start", 150);

    out.body = cv.body();
    out.shapes = std::move(cv.shapes);
    return out;
}

} // namespace fl
