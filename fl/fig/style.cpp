// The palette of figures, the number rule and the class words.
#include "fl/fig/style.h"

#include <charconv>
#include <cstdint>
#include <unordered_map>
#include <cmath>

namespace fl {

namespace {

FigColors& current() {
    static FigColors c = lightFigColors();
    return c;
}

// Attribute texts by class word and by font, built once per palette: a
// schematic asks for the same few hundred times.
struct AttrCache {
    std::unordered_map<std::string, std::string> shapes;
    std::unordered_map<uint64_t, std::string> texts;
};
AttrCache& cache() {
    static AttrCache c;
    return c;
}

std::string buildShapeAttrs(std::string_view cls);
ShapeStyle buildShapeStyle(std::string_view cls);
TextStyle buildTextStyle(std::string_view cls);
std::string buildTextAttrs(const TextStyle& style, bool halo);

bool hasWord(std::string_view cls, std::string_view word) {
    size_t i = 0;
    while (i < cls.size()) {
        while (i < cls.size() && cls[i] == ' ')
            ++i;
        size_t j = i;
        while (j < cls.size() && cls[j] != ' ')
            ++j;
        if (cls.substr(i, j - i) == word) return true;
        i = j;
    }
    return false;
}

// Advance widths of the interface face (Noto Sans, where Segoe UI is absent;
// the two are close) in thousandths of the size, for ASCII 32…126.
constexpr short kAscii[95] = {
    260, 269, 408, 646, 572, 831, 732, 225, 300, 300, 551, 572, 268, 322, 268, 372, 572, 572, 572,
    572, 572, 572, 572, 572, 572, 572, 268, 268, 572, 572, 572, 434, 899, 639, 650, 632, 730, 556,
    519, 728, 741, 339, 273, 619, 524, 907, 760, 781, 605, 781, 622, 549, 556, 731, 600, 930, 586,
    566, 572, 329, 372, 329, 572, 444, 281, 561, 615, 480, 615, 564, 344, 615, 618, 258, 258, 534,
    258, 935, 618, 605, 615, 615, 413, 479, 361, 618, 508, 786, 529, 510, 470, 380, 551, 380, 572};

struct Wide {
    char32_t c;
    short w;
};
constexpr Wide kOther[] = {
    {U'Æ', 881}, {U'Ø', 781}, {U'Å', 639}, {U'æ', 864}, {U'ø', 605}, {U'å', 561}, {U'é', 564},
    {U'φ', 725}, {U'Ω', 782}, {U'µ', 623}, {U'μ', 623}, {U'√', 637}, {U'−', 838}, {U'·', 268},
    {U'°', 428}, {U'²', 350}, {U'³', 350}, {U'±', 572}, {U'≈', 838}, {U'∠', 896}, {U'π', 659},
    {U'Δ', 581}, {U'δ', 604}, {U'ρ', 605}, {U'∞', 833}, {U'⁻', 338}, {U'¹', 350}, {U'×', 572},
    {U'–', 500}, {U'…', 791}, {U'½', 771}, {U'θ', 595}, {U'α', 615}, {U'β', 631}, {U'ω', 782},
    {U'λ', 542}, {U'Σ', 570}, {U'∼', 838}, {U'∿', 838}, {U'⁰', 350}, {U'⁴', 350}, {U'⁵', 350},
    {U'⁶', 350}, {U'⁷', 350}, {U'⁸', 350}, {U'⁹', 350}};

int advance(char32_t c) {
    if (c >= 32 && c < 127) return kAscii[c - 32];
    for (const Wide& w : kOther)
        if (w.c == c) return w.w;
    return 620; // a wide-ish guess, so that an unknown letter never overflows its room
}

// Decodes one UTF-8 sequence at `i`, moving past it.
char32_t nextChar(std::string_view s, size_t& i) {
    const unsigned char b = static_cast<unsigned char>(s[i]);
    int len = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
    if (i + len > s.size()) len = 1;
    char32_t c = len == 1 ? b : len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
    for (int k = 1; k < len; ++k)
        c = (c << 6) | (static_cast<unsigned char>(s[i + k]) & 0x3F);
    i += len;
    return c;
}

} // namespace

const FigColors& lightFigColors() {
    static const FigColors c{{"#f3f5f8", "#ffffff", "#1b1f24", "#5d6672", "#d3d9e1", "#2457d6", "#e7edfc",
                              "#1a7f37", "#c62828", "#ffffff", "#eef1f5", "#0b7a75", "#d9480f", "#7048e8",
                              "#2b8a3e"},
                             false};
    return c;
}

const FigColors& figColors() { return current(); }
void setFigColors(const FigColors& colors) {
    current() = colors;
    cache().shapes.clear();
    cache().texts.clear();
}

void appendNum(std::string& out, double v) {
    if (!std::isfinite(v)) {
        out += '0';
        return;
    }
    const double x = std::round(10.0 * v) / 10.0;
    char buf[40];
    const bool whole = x == std::floor(x);
    const auto r = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::fixed, whole ? 0 : 1);
    out.append(buf, r.ptr);
}

std::string num(double v) {
    std::string s;
    appendNum(s, v);
    return s;
}

ShapeStyle shapeStyle(std::string_view cls) {
    static std::unordered_map<std::string, ShapeStyle> known;
    const std::string key(cls);
    if (auto it = known.find(key); it != known.end()) return it->second;
    return known.emplace(key, buildShapeStyle(cls)).first->second;
}

const std::string& shapeAttrs(std::string_view cls) {
    auto& shapes = cache().shapes;
    const std::string key(cls);
    if (auto it = shapes.find(key); it != shapes.end()) return it->second;
    return shapes.emplace(key, buildShapeAttrs(cls)).first->second;
}

namespace {

std::string buildShapeAttrs(std::string_view cls) {
    const ShapeStyle st = shapeStyle(cls);
    const FigColors& c = figColors();
    std::string out = " fill=\"";
    out += st.fill < 0 ? std::string("none") : c.slot[static_cast<size_t>(st.fill)];
    out += '"';
    if (st.stroke >= 0) {
        out += " stroke=\"" + c.slot[static_cast<size_t>(st.stroke)] + "\"";
        if (st.width > 0) {
            out += " stroke-width=\"";
            appendNum(out, st.width);
            out += '"';
        }
    }
    if (st.roundJoin) out += " stroke-linejoin=\"round\"";
    if (st.roundCap) out += " stroke-linecap=\"round\"";
    if (st.dashOn > 0) {
        out += " stroke-dasharray=\"";
        appendNum(out, st.dashOn);
        out += ' ';
        appendNum(out, st.dashOff);
        out += '"';
    }
    return out;
}

ShapeStyle buildShapeStyle(std::string_view cls) {
    ShapeStyle s;
    const auto has = [&](std::string_view w) { return hasWord(cls, w); };
    const auto stroke = [&](int slot, double width) { s.fill = -1, s.stroke = slot, s.width = width; };

    // Checked in this order; a later word overrides what an earlier one set.
    if (has("shape")) s.fill = 6, s.stroke = 2, s.width = 2, s.roundJoin = true;
    if (has("ln")) stroke(2, 2);
    if (has("hlL") || has("hlArc")) stroke(5, 4.5), s.roundCap = true;
    if (has("thin")) stroke(3, 1.3);
    if (has("dash")) stroke(3, 1.5), s.dashOn = 5, s.dashOff = 4;
    if (has("axis")) stroke(3, 1);
    if (has("grid")) stroke(4, 1);
    if (has("ang")) stroke(5, 1.6);
    if (has("node")) s.fill = 2;
    if (has("wire")) stroke(2, 2), s.roundJoin = true;
    if (has("comp")) s.fill = 1, s.stroke = 2, s.width = 2;
    if (has("gap")) s.fill = 1;
    if (has("plate")) s.stroke = 2, s.width = has("short") ? 5 : 2.5;
    if (has("hlc")) s.stroke = 5, s.width = 2;
    const bool ar = has("ar"), ah = has("ah");
    if (ar) stroke(2, 2.5);
    if (ah) s.fill = 2, s.stroke = -1, s.width = 0;
    // The colour of an arrow: its line's stroke, its head's fill.
    const auto arrowColour = [&](int slot) {
        if (ar) s.stroke = slot;
        if (ah) s.fill = slot;
    };
    if (has("res")) arrowColour(5);
    if (has("cur")) arrowColour(11);
    if (has("ref")) arrowColour(3);
    if (has("w1")) s.stroke = 11;
    if (has("w2")) s.stroke = 12;
    for (int k = 1; k <= 4; ++k)
        if (has("seg" + std::to_string(k))) s.stroke = 10 + k;
    if (has("coil")) stroke(2, 2);
    if (has("gbox")) stroke(3, 1.2), s.dashOn = 4, s.dashOff = 4;
    if (has("gsel") && has("gbox")) s.stroke = 5;
    if (has("hsel")) s.fill = 6, s.stroke = -1, s.width = 0;
    if (has("hsel") && has("hlc")) s.stroke = 5, s.width = 2;
    return s;
}

} // namespace

TextStyle textStyle(std::string_view cls) {
    static std::unordered_map<std::string, TextStyle> known;
    const std::string key(cls);
    if (auto it = known.find(key); it != known.end()) return it->second;
    return known.emplace(key, buildTextStyle(cls)).first->second;
}

namespace {

TextStyle buildTextStyle(std::string_view cls) {
    TextStyle s;
    const auto has = [&](std::string_view w) { return hasWord(cls, w); };
    if (has("hl")) s.size = 15, s.colour = 5, s.bold = true;
    if (has("mut")) s.size = 13.5, s.colour = 3;
    if (has("angt")) s.size = 14;
    if (has("vname")) s.size = 16, s.italic = true, s.bold = true;
    if (has("sym")) s.size = 14, s.bold = true;
    if (has("t1")) s.colour = 11, s.bold = true;
    if (has("t2")) s.colour = 12, s.bold = true;
    for (int k = 1; k <= 4; ++k)
        if (has("vl" + std::to_string(k))) s.colour = 10 + k;
    if (has("res")) s.size = 13, s.colour = 5;
    // A current's text takes the colour of its arrow.
    if (has("cur")) s.colour = 11;
    if (has("tick")) s.size = has("tbig") ? 12.5 : 10.5, s.colour = 3;
    if (has("glab")) s.size = 11.5, s.colour = has("hl") ? 5 : 3;
    if (has("big30")) s.size = 30, s.weight = 600;
    if (has("s16")) s.size = 16;
    if (has("s17")) s.size = 17;
    return s;
}

} // namespace

const std::string& textAttrs(const TextStyle& style, bool halo) {
    const uint64_t key = static_cast<uint64_t>(std::lround(style.size * 10)) << 24 |
                         static_cast<uint64_t>(style.colour) << 16 | static_cast<uint64_t>(style.weight) << 4 |
                         (style.bold ? 4u : 0u) | (style.italic ? 2u : 0u) | (halo ? 1u : 0u);
    auto& texts = cache().texts;
    if (auto it = texts.find(key); it != texts.end()) return it->second;
    std::string out = buildTextAttrs(style, halo);
    return texts.emplace(key, std::move(out)).first->second;
}

namespace {

std::string buildTextAttrs(const TextStyle& style, bool halo) {
    // The halo is the same text in the panel colour, stroked wide: drawn
    // first, it clears lines from behind the letters.
    const std::string& fill = figColors().slot[halo ? 1 : static_cast<size_t>(style.colour)];
    std::string out = " font-family=\"";
    out += kFigFont;
    out += "\" font-size=\"";
    appendNum(out, style.size);
    out += "\" fill=\"" + fill + "\"";
    if (style.bold) out += " font-weight=\"bold\"";
    else if (style.weight) out += " font-weight=\"" + std::to_string(style.weight) + "\"";
    if (style.italic) out += " font-style=\"italic\"";
    if (halo) out += " stroke=\"" + fill + "\" stroke-width=\"4\" stroke-linejoin=\"round\"";
    return out;
}

} // namespace

double textWidth(std::string_view content, double size, bool bold) {
    double total = 0, scale = 1;
    for (size_t i = 0; i < content.size();) {
        if (content.substr(i, 5) == "<sub>") {
            scale = kSubSize, i += 5;
            continue;
        }
        if (content.substr(i, 6) == "</sub>") {
            scale = 1, i += 6;
            continue;
        }
        total += advance(nextChar(content, i)) * scale;
    }
    return total * size / 1000.0 * (bold ? 1.05 : 1.0);
}

double textWidth(std::string_view content, std::string_view cls) {
    const TextStyle s = textStyle(cls);
    return textWidth(content, s.size, s.bold || s.weight >= 600);
}

} // namespace fl
