// The page "opgaveark": a sheet of freshly drawn exercises to print, with
// the answers at the back. The screen shows the exercises and, on request,
// the facit; the PDF always holds what the options ask for. The sheet's
// content is fl/practice/worksheet.h's, the PDF the sheet view's.
#pragma once

#include "app/widgets/page.h"
#include "fl/practice/worksheet.h"

class QCheckBox;
class QComboBox;
class QPushButton;

namespace app {

class PageHost;
class SheetView;

class OpgavearkPage : public Page {
    Q_OBJECT
  public:
    explicit OpgavearkPage(PageHost* host, QWidget* parent = nullptr);

    // Draws a new sheet with the options on screen.
    void make();
    void toggleFacit();
    // Asks for a file name and writes the PDF.
    void savePdf();
    // Writes the whole sheet, facit as the options say, to `path`.
    bool savePdfTo(const QString& path);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    const fl::Worksheet& sheet() const { return current; }
    QComboBox* topicBox() const { return topics; }
    QComboBox* countBox() const { return counts; }
    QComboBox* facitBox() const { return facit; }
    QCheckBox* roomBox() const { return room; }
    QPushButton* newSheetButton() const { return makeBtn; }
    QPushButton* facitButton() const { return facitBtn; }
    QPushButton* pdfButton() const { return pdfBtn; }
    SheetView* sheetView() const { return view; }
    bool facitShown() const { return showFacit; }

  private:
    fl::WorksheetOptions options() const;
    void storeOptions();
    void showSheet();

    PageHost* host;
    fl::Worksheet current;
    bool showFacit = false;

    QComboBox* topics = nullptr;
    QComboBox* counts = nullptr;
    QComboBox* facit = nullptr;
    QCheckBox* room = nullptr;
    QPushButton* makeBtn = nullptr;
    QPushButton* facitBtn = nullptr;
    QPushButton* pdfBtn = nullptr;
    SheetView* view = nullptr;
};

} // namespace app
