// The page "eksamen": a timed set of generated exercises without feedback on
// the way. Three screens: the setup, one question at a time with the clock
// counting down, and the results with points, facit, tips and every
// solution. The state and its judging are fl/practice/exam.h's; the page
// owns the timer, which asks an injectable clock.
#pragma once

#include "app/widgets/page.h"
#include "fl/practice/exam.h"

#include <QTimer>

#include <functional>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace app {

class PageHost;
class SheetView;

class EksamenPage : public Page {
    Q_OBJECT
  public:
    explicit EksamenPage(PageHost* host, QWidget* parent = nullptr);

    void drawSetup();
    void drawQuestion();
    void drawResults();

    // Draws the set for the chosen topic, count and limit, and starts the clock.
    void start();
    // Shows exercise `index` (the answer typed so far stays with its exercise).
    void go(int index);
    // Hands in; asks first when some exercises have no answer.
    void handInAsking();
    // What the timer calls each second: the clock, and the hand-in at 0.
    void tick();

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    // Milliseconds; tests run it by hand.
    fl::ExamClock clock;
    // Asked before handing in with `missing` exercises unanswered; true hands in.
    std::function<bool(int missing)> confirmHandIn;

    const fl::Exam& exam() const { return state; }
    const fl::ExamResult& result() const { return judged; }
    QComboBox* topicBox() const { return topics; }
    QComboBox* countBox() const { return counts; }
    QComboBox* timeBox() const { return times; }
    QPushButton* startButton() const { return startBtn; }
    QLineEdit* answerEdit() const { return answer; }
    QPushButton* previousButton() const { return prevBtn; }
    QPushButton* nextButton() const { return nextBtn; }
    QPushButton* handInButton() const { return handInBtn; }
    QLabel* clockLabel() const { return clockText; }
    QLabel* positionLabel() const { return position; }
    const std::vector<QPushButton*>& numberButtons() const { return numbers; }
    QWidget* setupScreen() const { return setup; }
    QWidget* questionScreen() const { return question; }
    QWidget* resultScreen() const { return results; }
    QLabel* scoreLabel() const { return score; }
    QLabel* verdictLabel() const { return verdict; }
    QPushButton* newExamButton() const { return newBtn; }
    const QTimer& timer() const { return ticker; }
    // The rows of the results screen, in order.
    struct ResultRow {
        QWidget* card = nullptr;
        SheetView* text = nullptr;
        QPushButton* solutionButton = nullptr;
        SheetView* solution = nullptr;
    };
    const std::vector<ResultRow>& resultRows() const { return rows; }

  private:
    void finish();
    void showNumbers();
    void showClock();

    PageHost* host;
    fl::Exam state;
    fl::ExamResult judged;
    QTimer ticker;

    QWidget* setup = nullptr;
    QComboBox* topics = nullptr;
    QComboBox* counts = nullptr;
    QComboBox* times = nullptr;
    QPushButton* startBtn = nullptr;
    QLabel* setupMessage = nullptr;

    QWidget* question = nullptr;
    QLabel* questionHeading = nullptr;
    QLabel* position = nullptr;
    QLabel* clockText = nullptr;
    SheetView* statement = nullptr;
    QLineEdit* answer = nullptr;
    QLabel* unit = nullptr;
    QPushButton* prevBtn = nullptr;
    QPushButton* nextBtn = nullptr;
    QPushButton* handInBtn = nullptr;
    QWidget* numberRow = nullptr;
    std::vector<QPushButton*> numbers;

    QWidget* results = nullptr;
    QLabel* resultHeading = nullptr;
    QLabel* score = nullptr;
    QProgressBar* bar = nullptr;
    QLabel* verdict = nullptr;
    QVBoxLayout* rowLayout = nullptr;
    std::vector<ResultRow> rows;
    QPushButton* newBtn = nullptr;
};

} // namespace app
