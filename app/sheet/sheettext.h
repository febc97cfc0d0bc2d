// The text side of showing a sheet: the result markup is rewritten into the
// HTML subset that QTextDocument draws (it frames no div, so cards and boxes
// become one-cell tables), figures are fitted to the width, unrevealed steps
// are cut out and spoilers resolved. Plain functions of their inputs, so that
// the view and the PDF writer share them and tests need no widget.
#pragma once

#include "app/shell/theme.h"

#include <QList>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QString>

namespace app {

// The position of the next "<div" at or after `from` whose class words hold
// `cls`, or -1.
qsizetype findDiv(const QString& text, qsizetype from, QStringView cls);
// The position just after the "</div>" that closes the div whose opening tag
// ends at `tagEnd`, counting nested divs; the text's end when it never closes.
qsizetype divEnd(const QString& text, qsizetype tagEnd);

int countSteps(const QString& html);

// The blanks inside each a.hchip's text become non-breaking, so that a chip
// never parts over two lines ("Energi og | pris" reads as two chips).
QString holdChipsTogether(const QString& html);

// Each div.card becomes a framed one-cell table in `line` on `panel`.
QString wrapCards(const QString& html, const ThemeColors& c);
// Whether the whole markup is one div.card (a worked sheet), with what is
// inside it. The screen then frames the document itself rather than nest
// everything in a table, which the text engine lays out only as a whole.
bool wholeCard(const QString& html, QString* inside);
// A figure's image tag exactly as the markup writes it: name, width, height.
const QRegularExpression& figureImagePattern();
// Figures wider than `maxWidth` are narrowed, in proportion; never widened.
QString fitImages(const QString& html, int maxWidth);
// Keeps the first `keep` div.step blocks and cuts the rest out.
QString cutSteps(const QString& html, int keep);
// Revealed: div.spoiler shows and div.spoiler-alt goes; the other way round
// before that.
QString applySpoilers(const QString& html, bool revealed);
enum class Medium { Screen, Paper };

// Data tables, message boxes, tinted blocks and steps into tables; the
// cells of equation tables centred. Paper has no row backgrounds between
// rows, where a page may break.
QString rewriteBoxes(const QString& html, const ThemeColors& c, Medium medium = Medium::Screen);
// The expression images that stand alone in a centred cell of an equation
// table (after rewriteBoxes); they are laid out for that place.
QSet<QString> cellImages(const QString& html);
// Elements of class "no-print" dropped, for paper.
QString dropNoPrint(const QString& html);

// Sizes written into the markup itself (style="font-size:16pt") are scaled
// by the text scale like the stylesheet's, and handed down to the inline
// elements inside: the text engine gives an element with a class the size
// its ancestors' rules say, not the inline size of the element around it, so
// a variable in a 16 pt formula would otherwise come out at 19 pt or 11 pt.
// An expression image in a formula line (class "eq" or an inline size) gets
// that size too, so that it is drawn at the size of the text beside it.
QString inlineSizes(const QString& html, double scale);
// The point size each "m:N" image was given by inlineSizes(); images
// without one are absent.
QMap<QString, double> mathSizes(const QString& html);

// Headings h2, h3 and h4 as paragraphs of the classes "h2", "h3" and "h4"
// (the stylesheet gives these the headings' looks). The text engine sizes a
// heading element from the document's default font and not from the
// stylesheet, so a heading would keep its size at every text scale.
QString plainHeadings(const QString& html);

struct SheetState {
    int width = 0; // the viewport's, in pixels
    bool stepMode = false;
    int revealed = 0;
    int stepCount = 0;
    double textScale = 1.0;
};

// The whole chain, in its order: cards, figures, steps, spoilers, boxes,
// inline sizes, headings.
QString visibleSheet(const QString& html, const SheetState& state, const ThemeColors& c);

// Where a long sheet may be cut for showing it piece by piece: before each
// table that stands at the top level (a card, a box), never inside one.
// The first piece starts at 0; each position is the start of a piece.
QList<qsizetype> topLevelCuts(const QString& html);

// The first h2 of a sheet as plain text: the title a PDF gets by default.
QString sheetTitle(const QString& html);

} // namespace app
