// The page base of every calculator: a form card on top, the worked sheet
// below, and a small note view for refusals. A subclass only declares its
// form (fields, choices, the run button) and says which fl:: function reads
// it; everything else (running, clearing, marking bad fields, the results
// strip, redrawing on a change of theme or settings) happens here.
#pragma once

#include "app/widgets/page.h"
#include "fl/tools/frame.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;

namespace app {

class PageHost;
class ResultArea;
class SheetView;
class ValueField;

// A voltage field that follows the net: 230 V for one phase and 400 V for
// three, unless the student typed another voltage there.
void followNet(ValueField* u, bool threePhase);

class ToolPage : public Page {
    Q_OBJECT
  public:
    // `crumb` tells where the formulas stand in the class's book
    // ("Værktøj · formelsamling s. 6"); `heading` heads the result.
    ToolPage(PageHost* host, const QString& title, const QString& intro, const QString& heading,
             const QString& crumb, QWidget* parent = nullptr);

    // Declaring the form, in the order of display. `def` is what "Ryd" restores.
    ValueField* addField(const QString& key, const QString& label, const QString& unit,
                         const QString& def = QString());
    // Items are (data, text). With a `key` the current item's data goes into
    // the form map under it; without one the choice is the page's own.
    QComboBox* addChoice(const QString& label, const std::vector<std::pair<QString, QString>>& items,
                         const QString& key = QString());
    // The primary button, optionally "Ryd" and a third button; then the note
    // view and the result area, and Enter in any field runs.
    void addRunButton(const QString& text, bool withClear, const QString& third = QString());

    // The one frame around compute(): the sheet, or the refusal in the note
    // view with its fields marked; headline values go to the results strip.
    void run();
    // The primary button: "Regner…" and the wait cursor while run() works.
    void runClicked();
    // "Ryd": the defaults back, the result and the note gone, then afterClear().
    void clearForm();

    // Each field's key with its text, and each keyed choice's data.
    fl::FormMap formMap() const;
    // The tool's function over a form map; never throws.
    virtual fl::ToolOut compute(const fl::FormMap& form) const = 0;
    // After "Ryd" has put the defaults back.
    virtual void afterClear() {}
    // The third button.
    virtual void thirdAction() {}
    // Redraws a figure from the present form without computing.
    virtual void live() {}

    bool formEmpty() const;
    void onSettings() override;
    void onTheme() override;

    Card* form() const { return formCard; }
    ValueField* field(const QString& key) const;
    ResultArea* resultArea() const { return area; }
    SheetView* noteView() const { return note; }
    QPushButton* runButton() const { return runBtn; }
    QPushButton* clearButton() const { return clearBtn; }
    const fl::ToolOut& lastOut() const { return *last; }

  protected:
    PageHost* host = nullptr;

  private:
    void interpret(ValueField* f);

    Card* formCard = nullptr;
    QLabel* heading = nullptr;
    ResultArea* area = nullptr;
    SheetView* note = nullptr;
    QPushButton* runBtn = nullptr;
    QPushButton* clearBtn = nullptr;
    QString runText;
    std::map<QString, QString> defaults;
    std::vector<std::pair<QString, QComboBox*>> keyedChoices;
    std::shared_ptr<fl::ToolOut> last = std::make_shared<fl::ToolOut>();
};

} // namespace app
