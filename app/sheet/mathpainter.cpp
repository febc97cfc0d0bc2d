// Layout and painting of expression images. The tree is turned into boxes
// (width, height above and depth below the baseline) holding a flat list of
// drawing primitives; a box placed inside another is copied with an offset.
// Sizes are in ems of the level's font, so the text scale carries through.
// The rules for parentheses and factors follow the HTML rendering of the
// expression engine, so that an image and the text beside it agree.
#include "app/sheet/mathpainter.h"

#include "app/shell/theme.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/render.h"
#include "fl/expr/symbols.h"

#include <QFontMetrics>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

namespace app {

namespace {

using fl::NodePtr;

constexpr double kScript = 0.7;     // script size against its parent
constexpr double kMinScript = 0.58; // scripts of scripts stay readable
const QChar kMinus(0x2212);
const QChar kDot(0x22C5); // dot operator, centred on the axis

struct Prim {
    enum Type { Text, Rule, Stroke, Fill } type = Text;
    QPointF pos; // Text: start of the baseline
    QString text;
    QFont font;
    QRectF rect;       // Rule: a filled rectangle, snapped to device pixels
    QPainterPath path; // Stroke, Fill
    double width = 0;  // Stroke: pen width
};

struct Box {
    double w = 0, asc = 0, desc = 0;
    std::vector<Prim> prims;

    // Copies `b` in with its origin at (x, baseline + dy); dy grows downwards.
    void place(const Box& b, double x, double dy) {
        for (Prim p : b.prims) {
            p.pos += QPointF(x, dy);
            p.rect.translate(x, dy);
            p.path.translate(x, dy);
            prims.push_back(std::move(p));
        }
        asc = std::max(asc, b.asc - dy);
        desc = std::max(desc, b.desc + dy);
        w = std::max(w, x + b.w);
    }
    void append(const Box& b) { place(b, w, 0); }
    void space(double s) { w += s; }
};

// A Var's display form as it is drawn: the nucleus and an index, so that a
// power can put its exponent above the index instead of after it.
struct Symbol {
    Box nucleus;
    Box sub;
    bool hasSub = false;
    Box rest; // text after the index ("Q_C pr. kondensator")
};

// One piece of the small HTML the engine writes for symbols and numbers.
struct Run {
    QString text;
    int script = 0; // 0 plain, -1 sub, +1 sup
};

std::vector<Run> richRuns(const std::string& html) {
    std::vector<Run> runs;
    for (const fl::RichRun& r : fl::parseRichRuns(html))
        runs.push_back({QString::fromStdString(r.text), r.script == fl::Script::Sub   ? -1
                                                        : r.script == fl::Script::Sup ? 1
                                                                                      : 0});
    return runs;
}

// "·10⁻³" back to plain characters, for a real superscript.
QString unSuperscript(const QString& s) {
    static const QString sup = QStringLiteral("⁰¹²³⁴⁵⁶⁷⁸⁹");
    QString out;
    for (QChar c : s) {
        const qsizetype d = sup.indexOf(c);
        if (d >= 0)
            out += QChar('0' + int(d));
        else if (c == QChar(0x207B))
            out += kMinus;
        else
            out += c;
    }
    return out;
}

bool isGreekCapital(QChar c) {
    return c.unicode() >= 0x391 && c.unicode() <= 0x3A9;
}

bool isSuperscriptChar(QChar c) {
    return QStringLiteral("⁰¹²³⁴⁵⁶⁷⁸⁹⁻").contains(c);
}

class Layout {
  public:
    explicit Layout(const MathStyle& style) : style(style) {
        device = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        device.setDotsPerMeterX(3780);
        device.setDotsPerMeterY(3780);
        const QFontMetricsF fm(style.font, &device);
        em0 = style.font.pointSizeF() > 0 ? style.font.pointSizeF() * 96.0 / 72.0 : fm.height();
        axis0 = -fm.tightBoundingRect(QStringLiteral("+")).center().y();
        xHeight0 = fm.xHeight();
    }

    Box node(const NodePtr& n, double size) const;

    double em(double size) const { return em0 * size; }
    double axis(double size) const { return axis0 * size; }
    double rule(double size) const { return std::max(1.0, 0.058 * em(size)); }

    // The main line: a row of ordinary text takes `lineHeight` from its top
    // to its bottom, nearly three quarters of it above the baseline, as in a
    // serif face with room for capitals, parentheses and descenders.
    double mainAscent() const { return style.lineHeight * 0.72; }
    double mainDescent() const { return style.lineHeight * 0.28; }

  private:
    QFont font(double size, bool italic) const {
        QFont f = style.font;
        f.setPointSizeF(style.font.pointSizeF() * size);
        f.setItalic(italic);
        return f;
    }

    Box text(const QString& s, double size, bool italic = false) const;
    Box word(const QString& s, double size) const; // math italics for single letters
    Box rich(const std::string& html, double size, bool asSymbol) const;
    Symbol symbol(const std::string& html, double size) const;
    Box number(const fl::Node& n, double size) const;

    Box factors(const std::vector<NodePtr>& list, double size) const;
    Box sum(const fl::Node& n, double size) const;
    Box product(const fl::Node& n, double size) const;
    Box power(const fl::Node& n, double size) const;
    Box func(const fl::Node& n, double size) const;

    Box fraction(const Box& num, const Box& den, double size) const;
    Box root(const Box& rad, double size) const;
    Box fenced(const Box& inner, double size, QChar open, QChar close) const;
    Box delimiter(QChar c, double top, double bottom, double size) const;
    Box scripts(Box nucleus, const Box* sub, const Box* sup, double size) const;
    Box op(const QString& s, double size, double space) const;

    static double scriptSize(double size) { return std::max(kMinScript, size * kScript); }

    MathStyle style;
    mutable QImage device;
    double em0 = 17, axis0 = 4, xHeight0 = 8;
};

Box Layout::text(const QString& s, double size, bool italic) const {
    Box b;
    if (s.isEmpty()) return b;
    const QFont f = font(size, italic);
    const QFontMetricsF fm(f, &device);
    const QRectF ink = fm.tightBoundingRect(s);
    // An italic f reaches left of its origin and most italics lean past their
    // advance; the box takes both in, so nothing touches its neighbour.
    const double left = std::max(0.0, -ink.left());
    b.w = left + fm.horizontalAdvance(s);
    if (italic) b.w = std::max(b.w, left + ink.right() + 0.04 * em(size));
    b.asc = std::max(0.0, -ink.top());
    b.desc = std::max(0.0, ink.bottom());
    b.prims.push_back({Prim::Text, QPointF(left, 0), s, f, {}, {}, 0});
    return b;
}

// Single Latin letters and lower-case Greek are variables and lean; words
// ("cos", "total", "hyp"), digits, capital Greek and signs stand upright.
Box Layout::word(const QString& s, double size) const {
    Box out;
    qsizetype i = 0;
    while (i < s.size()) {
        qsizetype j = i;
        const bool letter = s[i].isLetter();
        // "ΔU", "ΣR": the capital is an operator, the letter after it a variable.
        if (letter && isGreekCapital(s[i]))
            ++j;
        else
            while (j < s.size() && s[j].isLetter() == letter && !isGreekCapital(s[j]))
                ++j;
        const QString piece = s.mid(i, j - i);
        if (letter) {
            const bool italic = piece.size() == 1 && !isGreekCapital(piece[0]);
            out.append(text(piece, size, italic));
        } else {
            QString t = piece;
            t.replace(QChar(0x00A0), ' ');
            // A blank between words is a thin space, not a full one.
            if (t.trimmed().isEmpty())
                out.space(0.22 * em(size) * t.size());
            else
                out.append(text(t, size));
        }
        i = j;
    }
    return out;
}

Box Layout::rich(const std::string& html, double size, bool asSymbol) const {
    Box out;
    Box last; // the piece an index or exponent attaches to
    bool haveLast = false;
    auto commit = [&] {
        if (haveLast) out.append(last);
        last = Box();
        haveLast = false;
    };
    for (const Run& r : richRuns(html)) {
        if (r.script == 0) {
            commit();
            last = asSymbol ? word(r.text, size) : text(r.text, size);
            haveLast = true;
        } else {
            const Box s = asSymbol ? word(r.text, scriptSize(size)) : text(r.text, scriptSize(size));
            last = scripts(last, r.script < 0 ? &s : nullptr, r.script > 0 ? &s : nullptr, size);
            haveLast = true;
        }
    }
    commit();
    return out;
}

Symbol Layout::symbol(const std::string& html, double size) const {
    Symbol sym;
    const std::vector<Run> runs = richRuns(html);
    // The common shape: a nucleus, then one index, then possibly more text.
    if (runs.size() >= 2 && runs[0].script == 0 && runs[1].script < 0) {
        sym.nucleus = word(runs[0].text, size);
        sym.sub = word(runs[1].text, scriptSize(size));
        sym.hasSub = true;
        std::string rest;
        for (size_t i = 2; i < runs.size(); ++i) {
            const QString t = runs[i].text.toHtmlEscaped();
            rest += runs[i].script < 0   ? "<sub>" + t.toStdString() + "</sub>"
                    : runs[i].script > 0 ? "<sup>" + t.toStdString() + "</sup>"
                                         : t.toStdString();
        }
        sym.rest = rich(rest, size, true);
        return sym;
    }
    sym.nucleus = rich(html, size, true);
    return sym;
}

Box Layout::number(const fl::Node& n, double size) const {
    if (n.hasLiteral) return rich(n.literal, size, false);
    QString s = QString::fromStdString(fl::fmtNumber(n.value));
    if (n.degree) s += QChar(0x00B0);
    // Engineering notation arrives as "4,7·10⁻³"; set the exponent as a script.
    const qsizetype ten = s.indexOf(QStringLiteral("·10"));
    if (ten >= 0 && ten + 3 < s.size() && isSuperscriptChar(s[ten + 3])) {
        qsizetype end = ten + 3;
        while (end < s.size() && isSuperscriptChar(s[end]))
            ++end;
        Box b = text(s.left(ten), size);
        b.append(op(QString(kDot), size, 0.12));
        const Box exp = text(unSuperscript(s.mid(ten + 3, end - ten - 3)), scriptSize(size));
        b.append(scripts(text(QStringLiteral("10"), size), nullptr, &exp, size));
        b.append(text(s.mid(end), size));
        return b;
    }
    return text(s, size);
}

// An operator with `space` ems on either side.
Box Layout::op(const QString& s, double size, double space) const {
    Box b;
    b.space(space * em(size));
    b.append(text(s, size));
    b.space(space * em(size));
    return b;
}

Box Layout::factors(const std::vector<NodePtr>& list, double size) const {
    Box out;
    if (list.empty()) return text(QStringLiteral("1"), size);
    for (size_t i = 0; i < list.size(); ++i) {
        if (i > 0) out.append(op(QString(kDot), size, 0.16));
        Box f = node(list[i], size);
        if (list.size() >= 2 && fl::isLoose(list[i])) f = fenced(f, size, '(', ')');
        out.append(f);
    }
    return out;
}

Box Layout::sum(const fl::Node& n, double size) const {
    Box out;
    for (size_t i = 0; i < n.terms.size(); ++i) {
        const fl::SumTerm& t = n.terms[i];
        if (i == 0) {
            if (t.sign < 0) {
                out.append(text(QString(kMinus), size));
                out.space(0.05 * em(size));
            }
        } else {
            out.append(op(t.sign < 0 ? QString(kMinus) : QStringLiteral("+"), size, 0.22));
        }
        Box b = node(t.node, size);
        if (fl::isLoose(t.node)) b = fenced(b, size, '(', ')');
        out.append(b);
    }
    return out;
}

Box Layout::product(const fl::Node& n, double size) const {
    std::vector<NodePtr> num, den;
    for (const fl::ProdFactor& f : n.factors)
        (f.op == '/' ? den : num).push_back(f.node);
    if (den.empty()) return factors(num, size);
    return fraction(factors(num, size), factors(den, size), size);
}

Box Layout::power(const fl::Node& n, double size) const {
    const NodePtr& b = n.base;
    const double ss = scriptSize(size);
    const Box exp = node(n.exponent, ss);
    if (b && b->kind == fl::NodeKind::Var) {
        const Symbol sym = symbol(fl::symbolDisplay(b->name), size);
        if (sym.hasSub && sym.rest.prims.empty()) return scripts(sym.nucleus, &sym.sub, &exp, size);
        Box whole = sym.nucleus;
        if (sym.hasSub) {
            whole = scripts(sym.nucleus, &sym.sub, nullptr, size);
            whole.append(sym.rest);
        }
        return scripts(whole, nullptr, &exp, size);
    }
    Box base = node(b, size);
    if (!fl::isBareBase(b)) base = fenced(base, size, '(', ')');
    return scripts(base, nullptr, &exp, size);
}

Box Layout::func(const fl::Node& n, double size) const {
    if (n.name == "sqrt") return root(node(n.arg, size), size);
    Box arg = node(n.arg, size);
    if (n.name == "abs") return fenced(arg, size, '|', '|');
    if (fl::wantsDegreeMark(n)) arg.append(text(QString(QChar(0x00B0)), size));
    Box out = rich(fl::functionLabel(n.name), size, false);
    out.space(0.06 * em(size));
    out.append(fenced(arg, size, '(', ')'));
    return out;
}

Box Layout::node(const NodePtr& n, double size) const {
    if (!n) return text(QStringLiteral("?"), size);
    switch (n->kind) {
    case fl::NodeKind::Num:
        return number(*n, size);
    case fl::NodeKind::Pi:
        return text(QString(QChar(0x03C0)), size);
    case fl::NodeKind::Var: {
        const Symbol sym = symbol(fl::symbolDisplay(n->name), size);
        if (!sym.hasSub) return sym.nucleus;
        Box b = scripts(sym.nucleus, &sym.sub, nullptr, size);
        b.append(sym.rest);
        return b;
    }
    case fl::NodeKind::Sum:
        return sum(*n, size);
    case fl::NodeKind::Prod:
        return product(*n, size);
    case fl::NodeKind::Pow:
        return power(*n, size);
    case fl::NodeKind::Func:
        return func(*n, size);
    default:
        return text(QStringLiteral("?"), size);
    }
}

// The bar sits on the axis; numerator and denominator keep a fixed clearance
// from it, measured from their ink, and the bar reaches a little past both.
Box Layout::fraction(const Box& num, const Box& den, double size) const {
    const double t = rule(size);
    const double gap = 0.15 * em(size);
    const double over = 0.1 * em(size);
    const double w = std::max(num.w, den.w) + 2 * over;
    const double barTop = -axis(size) - t / 2;
    Box b;
    b.place(num, (w - num.w) / 2, barTop - gap - num.desc);
    b.place(den, (w - den.w) / 2, barTop + t + gap + den.asc);
    b.prims.push_back({Prim::Rule, {}, {}, {}, QRectF(0, barTop, w, t), {}, 0});
    b.w = w + 0.06 * em(size);
    return b;
}

// A tick, a heavy down stroke, a long thin up stroke and the bar over the
// radicand, drawn to the radicand's height.
Box Layout::root(const Box& rad, double size) const {
    const double e = em(size);
    const double t = rule(size);
    const double top = -(rad.asc + 0.14 * e + t); // top edge of the bar
    const double bottom = std::max(rad.desc, 0.0) + 0.1 * e;
    const double sign = 0.58 * e;
    const double tickY = bottom - std::min(0.42 * e, 0.5 * (bottom - top));

    Box b;
    QPainterPath light;
    light.moveTo(0.02 * e, tickY + 0.06 * e);
    light.lineTo(0.13 * e, tickY);
    Box strokes;
    strokes.prims.push_back({Prim::Stroke, {}, {}, {}, {}, light, t});
    QPainterPath heavy;
    heavy.moveTo(0.13 * e, tickY);
    heavy.lineTo(0.3 * e, bottom - 0.04 * e);
    strokes.prims.push_back({Prim::Stroke, {}, {}, {}, {}, heavy, 2.1 * t});
    QPainterPath up;
    up.moveTo(0.3 * e, bottom - 0.04 * e);
    up.lineTo(sign, top + t / 2);
    strokes.prims.push_back({Prim::Stroke, {}, {}, {}, {}, up, t});
    b.prims = strokes.prims;

    const double padL = 0.1 * e, padR = 0.08 * e;
    b.place(rad, sign + padL, 0);
    b.prims.push_back(
        {Prim::Rule, {}, {}, {}, QRectF(sign - t / 2, top, padL + rad.w + padR + t / 2, t), {}, 0});
    b.w = sign + padL + rad.w + padR + 0.06 * e;
    b.asc = std::max(b.asc, -top);
    b.desc = std::max(b.desc, bottom + t);
    return b;
}

// The font's parentheses while they cover the content; drawn ones, centred
// on the axis, around anything taller (a fraction, a root).
Box Layout::fenced(const Box& inner, double size, QChar open, QChar close) const {
    const QFontMetricsF fm(font(size, false), &device);
    const QRectF glyph = fm.tightBoundingRect(QString(open));
    const double slack = 0.05 * em(size);
    Box out;
    if (inner.asc <= -glyph.top() + slack && inner.desc <= glyph.bottom() + slack) {
        out.append(text(QString(open), size));
        out.space(0.03 * em(size));
        out.append(inner);
        out.space(0.03 * em(size));
        out.append(text(QString(close), size));
        return out;
    }
    const double a = axis(size);
    const double half = std::max(inner.asc - a, inner.desc + a) + 0.12 * em(size);
    out.append(delimiter(open, -a - half, -a + half, size));
    out.space(0.06 * em(size));
    out.append(inner);
    out.space(0.06 * em(size));
    out.append(delimiter(close, -a - half, -a + half, size));
    return out;
}

Box Layout::delimiter(QChar c, double top, double bottom, double size) const {
    const double e = em(size);
    const double h = bottom - top;
    const double t = rule(size);
    Box b;
    if (c == '|') {
        b.prims.push_back({Prim::Rule, {}, {}, {}, QRectF(0.1 * e, top, t, h), {}, 0});
        b.w = 0.2 * e + t;
    } else {
        // A crescent: thin at the ends, about 1.8 rules thick in the middle.
        const double w = std::min(0.42 * e, 0.2 * e + 0.04 * h);
        const double thick = 1.8 * t;
        const double mid = (top + bottom) / 2;
        QPainterPath p;
        p.moveTo(w, top);
        p.quadTo(-0.12 * w, mid, w, bottom);
        p.lineTo(w - 0.35 * t, bottom);
        p.quadTo(-0.12 * w + 2 * thick, mid, w - 0.35 * t, top);
        p.closeSubpath();
        if (c == ')') {
            QTransform mirror(-1, 0, 0, 1, w, 0);
            p = mirror.map(p);
        }
        b.prims.push_back({Prim::Fill, {}, {}, {}, {}, p, 0});
        b.w = w + 0.04 * e;
    }
    b.asc = -top;
    b.desc = bottom;
    return b;
}

Box Layout::scripts(Box nucleus, const Box* sub, const Box* sup, double size) const {
    const double e = em(size);
    const double ss = scriptSize(size);
    double supShift = 0, subShift = 0;
    if (sup) supShift = std::max({0.4 * e, nucleus.asc - 0.38 * em(ss), sup->desc + 0.25 * xHeight0 * size});
    if (sub) subShift = std::max({0.17 * e, sub->asc - 0.8 * xHeight0 * size});
    if (sub && sup) {
        // Keep the two scripts at least four rules apart.
        const double clash = 4 * rule(size) - ((supShift - sup->desc) - (sub->asc - subShift));
        if (clash > 0) {
            subShift += clash / 2;
            supShift += clash / 2;
        }
    }
    Box out = nucleus;
    const double x = nucleus.w;
    if (sub) out.place(*sub, x, subShift);
    if (sup) out.place(*sup, x, -supShift);
    out.w += 0.04 * e;
    return out;
}

struct Placed {
    Box box;
    MathMetrics metrics;
    QPointF origin; // baseline start inside the image
};

// How far the image's axis must lie above its middle (negative: below) for
// it to meet the axis of the text around it; see MathStyle. `height` is the
// image's height, which decides the line's height in a cell.
double axisLift(const MathStyle& style, const QImage& device, double height) {
    const QFont around = style.around.family().isEmpty() ? style.font : style.around;
    const QFontMetricsF fm(around, &device);
    const double textAxis = -fm.tightBoundingRect(QStringLiteral("+")).center().y();
    // The text engine rounds the x-height it centres by.
    const double quarterX = QFontMetrics(around, &device).xHeight() / 4.0;
    if (!style.ownCell) return textAxis - quarterX;
    // The row centres the text's line box and the image's line box; the
    // image's line is its own height, unless the text's line is taller.
    const double lineAsc = std::max(fm.ascent(), height / 2 + quarterX);
    const double lineDesc = std::max(fm.descent(), height / 2 - quarterX);
    return textAxis - (fm.ascent() - fm.descent()) / 2 + (lineAsc - lineDesc) / 2 - quarterX;
}

// The image around the layout: at least the main line, one pixel to spare
// above and below and two at the sides, and padded so that its axis lies
// where axisLift wants it.
Placed place(const NodePtr& node, const MathStyle& style) {
    const Layout lay(style);
    Box b = lay.node(node, 1.0);
    const double pad = 2.0;
    const double a = lay.axis(1.0);
    const double above0 = std::max(b.asc, lay.mainAscent()) + 1 - a;
    const double below0 = std::max(b.desc, lay.mainDescent()) + 1 + a;
    QImage device(1, 1, QImage::Format_ARGB32_Premultiplied);
    device.setDotsPerMeterX(3780);
    device.setDotsPerMeterY(3780);
    double above = above0, below = below0;
    // In a cell the lift depends on the height it makes; a few rounds settle it.
    for (int round = 0; round < 4; ++round) {
        const double lift = axisLift(style, device, above + below);
        above = std::ceil(std::max(above0, below0 - 2 * lift));
        below = std::ceil(std::max(below0, above + 2 * lift));
    }
    Placed p;
    p.box = std::move(b);
    p.origin = QPointF(pad, above + a);
    p.metrics.size = QSizeF(std::ceil(p.box.w + 2 * pad), above + below);
    p.metrics.baseline = above + a;
    p.metrics.axis = above;
    p.metrics.ink = p.box.w;
    return p;
}

double snap(double v, double dpr) {
    return std::round(v * dpr) / dpr;
}

void paint(QPainter& painter, const QPointF& at, const Placed& placed, const MathStyle& style, double dpr) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    const QPointF o = at + placed.origin;
    for (const Prim& p : placed.box.prims) {
        switch (p.type) {
        case Prim::Text:
            painter.setPen(style.color);
            painter.setFont(p.font);
            painter.drawText(QPointF(o.x() + p.pos.x(), snap(o.y() + p.pos.y(), dpr)), p.text);
            break;
        case Prim::Rule: {
            // Rules fall on whole device pixels: a one-pixel bar stays one
            // pixel, not two grey ones.
            QRectF r = p.rect.translated(o);
            const double y0 = snap(r.top(), dpr);
            const double h = std::max(1.0, std::round(r.height() * dpr)) / dpr;
            const double x0 = snap(r.left(), dpr);
            const double w = std::max(1.0, std::round(r.width() * dpr)) / dpr;
            painter.fillRect(QRectF(x0, y0, w, h), style.color);
            break;
        }
        case Prim::Stroke: {
            QPen pen(style.color, p.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
            painter.setPen(pen);
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(p.path.translated(o));
            break;
        }
        case Prim::Fill:
            painter.setPen(Qt::NoPen);
            painter.setBrush(style.color);
            painter.drawPath(p.path.translated(o));
            break;
        }
    }
    painter.restore();
}

} // namespace

MathStyle sheetMathStyle(bool ownCell, double pt) {
    MathStyle s;
    s.font = mathFont(13);
    s.lineHeight = 18 * textScale();
    // In a formula line of its own size (already scaled), the image is set
    // at that size, and so is its main line.
    if (pt > 0) {
        s.font.setPointSizeF(pt);
        s.lineHeight = 18 * pt / 13;
        s.around = s.font;
    }
    s.color = qcolor(colors().text);
    // The cells of an equation table are set at 13.5 pt (table.eqs td).
    if (ownCell) s.around = mathFont(13.5);
    s.ownCell = ownCell;
    return s;
}

MathMetrics mathMetrics(const fl::NodePtr& node, const MathStyle& style) {
    return place(node, style).metrics;
}

QImage mathImage(const fl::NodePtr& node, const MathStyle& style, double dpr) {
    const Placed placed = place(node, style);
    if (dpr <= 0) dpr = 1.0;
    const QSize px(std::max(1, int(std::ceil(placed.metrics.size.width() * dpr))),
                   std::max(1, int(std::ceil(placed.metrics.size.height() * dpr))));
    QImage img(px, QImage::Format_ARGB32_Premultiplied);
    img.setDotsPerMeterX(3780);
    img.setDotsPerMeterY(3780);
    img.fill(Qt::transparent);
    img.setDevicePixelRatio(dpr);
    QPainter painter(&img);
    paint(painter, QPointF(0, 0), placed, style, dpr);
    painter.end();
    return img;
}

void paintMath(QPainter& painter, const QPointF& topLeft, const fl::NodePtr& node, const MathStyle& style) {
    paint(painter, topLeft, place(node, style), style,
          painter.device() ? painter.device()->devicePixelRatio() : 1.0);
}

} // namespace app
