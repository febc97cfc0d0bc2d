// The program's own dialogs: the welcome comes once, the about names the version.
#include "app/dialogs/dialogs.h"
#include "tests/app/fresh_app.h"

#include <QTimer>

namespace {

using DialogsTest = FreshAppTest;

TEST_F(DialogsTest, welcomeComesOnTheFirstStartOnly) {
    int shown = 0;
    QTimer::singleShot(0, [&] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<app::WelcomeDialog*>(w); d && d->isVisible()) {
                ++shown;
                d->accept();
            }
    });
    EXPECT_TRUE(app::showWelcomeIfFirstRun(nullptr));
    EXPECT_TRUE(storeGet("welcome_seen").asBool(false));
    EXPECT_FALSE(app::showWelcomeIfFirstRun(nullptr));
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(app::aboutHtml().contains(QStringLiteral("Version 1.0.30")));
}

} // namespace
