#include "app/pages/tools/toolpage.h"

#include "app/shell/pagehost.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/theme.h"
#include "app/widgets/valuefield.h"
#include "app/widgets/helpers.h"
#include "fl/expr/markup.h"
#include "fl/expr/symbols.h"
#include "fl/formulas/fields.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace app {

namespace {

const char kWorking[] = "Regner…";
// A refusal is a sentence or two; the sheet below must stay in sight.
constexpr int kNoteHeight = 200;

} // namespace

void followNet(ValueField* u, bool threePhase) {
    const QString now = u->text().trimmed();
    if (now.isEmpty() || now == QLatin1String("230") || now == QLatin1String("400"))
        u->setText(threePhase ? QStringLiteral("400") : QStringLiteral("230"));
}

ToolPage::ToolPage(PageHost* h, const QString& title, const QString& intro, const QString& headingText,
                   const QString& crumb, QWidget* parent)
    : Page(parent), host(h) {
    formCard = addCard();
    formCard->addLabel(crumb, QStringLiteral("crumb"));
    formCard->addLabel(title, QStringLiteral("h2"));
    formCard->addLabel(intro, QStringLiteral("hint"));
    heading = new QLabel(headingText);
    heading->setProperty("class", "sh");
    heading->setTextFormat(Qt::RichText);
    heading->hide();
}

ValueField* ToolPage::addField(const QString& key, const QString& label, const QString& unit, const QString& def) {
    ValueField* f = formCard->addField(key, label, unit, def);
    defaults[key] = def;
    connect(f, &ValueField::changed, this, [this, f] { interpret(f); });
    if (!def.isEmpty()) interpret(f);
    return f;
}

QComboBox* ToolPage::addChoice(const QString& label, const std::vector<std::pair<QString, QString>>& items,
                               const QString& key) {
    // Laid out as a value field, with the label where a field has its
    // description, so that choices and edits line up in one column.
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    auto* combo = new QComboBox(box);
    combo->setMinimumWidth(180);
    for (const auto& [data, text] : items)
        combo->addItem(text, data);
    auto* line = new QHBoxLayout;
    line->addWidget(combo);
    line->addStretch(1);
    column->addLayout(line);
    auto* desc = new QLabel(label, box);
    desc->setTextFormat(Qt::RichText);
    desc->setProperty("class", "desc");
    column->addWidget(desc);
    formCard->addRow(QString(), box);
    // The same gap as between a field's symbol and its edit.
    formCard->fieldGrid->setHorizontalSpacing(10);
    if (!key.isEmpty()) keyedChoices.emplace_back(key, combo);
    return combo;
}

void ToolPage::addRunButton(const QString& text, bool withClear, const QString& third) {
    QHBoxLayout* row = formCard->addButtonRow();
    runText = text;
    runBtn = formCard->addButton(row, text, QStringLiteral("primary"));
    connect(runBtn, &QPushButton::clicked, this, &ToolPage::runClicked);
    if (withClear) {
        clearBtn = formCard->addButton(row, QStringLiteral("Ryd"));
        connect(clearBtn, &QPushButton::clicked, this, &ToolPage::clearForm);
    }
    if (!third.isEmpty()) {
        QPushButton* b = formCard->addButton(row, third);
        connect(b, &QPushButton::clicked, this, [this] { thirdAction(); });
    }

    note = new SheetView(formCard);
    note->setMaximumHeight(kNoteHeight);
    note->hide();
    formCard->layout->addWidget(note);

    area = new ResultArea(host);
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(heading);
    column->addWidget(area, 1);
    addWidget(box);
    layout->setStretchFactor(box, 1);
    if (host) connect(area->view(), &SheetView::action, this, [this](const QString& href) { host->openLink(href); });

    for (ValueField* f : formCard->fields)
        connect(f, &ValueField::enterPressed, this, &ToolPage::run);
}

ValueField* ToolPage::field(const QString& key) const {
    for (ValueField* f : formCard->fields)
        if (f->key == key) return f;
    return nullptr;
}

fl::FormMap ToolPage::formMap() const {
    fl::FormMap form = formCard->values();
    for (const auto& [key, combo] : keyedChoices)
        form[key.toStdString()] = combo->currentData().toString().toStdString();
    return form;
}

bool ToolPage::formEmpty() const {
    for (const ValueField* f : formCard->fields)
        if (!f->text().trimmed().isEmpty()) return false;
    return true;
}

void ToolPage::interpret(ValueField* f) {
    f->setInterp(QString::fromStdString(fl::interpretLine(f->text().toStdString(), colors().bad)));
}

void ToolPage::runClicked() {
    runBtn->setEnabled(false);
    runBtn->setText(QString::fromUtf8(kWorking));
    QApplication::setOverrideCursor(Qt::WaitCursor);
    // Once round the loop, so that "Regner…" shows before the work starts.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    run();
    QApplication::restoreOverrideCursor();
    runBtn->setText(runText);
    runBtn->setEnabled(true);
}

void ToolPage::run() {
    note->hide();
    // Only where a mark is: a needless re-polish costs a stylesheet pass.
    for (ValueField* f : formCard->fields)
        if (f->edit->property("class").toString() == QLatin1String("err")) f->setInvalid(false);
    // The form as it stands now: a later redraw (theme, settings) shows this
    // run again, not what has been typed since.
    const fl::FormMap form = formMap();
    auto out = std::make_shared<fl::ToolOut>();
    last = out;
    area->setProvider([this, form, out] {
        try {
            *out = compute(form);
        } catch (...) {
            // Tool functions catch their own errors; this is the last guard.
            *out = fl::ToolOut{};
            out->err = fl::tool::msg("Noget passer ikke – tjek værdierne.", true);
        }
        return fl::takeRender(out->ok ? out->html : std::string());
    });
    if (out->ok) {
        heading->show();
        if (host)
            for (const fl::RecentValue& r : out->recent)
                host->addResult(QString::fromStdString(fl::symbolDisplay(r.symbol)), r.value,
                                  QString::fromStdString(r.unit));
        // After the layout has taken the sheet's height, so the range allows it.
        QTimer::singleShot(0, this, [this] { scrollToWidget(heading->parentWidget()->mapTo(inner, QPoint(0, 0)).y()); });
        return;
    }
    area->clear();
    heading->hide();
    for (const std::string& key : out->badKeys)
        if (ValueField* f = field(QString::fromStdString(key))) f->setInvalid(true);
    if (out->err.empty()) return;
    const std::string err = out->err;
    note->setProvider([err] { return fl::takeRender(err); });
    note->show();
}

void ToolPage::clearForm() {
    for (ValueField* f : formCard->fields) {
        f->setText(defaults[f->key]);
        f->setInvalid(false);
    }
    area->clear();
    heading->hide();
    note->clear();
    note->hide();
    *last = fl::ToolOut{};
    afterClear();
}

void ToolPage::onSettings() {
    if (area) area->view()->refresh();
    if (note && note->isVisible()) note->refresh();
    for (ValueField* f : formCard->fields)
        interpret(f);
    live();
}

void ToolPage::onTheme() {
    if (area) area->view()->refresh();
    if (note && note->isVisible()) note->refresh();
    for (ValueField* f : formCard->fields)
        interpret(f);
    // A live figure carries the palette's colours.
    live();
}

} // namespace app
