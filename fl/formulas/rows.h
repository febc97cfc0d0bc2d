// The catalogue's rows as they are written: one family per block, the fields
// in the order in which a row of the formula book reads, so that a row can be
// checked against the book by eye. buildCatalogue turns them into records, in
// the order dc, ac, math, 3f, trade, and gives them their topics.
#pragma once

#include "fl/expr/formula.h"

#include <map>
#include <string>
#include <vector>

namespace fl::rows {

// Every field has a default so that a row names only the fields it has.
struct FamilyRow {
    std::string key = {};
    std::string title = {};
    std::string group = {};
    std::string page = {};
    std::string figure = {};
    std::string search = {};
    std::vector<FormulaVar> vars = {};
    std::vector<FormulaForm> forms = {}; // the first is the primary form
    std::vector<FormulaForm> altForms = {};
    std::vector<FormulaDef> definitions = {};
    std::map<std::string, std::string> defaults = {};
    std::string note = {};
    std::string altLabel = {};
    std::string altNote = {};
};

std::vector<FamilyRow> dcRows();   // Ohm's law to the transformer
std::vector<FamilyRow> acRows();   // alternating current, series and parallel
std::vector<FamilyRow> mathRows(); // triangles, areas, polygons, circles, vectors
std::vector<FamilyRow> threePhaseRows();
std::vector<FamilyRow> tradeRows(); // compensation, energy, motors, the sine wave, installation test

// A fresh catalogue built from the rows, with its topics; catalogue() keeps
// the one the program uses.
std::vector<Formula> buildCatalogue();

} // namespace fl::rows
