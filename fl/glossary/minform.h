// The student's own formula sheet: the families a student pins, each with a
// note of their own, written as one sheet for the screen and for PDF. The
// list itself is kept in the store by the page; here it is plain data.
#pragma once

#include "fl/formulas/catalogue.h"

#include <string>
#include <vector>

namespace fl {

struct MinformItem {
    std::string key;  // a family of the catalogue
    std::string note; // the student's own words, plain text
};

struct MinformOptions {
    bool forms = true;  // every rearrangement under the formula
    bool legend = true; // what each letter means
};

// The sheet, inside a rendering pass (formulas with fractions become
// images). Keys no longer in the catalogue are left out; notes are escaped
// and keep their line breaks. An empty list gives a hint of how to begin.
std::string minformHtml(const std::vector<MinformItem>& items, const MinformOptions& options);

// The families whose title or search words hold every word of `query`,
// folded as the glossary folds; at most `limit`, in catalogue order, those
// already in `pinned` left out.
std::vector<const Formula*> minformCandidates(const std::string& query, const std::vector<MinformItem>& pinned,
                                              size_t limit);

} // namespace fl
