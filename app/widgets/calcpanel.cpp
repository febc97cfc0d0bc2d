#include "app/widgets/calcpanel.h"

#include "app/widgets/flowlayout.h"
#include "app/sheet/sheetview.h"
#include "app/shell/theme.h"
#include "app/widgets/helpers.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>
#include <map>

namespace app {

const std::vector<CalcKey>& calcKeys() {
    static const std::vector<CalcKey> table{
        {"frac", "▢/▢", "Brøk – Tab hopper til nævneren"},
        {"inv", "1/x", "1 delt med …"},
        {"sqrt(", "√", ""},
        {"^2", "x²", ""},
        {"^", "xʸ", ""},
        {"*10^", "×10ˣ", "Gange 10 i …"},
        {"π", "π", ""},
        {"(", "(", ""},
        {")", ")", ""},
        {"sin(", "sin", ""},
        {"cos(", "cos", ""},
        {"tan(", "tan", ""},
        {"asin(", "sin⁻¹", ""},
        {"acos(", "cos⁻¹", ""},
        {"atan(", "tan⁻¹", ""},
        {"ans", "ans", "Sidste resultat"},
        {"#BS", "⌫", "Slet"},
        {"#CLR", "C", "Ryd"},
    };
    return table;
}

CalcEdit applyKey(const QString& text, int selStart, int selEnd, const QString& insert) {
    int start = std::clamp(std::min(selStart, selEnd), 0, int(text.size()));
    const int end = std::clamp(std::max(selStart, selEnd), 0, int(text.size()));
    const QString sel = text.mid(start, end - start);
    const QString before = text.left(start), after = text.mid(end);
    if (insert == QLatin1String("#CLR")) return {QString(), 0};
    if (insert == QLatin1String("#BS")) {
        if (start == end) start = std::max(start - 1, 0);
        return {text.left(start) + after, start};
    }
    if (insert == QLatin1String("frac")) {
        // With a selection the cursor waits in the denominator; without one, in the numerator.
        if (!sel.isEmpty()) {
            const QString piece = QLatin1Char('(') + sel + QLatin1String(")/()");
            return {before + piece + after, int(before.size() + piece.size()) - 1};
        }
        return {before + QLatin1String("()/()") + after, int(before.size()) + 1};
    }
    if (insert == QLatin1String("inv")) {
        const QString piece = QLatin1String("1/(") + sel + QLatin1Char(')');
        const int cursor = int(before.size() + piece.size()) - (sel.isEmpty() ? 1 : 0);
        return {before + piece + after, cursor};
    }
    return {before + insert + after, int(before.size() + insert.size())};
}

int tabTarget(const QString& text, int cursor) {
    const qsizetype open = text.indexOf(QLatin1Char('('), cursor);
    const qsizetype close = text.indexOf(QLatin1Char(')'), cursor);
    if (open < 0 && close < 0) return -1;
    qsizetype target;
    if (open >= 0 && (close < 0 || open < close))
        target = open + 1;
    else if (close + 1 < text.size() && text.at(close + 1) == QLatin1Char('/') && open >= 0)
        target = open + 1; // from the numerator of "(…)/(…)" into its denominator
    else
        target = close + 1;
    return target == cursor ? -1 : int(target);
}

CalcPanel::CalcPanel(bool large, QWidget* parent) : QWidget(parent) {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(8);

    heading = new QLabel(this);
    heading->setTextFormat(Qt::RichText);
    box->addWidget(heading);

    givenBox = new QWidget(this);
    givenLayout = new FlowLayout(givenBox, 6, 6);
    givenLayout->setContentsMargins(0, 0, 0, 0);
    givenBox->hide();
    box->addWidget(givenBox);

    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    line = new QLineEdit(this);
    line->setPlaceholderText(QStringLiteral("fx 230/47 eller √3·400·12"));
    line->installEventFilter(this);
    row->addWidget(line, 1);
    auto* equals = makeButton(QStringLiteral("="), this, QStringLiteral("ockey"));
    equals->setMaximumWidth(44);
    equals->setProperty("op", true);
    equals->setToolTip(QStringLiteral("Regn ud og gem i historikken (Enter)"));
    connect(equals, &QPushButton::clicked, this, &CalcPanel::finish);
    row->addWidget(equals);
    box->addLayout(row);

    liveSheet = new SheetView(this);
    liveSheet->autoHeight = false;
    liveSheet->setMinimumHeight(large ? 56 : 44);
    liveSheet->setMaximumHeight(large ? 110 : 80);
    box->addWidget(liveSheet);
    connect(line, &QLineEdit::textChanged, this, &CalcPanel::live);

    keypad = new QGridLayout;
    keypad->setContentsMargins(0, 2, 0, 2);
    keypad->setSpacing(6);
    const int columns = 6;
    int i = 0;
    for (const CalcKey& k : calcKeys()) {
        const QString label = QString::fromUtf8(k.label);
        auto* b = makeButton(label, this, QStringLiteral("ockey"));
        if (*k.tip) b->setToolTip(QString::fromUtf8(k.tip));
        static const QStringList ops{QStringLiteral("▢/▢"), QStringLiteral("1/x"), QStringLiteral("√"),
                                     QStringLiteral("x²"),  QStringLiteral("xʸ"),  QStringLiteral("×10ˣ")};
        if (ops.contains(label)) b->setProperty("op", true);
        if (label == QStringLiteral("⌫") || label == QStringLiteral("C")) b->setProperty("danger", true);
        b->setFocusPolicy(Qt::NoFocus); // the line keeps the focus while the keys are pressed
        const QString insert = QString::fromUtf8(k.insert);
        connect(b, &QPushButton::clicked, this, [this, insert] { press(insert); });
        keypad->addWidget(b, i / columns, i % columns);
        keys.push_back(b);
        ++i;
    }
    box->addLayout(keypad);

    help = new QLabel(this);
    help->setProperty("class", "hint");
    help->setWordWrap(true);
    help->setTextFormat(Qt::RichText);
    box->addWidget(help);

    histSheet = new SheetView(this);
    box->addWidget(histSheet);
    connect(histSheet, &SheetView::action, this, &CalcPanel::action);

    refresh();
}

QString CalcPanel::helpText() const {
    QString text = QStringLiteral(
        "Vinkler er i <b>grader</b>. Du kan skrive + − * / ^ ( ), √, sin, cos, tan, sin⁻¹ …, π, log, ln, "
        "præfikser som 9m og 50µ, og <b>ans</b> (sidste svar). ");
    if (answerField) text += QStringLiteral("Tryk <b>→ svar</b> for at bruge et resultat som dit svar. ");
    text += QStringLiteral("Brøk-knappen laver en tæller og en nævner – <b>Tab</b> hopper ned i nævneren. Pil op "
                           "henter den sidste udregning.");
    return text;
}

void CalcPanel::refresh() {
    heading->setText(QStringLiteral("<b>Lommeregner</b> <span style=\"color:") + qstr(colors().muted) +
                     QStringLiteral("\">vinkler i grader</span>"));
    help->setText(helpText());
    live();
    drawHist();
}

void CalcPanel::setGiven(const std::vector<double>& values) {
    while (QLayoutItem* item = givenLayout->takeAt(0)) {
        if (QWidget* w = item->widget()) {
            w->hide();
            w->deleteLater();
        }
        delete item;
    }
    givenBox->setVisible(!values.empty());
    if (values.empty()) return;
    auto* label = new QLabel(QStringLiteral("Sæt et tal fra opgaven ind:"), givenBox);
    label->setProperty("class", "crumb");
    givenLayout->addWidget(label);
    for (double v : values) {
        const QString typed = QString::fromStdString(fl::fmtValue10(v));
        auto* chip = makeButton(QString::fromStdString(fl::fmtNumber(v)), givenBox, QStringLiteral("chip"));
        chip->setFocusPolicy(Qt::NoFocus);
        connect(chip, &QPushButton::clicked, this, [this, typed] { press(typed); });
        givenLayout->addWidget(chip);
    }
}

void CalcPanel::setAnswerTarget(QLineEdit* field) {
    answerField = field;
    help->setText(helpText());
    drawHist();
}

QPushButton* CalcPanel::key(const QString& label) const {
    for (QPushButton* b : keys)
        if (b->text() == label) return b;
    return nullptr;
}

void CalcPanel::press(const QString& insert) {
    const bool selected = line->hasSelectedText();
    const int start = selected ? int(line->selectionStart()) : line->cursorPosition();
    const int end = selected ? start + int(line->selectedText().size()) : start;
    const CalcEdit edit = applyKey(line->text(), start, end, insert);
    if (insert == QLatin1String("#CLR")) {
        line->clear();
        return;
    }
    line->setText(edit.text);
    line->setCursorPosition(edit.cursor);
    line->setFocus();
    live();
}

void CalcPanel::live() {
    const std::string text = line->text().toStdString();
    if (fl::trimmed(text).empty()) {
        liveSheet->clear();
        return;
    }
    std::map<std::string, double> vars;
    if (hasAns) vars["ans"] = ans;
    std::string html;
    try {
        const double value = fl::calc(text, &vars);
        fl::resetFigures();
        html = "<span class=\"crumb\">" + fl::prettyCalc(text) + "</span>";
        html += std::isfinite(value) ? " <span class=\"hl\">= " + fl::fmtNumber(value) + "</span>"
                                     : " <span class=\"hl\">Intet reelt svar</span>";
    } catch (const std::exception& e) {
        // Half-typed lines are normal here: the words stand in the view, no dialog.
        fl::resetFigures();
        html = "<span class=\"crumb\">" + fl::htmlEscape(e.what()) + "</span>";
    }
    liveSheet->setContent(fl::takeRender(html));
}

void CalcPanel::finish() {
    const QString text = line->text();
    std::map<std::string, double> vars;
    if (hasAns) vars["ans"] = ans;
    double value = NAN;
    try {
        value = fl::calc(text.toStdString(), &vars);
    } catch (const std::exception&) {
        return; // the live view already says what is wrong
    }
    if (!std::isfinite(value)) return;
    ans = value;
    hasAns = true;
    lastLine = text;
    history.push_back({text, value});
    drawHist();
    emit finished(text, value);
}

void CalcPanel::drawHist() {
    if (history.empty()) {
        histSheet->clear();
        return;
    }
    fl::resetFigures();
    std::string html = "<table>";
    // The newest line first: it is the one a student looks for.
    for (size_t n = history.size(); n-- > 0;) {
        const Entry& e = history[n];
        std::string pretty;
        try {
            pretty = fl::prettyCalc(e.expression.toStdString());
        } catch (const std::exception&) {
            pretty = fl::htmlEscape(e.expression.toStdString());
        }
        html += "<tr><td><span class=\"crumb\">" + pretty + "</span></td><td class=\"hl\">= " +
                fl::fmtNumber(e.value);
        if (answerField) html += " &nbsp;<a class=\"chip\" href=\"use:" + std::to_string(n) + "\">→ svar</a>";
        html += "</td></tr>";
    }
    html += "</table>";
    histSheet->setContent(fl::takeRender(html));
}

void CalcPanel::action(const QString& href) {
    if (!href.startsWith(QLatin1String("use:"))) return;
    const QString rest = href.mid(4);
    bool number = false;
    const int index = rest.toInt(&number);
    if (number && answerField && index >= 0 && index < int(history.size())) {
        answerField->setText(QString::fromStdString(fl::fmtValue10(history[size_t(index)].value)));
        answerField->setFocus();
        return;
    }
    // Any other text goes into the line, where the student can go on with it.
    press(rest);
}

bool CalcPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched != line || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        finish();
        return true;
    case Qt::Key_Up:
        if (!lastLine.isEmpty()) {
            line->setText(lastLine);
            live();
        }
        return true;
    case Qt::Key_Tab: {
        const int target = tabTarget(line->text(), line->cursorPosition());
        if (target < 0) return false;
        line->setCursorPosition(target);
        return true;
    }
    default:
        return false;
    }
}

} // namespace app
