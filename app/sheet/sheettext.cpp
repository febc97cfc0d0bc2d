// Rewriting of the result markup for the text engine. Blocks are found by
// their class words and their matching "</div>", never by regular expression
// over the whole, because blocks nest (a message inside a step inside a card).
#include "app/sheet/sheettext.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <vector>

namespace app {

namespace {

// A div block: "<div" at `start`, its opening tag ending before `open`,
// its inside up to `close` (the "</div>"), and `end` just after that.
struct Block {
    qsizetype start = -1, open = 0, close = 0, end = 0;
    QString tag; // the opening tag, for its class words
    QStringView inside(const QString& text) const { return QStringView(text).mid(open, close - open); }
};

// The value of class="..." in an opening tag, or empty.
QStringView classOf(QStringView tag) {
    const qsizetype at = tag.indexOf(QLatin1String("class=\""));
    if (at < 0) return {};
    const qsizetype from = at + 7;
    const qsizetype to = tag.indexOf('"', from);
    return to < 0 ? QStringView() : tag.mid(from, to - from);
}

bool hasWord(QStringView words, QStringView word) {
    for (QStringView w : words.split(' ', Qt::SkipEmptyParts))
        if (w == word) return true;
    return false;
}

Block findBlock(const QString& text, qsizetype from, QStringView cls) {
    Block b;
    b.start = findDiv(text, from, cls);
    if (b.start < 0) return b;
    const qsizetype gt = text.indexOf('>', b.start);
    b.open = gt + 1;
    b.tag = text.mid(b.start, b.open - b.start);
    b.end = divEnd(text, b.open);
    b.close = text.mid(b.end - 6, 6) == QLatin1String("</div>") ? b.end - 6 : b.end;
    return b;
}

// Replaces every block of class `cls` by what `fn` makes of it. The search
// goes on from the replacement's start, so blocks nested in it are found too.
template <class Fn> QString eachBlock(QString text, QStringView cls, Fn fn) {
    qsizetype from = 0;
    while (true) {
        const Block b = findBlock(text, from, cls);
        if (b.start < 0) break;
        const QString repl = fn(text, b);
        text.replace(b.start, b.end - b.start, repl);
        from = b.start;
    }
    return text;
}

QString boxTable(QStringView inside, const std::string& colour, const QString& textStyle) {
    return QLatin1String("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"8\" "
                         "style=\"margin-top:6px;margin-bottom:6px\"><tr><td align=\"left\" bgcolor=\"") +
           qstr(colour) + QLatin1String("\" style=\"text-align:left") + textStyle + QLatin1String("\">") +
           inside.toString() + QLatin1String("</td></tr></table>");
}

// Data tables: the class "data" that the stylesheet aligns by, left
// placement, and on screen stripes on every second row.
QString stripeTables(QString text, const ThemeColors& c, Medium medium) {
    const QString stripe = QLatin1String(c.dark ? "#1f232a" : "#f4f6f9");
    qsizetype from = 0;
    while (true) {
        const qsizetype div = findDiv(text, from, u"tbl");
        if (div < 0) break;
        from = text.indexOf('>', div) + 1;
        qsizetype t = from;
        while (t < text.size() && text[t].isSpace())
            ++t;
        if (!QStringView(text).mid(t).startsWith(QLatin1String("<table"))) continue;
        const qsizetype tagEnd = text.indexOf('>', t);
        if (tagEnd < 0) break;
        QString tag = text.mid(t, tagEnd - t);
        const qsizetype cls = tag.indexOf(QLatin1String("class=\""));
        if (cls < 0)
            tag += QLatin1String(" class=\"data\"");
        else if (!hasWord(classOf(tag), u"data"))
            tag.insert(cls + 7, QLatin1String("data "));
        if (!tag.contains(QLatin1String("align="))) tag += QLatin1String(" align=\"left\"");
        // The rows' lines and stripes run through without gaps.
        if (!tag.contains(QLatin1String("cellspacing="))) tag += QLatin1String(" cellspacing=\"0\"");
        text.replace(t, tagEnd - t, tag);

        const qsizetype bodyStart = t + tag.size() + 1;
        const qsizetype tableEnd = text.indexOf(QLatin1String("</table>"), bodyStart);
        if (tableEnd < 0) break;
        QString body = text.mid(bodyStart, tableEnd - bodyStart);
        int row = 0;
        for (qsizetype p = body.indexOf(QLatin1String("<tr")); p >= 0;
             p = body.indexOf(QLatin1String("<tr"), p + 3)) {
            const QChar next = p + 3 < body.size() ? body[p + 3] : QChar();
            if (next != '>' && !next.isSpace()) continue;
            if (row++ % 2 == 1 && medium == Medium::Screen)
                body.insert(p + 3, QLatin1String(" bgcolor=\"") + stripe + '"');
        }
        text.replace(bodyStart, tableEnd - bodyStart, body);
        from = bodyStart + body.size();
    }
    return text;
}

// Equation tables: every cell centred on its row, so that a side that is a
// tall expression image and the "=" beside it share their middle.
QString centreEquations(QString text) {
    static const QRegularExpression eqs(
        QStringLiteral("<table[^>]*\\bclass=\"[^\"]*\\beqs\\b[^\"]*\"[^>]*>"));
    qsizetype from = 0;
    while (true) {
        const auto m = eqs.match(text, from);
        if (!m.hasMatch()) break;
        const qsizetype end = text.indexOf(QLatin1String("</table>"), m.capturedEnd());
        if (end < 0) break;
        QString body = text.mid(m.capturedEnd(), end - m.capturedEnd());
        body.replace(QLatin1String("<td"), QLatin1String("<td valign=\"middle\""));
        text.replace(m.capturedEnd(), end - m.capturedEnd(), body);
        from = m.capturedEnd() + body.size();
    }
    return text;
}

// A step's head "<p class="h4"><span class="stnum">N</span> title</p>" taken
// apart: the number goes into the badge, the title stays above the body.
// The line above a step is a row of its own on screen. On paper it is the
// cells' top border: the text engine stretches a row's background down to
// the page's end when the next row starts a new page.
QString stepTable(QStringView inside, const ThemeColors& c, Medium medium) {
    QString number, rest = inside.toString();
    static const QRegularExpression head(
        QStringLiteral("^\\s*<p class=\"h4\"><span class=\"stnum\">(.*?)</span>\\s*(.*?)</p>"),
        QRegularExpression::DotMatchesEverythingOption);
    const auto m = head.match(rest);
    if (m.hasMatch()) {
        number = m.captured(1);
        rest = QLatin1String("<p class=\"h4\" style=\"margin-top:0\">") + m.captured(2) +
               QLatin1String("</p>") + rest.mid(m.capturedEnd());
    }
    QString line, border;
    if (medium == Medium::Screen)
        line = QLatin1String("<tr><td class=\"stline\" colspan=\"2\" height=\"1\" bgcolor=\"") +
               qstr(c.line) + QLatin1String("\"></td></tr>");
    else
        border = QLatin1String(" style=\"border-top:1px solid ") + qstr(c.line) + '"';
    return QLatin1String("<table class=\"stept\" width=\"100%\" cellspacing=\"0\" cellpadding=\"0\" "
                         "style=\"margin-top:6px\">") +
           line + QLatin1String("<tr><td class=\"stbadge\" width=\"34\" valign=\"top\"") + border +
           QLatin1String("><span class=\"stnum\">&nbsp;") + number +
           QLatin1String("&nbsp;</span></td><td class=\"stbody\" valign=\"top\"") + border + '>' + rest +
           QLatin1String("</td></tr></table>");
}

} // namespace

qsizetype findDiv(const QString& text, qsizetype from, QStringView cls) {
    for (qsizetype p = text.indexOf(QLatin1String("<div"), std::max<qsizetype>(from, 0)); p >= 0;
         p = text.indexOf(QLatin1String("<div"), p + 4)) {
        const QChar next = p + 4 < text.size() ? text[p + 4] : QChar();
        if (next != '>' && !next.isSpace()) continue;
        const qsizetype gt = text.indexOf('>', p);
        if (gt < 0) return -1;
        if (hasWord(classOf(QStringView(text).mid(p, gt - p)), cls)) return p;
    }
    return -1;
}

qsizetype divEnd(const QString& text, qsizetype tagEnd) {
    int depth = 1;
    qsizetype p = tagEnd;
    while (true) {
        const qsizetype open = text.indexOf(QLatin1String("<div"), p);
        const qsizetype close = text.indexOf(QLatin1String("</div>"), p);
        if (close < 0) return text.size();
        if (open >= 0 && open < close) {
            ++depth;
            p = open + 4;
        } else {
            if (--depth == 0) return close + 6;
            p = close + 6;
        }
    }
}

QString holdChipsTogether(const QString& html) {
    static const QRegularExpression chip(QStringLiteral("(<a class=\"hchip\"[^>]*>)(.*?)</a>"));
    static const QRegularExpression tagOrBlank(QStringLiteral("<[^>]*>| "));
    QString out;
    qsizetype at = 0;
    for (QRegularExpressionMatchIterator it = chip.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        out += QStringView(html).mid(at, m.capturedStart(2) - at);
        const QString text = m.captured(2);
        QString inner;
        qsizetype from = 0;
        for (QRegularExpressionMatchIterator t = tagOrBlank.globalMatch(text); t.hasNext();) {
            const QRegularExpressionMatch piece = t.next();
            inner += QStringView(text).mid(from, piece.capturedStart() - from);
            inner += piece.captured() == QLatin1String(" ") ? QStringLiteral("&nbsp;") : piece.captured();
            from = piece.capturedEnd();
        }
        inner += QStringView(text).mid(from);
        out += inner;
        at = m.capturedEnd(2);
    }
    out += QStringView(html).mid(at);
    return out;
}

int countSteps(const QString& html) {
    int n = 0;
    for (qsizetype p = findDiv(html, 0, u"step"); p >= 0; p = findDiv(html, p + 4, u"step"))
        ++n;
    return n;
}

QString wrapCards(const QString& html, const ThemeColors& c) {
    const QString open =
        QLatin1String("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"14\" border=\"1\" "
                      "bordercolor=\"") +
        qstr(c.line) +
        QLatin1String("\" style=\"border-collapse:collapse;margin-top:6px;margin-bottom:14px\">"
                      "<tr><td bgcolor=\"") +
        qstr(c.panel) + QLatin1String("\" align=\"left\" style=\"text-align:left;border:1px solid ") +
        qstr(c.line) + QLatin1String("\">");
    return eachBlock(html, u"card", [&](const QString& text, const Block& b) {
        return open + b.inside(text).toString() + QLatin1String("</td></tr></table>");
    });
}

bool wholeCard(const QString& html, QString* inside) {
    qsizetype start = 0;
    while (start < html.size() && html[start].isSpace())
        ++start;
    if (start == html.size() || findDiv(html, start, u"card") != start) return false;
    const Block b = findBlock(html, start, u"card");
    if (b.close == b.end) return false; // never closed
    for (qsizetype p = b.end; p < html.size(); ++p)
        if (!html[p].isSpace()) return false;
    if (inside) *inside = html.mid(b.open, b.close - b.open);
    return true;
}

const QRegularExpression& figureImagePattern() {
    static const QRegularExpression img(
        QStringLiteral("<img src=\"(f:[0-9]+)\" width=\"([0-9]+)\" height=\"([0-9]+)\">"));
    return img;
}

QString fitImages(const QString& html, int maxWidth) {
    if (maxWidth < 1) return html;
    const QRegularExpression& img = figureImagePattern();
    QString out;
    out.reserve(html.size());
    qsizetype last = 0;
    for (auto it = img.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        const long long w = m.captured(2).toLongLong();
        if (w <= maxWidth) continue;
        const long long h = m.captured(3).toLongLong();
        out += QStringView(html).mid(last, m.capturedStart() - last);
        out += QStringLiteral("<img src=\"%1\" width=\"%2\" height=\"%3\">")
                   .arg(m.captured(1))
                   .arg(maxWidth)
                   .arg(std::llround(double(maxWidth) * double(h) / double(w)));
        last = m.capturedEnd();
    }
    if (last == 0) return html;
    out += QStringView(html).mid(last);
    return out;
}

QString cutSteps(const QString& html, int keep) {
    std::vector<std::pair<qsizetype, qsizetype>> steps;
    for (qsizetype p = findDiv(html, 0, u"step"); p >= 0;) {
        const qsizetype end = divEnd(html, html.indexOf('>', p) + 1);
        steps.emplace_back(p, end);
        p = findDiv(html, end, u"step");
    }
    QString out = html;
    for (auto i = qsizetype(steps.size()) - 1; i >= std::max(keep, 0); --i)
        out.remove(steps[i].first, steps[i].second - steps[i].first);
    return out;
}

QString applySpoilers(const QString& html, bool revealed) {
    const QStringView gone = revealed ? u"spoiler-alt" : u"spoiler";
    const QStringView kept = revealed ? u"spoiler" : u"spoiler-alt";
    QString out = eachBlock(html, gone, [](const QString&, const Block&) { return QString(); });
    return eachBlock(out, kept,
                     [](const QString& text, const Block& b) { return b.inside(text).toString(); });
}

QString rewriteBoxes(const QString& html, const ThemeColors& c, Medium medium) {
    QString out = stripeTables(html, c, medium);
    out = eachBlock(out, u"msg", [&](const QString& text, const Block& b) {
        const QStringView cls = classOf(b.tag);
        const bool okBox = hasWord(cls, u"ok-box");
        QString style;
        if (hasWord(cls, u"bad")) style = QLatin1String(";color:") + qstr(c.bad);
        if (okBox) style = QLatin1String(";color:") + qstr(c.ok);
        return boxTable(b.inside(text), okBox ? c.soft : c.chip, style);
    });
    out = centreEquations(out);
    const std::pair<QStringView, const std::string*> tinted[] = {
        {u"note", &c.soft}, {u"facit", &c.soft}, {u"txstory", &c.chip}, {u"wsbox", &c.chip}};
    for (const auto& [cls, colour] : tinted)
        out = eachBlock(out, cls, [&](const QString& text, const Block& b) {
            return boxTable(b.inside(text), *colour, QString());
        });
    return eachBlock(out, u"step", [&](const QString& text, const Block& b) {
        return stepTable(b.inside(text), c, medium);
    });
}

QSet<QString> cellImages(const QString& html) {
    static const QRegularExpression alone(
        QStringLiteral("<td valign=\"middle\"[^>]*>\\s*<img class=\"math\" src=\"(m:[0-9]+)\">\\s*</td>"));
    QSet<QString> names;
    for (auto it = alone.globalMatch(html); it.hasNext();)
        names.insert(it.next().captured(1));
    return names;
}

QString dropNoPrint(const QString& html) {
    static const QRegularExpression tag(
        QStringLiteral("<([a-zA-Z][a-zA-Z0-9]*)\\b[^>]*\\bclass=\"([^\"]*)\"[^>]*>"));
    QString out = html;
    qsizetype from = 0;
    while (true) {
        const auto m = tag.match(out, from);
        if (!m.hasMatch()) break;
        if (!hasWord(m.capturedView(2), u"no-print")) {
            from = m.capturedEnd();
            continue;
        }
        // The element runs to its matching close tag, counting nested ones of its name.
        const QString name = m.captured(1).toLower();
        const QString openTag = '<' + name, closeTag = QLatin1String("</") + name + '>';
        int depth = 1;
        qsizetype p = m.capturedEnd();
        qsizetype end = out.size();
        while (depth > 0) {
            const qsizetype o = out.indexOf(openTag, p, Qt::CaseInsensitive);
            const qsizetype cl = out.indexOf(closeTag, p, Qt::CaseInsensitive);
            if (cl < 0) break;
            if (o >= 0 && o < cl) {
                ++depth;
                p = o + openTag.size();
            } else {
                --depth;
                p = cl + closeTag.size();
                if (depth == 0) end = p;
            }
        }
        // An element that never closes (an img) is the tag alone.
        if (depth > 0) end = m.capturedEnd();
        out.remove(m.capturedStart(), end - m.capturedStart());
        from = m.capturedStart();
    }
    return out;
}

QString visibleSheet(const QString& html, const SheetState& s, const ThemeColors& c) {
    QString out = wrapCards(html, c);
    out = fitImages(out, std::max(s.width, 200) - 30);
    bool answer = true;
    if (s.stepMode && s.stepCount > 0) {
        out = cutSteps(out, s.revealed);
        answer = s.revealed >= s.stepCount;
    }
    out = applySpoilers(out, answer);
    return plainHeadings(inlineSizes(rewriteBoxes(out, c), s.textScale));
}

QString plainHeadings(const QString& html) {
    static const QRegularExpression heading(QStringLiteral("<(/?)h([234])\\b([^>]*)>"));
    if (!html.contains(QLatin1String("<h"))) return html;
    QString out;
    out.reserve(html.size() + html.size() / 16);
    qsizetype last = 0;
    for (auto it = heading.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        out += QStringView(html).mid(last, m.capturedStart() - last);
        last = m.capturedEnd();
        if (!m.capturedView(1).isEmpty()) {
            out += QLatin1String("</p>");
            continue;
        }
        const QString cls = QStringLiteral("h") + m.captured(2);
        QString attrs = m.captured(3);
        const qsizetype at = attrs.indexOf(QLatin1String("class=\""));
        if (at >= 0)
            attrs.insert(at + 7, cls + QLatin1Char(' '));
        else
            attrs.prepend(QLatin1String(" class=\"") + cls + QLatin1Char('"'));
        out += QLatin1String("<p") + attrs + QLatin1Char('>');
    }
    out += QStringView(html).mid(last);
    return out;
}

namespace {

struct OpenTag {
    QString name;
    double size = 0; // handed down to what is inside; 0 for none
};

bool isVoid(QStringView name) {
    return name == u"img" || name == u"br" || name == u"hr" || name == u"col" || name == u"meta";
}

bool isInline(QStringView name) {
    for (const char16_t* n : {u"span", u"a", u"b", u"i", u"em", u"strong", u"sub", u"sup", u"font", u"img"})
        if (name == n) return true;
    return false;
}

// Classes of the typeset formula, which set no size of their own.
bool typesetClasses(QStringView classes) {
    for (QStringView w : classes.split(' ', Qt::SkipEmptyParts))
        if (w != u"v" && w != u"fn" && w != u"sq" && w != u"rad" && w != u"fr" && w != u"math") return false;
    return true;
}

// Formula lines whose size comes from the stylesheet: the images in them
// are drawn at that size.
double classFormulaSize(QStringView classes) {
    return hasWord(classes, u"eq") || hasWord(classes, u"fceq") ? 19.0 : 0.0;
}

const QRegularExpression& sizePattern() {
    static const QRegularExpression re(QStringLiteral("font-size:\\s*(\\d+(?:\\.\\d+)?)pt"));
    return re;
}

QString ptText(double pt) {
    return QString::number(pt, 'f', 1) + QLatin1String("pt");
}

// The tag with `font-size:` set to `pt`, added to its style or in a style of its own.
QString withSize(QStringView tag, double pt) {
    QString out = tag.toString();
    const qsizetype style = out.indexOf(QLatin1String("style=\""));
    const QString decl = QLatin1String("font-size:") + ptText(pt);
    if (style >= 0) {
        out.insert(style + 7, decl + ';');
        return out;
    }
    qsizetype end = out.size() - 1; // the ">"
    if (end > 0 && out[end - 1] == '/') --end;
    out.insert(end, QLatin1String(" style=\"") + decl + '"');
    return out;
}

} // namespace

QString inlineSizes(const QString& html, double scale) {
    const bool scaled = scale != 1.0;
    if (!html.contains(QLatin1String("font-size:")) && !html.contains(QLatin1String("class=\"math\"")))
        return html;
    QString out;
    out.reserve(html.size() + html.size() / 8);
    std::vector<OpenTag> open;
    qsizetype pos = 0;
    while (pos < html.size()) {
        const qsizetype lt = html.indexOf('<', pos);
        if (lt < 0) break;
        const qsizetype gt = html.indexOf('>', lt);
        if (gt < 0) break;
        out += QStringView(html).mid(pos, lt - pos);
        pos = gt + 1;
        const QStringView tag = QStringView(html).mid(lt, gt + 1 - lt);
        if (tag.startsWith(u"</")) {
            const QStringView name = tag.mid(2, tag.size() - 3).trimmed();
            for (auto it = open.rbegin(); it != open.rend(); ++it)
                if (QStringView(it->name).compare(name, Qt::CaseInsensitive) == 0) {
                    open.erase(std::next(it).base(), open.end());
                    break;
                }
            out += tag;
            continue;
        }
        if (tag.startsWith(u"<!") || tag.size() < 3) {
            out += tag;
            continue;
        }
        qsizetype n = 1;
        while (n < tag.size() && (tag[n].isLetterOrNumber())) ++n;
        const QString name = tag.mid(1, n - 1).toString().toLower();
        const QStringView classes = classOf(tag);
        const double outer = open.empty() ? 0.0 : open.back().size;

        double own = 0;
        QString written = tag.toString();
        if (const auto m = sizePattern().match(tag); m.hasMatch()) {
            own = m.capturedView(1).toDouble() * scale;
            if (scaled)
                written.replace(m.capturedStart(1), m.capturedLength(1) + 2, ptText(own));
        } else if (outer > 0 && isInline(name) && typesetClasses(classes)) {
            own = outer;
            written = withSize(tag, outer);
        }
        out += written;
        if (isVoid(name) || tag.endsWith(u"/>")) continue;
        double inside = own;
        if (inside == 0) {
            const double fromClass = classFormulaSize(classes);
            if (fromClass > 0)
                inside = fromClass * scale;
            else if (classes.isEmpty() || typesetClasses(classes))
                inside = outer;
        }
        open.push_back({name, inside});
    }
    out += QStringView(html).mid(pos);
    return out;
}

QMap<QString, double> mathSizes(const QString& html) {
    static const QRegularExpression img(
        QStringLiteral("<img class=\"math\" src=\"(m:[0-9]+)\"[^>]*font-size:(\\d+(?:\\.\\d+)?)pt"));
    QMap<QString, double> sizes;
    for (auto it = img.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        sizes.insert(m.captured(1), m.capturedView(2).toDouble());
    }
    return sizes;
}

QList<qsizetype> topLevelCuts(const QString& html) {
    QList<qsizetype> cuts{0};
    int depth = 0;
    qsizetype pos = 0;
    while (true) {
        const qsizetype o = html.indexOf(QLatin1String("<table"), pos);
        const qsizetype c = html.indexOf(QLatin1String("</table>"), pos);
        if (o < 0 && c < 0) break;
        if (o >= 0 && (c < 0 || o < c)) {
            if (depth == 0 && o > 0) cuts.push_back(o);
            ++depth;
            pos = o + 6;
        } else {
            depth = std::max(0, depth - 1);
            pos = c + 8;
        }
    }
    return cuts;
}

QString sheetTitle(const QString& html) {
    static const QRegularExpression h2(QStringLiteral("<h2[^>]*>(.*?)</h2>"),
                                       QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression tags(QStringLiteral("<[^>]+>"));
    const auto m = h2.match(html);
    if (!m.hasMatch()) return QString();
    QString t = m.captured(1);
    t.remove(tags);
    t.replace(QLatin1String("&nbsp;"), QLatin1String(" "));
    t.replace(QLatin1String("&lt;"), QLatin1String("<"));
    t.replace(QLatin1String("&gt;"), QLatin1String(">"));
    t.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return t.simplified();
}

} // namespace app
