// The drawings behind the tiles and the finder. Every icon sits on one 48 × 48
// grid with a margin of about 4 and takes the wrapper's 2.5 stroke with round
// ends, so that the set reads as one family at 34 px as well as at 96 px.
// Drawings are stroke-only shapes: the wrapper sets fill="none" and the
// colour, so one drawing serves the light and the dark theme.
#include "fl/formulas/icons.h"

#include <map>

namespace fl {
namespace {

struct Icon {
    const char* key;
    const char* svg;
};

// Symbols are drawn the way an electrician meets them in a schematic, so the
// tiles of the tools read as their subject.
const Icon kIcons[] = {
    // Battery and resistor in a loop.
    {"kreds", R"(<path d="M11 21V8h27v9M38 31v9H11V27"/>)"
              R"(<rect x="34" y="17" width="8" height="14" rx="1"/>)"
              R"(<path d="M5 21h12M8 27h6"/>)"},
    // The same loop with a sine source.
    {"kredsac", R"(<path d="M11 17V8h27v9M38 31v9H11v-9"/>)"
                R"(<rect x="34" y="17" width="8" height="14" rx="1"/>)"
                R"(<circle cx="11" cy="24" r="7"/>)"
                R"(<path d="M7 24q2-6 4 0t4 0"/>)"},
    // The direct-current sign over a list of steps.
    {"kredsguide", R"(<path d="M8 10h32M8 17h6M21 17h6M34 17h6"/>)"
                   R"(<circle cx="9" cy="34" r="4.5"/>)"
                   R"(<circle cx="24" cy="34" r="4.5"/>)"
                   R"(<circle cx="39" cy="34" r="4.5"/>)"
                   R"(<path d="M13.5 34h6M28.5 34h6"/>)"},
    {"kredsguideac", R"(<path d="M8 14q4-9 8 0t8 0 8 0 8 0"/>)"
                     R"(<circle cx="9" cy="34" r="4.5"/>)"
                     R"(<circle cx="24" cy="34" r="4.5"/>)"
                     R"(<circle cx="39" cy="34" r="4.5"/>)"
                     R"(<path d="M13.5 34h6M28.5 34h6"/>)"},
    // A clipboard with a tick: tasks to hand in.
    {"opgaver", R"(<path d="M17 7h-5a3 3 0 0 0-3 3v31a3 3 0 0 0 3 3h24a3 3 0 0 0 3-3V10a3 3 0 0 0-3-3h-5"/>)"
                R"(<rect x="17" y="4" width="14" height="7" rx="2"/>)"
                R"(<path d="M16 27l5 5 11-11"/>)"},
    // A pencil on a sheet.
    {"ovelser", R"(<path d="M30 10H10a4 4 0 0 0-4 4v24a4 4 0 0 0 4 4h24a4 4 0 0 0 4-4V24"/>)"
                R"(<path d="M38.5 8.5 22.5 24.5 19 33l8.5-3.5 16-16z"/>)"
                R"(<path d="M22.5 24.5l5 5M35.5 11.5l5 5"/>)"},
    // Two coils on an iron core.
    {"trafo", R"(<path d="M4 12h7a4 4 0 0 1 0 8 4 4 0 0 1 0 8 4 4 0 0 1 0 8H4"/>)"
              R"(<path d="M44 12h-7a4 4 0 0 0 0 8 4 4 0 0 0 0 8 4 4 0 0 0 0 8h7"/>)"
              R"(<path d="M21 10v28M27 10v28"/>)"},
    // A star inside a delta.
    {"trefase", R"(<path d="M24 7 43 40H5z"/>)"
                R"(<path d="M24 29V7M24 29 5 40M24 29l19 11"/>)"},
    // A capacitor and the angle it makes smaller.
    {"komp", R"(<path d="M6 12h8M14 4v16M20 4v16M20 12h8"/>)"
             R"(<path d="M6 40h34M6 40 38 18"/>)"
             R"(<path d="M20 40a14 14 0 0 0-2.5-7.9"/>)"},
    // Cross-section of a three-core cable.
    {"kabel", R"(<circle cx="24" cy="24" r="20"/>)"
              R"(<circle cx="24" cy="15" r="5"/>)"
              R"(<circle cx="16.2" cy="28.5" r="5"/>)"
              R"(<circle cx="31.8" cy="28.5" r="5"/>)"},
    // The voltage falls along one conductor.
    {"sf1", R"(<path d="M6 10h36v12L6 10"/>)"
            R"(<path d="M6 36h36"/>)"},
    // The same along three.
    {"sf3", R"(<path d="M6 8h36v12L6 8"/>)"
            R"(<path d="M6 30h36M6 36h36M6 42h36"/>)"},
    // A lightning bolt: the largest fault current.
    {"ikmax", R"(<path d="M27 6 14 26h9l-3 16 14-22h-9z"/>)"},
    // The same bolt over the far end of the line: the smallest.
    {"ikmin", R"(<path d="M27 6 14 26h9l-3 16 14-22h-9z"/>)"
              R"(<path d="M8 44h32"/>)"},
    // A pocket calculator.
    {"calc", R"(<rect x="10" y="5" width="28" height="38" rx="4"/>)"
             R"(<rect x="15" y="10" width="18" height="8" rx="1"/>)"
             R"(<circle cx="17" cy="25" r="1"/>)"
             R"(<circle cx="24" cy="25" r="1"/>)"
             R"(<circle cx="31" cy="25" r="1"/>)"
             R"(<circle cx="17" cy="31" r="1"/>)"
             R"(<circle cx="24" cy="31" r="1"/>)"
             R"(<circle cx="31" cy="31" r="1"/>)"
             R"(<circle cx="17" cy="37" r="1"/>)"
             R"(<circle cx="24" cy="37" r="1"/>)"
             R"(<circle cx="31" cy="37" r="1"/>)"},
    // Sine over R, L and C in series.
    {"ac", R"(<path d="M6 14q4.5-10 9 0t9 0 9 0 9 0"/>)"
           R"(<rect x="4" y="30" width="9" height="8" rx="1"/>)"
           R"(<path d="M13 34h3M16 34a3.5 3.5 0 0 1 7 0 3.5 3.5 0 0 1 7 0"/>)"
           R"(<path d="M30 34h3M33 28v12M38 28v12M38 34h6"/>)"},
    // Two resistors in parallel.
    {"res", R"(<path d="M4 24h6M38 24h6M10 14v20M38 14v20M10 14h7M31 14h7M10 34h7M31 34h7"/>)"
            R"(<rect x="17" y="10.5" width="14" height="7" rx="1"/>)"
            R"(<rect x="17" y="30.5" width="14" height="7" rx="1"/>)"},
    // A right-angled triangle.
    {"tri", R"(<path d="M8 40h32V10z"/>)"
            R"(<path d="M34 40v-6h6"/>)"
            R"(<path d="M18 40a10 10 0 0 0-2.7-6.8"/>)"},
    // Two vectors tip to tail and their sum.
    {"vec", R"(<path d="M7 40h22M7 40 19 12M7 40 41 12"/>)"
            R"(<path d="M23.9 36.8 29 40l-5.1 3.2M14.1 15.4 19 12l.9 5.9M35.1 12.8 41 12l-1.9 5.7"/>)"
            R"(<path d="M30 37.8l1.6-4M33.6 29.4l1.6-4M36.9 21.5l1.2-2.8M22 12h4M29 12h4"/>)"},
    // A house.
    {"hjem", R"(<path d="M5 23 24 7l19 16"/>)"
             R"(<path d="M10 19v21a2 2 0 0 0 2 2h24a2 2 0 0 0 2-2V19"/>)"
             R"(<path d="M20 42V31h8v11"/>)"},
    // A stop-watch.
    {"eksamen", R"(<circle cx="24" cy="27" r="15"/>)"
                R"(<path d="M20 5h8M24 5v7M35.5 15.5l3-3M36.5 10.5l4 4M24 27l6-6"/>)"},
    // Four keys: every calculator, sorted.
    {"udregnere", R"(<rect x="7" y="7" width="14" height="14" rx="3"/>)"
                  R"(<rect x="27" y="7" width="14" height="14" rx="3"/>)"
                  R"(<rect x="7" y="27" width="14" height="14" rx="3"/>)"
                  R"(<rect x="27" y="27" width="14" height="14" rx="3"/>)"
                  R"(<path d="M14 11v6M11 14h6M31 14h6M11.5 31.5l5 5M16.5 31.5l-5 5M31 32h6M31 36h6"/>)"},
    // A magnifier over a tree of subjects.
    {"finder", R"(<circle cx="10" cy="9" r="3"/>)"
               R"(<circle cx="18" cy="19" r="3"/>)"
               R"(<circle cx="10" cy="30" r="3"/>)"
               R"(<path d="M10 12v15M10 19h5"/>)"
               R"(<circle cx="30" cy="30" r="9"/>)"
               R"(<path d="M36.5 36.5 43 43"/>)"},
    // An open book.
    {"ordliste", R"(<path d="M24 13c-4-3-10-4-17-3v27c7-1 13 0 17 3"/>)"
                 R"(<path d="M24 13c4-3 10-4 17-3v27c-7-1-13 0-17 3"/>)"
                 R"(<path d="M24 13v27"/>)"},
    // A sheet with a root sign: the student's own formula sheet.
    {"minform", R"(<path d="M28 5H12a3 3 0 0 0-3 3v32a3 3 0 0 0 3 3h24a3 3 0 0 0 3-3V16z"/>)"
                R"(<path d="M28 5v8a3 3 0 0 0 3 3h8"/>)"
                R"(<path d="M14 29h3l4 8 5-16h8"/>)"},
    // A sine and a slider.
    {"acdemo", R"(<path d="M6 18q4.5-12 9 0t9 0 9 0 9 0"/>)"
               R"(<path d="M6 36h18M32 36h10"/>)"
               R"(<circle cx="28" cy="36" r="4"/>)"},
    // Two arrows, one each way.
    {"enheder", R"(<path d="M8 12h31M34 7l5 5-5 5M40 22H9M14 17l-5 5 5 5"/>)"
                R"(<rect x="5" y="31" width="38" height="11" rx="2"/>)"
                R"(<path d="M11 31v5M17 31v3M23 31v5M29 31v3M35 31v5"/>)"},
    // A resistor with its colour bands.
    {"farve", R"(<path d="M4 24h6M38 24h6"/>)"
              R"(<rect x="10" y="16" width="28" height="16" rx="6"/>)"
              R"(<path d="M16 19v10M21 19v10M26 19v10M32 19v10"/>)"},
    // A bolt beside a stack of coins.
    {"energi", R"(<path d="M15 6 6 24h7l-2 16 9-19h-7z"/>)"
               R"(<ellipse cx="33" cy="16" rx="9" ry="4"/>)"
               R"(<path d="M24 16v18M42 16v18"/>)"
               R"(<path d="M24 22a9 4 0 0 0 18 0M24 28a9 4 0 0 0 18 0M24 34a9 4 0 0 0 18 0"/>)"},
    // A motor: a circle with M.
    {"motor", R"(<circle cx="24" cy="24" r="18"/>)"
              R"(<path d="M15 31V17l9 10 9-10v14"/>)"},
    // Bars.
    {"statistik", R"(<path d="M6 6v36h36"/>)"
                  R"(<rect x="12" y="28" width="6" height="14"/>)"
                  R"(<rect x="22" y="18" width="6" height="24"/>)"
                  R"(<rect x="32" y="9" width="6" height="33"/>)"},
    // A printer with a sheet coming out.
    {"opgaveark", R"(<path d="M14 18V7a2 2 0 0 1 2-2h16a2 2 0 0 1 2 2v11"/>)"
                  R"(<path d="M14 34H9a3 3 0 0 1-3-3V21a3 3 0 0 1 3-3h15"/>)"
                  R"(<path d="M24 18h15a3 3 0 0 1 3 3v10a3 3 0 0 1-3 3h-5"/>)"
                  R"(<rect x="14" y="28" width="20" height="15" rx="2"/>)"
                  R"(<path d="M18 33h12M18 38h8"/>)"},
    // Two cards, one behind the other.
    {"formelkort", R"(<path d="M16 38H9a3 3 0 0 1-3-3V9a3 3 0 0 1 3-3h20a3 3 0 0 1 3 3v5"/>)"
                   R"(<rect x="16" y="14" width="26" height="30" rx="3"/>)"
                   R"(<path d="M23 26h12M23 32h12"/>)"},
    // A tester with a tick on its display.
    {"insttest", R"(<rect x="11" y="4" width="26" height="40" rx="4"/>)"
                 R"(<rect x="15" y="9" width="18" height="12" rx="1"/>)"
                 R"(<path d="M20 15l3 3 5-5"/>)"
                 R"(<circle cx="24" cy="33" r="5"/>)"
                 R"(<path d="M24 33l2.5-3"/>)"},
    // A Danish socket outlet.
    {"install", R"(<circle cx="24" cy="24" r="18"/>)"
                R"(<circle cx="17" cy="20" r="2.5"/>)"
                R"(<circle cx="31" cy="20" r="2.5"/>)"
                R"(<path d="M19 29h10a5 5 0 0 1-10 0z"/>)"},
    // A padlock.
    {"laast", R"(<path d="M16 22v-6a8 8 0 0 1 16 0v6"/>)"
              R"(<rect x="10" y="22" width="28" height="20" rx="3"/>)"
              R"(<path d="M24 29v6"/>)"},
    // A sheet with lines of text.
    {"tekstopgaver", R"(<rect x="9" y="5" width="30" height="38" rx="3"/>)"
                     R"(<path d="M15 13h18M15 20h18M15 27h18M15 34h10"/>)"},
    // A tray with arrows in and out.
    {"minedata", R"(<path d="M6 30v8a4 4 0 0 0 4 4h28a4 4 0 0 0 4-4v-8"/>)"
                 R"(<path d="M17 26V6M11 12l6-6 6 6M31 6v20M25 20l6 6 6-6"/>)"},
    // f(x).
    {"formel", R"(<path d="M19 11h-2a5 5 0 0 0-5 5v24M7 22h10"/>)"
               R"(<path d="M27 14q-5 12 0 24M40 14q5 12 0 24"/>)"
               R"(<path d="M30.5 20l6 12M36.5 20l-6 12"/>)"},
};

const std::map<std::string, std::string>& iconTable() {
    static const std::map<std::string, std::string> table = [] {
        std::map<std::string, std::string> out;
        for (const Icon& i : kIcons)
            out.emplace(i.key, i.svg);
        return out;
    }();
    return table;
}

// The colour is a theme's "#rrggbb" in practice, but any text must leave the
// document well-formed.
std::string attributeText(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '"')
            out += "&quot;";
        else
            out += c;
    }
    return out;
}

} // namespace

std::string iconSvg(const std::string& key) {
    const auto& table = iconTable();
    const auto it = table.find(key);
    return it == table.end() ? std::string() : it->second;
}

std::string iconDocument(const std::string& key, const std::string& strokeColour) {
    const std::string inner = iconSvg(key);
    if (inner.empty()) return {};
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 48 48" width="48" height="48" )"
           R"(fill="none" stroke=")" +
           attributeText(strokeColour) +
           R"(" stroke-width="2.5" stroke-linecap="round" stroke-linejoin="round">)" + inner + "</svg>";
}

} // namespace fl
