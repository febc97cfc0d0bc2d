// The solve driver: every family solved for every quantity it offers (and
// each of the catalogue's rewritten forms checked on the same values), the
// sheets of the classroom cases block by block, the check, the two roots of a
// parallel circuit, and the pieces (substitute, foldOnce, workOut, allForms).
#include "fl/formulas/solve.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/formulas/catalogue.h"
#include "tests/fl/expr/dump.h"
#include "tests/fl/expr/readable.h"
#include "tests/fl/expr/settings_fixture.h"
#include "tests/fl/formulas/markup_util.h"
#include "tests/fl/formulas/sample_values.h"
#include "tests/support/error_of.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using markup_util::has;

struct Block {
    std::string title, body; // as readable text
};

struct Solved {
    double value = 0;
    std::string html;
    std::vector<Block> blocks;
    std::string facit;

    const Block* block(const std::string& title) const {
        for (const Block& b : blocks)
            if (b.title == title) return &b;
        return nullptr;
    }
    std::vector<std::string> titles() const {
        std::vector<std::string> out;
        for (const Block& b : blocks)
            out.push_back(b.title);
        return out;
    }
};

Solved solve(const Formula& f, const std::map<std::string, double>& values, const std::string& target,
             const std::map<std::string, std::string>& labels = {}, const FigureSource& figure = {}) {
    resetFigures();
    Solved s;
    const SolveResult r = solveSheet(f, values, labels, target, figure);
    const RenderResult pass = takeRender(r.html);
    s.value = r.value;
    s.html = r.html;
    static const std::string kStep = "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">";
    s.facit = readable(r.html.substr(0, r.html.find("</div>")), pass.maths);
    for (size_t at = r.html.find(kStep); at != std::string::npos;) {
        const size_t titleAt = r.html.find("</span> ", at) + 8;
        const size_t titleEnd = r.html.find("</p>", titleAt);
        const size_t next = r.html.find(kStep, titleEnd);
        s.blocks.push_back(
            {readable(r.html.substr(titleAt, titleEnd - titleAt), pass.maths),
             readable(r.html.substr(titleEnd + 4,
                                    next == std::string::npos ? std::string::npos : next - titleEnd - 4),
                      pass.maths)});
        at = next;
    }
    return s;
}

double relDiff(double a, double b) {
    return std::fabs(a - b) / std::max(std::fabs(b), 1e-300);
}

// The only places where the answer may differ from the drawn value, and why.
enum class Branch { OtherRoot, Supplement };
struct Exception {
    const char* key;
    const char* target;
    Branch branch;
    const char* reason;
};
const Exception kExceptions[] = {
    {"pRLC", "I_L", Branch::OtherRoot,
     "a capacitive draw (I_C > I_L): the inductive root comes first, the drawn I_L is worked out as the "
     "second"},
    {"pRLC", "I_C", Branch::OtherRoot, "the same for I_C, when the inductive root is still positive"},
    {"triS", "C", Branch::Supplement, "sin⁻¹ gives the acute angle; an obtuse C comes back as 180° − C"},
    {"vecY", "V", Branch::Supplement, "the same for a vector drawn above 90°"},
    {"acInst", "alpha", Branch::Supplement, "the same for a point on the falling half of the curve"},
};

const Exception* exceptionFor(const std::string& key, const std::string& target) {
    for (const Exception& e : kExceptions)
        if (key == e.key && target == e.target) return &e;
    return nullptr;
}

class SolveTest : public SettingsTest {};

TEST_F(SolveTest, everyFamilyReproducesEveryQuantityItOffers) {
    std::mt19937 rng(20240901);
    for (const Formula& f : catalogue()) {
        for (int draw = 0; draw < 12; ++draw) {
            const auto drawn = sample::values(f, rng);
            ASSERT_TRUE(drawn) << f.key << ": no believable values";
            const std::vector<FormulaForm> texts = allForms(f);
            for (size_t i = 0; i < f.forms.size(); ++i) {
                const std::string& target = f.forms[i].var;
                SCOPED_TRACE(f.key + " for " + target);
                std::map<std::string, double> given = *drawn;
                const double hidden = given.at(target);
                given.erase(target);

                Solved s;
                ASSERT_NO_THROW(s = solve(f, given, target));
                if (target != f.forms.front().var) {
                    ASSERT_NE(s.block("Kontrol"), nullptr);
                    EXPECT_TRUE(has(s.block("Kontrol")->body, "✓ passer")) << s.block("Kontrol")->body;
                }
                if (relDiff(s.value, hidden) > 1e-6) {
                    const Exception* e = exceptionFor(f.key, target);
                    ASSERT_NE(e, nullptr) << "got " << s.value << ", drew " << hidden;
                    SCOPED_TRACE(e->reason);
                    if (e->branch == Branch::Supplement) {
                        EXPECT_LE(relDiff(s.value, 180 - hidden), 1e-6);
                    } else {
                        ASSERT_NE(s.block("Anden mulighed"), nullptr);
                        EXPECT_TRUE(has(s.block("Anden mulighed")->body,
                                        fmtWithUnit(hidden, findVar(f, target)->unit)));
                    }
                }

                // The text of allForms is the same expression as the one solved.
                std::map<std::string, double> scope = given;
                for (const FormulaDef& d : f.definitions)
                    scope[d.symbol] = eval(parse(d.expr), scope);
                ASSERT_EQ(texts[i].var, target);
                EXPECT_LE(relDiff(eval(parse(texts[i].expr), scope), eval(chooseForm(f, target).expr, scope)),
                          1e-12)
                    << texts[i].expr;
                // So does the catalogue's own form, the rearranger's fallback, up to the branches above.
                const double byForm = eval(parse(f.forms[i].expr), scope);
                const Exception* e = exceptionFor(f.key, target);
                EXPECT_TRUE(relDiff(byForm, hidden) <= 1e-6 || (e && e->branch == Branch::OtherRoot) ||
                            (e && relDiff(byForm, 180 - hidden) <= 1e-6))
                    << f.forms[i].expr << " gives " << byForm << ", drew " << hidden;
            }
        }
    }
}

TEST_F(SolveTest, ohmForCurrentHasSixBlocksAndPassesTheCheck) {
    const Solved s = solve(*findFormula("ohm"), {{"U", 230}, {"R", 47}}, "I");
    EXPECT_EQ(s.titles(), (std::vector<std::string>{"Det kender vi", "Det skal vi finde",
                                                    "Formlen (formelsamlingen s. 3)",
                                                    "Isolér I – få den til at stå alene",
                                                    "Sæt tallene ind og regn ud", "Kontrol"}));
    EXPECT_DOUBLE_EQ(s.value, 230.0 / 47);
    EXPECT_EQ(s.facit, "FACIT   I = 4,8936 A");
    EXPECT_EQ(s.blocks[0].body, "U = 230 V – SpændingR = 47 Ω – Modstand");
    EXPECT_EQ(s.blocks[1].body, "I – Strøm [A]");
    EXPECT_EQ(s.blocks[3].body, "I · R=UByt om på siderneI=[U / R]Divider med R på begge sider");
    EXPECT_EQ(s.blocks[4].body, "I=[U / R]=[230 / 47]=4,8936 A");
    EXPECT_EQ(s.blocks[5].body, "Sæt resultatet ind i den oprindelige formel – det skal give U = 230 V:"
                                "U=4,8936 · 47= 230 V ✓ passer");
}

TEST_F(SolveTest, ohmForVoltageNeedsNoRearrangingAndNoCheck) {
    const Solved s = solve(*findFormula("ohm"), {{"I", 2}, {"R", 47}}, "U");
    EXPECT_EQ(s.titles(), (std::vector<std::string>{"Det kender vi", "Det skal vi finde",
                                                    "Formlen (formelsamlingen s. 3)", "Isolér U",
                                                    "Sæt tallene ind og regn ud"}));
    EXPECT_EQ(s.blocks[3].body, "U står allerede alene, så vi kan sætte tallene ind med det samme.");
}

TEST_F(SolveTest, quantityThatStandsTwiceUsesTheRewrittenForm) {
    // I = n·E / (n·R_I + R_y) holds n twice.
    const Solved s = solve(*findFormula("cells"), {{"I", 0.5}, {"E", 1.5}, {"RI", 0.2}, {"Ry", 10}}, "n");
    ASSERT_NE(s.block("Isolér n"), nullptr);
    EXPECT_EQ(
        s.block("Isolér n")->body,
        "n står flere steder i formlen, så her bruges den omskrevne formel:n=[(I · Ry) / (E − I · RI)]");
}

TEST_F(SolveTest, heronWorksOutTheHalfPerimeterFirst) {
    const Solved s = solve(*findFormula("heron"), {{"a", 3}, {"b", 4}, {"c", 5}}, "A");
    EXPECT_EQ(s.value, 6);
    EXPECT_TRUE(has(s.blocks[2].body, "s=[(a + b + c) / 2]den halve omkreds")) << s.blocks[2].body;
    const std::string& work = s.block("Sæt tallene ind og regn ud")->body;
    const size_t first = work.find("Først den halve omkreds s:"), then = work.find("Så A:");
    ASSERT_NE(then, std::string::npos);
    EXPECT_TRUE(first < then && has(work.substr(first, then - first), "=6")) << work;
}

struct RootRow {
    const char* name;
    const char* target;
    std::map<std::string, double> values;
    double answer;
    bool second;   // "Anden mulighed" follows with the other root
    bool replaced; // the other root replaced a negative first answer
};

const RootRow kRootRows[] = {
    {"bothRootsPositive", "I_C", {{"I", 5}, {"I_R", 4}, {"I_L", 8}}, 5, true, false},
    {"inductiveRootNegative", "I_C", {{"I", 5}, {"I_R", 4}, {"I_L", 1}}, 4, false, true},
    {"otherRootZero", "I_L", {{"I", 5}, {"I_R", 3}, {"I_C", 4}}, 8, false, false},
};

TEST_F(SolveTest, parallelCircuitHasTwoRoots) {
    const Formula& f = *findFormula("pRLC");
    for (const RootRow& row : kRootRows) {
        SCOPED_TRACE(row.name);
        const Solved s = solve(f, row.values, row.target);
        EXPECT_NEAR(s.value, row.answer, 1e-12);
        const std::string& work = s.block("Sæt tallene ind og regn ud")->body;
        EXPECT_EQ(has(work, htmlToPlain(f.altNote)), row.replaced);
        ASSERT_EQ(s.block("Anden mulighed") != nullptr, row.second);
        if (row.second) {
            EXPECT_TRUE(has(s.block("Anden mulighed")->body, "Formlen har to svar – hvis kredsen i stedet er "
                                                             "kapacitiv (IC > IL):"));
            EXPECT_EQ(s.titles().back(), "Kontrol") << "the check follows the second answer";
        }
    }
}

TEST_F(SolveTest, noRealAnswerThrows) {
    // A total current below the resistive one leaves √ of a negative number.
    EXPECT_EQ(errorOf([] {
                  solve(*findFormula("pRLC"), {{"I", 5}, {"I_R", 6}, {"I_C", 2}}, "I_L");
              }),
              "intet reelt svar");
}

TEST_F(SolveTest, checkTolerance) {
    struct Row {
        const char* name;
        double y, factor;
        bool passes;
    } const rows[] = {
        {"off2e-6", 100, 1.000002, false},
        {"off5e-7", 100, 1.0000005, true},
        {"smallValueAbsoluteFloor", 0.5, 1.000001, true},
        {"smallValueBeyondFloor", 0.5, 1.000004, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        // y = 2·x by its own form, and x by a rewritten form off by `factor`.
        Formula skewed;
        skewed.vars = {{"y", "Værdi", "V"}, {"x", "Tal", "V"}};
        skewed.forms = {{"y", "x+x"}, {"x", "y/2*" + fmtPlain(row.factor, 17)}};
        const Solved s = solve(skewed, {{"y", row.y}}, "x");
        const std::string& check = s.block("Kontrol")->body;
        EXPECT_EQ(has(check, "✓ passer"), row.passes) << check;
        EXPECT_EQ(has(check, "✗ passer ikke – tallene hænger måske ikke sammen"), !row.passes);
    }
}

TEST_F(SolveTest, answerBoxAddsAPrefixWhereItReadsEasier) {
    struct Row {
        const char* unit;
        double x;
        const char* facit;
    } const rows[] = {
        {"A", 0.047, "FACIT   y = 0,047 A (= 47 mA)"},
        {"Ω", 22000, "FACIT   y = 22000 Ω (= 22 kΩ)"},
        {"Hz", 3e13, "FACIT   y = 30·10¹² Hz (= 30000 GHz)"},
        {"W", 4700, "FACIT   y = 4700 W"},
        {"V", 0.1, "FACIT   y = 0,1 V"},
        {"m", 0.047, "FACIT   y = 0,047 m"},
        {"A", 1e-13, "FACIT   y = 0 A"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.facit);
        Formula f;
        f.vars = {{"y", "Værdi", row.unit}, {"x", "Tal", row.unit}};
        f.forms = {{"y", "x"}};
        const Solved s = solve(f, {{"x", row.x}}, "y");
        EXPECT_EQ(s.facit, row.facit);
        EXPECT_TRUE(row.x >= 1e-12 || s.value == 0.0) << "a result under 1e-12 is 0";
    }
}

// The wanted field arrives empty (NaN) or still holding an earlier answer;
// neither is a given.
TEST_F(SolveTest, knownValuesShowWhatTheStudentTyped) {
    for (const double wanted : {std::nan(""), 99.0}) {
        SCOPED_TRACE(wanted);
        const Solved s =
            solve(*findFormula("ohm"), {{"U", 230}, {"R", 4700}, {"I", wanted}}, "I", {{"R", "4,7k"}});
        EXPECT_EQ(s.blocks[0].body, "U = 230 V – SpændingR = 4,7k Ω – Modstand");
    }
}

TEST_F(SolveTest, anglesAreShownAsAngles) {
    const Solved s = solve(*findFormula("segment"), {{"r", 2}, {"V", 30}}, "A");
    EXPECT_TRUE(has(s.block("Sæt tallene ind og regn ud")->body, "(π · 30°) / 180"));
}

TEST_F(SolveTest, figureIsDrawnFromTheSolvedValues) {
    std::string key, sought;
    std::map<std::string, double> seen;
    auto source = [&](const std::string& k, const std::map<std::string, double>& v, const std::string& s) {
        key = k, seen = v, sought = s;
        return figure("<line/>", 460, 280);
    };
    const Solved s = solve(*findFormula("ohm"), {{"U", 230}, {"R", 47}}, "I", {}, source);
    EXPECT_EQ(key, "circ");
    EXPECT_EQ(sought, "I");
    EXPECT_DOUBLE_EQ(seen.at("I"), 230.0 / 47);
    const size_t fig = s.html.find("</div></div><div class=\"spoiler\"><p class=\"fig\"><img src=\"f:0\"");
    ASSERT_NE(fig, std::string::npos) << "the figure follows the answer box";
    EXPECT_LT(fig, s.html.find("Udregning trin for trin"));
    EXPECT_FALSE(
        has(solve(*findFormula("reson"), {{"L", 0.1}, {"C", 1e-6}}, "f", {}, source).html, "class=\"fig\""))
        << "a family without a figure key has none";
}

// One level per round shows in the rows of workOut below and in the tools' working.
TEST_F(SolveTest, foldOnceGivesAnInverseTrigonometricResultAsAnAngle) {
    EXPECT_TRUE(foldOnce(parse("asin(0.5)"))->degree);
    EXPECT_FALSE(foldOnce(parse("sqrt(0.25)"))->degree);
}

TEST_F(SolveTest, workOutRowsAndLimits) {
    struct Row {
        const char* name;
        NodePtr expr;
        size_t rows;
        const char* last;
    };
    NodePtr deep = makeVar("x");
    for (int i = 0; i < 25; ++i)
        deep = makeFunc("sqrt", deep);
    const Row rows[] = {
        {"nothingToPutIn", parse("2+3"), 2, "<b>5 A</b>"},
        {"twentyRoundsAtMost", deep, 22, "<b>1 A</b>"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<WorkRow> out;
        std::map<std::string, double> values{{"x", 1}};
        const double v = workOut(out, "I", row.expr, values, {}, "A");
        ASSERT_EQ(out.size(), row.rows);
        EXPECT_EQ(out.front().lhs, "<span class=\"v\">I</span>");
        EXPECT_EQ(out.back().rhs, row.last);
        EXPECT_EQ(values.at("I"), v);
    }
    for (const char* bad : {"sqrt(0-1)", "1/(2-2)"}) {
        SCOPED_TRACE(bad);
        std::vector<WorkRow> out;
        std::map<std::string, double> values;
        EXPECT_THROW(workOut(out, "I", parse(bad), values, {}, "A"), std::runtime_error);
        EXPECT_EQ(values.count("I"), 0u);
    }
}

TEST_F(SolveTest, allFormsWriteTheFormulaLanguage) {
    // Grouping that the text must keep.
    const std::map<std::string, double> v = {{"a", 2}, {"b", 3}, {"c", 5}};
    for (const char* text :
         {"-2**2", "2**-1", "a/(b*c)", "a/(b/c)", "(a**b)**c", "-(a-b)", "a-(b-c)", "1/a", "sin(a)**2"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(dump(parse(formulaText(parse(text)))), dump(parse(text)));
    }
    const NodePtr negative =
        makeProdRaw({{'*', makeNum(-3)}, {'/', makeSumRaw({{1, makeNum(1.5e-7)}, {-1, makeVar("a")}})}});
    EXPECT_DOUBLE_EQ(eval(parse(formulaText(negative)), v), -3 / (1.5e-7 - 2));
}

} // namespace
} // namespace fl
