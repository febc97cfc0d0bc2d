// What the teacher's off set closes: routes, formula families and the finer
// keys of the practice and glossary lists, and the change between two sets.
#include "net/locks.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* name;
    net::OffSet off;
    const char* asked;
    const char* reason; // "" = open
};

TEST(Locks, routesAndFamilies) {
    const Row rows[] = {
        {"compensation closes its tool", {"ac_komp"}, "komp", "ac_komp"},
        {"compensation closes its families", {"ac_komp"}, "kompQ", "ac_komp"},
        {"calculators close every family first", {"ac_komp", "udregnere"}, "kompQ", "udregnere"},
        {"first row in table order wins", {"jaevn", "kreds"}, "kreds", "kreds"},
        {"the demonstration is one of the tools", {"vaerktoj"}, "acdemo", "vaerktoj"},
        {"the colour code is a small tool", {"smaa"}, "farve", "smaa"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(net::offReason(row.asked, row.off), row.reason);
        EXPECT_EQ(net::isOpen(row.asked, row.off), std::string(row.reason).empty());
    }
}

TEST(Locks, keys) {
    const Row rows[] = {
        {"text problem", {"ac_komp"}, "tekst:komp", "ac_komp"},
        {"prefix key closes all below it", {"veksel"}, "circ:ac|Serie RL", "veksel"},
        {"prefix key needs the whole prefix", {"veksel"}, "circ:ac", ""},
        {"exact key does not match by prefix", {"ac_komp"}, "tekst:kompx", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(net::offReasonKey(row.asked, row.off), row.reason);
        EXPECT_EQ(net::isOpenKey(row.asked, row.off), std::string(row.reason).empty());
    }
}

TEST(Locks, changeBetweenTwoSetsInTableOrder) {
    const net::OffChange change = net::diffOff({"ac_komp", "nosuch"}, {"ac_trafo", "ovelser", "nosuch"});
    EXPECT_EQ(change.opened, (std::vector<std::string>{"Kompensering"}));
    EXPECT_EQ(change.closed, (std::vector<std::string>{"Øvelser", "Transformer"}));
}

} // namespace
