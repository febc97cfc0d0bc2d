#include "fl/formulas/fields.h"

#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"

#include <cmath>

namespace fl {

namespace {

std::string displayList(const std::vector<std::string>& symbols) {
    std::string out;
    for (const std::string& s : symbols) {
        if (!out.empty()) out += ", ";
        out += symbolDisplay(s);
    }
    return out;
}

// A text that is a plain number, only too large for a double ("1e999").
bool tooLarge(const std::string& text) {
    double mantissa = 0;
    std::string prefix;
    return parseWithPrefix(text, &mantissa, &prefix) && std::isinf(mantissa);
}

} // namespace

FieldCheck checkFields(const Formula& f, const std::map<std::string, std::string>& texts) {
    FieldCheck c;
    for (const FormulaVar& v : f.vars) {
        const auto it = texts.find(v.symbol);
        bool blank = true;
        const double value = it == texts.end() ? NAN : readValue(it->second, &blank);
        if (blank)
            c.empty.push_back(v.symbol);
        else if (!std::isfinite(value))
            c.unreadable.push_back(v.symbol);
        else
            c.values[v.symbol] = value;
    }
    if (!c.unreadable.empty()) {
        c.refusal = "Jeg kan ikke læse værdien for " + displayList(c.unreadable) + ".";
        std::vector<std::string> large, bad;
        for (const std::string& s : c.unreadable)
            (tooLarge(texts.at(s)) ? large : bad).push_back(s);
        if (!bad.empty())
            c.refusal += " Skriv et tal uden enhed, fx 230, 0,5, 4,7k, 25e-6 eller 400/√3 – med højst ét "
                         "decimalkomma.";
        if (!large.empty())
            c.refusal += large.size() == 1 ? " Tallet for " + displayList(large) + " er for stort til at regne med."
                                           : " Tallene for " + displayList(large) + " er for store til at regne med.";
        return c;
    }
    if (c.empty.size() != 1) {
        c.refusal =
            "Udfyld alle værdier undtagen den, du vil finde. Tomme felter nu: " + displayList(c.empty) + ".";
        return c;
    }
    const std::string& wanted = c.empty.front();
    bool hasForm = false;
    for (const FormulaForm& form : f.forms)
        hasForm = hasForm || form.var == wanted;
    if (!hasForm) {
        c.refusal = symbolDisplay(wanted) + " kan ikke isoleres direkte i denne formel. " +
                    (f.note.empty() ? "Prøv et af værktøjerne." : "Se noten ovenfor.");
        return c;
    }
    c.target = wanted;
    return c;
}

std::string interpretLine(const std::string& text, const std::string& badColour) {
    bool blank = true;
    const double value = readValue(text, &blank);
    if (blank) return {};
    // Reading refuses an overflow as it refuses nonsense; the line tells them apart.
    if (std::isinf(value) || (std::isnan(value) && tooLarge(text)))
        return "<span style=\"color:" + badColour + "\">for stort tal</span>";
    if (std::isnan(value)) return "<span style=\"color:" + badColour + "\">kan ikke læses</span>";
    return "= " + fmtNumber(value);
}

} // namespace fl
