// The calculated sheet: head, the two schematics (all values once every step
// is shown, the givens until then), what was given, the steps with their
// pages, and behind the spoiler the tables of results, the checks and the
// figures.
#include "fl/circuit/sheets/sheetparts.h"

#include "fl/circuit/forward.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/expr/symbols.h"
#include "fl/fig/phasor.h"
#include "fl/fig/schematic.h"
#include "fl/fig/triangles.h"
#include "fl/tools/frame.h"

#include <chrono>
#include <cmath>
#include <ctime>

namespace fl {

namespace sheetparts {

std::string v(const std::string& symbol) {
    return varSpan(symbolDisplay(symbol));
}

std::string join(const std::vector<std::string>& parts, const std::string& sep) {
    std::string s;
    for (size_t i = 0; i < parts.size(); ++i)
        s += (i ? sep : "") + parts[i];
    return s;
}

std::string head(const std::string& what, bool isAc, const std::string& date, const std::string& title) {
    return "<div class=\"card sheet\" id=\"sheet\"><div class=\"sheet-head\"><div class=\"crumb\">" + what + " · " +
           (isAc ? "Vekselstrøm" : "Jævnstrøm") + " · " + date + "</div><h2>" + title + "</h2></div>";
}

std::string drawing(Circuit& drawn, const Values& values, double maxWidth) {
    double w = 0, h = 0;
    FigureOut fig = schematicFigure(drawn, values, SchematicOptions{}, &w, &h);
    double scale = maxWidth > 0 && w > maxWidth ? maxWidth / w : 1.0;
    const int iw = static_cast<int>(std::ceil(w * scale)), ih = static_cast<int>(std::ceil(h * scale));
    return figureShownAt(std::move(fig), iw, ih);
}

std::string givenLines(const Sheet& s) {
    std::string out;
    for (const Given& g : s.given)
        out += g.line;
    return out;
}

std::vector<std::string> unknownNames(const Sheet& s) {
    std::vector<std::string> out;
    if (!s.root || s.auxVoltage) return out;
    walk(s.root, [&](const CNodePtr& n) {
        if (isRootNode(*n)) return;
        for (const std::string& sym : {voltageSymbol(*n), currentSymbol(*n)})
            if (!s.values.count(sym)) out.push_back(sym);
    });
    return out;
}

std::string missingAdvice(const Sheet& s) {
    const std::vector<std::string> missing = unknownNames(s);
    if (missing.empty()) return {};
    std::vector<std::string> shown;
    for (const std::string& m : missing)
        shown.push_back(v(m));
    std::string out = "<div class=\"msg\">Disse kunne ikke findes ud fra de givne værdier: " + join(shown, ", ") + ". ";
    if (!s.values.count("U") && !s.values.count("I")) {
        out += "Skriv kildespændingen " + v("U") + " eller den samlede strøm " + v("I") +
               ", så kommer strømme og spændinger med.";
    } else {
        std::vector<std::string> empty;
        std::string first;
        walk(s.root, [&](const CNodePtr& n) {
            if (n->group || s.values.count(n->name)) return;
            if (first.empty()) first = n->name;
            else empty.push_back(v(n->name));
        });
        if (!first.empty())
            out += "Skriv værdien for " + v(first) + " – eller opgiv en anden kendt størrelse, fx " +
                   (empty.empty() ? v("U_" + first) : join(empty, ", ")) + " eller en kendt strøm ved en komponent.";
    }
    return out + "</div>";
}

} // namespace sheetparts

using namespace sheetparts;

std::string sheetDate() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm tm{};
    localtime_r(&now, &tm);
    char buf[48];
    std::snprintf(buf, sizeof buf, "%02d.%02d.%04d", tm.tm_mday, tm.tm_mon + 1, tm.tm_year + 1900);
    return buf;
}

namespace {

constexpr double kTick = 1e-12; // |X| below this is "ohmsk"

bool passes(double a, double b) {
    return std::fabs(a - b) <= 1e-6 * std::max({1.0, std::fabs(a), std::fabs(b)});
}

std::string tick(bool ok) {
    return ok ? " <span class=\"ok\">✓</span>" : " <span class=\"bad\">✗</span>";
}

std::string withUnit(double value, const std::string& unit) {
    return tool::formatValue(value, unit);
}

// A cell of a table: the value with its unit, marked when computed.
std::string cell(const Sheet& s, const std::string& symbol, bool magnitude = false) {
    if (symbol.empty()) return "<td class=\"mut\">—</td>";
    const double x = lookup(s.values, symbol);
    if (!std::isfinite(x)) return "<td></td>";
    const bool given = s.givenSymbols.count(symbol) > 0;
    return std::string(given ? "<td>" : "<td class=\"calc\">") +
           withUnit(magnitude ? std::fabs(x) : x, unitOf(symbol, s.root)) + "</td>";
}

std::string sideWord(double x) {
    if (!(std::fabs(x) >= kTick)) return "ohmsk";
    return x > 0 ? "induktiv" : "kapacitiv";
}

// The values behind a node: its ohmic part, its signed reactance.
void parts(const Sheet& s, const CNode& n, double* R, double* X) {
    *R = 0, *X = 0;
    if (n.group || isRootNode(n)) {
        *R = lookup(s.values, nodeSymbol(n, "R"));
        *X = lookup(s.values, nodeSymbol(n, "X"));
    } else if (n.k == "R") {
        *R = lookup(s.values, n.name);
    } else if (n.k == "L") {
        *X = lookup(s.values, "X_" + n.name);
        if (s.values.count("R_" + n.name)) *R = s.values.at("R_" + n.name);
    } else if (n.k == "C") {
        *X = -lookup(s.values, "X_" + n.name);
    }
}

std::string dcTable(const Sheet& s) {
    std::string t = "<div class=\"tbl\"><table><tr><th>Del</th><th>R</th><th>U</th><th>I</th><th>P</th></tr>";
    walk(s.root, [&](const CNodePtr& n) {
        t += "<tr><td>" + describe(*n) + "</td>" + cell(s, resistanceSymbol(*n)) + cell(s, voltageSymbol(*n)) +
             cell(s, currentSymbol(*n)) + cell(s, powerSymbol(*n)) + "</tr>";
    });
    return t + "</table></div>";
}

std::string acTable(const Sheet& s) {
    std::string t = "<div class=\"tbl\"><table><tr><th>Del</th><th>Værdi</th><th>R</th><th>X</th><th>Z</th>"
                    "<th>U</th><th>I</th></tr>";
    walk(s.root, [&](const CNodePtr& n) {
        std::string value = "<td class=\"mut\">—</td>";
        if (!n->group && !isRootNode(*n)) {
            const double x = lookup(s.values, n->name);
            const bool given = s.givenSymbols.count(n->name) > 0;
            const std::string open = given ? "<td>" : "<td class=\"calc\">";
            if (!std::isfinite(x))
                value = "<td></td>";
            else if (n->k == "C")
                value = open + fmtNumber(x * 1000000) + " µF</td>";
            else
                value = open + withUnit(x, n->k == "L" ? "H" : "Ω") + "</td>";
        }
        std::string r;
        if (n->group || isRootNode(*n)) r = nodeSymbol(*n, "R");
        else if (n->k == "R") r = n->name;
        else if (n->k == "L" && s.values.count("R_" + n->name)) r = "R_" + n->name;
        std::string x;
        reactanceSymbol(*n, nullptr, &x);
        std::string xCell = cell(s, x, true);
        if ((n->group || isRootNode(*n)) && lookup(s.values, x) < -kTick)
            xCell.insert(xCell.size() - 5, " <span class=\"crumb\">kap.</span>");
        t += "<tr><td>" + describe(*n) + "</td>" + value + cell(s, r) + xCell + cell(s, impedanceSymbol(*n)) +
             cell(s, voltageSymbol(*n)) + cell(s, currentSymbol(*n)) + "</tr>";
    });
    return t +
           "</table></div><p class=\"crumb\">For grupper er R og X de ækvivalente værdier – gruppen virker som en "
           "modstand R i serie med en reaktans X. \"kap.\" betyder, at gruppen er kapacitiv (strømmen er før "
           "spændingen).</p>";
}

// The first parallel group in pre-order: its branches are the circuit's.
CNodePtr firstParallel(const CNodePtr& root) {
    CNodePtr found;
    walk(root, [&](const CNodePtr& n) {
        if (!found && n->group && n->k == "P") found = n;
    });
    return found;
}

std::string branchTable(const Sheet& s) {
    const CNodePtr p = firstParallel(s.root);
    if (!p) return {};
    std::string t = "<h3 class=\"sh\">Effekt i hver gren</h3><div class=\"tbl\"><table><tr><th>Del</th><th>Art</th>"
                    "<th>cos φ</th><th>φ</th><th>P</th><th>Q</th><th>S</th></tr>";
    for (const CNodePtr& b : p->ch) {
        double R, X;
        parts(s, *b, &R, &X);
        const double U = lookup(s.values, voltageSymbol(*b)), I = lookup(s.values, currentSymbol(*b));
        const double Z = std::hypot(R, X);
        if (!std::isfinite(U) || !std::isfinite(I) || !(Z > 0)) continue;
        const double cosphi = R / Z;
        const double phi = std::acos(std::fmin(1.0, cosphi)) / 0.017453292519943295;
        t += "<tr><td>" + b->name + "</td><td>" + sideWord(X) + "</td><td>" + fmtNumber(cosphi) + "</td><td>" +
             fmtNumber(phi) + "°</td><td>" + withUnit(U * I * cosphi, "W") + "</td><td>" +
             withUnit(U * I * std::fabs(X) / Z, "VAr") + "</td><td>" + withUnit(U * I, "VA") + "</td></tr>";
    }
    return t +
           "</table></div><p class=\"crumb\">φ og Q står som positive tal. P lægges sammen gren for gren. Q også, men "
           "de kapacitive grenes Q trækkes fra de induktive. S kan ikke lægges sammen, fordi strømmene er "
           "faseforskudt.</p>";
}

std::string totals(const Sheet& s) {
    std::vector<std::string> parts;
    const auto one = [&](const std::string& sym, const std::string& unit) {
        const double x = lookup(s.values, sym);
        if (std::isfinite(x)) parts.push_back(v(sym) + " = " + withUnit(x, unit));
    };
    one("cosphi", "");
    const double phi = lookup(s.values, "phi");
    if (std::isfinite(phi))
        parts.push_back(v("phi") + " = " + fmtNumber(phi) + "° (" + sideWord(lookup(s.values, "X_tot")) + ")");
    one("P", "W");
    one("Q", "VAr");
    one("S", "VA");
    return parts.empty() ? std::string() : "<p>" + join(parts, " · ") + "</p>";
}

// The sum of the parts of a group, as magnitudes in dc and as vectors in ac.
struct GroupCheck {
    std::string html;
    bool ok = true;
};

GroupCheck kirchhoff(const Sheet& s) {
    GroupCheck out;
    std::map<std::string, NodePhasor> ph;
    if (s.isAc) {
        try {
            ph = phasors(s.root, s.values, true);
        } catch (const std::exception&) {
            return out;
        }
    }
    walk(s.root, [&](const CNodePtr& g) {
        if (!g->group || g->ch.size() < 2) return;
        const bool series = g->k == "S";
        const std::string total = series ? voltageSymbol(*g) : currentSymbol(*g);
        const double want = lookup(s.values, total);
        if (!std::isfinite(want)) return;
        std::vector<std::string> names, numbers;
        double sum = 0;
        Cx vec;
        bool known = true;
        for (const CNodePtr& c : g->ch) {
            const std::string sym = series ? voltageSymbol(*c) : currentSymbol(*c);
            const double x = lookup(s.values, sym);
            if (!std::isfinite(x)) known = false;
            names.push_back(v(sym));
            numbers.push_back(withUnit(x, series ? "V" : "A"));
            sum += x;
            if (auto it = ph.find(c->id); it != ph.end()) vec += series ? it->second.u : it->second.i;
        }
        if (!known) return;
        const double got = s.isAc ? std::abs(vec) : sum;
        const bool ok = passes(want, got);
        out.ok = out.ok && ok;
        const std::string group = isRootNode(*g) ? "hele kredsen" : nodeWords(*g);
        out.html += std::string("<p class=\"hint0\">") + (series ? "Kirchhoffs 2. lov – spændingerne i "
                                                                 : "Kirchhoffs 1. lov – strømmene i ") +
                    group + " skal give " + v(total) + ":</p>";
        const std::string lhs = join(names, " + ");
        const std::string rhs = s.isAc ? "|" + join(numbers, " + ") + "| (som vektorer) = " +
                                             withUnit(got, series ? "V" : "A")
                                       : join(numbers, " + ") + " = " + withUnit(got, series ? "V" : "A");
        out.html += eqTable({{v(total), lhs, {}, false}, {{}, rhs + tick(ok), {}, false}});
    });
    return out;
}

std::string voltageTriangleCheck(const Sheet& s, bool* ok) {
    if (!s.isAc || s.shape != "series" || !s.values.count("U") || !s.values.count("X_tot")) return {};
    std::map<std::string, double> vars = s.values;
    std::string html = "<p class=\"hint0\">Spændingstrekanten – den ohmske og den reaktive spænding lagt sammen som "
                       "vektorer skal give kildespændingen:</p>";
    try {
        html += evaluateStep("U_R", parse("I*R_tot"), vars, "V").html;
        html += evaluateStep("U_X", parse("I*X_tot"), vars, "V").html;
        const StepOutcome u = evaluateStep("U", parse("sqrt(U_R**2+U_X**2)"), vars, "V");
        const bool good = passes(u.value, s.values.at("U"));
        *ok = *ok && good;
        html += u.html + "<p>" + tick(good) + "</p>";
    } catch (const std::exception&) {
        return {};
    }
    return html;
}

std::string checkSection(const Sheet& s) {
    std::string out;
    std::string rounding, wrong;
    for (const Mismatch& m : s.mismatches) {
        const std::string unit = unitOf(m.symbol, s.root);
        const double rel = std::fabs(m.given - m.computed) / std::max(std::fabs(m.given), std::fabs(m.computed));
        if (rel < 0.01)
            rounding += "<div>" + v(m.symbol) + ": " + " opgivet " + withUnit(m.given, unit) + ", udregnet " +
                        withUnit(m.computed, unit) + " <span class=\"ok\">≈ ✓</span></div>";
        else
            wrong += (wrong.empty() ? "" : "<br>") + v(m.symbol) + " = " + withUnit(m.given, unit) +
                     ", men udregningen giver " + withUnit(m.computed, unit);
    }
    if (!rounding.empty())
        out += "<p class=\"hint0\">Nogle af de opgivne tal passer ikke helt præcist med hinanden, men forskellen er "
               "under 1 % – det skyldes afrunding i opgaven:</p><div class=\"known\">" +
               rounding + "</div>";
    if (!wrong.empty()) out += msgBox("Nogle af de givne værdier passer ikke sammen:<br>" + wrong, true);

    bool ok = wrong.empty();
    const std::string triangle = voltageTriangleCheck(s, &ok);
    const GroupCheck laws = kirchhoff(s);
    ok = ok && laws.ok;
    out += triangle + laws.html;

    std::string compare;
    bool exact = true;
    for (const Target& t : s.targets) {
        const double got = lookup(s.values, t.symbol);
        if (!std::isfinite(got)) continue;
        exact = exact && passes(t.value, got);
        const std::string unit = unitOf(t.symbol, s.root);
        compare += "<div>" + v(t.symbol) + ": opgivet " + withUnit(t.value, unit) + ", udregnet " +
                   withUnit(got, unit) + "</div>";
    }
    if (!compare.empty())
        out += std::string(exact ? "<p class=\"hint0\">De fundne værdier giver præcis det, opgaven oplyste:</p>"
                                 : "<p class=\"hint0\">Sammenligning med de værdier, opgaven gav:</p>") +
               "<div class=\"known\">" + compare + "</div>";
    if (triangle.empty() && laws.html.empty() && compare.empty() && s.mismatches.empty())
        return "<p class=\"hint0\">Ingen kontrol mulig med de fundne værdier.</p>";
    // One sentence for both currents: in dc the vectors all lie on one line.
    if (ok)
        out += "<p class=\"ok\">✓ Alle formlerne passer med de fundne værdier (Kirchhoffs 1. lov er opfyldt som "
               "vektorer).</p>";
    return out;
}

std::string graphics(const Sheet& s) {
    std::string out;
    if (!s.isAc) {
        if (s.root->k == "S" && s.root->ch.size() >= 2) {
            FigureOut bar = voltageBar(s.root, s.values);
            out += figureMarkup(std::move(bar));
        }
        return out;
    }
    for (const char* which : {"Z", "U", "I", "S"}) {
        if (std::string(which) == "U" && s.shape == "par") continue;
        if (std::string(which) == "I" && s.shape == "series") continue;
        out += figureMarkup(circuitTriangle(which, s.root, s.values));
    }
    const auto scene = [&](const VectorScene& sc) {
        if (sc.vectors.empty()) return;
        FigureOut f = drawVectors(sc);
        if (f.empty()) return;
        f.caption = sc.caption;
        out += figureMarkup(std::move(f));
    };
    try {
        if (firstParallel(s.root))
            scene(currentScene(s.root, s.values, true));
        scene(voltageScene(s.root, s.values, true));
    } catch (const std::exception&) {
    }
    return out;
}

} // namespace

std::vector<StepBlock> sheetparts::blocks(const Sheet& s) {
    std::vector<StepBlock> out;
    std::map<std::string, double> vars = s.values;
    for (const CircuitStep& st : s.searchSteps) {
        std::string html = st.html;
        if (!st.formula.empty() && !st.target.empty()) {
            try {
                html += evaluateStep(st.target, parse(st.formula), vars, unitOf(st.target, s.root)).html;
            } catch (const std::exception&) {
            }
        }
        out.push_back({st.title, st.pages, html, st.target, join(st.uses, ",")});
    }
    for (const CircuitStep& st : s.steps)
        out.push_back({st.title, st.pages, st.html, st.target, join(st.uses, ",")});
    for (const CircuitStep& st : s.meterSteps)
        out.push_back({st.title, st.pages, st.html, st.target, {}});
    return out;
}

std::string regneark(const Sheet& s, Circuit& drawn, const std::string& date) {
    if (!s.error.empty()) return msgBox(s.error, true);
    std::string out = head("Regneark", s.isAc, date, "Udregning af kredsløbet");
    const Values shownValues = s.meters ? withMeterReadings(s.values, *s.meters) : s.values;
    out += "<div class=\"spoiler\">" + drawing(drawn, shownValues, 0) +
           "<p class=\"crumb\">Blå værdier er fundet ved udregning</p></div>";
    out += "<div class=\"spoiler-alt\">" + drawing(drawn, {}, 0) +
           "<p class=\"crumb\">De udregnede værdier vises, når alle trin er vist</p></div>";
    if (s.stopped)
        return out +
               msgBox("Udregningen stoppede, fordi tallene ikke giver et reelt svar. Tjek de indtastede værdier.",
                      true) +
               "</div>";
    out += missingAdvice(s);
    out += s.intro;
    for (const std::string& n : s.notes)
        out += msgBox(n, false);
    if (!s.given.empty()) out += "<h3 class=\"sh\">Givet</h3><div class=\"known\">" + givenLines(s) + "</div>";
    out += stepBlocksBook(blocks(s));

    out += "<div class=\"spoiler\"><h3 class=\"sh\">Resultater</h3>";
    if (s.isAc) {
        out += acTable(s);
        if (s.shape == "par" || s.shape == "mixed") out += branchTable(s);
        out += totals(s);
    } else {
        out += dcTable(s);
    }
    out += "<h3 class=\"sh\">Kontrol</h3>" + checkSection(s);
    const std::string figs = graphics(s);
    if (!figs.empty()) out += "<h3 class=\"sh\">Grafik</h3>" + figs;
    return out + "</div></div>";
}

std::string regneark(const Sheet& s) {
    return regneark(s, currentCircuit(), sheetDate());
}

} // namespace fl
