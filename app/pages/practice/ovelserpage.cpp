#include "app/pages/practice/ovelserpage.h"

#include "app/pages/practice/topiccombo.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/widgets/calcpanel.h"
#include "app/widgets/helpers.h"
#include "app/widgets/sidesplit.h"
#include "fl/circuit/model.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/formulas/lists.h"
#include "fl/practice/categories.h"
#include "fl/practice/circuitex.h"
#include "fl/practice/exam.h"
#include "fl/practice/stats.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace app {

namespace {

const char kNoWeakTopics[] =
    "Du har ingen svage emner lige nu. Regn nogle opgaver i forskellige emner – så finder "
    "programmet dem, du skal øve mere.";
const char kNothingOpen[] = "Der er ingen opgaver i dette emne lige nu.";
const char kStuck[] = "Udregningen gik i stå – tjek værdierne.";

bool isOpenForStudent(const std::string& key) {
    return isOpenKey(key);
}

} // namespace

OvelserPage::OvelserPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    playSound = [] { QApplication::beep(); };

    const fl::Tile* tile = fl::findTile("ovelser");
    auto* heading = new QLabel(QString::fromStdString(tile ? tile->name : "Øvelser"), inner);
    heading->setProperty("class", "h2");
    addWidget(heading);

    Card* controls = addCard();
    controls->addLabel(QStringLiteral("Programmet laver en tilfældig opgave. Regn den – på papir eller med "
                                      "lommeregneren ved siden af – skriv dit svar og tryk <b>Enter</b>"),
                       QStringLiteral("hint"));
    topics = new QComboBox(controls);
    topics->setMinimumWidth(260);
    controls->addRow(QStringLiteral("Emne"), topics);
    QHBoxLayout* row = controls->addButtonRow();
    QPushButton* fresh = controls->addButton(row, QStringLiteral("Ny opgave"), QStringLiteral("primary"));
    QPushButton* reset = controls->addButton(row, QStringLiteral("Nulstil"));
    reset->setToolTip(QStringLiteral("Nulstil tællingen af rigtige svar"));
    QPushButton* stats = controls->addButton(row, QStringLiteral("Se statistik"));
    sound = new QCheckBox(QStringLiteral("Lyd ved rigtigt svar"), controls);
    sound->setChecked(storeGet(key::OvLyd, Json(true)).asBool(true));
    row->insertWidget(row->count() - 1, sound);
    score = new QLabel(controls);
    score->setProperty("class", "crumb");
    row->addWidget(score);

    // The exercise and its answer; the calculator beside them.
    auto* work = new QWidget;
    auto* workLayout = new QVBoxLayout(work);
    workLayout->setContentsMargins(0, 0, 0, 0);
    auto* card = new Card(work);
    workLayout->addWidget(card);
    statement = new SheetView(card);
    card->layout->addWidget(statement);
    answer = new QLineEdit(card);
    answer->setPlaceholderText(QStringLiteral("fx 2,38"));
    answer->setMinimumWidth(180);
    QHBoxLayout* answerRow = card->addRow(QStringLiteral("Dit svar"), answer);
    unit = new QLabel(card);
    answerRow->insertWidget(1, unit);
    QHBoxLayout* buttons = card->addButtonRow();
    checkBtn = card->addButton(buttons, QStringLiteral("Tjek svar"), QStringLiteral("primary"));
    hintBtn = card->addButton(buttons, QStringLiteral("Vis formlen"));
    solutionBtn = card->addButton(buttons, QStringLiteral("Vis løsning"));
    nextBtn = card->addButton(buttons, QStringLiteral("Ny opgave"));
    verdict = new SheetView(card);
    card->layout->addWidget(verdict);
    hint = new SheetView(card);
    card->layout->addWidget(hint);
    solution = new ResultArea(host, work);
    workLayout->addWidget(solution);
    workLayout->addStretch(1);

    auto* side = new Card;
    calc = new CalcPanel(false, side);
    side->layout->addWidget(calc);
    calc->setAnswerTarget(answer);

    auto* split = new SideSplit(900);
    split->setWidgets(work, side);
    addWidget(split);

    connect(topics, &QComboBox::activated, this, [this] {
        storeSet(key::OvCat, Json(topics->currentData().toString().toStdString()));
        next();
    });
    connect(fresh, &QPushButton::clicked, this, &OvelserPage::next);
    connect(nextBtn, &QPushButton::clicked, this, &OvelserPage::next);
    connect(reset, &QPushButton::clicked, this, &OvelserPage::resetScore);
    connect(stats, &QPushButton::clicked, this, [this] {
        if (host) host->navigate(QStringLiteral("statistik"));
    });
    connect(sound, &QCheckBox::toggled, this, [](bool on) { storeSet(key::OvLyd, Json(on)); });
    connect(checkBtn, &QPushButton::clicked, this, &OvelserPage::check);
    connect(hintBtn, &QPushButton::clicked, this, &OvelserPage::showHint);
    connect(solutionBtn, &QPushButton::clicked, this, &OvelserPage::showSolution);
    // Enter checks; after a right answer it moves on to the next exercise.
    connect(answer, &QLineEdit::returnPressed, this, [this] {
        if (judged && judgement.correct) {
            next();
            return;
        }
        check();
    });
    connect(answer, &QLineEdit::textEdited, this, [this] { judged = false; });
    for (SheetView* view : {statement, verdict, hint})
        connect(view, &SheetView::action, this, &OvelserPage::link);
    connect(solution->view(), &SheetView::action, this, &OvelserPage::link);

    fillTopics();
    showScore();
    verdict->hide();
    hint->hide();
    solution->hide();
}

void OvelserPage::fillTopics() {
    fillPracticeTopics(topics, QString::fromStdString(storeGetString(key::OvCat, fl::kAllTopics)));
}

void OvelserPage::next() {
    const std::string key = topics->currentData().toString().toStdString();
    ex = fl::exerciseForCategory(key, fl::weakTopics(fl::loadStats()), isOpenForStudent);
    judged = counted = revealed = false;
    answer->clear();
    verdict->hide();
    hint->hide();
    solution->clear();
    solution->hide();
    showExercise();
    answer->setFocus();
}

void OvelserPage::showExercise() {
    const bool has = !ex.empty();
    for (QWidget* w : std::initializer_list<QWidget*>{answer, checkBtn, hintBtn, solutionBtn})
        w->setEnabled(has);
    if (!has) {
        const bool weak = topics->currentData().toString() == QLatin1String(fl::kWeakTopics);
        std::string message = kNothingOpen;
        if (weak) {
            message = fl::weakTopicsElsewhereText(fl::weakTopics(fl::loadStats()));
            if (message.empty()) message = kNoWeakTopics;
        }
        statement->setProvider([message] { return fl::takeRender(fl::msgBox(message, false)); });
        unit->clear();
        calc->setGiven({});
        return;
    }
    statement->setProvider([this] { return fl::takeRender(fl::exerciseStatementHtml(ex)); });
    unit->setText(QString::fromStdString(ex.scale == 1e-6 ? "µF" : ex.unit));
    std::vector<double> given;
    if (ex.formula)
        for (const fl::FormulaVar& v : ex.formula->vars)
            if (auto it = ex.given.find(v.symbol); it != ex.given.end()) given.push_back(it->second);
    if (ex.circuit) {
        // The source, then the components as the drawing shows them.
        for (const auto& [symbol, value] : ex.given)
            given.push_back(value);
        fl::walk(ex.circuit->root, [&](const fl::CNodePtr& n) {
            if (!n->group) given.push_back(fl::readValue(n->v));
        });
    }
    calc->setGiven(given);
}

void OvelserPage::check() {
    if (ex.empty()) return;
    judgement = fl::judgeAnswer(answer->text().toStdString(), ex.facit, ex.scale);
    judged = true;
    showVerdict();
    // Only the first readable answer counts, and none after the solution was shown.
    if (!judgement.empty && !judgement.unreadable && !counted && !revealed) count(judgement.correct);
    if (judgement.correct && sound->isChecked() && playSound) playSound();
}

void OvelserPage::showVerdict() {
    if (!judged) return;
    verdict->setProvider([this] { return fl::takeRender(fl::verdictHtml(judgement, ex)); });
    verdict->show();
}

void OvelserPage::count(bool right) {
    fl::recordAnswer(ex.key, ex.topic, right);
    storeSet(key::OvTotal, Json(storeGet(key::OvTotal).asNumber(0) + 1));
    if (right) storeSet(key::OvRight, Json(storeGet(key::OvRight).asNumber(0) + 1));
    counted = true;
    showScore();
}

void OvelserPage::showScore() {
    const int total = static_cast<int>(storeGet(key::OvTotal).asNumber(0));
    const int right = static_cast<int>(storeGet(key::OvRight).asNumber(0));
    score->setText(total > 0 ? QStringLiteral("Rigtige: %1 af %2").arg(right).arg(total) : QString());
}

void OvelserPage::resetScore() {
    storeSet(key::OvRight, Json(0));
    storeSet(key::OvTotal, Json(0));
    showScore();
}

void OvelserPage::showHint() {
    if (ex.empty()) return;
    hint->setProvider([this] {
        if (!ex.formula && !ex.circuit) return ex.hint;
        // A drawn circuit has no one formula: its guide gives them in order.
        std::string html = ex.circuit ? fl::circuitHint(ex) : fl::exerciseHint(ex);
        return fl::takeRender(std::move(html));
    });
    hint->show();
}

void OvelserPage::showSolution() {
    if (ex.empty()) return;
    revealed = true;
    solution->setProvider([this] {
        if (!ex.formula) return ex.solution;
        try {
            std::string html = fl::exerciseSolutionHtml(ex);
            return fl::takeRender(std::move(html));
        } catch (...) {
            fl::resetFigures();
            return fl::takeRender(fl::msgBox(kStuck, true));
        }
    });
    solution->show();
    // Once the layout has made room for it; until then the page can't scroll that far.
    QTimer::singleShot(0, this, [this] { scrollToWidget(solution->mapTo(inner, QPoint(0, 0)).y()); });
}

void OvelserPage::link(const QString& href) {
    if (href == QLatin1String("fc:hint")) {
        showHint();
        return;
    }
    if (host) host->openLink(href);
}

void OvelserPage::onEnter() {
    const std::string drawnFor = topics->currentData().toString().toStdString();
    fillTopics();
    showScore();
    sound->setChecked(storeGet(key::OvLyd, Json(true)).asBool(true));
    const std::string now = topics->currentData().toString().toStdString();
    // A new topic from a link, or the teacher closed the one on screen.
    const bool closed =
        !ex.empty() && !isOpenForStudent(ex.formula ? fl::familyLockKey(*ex.formula) : ex.key);
    if (ex.empty() || now != drawnFor || closed) next();
}

void OvelserPage::onSettings() {
    for (SheetView* view : {statement, verdict, hint})
        if (view->isVisibleTo(this)) view->refresh();
    solution->view()->refresh();
}

void OvelserPage::onTheme() {
    onSettings();
}

} // namespace app
