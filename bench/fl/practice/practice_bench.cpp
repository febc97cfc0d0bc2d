// What a student waits for on the practice pages: a fresh exercise with its
// statement and worked solution, the diagnosis of a wrong answer (the worst
// case, which tries every mistake and finds none), and the statistics page's
// markup from a year of daily practice; a text problem and a flashcard's back.
#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"
#include "fl/practice/cards.h"
#include "fl/practice/circuitex.h"
#include "fl/practice/exercise.h"
#include "fl/practice/judge.h"
#include "fl/practice/random.h"
#include "fl/practice/statsheet.h"
#include "fl/practice/tekst.h"

#include <benchmark/benchmark.h>

#include <QDate>

#include <optional>

namespace {

void BM_DrawExercise(benchmark::State& state) {
    fl::seedRandom(1);
    for (auto _ : state) {
        fl::resetFigures();
        fl::Exercise ex = fl::makeExercise({}, {});
        benchmark::DoNotOptimize(ex);
    }
}
BENCHMARK(BM_DrawExercise)->Unit(benchmark::kMicrosecond);

// A drawn circuit solved, one quantity asked, and the statement with its drawing.
void BM_DrawCircuitExercise(benchmark::State& state) {
    fl::seedRandom(1);
    for (auto _ : state) {
        fl::resetFigures();
        fl::Exercise ex = fl::makeCircuitExercise(fl::randInt(2) ? "ac" : "dc");
        fl::RenderResult statement = fl::takeRender(fl::circuitStatement(ex));
        benchmark::DoNotOptimize(statement);
    }
}
BENCHMARK(BM_DrawCircuitExercise)->Unit(benchmark::kMicrosecond);

void BM_DiagnoseAnswer(benchmark::State& state) {
    fl::seedRandom(2);
    // A motor exercise with η and cos φ given has the longest list of mistakes.
    const fl::Exercise ex = fl::exerciseFor(*fl::findFormula("motI3"), "I_N");
    const double answer = ex.facit * 7.3; // no mistake gives this
    for (auto _ : state) {
        std::string tip = fl::diagnoseAnswer(answer, ex.facit, ex);
        benchmark::DoNotOptimize(tip);
    }
}
BENCHMARK(BM_DiagnoseAnswer)->Unit(benchmark::kMicrosecond);

fl::PracticeStats aYear(std::vector<std::string>& topics) {
    fl::PracticeStats s;
    const QDate today(2025, 6, 30);
    size_t n = 0;
    for (const fl::Formula& f : fl::catalogue())
        if (fl::fitForPractice(f)) topics.push_back(fl::practiceTopic(f));
    for (int d = 0; d < 365; ++d) {
        const std::string day = today.addDays(-d).toString(Qt::ISODate).toStdString();
        for (int i = 0; i < 12; ++i, ++n) {
            const fl::Formula& f = fl::catalogue()[n % fl::catalogue().size()];
            fl::addAnswer(s, f.key, fl::practiceTopic(f), (n * 7) % 10 < 7, day);
        }
    }
    return s;
}

void BM_StatsPageOfAYear(benchmark::State& state) {
    std::vector<std::string> topics;
    const fl::PracticeStats s = aYear(topics);
    std::vector<fl::ExamRecord> exams(10, {"2025-06-01T10:00:00.000Z", "Jævnstrøm", 7, 10, 600});
    for (auto _ : state) {
        fl::resetFigures();
        fl::RenderResult r = fl::takeRender(fl::statsHtml(s, exams, topics, "2025-06-30"));
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_StatsPageOfAYear)->Unit(benchmark::kMicrosecond);

// A text problem: a scenario drawn, every part worked and checked.
void BM_DrawTextProblem(benchmark::State& state) {
    fl::seedRandom(3);
    for (auto _ : state) {
        fl::resetFigures();
        std::optional<fl::TekstProblem> p = fl::makeTekst("alle");
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_DrawTextProblem)->Unit(benchmark::kMicrosecond);

// The markup of a flipped card: a formula with its legend, the heaviest kind.
void BM_CardBack(benchmark::State& state) {
    const std::vector<std::string> deck = fl::deckCards("alle");
    size_t i = 0;
    for (auto _ : state) {
        fl::resetFigures();
        std::string html = fl::cardBackHtml(deck[i++ % deck.size()], fl::Direction::NameToFormula);
        benchmark::DoNotOptimize(html);
    }
}
BENCHMARK(BM_CardBack)->Unit(benchmark::kMicrosecond);

} // namespace
