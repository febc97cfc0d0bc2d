// The installation test guide: the eight tests of the first verification of
// a low-voltage installation, each with what it shows, how it is measured,
// the instrument setting and its limit, with the rule the limit comes from;
// the limit tables; and the calculators for the limits that depend on the
// circuit (largest loop impedance for a breaker, largest earth resistance
// for an RCD). The page in app/ shows the markup.
#pragma once

#include "fl/glossary/install.h"

#include <map>
#include <string>
#include <vector>

namespace fl {

struct VerificationTest {
    std::string id;    // anchor "#t-" + id
    std::string title;
    std::string why;
    std::string how;
    std::string setting; // the instrument's setting
    std::string limit;   // markup
    std::string source;
};
const std::vector<VerificationTest>& verificationTests();

struct InsulationLimit {
    std::string circuit;
    double testVoltage; // V DC
    double minimum;     // Ω
};
const std::vector<InsulationLimit>& insulationLimits();

struct RcdTripTime {
    double multiple;  // of IΔn
    double generalMax; // s; NaN where the device must not trip
    double selectiveMin, selectiveMax; // s, type S
};
const std::vector<RcdTripTime>& rcdTripTimes();

struct DisconnectionTime {
    std::string circuit;
    double tn; // s at U0 = 230 V
    double tt;
};
const std::vector<DisconnectionTime>& disconnectionTimes();

// The breaker's instantaneous-trip factor: the top of its characteristic's
// band ('B' 3–5, 'C' 5–10, 'D' 10–20 times I_n), 0 for anything else.
double tripFactor(char characteristic);

// Largest loop impedance for a breaker: I_a = k · I_n, Z_s = U_0 / I_a, and
// the value a measurement at room temperature should stay under (2/3 of it).
// `measured` (NaN when not given) is judged by the fault current U_0 / Z_s.
struct LoopLimit {
    double ia = 0;
    double zsMax = 0;
    double zsMeasuredMax = 0;
    double measured = 0;
    double faultCurrent = 0; // from the measured value; NaN without one
    bool passes = false;     // with a measured value
};
LoopLimit loopLimit(double in, char characteristic, double u0, double measured);

// Largest earth resistance behind an RCD: R_A = U_L / IΔn.
struct EarthLimit {
    double raMax = 0;
    double measured = 0;
    double touchVoltage = 0; // measured · IΔn; NaN without a measurement
    bool passes = false;
};
EarthLimit earthLimit(double idn, double ul, double measured);

// The calculator's result from the page's fields ("In", "kar", "U0", "Zs",
// "Idn", "UL", "RA"), read with readValue. A message box when a needed value
// is missing or impossible.
std::string limitCalculatorHtml(const std::map<std::string, std::string>& fields);

// The page's document for a tab: "hvad", "saadan", "graenser" or "beregn"
// (anything else counts as "hvad").
std::string insttestHtml(const std::string& tab);

// The verification facts of the "inst:test" flashcard deck.
std::vector<InstallFact> verificationFacts();

} // namespace fl
