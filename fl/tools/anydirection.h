// What the motor, the transformer and the three-phase load share around
// solveChain: the set-up from a name table, the sorting of the consistency
// check into near misses and conflicts, the grid of every known quantity and
// the result frame with hints above the sheet. Internal to fl/tools.
#pragma once

#include "fl/tools/machinefigs.h"
#include "fl/tools/machines.h"

#include <set>

namespace fl::anydir {

const ToolQuantity* find(const std::vector<ToolQuantity>& table, const std::string& key);

// Units from the table, givens shown as typed.
ChainSetup setupFor(const std::vector<ToolQuantity>& table, const std::map<std::string, std::string>& shown);

struct Checked {
    std::vector<std::string> nearMisses; // one line each
    std::vector<std::string> conflicts;
};
Checked check(const ChainResult& chain, const std::map<std::string, double>& vars, const ChainSetup& setup);

// The lines joined by "<br>".
std::string lines(const std::vector<std::string>& list);
// The keys of `keys` without a value in `vars`, in that order.
std::vector<std::string> unknownOf(const std::map<std::string, double>& vars,
                                   const std::vector<std::string>& keys);

// One cell per quantity of `table` with a value: symbol, value and unit;
// those not in `given` are found and stand highlighted.
std::string knownGrid(const std::vector<ToolQuantity>& table, const std::map<std::string, double>& vars,
                      const std::set<std::string>& given);
// The found quantities of `table`, for the strip of recent values.
std::vector<RecentValue> found(const std::vector<ToolQuantity>& table,
                               const std::map<std::string, double>& vars, const std::set<std::string>& given);

// The values for a figure: what isn't given was found.
MachineValues drawn(const std::map<std::string, double>& vars, const std::set<std::string>& given);
// The figure with the line that says what its blue means.
std::string figureWithFound(FigureOut&& fig);

// finish() with `notes` (msg blocks) standing above the sheet inside the result.
void finishWithNotes(ToolOut& out, const ToolSheet& sheet, const std::string& notes,
                     std::vector<RecentValue> recent);

} // namespace fl::anydir
