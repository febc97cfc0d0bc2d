// Lookups that run on every navigation (a route is a family or a tile) and
// the one-off cost of building the catalogue from its rows.
#include "fl/formulas/catalogue.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/rows.h"

#include <benchmark/benchmark.h>

namespace {

std::vector<std::string> allKeys() {
    std::vector<std::string> keys;
    for (const fl::Formula& f : fl::catalogue())
        keys.push_back(f.key);
    return keys;
}

// One lookup of every key in turn: the linear search's average case.
void BM_findFormulaAllKeys(benchmark::State& state) {
    const std::vector<std::string> keys = allKeys();
    for (auto _ : state)
        for (const std::string& k : keys)
            benchmark::DoNotOptimize(fl::findFormula(k));
    state.SetItemsProcessed(state.iterations() * int64_t(keys.size()));
}
BENCHMARK(BM_findFormulaAllKeys);

// A tile route is looked up after all 118 families.
void BM_findFamilyOrTileRoutes(benchmark::State& state) {
    std::vector<std::string> routes;
    for (const fl::Tile& t : fl::tiles())
        routes.push_back(t.route);
    benchmark::DoNotOptimize(fl::findFamilyOrTile("ohm"));
    for (auto _ : state)
        for (const std::string& r : routes)
            benchmark::DoNotOptimize(fl::findFamilyOrTile(r));
    state.SetItemsProcessed(state.iterations() * int64_t(routes.size()));
}
BENCHMARK(BM_findFamilyOrTileRoutes);

void BM_buildCatalogue(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(fl::rows::buildCatalogue());
}
BENCHMARK(BM_buildCatalogue)->Unit(benchmark::kMicrosecond);

void BM_findNodeDeep(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(fl::findNode("ma/vektor"));
}
BENCHMARK(BM_findNodeDeep);

} // namespace
