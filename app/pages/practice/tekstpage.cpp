#include "app/pages/practice/tekstpage.h"

#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/widgets/calcpanel.h"
#include "app/widgets/helpers.h"
#include "app/widgets/sidesplit.h"
#include "fl/practice/stats.h"
#include "fl/tools/frame.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace app {

namespace {

const char kAll[] = "alle";

bool openForStudent(const std::string& key) {
    return isOpenKey(key);
}

fl::RenderResult markup(const std::string& html) {
    return fl::takeRender(html);
}

} // namespace

TekstPage::TekstPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    auto* crumb = new QLabel(QStringLiteral("Øv dig"), inner);
    setClass(crumb, QStringLiteral("crumb"));
    addWidget(crumb);
    auto* heading = new QLabel(QStringLiteral("Tekstopgaver"), inner);
    setClass(heading, QStringLiteral("h2"));
    addWidget(heading);

    Card* controls = addCard();
    controls->addLabel(QStringLiteral(
                           "Opgaver som til en prøve: læs teksten, find de opgivne tal, og regn delopgaverne i "
                           "rækkefølge – ofte skal du bruge dit svar fra den forrige. Skriv dit svar på hver del, og "
                           "tryk Tjek. Bagefter kan du se hele løsningen trin for trin."),
                       QStringLiteral("hint"));
    topics = new QComboBox(controls);
    topics->setMinimumWidth(260);
    controls->addRow(QStringLiteral("Emne"), topics);
    QHBoxLayout* buttons = controls->addButtonRow();
    nextBtn = controls->addButton(buttons, QStringLiteral("Ny opgave"), QStringLiteral("primary"));
    solutionBtn = controls->addButton(buttons, QStringLiteral("Vis hele løsningen"));

    // The story and its rows; the calculator beside them.
    auto* work = new QWidget;
    auto* workLayout = new QVBoxLayout(work);
    workLayout->setContentsMargins(0, 0, 0, 0);
    auto* card = new Card(work);
    workLayout->addWidget(card);
    story = new SheetView(card);
    card->layout->addWidget(story);
    rowArea = new QWidget(card);
    rowLayout = new QVBoxLayout(rowArea);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    rowLayout->setSpacing(10);
    card->layout->addWidget(rowArea);
    solutionTitle = new QLabel(QStringLiteral("Tekstopgave"), work);
    setClass(solutionTitle, QStringLiteral("sh"));
    workLayout->addWidget(solutionTitle);
    solution = new ResultArea(host, work);
    workLayout->addWidget(solution);
    workLayout->addStretch(1);

    auto* side = new Card;
    calc = new CalcPanel(false, side);
    side->layout->addWidget(calc);

    auto* split = new SideSplit(900);
    split->setWidgets(work, side);
    addWidget(split);

    connect(topics, &QComboBox::activated, this, [this] {
        storeSet(key::TxTpl, Json(topics->currentData().toString().toStdString()));
        next();
    });
    connect(nextBtn, &QPushButton::clicked, this, &TekstPage::next);
    connect(solutionBtn, &QPushButton::clicked, this, &TekstPage::showSolution);
    connect(story, &SheetView::action, this, &TekstPage::link);
    connect(solution->view(), &SheetView::action, this, &TekstPage::link);
    // The calculator's results go into the row being worked on.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        for (const Row& r : answerRows)
            if (r.field == now) calc->setAnswerTarget(r.field);
    });

    fillTopics();
    solutionTitle->hide();
    solution->hide();
    next();
}

void TekstPage::fillTopics() {
    const QString chosen = QString::fromStdString(storeGetString(key::TxTpl, kAll));
    QSignalBlocker block(topics);
    topics->clear();
    topics->addItem(QStringLiteral("Alle slags"), QString::fromLatin1(kAll));
    for (const fl::TekstTopic& t : fl::tekstTopics())
        if (openForStudent(fl::tekstLockKey(t.key)))
            topics->addItem(QString::fromStdString(t.label), QString::fromStdString(t.key));
    const int at = topics->findData(chosen);
    topics->setCurrentIndex(at >= 0 ? at : 0);
}

void TekstPage::next() {
    current = fl::makeTekst(topics->currentData().toString().toStdString(), openForStudent);
    solution->clear();
    solution->hide();
    solutionTitle->hide();
    solutionBtn->setEnabled(current.has_value());
    if (!current) {
        story->setProvider([] {
            return markup(fl::tool::msg("Kunne ikke lave en opgave – tryk \"Ny opgave\" igen.", true));
        });
    } else {
        story->setProvider([this] { return markup(fl::tekstHeaderHtml(*current)); });
    }
    buildRows();
    if (!answerRows.empty()) answerRows.front().field->setFocus();
}

void TekstPage::buildRows() {
    for (Row& r : answerRows)
        delete r.box;
    answerRows.clear();
    if (!current) return;
    std::vector<double> given;
    for (const fl::TekstGiven& g : current->given)
        given.push_back(current->vars.at(g.symbol));
    calc->setGiven(given);
    for (size_t i = 0; i < current->parts.size(); ++i) {
        const fl::TekstDel& part = current->parts[i];
        Row r;
        r.box = new QWidget(rowArea);
        auto* v = new QVBoxLayout(r.box);
        v->setContentsMargins(0, 0, 0, 0);
        v->setSpacing(4);
        r.question = new QLabel(QString::fromStdString(fl::tekstQuestionHtml(*current, i)), r.box);
        r.question->setTextFormat(Qt::RichText);
        r.question->setWordWrap(true);
        v->addWidget(r.question);
        auto* line = new QHBoxLayout;
        line->setSpacing(8);
        r.field = new QLineEdit(r.box);
        r.field->setPlaceholderText(QStringLiteral("Dit svar"));
        r.field->setMinimumWidth(160);
        r.field->setMaximumWidth(240);
        r.unit = new QLabel(QString::fromStdString(part.scale == 1e-6 ? "µF" : part.unit), r.box);
        r.unit->setMinimumWidth(50);
        r.check = makeButton(QStringLiteral("Tjek"), r.box, QStringLiteral("primary"));
        r.hint = makeButton(QStringLiteral("Hint"), r.box);
        line->addWidget(r.field);
        line->addWidget(r.unit);
        line->addWidget(r.check);
        line->addWidget(r.hint);
        line->addStretch(1);
        v->addLayout(line);
        r.status = new SheetView(r.box);
        r.status->hide();
        v->addWidget(r.status);
        rowLayout->addWidget(r.box);
        const int index = static_cast<int>(i);
        connect(r.check, &QPushButton::clicked, this, [this, index] { check(index); });
        connect(r.field, &QLineEdit::returnPressed, this, [this, index] { check(index); });
        connect(r.hint, &QPushButton::clicked, this, [this, index] { showHint(index); });
        connect(r.status, &SheetView::action, this, &TekstPage::link);
        answerRows.push_back(r);
    }
    if (!answerRows.empty()) calc->setAnswerTarget(answerRows.front().field);
}

void TekstPage::check(int index) {
    if (!current || index < 0 || size_t(index) >= answerRows.size()) return;
    fl::TekstDel& part = current->parts[size_t(index)];
    Row& row = answerRows[size_t(index)];
    part.answer = row.field->text().toStdString();
    const fl::TekstVerdict verdict = fl::judgeTekstPart(*current, size_t(index), part.answer);
    if (verdict.readable && !part.counted) {
        const std::string key = fl::tekstLockKey(current->key);
        fl::recordAnswer(key, key, verdict.correct);
        part.counted = true;
    }
    if (verdict.correct) part.solved = true;
    const std::string html = verdict.html;
    row.status->setProvider([html] { return markup(html); });
    row.status->show();
    // A right answer moves on to the next part that isn't solved.
    if (verdict.correct)
        for (size_t i = size_t(index) + 1; i < answerRows.size(); ++i)
            if (!current->parts[i].solved) {
                answerRows[i].field->setFocus();
                break;
            }
}

void TekstPage::showHint(int index) {
    if (!current || index < 0 || size_t(index) >= answerRows.size()) return;
    const std::string html = fl::tekstHintHtml(*current, size_t(index));
    Row& row = answerRows[size_t(index)];
    row.status->setProvider([html] { return markup(html); });
    row.status->show();
}

void TekstPage::showSolution() {
    if (!current) return;
    solution->setProvider([this] {
        try {
            std::string html = fl::tekstSolutionHtml(*current);
            return markup(std::move(html));
        } catch (...) {
            fl::resetFigures();
            return markup(fl::tool::msg("Udregningen gik i stå – tjek værdierne.", true));
        }
    });
    solutionTitle->show();
    solution->show();
    // Once the layout has made room for it; until then the page can't scroll that far.
    QTimer::singleShot(0, this, [this] { scrollToWidget(solutionTitle->mapTo(inner, QPoint(0, 0)).y()); });
}

void TekstPage::link(const QString& href) {
    if (host) host->openLink(href);
}

void TekstPage::onEnter() {
    const QString before = topics->currentData().toString();
    fillTopics();
    const QString now = topics->currentData().toString();
    // The teacher closed the scenario on screen; when every one is closed, all are drawn from.
    const bool closed = current && !openForStudent(fl::tekstLockKey(current->key)) && topics->count() > 1;
    if (!current || now != before || closed) next();
}

void TekstPage::onSettings() {
    story->refresh();
    for (Row& r : answerRows)
        if (r.status->isVisibleTo(this)) r.status->refresh();
    if (solution->isVisibleTo(this)) solution->view()->refresh();
}

void TekstPage::onTheme() {
    onSettings();
}

} // namespace app
