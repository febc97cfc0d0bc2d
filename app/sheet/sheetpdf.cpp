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

// Moves each marked block that a page boundary would cut to the top of the
// next page, unless it is taller than a page anyway.
//
// Every change of a format lays the rest of the document out again, so one
// change per block is quadratic in a long sheet (forty worked solutions took
// seconds). The breaks are planned from one layout instead: a break moves
// everything after it down by about the same amount, so later blocks are
// judged at their shifted place, and the breaks of a round go in one edit.
// The plan is only as good as that estimate (a table lands a few points off),
// so a round stops at the first block that lies too near a page boundary to
// tell, and the next round measures again.
void keepTogether(QTextDocument& doc, const QList<Keep>& kinds) {
    if (kinds.isEmpty()) return;
    const double page = doc.pageSize().height();
    const double pageTop = doc.rootFrame()->frameFormat().topMargin();
    QMap<QString, int> at; // anchor name → document position
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it)
            for (const QString& name : it.fragment().charFormat().anchorNames())
                at.insert(name, it.fragment().position());
    struct Span {
        QTextBlock first, last;
        bool step = false;
    };
    std::vector<Span> keeps;
    for (int i = 0; i < kinds.size(); ++i) {
        // A lead reaches to the end of the kept block that follows it, if no other lead comes first.
        const bool lead = kinds[i] == Keep::Lead;
        if (lead && (i + 1 == kinds.size() || kinds[i + 1] == Keep::Lead)) continue;
        const auto first = at.constFind(QStringLiteral("keep%1").arg(i));
        const auto after = at.constFind(QStringLiteral("keepend%1").arg(lead ? i + 1 : i));
        if (first == at.constEnd() || after == at.constEnd()) continue;
        const Span k{doc.findBlock(*first), doc.findBlock(*after), kinds[i] == Keep::Step};
        if (k.first.isValid() && k.last.isValid()) keeps.push_back(k);
    }
    constexpr double kErrorPerBreak = 16; // how far a planned place may be off, per break before it
    QAbstractTextDocumentLayout* layout = doc.documentLayout();
    size_t from = 0; // the keeps before it are settled
    // Each round settles at least one more keep: with nothing planned yet every
    // place is measured, so the first break or the end always comes.
    while (from < keeps.size()) {
        double shift = 0;
        int breaks = 0;
        QTextCursor edit(&doc);
        edit.beginEditBlock();
        size_t i = from;
        for (; i < keeps.size(); ++i) {
            const Span& k = keeps[i];
            // What moves: a step's whole table, or the block itself.
            QTextCursor cursor(k.first);
            QTextTable* table = k.step ? cursor.currentTable() : nullptr;
            const double top =
                (table ? layout->frameBoundingRect(table).top() : layout->blockBoundingRect(k.first).top()) +
                shift;
            const double bottom = layout->blockBoundingRect(k.last).bottom() + shift;
            if (bottom - top >= page) continue; // cut anyway
            const double boundary = (std::floor(top / page) + 1) * page;
            const double doubt = kErrorPerBreak * breaks;
            if (top - doubt < boundary - page) break; // perhaps across the boundary above it
            if (bottom <= boundary - doubt) continue; // on one page
            if (top >= boundary - doubt || bottom <= boundary + doubt) break; // can't tell
            ++breaks;
            const double margin = table ? table->format().topMargin() : k.first.blockFormat().topMargin();
            shift += boundary + pageTop + margin - top;
            if (table) {
                QTextTableFormat f = table->format();
                f.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                table->setFormat(f);
            } else {
                QTextBlockFormat f;
                f.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                cursor.mergeBlockFormat(f);
            }
        }
        edit.endEditBlock();
        from = i;
    }
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
    return printToPdf(fl::RenderResult{html, figs, maths}, title, path, heading);
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

    // Pages first: the text is then laid out once, at the width it is printed at.
    doc.setPageSize(body);
    doc.setHtml(QLatin1String("<body>") + text + QLatin1String("</body>"));
    keepTogether(doc, keeps);
    const int pages = std::max(1, doc.pageCount());

    const QString left =
        (title.isEmpty() ? QStringLiteral("Ostrovalden") : title) + QStringLiteral(" · ") +
        QLocale(QLocale::Danish, QLocale::Denmark).toString(QDate::currentDate(), "d. MMMM yyyy");
    for (int page = 0; page < pages; ++page) {
        if (page > 0) writer.newPage();
        paintHeadFoot(painter, area, left, page + 1, pages);
        painter.save();
        painter.translate(0, kHead);
        painter.setClipRect(QRectF(QPointF(0, 0), body));
        painter.translate(0, -page * body.height());
        QAbstractTextDocumentLayout::PaintContext ctx;
        ctx.clip = QRectF(0, page * body.height(), body.width(), body.height());
        ctx.palette.setColor(QPalette::Text, qcolor(paper.text));
        doc.documentLayout()->draw(&painter, ctx);
        painter.restore();
    }
    return painter.end();
}

} // namespace app
