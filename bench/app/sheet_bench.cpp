// What a student waits for: a worked sheet handed to the result area until
// it is painted (markup rewriting, the text engine's layout, every image
// drawn), and one step revealed in step mode until it is painted. Sheets
// are real solves, one family or many appended into a long one.
#include "app/sheet/resultarea.h"
#include "app/sheet/sheettext.h"
#include "app/shell/theme.h"
#include "app/widgets/page.h"
#include "tests/app/sheet/worked_sheets.h"

#include <benchmark/benchmark.h>

#include <QApplication>

namespace {

// A page at a common window size with the result area in it, on screen.
struct Screen {
    app::Page page;
    app::ResultArea* area = new app::ResultArea(nullptr);
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
    const fl::RenderResult sheet = sheets::manyFamilies(int(state.range(0)), 11);
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
    const fl::RenderResult sheet = sheets::manyFamilies(int(state.range(0)), 11);
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
    const QString html = QString::fromStdString(sheets::manyFamilies(int(state.range(0)), 11).html);
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
