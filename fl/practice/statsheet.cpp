#include "fl/practice/statsheet.h"

#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/formulas/catalogue.h"

#include <QDate>
#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace fl {

namespace {

constexpr double kBase = 130;    // y of the base line
constexpr double kTallest = 110; // height of the busiest day
constexpr double kLeft = 24, kRight = 590;
constexpr double kBarWidth = 26;

std::string num(double v) {
    return fmtPlain(v, 6);
}

std::string percent(int64_t part, int64_t whole) {
    return whole > 0
               ? fmtNumber(std::round(100.0 * static_cast<double>(part) / static_cast<double>(whole))) + " %"
               : "–";
}

std::string attr(const std::string& text) {
    std::string out = htmlEscape(text);
    std::string quoted;
    for (char c : out)
        quoted += c == '"' ? std::string("&quot;") : std::string(1, c);
    return quoted;
}

// Data tables align right, for numbers; a column of words reads from the left.
const char kWords[] = "<td style=\"text-align:left\">";
const char kWordsHead[] = "<th style=\"text-align:left\">";

std::string card(const std::string& title, const std::string& body) {
    return "<div class=\"card\"><h3 class=\"sh\">" + title + "</h3>" + body + "</div>";
}

std::string rect(double x, double y, double h, const std::string& fill, bool faded) {
    return "<rect x=\"" + num(x) + "\" y=\"" + num(y) + "\" width=\"" + num(kBarWidth) + "\" height=\"" +
           num(h) + "\" rx=\"3\" fill=\"" + fill + "\"" + (faded ? " fill-opacity=\"0.55\"" : "") + "/>";
}

// "2025-03-14T09:12:00.000Z" as the local date "14.3.2025"; the text as it
// stands when it isn't a time.
std::string examDate(const std::string& iso) {
    QDateTime t = QDateTime::fromString(QString::fromStdString(iso), Qt::ISODateWithMs);
    if (!t.isValid()) return iso;
    return t.toLocalTime().date().toString("d.M.yyyy").toStdString();
}

std::string tilesHtml(const PracticeStats& s) {
    int64_t answered = 0, right = 0;
    int topics = 0;
    for (const auto& [name, t] : s.topics) {
        answered += t.total;
        right += t.right;
        topics += t.total > 0;
    }
    return kvGrid({{"Opgaver besvaret", std::to_string(answered)},
                   {"Rigtige", std::to_string(right)},
                   {"Rigtige i procent", percent(right, answered), true},
                   {"Emner øvet", std::to_string(topics)},
                   {"Dage med øvelser", std::to_string(s.days.size())}},
                  5);
}

std::string topicsCard(const PracticeStats& s) {
    std::string rows;
    for (const auto& [name, t] : topicsWeakestFirst(s)) {
        if (t.total == 0) continue;
        const Level level = topicLevel(t);
        rows += "<tr>" + std::string(kWords) + htmlEscape(topicName(name)) + "</td><td class=\"data\">" +
                std::to_string(t.right) + " af " + std::to_string(t.total) + "</td><td class=\"data\">" +
                percent(t.right, t.total) + "</td><td><span class=\"lvl " + levelClass(level) + "\">" +
                levelText(level) + "</span></td><td><a class=\"chip\" href=\"ov:" + attr(name) +
                "\">Øv</a></td></tr>";
    }
    return card("Dine emner – de svageste først", "<div class=\"tbl\"><table class=\"sttab\"><tr>" +
                                                      std::string(kWordsHead) +
                                                      "Emne</th><th>Svar</th><th>Rigtige</th>"
                                                      "<th>Niveau</th><th></th></tr>" +
                                                      rows + "</table></div>");
}

std::string formulasCard(const PracticeStats& s) {
    std::string rows;
    int shown = 0;
    for (const auto& [key, f] : formulasWeakestFirst(s)) {
        const Formula* family = findFormula(key);
        if (!family) continue; // a circuit exercise, or a family that is gone
        if (++shown > 10) break;
        rows += "<tr>" + std::string(kWords) + symbolHtml(family->title) + "</td><td class=\"data\">" +
                std::to_string(f.wrong) + "</td><td class=\"data\">" + std::to_string(f.total) +
                "</td><td><a class=\"chip\" href=\"go:" + attr(key) + "\">Se formlen</a></td></tr>";
    }
    if (rows.empty())
        return card("Formler du oftest regner forkert", "<p class=\"hint\">Ingen endnu – flot!</p>");
    return card("Formler du oftest regner forkert", "<div class=\"tbl\"><table class=\"sttab\"><tr>" +
                                                        std::string(kWordsHead) +
                                                        "Formel</th><th>Forkerte</th><th>Svar</th>"
                                                        "<th></th></tr>" +
                                                        rows + "</table></div>");
}

std::string untriedCard(const PracticeStats& s, const std::vector<std::string>& allTopics) {
    std::string chips;
    for (const std::string& topic : allTopics) {
        auto it = s.topics.find(topic);
        if (it != s.topics.end() && it->second.total > 0) continue;
        chips += "<a class=\"chip\" href=\"ov:" + attr(topic) + "\">" + htmlEscape(topicName(topic)) +
                 "</a> &nbsp; ";
    }
    if (chips.empty())
        return card("Emner du ikke har prøvet endnu", "<p class=\"hint\">Du har prøvet dem alle.</p>");
    return card("Emner du ikke har prøvet endnu", "<p class=\"chips\">" + chips + "</p>");
}

std::string examsCard(const std::vector<ExamRecord>& exams) {
    if (exams.empty())
        return card("Dine seneste eksamener",
                    "<p class=\"hint\">Ingen eksamener endnu. <a href=\"go:eksamen\">Prøv "
                    "en Eksamen</a>.</p>");
    std::string rows;
    for (const ExamRecord& e : exams)
        rows += "<tr>" + std::string(kWords) + htmlEscape(examDate(e.date)) + "</td>" + kWords +
                htmlEscape(e.topic.empty() ? std::string("Alle emner") : topicName(e.topic)) +
                "</td><td class=\"data\">" + std::to_string(e.right) + " af " + std::to_string(e.total) +
                " (" + percent(e.right, e.total) + ")</td></tr>";
    return card("Dine seneste eksamener",
                "<div class=\"tbl\"><table class=\"sttab\">" + rows + "</table></div>");
}

} // namespace

std::vector<DayBar> lastDays(const PracticeStats& s, const std::string& today, int count) {
    const QDate end = QDate::fromString(QString::fromStdString(today), Qt::ISODate);
    std::vector<DayBar> out;
    if (!end.isValid()) return out;
    for (int i = count - 1; i >= 0; --i) {
        const QDate d = end.addDays(-i);
        DayBar bar;
        bar.label = std::to_string(d.day()) + "/" + std::to_string(d.month());
        if (auto it = s.days.find(d.toString(Qt::ISODate).toStdString()); it != s.days.end()) {
            bar.right = it->second.right;
            bar.wrong = it->second.wrong;
        }
        out.push_back(bar);
    }
    return out;
}

std::string dayBarsSvg(const std::vector<DayBar>& days, const BarColours& c) {
    int64_t busiest = 0;
    for (const DayBar& d : days)
        busiest = std::max<int64_t>(busiest, int64_t{d.right} + d.wrong);
    std::string svg = "<line x1=\"" + num(kLeft) + "\" y1=\"" + num(kBase) + "\" x2=\"" + num(kRight) +
                      "\" y2=\"" + num(kBase) + "\" stroke=\"" + c.line + "\" stroke-width=\"1\"/>";
    const double slot = days.empty() ? 0 : (kRight - kLeft) / static_cast<double>(days.size());
    for (size_t i = 0; i < days.size(); ++i) {
        const DayBar& d = days[i];
        const double x = kLeft + slot * static_cast<double>(i) + (slot - kBarWidth) / 2;
        if (busiest > 0 && d.right + d.wrong > 0) {
            // Right answers stand on the line, the wrong ones on top of them.
            const double hr = d.right * kTallest / static_cast<double>(busiest);
            const double hw = d.wrong * kTallest / static_cast<double>(busiest);
            if (hr > 0) svg += rect(x, kBase - hr, hr, c.right, false);
            if (hw > 0) svg += rect(x, kBase - hr - hw, hw, c.wrong, true);
        }
        svg += "<text x=\"" + num(x + kBarWidth / 2) +
               "\" y=\"146\" font-size=\"10\" text-anchor=\"middle\" fill=\"" + c.text +
               "\" font-family=\"sans-serif\">" + d.label + "</text>";
    }
    return svg;
}

std::string statsHtml(const PracticeStats& s, const std::vector<ExamRecord>& exams,
                      const std::vector<std::string>& allTopics, const std::string& today,
                      const BarColours& colours) {
    if (s.empty() && exams.empty())
        return "<div class=\"card\"><h2>Statistik</h2><p>Du har ikke svaret på nogen opgaver endnu. Lav "
               "nogle Øvelser "
               "eller en Eksamen, så dukker din statistik op her.</p><p><a class=\"btn primary\" "
               "href=\"go:ovelser\">Gå til Øvelser</a></p></div>";
    std::string html =
        "<h2>Statistik</h2>" + tilesHtml(s) +
        "<p class=\"chips\"><a class=\"chip\" href=\"ov:svag\">→ Øv mine svage emner</a> &nbsp; · &nbsp; <a "
        "class=\"chip\" href=\"act:streset\">Nulstil statistik</a></p>";
    html += "<div class=\"card\"><h3 class=\"sh\">De sidste 14 dage</h3>" +
            figure(dayBarsSvg(lastDays(s, today), colours), 600, 150, "Grøn = rigtige, rød = forkerte") +
            "</div>";
    html += topicsCard(s);
    html += formulasCard(s);
    html += untriedCard(s, allTopics);
    html += examsCard(exams);
    return html;
}

} // namespace fl
