// The program's entry: brings the pieces up in a fixed order and takes them
// down again. Everything with logic lives in the app library.
#include "app/dialogs/dialogs.h"
#include "app/shell/crash.h"
#include "app/shell/mainwindow.h"
#include "app/shell/startup.h"
#include "app/shell/theme.h"
#include "store/datastore.h"

#include <QApplication>
#include <QFont>

int main(int argc, char** argv) {
    // Before anything else, so that every later crash leaves a record.
    app::installCrashHandler();

    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    auto* application = new QApplication(argc, argv);
    QApplication::setApplicationName("Ostrovalden Skole");
    QApplication::setStyle("Fusion");
    app::installFontSubstitutions();
    QFont font("Segoe UI");
    font.setPointSizeF(10.5);
    QApplication::setFont(font);

    app::startData();
    app::loadSettings();

    // Builds the whole frame, restores the geometry and opens on "hjem".
    auto* window = new app::MainWindow;
    window->setAboutHandler([window] { app::AboutDialog(window).exec(); });
    window->show();
    app::showWelcomeIfFirstRun(window);

    const int code = application->exec();

    DataStore::instance().save();
    delete window;
    delete application;
    return code;
}
