// The meter-free copy, the hosts of the meters and their readings. Placement
// errors are told in the student's terms; the drawn tree is never changed.
#include "fl/circuit/meters.h"

#include "fl/circuit/analysis.h"
#include "fl/circuit/sheet.h"
#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"

#include <cmath>
#include <map>
#include <set>

namespace fl {

namespace {

struct Record {
    Meter meter;
    bool ideal = true;
    CNodePtr parent; // the group it sat in, in the copy
    CNodePtr only;   // a voltmeter's single other sibling, if it had exactly one
};

// Removes emptied groups, dissolves same-kind children and replaces
// one-child groups, noting where each vanished group went. A series group
// that a voltmeter measures is kept whole even inside a series: dissolved,
// its voltage would have no symbol.
CNodePtr clean(const CNodePtr& g, bool isRoot, std::map<std::string, CNodePtr>& moved,
               std::set<std::string>& dropped, const std::set<const CNode*>& keep) {
    std::vector<CNodePtr> kept;
    for (const CNodePtr& c : g->ch) {
        if (!c->group) {
            kept.push_back(c);
            continue;
        }
        CNodePtr n = clean(c, false, moved, dropped, keep);
        if (!n) {
            dropped.insert(c->id);
            continue;
        }
        if (n != c) moved[c->id] = n;
        if (n->group && n->k == g->k && !keep.count(n.get())) {
            moved[n->id] = g;
            kept.insert(kept.end(), n->ch.begin(), n->ch.end());
        } else {
            kept.push_back(n);
        }
    }
    g->ch = std::move(kept);
    if (!isRoot && g->ch.empty()) return nullptr;
    if (!isRoot && g->ch.size() == 1) return g->ch.front();
    return g;
}

// Follows the notes of `clean`, at most 50 links, so no cycle can hang it.
CNodePtr resolve(CNodePtr n, const std::map<std::string, CNodePtr>& moved) {
    for (int hops = 0; n && hops < 50; ++hops) {
        auto it = moved.find(n->id);
        if (it == moved.end() || it->second == n) break;
        n = it->second;
    }
    return n;
}

bool readable(const std::string& text, double* out) {
    const double v = readValue(text);
    if (!std::isfinite(v)) return false;
    if (out) *out = v;
    return true;
}

} // namespace

std::shared_ptr<MeterInfo> stripMeters(Circuit& c) {
    auto info = std::make_shared<MeterInfo>();
    info->root = c.root;
    info->drawn = c.root;
    bool any = false;
    walk(c.root, [&](const CNodePtr& n) { any = any || n->k == "A" || n->k == "V"; });
    if (!any) return info;

    nameCircuit(c);
    CNodePtr copy = deepCopy(c.root);
    std::vector<Record> records;
    std::vector<CNodePtr> groups;
    std::set<const CNode*> idealMeters;
    walk(copy, [&](const CNodePtr& n) {
        double inner = 0.0;
        if (n->group)
            groups.push_back(n);
        else if ((n->k == "A" || n->k == "V") && !(readable(n->r, &inner) && inner > 0.0))
            idealMeters.insert(n.get()); // no usable inner resistance: ideal
    });
    for (const CNodePtr& g : groups) {
        std::vector<CNodePtr> kept;
        for (const CNodePtr& m : g->ch) {
            if (m->group || (m->k != "A" && m->k != "V")) {
                kept.push_back(m);
                continue;
            }
            Record rec;
            rec.meter.id = m->id;
            rec.meter.name = m->name;
            rec.meter.k = m->k;
            rec.meter.value = m->v;
            rec.meter.rText = m->r;
            rec.parent = g;
            rec.ideal = rec.meter.ideal = idealMeters.count(m.get()) > 0;
            if (rec.ideal && m->k == "A" && g->k == "P" && info->error.empty())
                info->error = m->name +
                              ": et amperemeter må ikke sidde alene parallelt – det kortslutter (et "
                              "ideelt amperemeter har ingen modstand). Sæt det i serie.";
            if (rec.ideal && m->k == "V" && g->k == "S" && info->error.empty())
                info->error =
                    m->name + ": et voltmeter skal sidde parallelt med det, det måler over – ikke i serie.";
            if (rec.ideal) {
                std::vector<CNodePtr> others;
                for (const CNodePtr& o : g->ch)
                    if (o != m && !idealMeters.count(o.get())) others.push_back(o);
                if (others.size() == 1) rec.only = others.front();
            } else {
                // It stays as a resistor of its inner resistance, marked by its kind.
                kept.push_back(m);
                rec.meter.host = m;
                rec.meter.symbol = (m->k == "A" ? "I_" : "U_") + m->name;
                m->k = "R";
                m->id = rec.meter.k;
                m->v = m->r;
                m->U.clear();
                m->I.clear();
                m->P.clear();
            }
            records.push_back(std::move(rec));
        }
        g->ch = std::move(kept);
    }
    if (!info->error.empty()) return info;

    std::set<const CNode*> keep;
    for (const Record& rec : records)
        if (rec.ideal && rec.meter.k == "V" && rec.only && rec.only->group) keep.insert(rec.only.get());
    std::map<std::string, CNodePtr> moved;
    std::set<std::string> dropped;
    clean(copy, true, moved, dropped, keep);
    if (copy->ch.empty()) {
        info->error = "Tegn mindst én komponent ud over målerne.";
        return info;
    }

    for (Record& rec : records) {
        Meter& m = rec.meter;
        if (rec.ideal) {
            if (m.k == "A") {
                // An ammeter shows the current of the series path it sits in.
                if (rec.parent != copy && dropped.count(rec.parent->id)) {
                    info->error = m.name + " sidder alene i en gren og kortslutter den.";
                    return info;
                }
                m.host = resolve(rec.parent, moved);
            } else {
                // A voltmeter shows the voltage across what it is parallel to.
                m.host = resolve(rec.only ? rec.only : rec.parent, moved);
            }
            if (m.host) m.symbol = m.k == "A" ? currentSymbol(*m.host) : voltageSymbol(*m.host);
        }
        double reading;
        if (m.host && readable(m.value, &reading)) {
            m.counted = true;
            m.label = rec.ideal ? m.name + " viser (" + (m.k == "A" ? "strømmen " : "spændingen ") +
                                      symbolDisplay(m.symbol) + ")"
                                : m.name + " viser";
            info->extraGiven.push_back({m.symbol, m.value, m.label});
        }
        info->meters.push_back(m);
    }

    info->root = copy;
    info->active = true;
    c.root = copy;
    c.solving = true;
    return info;
}

void restoreMeters(Circuit& c, const MeterInfo& info) {
    if (!info.active) return;
    c.root = info.drawn;
    c.solving = false;
}

std::vector<CircuitStep> meterLines(const Sheet& sheet, const MeterInfo& info) {
    std::vector<CircuitStep> steps;
    for (const Meter& m : info.meters) {
        if (m.counted || m.symbol.empty()) continue;
        const double v = lookup(sheet.values, m.symbol);
        if (!std::isfinite(v)) continue;
        const bool ideal = m.ideal;
        const bool ammeter = m.k == "A";
        std::string text;
        if (ideal)
            text = ammeter ? "Amperemeteret " + m.name + " sidder i serie og viser strømmen dér"
                           : "Voltmeteret " + m.name + " sidder parallelt og viser spændingen dér";
        else
            text = (ammeter ? "Amperemeteret " : "Voltmeteret ") + m.name + " (med indre modstand) viser";
        CircuitStep s;
        s.title = "Måler " + m.name;
        s.node = m.host;
        s.html = "<p class=\"hint0\">" + text + " <b>" + fmtWithUnit(v, ammeter ? "A" : "V") + "</b>";
        if (!ideal) s.html += " <span class=\"crumb\">regnet som en modstand i kredsen</span>";
        s.html += "</p>";
        steps.push_back(std::move(s));
    }
    return steps;
}

} // namespace fl
