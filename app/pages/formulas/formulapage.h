// The page of one formula family: heading, note, one field per quantity,
// "Løs" and "Ryd", and the result area beneath. The page decides which
// quantity is wanted (fl::checkFields), refuses what it can't do in the
// student's words, and leaves the working to fl::solveSheet.
#pragma once

#include "app/widgets/page.h"

#include <string>
#include <vector>

class QLabel;
class QPushButton;
class QTabWidget;

namespace fl {
struct Formula;
}

namespace app {

class PageHost;
class ResultArea;
class ValueField;

class FormulaPage : public Page {
    Q_OBJECT
  public:
    FormulaPage(const fl::Formula* formula, PageHost* host, QWidget* parent = nullptr);

    // "Løs" and Enter: shows "Regner…" and the wait cursor while it works.
    void solveClicked();
    // "Ryd": empty fields, and the formula in place of the last answer.
    void clearAll();
    // The formula in all its arrangements, in the result area.
    void renderStatic();

    // Reads the back route from the window each time the page is shown.
    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    const fl::Formula* formula() const { return family; }
    const std::vector<ValueField*>& fields() const { return valueFields; }
    ValueField* field(const QString& symbol) const;
    ResultArea* resultArea() const { return area; }
    QPushButton* solveButton() const { return solveBtn; }
    QPushButton* clearButton() const { return clearBtn; }
    QLabel* backLink() const { return back; }
    QLabel* noteBox() const { return note; }

  private:
    void solve();
    void showSolved();
    void styleNote();
    void styleTabs();

    const fl::Formula* family;
    PageHost* host;
    std::vector<ValueField*> valueFields;
    ResultArea* area = nullptr;
    QString backRoute;

    QLabel* back = nullptr;
    QLabel* note = nullptr;
    QPushButton* solveBtn = nullptr;
    QPushButton* clearBtn = nullptr;
    QTabWidget* tabs = nullptr;
    std::string target; // the quantity of the answer on screen; empty when none
    double solved = 0;
    bool sheetShown = false; // a worked sheet, not the formula or a message
    bool refused = false;    // a refusal of the fields is on screen
};

} // namespace app
