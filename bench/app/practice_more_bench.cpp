// What a student waits for on the practice pages of the second kind: a
// worksheet of 40 exercises with every solution drawn, written and saved as
// a PDF; and a flashcard flipped until its back is painted.
#include "app/pages/practice/formelkortpage.h"
#include "app/sheet/sheetview.h"
#include "app/shell/theme.h"
#include "fl/practice/categories.h"
#include "fl/practice/random.h"
#include "fl/practice/worksheet.h"
#include "store/datastore.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTemporaryDir>

namespace {

void BM_WorksheetToPdf(benchmark::State& state) {
    QTemporaryDir dir;
    fl::seedRandom(4);
    fl::WorksheetOptions o;
    o.count = int(state.range(0));
    o.facit = "losning";
    o.room = true;
    for (auto _ : state) {
        const fl::Worksheet ws =
            fl::drawWorksheet(o, "Alle emner", "1. april 2025", [] { return fl::exerciseForCategory("", {}); });
        const app::SheetView paper;
        if (!paper.printToPdf(fl::worksheetRender(ws, true), "Opgaveark", dir.filePath("ark.pdf")))
            state.SkipWithError("no PDF");
    }
    state.counters["exercises"] = o.count;
}
BENCHMARK(BM_WorksheetToPdf)->Arg(40)->Unit(benchmark::kMillisecond);

void BM_FlashcardFlip(benchmark::State& state) {
    QTemporaryDir dir;
    DataStore::instance().setPath((dir.path() + "/data.json").toStdString());
    app::applyTheme();
    app::FormelkortPage page(nullptr);
    page.resize(1000, 800);
    page.show();
    page.startRound(true);
    QApplication::processEvents();
    for (auto _ : state) {
        page.flip();
        QApplication::processEvents();
        page.repaint();
        state.PauseTiming();
        page.skipCard();
        if (page.screen() != app::FormelkortPage::Screen::Front) page.startRound(true);
        QApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_FlashcardFlip)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
