// The window as a page sees it: the one way to another page, links, the
// results strip, the notice bar, the step mode and the window's three
// announcements. MainWindow implements it; pages, the settings panel and the
// result area include only this header, so a page can be tested with a fake
// host (tests/app/fake_host.h) instead of a whole window.
//
// Writing a new page:
//   1. A class in app/pages/<subsystem>/ deriving from app::Page
//      (app/widgets/page.h). Its constructor takes the route's parameters, if
//      any, then the host, and keeps the host:
//          explicit KabelPage(PageHost* host, QWidget* parent = nullptr);
//          DropPage(int phases, PageHost* host, QWidget* parent = nullptr);
//      It includes this header, never the main window's.
//   2. Build the widgets once, in the constructor (addCard(), Card::addField,
//      `new ResultArea(host)` for the answer, which follows the step mode).
//   3. Override onEnter() to re-read the store, onSettings() to show numbers
//      again, onTheme() for colours baked into markup. The window connects the
//      last two for every page it makes.
//   4. Links the page doesn't handle itself go to host->openLink(href); a
//      value worth reusing to host->addResult(name, value, unit).
//   5. Register it with one line in pageFactory() (app/shell/routes.cpp):
//          {"kabel", [](PageHost* h) -> Page* { return new KabelPage(h); }},
//      and add its files to app/CMakeLists.txt in a block for the subsystem.
//   6. Test it in tests/app/pages/<subsystem>/ against app::test::FakeHost,
//      which records the routes, links and results the page hands over.
#pragma once

#include <QObject>
#include <QString>

namespace app {

// The window's announcements, on an object of their own: the window's one
// QObject base is its QMainWindow, so the interface can't be a QObject.
class HostSignals : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;

  signals:
    // The decimal sign, the rounding or the text size has changed.
    void settingsChanged();
    // The theme mode, the text size or, in automatic mode, the system's colour scheme has changed.
    void themeChanged();
    // "Vis ét trin ad gangen" was toggled.
    void stepModeChanged(bool on);
};

class PageHost {
  public:
    virtual ~PageHost() = default;

    // The one way to a page. Unknown routes end on the home page, closed ones
    // on the locked page.
    virtual void navigate(const QString& route) = 0;
    // A link the page doesn't handle itself: "go:", "gl:" and "it:" stay in
    // the program, everything else opens in the system's browser.
    virtual void openLink(const QString& href) = 0;
    // After a computation: a finite value goes first into the strip of ten.
    virtual void addResult(const QString& name, double value, const QString& unit) = 0;
    // With an id the notice shows only until the user has closed it once.
    virtual void showNotice(const QString& html, const QString& id) = 0;
    // The route shown before the present one, for a page's "←" link.
    virtual QString previousRoute() const = 0;
    // Whether working and answers are revealed one step at a time.
    virtual bool stepMode() const = 0;
    virtual HostSignals* hostSignals() = 0;
};

} // namespace app
