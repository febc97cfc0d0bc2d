// How long a student waits on the main road: from navigate() to the painted
// formula page (first visit, which builds it, and a return visit), and from
// Enter in a field to the painted worked sheet; for Ohm's law and for the
// family with the most quantities, and for the tools; a keystroke in a tool
// with a live figure. Also the home page, the finder's largest views (a
// first visit until painted, and until every piece of a long view has
// arrived) and a change of text size with a few pages made. Everything runs
// offscreen in one shown main window.
#include "app/pages/formulas/finderpage.h"
#include "app/pages/formulas/formulapage.h"
#include "app/pages/tools/acpages.h"
#include "app/pages/tools/toolpage.h"
#include "app/sheet/sheetview.h"
#include "app/shell/mainwindow.h"
#include "app/shell/settingspanel.h"
#include "app/shell/theme.h"
#include "app/widgets/valuefield.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/lists.h"
#include "store/datastore.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

// Made in main and torn down there, before the application: a window left to
// static destruction outlives its QApplication.
std::unique_ptr<app::MainWindow> theWindow;

app::MainWindow& window() {
    if (!theWindow) {
        static QTemporaryDir dir;
        DataStore::instance().setPath((dir.path() + "/data.json").toStdString());
        app::applyTheme();
        theWindow = std::make_unique<app::MainWindow>();
        theWindow->resize(1280, 800);
        theWindow->show();
        QApplication::processEvents();
    }
    return *theWindow;
}

// The family a student fills in most fields for.
const fl::Formula& largestFamily() {
    const fl::Formula* best = &fl::catalogue().front();
    for (const fl::Formula& f : fl::catalogue())
        if (f.vars.size() > best->vars.size() ||
            (f.vars.size() == best->vars.size() && f.forms.size() > best->forms.size()))
            best = &f;
    return *best;
}

// Lets the window's fades run out, so that no page is left half faded in
// when the next benchmark starts or the program ends.
void settle() {
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < 250)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

// Paints what is on screen now, as the next frame would.
void paint(app::MainWindow& w) {
    w.repaint();
}

// Values that make a family solvable for its primary quantity: 2 for every
// other field, or the generator's values where it has one.
void fill(app::FormulaPage* page) {
    const fl::Formula& f = *page->formula();
    std::map<std::string, double> values;
    if (f.generate) values = f.generate();
    for (app::ValueField* field : page->fields()) {
        const std::string symbol = field->key.toStdString();
        if (symbol == f.forms.front().var) {
            field->setText(QString());
            continue;
        }
        const auto it = values.find(symbol);
        field->setText(it == values.end() ? QStringLiteral("2") : QString::number(it->second, 'g', 10));
    }
}

void BM_firstVisitToPainted(benchmark::State& state, const std::string& key) {
    app::MainWindow& w = window();
    const fl::Formula* f = fl::findFormula(key);
    for (auto _ : state) {
        // A page of its own each round, as on the first visit of a run.
        app::FormulaPage page(f, &w);
        page.resize(1000, 760);
        page.show();
        page.repaint();
        state.PauseTiming();
        page.hide();
        state.ResumeTiming();
    }
    state.SetLabel(key);
    settle();
}

void BM_navigateToPainted(benchmark::State& state, const std::string& key) {
    app::MainWindow& w = window();
    const QString route = QString::fromStdString(key);
    w.navigate(route);
    for (auto _ : state) {
        state.PauseTiming();
        w.navigate(QStringLiteral("hjem"));
        paint(w);
        state.ResumeTiming();
        w.navigate(route);
        paint(w);
    }
    state.SetLabel(key);
    settle();
}

void BM_enterToPainted(benchmark::State& state, const std::string& key) {
    app::MainWindow& w = window();
    w.navigate(QString::fromStdString(key));
    auto* page = dynamic_cast<app::FormulaPage*>(w.currentPage());
    if (!page) {
        state.SkipWithError("no formula page");
        return;
    }
    fill(page);
    QLineEdit* edit = page->fields().back()->edit;
    for (auto _ : state) {
        QTest::keyClick(edit, Qt::Key_Return);
        paint(w);
    }
    state.SetLabel(key);
    settle();
}

// A tool from Enter in a field to its painted sheet, with a form a student
// would fill (the cable chooser's R and X left as it filled them).
void BM_toolEnterToPainted(benchmark::State& state, const std::string& route,
                           const std::vector<std::pair<QString, QString>>& typed) {
    app::MainWindow& w = window();
    w.navigate(QString::fromStdString(route));
    auto* page = dynamic_cast<app::ToolPage*>(w.currentPage());
    if (!page) {
        state.SkipWithError("no tool page");
        return;
    }
    for (const auto& [key, text] : typed)
        page->field(key)->setText(text);
    QLineEdit* edit = page->field(typed.back().first)->edit;
    for (auto _ : state) {
        QTest::keyClick(edit, Qt::Key_Return);
        paint(w);
    }
    state.SetLabel(route);
    settle();
}

// One keystroke in a machine tool's field until the live figure is redrawn
// on screen: a digit typed, then taken back, in turn. `frame`: until the
// next frame as the event loop makes it (the field and the figure painted);
// otherwise until the whole window is painted again, sidebar and all.
void BM_liveKeystrokeToPainted(benchmark::State& state, const std::string& route, const QString& key,
                               bool frame) {
    app::MainWindow& w = window();
    w.navigate(QString::fromStdString(route));
    auto* page = dynamic_cast<app::ToolPage*>(w.currentPage());
    if (!page || !page->field(key)) {
        state.SkipWithError("no such field");
        return;
    }
    QLineEdit* edit = page->field(key)->edit;
    edit->setFocus();
    edit->setText(QStringLiteral("23"));
    bool typed = false;
    for (auto _ : state) {
        if (typed)
            QTest::keyClick(edit, Qt::Key_Backspace);
        else
            QTest::keyClick(edit, Qt::Key_5);
        typed = !typed;
        if (frame)
            QCoreApplication::sendPostedEvents();
        else
            paint(w);
    }
    state.SetLabel(route + " " + key.toStdString() + (frame ? ", next frame" : ", whole window"));
    settle();
}

void BM_homeToPainted(benchmark::State& state) {
    app::MainWindow& w = window();
    for (auto _ : state) {
        w.navigate(QStringLiteral("hjem"));
        paint(w);
    }
    settle();
}

// The finder's root in mode 0 carries a card for every family.
void BM_finderPathToPainted(benchmark::State& state, int mode, const std::string& path) {
    app::MainWindow& w = window();
    w.navigate(mode == 0 ? QStringLiteral("finder") : QStringLiteral("udregnere"));
    auto* finder = dynamic_cast<app::FinderPage*>(w.currentPage());
    for (auto _ : state) {
        finder->setPath(path);
        paint(w);
    }
    state.SetLabel((mode == 0 ? "finder " : "udregnere ") + (path.empty() ? std::string("(root)") : path));
    settle();
}

// The demonstration at the board: one step of a slider until the window's
// next frame is made, as the event loop would make it: the layout passes the
// step asked for, then a paint of what changed (the slider, its value, the
// line of values and the figures in view). Repainting the whole window would
// mostly measure the sidebar and the cards that did not change. The
// frequency sweeps back and forth across resonance; R changes the curves'
// heights.
void BM_demoSliderToPainted(benchmark::State& state, app::AcDemoPage::Quantity quantity) {
    app::MainWindow& w = window();
    w.navigate(QStringLiteral("acdemo"));
    auto* page = dynamic_cast<app::AcDemoPage*>(w.currentPage());
    if (!page) {
        state.SkipWithError("no demonstration page");
        return;
    }
    QSlider* slider = page->slider(quantity);
    QCoreApplication::sendPostedEvents();
    int step = 1;
    for (auto _ : state) {
        if (slider->value() + step > slider->maximum() || slider->value() + step < slider->minimum()) step = -step;
        slider->setValue(slider->value() + step);
        QCoreApplication::sendPostedEvents();
    }
    settle();
}

// A first visit: the page made, shown at the path and painted; with `whole`,
// until the last piece of a long view has been appended as well.
void BM_finderFirstVisit(benchmark::State& state, int mode, const std::string& path, bool whole) {
    app::MainWindow& w = window();
    for (auto _ : state) {
        app::FinderPage page(mode, &w);
        page.resize(1000, 760);
        page.show();
        page.setPath(path);
        page.repaint();
        if (whole) {
            page.view()->finishLoading();
            page.repaint();
        }
        state.PauseTiming();
        page.hide();
        state.ResumeTiming();
    }
    state.SetLabel((mode == 0 ? "finder " : "udregnere ") + (path.empty() ? std::string("Alle emner") : path) +
                   (whole ? ", all of it" : ""));
    settle();
}

// "Tekststørrelse" changed in the settings panel until the window is
// painted, with the pages a student has open after a while.
void BM_textSizeChange(benchmark::State& state) {
    app::MainWindow& w = window();
    for (const char* route : {"finder", "udregnere", "ohm", "tfP", "kabel", "hjem", "tfUY"})
        w.navigate(QString::fromLatin1(route));
    QComboBox* size = w.settingsPanel()->textSize;
    int index = 0;
    for (auto _ : state) {
        index = index == 0 ? 2 : 0;
        size->setCurrentIndex(index);
        emit size->activated(index);
        paint(w);
    }
    if (index != 0) {
        size->setCurrentIndex(0);
        emit size->activated(0);
    }
    settle();
}

const std::string kLargest = largestFamily().key;

BENCHMARK_CAPTURE(BM_firstVisitToPainted, ohm, std::string("ohm"))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_firstVisitToPainted, largest, kLargest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_navigateToPainted, ohm, std::string("ohm"))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_navigateToPainted, largest, kLargest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_enterToPainted, ohm, std::string("ohm"))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_enterToPainted, largest, kLargest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, kabel, std::string("kabel"),
                  {{"U", "400"}, {"P", "11k"}, {"cosphi", "0,85"}, {"Lk", "80"}, {"dUpmax", "4"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, sf3, std::string("sf3"), {{"I_B", "16"}, {"l", "40"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, ikmax, std::string("ikmax"), {{"l", "10"}})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, ikmin, std::string("ikmin"),
                  {{"I_Nks", "35"}, {"l_stik", "20"}, {"l_grp", "30"}, {"I_Ngrp", "10"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, komp, std::string("komp"), {{"P", "1000"}, {"cosphi1", "0,7"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, motor, std::string("motor"),
                  {{"P_2", "5,5k"}, {"I_N", "11"}, {"cosphi", "0,83"}, {"nr", "1445"}, {"k_st", "7"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, trafo, std::string("trafo"), {{"U_P", "230"}, {"U_S", "12"}, {"S", "60"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_toolEnterToPainted, trefase, std::string("trefase"), {{"R", "20"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_liveKeystrokeToPainted, motor, std::string("motor"), QStringLiteral("I_N"), true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_liveKeystrokeToPainted, trafo, std::string("trafo"), QStringLiteral("U_P"), true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_liveKeystrokeToPainted, trefase, std::string("trefase"), QStringLiteral("R"), true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_liveKeystrokeToPainted, motorWindow, std::string("motor"), QStringLiteral("I_N"), false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_liveKeystrokeToPainted, trafoWindow, std::string("trafo"), QStringLiteral("U_P"), false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_liveKeystrokeToPainted, trefaseWindow, std::string("trefase"), QStringLiteral("R"),
                  false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_homeToPainted)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_demoSliderToPainted, f, app::AcDemoPage::F)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_demoSliderToPainted, R, app::AcDemoPage::R)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_finderPathToPainted, rootCards, 0, std::string())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_finderFirstVisit, allTopicsCardsWhole, 0, std::string(), true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_textSizeChange)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_finderPathToPainted, leafCards, 0, std::string("ac/serie"))
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_finderPathToPainted, leafCalculators, 1, std::string("ac/serie"))
    ->Unit(benchmark::kMillisecond);

// A first visit of every view of both finders, "Alle emner" first: each
// must be on screen before a student notices the wait.
void registerEveryFirstVisit() {
    std::vector<std::string> paths{std::string()};
    std::function<void(const fl::FinderNode&, const std::string&)> walk = [&](const fl::FinderNode& node,
                                                                              const std::string& at) {
        for (const fl::FinderNode& child : node.children) {
            const std::string path = at.empty() ? child.id : at + "/" + child.id;
            paths.push_back(path);
            walk(child, path);
        }
    };
    walk(fl::finderTree(), std::string());
    for (const int mode : {0, 1})
        for (const std::string& path : paths)
            benchmark::RegisterBenchmark(
                ("BM_finderFirstVisit/" + std::string(mode == 0 ? "cards/" : "calculators/") +
                 (path.empty() ? std::string("(Alle emner)") : path))
                    .c_str(),
                [mode, path](benchmark::State& state) { BM_finderFirstVisit(state, mode, path, false); })
                ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    registerEveryFirstVisit();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    theWindow.reset();
    return 0;
}
