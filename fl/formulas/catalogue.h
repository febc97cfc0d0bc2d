// The catalogue of formula families: constant records built once, in the
// order of the class's formula book, and found by key.
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

struct FormulaForm {
    std::string var;
    std::string expr;
};

struct FormulaDef {
    std::string symbol;
    std::string expr;
    std::string label;
};

struct Formula {
    std::string key;
    std::string group;
    std::string title;
    std::string page;
    std::string search;
    std::string figure;
    std::string note;
    std::string topic;
    std::vector<FormulaVar> vars;
    std::vector<FormulaForm> forms;
    std::map<std::string, std::string> defaults;
    std::vector<FormulaDef> definitions;
    std::vector<FormulaForm> altForms;
    std::string altLabel;
    std::string altNote;
    std::function<std::map<std::string, double>()> generate;
};

const std::vector<Formula>& catalogue();
const Formula* findFormula(const std::string& key);
const FormulaVar* findVar(const Formula& f, const std::string& symbol);
std::string pageRef(const std::string& page, const std::string& book);

}  // namespace fl
