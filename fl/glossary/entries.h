// The glossary's rows, one function per part of the table; glossary.cpp
// joins them in display order.
#pragma once

#include <string>
#include <vector>

namespace fl::entries {

struct Row {
    const char* term;
    const char* symbol;
    const char* unit;
    const char* formula;
    const char* text;
    std::vector<std::string> links;
};

struct Group {
    const char* section;
    const char* name;
    std::vector<Row> rows;
};

std::vector<Group> basics();       // Grundbegreber, Jævnstrøm
std::vector<Group> alternating();  // Vekselstrøm
std::vector<Group> trade();        // Energi og pris, Matematik, Installation

} // namespace fl::entries
