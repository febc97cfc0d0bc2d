// The circuit page on its main road: a value typed into the parts table of a
// 12-component circuit, the solve, and the sheet painted (the target is a
// 50 ms median), for the drawing in dc and ac and for the guide.
#include "app/pages/circuit/circuiteditor.h"
#include "app/pages/circuit/kredspage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/theme.h"
#include "store/datastore.h"
#include "tests/app/fake_host.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>

#include <memory>

namespace {

// Twelve components: four series runs of a resistor beside a pair in series,
// as mixed as a task on paper gets; in ac the pairs are a coil and a capacitor.
fl::Circuit twelve(bool ac) {
    fl::Circuit c = fl::defaultCircuit(ac ? "ac" : "dc");
    c.root->ch.clear();
    c.src["U"] = "230";
    for (int k = 0; k < 4; ++k)
        c.root->ch.push_back(fl::makeNode(
            "P", "",
            {fl::makeNode("R", "100"), fl::makeNode("S", "",
                                                    {fl::makeNode(ac ? "L" : "R", ac ? "0,2" : "47"),
                                                     fl::makeNode(ac ? "C" : "R", ac ? "47u" : "22")})}));
    return c;
}

// The page scrolled as a student reads the result: the sheet's top at the
// top of the view. Each round types a value, solves, and paints that frame:
// the layout the frame needs and the window's paint. "whole" also waits for
// the rest of a long sheet, which otherwise arrives piece by piece after the
// frame, between the student's next events.
void BM_editSolvePainted(benchmark::State& state, bool ac, bool guide, bool whole) {
    static QTemporaryDir dir;
    DataStore::instance().setPath((dir.path() + "/data.json").toStdString());
    fl::resetCurrentCircuitForTest();
    fl::Circuit c = twelve(ac);
    fl::setCircuit(c);
    app::test::FakeHost host;
    app::KredsPage page(guide, ac, &host);
    page.resize(1100, 800);
    page.show();
    QApplication::processEvents();
    QLineEdit* edit = page.partField(c.root->ch[0]->ch[0]->id, "v");
    app::SheetView* view = page.resultArea()->view();
    page.computeNow();
    view->finishLoading();
    QApplication::processEvents();
    page.verticalScrollBar()->setValue(page.resultArea()->mapTo(page.widget(), QPoint(0, 0)).y());
    int k = 0;
    for (auto _ : state) {
        edit->setText(QString::number(100 + (++k % 7)));
        page.computeNow();
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        if (whole) view->finishLoading();
        page.repaint();
    }
    state.SetLabel(view->hasContent() ? "sheet shown" : "no sheet");
}
BENCHMARK_CAPTURE(BM_editSolvePainted, dc, false, false, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_editSolvePainted, ac, true, false, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_editSolvePainted, guideAc, true, true, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_editSolvePainted, dcWhole, false, false, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_editSolvePainted, acWhole, true, false, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_editSolvePainted, guideAcWhole, true, true, true)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    app::installFontSubstitutions();
    app::applyTheme();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
