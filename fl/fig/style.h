// How a figure looks: the palette its class words draw from, the one rule
// for numbers inside SVG, the class words themselves turned into literal
// attributes (an SVG here has no stylesheet of its own), and an estimate of
// how wide a text will be, so that layouts can keep labels apart without
// asking a font engine. Geometry lives in fl/fig/canvas.h.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace fl {

// The theme's fifteen colours in the theme's order (0 background, 1 panel,
// 2 text, 3 muted, 4 line, 5 accent, 6 soft, 7 ok, 8 bad, 9 input, 10 chip,
// 11 teal, 12 orange, 13 purple, 14 green), as "#rrggbb".
struct FigColors {
    std::array<std::string, 15> slot;
    bool dark = false;
};

// The light palette, which is in force until the interface sets another.
const FigColors& lightFigColors();
// Figures take their colours when they are drawn; the theme sets these on
// every change, so the next figure follows it. Interface thread only.
const FigColors& figColors();
void setFigColors(const FigColors& colors);

// A coordinate or length as it enters the SVG: rounded to one decimal and
// written without a trailing ".0", always with a point. A value that isn't
// finite writes "0"; the writers leave such elements out before it comes to that.
std::string num(double v);
// The same, appended to `out` without a temporary.
void appendNum(std::string& out, double v);

// How the blank-separated class words `cls` paint a shape; unknown words
// are ignored. Slots rather than colours, so that it holds in either theme.
struct ShapeStyle {
    int fill = -1, stroke = -1; // palette slots; -1 for none
    double width = 0;           // of the stroke; 0 leaves the SVG default of 1
    double dashOn = 0, dashOff = 0; // 0 for a solid stroke
    bool roundJoin = false, roundCap = false;
};
ShapeStyle shapeStyle(std::string_view cls);
// The same as ` fill=".." stroke=".." stroke-width=".."` and extras. Kept
// until the palette changes.
const std::string& shapeAttrs(std::string_view cls);

// The font of a text class.
struct TextStyle {
    double size = 15;
    int colour = 2; // palette slot
    bool bold = false;
    bool italic = false;
    int weight = 0; // a numeric weight (600) where bold is too heavy; 0 none
};
TextStyle textStyle(std::string_view cls);
// ` font-family=".." font-size=".." fill=".."` and weight or style; for the
// halo behind the letters, the panel colour as fill and a wide stroke.
const std::string& textAttrs(const TextStyle& style, bool halo = false);

constexpr const char* kFigFont = "'Segoe UI',system-ui,sans-serif";
// The size of a subscript relative to its line, and how far it drops.
constexpr double kSubSize = 0.75;
constexpr double kSubDrop = 0.3;

// Estimated advance width in pixels of a label (which may hold <sub>…</sub>)
// at `size`, from the metrics of the interface face. Good to a few percent.
double textWidth(std::string_view content, double size, bool bold = false);
double textWidth(std::string_view content, std::string_view cls);

} // namespace fl
