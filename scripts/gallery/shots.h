// What the screenshot tools share: waiting for the window to settle, grabbing
// the screen, and a fresh window on a fresh store for every picture, as a new
// student starts.
#pragma once

#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/shell/theme.h"
#include "fl/circuit/model.h"
#include "store/datastore.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScreen>
#include <QString>

#include <memory>

namespace shots {

inline void settle(int ms = 450) {
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

inline QPixmap grabScreen(QWidget* window) {
    // Offscreen there is no root window to grab; the window alone will do.
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) return window->grab();
    return QGuiApplication::primaryScreen()->grabWindow(0, 0, 0, 1280, 800);
}

inline std::unique_ptr<app::MainWindow> freshWindow(const QString& dataFile, bool dark,
                                                    double textScale = 1.0) {
    DataStore::instance().resetForTest();
    DataStore::instance().setPath(dataFile.toStdString());
    fl::resetCurrentCircuitForTest();
    app::options() = app::AppOptions{};
    app::applyDisplaySettings();
    app::setTextScale(textScale);
    app::setThemeMode(dark ? app::ThemeDark : app::ThemeLight);
    auto window = std::make_unique<app::MainWindow>();
    window->setGeometry(0, 0, 1280, 800);
    window->show();
    settle(200);
    return window;
}

} // namespace shots
