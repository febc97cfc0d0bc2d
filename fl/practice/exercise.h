// One generated exercise and how it is drawn: nice values per unit, the
// E12 series, the hand-written generators of families whose quantities must
// agree, the hidden quantity, the statement, the hint and the worked
// solution. Exercises on a drawn circuit are made in circuitex.h; judging an
// answer is judge.h's. Interface thread only, like the random source.
#pragma once

#include "fl/expr/markup.h"
#include "fl/formulas/formula.h"

#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace fl {

struct Circuit;

struct Exercise {
    // Null when no family fits the filter, and for an exercise on a circuit.
    const Formula* formula = nullptr;
    std::string target;
    std::map<std::string, double> given;          // exactly what the statement shows
    std::map<std::string, std::string> givenText; // the same by fmtValue10, for a field
    double facit = 0.0;
    // 1 unless the answer is asked as a plain number in a smaller unit: a
    // capacitance is answered in µF, so 1e-6.
    double scale = 1.0;
    std::string statement; // html without images
    RenderResult hint;     // the formula to use, a rendering pass of its own
    RenderResult solution; // the worked sheet, a rendering pass of its own

    // What the statistics and the diagnosis read, for both kinds of exercise.
    std::string key;   // the family's key, or "circ:dc|" / "circ:ac|" + template name
    std::string topic; // the family's topic ("Andet" when it has none), or the circuit's
    std::string title;
    std::string search;
    std::string unit; // the target's

    std::shared_ptr<const Circuit> circuit; // set for an exercise on a drawn circuit

    bool empty() const { return key.empty(); }
};

// For test failures: key, hidden quantity, givens and facit.
void PrintTo(const Exercise& ex, std::ostream* os);

// Drawing an exercise writes a rendering pass of its own (the worked sheet,
// and the rearranger's images on the way). This sets the caller's figures and
// images aside for the guard's life and puts them back, in order, after it.
class SetAsidePass {
  public:
    SetAsidePass() : outer_(takeRender({})) {}
    ~SetAsidePass();
    SetAsidePass(const SetAsidePass&) = delete;
    SetAsidePass& operator=(const SetAsidePass&) = delete;

  private:
    RenderResult outer_;
};

// Asked with a teacher's key ("sub:El-lære|Motorer", "circ:ac|Kompensering"):
// false when that part is switched off. An empty filter lets everything through.
using KeyFilter = std::function<bool(const std::string& key)>;

// The teacher's key that closes a family's exercises.
std::string familyLockKey(const Formula& f);
// The family's topic, "Andet" when it has none.
std::string practiceTopic(const Formula& f);

// Families the generator draws from: every form parses, its quantities are
// the family's own, and at least one quantity can be asked for.
bool fitForPractice(const Formula& f);
// The quantities that have a form of their own and a single answer.
std::vector<std::string> askableTargets(const Formula& f);

// Whether an answer is one a student could believe: numbers that agree on
// paper can still ask for 1900 % voltage drop or a cos φ of 0.0008. Counts
// and ratios are judged by the symbol, the rest by the unit.
bool plausibleAnswer(const std::string& symbol, const std::string& unit, double value);

double drawValue(const std::string& symbol, const std::string& unit, const Formula& f);
// The family's generator (its own, or a hand-written one by key) first; every
// other quantity by drawValue.
std::map<std::string, double> drawValues(const Formula& f);
// The hand-written source of values that must agree with each other; empty
// for a family that has none.
std::function<std::map<std::string, double>()> handGenerator(const std::string& key);
// A running motor: 2–7 % below its synchronous speed, on a multiple of 5 o/min.
double runningSpeed(double synchronous);
// An E12 value between lo and hi, both included; lo when there is none.
double pickE12(double lo, double hi);

// A family is drawn among those of `group` and `topic` (empty: any) that are
// fit and open, then its values and the hidden quantity; up to 80 attempts.
// Empty when nothing fits or every attempt failed.
Exercise makeExercise(const std::string& group, const std::string& topic, const KeyFilter& open = {});
// The same for one family and one hidden quantity.
Exercise exerciseFor(const Formula& f, const std::string& target);

// The statement, hint and sheet again, for a change of the number settings.
// The hint and the sheet write into the caller's rendering pass.
std::string exerciseStatement(const Exercise& ex);
std::string exerciseHint(const Exercise& ex);
// Writes into the caller's rendering pass; the sheet of solveSheet for a family.
std::string exerciseSolutionHtml(const Exercise& ex);

// A value as the statement shows it: "30 mA", "47 µF", "230 V".
std::string shownValue(double value, const std::string& unit);
// "Svar i µF – fx 47 eller 47u." when the answer is scaled, else empty.
std::string scaleHint(const Exercise& ex);

} // namespace fl
