// What a student waits for: a worked sheet handed to the result area until
// it is painted (markup rewriting, the text engine's layout, every image
// drawn), and one step revealed in step mode until it is painted. Sheets
// are real solves, one family or many appended into a long one.
#include "app/page.h"
#include "app/resultarea.h"
#include "app/sheettext.h"
#include "app/theme.h"
#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/solve.h"
#include "tests/fl/formulas/sample_values.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <random>

namespace {

fl::RenderResult worked(const fl::Formula& f, std::map<std::string, double> values,
                        const std::string& target) {
    fl::resetFigures();
    values.erase(target);
    const fl::SolveResult s = fl::solveSheet(f, values, {}, target);
    return fl::takeRender("<div class=\"card sheet\" id=\"" + f.key +
                          "\"><div class=\"sheet-head\"><div class=\"crumb\">Formler</div><h2>" + f.title +
                          "</h2></div>" + s.html + "</div>");
}

// The first `count` families that offer a second quantity, each solved for it.
fl::RenderResult sheetOf(int count) {
    std::mt19937 rng(11);
    fl::RenderResult all;
    int taken = 0;
    for (const fl::Formula& f : fl::catalogue()) {
        if (taken == count) break;
        const auto values = fl::sample::values(f, rng);
        if (!values || f.forms.size() < 2) continue;
        all.append(worked(f, *values, f.forms[1].var));
        ++taken;
    }
    return all;
}

// A page at a common window size with the result area in it, on screen.
struct Screen {
    app::Page page;
    app::ResultArea* area = new app::ResultArea;
    Screen() {
        page.resize(1000, 800);
        page.addWidget(area);
        page.show();
        QApplication::processEvents();
    }
    void paint() {
        QApplication::processEvents();
        page.repaint();
    }
};

void BM_ShowSheet(benchmark::State& state) {
    const fl::RenderResult sheet = sheetOf(int(state.range(0)));
    Screen screen;
    for (auto _ : state) {
        screen.area->view()->setContent(sheet);
        screen.paint();
    }
    state.counters["steps"] = screen.area->view()->steps();
    state.counters["images"] = double(sheet.maths.size() + sheet.figs.size());
}
BENCHMARK(BM_ShowSheet)->Arg(1)->Arg(12)->Unit(benchmark::kMillisecond);

void BM_RevealStep(benchmark::State& state) {
    const fl::RenderResult sheet = sheetOf(int(state.range(0)));
    Screen screen;
    app::SheetView* view = screen.area->view();
    view->setStepMode(true);
    view->setContent(sheet);
    screen.paint();
    for (auto _ : state) {
        if (view->revealedSteps() == view->steps()) {
            state.PauseTiming();
            view->setContent(sheet);
            screen.paint();
            state.ResumeTiming();
        }
        view->revealNext();
        screen.paint();
    }
}
BENCHMARK(BM_RevealStep)->Arg(1)->Arg(12)->Unit(benchmark::kMillisecond);

// The markup rewriting alone, the part of a reveal that is ours.
void BM_RewriteSheet(benchmark::State& state) {
    const QString html = QString::fromStdString(sheetOf(int(state.range(0))).html);
    app::SheetState s;
    s.width = 960;
    s.stepMode = true;
    s.stepCount = app::countSteps(html);
    s.revealed = s.stepCount / 2;
    for (auto _ : state)
        benchmark::DoNotOptimize(app::visibleSheet(html, s, app::colors()));
    state.counters["kB"] = html.size() / 1024.0;
}
BENCHMARK(BM_RewriteSheet)->Arg(1)->Arg(12)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    app::installFontSubstitutions();
    app::setThemeMode(app::ThemeLight);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
