// What a tool costs when the student presses Enter: each cable tool as a
// whole rendering pass (reset, compute, take the images), and the equation
// chain on the longest list the any-direction tools hand it (a symmetrical
// load in star, ten equations, everything found from U_N, R and cos φ); the
// machine tools each on a full form, the chain tools also backwards; the
// series RLC sheet with its figures, and the demonstration's three figures
// for one slider step.
#include "fl/expr/markup.h"
#include "fl/tools/ac.h"
#include "fl/tools/cable.h"
#include "fl/tools/chain.h"
#include "fl/tools/machines.h"
#include "fl/tools/tables.h"

#include <benchmark/benchmark.h>

namespace {

template <typename F> void pass(benchmark::State& state, F&& tool) {
    for (auto _ : state) {
        fl::resetFigures();
        fl::ToolOut out = tool();
        fl::RenderResult r = fl::takeRender(std::move(out.html));
        benchmark::DoNotOptimize(r);
    }
}

void cableSize(benchmark::State& state) {
    pass(state, [] {
        return fl::dimensionCable({{"U", "400"}, {"P", "11k"}, {"cosphi", "0,85"}, {"Lk", "80"}, {"dUpmax", "4"}},
                                  true, fl::kRhoCopper);
    });
}
BENCHMARK(cableSize)->Unit(benchmark::kMicrosecond);

void voltageDrop(benchmark::State& state) {
    pass(state, [] {
        return fl::voltageDrop(
            {{"U_N", "400"}, {"I_B", "16"}, {"sf", "0,8"}, {"cosphi", "0,9"}, {"l", "40"}, {"R_l", "4,61"},
             {"X_l", "0,117"}},
            true);
    });
}
BENCHMARK(voltageDrop)->Unit(benchmark::kMicrosecond);

void shortCircuitMax(benchmark::State& state) {
    pass(state, [] {
        return fl::shortCircuitMax(
            {{"U_N", "400"}, {"Ik_fr", "16k"}, {"cosphi_k", "0,3"}, {"l", "10"}, {"R_l", "1,83"}, {"X_l", "0,091"}});
    });
}
BENCHMARK(shortCircuitMax)->Unit(benchmark::kMicrosecond);

void shortCircuitMin(benchmark::State& state) {
    pass(state, [] {
        return fl::shortCircuitMin({{"U_F", "230"}, {"I_Nks", "35"}, {"k_fr", "5"}, {"k_v", "1,5"}, {"l_stik", "20"},
                                    {"R_lstik", "1,83"}, {"l_grp", "30"}, {"R_lgrp", "12,1"}, {"I_Ngrp", "10"},
                                    {"k_a", "10"}});
    });
}
BENCHMARK(shortCircuitMin)->Unit(benchmark::kMicrosecond);

void chainThreePhase(benchmark::State& state) {
    const std::vector<fl::ChainEquation> list{
        {"U_F", "U_N/sqrt(3)", "Stjerne: fasespændingen", ", stjerne"},
        {"I_F", "I_N", "Stjerne: fasestrømmen", ", stjerne"},
        {"R", "U_F/I_F", "Ohms lov for én fase", ""},
        {"phi", "acos(cosphi)", "Faseforskydningsvinkel", "12"},
        {"P", "U_N*I_N*sqrt(3)*cosphi", "Aktiv effekt", ", fælles"},
        {"S", "U_N*I_N*sqrt(3)", "Tilsyneladende effekt", ", fælles"},
        {"Q", "U_N*I_N*sqrt(3)*sin(phi)", "Reaktiv effekt", ", fælles"},
        {"P", "3*U_F*I_F*cosphi", "Aktiv effekt ud fra fasestørrelserne", ""},
        {"S", "3*U_F*I_F", "Tilsyneladende effekt ud fra fasestørrelserne", ""},
        {"cosphi", "P/S", "Effektfaktor", "13"},
    };
    for (auto _ : state) {
        fl::resetFigures();
        std::map<std::string, double> vars{{"U_N", 400}, {"R", 20}, {"cosphi", 0.85}};
        fl::ChainResult r = fl::solveChain(list, vars);
        benchmark::DoNotOptimize(r);
        benchmark::DoNotOptimize(fl::takeRender({}));
    }
}
BENCHMARK(chainThreePhase)->Unit(benchmark::kMicrosecond);

void compensation(benchmark::State& state) {
    pass(state, [] {
        return fl::compensate({{"U", "400"}, {"f", "50"}, {"I", "40"}, {"cosphi1", "0,7"}, {"cosphi2", "0,95"}}, "Y");
    });
}
BENCHMARK(compensation)->Unit(benchmark::kMicrosecond);

void motorPlate(benchmark::State& state) {
    pass(state, [] {
        return fl::motor({{"U_N", "400"}, {"f", "50"}, {"P_2", "5,5k"}, {"I_N", "11"}, {"cosphi", "0,83"},
                          {"nr", "1445"}, {"k_st", "7"}},
                         true, true);
    });
}
BENCHMARK(motorPlate)->Unit(benchmark::kMicrosecond);

void motorBackwards(benchmark::State& state) {
    pass(state, [] {
        return fl::motor({{"U_N", "400"}, {"f", "50"}, {"P_2", "11k"}, {"eta", "0,9"}, {"cosphi", "0,85"},
                          {"nr", "2930"}, {"k_st", "7"}},
                         true, true);
    });
}
BENCHMARK(motorBackwards)->Unit(benchmark::kMicrosecond);

void transformer(benchmark::State& state) {
    pass(state, [] { return fl::transformer({{"U_P", "230"}, {"n", "19"}, {"I_S", "5"}, {"NV", "2,5"}}); });
}
BENCHMARK(transformer)->Unit(benchmark::kMicrosecond);

void threePhaseLoad(benchmark::State& state) {
    pass(state, [] { return fl::threePhaseLoad({{"U_N", "400"}, {"R", "20"}}, false); });
}
BENCHMARK(threePhaseLoad)->Unit(benchmark::kMicrosecond);

// An empty cos φ that P and S decide: the chain runs once more to see it.
void threePhaseLoadBackwards(benchmark::State& state) {
    pass(state, [] { return fl::threePhaseLoad({{"U_N", "400"}, {"P", "8k"}, {"S", "10k"}}, true); });
}
BENCHMARK(threePhaseLoadBackwards)->Unit(benchmark::kMicrosecond);

void acSeries(benchmark::State& state) {
    pass(state, [] { return fl::acSeries({{"R", "30"}, {"L", "0,2"}, {"C", "100u"}, {"f", "50"}, {"U", "230"}}); });
}
BENCHMARK(acSeries)->Unit(benchmark::kMicrosecond);

// The demonstration's pictures for one slider step, without a widget.
void demoView(benchmark::State& state) {
    fl::DemoSetting s;
    for (auto _ : state) {
        s.f = s.f < 400 ? s.f * 1.01 : 5;
        benchmark::DoNotOptimize(fl::demoView(s));
    }
}
BENCHMARK(demoView)->Unit(benchmark::kMicrosecond);

} // namespace
