#include "app/pages/practice/eksamenpage.h"

#include "app/pages/practice/topiccombo.h"
#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/shell/theme.h"
#include "app/widgets/confetti.h"
#include "app/widgets/flowlayout.h"
#include "app/widgets/helpers.h"
#include "fl/practice/categories.h"
#include "fl/practice/stats.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace app {

namespace {

bool openForStudent(const std::string& lockKey) {
    return isOpenKey(lockKey);
}

QString utcDate(int64_t ms) {
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.000Z"));
}

void selectData(QComboBox* box, const QString& data) {
    const int at = box->findData(data);
    if (at >= 0) box->setCurrentIndex(at);
}

QLabel* richLabel(const QString& text, QWidget* parent, const QString& cls = QString()) {
    auto* l = new QLabel(text, parent);
    l->setTextFormat(Qt::RichText);
    l->setWordWrap(true);
    if (!cls.isEmpty()) setClass(l, cls);
    return l;
}

} // namespace

EksamenPage::EksamenPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    clock = [] { return QDateTime::currentMSecsSinceEpoch(); };
    confirmHandIn = [this](int missing) {
        const QString text = QStringLiteral("Du mangler at svare på %1 %2. Vil du aflevere alligevel?")
                                 .arg(missing)
                                 .arg(missing == 1 ? QStringLiteral("opgave") : QStringLiteral("opgaver"));
        return QMessageBox::question(this, QStringLiteral("Aflever"), text, QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    };
    ticker.setInterval(1000);
    connect(&ticker, &QTimer::timeout, this, &EksamenPage::tick);

    auto* heading = new QLabel(QStringLiteral("Eksamen"), inner);
    setClass(heading, QStringLiteral("h2"));
    addWidget(heading);

    // Setup.
    auto* setupCard = addCard();
    setup = setupCard;
    setupCard->addLabel(QStringLiteral("Et sæt opgaver på tid – ligesom en prøve. Du får ikke at vide undervejs, om "
                                       "svarene er rigtige. Når du afleverer (eller tiden løber ud), får du point, "
                                       "facit, tips til fejlene og hele løsningen til hver opgave."),
                        QStringLiteral("hint"));
    topics = new QComboBox(setupCard);
    topics->setMinimumWidth(260);
    setupCard->addRow(QStringLiteral("Emne"), topics);
    counts = new QComboBox(setupCard);
    for (int n : fl::kExamCounts)
        counts->addItem(QStringLiteral("%1 opgaver").arg(n), QString::number(n));
    setupCard->addRow(QStringLiteral("Opgaver"), counts);
    times = new QComboBox(setupCard);
    for (int m : fl::kExamMinutes)
        times->addItem(m == 0 ? QStringLiteral("Ingen tidsgrænse") : QStringLiteral("%1 minutter").arg(m),
                       QString::number(m));
    setupCard->addRow(QStringLiteral("Tid"), times);
    QHBoxLayout* startRow = setupCard->addButtonRow();
    startBtn = setupCard->addButton(startRow, QStringLiteral("Start eksamen"), QStringLiteral("primary"));
    setupMessage = setupCard->addLabel(QString(), QStringLiteral("hint"));
    setupMessage->hide();

    // One question at a time.
    auto* questionCard = addCard();
    question = questionCard;
    auto* top = new QHBoxLayout;
    questionHeading = richLabel(QString(), questionCard, QStringLiteral("sh"));
    clockText = new QLabel(questionCard);
    setClass(clockText, QStringLiteral("h2"));
    top->addWidget(questionHeading, 1);
    top->addWidget(clockText);
    questionCard->layout->addLayout(top);
    position = new QLabel(questionCard);
    setClass(position, QStringLiteral("crumb"));
    questionCard->layout->addWidget(position);
    statement = new SheetView(questionCard);
    questionCard->layout->addWidget(statement);
    answer = new QLineEdit(questionCard);
    answer->setPlaceholderText(QStringLiteral("fx 2,38"));
    answer->setMinimumWidth(180);
    QHBoxLayout* answerRow = questionCard->addRow(QStringLiteral("Dit svar"), answer);
    unit = new QLabel(questionCard);
    answerRow->insertWidget(1, unit);
    QHBoxLayout* nav = questionCard->addButtonRow();
    prevBtn = questionCard->addButton(nav, QStringLiteral("← Forrige"));
    nextBtn = questionCard->addButton(nav, QStringLiteral("Næste →"), QStringLiteral("primary"));
    handInBtn = questionCard->addButton(nav, QStringLiteral("Aflever"));
    numberRow = new QWidget(questionCard);
    new FlowLayout(numberRow, 6, 6);
    questionCard->layout->addWidget(numberRow);

    // Results.
    results = new QWidget(inner);
    auto* resultLayout = new QVBoxLayout(results);
    resultLayout->setContentsMargins(0, 0, 0, 0);
    resultLayout->setSpacing(12);
    auto* summary = new Card(results);
    resultHeading = richLabel(QString(), summary, QStringLiteral("sh"));
    summary->layout->addWidget(resultHeading);
    score = new QLabel(summary);
    setClass(score, QStringLiteral("h2"));
    summary->layout->addWidget(score);
    bar = new QProgressBar(summary);
    bar->setRange(0, 100);
    bar->setTextVisible(false);
    summary->layout->addWidget(bar);
    verdict = richLabel(QString(), summary);
    summary->layout->addWidget(verdict);
    QHBoxLayout* again = summary->addButtonRow();
    newBtn = summary->addButton(again, QStringLiteral("Ny eksamen"), QStringLiteral("primary"));
    resultLayout->addWidget(summary);
    auto* rowBox = new QWidget(results);
    rowLayout = new QVBoxLayout(rowBox);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    rowLayout->setSpacing(10);
    resultLayout->addWidget(rowBox);
    addWidget(results);

    connect(startBtn, &QPushButton::clicked, this, &EksamenPage::start);
    connect(prevBtn, &QPushButton::clicked, this, [this] { go(int(state.current) - 1); });
    connect(nextBtn, &QPushButton::clicked, this, [this] {
        if (state.current + 1 < state.size())
            go(int(state.current) + 1);
        else
            handInAsking();
    });
    connect(handInBtn, &QPushButton::clicked, this, &EksamenPage::handInAsking);
    connect(answer, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (fl::setAnswer(state, state.current, text.toStdString())) showNumbers();
    });
    connect(answer, &QLineEdit::returnPressed, this, [this] {
        if (state.current + 1 < state.size()) go(int(state.current) + 1);
    });
    connect(newBtn, &QPushButton::clicked, this, &EksamenPage::drawSetup);
    connect(statement, &SheetView::action, this, [this](const QString& href) {
        if (host) host->openLink(href);
    });
    auto remember = [](QComboBox* box, const char* storeKey) {
        connect(box, &QComboBox::activated, box,
                [box, storeKey] { storeSet(storeKey, Json(box->currentData().toString().toStdString())); });
    };
    remember(topics, key::ExCat);
    remember(counts, key::ExN);
    remember(times, key::ExT);

    drawSetup();
}

void EksamenPage::drawSetup() {
    ticker.stop();
    fillPracticeTopics(topics, QString::fromStdString(storeGetString(key::ExCat, fl::kAllTopics)));
    selectData(counts, QString::fromStdString(storeGetString(key::ExN, "10")));
    selectData(times, QString::fromStdString(storeGetString(key::ExT, "0")));
    setupMessage->hide();
    setup->show();
    question->hide();
    results->hide();
    scrollToTop();
}

void EksamenPage::start() {
    const std::string topic = topics->currentData().toString().toStdString();
    const std::vector<std::string> weak = fl::weakTopics(fl::loadStats());
    QString label = chosenTopicLabel(topics);
    state = fl::startExam(topic, label.toStdString(), counts->currentData().toInt(), times->currentData().toInt(),
                          clock(), [&] { return fl::exerciseForCategory(topic, weak, openForStudent); });
    if (state.exercises.empty()) {
        QString message = QStringLiteral("Der er ingen opgaver i dette emne lige nu.");
        if (topic == fl::kWeakTopics) {
            message = QString::fromStdString(fl::weakTopicsElsewhereText(weak));
            if (message.isEmpty()) message = QStringLiteral("Du har ingen svage emner lige nu – vælg et andet emne.");
        }
        setupMessage->setText(message);
        setupMessage->show();
        return;
    }
    judged = {};
    if (state.limitMinutes > 0) ticker.start();
    drawQuestion();
}

void EksamenPage::drawQuestion() {
    setup->hide();
    results->hide();
    question->show();
    questionHeading->setText(QStringLiteral("Eksamen · ") + QString::fromStdString(state.topicLabel));
    // One button per exercise, made once per exam.
    if (numbers.size() != state.size()) {
        for (QPushButton* b : numbers)
            delete b;
        numbers.clear();
        for (size_t i = 0; i < state.size(); ++i) {
            QPushButton* b = makeButton(QString::number(i + 1), numberRow, QStringLiteral("chip"));
            b->setMinimumWidth(34);
            numberRow->layout()->addWidget(b);
            connect(b, &QPushButton::clicked, this, [this, i] { go(int(i)); });
            numbers.push_back(b);
        }
    }
    go(int(state.current));
    showClock();
    scrollToTop();
}

void EksamenPage::go(int index) {
    if (state.handedIn || index < 0 || size_t(index) >= state.size()) return;
    state.current = size_t(index);
    const fl::Exercise& ex = state.exercises[state.current];
    position->setText(QStringLiteral("Opgave %1 af %2").arg(index + 1).arg(state.size()));
    statement->setProvider([this] { return fl::takeRender(fl::exerciseStatementHtml(state.exercises[state.current])); });
    {
        QSignalBlocker block(answer);
        answer->setText(QString::fromStdString(state.answers[state.current]));
    }
    unit->setText(QString::fromStdString(ex.scale == 1e-6 ? "µF" : ex.unit));
    prevBtn->setEnabled(index > 0);
    const bool last = size_t(index) + 1 == state.size();
    nextBtn->setText(last ? QStringLiteral("Aflever nu") : QStringLiteral("Næste →"));
    handInBtn->setVisible(!last);
    showNumbers();
    answer->setFocus();
}

void EksamenPage::showNumbers() {
    for (size_t i = 0; i < numbers.size(); ++i) {
        numbers[i]->setProperty("sel", fl::isAnswered(state, i));
        QFont f = numbers[i]->font();
        f.setBold(i == state.current);
        numbers[i]->setFont(f);
        repolish(numbers[i]);
    }
}

void EksamenPage::showClock() {
    const int left = fl::secondsLeft(state, clock());
    clockText->setVisible(left >= 0);
    if (left >= 0) clockText->setText(QStringLiteral("⏱ ") + QString::fromStdString(fl::clockText(left)));
}

void EksamenPage::tick() {
    if (state.handedIn || state.exercises.empty()) {
        ticker.stop();
        return;
    }
    showClock();
    // At 0 the exam is handed in as it stands, without a question.
    if (fl::timeIsUp(state, clock())) finish();
}

void EksamenPage::handInAsking() {
    if (state.handedIn || state.exercises.empty()) return;
    const int missing = fl::unansweredCount(state);
    if (missing > 0 && confirmHandIn && !confirmHandIn(missing)) return;
    finish();
}

void EksamenPage::finish() {
    ticker.stop();
    const int64_t now = clock();
    judged = fl::handIn(state, now);
    fl::recordExam(fl::examRecord(state, judged, utcDate(now).toStdString()));
    drawResults();
    if (fl::examCelebrates(judged.pct))
        QTimer::singleShot(150, this, [this] {
            auto* party = new ConfettiOverlay(viewport());
            party->show();
        });
}

void EksamenPage::drawResults() {
    setup->hide();
    question->hide();
    results->show();
    resultHeading->setText(QString::fromStdString(fl::examHeading(state)));
    score->setText(QString::fromStdString(fl::examScoreText(judged)));
    bar->setValue(judged.pct);
    verdict->setText(QString::fromStdString(fl::examVerdict(judged.pct)));
    for (ResultRow& r : rows)
        delete r.card;
    rows.clear();
    const ThemeColors& c = colors();
    for (size_t i = 0; i < state.size() && i < judged.judgements.size(); ++i) {
        ResultRow r;
        auto* card = new Card;
        r.card = card;
        card->setStyleSheet(QStringLiteral("QFrame#card{border-left:4px solid %1;}")
                                .arg(QString::fromStdString(judged.judgements[i].correct ? c.ok : c.bad)));
        r.text = new SheetView(card);
        card->layout->addWidget(r.text);
        const std::string html = fl::examRowHtml(state, judged, i);
        r.text->setProvider([html] { return fl::takeRender(html); });
        QHBoxLayout* buttons = card->addButtonRow();
        r.solutionButton = card->addButton(buttons, QStringLiteral("Vis løsning"));
        r.solution = new SheetView(card);
        r.solution->hide();
        card->layout->addWidget(r.solution);
        SheetView* view = r.solution;
        QPushButton* button = r.solutionButton;
        connect(button, &QPushButton::clicked, this, [this, i, view, button] {
            if (!view->isHidden()) {
                view->hide();
                button->setText(QStringLiteral("Vis løsning"));
                return;
            }
            view->setProvider([this, i] { return fl::exerciseSolution(state.exercises[i]); });
            view->show();
            button->setText(QStringLiteral("Skjul løsning"));
        });
        for (SheetView* v : {r.text, r.solution})
            connect(v, &SheetView::action, this, [this](const QString& href) {
                if (host) host->openLink(href);
            });
        rowLayout->addWidget(card);
        rows.push_back(r);
    }
    scrollToTop();
}

void EksamenPage::onEnter() {
    // The setup follows what the teacher has closed; a running exam is left alone.
    if (setup->isVisibleTo(this)) drawSetup();
}

void EksamenPage::onSettings() {
    if (question->isVisibleTo(this)) statement->refresh();
    for (ResultRow& r : rows) {
        r.text->refresh();
        if (r.solution->isVisibleTo(this)) r.solution->refresh();
    }
}

void EksamenPage::onTheme() {
    if (results->isVisibleTo(this) && !state.exercises.empty()) drawResults();
}

} // namespace app
