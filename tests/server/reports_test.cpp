// The administrator's summary: reports received through the API, crash
// records grouped by the frames that matter, usage summed per page.
#include "server/reports.h"

#include "server/api.h"
#include "tests/server/temp_db.h"

namespace {

class ReportsFromTheApi : public TempDbTest {
  protected:
    void post(const std::string& path, const std::string& body, double at) {
        EXPECT_EQ(server::handleApi(*db, {}, path, body, at).status, 200) << body;
    }
    void crash(const std::string& uid, const std::string& version, const std::string& record, double at) {
        Json body = Json::object();
        body["kind"] = Json("crash");
        body["uid"] = Json(uid);
        body["version"] = Json(version);
        body["text"] = Json(record);
        post("/telemetry", Json::dump(body, 0), at);
    }
};

// A crash's signature is its top three frames, without offsets, source lines
// or the runtime's own frames; records of one signature make one group.
TEST_F(ReportsFromTheApi, bugsCrashesAndUsageAreSummarised) {
    const std::string segv = "Ostrovalden 1.0.30 crash: exception 0x0000000b at ";
    crash("u1", "1.0.29", segv + "0x10\n  #0 ostrovalden!solve()+0x1c  (a.cpp:3)\n", 100);
    crash("u2", "1.0.30",
          "Ostrovalden 1.0.30 crash: exception 0x00000006 at 0x7f\n"
          "  #0 libc.so.6!abort+0xd3  (abort.c:79)\n"
          "  #1 libstdc++.so.6!__cxa_throw+0x3b\n"
          "  #2 ostrovalden!draw()+0x8\n"
          "  #3 libQt6Widgets.so.6!QApplication::notify(QObject*, QEvent*)+0x11\n"
          "  #4 ostrovalden+0x2a4f0\n"
          "  #5 ostrovalden!main+0x1\n",
          200);
    crash("u2", "1.0.30", segv + "0x18\n  #0 ostrovalden!solve()+0x24  (a.cpp:4)\n", 300);
    crash("u3", "1.0.30", "Hej med dig\n  #0 x!y+0x1\n", 50);
    post("/telemetry",
         R"({"kind":"usage","uid":"u1","version":"1.0.30","pages":{"Ohms lov":3,"Forside":1},"starts":2})",
         110);
    post("/telemetry",
         R"({"kind":"usage","uid":"u2","version":"1.0.30","pages":{"Ohms lov":4,"Kabel":6},"starts":1})",
         210);
    post("/telemetry", R"({"kind":"usage","uid":"u1","version":"1.0.30","pages":{},"starts":1})", 310);
    post(
        "/bug",
        R"j({"key":"","text":"Knappen <Beregn> gør intet","contact":"ane@skole.dk","version":"1.0.30","edition":"Skoleudgave","page":"kabel","os":"Debian GNU/Linux 12 (x86_64)"})j",
        120);
    post("/bug", R"({"text":"Stavefejl i ordlisten","contact":""})", 220);

    const server::ReportsSummary s = server::summariseReports(db->reports(0, 100));
    ASSERT_EQ(s.bugs.size(), 2u);
    EXPECT_EQ(s.bugs[0].text, "Stavefejl i ordlisten");
    EXPECT_EQ(s.bugs[1].page, "kabel");

    ASSERT_EQ(s.crashes.size(), 3u);
    EXPECT_EQ(s.crashes[0].signature, "exception 0x0000000b\nostrovalden!solve()");
    EXPECT_EQ(s.crashes[0].count, 2);
    EXPECT_EQ(s.crashes[0].versions, (std::set<std::string>{"1.0.29", "1.0.30"}));
    EXPECT_EQ(s.crashes[0].copies.size(), 2u);
    EXPECT_EQ(s.crashes[0].first, 100);
    EXPECT_EQ(s.crashes[0].last, 300);
    EXPECT_NE(s.crashes[0].example.find("at 0x18"), std::string::npos) << "the newest record is the example";
    EXPECT_EQ(s.crashes[1].signature, "exception 0x00000006\nostrovalden!draw()\n"
                                      "libQt6Widgets.so.6!QApplication::notify("
                                      "QObject*, QEvent*)\nostrovalden+0x2a4f0");
    EXPECT_EQ(s.crashes[2].signature, "(ulæselig rapport)");

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
    EXPECT_NE(html.find("Nedbrud (4)"), std::string::npos);
}

} // namespace
