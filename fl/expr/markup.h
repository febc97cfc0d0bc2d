// The result markup: the HTML dialect in which the core writes answers, with
// figures (SVG) and expression images handed beside it by number ("f:N",
// "m:N"), the small text helpers around it and the builders of its blocks.
// The widgets that show it live in app/.
#pragma once

#include "fl/expr/isolate.h"
#include "fl/expr/node.h"

#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace fl {

// A figure as a painter takes it (fl/fig/canvas.h): only the figures' own
// library fills one in; the markup merely carries it beside the SVG.
struct ShapeFigure;
using ShapeFigurePtr = std::shared_ptr<const ShapeFigure>;

struct RenderResult {
    std::string html;
    std::vector<std::string> figs;
    std::vector<NodePtr> maths;
    // Beside `figs`, by the same index: the figure again as shapes, where
    // its writer kept them, so that a view can paint it without the SVG
    // renderer. May be shorter than `figs`; null where there are none.
    std::vector<ShapeFigurePtr> figShapes;

    // Appends `other`, renumbering its "f:N" and "m:N" sources.
    void append(const RenderResult& other);
    // The shapes of figure `n`, or null.
    const ShapeFigure* shapesOf(size_t n) const {
        return n < figShapes.size() ? figShapes[n].get() : nullptr;
    }
};

// The process-wide lists a rendering pass collects into (interface thread only).
std::string addFigure(const std::string& svg, ShapeFigurePtr shapes = nullptr); // "f:" + index
std::string addMath(const NodePtr& node);         // "m:" + index
void resetFigures();
// Moves both lists into a result together with `html`.
RenderResult takeRender(std::string html);

// Text helpers.
std::string htmlEscape(const std::string& text); // &, <, > as entities
std::string varSpan(const std::string& name);    // a variable in italic serif
// "R_e" → "R<sub>e</sub>"; after "φ_" and "cos φ_" the index may hold digits too.
std::string symbolHtml(const std::string& text);
std::string stripTags(const std::string& html);
// For text fields and the clipboard: indices as they are, powers as superscript
// characters, other tags removed, the common entities decoded.
std::string htmlToPlain(const std::string& html);

// Block builders.
std::string msgBox(const std::string& html, bool bad);
// Aligned equations: left = right, with a note.
std::string eqTable(const std::vector<WorkRow>& rows);

struct KvItem {
    std::string key = {};
    std::string value = {};
    bool highlight = false;
};
std::string kvGrid(const std::vector<KvItem>& items, int columns);

// One titled block of a worked sheet.
struct StepBlock {
    std::string title = {};
    std::string page = {};   // where the formula stands in the class's book ("6", "YΔ-arket"); may be empty
    std::string html = {};   // the body
    std::string solves = {}; // the quantity the block finds; for the guide, not printed here
    std::string uses = {};   // the quantities it takes, joined by ","; not printed here
};
// Numbered blocks under "Udregning trin for trin"; nothing for an empty list.
std::string stepBlocks(const std::vector<StepBlock>& steps);
// The same, with each block's page reference after its title.
std::string stepBlocksBook(const std::vector<StepBlock>& steps);

// An SVG body of a natural size as an image of this pass ("f:N"), with an
// optional caption.
std::string figure(const std::string& svgBody, int width, int height, const std::string& caption = {},
                   ShapeFigurePtr shapes = nullptr);

// What a worked sheet holds besides its head; empty parts are left out.
struct SheetSections {
    std::vector<std::string> given; // one line each
    std::vector<StepBlock> steps;
    std::string figure;    // markup from figure()
    std::string check;     // "Kontrol"
    std::string results;   // "Resultater"
    std::string answer;    // inside the FACIT box
    std::string revealed;  // shown once the answer is revealed
    std::string concealed; // shown until then
};
std::string sheet(const std::string& id, const std::vector<std::string>& crumbs, const std::string& title,
                  const SheetSections& sections);

// A label cut into runs for widgets that paint text by hand.
enum class Script { Normal, Sub, Sup };
struct RichRun {
    std::string text;
    Script script = Script::Normal;
};
std::vector<RichRun> parseRichRuns(const std::string& html);

}  // namespace fl
