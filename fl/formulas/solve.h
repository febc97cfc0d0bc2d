// The worked solution of one formula family: the value the student left empty
// and the sheet that shows how it is found (what is known, the formula, how it
// is rearranged, the numbers put in line by line, a check and the answer).
// Plain functions; the sheet is result markup (fl/expr/markup.h) and belongs
// to the caller's rendering pass.
#pragma once

#include "fl/expr/isolate.h"
#include "fl/expr/node.h"
#include "fl/formulas/formula.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fl {

struct SolveResult {
    double value = 0.0;
    std::string html;
};

struct FormChoice {
    NodePtr expr;            // the right side to evaluate
    bool rearranged = false; // `steps` came from the rearranger
    std::vector<IsolateStep> steps;
    NodePtr result;
};

// Draws a family's figure from the solved values as result markup (a figure()
// block), with `sought` highlighted; empty when the key has none. The figure
// library supplies it; a solve without one shows no figure.
using FigureSource = std::function<std::string(
    const std::string& key, const std::map<std::string, double>& values, const std::string& sought)>;

// `values` holds every given quantity (an absent or NaN entry is not given);
// `labels` may give, per symbol, the text the student typed, shown in place of
// the number. Throws std::runtime_error: "intet reelt svar" when a result isn't
// finite, and the parser's and evaluator's texts.
SolveResult solveSheet(const Formula& f, std::map<std::string, double> values,
                       const std::map<std::string, std::string>& labels, const std::string& target,
                       const FigureSource& figure = {});

// The primary form rearranged for `target` where that succeeds, else the
// family's own rewritten form for it, else the number 0.
FormChoice chooseForm(const Formula& f, const std::string& target);
// chooseForm for each form's quantity, written in the formula language.
std::vector<FormulaForm> allForms(const Formula& f);

// Evaluates `expr`, appends the rows that show it worked out (formula, numbers
// put in, one round of arithmetic per row, the result in bold) and stores the
// result under `name`. Throws "intet reelt svar" for a result that isn't finite.
double workOut(std::vector<WorkRow>& rows, const std::string& name, const NodePtr& expr,
               std::map<std::string, double>& values, const std::set<std::string>& degreeSet,
               const std::string& unit);
// Variables with a value become numbers, marked as angles when in `degreeSet`.
NodePtr substitute(const NodePtr& node, const std::map<std::string, double>& values,
                   const std::set<std::string>* degreeSet);
// One round of arithmetic: every node whose children are all numbers becomes a number.
NodePtr foldOnce(const NodePtr& node);

// The expression as text of the formula language, which parses back to the same value.
std::string formulaText(const NodePtr& node);

} // namespace fl
