// The store's costs on a document the size of a busy student's "data.json"
// (about 200 KB): reading and writing the whole file, and one set, which
// rewrites the file every time.
#include "store/datastore.h"
#include "store/json.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>

namespace fs = std::filesystem;

namespace {

Json circuitTree(std::mt19937& rng, int depth) {
    Json node = Json::object();
    if (depth == 0) {
        static const char* const kinds[] = {"R", "L", "C", "A", "V"};
        node["kind"] = kinds[rng() % 5];
        node["name"] = std::string(node["kind"].str).append(std::to_string(rng() % 20));
        node["value"] = double(rng() % 10000) / 10.0;
        node["unit"] = "Ω";
        return node;
    }
    node["kind"] = depth % 2 ? "S" : "P";
    for (int i = 0; i < 3; ++i)
        node["children"].push(circuitTree(rng, depth - 1));
    return node;
}

// Keys and record shapes as the pages write them.
std::map<std::string, Json> studentData() {
    std::mt19937 rng(1);
    std::map<std::string, Json> d;
    Json stats = Json::object();
    for (int t = 0; t < 200; ++t) {
        Json& s = stats["emne_" + std::to_string(t)];
        s["right"] = int(rng() % 50);
        s["total"] = int(50 + rng() % 50);
        s["last"] = "2026-02-" + std::to_string(10 + rng() % 18) + "T08:15:00.000Z";
        for (int h = 0; h < 8; ++h)
            s["hist"].push(Json(bool(rng() % 2)));
    }
    d["ov_stats"] = stats;
    Json exams = Json::array();
    for (int e = 0; e < 10; ++e) {
        Json x = Json::object();
        x["cat"] = "ohm";
        x["score"] = double(rng() % 1000) / 10.0;
        x["when"] = "2026-01-0" + std::to_string(1 + e % 9) + "T12:00:00.000Z";
        for (int q = 0; q < 20; ++q) {
            Json a = Json::object();
            a["q"] = "Beregn I når U = " + std::to_string(rng() % 400) +
                     " V og R = " + std::to_string(rng() % 100) + " Ω";
            a["svar"] = double(rng() % 100000) / 1000.0;
            a["ok"] = bool(rng() % 2);
            x["answers"].push(a);
        }
        exams.push(x);
    }
    d["exam_hist"] = exams;
    Json cards = Json::object();
    for (int c = 0; c < 800; ++c) {
        Json& k = cards["kort_" + std::to_string(c)];
        k["box"] = int(rng() % 5);
        k["due"] = 1772000000.0 + double(rng() % 1000000);
        k["seen"] = int(rng() % 30);
    }
    d["fc"] = cards;
    Json saved = Json::object();
    for (int k = 0; k < 40; ++k)
        saved["Kreds " + std::to_string(k)] = circuitTree(rng, 3);
    d["kreds_saved"] = saved;
    d["kreds"] = circuitTree(rng, 3);
    Json answers = Json::object();
    for (int t = 0; t < 40; ++t) {
        Json& a = answers["opgave_" + std::to_string(t)];
        a["svar"] = "Strømmen er " + std::to_string(rng() % 100) + ",5 A, fordi P = U · I.";
        a["sendt"] = true;
    }
    d["task_answers"] = answers;
    Json recent = Json::array();
    for (const char* r : {"hjem", "kabel", "kreds", "ohm", "effekt", "ordliste", "eksamen"})
        recent.push(r);
    d["recent"] = recent;
    Json usage = Json::object();
    for (int p = 0; p < 40; ++p)
        usage["Side " + std::to_string(p)] = int(rng() % 200);
    d["usage"] = usage;
    for (int f = 0; f < 150; ++f)
        d["fam_" + std::to_string(f) + "_path"] = "formler/el/" + std::to_string(f);
    d["komma"] = true;
    d["rund"] = "p5";
    d["tekst"] = 1.25;
    d["theme"] = "dark";
    d["usage_starts"] = 17;
    d["student_name"] = "Åse Ærø";
    return d;
}

struct TempDir {
    fs::path path;
    TempDir() {
        std::string tmpl = (fs::temp_directory_path() / "bench_store_XXXXXX").string();
        if (!mkdtemp(tmpl.data())) std::abort();
        path = tmpl;
    }
    ~TempDir() { fs::remove_all(path); }
};

// The file text of a store holding studentData().
std::string storeDocument(const fs::path& file) {
    DataStore& store = DataStore::instance();
    store.resetForTest();
    for (const auto& [key, value] : studentData())
        store.set(key, value);
    store.setPath(file.string());
    store.save();
    std::ifstream in(file, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void BM_ParseStoreDocument(benchmark::State& state) {
    TempDir dir;
    const std::string text = storeDocument(dir.path / "data.json");
    for (auto _ : state)
        benchmark::DoNotOptimize(Json::parse(text));
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(text.size()));
    state.counters["KB"] = double(text.size()) / 1024.0;
}
BENCHMARK(BM_ParseStoreDocument)->Unit(benchmark::kMicrosecond);

void BM_DumpStoreDocument(benchmark::State& state) {
    TempDir dir;
    const Json doc = Json::parse(storeDocument(dir.path / "data.json"));
    size_t bytes = 0;
    for (auto _ : state) {
        std::string text = Json::dump(doc, 1);
        bytes = text.size();
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
}
BENCHMARK(BM_DumpStoreDocument)->Unit(benchmark::kMicrosecond);

// Every value parsed once, as the pages do when they are built.
void BM_GetEveryKey(benchmark::State& state) {
    TempDir dir;
    storeDocument(dir.path / "data.json");
    DataStore& store = DataStore::instance();
    const auto keys = store.keys();
    for (auto _ : state)
        for (const auto& key : keys)
            benchmark::DoNotOptimize(store.get(key));
    store.resetForTest();
}
BENCHMARK(BM_GetEveryKey)->Unit(benchmark::kMicrosecond);

// One small set on the full store: the whole file is built, written to
// ".tmp" and moved over "data.json".
void BM_SetRewritesFile(benchmark::State& state) {
    TempDir dir;
    storeDocument(dir.path / "data.json");
    DataStore& store = DataStore::instance();
    store.resetForTest();
    store.setPath((dir.path / "data.json").string());
    store.load();
    int n = 0;
    for (auto _ : state)
        store.set("ov_right", ++n);
    store.resetForTest();
}
BENCHMARK(BM_SetRewritesFile)->Unit(benchmark::kMicrosecond);

} // namespace
