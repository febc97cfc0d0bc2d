// The schematic of a series/parallel circuit tree as SVG, with the boxes a
// click can land on. One routine serves the editor, the saved-circuit
// preview, the sheets and the class tasks. Blocks are measured bottom-up, so
// nothing overlaps however deep the nesting; the source stands on a wire
// below the block, between two rails.
#pragma once

#include "fl/circuit/analysis.h"
#include "fl/fig/canvas.h"

#include <string>
#include <vector>

namespace fl {

struct MeterInfo;

// A clickable block in SVG units; the list is in drawing order, every group
// after its children.
struct HitBox {
    std::string id;
    double x = 0, y = 0, w = 0, h = 0;
    bool group = false;
    bool contains(double px, double py) const { return px >= x && px <= x + w && py >= y && py <= y + h; }
};

// A leaf's block; a component's box is its width by 96.
constexpr double kLeafW = 116;
constexpr double kLeafHDc = 112;
constexpr double kLeafHAc = 136;
constexpr double kLeafAbove = 38;
constexpr double kLeafBoxH = 96;

// Fills `extent` and `innerExtent` of the node and everything below it.
void measure(const CNodePtr& node, bool isAc);

struct SchematicOptions {
    std::string selection; // id of the selected node
    std::string subject;   // id of the node a step is about; drawn framed in the accent colour
    bool ac = false;       // ignored by the overloads that take a circuit: its mode decides
    // Halos behind the texts. Without results every text of a schematic
    // stands clear of the wires, so the editor, which draws on every edit,
    // leaves them out and paints in less than half the time.
    bool halos = true;
};

// The circuit drawn with what `values` knows (may be empty: no results yet).
// Typed values show as given, values only in `values` as computed. `hits`
// may be null (a figure nobody clicks). The circuit is renumbered first,
// unless it is being solved. `outW`/`outH` get the natural size.
std::string schematic(Circuit& c, const Values& values, const SchematicOptions& options,
                      std::vector<HitBox>* hits, double* outW, double* outH);
// The same as a figure with its shapes, for a sheet that paints it.
FigureOut schematicFigure(Circuit& c, const Values& values, const SchematicOptions& options, double* outW,
                          double* outH);
// The working circuit, with the selection it holds.
std::string schematic(const Values& values, const std::string& selection, std::vector<HitBox>* hits,
                      double* outW, double* outH);

// `values` with each meter's reading under the meter's name ("A1", "V2"),
// where the solve found the quantity it measures: the drawing shows them as
// "viser …".
Values withMeterReadings(const Values& values, const MeterInfo& meters);

// A component value as the drawing shows it: "4,7 kΩ", "47 µF", "230 V".
std::string quantityText(double value, const std::string& unit);

} // namespace fl
