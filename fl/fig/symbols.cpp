// The symbols, written once for the lying position and turned for standing.
#include "fl/fig/symbols.h"

#include <cmath>

namespace fl {

namespace {

// A point `along` the axis and `across` it (down when lying, left when standing).
Pt at(const SymbolAt& s, double along, double across) {
    return s.standing ? Pt{s.cx - across, s.cy + along} : Pt{s.cx + along, s.cy + across};
}

void segment(Canvas& cv, const SymbolAt& s, double a0, double c0, double a1, double c1, std::string_view cls) {
    const Pt p = at(s, a0, c0), q = at(s, a1, c1);
    cv.line(p.x, p.y, q.x, q.y, cls);
}

void leads(Canvas& cv, const SymbolAt& s, double half) {
    if (s.lead <= half) return;
    segment(cv, s, -s.lead, 0, -half, 0, "wire");
    segment(cv, s, half, 0, s.lead, 0, "wire");
}

} // namespace

void resistorSymbol(Canvas& cv, const SymbolAt& s) {
    leads(cv, s, 24);
    if (s.standing) cv.rect(s.cx - 9, s.cy - 24, 18, 48, "comp", 2);
    else cv.rect(s.cx - 24, s.cy - 9, 48, 18, "comp", 2);
}

void coilSymbol(Canvas& cv, const SymbolAt& s) {
    leads(cv, s, 24);
    // Four half turns bulging up (lying) or to the right (standing), as
    // bows so that a painter of shapes draws them too.
    for (int k = 0; k < 4; ++k) {
        const Pt c = at(s, -18 + 12 * k, 0);
        if (s.standing) cv.bow(c.x, c.y, 6, 90, -90, "wire coil");
        else cv.bow(c.x, c.y, 6, 180, 0, "wire coil");
    }
}

void capacitorSymbol(Canvas& cv, const SymbolAt& s) {
    leads(cv, s, 6);
    segment(cv, s, -6, -15, -6, 15, "plate");
    segment(cv, s, 6, -15, 6, 15, "plate");
}

void meterSymbol(Canvas& cv, const SymbolAt& s, const std::string& letter) {
    leads(cv, s, 16);
    cv.circle(s.cx, s.cy, 16, "comp");
    cv.text(s.cx, s.cy + 1, letter, "middle", "sym");
}

void cellSymbol(Canvas& cv, const SymbolAt& s) {
    leads(cv, s, 5);
    const Pt c = at(s, 0, 0);
    // The wire is painted out behind the plates.
    if (s.standing) cv.rect(c.x - 18, c.y - 7, 36, 14, "gap");
    else cv.rect(c.x - 7, c.y - 18, 14, 36, "gap");
    segment(cv, s, -5, -16, -5, 16, "plate");
    segment(cv, s, 5, -8, 5, 8, "plate short");
}

void acSourceSymbol(Canvas& cv, const SymbolAt& s) {
    leads(cv, s, 16);
    cv.circle(s.cx, s.cy, 16, "comp");
    // One wave: up over the left half, down under the right.
    cv.bow(s.cx - 4.5, s.cy, 4.5, 180, 0, "ln");
    cv.bow(s.cx + 4.5, s.cy, 4.5, 180, 360, "ln");
}

void currentArrow(Canvas& cv, double cx, double cy, double dx, double dy, const std::string& label,
                  const std::string& textCls) {
    const double len = std::hypot(dx, dy);
    if (!(len > 0)) return;
    dx /= len, dy /= len;
    cv.arrow(cx - dx * 20, cy - dy * 20, cx + dx * 20, cy + dy * 20, "cur", 11, 8);
    if (label.empty()) return;
    // Beside the arrow, on the side where nothing else is.
    if (std::fabs(dy) > std::fabs(dx))
        cv.textAmong({{cx + 10, cy, "start"}, {cx - 10, cy, "end"}, {cx + 10, cy - 12, "start"}}, label, textCls);
    else
        cv.textAmong({{cx, cy - 14, "middle"}, {cx, cy - 24, "middle"}, {cx, cy + 16, "middle"}}, label, textCls);
}

} // namespace fl
