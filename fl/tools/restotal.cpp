// Resistors in series or in parallel from a typed list: the total with its
// working, a check a student can do in the head, and the nearest standard
// values of the total.
#include "fl/tools/resistors.h"

#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/fig/schematic.h"

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

using tool::hint;

// More than a drawer's worth is a typing slip.
constexpr size_t kMaxResistors = 30;
// Beyond these the drawing grows past the sheet.
constexpr size_t kDrawnInSeries = 6;
constexpr size_t kDrawnInParallel = 4;

std::string formValue(const FormMap& form, const std::string& key) {
    auto it = form.find(key);
    return it == form.end() ? std::string() : it->second;
}

std::vector<std::string> splitList(const std::string& text) {
    std::vector<std::string> parts;
    std::string cur;
    for (char c : text) {
        if (c == ';' || c == '\n' || c == '\r') {
            parts.push_back(cur);
            cur.clear();
        } else {
            cur += c;
        }
    }
    parts.push_back(cur);
    std::vector<std::string> out;
    for (const std::string& p : parts)
        if (!trimmed(p).empty()) out.push_back(trimmed(p));
    return out;
}

std::string name(size_t i) {
    return "R" + std::to_string(i + 1);
}

// "R1+R2+R3" or "1/(1/R1+1/R2+1/R3)".
std::string totalFormula(size_t n, bool parallel) {
    std::string sum;
    for (size_t i = 0; i < n; ++i)
        sum += (i ? "+" : "") + (parallel ? "1/" + name(i) : name(i));
    return parallel ? "1/(" + sum + ")" : sum;
}

std::string deviation(double value, double reference) {
    const double p = (value - reference) / reference * 100;
    if (std::fabs(p) < 1e-9) return "0 %";
    return (p > 0 ? "+" : "") + fmtWithUnit(p, "%");
}

std::string nearestTable(double total) {
    std::string out =
        "<div class=\"tbl\"><table><tr><th>Række</th><th>Nærmeste standardværdi</th><th>Afvigelse fra "
        "R<sub>total</sub></th></tr>";
    for (ESeries s : {ESeries::E12, ESeries::E24, ESeries::E96}) {
        const double e = nearestStandard(total, s);
        out += std::string("<tr><td>") + seriesName(s) + "</td><td>" + ohmsText(e) + "</td><td>" +
               deviation(e, total) + "</td></tr>";
    }
    return out + "</table></div>";
}

// The resistors drawn as the circuit page draws them, while they are few.
std::string schematicFigure(const ValueList& list, bool parallel) {
    const size_t n = list.values.size();
    if (n > (parallel ? kDrawnInParallel : kDrawnInSeries)) return {};
    Circuit c = defaultCircuit("dc");
    c.root->ch.clear();
    CNodePtr into = c.root;
    if (parallel && n > 1) {
        into = makeNode("P");
        c.root->ch.push_back(into);
    }
    for (const std::string& shown : list.shown) {
        CNodePtr r = makeNode("R");
        r->v = shown;
        into->ch.push_back(r);
    }
    double w = 0, h = 0;
    FigureOut fig = schematicFigure(c, {}, {}, &w, &h);
    if (fig.empty()) return {};
    return figureShownAt(std::move(fig), static_cast<int>(std::lround(w)), static_cast<int>(std::lround(h))) +
           "<p class=\"figcap\">Modstandene " + (parallel ? "i parallel" : "i serie") +
           ", tegnet som på kredsløbssiden.</p>";
}

} // namespace

ValueList readList(const std::string& text) {
    ValueList list;
    const std::vector<std::string> parts = splitList(text);
    for (size_t i = 0; i < parts.size(); ++i) {
        const ToolInputs in = readForm({{"x", parts[i]}});
        if (!in.has("x")) {
            list.error = "Jeg kan ikke læse værdi nr. " + std::to_string(i + 1) + " (»" +
                         htmlEscape(parts[i]) +
                         "«). Skriv værdierne adskilt af semikolon, fx 100; 220; 4,7k.";
            return list;
        }
        list.values.push_back(in.get("x"));
        list.shown.push_back(in.shown.at("x"));
    }
    return list;
}

std::string listInterpretation(const std::string& text, const std::string& badColour) {
    if (trimmed(text).empty()) return {};
    const ValueList list = readList(text);
    if (!list.error.empty() || list.values.empty())
        return "<span style=\"color:" + badColour + "\">kan ikke læses</span>";
    std::string out = list.values.size() == 1 ? "= 1 modstand: "
                                              : "= " + std::to_string(list.values.size()) + " modstande: ";
    for (size_t i = 0; i < list.values.size(); ++i)
        out += (i ? " · " : "") + ohmsText(list.values[i]);
    return out;
}

ToolOut resistorTotal(const FormMap& form) {
    return runTool("Modstande i serie / parallel", [&](ToolOut& out) {
        const bool parallel = formValue(form, "kobling") == "parallel";
        const ValueList list = readList(formValue(form, "liste"));
        if (!list.error.empty()) {
            refuse(out, list.error, {"liste"});
            return;
        }
        const size_t n = list.values.size();
        if (n == 0) {
            refuse(out, "Skriv modstandene i feltet, adskilt af semikolon, fx 100; 220; 4,7k.", {"liste"});
            return;
        }
        if (n > kMaxResistors) {
            refuse(out, "Højst " + std::to_string(kMaxResistors) + " modstande ad gangen.", {"liste"});
            return;
        }
        for (size_t i = 0; i < n; ++i)
            if (list.values[i] < 0) {
                refuse(out, "Negative modstande findes ikke – ret værdi nr. " + std::to_string(i + 1) + ".",
                       {"liste"});
                return;
            }
        if (parallel)
            for (size_t i = 0; i < n; ++i)
                if (list.values[i] == 0) {
                    refuse(out,
                           name(i) +
                               " = 0 Ω kortslutter de andre: i parallel bliver R<sub>total</sub> = 0 Ω, og "
                               "al strømmen går gennem den.",
                           {"liste"});
                    return;
                }

        ToolSheet s;
        for (size_t i = 0; i < n; ++i) {
            s.vars[name(i)] = list.values[i];
            s.shown[name(i)] = list.shown[i];
            addGivenRow(s, "modstand " + std::to_string(i + 1), "Ω", name(i), list.shown[i], name(i));
        }
        const std::string how = parallel ? "parallel" : "serie";
        s.sections.given.push_back("Forbindelse: <b>" + how + "</b>");

        if (parallel)
            addStepBlock(
                s, "Parallelforbindelse: 1 / R<sub>total</sub> = 1 / R<sub>1</sub> + 1 / R<sub>2</sub> + …",
                "4", {{"Ω", totalFormula(n, true), "Rt"}},
                hint("I parallel lægges de reciprokke værdier (ledningsevnerne) sammen, og resultatet "
                     "vendes om igen."));
        else
            addStepBlock(s, "Serieforbindelse: R<sub>total</sub> = R<sub>1</sub> + R<sub>2</sub> + …", "",
                         {{"Ω", totalFormula(n, false), "Rt"}},
                         hint("I serie går den samme strøm gennem alle modstandene, så de lægges sammen."));
        const double total = s.vars.at("Rt");

        const auto [smallest, largest] = std::minmax_element(list.values.begin(), list.values.end());
        std::string check;
        if (parallel) {
            check = "<p>I parallel er R<sub>total</sub> mindre end den mindste modstand (" +
                    ohmsText(*smallest) + "): " +
                    (total <= *smallest * (1 + 1e-12) ? "<span class=\"ok\">✓</span>"
                                                      : "<span class=\"bad\">✗</span>") +
                    "</p>";
            if (n == 2) {
                std::map<std::string, double> vars = s.vars;
                const StepOutcome two = evaluateStep("Rt", parse("R1*R2/(R1+R2)"), vars, "Ω", s.shown);
                check += hint("To modstande kan også regnes som produkt over sum:") + two.html;
            }
            if (std::all_of(list.values.begin(), list.values.end(),
                            [&](double v) { return v == list.values[0]; }))
                check += hint(std::to_string(n) + " ens modstande i parallel giver R / " + std::to_string(n) +
                              " = " + ohmsText(list.values[0] / static_cast<double>(n)) + ".");
        } else {
            check = "<p>I serie er R<sub>total</sub> større end den største modstand (" + ohmsText(*largest) +
                    "): " +
                    (total >= *largest * (1 - 1e-12) ? "<span class=\"ok\">✓</span>"
                                                     : "<span class=\"bad\">✗</span>") +
                    "</p>";
        }
        s.sections.check = check;
        s.sections.figure = schematicFigure(list, parallel);
        if (total > 0)
            s.sections.results =
                nearestTable(total) + hint("Skal du bruge én modstand i stedet for de " + std::to_string(n) +
                                           ", er den nærmeste standardværdi et godt bud; rækkerne har 12, 24 "
                                           "og 96 værdier pr. dekade.");
        s.id = "ressheet";
        s.crumb = "Modstande · " + how;
        s.title = "R<sub>total</sub> = " + ohmsText(total);
        s.sections.answer = "<span class=\"big\">R<sub>total</sub> = " + ohmsText(total) + "</span>";
        if (total > 0)
            s.sections.answer += " <span class=\"crumb\">nærmeste E24-værdi " +
                                 ohmsText(nearestStandard(total, ESeries::E24)) + "</span>";
        finish(out, s, {{"Rt", total, "Ω"}});
    });
}

} // namespace fl
