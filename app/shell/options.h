// The process-wide display options the pages and the computing core consult,
// read from the store at start and changed by the settings panel. Written on
// the interface thread only.
#pragma once

#include <set>
#include <string>

namespace app {

// What every request to the class service reports and what the update check
// compares with.
inline constexpr char kVersion[] = "1.0.30";

struct AppOptions {
    bool komma = true;         // decimal comma (true) or point in every number shown
    std::string rund = "p5";   // "p5" precise or "d2" as the formula book; unknown codes kept as they are
    bool trinvis = false;      // reveal working and answers one step at a time
    std::set<std::string> off; // topic and route ids the teacher has switched off
    std::string profile;       // name of the teacher's profile
};

AppOptions& options();

// Hands komma, rund and trinvis to the computing core's number display. Call
// after every change of the options.
void applyDisplaySettings();

} // namespace app
