// The markup of the finder in both of its modes, and the static view of one
// formula family: what a node holds (subjects as tiles, tools as chips,
// families as calculator tiles or as explained cards) and every arrangement
// of a family's formula. Written inside a rendering pass (fl/expr/markup.h),
// because formulas with fractions and roots come out as images.
#pragma once

#include "fl/formulas/formula.h"
#include "fl/formulas/home.h"
#include "fl/formulas/lists.h"

#include <string>
#include <vector>

namespace fl {

enum FinderMode { FinderFormulas = 0, FinderCalculators = 1 };

struct FinderState {
    std::string path; // ids separated by "/"; "" is the root
    int mode = FinderFormulas;
    OpenRoute open; // asked for tools and families alike
    TileLook look;
};

// The open families of a node and everything below it, each once.
std::vector<std::string> openFamilies(const FinderNode& node, const OpenRoute& open);
// A node is closed when it leads to families or tools and none of them is open.
bool nodeClosed(const FinderNode& node, const OpenRoute& open);
// "ac/serie" → "ac"; the root's parent is the root.
std::string parentPath(const std::string& path);

std::string finderMarkup(const FinderState& state);

// The primary form as every formula line shows it: the symbol, " = " and the
// right-hand side, which is an expression image when it holds a fraction or
// a root. Inside a rendering pass.
std::string primaryFormula(const Formula& f);

// The family's card: title with its page, the formula, what it is used for,
// what each letter means, the note and every arrangement.
std::string formulaCard(const Formula& f);

// The formula page's view before anything is solved: the primary form with
// its definitions, then the other arrangements one to a line, and a closing
// line when some quantity has no arrangement of its own.
std::string formulaStatic(const Formula& f);

} // namespace fl
