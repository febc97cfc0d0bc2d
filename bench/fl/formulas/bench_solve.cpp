// What a student waits for after pressing Enter: one worked sheet, for every
// family of the catalogue and every quantity it offers, as a whole rendering
// pass (reset, solve, take the images). After the run, the median and the
// slowest sheet are printed.
#include "fl/expr/markup.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/solve.h"
#include "tests/fl/formulas/sample_values.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Case {
    const fl::Formula* family;
    std::string target;
    std::map<std::string, double> given;
};

std::vector<Case> everySheet() {
    std::mt19937 rng(7);
    std::vector<Case> cases;
    for (const fl::Formula& f : fl::catalogue()) {
        const auto values = fl::sample::values(f, rng);
        if (!values) continue;
        for (const fl::FormulaForm& form : f.forms) {
            Case c{&f, form.var, *values};
            c.given.erase(form.var);
            cases.push_back(std::move(c));
        }
    }
    return cases;
}

void solveOnce(const Case& c) {
    fl::resetFigures();
    fl::SolveResult r = fl::solveSheet(*c.family, c.given, {}, c.target);
    fl::RenderResult pass = fl::takeRender(std::move(r.html));
    benchmark::DoNotOptimize(pass);
}

// Collects the time per sheet beside the usual console table. CPU time is the
// figure to quote: the build machine is shared, and wall time is printed beside it.
class SheetReporter : public benchmark::ConsoleReporter {
  public:
    // Plain text: the output lands in logs and closing notes.
    SheetReporter() : ConsoleReporter(OO_Tabular) {}
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& r : runs) {
            const std::string name = r.benchmark_name();
            if (r.run_type != Run::RT_Iteration || r.iterations <= 0 || name.rfind("sheet/", 0) != 0)
                continue;
            const double n = double(r.iterations);
            sheets_.push_back({r.cpu_accumulated_time / n * 1e6, r.real_accumulated_time / n * 1e6,
                               name.substr(6, name.find("/min_time") - 6)});
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        if (sheets_.empty()) return;
        std::sort(sheets_.begin(), sheets_.end(),
                  [](const Sheet& a, const Sheet& b) { return a.cpu < b.cpu; });
        const Sheet& median = sheets_[sheets_.size() / 2];
        const Sheet& slowest = sheets_.back();
        std::printf("\n%zu sheets, CPU time per sheet: median %.1f µs (%s, %.1f µs wall), "
                    "slowest %.1f µs (%s, %.1f µs wall)\n",
                    sheets_.size(), median.cpu, median.name.c_str(), median.wall, slowest.cpu,
                    slowest.name.c_str(), slowest.wall);
    }

  private:
    struct Sheet {
        double cpu, wall;
        std::string name;
    };
    std::vector<Sheet> sheets_;
};

} // namespace

int main(int argc, char** argv) {
    static const std::vector<Case> cases = everySheet();
    for (const Case& c : cases)
        benchmark::RegisterBenchmark(("sheet/" + c.family->key + "/" + c.target).c_str(),
                                     [&c](benchmark::State& state) {
                                         for (auto _ : state)
                                             solveOnce(c);
                                     })
            ->MinTime(0.02)
            ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("everySheet", [](benchmark::State& state) {
        for (auto _ : state)
            for (const Case& c : cases)
                solveOnce(c);
        state.counters["sheets"] = double(cases.size());
    })->Unit(benchmark::kMillisecond);

    benchmark::Initialize(&argc, argv);
    SheetReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
