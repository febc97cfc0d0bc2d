// Text problems: a short story about a real job with drawn numbers, split
// into parts that build on each other (part b needs the answer of part a).
// Each scenario is a generator of its numbers, its story and its parts; one
// make step draws a scenario, works every part with the tool frame's step
// evaluator and throws the draw away when a part has no usable answer. The
// page that asks the parts lives in app/; judging a typed answer is judge.h's.
#pragma once

#include "fl/expr/markup.h"
#include "fl/practice/exercise.h"

#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fl {

// A row of the solution's "known" list.
struct TekstGiven {
    std::string symbol;
    std::string unit;
    double value = 0.0; // SI: a capacitance in F
};

using TekstVars = std::map<std::string, double>;

struct TekstDel {
    std::string hint;     // the formula in words
    std::string unit;     // of the answer; "F" is answered in µF
    std::string formula;  // over the story's quantities and the earlier parts' targets
    std::string target;   // the symbol this part defines
    std::string question;
    // Replaces the hint where it needs the drawn numbers; may be empty.
    std::function<std::string(const TekstVars&)> hintFn = {};

    // Filled by the make step.
    std::string solution = {}; // the working, in the make step's rendering pass
    double value = 0.0;        // the right answer, SI
    double scale = 1.0;        // what a typed plain number is multiplied by: 1e-6 for µF

    // The student's side, kept by the page.
    std::string answer = {};
    bool solved = false;
    bool counted = false; // the first readable attempt is in the records
};

struct TekstGen {
    TekstVars vars;                // the story's quantities, SI
    std::vector<TekstGiven> given; // what the solution lists as known
    std::string story;
    std::vector<TekstDel> parts;
};

struct TekstProblem : TekstGen {
    std::string key;   // "kedel"
    std::string title; // "Elkedel"
    // The expression images of the parts' `solution`, in their order.
    RenderResult images;
};

struct TekstTopic {
    std::string key;
    std::string label;
    std::function<TekstGen()> make;
    // Words the diagnosis reads for the kind of mistake that fits ("kabel", "trefaset").
    std::string search = {};
};

// The eight scenarios, in the order the page lists them.
const std::vector<TekstTopic>& tekstTopics();
const TekstTopic* findTekstTopic(const std::string& key);
// "tekst:" + key: what the teacher closes.
std::string tekstLockKey(const std::string& key);
// The scenarios that are open, in order; every scenario when none is.
std::vector<const TekstTopic*> openTekstTopics(const KeyFilter& open);

// Tries a problem this many times before giving up.
inline constexpr int kTekstTries = 30;

// Works every part of a drawn scenario in order: its hintFn, its value by
// the step evaluator (stored as the target in `vars`), its µF scale. Throws
// std::runtime_error "ugyldigt" for a value that isn't finite and above 0,
// and passes on the evaluator's errors ("intet reelt svar"). Writes into the
// caller's rendering pass.
void workParts(TekstGen& gen);

// "alle" draws among the open scenarios (all, when every one is closed);
// another key that scenario when it is open, else as "alle". Up to
// kTekstTries draws; nothing when every one failed. `tries`, when given,
// receives the number of draws used.
std::optional<TekstProblem> makeTekst(const std::string& key, const KeyFilter& open = {}, int* tries = nullptr);

// The letter of part `index`: "a" … "h".
std::string partLetter(size_t index);
// A number as a story writes it: five significant digits, the decimal mark of the settings.
std::string storyNumber(double value);

// `<h2>` + title + `</h2><div class="txstory">` + story + `</div>`.
std::string tekstHeaderHtml(const TekstProblem& p);
// `<b>a)</b> ` + question.
std::string tekstQuestionHtml(const TekstProblem& p, size_t index);
// The hint of a part, the hintFn's text when it has one.
std::string tekstHintHtml(const TekstProblem& p, size_t index);
// A part's answer as the verdict and the solution show it ("41,6 µF").
std::string tekstAnswerText(const TekstDel& part);

// What a check of part `index` says; `tip` is the diagnosis of a wrong
// answer, "" when nothing fits. Records nothing.
struct TekstVerdict {
    bool readable = false;
    bool correct = false;
    std::string html; // the status under the row
    std::string tip;  // the diagnosis, for a right answer only a rounding remark
};
TekstVerdict judgeTekstPart(const TekstProblem& p, size_t index, const std::string& text);
// The exercise record the diagnosis reads for a part: its topic, unit and
// the story's quantities.
Exercise tekstExercise(const TekstProblem& p, size_t index);

// The whole solution, worked again in the caller's rendering pass, so that it
// follows the number settings.
std::string tekstSolutionHtml(const TekstProblem& p);

// For test failures: the key and the story's quantities.
void PrintTo(const TekstProblem& p, std::ostream* os);

} // namespace fl
