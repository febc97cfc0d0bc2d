// How a search is told on the sheet: the trial table with the values found,
// or, for equal groups in series, the reasoning that makes one group enough.
#include "fl/circuit/setup.h"

#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"

namespace fl {

namespace {

std::string joinAnd(const std::vector<std::string>& parts) {
    std::string s;
    for (size_t i = 0; i < parts.size(); ++i)
        s += (i == 0 ? "" : i + 1 == parts.size() ? " og " : ", ") + parts[i];
    return s;
}

} // namespace

std::string valueText(const std::string& symbol, double value, const CNodePtr& root) {
    return symbolDisplay(symbol) + " = " + fmtWithUnit(value, unitOf(symbol, root));
}

std::string solutionText(const std::vector<std::string>& unknowns, const std::vector<double>& x,
                         const CNodePtr& root, bool bold) {
    std::string s;
    for (size_t i = 0; i < unknowns.size() && i < x.size(); ++i) {
        const std::string one = valueText(unknowns[i], x[i], root);
        s += (i ? ", " : "") + (bold ? "<b>" + one + "</b>" : one);
    }
    return s;
}

CircuitStep trialTableStep(SearchProblem& problem, const std::vector<Solution>& solutions, int second,
                           const CNodePtr& root) {
    const auto& unknowns = problem.unknowns();
    const auto& targets = problem.targets();
    std::string names, wanted;
    for (size_t i = 0; i < unknowns.size(); ++i)
        names += (i ? ", " : "") + symbolDisplay(unknowns[i]);
    for (size_t t = 0; t < targets.size(); ++t)
        wanted += (t ? ", " : "") + valueText(targets[t].symbol, targets[t].value, root);

    std::string html = "<p class=\"hint0\">De ukendte (" + names +
                       ") kan ikke isoleres i én formel ad gangen her, fordi de hænger sammen gennem hele "
                       "kredsen. Så programmet "
                       "prøver sig frem: det gætter på de ukendte, regner hele kredsen igennem (med de samme "
                       "formler som nedenfor "
                       "– for vekselstrøm med komplekse tal, Parallel s. 10–11) og retter gættet, indtil de "
                       "udregnede værdier "
                       "passer med de opgivne: " +
                       wanted + ".</p>";

    const Solution& first = solutions.front();
    if (unknowns.size() < 4) {
        html += "<div class=\"tbl\"><table><tr><th>Forsøg</th>";
        for (const std::string& u : unknowns)
            html += "<th>" + symbolDisplay(u) + "</th>";
        for (const Target& t : targets)
            html += "<th>" + symbolDisplay(t.symbol) + " udregnet</th>";
        html += "</tr>";
        std::vector<size_t> rows;
        const size_t count = first.path.size();
        for (size_t i = 0; i < count; ++i)
            if (count < 10 || i < 5 || i + 4 >= count) rows.push_back(i);
        for (size_t r = 0; r < rows.size(); ++r) {
            const std::vector<double>& point = first.path[rows[r]];
            const std::vector<double> computed = problem.evaluate(point);
            html += r + 1 == rows.size() ? "<tr class=\"calc\">" : "<tr>";
            html += "<td>" + std::to_string(r + 1) + "</td>";
            for (double v : point)
                html += "<td>" + fmtNumber(v) + "</td>";
            for (double v : computed)
                html += "<td>" + (std::isfinite(v) ? fmtNumber(v) : std::string()) + "</td>";
            html += "</tr>";
        }
        html += "</table></div>";
    }
    html += "<p>" + solutionText(unknowns, first.x, root, true) + "</p>";
    if (second >= 0)
        html += "<p>Bemærk: der findes også en anden løsning, som passer lige så godt: " +
                solutionText(unknowns, solutions[second].x, root, false) +
                ". Tjek opgaven for, hvilken der er den rigtige.</p>";

    CircuitStep step;
    step.title = "De ukendte kan ikke isoleres – programmet prøver sig frem";
    step.pages = "10–11";
    step.html = html;
    return step;
}

std::vector<std::string> equalGroupNames(const CNodePtr& root, const Values& values) {
    if (!root || root->k != "S" || root->ch.size() < 2) return {};
    std::vector<std::pair<std::string, std::vector<std::string>>> bySignature;
    for (const CNodePtr& c : root->ch) {
        if (!c->group) continue;
        const std::string sig = signature(*c, &values);
        auto it =
            std::find_if(bySignature.begin(), bySignature.end(), [&](auto& e) { return e.first == sig; });
        if (it == bySignature.end())
            bySignature.push_back({sig, {c->name}});
        else
            it->second.push_back(c->name);
    }
    for (auto& [sig, names] : bySignature)
        if (names.size() >= 2) return names;
    return {};
}

std::vector<CircuitStep> equalGroupSteps(const std::vector<std::string>& names, const CNodePtr& root) {
    std::vector<CircuitStep> steps;
    if (names.size() < 2) return steps;
    const std::string& first = names.front();

    CircuitStep share;
    share.title = "Grupperne " + joinAnd(names) + " er ens";
    share.target = "U_" + first;
    share.formula = "U/" + std::to_string(names.size());
    share.node = findByName(root, first);
    share.html =
        "<p class=\"hint0\">Grupperne sidder i serie, så den samme strøm I løber gennem dem alle. De er ens, "
        "så de har samme impedans – og derfor får de samme spænding, og spændingerne er i fase. "
        "Kildespændingen deles altså ligeligt:</p>";
    steps.push_back(share);

    CircuitStep asParallel;
    asParallel.title = "Gruppe " + first + " regnes som en parallelforbindelse";
    asParallel.pages = "5–9";
    asParallel.node = share.node;
    asParallel.html = "<p class=\"hint0\">Nu kendes både spændingen over og strømmen gennem gruppe " + first +
                      ", så den kan regnes som en almindelig parallelforbindelse (Parallel s. 5–9).</p>";
    steps.push_back(asParallel);
    return steps;
}

} // namespace fl
