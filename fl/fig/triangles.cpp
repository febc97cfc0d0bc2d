// Right triangles true to scale within readable angles, the four triangles of
// an alternating-current circuit, and the bar of a series' voltages.
#include "fl/fig/triangles.h"

#include "fl/expr/symbols.h"
#include "fl/expr/numbers.h"
#include "fl/fig/schematic.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {
constexpr double kDeg = 0.017453292519943295; // π/180
}

double drawnAngle(double trueDeg) { return std::clamp(trueDeg, 30.0, 60.0); }

std::string scaleNote(double drawnDeg, double trueDeg) {
    if (std::fabs(drawnDeg - trueDeg) > 0.5)
        return " · <b>ikke i målestok</b>: tegnet med " + fmtNumber(drawnDeg, 3) +
               "° så den er til at læse – den rigtige vinkel er φ = " + fmtNumber(trueDeg, 3) + "°";
    return " · tegnet i målestok";
}

FigureOut rightTriangle(const RightTriangle& t) {
    const double up = std::fabs(t.upright);
    if (!(t.foot > 0) || !(up > 1e-12) || !std::isfinite(t.foot) || !std::isfinite(up)) return {};
    const double trueDeg = std::atan(up / t.foot) / kDeg;
    const double drawn = drawnAngle(trueDeg);
    // Only the proportion matters: the fit scales the drawing to the figure.
    const double u = std::tan(drawn * kDeg) * (t.upright < 0 ? -1 : 1);

    Fig fig;
    if (t.footUp) fig.pts = {{0, 0}, {0, 1}, {u, 1}};
    else fig.pts = {{0, 0}, {1, 0}, {1, u}};
    fig.edges = {{0, 1, t.footText, t.footCls}, {1, 2, t.uprightText, t.uprightCls}, {0, 2, t.hypText, t.hypCls}};
    fig.angles = {{0, 1, 2, t.angleText, t.angleCls, false}, {1, 0, 2, {}, {}, true}};
    fig.title = t.title;
    fig.caption = scaleNote(drawn, trueDeg);
    return drawFig(fig);
}

FigureOut circuitTriangle(const std::string& which, const CNodePtr& root, const Values& values) {
    const double R = lookup(values, "R_tot"), X = lookup(values, "X_tot");
    if (!std::isfinite(R) || !std::isfinite(X) || !(R >= 0) || std::fabs(X) < 1e-12) return {};
    const double Z = std::hypot(R, X);
    if (!(Z > 0) || !std::isfinite(Z)) return {};
    const double cosphi = R / Z, sinphi = X / Z; // signed: below zero when capacitive
    const bool inductive = X > 0;
    double I = lookup(values, "I"), U = lookup(values, "U");
    if (!std::isfinite(U) && std::isfinite(I)) U = I * Z;
    if (!std::isfinite(I) && std::isfinite(U)) I = U / Z;
    const auto label = [](const std::string& sym, double v, const std::string& unit) {
        return std::isfinite(v) ? sym + " = " + quantityText(v, unit) : sym;
    };

    RightTriangle t;
    if (which == "Z") {
        bool coils = false, caps = false;
        walk(root, [&](const CNodePtr& n) {
            coils = coils || n->k == "L";
            caps = caps || n->k == "C";
        });
        const std::string x = coils && caps ? (inductive ? "X<sub>L</sub> − X<sub>C</sub>" : "X<sub>C</sub> − X<sub>L</sub>")
                              : coils       ? "X<sub>L</sub>"
                              : caps        ? "X<sub>C</sub>"
                                            : "X";
        t.foot = R, t.upright = X;
        t.footText = label("R", R, "Ω");
        t.uprightText = label(x, std::fabs(X), "Ω");
        t.hypText = label("Z", Z, "Ω");
        t.title = shape(root, true) == "series" ? "Modstandstrekant – de ohmske modstande lægges sammen"
                                                 : "Modstandstrekant (ækvivalent R og X for hele kredsen)";
    } else if (which == "U") {
        if (!std::isfinite(I)) return {};
        t.foot = I * R, t.upright = I * X;
        t.footText = label("U<sub>R</sub>", I * R, "V");
        t.uprightText = label("U<sub>X</sub>", std::fabs(I * X), "V");
        t.hypText = label("U", U, "V");
        t.title = "Spændingstrekant (U<sub>R</sub> = I · R, U<sub>X</sub> = I · X)";
    } else if (which == "I" || which == "Ibook") {
        if (!std::isfinite(I)) return {};
        const double Iw = I * cosphi, Ib = I * sinphi;
        const std::string side = inductive ? "strømmen er efter U (induktiv)" : "strømmen er før U (kapacitiv)";
        t.foot = Iw;
        t.footText = label("I<sub>v</sub>", Iw, "A");
        t.uprightText = label("I<sub>r</sub>", std::fabs(Ib), "A");
        t.hypText = label("I", I, "A");
        if (which == "I") {
            // The current lags in a coil: its reactive part points down.
            t.upright = -Ib;
            t.title = "Strømtrekant: I = √(I<sub>v</sub>² + I<sub>r</sub>²) – " + side;
        } else {
            t.upright = Ib;
            t.footUp = true;
            t.title = "Strømtrekant som i formelsamlingen: U lodret, I<sub>R</sub> i fase med U, I<sub>L</sub> 90° "
                      "efter (højre), I<sub>C</sub> 90° før (venstre)";
        }
    } else if (which == "S") {
        if (!std::isfinite(I) || !std::isfinite(U)) return {};
        const double S = U * I;
        t.foot = S * cosphi, t.upright = S * sinphi;
        t.footText = label("P", S * cosphi, "W");
        t.uprightText = label("Q", std::fabs(S * sinphi), "VAr");
        t.hypText = label("S", S, "VA");
        t.title = "Effekttrekant";
    } else {
        return {};
    }
    return rightTriangle(t);
}

FigureOut voltageBar(const CNodePtr& root, const Values& values) {
    if (!root || root->ch.size() < 2) return {};
    std::vector<double> parts;
    double total = 0;
    for (const CNodePtr& c : root->ch) {
        const double u = lookup(values, voltageSymbol(*c));
        if (!std::isfinite(u) || u < 0) return {};
        parts.push_back(u);
        total += u;
    }
    if (!(total > 0) || !std::isfinite(total)) return {};

    const int W = 460, H = 170;
    const double x0 = 30, x1 = W - 30, top = 58, h = 34;
    Canvas cv;
    cv.setBounds(W, H);
    // Texts above and below the bar, on a second row when a neighbour is in the way.
    std::vector<std::pair<double, double>> rows[4];
    const auto place = [&](double cx, double w, int firstRow) {
        for (int r = firstRow; r < firstRow + 2; ++r) {
            bool free = true;
            for (const auto& [a, b] : rows[r])
                free = free && (cx + w / 2 + 6 < a || cx - w / 2 - 6 > b);
            if (free) {
                rows[r].push_back({cx - w / 2, cx + w / 2});
                return r;
            }
        }
        rows[firstRow + 1].push_back({cx - w / 2, cx + w / 2});
        return firstRow + 1;
    };
    double x = x0;
    for (size_t k = 0; k < parts.size(); ++k) {
        const double w = (x1 - x0) * parts[k] / total;
        const std::string seg = std::to_string(k % 4 + 1);
        cv.rect(x, top, w, h, "comp seg" + seg);
        const std::string name = symbolDisplay(voltageSymbol(*root->ch[k]));
        const std::string value = quantityText(parts[k], "V");
        const double cx = std::clamp(x + w / 2, x0 + 20, x1 - 20);
        const double nw = textWidth(name, "sym"), vw = textWidth(value, "vl" + seg);
        const double nx = std::clamp(cx, x0 + nw / 2, x1 - nw / 2), vx = std::clamp(cx, x0 + vw / 2, x1 - vw / 2);
        const int nr = place(nx, nw, 0), vr = place(vx, vw, 2);
        cv.text(nx, nr == 0 ? top - 12 : top - 32, name, "middle", "sym");
        cv.text(vx, vr == 2 ? top + h + 14 : top + h + 34, value, "middle", "vl" + seg);
        x += w;
    }
    return {cv.body(), W, H, "Spændingsfordeling i serieforbindelsen – tilsammen " + quantityText(total, "V"),
            cv.takeShapes()};
}

} // namespace fl
