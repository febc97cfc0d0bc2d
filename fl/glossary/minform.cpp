// The own formula sheet's markup and the search that offers families to pin.
#include "fl/glossary/minform.h"

#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/formulas/solve.h"
#include "fl/glossary/glossary.h"

#include <algorithm>
#include <sstream>

namespace fl {

namespace {

std::string noteHtml(const std::string& note) {
    std::string out;
    for (char c : htmlEscape(note)) {
        if (c == '\n')
            out += "<br>";
        else if (c != '\r')
            out += c;
    }
    return out;
}

std::string block(const Formula& f, const std::string& note, const MinformOptions& options) {
    std::string html = "<div class=\"card\"><p class=\"mftitle\">" + f.title + " <span class=\"crumb\">(" +
                       pageRef(f.page, "formelsamlingen") + ")</span></p>";
    if (!f.forms.empty()) {
        const FormulaForm& primary = f.forms.front();
        html += "<p class=\"eq\">" + render(makeVar(primary.var), false) + " = " + renderMath(parse(primary.expr)) +
                "</p>";
    }
    if (options.forms && f.forms.size() > 1) {
        html += "<p class=\"mfforms\">";
        bool first = true;
        for (const FormulaForm& form : allForms(f)) {
            if (form.var == f.forms.front().var) continue;
            if (!first) html += " &nbsp;·&nbsp; ";
            first = false;
            html += "<span style=\"white-space:nowrap\">" + render(makeVar(form.var), false) + " = " +
                    render(parse(form.expr), false) + "</span>";
        }
        html += "</p>";
    }
    if (options.legend && !f.vars.empty()) {
        html += "<p class=\"hint0\">";
        for (size_t i = 0; i < f.vars.size(); ++i) {
            const FormulaVar& v = f.vars[i];
            if (i > 0) html += " &nbsp;·&nbsp; ";
            html += render(makeVar(v.symbol), false) + " " + v.name;
            if (!v.unit.empty()) html += " [" + v.unit + "]";
        }
        html += "</p>";
    }
    if (!note.empty()) html += "<div class=\"note\"><p>" + noteHtml(note) + "</p></div>";
    return html + "</div>";
}

std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(foldDanish(text));
    for (std::string w; in >> w;)
        out.push_back(w);
    return out;
}

} // namespace

std::string minformHtml(const std::vector<MinformItem>& items, const MinformOptions& options) {
    std::string html = "<h2>Min formelsamling</h2>";
    size_t shown = 0;
    for (const MinformItem& item : items) {
        const Formula* f = findFormula(item.key);
        if (!f) continue;
        html += block(*f, item.note, options);
        ++shown;
    }
    if (shown == 0)
        html += "<p class=\"hint\">Din formelsamling er tom. Søg efter en formel herover, og tryk "
                "<b>+ Tilføj</b> – så kommer den med her og på udskriften.</p>";
    return html;
}

std::vector<const Formula*> minformCandidates(const std::string& query, const std::vector<MinformItem>& pinned,
                                              size_t limit) {
    const std::vector<std::string> want = words(query);
    std::vector<const Formula*> out;
    for (const Formula& f : catalogue()) {
        if (out.size() >= limit) break;
        if (std::any_of(pinned.begin(), pinned.end(), [&](const MinformItem& m) { return m.key == f.key; }))
            continue;
        const std::string hay = foldDanish(f.title + " " + f.search + " " + f.key);
        if (std::all_of(want.begin(), want.end(), [&](const std::string& w) { return hay.find(w) != std::string::npos; }))
            out.push_back(&f);
    }
    return out;
}

} // namespace fl
