// The glossary page on every keystroke: the folded search over all entries
// and the markup of its hits, for a word typed letter by letter.
#include "fl/glossary/glossary.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

const fl::KeyOpen open = [](const std::string&) { return true; };

void searchPerKeystroke(benchmark::State& state) {
    const std::string word = "spaendingsfald";
    fl::glossary(); // the table and its folded texts are built once, at first use
    fl::searchGlossary("", open);
    size_t n = 1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(fl::glossaryHtml(word.substr(0, n), "Grundbegreber", open));
        n = n % word.size() + 1;
    }
}
BENCHMARK(searchPerKeystroke);

void searchOneLetter(benchmark::State& state) {
    fl::searchGlossary("", open);
    for (auto _ : state) benchmark::DoNotOptimize(fl::glossaryHtml("e", "Grundbegreber", open));
}
BENCHMARK(searchOneLetter);

void sectionView(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(fl::glossaryHtml("", "Vekselstrøm", open));
}
BENCHMARK(sectionView);

} // namespace
