// SheetBox and ResultArea: the reveal bar and the PDF button around a view.
#include "app/sheet/resultarea.h"

#include "app/sheet/sheettext.h"
#include "app/shell/options.h"
#include "app/shell/pagehost.h"
#include "app/widgets/helpers.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QStandardPaths>
#include <QTimer>
#include <QVBoxLayout>

namespace app {

namespace {

const char* const kPdfText = "Hent som PDF";

// A file name from the sheet's title, without the characters file systems refuse.
QString pdfName(const QString& title) {
    static const QRegularExpression bad(QStringLiteral("[\\\\/:*?\"<>|]"));
    QString name = QString(title).remove(bad).simplified();
    return (name.isEmpty() ? QStringLiteral("Ostrovalden") : name) + QStringLiteral(".pdf");
}

} // namespace

SheetBox::SheetBox(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    sheet = new SheetView(this);
    layout->addWidget(sheet);

    barWidget = new QWidget(this);
    // The bar continues the sheet's panel below it.
    barWidget->setAutoFillBackground(true);
    barWidget->setBackgroundRole(QPalette::Button);
    auto* bar = new QHBoxLayout(barWidget);
    bar->setContentsMargins(40, 2, 8, 8);
    bar->setSpacing(8);
    next = makeButton(QStringLiteral("Vis næste trin"), barWidget, QStringLiteral("primary"));
    all = makeButton(QStringLiteral("Vis alle trin og facit"), barWidget);
    text = new QLabel(barWidget);
    setClass(text, QStringLiteral("crumb"));
    text->setWordWrap(true);
    bar->addWidget(next);
    bar->addWidget(all);
    bar->addWidget(text, 1);
    layout->addWidget(barWidget);

    connect(next, &QPushButton::clicked, sheet, &SheetView::revealNext);
    connect(all, &QPushButton::clicked, sheet, &SheetView::revealAll);
    connect(sheet, &SheetView::contentChanged, this, &SheetBox::updateBar);
    connect(sheet, &SheetView::revealChanged, this, &SheetBox::updateBar);
    connect(sheet, &SheetView::revealChanged, this, &SheetBox::keepBarInView);
    updateBar();
}

// Each step revealed pushes the bar down; the page follows it, so that the
// next press needs no scrolling.
void SheetBox::keepBarInView() {
    QTimer::singleShot(0, this, [this] {
        if (!barWidget->isVisible()) return;
        // The sheet has its new height, but the layouts above it move the
        // bar only as their requests are handled, one level of nesting per
        // round of the event loop: its place is stale until the last.
        for (int level = 0; level < 16; ++level)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        for (QWidget* w = parentWidget(); w; w = w->parentWidget())
            if (auto* scroller = qobject_cast<QScrollArea*>(w)) {
                scroller->ensureWidgetVisible(barWidget, 0, 24);
                return;
            }
    });
}

void SheetBox::updateBar() {
    const int shown = sheet->revealedSteps();
    const int count = sheet->steps();
    barWidget->setVisible(sheet->inStepMode() && count >= 1 && shown < count && sheet->hasContent());
    text->setText(QStringLiteral("Trin %1 af %2 vist – prøv selv at regne det næste trin, før du ser det")
                      .arg(shown)
                      .arg(count));
    next->setText(shown == count - 1 ? QStringLiteral("Vis sidste trin og facit")
                                     : QStringLiteral("Vis næste trin"));
}

ResultArea::ResultArea(PageHost* host, QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    barWidget = new QWidget(this);
    auto* bar = new QHBoxLayout(barWidget);
    bar->setContentsMargins(8, 4, 8, 4);
    bar->addStretch(1);
    pdf = makeButton(QString::fromUtf8(kPdfText), barWidget);
    bar->addWidget(pdf);
    layout->addWidget(barWidget);
    barWidget->hide();

    box = new SheetBox(this);
    layout->addWidget(box);

    view()->setStepMode(host ? host->stepMode() : options().trinvis);
    if (host) connect(host->hostSignals(), &HostSignals::stepModeChanged, view(), &SheetView::setStepMode);
    connect(pdf, &QPushButton::clicked, this, &ResultArea::savePdf);
    connect(view(), &SheetView::contentChanged, this,
            [this] { barWidget->setVisible(view()->hasContent()); });
}

void ResultArea::setHtml(const std::string& html) {
    view()->setProvider([html] {
        fl::RenderResult r;
        r.html = html;
        return r;
    });
}

void ResultArea::setProvider(SheetView::Provider fn) {
    view()->setProvider(std::move(fn));
}

void ResultArea::clear() {
    view()->clear();
    barWidget->hide();
}

QString ResultArea::pdfTitle() const {
    const QString own = sheetTitle(QString::fromStdString(view()->markup()));
    return own.isEmpty() ? sheetTitle(QLatin1String("<h2>") + title + QLatin1String("</h2>")) : own;
}

void ResultArea::savePdf() {
    const QString title = pdfTitle();
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QString path =
        QFileDialog::getSaveFileName(this, QStringLiteral("Gem som PDF"), QDir(dir).filePath(pdfName(title)),
                                     QStringLiteral("PDF-filer (*.pdf)"));
    if (path.isEmpty()) return;
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)) path += QLatin1String(".pdf");
    if (!savePdfTo(path))
        QMessageBox::warning(
            this, QStringLiteral("PDF"),
            QStringLiteral("PDF-filen kunne ikke gemmes. Vælg en anden mappe eller et andet navn."));
}

bool ResultArea::savePdfTo(const QString& path) {
    pdf->setEnabled(false);
    pdf->setText(QStringLiteral("Laver PDF…"));
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const bool ok = view()->printToPdf(pdfTitle(), path, title);
    pdf->setEnabled(true);
    if (!ok) {
        pdf->setText(QString::fromUtf8(kPdfText));
        return false;
    }
    pdf->setText(QStringLiteral("✓ PDF gemt"));
    QTimer::singleShot(2500, pdf, [button = pdf] { button->setText(QString::fromUtf8(kPdfText)); });
    return true;
}

} // namespace app
