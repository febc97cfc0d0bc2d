// What the pages do on every keystroke and every result: read a field,
// evaluate and preview a calculator line, format numbers, parse and evaluate
// a catalogue form.
#include "fl/expr/eval.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"

#include <benchmark/benchmark.h>

#include <map>
#include <vector>

namespace {

void readValueWithPrefix(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(fl::readValue("5,5k"));
}
BENCHMARK(readValueWithPrefix);

void readValueExpression(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(fl::readValue("230/47"));
}
BENCHMARK(readValueExpression);

void calcLine(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(fl::calc("√3·400·12"));
}
BENCHMARK(calcLine);

void prettyCalcLine(benchmark::State& state) {
    for (auto _ : state) {
        fl::resetFigures();
        benchmark::DoNotOptimize(fl::prettyCalc("2,5k·√3+1/(2π·50·10µ)"));
    }
    fl::resetFigures();
}
BENCHMARK(prettyCalcLine);

// What the calculator does on a keystroke: evaluate the line with "ans" and
// write its preview with the value.
void calculatorKeystroke(benchmark::State& state) {
    const std::map<std::string, double> vars{{"ans", 12.5}};
    for (auto _ : state) {
        fl::resetFigures();
        const double v = fl::calc("√3·400·12,5/(2^3+ans)", &vars);
        benchmark::DoNotOptimize(fl::prettyCalc("√3·400·12,5/(2^3+ans)") + fl::fmtNumber(v));
    }
    fl::resetFigures();
}
BENCHMARK(calculatorKeystroke);

void fmtNumberMixed(benchmark::State& state) {
    const std::vector<double> values{1234.5678, 0.5,     0.123456, 230.456, 1234567.891, 12345678, 999999.9999,
                                     999.9996e6, 0.00047, 2200000,  -3.2,    1e-13,       1.0 / 3,  230.0 / 47};
    fl::displaySettings().rounding = state.range(0) ? "d2" : "p5";
    for (auto _ : state)
        for (double v : values) benchmark::DoNotOptimize(fl::fmtNumber(v));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(values.size()));
    fl::displaySettings().rounding = "p5";
}
BENCHMARK(fmtNumberMixed)->Arg(0)->Arg(1);

void parseEvalCatalogueForm(benchmark::State& state) {
    const std::map<std::string, double> vars{{"P", 5500}, {"U", 400}, {"cosphi", 0.85}};
    for (auto _ : state) benchmark::DoNotOptimize(fl::eval(fl::parse("P/(sqrt(3)*U*cosphi)"), vars));
}
BENCHMARK(parseEvalCatalogueForm);

void renderCatalogueForm(benchmark::State& state) {
    const fl::NodePtr n = fl::parse("1/(1/R1+1/R2)+U**2/R*sin(phi_1)");
    for (auto _ : state) benchmark::DoNotOptimize(fl::render(n, true));
}
BENCHMARK(renderCatalogueForm);

}  // namespace
