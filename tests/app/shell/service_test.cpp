// The class service's result in the window: the notices and the summary
// as the student reads them, the profile applied to the window, and the job
// run on its own thread while the window goes on.
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/shell/service.h"
#include "store/datastore.h"
#include "store/keys.h"
#include "tests/app/fresh_app.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>

#include <atomic>
#include <thread>

namespace {

using Set = std::set<std::string>;

net::ServiceResult answered() {
    net::ServiceResult r;
    r.outcome = 1;
    return r;
}

std::string joined(const std::vector<app::Notice>& notices) {
    std::string out;
    for (const app::Notice& n : notices) out += n.html.toStdString() + " |" + n.id.toStdString() + "\n";
    return out;
}

TEST(ServiceNotices, startTellsEachThingOnceWithItsId) {
    struct Row {
        const char* name;
        std::function<void(net::ServiceResult&)> change;
        bool tasksOpen;
        std::string expected;
    } rows[] = {
        {"nothing new", [](net::ServiceResult&) {}, true, ""},
        {"a failed check-in is not told", [](net::ServiceResult& r) { r.outcome = 0; r.text = "Ingen forbindelse til serveren."; },
         true, ""},
        {"class message with its id, escaped",
         [](net::ServiceResult& r) { r.classMsg = "Prøve <fredag> & tag lommeregner"; r.classMsgId = "m7"; }, true,
         "<b>Besked fra din lærer:</b> Prøve &lt;fredag&gt; &amp; tag lommeregner |class:m7\n"},
        {"a message without id is its own id", [](net::ServiceResult& r) { r.classMsg = "Husk bog"; }, true,
         "<b>Besked fra din lærer:</b> Husk bog |class:Husk bog\n"},
        {"one new task", [](net::ServiceResult& r) { r.newTasks = {"Ohms lov"}; }, true,
         "<b>Ny opgave fra din lærer:</b> Ohms lov – <a href=\"go:opgaver\">Åbn Opgaver fra læreren</a> "
         "|tasks:1764000000\n"},
        {"two new tasks, escaped",
         [](net::ServiceResult& r) { r.newTasks = {"R<sub>1</sub>", "Spoler"}; }, true,
         "<b>Nye opgaver fra din lærer:</b> R&lt;sub&gt;1&lt;/sub&gt;, Spoler – <a href=\"go:opgaver\">Åbn "
         "Opgaver fra læreren</a> |tasks:1764000000\n"},
        {"tasks closed by the teacher are not announced", [](net::ServiceResult& r) { r.newTasks = {"Ohms lov"}; },
         false, ""},
        {"new version with a link",
         [](net::ServiceResult& r) { r.newVersion = "1.0.31"; r.versionUrl = "https://skole.example/hent"; }, true,
         "<b>Ny version 1.0.31 af Ostrovalden findes.</b> Du har 1.0.30. <a "
         "href=\"https://skole.example/hent\">Hent den her</a>. |ver:1.0.31\n"},
        {"new version without a link", [](net::ServiceResult& r) { r.newVersion = "1.1.0"; }, true,
         "<b>Ny version 1.1.0 af Ostrovalden findes.</b> Du har 1.0.30. Kontakt sælgeren for at få den. "
         "|ver:1.1.0\n"},
        {"the server's message goes before the class's, so the class's stays on the bar",
         [](net::ServiceResult& r) { r.message = "Serveren lukker kl. 16"; r.classMsg = "Hej"; r.classMsgId = "m1"; },
         true, "<b>Besked:</b> Serveren lukker kl. 16 |msg:Serveren lukker kl. 16\n<b>Besked fra din lærer:</b> Hej |class:m1\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        net::ServiceResult r = answered();
        row.change(r);
        EXPECT_EQ(joined(app::serviceNotices(r, {}, QTime(9, 5), row.tasksOpen, 1764000000)), row.expected);
    }
}

TEST(ServiceNotices, refreshAlwaysGivesOneSummary) {
    struct Row {
        const char* name;
        Set before;
        std::function<void(net::ServiceResult&)> change;
        std::string expected;
    } rows[] = {
        {"no change", {}, [](net::ServiceResult&) {}, "<b>Opdateret 09:05.</b> Ingen ændringer fra din lærer. "},
        {"two off, one on", {"ac_komp"},
         [](net::ServiceResult& r) { r.off = {"ac_trafo", "ac_motor"}; },
         "<b>Opdateret 09:05.</b> Din lærer har åbnet: Kompensering. Slået fra: Transformer, Motorer. "},
        {"an unknown id changes nothing told", {}, [](net::ServiceResult& r) { r.off = {"nosuch"}; },
         "<b>Opdateret 09:05.</b> Ingen ændringer fra din lærer. "},
        {"new tasks and the class message",
         {},
         [](net::ServiceResult& r) {
             r.newTasks = {"A", "B"};
             r.classMsg = "<i>Godt</i>";
         },
         "<b>Opdateret 09:05.</b> Ingen ændringer fra din lærer. Nye opgaver: A, B – <a href=\"go:opgaver\">Åbn</a>. "
         "<b>Besked fra din lærer:</b> &lt;i&gt;Godt&lt;/i&gt;"},
        {"no answer", {}, [](net::ServiceResult& r) { r.outcome = 0; r.text = "Serveren svarede med en fejl (503)."; },
         "<b>Kunne ikke hente lærerens indstillinger.</b> Tjek internettet, og prøv igen. Serveren svarede med en "
         "fejl (503)."},
        {"a refused code says why", {},
         [](net::ServiceResult& r) { r.outcome = -1; r.text = "Klassekoden findes ikke."; },
         "<b>Opdateret 09:05.</b> Ingen ændringer fra din lærer. Klassekoden findes ikke. "},
        {"no class code yet", {}, [](net::ServiceResult& r) { r.outcome = 0; r.noLogin = true; },
         "<b>Du er ikke tilmeldt en klasse endnu.</b> Skriv klassekoden fra din lærer under <a "
         "href=\"go:opgaver\">Opgaver fra læreren</a> eller under ⚙ Indstillinger."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        net::ServiceResult r = answered();
        r.force = true;
        row.change(r);
        const std::vector<app::Notice> notices = app::serviceNotices(r, row.before, QTime(9, 5), true, 0);
        ASSERT_EQ(notices.size(), 1u);
        EXPECT_EQ(notices[0].html.toStdString(), row.expected);
        EXPECT_EQ(notices[0].id, "");
    }
}

void waitFor(const std::function<bool()>& done, int ms = 5000) {
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms) QApplication::processEvents(QEventLoop::AllEvents, 10);
}

class ServiceJobsTest : public FreshAppTest {};

TEST_F(ServiceJobsTest, resultOfTheJobThreadIsAppliedToTheWindow) {
    window = std::make_unique<app::MainWindow>();
    app::MainWindow& w = *window;
    w.navigate("komp");
    app::ServiceJobs jobs(&w, dir.path());
    std::atomic<bool> release{false};
    std::thread::id jobThread;
    jobs.job = [&](const net::JobInput& in) {
        jobThread = std::this_thread::get_id();
        while (!release) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        net::ServiceResult r = answered();
        r.force = in.force;
        r.off = {"ac_komp"};
        r.profile = "proeve";
        r.classMsg = "Prøve i dag";
        r.classMsgId = "p1";
        return r;
    };
    int applied = 0;
    QObject::connect(&jobs, &app::ServiceJobs::applied, [&] { ++applied; });
    jobs.start(false);

    // The window goes on while the job waits on its network.
    w.navigate("kabel");
    EXPECT_EQ(w.currentRoute(), "kabel");
    QApplication::processEvents();
    EXPECT_EQ(applied, 0);

    release = true;
    waitFor([&] { return applied == 1; });
    ASSERT_EQ(applied, 1);
    EXPECT_NE(jobThread, std::this_thread::get_id());
    EXPECT_EQ(app::options().off, (Set{"ac_komp"}));
    EXPECT_EQ(app::options().profile, "proeve");
    EXPECT_FALSE(w.noticeBar()->isHidden());
    EXPECT_EQ(w.noticeLabel()->text(), "<b>Besked fra din lærer:</b> Prøve i dag");
    w.navigate("komp");
    EXPECT_EQ(w.currentRoute(), "laast");
    EXPECT_TRUE(jobs.finish(1000));
}

TEST_F(ServiceJobsTest, refreshButtonWaitsForItsResultAndShowsTheSummary) {
    window = std::make_unique<app::MainWindow>();
    app::MainWindow& w = *window;
    app::ServiceJobs jobs(&w, dir.path());
    std::atomic<int> started{0};
    std::atomic<bool> release{false};
    jobs.job = [&](const net::JobInput& in) {
        ++started;
        while (!release) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        net::ServiceResult r;
        r.force = in.force;
        r.text = "Ingen forbindelse til serveren.";
        return r;
    };
    w.setRefresh([&] { jobs.start(true); });
    QPushButton* button = w.refreshButton();
    ASSERT_TRUE(button->isEnabled());
    button->click();
    button->click(); // disabled: no second job
    EXPECT_FALSE(button->isEnabled());
    EXPECT_EQ(button->text(), "Henter…");

    release = true;
    waitFor([&] { return button->isEnabled(); });
    EXPECT_EQ(started, 1);
    EXPECT_EQ(button->text(), "↻  Opdatér");
    EXPECT_EQ(w.noticeLabel()->text(), "<b>Kunne ikke hente lærerens indstillinger.</b> Tjek internettet, og prøv "
                                       "igen. Ingen forbindelse til serveren.");
    EXPECT_TRUE(jobs.finish(1000));
}

TEST_F(ServiceJobsTest, noNetworkAtStartLeavesTheLastProfileAndNoNotice) {
    // The last check-in closed compensation; this start reaches nobody.
    Json profile = Json::object();
    profile["off"] = Json::array();
    profile["off"].push(Json("ac_komp"));
    profile["profile"] = Json("egen");
    storeSet(key::ClassProfile, profile);
    storeSet(key::ClassKey, Json("KLAS2345"));
    app::loadClassProfile();
    window = std::make_unique<app::MainWindow>();
    app::ServiceJobs jobs(window.get(), dir.path());
    bool applied = false;
    QObject::connect(&jobs, &app::ServiceJobs::applied, [&] { applied = true; });
    qputenv("OSTROVALDEN_SERVICE_URL", "https://127.0.0.1:1/api");
    jobs.start(false);
    waitFor([&] { return applied; }, 20000);
    qunsetenv("OSTROVALDEN_SERVICE_URL");
    ASSERT_TRUE(applied);
    EXPECT_TRUE(window->noticeBar()->isHidden());
    EXPECT_EQ(app::options().off, (Set{"ac_komp"}));
    window->navigate("komp");
    EXPECT_EQ(window->currentRoute(), "laast");
}

} // namespace
