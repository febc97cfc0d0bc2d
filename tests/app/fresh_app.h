// The state every widget test starts from: an empty store in a temporary
// directory, default options, normal text size and the light theme; all of
// it put back afterwards, so no case depends on another's leftovers.
#pragma once

#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/shell/theme.h"
#include "store/datastore.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include <memory>

class FreshAppTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        freshStore();
        app::options() = app::AppOptions{};
        app::applyDisplaySettings();
        app::setTextScale(1.0);
        app::setThemeMode(app::ThemeLight);
        QApplication::setApplicationName("Ostrovalden Skole");
    }
    void TearDown() override {
        window.reset();
        app::options() = app::AppOptions{};
        app::applyDisplaySettings();
        app::setTextScale(1.0);
        app::setThemeMode(app::ThemeLight);
        DataStore::instance().resetForTest();
    }

    // An empty store whose file lies in this case's directory.
    void freshStore() {
        DataStore::instance().resetForTest();
        DataStore::instance().setPath((dir.path() + "/data.json").toStdString());
    }

    // The main window at its usual size, shown, on the home page.
    app::MainWindow& open() {
        window = std::make_unique<app::MainWindow>();
        window->resize(1280, 800);
        window->show();
        QApplication::processEvents();
        return *window;
    }

    template <typename P> P* current() const { return dynamic_cast<P*>(window->currentPage()); }

    QTemporaryDir dir;
    std::unique_ptr<app::MainWindow> window;
};
