// The record of one formula family. It lives with the expression engine
// because the solve driver works on it; the rows themselves are the
// catalogue's (fl/formulas/catalogue.h).
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

}  // namespace fl
