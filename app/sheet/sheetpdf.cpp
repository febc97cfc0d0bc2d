// A sheet on paper: the markup is rewritten as for the screen, but whole
// (every step, the answer) and without "no-print" blocks, into a document of
// its own that holds every image drawn at print resolution; the pages get a
// head and a foot. Paper is always light: a sheet shown in the dark palette
// is printed in the light one.
#include "app/sheet/sheetview.h"

#include "app/sheet/mathpainter.h"
#include "app/sheet/sheettext.h"
#include "app/shell/stylesheets.h"
#include "app/shell/theme.h"

#include <QAbstractTextDocumentLayout>
#include <QDate>
#include <QFontMetricsF>
#include <QLocale>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

#include <algorithm>
#include <cmath>
#include <vector>

namespace app {

namespace {

constexpr double kHead = 22;        // head band at the top of the text area, in pixels
constexpr double kFoot = 20;        // foot band at the bottom
constexpr double kPrintRatio = 3.0; // images at 288 dpi on paper
const char* const kPaperCss = "\n.pdf-break { page-break-before: always; }\n";

// The stylesheet's sizes at the scale of paper, whatever the screen uses.
class UnscaledText {
  public:
    UnscaledText() : saved(textScale()) { setTextScale(1.0); }
    ~UnscaledText() { setTextScale(saved); }

  private:
    double saved;
};

// Every colour of the dark palette by its light counterpart: figures and
// inline styles have the colours of the theme they were made in baked in.
std::string onPaper(std::string text) {
    if (!colors().dark) return text;
    const ThemeColors& d = darkColors();
    const ThemeColors& l = lightColors();
    const std::string ThemeColors::*fields[] = {
        &ThemeColors::bg,     &ThemeColors::panel,  &ThemeColors::text, &ThemeColors::muted,
        &ThemeColors::line,   &ThemeColors::accent, &ThemeColors::soft, &ThemeColors::ok,
        &ThemeColors::bad,    &ThemeColors::input,  &ThemeColors::chip, &ThemeColors::teal,
        &ThemeColors::orange, &ThemeColors::purple, &ThemeColors::green};
    for (auto field : fields) {
        const std::string& from = d.*field;
        const std::string& to = l.*field;
        for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    }
    return text;
}

// How paper treats a marked block.
enum class Keep {
    Block, // "pdf-keep": whole on one page
    Step,  // a worked step: its table whole on one page
    Lead,  // "pdf-next", a heading: never alone at the foot of a page, so on
           // the page of the first kept block after it
};

// The next block that paper keeps whole or with what follows.
qsizetype nextKeep(const QString& html, qsizetype from) {
    qsizetype first = -1;
    for (QStringView cls : {u"pdf-keep", u"step", u"pdf-next"})
        if (const qsizetype p = findDiv(html, from, cls); p >= 0 && (first < 0 || p < first)) first = p;
    return first;
}

// Marked blocks and steps get a named anchor on their first text and one on
// an invisible character at their end, so the laid-out document can find
// them; a lead has no end of its own. The text engine keeps a name only
// where text follows it.
QString markKeeps(const QString& html, QList<Keep>* kinds) {
    static const QString kClose = QStringLiteral("</div>");
    QString out = html;
    int n = 0;
    for (qsizetype p = nextKeep(out, 0); p >= 0; p = nextKeep(out, p + 1), ++n) {
        const qsizetype tagEnd = out.indexOf('>', p) + 1;
        if (findDiv(out, p, u"pdf-next") == p) {
            kinds->append(Keep::Lead);
            out.insert(tagEnd, QStringLiteral("<a name=\"keep%1\"></a>").arg(n));
            continue;
        }
        // A step's number goes into a column of its own: the anchor follows it.
        static const QRegularExpression stepNumber(
            QStringLiteral("^\\s*<p class=\"h4\"><span class=\"stnum\">.*?</span>"),
            QRegularExpression::DotMatchesEverythingOption);
        const auto number = stepNumber.match(QStringView(out).mid(tagEnd));
        const qsizetype at = tagEnd + (number.hasMatch() ? number.capturedEnd() : 0);
        kinds->append(number.hasMatch() ? Keep::Step : Keep::Block);
        const QString start = QStringLiteral("<a name=\"keep%1\"></a>").arg(n);
        out.insert(at, start);
        const qsizetype end = divEnd(out, tagEnd);
        if (end < kClose.size() || QStringView(out).mid(end - kClose.size(), kClose.size()) != kClose) continue;
        out.insert(end - kClose.size(), QStringLiteral("<a name=\"keepend%1\">&#8203;</a>").arg(n));
    }
    return out;
}

// Where the pages end, in document coordinates, from one layout without
// pages. Qt's own pages only move lines, so keeping blocks whole through them
// meant setting breaks and laying the rest out again, round after round; here
// the document is laid out once and cut: a page ends at the last place above
// its foot that lies inside no line and no kept span shorter than a page, and
// a forced break ends it early. The returned list begins with 0 and ends with
// the document's height.
std::vector<double> pageCuts(QTextDocument& doc, const QList<Keep>& kinds, double page) {
    QAbstractTextDocumentLayout* layout = doc.documentLayout();
    const double height = layout->documentSize().height();
    struct Span {
        double top, bottom;
    };
    std::vector<Span> lines, keeps;
    std::vector<double> forced;
    QMap<QString, int> at; // anchor name → document position
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        const QRectF r = layout->blockBoundingRect(b);
        if (b.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) forced.push_back(r.top());
        if (const QTextLayout* tl = b.layout())
            for (int i = 0; i < tl->lineCount(); ++i) {
                const QTextLine line = tl->lineAt(i);
                lines.push_back({r.top() + line.y(), r.top() + line.y() + line.height()});
            }
        for (auto it = b.begin(); !it.atEnd(); ++it)
            for (const QString& name : it.fragment().charFormat().anchorNames())
                at.insert(name, it.fragment().position());
    }
    for (int i = 0; i < kinds.size(); ++i) {
        // A lead reaches to the end of the kept block that follows it, if no other lead comes first.
        const bool lead = kinds[i] == Keep::Lead;
        if (lead && (i + 1 == kinds.size() || kinds[i + 1] == Keep::Lead)) continue;
        const auto first = at.constFind(QStringLiteral("keep%1").arg(i));
        const auto after = at.constFind(QStringLiteral("keepend%1").arg(lead ? i + 1 : i));
        if (first == at.constEnd() || after == at.constEnd()) continue;
        const QTextBlock firstBlock = doc.findBlock(*first), lastBlock = doc.findBlock(*after);
        if (!firstBlock.isValid() || !lastBlock.isValid()) continue;
        // A step moves with its whole table: the number column starts it.
        QTextTable* table = kinds[i] == Keep::Step ? QTextCursor(firstBlock).currentTable() : nullptr;
        const double top =
            table ? layout->frameBoundingRect(table).top() : layout->blockBoundingRect(firstBlock).top();
        const double bottom = layout->blockBoundingRect(lastBlock).bottom();
        if (bottom - top < page) keeps.push_back({top, bottom});
    }
    std::sort(forced.begin(), forced.end());

    // The highest place at or above `limit` and below `start` that cuts none of `spans`.
    const auto cutAbove = [](const std::vector<Span>& spans, double start, double limit) {
        double cut = limit;
        for (bool moved = true; moved;) {
            moved = false;
            for (const Span& s : spans)
                if (s.top > start && s.top < cut && s.bottom > cut) {
                    cut = s.top;
                    moved = true;
                }
        }
        return cut;
    };
    std::vector<Span> all = lines;
    all.insert(all.end(), keeps.begin(), keeps.end());

    std::vector<double> cuts{0};
    auto nextForced = forced.begin();
    for (double start = 0; start < height;) {
        while (nextForced != forced.end() && *nextForced <= start + 0.5) ++nextForced;
        const double limit = start + page;
        double cut;
        if (nextForced != forced.end() && *nextForced <= limit) {
            cut = *nextForced;
        } else if (limit >= height) {
            cut = height;
        } else {
            // Kept spans first; a page full of one span gives way to lines, and a
            // line taller than a page is cut where the page ends.
            cut = cutAbove(all, start, limit);
            if (cut <= start) cut = cutAbove(lines, start, limit);
            if (cut <= start) cut = limit;
        }
        cuts.push_back(cut);
        start = cut;
    }
    if (cuts.size() == 1) cuts.push_back(std::max(height, 1.0));
    return cuts;
}

void paintHeadFoot(QPainter& p, const QSizeF& area, const QString& left, int page, int pages) {
    p.save();
    QFont font(QStringLiteral("Segoe UI"));
    font.setPointSizeF(8.5);
    p.setFont(font);
    const QFontMetricsF fm(font, p.device());
    const QString right = QStringLiteral("Side %1 af %2").arg(page).arg(pages);
    const double w = area.width();
    const QString shown = fm.elidedText(left, Qt::ElideRight, w - fm.horizontalAdvance(right) - 24);

    p.setPen(QColor(0xd3, 0xd9, 0xe1));
    p.drawLine(QPointF(0, kHead - 6.5), QPointF(w, kHead - 6.5));
    p.drawLine(QPointF(0, area.height() - kFoot + 5.5), QPointF(w, area.height() - kFoot + 5.5));

    p.setPen(QColor(0x6b, 0x74, 0x80));
    const QRectF head(0, 0, w, kHead - 8);
    p.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, shown);
    const QRectF foot(0, area.height() - kFoot + 7, w, kFoot - 7);
    p.drawText(foot, Qt::AlignRight | Qt::AlignVCenter, right);
    p.restore();
}

} // namespace

bool SheetView::printToPdf(const QString& title, const QString& path, const QString& heading) {
    return printToPdf(fl::RenderResult{html, figs, maths, figShapes}, title, path, heading);
}

bool SheetView::printToPdf(const fl::RenderResult& sheet, const QString& title, const QString& path,
                           const QString& heading) const {
    const std::string& html = sheet.html;
    const std::vector<std::string>& figs = sheet.figs;
    const std::vector<fl::NodePtr>& maths = sheet.maths;
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(16, 14, 16, 14), QPageLayout::Millimeter);
    writer.setResolution(96);
    writer.setTitle(title.isEmpty() ? QStringLiteral("Ostrovalden")
                                    : title + QStringLiteral(" – Ostrovalden"));
    writer.setCreator(QStringLiteral("Ostrovalden Skole"));

    QPainter painter;
    if (!painter.begin(&writer)) return false;

    const QSizeF area = writer.pageLayout().paintRectPixels(writer.resolution()).size();
    const QSizeF body(area.width(), area.height() - kHead - kFoot);
    const ThemeColors& paper = lightColors();

    QTextDocument doc;
    doc.documentLayout()->setPaintDevice(&writer);
    doc.setDocumentMargin(4);
    {
        const UnscaledText unscaled;
        doc.setDefaultStyleSheet(fillTokens(QString::fromUtf8(documentStyleTemplate()), paper, QString()) +
                                 sheetViewCss() + extraCss + QLatin1String(kPaperCss));
    }
    doc.setTextWidth(pdfWidth);

    QString text = dropNoPrint(QString::fromStdString(onPaper(html)));
    QList<Keep> keeps;
    text = markKeeps(text, &keeps);
    text = wrapCards(text, paper);
    // Inside a card a figure has the page less the card's frame and padding.
    text = fitImages(text, int(std::min<double>(pdfWidth, body.width())) - 60);
    text = applySpoilers(text, true);
    text = inlineSizes(rewriteBoxes(text, paper, Medium::Paper), 1.0);
    // A sheet without a head of its own (a formula's answer) is headed by its title.
    if (!heading.isEmpty() && sheetTitle(text).isEmpty())
        text.prepend(QLatin1String("<h2>") + heading + QLatin1String("</h2>"));

    // The document never asks the view: every image is in it beforehand.
    const QMap<QString, QSize> sizes = figureSizes(text);
    for (auto it = sizes.constBegin(); it != sizes.constEnd(); ++it) {
        const int n = it.key().mid(2).toInt();
        if (n >= 0 && size_t(n) < figs.size())
            doc.addResource(QTextDocument::ImageResource, QUrl(it.key()),
                            renderFigure(onPaper(figs[size_t(n)]), kPrintRatio, it.value()));
    }
    const QSet<QString> inCells = cellImages(text);
    const QMap<QString, double> linePts = mathSizes(text);
    for (size_t i = 0; i < maths.size(); ++i) {
        if (!maths[i]) continue;
        const QString name = QStringLiteral("m:%1").arg(i);
        // The screen's sizes at the scale of paper.
        MathStyle ink;
        ink.font = QFont(QStringLiteral("Cambria Math"));
        ink.font.setPointSizeF(13);
        ink.color = qcolor(paper.text);
        ink.lineHeight = 18;
        if (const double pt = linePts.value(name, 0.0); pt > 0) {
            ink.font.setPointSizeF(pt);
            ink.lineHeight = 18 * pt / 13;
        }
        ink.ownCell = inCells.contains(name);
        if (ink.ownCell) {
            ink.around = ink.font;
            ink.around.setPointSizeF(13.5);
        }
        doc.addResource(QTextDocument::ImageResource, QUrl(name), mathImage(maths[i], ink, kPrintRatio));
    }

    // One layout without pages, cut into pages afterwards.
    doc.setTextWidth(body.width());
    doc.setHtml(QLatin1String("<body>") + text + QLatin1String("</body>"));
    const std::vector<double> cuts = pageCuts(doc, keeps, body.height());
    const int pages = int(cuts.size()) - 1;

    const QString left =
        (title.isEmpty() ? QStringLiteral("Ostrovalden") : title) + QStringLiteral(" · ") +
        QLocale(QLocale::Danish, QLocale::Denmark).toString(QDate::currentDate(), "d. MMMM yyyy");
    for (int page = 0; page < pages; ++page) {
        if (page > 0) writer.newPage();
        paintHeadFoot(painter, area, left, page + 1, pages);
        const double top = cuts[size_t(page)], bottom = cuts[size_t(page) + 1];
        painter.save();
        painter.translate(0, kHead);
        painter.setClipRect(QRectF(0, 0, body.width(), bottom - top));
        painter.translate(0, -top);
        QAbstractTextDocumentLayout::PaintContext ctx;
        // A line that touches a cut belongs to one side only: no text twice in the file.
        ctx.clip = QRectF(0, top + 0.5, body.width(), std::max(0.0, bottom - top - 1));
        ctx.palette.setColor(QPalette::Text, qcolor(paper.text));
        doc.documentLayout()->draw(&painter, ctx);
        painter.restore();
    }
    return painter.end();
}

} // namespace app
