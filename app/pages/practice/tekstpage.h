// The page "tekstopgaver": a story with drawn numbers and one answer row per
// part, each checked on its own with a hint at hand, the whole solution step
// by step on request, and the pocket calculator beside it. Each part's first
// readable answer goes into the practice records. Drawing, working and
// judging are fl/practice/tekst.h's.
#pragma once

#include "app/widgets/page.h"
#include "fl/practice/tekst.h"

#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace app {

class CalcPanel;
class PageHost;
class ResultArea;
class SheetView;

class TekstPage : public Page {
    Q_OBJECT
  public:
    explicit TekstPage(PageHost* host, QWidget* parent = nullptr);

    // A new problem for the chosen scenario; the rows and the solution start over.
    void next();
    // Judges part `index` and shows the status under its row.
    void check(int index);
    void showHint(int index);
    void showSolution();

    // Re-reads the chosen scenario ("ov:" links write it) and what the teacher has closed.
    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    struct Row {
        QWidget* box = nullptr;
        QLabel* question = nullptr;
        QLineEdit* field = nullptr;
        QLabel* unit = nullptr;
        QPushButton* check = nullptr;
        QPushButton* hint = nullptr;
        SheetView* status = nullptr;
    };

    const std::optional<fl::TekstProblem>& problem() const { return current; }
    const std::vector<Row>& rows() const { return answerRows; }
    QComboBox* topicBox() const { return topics; }
    QPushButton* nextButton() const { return nextBtn; }
    QPushButton* solutionButton() const { return solutionBtn; }
    SheetView* storyView() const { return story; }
    ResultArea* solutionArea() const { return solution; }

  private:
    void fillTopics();
    void buildRows();
    void link(const QString& href);

    PageHost* host;
    std::optional<fl::TekstProblem> current;
    std::vector<Row> answerRows;

    QComboBox* topics = nullptr;
    QPushButton* nextBtn = nullptr;
    QPushButton* solutionBtn = nullptr;
    SheetView* story = nullptr;
    QWidget* rowArea = nullptr;
    QVBoxLayout* rowLayout = nullptr;
    QLabel* solutionTitle = nullptr;
    ResultArea* solution = nullptr;
    CalcPanel* calc = nullptr;
};

} // namespace app
