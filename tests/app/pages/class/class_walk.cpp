// The student's half of the class walk (class_walk_test.py runs it between
// the teacher's steps in the browser): the real window and the real job on
// its thread against the class server named by OSTROVALDEN_SERVICE_URL,
// trusted through OSTROVALDEN_CA_FILE, with the class code the teacher's
// page showed in OSTROVALDEN_WALK_CODE.
#include "app/pages/class/opgaverpage.h"
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/shell/service.h"
#include "fl/circuit/model.h"
#include "store/datastore.h"
#include "store/keys.h"
#include "tests/app/fresh_app.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

class ClassWalk : public FreshAppTest {
  protected:
    void TearDown() override {
        fl::resetCurrentCircuitForTest();
        FreshAppTest::TearDown();
    }
    bool waitFor(const std::function<bool()>& done, int ms = 30000) {
        QElapsedTimer t;
        t.start();
        while (!done() && t.elapsed() < ms)
            QApplication::processEvents(QEventLoop::AllEvents, 10);
        return done();
    }
};

TEST_F(ClassWalk, studentsCopyFollowsTheTeacherAndHandsIn) {
    const QByteArray code = qgetenv("OSTROVALDEN_WALK_CODE");
    if (code.isEmpty()) GTEST_SKIP() << "run by class_walk_test.py against a class server";

    storeSet(key::ClassKey, Json(code.toStdString()));
    window = std::make_unique<app::MainWindow>();
    app::MainWindow& w = *window;
    app::ServiceJobs jobs(&w, dir.path());
    int applied = 0;
    QObject::connect(&jobs, &app::ServiceJobs::applied, [&] { ++applied; });
    w.setRefresh([&] { jobs.start(true); });

    // The start's job: the last notice on the one bar is the new task.
    jobs.start(false);
    ASSERT_TRUE(waitFor([&] { return applied == 1; }));
    EXPECT_FALSE(w.noticeBar()->isHidden());
    EXPECT_EQ(w.noticeLabel()->text().toStdString(),
              "<b>Ny opgave fra din lærer:</b> Blandet forbindelse – <a href=\"go:opgaver\">Åbn Opgaver fra "
              "læreren</a>");
    EXPECT_EQ(app::options().off, (std::set<std::string>{"ac_komp"}));
    EXPECT_EQ(app::options().profile, "egen");

    // "↻  Opdatér": one summary with the teacher's message.
    w.refreshButton()->click();
    ASSERT_TRUE(waitFor([&] { return applied == 2; }));
    const std::string summary = w.noticeLabel()->text().toStdString();
    EXPECT_NE(summary.find("<b>Besked fra din lærer:</b> Husk lommeregneren til prøven på fredag."),
              std::string::npos)
        << summary;
    EXPECT_EQ(w.refreshButton()->text(), "↻  Opdatér");

    // The notice's link leads to the card, with the teacher's circuit read.
    w.openLink("go:opgaver");
    auto* page = qobject_cast<app::OpgaverPage*>(w.currentPage());
    ASSERT_NE(page, nullptr);
    ASSERT_EQ(page->cards().size(), 1u);
    const app::OpgaverPage::TaskCard& card = page->cards()[0];
    ASSERT_NE(card.openButton, nullptr);

    // The hand-in.
    page->nameField()->setText("Ida <b>Elev</b>");
    card.answer->setText("I = 0,048 A");
    card.doneButton->click();
    EXPECT_TRUE(card.state->text().startsWith("Afleveret ")) << card.state->text().toStdString();
    EXPECT_TRUE(jobs.finish(5000));
}

} // namespace
