// The step generators. Each writes equations "target = formula" in the order
// a student would use them; the chain picks, round by round, the first one
// that has exactly one unknown, so an equation listed late (a sum, a second
// form of the power law) is used only when nothing before it can go on, and
// otherwise stays fully known and serves as a check.
#include "fl/circuit/steps.h"

#include "fl/expr/symbols.h"

#include <sstream>

namespace fl {

namespace {

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

class Generator {
  public:
    explicit Generator(const StepScope& scope) : s_(scope) {}

    std::vector<StepEquation> run() {
        const CNodePtr& root = s_.root;
        if (!root || root->ch.empty()) return out_;
        if (s_.isAc) reactances(root);
        if (!s_.isAc)
            dcGroups(root);
        else if (s_.shape == "series")
            acSeriesTotals(root);
        else
            acGroups(root);
        whole(root);
        down(root, "U", "I");
        powers(root);
        if (!s_.isAc) kirchhoff(root);
        for (const auto& [follower, leader] : s_.links)
            add(follower, leader, symbolDisplay(follower) + " har samme værdi som " + symbolDisplay(leader) +
                                      " (opgivet i opgaven)",
                "3", nullptr);
        return out_;
    }

  private:
    void add(const std::string& target, const std::string& formula, const std::string& title,
             const std::string& pages, const CNodePtr& node, bool closedOnly = false) {
        if (target == formula) return;
        out_.push_back({{target, formula, title, pages, {}}, node, closedOnly, {}});
    }

    void postOrder(const CNodePtr& n, const std::function<void(const CNodePtr&)>& fn) {
        for (const CNodePtr& c : n->ch)
            postOrder(c, fn);
        fn(n);
    }

    // X = 2πfL, X = 1/(2πfC), and a lossy coil's z = √(R² + X²).
    void reactances(const CNodePtr& root) {
        walk(root, [&](const CNodePtr& n) {
            if (n->group) return;
            if (n->k == "L") {
                add("X_" + n->name, "2*PI*f*" + n->name, "Spolens induktive reaktans (" + n->name + ")", "11", n);
                if (hasOwnR(*n))
                    add("Z_" + n->name, "sqrt(R_" + n->name + "**2+X_" + n->name + "**2)",
                        "Spolens impedans – spolen har både ohmsk modstand og reaktans (" + n->name + ")", "18", n);
            } else if (n->k == "C") {
                add("X_" + n->name, "1/(2*PI*f*" + n->name + ")",
                    "Kondensatorens kapacitive reaktans (" + n->name + ")", "15", n);
            }
        });
    }

    // Series: R = R₁ + R₂ + …; parallel: R = 1/(1/R₁ + 1/R₂ + …).
    void dcGroups(const CNodePtr& root) {
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

    // A series of components only: the ohmic parts, the coils' and the
    // capacitors' reactances each summed, then Z = √(R² + (X_L − X_C)²).
    void acSeriesTotals(const CNodePtr& root) {
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

    // Groups by complex numbers, written as real and imaginary parts: a
    // series adds both parts; a parallel adds the parts of 1/z and turns the
    // sum back: 1/z = (R − iX)/z², so z = (G − iB)/(G² + B²) with G, B the sums.
    void acGroups(const CNodePtr& root) {
        postOrder(root, [&](const CNodePtr& g) {
            if (!g->group || g->ch.empty()) return;
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
                add(R, signedSum(rs), title, "3, 18, 20", g);
                add(X, signedSum(xs), title, "3, 18, 20", g);
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
                const std::string title = "Parallel (" + names + "): z = (1/z₁ + 1/z₂ + …)⁻¹ med komplekse tal";
                add(G, signedSum(gs), title + " – de reelle dele af 1/z lægges sammen", "10–11", g);
                // In a mixed circuit the group's result goes on in series with the rest.
                if (s_.shape == "mixed")
                    out_.back().lead =
                        "<p class=\"hint0\">Grenstrømmene er faseforskudt, så impedanserne lægges sammen som komplekse "
                        "tal: hver gren skrives som z∠φ, man tager 1/z, lægger sammen og vender tilbage. Resultatet "
                        "skrives som R + iX, så det kan lægges i serie med resten.</p>";
                add(B, signedSum(bs), title + " – de imaginære dele af 1/z lægges sammen", "10–11", g);
                add(R, G + "/(" + G + "**2+" + B + "**2)", title + " – vendt tilbage: den ohmske del", "10–11", g);
                add(X, "-" + B + "/(" + G + "**2+" + B + "**2)", title + " – vendt tilbage: den reaktive del",
                    "10–11", g);
            }
            if (!isRootNode(*g))
                add(Z, "sqrt(" + R + "**2+" + X + "**2)", "Impedans af " + nodeWords(*g) + ": z = √(R² + X²)", "12",
                    g);
        });
        add("Z", "sqrt(R_tot**2+X_tot**2)", "Impedans for hele kredsen: Z = √(R² + X²)", "12", root);
    }

    // The whole circuit: Ohm's law, and in ac the power factor and the angle.
    void whole(const CNodePtr& root) {
        if (!s_.isAc) {
            add("I", "U/R_tot", "Ohms lov for hele kredsen", "2", root);
            return;
        }
        const std::string triangle = "Effektfaktor og faseforskydning – modstandstrekanten";
        add("cosphi", "R_tot/Z", s_.shape == "series" ? "Effektfaktor: cos φ = R / Z" : triangle, "12", root);
        add("phi", "acos(cosphi)", s_.shape == "mixed" ? triangle : "Faseforskydningsvinkel", "8", root);
        add("I", "U/Z", "Strømmen – Ohms lov med impedans", "12", root);
    }

    // Down the tree: a series shares its current, a parallel its voltage;
    // `u` and `i` are the symbols the group's voltage and current go by.
    void down(const CNodePtr& g, const std::string& u, const std::string& i) {
        if (!g->group) return;
        for (const CNodePtr& c : g->ch) {
            const std::string cu = voltageSymbol(*c), ci = currentSymbol(*c);
            const std::string z = s_.isAc ? zSym(*c) : resistanceSymbol(*c);
            if (g->k == "P") {
                add(ci, u + "/" + z, currentTitle(*c), s_.isAc ? "12" : "2", c);
                add(cu, u, "Parallel: spændingen er den samme over " + nodeWords(*c), "4", c, true);
                if (g->ch.size() == 1)
                    add(ci, i, "Strømmen gennem " + nodeWords(*c) + " er hele strømmen gennem " + nodeWords(*g), "4",
                        c, true);
                down(c, u, ci);
            } else {
                add(cu, i + "*" + z, voltageTitle(*c), s_.isAc ? "12" : "2", c);
                add(ci, i, "Serie: strømmen er den samme gennem " + nodeWords(*c), "3", c, true);
                // Alone in its series, a part takes the series' whole voltage.
                if (g->ch.size() == 1)
                    add(cu, u, "Spændingen over " + nodeWords(*c) + " er hele spændingen over " + nodeWords(*g), "3",
                        c, true);
                down(c, cu, i);
            }
        }
    }

    std::string currentTitle(const CNode& c) const {
        if (!s_.isAc) return "Ohms lov for " + nodeWords(c);
        return "Strømmen i " + nodeWords(c) + " – Ohms lov med impedans";
    }

    std::string voltageTitle(const CNode& c) const {
        if (!s_.isAc) return "Ohms lov for " + nodeWords(c);
        if (c.group) return "Spænding over " + nodeWords(c) + " (U = I · Z)";
        if (c.k == "R") return "Spænding over " + c.name + " (Ohms lov)";
        if (hasOwnR(c)) return "Spænding over spolen " + c.name + " (U = I · Z, fordi spolen har tab)";
        return "Spænding over " + c.name + " (U = I · X)";
    }

    // The symbol a node's current and voltage go by where its own isn't
    // written: a series member's current is its group's.
    void refs(const CNodePtr& g, const std::string& u, const std::string& i,
              std::vector<std::tuple<CNodePtr, std::string, std::string>>& out) {
        for (const CNodePtr& c : g->ch) {
            const std::string cu = g->k == "P" ? u : voltageSymbol(*c);
            const std::string ci = g->k == "P" ? currentSymbol(*c) : i;
            out.push_back({c, cu, ci});
            if (c->group) refs(c, cu, ci, out);
        }
    }

    void powers(const CNodePtr& root) {
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
            } else if (!c->group && !rPart(*c).empty()) {
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
        add("P", "U*I*cosphi", "Aktiv effekt", "13", root);
        add("Q", "U*I*sin(phi)", "Reaktiv effekt", "13", root);
        add("S", "U*I", "Tilsyneladende effekt", "13", root);
        add("P", "I**2*R_tot", "Aktiv effekt ud fra strøm og modstand (P = I² · R)", "13", root, true);
    }

    static std::vector<std::string> names(const std::vector<std::tuple<CNodePtr, std::string, std::string>>& nodes) {
        std::vector<std::string> out;
        for (const auto& entry : nodes)
            if (!std::get<0>(entry)->group) out.push_back(std::get<0>(entry)->name);
        return out;
    }

    // Kirchhoff's laws: a series' voltages add up to its own, a parallel's
    // currents to its own. Used when a total is sought; otherwise checks.
    void kirchhoff(const CNodePtr& root) {
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

    const StepScope& s_;
    std::vector<StepEquation> out_;
};

} // namespace

std::string stepUnit(const std::string& symbol, const CNodePtr& root) {
    if (symbol.rfind("G_", 0) == 0 || symbol.rfind("B_", 0) == 0) return "S";
    return unitOf(symbol, root);
}

std::vector<StepEquation> equationsFor(const StepScope& scope) {
    return Generator(scope).run();
}

std::vector<CircuitStep> stepsFor(const StepScope& scope, Values& values) {
    std::vector<StepEquation> all = equationsFor(scope);
    std::vector<ChainEquation> list;
    std::vector<CNodePtr> nodes;
    std::vector<std::string> leads;
    for (StepEquation& e : all) {
        if (e.closedOnly && !scope.closed) continue;
        list.push_back(std::move(e.eq));
        nodes.push_back(e.node);
        leads.push_back(std::move(e.lead));
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
        st.html = leads[eq] + block.html;
        st.node = nodes[eq];
        std::stringstream uses(block.uses);
        for (std::string u; std::getline(uses, u, ',');)
            if (!u.empty()) st.uses.push_back(u);
        steps.push_back(std::move(st));
    }
    return steps;
}

} // namespace fl
