// The program's entry: brings the pieces up in a fixed order and takes them
// down again. Everything with logic lives in the app library.
#include "app/dialogs/dialogs.h"
#include "app/shell/crash.h"
#include "app/shell/mainwindow.h"
#include "app/shell/service.h"
#include "app/shell/startup.h"
#include "app/shell/theme.h"
#include "store/datastore.h"

#include <QApplication>

#include <cstdlib>

int main(int argc, char** argv) {
    // Before anything else, so that every later crash leaves a record.
    app::installCrashHandler();

    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    auto* application = new QApplication(argc, argv);
    QApplication::setApplicationName("Ostrovalden Skole");
    // Lets the desktop match the window to the menu entry and its icon.
    QGuiApplication::setDesktopFileName("dk.ostrovalden.skole");
    app::installLook();

    const QString dataDir = app::startData();
    app::loadSettings();
    app::loadClassProfile();

    // Builds the whole frame, restores the geometry and opens on "hjem".
    auto* window = new app::MainWindow;
    window->setAboutHandler([window] { app::AboutDialog(window, window->currentRoute()).exec(); });
    window->show();
    app::showWelcomeIfFirstRun(window);

    // The class service talks on threads of its own; the window goes on.
    auto* jobs = new app::ServiceJobs(window, dataDir);
    jobs->start(false);
    window->setRefresh([jobs] { jobs->start(true); });

    const int code = application->exec();

    if (!jobs->finish(5000)) {
        // A job stuck in the network: its thread can't be ended, so the
        // process leaves without tearing down what that thread may still use.
        DataStore::instance().save();
        std::_Exit(code);
    }
    delete jobs;
    DataStore::instance().save();
    delete window;
    delete application;
    return code;
}
