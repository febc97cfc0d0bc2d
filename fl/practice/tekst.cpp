// The text problems' machinery: draw a scenario, work its parts, throw away
// a draw whose parts have no usable answer, and the texts around a problem.
// The scenarios themselves are in tekstscen.cpp.
#include "fl/practice/tekst.h"

#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/practice/judge.h"
#include "fl/practice/random.h"
#include "fl/tools/frame.h"

#include <cmath>
#include <ostream>
#include <stdexcept>

namespace fl {

namespace {

bool isFarad(const std::string& unit) {
    return unit.rfind("F", 0) == 0;
}

bool isAsciiAlnum(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The hints write an index as in a formula text ("X_L = 2 · π · f · L"); on
// the page it is a subscript, as everywhere else.
std::string withSubscripts(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '_' && i > 0 && i + 1 < text.size() && isAsciiAlnum(text[i + 1])) {
            size_t end = i + 1;
            while (end < text.size() && isAsciiAlnum(text[end]))
                ++end;
            out += "<sub>" + text.substr(i + 1, end - i - 1) + "</sub>";
            i = end - 1;
            continue;
        }
        out += text[i];
    }
    return out;
}

} // namespace

const TekstTopic* findTekstTopic(const std::string& key) {
    for (const TekstTopic& t : tekstTopics())
        if (t.key == key) return &t;
    return nullptr;
}

std::string tekstLockKey(const std::string& key) {
    return "tekst:" + key;
}

std::vector<const TekstTopic*> openTekstTopics(const KeyFilter& open) {
    std::vector<const TekstTopic*> out;
    for (const TekstTopic& t : tekstTopics())
        if (!open || open(tekstLockKey(t.key))) out.push_back(&t);
    if (out.empty())
        for (const TekstTopic& t : tekstTopics())
            out.push_back(&t);
    return out;
}

void workParts(TekstGen& gen) {
    for (TekstDel& part : gen.parts) {
        part.solution.clear();
        if (part.hintFn) part.solution = tool::hint(part.hintFn(gen.vars));
        const StepOutcome step = evaluateStep(part.target, parse(part.formula), gen.vars, part.unit);
        if (!std::isfinite(step.value) || step.value <= 0) throw std::runtime_error("ugyldigt");
        part.solution += step.html;
        part.value = step.value;
        part.scale = isFarad(part.unit) ? 1e-6 : 1.0;
    }
}

std::optional<TekstProblem> makeTekst(const std::string& key, const KeyFilter& open, int* tries) {
    std::vector<const TekstTopic*> candidates;
    if (key == "alle") {
        candidates = openTekstTopics(open);
    } else if (const TekstTopic* t = findTekstTopic(key); t && (!open || open(tekstLockKey(key)))) {
        candidates.push_back(t);
    } else {
        candidates = openTekstTopics({});
    }
    for (int i = 1; i <= kTekstTries; ++i) {
        if (tries) *tries = i;
        const TekstTopic& topic = *pickOne(candidates);
        TekstProblem p;
        static_cast<TekstGen&>(p) = topic.make();
        p.key = topic.key;
        p.title = topic.label;
        SetAsidePass aside;
        try {
            workParts(p);
        } catch (const std::exception&) {
            continue; // "ugyldigt", "intet reelt svar": the next draw
        }
        p.images = takeRender({});
        return p;
    }
    return std::nullopt;
}

std::string partLetter(size_t index) {
    static const char kLetters[] = "abcdefgh";
    return index < sizeof kLetters - 1 ? std::string(1, kLetters[index]) : std::to_string(index + 1);
}

std::string storyNumber(double value) {
    std::string s = fmtRounded(value, 5);
    if (displaySettings().decimalComma)
        if (auto dot = s.find('.'); dot != std::string::npos) s[dot] = ',';
    if (!s.empty() && s[0] == '-') s.replace(0, 1, "−");
    return s;
}

std::string tekstHeaderHtml(const TekstProblem& p) {
    return "<h2>" + p.title + "</h2><div class=\"txstory\">" + p.story + "</div>";
}

std::string tekstQuestionHtml(const TekstProblem& p, size_t index) {
    return "<b>" + partLetter(index) + ")</b> " + p.parts.at(index).question;
}

std::string tekstHintHtml(const TekstProblem& p, size_t index) {
    const TekstDel& part = p.parts.at(index);
    return tool::hint(part.hintFn ? part.hintFn(p.vars) : withSubscripts(part.hint));
}

std::string tekstAnswerText(const TekstDel& part) {
    return tool::formatValue(part.value, part.unit);
}

Exercise tekstExercise(const TekstProblem& p, size_t index) {
    Exercise ex;
    const TekstTopic* topic = findTekstTopic(p.key);
    ex.key = tekstLockKey(p.key);
    ex.topic = ex.key;
    ex.title = p.title;
    ex.search = topic ? topic->search : std::string();
    ex.unit = p.parts.at(index).unit;
    ex.facit = p.parts.at(index).value;
    ex.scale = p.parts.at(index).scale;
    ex.target = p.parts.at(index).target;
    for (const TekstGiven& g : p.given)
        if (auto it = p.vars.find(g.symbol); it != p.vars.end()) ex.given[g.symbol] = it->second;
    return ex;
}

TekstVerdict judgeTekstPart(const TekstProblem& p, size_t index, const std::string& text) {
    const TekstDel& part = p.parts.at(index);
    const AnswerJudgement j = judgeAnswer(text, part.value, part.scale);
    TekstVerdict v;
    if (j.empty || j.unreadable) {
        v.html = tool::msg(std::string("Jeg kan ikke læse dit svar. Skriv et tal, fx 2,38") +
                               (isFarad(part.unit) ? " eller 70u" : "") + ".",
                           true);
        return v;
    }
    v.readable = true;
    v.correct = j.correct;
    if (j.correct) {
        v.html = "<div class=\"msg ok-box\">✓ <b>Rigtigt!</b>";
        if (j.relError >= 0.005) v.html += " (det præcise svar er " + tekstAnswerText(part) + ")";
        v.html += "</div>";
        return v;
    }
    v.html = "<div class=\"msg bad\">✗ Ikke helt. Prøv igen – eller tryk \"Hint\".</div>";
    v.tip = diagnoseAnswer(j.value, part.value, tekstExercise(p, index));
    if (!v.tip.empty()) v.html += "<div class=\"note\"><b>Tip:</b> " + v.tip + "</div>";
    return v;
}

std::string tekstSolutionHtml(const TekstProblem& p) {
    std::string html = "<div class=\"card\"><h3 class=\"sh\">Løsning – " + p.title + "</h3><div class=\"known\">";
    for (const TekstGiven& g : p.given) {
        auto it = p.vars.find(g.symbol);
        html += "<div>" + tool::symbolHtml(g.symbol) + " = " +
                tool::formatValue(it == p.vars.end() ? g.value : it->second, g.unit) + "</div>";
    }
    html += "</div><div class=\"steps\">";
    // Worked again from the story's numbers, so the sheet follows the settings.
    TekstGen again = p;
    for (const TekstDel& part : p.parts)
        again.vars.erase(part.target);
    workParts(again);
    for (size_t i = 0; i < again.parts.size(); ++i) {
        const TekstDel& part = again.parts[i];
        html += "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">" + partLetter(i) + "</span> " +
                part.question + "</p>" + tool::hint(withSubscripts(part.hint)) + part.solution + "</div>";
    }
    return html + "</div></div>";
}

void PrintTo(const TekstProblem& p, std::ostream* os) {
    *os << p.key << ":";
    for (const auto& [symbol, value] : p.vars)
        *os << " " << symbol << "=" << fmtPlain(value, 17);
}

} // namespace fl
