// The administrator's summary: reports received through the API, crash
// records grouped by the frames that matter, usage summed per page.
#include "server/reports.h"

#include "server/api.h"
#include "tests/server/temp_db.h"

namespace {

struct SignatureRow {
    const char* name;
    const char* record;
    const char* signature;
};

TEST(CrashSignature, topFramesWithoutRuntimeOffsetsOrLines) {
    const SignatureRow rows[] = {
        {"symbols with lines lose offsets and lines",
         "Ostrovalden 1.0.30 crash: exception 0x0000000b at 0x10\n"
         "  #0 ostrovalden!app::KredsPage::solve()+0x1c  (kredspage.cpp:88)\n"
         "  #1 ostrovalden!app::KredsPage::qt_static_metacall(QObject*, QMetaObject::Call, int, void**)+0x9a\n"
         "  #2 libQt6Core.so.6!QObject::event(QEvent*)+0x2f1\n"
         "  #3 libQt6Widgets.so.6!QApplication::notify(QObject*, QEvent*)+0x11\n",
         "exception 0x0000000b\nostrovalden!app::KredsPage::solve()\n"
         "ostrovalden!app::KredsPage::qt_static_metacall(QObject*, QMetaObject::Call, int, void**)\n"
         "libQt6Core.so.6!QObject::event(QEvent*)"},
        {"the runtime's abort and throw frames are passed over",
         "Ostrovalden 1.0.30 crash: exception 0x00000006 at 0x7f00\n"
         "  #0 libc.so.6!__pthread_kill_implementation+0x11b  (pthread_kill.c:44)\n"
         "  #1 libc.so.6!raise+0x16\n"
         "  #2 libc.so.6!abort+0xd3\n"
         "  #3 libstdc++.so.6!__cxa_throw+0x3b\n"
         "  #4 ostrovalden!fl::solveSheet(fl::Formula const&)+0x40  (solve.cpp:12)\n",
         "exception 0x00000006\nostrovalden!fl::solveSheet(fl::Formula const&)"},
        {"a frame without a symbol keeps its offset",
         "Ostrovalden 1.0.30 crash: exception 0x0000000b at 0x0\n  #0 ostrovalden+0x2a4f0\n  #1 ?+0x7f0012\n",
         "exception 0x0000000b\nostrovalden+0x2a4f0\n?+0x7f0012"},
        {"not a crash record", "Hej med dig\n  #0 x!y+0x1\n", ""},
    };
    for (const SignatureRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(server::crashSignature(row.record), row.signature);
    }
}

class ReportsFromTheApi : public TempDbTest {
  protected:
    void post(const std::string& path, const std::string& body, double at) {
        EXPECT_EQ(server::handleApi(*db, {}, path, body, at).status, 200) << body;
    }
};

TEST_F(ReportsFromTheApi, bugsCrashesAndUsageAreSummarised) {
    const std::string crashA = R"(Ostrovalden 1.0.30 crash: exception 0x0000000b at 0x10\n  #0 ostrovalden!solve()+0x1c  (a.cpp:3)\n)";
    const std::string crashA2 = R"(Ostrovalden 1.0.30 crash: exception 0x0000000b at 0x18\n  #0 ostrovalden!solve()+0x24  (a.cpp:4)\n)";
    const std::string crashB = R"(Ostrovalden 1.0.30 crash: exception 0x00000006 at 0x7f\n  #0 libc.so.6!abort+0xd3\n  #1 ostrovalden!draw()+0x8\n)";
    post("/telemetry", R"({"kind":"crash","uid":"u1","version":"1.0.29","text":")" + crashA + "\"}", 100);
    post("/telemetry", R"({"kind":"crash","uid":"u2","version":"1.0.30","text":")" + crashB + "\"}", 200);
    post("/telemetry", R"({"kind":"crash","uid":"u2","version":"1.0.30","text":")" + crashA2 + "\"}", 300);
    post("/telemetry", R"({"kind":"usage","uid":"u1","version":"1.0.30","pages":{"Ohms lov":3,"Forside":1},"starts":2})", 110);
    post("/telemetry", R"({"kind":"usage","uid":"u2","version":"1.0.30","pages":{"Ohms lov":4,"Kabel":6},"starts":1})", 210);
    post("/telemetry", R"({"kind":"usage","uid":"u1","version":"1.0.30","pages":{},"starts":1})", 310);
    post("/bug", R"j({"key":"","text":"Knappen <Beregn> gør intet","contact":"ane@skole.dk","version":"1.0.30","edition":"Skoleudgave","page":"kabel","os":"Debian GNU/Linux 12 (x86_64)"})j", 120);
    post("/bug", R"({"text":"Stavefejl i ordlisten","contact":""})", 220);

    const server::ReportsSummary s = server::summariseReports(db->reports(0, 100));
    ASSERT_EQ(s.bugs.size(), 2u);
    EXPECT_EQ(s.bugs[0].text, "Stavefejl i ordlisten");
    EXPECT_EQ(s.bugs[1].page, "kabel");

    ASSERT_EQ(s.crashes.size(), 2u);
    EXPECT_EQ(s.crashes[0].signature, "exception 0x0000000b\nostrovalden!solve()");
    EXPECT_EQ(s.crashes[0].count, 2);
    EXPECT_EQ(s.crashes[0].versions, (std::set<std::string>{"1.0.29", "1.0.30"}));
    EXPECT_EQ(s.crashes[0].copies.size(), 2u);
    EXPECT_EQ(s.crashes[0].first, 100);
    EXPECT_EQ(s.crashes[0].last, 300);
    EXPECT_NE(s.crashes[0].example.find("at 0x18"), std::string::npos) << "the newest record is the example";
    EXPECT_EQ(s.crashes[1].signature, "exception 0x00000006\nostrovalden!draw()");

    ASSERT_EQ(s.pages.size(), 3u);
    EXPECT_EQ(s.pages[0].page, "Ohms lov");
    EXPECT_EQ(s.pages[0].visits, 7);
    EXPECT_EQ(s.pages[1].page, "Kabel");
    EXPECT_EQ(s.starts, 4);
    EXPECT_EQ(s.usageReports, 3u);
    EXPECT_EQ(s.copies, 2u);

    // Only what arrived since the given time.
    EXPECT_EQ(db->reports(205, 100).size(), 4u);
    EXPECT_EQ(db->reports(0, 3).size(), 3u);

    const std::string html = server::reportsPage({"", "Admin", s, 30});
    EXPECT_NE(html.find("Knappen &lt;Beregn&gt; gør intet"), std::string::npos) << "student text is escaped";
    EXPECT_NE(html.find("Fejlrapporter (2)"), std::string::npos);
    EXPECT_NE(html.find("Nedbrud (3)"), std::string::npos);
}

} // namespace
