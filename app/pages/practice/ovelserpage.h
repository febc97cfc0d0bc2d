// The page "ovelser": a fresh generated exercise at each click, the answer
// judged and diagnosed, the formula as a hint, the worked solution, and the
// pocket calculator beside it. Every judged exercise goes into the practice
// records once. Drawing, judging and wording are fl/practice's.
#pragma once

#include "app/widgets/page.h"
#include "fl/practice/exercise.h"
#include "fl/practice/judge.h"

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace app {

class CalcPanel;
class PageHost;
class ResultArea;
class SheetView;

class OvelserPage : public Page {
    Q_OBJECT
  public:
    explicit OvelserPage(PageHost* host, QWidget* parent = nullptr);

    // A new exercise for the chosen topic; the answer field empties.
    void next();
    // Judges the typed answer and shows the verdict, with a tip when the
    // answer looks like a typical mistake.
    void check();
    // The worked solution under the exercise.
    void showSolution();
    // The formula to use, with its page in the book.
    void showHint();
    // Sets the running score back to nothing.
    void resetScore();

    // Re-reads the topic from the store ("ov:" links write it) and what the
    // teacher has closed.
    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    const fl::Exercise& exercise() const { return ex; }
    QComboBox* topicBox() const { return topics; }
    QLineEdit* answerEdit() const { return answer; }
    QPushButton* checkButton() const { return checkBtn; }
    QPushButton* nextButton() const { return nextBtn; }
    QPushButton* solutionButton() const { return solutionBtn; }
    QPushButton* hintButton() const { return hintBtn; }
    QCheckBox* soundBox() const { return sound; }
    QLabel* scoreLabel() const { return score; }
    SheetView* statementView() const { return statement; }
    SheetView* verdictView() const { return verdict; }
    SheetView* hintView() const { return hint; }
    ResultArea* solutionArea() const { return solution; }
    CalcPanel* calculator() const { return calc; }

    // Played on a right answer when "Lyd ved rigtigt svar" is ticked; a
    // test replaces it to listen.
    std::function<void()> playSound;

  private:
    void fillTopics();
    void showExercise();
    void showVerdict();
    void showScore();
    void count(bool right);
    void link(const QString& href);

    PageHost* host;
    fl::Exercise ex;
    fl::AnswerJudgement judgement;
    bool judged = false;  // a verdict stands for the exercise on screen
    bool counted = false; // the exercise is in the records
    bool revealed = false;

    QComboBox* topics = nullptr;
    QCheckBox* sound = nullptr;
    QLabel* score = nullptr;
    SheetView* statement = nullptr;
    QLineEdit* answer = nullptr;
    QLabel* unit = nullptr;
    QPushButton* checkBtn = nullptr;
    QPushButton* hintBtn = nullptr;
    QPushButton* solutionBtn = nullptr;
    QPushButton* nextBtn = nullptr;
    SheetView* verdict = nullptr;
    SheetView* hint = nullptr;
    ResultArea* solution = nullptr;
    CalcPanel* calc = nullptr;
};

} // namespace app
