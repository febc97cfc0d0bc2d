// What a visit leaves in the store: "last", "recent" and "usage", from
// whatever was stored before, well-formed or not. The keys are spelt out:
// they are what the student's data file holds.
#include "app/shell/visits.h"

#include "store/datastore.h"

#include <gtest/gtest.h>

namespace {

std::string normal(const char* text) {
    return Json::dump(Json::parse(text));
}

TEST(Visits, recordVisitKeepsLastRecentAndUsage) {
    struct Row {
        const char* name;
        const char* recentBefore; // JSON text; "" for nothing stored
        const char* usageBefore;
        const char* route;
        const char* recentAfter;
        const char* usageAfter;
    };
    const Row rows[] = {
        {"again moves it first without a copy", R"(["trafo","ohm"])", R"({"Ohms lov":2})", "ohm",
         R"(["ohm","trafo"])", R"({"Ohms lov":3})"},
        {"the oldest falls off at six", R"(["a","b","c","d","e","f"])", "{}", "ohm",
         R"(["ohm","a","b","c","d","e"])", R"({"Ohms lov":1})"},
        {"home is counted as Forside but not recent", R"(["ohm"])", "", "hjem", R"(["ohm"])",
         R"({"Forside":1})"},
        {"the locked page is neither", R"(["ohm"])", R"({"Ohms lov":1})", "laast", R"(["ohm"])",
         R"({"Ohms lov":1})"},
        {"damaged values start afresh", R"("ohm")", "[1,2]", "trafo", R"(["trafo"])", R"({"Transformer":1})"},
        {"entries that aren't routes are dropped", R"([7,"ohm",null])", R"({"Ohms lov":"x"})", "ohm",
         R"(["ohm"])", R"({"Ohms lov":1})"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        DataStore::instance().resetForTest();
        if (*r.recentBefore) storeSet("recent", Json::parse(r.recentBefore));
        if (*r.usageBefore) storeSet("usage", Json::parse(r.usageBefore));
        app::recordVisit(r.route);
        EXPECT_EQ(storeGetString("last"), r.route);
        EXPECT_EQ(Json::dump(storeGet("recent")), normal(r.recentAfter));
        EXPECT_EQ(Json::dump(storeGet("usage")), normal(r.usageAfter));
    }
    DataStore::instance().resetForTest();
}

} // namespace
