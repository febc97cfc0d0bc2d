// The result markup: the HTML dialect in which the core writes answers, with
// figures (SVG) and expression images handed beside it by number ("f:N",
// "m:N"). The widgets that show it live in app/.
#pragma once

#include "fl/expr/node.h"

#include <string>
#include <tuple>
#include <vector>

namespace fl {

struct RenderResult {
    std::string html;
    std::vector<std::string> figs;
    std::vector<NodePtr> maths;

    // Appends `other`, renumbering its "f:N" and "m:N" sources.
    void append(const RenderResult& other);
};

// The process-wide lists a rendering pass collects into (interface thread only).
std::string addFigure(const std::string& svg);   // "f:" + index
std::string addMath(const NodePtr& node);         // "m:" + index
void resetFigures();
// Moves both lists into a result together with `html`.
RenderResult takeRender(std::string html);

}  // namespace fl
