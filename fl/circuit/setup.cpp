// Reading a circuit for a solve: the source fields, every node's typed
// values, the links "=R1", the range of cos φ and the component values that
// no trade would use. Each check answers in the student's words and stops
// the solve before anything is calculated.
#include "fl/circuit/setup.h"

#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"

#include <charconv>
#include <cmath>

namespace fl {

namespace {

constexpr double kDeg = 0.017453292519943295; // π/180

std::string joinWith(const std::vector<std::string>& parts, const std::string& sep) {
    std::string s;
    for (size_t i = 0; i < parts.size(); ++i)
        s += (i ? sep : "") + parts[i];
    return s;
}

// "a, b eller c"
std::string joinOr(const std::vector<std::string>& parts) {
    std::string s;
    for (size_t i = 0; i < parts.size(); ++i)
        s += (i == 0 ? "" : i + 1 == parts.size() ? " eller " : ", ") + parts[i];
    return s;
}

std::string givenLine(const std::string& symbol, double value, const std::string& words,
                      const CNodePtr& root) {
    return "<div>" + symbolDisplay(symbol) + " = " + fmtWithUnit(value, unitOf(symbol, root)) +
           " <span class=\"crumb\">– " + words + "</span></div>";
}

// The "%.4g" text of a value, whatever the C locale says.
std::string g4(double v) {
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 4);
    return std::string(buf, res.ptr);
}

std::string chip(const std::string& target, const std::string& label) {
    return "<a class=\"chip big\" href=\"fix:" + target + "\">" + label + "</a>";
}

// What the trade uses, and the prefix that was most likely forgotten.
struct Limit {
    const char* kind;
    double above;
    const char* unit;
    const char* prefix;
    const char* shown;
    const char* usual;
};
const Limit kLimits[] = {
    {"C", 0.01, "F", "u", "µF", "kondensatorer er normalt på nogle µF (mikrofarad)"},
    {"L", 20.0, "H", "m", "mH", "spoler er normalt højst nogle få henry"},
};

// The field's name, which also opens the message on a cos φ out of range.
constexpr const char* kCosWords = "effektfaktor";

struct SourceField {
    const char* key;
    const char* symbol;
    const char* words;
};

const std::vector<SourceField>& sourceFields(bool isAc) {
    // Direct current reads the frequency too, only to refuse an unreadable
    // one: nothing else of it is used.
    static const std::vector<SourceField> dc = {{"U", "U", "kildespænding"},
                                                {"f", "f", "frekvens"},
                                                {"I", "I", "samlet strøm"},
                                                {"P", "P_tot", "samlet effekt"},
                                                {"R", "R_tot", "samlet modstand"}};
    static const std::vector<SourceField> ac = {
        {"U", "U", "kildespænding"},     {"f", "f", "frekvens"},
        {"I", "I", "samlet strøm"},      {"P", "P", "aktiv effekt"},
        {"cos", "cosphi", kCosWords},    {"Z", "Z", "samlet impedans"}};
    return isAc ? ac : dc;
}

} // namespace

bool scalesWithVoltage(const std::string& symbol) {
    const std::string q = symbol.substr(0, symbol.find('_'));
    return q == "U" || q == "I" || q == "P" || q == "Q" || q == "S" || q == "Iw" || q == "Ib" || q == "Ih";
}

Setup readSetup(const Circuit& c, const MeterInfo* meters) {
    Setup su;
    const bool isAc = c.mode == "ac";
    const CNodePtr& root = c.root;
    std::vector<std::string> bad;
    std::vector<std::string> negative;                         // "<b>R1 = −5 Ω</b> … "
    std::vector<std::pair<std::string, std::string>> linkList; // follower → leader, as typed

    // No part has a negative R, L or C; with one the sheet would give P = −20 W
    // beside P_R1 = 20 W and cos φ = −1.
    auto refuseNegative = [&](const std::string& symbol, double v, const char* what) {
        if (v < 0.0)
            negative.push_back("<b>" + symbolDisplay(symbol) + " = " + fmtWithUnit(v, unitOf(symbol, root)) +
                               "</b> kan ikke bruges – " + what + " kan ikke være negativ.");
    };

    auto addTarget = [&](const std::string& symbol, double value, const std::string& label) {
        su.values[symbol] = value;
        su.targets.push_back({symbol, value, label});
        su.givenSymbols.insert(symbol);
    };

    // The source and the whole circuit.
    for (const SourceField& f : sourceFields(isAc)) {
        auto it = c.src.find(f.key);
        const std::string text = it == c.src.end() ? std::string() : trimmed(it->second);
        if (text.empty()) continue;
        const double v = readValue(text);
        if (!std::isfinite(v)) {
            bad.push_back(f.words);
            continue;
        }
        const std::string sym = f.symbol;
        if (!isAc && sym == "f") continue;
        su.given.push_back({givenLine(sym, v, f.words, root), sym, v});
        if (sym == "U" || sym == "f") {
            su.values[sym] = v;
            su.givenSymbols.insert(sym);
        } else {
            addTarget(sym, v, f.words);
        }
    }
    su.hasU = su.values.count("U") > 0;
    su.hasI = su.values.count("I") > 0;
    su.hasP = su.values.count(isAc ? "P" : "P_tot") > 0;
    su.hasZ = su.values.count("Z") > 0;

    // Every node, in pre-order, with its parent.
    std::vector<std::pair<CNodePtr, CNodePtr>> order;
    {
        std::vector<std::pair<CNodePtr, CNodePtr>> stack{{root, nullptr}};
        while (!stack.empty()) {
            auto item = stack.back();
            stack.pop_back();
            order.push_back(item);
            for (auto it = item.first->ch.rbegin(); it != item.first->ch.rend(); ++it)
                stack.push_back({*it, item.first});
        }
    }
    const CNodePtr block = parallelBlock(root);
    for (const auto& [n, parent] : order) {
        if (n == root) continue;
        const std::string& name = n->name;
        const bool component = !n->group && (n->k == "R" || n->k == "L" || n->k == "C");
        if (component) {
            const std::string t = trimmed(n->v);
            const std::string link = valueLink(t);
            if (!link.empty()) {
                linkList.push_back({name, link});
            } else if (t.empty() || t == "?") {
                su.unknowns.push_back(name);
                su.emptyComponents.push_back(name);
            } else if (const double v = readValue(t); !std::isfinite(v)) {
                bad.push_back(name);
            } else {
                su.values[name] = v;
                su.givenSymbols.insert(name);
                refuseNegative(name, v,
                               n->k == "L"   ? "en spoles induktans"
                               : n->k == "C" ? "en kondensators kapacitet"
                                             : "en modstand");
                const bool meter = n->id == "A" || n->id == "V";
                const char* words = meter         ? "målerens indre modstand"
                                    : n->k == "L" ? "induktans"
                                    : n->k == "C" ? "kapacitet"
                                                  : "modstand";
                su.given.push_back({givenLine(name, v, words, root), name, v});
            }
            if (n->k == "L") {
                const std::string r = trimmed(n->r);
                const std::string own = "R_" + name;
                const std::string rLink = valueLink(r);
                if (r.empty()) {
                } else if (r == "?") {
                    su.unknowns.push_back(own);
                } else if (!rLink.empty()) {
                    linkList.push_back({own, rLink});
                } else if (const double v = readValue(r); !std::isfinite(v)) {
                    bad.push_back("egen modstand i " + name);
                } else {
                    su.values[own] = v;
                    su.givenSymbols.insert(own);
                    refuseNegative(own, v, "spolens egen modstand");
                    su.given.push_back({givenLine(own, v, "spolens egen modstand", root), own, v});
                }
            }
        }
        struct Field {
            const std::string* text;
            std::string symbol, words;
        };
        std::vector<Field> fields = {{&n->U, voltageSymbol(*n), "spænding over " + nodeWords(*n)},
                                     {&n->I, currentSymbol(*n), "strøm gennem " + nodeWords(*n)},
                                     {&n->P, powerSymbol(*n), "effekt i " + nodeWords(*n)}};
        if (n->group) fields.push_back({&n->R, nodeSymbol(*n, "R"), "modstand i " + nodeWords(*n)});
        for (Field& f : fields) {
            const std::string t = trimmed(*f.text);
            if (t.empty()) continue;
            const double v = readValue(t);
            if (!std::isfinite(v)) {
                bad.push_back(f.words);
                continue;
            }
            std::string words = f.words;
            if (f.symbol == voltageSymbol(*n) && parent && parent->k == "P" &&
                (parent == root || parent == block))
                words += " (= kildespændingen, fordi grenene er parallelle)";
            if (f.symbol == currentSymbol(*n) && parent && parent->k == "S")
                words += " (i serie er strømmen den samme overalt)";
            su.given.push_back({givenLine(f.symbol, v, words, root), f.symbol, v});
            addTarget(f.symbol, v, f.words);
        }
    }
    if (meters)
        for (const MeterInfo::Extra& e : meters->extraGiven) {
            const double v = readValue(e.value);
            if (!std::isfinite(v)) continue;
            su.given.push_back({givenLine(e.symbol, v, e.label, root), e.symbol, v});
            addTarget(e.symbol, v, e.label);
        }

    if (!bad.empty()) {
        su.error = "Jeg kan ikke læse: " + joinWith(bad, ", ") + ".";
        return su;
    }
    if (!negative.empty()) {
        su.error = joinWith(negative, " ") +
                   (negative.size() == 1 ? " Skriv værdien uden minus." : " Skriv værdierne uden minus.");
        return su;
    }

    // Links: to another component of the same kind, or from a coil's R field to a coil.
    const auto byName = collectByName(root);
    std::map<std::string, std::string> follow;
    for (const auto& [follower, leader] : linkList) {
        const bool own = follower.rfind("R_", 0) == 0;
        const std::string& leaderName = leader;
        const std::string followerName = own ? follower.substr(2) : follower;
        auto it = byName.find(leaderName);
        const bool ok = it != byName.end() && leaderName != followerName && it->second->id != "A" &&
                        it->second->id != "V" &&
                        it->second->k == (own ? std::string("L") : byName.at(followerName)->k);
        if (!ok) {
            su.error =
                "\"=\" skal pege på en anden komponent af samme slags (fx =R1 for en modstand, eller =L1 "
                "i spolens R-felt): " +
                leaderName;
            return su;
        }
        follow[follower] = own ? "R_" + leaderName : leaderName;
    }
    for (const auto& [follower, first] : follow) {
        std::string leader = first;
        for (size_t hops = 0; follow.count(leader); ++hops) {
            if (hops > follow.size()) {
                su.error =
                    "\"=\" skal pege på en anden komponent af samme slags (fx =R1 for en modstand, eller "
                    "=L1 i spolens R-felt): " +
                    (leader.rfind("R_", 0) == 0 ? leader.substr(2) : leader);
                return su;
            }
            leader = follow.at(leader);
        }
        const std::string shown = symbolDisplay(follower) + " = ";
        const std::string tail = " <span class=\"crumb\">– samme værdi (opgivet)</span></div>";
        if (su.values.count(leader)) {
            const double v = su.values[leader];
            su.values[follower] = v;
            su.given.push_back({"<div>" + shown + fmtWithUnit(v, unitOf(follower, root)) + tail, "", v});
        } else if (std::find(su.unknowns.begin(), su.unknowns.end(), leader) != su.unknowns.end()) {
            su.links[follower] = leader;
            su.given.push_back({"<div>" + shown + symbolDisplay(leader) + tail, "", 0.0});
        } else {
            // The own resistance of an ideal coil.
            su.values[follower] = 0.0;
            su.given.push_back({"<div>" + shown + fmtWithUnit(0.0, "Ω") + tail, "", 0.0});
        }
        su.givenSymbols.insert(follower);
    }

    if (isAc) {
        // Zero or below is no frequency of an alternating current: the
        // reactances would be zero, infinite or negative.
        const double f = lookup(su.values, "f");
        if (!(f > 0.0) || !std::isfinite(f)) {
            su.error = "Skriv frekvensen f (normalt 50 Hz).";
            return su;
        }
        if (su.values.count("cosphi")) {
            const double v = su.values["cosphi"];
            if (!(v > 0.0 && v <= 1.0)) {
                std::string chips;
                if (v > 1.0 && v < 90.0) {
                    const double cosv = std::cos(v * kDeg);
                    chips += chip("src|cos|" + g4(cosv), "Det er vinklen φ = " + fmtNumber(v) +
                                                             "° → brug cos φ = " + fmtNumber(cosv));
                    su.fixes.push_back("src|cos|" + g4(cosv));
                }
                if (v > 1.0 && v <= 100.0) {
                    // Each offer is a line of its own.
                    if (!chips.empty()) chips += "<br>";
                    chips += chip("src|cos|" + g4(v / 100.0),
                                  "Det er " + fmtNumber(v) + " % → brug cos φ = " + fmtNumber(v / 100.0));
                    su.fixes.push_back("src|cos|" + g4(v / 100.0));
                }
                su.error = std::string(kCosWords) + " skal være et tal mellem 0 og 1 (fx 0,8), men der står " +
                           fmtNumber(v) + ".";
                if (!chips.empty()) su.error += " Mente du:<div class=\"chips\">" + chips + "</div>";
                return su;
            }
            su.values["phi"] = std::acos(std::fmin(1.0, std::fmax(-1.0, v))) / kDeg;
        }
        // Values that a student has most likely typed without their prefix.
        std::string unreal;
        for (const auto& entry : order) {
            const CNodePtr& n = entry.first;
            if (n->group) continue;
            const double v = lookup(su.values, n->name);
            const std::string t = trimmed(n->v);
            for (const Limit& lim : kLimits) {
                if (n->k != lim.kind || !(v > lim.above)) continue;
                const std::string fix = "comp|" + n->id + "|" + t + lim.prefix;
                unreal += "<b>" + n->name + " = " + t + " " + lim.unit + "</b> er urealistisk stort – " +
                          lim.usual + ". Mente du " + t + " " + lim.shown + "? <div class=\"chips\">" +
                          chip(fix, "Ret til " + t + " " + lim.shown) + "</div>";
                su.fixes.push_back(fix);
            }
        }
        if (!unreal.empty()) {
            su.error = unreal;
            return su;
        }
    }
    return su;
}

std::string countMessage(const std::vector<std::string>& unknowns, size_t reachable, bool isAc) {
    std::vector<std::string> names;
    for (const std::string& u : unknowns)
        names.push_back(symbolDisplay(u));
    std::string s = "Der er <b>" + std::to_string(unknowns.size()) + " ukendte</b> (" +
                    joinWith(names, ", ") + "), men kun <b>" + std::to_string(reachable) + " " +
                    (reachable == 1 ? "kendt værdi" : "kendte værdier") +
                    "</b> at regne baglæns ud fra. Der skal være lige så mange kendte værdier som ukendte. ";
    s += "Du kan fx opgive ";
    if (isAc)
        s += joinWith({symbolDisplay("cosphi"), symbolDisplay("P"), symbolDisplay("Z")}, ", ") + " eller " +
             symbolDisplay("I");
    else
        s += symbolDisplay("P_tot") + " eller " + symbolDisplay("I");
    s +=
        " under \"Kilden og hele kredsen\", eller en kendt spænding eller strøm ved en komponent (kolonnerne "
        "\"Kendt U\" og \"Kendt I\"). ";
    s +=
        "Står der i opgaven, at nogle komponenter er ens, så skriv fx <b>=R1</b> i feltet for den anden – så "
        "tæller de som én ukendt.";
    return s;
}

std::string missingMessage(const Setup& su, const Circuit& c) {
    const bool isAc = c.mode == "ac";
    std::vector<std::string> parts;
    if (!su.emptyComponents.empty()) {
        std::vector<std::string> names;
        for (const std::string& n : su.emptyComponents)
            names.push_back(symbolDisplay(n));
        parts.push_back("Disse værdier kendes ikke: <b>" + joinWith(names, ", ") +
                        "</b>. Skriv dem, hvis opgaven giver dem.");
    }
    if (!su.hasU && !su.hasI)
        parts.push_back("Der mangler en spænding eller strøm: skriv kildespændingen " + symbolDisplay("U") +
                        " eller den samlede strøm " + symbolDisplay("I") + ".");
    std::vector<std::string> empty;
    for (const SourceField& f : sourceFields(isAc)) {
        const std::string sym = f.symbol;
        if (sym == "U" || sym == "f") continue;
        auto it = c.src.find(f.key);
        if (it == c.src.end() || trimmed(it->second).empty()) empty.push_back(symbolDisplay(sym));
    }
    std::string other = "Er en værdi ukendt med vilje, skal opgaven give en anden størrelse i stedet – fx ";
    if (!empty.empty()) other += joinOr(empty) + ", eller ";
    other +=
        "en kendt spænding eller strøm ved en komponent (kolonnerne \"Kendt U\" og \"Kendt I\"). Der skal "
        "være lige så mange kendte værdier som ukendte.";
    parts.push_back(other);
    return "Der er for få kendte værdier til at komme i gang. " + joinWith(parts, " ");
}

} // namespace fl
