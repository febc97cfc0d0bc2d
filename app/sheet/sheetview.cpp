// SheetView: content, reveal state, images, height and tiles. The markup's
// rewriting is in sheettext.cpp, the PDF in sheetpdf.cpp.
#include "app/sheet/sheetview.h"

#include "app/sheet/mathpainter.h"
#include "app/sheet/sheettext.h"
#include "app/shell/theme.h"
#include "app/widgets/figureview.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QSvgRenderer>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFormat>
#include <QTextFrame>
#include <QTextTable>
#include <QTimer>

#include <cmath>
#include <functional>
#include <utility>

namespace app {

namespace {

double screenRatio() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

bool imageName(const QString& name) {
    return name.startsWith(QLatin1String("m:")) || name.startsWith(QLatin1String("f:"));
}

// Whether every visible piece of the cell is a link, all to the same place:
// then the cell is a tile and a click anywhere in it counts.
QString tileHref(const QTextTableCell& cell) {
    QString href;
    bool ok = true;
    std::function<void(QTextFrame::iterator)> walk = [&](QTextFrame::iterator it) {
        for (; ok && !it.atEnd(); ++it) {
            if (QTextFrame* child = it.currentFrame()) {
                walk(child->begin());
                continue;
            }
            for (auto f = it.currentBlock().begin(); ok && !f.atEnd(); ++f) {
                const QTextFragment frag = f.fragment();
                const QString text = frag.text();
                const bool visible = std::any_of(text.begin(), text.end(), [](QChar c) {
                    return !c.isSpace() && c != QChar::LineSeparator;
                });
                if (!visible) continue;
                const QTextCharFormat fmt = frag.charFormat();
                const QString h = fmt.isAnchor() ? fmt.anchorHref() : QString();
                if (h.isEmpty() || (!href.isEmpty() && h != href))
                    ok = false;
                else
                    href = h;
            }
        }
    };
    walk(cell.begin());
    return ok ? href : QString();
}

QRectF cellRect(const QAbstractTextDocumentLayout* layout, QTextTable* table, const QTextTableCell& cell);

// The rectangle a table takes. The layout's frame rectangle of a table is
// that of its first cell's content, so it is built from the corner cells.
QRectF tableRect(const QAbstractTextDocumentLayout* layout, QTextTable* table) {
    if (table->rows() == 0 || table->columns() == 0) return {};
    return cellRect(layout, table, table->cellAt(0, 0)) |
           cellRect(layout, table, table->cellAt(table->rows() - 1, table->columns() - 1));
}

QRectF frameRect(const QAbstractTextDocumentLayout* layout, QTextFrame* frame) {
    if (auto* table = qobject_cast<QTextTable*>(frame)) return tableRect(layout, table);
    return layout->frameBoundingRect(frame);
}

// The rectangle a cell's content takes, in document coordinates.
QRectF contentRect(const QAbstractTextDocumentLayout* layout, const QTextTableCell& cell) {
    QRectF r;
    for (auto it = cell.begin(); !it.atEnd(); ++it) {
        if (QTextFrame* child = it.currentFrame())
            r |= frameRect(layout, child);
        else
            r |= layout->blockBoundingRect(it.currentBlock());
    }
    return r;
}

// The whole cell: its content widened by the padding, as high as its row.
QRectF cellRect(const QAbstractTextDocumentLayout* layout, QTextTable* table, const QTextTableCell& cell) {
    const QRectF own = contentRect(layout, cell);
    double top = own.top(), bottom = own.bottom();
    for (int c = 0; c < table->columns(); ++c) {
        const QTextTableCell other = table->cellAt(cell.row(), c);
        if (!other.isValid() || other.rowSpan() > 1) continue;
        const QRectF r = contentRect(layout, other);
        if (r.isNull()) continue;
        top = std::min(top, r.top());
        bottom = std::max(bottom, r.bottom());
    }
    const double pad = table->format().cellPadding();
    return QRectF(own.left() - pad, top - pad, own.width() + 2 * pad, bottom - top + 2 * pad);
}

// The innermost table cell under `p` whose content is one link.
SheetView::Tile findTile(const QAbstractTextDocumentLayout* layout, QTextFrame* frame, const QPointF& p) {
    for (QTextFrame* child : frame->childFrames()) {
        if (!frameRect(layout, child).contains(p)) continue;
        // Tables nested deeper come first: a card holding tiles isn't a tile.
        const SheetView::Tile inner = findTile(layout, child, p);
        if (!inner.href.isEmpty()) return inner;
        auto* table = qobject_cast<QTextTable*>(child);
        if (!table) continue;
        for (int r = 0; r < table->rows(); ++r)
            for (int c = 0; c < table->columns(); ++c) {
                const QTextTableCell cell = table->cellAt(r, c);
                if (cell.row() != r || cell.column() != c) continue; // covered by a span
                const QRectF rect = cellRect(layout, table, cell);
                if (!rect.contains(p)) continue;
                const QString href = tileHref(cell);
                if (!href.isEmpty()) return {href, rect};
            }
    }
    return {};
}

// Figures carry their size in their tag, so laying a sheet out needs none of
// them drawn: each is drawn when it is first painted, and one never scrolled
// to is never drawn. Every other image goes to the text engine's own handler.
class LazyFigures : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
  public:
    LazyFigures(QTextObjectInterface* engine, QObject* parent) : QObject(parent), engine(engine) {}

    QSizeF intrinsicSize(QTextDocument* doc, int pos, const QTextFormat& format) override {
        const QTextImageFormat image = format.toImageFormat();
        if (image.name().startsWith(QLatin1String("f:")) && image.hasProperty(QTextFormat::ImageWidth) &&
            image.hasProperty(QTextFormat::ImageHeight))
            return QSizeF(image.width(), image.height());
        return engine->intrinsicSize(doc, pos, format);
    }
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* doc, int pos,
                    const QTextFormat& format) override {
        engine->drawObject(painter, rect, doc, pos, format);
    }

  private:
    QTextObjectInterface* engine;
};

bool sameSize(const QVariant& image, const QSize& wanted) {
    if (!wanted.isValid()) return true;
    const QSizeF have = image.value<QImage>().deviceIndependentSize();
    return std::lround(have.width()) == wanted.width() && std::lround(have.height()) == wanted.height();
}

} // namespace

// An expression image sits centred on its line, where its fraction bar meets
// the text's axis (see mathpainter.h).
QString sheetViewCss() {
    return QStringLiteral("\nimg.math { vertical-align: middle; }\n");
}

SheetView::SheetView(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    setOpenExternalLinks(false);
    setReadOnly(true);
    viewport()->setCursor(Qt::ArrowCursor);
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(12.0);
    setMouseTracking(true);
    connect(this, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& url) { emit action(url.toString()); });
    QAbstractTextDocumentLayout* layout = document()->documentLayout();
    if (QTextObjectInterface* engine = layout->handlerForObject(QTextFormat::ImageObject))
        layout->registerHandler(QTextFormat::ImageObject, new LazyFigures(engine, this));
}

void SheetView::setProvider(Provider fn) {
    provider = std::move(fn);
    refresh();
}

void SheetView::refresh() {
    if (!provider) return;
    // A page that isn't on screen writes its markup when it is shown again:
    // a change of theme or text size then costs only the page in view.
    if (window()->isVisible() && !isVisible()) {
        stale = true;
        return;
    }
    stale = false;
    fl::resetFigures();
    fl::RenderResult r = provider();
    // A provider may hand its lists back itself, or leave them where
    // addFigure and addMath collected them.
    fl::RenderResult pending = fl::takeRender(std::string());
    if (r.figs.empty() && r.maths.empty()) {
        r.figs = std::move(pending.figs);
        r.figShapes = std::move(pending.figShapes);
        r.maths = std::move(pending.maths);
    }
    setContent(r);
}

void SheetView::setContent(const fl::RenderResult& result) {
    html = result.html;
    framed = wholeCard(QString::fromStdString(html), nullptr);
    figs = result.figs;
    figShapes = result.figShapes;
    maths = result.maths;
    cache.clear();
    stepCount = countSteps(QString::fromStdString(html));
    revealed = 0;
    rebuild();
    emit contentChanged();
}

void SheetView::setStepMode(bool on) {
    stepMode = on;
    rebuild();
    emit revealChanged();
}

// A reveal shows the sheet whole at once: the page then scrolls to the bar
// below it, which must not move on as pieces arrive.
void SheetView::revealNext() {
    revealed = std::min(revealed + 1, stepCount);
    rebuild();
    finishLoading();
    emit revealChanged();
}

void SheetView::revealAll() {
    revealed = stepCount;
    rebuild();
    finishLoading();
    emit revealChanged();
}

void SheetView::clear() {
    provider = nullptr;
    stale = false;
    ++generation;
    pending.clear();
    html.clear();
    framed = false;
    figs.clear();
    figShapes.clear();
    maths.clear();
    cache.clear();
    stepCount = revealed = 0;
    setHot(QRectF());
    QTextBrowser::clear();
    if (autoHeight) setFixedHeight(0);
    emit contentChanged();
}

QString SheetView::documentStyleSheet() const {
    return documentCss() + sheetViewCss() + extraCss;
}

int SheetView::viewWidth() const {
    // The viewport's own size lags behind while the widget is hidden.
    const QMargins vm = viewportMargins();
    int w = contentsRect().width() - vm.left() - vm.right();
    if (verticalScrollBar()->isVisible()) w -= verticalScrollBar()->width();
    return w;
}

QString SheetView::visibleHtml() const {
    SheetState s;
    s.width = viewWidth();
    s.stepMode = stepMode;
    s.revealed = revealed;
    s.stepCount = stepCount;
    s.textScale = textScale();
    QString source = QString::fromStdString(html);
    if (framed) wholeCard(source, &source);
    return visibleSheet(source, s, colors());
}

void SheetView::rebuild() {
    setHot(QRectF());
    if (autoHeight) {
        // Before the text: a scroll bar that comes and goes while a long
        // sheet is laid out makes the document lay itself out again.
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        // The width the height is measured at, so the text is laid out once.
        const qreal width = std::max(viewWidth(), 200);
        if (document()->textWidth() != width) document()->setTextWidth(width);
    }
    ++generation;
    pending.clear();
    document()->setDefaultStyleSheet(documentStyleSheet());
    lastWidth = viewWidth();
    const QString visible = visibleHtml();
    figSizes = figureSizes(visible);
    cellMaths = cellImages(visible);
    mathPts = mathSizes(visible);

    // A long sheet (a circuit's walkthrough, the finder's every formula) is
    // shown piece by piece: the first screen at once, the rest appended while
    // the event loop runs, so the page paints and answers the mouse long
    // before all of it is laid out. Each piece lays out only itself.
    qsizetype firstEnd = visible.size();
    if (visible.size() > kLongSheet) {
        const QList<qsizetype> cuts = topLevelCuts(visible);
        qsizetype pieceStart = -1;
        for (qsizetype cut : cuts) {
            if (pieceStart < 0) {
                if (cut >= kFirstPiece) {
                    firstEnd = cut;
                    pieceStart = cut;
                }
            } else if (cut - pieceStart >= kPiece) {
                pending.push_back(visible.mid(pieceStart, cut - pieceStart));
                pieceStart = cut;
            }
        }
        if (pieceStart >= 0) pending.push_back(visible.mid(pieceStart));
    }
    // The width first: the document lays itself out at every change of its
    // text or its width, and a long sheet takes that time twice otherwise.
    if (autoHeight) setDocumentWidth();
    // The body element carries the stylesheet's font, size and colour; a
    // fragment without one gets the widget's font instead.
    QTextEdit::setHtml(QLatin1String("<body>") + visible.left(firstEnd) + QLatin1String("</body>"));
    if (framed) frameDocument();
    if (autoHeight) fitHeight();
    if (!pending.empty()) QTimer::singleShot(0, this, [this, g = generation] { appendPending(g); });
}

// The card's look (wrapCards) on the document's own frame: its line, its
// padding, and its margins above and below.
void SheetView::frameDocument() {
    QTextFrame* root = document()->rootFrame();
    QTextFrameFormat f = root->frameFormat();
    const double margin = document()->documentMargin();
    f.setBorder(1);
    f.setBorderBrush(qcolor(colors().line));
    f.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    f.setPadding(14);
    f.setTopMargin(margin + 6);
    f.setBottomMargin(margin + 14);
    f.setLeftMargin(margin);
    f.setRightMargin(margin);
    root->setFrameFormat(f);
}

void SheetView::appendPending(int forGeneration) {
    if (forGeneration != generation || pending.empty()) return;
    const QString piece = pending.front();
    pending.pop_front();
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertHtml(QLatin1String("<body>") + piece + QLatin1String("</body>"));
    if (autoHeight) fitHeight();
    if (!pending.empty()) QTimer::singleShot(0, this, [this, g = generation] { appendPending(g); });
}

void SheetView::finishLoading() {
    const int g = generation;
    while (!pending.empty() && g == generation)
        appendPending(g);
}

void SheetView::setDocumentWidth() {
    // Setting even the same width lays the whole document out again.
    const qreal width = std::max(viewWidth(), 200);
    if (document()->textWidth() != width) document()->setTextWidth(width);
}

void SheetView::fitHeight() {
    if (inFit) return;
    inFit = true;
    setDocumentWidth();
    // The stylesheet pads the viewport inside the widget (QTextEdit's
    // padding); the document needs its own height inside that.
    const QMargins vm = viewportMargins();
    const int padding = height() - contentsRect().height() + vm.top() + vm.bottom();
    const int h = html.empty() ? 0 : int(std::ceil(document()->size().height())) + 4 + padding;
    if (h != height()) setFixedHeight(h);
    inFit = false;
}

QVariant SheetView::loadResource(int type, const QUrl& name) {
    const QString key = name.toString();
    if (type != QTextDocument::ImageResource || !imageName(key))
        return QTextBrowser::loadResource(type, name);
    // A figure is drawn at the size the sheet shows it, so it is never
    // scaled by the text engine; it is drawn again only when the width has
    // made that size change.
    if (auto it = cache.constFind(key); it != cache.constEnd() && sameSize(*it, figSizes.value(key)))
        return *it;
    const QVariant image = drawImage(key, screenRatio());
    cache.insert(key, image);
    return image;
}

QVariant SheetView::drawImage(const QString& name, double dpr) const {
    bool ok = false;
    const int n = name.mid(2).toInt(&ok);
    // Out of range: a transparent pixel, which the document stretches to the
    // tag's size, so the sheet shows a blank rather than a broken image.
    QImage blank(1, 1, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    if (name.startsWith(QLatin1String("f:"))) {
        if (!ok || n < 0 || size_t(n) >= figs.size()) return blank;
        // Shapes spare the SVG renderer, which lays out and strokes every
        // label anew: in a circuit's schematic most of a frame's time.
        if (size_t(n) < figShapes.size() && figShapes[size_t(n)])
            return paintFigure(*figShapes[size_t(n)], dpr, figSizes.value(name));
        return renderFigure(figs[size_t(n)], dpr, figSizes.value(name));
    }
    if (!ok || n < 0 || size_t(n) >= maths.size() || !maths[size_t(n)]) return blank;
    return mathImage(maths[size_t(n)], sheetMathStyle(cellMaths.contains(name), mathPts.value(name, 0.0)), dpr);
}

QMap<QString, QSize> figureSizes(const QString& html) {
    const QRegularExpression& img = figureImagePattern();
    QMap<QString, QSize> sizes;
    for (auto it = img.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        sizes.insert(m.captured(1), QSize(m.captured(2).toInt(), m.captured(3).toInt()));
    }
    return sizes;
}

QImage renderFigure(const std::string& svg, double dpr, QSize size) {
    QSvgRenderer renderer(QByteArray::fromStdString(svg));
    QSize natural = renderer.defaultSize();
    if (!natural.isValid() || natural.isEmpty()) natural = QSize(460, 280);
    if (!size.isValid() || size.isEmpty()) size = natural;
    QImage img(QSize(int(std::ceil(size.width() * dpr)), int(std::ceil(size.height() * dpr))),
               QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    img.setDevicePixelRatio(dpr);
    if (renderer.isValid()) {
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing, true);
        p.setRenderHint(QPainter::TextAntialiasing, true);
        renderer.render(&p, QRectF(QPointF(0, 0), QSizeF(size)));
    }
    return img;
}

QImage paintFigure(const fl::ShapeFigure& fig, double dpr, QSize size) {
    const QSize natural(std::max(fig.w, 1), std::max(fig.h, 1));
    if (!size.isValid() || size.isEmpty()) size = natural;
    QImage img(QSize(int(std::ceil(size.width() * dpr)), int(std::ceil(size.height() * dpr))),
               QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    img.setDevicePixelRatio(dpr);
    // One scale for both directions, the figure centred: a tag's rounded
    // size is never quite in proportion.
    const double scale =
        std::min(double(size.width()) / natural.width(), double(size.height()) / natural.height());
    const QPointF offset((size.width() - natural.width() * scale) / 2,
                         (size.height() - natural.height() * scale) / 2);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    paintShapes(p, fig.shapes, scale, offset);
    return img;
}

void SheetView::resizeEvent(QResizeEvent* event) {
    // A page out of view is resized with the window (a new text size widens
    // the sidebar); its sheet is laid out at the new width when it is shown.
    if (autoHeight && window()->isVisible() && !isVisible()) {
        QAbstractScrollArea::resizeEvent(event);
        resizedAway = true;
        return;
    }
    QTextBrowser::resizeEvent(event);
    const int w = viewWidth();
    if (std::abs(w - lastWidth) > 12 && html.find("<img src=\"f:") != std::string::npos)
        QTimer::singleShot(0, this, [this] { rebuild(); });
    else if (autoHeight)
        QTimer::singleShot(0, this, [this] { fitHeight(); });
}

void SheetView::setHot(const QRectF& rect) {
    if (rect == hotRect) return;
    hotRect = rect;
    viewport()->update();
}

SheetView::Tile SheetView::tileAt(const QTextBrowser* view, const QPoint& pos) {
    const QPointF p(pos.x() + view->horizontalScrollBar()->value(),
                    pos.y() + view->verticalScrollBar()->value());
    const QTextDocument* doc = view->document();
    return findTile(doc->documentLayout(), doc->rootFrame(), p);
}

void SheetView::mouseMoveEvent(QMouseEvent* event) {
    QTextBrowser::mouseMoveEvent(event);
    const Tile tile = tileAt(this, event->position().toPoint());
    setHot(tile.href.isEmpty() ? QRectF() : tile.rect);
    // Over a link the browser has set the hand already.
    if (anchorAt(event->position().toPoint()).isEmpty())
        viewport()->setCursor(tile.href.isEmpty() ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

void SheetView::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint pos = event->position().toPoint();
    if (event->button() == Qt::LeftButton && anchorAt(pos).isEmpty() && !textCursor().hasSelection()) {
        const Tile tile = tileAt(this, pos);
        if (!tile.href.isEmpty()) {
            setHot(QRectF());
            emit action(tile.href);
            return;
        }
    }
    QTextBrowser::mouseReleaseEvent(event);
}

void SheetView::changeEvent(QEvent* event) {
    // The document takes its fonts from its stylesheet. Handing it the
    // widget's new font (as the text edit does) would lay every sheet out
    // again, those out of view too, when a new text size restyles the window.
    if (event->type() == QEvent::FontChange) {
        QAbstractScrollArea::changeEvent(event);
        return;
    }
    QTextBrowser::changeEvent(event);
}

void SheetView::showEvent(QShowEvent* event) {
    QTextBrowser::showEvent(event);
    const bool resized = std::exchange(resizedAway, false);
    if (stale) {
        refresh();
    } else if (resized && hasContent()) {
        if (std::abs(viewWidth() - lastWidth) > 12 && html.find("<img src=\"f:") != std::string::npos)
            rebuild();
        else
            fitHeight();
    }
}

void SheetView::leaveEvent(QEvent* event) {
    setHot(QRectF());
    QTextBrowser::leaveEvent(event);
}

void SheetView::paintEvent(QPaintEvent* event) {
    QTextBrowser::paintEvent(event);
    if (hotRect.isNull()) return;
    QPainter p(viewport());
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(QPen(qcolor(colors().accent), 2));
    p.setBrush(Qt::NoBrush);
    // Whole pixels for a two-pixel line: it then covers exactly two rows.
    const QRectF r = hotRect.translated(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    p.drawRoundedRect(QRectF(std::round(r.left()) + 1, std::round(r.top()) + 1, std::round(r.width()) - 2,
                             std::round(r.height()) - 2),
                      8, 8);
}

} // namespace app

#include "sheetview.moc"
