// The forward pass that the search runs in its inner loop, whole backwards
// solves of one to three unknowns, and the worst case the seed table allows:
// 400 starts of which none converges.
#include "fl/circuit/search.h"
#include "fl/circuit/sheet.h"
#include "fl/expr/numbers.h"

#include <benchmark/benchmark.h>

#include <clocale>

namespace {

using namespace fl;

// A mixed alternating-current tree of `count` components: series runs of
// parallel pairs, each pair a resistor beside a coil or capacitor branch.
Circuit tree(int count) {
    Circuit c = defaultCircuit("ac");
    c.root->ch.clear();
    c.src["U"] = "230";
    const char* kinds[] = {"R", "L", "C"};
    const char* values[] = {"47", "0,1", "22u"};
    int made = 0;
    while (made < count) {
        if (count - made >= 3) {
            c.root->ch.push_back(makeNode(
                "P", "",
                {makeNode("R", "100"), makeNode("S", "", {makeNode("L", "0,2"), makeNode("C", "47u")})}));
            made += 3;
        } else {
            c.root->ch.push_back(makeNode(kinds[made % 3], values[made % 3]));
            ++made;
        }
    }
    nameCircuit(c);
    return c;
}

void BM_forward(benchmark::State& state) {
    Circuit c = tree(static_cast<int>(state.range(0)));
    Values in = {{"U", 230.0}, {"f", 50.0}};
    walk(c.root, [&](const CNodePtr& n) {
        if (!n->group) in[n->name] = readValue(n->v);
    });
    const ForwardPlan plan = compilePlan(c.root, true, &in);
    std::vector<double> slots(plan.inputs.size());
    for (size_t s = 0; s < slots.size(); ++s)
        slots[s] = in.count(plan.inputs[s]) ? in[plan.inputs[s]] : 50.0;
    ForwardWork work;
    work.prepare(plan);
    for (auto _ : state) {
        runPlan(plan, slots.data(), work);
        benchmark::DoNotOptimize(work.out.data());
    }
    state.SetLabel(std::to_string(state.range(0)) + " components");
}
BENCHMARK(BM_forward)->Arg(2)->Arg(8)->Arg(20);

void BM_forwardMap(benchmark::State& state) {
    Circuit c = tree(8);
    Values in = {{"U", 230.0}, {"f", 50.0}};
    walk(c.root, [&](const CNodePtr& n) {
        if (!n->group) in[n->name] = readValue(n->v);
    });
    for (auto _ : state)
        benchmark::DoNotOptimize(forward(c.root, in, true));
    state.SetLabel("8 components, with the result map");
}
BENCHMARK(BM_forwardMap);

// Backwards: the 8-component tree with `range(0)` values hidden and as many
// of its quantities given instead.
void BM_solve(benchmark::State& state) {
    Circuit c = tree(8);
    const int hidden = static_cast<int>(state.range(0));
    Values in = {{"U", 230.0}, {"f", 50.0}};
    walk(c.root, [&](const CNodePtr& n) {
        if (!n->group) in[n->name] = readValue(n->v);
    });
    const Values truth = forward(c.root, in, true);
    std::vector<CNodePtr> leaves;
    walk(c.root, [&](const CNodePtr& n) {
        if (!n->group) leaves.push_back(n);
    });
    for (int h = 0; h < hidden; ++h) {
        CNodePtr n = leaves[h * 2];
        n->I = fmtValue10(truth.at("I_" + n->name));
        n->v.clear();
    }
    size_t unknowns = 0;
    for (auto _ : state) {
        const Sheet s = computeSheet(c);
        if (!s.error.empty()) state.SkipWithError(s.error.c_str());
        unknowns = s.unknowns.size();
    }
    state.SetLabel(std::to_string(unknowns) + " unknowns");
}
BENCHMARK(BM_solve)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kMillisecond);

// Resistors in series whose given voltages add up to more than the source:
// every one of the 400 starts runs until it gives up.
void BM_worstCase(benchmark::State& state) {
    Circuit c = defaultCircuit("dc");
    c.root->ch.clear();
    c.src["U"] = "100";
    for (int i = 0; i < state.range(0); ++i) {
        CNodePtr r = makeNode("R");
        r->U = std::to_string(25 + i);
        c.root->ch.push_back(r);
    }
    std::string message;
    for (auto _ : state)
        message = computeSheet(c).error;
    state.SetLabel(message.substr(0, 40));
}
BENCHMARK(BM_worstCase)->Arg(5)->Arg(8)->Arg(12)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
