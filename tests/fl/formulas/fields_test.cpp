// The formula page's reading of its fields: which quantity is wanted, and the
// refusals in the student's words.
#include "fl/formulas/fields.h"

#include "fl/expr/symbols.h"
#include "fl/formulas/catalogue.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::map<std::string, std::string>;

#define HINT " Skriv et tal uden enhed, fx 230, 0,5, 4,7k, 25e-6 eller 400/√3 – med højst ét decimalkomma."

TEST(CheckFields, refusesInTheStudentsWords) {
    struct Row {
        const char* name;
        const char* key;
        Texts texts;
        const char* refusal;
    };
    const Row rows[] = {
        {"missing and blank fields count as empty",
         "ohm",
         {{"I", " "}, {"R", "47"}},
         "Udfyld alle værdier undtagen den, du vil finde. Tomme felter nu: U, I."},
        {"unreadable before empty",
         "ohm",
         {{"U", ""}, {"I", ""}, {"R", "abc"}},
         "Jeg kan ikke læse værdien for R." HINT},
        {"a number too large is named as such",
         "ohm",
         {{"U", ""}, {"I", "2"}, {"R", "1e999"}},
         "Jeg kan ikke læse værdien for R. Tallet for R er for stort til at regne med."},
        {"two too large beside an unreadable one",
         "ohm",
         {{"U", "x"}, {"I", "1e999"}, {"R", "1e999"}},
         "Jeg kan ikke læse værdien for U, I, R." HINT " Tallene for I, R er for store til at regne med."},
        {"unreadable in display form",
         "ZRLC",
         {{"Z", "x"}, {"R", "5"}, {"XL", "2/0"}, {"XC", ""}},
         "Jeg kan ikke læse værdien for Z, X<sub>L</sub>." HINT},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const fl::FieldCheck c = fl::checkFields(*fl::findFormula(r.key), r.texts);
        EXPECT_EQ(c.refusal, r.refusal);
        EXPECT_EQ(c.target, "");
    }
}

// Every quantity of every family, left alone empty: either it has a form and
// becomes the target, or the page refuses it with the hint that fits the family.
TEST(CheckFields, everyQuantityIsEitherSolvedOrRefused) {
    for (const fl::Formula& f : fl::catalogue()) {
        for (const fl::FormulaVar& wanted : f.vars) {
            SCOPED_TRACE(f.key + " " + wanted.symbol);
            Texts texts;
            std::map<std::string, double> given;
            for (const fl::FormulaVar& v : f.vars) {
                texts[v.symbol] = v.symbol == wanted.symbol ? "" : "0,5k";
                if (v.symbol != wanted.symbol) given[v.symbol] = 500;
            }
            const fl::FieldCheck c = fl::checkFields(f, texts);
            bool hasForm = false;
            for (const fl::FormulaForm& form : f.forms)
                hasForm = hasForm || form.var == wanted.symbol;
            if (hasForm) {
                EXPECT_EQ(c.target, wanted.symbol);
                EXPECT_EQ(c.refusal, "");
                EXPECT_EQ(c.values, given);
            } else {
                EXPECT_EQ(c.target, "");
                EXPECT_EQ(c.refusal, fl::symbolDisplay(wanted.symbol) +
                                         " kan ikke isoleres direkte i denne formel. " +
                                         (f.note.empty() ? "Prøv et af værktøjerne." : "Se noten ovenfor."));
            }
        }
    }
}

TEST(InterpretLine, showsTheValueAsReadOrAWarning) {
    struct Row {
        const char* name;
        const char* text;
        const char* line;
    };
    const Row rows[] = {
        {"empty", "", ""},
        {"prefix", "4,7k", "= 4700"},
        {"unreadable", "abc", "<span style=\"color:#c62828\">kan ikke læses</span>"},
        {"too large for the computer", "1e999", "<span style=\"color:#c62828\">for stort tal</span>"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        EXPECT_EQ(fl::interpretLine(r.text, "#c62828"), r.line);
    }
}

} // namespace
