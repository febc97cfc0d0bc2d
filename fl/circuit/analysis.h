// What the solvers and sheets need to know of a circuit tree: the formal
// symbol of each quantity of each node, the shape of the whole circuit, the
// canonical signature that recognises equal groups, links between values and
// the plain Danish words for symbols. Walks only; nothing here solves.
#pragma once

#include "fl/circuit/model.h"

#include <map>
#include <string>

namespace fl {

// A solved circuit: symbol to value. An absent symbol is unknown; NaN is
// never stored as known.
using Values = std::map<std::string, double>;
double lookup(const Values& values, const std::string& symbol); // NaN when absent

bool isRootNode(const CNode& node);

// Symbol of a quantity of a node. `q` is one of "U", "I", "P", "R", "X", "Z",
// "Q", "S", "phi", "cosphi", "Iw", "Ib"; the root has its own names ("U",
// "I", "P_tot", "R_tot", "X_tot", "Z", …), every other node q + "_" + name.
std::string nodeSymbol(const CNode& node, const std::string& q);
std::string voltageSymbol(const CNode& node);
std::string currentSymbol(const CNode& node);
std::string powerSymbol(const CNode& node);
// A resistor's resistance is its own value; a capacitor has none (empty).
std::string resistanceSymbol(const CNode& node);
// False for nodes without a reactance; `sign` is -1 for a capacitor.
bool reactanceSymbol(const CNode& node, int* sign, std::string* symbol);
std::string impedanceSymbol(const CNode& node);

// "Modstand", "Spole", … as on the editor's buttons and in the parts table.
std::string kindWord(const std::string& k);
// Row label of a table of parts.
std::string describe(const CNode& node);
// "parallelgruppe A", "seriegruppe A", or the component's name.
std::string nodeWords(const CNode& node);

// "dc" in direct current; in alternating current "par", "mixed" or "series".
std::string shape(const CNodePtr& root, bool isAc);
// The single "P" group under a root whose branches are leaves or series of
// leaves; null otherwise. Structural: the kind of current is not asked.
CNodePtr parallelBlock(const CNodePtr& root);

// Equal exactly when two nodes are interchangeable: children are sorted and
// names don't count. Leaf values come from `values` when given there (which
// resolves links), else from the typed text.
std::string signature(const CNode& node, const Values* values = nullptr);

enum OwnResistance { OwnNone = 0, OwnUnknown = 1, OwnKnown = 2, OwnLinked = 3 };
// Of a coil's `r`: empty (or not a coil) 0, "?" 1, a number 2 (in `outR`), "=L1" 3.
int hasOwnResistance(const CNode& node, double* outR = nullptr);

// "=R1", "= l 2": the target's name in capitals ("R1", "L2"); empty when the
// text is no link.
std::string valueLink(const std::string& text);

std::map<std::string, CNodePtr> collectByName(const CNodePtr& root);
CNodePtr findByName(const CNodePtr& root, const std::string& name);

// What a symbol means, in words that can follow "Find ".
std::string describeSymbol(const std::string& symbol, const CNodePtr& root, bool isAc);
// "V", "A", "W", "VAr", "VA", "Ω", "H", "F", "Hz", "°" or "".
std::string unitOf(const std::string& symbol, const CNodePtr& root);

} // namespace fl
