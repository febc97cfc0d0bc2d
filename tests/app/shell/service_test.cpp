// The class service's result in the window: the notices and the summary
// as the student reads them, the profile applied to the window, and the job
// run on its own thread while the window goes on.
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/shell/service.h"
#include "tests/app/fresh_app.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <atomic>
#include <thread>

// Results are written as designated initializers that leave every other
// member at its default, which is the point.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace {

using Set = std::set<std::string>;

std::string joined(const std::vector<app::Notice>& notices) {
    std::string out;
    for (const app::Notice& n : notices)
        out += n.html.toStdString() + " |" + n.id.toStdString() + "\n";
    return out;
}

TEST(ServiceNotices, startTellsEachThingOnceWithItsId) {
    struct Row {
        const char* name;
        net::ServiceResult result;
        bool tasksOpen;
        std::string expected;
    } rows[] = {
        {"a failed check-in is not told",
         {.outcome = 0, .text = "Ingen forbindelse til serveren."},
         true,
         ""},
        // The server's own word goes before the class's, so the class's stays on the bar.
        {"everything at once, escaped, in order",
         {.outcome = 1,
          .message = "Serveren lukker kl. 16",
          .classMsg = "Prøve <fredag> & tag lommeregner",
          .classMsgId = "m7",
          .newTasks = {"R<sub>1</sub>", "Spoler"},
          .newVersion = "1.0.31",
          .versionUrl = "https://skole.example/hent"},
         true,
         "<b>Besked:</b> Serveren lukker kl. 16 |msg:Serveren lukker kl. 16\n"
         "<b>Besked fra din lærer:</b> Prøve &lt;fredag&gt; &amp; tag lommeregner |class:m7\n"
         "<b>Nye opgaver fra din lærer:</b> R&lt;sub&gt;1&lt;/sub&gt;, Spoler – <a href=\"go:opgaver\">Åbn "
         "Opgaver fra læreren</a> |tasks:1764000000\n<b>Ny version 1.0.31 af Ostrovalden findes.</b> Du har "
         "1.0.30. <a href=\"https://skole.example/hent\">Hent den her</a>. |ver:1.0.31\n"},
        {"one task, a message without id, a version without link",
         {.outcome = 1, .classMsg = "Husk bog", .newTasks = {"Ohms lov"}, .newVersion = "1.1.0"},
         true,
         "<b>Besked fra din lærer:</b> Husk bog |class:Husk bog\n<b>Ny opgave fra din lærer:</b> Ohms lov – "
         "<a href=\"go:opgaver\">Åbn Opgaver fra læreren</a> |tasks:1764000000\n<b>Ny version 1.1.0 af "
         "Ostrovalden findes.</b> Du har 1.0.30. Kontakt sælgeren for at få den. |ver:1.1.0\n"},
        {"tasks closed by the teacher are not announced",
         {.outcome = 1, .newTasks = {"Ohms lov"}},
         false,
         ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(joined(app::serviceNotices(row.result, {}, QTime(9, 5), row.tasksOpen, 1764000000)),
                  row.expected);
    }
}

TEST(ServiceNotices, refreshAlwaysGivesOneSummary) {
    struct Row {
        const char* name;
        Set before;
        net::ServiceResult result;
        std::string expected;
    } rows[] = {
        {"two off, one on",
         {"ac_komp"},
         {.outcome = 1, .off = {"ac_trafo", "ac_motor"}},
         "<b>Opdateret 09:05.</b> Din lærer har åbnet: Kompensering. Slået fra: Transformer, Motorer. "},
        {"new tasks and the class message",
         {},
         {.outcome = 1, .classMsg = "<i>Godt</i>", .newTasks = {"A", "B"}},
         "<b>Opdateret 09:05.</b> Ingen ændringer fra din lærer. Nye opgaver: A, B – <a "
         "href=\"go:opgaver\">Åbn</a>. <b>Besked fra din lærer:</b> &lt;i&gt;Godt&lt;/i&gt;"},
        {"a refused code says why",
         {},
         {.outcome = -1, .text = "Klassekoden findes ikke."},
         "<b>Opdateret 09:05.</b> Ingen ændringer fra din lærer. Klassekoden findes ikke. "},
        {"no class code yet",
         {},
         {.outcome = 0, .noLogin = true},
         "<b>Du er ikke tilmeldt en klasse endnu.</b> Skriv klassekoden fra din lærer under <a "
         "href=\"go:opgaver\">Opgaver fra læreren</a> eller under ⚙ Indstillinger."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        net::ServiceResult r = row.result;
        r.force = true;
        const std::vector<app::Notice> notices = app::serviceNotices(r, row.before, QTime(9, 5), true, 0);
        ASSERT_EQ(notices.size(), 1u);
        EXPECT_EQ(notices[0].html.toStdString(), row.expected);
        EXPECT_EQ(notices[0].id, "");
    }
}

class ServiceJobsTest : public FreshAppTest {};

// The job runs on a thread of its own while the window goes on, and
// "↻  Opdatér" waits for its own; the result reaches the window: the profile
// in force, and the notice.
TEST_F(ServiceJobsTest, jobsRunBesideTheWindowAndTheirResultsReachIt) {
    app::MainWindow& w = open();
    app::ServiceJobs jobs(&w, dir.path());
    std::atomic<bool> release{false};
    std::thread::id jobThread;
    jobs.job = [&](const net::JobInput& in) {
        jobThread = std::this_thread::get_id();
        while (!release)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return net::ServiceResult{.outcome = 0,
                                  .text = "Ingen forbindelse til serveren.",
                                  .off = {"ac_komp"},
                                  .profile = "proeve",
                                  .force = in.force};
    };
    w.setRefresh([&] { jobs.start(true); });
    QPushButton* button = w.refreshButton();
    ASSERT_TRUE(button->isEnabled());
    button->click();
    EXPECT_FALSE(button->isEnabled());
    EXPECT_EQ(button->text(), "Henter…");
    w.navigate("kabel");
    EXPECT_EQ(w.currentRoute(), "kabel");
    QApplication::processEvents();
    EXPECT_FALSE(button->isEnabled());

    release = true;
    ASSERT_TRUE(QTest::qWaitFor([&] { return button->isEnabled(); }));
    EXPECT_NE(jobThread, std::this_thread::get_id());
    EXPECT_EQ(button->text(), "↻  Opdatér");
    EXPECT_EQ(app::options().off, (Set{"ac_komp"}));
    EXPECT_EQ(app::options().profile, "proeve");
    EXPECT_EQ(w.noticeLabel()->text(),
              "<b>Kunne ikke hente lærerens indstillinger.</b> Tjek internettet, og prøv "
              "igen. Ingen forbindelse til serveren.");
    EXPECT_TRUE(jobs.finish(1000));
}

} // namespace
