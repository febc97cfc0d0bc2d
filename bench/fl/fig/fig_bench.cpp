// Writing figures: the schematic of a 20-component tree with and without
// results (the target is 1 ms), the phasor scene and triangle of a solved
// circuit, and formula figures of each kind.
#include "fl/circuit/forward.h"
#include "fl/expr/numbers.h"
#include "fl/fig/formulafig.h"
#include "fl/fig/phasor.h"
#include "fl/fig/schematic.h"
#include "fl/fig/triangles.h"

#include <benchmark/benchmark.h>

namespace {

using namespace fl;

// Nested series and parallel groups, `count` components in all.
Circuit tree(int count, const std::string& mode) {
    Circuit c = defaultCircuit(mode);
    c.root->ch.clear();
    c.src["U"] = "230";
    const bool ac = mode == "ac";
    int made = 0;
    while (made < count) {
        if (count - made >= 4) {
            c.root->ch.push_back(makeNode(
                "P", "",
                {makeNode("R", "100"),
                 makeNode("S", "",
                          {makeNode(ac ? "L" : "R", ac ? "0,2" : "47"),
                           makeNode("P", "",
                                    {makeNode(ac ? "C" : "R", ac ? "47u" : "22"), makeNode("R", "68")})})}));
            made += 4;
        } else {
            c.root->ch.push_back(makeNode("R", "47"));
            ++made;
        }
    }
    nameCircuit(c);
    return c;
}

Values solvedValues(Circuit& c) {
    Values in = {{"U", 230.0}, {"f", 50.0}};
    walk(c.root, [&](const CNodePtr& n) {
        if (!n->group) in[n->name] = readValue(n->v);
    });
    Values out = forward(c.root, in, c.mode == "ac");
    for (const auto& [k, v] : in)
        out[k] = v;
    return out;
}

void BM_schematic(benchmark::State& state) {
    Circuit c = tree(20, state.range(0) ? "ac" : "dc");
    const Values values = state.range(1) ? solvedValues(c) : Values{};
    SchematicOptions opt;
    opt.selection = c.root->ch[1]->id;
    std::vector<HitBox> hits;
    double w = 0, h = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(schematic(c, values, opt, &hits, &w, &h));
}
BENCHMARK(BM_schematic)->ArgsProduct({{0, 1}, {0, 1}})->ArgNames({"ac", "results"})->Unit(benchmark::kMicrosecond);

void BM_currentScene(benchmark::State& state) {
    Circuit c = tree(12, "ac");
    const Values values = solvedValues(c);
    const std::string group = c.root->ch[0]->id;
    for (auto _ : state)
        benchmark::DoNotOptimize(drawVectors(currentScene(c.root, values, true, group)));
}
BENCHMARK(BM_currentScene)->Unit(benchmark::kMicrosecond);

void BM_circuitTriangle(benchmark::State& state) {
    Circuit c = tree(12, "ac");
    const Values values = solvedValues(c);
    for (auto _ : state)
        benchmark::DoNotOptimize(circuitTriangle("Z", c.root, values));
}
BENCHMARK(BM_circuitTriangle)->Unit(benchmark::kMicrosecond);

void BM_formulaFigure(benchmark::State& state) {
    static const char* const keys[] = {"circ", "ZRLC", "rt", "sector", "eff", "vec1", "tfD"};
    const std::string key = keys[state.range(0)];
    const std::map<std::string, double> values{{"U", 230}, {"R", 30}, {"XL", 80}, {"XC", 40}, {"a", 3},
                                               {"b", 4},   {"r", 2},  {"V", 70},  {"Umax", 325}, {"x", 4},
                                               {"y", 3},   {"U_N", 400}};
    state.SetLabel(key);
    for (auto _ : state)
        benchmark::DoNotOptimize(figureFor(key, values, "Z"));
}
BENCHMARK(BM_formulaFigure)->DenseRange(0, 6)->Unit(benchmark::kMicrosecond);

} // namespace
