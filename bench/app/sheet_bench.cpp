// What a student waits for: a worked sheet handed to the result area until
// it is painted (markup rewriting, the text engine's layout, every image
// drawn), and one step revealed in step mode until it is painted. Sheets
// are real solves, one family or many appended into a long one.
#include "app/sheet/resultarea.h"
#include "app/sheet/sheettext.h"
#include "app/shell/theme.h"
#include "app/widgets/page.h"
#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/solve.h"
#include "tests/fl/formulas/sample_values.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <random>

namespace {

// One family solved by the solve driver, in its card as the formula page shows it.
fl::RenderResult worked(const fl::Formula& f, const std::map<std::string, double>& values,
                        const std::string& target) {
    fl::resetFigures();
    const fl::SolveResult s = fl::solveSheet(f, values, {}, target, {});
    return fl::takeRender("<div class=\"card sheet\" id=\"" + f.key +
                          "\"><div class=\"sheet-head\"><div class=\"crumb\">Formler</div><h2>" + f.title +
                          "</h2></div>" + s.html + "</div>");
}

// The first `count` families that offer a second quantity, each solved for it
// from believable values, appended one after another.
fl::RenderResult manyFamilies(int count, unsigned seed) {
    std::mt19937 rng(seed);
    fl::RenderResult all;
    int taken = 0;
    for (const fl::Formula& f : fl::catalogue()) {
        if (taken == count) break;
        auto values = fl::sample::values(f, rng);
        if (!values || f.forms.size() < 2) continue;
        const std::string target = f.forms[1].var;
        values->erase(target);
        all.append(worked(f, *values, target));
        ++taken;
    }
    return all;
}

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
    const fl::RenderResult sheet = manyFamilies(int(state.range(0)), 11);
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
    const fl::RenderResult sheet = manyFamilies(int(state.range(0)), 11);
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
    const QString html = QString::fromStdString(manyFamilies(int(state.range(0)), 11).html);
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
