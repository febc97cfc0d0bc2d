// Phasor scenes: one uniform scale for all arrows, a grid in steps of 1, 2.5,
// 5 or 10 times a power of ten, labels kept off the arrows and each other.
#include "fl/fig/phasor.h"

#include "fl/circuit/forward.h"
#include "fl/expr/symbols.h"
#include "fl/expr/numbers.h"
#include "fl/fig/schematic.h"

#include <algorithm>
#include <cmath>
#include <complex>

namespace fl {

namespace {

constexpr double kDeg = 0.017453292519943295; // π/180
constexpr double kMargin = 30;
constexpr double kLabelRoom = 12;

std::string vectorName(const SceneVector& v, size_t index) {
    return v.name.empty() ? "v<sub>" + std::to_string(index + 1) + "</sub>" : v.name;
}

} // namespace

FigureOut drawVectors(const VectorScene& scene) {
    const int W = scene.W, H = scene.H;
    double x0 = 0, x1 = 0, y0 = 0, y1 = 0, longest = 0;
    for (const SceneVector& v : scene.vectors) {
        for (Pt p : {v.from, v.to}) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y)) continue;
            x0 = std::min(x0, p.x), x1 = std::max(x1, p.x);
            y0 = std::min(y0, p.y), y1 = std::max(y1, p.y);
        }
        const double len = std::hypot(v.to.x - v.from.x, v.to.y - v.from.y);
        if (std::isfinite(len)) longest = std::max(longest, len);
    }
    if (!(longest > 0)) return {};
    const double spanX = std::max(x1 - x0, 1e-9 * longest), spanY = std::max(y1 - y0, 1e-9 * longest);
    // Above the highest head a name needs room, below the lowest a value.
    const double s = std::min((W - 2 * kMargin) / (spanX * 1.18), (H - 2 * kMargin - 2 * kLabelRoom) / (spanY * 1.18));
    const double mcx = (x0 + x1) / 2, mcy = (y0 + y1) / 2;
    const auto map = [&](Pt p) -> Pt { return {W / 2.0 + (p.x - mcx) * s, H / 2.0 - (p.y - mcy) * s}; };
    const auto unmap = [&](Pt p) -> Pt { return {mcx + (p.x - W / 2.0) / s, mcy - (p.y - H / 2.0) / s}; };

    // Three layers: grid and ticks below, arrows, labels on top. Labels are
    // placed before the ticks, so that a tick number gives way to a name.
    Canvas grid, arrows, labels;
    for (Canvas* layer : {&grid, &arrows, &labels}) {
        layer->setBounds(W, H);
    }
    const Pt lo = unmap({kMargin, H - kMargin}), hi = unmap({W - kMargin, kMargin});
    const double step = tickStep(std::max(hi.x - lo.x, hi.y - lo.y), 13);
    const Pt origin = map({0, 0});
    const int firstX = static_cast<int>(std::ceil(lo.x / step)), lastX = static_cast<int>(std::floor(hi.x / step));
    const int firstY = static_cast<int>(std::ceil(lo.y / step)), lastY = static_cast<int>(std::floor(hi.y / step));
    for (int k = firstX; k <= lastX; ++k) {
        const double px = map({k * step, 0}).x;
        grid.line(px, kMargin, px, H - kMargin, "grid");
    }
    for (int k = firstY; k <= lastY; ++k) {
        const double py = map({0, k * step}).y;
        grid.line(kMargin, py, W - kMargin, py, "grid");
    }
    grid.line(kMargin, origin.y, W - kMargin, origin.y, "axis");
    grid.line(origin.x, kMargin, origin.x, H - kMargin, "axis");

    // Labels stay clear of every line but the grid's, and of each other.
    LabelSpace placer{{}, {}, static_cast<double>(W), static_cast<double>(H)};
    placer.segments.push_back({{kMargin, origin.y}, {W - kMargin, origin.y}});
    placer.segments.push_back({{origin.x, kMargin}, {origin.x, H - kMargin}});
    // Arrows: the sides of the parallelogram first, so that the vectors lie on top.
    struct Drawn {
        size_t index;
        Pt a, b;
    };
    std::vector<Drawn> drawn;
    for (int pass = 0; pass < 2; ++pass) {
        for (size_t i = 0; i < scene.vectors.size(); ++i) {
            const SceneVector& v = scene.vectors[i];
            if (v.dashed != (pass == 0)) continue;
            const double len = std::hypot(v.to.x - v.from.x, v.to.y - v.from.y);
            if (!std::isfinite(len) || len < 1e-12 * longest) continue;
            const Pt a = map(v.from), b = map(v.to);
            if (v.dashed) {
                arrows.line(a.x, a.y, b.x, b.y, "dash");
                placer.segments.push_back({a, b});
            } else {
                arrows.arrow(a.x, a.y, b.x, b.y, v.cls, 13, 9);
                placer.arrow(a, b);
                drawn.push_back({i, a, b});
            }
        }
    }

    // The angle between reference and result; its text goes first, and its
    // bow counts as a line for every label after it.
    const auto valid = [&](int i) { return i >= 0 && static_cast<size_t>(i) < scene.vectors.size(); };
    if (valid(scene.reference) && valid(scene.result) && !scene.angleText.empty()) {
        const SceneVector& r = scene.vectors[static_cast<size_t>(scene.reference)];
        const SceneVector& v = scene.vectors[static_cast<size_t>(scene.result)];
        const double ar = std::atan2(r.to.y - r.from.y, r.to.x - r.from.x);
        const double av = std::atan2(v.to.y - v.from.y, v.to.x - v.from.x);
        double d = av - ar;
        while (d > M_PI)
            d -= 2 * M_PI;
        while (d < -M_PI)
            d += 2 * M_PI;
        const double lr = std::hypot(r.to.x - r.from.x, r.to.y - r.from.y) * s;
        const double lv = std::hypot(v.to.x - v.from.x, v.to.y - v.from.y) * s;
        const Pt c = map(v.from);
        if (std::fabs(d) > 1e-6 && lr > 1 && lv > 1) {
            const double radius = std::clamp(0.3 * std::min(lr, lv), 22.0, 60.0);
            const double a0 = ar / kDeg, a1 = (ar + d) / kDeg;
            arrows.arc(c.x, c.y, radius, std::min(a0, a1), std::max(a0, a1), "ang");
            placer.bow(c, radius, ar, ar + d, true);
            // On the bisector beyond the bow; else just outside either arm by
            // the bow's end (a small angle has no room between its arms); else
            // a little further out; never far from the bow. A box turns its
            // near side to the point it is placed by.
            const double w = textWidth(scene.angleText, "angt " + scene.angleCls), h = 16;
            const auto corner = [&](double px, double py, double nx, double ny) {
                return Pt{px - (std::fabs(nx) < 0.5 ? w / 2
                                : nx > 0            ? 0
                                                    : w),
                          py - (ny > 0.5    ? 0
                                : ny < -0.5 ? h
                                            : h / 2)};
            };
            std::vector<Pt> along;
            const auto onBisector = [&](std::initializer_list<double> extras) {
                const double mid = ar + d / 2, ux = std::cos(mid), uy = -std::sin(mid);
                for (double extra : extras)
                    along.push_back(
                        corner(ux * (radius * 1.35 + extra), uy * (radius * 1.35 + extra), ux, uy));
            };
            // The arm at the larger angle turns away from the angle one way, the other the other way.
            const auto byArms = [&](std::vector<double> distances) {
                for (const auto& [arm, away] :
                     {std::pair{ar + d, d > 0 ? 1.0 : -1.0}, std::pair{ar, d > 0 ? -1.0 : 1.0}}) {
                    const double ux = std::cos(arm), uy = -std::sin(arm), nx = uy * away, ny = -ux * away;
                    for (double at : distances)
                        for (double off : {8.0, 18.0})
                            along.push_back(corner(ux * at + nx * off, uy * at + ny * off, nx, ny));
                }
            };
            onBisector({0});
            byArms({radius, radius + 14, radius + w / 2});
            onBisector({10, 20, 30});
            byArms({radius * 1.35 + 8});
            const Box b = placer.placeAnyway(c, w, h, along, radius * 0.5 + 24);
            labels.text(b.x0, (b.y0 + b.y1) / 2, scene.angleText, "start", "angt " + scene.angleCls);
            placer.taken.push_back(b);
        }
    }

    // Names at the heads, values below them; the first free place wins.
    for (const Drawn& d : drawn) {
        const SceneVector& v = scene.vectors[d.index];
        const std::string name = vectorName(v, d.index);
        const std::string vl = "vl" + std::to_string(d.index % 4 + 1);
        const double wName = textWidth(name, "vname");
        const double wLen = v.length.empty() ? 0 : textWidth(v.length, vl);
        const double w = std::max(wName, wLen), h = v.length.empty() ? 18 : 34;
        double ux = d.b.x - d.a.x, uy = d.b.y - d.a.y;
        const double len = std::hypot(ux, uy);
        ux /= len, uy /= len;
        // Beside the head first, then out along the arrow, then round it.
        const std::vector<Pt> cands = {{10, -24},
                                       {10, 6},
                                       {-10 - w, -24},
                                       {-10 - w, 6},
                                       {ux * 14 - w / 2, uy * 14 + (uy < 0 ? -h : 0)},
                                       {ux * 14 + (ux < 0 ? -w : 0), uy * 14 - h / 2},
                                       {-uy * 16 - w / 2, ux * 16 - h / 2},
                                       {uy * 16 - w / 2, -ux * 16 - h / 2},
                                       {10, -44},
                                       {10, 26},
                                       {-10 - w, -44},
                                       {-10 - w, 26}};
        const Box chosen = placer.placeAnyway(d.b, w, h, cands);
        placer.taken.push_back(chosen);
        labels.text(chosen.x0, chosen.y0 + 9, name, "start", v.highlight ? "hl vname" : "vname");
        if (!v.length.empty()) labels.text(chosen.x0, chosen.y0 + 26, v.length, "start", vl);
    }

    // Tick numbers on the axes, as many as fit side by side; one that would
    // cover a line or a label is left out.
    const double px = step * s;
    int every = 1;
    for (int k = firstX; k <= lastX; ++k)
        while (textWidth(fmtNumber(k * step), "tick tbig") + 8 > px * every && every < 100)
            ++every;
    const auto tick = [&](Box b, double x, double y, const std::string& t, std::string_view anchor) {
        if (placer.free(b)) grid.text(x, y, t, anchor, "tick tbig");
    };
    for (int k = firstX; k <= lastX; ++k) {
        if (k == 0 || k % every != 0) continue;
        const Pt p = map({k * step, 0});
        const std::string t = fmtNumber(k * step);
        const double w = textWidth(t, "tick tbig");
        tick({p.x - w / 2, p.y + 4, p.x + w / 2, p.y + 18}, p.x, p.y + 11, t, "middle");
    }
    const int everyY = std::max(1, static_cast<int>(std::ceil(16 / px)));
    for (int k = firstY; k <= lastY; ++k) {
        if (k == 0 || k % everyY != 0) continue;
        const Pt p = map({0, k * step});
        const std::string t = fmtNumber(k * step);
        const double w = textWidth(t, "tick tbig");
        tick({p.x - 5 - w, p.y - 7, p.x - 5, p.y + 7}, p.x - 5, p.y, t, "end");
    }
    std::vector<Shape> shapes = std::move(grid.shapes);
    for (Canvas* layer : {&arrows, &labels})
        shapes.insert(shapes.end(), std::make_move_iterator(layer->shapes.begin()),
                      std::make_move_iterator(layer->shapes.end()));
    return {grid.body() + arrows.body() + labels.body(), W, H, scene.caption, std::move(shapes)};
}

namespace {

using Cx = std::complex<double>;

CNodePtr findGroup(const CNodePtr& root, const std::string& id, const std::string& kind, size_t minChildren) {
    CNodePtr found;
    walk(root, [&](const CNodePtr& n) {
        if (found || !n->group) return;
        if (!id.empty() ? n->id == id : (n->k == kind && n->ch.size() >= minChildren)) found = n;
    });
    return found;
}

// The root's only child carries the whole circuit's U and I: it goes by their names.
bool alone(const CNodePtr& root, const CNodePtr& g) { return root->ch.size() == 1 && root->ch.front() == g; }

// A part's phasors relative to the reference: each as a vector from the
// origin, then the same added head to tail, and the sum.
VectorScene sumScene(const std::vector<std::pair<std::string, Cx>>& parts, const std::string& unit,
                     const std::string& partCls, const std::string& refName, double refMag,
                     const std::string& refUnit, const std::string& sumName, Cx sum) {
    VectorScene sc;
    double longest = std::abs(sum);
    for (const auto& [n, v] : parts)
        longest = std::max(longest, std::abs(v));
    if (!(longest > 0) || !std::isfinite(longest)) return {};
    // The reference only gives the direction; it reaches past the others so
    // that its head shows.
    sc.vectors.push_back({{0, 0}, {longest * 1.15, 0}, "ref", refName, quantityText(refMag, refUnit), false});
    for (const auto& [n, v] : parts)
        sc.vectors.push_back({{0, 0}, {v.real(), v.imag()}, partCls, n, quantityText(std::abs(v), unit), false});
    Cx acc = parts.front().second;
    for (size_t k = 1; k < parts.size(); ++k) {
        const Cx next = acc + parts[k].second;
        sc.vectors.push_back({{acc.real(), acc.imag()}, {next.real(), next.imag()}, partCls, {}, {}, true});
        acc = next;
    }
    sc.vectors.push_back({{0, 0}, {sum.real(), sum.imag()}, "res", sumName, quantityText(std::abs(sum), unit), false});
    sc.reference = 0;
    sc.result = static_cast<int>(sc.vectors.size()) - 1;
    const double phi = std::fabs(std::arg(sum)) / kDeg;
    if (phi > 0.05) sc.angleText = "φ = " + fmtNumber(phi, 3) + "°";
    return sc;
}

} // namespace

VectorScene currentScene(const CNodePtr& root, const Values& values, bool isAc, const std::string& groupId) {
    const CNodePtr g = findGroup(root, groupId, "P", 2);
    if (!g || g->k != "P" || g->ch.empty()) return {};
    std::map<std::string, NodePhasor> ph;
    try {
        ph = phasors(root, values, isAc);
    } catch (const std::exception&) {
        return {};
    }
    const Cx u = ph[g->id].u;
    if (!(std::abs(u) > 0) || !std::isfinite(std::abs(u))) return {};
    const Cx turn = std::conj(u) / std::abs(u);
    std::vector<std::pair<std::string, Cx>> parts;
    for (const CNodePtr& c : g->ch)
        parts.push_back({symbolDisplay(currentSymbol(*c)), ph[c->id].i * turn});
    const CNode& named = alone(root, g) ? *root : *g;
    VectorScene sc = sumScene(parts, "A", "cur", symbolDisplay(voltageSymbol(named)), std::abs(u), "V",
                              symbolDisplay(currentSymbol(named)), ph[g->id].i * turn);
    sc.caption = "Vektordiagram for strømmene: U ligger vandret. Strømmen i en spole er 90° efter U (nedad), i en "
                 "kondensator 90° før U (opad). De lægges sammen til den samlede strøm I (blå).";
    return sc;
}

VectorScene voltageScene(const CNodePtr& root, const Values& values, bool isAc, const std::string& groupId) {
    CNodePtr g;
    if (!groupId.empty()) g = findGroup(root, groupId, "S", 0);
    else if (root->k == "S" && root->ch.size() >= 2) g = root;
    else g = findGroup(root, {}, "S", 2);
    if (!g || g->k != "S" || g->ch.empty()) return {};
    std::map<std::string, NodePhasor> ph;
    try {
        ph = phasors(root, values, isAc);
    } catch (const std::exception&) {
        return {};
    }
    const Cx i = ph[g->id].i;
    if (!(std::abs(i) > 0) || !std::isfinite(std::abs(i))) return {};
    const Cx turn = std::conj(i) / std::abs(i);
    std::vector<std::pair<std::string, Cx>> parts;
    for (const CNodePtr& c : g->ch)
        parts.push_back({symbolDisplay(voltageSymbol(*c)), ph[c->id].u * turn});
    const CNode& named = alone(root, g) ? *root : *g;
    VectorScene sc = sumScene(parts, "V", "", symbolDisplay(currentSymbol(named)), std::abs(i), "A",
                              symbolDisplay(voltageSymbol(named)), ph[g->id].u * turn);
    sc.caption = "Vektordiagram for spændingerne: strømmen I ligger vandret. Spændingen over en modstand er i fase "
                 "med I, over en spole 90° før (opad), over en kondensator 90° efter (nedad). Tilsammen giver de "
                 "kildespændingen U (blå).";
    return sc;
}

} // namespace fl
