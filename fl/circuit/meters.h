// Meters in a drawing: before a solve the tree is rewritten into a
// meter-free copy (ideal meters vanish, meters with an inner resistance
// become resistors), each meter remembering the place it measures; a typed
// reading becomes a known quantity there. After the solve the drawn tree is
// put back and the readings are reported.
#pragma once

#include "fl/circuit/model.h"
#include "fl/circuit/steps.h"

#include <memory>
#include <string>
#include <vector>

namespace fl {

struct Sheet;

struct Meter {
    std::string id;
    std::string name;  // "A1", "V2"
    std::string k;     // "A" or "V"
    std::string value; // typed reading
    std::string rText; // typed inner resistance
    std::string label;
    CNodePtr host;        // the node it measures, in the meter-free copy
    std::string symbol;   // "I_" / "U_" + host name; "I" or "U" at the root
    bool counted = false; // its reading is a known quantity of the solve
    bool ideal = true;    // no usable inner resistance: not part of the circuit
};

struct MeterInfo {
    struct Extra {
        std::string symbol, value, label;
    };
    CNodePtr root; // the meter-free copy
    std::vector<Meter> meters;
    std::vector<Extra> extraGiven;
    std::string error;   // placement error; empty when fine
    CNodePtr drawn;      // the tree to put back
    bool active = false; // the copy is installed
};

// Installs the copy as the circuit's root and sets `solving`. With no meter
// in the drawing nothing changes; with a placement error nothing is
// installed and `error` says why.
std::shared_ptr<MeterInfo> stripMeters(Circuit& c);
void restoreMeters(Circuit& c, const MeterInfo& info);

// Puts the drawn tree back on every way out of a scope.
class MeterGuard {
  public:
    explicit MeterGuard(Circuit& c) : c_(c), info_(stripMeters(c)) {}
    ~MeterGuard() { restoreMeters(c_, *info_); }
    MeterGuard(const MeterGuard&) = delete;
    MeterGuard& operator=(const MeterGuard&) = delete;
    const std::shared_ptr<MeterInfo>& info() const { return info_; }

  private:
    Circuit& c_;
    std::shared_ptr<MeterInfo> info_;
};

// The readings of the meters that had none typed, as steps under "Måler".
std::vector<CircuitStep> meterLines(const Sheet& sheet, const MeterInfo& info);

} // namespace fl
