// Writing the walkthrough of a solved 20-component circuit (the target is
// 5 ms): the calculated sheet with its figures, and the guide, which solves
// again itself.
#include "fl/circuit/sheets/walkthrough.h"
#include "fl/expr/markup.h"

#include <benchmark/benchmark.h>

namespace {

using namespace fl;

// Twenty components in series runs of parallel groups with a branch of two.
Circuit twenty(bool ac) {
    Circuit c = defaultCircuit(ac ? "ac" : "dc");
    c.root->ch.clear();
    c.src["U"] = "230";
    for (int k = 0; k < 5; ++k)
        c.root->ch.push_back(makeNode("P", "",
                                      {makeNode("R", "100"), makeNode("R", "220"),
                                       makeNode("S", "",
                                                {makeNode(ac ? "L" : "R", ac ? "0,2" : "47"),
                                                 makeNode(ac ? "C" : "R", ac ? "47u" : "22")})}));
    nameCircuit(c);
    return c;
}

void BM_regneark(benchmark::State& state, bool ac) {
    Circuit c = twenty(ac);
    const Sheet sheet = computeSheet(c);
    if (!sheet.error.empty()) state.SkipWithError(sheet.error.c_str());
    size_t bytes = 0;
    for (auto _ : state) {
        resetFigures();
        RenderResult r = takeRender(regneark(sheet, c, "24.11.2026"));
        bytes = r.html.size();
        benchmark::DoNotOptimize(r);
    }
    state.SetLabel(std::to_string(sheet.steps.size()) + " steps, " + std::to_string(bytes / 1024) + " KiB");
}
BENCHMARK_CAPTURE(BM_regneark, dc, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_regneark, ac, true)->Unit(benchmark::kMillisecond);

// The solve the guide runs first, to tell its share from the writing's.
void BM_solveOnly(benchmark::State& state, bool ac) {
    Circuit c = twenty(ac);
    for (auto _ : state)
        benchmark::DoNotOptimize(computeSheet(c));
}
BENCHMARK_CAPTURE(BM_solveOnly, ac, true)->Unit(benchmark::kMillisecond);

void BM_guide(benchmark::State& state, bool ac) {
    Circuit c = twenty(ac);
    for (auto _ : state) {
        resetFigures();
        benchmark::DoNotOptimize(takeRender(fremgangsmaade(c, "24.11.2026")));
    }
}
BENCHMARK_CAPTURE(BM_guide, ac, true)->Unit(benchmark::kMillisecond);

} // namespace
