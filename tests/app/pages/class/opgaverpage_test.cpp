// The task page as a student uses it: cards from the stored list, the
// buttons a task's mode and the teacher's locks allow, opening a circuit,
// handing in and asking, and fetching again, against a fake network.
#include "app/pages/circuit/kredspage.h"
#include "app/pages/class/opgaverpage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/options.h"
#include "fl/circuit/json.h"
#include "fl/circuit/model.h"
#include "store/datastore.h"
#include "store/keys.h"
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

const char* const kDc =
    R"({"mode":"dc","src":{"U":"12"},"root":{"k":"S","ch":[{"k":"R","v":"100"},{"k":"R","v":"220"}]}})";
const char* const kAc =
    R"({"mode":"ac","src":{"U":"230","f":"50"},"root":{"k":"S","ch":[{"k":"R","v":"10"},{"k":"C","v":"100u"}]}})";

Json task(const std::string& id, const std::string& mode, const char* circuit = nullptr) {
    Json t = Json::object();
    t["id"] = Json(id);
    t["title"] = Json("Opgave " + id);
    if (!mode.empty()) t["mode"] = Json(mode);
    t["text"] = Json("Find I.\nVis <b>mellemregninger</b>.");
    t["due"] = Json("4.12.2026");
    if (circuit) {
        Json c;
        EXPECT_TRUE(Json::tryParse(circuit, c));
        t["circuit"] = c;
    }
    return t;
}

void storeTasks(const std::vector<Json>& tasks, double updated = 5) {
    Json list = Json::object();
    list["tasks"] = Json::array();
    for (const Json& t : tasks)
        list["tasks"].push(t);
    list["updated"] = Json(updated);
    storeSet(key::ClassTasks, list);
    storeSet(key::TasksUpdated, Json(updated));
}

class OpgaverTest : public FreshAppTest {
  protected:
    void TearDown() override {
        page.reset();
        fl::resetCurrentCircuitForTest();
        FreshAppTest::TearDown();
    }
    app::OpgaverPage& open() {
        page = std::make_unique<app::OpgaverPage>(&host);
        page->poster = [this](const std::string& path, const std::string& body, std::string& out,
                              std::string& err) {
            calls.push_back(path);
            bodies.push_back(body);
            if (!reply.empty()) {
                out = reply;
                return true;
            }
            err = "Ingen forbindelse til serveren.";
            return false;
        };
        return *page;
    }

    app::test::FakeHost host;
    std::unique_ptr<app::OpgaverPage> page;
    std::vector<std::string> calls, bodies;
    std::string reply;
};

TEST_F(OpgaverTest, buttonsFollowTheModeAndTheTeachersLocks) {
    const char* const dcOff = "Din lærer har slået jævnstrøm i Tegn et kredsløb fra lige nu, så kredsløbet "
                              "kan kun vises som tegning.";
    struct Row {
        const char* name;
        const char* mode;
        const char* circuit;
        std::set<std::string> off;
        bool open, guide;
        const char* primary; // the one primary button among the circuit's
        const char* sentence;
    } rows[] = {
        {"both", "both", kDc, {}, true, true, "Åbn i Tegn et kredsløb", ""},
        {"missing mode counts as both", "", kDc, {}, true, true, "Åbn i Tegn et kredsløb", ""},
        {"view: the drawing only, primary, no sentence", "view", kDc, {}, false, false, "Vis tegningen", ""},
        {"guide", "guide", kDc, {}, false, true, "Åbn fremgangsmåden", ""},
        {"full", "full", kAc, {}, true, false, "Åbn i Tegn et kredsløb", ""},
        {"both with the direct-current pages off", "both", kDc, {"jaevn"}, false, false, "", dcOff},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        app::options().off = row.off;
        storeTasks({task("t1", row.mode, row.circuit)});
        open();
        ASSERT_EQ(page->cards().size(), 1u);
        const auto& card = page->cards()[0];
        ASSERT_NE(card.drawingButton, nullptr);
        EXPECT_EQ(card.openButton != nullptr, row.open);
        EXPECT_EQ(card.guideButton != nullptr, row.guide);
        std::string primary;
        for (QPushButton* b : {card.drawingButton, card.openButton, card.guideButton})
            if (b && b->property("class").toString() == "primary") primary += b->text().toStdString();
        EXPECT_EQ(primary, row.primary);
        EXPECT_EQ(card.notice ? card.notice->text().toStdString() : "", row.sentence);
        EXPECT_TRUE(card.drawing->isHidden());
    }
}

TEST_F(OpgaverTest, cardShowsTitleDueCircuitLineAndEscapedText) {
    Json unreadable = task("t3", "both");
    unreadable["circuit"] = Json::object();
    unreadable["circuit"]["root"] = Json("ikke et kredsløb");
    storeTasks({task("t1", "guide", kAc), task("t2", "", nullptr), unreadable});
    open();
    ASSERT_EQ(page->cards().size(), 3u);
    QStringList texts;
    for (QLabel* l : page->cards()[0].card->findChildren<QLabel*>())
        texts << l->text();
    EXPECT_TRUE(texts.contains("Opgave t1"));
    EXPECT_TRUE(texts.contains("Afleveres 4.12.2026"));
    EXPECT_TRUE(texts.contains("Kredsløb vedhæftet (vekselstrøm · med fremgangsmåden)"));
    EXPECT_TRUE(texts.contains("Find I.<br>Vis &lt;b&gt;mellemregninger&lt;/b&gt;."));
    EXPECT_EQ(page->cards()[1].drawingButton, nullptr) << "a task without a circuit has no drawing";
    ASSERT_NE(page->cards()[2].notice, nullptr);
    EXPECT_EQ(page->cards()[2].notice->text(), "Kredsløbet kunne ikke læses.");
    EXPECT_EQ(page->cards()[2].openButton, nullptr);
}

TEST_F(OpgaverTest, handInNeedsCodeAndNameAndASecondOneOverwrites) {
    storeTasks({task("t1", "both", kDc)});
    open();
    const auto& card = page->cards()[0];
    EXPECT_EQ(card.state->text(), "Ikke afleveret");
    card.answer->setText("I = 0,04 A");

    card.doneButton->click();
    EXPECT_EQ(card.state->text(), "Skriv klassekoden fra din lærer og dit navn først – så kan du aflevere.");
    page->codeField()->setText("KLAS-2345");
    card.doneButton->click();
    EXPECT_EQ(card.state->text(), "Skriv dit navn øverst først.");
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(storeGetString(key::ClassKey), "KLAS-2345");

    page->nameField()->setText("Ida");
    card.doneButton->click();
    EXPECT_EQ(card.state->text(), "Kunne ikke sende: Ingen forbindelse til serveren.");
    EXPECT_TRUE(storeGet(key::TaskAnswers).at("t1").isNull()) << "nothing is kept of a failed hand-in";

    reply = "{}";
    card.doneButton->click();
    EXPECT_TRUE(card.state->text().startsWith("Afleveret ")) << card.state->text().toStdString();
    card.answer->setText("Skal R2 med?");
    card.questionButton->click();
    EXPECT_TRUE(card.state->text().startsWith("Sendt som spørgsmål "));
    EXPECT_EQ(card.answer->text(), "Skal R2 med?") << "the answer stays in its field";
    const Json record = storeGet(key::TaskAnswers).at("t1");
    EXPECT_EQ(record.at("status").asString(), "question");
    EXPECT_EQ(record.at("answer").asString(), "Skal R2 med?");
    EXPECT_EQ(storeGetString(key::StudentName), "Ida");
    EXPECT_EQ(calls, (std::vector<std::string>{"/tasks/answer", "/tasks/answer", "/tasks/answer"}));

    // A new page reads the record back.
    open();
    EXPECT_TRUE(page->cards()[0].state->text().startsWith("Sendt som spørgsmål "));
}

// The empty list tells whether anything was ever fetched.
TEST_F(OpgaverTest, fetchingAgainRebuildsOrSaysWhy) {
    storeSet(key::ClassKey, Json("KLAS2345"));
    EXPECT_EQ(
        open().emptyCard()->findChild<QLabel*>()->text(),
        "Ingen opgaver endnu. Opgaverne hentes, når programmet starter med internet – eller tryk \"Hent "
        "opgaver igen\".");
    struct Row {
        const char* name;
        std::string reply;
        std::string status; // "" for the success line
        size_t cards;
    } rows[] = {
        {"no network", "", "Kunne ikke hente opgaverne: Ingen forbindelse til serveren.", 0},
        {"no tasks array", R"({"updated":3})", "Uventet svar fra serveren.", 0},
        {"none sent", R"({"updated":4,"tasks":[]})", "", 0},
        {"two tasks",
         R"({"updated":9,"tasks":[{"id":"a","title":"A","text":"x"},{"id":"b","title":"B","text":"y"}]})", "",
         2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        reply = row.reply;
        page->refetchButton()->click();
        if (row.status.empty())
            EXPECT_TRUE(page->statusLine()->text().startsWith("Opgaverne er hentet "))
                << page->statusLine()->text().toStdString();
        else
            EXPECT_EQ(page->statusLine()->text().toStdString(), row.status);
        EXPECT_EQ(page->cards().size(), row.cards);
        if (row.status.empty() && !row.cards) {
            EXPECT_EQ(page->emptyCard()->findChild<QLabel*>()->text(),
                      "Din lærer har ikke sendt nogen opgaver lige nu.");
        }
    }
    EXPECT_EQ(storeGet(key::TasksUpdated).asNumber(0), 9);
    EXPECT_TRUE(storeGet(key::TasksSeen).has("a")) << "what is on screen counts as seen";
}

TEST_F(OpgaverTest, enteringRebuildsOnlyWhenTheListChangedAndMarksTasksSeen) {
    storeTasks({task("t1", "view", kDc)}, 5);
    open();
    const app::Card* first = page->cards()[0].card;
    page->onEnter();
    EXPECT_EQ(page->cards()[0].card, first);
    EXPECT_TRUE(storeGet(key::TasksSeen).has("t1"));

    storeTasks({task("t1", "view", kDc), task("t2", "full", kDc)}, 6); // the job fetched anew
    page->onEnter();
    ASSERT_EQ(page->cards().size(), 2u);
    EXPECT_TRUE(storeGet(key::TasksSeen).has("t2"));
}

// The walk a student takes: the teacher's task card, its drawing shown and
// hidden, "Åbn i Tegn et kredsløb", and the real circuit page with the task's
// drawing and parts, no sheet of what the page showed before; the guide has a
// page of its own.
TEST_F(OpgaverTest, aTaskCircuitOpensOnTheCircuitPageWithoutTheOldSheet) {
    storeTasks({task("t1", "both", kAc)});
    FreshAppTest::open().navigate("kredsac");
    auto* kreds = current<app::KredsPage>();
    ASSERT_NE(kreds, nullptr);
    kreds->button("Opgaveark")->click();
    ASSERT_TRUE(kreds->resultArea()->view()->hasContent());

    window->navigate("opgaver");
    QApplication::processEvents();
    auto* tasks = current<app::OpgaverPage>();
    ASSERT_NE(tasks, nullptr);
    const auto& card = tasks->cards()[0];
    // The drawing takes its room when shown.
    card.drawingButton->click();
    QApplication::processEvents();
    EXPECT_GT(card.drawing->height(), 100);
    EXPECT_EQ(card.drawingButton->text(), "Skjul tegningen");
    card.drawingButton->click();
    EXPECT_TRUE(card.drawing->isHidden());
    EXPECT_EQ(card.drawingButton->text(), "Vis tegningen");
    const fl::Circuit wanted = *card.circuit;
    card.openButton->click();
    QApplication::processEvents();

    ASSERT_EQ(window->currentPage(), kreds);
    EXPECT_EQ(fl::toText(fl::currentCircuit()), fl::toText(wanted));
    fl::Circuit stored;
    ASSERT_TRUE(fl::fromJson(storeGet(key::KredsAc), stored));
    EXPECT_EQ(fl::toText(stored), fl::toText(wanted));
    EXPECT_FALSE(kreds->resultArea()->view()->hasContent());
    const fl::Circuit& shown = fl::currentCircuit();
    ASSERT_EQ(shown.root->ch.size(), 2u);
    ASSERT_NE(kreds->partField(shown.root->ch[1]->id, "v"), nullptr);
    EXPECT_EQ(kreds->partField(shown.root->ch[1]->id, "v")->text(), "100u");

    window->navigate("opgaver");
    tasks->cards()[0].guideButton->click();
    EXPECT_EQ(window->currentRoute(), "kredsguideac");
}

} // namespace
