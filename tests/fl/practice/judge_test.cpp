// Judging answers and the diagnosis: every typical mistake made for real on
// generated exercises, with the explanation it must get, and the wording of
// the verdict.
#include "fl/practice/judge.h"

#include "fl/expr/eval.h"
#include "fl/expr/parser.h"
#include "fl/formulas/catalogue.h"
#include "tests/fl/practice/seeded.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fl {
namespace {

using JudgeTest = SeededTest<11>;

TEST_F(JudgeTest, answersInEveryAcceptedFormAreJudged) {
    struct Row {
        const char* name;
        const char* text;
        double facit, scale;
        bool empty, unreadable, correct;
    } rows[] = {
        {"two per cent off is right", "2,04", 2, 1, false, false, true},
        {"just past two per cent is wrong", "2.05", 2, 1, false, false, false},
        {"a blank between thousands", "5 500", 5500, 1, false, false, true},
        {"Danish thousands points", "1.500", 1500, 1, false, false, true},
        {"the same text read as a decimal", "1.500", 1.5, 1, false, false, true},
        {"thousands points and a decimal comma", "12.500,5", 12500.5, 1, false, false, true},
        {"a capacitance as a plain number in µF", "47", 47e-6, 1e-6, false, false, true},
        {"a capacitance with its prefix", "47u", 47e-6, 1e-6, false, false, true},
        {"a capacitance in farad, scaled once more", "0,000047", 47e-6, 1e-6, false, false, false},
        {"nothing typed", "   ", 2, 1, true, false, false},
        {"a unit typed along", "2,38 A", 2.38, 1, false, true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const AnswerJudgement j = judgeAnswer(row.text, row.facit, row.scale);
        EXPECT_EQ(j.empty, row.empty);
        EXPECT_EQ(j.unreadable, row.unreadable);
        EXPECT_EQ(j.correct, row.correct);
    }
}

// A mistake a student makes: the wrong computation, written in the formula
// language over the exercise's givens, and the explanation it must get.
struct Mistake {
    const char* name;
    const char* family;
    const char* target;
    const char* wrong;
    const char* message; // the start of it
};

const Mistake kMistakes[] = {
    {"η forgotten on the intake", "motEta", "P_1", "P_2", "Dit svar er η gange for lille. Har du glemt η"},
    {"η forgotten on the output", "motEta", "P_2", "P_1", "Dit svar er η gange for stort."},
    {"cos φ forgotten when finding I", "Pac", "I", "P/U", "Dit svar er cos φ gange for lille."},
    {"cos φ forgotten when finding P", "Pac", "P", "U*I", "Dit svar er cos φ gange for stort."},
    {"poles for pole pairs, finding p", "motNs", "p", "2*60*f/n_s",
     "Dit svar er dobbelt så stort som facit. Har du brugt antal <b>poler</b>"},
    {"poles for pole pairs, finding n_s", "motNs", "n_s", "60*f/(2*p)",
     "Dit svar er halvt så stort som facit. Har du brugt antal <b>poler</b>"},
    {"the 60 forgotten, finding f", "motNs", "f", "n_s*p", "Dit svar er 60 gange for stort."},
    {"the 60 forgotten, finding n_s", "motNs", "n_s", "f/p", "Dit svar er 60 gange for lille."},
    {"2π forgotten in ω", "acW", "omega", "f", "Dit svar er 2π gange for lille. Husk ω = 2 · π · f."},
    {"ω given for f", "acW", "f", "omega", "Dit svar er 2π gange for stort. f = ω / (2 · π)."},
    {"√3 forgotten in three-phase power", "tfS", "S", "U_N*I_N",
     "Dit svar er √3 gange for lille. Har du glemt √3"},
    {"phase and line mixed", "tfS", "I_N", "S/U_N",
     "Dit svar er √3 gange for stort. Har du blandet netspænding"},
    {"the cable counted one way only", "wire", "RL", "rho*(l/2)/q",
     "Dit svar er halvt så stort som facit. Har du glemt, at lederlængden"},
    {"the cable doubled twice", "wire", "RL", "rho*2*l/q",
     "Dit svar er dobbelt så stort som facit. Har du ganget kabellængden"},
    {"the half of a triangle forgotten", "triA", "A", "h*g",
     "Dit svar er præcis dobbelt så stort som facit."},
    {"a factor 2 forgotten", "t30h", "c", "a", "Dit svar er præcis halvt så stort som facit"},
    {"star and delta power mixed", "tfPDY", "P_Y", "P_D",
     "Dit svar er 3 gange for stort. Har du blandet effekten"},
    {"one phase only", "tfPf", "P", "U_F*I_F*cosphi",
     "Dit svar er 3 gange for lille. Har du kun regnet én fase"},
    {"1/… forgotten in parallel", "par2", "Rt", "1/R1+1/R2",
     "Dit svar er det omvendte af facit. Har du glemt at tage 1/… til sidst? Ved parallelle"},
    {"numerator and denominator swapped", "XC", "XC", "2*PI*f*C",
     "Dit svar er det omvendte af facit (1 delt"},
    {"the root forgotten", "ZRL", "Z", "R**2+XL**2", "Dit svar er facit i anden."},
    {"the square forgotten", "square", "A", "a", "Dit svar er kvadratroden af facit."},
    {"watt for kilowatt", "enE", "E_kWh", "P_kW*1000*t", "Dit svar er 1000 gange for stort."},
    {"kilo-ohm taken as ohm", "ohm", "I", "U/(R*1000)", "Dit svar er 1000 gange for lille."},
    {"µ forgotten", "kompC", "QC", "C*1e6*2*PI*f*U**2", "Dit svar er en million gange for stort."},
    {"farad typed for µF", "XC", "C", "1e-6/(2*PI*f*XC)", "Dit svar er en million gange for lille."},
    {"peak for rms", "eff", "Ueff", "Umax", "Dit svar er √2 gange for stort."},
    {"rms for peak", "eff", "Umax", "Ueff", "Dit svar er √2 gange for lille."},
    {"2π forgotten, finding L", "XL", "L", "XL/f", "Dit svar er 2π gange for stort. Har du blandet X og L"},
    {"2π forgotten, finding X_L", "XL", "XL", "f*L", "Dit svar er 2π gange for lille. Har du glemt 2 · π"},
    {"a decimal for a percentage", "vd3", "dUp", "dU/U",
     "Dit svar er 100 gange for lille – skal svaret være i procent"},
    {"a percentage for a decimal", "vd3", "dU", "dUp*U", "Dit svar er 100 gange for stort"},
    {"the difference the wrong way round", "vd2", "dU", "UB-U",
     "Talværdien er rigtig, men fortegnet er forkert."},
    {"an angle in radians", "sinV", "V", "asin(mod/hyp)*PI/180", "Dit svar ser ud til at være i radianer."},
    {"cos φ for the angle", "phi", "phi", "cosphi",
     "Du har angivet cos φ – der skal svares med selve vinklen φ"},
    {"the angle for cos φ", "phi", "cosphi", "phi", "Du har angivet vinklen φ – der skal svares med cos φ"},
    {"the angle in radians for cos φ", "phi", "cosphi", "phi*PI/180", "Du har angivet vinklen i radianer"},
};

TEST_F(JudgeTest, eachTypicalMistakeGetsItsOwnExplanation) {
    for (const Mistake& m : kMistakes) {
        SCOPED_TRACE(m.name);
        const Formula* f = findFormula(m.family);
        ASSERT_NE(f, nullptr);
        int checked = 0;
        for (int i = 0; i < 30; ++i) {
            const Exercise ex = exerciseFor(*f, m.target);
            ASSERT_FALSE(ex.empty());
            const double answer = eval(parse(m.wrong), ex.given);
            const std::vector<DiagnosisCandidate> all = diagnosisCandidates(ex.facit, ex);
            size_t own = 0;
            while (own < all.size() && all[own].message.rfind(m.message, 0) != 0)
                ++own;
            ASSERT_LT(own, all.size()) << "no candidate says " << m.message;
            // Where an earlier mistake gives the same number, that one is named, rightly.
            bool ambiguous = false;
            for (size_t k = 0; k < own; ++k)
                ambiguous = ambiguous || (std::isfinite(all[k].value) && all[k].value != 0 &&
                                          std::fabs(answer - all[k].value) <= std::fabs(all[k].value) * 0.02);
            if (ambiguous) continue;
            ++checked;
            EXPECT_EQ(diagnoseAnswer(answer, ex.facit, ex).rfind(m.message, 0), 0u)
                << ::testing::PrintToString(ex) << " answered " << answer;
        }
        EXPECT_GE(checked, 10) << "too few exercises where this mistake stands alone";
    }
}

TEST_F(JudgeTest, nearAndFarAnswers) {
    const Exercise ex = exerciseFor(*findFormula("ohm"), "R");
    ASSERT_FALSE(ex.empty());
    const double f = ex.facit;
    EXPECT_EQ(diagnoseAnswer(f * 1.07, f, ex).rfind("Du er tæt på.", 0), 0u);
    EXPECT_EQ(diagnoseAnswer(f * 1.12, f, ex), "");
    EXPECT_EQ(diagnoseAnswer(0, f, ex), ""); // no mistake gives zero
    // Half the facit on a motor page is the poles, not a bare factor 2.
    const Exercise motor = exerciseFor(*findFormula("motSlip"), "nr");
    ASSERT_FALSE(motor.empty());
    EXPECT_NE(diagnoseAnswer(0.5, 1, motor).find("<b>polpar</b>"), std::string::npos);
}

TEST_F(JudgeTest, theVerdictReadsAsOnThePage) {
    const Exercise ex = exerciseFor(*findFormula("ohm"), "I");
    const Exercise cap = exerciseFor(*findFormula("XC"), "C");
    ASSERT_FALSE(ex.empty());
    ASSERT_FALSE(cap.empty());
    EXPECT_EQ(verdictHtml(judgeAnswer("2,38 A", ex.facit, 1), ex),
              "<div class=\"msg\">Jeg kan ikke læse dit svar. Skriv et tal, fx 2,38.</div>");
    EXPECT_EQ(verdictHtml(judgeAnswer("", cap.facit, cap.scale), cap),
              "<div class=\"msg\">Jeg kan ikke læse dit svar. Skriv et tal, fx 2,38 eller 70u.</div>");
    EXPECT_EQ(verdictHtml(judgeAnswer(fmtValue10(ex.facit), ex.facit, 1), ex),
              "<div class=\"msg ok-box\">✓ <b>Rigtigt!</b></div>");
    EXPECT_EQ(verdictHtml(judgeAnswer(fmtValue10(ex.facit * 1.01), ex.facit, 1), ex),
              "<div class=\"msg ok-box\">✓ <b>Rigtigt!</b> (det præcise svar er " +
                  shownValue(ex.facit, "A") + ")</div>");
    const std::string wrong = verdictHtml(judgeAnswer(fmtValue10(ex.facit * 1000), ex.facit, 1), ex);
    EXPECT_EQ(wrong,
              "<div class=\"msg bad\">✗ Ikke helt. Prøv igen – eller tryk \"Hint\".</div><div "
              "class=\"note\"><b>Tip:</b> Dit svar er 1000 gange for stort. Tjek enhederne og præfikserne: "
              "mA ↔ A, W ↔ kW, mH ↔ H, mm ↔ m, ms ↔ s.</div>");
    EXPECT_EQ(verdictHtml(judgeAnswer(fmtValue10(ex.facit * 7), ex.facit, 1), ex),
              "<div class=\"msg bad\">✗ Ikke helt. Prøv igen – eller tryk \"Hint\".</div>");
}

} // namespace
} // namespace fl
