// The solving driver. In order: read and check, find what is known in closed
// form, count unknowns against what can be reached, search, work the circuit
// forwards, and compare with every given quantity. Expected failures are
// messages in the sheet; only the unexpected leaves as an exception.
#include "fl/circuit/sheet.h"

#include "fl/circuit/setup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"
#include "fl/tools/frame.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

namespace fl {

namespace {

const char* const kNoValues =
    "Programmet kunne ikke finde værdier, der passer med alle de opgivne tal. Tjek at "
    "tallene er skrevet rigtigt, og at de hører til de rigtige komponenter.";
const char* const kStuck = "Udregningen gik i stå. Tjek værdierne.";

// Restores a field of the tree on every way out of a scope.
class FieldRestore {
  public:
    FieldRestore(std::string& field, std::string value) : field_(field), old_(field) {
        field_ = std::move(value);
    }
    ~FieldRestore() { field_ = old_; }
    FieldRestore(const FieldRestore&) = delete;
    FieldRestore& operator=(const FieldRestore&) = delete;

  private:
    std::string& field_;
    std::string old_;
};

bool withinCheck(double a, double b) {
    return std::fabs(a - b) <= 1e-6 * std::max({1.0, std::fabs(a), std::fabs(b)});
}

void copyFollowers(const std::map<std::string, std::string>& links, Values& values) {
    for (const auto& [follower, leader] : links)
        if (!values.count(follower) && values.count(leader)) values[follower] = values[leader];
}

std::vector<std::pair<std::string, std::string>>
followerPairs(const std::map<std::string, std::string>& links) {
    return {links.begin(), links.end()};
}

// The component values and the source as the student typed them, for the
// lines where numbers are put into a formula.
std::map<std::string, std::string> shownInputs(const Circuit& c) {
    FormMap form;
    for (const char* key : {"U", "f", "I"})
        if (auto it = c.src.find(key); it != c.src.end()) form[key] = it->second;
    walk(c.root, [&](const CNodePtr& n) {
        if (n->group || n->name.empty()) return;
        form[n->name] = n->v;
        if (n->k == "L") form["R_" + n->name] = n->r;
    });
    return readForm(form).shown;
}

} // namespace

Sheet solve(Circuit& c, bool noRetry, const MeterInfo* meters) {
    Sheet s;
    s.isAc = c.mode == "ac";
    nameCircuit(c);
    const CNodePtr root = c.root;
    if (!root || root->ch.empty()) {
        s.error = "Tegn mindst én komponent først.";
        return s;
    }
    if (!s.isAc) {
        bool reactive = false;
        walk(root, [&](const CNodePtr& n) { reactive = reactive || n->k == "L" || n->k == "C"; });
        if (reactive) {
            s.error =
                "Spoler og kondensatorer bruges i vekselstrøm. Skift strømart til <b>Vekselstrøm</b>, eller "
                "slet dem.";
            return s;
        }
    }
    s.shape = shape(root, s.isAc);

    Setup su = readSetup(c, meters);
    if (!su.error.empty()) {
        s.error = su.error;
        s.fixes = su.fixes;
        return s;
    }
    s.given = su.given;
    s.targets = su.targets;
    s.links = su.links;
    s.givenSymbols = su.givenSymbols;
    s.root = root;
    Values values = su.values;

    StepScope scope;
    scope.root = root;
    scope.isAc = s.isAc;
    scope.shape = s.shape;
    scope.links = su.links;
    scope.given = su.givenSymbols;
    scope.shown = shownInputs(c);

    // The closed pass: whatever the givens determine one formula at a time.
    // Only the inputs it found are kept; everything else comes from the full
    // pass, so a contradiction among the givens can't leak into the sheet.
    std::vector<std::string> unknowns;
    bool uFound = false;
    {
        Values closed = values;
        copyFollowers(su.links, closed);
        StepScope closedScope = scope;
        closedScope.closed = true;
        stepsFor(closedScope, closed);
        for (const std::string& u : su.unknowns) {
            const double v = lookup(closed, u);
            if (std::isfinite(v) && v > 0.0)
                values[u] = v;
            else
                unknowns.push_back(u);
        }
        if (!su.hasU) {
            const double u = lookup(closed, "U");
            uFound = std::isfinite(u) && u > 0.0;
            if (uFound) values["U"] = u;
        }
        copyFollowers(su.links, values);
    }

    // The source voltage: given or found, found from the current once Z is
    // known, a further unknown, an auxiliary voltage when only impedances
    // and angles are asked of an alternating-current circuit, or missing.
    const bool scaleTarget = std::any_of(su.targets.begin(), su.targets.end(),
                                         [](const Target& t) { return scalesWithVoltage(t.symbol); });
    const bool hasU = su.hasU || uFound;
    bool uFromCurrent = false, uMissing = false;
    if (!hasU) {
        if (s.isAc && !su.hasI && !su.hasP && su.hasZ && !scaleTarget) {
            values["U"] = kAuxVoltage;
            s.auxVoltage = true;
            s.intro = "<p class=\"hint0\">Impedanser og vinkler afhænger ikke af spændingen, så komponenten kan "
                      "findes ud fra " +
                      symbolDisplay("Z") + " alene. Skriv også " + symbolDisplay("U") + " (eller " +
                      symbolDisplay("I") + "), hvis du skal bruge strømme, spændinger og effekter.</p>";
        } else if (su.hasI && unknowns.empty()) {
            uFromCurrent = true;
        } else if (scaleTarget) {
            unknowns.push_back("U");
        } else {
            uMissing = true;
        }
    }

    if (!unknowns.empty()) {
        // Trial evaluation: which targets does a forward pass reach at all?
        std::set<std::string> reachable;
        std::unique_ptr<SearchProblem> problem;
        try {
            Values bound = values;
            if (uMissing) bound["U"] = 1.0; // stands for the voltage no target can tell
            problem = std::make_unique<SearchProblem>(root, s.isAc, bound, unknowns, su.targets,
                                                      followerPairs(su.links));
            for (size_t t = 0; t < su.targets.size(); ++t)
                if (problem->reachable(t)) reachable.insert(su.targets[t].symbol);
        } catch (const std::runtime_error&) {
            reachable.clear();
        }
        // A source voltage that nothing given depends on is one more unknown
        // to count, but none to search for.
        std::vector<std::string> counted = unknowns;
        if (uMissing) counted.push_back("U");
        if (counted.size() > reachable.size()) {
            s.error = reachable.empty() && !hasU && !su.hasI ? missingMessage(su, c)
                                                             : countMessage(counted, reachable.size(), s.isAc);
            return s;
        }
        if (unknowns.size() > kMaxUnknowns) {
            s.error = kNoValues;
            return s;
        }
        s.solutions = multiStart(*problem);
        if (s.solutions.empty()) {
            s.error = kNoValues;
            return s;
        }
        s.unknowns = unknowns;
        const Solution& first = s.solutions.front();
        for (size_t k = 1; k < s.solutions.size() && s.second < 0; ++k)
            for (size_t i = 0; i < unknowns.size(); ++i)
                if (std::fabs(s.solutions[k].x[i] - first.x[i]) > 1e-4 * std::fabs(first.x[i])) {
                    s.second = static_cast<int>(k);
                    break;
                }
        for (size_t i = 0; i < unknowns.size(); ++i)
            values[unknowns[i]] = first.x[i];
        copyFollowers(su.links, values);

        const std::vector<std::string> equal = s.shape == "mixed" && (su.hasU || su.hasI)
                                                   ? equalGroupNames(root, values)
                                                   : std::vector<std::string>();
        if (!equal.empty())
            s.searchSteps = equalGroupSteps(equal, root);
        else
            s.searchSteps.push_back(trialTableStep(*problem, s.solutions, s.second, root));
        CircuitStep head;
        head.title = "Nu kendes alle komponentværdier – hele kredsen regnes igennem";
        head.html =
            "<p class=\"hint0\">Herunder regnes kredsen igennem med formlerne, så alle strømme, "
            "spændinger og effekter kommer med. Til sidst tjekkes det, at resultatet giver de opgivne "
            "værdier.</p>";
        s.searchSteps.push_back(head);
    }

    if (uMissing) {
        s.error = "Alle komponenter er kendt, men der mangler en spænding eller strøm at regne med. Skriv "
                  "kildespændingen " +
                  symbolDisplay("U") + " – eller den samlede strøm " + symbolDisplay("I") + ".";
        return s;
    }

    Values results;
    try {
        if (uFromCurrent) {
            // Z first with an auxiliary voltage; then U = I·Z.
            Values aux = values;
            aux["U"] = kAuxVoltage;
            const Values first = forward(root, aux, s.isAc);
            values["U_h"] = kAuxVoltage;
            values["I_h"] = lookup(first, "I");
            if (s.isAc) {
                values["Iw_h"] = lookup(first, "Iw");
                values["Ib_h"] = lookup(first, "Ib");
            }
            values["U"] = lookup(values, "I") * lookup(first, "Z");
        }
        results = forward(root, values, s.isAc);
    } catch (const std::runtime_error&) {
        s.error = kStuck;
        return s;
    }
    if (!std::isfinite(lookup(results, "Z")) || !std::isfinite(lookup(results, "I")) ||
        !std::isfinite(lookup(values, "U")))
        s.stopped = true;
    if (!s.stopped) {
        // The walkthrough starts from the component values and the source
        // alone and finds everything else by its formulas.
        Values start;
        walk(root, [&](const CNodePtr& n) {
            if (n->group) return;
            for (const std::string& sym : {n->name, "R_" + n->name})
                if (values.count(sym)) start[sym] = values.at(sym);
        });
        if (values.count("f")) start["f"] = values.at("f");
        const std::string source = uFromCurrent ? "I" : "U";
        start[source] = values.at(source);
        for (CircuitStep& st : stepsFor(scope, start))
            if (!(s.auxVoltage && scalesWithVoltage(st.target))) s.steps.push_back(std::move(st));
        for (const auto& [sym, v] : start)
            if (!values.count(sym)) values[sym] = v;
    }
    for (const auto& [sym, v] : results)
        if (std::isfinite(v) && !(s.auxVoltage && scalesWithVoltage(sym))) values[sym] = v;
    if (s.auxVoltage)
        for (auto it = values.begin(); it != values.end();)
            it = scalesWithVoltage(it->first) ? values.erase(it) : std::next(it);
    for (auto it = values.begin(); it != values.end();)
        it = std::isfinite(it->second) ? std::next(it) : values.erase(it);

    s.equalGroups = s.shape == "mixed" && (su.hasU || su.hasI) ? equalGroupNames(root, values)
                                                               : std::vector<std::string>();
    if (!s.stopped) {
        for (const Target& t : su.targets) {
            const double got = lookup(results, t.symbol);
            if (std::isfinite(got) && !withinCheck(t.value, got))
                s.mismatches.push_back({t.symbol, t.label, t.value, got});
        }
        const double z = lookup(su.values, "Z");
        if (s.isAc && std::isfinite(z)) {
            const double got = lookup(results, "Z");
            const bool listed = std::any_of(s.mismatches.begin(), s.mismatches.end(),
                                            [](const Mismatch& m) { return m.symbol == "Z"; });
            if (!listed && std::isfinite(got) && std::fabs(z - got) > 1e-6 * std::fabs(z))
                s.mismatches.push_back({"Z", "Den opgivne samlede impedans", z, got});
        }
    }
    s.values = values;

    // A coil that must have losses for the numbers to fit: try once more
    // with its own resistance unknown.
    std::string retryNote;
    if (!noRetry && s.isAc && !s.mismatches.empty()) {
        std::vector<CNodePtr> ideal;
        walk(root, [&](const CNodePtr& n) {
            if (n->k == "L" && trimmed(n->r).empty()) ideal.push_back(n);
        });
        if (ideal.size() == 1) {
            const CNodePtr coil = ideal.front();
            Sheet retry;
            {
                FieldRestore unknownR(coil->r, "?");
                retry = solve(c, true, meters);
            }
            const std::string own = "R_" + coil->name;
            const double r = lookup(retry.values, own);
            if (retry.error.empty() && retry.mismatches.empty() && !retry.stopped && r > 0.0) {
                retry.notes.insert(
                    retry.notes.begin(),
                    "<b>Bemærk:</b> " + coil->name +
                        " kan ikke være en ideel spole. Med de opgivne tal går det kun op, hvis "
                        "spolen også har en ohmsk modstand (tab i kobbertråden). Programmet har derfor "
                        "selv fundet spolens egen modstand: <b>" +
                        valueText(own, r, root) +
                        "</b>. Skulle spolen være ideel, er nogle af de opgivne tal forkerte.");
                if (meters) retry.meterSteps = meterLines(retry, *meters);
                return retry;
            }
            retryNote = " Programmet prøvede også at give " + coil->name +
                        " en ukendt egen modstand, men det gik heller ikke op – tjek tallene.";
        }
    }
    if (!s.mismatches.empty())
        s.notes.push_back("<b>De opgivne tal passer ikke sammen</b> – se under Kontrol nederst." + retryNote);
    if (s.second >= 0)
        s.notes.push_back(
            "<b>Bemærk:</b> der findes også en anden løsning, som passer lige så godt med de opgivne "
            "tal: " +
            solutionText(s.unknowns, s.solutions[s.second].x, root, false) +
            ". Formlerne herunder finder den ene. Tjek opgaven for, hvilken der er den rigtige.");
    if (meters) s.meterSteps = meterLines(s, *meters);
    return s;
}

Sheet computeSheet(Circuit& c) {
    MeterGuard guard(c);
    const auto& info = guard.info();
    if (!info->error.empty()) {
        Sheet s;
        s.isAc = c.mode == "ac";
        s.error = info->error;
        return s;
    }
    Sheet s = solve(c, false, info.get());
    s.meters = info;
    return s;
}

Sheet computeSheet() {
    return computeSheet(currentCircuit());
}

} // namespace fl
