// A host for page tests that records what a page asks of the window instead
// of doing it, so a page can be built and driven without a main window.
#pragma once

#include "app/shell/pagehost.h"

#include <QString>

#include <string>
#include <vector>

namespace app::test {

class FakeHost : public PageHost {
  public:
    struct Result {
        QString name;
        double value = 0;
        QString unit;
    };

    void navigate(const QString& route) override { routes.push_back(route); }
    void openLink(const QString& href) override { links.push_back(href); }
    void addResult(const QString& name, double value, const QString& unit) override {
        results.push_back({name, value, unit});
    }
    void showNotice(const QString& html, const QString& id) override { notices.push_back(html + "|" + id); }
    QString previousRoute() const override { return previous; }
    bool stepMode() const override { return steps; }
    HostSignals* hostSignals() override { return &hub; }

    // Sets the step mode and announces it, as the settings panel does.
    void setStepMode(bool on) {
        steps = on;
        emit hub.stepModeChanged(on);
    }

    std::vector<QString> routes;
    std::vector<QString> links;
    std::vector<Result> results;
    std::vector<QString> notices;
    QString previous;
    bool steps = false;
    HostSignals hub;
};

} // namespace app::test
