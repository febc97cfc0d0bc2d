// The record of one formula family, as the catalogue's rows write it and as
// every page, the solve driver and the exercises read it. Fields are in the
// order in which a row of the formula book reads, so the rows can name them
// with designated initialisers and be checked against the book by eye.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace fl {

struct FormulaVar {
    std::string symbol;
    std::string name;
    std::string unit;
};

// var = expr
struct FormulaForm {
    std::string var;
    std::string expr;
};

// An auxiliary quantity worked out before the forms use it.
struct FormulaDef {
    std::string symbol;
    std::string expr;
    std::string label;
};

// Every field has a default so that a row names only the fields it has.
struct Formula {
    std::string key = {}; // unique and case-sensitive; the family's id in links and statistics
    std::string title = {};
    std::string group = {};                 // "El-lære", "Matematik" or "Trefaset"
    std::string page = {};                  // where it stands in the formula book: "3", "Parallel s. 5"
    std::string figure = {};                // empty when the family has none
    std::string search = {};                // lower-case words for the search
    std::vector<FormulaVar> vars = {};      // in the order of the fields
    std::vector<FormulaForm> forms = {};    // the first is the primary form
    std::vector<FormulaForm> altForms = {}; // the second root's forms, when the sign may go either way
    std::vector<FormulaDef> definitions = {};
    std::map<std::string, std::string> defaults = {}; // text put into a field when the page opens
    std::string note = {};                            // HTML above the fields
    std::string altLabel = {};                        // the words after "Formlen har to svar – "
    std::string altNote = {};                         // shown when the alternative is the only valid answer
    // Not written in the rows: the catalogue assigns the topic from its lists.
    std::string topic = {};
    // Believable values for exercises; empty for most families.
    std::function<std::map<std::string, double>()> generate = {};
};

} // namespace fl
