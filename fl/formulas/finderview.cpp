#include "fl/formulas/finderview.h"

#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/expr/symbols.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/help.h"
#include "fl/formulas/solve.h"

#include <map>
#include <set>

namespace fl {

namespace {

bool isOpen(const OpenRoute& open, const std::string& route) {
    return !open || open(route);
}

void collectRoutes(const FinderNode& node, std::vector<std::string>& out) {
    out.insert(out.end(), node.routes.begin(), node.routes.end());
    for (const FinderNode& child : node.children)
        collectRoutes(child, out);
}

// A quantity as it stands in a formula: italic, with its index.
std::string symbolMath(const std::string& symbol) {
    return render(makeVar(symbol), false);
}


// The quantities a student may leave empty, each once, in the order of the fields.
std::vector<std::string> solvable(const Formula& f) {
    std::vector<std::string> out;
    for (const FormulaVar& v : f.vars)
        for (const FormulaForm& form : f.forms)
            if (form.var == v.symbol) {
                out.push_back(v.symbol);
                break;
            }
    return out;
}

// "U, I eller R"
std::string orList(const std::vector<std::string>& symbols) {
    std::string out;
    for (size_t i = 0; i < symbols.size(); ++i) {
        if (i > 0) out += i + 1 == symbols.size() ? " eller " : ", ";
        out += symbolDisplay(symbols[i]);
    }
    return out;
}

std::string countLine(const FinderNode& node, const OpenRoute& open, const TileLook& look) {
    const size_t families = openFamilies(node, open).size();
    const std::string formulas = std::to_string(families) + (families == 1 ? " formel" : " formler");
    std::string line = formulas;
    if (!node.children.empty()) {
        size_t subjects = 0;
        for (const FinderNode& child : node.children)
            subjects += nodeClosed(child, open) ? 0 : 1;
        line = std::to_string(subjects) + " emner · " + formulas;
    }
    return "<span style=\"color:" + look.accent + ";font-size:9pt\">" + line + " ›</span>";
}

// A subject is drawn like the tool that stands for it, a leaf like its first
// tool, so that six subjects don't look alike; the magnifier is the last resort.
std::string nodeIconKey(const FinderNode& node, const std::string& subject) {
    static const std::map<std::string, std::string> subjects{{"dc", "res"},     {"ac", "acdemo"},
                                                             {"tf", "trefase"}, {"energi", "energi"},
                                                             {"inst", "insttest"}, {"ma", "tri"}};
    for (const std::string& route : node.routes)
        if (!tileIcon(route).empty()) return route;
    const auto it = subjects.find(subject);
    return it == subjects.end() ? std::string("finder") : it->second;
}

std::string nodeTiles(const FinderNode& node, const std::string& path, const OpenRoute& open,
                      const TileLook& look) {
    std::vector<std::string> cells;
    for (const FinderNode& child : node.children) {
        if (nodeClosed(child, open)) continue;
        const std::string href = "fm:" + (path.empty() ? child.id : path + "/" + child.id);
        const std::string subject = path.empty() ? child.id : path.substr(0, path.find('/'));
        const std::string iconKey = path.empty() ? nodeIconKey(FinderNode{}, subject) : nodeIconKey(child, subject);
        std::string below;
        if (!child.blurb.empty()) below += "<span class=\"crumb\">" + child.blurb + "</span><br>";
        below += countLine(child, open, look);
        cells.push_back(
            tileCell(href, iconKeyImageRef(iconKey, look.accent, 38), 38, child.title, below, look));
    }
    return tileTable(cells);
}

std::string calculatorTiles(const std::vector<std::string>& keys, const TileLook& look) {
    std::vector<std::string> cells;
    for (const std::string& key : keys) {
        const Formula* f = findFormula(key);
        if (!f || f->forms.empty()) continue;
        const std::string below = "<span class=\"eq\" style=\"font-size:13pt\">" + primaryFormula(*f) +
                                  "</span><br><span class=\"crumb\">Find " + orList(solvable(*f)) +
                                  "</span><br><span style=\"color:" + look.accent +
                                  ";font-size:9pt\">Åbn udregneren ›</span>";
        cells.push_back(tileCell("go:" + key, "", 0, f->title, below, look));
    }
    return tileTable(cells);
}

} // namespace

std::string primaryFormula(const Formula& f) {
    const FormulaForm& primary = f.forms.front();
    return symbolMath(primary.var) + " = " + renderMath(parse(primary.expr));
}

std::vector<std::string> openFamilies(const FinderNode& node, const OpenRoute& open) {
    std::vector<std::string> out;
    for (const std::string& key : subtreeKeys(node))
        if (findFormula(key) && isOpen(open, key)) out.push_back(key);
    return out;
}

bool nodeClosed(const FinderNode& node, const OpenRoute& open) {
    std::vector<std::string> all = subtreeKeys(node);
    collectRoutes(node, all);
    if (all.empty()) return false;
    for (const std::string& route : all)
        if (isOpen(open, route)) return false;
    return true;
}

std::string parentPath(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string formulaCard(const Formula& f) {
    std::string html = "<div class=\"card\"><p><b style=\"font-size:12.5pt\"><a href=\"go:" + f.key + "\">" +
                       symbolHtml(f.title) + "</a></b> <span class=\"crumb\">(" + pageRef(f.page, "formelsamlingen") +
                       ")</span></p>";
    if (!f.forms.empty()) html += "<p class=\"eq\" style=\"font-size:16pt\">" + primaryFormula(f) + "</p>";
    if (const std::string purpose = familyPurpose(f.key); !purpose.empty())
        html += "<p><b>Bruges til:</b> " + purpose + "</p>";
    html += "<p style=\"margin-bottom:2px\"><b>Det betyder bogstaverne:</b></p><table cellspacing=\"0\" "
            "cellpadding=\"3\">";
    for (const FormulaVar& v : f.vars) {
        html += "<tr><td width=\"95\" class=\"eq\" style=\"font-size:13pt\">" + symbolMath(v.symbol) +
                "</td><td><b>" + v.name + "</b>";
        if (!v.unit.empty()) html += " <span class=\"crumb\">[" + v.unit + "]</span>";
        html += "<br><span class=\"hint0\">" + quantityHelp(f.key, v.symbol) + "</span></td></tr>";
    }
    html += "</table>";
    if (!f.note.empty()) html += "<p class=\"hint0\"><b>Bemærk:</b> " + f.note + "</p>";
    html += "<p class=\"hint0\" style=\"margin-bottom:0\"><b>Omskrevet til hver størrelse:</b></p><p "
            "class=\"mfforms\">";
    bool first = true;
    for (const FormulaForm& form : allForms(f)) {
        if (!first) html += " &nbsp;&nbsp;·&nbsp;&nbsp; ";
        first = false;
        html += "<span style=\"white-space:nowrap\">" + symbolMath(form.var) + " = " +
                render(parse(form.expr), false) + "</span>";
    }
    html += "</p><p><a href=\"go:" + f.key + "\">→ Åbn udregneren</a></p></div>";
    return html;
}

std::string formulaStatic(const Formula& f) {
    if (f.forms.empty()) return {};
    std::string html = "<div class=\"eq\">" + primaryFormula(f) + "</div>";
    if (!f.definitions.empty()) {
        html += "<p class=\"crumb\">hvor ";
        for (size_t i = 0; i < f.definitions.size(); ++i) {
            const FormulaDef& d = f.definitions[i];
            if (i > 0) html += ", ";
            html += symbolMath(d.symbol) + " = " + render(parse(d.expr), false) + " (" + d.label + ")";
        }
        html += "</p>";
    }
    std::set<std::string> reached;
    for (const FormulaForm& form : allForms(f)) {
        reached.insert(form.var);
        if (form.var == f.forms.front().var) continue;
        html += "<div class=\"eq\" style=\"font-size:13pt\">" + symbolMath(form.var) + " = " +
                renderMath(parse(form.expr)) + "</div>";
    }
    for (const FormulaVar& v : f.vars)
        if (!reached.count(v.symbol)) {
            html += "<p class=\"crumb\">De øvrige størrelser kan ikke isoleres enkelt her – brug et af "
                    "værktøjerne "
                    "til dem.</p>";
            break;
        }
    return html;
}

std::string finderMarkup(const FinderState& s) {
    const FinderNode* node = findNode(s.path);
    if (!node) return msgBox("Emnet findes ikke.", false);

    std::string html;
    const bool closed = nodeClosed(*node, s.open);
    const std::string closedText = "<b>Din lærer har slået dette emne fra for skolen.</b>";
    if (!s.path.empty() && !node->blurb.empty())
        html += "<p class=\"hint\">" + node->blurb + (closed ? " " + closedText : std::string()) + "</p>";
    else if (closed)
        html += "<p class=\"hint\">" + closedText + "</p>";

    html += nodeTiles(*node, s.path, s.open, s.look);

    std::vector<std::string> routes;
    for (const std::string& route : node->routes)
        if (findTile(route)) routes.push_back(route);
    if (const std::string chips = chipRow(routes, s.open); !chips.empty())
        html += "<h3 class=\"sh\">Lad programmet regne det</h3>" + chips;

    if (s.mode == FinderCalculators) {
        std::vector<std::string> keys;
        for (const std::string& key : node->keys)
            if (findFormula(key) && isOpen(s.open, key)) keys.push_back(key);
        if (!keys.empty())
            html += "<h3 class=\"sh\">Udregnere <span class=\"crumb\">(" + node->title +
                    ") – klik på en, skriv det du kender, og lad det du søger stå tomt</span></h3>" +
                    calculatorTiles(keys, s.look);
        return html;
    }

    const std::vector<std::string> keys = openFamilies(*node, s.open);
    if (keys.empty()) return html;
    html += "<h3 class=\"sh\">Formler";
    if (!node->children.empty())
        html += " <span class=\"crumb\">(" + std::to_string(keys.size()) + ")</span>";
    html += "</h3>";
    for (const std::string& key : keys)
        html += formulaCard(*findFormula(key));
    return html;
}

} // namespace fl
