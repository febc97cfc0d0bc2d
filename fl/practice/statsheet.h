// The statistics page as result markup: totals, the last 14 days as bars,
// topics weakest first, the families most often answered wrong, the topics
// not tried yet and the latest exams. Colours come from the caller's theme.
#pragma once

#include "fl/practice/stats.h"

#include <string>
#include <vector>

namespace fl {

struct BarColours {
    std::string right = "#2e9e5b";
    std::string wrong = "#d64545";
    std::string line = "#c9d1dc";
    std::string text = "#6b7785";
};

// Counts of the 14 days that end with `today` ("YYYY-MM-DD"), oldest first.
struct DayBar {
    std::string label; // "14/3"
    int32_t right = 0;
    int32_t wrong = 0;
};
std::vector<DayBar> lastDays(const PracticeStats& stats, const std::string& today, int count = 14);

// The SVG body of the bar chart, 600 × 150: a base line at y 130 from x 24
// to 590, the busiest day 110 high.
std::string dayBarsSvg(const std::vector<DayBar>& days, const BarColours& colours);

// The whole page. `allTopics` are the topics the exercise page offers, in its
// order; those without an answer are listed as not tried yet. Writes into
// the caller's rendering pass (the bars are a figure).
std::string statsHtml(const PracticeStats& stats, const std::vector<ExamRecord>& exams,
                      const std::vector<std::string>& allTopics, const std::string& today,
                      const BarColours& colours = {});

} // namespace fl
