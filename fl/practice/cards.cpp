#include "fl/practice/cards.h"

#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "fl/formulas/catalogue.h"
#include "fl/glossary/glossary.h"
#include "fl/glossary/install.h"
#include "fl/practice/random.h"
#include "fl/tools/frame.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace fl {

namespace {

const char* const kGlossaryCard = "gl:";
const char* const kInstallCard = "inst:";

bool startsWith(const std::string& s, const std::string& prefix) {
    return s.compare(0, prefix.size(), prefix) == 0;
}

bool isFamilyDeck(const std::string& deck) {
    return deck == "alle" || deck == "El-lære" || deck == "Trefaset" || deck == "Matematik";
}

// Families that have a formula to show.
bool hasCard(const Formula& f) {
    return !f.forms.empty() && !f.vars.empty();
}

// A quantity of the formula decks: its symbol, the name and unit it first has.
struct Quantity {
    std::string name;
    std::string unit;
};

const std::map<std::string, Quantity>& quantities() {
    static const std::map<std::string, Quantity> table = [] {
        std::map<std::string, Quantity> out;
        for (const Formula& f : catalogue())
            if (hasCard(f))
                for (const FormulaVar& v : f.vars)
                    if (!v.unit.empty()) out.try_emplace(v.symbol, Quantity{v.name, v.unit});
        return out;
    }();
    return table;
}

const InstallFact* findFact(const std::string& key) {
    for (const InstallFact& f : installFacts())
        if (f.key == key) return &f;
    return nullptr;
}

std::string formulaLine(const Formula& f) {
    const FormulaForm& primary = f.forms.front();
    try {
        return "<div class=\"eq fceq\">" + tool::symbolHtml(primary.var) + " = " + renderMath(parse(primary.expr)) +
               "</div>";
    } catch (const std::exception&) {
        return "<div class=\"eq fceq\">" + htmlEscape(primary.var + " = " + primary.expr) + "</div>";
    }
}

std::string legend(const Formula& f) {
    std::string out;
    for (const FormulaVar& v : f.vars) {
        if (!out.empty()) out += " &nbsp;·&nbsp; ";
        out += tool::symbolHtml(v.symbol) + " " + v.name + (v.unit.empty() ? "" : " [" + v.unit + "]");
    }
    return "<div class=\"crumb fcleg\">" + out + "</div>";
}

std::string question(const std::string& text) {
    return "<p class=\"fcq\">" + text + "</p>";
}

std::string unknownCard() {
    return "<p class=\"hint\">Kortet findes ikke længere.</p>";
}

int32_t clampCount(double v) {
    if (!std::isfinite(v) || v < 0) return 0;
    return v > 2147483647.0 ? INT32_MAX : static_cast<int32_t>(v);
}

// A box as stored, even out of range: the box counts leave such a card out,
// and its next rating starts it in box 1.
int32_t storedBox(double v) {
    if (!std::isfinite(v)) return -1;
    return static_cast<int32_t>(std::clamp(v, -2147483648.0, 2147483647.0));
}

} // namespace

double boxDays(int box) {
    static const double kDays[] = {0, 1, 3, 7, 16};
    return kDays[std::clamp(box, 1, 5) - 1];
}

const std::vector<Deck>& decks() {
    static const std::vector<Deck> table = {
        {"alle", "Alle formler"},
        {"El-lære", "El-lære"},
        {"Trefaset", "Trefaset"},
        {"Matematik", "Matematik"},
        {"gl", "Ordlisten"},
        {"inst", "Alt om installation"},
        {"inst:farver", "Installation · Ledningsfarver"},
        {"inst:ip", "Installation · IP-koder"},
        {"inst:poe", "Installation · PoE"},
        {"inst:test", "Installation · Afprøvning og grænseværdier"},
    };
    return table;
}

const Deck* findDeck(const std::string& key) {
    for (const Deck& d : decks())
        if (d.key == key) return &d;
    return nullptr;
}

std::vector<std::string> deckCards(const std::string& deck) {
    std::vector<std::string> out;
    if (isFamilyDeck(deck)) {
        std::set<std::string> symbols;
        for (const Formula& f : catalogue()) {
            if (!hasCard(f) || (deck != "alle" && f.group != deck)) continue;
            out.push_back(f.key);
            for (const FormulaVar& v : f.vars)
                if (!v.unit.empty()) symbols.insert(v.symbol);
        }
        for (const std::string& s : symbols)
            out.push_back(kSymbolCard + s);
    } else if (deck == "gl") {
        for (const GlossaryEntry& e : glossary())
            out.push_back(kGlossaryCard + e.term);
    } else if (deck == "inst" || startsWith(deck, kInstallCard)) {
        const std::string sub = deck == "inst" ? std::string() : deck.substr(5);
        for (const InstallFact& f : installFacts())
            if (sub.empty() || f.deck == sub) out.push_back(f.key);
    }
    return out;
}

Direction directionFromKey(const std::string& key) {
    return key == "fn" ? Direction::FormulaToName : Direction::NameToFormula;
}

const char* directionKey(Direction d) {
    return d == Direction::FormulaToName ? "fn" : "nf";
}

bool isDue(const CardStates& states, const std::string& key, double nowMs) {
    auto it = states.find(key);
    return it == states.end() || nowMs >= it->second.due;
}

int countDue(const std::string& deck, const CardStates& states, double nowMs) {
    int n = 0;
    for (const std::string& key : deckCards(deck))
        n += isDue(states, key, nowMs) ? 1 : 0;
    return n;
}

Round startRound(const std::string& deck, Direction direction, const CardStates& states, double nowMs, bool all) {
    Round r;
    r.deck = deck;
    r.direction = direction;
    for (const std::string& key : deckCards(deck))
        if (all || isDue(states, key, nowMs)) r.queue.push_back(key);
    std::shuffle(r.queue.begin(), r.queue.end(), randomSource());
    return r;
}

CardState rate(Round& r, CardStates& states, int grade, double nowMs) {
    if (r.finished()) return {};
    const std::string key = r.card();
    CardState& s = states[key]; // a new card starts in box 1
    if (s.box < 1 || s.box > 5) s.box = 1; // a damaged box holds no progress to keep
    ++s.reps;
    auto requeue = [&](size_t ahead) {
        r.queue.insert(r.queue.begin() + static_cast<std::ptrdiff_t>(std::min(r.pos + ahead, r.queue.size())), key);
    };
    if (grade >= Right) {
        ++r.right;
        ++s.good;
        s.box = std::min(s.box + 1, 5);
        s.due = nowMs + boxDays(s.box) * kDayMs;
    } else if (grade == Almost) {
        ++r.almost;
        s.due = nowMs + boxDays(s.box) * kDayMs * 0.5;
        if (r.requeued.insert(key).second) requeue(6);
    } else {
        ++r.wrong;
        s.box = 1;
        s.due = nowMs;
        requeue(4);
    }
    ++r.pos;
    r.flipped = false;
    return s;
}

void skip(Round& r) {
    if (!r.finished()) ++r.pos;
    r.flipped = false;
}

CardStates cardStatesFromJson(const Json& value) {
    CardStates out;
    for (const auto& [key, rec] : value.asObject()) {
        if (!rec.isObject() || key.empty()) continue;
        CardState s;
        s.box = storedBox(rec.at("box").asNumber(1));
        s.reps = clampCount(rec.at("reps").asNumber(0));
        s.good = std::min(clampCount(rec.at("good").asNumber(0)), s.reps);
        const double due = rec.at("due").asNumber(0);
        s.due = std::isfinite(due) && due > 0 ? due : 0;
        out[key] = s;
    }
    return out;
}

Json cardStatesToJson(const CardStates& states) {
    Json out = Json::object();
    for (const auto& [key, s] : states) {
        Json rec = Json::object();
        rec["box"] = Json(s.box);
        rec["reps"] = Json(s.reps);
        rec["good"] = Json(s.good);
        rec["due"] = Json(s.due);
        out[key] = std::move(rec);
    }
    return out;
}

namespace {

std::optional<CardStates>& loaded() {
    static std::optional<CardStates> states;
    return states;
}

} // namespace

CardStates& cardStates() {
    if (!loaded()) loaded() = cardStatesFromJson(storeGet(key::Fc, Json::object()));
    return *loaded();
}

void saveCardStates() {
    storeSet(key::Fc, cardStatesToJson(cardStates()));
}

void reloadCardStates() {
    loaded().reset();
}

void resetDeck(const std::string& deck) {
    CardStates& states = cardStates();
    for (const std::string& key : deckCards(deck))
        states.erase(key);
    saveCardStates();
}

std::string cardFrontHtml(const std::string& key, Direction d) {
    if (startsWith(key, kGlossaryCard)) {
        const GlossaryEntry* e = findGlossaryEntry(key.substr(3));
        if (!e) return unknownCard();
        return "<div class=\"crumb\">Ordliste · " + e->group + "</div>" + question(e->term) +
               "<p class=\"hint0\">Hvad betyder det?</p>";
    }
    if (startsWith(key, kInstallCard)) {
        const InstallFact* f = findFact(key);
        return f ? "<div class=\"crumb\">Installation</div>" + question(f->front) : unknownCard();
    }
    if (startsWith(key, kSymbolCard)) {
        const std::string symbol = key.substr(6);
        auto it = quantities().find(symbol);
        if (it == quantities().end()) return unknownCard();
        if (d == Direction::NameToFormula)
            return "<div class=\"crumb\">Størrelse</div>" + question(it->second.name) +
                   "<p class=\"hint0\">Hvilket symbol og hvilken enhed?</p>";
        return "<div class=\"crumb\">Symbol</div><div class=\"eq fceq\">" + tool::symbolHtml(symbol) +
               "</div><p class=\"hint0\">Hvad står symbolet for, og hvilken enhed har det?</p>";
    }
    const Formula* f = findFormula(key);
    if (!f || !hasCard(*f)) return unknownCard();
    if (d == Direction::NameToFormula)
        return "<div class=\"crumb\">" + f->group + "</div>" + question(symbolHtml(f->title)) +
               "<p class=\"hint0\">Hvordan ser formlen ud?</p>";
    return "<div class=\"crumb\">" + f->group + "</div>" + formulaLine(*f) +
           "<p class=\"hint0\">Hvad hedder formlen, og hvad bruges den til?</p>";
}

std::string cardBackHtml(const std::string& key, Direction d) {
    if (startsWith(key, kGlossaryCard)) {
        const GlossaryEntry* e = findGlossaryEntry(key.substr(3));
        if (!e) return unknownCard();
        std::string html = "<div class=\"fcback\">";
        if (!e->formula.empty()) html += "<p class=\"glf\">" + e->formula + "</p>";
        return html + "<p>" + e->text + "</p></div>";
    }
    if (startsWith(key, kInstallCard)) {
        const InstallFact* f = findFact(key);
        return f ? "<div class=\"fcback\"><p class=\"fcq\">" + f->back + "</p></div>" : unknownCard();
    }
    if (startsWith(key, kSymbolCard)) {
        const std::string symbol = key.substr(6);
        auto it = quantities().find(symbol);
        if (it == quantities().end()) return unknownCard();
        const std::string unit = "<p class=\"center\">Enhed: <b>" + it->second.unit + "</b></p>";
        if (d == Direction::NameToFormula)
            return "<div class=\"eq fceq center\">" + tool::symbolHtml(symbol) + "</div>" + unit;
        return question(it->second.name) + unit;
    }
    const Formula* f = findFormula(key);
    if (!f || !hasCard(*f)) return unknownCard();
    if (d == Direction::NameToFormula) return formulaLine(*f) + legend(*f);
    return question(symbolHtml(f->title)) + legend(*f) +
           (f->page.empty() ? std::string()
                            : "<p class=\"crumb\">" + pageRef(f->page, "Formelsamlingen") + "</p>");
}

std::string boxesHtml(const std::string& deck, const CardStates& states, double nowMs) {
    int counts[6] = {0, 0, 0, 0, 0, 0}; // new (or box 0), then box 1..5
    int ready = 0;
    const std::vector<std::string> cards = deckCards(deck);
    for (const std::string& key : cards) {
        auto it = states.find(key);
        if (it == states.end())
            ++counts[0];
        else if (it->second.box >= 0 && it->second.box <= 5) // any other box is counted nowhere
            ++counts[it->second.box];
        ready += isDue(states, key, nowMs) ? 1 : 0;
    }
    static const char* const kNames[] = {"Nye", "Kasse 1", "Kasse 2", "Kasse 3", "Kasse 4", "Kasse 5"};
    std::string html = "<table class=\"kvgrid\" width=\"100%\"><tr>";
    for (int i = 0; i < 6; ++i)
        html += "<td class=\"kv\" align=\"center\"><span class=\"val\">" + std::to_string(counts[i]) +
                "</span><br><span class=\"k\">" + kNames[i] + "</span></td>";
    html += "</tr></table><p class=\"hint\">" + std::to_string(cards.size()) + " kort i alt · " +
            std::to_string(ready) + " klar nu. Kasse 1 = kan ikke endnu … kasse 5 = sidder fast.</p>";
    return html;
}

std::string roundEndHtml(const Round& r) {
    return "<h3 class=\"sh center\">Runden er færdig</h3><p class=\"center hint0\">✓ Kunne: <b>" +
           std::to_string(r.right) + "</b> &nbsp;·&nbsp; ~ Næsten: <b>" + std::to_string(r.almost) +
           "</b> &nbsp;·&nbsp; ✗ Kunne ikke: <b>" + std::to_string(r.wrong) + "</b></p>";
}

} // namespace fl
