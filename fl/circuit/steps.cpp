// The step generators. Each writes equations "target = formula" in the order
// a student would use them; the chain picks, round by round, the first one
// that has exactly one unknown, so an equation listed late (a sum, a second
// form of the power law) is used only when nothing before it can go on, and
// otherwise stays fully known and serves as a check.
#include "fl/circuit/steps.h"
#include "fl/circuit/step_generator.h"

#include "fl/circuit/forward.h"
#include "fl/circuit/sheet.h"
#include "fl/expr/symbols.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

namespace fl {

namespace stepgen {

std::string join(const std::vector<std::string>& parts, const std::string& sep) {
    std::string s;
    for (size_t i = 0; i < parts.size(); ++i)
        s += (i ? sep : "") + parts[i];
    return s;
}

std::string childNames(const CNode& g) {
    std::vector<std::string> names;
    for (const CNodePtr& c : g.ch)
        names.push_back(c->name);
    return join(names, ", ");
}

bool hasOwnR(const CNode& n) {
    return n.k == "L" && hasOwnResistance(n) != OwnNone;
}

// The symbol under which a node's whole impedance stands: a resistor its
// value, an ideal coil or a capacitor its reactance.
std::string zSym(const CNode& n) {
    if (n.group || isRootNode(n)) return nodeSymbol(n, "Z");
    if (n.k == "R") return n.name;
    if (n.k == "L" && hasOwnR(n)) return "Z_" + n.name;
    return "X_" + n.name;
}

// The ohmic part of a node, or empty when it has none.
std::string rPart(const CNode& n) {
    if (n.group || isRootNode(n)) return nodeSymbol(n, "R");
    if (n.k == "R") return n.name;
    if (hasOwnR(n)) return "R_" + n.name;
    return {};
}

// The reactive part with its sign: coils plus, capacitors minus; a group's
// symbol carries its own sign.
std::string xPart(const CNode& n, int* sign) {
    *sign = 1;
    if (n.group || isRootNode(n)) return nodeSymbol(n, "X");
    if (n.k == "L") return "X_" + n.name;
    if (n.k == "C") {
        *sign = -1;
        return "X_" + n.name;
    }
    return {};
}

// "a+b-c", with "0" for nothing.
std::string signedSum(const std::vector<std::pair<int, std::string>>& terms) {
    std::string s;
    for (const auto& [sign, t] : terms) {
        if (s.empty())
            s = sign < 0 ? "-" + t : t;
        else
            s += (sign < 0 ? "-" : "+") + t;
    }
    return s.empty() ? "0" : s;
}

// Whether a part has an ohmic side, a reactive side: a lossy coil and a
// branch of R and L have both.
bool ohmic(const CNodePtr& n) {
    bool found = false;
    walk(n, [&](const CNodePtr& c) { found = found || c->k == "R" || hasOwnR(*c); });
    return found;
}

bool reactive(const CNodePtr& n) {
    bool found = false;
    walk(n, [&](const CNodePtr& c) { found = found || c->k == "L" || c->k == "C"; });
    return found;
}

std::string sameVoltageTitle(const std::string& branch, const std::string& voltage, const std::string& z) {
    return "Strømmen i " + branch + " – samme spænding " + voltage + " over alle grene, I = U / " +
           symbolDisplay(z);
}

std::vector<StepEquation> StepGenerator::run() {
    const CNodePtr& root = s_.root;
    if (!root || root->ch.empty()) return out_;
    if (s_.isAc && s_.shape == "par") block_ = parallelBlock(root);
    if (block_ && !s_.closed) {
        // Without U the branches are worked at an auxiliary voltage; with
        // it, by their currents. The current sums go under I_R, I_L and
        // I_C, which a group of that name would own: then by impedances.
        aux_ = !knownAtStart("U") && knownAtStart("I");
        bool anyOhmic = false;
        for (const CNodePtr& b : block_->ch)
            anyOhmic = anyOhmic || ohmic(b);
        currents_ = !aux_ && anyOhmic && !findByName(root, "R") && !findByName(root, "L") &&
                    !findByName(root, "C");
    }
    if (s_.isAc) reactances(root);
    if (!s_.isAc)
        dcGroups(root);
    else if (s_.shape == "series")
        acSeriesTotals(root);
    else
        acGroups(root);
    if (aux_)
        auxiliary(root);
    else if (currents_)
        branchCurrents(root);
    else
        whole(root);
    down(root, "U", "I");
    powers(root);
    if (!s_.isAc) kirchhoff(root);
    for (const auto& [follower, leader] : s_.links)
        add(follower, leader, symbolDisplay(follower) + " har samme værdi som " + symbolDisplay(leader) +
                                  " (opgivet i opgaven)",
            "3", nullptr);
    if (aux_ && !out_.empty())
        out_.front().lead =
            "<p class=\"hint0\">U er ikke opgivet. Strømmene i grenene er proportionale med U, så "
            "kredsens impedans Z afhænger ikke af U. Regn derfor først med en hjælpespænding " +
            symbolDisplay("U_h") + " = " + tool::formatValue(kAuxVoltage, "V") + ":</p>" +
            out_.front().lead;
    return out_;
}

void StepGenerator::add(const std::string& target, const std::string& formula, const std::string& title,
         const std::string& pages, const CNodePtr& node, bool closedOnly) {
    if (target == formula) return;
    out_.push_back({{target, formula, title, pages, {}}, node, closedOnly, {}, false, {}, {}});
}

StepEquation& StepGenerator::sheet(const std::string& target, const std::string& formula, const std::string& title,
                    const std::string& pages, const CNodePtr& node, const std::string& lead) {
    out_.push_back({{target, formula, title, pages, {}}, node, false, lead, true, {}, {}});
    return out_.back();
}

double StepGenerator::seen(const std::string& symbol) const {
    return preview_ ? lookup(*preview_, symbol) : std::numeric_limits<double>::quiet_NaN();
}

bool StepGenerator::knownAtStart(const std::string& symbol) const { return known_ && known_->count(symbol); }

bool StepGenerator::capacitive(const CNode& n) const {
    if (!n.group) return n.k == "C";
    return seen(nodeSymbol(n, "X")) < 0.0;
}

bool StepGenerator::isBranch(const CNodePtr& n) const {
    return block_ && std::find(block_->ch.begin(), block_->ch.end(), n) != block_->ch.end();
}

void StepGenerator::postOrder(const CNodePtr& n, const std::function<void(const CNodePtr&)>& fn) {
    for (const CNodePtr& c : n->ch)
        postOrder(c, fn);
    fn(n);
}

void StepGenerator::reactances(const CNodePtr& root) {
    walk(root, [&](const CNodePtr& n) {
        if (n->group) return;
        // A mixed circuit names the kind once; the formula line names the part.
        const bool mixed = s_.shape == "mixed";
        if (aux_) {
            const std::string title =
                "Reaktanserne: X<sub>L</sub> = 2 · π · f · L og X<sub>C</sub> = 1 / (2 · π · "
                "f · C)";
            if (n->k == "L") add("X_" + n->name, "2*PI*f*" + n->name, title, "11, 15", n);
            if (n->k == "C") add("X_" + n->name, "1/(2*PI*f*" + n->name + ")", title, "11, 15", n);
            if (hasOwnR(*n))
                add("Z_" + n->name, "sqrt(R_" + n->name + "**2+X_" + n->name + "**2)", angleTitle(*n),
                    "12, 18", n);
            return;
        }
        if (n->k == "L") {
            add("X_" + n->name, "2*PI*f*" + n->name,
                mixed ? std::string("Spolernes induktive reaktans")
                      : "Spolens induktive reaktans (" + n->name + ")",
                "11", n);
            const std::string z = "sqrt(R_" + n->name + "**2+X_" + n->name + "**2)";
            if (hasOwnR(*n) && block_)
                add("Z_" + n->name, z,
                    "Spolens impedans: z<sub>L</sub> = R<sub>L</sub> + iX<sub>L</sub> (" + n->name + ")",
                    "6", n);
            else if (hasOwnR(*n))
                add("Z_" + n->name, z,
                    std::string("Spolens impedans – spolen har både ohmsk modstand og reaktans") +
                        (mixed ? "" : " (" + n->name + ")"),
                    "18", n);
        } else if (n->k == "C") {
            add("X_" + n->name, "1/(2*PI*f*" + n->name + ")",
                mixed ? std::string("Kondensatorernes kapacitive reaktans")
                      : "Kondensatorens kapacitive reaktans (" + n->name + ")",
                "15", n);
        }
    });
}

void StepGenerator::dcGroups(const CNodePtr& root) {
    postOrder(root, [&](const CNodePtr& g) {
        if (!g->group || g->ch.empty()) return;
        std::vector<std::string> terms;
        for (const CNodePtr& c : g->ch)
            terms.push_back(g->k == "P" ? "1/" + resistanceSymbol(*c) : resistanceSymbol(*c));
        if (g->k == "P")
            add(resistanceSymbol(*g), "1/(" + join(terms, "+") + ")",
                "Parallelforbindelse (" + childNames(*g) + "): 1/R = 1/R₁ + 1/R₂ + …", "4", g);
        else
            add(resistanceSymbol(*g), join(terms, "+"),
                "Serieforbindelse (" + childNames(*g) + "): modstandene lægges sammen", "3", g);
    });
}

void StepGenerator::acSeriesTotals(const CNodePtr& root) {
    std::vector<std::string> rs, xl, xc;
    bool lossy = false;
    for (const CNodePtr& c : root->ch) {
        if (c->group) continue;
        if (c->k == "R") rs.push_back(c->name);
        if (c->k == "L") xl.push_back("X_" + c->name);
        if (c->k == "C") xc.push_back("X_" + c->name);
        if (hasOwnR(*c)) {
            rs.push_back("R_" + c->name);
            lossy = true;
        }
    }
    add("R_tot", rs.empty() ? "0" : join(rs, "+"),
        std::string("Serie: de ohmske modstande lægges sammen") + (lossy ? " (også spolens egen modstand)" : ""),
        "3, 18", root);
    std::string xL = xl.size() == 1 ? xl.front() : "X_L";
    std::string xC = xc.size() == 1 ? xc.front() : "X_C";
    if (xl.size() > 1) add("X_L", join(xl, "+"), "Serie: spolernes reaktanser lægges sammen", "11", root);
    if (xc.size() > 1) add("X_C", join(xc, "+"), "Serie: kondensatorernes reaktanser lægges sammen", "15", root);
    std::string x;
    if (!xl.empty() && !xc.empty())
        x = xL + "-" + xC;
    else if (!xl.empty())
        x = xL;
    else if (!xc.empty())
        x = "-" + xC;
    else
        x = "0";
    if (!xl.empty() && !xc.empty())
        add("Z", "sqrt(R_tot**2+(" + x + ")**2)",
            "Impedans for hele kredsen: Z = √(R² + (X<sub>L</sub> − X<sub>C</sub>)²)", "12", root);
    else if (!xl.empty() || !xc.empty())
        add("Z", "sqrt(R_tot**2+" + (xl.empty() ? xC : xL) + "**2)", "Impedans for hele kredsen: Z = √(R² + X²)", "12",
            root);
    else
        add("Z", "R_tot", "Impedans for hele kredsen: kun ohmsk modstand", "12", root);
    add("X_tot", x, "Kredsens samlede reaktans: spoler tæller plus, kondensatorer minus", "12", root);
}

void StepGenerator::acGroups(const CNodePtr& root) {
    // The branch routes find Z without the parallel's complex sum.
    const bool branchesOnly = aux_ || currents_;
    postOrder(root, [&](const CNodePtr& g) {
        if (!g->group || g->ch.empty()) return;
        if (branchesOnly && (g == block_ || isRootNode(*g))) return;
        const std::string names = childNames(*g);
        const std::string R = nodeSymbol(*g, "R"), X = nodeSymbol(*g, "X"), Z = nodeSymbol(*g, "Z");
        if (g->k == "S") {
            std::vector<std::pair<int, std::string>> rs, xs;
            for (const CNodePtr& c : g->ch) {
                int sign = 1;
                if (std::string r = rPart(*c); !r.empty()) rs.push_back({1, r});
                if (std::string x = xPart(*c, &sign); !x.empty()) xs.push_back({sign, x});
            }
            const std::string title = "Serie (" + names +
                                      "): ohmske dele og reaktanser lægges sammen hver for sig – spoler "
                                      "tæller plus, kondensatorer minus";
            if (isBranch(g)) {
                add(R, signedSum(rs),
                    "Grenen " + g->name + " er en seriekreds: de ohmske modstande lægges sammen",
                    "3, 18, 20", g);
                if ((currents_ || aux_) && capacitive(*g)) {
                    // Turned round so that X stands positive, as the branch's
                    // angle takes it; the tables keep the signed value.
                    std::vector<std::pair<int, std::string>> turned;
                    for (const auto& [sign, x] : xs)
                        if (sign < 0) turned.push_back({1, x});
                    for (const auto& [sign, x] : xs)
                        if (sign > 0) turned.push_back({-1, x});
                    sheet(X, signedSum(turned),
                          "Grenen " + g->name + ": reaktanserne lægges sammen (kondensator plus, spole minus)",
                          "3, 18, 20", g,
                          "<p class=\"hint0\">Grenen " + g->name + " er kapacitiv: X regnes som et positivt tal</p>");
                } else {
                    add(X, signedSum(xs),
                        "Grenen " + g->name + ": reaktanserne lægges sammen (spole plus, kondensator minus)",
                        "3, 18, 20", g);
                }
            } else {
                add(R, signedSum(rs), title, "3, 18, 20", g);
                add(X, signedSum(xs), title, "3, 18, 20", g);
            }
        } else {
            const std::string name = isRootNode(*g) ? std::string("tot") : g->name;
            const std::string G = "G_" + name, B = "B_" + name;
            std::vector<std::pair<int, std::string>> gs, bs;
            for (const CNodePtr& c : g->ch) {
                int sign = 1;
                const std::string r = rPart(*c), x = xPart(*c, &sign), z = zSym(*c);
                if (!r.empty() && x.empty()) {
                    gs.push_back({1, "1/" + r}); // a resistor: vinkel 0°
                } else if (r.empty() && !x.empty()) {
                    bs.push_back({-sign, "1/" + x}); // an ideal coil −90°, a capacitor +90°
                } else {
                    gs.push_back({1, r + "/" + z + "**2"});
                    bs.push_back({-1, x + "/" + z + "**2"});
                }
            }
            // Four lines of one method: the parts of 1/z summed, then turned back.
            const std::string title = "Parallel (" + names + "): z = (1/z₁ + 1/z₂ + …)⁻¹ med komplekse tal";
            add(G, signedSum(gs), title, "10–11", g);
            // In a mixed circuit the group's result goes on in series with the rest.
            if (s_.shape == "mixed")
                out_.back().lead = "<p class=\"hint0\">Grenstrømmene er faseforskudt, så impedanserne "
                                   "lægges sammen som komplekse "
                                   "tal: hver gren skrives som z∠φ, man tager 1/z, lægger sammen og "
                                   "vender tilbage. Resultatet "
                                   "skrives som R + iX, så det kan lægges i serie med resten.</p>" +
                                   complexForms(*g);
            out_.back().lead +=
                "<p class=\"hint0\">1 / (z∠φ) = (1/z)∠−φ</p><p class=\"hint0\">Læg reelle og "
                "imaginære dele sammen hver for sig</p>";
            add(B, signedSum(bs), title, "10–11", g);
            add(R, G + "/(" + G + "**2+" + B + "**2)", title, "10–11", g);
            add(X, "-" + B + "/(" + G + "**2+" + B + "**2)", title, "10–11", g);
            out_.back().after = [X](const Values& v) {
                const double x = lookup(v, X);
                if (!std::isfinite(x)) return std::string();
                return std::string("<p class=\"hint0\">") +
                       (x < 0 ? "φ er minus: gruppen virker kapacitivt"
                              : "φ er plus: gruppen virker induktivt") +
                       "</p>";
            };
        }
        if (aux_ && isBranch(g))
            add(Z, "sqrt(" + R + "**2+" + X + "**2)", angleTitle(*g), "12, 18", g);
        else if (!isRootNode(*g))
            add(Z, "sqrt(" + R + "**2+" + X + "**2)", "Impedans af " + nodeWords(*g) + ": z = √(R² + X²)", "12",
                g);
    });
    if (!branchesOnly)
        add("Z", "sqrt(R_tot**2+X_tot**2)", "Impedans for hele kredsen: Z = √(R² + X²)", "12", root);
}

void StepGenerator::whole(const CNodePtr& root) {
    if (!s_.isAc) {
        add("I", "U/R_tot", "Ohms lov for hele kredsen", "2", root);
        return;
    }
    const std::string triangle = "Effektfaktor og faseforskydning – modstandstrekanten";
    add("cosphi", "R_tot/Z", s_.shape == "series" ? "Effektfaktor: cos φ = R / Z" : triangle, "12", root);
    add("phi", "acos(cosphi)", s_.shape == "mixed" ? triangle : "Faseforskydningsvinkel", "8", root);
    // Found from the current, U gets its own title: the chain would
    // otherwise name the step after the law it turned round.
    if (!s_.closed && !knownAtStart("U") && knownAtStart("I"))
        add("U", "I*Z", "Spændingen – Ohms lov med impedans", "12", root);
    else
        add("I", "U/Z", "Strømmen – Ohms lov med impedans", "12", root);
}

void StepGenerator::down(const CNodePtr& g, const std::string& u, const std::string& i) {
    if (!g->group) return;
    for (const CNodePtr& c : g->ch) {
        const std::string cu = voltageSymbol(*c), ci = currentSymbol(*c);
        const std::string z = s_.isAc ? zSym(*c) : resistanceSymbol(*c);
        if (g->k == "P" && g == block_ && !s_.closed) {
            // The branches of the circuit's one parallel hang on the source itself.
            if (aux_) add(ci, "U/" + z, "Gren " + c->name + " – strøm og effekt", "5–10", c);
            add(ci, "U/" + z, sameVoltageTitle(c->name, sourceVoltage(), z), "5–9", c);
            add(cu, u, "Parallel: spændingen er den samme over " + nodeWords(*c), "4", c, true);
            down(c, u, ci);
        } else if (g->k == "P") {
            // A mixed sheet says it once per branch; elsewhere the tables show it.
            if (s_.shape == "mixed" && !s_.closed)
                add(cu, u, "Parallel: spændingen er den samme over alle grene", "4", c);
            add(ci, u + "/" + z, currentTitle(*c), s_.isAc ? "12" : "2", c);
            if (s_.shape == "mixed" && !s_.closed) split(c, ci, z);
            add(cu, u, "Parallel: spændingen er den samme over " + nodeWords(*c), "4", c, true);
            if (g->ch.size() == 1)
                add(ci, i, "Strømmen gennem " + nodeWords(*c) + " er hele strømmen gennem " + nodeWords(*g), "4",
                    c, true);
            down(c, u, ci);
        } else {
            // The voltage over the one parallel is the source's: no step of its own.
            add(cu, i + "*" + z, voltageTitle(*c), s_.isAc ? "12" : "2", c, c == block_ && !s_.closed);
            add(ci, i, "Serie: strømmen er den samme gennem " + nodeWords(*c), "3", c, true);
            // Alone in its series, a part takes the series' whole voltage.
            if (g->ch.size() == 1)
                add(cu, u, "Spændingen over " + nodeWords(*c) + " er hele spændingen over " + nodeWords(*g), "3",
                    c, true);
            down(c, cu, i);
        }
    }
}

void StepGenerator::split(const CNodePtr& c, const std::string& i, const std::string& z) {
    if (!ohmic(c) || !reactive(c)) return;
    const std::string x = "X_" + c->name;
    const std::string title = "Strømmene er faseforskudt – del dem i en aktiv del (i fase med U) og en "
                              "reaktiv del (90° forskudt)";
    add("Iw_" + c->name, i + "*" + rPart(*c) + "/" + z, title, "26 (komposanter)", c);
    add("Ib_" + c->name, i + "*" + (capacitive(*c) ? "abs(" + x + ")" : x) + "/" + z, title,
        "26 (komposanter)", c);
}

std::string StepGenerator::complexForms(const CNode& g) {
    std::string out = "<p class=\"hint0\">Som komplekst tal: z = R + iX = z∠φ</p>";
    for (const CNodePtr& c : g.ch) {
        std::string tag;
        if (c->group)
            tag = "fra udregningen ovenfor";
        else if (hasOwnR(*c))
            tag = "spole med tab: z∠φ";
        else if (c->k == "R")
            tag = "modstand: vinkel 0°";
        else if (c->k == "C")
            tag = "kondensator: vinkel −90°";
        else
            tag = "spole: vinkel 90°";
        out += "<p>" + c->name + " – " + tag + "</p>";
    }
    return out;
}

std::string StepGenerator::currentTitle(const CNode& c) const {
    if (!s_.isAc) return "Ohms lov for " + nodeWords(c);
    if (s_.shape == "mixed") return "Strømmen i hver gren – Ohms lov med impedans";
    return "Strømmen i " + nodeWords(c) + " – Ohms lov med impedans";
}

std::string StepGenerator::voltageTitle(const CNode& c) const {
    if (!s_.isAc) return "Ohms lov for " + nodeWords(c);
    if (c.group) return "Spænding over " + nodeWords(c) + " (U = I · Z)";
    if (c.k == "R") return "Spænding over " + c.name + " (Ohms lov)";
    if (hasOwnR(c)) return "Spænding over spolen " + c.name + " (U = I · Z, fordi spolen har tab)";
    return "Spænding over " + c.name + " (U = I · X)";
}

void StepGenerator::refs(const CNodePtr& g, const std::string& u, const std::string& i,
          std::vector<std::tuple<CNodePtr, std::string, std::string>>& out) {
    for (const CNodePtr& c : g->ch) {
        const std::string cu = g->k == "P" ? u : voltageSymbol(*c);
        const std::string ci = g->k == "P" ? currentSymbol(*c) : i;
        out.push_back({c, cu, ci});
        if (c->group) refs(c, cu, ci, out);
    }
}

void StepGenerator::powers(const CNodePtr& root) {
    std::vector<std::tuple<CNodePtr, std::string, std::string>> nodes;
    refs(root, "U", "I", nodes);
    std::vector<std::string> leafPowers;
    for (const auto& [c, u, i] : nodes) {
        const std::string p = powerSymbol(*c);
        if (!s_.isAc) {
            const std::string r = resistanceSymbol(*c);
            add(p, u + "*" + i, "Effektloven for " + nodeWords(*c), "2", c, c->group);
            add(p, i + "**2*" + r, "Effekt ud fra strøm og modstand for " + nodeWords(*c) + " (P = I²·R)", "2", c,
                true);
            add(p, u + "**2/" + r, "Effekt ud fra spænding og modstand for " + nodeWords(*c) + " (P = U²/R)", "2",
                c, true);
            if (!c->group) leafPowers.push_back(p);
        } else if (!c->group && !rPart(*c).empty() && !(isBranch(c) && !s_.closed)) {
            // Only the ohmic part takes active power: P = I²·R.
            const bool own = c->k == "L";
            add(p, i + "**2*" + rPart(*c),
                own ? "Effekt (tab i spolens egen modstand) i " + c->name + " (P = I² · R)"
                    : "Effekt i " + c->name + " (P = I² · R)",
                "13", c);
        }
    }
    if (!s_.isAc) {
        add("P_tot", join(leafPowers, "+"), "Effekterne lægges sammen (" + join(names(nodes), ", ") + ")", "2",
            root);
        add("P_tot", "U*I", "Effektloven for hele kredsen", "2", root, true);
        add("P_tot", "I**2*R_tot", "Effekt ud fra strøm og modstand for hele kredsen (P = I²·R)", "2", root, true);
        add("P_tot", "U**2/R_tot", "Effekt ud fra spænding og modstand for hele kredsen (P = U²/R)", "2", root,
            true);
        return;
    }
    if (block_ && !s_.closed) branchPowers(root);
    add("P", "U*I*cosphi", "Aktiv effekt", "13", root);
    add("Q", "U*I*sin(phi)", "Reaktiv effekt", "13", root);
    add("S", "U*I", "Tilsyneladende effekt", "13", root);
    add("P", "I**2*R_tot", "Aktiv effekt ud fra strøm og modstand (P = I² · R)", "13", root, true);
}

std::vector<std::string> StepGenerator::names(const std::vector<std::tuple<CNodePtr, std::string, std::string>>& nodes) {
    std::vector<std::string> out;
    for (const auto& entry : nodes)
        if (!std::get<0>(entry)->group) out.push_back(std::get<0>(entry)->name);
    return out;
}

void StepGenerator::kirchhoff(const CNodePtr& root) {
    std::vector<std::tuple<CNodePtr, std::string, std::string>> nodes{{root, "U", "I"}};
    refs(root, "U", "I", nodes);
    for (const auto& [g, u, i] : nodes) {
        if (!g->group || g->ch.size() < 2) continue;
        std::vector<std::string> parts;
        for (const CNodePtr& c : g->ch)
            parts.push_back(g->k == "S" ? voltageSymbol(*c) : currentSymbol(*c));
        if (g->k == "S")
            add(u, join(parts, "+"), "Kirchhoffs 2. lov (" + childNames(*g) + "): spændingerne lægges sammen", "3",
                g);
        else
            add(i, join(parts, "+"), "Kirchhoffs 1. lov (" + childNames(*g) + "): strømmene lægges sammen", "4", g);
    }
}

} // namespace stepgen

std::string stepUnit(const std::string& symbol, const CNodePtr& root) {
    if (symbol.rfind("G_", 0) == 0 || symbol.rfind("B_", 0) == 0) return "S";
    return unitOf(symbol, root);
}

std::vector<StepEquation> equationsFor(const StepScope& scope, const Values* known, const Values* preview) {
    return stepgen::StepGenerator(scope, known, preview).run();
}

std::vector<CircuitStep> stepsFor(const StepScope& scope, Values& values) {
    // The final sheet words some steps by the solved circuit (which side a
    // branch is on); the closed pass has no such circuit yet.
    Values preview;
    if (!scope.closed && scope.isAc) {
        try {
            preview = forward(scope.root, values, true);
        } catch (const std::runtime_error&) {
            preview.clear();
        }
    }
    // A voltage that the closed pass found from the given current is worked
    // out on the sheet, not taken as given.
    if (!scope.closed && scope.isAc && !scope.given.count("U") && scope.given.count("I") &&
        values.count("U")) {
        const double i = lookup(preview, "I");
        if (std::isfinite(i)) {
            values.erase("U");
            values["I"] = i;
        }
    }
    if (!scope.closed && scope.isAc && scope.shape == "par" && !values.count("U") && values.count("I"))
        values["U_h"] = kAuxVoltage;
    const Values known = values;
    std::vector<StepEquation> all = equationsFor(scope, &known, &preview);
    std::vector<ChainEquation> list;
    std::vector<StepEquation> kept;
    for (StepEquation& e : all) {
        if (e.closedOnly && !scope.closed) continue;
        if (e.sheetOnly && scope.closed) continue;
        list.push_back(e.eq);
        kept.push_back(std::move(e));
    }
    ChainSetup setup;
    const CNodePtr root = scope.root;
    setup.unitOf = [root](const std::string& s) { return stepUnit(s, root); };
    setup.shown = scope.shown;
    // A group's reactance carries the sign of its side.
    setup.allowNegative = [](const std::string& s) { return s.rfind("X_", 0) == 0; };
    setup.skipFailed = true;
    const ChainResult chain = solveChain(list, values, setup);

    std::vector<CircuitStep> steps;
    for (size_t b = 0; b < chain.blocks.size(); ++b) {
        const StepBlock& block = chain.blocks[b];
        const size_t eq = chain.solvedBy[b];
        CircuitStep st;
        st.target = block.solves;
        st.formula = chain.equations[eq].formula;
        st.title = block.title;
        st.pages = block.page;
        const StepEquation& from = kept[eq];
        st.html = from.lead + (from.leadAt ? from.leadAt(values) : std::string()) + block.html +
                  (from.after ? from.after(values) : std::string());
        st.node = from.node;
        std::stringstream uses(block.uses);
        for (std::string u; std::getline(uses, u, ',');)
            if (!u.empty()) st.uses.push_back(u);
        steps.push_back(std::move(st));
    }
    return steps;
}

} // namespace fl
