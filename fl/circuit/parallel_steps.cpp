// The branch-by-branch routes of an ac parallel: the branch currents at the
// source voltage with the current triangle, the auxiliary voltage when only
// the current is given, and each branch's power with the sums by kind. The
// shared routes and the choice between these live in steps.cpp.
#include "fl/circuit/step_generator.h"

#include "fl/circuit/sheet.h"
#include "fl/expr/symbols.h"

#include <cmath>

namespace fl::stepgen {

std::string StepGenerator::angleTitle(const CNode& n) const {
    return "Impedans og vinkel i " + n.name + " med både R og X: z = √(R² + X²) og cos φ = R / z";
}

std::string StepGenerator::currentSum(const std::vector<std::string>& parts, const std::string& symbol,
                                      const std::string& title) {
    if (parts.size() == 1) return parts.front();
    add(symbol, join(parts, "+"), title, "5", block_);
    return symbol;
}

void StepGenerator::branchCurrents(const CNodePtr& root) {
    std::vector<std::string> ir, il, ic;
    bool angled = false;
    for (const CNodePtr& b : block_->ch) {
        const std::string I = currentSymbol(*b);
        add(I, "U/" + zSym(*b), sameVoltageTitle(b->name, sourceVoltage(), zSym(*b)), "5–9", b);
        const bool cap = capacitive(*b);
        if (ohmic(b) && reactive(b)) {
            angled = true;
            const std::string phi = "phi_" + b->name, w = "Iw_" + b->name, r = "Ib_" + b->name;
            // tan φ = X / R
            // A capacitive branch's X was summed as a positive number.
            add(phi, "atan(X_" + b->name + "/" + rPart(*b) + ")",
                cap ? "Vinklen i " + b->name +
                          ": z = R − iX = z∠−φ, så tan φ = X / R – grenen er kapacitiv, så strømmen er φ "
                          "før U"
                    : "Vinklen i " + b->name + ": z = R + iX = z∠φ, så tan φ = X / R",
                "6, 10", b);
            const std::string shifted = "Strømmen i " + b->name + " er forskudt φ";
            add(w, I + "*cos(" + phi + ")", shifted + " – den aktive del (i fase med U)", "26 (komposanter)",
                b);
            add(r, I + "*sin(" + phi + ")", shifted + " – den reaktive del (90° forskudt)",
                "26 (komposanter)", b);
            ir.push_back(w);
            (cap ? ic : il).push_back(r);
        } else if (ohmic(b)) {
            ir.push_back(I);
        } else {
            (cap ? ic : il).push_back(I);
        }
    }
    // With a branch at an angle the sum is the circuit's active current.
    const std::string IR = currentSum(ir, angled ? "Iw" : "I_R", "Strømmene i modstandene lægges sammen");
    std::string reactive;
    if (!il.empty()) {
        const std::string IL = currentSum(il, "I_L", "Strømmene i spolerne lægges sammen");
        reactive = IL;
    }
    if (!ic.empty()) {
        const std::string IC = currentSum(ic, "I_C", "Strømmene i kondensatorerne lægges sammen");
        reactive = reactive.empty() ? IC : "(" + reactive + "-" + IC + ")";
    }
    add("I", reactive.empty() ? IR : "sqrt(" + IR + "**2+" + reactive + "**2)",
        angled ? "Den samlede strøm – strømtrekanten: I = I<sub>R</sub>∠0° + I<sub>L</sub>∠−φ<sub>L</sub> + "
                 "I<sub>C</sub>∠90°"
               : "Den samlede strøm – strømtrekanten: I² = I<sub>R</sub>² + (I<sub>L</sub> − "
                 "I<sub>C</sub>)²",
        "5, 7, 8", root);
    add("cosphi", IR + "/I",
        angled ? "Effektfaktor: cos φ = den aktive strøm / I" : "Effektfaktor: cos φ = I<sub>R</sub> / I",
        "8", root);
    add("phi", "acos(cosphi)", "Faseforskydningsvinkel", "8", root);
    add("Z", "U/I", "Samlet impedans: I = U / z", "12", root);
    // Only the current in phase with U carries active power; the branch
    // sum and U · I · cos φ come after it as checks.
    add("P", "U*" + IR,
        angled ? "Aktiv effekt ud fra den aktive strøm (P = U · I<sub>v</sub>)"
               : "Aktiv effekt – kun modstandene bruger aktiv effekt (P = U · I<sub>R</sub>)",
        "13", root);
}

void StepGenerator::auxiliary(const CNodePtr& root) {
    std::vector<std::pair<int, std::string>> active, reactiveParts;
    for (const CNodePtr& b : block_->ch) {
        const std::string z = zSym(*b), ih = "Ih_" + b->name, cosphi = "cosphi_" + b->name;
        const bool both = ohmic(b) && reactive(b), cap = capacitive(*b);
        if (both) add(cosphi, rPart(*b) + "/" + z, angleTitle(*b), "12, 18", b);
        add(ih, "U_h/" + z, sameVoltageTitle(b->name, tool::formatValue(kAuxVoltage, "V"), z), "5–9", b);
        const int side = cap ? -1 : 1; // coils lag, capacitors lead
        if (both) {
            active.push_back({1, ih + "*" + cosphi});
            reactiveParts.push_back({side, ih + "*sqrt(1-" + cosphi + "**2)"});
        } else if (ohmic(b)) {
            active.push_back({1, ih});
        } else {
            reactiveParts.push_back({side, ih});
        }
    }
    const std::string parts =
        "Strømmene er faseforskudt – del dem i en aktiv del (i fase med U) og en reaktiv "
        "del (90° forskudt)";
    add("Iw_h", signedSum(active), parts, "26 (komposanter)", block_);
    add("Ib_h", signedSum(reactiveParts), parts, "26 (komposanter)", block_);
    out_.back().after = [](const Values& v) {
        return lookup(v, "Ib_h") < 0.0
                   ? std::string("<p class=\"hint0\">Minus betyder, at kredsen er kapacitiv. "
                                 "Videre regnes med talværdien.</p>")
                   : std::string();
    };
    add("I_h", "sqrt(Iw_h**2+Ib_h**2)",
        "Den samlede strøm – strømtrekanten: I² = I<sub>R</sub>² + (I<sub>L</sub> − I<sub>C</sub>)²",
        "5, 7, 8", root);
    add("Z", "U_h/I_h", "Find U – først kredsens impedans Z med en hjælpespænding", "12", root);
    out_.back().lead = "<p class=\"hint0\">Kredsens impedans er den samme ved alle spændinger:</p>";
    add("U", "I*Z", "Spændingen: U = I · Z", "12", root);
    out_.back().lead = "<p class=\"hint0\">Nu kendes Z, og den opgivne strøm giver spændingen:</p>";
    add("cosphi", "Iw_h/I_h", "Effektfaktor: cos φ = den aktive strøm / I", "8", root);
    add("phi", "acos(cosphi)", "Faseforskydningsvinkel", "8", root);
}

std::string StepGenerator::sourceVoltage() const {
    const double u = knownAtStart("U") ? known_->at("U") : seen("U");
    return std::isfinite(u) ? tool::formatValue(u, "V") : symbolDisplay("U");
}

void StepGenerator::branchPowers(const CNodePtr& root) {
    static const std::string kCapacitive = "<p class=\"hint0\">Grenen er kapacitiv. Q står som et "
                                           "positivt tal, men trækkes fra de induktive grenes "
                                           "Q, når grenene lægges sammen.</p>";
    std::vector<std::string> ps, qInd, qCap;
    for (const CNodePtr& b : block_->ch) {
        const std::string I = currentSymbol(*b), P = powerSymbol(*b), Q = "Q_" + b->name, S = "S_" + b->name;
        const std::string title =
            "Effekt og effektfaktor i " + b->name + " (P = U · I · cos φ, Q = U · I · sin φ, S = U · I)";
        const bool cap = capacitive(*b);
        const bool r = ohmic(b), x = reactive(b);
        if (r && !x) {
            sheet(P, "U*" + I, title, "12–13", b,
                  "<p class=\"hint0\">En modstand: strømmen er i fase med U, så φ = 0° og cos φ = 1 – al "
                  "effekten er "
                  "aktiv (varme).</p>");
            ps.push_back(P);
        } else if (x && !r) {
            sheet(Q, "U*" + I, title, "12–13", b,
                  cap ? "<p class=\"hint0\">En kondensator: strømmen er 90° før U (kapacitiv), så φ = "
                        "90° og cos φ = 0 "
                        "– ingen aktiv effekt, kun reaktiv.</p>" +
                            kCapacitive
                      : "<p class=\"hint0\">En ideel spole: strømmen er 90° efter U (induktiv), så φ = "
                        "90° og cos φ = "
                        "0 – spolen bruger ingen aktiv effekt, kun reaktiv.</p>");
            (cap ? qCap : qInd).push_back(Q);
        } else if (x && r) {
            // cos φ = R / z in the branch's own triangle.
            const bool coil = !b->group;
            const std::string cosphi = "cosphi_" + b->name, phi = "phi_" + b->name;
            const std::string why =
                std::string("<p class=\"hint0\">") +
                (coil ? "Spolen har egen (ohmsk) modstand" : "Grenen har både ohmsk modstand og reaktans") +
                ", så strømmen er forskudt φ " + (cap ? "før U (kapacitiv)" : "efter U (induktiv)") +
                ". cos φ findes i modstandstrekanten for grenen:</p>";
            // The sentence goes with the first of the two that is still to
            // be found: at an auxiliary voltage cos φ came with the branch's impedance.
            sheet(cosphi, rPart(*b) + "/" + zSym(*b), title, "12–13", b, aux_ ? std::string() : why);
            sheet(phi, "acos(" + cosphi + ")", title, "12–13", b, aux_ ? why : std::string());
            sheet(P, "U*" + I + "*" + cosphi, title, "12–13", b,
                  std::string("<p class=\"hint0\">Effekten bliver til varme i ") +
                      (coil ? "spolens egen modstand" : "grenens modstande") +
                      " – P = I² · R giver det samme:</p>");
            sheet(Q, "U*" + I + "*sin(" + phi + ")", title, "12–13", b, cap ? kCapacitive : std::string());
            sheet(S, "U*" + I, title, "12–13", b);
            ps.push_back(P);
            (cap ? qCap : qInd).push_back(Q);
        }
    }
    const std::string totals =
        "<p class=\"hint0\">Den aktive effekt lægges sammen gren for gren. Den reaktive effekt også, men "
        "de "
        "kapacitive grenes Q trækkes fra de induktive (Q = Q<sub>L</sub> − Q<sub>C</sub>):</p>";
    if (!ps.empty()) sheet("P", join(ps, "+"), "Aktiv effekt", "13", root, totals);
    if (qInd.empty() && qCap.empty()) return;
    // Q = Q_L − Q_C; when the capacitive side is larger the sum is turned
    // round, so Q stands as a positive number like φ.
    std::vector<std::pair<int, std::string>> straight, turned;
    for (const std::string& q : qInd)
        straight.push_back({1, q});
    for (const std::string& q : qCap) {
        straight.push_back({-1, q});
        turned.push_back({1, q});
    }
    for (const std::string& q : qInd)
        turned.push_back({-1, q});
    const bool negative = seen("X_tot") < 0.0 && !qCap.empty();
    StepEquation& q = sheet("Q", signedSum(negative ? turned : straight), "Reaktiv effekt", "13", root,
                            ps.empty() || currents_ ? totals : std::string());
    if (!negative) return;
    const std::string sum = signedSum(straight);
    const CNodePtr r = s_.root;
    q.leadAt = [sum, straight, r](const Values& v) {
        double value = 0;
        std::string terms;
        for (const auto& [sign, sym] : straight) {
            value += sign * lookup(v, sym);
            terms +=
                (terms.empty() ? (sign < 0 ? "−" : "") : (sign < 0 ? " − " : " + ")) + symbolDisplay(sym);
        }
        if (!std::isfinite(value)) return std::string();
        return "<p>" + symbolDisplay("Q") + " = " + terms + " = " + tool::formatValue(value, "VAr") +
               "</p><p class=\"hint0\">Resultatet er minus, fordi den kapacitive effekt er størst – "
               "kredsen er "
               "kapacitiv. Så vendes regnestykket om (Q = Q<sub>C</sub> − Q<sub>L</sub>), og " +
               symbolDisplay("Q") + " = <b>" + tool::formatValue(-value, "VAr") + "</b> (kapacitiv).</p>";
    };
}

} // namespace fl::stepgen
