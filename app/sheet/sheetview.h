// The view every result is shown in: takes a RenderResult (markup with its
// figures and expression images beside it), rewrites it for the text engine
// (sheettext.h), draws the images on demand and keeps them for the life of
// the content, reveals steps one at a time, fits its height to the document,
// and reports clicks on links and on whole tiles through `action`. It never
// follows a link itself. The frames around it are in resultarea.h.
#pragma once

#include "fl/expr/markup.h"

#include <QImage>
#include <QMap>
#include <QSet>
#include <QSize>
#include <QTextBrowser>
#include <QVariant>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace app {

// A figure's SVG drawn at `size` (its own size when that is empty) on an
// image of that size × dpr; transparent where the SVG doesn't load.
QImage renderFigure(const std::string& svg, double dpr, QSize size = QSize());
// The same figure painted from its shapes, as the SVG renderer would draw it.
QImage paintFigure(const fl::ShapeFigure& fig, double dpr, QSize size = QSize());
// The rules the view adds to the document stylesheet.
QString sheetViewCss();
// The size each "f:N" image has in `html`, from its tag.
QMap<QString, QSize> figureSizes(const QString& html);

class SheetView : public QTextBrowser {
    Q_OBJECT
  public:
    using Provider = std::function<fl::RenderResult()>;

    explicit SheetView(QWidget* parent = nullptr);

    // Stores the function that writes the markup and shows what it writes.
    void setProvider(Provider fn);
    // Writes the markup again (after a change of settings or theme); the
    // reveal state starts over.
    void refresh();
    void setContent(const fl::RenderResult& result);
    void setStepMode(bool on);
    void revealNext();
    void revealAll();
    void clear();
    void setExtraCss(const QString& css) { extraCss = css; }
    // Appends at once what a long sheet still has to show (for printing
    // and tests; on screen it arrives by itself).
    void finishLoading();
    bool loading() const { return !pending.empty(); }

    // Writes the sheet to a PDF file on A4; false when the file can't be written.
    // `heading` (markup) heads a sheet that has no h2 of its own.
    bool printToPdf(const QString& title, const QString& path, const QString& heading = QString());
    // The same for a sheet that is printed without being shown (a worksheet
    // with its facit), with this view's rules and width.
    bool printToPdf(const fl::RenderResult& sheet, const QString& title, const QString& path,
                    const QString& heading = QString()) const;

    // The markup as the text engine gets it.
    QString visibleHtml() const;
    // The document stylesheet: the theme's, the view's own rules, then extraCss.
    QString documentStyleSheet() const;
    void fitHeight();
    // The document's width from the view's, unless it has it already.
    void setDocumentWidth();
    // The width the document is laid out in.
    int viewWidth() const;

    const std::string& markup() const { return html; }
    bool hasContent() const { return !html.empty(); }
    bool inStepMode() const { return stepMode; }
    int revealedSteps() const { return revealed; }
    int steps() const { return stepCount; }
    int printWidth() const { return pdfWidth; }
    QRectF hoverRect() const { return hotRect; }
    // The expression of "m:N"; null outside the list.
    fl::NodePtr mathNode(int n) const { return n >= 0 && size_t(n) < maths.size() ? maths[size_t(n)] : nullptr; }
    // Images drawn so far, by name ("f:0", "m:3").
    const QMap<QString, QVariant>& images() const { return cache; }

    bool autoHeight = true;

    // The cell around `pos` (viewport coordinates) that holds a link, with
    // its href and its rectangle in document coordinates; an empty href when
    // there is none.
    struct Tile {
        QString href;
        QRectF rect;
    };
    static Tile tileAt(const QTextBrowser* view, const QPoint& pos);

  signals:
    void action(const QString& href);
    void contentChanged();
    // After a step was revealed or the step mode switched.
    void revealChanged();

  protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void rebuild();
    void frameDocument();
    void appendPending(int forGeneration);
    void setHot(const QRectF& rect);
    QVariant drawImage(const QString& name, double dpr) const;
    friend bool writeSheetPdf(SheetView* view, const QString& title, const QString& path);

    Provider provider;
    std::string html;
    std::vector<std::string> figs;
    std::vector<fl::ShapeFigurePtr> figShapes; // beside figs, where the core kept them
    std::vector<fl::NodePtr> maths;
    QMap<QString, QVariant> cache;
    QMap<QString, QSize> figSizes; // each figure's size in the document shown
    QSet<QString> cellMaths;       // images alone in an equation table's cell
    QMap<QString, double> mathPts; // images drawn at the size of their formula line
    // A long sheet's pieces not yet appended; `generation` tells a piece of
    // an older content from one of this.
    std::deque<QString> pending;
    int generation = 0;
    bool stale = false;       // refresh() came while the page was out of view
    bool resizedAway = false; // resized while out of view, not laid out since
    // Characters of markup: a sheet longer than kLongSheet shows a first
    // piece of about a screen at once and the rest in pieces of kPiece.
    static constexpr qsizetype kLongSheet = 12000, kFirstPiece = 6000, kPiece = 12000;
    // The content is one card, whose frame the document itself draws.
    bool framed = false;
    QString extraCss;
    QRectF hotRect;
    bool stepMode = false;
    int revealed = 0;
    int stepCount = 0;
    int pdfWidth = 920;
    bool inFit = false;
    int lastWidth = -1000;
};

} // namespace app
