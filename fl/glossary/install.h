// The installation reference: conductor colours now and in older
// installations, the IP code and a reader that explains any code, PoE
// classes, the common installation symbols, and the facts the flashcards
// drill. Every fact is a table here; the page in app/ only shows the markup.
#pragma once

#include <string>
#include <vector>

namespace fl {

struct ConductorColour {
    std::string conductor; // "L1", "N", "PE", …
    std::string role;      // "Fase 1", "Nulleder", …
    std::string colour;    // "Brun"
    std::string swatch;    // CSS colours of the sample, "#8b5a2b" or two for a striped one
    std::string note;
};
const std::vector<ConductorColour>& conductorColours();

// What a student meets in installations made under earlier rules.
struct OlderColour {
    std::string colour;
    std::string meaning;
    std::string period;
};
const std::vector<OlderColour>& olderColours();

// One position of the IP code: a digit (or a letter for the optional ones) and its meaning.
struct IpLevel {
    char code;
    std::string meaning;
};
const std::vector<IpLevel>& ipSolids();        // first digit, 0–6
const std::vector<IpLevel>& ipWater();         // second digit, 0–9
const std::vector<IpLevel>& ipAccess();        // additional letter, A–D
const std::vector<IpLevel>& ipSupplementary(); // H, M, S, W

struct IpExample {
    std::string place;
    std::string code;
    std::string source;
};
const std::vector<IpExample>& ipExamples();

// A typed code ("IP44", "ip x4", "IP20B") read position by position. `error`
// is a Danish sentence when the code can't be read; `lines` explain each
// position otherwise.
struct IpReading {
    std::string code; // normalised, "IP44"
    std::string error;
    std::vector<std::string> lines;
};
IpReading readIpCode(const std::string& typed);

struct PoeClass {
    int number;
    std::string standard; // "IEEE 802.3af"
    std::string type;     // "Type 1"
    double psePower;      // W at the source (PSE)
    double pdPower;       // W at the device (PD), after the cable
};
const std::vector<PoeClass>& poeClasses();

struct PoeType {
    std::string type;
    std::string standard;
    std::string name; // "PoE", "PoE+", "PoE++"
    int pairs;
    std::string pseVoltage; // "44–57 V"
    double currentPerPair;  // A, through each pair of pairs that carries power
};
const std::vector<PoeType>& poeTypes();

struct InstallSymbol {
    std::string id;
    std::string name;
    std::string use;
    std::string svg; // inner SVG on a 64 × 48 grid, stroke in "currentColor" replaced by the caller
};
const std::vector<InstallSymbol>& installSymbols();

// A question and answer for the "inst:" flashcard decks; `key` is unique.
struct InstallFact {
    std::string key;
    std::string deck; // "farver", "ip", "poe", "test"
    std::string front;
    std::string back;
};
const std::vector<InstallFact>& installFacts();

// The page's document for a tab ("farver", "ip", "symboler", "poe"; anything
// else counts as "farver"). `ip` is the code in the page's field; `ink` the
// stroke colour of the symbol drawings. Written inside a rendering pass.
std::string installHtml(const std::string& tab, const std::string& ip, const std::string& ink);

} // namespace fl
