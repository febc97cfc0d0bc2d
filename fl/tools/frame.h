// What every calculator shares: the record a computation answers its page
// with, the reading of the form, the working sheet a computation fills, and
// the step machinery that evaluates one formula and writes its working line
// by line. A tool is one pure function from form texts to ToolOut; the page
// that declares the form lives in app/. The equation chain is in chain.h.
//
// Sheets are result markup (fl/expr/markup.h): a computation belongs to the
// caller's rendering pass, because tall expressions become "m:N" images.
#pragma once

#include "fl/expr/markup.h"
#include "fl/expr/node.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace fl {

// One headline value for the main window's strip of recent results.
struct RecentValue {
    std::string symbol; // a key such as "Ik_max"
    double value = 0.0;
    std::string unit;
};

struct ToolOut {
    bool ok = false;  // set together with `html`, only when the computation reached its end
    std::string err;  // a msg() block: why nothing was computed, or a hint beside the result
    std::string html; // <div class="result"> + the sheet + </div>
    std::vector<RecentValue> recent;
    std::string title;
    std::vector<std::string> badKeys; // form keys `err` is about; the page marks their fields
};

// Form key → the text its field holds.
using FormMap = std::map<std::string, std::string>;

// The form read through the field reader. An empty field is in none of the three.
struct ToolInputs {
    std::map<std::string, double> numbers; // readable, finite
    std::map<std::string, std::string> shown; // the same as the user wrote them, in display form ("16k", "0,3")
    std::vector<std::string> bad;              // text that doesn't read, in key order

    // NaN when the key isn't given; tools decide "given" by that NaN.
    double get(const std::string& key) const;
    bool has(const std::string& key) const { return numbers.count(key) > 0; }
};

ToolInputs readForm(const FormMap& form);

// One formula step of a fixed-order tool: unit "A", formula "P/(U*cosphi)", target "I".
struct CalcStep {
    std::string unit;
    std::string formula;
    std::string target;
};

// The working context of one computation.
struct ToolSheet {
    std::map<std::string, double> vars;       // every given and every result so far
    std::map<std::string, std::string> shown; // givens shown as typed in the substituted lines
    std::string id;                           // of the sheet's card ("kbsheet")
    std::string crumb;
    std::string title;
    SheetSections sections; // given rows, step blocks, check, results, facit
};

// The sheet inside the result frame, ready for ToolOut::html.
std::string renderToolSheet(const ToolSheet& sheet);

// Small texts of the tool sheets. Apart from fl's markup helpers because
// `symbolHtml` there only sets indices, where a tool shows a key the way the
// formula page does ("cosphi" as cos φ, "phi1" as φ₁).
namespace tool {

// <div class="msg bad">text</div>, or <div class="msg">text</div> for a plain hint.
std::string msg(const std::string& text, bool bad);
// A result with its unit; units that take one get an SI prefix outside
// 0.1..10000 (0.0144 Ω → 14,434 mΩ). |value| under 1e-12 counts as 0.
std::string formatValue(double value, const std::string& unit);
std::string symbolHtml(const std::string& key);
// The keys' symbols joined by ", ".
std::string symbolList(const std::vector<std::string>& keys);
// <p class="hint0">html</p>: an explanation inside a block.
std::string hint(const std::string& html);
// "Udfyld " + symbolList(keys) + "."
std::string fillIn(const std::vector<std::string>& keys);
// A typed value with its unit: "16k" and "A" read "16 kA".
std::string shownWithUnit(const std::string& shown, const std::string& unit);

} // namespace tool

// Appends one row of "Givet": symbol = value as shown, unit, and the name.
// An empty `shown` shows the value of `variable` in `sheet.vars` instead.
void addGivenRow(ToolSheet& sheet, const std::string& name, const std::string& unit, const std::string& symbol,
                 const std::string& shown, const std::string& variable);

// addGivenRow for a form key: its value as typed, or `fallback` for an empty
// field ("1" where absence means 1). `symbol` defaults to the key.
void addGivenInput(ToolSheet& sheet, const ToolInputs& in, const std::string& key, const std::string& name,
                   const std::string& unit, const std::string& fallback = {}, const std::string& symbol = {});

struct StepOutcome {
    double value = 0.0;
    std::string html; // the lines: formula, numbers put in, each round of arithmetic, the result in bold
};

// Evaluates `formula` with `vars`, writes its working and stores the result
// as vars[target]. Givens with an entry in `shown` appear as the user typed
// them. Throws std::runtime_error "intet reelt svar" for a result that isn't
// finite, and the evaluator's "mangler " + name for a variable without value.
StepOutcome evaluateStep(const std::string& target, const NodePtr& formula, std::map<std::string, double>& vars,
                         const std::string& unit, const std::map<std::string, std::string>& shown = {});

// One titled block: `leading` (often a <p class="hint0"> explanation), then
// the working of each step in order. A step's error propagates.
void addStepBlock(ToolSheet& sheet, const std::string& title, const std::string& page,
                  const std::vector<CalcStep>& steps, const std::string& leading = {});

// The frame of a fixed-order computation: sets the title, runs `body`, and
// turns a thrown std::exception into the standard refusal
// "Noget passer ikke – tjek værdierne." with the error's text, so a failure
// never shows half a sheet.
ToolOut runTool(const std::string& title, const std::function<void(ToolOut&)>& body);
// Reads the form; on a field that doesn't read sets the refusal "Jeg kan ikke
// læse " + its symbols, marks it, and returns false.
bool openForm(ToolOut& out, const FormMap& form, ToolInputs& in);
// The keys of `keys` that aren't given, in that order.
std::vector<std::string> missingKeys(const ToolInputs& in, const std::vector<std::string>& keys);
// Lengths, currents, voltages and resistances below 0 mean a typing slip:
// refuses with the keys among `keys` that are negative and returns false.
bool refuseNegative(ToolOut& out, const ToolInputs& in, const std::vector<std::string>& keys);
// A bad msg() in `err` with the fields to mark.
void refuse(ToolOut& out, const std::string& text, std::vector<std::string> keys = {});
// `html`, `recent` and `ok` together, at the end of a computation.
void finish(ToolOut& out, const ToolSheet& sheet, std::vector<RecentValue> recent);

// The reference to the class's "YΔ-arket"; " og s. 13" may follow it.
extern const char* const kYdSheet;

} // namespace fl
