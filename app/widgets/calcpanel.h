// The pocket calculator: a line that takes the typed language of the number
// readers, a live preview of what is computed, a keypad, a history whose
// results can become an exercise's answer, and chips with the exercise's
// given values. The editing rules of the keypad and of Tab are plain
// functions (applyKey, tabTarget) so they can be tested without a widget.
#pragma once

#include <QString>
#include <QWidget>

#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace app {

class FlowLayout;
class SheetView;

// The line after a key: its text and where the cursor stands.
struct CalcEdit {
    QString text;
    int cursor = 0;
};
// `insert` is a keypad entry ("frac", "inv", "#BS", "#CLR" or text); the
// selection runs from selStart to selEnd (equal when nothing is selected).
CalcEdit applyKey(const QString& text, int selStart, int selEnd, const QString& insert);
// Where Tab moves the cursor in "(…)/(…)"; -1 when Tab should leave the line.
int tabTarget(const QString& text, int cursor);

struct CalcKey {
    const char* insert;
    const char* label;
    const char* tip;
};
const std::vector<CalcKey>& calcKeys();

class CalcPanel : public QWidget {
    Q_OBJECT
  public:
    explicit CalcPanel(bool large = false, QWidget* parent = nullptr);

    // Chips that put the exercise's numbers into the line; replaces earlier ones.
    void setGiven(const std::vector<double>& values);
    // The field "→ svar" writes into; null for none.
    void setAnswerTarget(QLineEdit* field);

    void press(const QString& insert);
    // Enter and "=": a line with a value goes into the history.
    void finish();
    // After a change of the number settings or the theme.
    void refresh();

    QLineEdit* lineEdit() const { return line; }
    SheetView* liveView() const { return liveSheet; }
    SheetView* historyView() const { return histSheet; }
    QPushButton* key(const QString& label) const;
    double lastAnswer() const { return ans; }
    int historySize() const { return static_cast<int>(history.size()); }

  signals:
    // A finished line with its value, for the window's results strip.
    void finished(const QString& expression, double value);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Entry {
        QString expression;
        double value = 0;
    };

    void live();
    void drawHist();
    void action(const QString& href);
    QString helpText() const;

    QLineEdit* line = nullptr;
    SheetView* liveSheet = nullptr;
    SheetView* histSheet = nullptr;
    QLabel* heading = nullptr;
    QLabel* help = nullptr;
    QWidget* givenBox = nullptr;
    FlowLayout* givenLayout = nullptr;
    QGridLayout* keypad = nullptr;
    std::vector<QPushButton*> keys;
    QLineEdit* answerField = nullptr;
    QString lastLine;
    double ans = 0;
    bool hasAns = false;
    std::vector<Entry> history;
};

} // namespace app
