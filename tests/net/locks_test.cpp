// What the teacher's off set closes: routes, formula families and the finer
// keys of the practice and glossary lists, and the change between two sets.
#include "net/locks.h"

#include <gtest/gtest.h>

namespace {

TEST(Locks, routesFamiliesAndKeys) {
    const struct {
        const char* name;
        net::OffSet off;
        const char* asked;
        const char* reason; // "" = open
        bool key = false;   // a finer key of a list, not a route or family
    } rows[] = {
        {"compensation closes its tool", {"ac_komp"}, "komp", "ac_komp"},
        {"compensation closes its families", {"ac_komp"}, "kompQ", "ac_komp"},
        {"calculators close every family first", {"ac_komp", "udregnere"}, "kompQ", "udregnere"},
        {"first row in table order wins", {"jaevn", "kreds"}, "kreds", "kreds"},
        {"the demonstration is one of the tools", {"vaerktoj"}, "acdemo", "vaerktoj"},
        {"the colour code is a small tool", {"smaa"}, "farve", "smaa"},
        {"text problem", {"ac_komp"}, "tekst:komp", "ac_komp", true},
        {"prefix key closes all below it", {"veksel"}, "circ:ac|Serie RL", "veksel", true},
        {"prefix key needs the whole prefix", {"veksel"}, "circ:ac", "", true},
        {"exact key does not match by prefix", {"ac_komp"}, "tekst:kompx", "", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.key ? net::offReasonKey(row.asked, row.off) : net::offReason(row.asked, row.off),
                  row.reason);
    }
}

TEST(Locks, changeBetweenTwoSetsInTableOrder) {
    const net::OffChange change = net::diffOff({"ac_komp", "nosuch"}, {"ac_trafo", "ovelser", "nosuch"});
    EXPECT_EQ(change.opened, (std::vector<std::string>{"Kompensering"}));
    EXPECT_EQ(change.closed, (std::vector<std::string>{"Øvelser", "Transformer"}));
}

} // namespace
