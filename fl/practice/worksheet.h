// The worksheet: a sheet of freshly drawn exercises to print and solve on
// paper, with a line for each answer, room for working if wanted, and the
// answers (or whole solutions) at the back on a page of their own. Written
// as result markup; the PDF is the sheet view's business.
//
// Store "ws_opt": {"topic": "Jævnstrøm", "count": 10, "facit": "svar", "room": false}
#pragma once

#include "fl/expr/markup.h"
#include "fl/practice/exercise.h"
#include "store/json.h"

#include <functional>
#include <string>
#include <vector>

namespace fl {

struct WorksheetOptions {
    std::string topic;          // a practice category key; "" for every topic
    int count = 10;             // one of kWorksheetCounts
    std::string facit = "svar"; // "svar", "losning" or "ingen"
    bool room = false;          // a blank box under each exercise
};

inline const std::vector<int> kWorksheetCounts = {5, 10, 15, 20};
// The choices of "Facit", in order: key and label.
const std::vector<std::pair<std::string, std::string>>& facitChoices();

// Unknown values fall back to the defaults.
WorksheetOptions worksheetOptionsFromJson(const Json& value);
Json worksheetOptionsToJson(const WorksheetOptions& options);

struct Worksheet {
    WorksheetOptions options;
    std::string topicLabel;
    std::string date; // as the head shows it, "14. marts 2025"
    std::vector<Exercise> exercises;
};

// `options.count` exercises, each drawn anew by `draw`; an empty draw is
// tried again a few times, then left out.
Worksheet drawWorksheet(const WorksheetOptions& options, const std::string& topicLabel, const std::string& date,
                        const std::function<Exercise()>& draw);

// The sheet with its own images. `withFacit` false leaves out the answers at
// the back (the screen before "Vis facit"); they never appear with "ingen".
RenderResult worksheetRender(const Worksheet& sheet, bool withFacit);

// The answer as the facit shows it: "47 µF", "2,38 A".
std::string worksheetAnswer(const Exercise& ex);

} // namespace fl
