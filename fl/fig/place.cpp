// Label room: segment-against-box tests, and a search that tries the places
// a drawing prefers before it looks further afield, nearest first.
#include "fl/fig/place.h"

#include <algorithm>
#include <cmath>

namespace fl {

bool crosses(Pt a, Pt b, const Box& r) {
    // Liang–Barsky: clip the segment to the box.
    double t0 = 0, t1 = 1;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x - r.x0, r.x1 - a.x, a.y - r.y0, r.y1 - a.y};
    for (int k = 0; k < 4; ++k) {
        if (p[k] == 0) {
            if (q[k] < 0) return false;
            continue;
        }
        const double t = q[k] / p[k];
        if (p[k] < 0) t0 = std::max(t0, t);
        else t1 = std::min(t1, t);
        if (t0 > t1) return false;
    }
    return true;
}

bool LabelSpace::free(const Box& b) const {
    if (W > 0 && (b.x0 < inset || b.y0 < inset || b.x1 > W - inset || b.y1 > H - inset)) return false;
    // A little clearance for the lines' own width, and a gap between two texts.
    const Box wide{b.x0 - 1.5, b.y0 - 1.5, b.x1 + 1.5, b.y1 + 1.5};
    const Box spaced{b.x0 - 3, b.y0 - 1, b.x1 + 3, b.y1 + 1};
    for (const Box& t : taken)
        if (t.overlaps(spaced)) return false;
    for (const auto& [a, c] : segments)
        if (crosses(a, c, wide)) return false;
    return true;
}

void LabelSpace::arrow(Pt a, Pt b, double head, double width) {
    segments.push_back({a, b});
    const double len = std::hypot(b.x - a.x, b.y - a.y);
    if (!(len > 0)) return;
    const double ux = (b.x - a.x) / len, uy = (b.y - a.y) / len, h = std::min(head, len), w = width / 2;
    const Pt base{b.x - ux * h, b.y - uy * h};
    segments.push_back({b, {base.x - uy * w, base.y + ux * w}});
    segments.push_back({b, {base.x + uy * w, base.y - ux * w}});
}

void LabelSpace::bow(Pt c, double r, double a0, double a1, bool sector) {
    const int n = std::max(4, static_cast<int>(std::ceil(std::fabs(a1 - a0) / 0.07)));
    Pt prev{c.x + r * std::cos(a0), c.y - r * std::sin(a0)};
    if (sector) segments.push_back({c, prev});
    for (int k = 1; k <= n; ++k) {
        const double a = a0 + (a1 - a0) * k / n;
        const Pt next{c.x + r * std::cos(a), c.y - r * std::sin(a)};
        segments.push_back({prev, next});
        prev = next;
    }
    if (sector) segments.push_back({c, prev});
}

std::optional<Box> LabelSpace::place(Pt at, double w, double h, const std::vector<Pt>& preferred, bool search,
                                     double reach) const {
    const auto boxAt = [&](double x, double y) { return Box{x, y, x + w, y + h}; };
    for (const Pt& o : preferred)
        if (const Box b = boxAt(at.x + o.x, at.y + o.y); free(b)) return b;
    if (!search || preferred.empty()) return std::nullopt;
    const Pt first{at.x + preferred.front().x, at.y + preferred.front().y};
    if (!(reach > 0)) reach = std::max({W, H, 200.0});
    for (double r = 6; r <= reach; r += 6) {
        const int n = std::max(8, static_cast<int>(r / 3));
        for (int k = 0; k < n; ++k) {
            const double a = 2 * M_PI * k / n;
            if (const Box b = boxAt(first.x + r * std::cos(a), first.y + r * std::sin(a)); free(b)) return b;
        }
    }
    return std::nullopt;
}

Box LabelSpace::placeAnyway(Pt at, double w, double h, const std::vector<Pt>& preferred, double reach) const {
    if (const auto b = place(at, w, h, preferred, true, reach)) return *b;
    const Pt o = preferred.empty() ? Pt{} : preferred.front();
    double x = at.x + o.x, y = at.y + o.y;
    if (W > 0) {
        x = std::clamp(x, inset, std::max(inset, W - inset - w));
        y = std::clamp(y, inset, std::max(inset, H - inset - h));
    }
    return {x, y, x + w, y + h};
}

} // namespace fl
