// The rearranger: the words of each step, the shape of the isolated side, and
// what it refuses.
#include "fl/expr/isolate.h"

#include "fl/expr/markup.h"
#include "fl/expr/parser.h"
#include "fl/expr/render.h"
#include "tests/fl/expr/dump.h"
#include "tests/fl/expr/readable.h"
#include "tests/fl/expr/settings_fixture.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

struct Row {
    const char* name;
    const char* expr;
    const char* lhs; // the formula is lhs = expr
    const char* target;
    std::vector<std::string> notes;
    const char* result; // dump of the isolated side
};

const char* const kSwap = "Byt om på siderne";
// clang-format off
const Row kRows[] = {
    {"ohmForI", "I*R", "U", "I", {kSwap, "Divider med R på begge sider"}, "(prod *U /R)"},
    {"parallelForR1", "1/(1/R1+1/R2)", "Rt", "R1",
     {kSwap, "Gang med ([1 / R1 + 1 / R2]) og divider med Rtotal på begge sider",
      "Træk [1 / R2] fra på begge sider",
      "Gang med R1 og divider med ([1 / Rtotal − 1 / R2]) på begge sider"},
     "(prod *1 /(sum +(prod *1 /Rt) -(prod *1 /R2)))"},
    {"powerForI", "I**2*R", "P", "I",
     {kSwap, "Divider med R på begge sider", "Tag kvadratroden på begge sider"}, "(sqrt (prod *P /R))"},
    // π lands right after the number; the other factors keep their order.
    {"capacitanceForF", "1/(2*PI*f*XC)", "C", "f",
     {kSwap, "Gang med 2 · π · f · XC og divider med C på begge sider",
      "Divider med 2 · π · XC på begge sider"},
     "(prod *1 /2 /π /XC /C)"},
    {"negativeTerm", "a-x", "b", "x", {kSwap, "Læg x til og træk b fra på begge sider"}, "(sum +a -b)"},
    {"mixedSum", "x+a-c+d", "y", "x", {kSwap, "Træk a og d fra og læg c til på begge sider"},
     "(sum +y -a +c -d)"},
    {"mixedProduct", "x*a/c*b", "y", "x", {kSwap, "Divider med a · b og gang med c på begge sider"},
     "(prod *y *c /a /b)"},
    {"sumAsFactor", "(x+a)*b", "y", "x", {kSwap, "Divider med b på begge sider", "Træk a fra på begge sider"},
     "(sum +(prod *y /b) -a)"},
    {"sine", "sin(x)", "a", "x", {kSwap, "Tag sin⁻¹ på begge sider"}, "(asin a)"},
    {"root", "sqrt(x)", "a", "x", {kSwap, "Sæt begge sider i anden"}, "(pow a 2)"},
};
// clang-format on

class IsolateTest : public SettingsTest {};

TEST_F(IsolateTest, stepsAndResult) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        resetFigures();
        Isolation out;
        ASSERT_TRUE(isolate(parse(row.expr), row.lhs, row.target, out));
        const RenderResult pass = takeRender("");
        std::vector<std::string> notes;
        for (const IsolateStep& s : out.steps) {
            notes.push_back(readable(s.note, pass.maths));
            EXPECT_FALSE(s.plain);
        }
        EXPECT_EQ(notes, row.notes);
        EXPECT_EQ(dump(out.result), row.result);
        // Each row shows the two sides after its operation, ending with the target alone.
        EXPECT_EQ(readable(out.steps.back().lhs, pass.maths),
                  readable(render(makeVar(row.target), false), {}));
        const std::string result = renderMath(out.result);
        EXPECT_EQ(readable(out.steps.back().rhs, pass.maths), readable(result, takeRender("").maths));
    }
}

struct Refusal {
    const char* name;
    const char* expr;
    const char* target;
    bool rendersSteps; // whether it got as far as writing steps
};

const Refusal kRefusals[] = {
    {"targetTwice", "Rt+Rt*a", "Rt", false},   {"targetIsTheLeftSide", "I*R", "U", false},
    {"targetInExponent", "a*2**x", "x", true}, {"cube", "x**3*a", "x", true},
    {"logarithm", "log(x)", "x", true},        {"absolute", "abs(x)+1", "x", true},
};

TEST_F(IsolateTest, refusals) {
    for (const Refusal& row : kRefusals) {
        SCOPED_TRACE(row.name);
        resetFigures();
        Isolation out;
        EXPECT_FALSE(isolate(parse(row.expr), "U", row.target, out));
        // A target that occurs twice is never attempted: nothing is rendered.
        EXPECT_EQ(!takeRender("").maths.empty() || !out.steps.empty(), row.rendersSteps);
    }
}

// A chain of n square roots takes n passes, and the 26th is the last one.
TEST_F(IsolateTest, givesUpAfterTwentySixPasses) {
    for (int depth : {25, 26}) {
        SCOPED_TRACE(depth);
        NodePtr expr = makeVar("x");
        for (int i = 0; i < depth; ++i)
            expr = makeFunc("sqrt", expr);
        Isolation out;
        EXPECT_EQ(isolate(expr, "y", "x", out), depth == 25);
    }
}

} // namespace
} // namespace fl
