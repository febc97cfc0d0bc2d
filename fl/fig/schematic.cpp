// The schematic: extents bottom-up, then blocks top-down from the root's
// corner, each leaf a symbol on its axis with its name above and its numbers
// below, each group a dashed frame with its label in the corner.
#include "fl/fig/schematic.h"

#include "fl/circuit/meters.h"
#include "fl/expr/symbols.h"
#include "fl/expr/numbers.h"
#include "fl/fig/canvas.h"
#include "fl/fig/symbols.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

constexpr double kRailL = 30;  // left rail
constexpr double kBlockX = 62; // the block's left edge
constexpr double kBlockY = 12; // the block's top
constexpr double kTextRoom = 112; // widest text under a leaf

bool isRoot(const CNode& n) { return n.id == "root"; }

std::string unitOfLeaf(const std::string& k) {
    if (k == "R") return "Ω";
    if (k == "L") return "H";
    if (k == "C") return "F";
    if (k == "A") return "A";
    if (k == "V") return "V";
    return {};
}

// A typed text that reads as a number; NaN otherwise (empty, "?", a link).
double typed(const std::string& text) {
    if (text.empty() || !valueLink(text).empty()) return NAN;
    return readValue(text);
}

struct Line {
    std::string text;
    std::string cls;
    double value = NAN;
    std::string unit;
};

class Drawer {
  public:
    Drawer(Canvas& out, const Values& values, const SchematicOptions& opt, bool ac, std::vector<HitBox>* hits)
        : out(out), values(values), opt(opt), ac(ac), hits(hits) {}

    void node(const CNodePtr& n, double x, double y) {
        if (!n->group) leaf(*n, x, y);
        else group(*n, x, y);
    }

  private:
    Canvas& out;
    const Values& values;
    const SchematicOptions& opt;
    bool ac;
    std::vector<HitBox>* hits;

    double known(const std::string& symbol) const { return symbol.empty() ? NAN : lookup(values, symbol); }

    // A quantity typed on the node counts as given; one the values know as computed.
    void quantityLine(std::vector<Line>& lines, const std::string& symbol, const std::string& typedText,
                      const std::string& unit) {
        double v = typed(typedText);
        std::string cls = "mut";
        if (!std::isfinite(v)) v = known(symbol), cls = "res";
        if (!std::isfinite(v)) return;
        lines.push_back({symbolDisplay(symbol) + " = " + quantityText(v, unit), cls, v, unit});
    }

    void leaf(const CNode& n, double x, double y) {
        const double cx = x + kLeafW / 2, ya = y + kLeafAbove;
        const bool sel = !opt.selection.empty() && n.id == opt.selection;
        const bool subj = !opt.subject.empty() && n.id == opt.subject;
        if (sel || subj) out.rect(x, y, kLeafW, kLeafBoxH, sel ? (subj ? "hsel hlc" : "hsel") : "hlc", 6);

        const SymbolAt on{cx, ya, false, kLeafW / 2};
        if (n.k == "R") resistorSymbol(out, on);
        else if (n.k == "L") coilSymbol(out, on);
        else if (n.k == "C") capacitorSymbol(out, on);
        else meterSymbol(out, on, n.k);
        out.text(cx, ya - 26, symbolDisplay(n.name), "middle", "sym");

        if (n.k == "A" || n.k == "V") meterTexts(n, cx, ya);
        else componentTexts(n, cx, ya);

        if (hits) hits->push_back({n.id, x, y, kLeafW, kLeafBoxH, false});
    }

    void meterTexts(const CNode& n, double cx, double ya) {
        const std::string unit = unitOfLeaf(n.k);
        double v = typed(n.v);
        std::string cls = "mut";
        if (!std::isfinite(v)) v = known(n.name), cls = "res";
        if (std::isfinite(v)) out.textFit(cx, ya + 30, "viser " + quantityText(v, unit), "middle", cls, kTextRoom);
        else out.text(cx, ya + 30, "viser ?", "middle", "mut");
        const double r = typed(n.r);
        out.textFit(cx, ya + 49, std::isfinite(r) ? "indre R = " + quantityText(r, "Ω") : std::string("ideel"),
                    "middle", "mut", kTextRoom);
    }

    void componentTexts(const CNode& n, double cx, double ya) {
        const std::string unit = unitOfLeaf(n.k);
        std::vector<Line> lines;

        // The component's own value.
        Line own;
        own.unit = unit;
        const std::string link = valueLink(n.v);
        if (!link.empty()) {
            own.text = symbolDisplay(n.name) + " = " + symbolDisplay(link);
            own.cls = "mut";
            own.value = known(n.name);
        } else {
            own.value = typed(n.v);
            own.cls = "mut";
            if (!std::isfinite(own.value)) own.value = known(n.name), own.cls = "hl";
            own.text = symbolDisplay(n.name) + " = " +
                       (std::isfinite(own.value) ? quantityText(own.value, unit) : "? " + unit);
            if (!std::isfinite(own.value)) own.cls = "mut";
        }
        if (n.k == "L") {
            // The coil's own resistance rides on the same line.
            const int kind = hasOwnResistance(n);
            if (kind != OwnNone) {
                double r = kind == OwnKnown ? typed(n.r) : NAN;
                if (!std::isfinite(r)) {
                    r = known("R_" + n.name);
                    if (std::isfinite(r)) own.cls = "hl";
                }
                own.text += " · " + (std::isfinite(r) ? quantityText(r, "Ω") : std::string("? Ω"));
            }
        }
        out.textFit(cx, ya + 27, own.text, "middle", own.cls, kTextRoom);
        if (std::isfinite(own.value)) lines.push_back(own);

        const size_t first = lines.size();
        quantityLine(lines, voltageSymbol(n), n.U, "V");
        quantityLine(lines, currentSymbol(n), n.I, "A");
        if (ac) quantityLine(lines, impedanceSymbol(n), {}, "Ω");

        double y = ya + 47;
        for (size_t i = first; i < lines.size(); ++i) {
            // The same number in the same unit under another name says nothing new.
            bool repeat = false;
            for (size_t j = 0; j < i && !repeat; ++j)
                repeat = lines[j].unit == lines[i].unit &&
                         std::fabs(lines[j].value - lines[i].value) <=
                             1e-9 * std::max(std::fabs(lines[j].value), std::fabs(lines[i].value));
            if (repeat) continue;
            out.textFit(cx, y, lines[i].text, "middle", lines[i].cls, kTextRoom);
            y += 15;
        }
    }

    void group(const CNode& n, double x, double y) {
        const bool root = isRoot(n);
        const bool sel = !opt.selection.empty() && n.id == opt.selection;
        double ix = x, iy = y;
        if (!root) {
            out.rect(x + 2, y + 2, n.extent.w - 4, n.extent.h - 4, sel ? "gbox gsel" : "gbox", 8);
            ix = x + 8, iy = y + 18;
            // The axis crosses the frame's margin on both sides.
            const double ya = y + n.extent.above;
            out.line(x, ya, ix, ya, "wire");
            out.line(ix + n.innerExtent.w, ya, x + n.extent.w, ya, "wire");
            out.text(x + 11, y + 10, groupLabel(n), "start", sel ? "glab hl" : "glab");
        }
        const Extent& in = n.innerExtent;

        if (n.ch.empty()) {
            // An empty group: a blank block with its leads.
            const double ya = iy + in.above;
            out.line(ix, ya, ix + 12, ya, "wire");
            out.line(ix + in.w - 12, ya, ix + in.w, ya, "wire");
        } else if (n.k == "P") {
            const double railL = ix + 12, railR = ix + in.w - 12;
            double by = iy;
            double firstAxis = 0, lastAxis = 0;
            for (size_t k = 0; k < n.ch.size(); ++k) {
                const CNodePtr& b = n.ch[k];
                const double axis = by + b->extent.above;
                if (k == 0) firstAxis = axis;
                lastAxis = axis;
                node(b, ix + 22, by);
                // Stubs from each rail to the branch; a narrow branch reaches
                // the right rail along its axis.
                out.line(railL, axis, ix + 22, axis, "wire");
                out.line(ix + 22 + b->extent.w, axis, railR, axis, "wire");
                by += b->extent.h + 8;
            }
            out.line(ix, firstAxis, railL, firstAxis, "wire");
            out.line(railR, firstAxis, ix + in.w, firstAxis, "wire");
            out.line(railL, firstAxis, railL, lastAxis, "wire");
            out.line(railR, firstAxis, railR, lastAxis, "wire");
            // Junctions: every branch but the last meets a rail in a T.
            by = iy;
            for (size_t k = 0; k + 1 < n.ch.size(); ++k) {
                const double axis = by + n.ch[k]->extent.above;
                out.circle(railL, axis, 3.2, "node");
                out.circle(railR, axis, 3.2, "node");
                by += n.ch[k]->extent.h + 8;
            }
        } else {
            double cx = ix;
            for (const CNodePtr& c : n.ch) {
                node(c, cx, iy + in.above - c->extent.above);
                cx += c->extent.w;
            }
        }
        if (!root && hits) hits->push_back({n.id, x + 2, y + 2, n.extent.w - 4, n.extent.h - 4, true});
    }

    std::string groupLabel(const CNode& n) const {
        std::string s = (n.k == "P" ? "Parallel " : "Serie ") + n.name;
        const std::string sym = (ac ? "Z_" : "R_") + n.name;
        const double v = known(sym);
        if (std::isfinite(v)) s += ":  " + symbolDisplay(sym) + " = " + quantityText(v, "Ω");
        return s;
    }
};

} // namespace

void measure(const CNodePtr& node, bool isAc) {
    CNode& n = *node;
    Extent in;
    if (!n.group || n.ch.empty()) {
        in = {kLeafW, isAc ? kLeafHAc : kLeafHDc, kLeafAbove};
    } else {
        for (const CNodePtr& c : n.ch)
            measure(c, isAc);
        if (n.k == "P") {
            for (const CNodePtr& c : n.ch) {
                in.w = std::max(in.w, c->extent.w);
                in.h += c->extent.h;
            }
            in.w += 44;
            in.h += 8.0 * static_cast<double>(n.ch.size() - 1);
            in.above = n.ch.front()->extent.above;
        } else {
            double below = 0;
            for (const CNodePtr& c : n.ch) {
                in.w += c->extent.w;
                in.above = std::max(in.above, c->extent.above);
                below = std::max(below, c->extent.h - c->extent.above);
            }
            in.h = in.above + below;
        }
    }
    n.innerExtent = in;
    n.extent = in;
    if (n.group && !isRoot(n)) n.extent = {in.w + 16, in.h + 26, in.above + 18};
}

std::string quantityText(double value, const std::string& unit) {
    if (!std::isfinite(value)) return "?" + (unit.empty() ? std::string() : " " + unit);
    static const char* const kPrefixed[] = {"V", "A", "Ω", "W", "F", "H", "VA", "VAr", "Hz"};
    bool prefixed = false;
    for (const char* u : kPrefixed)
        prefixed = prefixed || unit == u;
    const double mag = std::fabs(value);
    // Capacitors are read in µF and coils in mH; other quantities only when
    // the plain number would be long.
    const bool small = unit == "F" || unit == "H" ? mag < 1 : mag < 0.1;
    if (prefixed && mag > 0 && (small || mag >= 10000)) {
        const int e = std::clamp(static_cast<int>(std::floor(std::log10(mag) / 3)) * 3, -12, 9);
        const std::string p = prefixFor(e);
        return fmtNumber(value / std::pow(10.0, e)) + " " + p + unit;
    }
    return fmtWithUnit(value, unit);
}

namespace {

// The drawing on `out`, whose natural size goes to W and H.
void draw(Canvas& out, Circuit& c, const Values& values, const SchematicOptions& options,
          std::vector<HitBox>* hits, double& W, double& H) {
    if (!c.root) c.root = makeNode("S"), c.root->id = "root";
    nameCircuit(c);
    const bool ac = c.mode == "ac";
    measure(c.root, ac);
    const Extent& e = c.root->extent;
    const double xr = kBlockX + e.w + 22;
    const double ya = e.above + kBlockY, yb = e.h + kBlockY + 30;
    W = xr + 30, H = yb + 58;

    out.setBounds(W, H);
    out.halos = options.halos;
    Drawer drawer(out, values, options, ac, hits);
    if (hits) hits->clear();
    drawer.node(c.root, kBlockX, kBlockY);
    out.line(kRailL, ya, kBlockX, ya, "wire");
    out.line(kBlockX + e.w, ya, xr, ya, "wire");
    out.line(kRailL, ya, kRailL, yb, "wire");
    out.line(xr, ya, xr, yb, "wire");
    out.line(kRailL, yb, xr, yb, "wire");

    const double mx = W / 2;
    if (!ac) cellSymbol(out, {mx, yb, false, 0});
    else acSourceSymbol(out, {mx, yb, false, 0});

    // The source's own numbers: typed text is given, values are computed.
    const auto source = [&](const std::string& key, const std::string& symbol) {
        auto it = c.src.find(key);
        const double v = it == c.src.end() ? NAN : typed(it->second);
        return std::isfinite(v) ? v : lookup(values, symbol);
    };
    std::string below;
    const double U = source("U", "U");
    if (std::isfinite(U)) below = "U = " + quantityText(U, "V");
    if (ac) {
        const double f = source("f", "f");
        if (std::isfinite(f)) below += (below.empty() ? "" : "  ·  ") + std::string("f = ") + quantityText(f, "Hz");
    }
    if (!below.empty()) out.text(mx, yb + 38, below, "middle", "mut");

    const double I = source("I", "I");
    if (std::isfinite(I)) {
        // Conventional current leaves the long plate, so it comes back along
        // the bottom wire from the right.
        const double tail = std::min(mx + 120, xr - 8), head = std::max(tail - 40, mx + 22);
        out.arrow(tail, yb, head, yb, "cur", 11, 8);
        out.text((tail + head) / 2, yb + 16, "I = " + quantityText(I, "A"), "middle", "cur");
    }
}

} // namespace

std::string schematic(Circuit& c, const Values& values, const SchematicOptions& options,
                      std::vector<HitBox>* hits, double* outW, double* outH) {
    Canvas out;
    // The editor paints the SVG: shapes would only cost it time.
    out.keepShapes = false;
    double W = 0, H = 0;
    draw(out, c, values, options, hits, W, H);
    if (outW) *outW = W;
    if (outH) *outH = H;
    return out.document(static_cast<int>(std::ceil(W)), static_cast<int>(std::ceil(H)));
}

FigureOut schematicFigure(Circuit& c, const Values& values, const SchematicOptions& options, double* outW,
                          double* outH) {
    Canvas out;
    double W = 0, H = 0;
    draw(out, c, values, options, nullptr, W, H);
    if (outW) *outW = W;
    if (outH) *outH = H;
    return {out.body(), static_cast<int>(std::ceil(W)), static_cast<int>(std::ceil(H)), {}, out.takeShapes()};
}

std::string schematic(const Values& values, const std::string& selection, std::vector<HitBox>* hits,
                      double* outW, double* outH) {
    SchematicOptions opt;
    opt.selection = selection;
    return schematic(currentCircuit(), values, opt, hits, outW, outH);
}

Values withMeterReadings(const Values& values, const MeterInfo& meters) {
    Values out = values;
    for (const Meter& m : meters.meters) {
        const double v = lookup(values, m.symbol);
        if (!m.symbol.empty() && std::isfinite(v)) out[m.name] = v;
    }
    return out;
}

} // namespace fl
