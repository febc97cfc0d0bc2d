// The teacher's choices and read-backs: profiles from a form, the class's
// weakest topics, levels, codes, and the page helpers' escaping and dates.
#include "server/classroom.h"
#include "server/html.h"

#include <gtest/gtest.h>

namespace {

using Ids = std::vector<std::string>;

TEST(Classroom, profileFromTheForm) {
    const Ids exam = server::findPreset("proeve")->off;
    // clang-format off
    struct Row {
        const char* name;
        std::string profile;
        Ids ticked, before;
        std::string wantProfile;
        Ids wantOff;
    } rows[] = {
        {"preset with its own ticks", "jaevnstrom",
         {"ac_trefase", "veksel", "ac_sinus", "ac_rlc", "ac_komp", "ac_trafo", "ac_motor"}, {}, "jaevnstrom",
         {"veksel", "ac_sinus", "ac_rlc", "ac_komp", "ac_trafo", "ac_motor", "ac_trefase"}},
        {"preset chosen without script keeps the old ticks", "proeve", {"kreds"}, {"kreds"}, "proeve", exam},
        {"preset with other ticks is the teacher's own", "proeve", {"kreds"}, {}, "egen", {"kreds"}},
        {"nothing ticked and no profile", "", {}, {"kreds"}, "", {}},
        {"own profile, ticks in table order", "egen", {"ac_komp", "kreds", "nosuch"}, {}, "egen",
         {"kreds", "ac_komp"}},
        {"unknown profile", "hack", {}, {}, "", {}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const server::ProfileChoice c = server::chooseProfile(row.profile, row.ticked, row.before);
        EXPECT_EQ(c.profile, row.wantProfile);
        EXPECT_EQ(c.off, row.wantOff);
    }
}

TEST(Classroom, weakestTopicsOfTheClassFirst) {
    const std::vector<server::StatsUpload> uploads = {
        {"u1", R"({"topics":{"Ohm":{"right":4,"total":5},"Effekt":{"right":0,"total":1}}})", 1},
        {"u2", R"({"topics":{"Ohm":{"right":4,"total":5},"Trefaset":{"right":5,"total":10}}})", 2},
        // impossible rows
        {"u3", R"({"topics":{"Ohm":{"right":9,"total":5},"Spole":{"right":"x","total":3}}})", 3},
        {"u4", "not json", 4},
    };
    const std::vector<server::TopicStat> rows = server::classTopics(uploads);
    ASSERT_EQ(rows.size(), 3u);
    // (1 − 0 + 0.5)/2 = 0.75, (5 + 0.5)/11 = 0.5, (2 + 0.5)/11 ≈ 0.23
    EXPECT_EQ(rows[0].topic, "Effekt");
    EXPECT_EQ(rows[1].topic, "Trefaset");
    EXPECT_EQ(rows[2].topic, "Ohm");
    EXPECT_EQ(rows[2].right, 8);
    EXPECT_EQ(rows[2].total, 10);
    EXPECT_EQ(rows[2].students, 2);
}

TEST(Classroom, levels) {
    struct Row {
        int right, total;
        const char* text;
    } rows[] = {
        {0, 2, "For få svar"}, {1, 3, "Svag"}, {3, 5, "På vej"}, {17, 20, "Stærk"}, {16, 20, "På vej"}};
    for (const Row& row : rows)
        EXPECT_STREQ(server::levelOf(row.right, row.total).text, row.text) << row.right;
}

TEST(Classroom, codesAndPageHelpers) {
    for (int i = 0; i < 200; ++i) {
        const std::string code = server::newClassCode();
        ASSERT_EQ(code.size(), 8u);
        EXPECT_EQ(code.find_first_of("O0I1"), std::string::npos) << code;
    }
    EXPECT_EQ(server::showCode("ABCD2345"), "ABCD-2345");
    EXPECT_EQ(server::esc("<script>alert('x')</script> & \"y\""),
              "&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt; &amp; &quot;y&quot;");
    EXPECT_EQ(server::danishDate("2026-03-05"), "5.3.2026");
    EXPECT_EQ(server::danishDate("2026-13-05"), "");
    EXPECT_EQ(server::danishDate("5.3.2026"), "");
}

} // namespace
