// The circuit page as a student uses it: a circuit built with the mouse from
// the home page, values typed, the walkthrough and the guide read; the two
// currents each keeping their circuit; paste, copy and the saved list; fix
// chips; a teacher's lock.
#include "tests/app/fake_host.h"
#include "tests/app/fresh_app.h"
#include "tests/app/pages/tools/driving.h"

#include "app/pages/circuit/circuiteditor.h"
#include "app/pages/circuit/kredspage.h"
#include "app/pages/formulas/homepage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/widgets/valuefield.h"
#include "fl/circuit/json.h"
#include "fl/expr/markup.h"
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

using app::test::clickLink;
using app::test::contains;
using app::test::sheetOf;
using app::test::type;

// The id of the node the drawing names `name`.
std::string idOf(const std::string& name) {
    std::string id;
    fl::walk(fl::currentCircuit().root, [&](const fl::CNodePtr& n) {
        if (n->name == name) id = n->id;
    });
    return id;
}

void clickButton(app::KredsPage* page, const QString& text) {
    QPushButton* b = page->button(text);
    ASSERT_NE(b, nullptr) << text.toStdString();
    QTest::mouseClick(b, Qt::LeftButton);
}

// Presses the main button and lets the zero timer run the work.
void run(app::KredsPage* page) {
    QTest::mouseClick(page->mainButton(), Qt::LeftButton);
    EXPECT_EQ(page->mainButton()->text(), "Regner…");
    QTRY_VERIFY(page->mainButton()->isEnabled());
}

// R1 in series with R2 ∥ R3, with values as text: the circuit of the lesson.
fl::Circuit lesson(const char* mode = "dc") {
    fl::Circuit c = fl::defaultCircuit(mode);
    auto r = [](const char* v) {
        fl::CNodePtr n = fl::makeNode("R");
        n->v = v;
        return n;
    };
    fl::CNodePtr p = fl::makeNode("P");
    p->ch = {r("220"), r("")};
    p->ch[1]->I = "0,5";
    c.root->ch = {r("100"), p};
    c.src["U"] = "230";
    return c;
}

class KredsPageTest : public FreshAppTest {
  protected:
    void SetUp() override {
        FreshAppTest::SetUp();
        fl::resetCurrentCircuitForTest();
    }
    void TearDown() override {
        pages.clear();
        fl::resetCurrentCircuitForTest();
        FreshAppTest::TearDown();
    }
    app::KredsPage* page(bool guide, bool ac) {
        pages.push_back(std::make_unique<app::KredsPage>(guide, ac, &host));
        pages.back()->resize(1000, 900);
        pages.back()->show();
        return pages.back().get();
    }
    app::test::FakeHost host;
    std::vector<std::unique_ptr<app::KredsPage>> pages;
};

TEST_F(KredsPageTest, studentBuildsTheLessonCircuitFromHomeAndEveryNumberOfTheWalkthroughIsRight) {
    open();
    auto* home = current<app::HomePage>();
    ASSERT_NE(home, nullptr);
    ASSERT_TRUE(clickLink(home->view(), "go:kreds"));
    auto* kreds = current<app::KredsPage>();
    ASSERT_NE(kreds, nullptr);
    EXPECT_EQ(window->windowTitle(), "Tegn et kredsløb – jævnstrøm – Ostrovalden Skole");
    QStringList words;
    for (const QLabel* l : kreds->findChildren<QLabel*>())
        words << l->text();
    EXPECT_TRUE(words.contains("Tegn et kredsløb, jævnstrøm"));
    EXPECT_TRUE(words.contains("Kredsløb – jævnstrøm"));

    // The default drawing holds R1 alone; click its middle to select it, add
    // R2 in series, then R3 parallel to R2.
    const fl::HitBox r1 = kreds->editor()->hitBoxes().at(0);
    QTest::mouseClick(kreds->editor(), Qt::LeftButton, {},
                      kreds->editor()->toWidget({r1.x + r1.w / 2, r1.y + r1.h / 2}).toPoint());
    EXPECT_EQ(kreds->selectionLabel()->text(), "Valgt: <b>R1 (Modstand)</b>");
    clickButton(kreds, "+ Modstand i serie");
    EXPECT_EQ(kreds->selectionLabel()->text(), "Valgt: <b>R2 (Modstand)</b>");
    clickButton(kreds, "+ Modstand parallelt");
    EXPECT_EQ(kreds->selectionLabel()->text(), "Valgt: <b>R3 (Modstand)</b>");
    EXPECT_EQ(kreds->editor()->hitBoxes().size(), 4u); // three resistors and the frame of group A

    type(kreds->sourceField("U")->edit, "230");
    type(kreds->partField(idOf("R1"), "v"), "100");
    type(kreds->partField(idOf("R2"), "v"), "220");
    type(kreds->partField(idOf("R3"), "I"), "0,5");
    run(kreds);

    // By hand: U_A·(1/220 + 1/R3)·100 + U_A = 230 with U_A = 0,5·R3 gives
    // R3 = 247,5 Ω and U_A = 123,75 V.
    EXPECT_TRUE(contains(sheetOf(kreds), "R3247,5 Ω123,75 V0,5 A61,875 W")) << sheetOf(kreds);
    const std::string& html = kreds->resultArea()->view()->markup();
    // The fractions of the steps are images of the same rendering pass: each
    // is drawn, none is the blank of a missing one.
    QApplication::processEvents();
    const auto& images = kreds->resultArea()->view()->images();
    int maths = 0;
    for (size_t at = html.find("src=\"m:"); at != std::string::npos; at = html.find("src=\"m:", at + 1)) {
        const QString name = QString::fromStdString(html.substr(at + 5, html.find('"', at + 5) - at - 5));
        ++maths;
        ASSERT_TRUE(images.contains(name)) << name.toStdString();
        EXPECT_GT(images.value(name).value<QImage>().width(), 1) << name.toStdString();
    }
    EXPECT_GE(maths, 3);
    // The model keeps what was typed, as typed, and the store has it.
    EXPECT_EQ(fl::currentCircuit().src["U"], "230");
    fl::Circuit stored;
    ASSERT_TRUE(fl::fromJson(DataStore::instance().get("kreds"), stored));
    EXPECT_EQ(fl::toText(stored), fl::toText(fl::currentCircuit()));

    // The guide to the same circuit gives the formulas and never the numbers.
    window->navigate("kredsguide");
    auto* guide = current<app::KredsPage>();
    ASSERT_NE(guide, nullptr);
    EXPECT_EQ(guide->mainButton()->text(), "Vis fremgangsmåden");
    run(guide);
    EXPECT_FALSE(sheetOf(guide).empty());
    EXPECT_FALSE(contains(sheetOf(guide), "247,5"));
}

TEST_F(KredsPageTest, unreadableFieldsAreMarkedAndLinksAndQuestionMarksAreNot) {
    struct Row {
        const char* column;
        const char* text;
        bool bad;
    };
    const Row rows[] = {{"v", "4k7", false},  {"v", "=R1", false}, {"v", "?", true},
                        {"U", "12/4", false}, {"I", "1,,2", true}, {"r", "?", false}};
    fl::Circuit c = fl::defaultCircuit("ac");
    fl::CNodePtr coil = fl::makeNode("L");
    c.root->ch.push_back(coil);
    fl::setCircuit(c);
    app::KredsPage* p = page(false, true);
    for (const Row& r : rows) {
        SCOPED_TRACE(std::string(r.column) + " " + r.text);
        QLineEdit* e = p->partField(coil->id, r.column);
        ASSERT_NE(e, nullptr);
        type(e, QString::fromUtf8(r.text));
        EXPECT_EQ(e->property("class").toString() == "err", r.bad);
        fl::CNodePtr n, parent;
        ASSERT_TRUE(fl::find(fl::currentCircuit().root, coil->id, &n, &parent));
        const std::string& member = std::string(r.column) == "v"   ? n->v
                                    : std::string(r.column) == "r" ? n->r
                                    : std::string(r.column) == "U" ? n->U
                                                                   : n->I;
        EXPECT_EQ(member, r.text); // kept as typed, bad or not
    }
    type(p->sourceField("f")->edit, "5O");
    EXPECT_EQ(p->sourceField("f")->edit->property("class").toString(), "err");
}

// That each current keeps its own circuit is the model's test; here the
// buttons switch, the page shows the circuit it comes back to, and a current
// the teacher closed is refused with the teacher's message.
TEST_F(KredsPageTest, eachCurrentKeepsItsOwnCircuitAcrossTheSwitchUnlessItIsClosed) {
    fl::setCircuit(lesson());
    app::KredsPage* dc = page(false, false);
    QTest::mouseClick(dc->button("Vekselstrøm (AC)"), Qt::LeftButton);
    EXPECT_EQ(host.routes, std::vector<QString>{"kredsac"});
    EXPECT_EQ(fl::currentCircuit().mode, "ac");
    app::KredsPage* ac = page(false, true);
    ac->onEnter();
    QTest::mouseClick(ac->button("Jævnstrøm (DC)"), Qt::LeftButton);
    EXPECT_EQ(host.routes.back(), "kreds");
    dc->onEnter();
    ASSERT_NE(dc->partField(idOf("R3"), "I"), nullptr);
    EXPECT_EQ(dc->partField(idOf("R3"), "I")->text(), "0,5");

    app::options().off = {"veksel"};
    const std::string before = fl::toText(fl::currentCircuit());
    QTest::mouseClick(dc->button("Vekselstrøm (AC)"), Qt::LeftButton);
    EXPECT_EQ(host.routes.size(), 2u);
    EXPECT_EQ(sheetOf(dc), "Det er et vekselstrømskredsløb, og din lærer har slået vekselstrøm fra.");
    EXPECT_TRUE(dc->openElsewhere(lesson("ac")));
    EXPECT_EQ(fl::toText(fl::currentCircuit()), before);
    open().navigate("kredsac");
    EXPECT_EQ(window->currentRoute(), "laast");
    window->navigate("kreds");
    EXPECT_EQ(window->currentRoute(), "kreds");
}

TEST_F(KredsPageTest, pasteLoadsACircuitMovesAnotherCurrentsAndRefusesEverythingElse) {
    app::KredsPage* p = page(false, false);
    const std::string before = fl::toText(fl::currentCircuit());
    const std::string refusal = "Udklipsholderen indeholder ikke et kredsløb fra Ostrovalden.";
    // Beyond half a megabyte even a well-formed circuit is refused unread.
    const std::string bad[] = {"hej", "{\"root\":{\"ch\":[" + std::string(2000000, ' ') + "]},\"src\":{}}"};
    for (const std::string& text : bad) {
        SCOPED_TRACE(text.substr(0, 40));
        QApplication::clipboard()->setText(QString::fromStdString(text));
        clickButton(p, "Indsæt kredsløb");
        EXPECT_EQ(fl::stripTags(p->resultArea()->view()->markup()), refusal);
        EXPECT_EQ(fl::toText(fl::currentCircuit()), before);
    }

    // A deep but legal tree loads; the table says it is too big instead of
    // building thousands of rows.
    std::string wide = R"({"mode":"dc","src":{"U":"10"},"root":{"k":"S","id":"root","ch":[)";
    for (int i = 0; i < 1500; ++i)
        wide += std::string(i ? "," : "") + R"({"k":"R","id":"n)" + std::to_string(i + 5) + R"(","v":"1"})";
    wide += "]}}";
    QApplication::clipboard()->setText(QString::fromStdString(wide));
    clickButton(p, "Indsæt kredsløb");
    EXPECT_EQ(fl::treeSize(fl::currentCircuit().root), 1501u);
    EXPECT_EQ(p->partField("n5", "v"), nullptr);

    // The lesson's circuit, copied in its one-line form, comes back; an
    // alternating-current circuit goes to its own page and leaves this one alone.
    const fl::Circuit dc = lesson();
    const std::string dcText = fl::toText(dc), acText = fl::toText(lesson("ac"));
    fl::setCircuit(dc);
    p->onEnter();
    clickButton(p, "Kopiér kredsløb");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), dcText);
    EXPECT_TRUE(contains(sheetOf(p), "Kredsløbet er kopieret."));
    fl::setCircuit(fl::defaultCircuit("dc"));
    p->onEnter();
    clickButton(p, "Indsæt kredsløb");
    EXPECT_EQ(fl::toText(fl::currentCircuit()), dcText);
    EXPECT_FALSE(p->resultArea()->view()->hasContent());
    QApplication::clipboard()->setText(QString::fromStdString(acText));
    clickButton(p, "Indsæt kredsløb");
    EXPECT_EQ(host.routes.back(), "kredsac");
    EXPECT_EQ(fl::currentCircuit().mode, "ac");
    fl::Circuit stored;
    ASSERT_TRUE(fl::fromJson(DataStore::instance().get("kreds_ac"), stored));
    EXPECT_EQ(fl::toText(stored), acText);
}

TEST_F(KredsPageTest, savedCircuitsReopenIdenticallyRenameAndDelete) {
    fl::setCircuit(lesson());
    app::KredsPage* p = page(false, false);
    EXPECT_EQ(p->savedList()->itemText(0), "ingen gemte endnu");
    EXPECT_FALSE(p->findChild<QPushButton*>("saved_Åbn")->isEnabled());

    QString answer;
    p->askText = [&](const QString&, const QString&, QString* text) {
        *text = answer;
        return true;
    };
    answer = "Opgave 3 side 12";
    clickButton(p, "Gem som…");
    ASSERT_EQ(p->savedList()->count(), 1);
    EXPECT_EQ(p->savedList()->currentText(), "Opgave 3 side 12");
    EXPECT_TRUE(contains(p->previewText()->text().toStdString(), "Jævnstrøm · 3 komponenter · U = 230 V"));
    const std::string first = fl::toText(fl::currentCircuit());

    // Start afresh, then reopen: the same circuit, ids and all.
    QString asked;
    p->confirm = [&](const QString&, const QString& q) {
        asked = q;
        return true;
    };
    clickButton(p, "Start forfra");
    EXPECT_EQ(fl::treeSize(fl::currentCircuit().root), 2u);
    QTest::mouseClick(p->findChild<QPushButton*>("saved_Åbn"), Qt::LeftButton);
    EXPECT_EQ(fl::toText(fl::currentCircuit()), first);

    answer = "Prøve";
    clickButton(p, "Omdøb");
    ASSERT_EQ(p->savedList()->count(), 1);
    EXPECT_EQ(p->savedList()->currentText(), "Prøve");
    QTest::mouseClick(p->findChild<QPushButton*>("saved_Slet"), Qt::LeftButton);
    EXPECT_EQ(asked, "Slet det gemte kredsløb \"Prøve\"?");
    EXPECT_EQ(p->savedList()->itemText(0), "ingen gemte endnu");
    EXPECT_TRUE(fl::savedCircuitNames().empty());

    // A stored member that is no circuit is told, and nothing changes.
    DataStore::instance().set("kreds_saved", Json::parse(R"({"Ødelagt":{"root":7}})"));
    p->onEnter();
    QString told;
    p->inform = [&](const QString& title, const QString& text) { told = title + ": " + text; };
    const std::string now = fl::toText(fl::currentCircuit());
    QTest::mouseClick(p->findChild<QPushButton*>("saved_Åbn"), Qt::LeftButton);
    EXPECT_EQ(told, "Åbn kredsløb: Det gemte kredsløb kunne ikke læses.");
    EXPECT_EQ(fl::toText(fl::currentCircuit()), now);
}

TEST_F(KredsPageTest, aFixChipOnACapacitorSetsTheValueAndTheSheetComesBackWithoutTheQuestion) {
    fl::Circuit c = fl::defaultCircuit("ac");
    c.root->ch[0]->v = "100";
    fl::CNodePtr cap = fl::makeNode("C");
    cap->v = "47";
    c.root->ch.push_back(cap);
    c.src["U"] = "230";
    fl::setCircuit(c);
    app::KredsPage* p = page(false, true);
    run(p);
    // The solver's question stands in the page as a refusal, not as a sheet.
    EXPECT_TRUE(contains(p->resultArea()->view()->markup(), "<div class=\"msg bad\">"));
    EXPECT_TRUE(contains(sheetOf(p), "urealistisk")) << sheetOf(p);
    const QString href = QString::fromStdString("fix:comp|" + cap->id + "|47u");
    ASSERT_TRUE(clickLink(p->resultArea()->view(), href));
    QTRY_VERIFY(p->mainButton()->isEnabled() && p->resultArea()->view()->hasContent());
    fl::CNodePtr n, parent;
    ASSERT_TRUE(fl::find(fl::currentCircuit().root, cap->id, &n, &parent));
    EXPECT_EQ(n->v, "47u");
    EXPECT_EQ(p->partField(cap->id, "v")->text(), "47u");
    EXPECT_FALSE(contains(sheetOf(p), "urealistisk"));
    EXPECT_TRUE(contains(sheetOf(p), "Kirchhoff")) << sheetOf(p);

    // Payloads the page doesn't know change nothing.
    const std::string now = fl::toText(fl::currentCircuit());
    for (const char* link : {"fix:comp|n99999|5", "fix:src|U", "fix:what|U|5"})
        p->handleLink(link);
    EXPECT_EQ(fl::toText(fl::currentCircuit()), now);
    p->handleLink("fix:src|U|400");
    EXPECT_EQ(p->sourceField("U")->text(), "400");
}

} // namespace
