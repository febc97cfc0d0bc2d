// Exercises on drawn circuits: every template gives one, its facit agrees
// with the forward calculation of the same circuit, and the teacher's keys
// close them.
#include "fl/practice/circuitex.h"

#include "fl/circuit/forward.h"
#include "fl/expr/numbers.h"
#include "fl/fig/schematic.h"
#include "tests/fl/practice/seeded.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

using CircuitExerciseTest = SeededTest<5>;

TEST_F(CircuitExerciseTest, everyTemplateGivesAnExerciseThatTheForwardPassConfirms) {
    for (const CircuitTemplate& t : circuitTemplates()) {
        SCOPED_TRACE(t.name);
        for (int i = 0; i < 20; ++i) {
            const Exercise ex = circuitExercise(t);
            ASSERT_FALSE(ex.empty());
            ASSERT_TRUE(ex.circuit);
            EXPECT_EQ(ex.key, "circ:" + t.mode + "|" + t.name);
            EXPECT_EQ(ex.topic, t.mode == "ac" ? "Kredsløb – vekselstrøm" : "Kredsløb – jævnstrøm");
            Values in = ex.given;
            walk(ex.circuit->root, [&](const CNodePtr& n) {
                if (!n->group) in[n->name] = readValue(n->v);
            });
            const Values out = forward(ex.circuit->root, in, t.mode == "ac");
            ASSERT_TRUE(out.count(ex.target)) << ex.target;
            EXPECT_NEAR(out.at(ex.target), ex.facit, 1e-9 * ex.facit) << ex.target;
            EXPECT_EQ(ex.statement.rfind("<p class=\"hint0\">Givet: <span class=\"v\">U</span> = ", 0), 0u);
            EXPECT_NE(ex.statement.find(". Komponenternes værdier står på tegningen.</p>"),
                      std::string::npos);
            EXPECT_NE(ex.solution.html.find("FACIT"), std::string::npos);
            // The answer, then the circuit's calculated sheet with its steps and drawings.
            EXPECT_NE(ex.solution.html.find("Udregning trin for trin"), std::string::npos)
                << ex.solution.html;
            EXPECT_GE(ex.solution.figs.size(), 2u);
            // The values the statement leaves to the drawing are on it.
            const std::string shown = circuitStatement(ex);
            const RenderResult pass = takeRender(shown);
            ASSERT_EQ(pass.figs.size(), 1u);
            EXPECT_EQ(shown.rfind("<p class=\"fig\"><img src=\"f:0\" width=\"", 0), 0u) << shown;
            walk(ex.circuit->root, [&](const CNodePtr& n) {
                if (n->group) return;
                const std::string value = quantityText(readValue(n->v), unitOf(n->name, ex.circuit->root));
                EXPECT_NE(pass.figs[0].find(value), std::string::npos) << n->name << " = " << value;
            });
        }
    }
}

TEST_F(CircuitExerciseTest, theTeachersKeysCloseTemplates) {
    for (int i = 0; i < 30; ++i) {
        const Exercise ex =
            makeCircuitExercise("ac", [](const std::string& k) { return k != "circ:ac|Kompensering"; });
        ASSERT_FALSE(ex.empty());
        EXPECT_NE(ex.key, "circ:ac|Kompensering");
        EXPECT_EQ(ex.key.rfind("circ:ac|", 0), 0u);
    }
}

} // namespace
} // namespace fl
