// The main road through the program as a student walks it: home page,
// formula finder, a formula's page, solving it and reusing the answer; and
// the formula page's refusals, the finder's path and the home page's tiles.
// Every case starts from an empty store in a temporary directory.
#include "app/homepage.h"
#include "app/mainwindow.h"
#include "app/options.h"
#include "app/sheetview.h"
#include "app/theme.h"
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTest>

#include <memory>

namespace {

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// Clicks the first anchor in the view that leads to `href`, as a user would,
// at the middle of its text. False when the view has no such link.
bool clickLink(app::SheetView* view, const QString& href) {
    QTextDocument* doc = view->document();
    for (QTextBlock block = doc->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment frag = it.fragment();
            if (!frag.charFormat().isAnchor() || frag.charFormat().anchorHref() != href) continue;
            QTextCursor cursor(doc);
            cursor.setPosition(frag.position() + frag.length() / 2);
            const QPoint at = view->cursorRect(cursor).center();
            QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
            return true;
        }
    }
    return false;
}

class PagesTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        DataStore::instance().resetForTest();
        DataStore::instance().setPath((dir.path() + "/data.json").toStdString());
        app::options() = app::AppOptions{};
        app::applyDisplaySettings();
        app::setThemeMode(app::ThemeLight);
    }
    void TearDown() override {
        window.reset();
        app::options() = app::AppOptions{};
        app::applyDisplaySettings();
        DataStore::instance().resetForTest();
    }

    app::MainWindow& open() {
        window = std::make_unique<app::MainWindow>();
        window->resize(1280, 800);
        window->show();
        QApplication::processEvents();
        return *window;
    }

    template <typename P>
    P* current() const {
        return dynamic_cast<P*>(window->currentPage());
    }

    QTemporaryDir dir;
    std::unique_ptr<app::MainWindow> window;
};

TEST_F(PagesTest, aClickOnATileOrAChipGoesThere) {
    app::MainWindow& w = open();
    auto* home = current<app::HomePage>();
    ASSERT_NE(home, nullptr);
    ASSERT_TRUE(clickLink(home->view(), "go:trafo"));
    EXPECT_EQ(w.currentRoute(), "trafo");
    w.navigate("hjem");
    ASSERT_TRUE(clickLink(home->view(), "go:calc"));
    EXPECT_EQ(w.currentRoute(), "calc");
    w.navigate("hjem");
    ASSERT_TRUE(clickLink(home->view(), "go:ohm"));  // the topic chip of direct current
    EXPECT_EQ(w.currentRoute(), "ohm");
}

TEST_F(PagesTest, homeShowsWhatWasUsedAndHidesWhatIsClosed) {
    app::MainWindow& w = open();
    w.navigate("trafo");
    w.navigate("ohm");
    w.navigate("hjem");
    auto* home = current<app::HomePage>();
    const std::string html = home->view()->markup();
    const size_t recent = html.find("Senest brugt"), most = html.find("Mest brugt");
    ASSERT_LT(recent, most);
    const std::string recentPart = html.substr(recent, most - recent);
    EXPECT_LT(recentPart.find("go:ohm"), recentPart.find("go:trafo"));

    app::options().off = {"udregnere"};
    w.navigate("hjem");
    const std::string closed = home->view()->markup();
    EXPECT_FALSE(contains(closed, "<h3 class=\"sh\">Formler</h3>"));
    EXPECT_FALSE(contains(closed, "go:udregnere\""));
    EXPECT_TRUE(contains(closed, "Din lærer har slået nogle dele af programmet fra"));
}

}  // namespace
