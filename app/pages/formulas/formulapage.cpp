#include "app/pages/formulas/formulapage.h"

#include "app/sheet/resultarea.h"
#include "app/shell/pagehost.h"
#include "app/shell/theme.h"
#include "app/widgets/helpers.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"
#include "fl/fig/formulafig.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/fields.h"
#include "fl/formulas/finderview.h"
#include "fl/formulas/help.h"
#include "fl/formulas/routes.h"
#include "fl/formulas/solve.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>

#include <cmath>

namespace app {

namespace {

const char kSolve[] = "Løs";
const char kWorking[] = "Regner…";
const char kStuck[] = "Udregningen gik i stå – tjek værdierne.";

QString titleMarkup(const std::string& title) {
    static const QRegularExpression index(QStringLiteral("_([A-Za-z]+)"));
    return QString::fromStdString(title).replace(index, QStringLiteral("<sub>\\1</sub>"));
}

} // namespace

FormulaPage::FormulaPage(const fl::Formula* f, PageHost* h, QWidget* parent)
    : Page(parent), family(f), host(h) {
    Card* card = addCard();

    back = card->addLabel(QString(), QStringLiteral("crumb"));
    back->hide();
    connect(back, &QLabel::linkActivated, this, [this] {
        if (host && !backRoute.isEmpty()) host->navigate(backRoute);
    });

    card->addLabel(titleMarkup(family->title), QStringLiteral("h2"));
    card->addLabel(QString::fromStdString(fl::pageRef(family->page, "formelsamlingen")),
                   QStringLiteral("crumb"));

    if (!family->note.empty()) {
        note = card->addLabel(QString::fromStdString(family->note));
        styleNote();
    }

    card->addLabel(
        QStringLiteral("Udfyld det, du kender, og lad den værdi, du vil finde, stå <b>tom</b>. Tryk "
                       "derefter <b>Enter</b>. Du kan skrive 0,5 · 9m · 50µ · 25e-6 · 230*√2."),
        QStringLiteral("hint"));

    for (const fl::FormulaVar& v : family->vars) {
        const auto def = family->defaults.find(v.symbol);
        ValueField* field = card->addField(
            QString::fromStdString(v.symbol), QString::fromStdString(v.name), QString::fromStdString(v.unit),
            def == family->defaults.end() ? QString() : QString::fromStdString(def->second));
        const std::string help = fl::quantityHelp(family->key, v.symbol);
        if (!help.empty()) field->edit->setToolTip(QString::fromStdString(help));
        connect(field, &ValueField::enterPressed, this, &FormulaPage::solveClicked);
        connect(field, &ValueField::changed, this, [this, field] {
            field->setInterp(
                QString::fromStdString(fl::interpretLine(field->text().toStdString(), colors().bad)));
            // A refusal is about what stood in the fields; once they change it no longer holds.
            if (refused) renderStatic();
        });
        valueFields.push_back(field);
    }

    QHBoxLayout* row = card->addButtonRow();
    solveBtn = card->addButton(row, QString::fromUtf8(kSolve), QStringLiteral("primary"));
    clearBtn = card->addButton(row, QStringLiteral("Ryd"));
    connect(solveBtn, &QPushButton::clicked, this, &FormulaPage::solveClicked);
    connect(clearBtn, &QPushButton::clicked, this, &FormulaPage::clearAll);

    tabs = new QTabWidget(inner);
    area = new ResultArea(host);
    area->setTitle(titleMarkup(family->title));
    styleTabs();
    tabs->addTab(area, QStringLiteral("Formel"));
    addWidget(tabs);
    // Only a worked sheet is worth printing, not the bare formula or a refusal.
    connect(area->view(), &SheetView::contentChanged, this, [this] {
        if (!sheetShown) area->pdfBar()->hide();
    });
    if (host)
        connect(area->view(), &SheetView::action, this,
                [this](const QString& href) { host->openLink(href); });

    renderStatic();
}

ValueField* FormulaPage::field(const QString& symbol) const {
    for (ValueField* f : valueFields)
        if (f->key == symbol) return f;
    return nullptr;
}

void FormulaPage::styleNote() {
    if (!note) return;
    note->setStyleSheet(
        QStringLiteral("background:%1;border-radius:8px;padding:6px 10px;").arg(qstr(colors().soft)));
}

// The tab's pane is the sheet's own panel, not the style's lighter shade of
// it: in the dark palette the two made the sheet look two-toned.
void FormulaPage::styleTabs() {
    const ThemeColors& c = colors();
    tabs->setStyleSheet(QStringLiteral("QTabWidget::pane { background: %1; border: 1px solid %2; "
                                       "border-radius: 10px; top: -1px; }")
                            .arg(qstr(c.panel), qstr(c.line)));
}

void FormulaPage::onEnter() {
    // A refusal from an earlier visit is stale: the student is starting again.
    if (refused) {
        for (ValueField* f : valueFields)
            f->setInvalid(false);
        renderStatic();
    }
    const QString from = host ? host->previousRoute() : QString();
    backRoute.clear();
    if (from == QLatin1String(fl::route::Calculators) || from == QLatin1String(fl::route::Finder)) {
        backRoute = from;
        const QString name = from == QLatin1String(fl::route::Finder) ? QStringLiteral("Formelfinder")
                                                                      : QStringLiteral("Udregnere");
        back->setText(
            QStringLiteral("<a href=\"go:%1\" style=\"text-decoration:none\">← %2</a>").arg(from, name));
    }
    back->setVisible(!backRoute.isEmpty());
}

void FormulaPage::onSettings() {
    area->view()->refresh();
    showSolved();
}

void FormulaPage::onTheme() {
    styleNote();
    styleTabs();
    area->view()->refresh();
    for (ValueField* f : valueFields)
        if (!f->text().isEmpty())
            f->setInterp(QString::fromStdString(fl::interpretLine(f->text().toStdString(), colors().bad)));
}

void FormulaPage::renderStatic() {
    target.clear();
    sheetShown = false;
    refused = false;
    const fl::Formula* f = family;
    area->setProvider([f] { return fl::takeRender(fl::formulaStatic(*f)); });
}

void FormulaPage::clearAll() {
    for (ValueField* f : valueFields) {
        f->setText(QString());
        f->edit->setPlaceholderText(QString());
        f->setInvalid(false);
    }
    area->clear();
    renderStatic();
}

void FormulaPage::solveClicked() {
    solveBtn->setEnabled(false);
    solveBtn->setText(QString::fromUtf8(kWorking));
    QApplication::setOverrideCursor(Qt::WaitCursor);
    // Once round the loop, so that "Regner…" shows before the work starts.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    solve();
    QApplication::restoreOverrideCursor();
    solveBtn->setText(QString::fromUtf8(kSolve));
    solveBtn->setEnabled(true);
}

void FormulaPage::solve() {
    for (ValueField* f : valueFields)
        f->edit->setPlaceholderText(QString());
    target.clear();
    sheetShown = false;
    refused = false;

    std::map<std::string, std::string> texts;
    for (const ValueField* f : valueFields)
        texts[f->key.toStdString()] = f->text().toStdString();
    const fl::FieldCheck check = fl::checkFields(*family, texts);
    for (const std::string& symbol : check.unreadable)
        if (ValueField* f = field(QString::fromStdString(symbol))) f->setInvalid(true);
    if (!check.refusal.empty()) {
        area->setHtml(fl::msgBox(check.refusal, true));
        refused = true;
        return;
    }

    // The provider runs again on a change of settings or theme, so the
    // sheet is always written in the present number format.
    const fl::Formula* f = family;
    const std::map<std::string, double> values = check.values;
    const std::string wanted = check.target;
    solved = NAN;
    area->setProvider([this, f, values, wanted] {
        try {
            fl::SolveResult r = fl::solveSheet(*f, values, {}, wanted, fl::formulaFigureMarkup);
            solved = r.value;
            return fl::takeRender(std::move(r.html));
        } catch (...) {
            solved = NAN;
            fl::resetFigures();
            return fl::takeRender(fl::msgBox(kStuck, true));
        }
    });
    if (!std::isfinite(solved)) return;
    target = wanted;
    sheetShown = true;
    area->pdfBar()->show();
    showSolved();
    if (host) {
        const fl::FormulaVar* v = fl::findVar(*family, target);
        host->addResult(QString::fromStdString(fl::symbolDisplay(target)), solved,
                        v ? QString::fromStdString(v->unit) : QString());
    }
}

// The answer stands in the empty field as a placeholder, so that the student
// can change a value and press Enter again.
void FormulaPage::showSolved() {
    if (target.empty() || !std::isfinite(solved)) return;
    if (ValueField* f = field(QString::fromStdString(target)))
        f->edit->setPlaceholderText(QStringLiteral("= ") + QString::fromStdString(fl::fmtNumber(solved)));
}

} // namespace app
