// The own formula sheet: what a pinned family shows, the student's note as
// plain text, and the search that offers families to pin.
#include "fl/glossary/minform.h"

#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/formulas/markup_util.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using Minform = SettingsTest;

using namespace markup_util;

TEST_F(Minform, showsPinnedFamiliesInOrderWithTheStudentsNotes) {
    const std::string html =
        minformHtml({{"powerU", ""}, {"gone", "x"}, {"ohm", "Husk: <b> er ikke fed\nNy linje"}}, {});
    EXPECT_EQ(count(html, "<div class=\"card\">"), 2u) << "a key no longer in the catalogue is left out";
    EXPECT_LT(html.find("Effekt ud fra spænding og modstand"), html.find("Ohms lov"));
    EXPECT_TRUE(has(html, "<div class=\"note\"><p>Husk: &lt;b&gt; er ikke fed<br>Ny linje</p></div>"));
    EXPECT_EQ(count(html, "class=\"note\""), 1u) << "no empty note box";
    EXPECT_EQ(count(html, "class=\"mfforms\""), 2u);
    EXPECT_TRUE(has(html, "Spænding [V]")) << "the legend";
}

TEST_F(Minform, optionsLeaveOutTheFormsAndTheLegend) {
    const std::string html = minformHtml({{"ohm", ""}}, {false, false});
    EXPECT_FALSE(has(html, "mfforms"));
    EXPECT_FALSE(has(html, "[V]"));
    EXPECT_TRUE(has(html, "class=\"eq\""));
    EXPECT_NE(minformHtml({}, {}).find("Din formelsamling er tom."), std::string::npos);
}

TEST(MinformCandidates, everyWordMustMatchAndPinnedOnesAreLeftOut) {
    auto keys = [](const std::vector<const Formula*>& list) {
        std::vector<std::string> out;
        for (const Formula* f : list)
            out.push_back(f->key);
        return out;
    };
    const auto ohm = keys(minformCandidates("ohms lov", {}, 20));
    EXPECT_EQ(std::count(ohm.begin(), ohm.end(), "ohm"), 1);
    EXPECT_EQ(keys(minformCandidates("ohms lov", {{"ohm", ""}}, 20)).size(), ohm.size() - 1);
    const auto fald = keys(minformCandidates("spaendingsfald procent", {}, 20));
    EXPECT_EQ(std::count(fald.begin(), fald.end(), "vd3"), 1);
    EXPECT_EQ(minformCandidates("", {}, 5).size(), 5u);
    EXPECT_TRUE(minformCandidates("qqq", {}, 5).empty());
}

} // namespace
} // namespace fl
