// The circuit page: one class on four routes ("kreds", "kredsac",
// "kredsguide", "kredsguideac"). The student draws with the editor and its
// buttons, types what is known into the source fields and the parts table,
// and gets the calculated sheet, or in guide mode the formulas without
// numbers. Everything works on the process's working circuit of the page's
// kind of current, which is saved at every change; the sheets come from
// fl/circuit/sheets.
//
// Entry points for other pages (class tasks, exercises): loadCircuitText()
// takes the clipboard's one-line form, installCircuit() a circuit value, and
// setGiven()/setComponentValue() fill in one known quantity each; all of them
// save and redraw, and none computes until compute() is called.
#pragma once

#include "app/widgets/page.h"
#include "fl/circuit/model.h"

#include <QString>

#include <functional>
#include <map>
#include <string>

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace app {

class CircuitEditor;
class FlowLayout;
class PageHost;
class ResultArea;
class ValueField;

class KredsPage : public Page {
    Q_OBJECT
  public:
    KredsPage(bool guide, bool ac, PageHost* host, QWidget* parent = nullptr);

    // The route this page stands on, and its sibling of the other current.
    QString route() const;
    QString siblingRoute() const;

    // Rebuilds the editor, its buttons, the source fields and the parts table
    // from the working circuit.
    void render();
    // Runs the calculation after the button has shown "Regner…".
    void compute();
    // The calculation at once, for tests and callers that don't paint first.
    void computeNow();
    // Shows the saved circuit chosen in the list.
    void drawSavedPreview();
    // True when `circuit` belongs to the other kind of current; it is then
    // installed there and the window goes there, or a locked route is told.
    bool openElsewhere(const fl::Circuit& circuit);

    // The clipboard's form: a circuit from its one-line text, installed as by
    // "Indsæt kredsløb" (moving to the other page when its current is the
    // other); false, with the message in the result area, for any other text.
    bool loadCircuitText(const std::string& text);
    // Makes `circuit` the working circuit of this page, saved and drawn, with
    // no result shown.
    void installCircuit(const fl::Circuit& circuit);
    // A source value by its key ("U", "f", "I", "P", "R", "Z", "cos").
    void setGiven(const std::string& key, const std::string& text);
    // A component's or group's value by node id; false when there is no such node.
    bool setComponentValue(const std::string& id, const std::string& text);
    // A link of the result: "fix:" payloads are the page's own.
    void handleLink(const QString& href);

    // Dialogs, replaceable by tests: a text question and a yes/no question.
    std::function<bool(const QString& title, const QString& label, QString* text)> askText;
    std::function<bool(const QString& title, const QString& question)> confirm;
    std::function<void(const QString& title, const QString& text)> inform;

    // For tests.
    CircuitEditor* editor() const { return drawing; }
    QPushButton* mainButton() const { return runBtn; }
    ResultArea* resultArea() const { return area; }
    ValueField* sourceField(const QString& key) const;
    // The parts table's edit of a node and a column ("v", "r", "U", "I", "P"),
    // null where the cell has none.
    QLineEdit* partField(const std::string& id, const std::string& column) const;
    // A button of the page by its text (the editor's row included).
    QPushButton* button(const QString& text) const;
    QComboBox* savedList() const { return saved; }
    QLabel* selectionLabel() const { return selLabel; }
    QLabel* previewText() const { return previewInfo; }

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

  private:
    fl::Circuit& circuit();
    void buildEditorCard();
    void buildSavedRow(Card* card);
    void buildSourceCard();
    void buildPartsCard();
    void buildActions();
    void renderButtons();
    void renderTable();
    void refreshSaved(const QString& select = QString());
    void select(const QString& id);
    void applyEdit(const std::string& op, const std::string& kind);
    void fieldChanged(QLineEdit* edit, const std::string& id, const std::string& column);
    void showMessage(const std::string& html);
    void switchTo(bool ac);
    void copyCircuit();
    void pasteCircuit();
    void saveAs();
    void openSaved();
    void renameSaved();
    void deleteSaved();
    void showTask();
    void finishCompute();
    // Whether the list holds names rather than its "none yet" entry.
    bool hasSaved() const;
    // The saved circuit chosen in the list.
    QString name() const;

    PageHost* host = nullptr;
    bool guide = false;
    bool ac = false;

    CircuitEditor* drawing = nullptr;
    QWidget* buttonBox = nullptr;
    FlowLayout* buttonFlow = nullptr;
    QLabel* selLabel = nullptr;
    QLabel* emptyLabel = nullptr;
    QPushButton* dcBtn = nullptr;
    QPushButton* acBtn = nullptr;
    QComboBox* saved = nullptr;
    QWidget* preview = nullptr;
    QLabel* previewPicture = nullptr;
    QLabel* previewInfo = nullptr;
    Card* sourceCard = nullptr;
    std::map<std::string, ValueField*> sourceFields;
    Card* partsCard = nullptr;
    QWidget* tableBox = nullptr;
    QGridLayout* table = nullptr;
    QLabel* partsNotes = nullptr;
    std::map<std::pair<std::string, std::string>, QLineEdit*> partEdits;
    QPushButton* runBtn = nullptr;
    QString runText;
    QLabel* heading = nullptr;
    QLabel* resultHeading = nullptr;
    ResultArea* area = nullptr;
    // Set while render() writes the model into the fields, so that the
    // fields' change signals don't write it back.
    bool filling = false;
    // The circuit's one-line form when what the result area shows was made.
    std::string shownText;
};

} // namespace app
