// What a student waits for on the practice pages, painted: the statistics
// page shown from a year of daily practice (its markup, the bar chart and the
// layout), and a new exercise on the exercise page.
#include "app/pages/practice/ovelserpage.h"
#include "app/pages/practice/statistikpage.h"
#include "app/shell/theme.h"
#include "fl/formulas/catalogue.h"
#include "fl/practice/exercise.h"
#include "fl/practice/random.h"
#include "fl/practice/stats.h"
#include "store/datastore.h"
#include "tests/app/fake_host.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDate>
#include <QTemporaryDir>

namespace {

// A year of twelve answers a day over every family, and ten exams.
void storeAYear() {
    static QTemporaryDir dir;
    DataStore::instance().setPath((dir.path() + "/data.json").toStdString());
    fl::PracticeStats s;
    const QDate today = QDate::currentDate();
    size_t n = 0;
    for (int d = 0; d < 365; ++d) {
        const std::string day = today.addDays(-d).toString(Qt::ISODate).toStdString();
        for (int i = 0; i < 12; ++i, ++n) {
            const fl::Formula& f = fl::catalogue()[n % fl::catalogue().size()];
            fl::addAnswer(s, f.key, fl::practiceTopic(f), (n * 7) % 10 < 7, day);
        }
    }
    fl::saveStats(s);
    for (int i = 0; i < 10; ++i)
        fl::recordExam({"2025-06-01T10:00:00.000Z", "Jævnstrøm", 7, 10, 600});
}

// The first visit: the page made, its sheet written and laid out, painted.
void BM_statisticsPageOfAYear(benchmark::State& state) {
    storeAYear();
    app::test::FakeHost host;
    for (auto _ : state) {
        app::StatistikPage page(&host);
        page.resize(1000, 760);
        page.show();
        page.onEnter();
        page.repaint();
        state.PauseTiming();
        page.hide();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_statisticsPageOfAYear)->Unit(benchmark::kMillisecond);

void BM_nextExercisePainted(benchmark::State& state) {
    fl::seedRandom(3);
    app::test::FakeHost host;
    app::OvelserPage page(&host);
    page.resize(1000, 760);
    page.show();
    page.onEnter();
    for (auto _ : state) {
        page.next();
        page.repaint();
    }
}
BENCHMARK(BM_nextExercisePainted)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    app::applyTheme();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
