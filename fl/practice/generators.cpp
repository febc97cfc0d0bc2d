// The hand-written generators: families whose quantities must agree with
// each other (a motor's two powers, a speed below the synchronous one) fix
// those few values; drawValue draws the rest.
#include "fl/practice/exercise.h"

#include "fl/practice/random.h"

namespace fl {

namespace {

using Values = std::map<std::string, double>;

const std::vector<double> kMotorPowers = {750,  1100, 1500,  2200,  3000,  4000,
                                          5500, 7500, 11000, 15000, 18500, 22000};
const std::vector<double> kSyncSpeeds = {3000, 1500, 1000, 750};
// 50 Hz twice: the mains frequency comes up twice as often.
const std::vector<double> kFrequencies = {50, 50, 60, 100, 400, 1000};

// A motor's two powers: what it gives, and what it takes at an efficiency of 75–93 %.
Values motorPowers() {
    const double p2 = pickOne(kMotorPowers);
    return {{"P_2", p2}, {"P_1", round3(p2 / randReal(0.75, 0.93))}};
}

// A rating plate: 1.5–40 kW, with a believable efficiency and power factor.
Values ratingPlate(const char* voltage, double volts) {
    return {{voltage, volts},
            {"P_2", round3(randReal(1.5, 40)) * 1000},
            {"eta", roundDec(randReal(0.75, 0.9), 2)},
            {"cosphi", roundDec(randReal(0.78, 0.93), 2)}};
}

const std::map<std::string, std::function<Values()>>& table() {
    static const std::map<std::string, std::function<Values()>> t = {
        {"instIa",
         [] {
             return Values{{"k_a", pickOne(std::vector<double>{5, 10, 20})},
                           {"I_n", pickOne(std::vector<double>{6, 10, 13, 16, 20, 25, 32})}};
         }},
        {"instZs",
         [] {
             return Values{{"U_0", 230},
                           {"I_a", pickOne(std::vector<double>{30, 50, 80, 100, 130, 160, 200, 320})}};
         }},
        {"instRe",
         [] {
             return Values{{"U_L", pickOne(std::vector<double>{50, 25})},
                           {"I_dn", pickOne(std::vector<double>{0.03, 0.1, 0.3, 0.5})}};
         }},
        {"motEta", motorPowers},
        {"motTab", motorPowers},
        {"motNs",
         [] {
             return Values{{"p", pickOne(std::vector<double>{1, 2, 3, 4})},
                           {"f", pickOne(std::vector<double>{50, 50, 50, 60})}};
         }},
        {"motSlip",
         [] {
             const double ns = pickOne(kSyncSpeeds);
             return Values{{"n_s", ns}, {"nr", runningSpeed(ns)}};
         }},
        {"motM",
         [] {
             return Values{{"P_2", pickOne(kMotorPowers)}, {"nr", runningSpeed(pickOne(kSyncSpeeds))}};
         }},
        {"motI3", [] { return ratingPlate("U_N", 400); }},
        {"motI1", [] { return ratingPlate("U", 230); }},
        {"motStart",
         [] {
             return Values{{"k_st", pickOne(std::vector<double>{5, 5.5, 6, 6.5, 7, 7.5, 8})},
                           {"I_N", round3(randReal(2, 40))}};
         }},
        // Starting currents of motors of 2.5–40 A: delta, and a third of a delta's in star.
        {"motYD",
         [] {
             return Values{{"I_stD", round3(randReal(15, 240))}, {"I_stY", round3(randReal(5, 80))}};
         }},
        // The rotor's frequency is the slip's share of the mains': a few hertz.
        {"motFr",
         [] {
             return Values{{"s", round3(randReal(2, 7))}, {"f_r", round3(randReal(1, 3.5))}, {"f", 50.0}};
         }},
        {"enEta",
         [] {
             const double in = round3(randReal(100, 4000));
             return Values{{"P_ind", in}, {"P_ud", round3(in * randReal(0.6, 0.95))}};
         }},
        // A period read off an oscilloscope: whole or half milliseconds.
        {"acT",
         [] {
             return Values{{"f", pickOne(kFrequencies)},
                           {"T", pickOne(std::vector<double>{0.02, 0.01, 0.005, 0.0025, 0.002, 0.001})}};
         }},
        {"acW",
         [] {
             return Values{{"f", pickOne(kFrequencies)}};
         }},
        {"acInst",
         [] {
             return Values{{"Umax", pickOne(std::vector<double>{325, 311, 170, 100, 24})},
                           {"alpha", round(randReal(5, 85))}};
         }},
        {"acVinkel",
         [] {
             const double ms = pickOne(std::vector<double>{1, 2, 2.5, 3, 4, 5, 6, 7.5, 8, 10, 12, 15});
             return Values{{"f", 50.0}, {"t_s", ms / 1000}};
         }},
    };
    return t;
}

} // namespace

std::function<std::map<std::string, double>()> handGenerator(const std::string& key) {
    auto it = table().find(key);
    return it == table().end() ? nullptr : it->second;
}

} // namespace fl
