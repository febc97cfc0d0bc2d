// The frames around a SheetView: SheetBox adds the bar that reveals the
// steps one at a time, ResultArea the button that saves the sheet as a PDF.
// Pages hold a ResultArea and hand it markup or a provider.
#pragma once

#include "app/sheet/sheetview.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace app {

class PageHost;

// A SheetView with the bar that reveals steps: "Vis næste trin", "Vis alle
// trin og facit" and how far the student has come.
class SheetBox : public QWidget {
    Q_OBJECT
  public:
    explicit SheetBox(QWidget* parent = nullptr);

    SheetView* view() const { return sheet; }
    QWidget* bar() const { return barWidget; }
    QPushButton* nextButton() const { return next; }
    QPushButton* allButton() const { return all; }
    QLabel* label() const { return text; }

    void updateBar();
    // Scrolls the page so that the bar stands in view after a reveal.
    void keepBarInView();

  private:
    SheetView* sheet = nullptr;
    QWidget* barWidget = nullptr;
    QPushButton* next = nullptr;
    QPushButton* all = nullptr;
    QLabel* text = nullptr;
};

// A SheetBox under a bar with "Hent som PDF", hidden while there is nothing
// to print. Follows the host's step mode; without a host, the stored one.
class ResultArea : public QWidget {
    Q_OBJECT
  public:
    explicit ResultArea(PageHost* host, QWidget* parent = nullptr);

    // Shows ready markup that has no figures or images.
    void setHtml(const std::string& html);
    void setProvider(SheetView::Provider fn);
    void clear();
    SheetView* view() const { return box->view(); }
    SheetBox* sheetBox() const { return box; }
    QWidget* pdfBar() const { return barWidget; }
    QPushButton* pdfButton() const { return pdf; }

    // The title of a sheet that has no heading of its own (markup, with
    // subscripts): the PDF's proposed file name, title and heading.
    void setTitle(const QString& html) { title = html; }
    // The sheet's own heading, else the title above, as plain text.
    QString pdfTitle() const;
    // Asks for a file name and writes the PDF.
    void savePdf();
    // Writes the PDF to `path`, with the button's texts while it works.
    bool savePdfTo(const QString& path);

  private:
    SheetBox* box = nullptr;
    QWidget* barWidget = nullptr;
    QPushButton* pdf = nullptr;
    QString title;
};

} // namespace app
